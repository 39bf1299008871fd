#!/bin/bash
# Builds and runs a source with what pkg-config says of the installed library, as a Makefile would.
# build_with_pkg_config.sh COMPILER PKG_CONFIG_FOLDER SOURCE PROGRAM
set -euo pipefail

compiler=$1 source=$3 program=$4
export PKG_CONFIG_PATH=$2

read -ra flags <<<"$(pkg-config --cflags VRELBase)"
read -ra libraries <<<"$(pkg-config --libs VRELBase)"
"$compiler" -std=c++17 -Wall -Wextra -Werror -pedantic "${flags[@]}" "$source" -o "$program" "${libraries[@]}"
LD_LIBRARY_PATH=$(pkg-config --variable=libdir VRELBase) "$program"
