#!/bin/bash
# Configures, builds and runs the client project. Reuses an existing build folder.
# build_with_cmake.sh CLIENT BUILD CMAKE-ARGUMENT...
set -euo pipefail

client=$1 build=$2
shift 2
cmake -S "$client" -B "$build" "$@"
cmake --build "$build"
"$build/client"
