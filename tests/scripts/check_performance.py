#!/usr/bin/python3
"""Tests benchmarks/performance.py on a small run, and checks its list of comparisons against the benchmarks."""
import contextlib
import importlib.util
import io
import json
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
BENCHMARKS = ROOT / "benchmarks"
sys.path.insert(0, str(BENCHMARKS))

import performance
import scale
from performance import comparable_sets, read_rows  # noqa: E402

LIST = """
packages = ["libc6"]
[needs]
OTHER = { name = "Other & Sons", packages = ["libother-dev"] }
[notes]
slow = "It is slow\\nfor a reason."

[[group]]
name = "Things, all"
[[group.row]]
what = "{} things"
ours = "Own/{}"
peer = "a <peer>"
theirs = "Peer/{}"
target = 1.5
note = "slow"
each = [1000, ["Few", "a few"]]
[[group.row]]
what = "wait"
ours = "Wait"
peer = "another"
theirs = "PeerWait"
why = "It is a lower bound."
[[group.row]]
what = "almost equal"
ours = "Shade"
peer = "a <peer>"
theirs = "Peer/1000"
target = 1.0

[[group]]
name = "Memory"
[[group.row]]
what = "bytes read"
ours = "Rate"
peer = "a slower one"
theirs = "PeerRate"
measure = "bytes_per_second"
needs = "OTHER"
target = 0.1
[[group.row]]
what = "retained bytes"
ours = "Keep"
limit = "100 bytes"
measure = "peak bytes per instance"
"""

# Replaces VRELBaseBenchmarks: writes the results in its folder that the filter selects, and logs its arguments.
PROGRAM = """#!/usr/bin/python3
import json, pathlib, re, sys
folder = pathlib.Path(sys.argv[0]).parent
given = dict(word.lstrip("-").split("=", 1) for word in sys.argv[1:])
with (folder / "calls").open("a") as calls:
    calls.write(f"{given['benchmark_repetitions']} {given['benchmark_filter']}\\n")
results = json.loads((folder / "all.json").read_text())
wanted = re.compile(given["benchmark_filter"])
results["benchmarks"] = [each for each in results["benchmarks"] if wanted.search(each["run_name"])]
pathlib.Path(given["benchmark_out"]).write_text(json.dumps(results))
"""


def repetitions(name, times, unit="ns", **more):
    """Returns the entries of a benchmark, one for each time; a list in `more` has a value for each."""
    entries = []
    for number, time in enumerate(times):
        entry = {"name": name, "run_name": name, "run_type": "iteration", "repetition_index": number}
        entry.update(cpu_time=time, real_time=time, time_unit=unit)
        entry.update({key: value[number] if isinstance(value, list) else value for key, value in more.items()})
        entries.append(entry)
    return entries


def run():
    """Returns results that were written by hand."""
    own = repetitions("Own/1000", [10.0, 20.0, 30.0])
    mean = dict(own[0], name="Own/1000_mean", run_type="aggregate", cpu_time=1e9)
    context = {"date": "2026-01-02T03:04:05+00:00", "num_cpus": 2, "load": "0.10", "cpu": "Abacus 3"}
    context.update({"compiler": "cc 1", "peers": "OTHER THIRD", "libc6": "2.36-9", "libother-dev": "1:7"})
    kept = {"peak bytes per instance": [80.0, 82.0]}
    return {
        "context": context,
        "benchmarks": [
            *own,
            mean,
            *repetitions("Peer/1000", [10.0, 10.0, 20.0]),
            *repetitions("Own/Few", [1.0, 2.0, 3.0], "us"),
            *repetitions("Peer/Few", [500.0, 500.0, 500.0]),
            *repetitions("Wait/iterations:7/real_time", [0.0, 0.0, 0.0], real_time=[3.0, 4.0, 5.0]),
            *repetitions("PeerWait/real_time", [0.0, 0.0, 0.0], "us", real_time=[0.1, 0.1, 0.1]),
            *repetitions("Shade", [10.04, 10.04, 20.08]),
            *repetitions("Rate", [1.0] * 3, bytes_per_second=[1e9, 2e9, 4e9]),
            *repetitions("PeerRate", [1.0] * 3, bytes_per_second=1e8),
            *repetitions("Keep/iterations:1/repeats:2/real_time", [1.0] * 2, **kept),
        ],
    }


