#!/usr/bin/env python3
"""Checks the dynamic symbols of the library: no instantiation of a standard library template is exported.

check_exports.py LIBRARY     exits with 77 if nm is not installed
"""
import re
import shutil
import subprocess
import sys

# Mangled names in namespace std (St, and its abbreviations Sa to Ss) or __gnu_cxx: functions, static variables of
# functions, virtual tables and type information.
STANDARD = re.compile(r"_Z(?:GV|T[ISV])?Z?(?:N[VKRO]*)?(?:S[tabsiod]|9__gnu_cxx)")


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    if shutil.which("nm") is None:
        print("skipped: nm is not installed")
        return 77
    lines = subprocess.run(
        ["nm", "-D", "--defined-only", sys.argv[1]], check=True, capture_output=True, text=True
    ).stdout.splitlines()
    names = [line.split()[-1].partition("@")[0] for line in lines if line.strip()]
    faults = [f"exports {name}" for name in names if STANDARD.match(name)]
    # Proves that the list is not empty and holds classes, C functions and data.
    required = ["_ZN10VRELStringC1Ev", "_ZTV9VRELEvent", "blast", "_ZN12VRELEventBus9_eventBusE"]
    faults += [f"does not export {name}" for name in required if name not in names]
    for fault in faults:
        print(fault)
    print(f"{len(names)} symbols, {len(faults)} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
