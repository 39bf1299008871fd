#!/usr/bin/env python3
"""Runs one program of the book and compares its output with the files next to its source.

run_example.py --program FILE --source FILE --work FOLDER

The program starts in FOLDER, which is recreated with a copy of each data file of the source's folder (all files but the
sources and the expected output). It must exit with status 0, print NAME.out, and for each NAME.out.FILE write a FILE with
these bytes.
"""
import argparse
import difflib
import shutil
import subprocess
import sys
from pathlib import Path


def differences(name, expected, found):
    lines = [text.decode("utf-8", "backslashreplace").splitlines(keepends=True) for text in (expected, found)]
    return list(difflib.unified_diff(*lines, f"{name} as expected", f"{name} as found"))


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    for name in ["program", "source", "work"]:
        parser.add_argument(f"--{name}", type=Path, required=True)
    arguments = parser.parse_args()
    source = arguments.source
    work = arguments.work
    shutil.rmtree(work, ignore_errors=True)
    work.mkdir(parents=True)
    for file in source.parent.iterdir():
        if file.suffix != ".cpp" and ".out" not in file.name:
            shutil.copy(file, work)

    answer = subprocess.run([arguments.program], cwd=work, stdin=subprocess.DEVNULL, capture_output=True)
    faults = differences("standard output", source.with_suffix(".out").read_bytes(), answer.stdout)
    for expected in sorted(source.parent.glob(f"{source.stem}.out.*")):
        name = expected.name[len(source.stem) + len(".out.") :]
        written = work / name
        faults += differences(name, expected.read_bytes(), written.read_bytes() if written.exists() else b"")
    if answer.returncode != 0:
        faults.append(f"exits with status {answer.returncode}\n")
    if answer.stderr:
        faults.append(f"prints on standard error: {answer.stderr.decode('utf-8', 'backslashreplace')}\n")
    sys.stdout.writelines(faults)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
