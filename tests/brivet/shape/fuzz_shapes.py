#!/usr/bin/env python3
"""fuzz_shapes.py SECONDS FILE...

Mutates STEP files and meshes them with brivet. Prints what crashes the shape worker or reaches its limit of time, which is
a warning for the user, and fails if brivet itself does not end with a documented status. The files of such runs are kept in
build/fuzz-shapes. VREL_FUZZ_SEED sets the seed of the random numbers; BRIVET sets the program.

    tests/brivet/shape/fuzz_shapes.py 300 examples/*.stp
"""
import os
import pathlib
import random
import re
import subprocess
import sys
import time

STATUSES = {0, 4, 8, 9, 21}
KEPT = re.compile(r"exact shapes are not evaluated: (the shape worker.*)")
RECORD = re.compile(rb"^#\d+\s*=[^;]*;", re.M)
NUMBER = re.compile(rb"-?\d+\.\d*(?:E[+-]?\d+)?")
REFERENCE = re.compile(rb"#\d+(?!\s*=)")
NUMBERS = [b"0.", b"-1.", b"1.E+9", b"1.E-9", b"1.E+300", b"-1.E+300", b"1.E-300", b"1.E+999", b"2.5E-8"]


def replace(data, match, text):
    return data[:match.start()] + text + data[match.end():]


def mutate(data, random_source):
    """Returns the data after a few changes of numbers, references, flags, lists and records."""
    for _ in range(random_source.choice((1, 1, 2, 3, 6))):
        kind = random_source.randrange(6)
        if kind == 0:
            found = list(NUMBER.finditer(data))
            if found:
                data = replace(data, random_source.choice(found), random_source.choice(NUMBERS))
        elif kind == 1:
            found = list(REFERENCE.finditer(data))
            if found:
                data = replace(data, random_source.choice(found), random_source.choice(found).group())
        elif kind == 2:
            found = list(re.finditer(rb"\.[TF]\.", data))
            if found:
                match = random_source.choice(found)
                data = replace(data, match, b".F." if match.group() == b".T." else b".T.")
        elif kind == 3:
            found = list(re.finditer(rb"\((#\d+),(#\d+)[^()]*\)", data))
            if found:
                match = random_source.choice(found)
                data = replace(data, match, random_source.choice((b"()", b"(" + match.group(1) + b")")))
        elif kind == 4:
            found = list(RECORD.finditer(data))
            if found:
                data = replace(data, random_source.choice(found), b"")
        else:
            found = list(RECORD.finditer(data))
            if found:
                first, second = random_source.choice(found), random_source.choice(found)
                head = first.group().split(b"=")[0]
                data = replace(data, first, head + b"=" + second.group().split(b"=", 1)[1])
    return data


def main():
    if len(sys.argv) < 3 or not sys.argv[1].isdigit():
        print(__doc__)
        return 2
    root = pathlib.Path(__file__).resolve().parents[3]
    brivet = os.environ.get("BRIVET", str(root / "build/release/bin/brivet"))
    seed = int(os.environ.get("VREL_FUZZ_SEED", "0")) or random.randrange(1, 1 << 31)
    random_source = random.Random(seed)
    folder = root / "build/fuzz-shapes"
    folder.mkdir(parents=True, exist_ok=True)
    samples = [pathlib.Path(name).read_bytes() for name in sys.argv[2:]]
    end = time.monotonic() + int(sys.argv[1])
    counts = {"runs": 0, "kept": 0, "wrong": 0}
    reasons = {}
    current = folder / f"current-{os.getpid()}.stp"
    while time.monotonic() < end:
        current.write_bytes(mutate(random_source.choice(samples), random_source))
        counts["runs"] += 1
        result = subprocess.run([brivet, "-nolog", "-quiet", "-force", "-set", "Shape.*.Reader.TimeLimit=20", str(current),
                                 str(current.with_suffix(".glb"))], capture_output=True, check=False)
        found = KEPT.search(result.stderr.decode("utf-8", "replace"))
        is_wrong = result.returncode not in STATUSES
        if found:
            reasons[found.group(1)] = reasons.get(found.group(1), 0) + 1
        if is_wrong or found:
            counts["wrong" if is_wrong else "kept"] += 1
            current.replace(folder / f"{seed}-{counts['runs']}.stp")
            print(f"{seed}-{counts['runs']}.stp: status {result.returncode}: {found.group(1) if found else ''}", flush=True)
    print(f"seed {seed}: {counts['runs']} runs; {counts['wrong']} with a wrong status; " +
          (", ".join(f"{count} times {reason}" for reason, count in reasons.items()) or "no failure of the worker"))
    return 1 if counts["wrong"] else 0


sys.exit(main())
