#!/usr/bin/env python3
"""Holds the source tree against the rules of the house.

check_tree.py [--root FOLDER] CHECK     runs one check and fails with a line for each fault
check_tree.py [--root FOLDER] --write-umbrella     writes VRELBase/VRELBase.h anew

Checks: floors, circles, names, tests, umbrella, map.
"""
import argparse
import re
import sys
from pathlib import Path

from source_tree import FLOORS, SourceTree

UMBRELLA = "VRELBase/VRELBase.h"
UPWARD_CALLS = "tests/tree/upward_calls.txt"
README = "README.md"
UNTESTED_HEADERS = "tests/tree/untested_headers.txt"


def read_list(tree, name, words):
    """The lines of a list: `words` words and a reason each. Blank lines and lines behind # do not count."""
    path = tree.root / name
    lines = path.read_text(encoding="utf-8").splitlines() if path.exists() else []
    entries = [line.split(None, words) for line in lines if line.strip() and not line.startswith("#")]
    faults = [f"{name}: no reason given: {' '.join(entry)}" for entry in entries if len(entry) <= words]
    return {tuple(entry[:words]) for entry in entries}, faults


def check_floors(tree):
    """A header includes nothing from a higher floor; a source does so only where the list says why."""
    listed, faults = read_list(tree, UPWARD_CALLS, 2)
    used = set()
    for file in tree.files:
        if tree.floor(file) is None:
            faults.append(f"{file}: its folder is no floor of the house")
            continue
        for name in tree.includes(file):
            included = tree.by_name.get(name)
            if included is None:
                faults.append(f'{file}: includes "{name}", which the tree does not have')
            elif tree.floor(included) is not None and tree.height(included) > tree.height(file):
                climb = (file.name, name)
                if file.suffix == ".cpp" and climb in listed:
                    used.add(climb)
                else:
                    way = "declare it forward" if file.suffix != ".cpp" else f"list it with its reason in {UPWARD_CALLS}"
                    faults.append(
                        f"{file}: climbs from {tree.floor(file)} to {tree.floor(included)} for {name}; if it must, {way}"
                    )
    faults += [f"{UPWARD_CALLS}: {' '.join(climb)} is listed and does not climb" for climb in sorted(listed - used)]
    return faults


def check_circles(tree):
    """No header includes itself, on whatever way round."""
    faults = []
    done = set()

    def visit(file, way):
        if file in way:
            names = [tree.name(step) for step in way[way.index(file) :] + [file]]
            faults.append("circle: " + " -> ".join(names))
            return
        if file in done:
            return
        for name in tree.includes(file):
            if name in tree.by_name:
                visit(tree.by_name[name], way + [file])
        done.add(file)

    for file in tree.headers:
        visit(file, [])
    return faults


def check_names(tree):
    """Headers are included by their bare names, so a name stands for one header."""
    faults = []
    seen = {}
    for file in tree.headers:
        first = seen.setdefault(tree.name(file), file)
        if first != file:
            faults.append(f"{file}: {first} has the same name")
    for file in tree.files:
        faults += [f'{file}: includes "{name}" by a path' for name in tree.includes(file) if "/" in name]
    return faults


def check_tests(tree):
    """Each header of the library has its test in the folder of the same name, or a reason why it has none."""
    listed, faults = read_list(tree, UNTESTED_HEADERS, 1)
    tests = {file for file in tree.files if file.parts[0] == "tests"}
    untested = set()
    for file in tree.library_headers:
        name = tree.name(file)
        test = Path("tests", tree.test_folder(file), Path(name).stem + "Test.cpp")
        if test not in tests:
            untested.add((name,))
            if (name,) not in listed:
                faults.append(f"{file}: has no test {test} and no reason in {UNTESTED_HEADERS}")
    faults += [f"{UNTESTED_HEADERS}: {name} has a test or does not exist" for (name,) in sorted(listed - untested)]
    return faults


def umbrella_text(tree):
    """What the umbrella header must be: every header of the library, floor by floor."""
    text = "// All of VRELBase in one include: every public header, from the ground floor up.\n#pragma once\n"
    for floor in FLOORS[: FLOORS.index("umbrella")]:
        names = sorted(tree.name(file) for file in tree.library_headers if tree.floor(file) == floor)
        if names:
            text += f"\n// {floor[0].upper()}{floor[1:]}.\n" + "".join(f'#include "{name}"\n' for name in names)
    return text


def check_umbrella(tree):
    """The umbrella header includes every public header."""
    path = tree.root / UMBRELLA
    present = path.read_text(encoding="utf-8") if path.exists() else ""
    wanted = umbrella_text(tree)
    if present == wanted:
        return []
    include = re.compile(r'#include "(.*)"')
    missing = sorted(set(include.findall(wanted)) - set(include.findall(present)))
    return [f"{UMBRELLA}: {name} is missing" for name in missing] + [
        f"{UMBRELLA}: is not in order; write it anew by: python3 tests/tree/check_tree.py --write-umbrella"
    ]


def check_map(tree):
    """README.md's map of the house names only folders that are there, and all in which the library and the driver have
    files. An indented one lies in the one above it."""
    path = tree.root / README
    text = path.read_text(encoding="utf-8") if path.exists() else ""
    found = re.search(r"^## The map of the house\n.*?^```text\n(.*?)^```$", text, re.MULTILINE | re.DOTALL)
    if found is None:
        return [f"{README}: has no map of the house"]
    faults = []
    named = set()
    outer = []
    for line in found.group(1).splitlines():
        indent = len(line) - len(line.lstrip())
        outer = [(depth, folder) for depth, folder in outer if depth < indent]
        # Folders with one line in common stand two blanks apart, what they are for follows behind three or more.
        for name in re.split(r"\s{3,}", line.strip())[0].split():
            folder = (outer[-1][1] if outer else tree.root) / name
            named.add(folder)
            if not folder.is_dir():
                faults.append(f"{README}: the map names {folder.relative_to(tree.root)}, which does not exist")
        outer.append((indent, folder))
    for folder in sorted({file.parent for file in tree.files if file.parts[0] in ("VRELBase", "brivet")}):
        if tree.root / folder not in named:
            faults.append(f"{README}: the map does not name {folder}")
    return faults


CHECKS = {
    "floors": check_floors,
    "circles": check_circles,
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
