#!/usr/bin/env python3
"""Checks by readelf that every program and library below an installation prefix is hardened.

check_hardening.py PREFIX [FILE...]

Each must be position independent, have a read-only relocation table (RELRO) that is filled at start (BIND_NOW), a stack
that is not executable, a stack protector, the mark for shadow stacks, and RUNPATH instead of RPATH, without the current
folder. The library and the driver must also call the checked functions of the C library (_FORTIFY_SOURCE).
"""
import platform
import re
import subprocess
import sys
from pathlib import Path

# Binaries that copy into buffers of known size, so that checked functions must appear.
FORTIFIED = re.compile(r"^(brivet(-describe)?$|libVRELBase\.so\.\d)")


def readelf(path, *options):
    return subprocess.run(["readelf", "-W", *options, path], capture_output=True, text=True, check=True).stdout


def faults(path):
    header, dynamic, segments = readelf(path, "-h"), readelf(path, "-d"), readelf(path, "-l")
    symbols, notes = readelf(path, "--dyn-syms"), readelf(path, "-n")
    found = re.search(r"runpath: \[(.*)\]", dynamic)
    run_path = found and found.group(1)
    checks = {
        "is not position independent": re.search(r"Type:\s+DYN", header),
        "has no GNU_RELRO segment": "GNU_RELRO" in segments,
        "is not bound at start (BIND_NOW)": re.search(r"BIND_NOW|FLAGS_1\).*NOW", dynamic),
        "has an executable stack": re.search(r"GNU_STACK.* RW ", segments),
        "has RPATH instead of RUNPATH": "(RPATH)" not in dynamic,
        "searches libraries in the current folder": run_path is None or "" not in run_path.split(":"),
        "has no stack protector": "__stack_chk_fail" in symbols,
    }
    if platform.machine() == "x86_64":
        checks["is not marked for shadow stacks"] = re.search(r"SHSTK", notes)
    if FORTIFIED.match(path.name):
        checks["calls no checked function (_FORTIFY_SOURCE)"] = re.search(r"__\w+_chk@", symbols)
    return [f"{path}: {what}" for what, holds in checks.items() if not holds]


def main():
    prefix = Path(sys.argv[1])
    binaries = [
        path
        for path in sorted(prefix.rglob("*"))
        if path.is_file() and not path.is_symlink() and path.read_bytes()[:4] == b"\x7fELF"
    ]
    binaries += [Path(path) for path in sys.argv[2:]]
    found = [fault for path in binaries for fault in faults(path)]
    if len(binaries) < 2:
        found.append(f"{prefix}: found only {len(binaries)} programs and libraries")
    print("\n".join(found))
    print(f"{len(binaries)} programs and libraries, {len(found)} faults")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
