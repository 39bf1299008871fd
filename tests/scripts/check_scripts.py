#!/usr/bin/env python3
"""Tests the scripts from outside: their help, and that script/bootstrap installs missing packages as root, by sudo, or
not at all. Fakes replace dpkg-query, apt-get and sudo; nothing is installed."""
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
FAKES = {
    "dpkg-query": '[[ " $MISSING " == *" ${!#} "* ]] && exit 1\necho -n installed\n',
    "apt-get": 'echo "$DEBIAN_FRONTEND: $*" >>"$CALLS"\nexit "$APT_STATUS"\n',
    "sudo": 'echo "sudo $*" >>"$CALLS"\n[[ $MAY_SUDO == yes && $1 == -n ]] && exec "${@:2}"\nexit 1\n',
}
APT_CALLS = [
    "noninteractive: -qq -o DPkg::Lock::Timeout=300 update",
    "noninteractive: -qq -o DPkg::Lock::Timeout=300 install --yes --no-install-recommends ccache libgtest-dev",
]


class HelpTest(unittest.TestCase):
    def test_each_script_prints_help(self):
        for script in SCRIPTS:
            for option in ["--help", "-h"]:
                with self.subTest(f"{script} {option}"):
                    answer = subprocess.run([ROOT / script, option], cwd="/", capture_output=True, text=True)
                    self.assertEqual((answer.returncode, answer.stderr), (0, ""))
                    lines = answer.stdout.splitlines()
                    self.assertEqual(lines[0].split()[0], script)
                    self.assertGreater(len(lines), 2)
                    self.assertFalse([line for line in lines if line.startswith(("#", "source", "=="))])

    def test_every_script_is_tested(self):
        found = [path for folder in ["script", ".ci"] for path in (ROOT / folder).iterdir() if path.name != "lib.sh"]
        self.assertEqual(sorted(SCRIPTS), sorted(str(path.relative_to(ROOT)) for path in found))


class BootstrapTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        self.folder.chmod(0o777)
        # A copy, since the user nobody may not have access to the source tree.
        shutil.copytree(ROOT / "script", self.folder / "script")
        self.calls = self.folder / "calls"
        for name, text in FAKES.items():
            path = self.folder / "bin" / name
            path.parent.mkdir(exist_ok=True)
            path.write_text("#!/bin/bash\n" + text)
            path.chmod(0o755)

    def bootstrap(self, *arguments, missing="", root=True, sudo=False, apt_status=0):
        """Returns the lines of both outputs and the status. Skips the test if the user is not available."""
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

    def test_does_nothing_if_all_are_installed(self):
        expected = (["script/bootstrap: all 19 packages are installed"], [], 0)
        self.assertEqual(self.bootstrap(missing="chromium", root=False), expected)
        self.assertEqual(self.called(), [])

    def test_lists_missing_packages_with_reasons(self):
        output, errors, status = self.bootstrap("--bench", "--checks", missing="cmake libbenchmark-dev git", root=False)
        self.assertEqual(
            output,
            [
                "cmake is missing: configures the build",
                "libbenchmark-dev is missing: provides the benchmark framework",
                "git is missing: lists the files to check",
            ],
        )
        # Without root and sudo it prints a remedy.
        advice = "run as root: apt-get install cmake libbenchmark-dev git"
        self.assertEqual(errors, ["script/bootstrap: failed while installing packages", f"hint: {advice}"])
        self.assertEqual(status, 1)
        self.assertEqual(self.called(), ["sudo -n true"])

    def test_installs_packages_of_fuzzers(self):
        output, errors, status = self.bootstrap("--fuzz", missing="libclang-rt-14-dev chromium", root=False)
        self.assertEqual(output, ["libclang-rt-14-dev is missing: provides libFuzzer and the sanitizers"])
        advice = "run as root: apt-get install libclang-rt-14-dev"
        self.assertEqual(errors, ["script/bootstrap: failed while installing packages", f"hint: {advice}"])
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

    def test_names_failed_step(self):
        output, errors, status = self.bootstrap(missing="ccache", root=False, sudo=True, apt_status=100)
        self.assertEqual(output[-1], "== updating the package lists")
        self.assertEqual(
            errors,
            [
                "script/bootstrap: failed while updating the package lists",
                "hint: check the network and /etc/apt/sources.list",
            ],
        )
        self.assertEqual(status, 100)

    def test_refuses_unknown_arguments(self):
        output, errors, status = self.bootstrap("--all", root=False)
        self.assertEqual((output, status), ([], 1))
        self.assertEqual(
            errors,
            [
                "script/bootstrap: failed while reading --all",
                "hint: the arguments are --bench, --checks, --coverage, --docs and --fuzz",
            ],
        )


