#!/usr/bin/env python3
"""Runs the scripts as a newcomer does: each explains itself, and script/bootstrap installs what is missing, as root,
through sudo, or not at all. Stand-ins take the place of dpkg-query, apt-get and sudo; nothing is installed."""
import json
import os
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
SCRIPTS = [
    "script/bootstrap",
    "script/demo",
    "script/test",
    "script/bench",
    "script/coverage",
    "script/fuzz",
    "script/abi",
    "script/docs",
    "script/package",
    ".ci/run",
]
STAND_INS = {
    "dpkg-query": '[[ " $MISSING " == *" ${!#} "* ]] && exit 1\necho -n installed\n',
    "apt-get": 'echo "$DEBIAN_FRONTEND: $*" >>"$CALLS"\nexit "$APT_STATUS"\n',
    "sudo": 'echo "sudo $*" >>"$CALLS"\n[[ $MAY_SUDO == yes && $1 == -n ]] && exec "${@:2}"\nexit 1\n',
}
APT_CALLS = [
    "noninteractive: -qq -o DPkg::Lock::Timeout=300 update",
    "noninteractive: -qq -o DPkg::Lock::Timeout=300 install --yes --no-install-recommends ccache libgtest-dev",
]


class HelpTest(unittest.TestCase):
    def test_each_script_explains_itself(self):
        for script in SCRIPTS:
            for option in ["--help", "-h"]:
                with self.subTest(f"{script} {option}"):
                    answer = subprocess.run([ROOT / script, option], cwd="/", capture_output=True, text=True)
                    self.assertEqual((answer.returncode, answer.stderr), (0, ""))
                    lines = answer.stdout.splitlines()
                    self.assertEqual(lines[0].split()[0], script)
                    self.assertGreater(len(lines), 2)
                    self.assertFalse([line for line in lines if line.startswith(("#", "source", "=="))])

    def test_no_script_is_forgotten(self):
        found = [path for folder in ["script", ".ci"] for path in (ROOT / folder).iterdir() if path.name != "lib.sh"]
        self.assertEqual(sorted(SCRIPTS), sorted(str(path.relative_to(ROOT)) for path in found))


class BootstrapTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        self.folder.chmod(0o777)
        # A copy, because the user nobody need not reach the tree.
        shutil.copytree(ROOT / "script", self.folder / "script")
        self.calls = self.folder / "calls"
        for name, text in STAND_INS.items():
            path = self.folder / "bin" / name
            path.parent.mkdir(exist_ok=True)
            path.write_text("#!/bin/bash\n" + text)
            path.chmod(0o755)

    def bootstrap(self, *arguments, missing="", root=True, sudo=False, apt_status=0):
        """The lines of both outputs and the status; ends the test where the user cannot be had."""
        self.calls.write_text("")
        self.calls.chmod(0o666)
        command = [self.folder / "script/bootstrap", *arguments]
        if root and os.geteuid() != 0:
            self.skipTest("needs root")
        if not root and os.geteuid() == 0:
            command = ["setpriv", "--reuid=65534", "--regid=65534", "--clear-groups", *command]
        environment = dict(
            os.environ,
            PATH=f"{self.folder}/bin:{os.environ['PATH']}",
            MISSING=missing,
            MAY_SUDO="yes" if sudo else "no",
            APT_STATUS=str(apt_status),
            CALLS=str(self.calls),
        )
        answer = subprocess.run(
            command, cwd="/", env=environment, stdin=subprocess.DEVNULL, capture_output=True, text=True
        )
        return answer.stdout.splitlines(), answer.stderr.splitlines(), answer.returncode

    def called(self):
        return self.calls.read_text().splitlines()

    def test_asks_for_nothing_when_all_are_there(self):
        expected = (["script/bootstrap: all 11 packages are there"], [], 0)
        self.assertEqual(self.bootstrap(missing="chromium", root=False), expected)
        self.assertEqual(self.called(), [])

    def test_says_what_is_missing_and_why(self):
        output, errors, status = self.bootstrap("--bench", "--checks", missing="cmake libbenchmark-dev git", root=False)
        self.assertEqual(
            output,
            [
                "cmake is missing: configures the build",
                "libbenchmark-dev is missing: the benchmarks stand on Google Benchmark",
                "git is missing: names the files to check",
            ],
        )
        # Without root and without sudo it tells what would help.
        advice = "run as root: apt-get install cmake libbenchmark-dev git"
        self.assertEqual(errors, [f"script/bootstrap: failed while installing packages: {advice}"])
        self.assertEqual(status, 1)
        self.assertEqual(self.called(), ["sudo -n true"])

    def test_asks_for_what_the_fuzzers_need(self):
        output, errors, status = self.bootstrap("--fuzz", missing="libclang-rt-14-dev chromium", root=False)
        self.assertEqual(output, ["libclang-rt-14-dev is missing: brings libFuzzer and the sanitizers"])
        advice = "run as root: apt-get install libclang-rt-14-dev"
        self.assertEqual(errors, [f"script/bootstrap: failed while installing packages: {advice}"])
        self.assertEqual(status, 1)

    def test_installs_as_root(self):
        output, errors, status = self.bootstrap(missing="libgtest-dev ccache")
        self.assertEqual((errors, status), ([], 0))
        self.assertIn("== installing ccache libgtest-dev", output)
        self.assertEqual(output[-1], "script/bootstrap: installed ccache libgtest-dev")
        self.assertEqual(self.called(), APT_CALLS)

    def test_installs_through_sudo(self):
        output, errors, status = self.bootstrap(missing="libgtest-dev ccache", root=False, sudo=True)
        self.assertEqual((errors, status), ([], 0))
        self.assertEqual(output[-1], "script/bootstrap: installed ccache libgtest-dev")
        calls = self.called()
        self.assertEqual(calls[0], "sudo -n true")
        self.assertEqual([call for call in calls if not call.startswith("sudo ")], APT_CALLS)

    def test_says_what_failed(self):
        output, errors, status = self.bootstrap(missing="ccache", root=False, sudo=True, apt_status=100)
        self.assertEqual(output[-1], "== bringing the package lists up to date")
        place = "bringing the package lists up to date: check the network and /etc/apt/sources.list"
        self.assertEqual(errors, [f"script/bootstrap: failed while {place}"])
        self.assertEqual(status, 100)

    def test_refuses_unknown_arguments(self):
        output, errors, status = self.bootstrap("--all", root=False)
        self.assertEqual((output, status), ([], 1))
        self.assertEqual(
            errors,
            [
                "script/bootstrap: failed while reading --all: "
                "the arguments are --bench, --checks, --coverage, --docs and --fuzz"
            ],
        )


