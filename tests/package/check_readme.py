#!/usr/bin/env python3
"""Follows README.md literally: builds its first program with its CMakeLists.txt and with its pkg-config line, and
compares the output of the program.

check_readme.py --readme FILE --prefix FOLDER --libraries FOLDER --work FOLDER -- CMAKE-ARGUMENT...
"""
import argparse
import os
import re
import subprocess
import sys
from pathlib import Path


def block(readme, language, start=0):
    """Returns the first fenced block in a language after a position of the text."""
    found = re.compile(rf"^```{language}\n(.*?)^```$", re.MULTILINE | re.DOTALL).search(readme, start)
    if found is None:
        sys.exit(f"README.md has no {language} block")
    return found


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    for name in ["readme", "prefix", "libraries", "work"]:
        parser.add_argument(f"--{name}", type=Path, required=True)
    parser.add_argument("cmake", nargs="*")
    arguments = parser.parse_args()
    readme = arguments.readme.read_text(encoding="utf-8")
    work = arguments.work
    work.mkdir(parents=True, exist_ok=True)

    program = block(readme, "cpp")
    (work / "first.cpp").write_text(program.group(1), encoding="utf-8")
    (work / "CMakeLists.txt").write_text(block(readme, "cmake").group(1), encoding="utf-8")
    expected = block(readme, "text", program.end()).group(1)
    environment = dict(os.environ, PKG_CONFIG_PATH=str(arguments.libraries / "pkgconfig"))
    environment.pop("LD_LIBRARY_PATH", None)

    def run(*command):
        return subprocess.run(command, cwd=work, check=True, env=environment, stdout=subprocess.PIPE, text=True).stdout

    run("cmake", "-S", ".", "-B", "build", f"-DCMAKE_PREFIX_PATH={arguments.prefix}", *arguments.cmake)
    run("cmake", "--build", "build")
    run("sh", "-e", "-c", block(readme, "sh").group(1))
    faults = []
    for built in ["build/first", "./first"]:
        printed = run(built)
        if printed != expected:
            faults.append(f"{built} prints {printed!r}, README.md says {expected!r}")
    for fault in faults:
        print(fault)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
