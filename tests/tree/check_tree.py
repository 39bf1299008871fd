#!/usr/bin/env python3
"""Checks the rules of the source tree.

check_tree.py [--root FOLDER] CHECK                runs one check and fails with a line for each violation
check_tree.py [--root FOLDER] --write-umbrella     rewrites VRELBase/VRELBase.h

Checks: layers, cycles, names, tests, umbrella, map.
"""
import argparse
import re
import sys
from pathlib import Path

from source_tree import LIBRARY_LAYERS, SourceTree

UMBRELLA = "VRELBase/VRELBase.h"
UPWARD_CALLS = "tests/tree/upward_calls.txt"
README = "README.md"
UNTESTED_HEADERS = "tests/tree/untested_headers.txt"


def read_list(tree, name, words):
    """Reads a list whose lines have `words` words and a reason each. Skips blank lines and lines that begin with #."""
    path = tree.root / name
    lines = path.read_text(encoding="utf-8").splitlines() if path.exists() else []
    entries = [line.split(None, words) for line in lines if line.strip() and not line.startswith("#")]
    faults = [f"{name}: no reason given: {' '.join(entry)}" for entry in entries if len(entry) <= words]
    return {tuple(entry[:words]) for entry in entries}, faults


def check_layers(tree):
    """Checks that no header includes a higher layer, and a source only if it is listed with a reason."""
    listed, faults = read_list(tree, UPWARD_CALLS, 2)
    used = set()
    for file in tree.files:
        if tree.layer(file) is None:
            faults.append(
                f"{file}: its folder is no layer of the source tree; if it is to be one, add it to LIBRARY_LAYERS in "
                "tests/tree/source_tree.py, and its tests to test_folders in tests/CMakeLists.txt"
            )
            continue
        for name in tree.includes(file):
            included = tree.included_file(name)
            if included is None:
                faults.append(f'{file}: includes "{name}", which the tree does not have')
            elif not tree.may_include(file, included):
                call = (file.name, name)
                if file.suffix == ".cpp" and call in listed:
                    used.add(call)
                else:
                    fix = "declare it forward" if file.suffix != ".cpp" else f"list it with its reason in {UPWARD_CALLS}"
                    faults.append(
                        f"{file}: layer {tree.layer(file)} includes {name} of layer {tree.layer(included)}; if it must, {fix}"
                    )
    faults += [f"{UPWARD_CALLS}: {' '.join(call)} is listed but not needed" for call in sorted(listed - used)]
    return faults


def check_cycles(tree):
    """Checks that no header includes itself, directly or through others."""
    faults = []
    done = set()

    def visit(file, path):
        if file in path:
            names = [tree.name(step) for step in path[path.index(file) :] + [file]]
            faults.append("cycle: " + " -> ".join(names))
            return
        if file in done:
            return
        for name in tree.includes(file):
            included = tree.included_file(name)
            if included is not None:
                visit(included, path + [file])
        done.add(file)

    for file in tree.headers:
        visit(file, [])
    return faults


def check_names(tree):
    """Checks that header names are unique, and that headers are included without a path other than "detail/"."""
    faults = []
    seen = {}
    for file in tree.headers:
        first = seen.setdefault(tree.name(file), file)
        if first != file:
            faults.append(f"{file}: {first} has the same name")
    for file in tree.files:
        paths = [name for name in tree.includes(file) if "/" in name.removeprefix("detail/")]
        faults += [f'{file}: includes "{name}" by a path; headers are included by their bare names' for name in paths]
    return faults


def check_tests(tree):
    """Checks that each header of the library has a test in the folder of the same name, or a reason to have none."""
    listed, faults = read_list(tree, UNTESTED_HEADERS, 1)
    tests = {file for file in tree.files if file.parts[0] == "tests"}
    untested = set()
    for file in tree.library_headers:
        name = tree.name(file)
        test = Path(tree.test_folder(file), Path(name).stem + "Test.cpp")
        if test not in tests:
            untested.add((name,))
            if (name,) not in listed:
                faults.append(f"{file}: has no test {test} and no reason in {UNTESTED_HEADERS}")
    faults += [f"{UNTESTED_HEADERS}: {name} has a test or does not exist" for (name,) in sorted(listed - untested)]
    return faults


def umbrella_text(tree):
    """Returns the content of the umbrella header: every public header of the library, layer by layer."""
    text = "// The whole public API of VRELBase in one header, from the lowest layer to the highest.\n#pragma once\n"
    for layer in LIBRARY_LAYERS[: LIBRARY_LAYERS.index("umbrella")]:
        names = sorted(tree.name(file) for file in tree.public_headers if tree.layer(file) == layer)
        if names:
            text += f"\n// {layer[0].upper()}{layer[1:]}.\n" + "".join(f'#include "{name}"\n' for name in names)
    return text


def check_umbrella(tree):
    """Checks that the umbrella header includes every public header and no other."""
    path = tree.root / UMBRELLA
    present = path.read_text(encoding="utf-8") if path.exists() else ""
    wanted = umbrella_text(tree)
    if present == wanted:
        return []
    include = re.compile(r'#include "(.*)"')
    missing = sorted(set(include.findall(wanted)) - set(include.findall(present)))
    return [f"{UMBRELLA}: {name} is missing" for name in missing] + [
        f"{UMBRELLA}: is not up to date; rewrite it: python3 tests/tree/check_tree.py --write-umbrella"
    ]


def check_map(tree):
    """Checks that the source tree in README.md names only existing folders, and every folder of the library and the
    driver that has files. An indented folder is in the one above it."""
    path = tree.root / README
    text = path.read_text(encoding="utf-8") if path.exists() else ""
    found = re.search(r"^## Source tree\n.*?^```text\n(.*?)^```$", text, re.MULTILINE | re.DOTALL)
    if found is None:
        return [f"{README}: has no section with the source tree"]
    faults = []
    named = set()
    outer = []
    for line in found.group(1).splitlines():
        indent = len(line) - len(line.lstrip())
        outer = [(depth, folder) for depth, folder in outer if depth < indent]
        # Folders on one line are separated by two blanks; the description follows after three or more.
        for name in re.split(r"\s{3,}", line.strip())[0].split():
            folder = (outer[-1][1] if outer else tree.root) / name
            named.add(folder)
            if not folder.is_dir():
                faults.append(f"{README}: the source tree names {folder.relative_to(tree.root)}, which does not exist")
        outer.append((indent, folder))
    folders = {file.parent for file in tree.files if file.parts[0] in ("VRELBase", "brivet")}
    for folder in sorted(folders):
        if folder.name not in ("detail", "internal") and tree.root / folder not in named:
            faults.append(f"{README}: the source tree does not name {folder}")
    return faults


CHECKS = {
    "layers": check_layers,
    "cycles": check_cycles,
    "names": check_names,
    "tests": check_tests,
    "umbrella": check_umbrella,
    "map": check_map,
}


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--root", default=Path(__file__).resolve().parents[2], help="the tree; default: this one")
    parser.add_argument("--write-umbrella", action="store_true")
    parser.add_argument("check", nargs="?", choices=CHECKS)
    arguments = parser.parse_args()
    tree = SourceTree(arguments.root)
    if arguments.write_umbrella:
        (tree.root / UMBRELLA).write_text(umbrella_text(tree), encoding="utf-8")
        return 0
    if arguments.check is None:
        parser.error("name a check")
    faults = CHECKS[arguments.check](tree)
    for fault in faults:
        print(fault)
    print(f"{arguments.check}: {len(tree.files)} files, {len(faults)} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
