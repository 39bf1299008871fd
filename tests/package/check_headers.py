#!/usr/bin/env python3
"""Compiles against the installed headers as a client does, and must fail where a client must not get through.

check_headers.py --compiler CXX --include FOLDER alone             each header compiles alone, free of warnings
check_headers.py --compiler CXX --include FOLDER without-icu       no header brings one of ICU's
check_headers.py --compiler CXX --include FOLDER must-fail FILE    FILE compiles, and not with WRONG defined
"""
import argparse
import os
import re
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

WARNINGS = ["-Wall", "-Wextra", "-Werror", "-pedantic"]


def compile_client(arguments, options, text=None):
    """Checks a source, or a text where one is given, and gives what the compiler said."""
    command = [arguments.compiler, "-std=c++17", *WARNINGS, "-I", arguments.include, *options]
    environment = dict(os.environ, LC_ALL="C")
    return subprocess.run(command, input=text, capture_output=True, text=True, env=environment)


def alone(arguments):
    """The faults of all headers, each included twice in a source of its own."""
    headers = sorted(path.name for path in Path(arguments.include).glob("*.h"))

    def check(header):
        text = f'#include "{header}"\n#include "{header}"\n'
        answer = compile_client(arguments, ["-fsyntax-only", "-x", "c++", "-"], text)
        return None if answer.returncode == 0 else f"{header}:\n{answer.stderr}"

    with ThreadPoolExecutor(os.cpu_count()) as pool:
        faults = [fault for fault in pool.map(check, headers) if fault]
    if not headers:
        faults.append("no headers are installed")
    print(f"{len(headers)} headers")
    return faults


def without_icu(arguments):
    answer = compile_client(arguments, ["-M", "-x", "c++", "-"], '#include "VRELBase.h"\n')
    if answer.returncode != 0:
        return [answer.stderr]
    included = answer.stdout.replace("\\\n", " ").split()
    return [f"VRELBase.h brings {path}" for path in included if "/unicode/" in path]


def must_fail(arguments):
    source = Path(arguments.file)
    expected = re.search(r"^// error: (.*)$", source.read_text(encoding="utf-8"), re.MULTILINE).group(1)
    right = compile_client(arguments, ["-fsyntax-only", str(source)])
    if right.returncode != 0:
        return [f"{source.name} does not compile:\n{right.stderr}"]
    wrong = compile_client(arguments, ["-fsyntax-only", "-DWRONG", str(source)])
    if wrong.returncode == 0:
        return [f"{source.name} compiles with WRONG"]
    if not re.search(expected, wrong.stderr):
        return [f"{source.name} fails for another reason than: {expected}\n{wrong.stderr}"]
    return []


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--compiler", required=True)
    parser.add_argument("--include", required=True)
    checks = parser.add_subparsers(required=True)
    checks.add_parser("alone").set_defaults(check=alone)
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
