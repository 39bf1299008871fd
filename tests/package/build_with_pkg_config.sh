#!/bin/bash
# Builds and runs a source with the flags of pkg-config for the installed library, as a Makefile would.
# build_with_pkg_config.sh COMPILER PKG_CONFIG_FOLDER SOURCE PROGRAM
set -euo pipefail

compiler=$1 source=$3 program=$4
export PKG_CONFIG_PATH=$2

read -ra flags <<<"$(pkg-config --cflags VRELBase)"
read -ra libraries <<<"$(pkg-config --libs VRELBase)"
libdir=$(pkg-config --variable=libdir VRELBase)
"$compiler" -std=c++17 -Wall -Wextra -Werror -pedantic "${flags[@]}" "$source" -o "$program" "${libraries[@]}" \
  "-Wl,-rpath,$libdir"
"$program"
