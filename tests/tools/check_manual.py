#!/usr/bin/env python3
"""Compares the manual page and the shell completion of brivet with brivet --help.

check_manual.py BRIVET
"""
import os
import pty
import re
import select
import shlex
import shutil
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
MANUAL = ROOT / "docs/man/brivet.1"
COMPLETION = ROOT / "completions/brivet"
ZSH_COMPLETION = ROOT / "completions/_brivet"
FISH_COMPLETION = ROOT / "completions/brivet.fish"
BRIVET = ""


def help_page():
    return subprocess.run([BRIVET, "--help"], check=True, capture_output=True, text=True).stdout


def help_options():
    """Returns the argument of each option by its name without dashes."""
    options = {}
    for line in help_page().splitlines():
        found = re.match(r"  (-.*?)(?:  |$)", line)
        for text in found.group(1).split(", ") if found else []:
            name, _, argument = text.partition(" ")
            options[name.lstrip("-") or "--"] = argument
    return options


def manual_page():
    command = ["groff", "-t", "-man", "-Tascii", "-P-cbou", MANUAL]
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def manual_section(name):
    return re.search(rf"^{name}\n(.*?)(?=^\S)", manual_page(), re.MULTILINE | re.DOTALL).group(1)


class ManualTest(unittest.TestCase):
    def setUp(self):
        if shutil.which("groff") is None:
            self.skipTest("groff is missing")

    def test_page_is_well_formed(self):
        for command in [["groff", "-t", "-man", "-ww", "-Tutf8", "-z"], ["mandoc", "-T", "lint", "-W", "warning"]]:
            if shutil.which(command[0]) is not None:
                answer = subprocess.run([*command, MANUAL], capture_output=True, text=True)
                self.assertEqual((answer.returncode, answer.stdout, answer.stderr), (0, "", ""))

    def test_options_match_help(self):
        documented = {}
        section = re.search(r"^\.SH OPTIONS\n(.*?)^\.SH ", MANUAL.read_text(), re.MULTILINE | re.DOTALL).group(1)
        for line in re.findall(r"^\.TP\n\.\w+ (.*)$", section, re.MULTILINE):
            name, _, argument = "".join(shlex.split(line.replace("\\-", "-"))).partition(" ")
            documented[name.lstrip("-") or "--"] = argument
        self.assertEqual(documented, help_options())

    def test_exit_statuses_match_help(self):
        documented = re.findall(r"^ +(\d+) +[A-Z]", manual_section("EXIT STATUS"), re.MULTILINE)
        help_text = re.search(r"^Exit status: (.*?)\n\n", help_page(), re.MULTILINE | re.DOTALL).group(1)
        self.assertEqual(documented, re.findall(r"(?:^|; |;\n)(\d+) ", help_text, re.MULTILINE))

    def test_variables_match_help(self):
        section = manual_section("ENVIRONMENT")
        for name in re.findall(r"^  (VREL\w+)", help_page(), re.MULTILINE):
            self.assertIn(name, section)


class CompletionTest(unittest.TestCase):
    def complete(self, *words):
        """Returns the completions of the last of the words."""
        script = 'source "$1"; shift; COMP_WORDS=(brivet "$@"); COMP_CWORD=$#\n'
        script += '_brivet brivet "${COMP_WORDS[COMP_CWORD]}" "${COMP_WORDS[COMP_CWORD - 1]}"\n'
        script += '((${#COMPREPLY[@]} == 0)) || printf "%s\\n" "${COMPREPLY[@]}"'
        command = ["bash", "--norc", "-euc", script, "bash", COMPLETION, *words]
        environment = {**os.environ, "PATH": f"{Path(BRIVET).parent}:{os.environ['PATH']}"}
        answer = subprocess.run(command, check=True, capture_output=True, text=True, env=environment)
        self.assertEqual(answer.stderr, "")
        return answer.stdout.split()

    def test_options_match_help(self):
        self.assertEqual(sorted(self.complete("-")), sorted("-" + name for name in help_options() if name != "--"))

    def test_options_take_two_dashes(self):
        self.assertEqual(self.complete("--")[:2], ["--write", "--o"])
        self.assertEqual(len(self.complete("--")), len(self.complete("-")))

    def test_completes_prefix(self):
        self.assertEqual(self.complete("-ve"), ["-verbose", "-version"])
        self.assertEqual(self.complete("--pr"), ["--progress"])
        self.assertEqual(self.complete("-quiet", "-li"), ["-list"])

    def test_completes_formats(self):
        formats = help_options()["write"].split("|")
        for option in ["-write", "--write"]:
            self.assertEqual(self.complete(option, ""), formats)
        self.assertEqual(self.complete("bracket.stp", "-write", "st"), ["step", "stl"])

    def test_completes_settings(self):
        self.assertEqual(self.complete("-set", "SewTol"), ["SewTolerance="])
        self.assertEqual(self.complete("-set", "FileLineL"), ["FileLineLength="])

    def test_completes_folders(self):
        self.assertEqual(self.complete("-outdir", str(ROOT / "docs/ma")), [str(ROOT / "docs/man")])

    def test_other_shells_have_same_options(self):
        options = {name for name in help_options() if name != "--"}
        self.assertEqual(set(re.findall(r"'\*?-(\w+)\[", ZSH_COMPLETION.read_text())), options)
        self.assertEqual(set(re.findall(r"^complete -c brivet -[os] (\w+)", FISH_COMPLETION.read_text(), re.M)), options)
        for shell, file in [("zsh", ZSH_COMPLETION), ("fish", FISH_COMPLETION)]:
            if shutil.which(shell) is not None:
                subprocess.run([shell, "-n", file], check=True)

    def test_leaves_file_names_to_bash(self):
        for words in [[""], ["bra"], ["-options", "-"], ["-report", "-"], ["-set", "A", "=", "-"], ["--", "-"]]:
            self.assertEqual(self.complete(*words), [])

    def test_completes_at_prompt(self):
        with tempfile.TemporaryDirectory() as folder:
            Path(folder, "a bracket.stp").write_text("")
            typed = "brivet -wr\tte\ta\\ br\t"
            self.assertIn("brivet -write text a\\ bracket.stp ", self.prompt(folder, typed))

    def prompt(self, folder, typed):
        """Returns the output of an interactive bash for the typed keys."""
        process, terminal = pty.fork()
        if process == 0:
            os.chdir(folder)
            environment = {"PATH": os.environ["PATH"], "TERM": "dumb", "PS1": "ready> ", "HISTFILE": ""}
            os.execvpe("bash", ["bash", "--norc", "--noprofile", "-i"], environment)
        try:
            self.read_until(terminal, "ready> ")
            os.write(terminal, f"source {COMPLETION}\n".encode())
            self.read_until(terminal, "ready> ")
            os.write(terminal, typed.encode())
            return self.read_until(terminal, "bracket.stp ")
        finally:
            os.close(terminal)
            os.waitpid(process, 0)

    def read_until(self, terminal, awaited):
        shown = ""
        deadline = time.monotonic() + 20
        while awaited not in shown and select.select([terminal], [], [], max(0, deadline - time.monotonic()))[0]:
            shown += os.read(terminal, 4096).decode().replace("\x07", "")
        return shown


if __name__ == "__main__":
    BRIVET = sys.argv.pop(1)
    unittest.main()