class FuzzTest(unittest.TestCase):
    def fuzz(self, *arguments):
        command = [ROOT / "script/fuzz", *arguments]
        answer = subprocess.run(command, cwd="/", stdin=subprocess.DEVNULL, capture_output=True, text=True)
        return answer.stdout, answer.stderr, answer.returncode

    def test_requires_duration(self):
        advice = "the first argument is the number of seconds for each fuzzer, --fixed or --minimize"
        for arguments, text in [((), "no arguments"), (("VRELBlastFuzzer",), "VRELBlastFuzzer"), (("-1",), "-1")]:
            with self.subTest(arguments):
                expected = ("", f"script/fuzz: failed while reading {text}\nhint: {advice}\n", 1)
                self.assertEqual(self.fuzz(*arguments), expected)

    def test_refuses_unknown_target(self):
        names = sorted(path.stem for path in (ROOT / "fuzz").glob("*Fuzzer.cpp"))
        for name in ["VRELString", "support/Require"]:
            with self.subTest(name):
                output, errors, status = self.fuzz("1", names[0], name)
                start = f"script/fuzz: failed while looking for {name}\nhint: the fuzzers are "
                self.assertTrue(errors.startswith(start), errors)
                self.assertEqual(sorted(errors[len(start) :].split()), names)
                self.assertEqual((output, status), ("", 1))

    def test_each_target_has_a_number_of_runs(self):
        names = sorted(path.stem for path in (ROOT / "fuzz").glob("*Fuzzer.cpp"))
        lines = (ROOT / "fuzz/runs.txt").read_text().splitlines()
        listed = [line.split() for line in lines if not line.startswith("#")]
        self.assertEqual(sorted(name for name, _ in listed), names)
        self.assertEqual([name for name, runs in listed if not 100 <= int(runs) <= 10_000_000], [])

    def test_each_target_has_seeds(self):
        names = sorted(path.stem for path in (ROOT / "fuzz").glob("*Fuzzer.cpp"))
        folders = sorted(path.name for path in (ROOT / "fuzz/seeds").iterdir() if any(path.iterdir()))
        self.assertEqual(names, folders)


class TestScriptTest(unittest.TestCase):
    """Tests which programs script/test builds for a pattern. A fake ctest lists tests that are not test cases."""

    def programs(self, pattern):
        text = (ROOT / "script/test").read_text()
        functions = text[text.index("# test_names:") : text.index("pattern=\n")]
        others = "tree.layers tests_strings_NOT_BUILT docs.book.containers pages.view tools.printers package.readme".split()
        fake = "ctest() { " + "".join(f"echo '  Test #1: {name}'; " for name in others) + "}\n"
        command = ["bash", "-euo", "pipefail", "-c", f'{fake}{functions}programs_for "$1"', "bash", pattern]
        answer = subprocess.run(command, cwd=ROOT, capture_output=True, text=True)
        self.assertEqual(answer.stderr, "")
        return answer.stdout.split()

    def test_pattern_of_one_class_needs_one_program(self):
        self.assertEqual(self.programs("^VRELHashMapTest"), ["tests_containers"])

    def test_pattern_of_driver_class_needs_its_program(self):
        self.assertEqual(self.programs("OptionSetTest"), ["BrivetTests"])
        for name in ["StepParserTest", "MeshWriterTest", "DrawingTest"]:
            self.assertEqual(self.programs(name), ["BrivetModuleTests"])
        self.assertEqual(self.programs("StepXdeTest"), ["BrivetXdeTests"])

    def test_pattern_of_other_tests_needs_their_targets(self):
        self.assertEqual(self.programs("layers"), ["-"])
        self.assertEqual(self.programs("docs.book"), ["book_containers"])
        self.assertEqual(self.programs("pages"), ["brivet"])
        self.assertEqual(self.programs("printers"), ["BarePrinterProgram", "PrinterProgram"])
        self.assertEqual(self.programs("^package"), ["all"])
        self.assertEqual(self.programs("NoSuchTest"), [])

    def test_each_program_of_test_cases_is_known(self):
        known = {f"tests_{path.name}" for path in (ROOT / "tests").iterdir()}
        known |= {"BrivetTests", "BrivetModuleTests", "BrivetXdeTests", "FaultTests"}
        self.assertLessEqual(set(self.programs("Test\\.")), known)


class CoverageTest(unittest.TestCase):
    """Tests the report of script/coverage on generated counts of one source."""

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

    def test_passes_if_all_lines_are_executed(self):
        output, status = self.report([1, None, 5], [(1, False), (0, True)])
        self.assertEqual(
            output,
            [
                "executed 100.0 % of 2 lines and 100.0 % of 1 branches (50.0 % of 2 with exception exits); "
                "0 lines not executed, 0 of them without a reason"
            ],
        )
        self.assertEqual(status, 0)

    def test_requires_reason_for_each_line(self):
        reasons = "# of these\n\nOne.cpp: unreachable: never\n    line 2\n"
        output, status = self.report([1, 0] + 98 * [1], reasons=reasons)
        self.assertEqual(output[:2], ["One.cpp:2: line 2", "    unreachable: never"])
        self.assertTrue(output[2].startswith("executed 99.0 % of 100 lines and 100.0 % of 0 branches"), output)
        self.assertEqual((len(output), status), (3, 0))
        output, status = self.report([1, 0, 0] + 97 * [1], reasons=reasons)
        self.assertEqual(output[2:4], ["One.cpp:3: line 3", "    no reason given"])
        self.assertTrue(output[4].endswith("; 2 lines not executed, 1 of them without a reason"), output)
        self.assertEqual(status, 1)

    def test_fails_below_limits(self):
        reasons = "One.cpp: why\n" + "".join(f"  line {number}\n" for number in range(1, 5))
        self.assertEqual(self.report(3 * [0] + 97 * [1], reasons=reasons)[1], 0)
        self.assertEqual(self.report(4 * [0] + 96 * [1], reasons=reasons)[1], 1)
        self.assertEqual(self.report([1], [(0, False)] + 9 * [(1, False)])[1], 0)
        self.assertEqual(self.report([1], [(0, False)] + 8 * [(1, False)])[1], 1)


if __name__ == "__main__":
    unittest.main()
