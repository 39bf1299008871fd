#!/usr/bin/env python3
"""Attaches gdb to a program that holds one variable of each kind, and compares the output of its printers.

The debugger only reads: it sets no breakpoint and calls no function, since some kernels let it write no registers.

check_printers.py PROGRAM LIBRARY SCRATCH
"""
import os
import re
import shutil
import subprocess
import sys
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
PRINTERS = ROOT / "tools/gdb/vrelbase_printers.py"
PROGRAM = LIBRARY = SCRATCH = ""
LONG_TEXT = "a text that does not fit into the object itself"

# Names of the program, or what gdb is to print else, and what is shown. An address stands as @.
SHOWN = {
    "uninitialized": "uninitialized",
    "empty": '""',
    "shortText": '"Winkel für Träger 🔩"',
    "longText": f'"{LONG_TEXT}, \\"all told\\""',
    "bytes": '"bolt"',
    "unended": '"bol"',
    "noBytes": "no bytes",
    "view": '"m8"',
    "writable": '"bolt"',
    "numbers": "VRELDynamicArray<int> of 3 in 10 slots = {3, 1, 2}",
    "noNumbers": "VRELDynamicArray<int> of 0 in 10 slots",
    "names": 'VRELDynamicArray<VRELString> of 1 in 1 slots, shared by 2 = {"hub"}',
    # The hash is the number: 19 goes into slot 2 of 17, behind 1.
    "list": "VRELHashList<int> of 2 in 17 slots = {1, 19}",
    "map": 'VRELHashMap<VRELString, int> of 1 in 17 slots = {["hub"] = 3}',
    "emptyMap": "VRELHashMap<int, VRELString> of 0 in 17 slots",
    "part": "shop::PartHandle to shop::Bracket at @, 2 uses",
    "samePart": "VRELReferenceHandle to shop::Bracket at @, 2 uses",
    "noPart": "shop::PartHandle to nothing",
    "noValue": "no value",
    "doubleValue": "double 0.5",
    "intValue": "int -7",
    "boolValue": "bool true",
    "textValue": 'text "On"',
    "ok": "VREL_S_OK (success, number 0)",
    "invalid": "VREL_E_INVALID_FILE (failure, number 21)",
    "foreign": "0x1050003 (failure, domain 5, number 3)",
    "outside": "0x91000001 (failure, number 1)",
    "aborted": "VREL_E_ABORTED (aborted, number 3)",
    "drawing": '{title = "bracket", result = VREL_S_PARTIAL (success, number 1)}',
    "*&names[0]": '"hub"',
}


def gdb(settings, commands, folder=None):
    """Attaches gdb to the program and returns what it prints: settings come before it attaches, commands after that."""
    environment = dict(os.environ, LC_ALL="C.UTF-8")
    if folder is not None:
        environment["LD_LIBRARY_PATH"] = str(folder)
    with subprocess.Popen(
        [PROGRAM], stdin=subprocess.PIPE, stdout=subprocess.PIPE, bufsize=0, env=environment
    ) as program:
        if program.stdout.read(1) != b"\n":
            raise RuntimeError(f"{PROGRAM} ended early")
        script = ["set pagination off", "set host-charset UTF-8", *settings, f"attach {program.pid}"]
        script += ["frame function main", *commands]
        options = [option for line in script for option in ["-ex", line]]
        answer = subprocess.run(
            ["gdb", "-nx", "-batch", *options, PROGRAM], stdin=subprocess.DEVNULL, capture_output=True, timeout=120
        )
    return answer.stdout.decode(), answer.stderr.decode()


# What gdb says where the kernel, a sandbox or a container does not let it debug.
REFUSALS = r"ptrace: .*|Could not attach.*|Couldn't (?:get|write|read) .*|warning: process \d+ is .*|.*not permitted.*"


def shown(output):
    return re.findall(r"^\$\d+ = (.*)$", re.sub(r"0x[0-9a-f]{6,}(?=, \d+ use)", "@", output), re.MULTILINE)


class PrinterTest(unittest.TestCase):
    maxDiff = None

    def look(self, *commands, settings=(f"source {PRINTERS}",), folder=None):
        output, errors = gdb(settings, commands, folder)
        refusal = re.search(REFUSALS, errors)
        if refusal:
            self.skipTest(f"this machine does not let gdb attach to a program: {refusal.group()}")
        self.assertNotIn("Python Exception", errors)
        return shown(output)

    def test_shows_each_kind(self):
        answers = self.look(*(f"print {name}" for name in SHOWN))
        self.assertEqual(dict(zip(SHOWN, answers)), SHOWN)

    def test_keeps_to_the_limit_of_gdb(self):
        answers = self.look("set print elements 2", "print longText", "print numbers")
        self.assertEqual(answers, ['"a "...', "VRELDynamicArray<int> of 3 in 10 slots = {3, 1...}"])

    def test_survives_what_was_never_built(self):
        expected = {
            "VRELString": "unreadable text at 0x5a5a5a5a5a5a5a5a",
            "Gk_String": "no bytes",
            "VRELDynamicArray<int>": "VRELDynamicArray<int>, no storage",
            "VRELHashList<int>": "VRELHashList<int> of 1515870810 in 0 slots",
            "VRELReferenceHandle": "VRELReferenceHandle to unreadable 0x5a5a5a5a5a5a5a5a",
            "VRELValue": "unknown kind 1515870810",
        }
        answers = self.look(*(f"print *({type_}*)garbage" for type_ in expected))
        self.assertEqual(dict(zip(expected, answers)), expected)

    def test_can_be_switched_off(self):
        answers = self.look("disable pretty-printer global VRELBase;VRINResult", "print ok", "print bytes")
        self.assertEqual(answers[1], '"bolt"')
        self.assertIn("code = 0", answers[0])

    def test_comes_with_the_library(self):
        folder = Path(SCRATCH)
        shutil.rmtree(folder, ignore_errors=True)
        folder.mkdir(parents=True)
        shutil.copy(LIBRARY, folder)
        name = Path(LIBRARY).name
        (folder / ".".join(name.split(".")[:3])).symlink_to(name)
        settings = [f"add-auto-load-safe-path {folder}"]
        self.assertNotEqual(self.look("print ok", settings=settings, folder=folder), [SHOWN["ok"]])
        shutil.copy(PRINTERS, folder / f"{name}-gdb.py")
        self.assertEqual(self.look("print ok", settings=settings, folder=folder), [SHOWN["ok"]])

    def test_knows_all_results(self):
        header = (ROOT / "VRELBase/public/VRINResult.h").read_text()
        codes = dict((int(code, 0), name) for name, code in re.findall(r"^constexpr long (\w+) = (\w+);", header, re.M))
        table = re.search(r"^RESULTS = \{\n(.*?)^\}", PRINTERS.read_text(), re.MULTILINE | re.DOTALL).group(1)
        known = dict((int(code, 0), name) for code, name in re.findall(r'(\w+): "(\w+)"', table))
        self.assertEqual((len(codes), known), (24, codes))


if __name__ == "__main__":
    if shutil.which("gdb") is None:
        print("skipped: there is no gdb")
        sys.exit(77)
    PROGRAM, LIBRARY, SCRATCH = (sys.argv.pop(1) for _ in range(3))
    unittest.main()
