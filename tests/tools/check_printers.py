#!/usr/bin/env python3
"""Attaches gdb to a program with one variable of each printed class, and compares the output of the printers.

The debugger only reads: it sets no breakpoint and calls no function, since some kernels refuse register writes. Where
gdb cannot attach at all the tests are skipped with its message.

check_printers.py PROGRAM PROGRAM-WITHOUT-CLASSES LIBRARY SCRATCH
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
PROGRAM = BARE_PROGRAM = LIBRARY = SCRATCH = ""
LONG_TEXT = "a string that does not fit into the object itself"

# Variables of the program, or other expressions, and what gdb prints. "@" replaces an address.
PRINTED = {
    "uninitialized": "uninitialized",
    "empty": '""',
    "shortText": '"Winkel für Träger 🔩"',
    "longText": f'"{LONG_TEXT}, \\"quoted\\""',
    "bytes": '"bolt"',
    "unended": '"bol"',
    "noBytes": "no bytes",
    "view": '"m8"',
    "writable": '"bolt"',
    "viewBefore": "no bytes",
    "viewAfter": "no bytes",
    "numbers": "VRELDynamicArray<int> of 3 in 10 slots = {3, 1, 2}",
    "noNumbers": "VRELDynamicArray<int> of 0 in 10 slots",
    "names": 'VRELDynamicArray<VRELString> of 1 in 1 slots, shared by 2 = {"hub"}',
    # The hash is the number: 19 is in slot 2 of 17, after 1.
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
    "textValue": 'string "On"',
    "point2D": "(1.5, -2)",
    "point3D": "(1, 2, 3.25)",
    "weightPoint": "(0.5, 1, 1.625), weight 0.5",
    "pointf": "(1, 2, 3.5)",
    "vectorf": "(0, -1, 0.5)",
    "directionf": "(0, 0, 1)",
    "unbounded": "(-inf, inf)",
    "emptyBox": "(-inf, inf) x (-inf, inf)",
    "box": "[0, 1] x [2, 4] x [3.25, 5]",
    "identity": "scale 1, matrix ((1, 0), (0, 1)), translation (0, 0)",
    "morph": "scale 2, matrix ((1, 0, 0.5), (0, 1, 0), (0, 0, 1)), translation (1, 2, 3.25)",
    "option": '"Step.Reader.Limit" = int 9, default int 7',
    "ok": "VREL_S_OK (success, number 0)",
    "invalid": "VREL_E_INVALID_FILE (failure, number 21)",
    "foreign": "0x1050003 (failure, domain 5, number 3)",
    "outside": "0x91000001 (failure, number 1)",
    "aborted": "VREL_E_ABORTED (aborted, number 3)",
    "drawing": '{title = "bracket", result = VREL_S_PARTIAL (success, number 1)}',
    "*&names[0]": '"hub"',
}


HINT = (
    "no debug information about this class; compile with -femit-class-debug-always (g++) or -fstandalone-debug (clang++)"
)


def gdb(settings, commands, folder=None, program_path=None, path=None):
    """Runs the settings, attaches gdb to the program, runs the commands, and returns the output and the errors.

    With `path`, gdb is searched for there first.
    """
    program_path = program_path or PROGRAM
    environment = dict(os.environ, LC_ALL="C.UTF-8")
    search_path = os.environ["PATH"] if path is None else f"{path}:{os.environ['PATH']}"
    if folder is not None:
        environment["LD_LIBRARY_PATH"] = str(folder)
    with subprocess.Popen(
        [program_path], stdin=subprocess.PIPE, stdout=subprocess.PIPE, bufsize=0, env=environment
    ) as program:
        if program.stdout.read(1) != b"\n":
            raise RuntimeError(f"{program_path} ended early")
        script = ["set pagination off", "set host-charset UTF-8", *settings, f"attach {program.pid}"]
        script += ["frame function main", *commands]
        options = [option for line in script for option in ["-ex", line]]
        answer = subprocess.run(
            [shutil.which("gdb", path=search_path), "-nx", "-batch", *options, program_path],
            stdin=subprocess.DEVNULL,
            capture_output=True,
            timeout=120,
        )
    return answer.stdout.decode(), answer.stderr.decode()


# Messages of gdb if the kernel, a sandbox or a container refuses debugging.
REFUSALS = r"ptrace: .*|Could not attach.*|Couldn't (?:get|write|read) .*|warning: process \d+ is .*|.*not permitted.*"


def printed(output):
    return re.findall(r"^\$\d+ = (.*)$", re.sub(r"0x[0-9a-f]{6,}(?=, \d+ use)", "@", output), re.MULTILINE)


class PrinterTest(unittest.TestCase):
    maxDiff = None

    def run_gdb(self, *commands, settings=(f"source {PRINTERS}",), **options):
        output, errors = gdb(settings, commands, **options)
        refusal = re.search(REFUSALS, errors)
        if refusal:
            self.skipTest(f"gdb cannot attach to a program on this machine: {refusal.group()}")
        self.assertNotIn("Python Exception", errors)
        return printed(output)

    def test_prints_each_class(self):
        answers = self.run_gdb(*(f"print {name}" for name in PRINTED))
        self.assertEqual(dict(zip(PRINTED, answers)), PRINTED)

    def test_print_elements_limits_output(self):
        answers = self.run_gdb("set print elements 2", "print longText", "print numbers")
        self.assertEqual(answers, ['"a "...', "VRELDynamicArray<int> of 3 in 10 slots = {3, 1...}"])

    def test_prints_objects_of_invalid_memory(self):
        expected = {
            "VRELString": "unreadable string at 0x5a5a5a5a5a5a5a5a",
            "Gk_String": "no bytes",
            "VRELDynamicArray<int>": "VRELDynamicArray<int>, no storage",
            "VRELHashList<int>": "VRELHashList<int> of 1515870810 in 0 slots",
            "VRELReferenceHandle": "VRELReferenceHandle to unreadable 0x5a5a5a5a5a5a5a5a",
            "VRELValue": "unknown kind 1515870810",
        }
        answers = self.run_gdb(*(f"print *({type_}*)garbage" for type_ in expected))
        self.assertEqual(dict(zip(expected, answers)), expected)

    def test_missing_class_information_prints_hint(self):
        # As in a build with -g, which the measurement of coverage is.
        described = subprocess.run(
            ["gdb", "-nx", "-batch", "-ex", "ptype VRELString", LIBRARY], capture_output=True, text=True, check=False
        )
        if "class VRELString" in described.stdout:
            self.skipTest("the library has debug information about its classes")
        expected = {
            "text": f"VRELString: {HINT}",
            "drawing": "{title = <incomplete type>}",
            "names": f"VRELDynamicArray<VRELString> of 1 in 1 slots, {HINT.replace('this class', 'VRELString')}",
            "handle": f"VRELReferenceHandle: {HINT}",
            "*undefined": "<incomplete type>",
        }
        answers = self.run_gdb(*(f"print {name}" for name in expected), program_path=BARE_PROGRAM)
        self.assertEqual(dict(zip(expected, answers)), expected)

    def test_refused_debugger_skips_with_its_message(self):
        folder = Path(SCRATCH) / "fake"
        shutil.rmtree(folder, ignore_errors=True)
        folder.mkdir(parents=True)
        fake = folder / "gdb"
        fake.write_text("#!/bin/sh\necho \"Couldn't write extended state status: Bad address.\" >&2\n")
        fake.chmod(0o755)
        with self.assertRaisesRegex(unittest.SkipTest, "Couldn't write extended state status: Bad address"):
            self.run_gdb("print ok", path=folder)

    def test_printer_can_be_disabled(self):
        answers = self.run_gdb("disable pretty-printer global VRELBase;VRINResult", "print ok", "print bytes")
        self.assertEqual(answers[1], '"bolt"')
        self.assertIn("code = 0", answers[0])

    def test_is_loaded_with_the_library(self):
        folder = Path(SCRATCH) / "installed"
        shutil.rmtree(folder, ignore_errors=True)
        folder.mkdir(parents=True)
        shutil.copy(LIBRARY, folder)
        name = Path(LIBRARY).name
        # The soname is libVRELBase.so.MAJOR, before 1.0 libVRELBase.so.0.MINOR.
        parts = name.split(".")
        (folder / ".".join(parts[: 4 if parts[2] == "0" else 3])).symlink_to(name)
        settings = [f"add-auto-load-safe-path {folder}"]
        self.assertNotEqual(self.run_gdb("print ok", settings=settings, folder=folder), [PRINTED["ok"]])
        shutil.copy(PRINTERS, folder / f"{name}-gdb.py")
        self.assertEqual(self.run_gdb("print ok", settings=settings, folder=folder), [PRINTED["ok"]])

    def test_names_all_results(self):
        header = (ROOT / "VRELBase/public/VRINResult.h").read_text()
        codes = dict((int(code, 0), name) for name, code in re.findall(r"^constexpr long (\w+) = (\w+);", header, re.M))
        table = re.search(r"^RESULTS = \{\n(.*?)^\}", PRINTERS.read_text(), re.MULTILINE | re.DOTALL).group(1)
        known = dict((int(code, 0), name) for code, name in re.findall(r'(\w+): "(\w+)"', table))
        self.assertEqual((len(codes), known), (24, codes))


if __name__ == "__main__":
    if shutil.which("gdb") is None:
        print("skipped: gdb is not installed")
        sys.exit(77)
    PROGRAM, BARE_PROGRAM, LIBRARY, SCRATCH = (sys.argv.pop(1) for _ in range(4))
    unittest.main()