class FuzzTest(unittest.TestCase):
    def fuzz(self, *arguments):
        command = [ROOT / "script/fuzz", *arguments]
        answer = subprocess.run(command, cwd="/", stdin=subprocess.DEVNULL, capture_output=True, text=True)
        return answer.stdout, answer.stderr, answer.returncode

    def test_wants_to_know_how_long(self):
        advice = "the first argument is the number of seconds for each fuzzer"
        for arguments, text in [((), "no arguments"), (("VRELBlastFuzzer",), "VRELBlastFuzzer"), (("-1",), "-1")]:
            with self.subTest(arguments):
                expected = ("", f"script/fuzz: failed while reading {text}: {advice}\n", 1)
                self.assertEqual(self.fuzz(*arguments), expected)

    def test_knows_its_targets(self):
        names = sorted(path.stem for path in (ROOT / "fuzz").glob("*Fuzzer.cpp"))
        for name in ["VRELString", "support/Require"]:
            with self.subTest(name):
                output, errors, status = self.fuzz("1", names[0], name)
                start = f"script/fuzz: failed while looking for {name}: the fuzzers are "
                self.assertTrue(errors.startswith(start), errors)
                self.assertEqual(sorted(errors[len(start) :].split()), names)
                self.assertEqual((output, status), ("", 1))

    def test_each_target_has_seeds(self):
        names = sorted(path.stem for path in (ROOT / "fuzz").glob("*Fuzzer.cpp"))
        folders = sorted(path.name for path in (ROOT / "fuzz/seeds").iterdir() if any(path.iterdir()))
        self.assertEqual(names, folders)


class CoverageTest(unittest.TestCase):
    """What script/coverage says about counts that are made up, of a source of three lines."""

    def report(self, counts, branches=(), reasons=""):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        source, found, given = (Path(folder.name) / name for name in ["One.cpp", "found.json", "reasons.txt"])
        source.write_text("".join(f"  line {number}\n" for number in range(1, len(counts) + 1)))
        lines = [
            {"line_number": number, "count": count, "gcovr/noncode": count is None, "branches": []}
            for number, count in enumerate(counts, 1)
        ]
        lines[0]["branches"] = [{"count": count, "throw": throw} for count, throw in branches]
        found.write_text(json.dumps({"files": [{"file": str(source), "lines": lines}]}))
        given.write_text(reasons)
        command = [ROOT / "tests/coverage/report.py", found, given]
        answer = subprocess.run(command, capture_output=True, text=True)
        self.assertEqual(answer.stderr, "")
        return answer.stdout.replace(str(source), "One.cpp").splitlines(), answer.returncode

    def test_passes_where_all_is_reached(self):
        output, status = self.report([1, None, 5], [(1, False), (0, True)])
        self.assertEqual(
            output,
            [
                "100.0 % of 2 lines and 100.0 % of 1 branches are reached (50.0 % of 2 with those of exceptions); "
                "0 lines are not, 0 of them without a reason"
            ],
        )
        self.assertEqual(status, 0)

    def test_wants_a_reason_for_each_line(self):
        reasons = "# of these\n\nOne.cpp: nobody goes there: never\n    line 2\n"
        output, status = self.report([1, 0] + 98 * [1], reasons=reasons)
        self.assertEqual(output[:2], ["One.cpp:2: line 2", "    nobody goes there: never"])
        self.assertTrue(output[2].startswith("99.0 % of 100 lines and 100.0 % of 0 branches"), output)
        self.assertEqual((len(output), status), (3, 0))
        output, status = self.report([1, 0, 0] + 97 * [1], reasons=reasons)
        self.assertEqual(output[2:4], ["One.cpp:3: line 3", "    NO REASON IS GIVEN"])
        self.assertTrue(output[4].endswith("; 2 lines are not, 1 of them without a reason"), output)
        self.assertEqual(status, 1)

    def test_fails_below_its_shares(self):
        reasons = "One.cpp: why\n" + "".join(f"  line {number}\n" for number in range(1, 5))
        self.assertEqual(self.report(3 * [0] + 97 * [1], reasons=reasons)[1], 0)
        self.assertEqual(self.report(4 * [0] + 96 * [1], reasons=reasons)[1], 1)
        self.assertEqual(self.report([1], [(0, False)] + 9 * [(1, False)])[1], 0)
        self.assertEqual(self.report([1], [(0, False)] + 8 * [(1, False)])[1], 1)


if __name__ == "__main__":
    unittest.main()
