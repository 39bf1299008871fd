#!/usr/bin/env python3
"""Finds objects with static storage duration that have a constructor or destructor.

check_objects.py --list FILE     reads the names of object files, one per line; fails if any except VRELStartup's
                                 runs code when the library is loaded

Code that runs at load time is in the section .init_array of the object file: constructors, and the registration of
destructors. A constant that the compiler initializes has none.
"""
import argparse
import subprocess
import sys
from pathlib import Path

ALLOWED = "VRELStartup.cpp.o"
RUNS_AT_LOAD = (".init_array", ".ctors", ".preinit_array")


def runs_at_load(object_file):
    sections = subprocess.run(["objdump", "-h", object_file], check=True, capture_output=True, text=True).stdout
    names = [line.split()[1] for line in sections.splitlines() if len(line.split()) > 1]
    return any(name.startswith(RUNS_AT_LOAD) for name in names)


def faults(object_files):
    return [
        f"{file}: defines an object with static storage duration and a constructor or destructor; "
        "define it in VRELStartup.cpp"
        for file in object_files
        if Path(file).name != ALLOWED and runs_at_load(file)
    ]


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--list", required=True)
    object_files = Path(parser.parse_args().list).read_text(encoding="utf-8").split()
    if not any(Path(file).name == ALLOWED for file in object_files):
        sys.exit(f"{ALLOWED} is not among the object files")
    found = faults(object_files)
    for fault in found:
        print(fault)
    print(f"startup: {len(object_files)} object files, {len(found)} faults")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
