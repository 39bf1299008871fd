#!/usr/bin/env python3
"""Compiles against the installed headers as a client does.

check_headers.py --compiler CXX --include FOLDER alone             Each header compiles alone, with all warnings enabled.
check_headers.py --compiler CXX --include FOLDER modes FILE        The umbrella header and FILE, which uses templates,
                                                                   compile without warnings with g++ and clang++ in C++17,
                                                                   20 and 23.
check_headers.py --compiler CXX --include FOLDER without-icu       No header includes a header of ICU.
check_headers.py --compiler CXX --include FOLDER must-fail FILE    FILE compiles, and fails with WRONG defined. Its line
                                                                   "// error: PATTERN" matches the compiler's message.
"""
import argparse
import os
import re
import shutil
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

# What strict clients use. -I, not -isystem: a compiler reports no warnings of system headers.
WARNINGS = """-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor -Woverloaded-virtual
              -Werror""".split()
COMPILERS = ["g++", "clang++", "clang++-14"]
# The names of each standard, the first that the compiler accepts is used.
STANDARDS = [["c++17"], ["c++20"], ["c++23", "c++2b"]]


def run_compiler(arguments, options, text=None, compiler=None, standard="c++17"):
    """Compiles a file, or a text if one is given."""
    command = [compiler or arguments.compiler, f"-std={standard}", *WARNINGS, "-I", arguments.include, *options]
    environment = dict(os.environ, LC_ALL="C")
    return subprocess.run(command, input=text, capture_output=True, text=True, env=environment, check=False)


def alone(arguments):
    """Returns the faults of all headers, each included twice in a source of its own."""
    headers = sorted(path.name for path in Path(arguments.include).glob("*.h"))

    def check(header):
        text = f'#include "{header}"\n#include "{header}"\n'
        result = run_compiler(arguments, ["-fsyntax-only", "-x", "c++", "-"], text)
        return None if result.returncode == 0 else f"{header}:\n{result.stderr}"

    with ThreadPoolExecutor(os.cpu_count()) as pool:
        faults = [fault for fault in pool.map(check, headers) if fault]
    if not headers:
        faults.append("no headers are installed")
    print(f"{len(headers)} headers")
    return faults


def compilers(first):
    """Returns the given compiler and those of COMPILERS that are installed, without duplicates."""
    found = {}
    for name in [first, *COMPILERS]:
        path = shutil.which(name)
        if path:
            found.setdefault(os.path.realpath(path), path)
    return list(found.values())


def accepts(compiler, standard):
    command = [compiler, f"-std={standard}", "-fsyntax-only", "-x", "c++", "-"]
    return subprocess.run(command, input="", capture_output=True, text=True, check=False).returncode == 0


def modes(arguments):
    """Returns the faults of the umbrella header and of a client in each mode of each compiler."""
    pairs = [
        (compiler, next((name for name in names if accepts(compiler, name)), None))
        for compiler in compilers(arguments.compiler)
        for names in STANDARDS
    ]

    def check(pair):
        compiler, standard = pair
        if standard is None:
            return None
        result = run_compiler(arguments, ["-fsyntax-only", arguments.file], None, compiler, standard)
        return None if result.returncode == 0 else f"{compiler} -std={standard}:\n{result.stderr}"

    with ThreadPoolExecutor(os.cpu_count()) as pool:
        faults = [fault for fault in pool.map(check, pairs) if fault]
    for compiler, standard in pairs:
        print(f"{compiler} {standard or 'does not know a standard'}")
    return faults


def without_icu(arguments):
    result = run_compiler(arguments, ["-M", "-x", "c++", "-"], '#include "VRELBase.h"\n')
    if result.returncode != 0:
        return [result.stderr]
    included = result.stdout.replace("\\\n", " ").split()
    return [f"VRELBase.h includes {path}" for path in included if "/unicode/" in path]


def must_fail(arguments):
    source = Path(arguments.file)
    expected = re.search(r"^// error: (.*)$", source.read_text(encoding="utf-8"), re.MULTILINE).group(1)
    right = run_compiler(arguments, ["-fsyntax-only", str(source)])
    if right.returncode != 0:
        return [f"{source.name} does not compile:\n{right.stderr}"]
    wrong = run_compiler(arguments, ["-fsyntax-only", "-DWRONG", str(source)])
    if wrong.returncode == 0:
        return [f"{source.name} compiles with WRONG"]
    if not re.search(expected, wrong.stderr):
        return [f"{source.name} fails, but not with: {expected}\n{wrong.stderr}"]
    return []


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--compiler", required=True)
    parser.add_argument("--include", required=True)
    checks = parser.add_subparsers(required=True)
    checks.add_parser("alone").set_defaults(check=alone)
    in_modes = checks.add_parser("modes")
    in_modes.add_argument("file")
    in_modes.set_defaults(check=modes)
    checks.add_parser("without-icu").set_defaults(check=without_icu)
    failing = checks.add_parser("must-fail")
    failing.add_argument("file")
    failing.set_defaults(check=must_fail)
    arguments = parser.parse_args()
    faults = arguments.check(arguments)
    for fault in faults:
        print(fault)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