@unittest.skipUnless(importlib.util.find_spec("matplotlib"), "python3-matplotlib is not installed")
class ScaleTest(unittest.TestCase):
    """Tests the inputs of scale.py, and its section of the page."""

    def test_generates_unique_ids_and_known_references(self):
        for size in [2000, 50000]:
            with tempfile.TemporaryDirectory() as folder:
                path = Path(folder) / "input.stp"
                count = scale.generate(size, path)
                content = path.read_bytes()
            text = re.sub(rb"'[^']*'|/\*.*?\*/", b"", content, flags=re.S)
            defined = re.findall(rb"#(\d+)\s*=", text)
            self.assertEqual((len(defined), len(set(defined))), (count, count))
            self.assertLessEqual(set(re.findall(rb"#(\d+)", text)), set(defined))
            self.assertTrue(size <= len(content) < 1.5 * size, len(content))

    def test_section_has_row_for_each_size(self):
        def point(mode, size, seconds):
            return {"mode": mode, "bytes": size, "instances": size // 50, "seconds": seconds, "peak": 20e6}

        points = [point(mode, size, size / 1e8) for size in [10**6, 10**7] for mode in scale.MODES]
        starts = {"version": 0.0045, "page": 0.00951}
        batch = {"files": 1000, "one": 8.04, "two": 4.06, "speed_up": 1.977}
        lines = scale.section({"points": points, "starts": starts, "batch": batch})
        rows = [line for line in lines if line.startswith("| 1")]
        cell = " | 0.01 s, 20 MB"
        self.assertEqual(rows, ["| 1 MB | 20,000" + 4 * cell + " |", "| 10 MB | 200,000" + 4 * cell.replace("0.01", "0.1") + " |"])
        text = " ".join(lines)
        self.assertIn("in 4.5 ms of processor time", text)
        self.assertIn("1,000 files of 30 KB become JSON in 8.0 s with `-jobs 1` and in 4.1 s with `-jobs 2`: 1.98 times as fast.", text)

    def test_measures_starts_and_batch(self):
        with tempfile.TemporaryDirectory() as folder:
            # A batch takes as long with two jobs as with one.
            program = Path(folder) / "brivet"
            program.write_text("#!/bin/sh\nwhile [ $# -gt 0 ]; do if [ $1 = -outdir ]; then sleep 0.2; fi; shift; done\n")
            program.chmod(0o755)
            batch = scale.measure_batch(program, 3)
            starts = scale.measure_starts(program)
        self.assertEqual(batch["files"], 3)
        self.assertTrue(0.2 <= batch["one"] < 5, batch)
        self.assertTrue(0.2 < batch["speed_up"] < 5, batch)
        self.assertTrue(0 <= starts["version"] < 1, starts)


class FilterTest(unittest.TestCase):
    def test_escapes_special_characters_alone(self):
        pattern = performance.filter_of({"a b, c/3", "List<A>/1", "f(x)[0]"})
        self.assertEqual(pattern, r"^(List<A>/1|a b, c/3|f\(x\)\[0\])(/[a-z_]+:[0-9.]+|/[a-z_]+_time)*$")
        self.assertTrue(re.match(pattern, "f(x)[0]/repeats:3"))


@unittest.skipUnless(importlib.util.find_spec("matplotlib"), "python3-matplotlib is not installed")
class PageTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        self.results = run()
        self.list = LIST

    def performance(self, *arguments):
        (self.folder / "list.toml").write_text(self.list, encoding="utf-8")
        command = [sys.executable, BENCHMARKS / "performance.py", *arguments]
        command += ["--comparisons", self.folder / "list.toml", "--docs", self.folder / "docs"]
        return subprocess.run(command, capture_output=True, text=True)

    def page(self):
        """Writes the page of the results and returns its lines."""
        results, rows = self.folder / "run.json", self.folder / "list.toml"
        results.write_text(json.dumps(self.results), encoding="utf-8")
        rows.write_text(self.list, encoding="utf-8")
        printed = io.StringIO()
        with contextlib.redirect_stdout(printed):
            performance.write(*read_rows(rows), results, self.folder / "docs")
        self.printed = printed.getvalue().splitlines()
        return (self.folder / "docs/performance.md").read_text(encoding="utf-8").splitlines()

    def test_ratio_is_median_of_paired_repetitions(self):
        page = self.page()
        rows = [line for line in page[page.index("## Things, all") :] if re.match(r"\| [^|W]", line)]
        expected = [
            # The ratios are 1, 2 and 1.5; the quotient of the medians would be 2.
            "| 1,000 things | a <peer> | 20 ns | 10 ns | 1.50 (1.00–2.00) | 1.5 | met |",
            "| a few things | a <peer> | 2 µs | 500 ns | 4.00 (2.00–6.00) | 1.5 | **missed** |",
            "| wait | another | 4 ns | 100 ns | 0.040 (0.030–0.050) |  |  |",
            # The rounded ratio meets the target of 1.
            "| almost equal | a <peer> | 10 ns | 10 ns | 1.00 (1.00–1.00) | 1 | met |",
            # Half the time is twice the rate.
            "| bytes read | a slower one | 0.5 ns | 10 ns | 0.050 (0.025–0.10) | 0.1 | met |",
            "| retained bytes | limit of 100 bytes | 81 bytes | 100 bytes | 0.81 (0.80–0.82) | 1 | met |",
        ]
        self.assertEqual(rows, expected)
        self.assertIn("4 of 5 targets are met.", page)

    def test_page_describes_machine(self):
        page = self.page()
        for line in ["| Date | 2026-01-02 |", "| Processor | Abacus 3, 2 |", "| Compiler | cc 1 |", "| `libc6` | 2.36-9 |"]:
            self.assertIn(line, page)
        busy = "**The machine was busy: the results are not valid.**"
        self.assertNotIn(busy, page)
        self.results["context"]["load"] = "0.60"
        self.assertIn(busy, self.page())

    def test_row_without_target_has_its_reason(self):
        page = self.page()
        at = page.index("Without a target:")
        self.assertEqual(page[at : at + 3], ["Without a target:", "", "- wait / another: It is a lower bound."])
        self.assertEqual(page.count("Without a target:"), 1)
        self.list = LIST.replace('why = "It is a lower bound."', "")
        with self.assertRaisesRegex(SystemExit, "'wait' has neither a target nor a reason"):
            self.page()

    def test_missed_target_has_its_note(self):
        page = self.page()
        line = "- Things, all: a few things / a <peer>: 4.00 (2.00–6.00), target 1.5"
        self.assertEqual(page[page.index("## Missed targets") + 2 :], [line, "", "It is slow", "for a reason."])
        self.assertEqual(self.printed, ["missed: a few things / a <peer>: 4.00 (2.00–6.00), target 1.5"])
        self.list = LIST.replace("target = 1.5", "target = 4")
        self.assertNotIn("## Missed targets", self.page())

    def test_missing_peer_is_left_out(self):
        self.results["context"]["peers"] = "THIRD"
        line = "- bytes read / a slower one: Other & Sons was not installed (libother-dev)"
        self.assertEqual(self.page()[-3:], ["## Not measured", "", line])

    def test_failed_benchmark_is_left_out(self):
        self.results["benchmarks"] = [
            dict(entry, error_occurred=True, error_message="no such file") if entry["name"] == "PeerWait/real_time" else entry
            for entry in self.results["benchmarks"]
        ]
        self.assertEqual(self.page()[-1], "- wait / another: no such file")

    def test_unknown_benchmark_is_an_error(self):
        self.list = LIST.replace("Keep", "Kept")
        (self.folder / "run.json").write_text(json.dumps(self.results), encoding="utf-8")
        answer = self.performance(self.folder / "run.json")
        self.assertEqual(answer.returncode, 1)
        self.assertIn("no benchmark is called Kept", answer.stderr)
        self.assertFalse((self.folder / "docs").exists())

    def test_each_group_has_a_plot(self):
        page = self.page()
        for name in ["performance-things-all.svg", "performance-memory.svg"]:
            self.assertTrue([line for line in page if line.endswith(f"(images/{name})")])
        plot = (self.folder / "docs/images/performance-things-all.svg").read_text(encoding="utf-8")
        for row in ["1,000 things", "a few things", "almost equal"]:
            self.assertIn(row, plot)

    def test_same_results_give_same_files(self):
        def files():
            return {path.name: path.read_bytes() for path in (self.folder / "docs").rglob("*.*")}

        self.page()
        first = files()
        (self.folder / "docs/images/performance-old.svg").write_text("")
        (self.folder / "docs/images/layers.svg").write_text("kept")
        self.page()
        self.assertEqual(files(), dict(first, **{"layers.svg": b"kept"}))

    def test_runs_each_set_in_own_process(self):
        self.results["benchmarks"] += repetitions("Own/10000", [1.0] * 3) + repetitions("MyWait", [1.0] * 3)
        (self.folder / "all.json").write_text(json.dumps(self.results), encoding="utf-8")
        program = self.folder / "program"
        program.write_text(PROGRAM, encoding="utf-8")
        program.chmod(0o755)
        answer = self.performance("--run", program, self.folder / "ran.json", "--benchmark_repetitions=3")
        self.assertEqual((answer.returncode, answer.stderr), (0, ""))
        self.assertEqual(len((self.folder / "calls").read_text().splitlines()), 5)
        ran = json.loads((self.folder / "ran.json").read_text(encoding="utf-8"))
        names = {entry["run_name"] for entry in ran["benchmarks"]}
        self.assertIn("Keep/iterations:1/repeats:2/real_time", names)
        self.assertFalse(names & {"Own/10000", "MyWait"})


class SetsTest(unittest.TestCase):
    def test_sets_join_by_common_benchmarks(self):
        rows = [{"ours": "A", "theirs": "B"}, {"ours": "C"}, {"ours": "D", "theirs": "B"}, {"ours": "C", "theirs": "E"}]
        self.assertEqual(comparable_sets(rows), [{"A", "B", "D"}, {"C", "E"}])


def benchmark_names(source):
    """Yields the names of the benchmarks in a source, without their arguments."""
    text = re.sub(r"//[^\n]*|^#.*?(?<!\\)$", "", source.read_text(encoding="utf-8"), flags=re.MULTILINE | re.DOTALL)
    for macro, inner, rest in re.findall(r"^(\w*BENCHMARK\w*)\(([^;]*?)\)(\s*(?:->[^;]*)?);", text, re.MULTILINE):
        words = [word.strip() for word in inner.split(",")]
        if name := re.search(r'->Name\("([^"]+)"\)', rest):
            yield name.group(1)
        elif macro.endswith("TEMPLATE"):
            yield f"{words[0]}<{', '.join(words[1:])}>"
        elif macro.endswith("CAPTURE"):
            yield f"{words[0]}/{words[1]}"
        else:
            yield words[0]


class ComparisonsTest(unittest.TestCase):
    table, rows = read_rows()
    names = [name for source in sorted(BENCHMARKS.rglob("*Benchmark.cpp")) for name in benchmark_names(source)]

    def test_names_are_unique(self):
        self.assertGreater(len(self.names), 100)
        self.assertEqual(sorted(set(self.names)), sorted(self.names))

    def test_rows_name_existing_benchmarks(self):
        for row in self.rows:
            for wanted in filter(None, [row["ours"], row.get("theirs")]):
                with self.subTest(wanted):
                    self.assertTrue([name for name in self.names if wanted == name or wanted.startswith(name + "/")])

    def test_comparisons_are_unique(self):
        pairs = [(row["ours"], row.get("theirs"), row.get("limit"), row["measure"]) for row in self.rows]
        self.assertEqual(sorted(map(str, set(pairs))), sorted(map(str, pairs)))

    def test_notes_and_needs_are_used(self):
        self.assertEqual(set(self.table["notes"]), {row.get("note") for row in self.rows} - {None})
        self.assertEqual(set(self.table["needs"]), {row.get("needs") for row in self.rows} - {None})

    def test_optional_peers_are_built_and_installed(self):
        build = (BENCHMARKS / "CMakeLists.txt").read_text(encoding="utf-8")
        built = re.findall(r"^ *peer\((\w+) ", build, re.MULTILINE)
        self.assertEqual(sorted(self.table["needs"]), sorted(built))
        bootstrap = (ROOT / "script/bootstrap").read_text(encoding="utf-8")
        for need in self.table["needs"].values():
            for package in need["packages"]:
                self.assertIn(f'"{package} ', bootstrap)


if __name__ == "__main__":
    unittest.main()
