#!/bin/bash
# Translates a document with the installed program, with all modules and without one of them.
# translate_installed.sh PREFIX BINARIES LIBRARIES DOCUMENT SCRATCH
set -euo pipefail

prefix=$1 binaries=$2 libraries=$3 document=$4 scratch=$5
rm -rf "$scratch"
mkdir -p "$scratch"
cd "$scratch"
for name in bracket.html bracket.txt bracket.stp; do
  "$prefix/$binaries/brivet" "$document" "$name"
  [[ -s $name ]]
done

mkdir -p "tree/$binaries" "tree/$libraries"
cp -a "$prefix/$binaries/brivet" "tree/$binaries"
cp -a "$prefix/$libraries"/lib*.so* "tree/$libraries"
rm "tree/$libraries/libBrivetText.so" bracket.txt
status=0
"tree/$binaries/brivet" "$document" bracket.txt 2>errors || status=$?
cat errors
[[ $status -eq 4 && ! -e bracket.txt ]]
grep -q '^brivet: cannot load the module for writing text: .*libBrivetText\.so: cannot open shared object file' errors
grep -q '^hint: the module belongs in .* or in a folder of LD_LIBRARY_PATH$' errors
LD_LIBRARY_PATH="$prefix/$libraries" "tree/$binaries/brivet" "$document" bracket.txt
