#!/usr/bin/env python3
"""Reports the share of lines and branches that the tests executed, and each other line with its reason.

report.py COVERAGE.json [UNREACHED.txt]

Reads the output of gcovr. A paragraph of UNREACHED.txt begins with a file, a colon and a reason; the lines that the
reason is for follow, indented, as they are in the file. Fails below the limits, and for a line without a reason.
"""
import json
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
LINES = 97.0
BRANCHES = 90.0


def read_reasons(path):
    """Returns the reason of each line, by the name of its file and its text."""
    reasons = {}
    for line in Path(path).read_text().splitlines():
        if line.startswith("#") or not line.strip():
            continue
        if not line.startswith(" "):
            name, reason = line.split(": ", 1)
        else:
            reasons[name, line.strip()] = reason
    return reasons


def share(reached, all_of_them):
    return 100.0 * reached / all_of_them if all_of_them else 100.0


def main(coverage, reasons_file=Path(__file__).with_name("unreached.txt")):
    reasons = read_reasons(reasons_file)
    lines, unreached, branches, without_throws = [0, 0], [], [0, 0], [0, 0]
    for file in sorted(json.loads(Path(coverage).read_text())["files"], key=lambda one: one["file"]):
        path = Path(file["file"])
        source = (ROOT / path).read_text().splitlines()
        for line in file["lines"]:
            if line["gcovr/noncode"]:
                continue
            lines[0] += line["count"] > 0
            lines[1] += 1
            if line["count"] == 0:
                unreached.append((path, line["line_number"], source[line["line_number"] - 1].strip()))
            for branch in line["branches"]:
                for counted in [branches] if branch["throw"] else [branches, without_throws]:
                    counted[0] += branch["count"] > 0
                    counted[1] += 1

    failed = 0
    for path, number, text in unreached:
        reason = reasons.get((path.name, text))
        failed += reason is None
        print(f"{path}:{number}: {text}\n    {reason or 'no reason given'}")
    shares = share(*lines), share(*without_throws)
    print(
        f"executed {shares[0]:.1f} % of {lines[1]} lines and {shares[1]:.1f} % of {without_throws[1]} branches "
        f"({share(*branches):.1f} % of {branches[1]} with exception exits); "
        f"{len(unreached)} lines not executed, {failed} of them without a reason"
    )
    return failed != 0 or shares[0] < LINES or shares[1] < BRANCHES


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
