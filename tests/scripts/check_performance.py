#!/usr/bin/env python3
"""Holds benchmarks/performance.py to a small run made by hand, and its list of comparisons to the benchmarks."""
import json
import re
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree
from pathlib import Path
from types import SimpleNamespace

ROOT = Path(__file__).resolve().parents[2]
BENCHMARKS = ROOT / "benchmarks"
sys.path.insert(0, str(BENCHMARKS))

from performance import Comparisons  # noqa: E402
from performance_plot import Axis  # noqa: E402

SVG = "{http://www.w3.org/2000/svg}"
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
what = "waiting"
ours = "Wait"
peer = "another"
theirs = "PeerWait"
[[group.row]]
what = "a shade above"
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
what = "bytes kept"
ours = "Keep"
limit = "100 bytes"
measure = "peak bytes per instance"
"""


# Stands for VRELBaseBenchmarks: writes those of the results in its folder that the filter names, and notes what it was
# given.
PROGRAM = """#!/usr/bin/env python3
import json, pathlib, re, sys
folder = pathlib.Path(sys.argv[0]).parent
given = dict(word.lstrip("-").split("=", 1) for word in sys.argv[1:])
with (folder / "calls").open("a") as calls:
    calls.write(f"{given['benchmark_repetitions']} {given['benchmark_filter']}\\n")
results = json.loads((folder / "all.json").read_text())
wanted = re.compile(given["benchmark_filter"])
results["benchmarks"] = [each for each in results["benchmarks"] if wanted.search(each["run_name"])]
out = pathlib.Path(given["benchmark_out"])
out.write_text(json.dumps(results) if results["benchmarks"] else "")
sys.exit((folder / "fails").exists() and "no memory")
"""


def repetitions(name, times, unit="ns", **more):
    """The entries of a benchmark, one for each time; a list among `more` has a value for each."""
    entries = []
    for number, time in enumerate(times):
        entry = {"name": name, "run_name": name, "run_type": "iteration", "repetition_index": number}
        entry.update(cpu_time=time, real_time=time, time_unit=unit)
        entry.update({key: value[number] if isinstance(value, list) else value for key, value in more.items()})
        entries.append(entry)
    return entries


def run():
    """The results by hand. The last entry of all is the first of Own/1000."""
    own = repetitions("Own/1000", [10.0, 20.0, 30.0])
    mean = dict(own[0], name="Own/1000_mean", run_type="aggregate", cpu_time=1e9)
    context = {"date": "2026-01-02T03:04:05+00:00", "num_cpus": 2, "load": "0.10", "cpu": "Abacus 3"}
    context.update({"compiler": "cc 1", "peers": "OTHER THIRD", "libc6": "2.36-9", "libother-dev": "1:7"})
    kept = {"peak bytes per instance": [80.0, 82.0]}
    return {
        "context": context,
        "benchmarks": [
            *own[1:],
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
            own[0],
        ],
    }


class PerformanceTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        self.run_results = run()
        self.list = LIST

    def write_by_running(self):
        """The same where the program runs the benchmarks first."""
        (self.folder / "all.json").write_text(json.dumps(self.run_results), encoding="utf-8")
        (self.folder / "list.toml").write_text(self.list, encoding="utf-8")
        program = self.folder / "program"
        program.write_text(PROGRAM, encoding="utf-8")
        program.chmod(0o755)
        command = [sys.executable, BENCHMARKS / "performance.py", self.folder / "ran.json"]
        command += ["--comparisons", self.folder / "list.toml", "--docs", self.folder / "docs"]
        command += ["--run", program, "--benchmark_repetitions=3"]
        return subprocess.run(command, capture_output=True, text=True)

    def test_runs_what_is_compared_together(self):
        self.write()
        page = (self.folder / "docs/performance.md").read_text(encoding="utf-8")
        answer = self.write_by_running()
        self.assertEqual(answer.returncode, 0, answer.stderr)
        self.assertEqual((self.folder / "docs/performance.md").read_text(encoding="utf-8"), page)
        told = [line for line in answer.stdout.splitlines() if " of " in line and ": " in line]
        self.assertEqual(
            told[:5],
            [
                "1 of 5: Own/1000, Peer/1000, Shade",
                "2 of 5: Own/Few, Peer/Few",
                "3 of 5: Wait, PeerWait",
                "4 of 5: Rate, PeerRate",
                "5 of 5: Keep",
            ],
        )
        calls = (self.folder / "calls").read_text().splitlines()
        self.assertEqual(len(calls), 5)
        self.assertTrue(calls[0].startswith("3 ^(Own/1000|Peer/1000|Shade)("), calls[0])

    def test_runs_no_benchmark_of_a_longer_name(self):
        self.run_results["benchmarks"] += repetitions("Own/10000", [1.0] * 3) + repetitions("MyWait", [1.0] * 3)
        self.assertEqual(self.write_by_running().returncode, 0)
        ran = json.loads((self.folder / "ran.json").read_text(encoding="utf-8"))
        names = {entry["run_name"] for entry in ran["benchmarks"]}
        self.assertIn("Own/1000", names)
        self.assertIn("Keep/iterations:1/repeats:2/real_time", names)
        self.assertFalse(names & {"Own/10000", "MyWait"})

    def test_a_benchmark_that_cannot_be_run(self):
        self.list = self.list.replace("Keep", "Kept")
        answer = self.write_by_running()
        self.assertEqual(answer.returncode, 1)
        self.assertIn("has run no benchmark called Kept", answer.stderr)
        (self.folder / "fails").touch()
        answer = self.write_by_running()
        self.assertEqual(answer.returncode, 1)
        self.assertIn("ended with status 1 over Own/1000: no memory", answer.stderr)
        self.assertFalse((self.folder / "docs").exists())

    def write(self):
        """The answer of the program; the page is read by page(), a plot by plot()."""
        (self.folder / "run.json").write_text(json.dumps(self.run_results), encoding="utf-8")
        (self.folder / "list.toml").write_text(self.list, encoding="utf-8")
        command = [sys.executable, BENCHMARKS / "performance.py", self.folder / "run.json"]
        command += ["--comparisons", self.folder / "list.toml", "--docs", self.folder / "docs"]
        return subprocess.run(command, capture_output=True, text=True)

    def written(self):
        answer = self.write()
        self.assertEqual((answer.returncode, answer.stderr), (0, ""))
        return answer.stdout.splitlines()

    def refused(self):
        answer = self.write()
        self.assertEqual((answer.returncode, answer.stdout), (1, ""))
        self.assertFalse((self.folder / "docs").exists())
        return answer.stderr

    def page(self):
        return (self.folder / "docs/performance.md").read_text(encoding="utf-8").splitlines()

    def plot(self, name):
        return ElementTree.parse(self.folder / f"docs/images/{name}").getroot()

    def rows(self):
        """The rows of the groups' tables, without the machine's."""
        page = self.page()
        return [line for line in page[page.index("## Things, all") :] if line.startswith("| ")]

    def without(self, name):
        self.run_results["benchmarks"] = [
            entry for entry in self.run_results["benchmarks"] if not entry["run_name"].startswith(name)
        ]

    def test_pairs_repetitions_and_judges_their_median(self):
        self.written()
        head = ["| What | Beside | Ours | Peer's | Ratio (spread) | Target |  |", "| --- " * 7 + "|"]
        expected = [
            *head,
            # The ratios are 1, 2 and 1.5; the quotient of the medians is 2.
            "| 1,000 things | a <peer> | 20.0 ns | 10.0 ns | 1.50 (1.00–2.00) | 1.5 | met |",
            "| a few things | a <peer> | 2.00 µs | 500 ns | 4.00 (2.00–6.00) | 1.5 | **missed** |",
            "| waiting | another | 4.00 ns | 100 ns | 0.040 (0.030–0.050) |  |  |",
            # Shown as 1.00, and judged by that.
            "| a shade above | a <peer> | 10.0 ns | 10.0 ns | 1.00 (1.00–1.00) | 1 | met |",
            *head,
            # What takes half the time has twice the rate.
            "| bytes read | a slower one | 0.500 ns | 10.0 ns | 0.050 (0.025–0.10) | 0.1 | met |",
            "| bytes kept | a limit of 100 bytes | 81.0 bytes | 100 bytes | 0.81 (0.80–0.82) | 1 | met |",
        ]
        self.assertEqual(self.rows(), expected)
        end = "those that are missed stand at the end."
        self.assertIn(f"Of 5 targets 4 are met; {end}", self.page())

    def test_tells_the_machine(self):
        self.written()
        machine = "| Date | 2026-01-02 |,| Processor | Abacus 3, 2 of them |,| Compiler | cc 1 |,| Repetitions | 3 |"
        page = self.page()
        start = page.index("| Date | 2026-01-02 |")
        expected = [*re.split(r"(?<=\|),", machine), "| Load average before | 0.10 |", "| `libc6` | 2.36-9 |"]
        self.assertEqual(page[start : start + 7], [*expected, "| `libother-dev` | 1:7 |"])
        self.run_results["context"]["load"] = "0.60"
        self.written()
        busy = "| Load average before | 0.60: **the machine was busy, trust no figure of this page** |"
        self.assertIn(busy, self.page())

    def test_tells_why_a_target_is_missed(self):
        missed = "missed: a few things, beside a <peer>: 4.00 (2.00–6.00), target 1.5"
        self.assertEqual(self.written(), [missed])
        line = "- Things, all: a few things, beside a <peer>: 4.00 (2.00–6.00), target 1.5"
        end = ["## Targets that are missed", "", line, "", "It is slow for a reason."]
        self.assertEqual(self.page()[-5:], end)
        self.list = LIST.replace('note = "slow"\n', "")
        self.assertEqual(self.written(), [missed + "; comparisons.toml has no note that says why"])
        self.assertEqual(self.page()[-3:], [line, "", "Why, and what helps, is not known yet."])
        self.list = LIST.replace("target = 1.5", "target = 4")
        self.assertEqual(self.written(), [])
        self.assertEqual(self.page()[-1], "None.")
        self.assertIn("Of 5 targets 5 are met.", self.page())

    def test_draws_each_group(self):
        self.written()
        page = self.page()
        for group, name in [("Things, all", "performance-things-all.svg"), ("Memory", "performance-memory.svg")]:
            line = f"![The ratios of the table below, with their spread and targets](images/{name})"
            self.assertEqual(page[page.index(f"## {group}") + 2], line)
        root = self.plot("performance-things-all.svg")
        self.assertEqual(root.get("role"), "img")
        named = {child.get("id"): child.text for child in root if child.get("id")}
        self.assertEqual(root.get("aria-labelledby").split(), list(named))
        self.assertEqual(named["title"], "Things, all: what the library costs, in times of what its peer costs")
        told = "1,000 things, beside a <peer>: 1.50 (1.00–2.00), target 1.5, met; a few things, beside a <peer>: "
        told += "4.00 (2.00–6.00), target 1.5, missed; waiting, beside another: 0.040 (0.030–0.050); "
        self.assertEqual(named["told"], told + "a shade above, beside a <peer>: 1.00 (1.00–1.00), target 1, met")
        # One mark of each kind is the legend's.
        marks = [element.get("class") for element in root.iter() if element.get("class") in {"met", "missed", "shown"}]
        self.assertEqual([marks.count(kind) for kind in ("met", "missed", "shown")], [3, 2, 2])
        self.assertEqual(sum(element.get("class") == "target" for element in root.iter()), 4)
        self.assertIn("prefers-color-scheme:dark", root.find(f"{SVG}style").text)

    def places(self, name):
        """Where the marks of a plot lie from left to right, where 1 does, and the words of its axis."""
        root = self.plot(name)
        dots = [float(dot.get("cx")) for dot in root.iter(f"{SVG}circle")][2:]
        one = next(path.get("d") for path in root.iter(f"{SVG}path") if path.get("class") == "one")
        words = [text.text for text in root.iter(f"{SVG}text") if (text.text or "").startswith("times the peer")]
        return dots, float(re.match(r"M([\d.]+) ", one).group(1)), words

    def test_scales_by_logarithms_beyond_a_decade(self):
        self.written()
        (first, waiting, shade), one, words = self.places("performance-things-all.svg")
        self.assertEqual(words, ["times the peer, logarithmic scale"])
        self.assertAlmostEqual(shade, one, delta=1)
        # 1.5 is as far from 1 as its logarithm says, measured by 0.04.
        self.assertAlmostEqual((first - one) / (one - waiting), 0.405465 / 3.218876, places=2)
        self.list = LIST.replace('ours = "Wait"', 'ours = "PeerWait"')
        self.written()
        (first, waiting, shade), one, words = self.places("performance-things-all.svg")
        self.assertEqual(words, ["times the peer, scale from 0"])
        self.assertEqual(waiting, one)
        self.assertAlmostEqual((first - 350) / (one - 350), 1.5, places=2)

    def test_marks_an_axis_wherever_it_ends(self):
        for high in [0.5, 0.9, 1.0, 1.3, 2.0, 4.4, 7.9, 8.1, 9.4, 9.9]:
            with self.subTest(high):
                axis = Axis([SimpleNamespace(ratio=high, low=high, high=high, target=None)])
                self.assertFalse(axis.is_log)
                ticks = axis.ticks()
                self.assertTrue(5 <= len(ticks) <= 9, ticks)
                self.assertTrue(ticks[0] == 0 and ticks[-1] <= axis.high)
                self.assertTrue(any(abs(tick - 1) < 1e-9 for tick in ticks) or axis.high > 8)
        far = Axis([SimpleNamespace(ratio=ratio, low=ratio, high=100 * ratio, target=2.0) for ratio in (0.5, 8.0)])
        # The spread that runs out to 800 ends at the edge, at twice the largest ratio.
        self.assertEqual([far.ticks(), far.at(800.0)], [[0.5, 1.0, 2.0, 5.0, 10.0], 800.0])

    def test_gives_the_same_bytes_and_clears_old_plots(self):
        self.written()
        first = {path.name: path.read_bytes() for path in (self.folder / "docs").rglob("*.*")}
        (self.folder / "docs/images/performance-gone.svg").write_text("")
        (self.folder / "docs/images/layers.svg").write_text("kept")
        self.written()
        second = {path.name: path.read_bytes() for path in (self.folder / "docs").rglob("*.*")}
        self.assertEqual(second, dict(first, **{"layers.svg": b"kept"}))

    def test_refuses_a_name_without_results(self):
        for name in ["Shade", "PeerRate"]:
            with self.subTest(name):
                self.run_results = run()
                self.without(name)
                problem = f"no benchmark is called {name}: mend comparisons.toml, or run all of the benchmarks"
                self.assertEqual(self.refused(), f"performance.py: {problem}\n")

    def test_leaves_out_a_peer_that_is_not_installed(self):
        self.without("PeerRate")
        self.run_results["context"]["peers"] = "OTHERS"
        why = "bytes read, beside a slower one: Other & Sons is not installed (libother-dev)"
        self.assertEqual(self.written()[0], f"left out: {why}")
        self.assertEqual(self.page()[-3:], ["## What is left out", "", f"- {why}"])
        self.assertFalse([row for row in self.rows() if row.startswith("| bytes read")])
        self.assertEqual(len(self.places("performance-memory.svg")[0]), 1)

    def test_leaves_out_a_peer_that_gave_up_but_not_the_library(self):
        gave_up = {"error_occurred": True, "error_message": "no such file"}
        for entry in self.run_results["benchmarks"]:
            if entry["run_name"] == "PeerRate":
                entry.update(gave_up)
        self.assertEqual(self.written()[0], "left out: bytes read, beside a slower one: no such file")
        self.run_results["benchmarks"][0].update(gave_up)
        self.folder = self.folder / "fresh"
        self.folder.mkdir()
        self.assertEqual(self.refused(), "performance.py: Own/1000 gave up: no such file\n")

    def test_refuses_results_that_say_too_little_or_too_much(self):
        self.run_results["benchmarks"] += repetitions("Shade/real_time", [1.0])
        self.assertEqual(self.refused(), "performance.py: run.json: two benchmarks are called Shade\n")
        self.run_results = run()
        for entry in self.run_results["benchmarks"]:
            entry.pop("peak bytes per instance", None)
        problem = "Keep/iterations:1/repeats:2/real_time does not count peak bytes per instance"
        self.assertEqual(self.refused(), f"performance.py: {problem}\n")

    def test_refuses_a_list_with_a_mistake(self):
        lacking = "needs what and ours, and either peer and theirs or a limit"
        for old, new, problem in [
            ('peer = "another"', 'per = "another"', "Things, all: waiting: no such key: per"),
            ('peer = "another"\n', "", f"Things, all: waiting: {lacking}"),
            ('note = "slow"', 'note = "fast"', "Things, all: {} things: no such note: fast"),
            ('needs = "OTHER"', 'needs = "ANOTHER"', "Memory: bytes read: no such needs: ANOTHER"),
            ('"bytes_per_second"', '"bytes"', "Memory: bytes read: no such measure: bytes"),
            ('"100 bytes"', '"100 ms"', "Memory: bytes kept: a limit in ms"),
        ]:
            with self.subTest(new):
                self.list = LIST.replace(old, new)
                self.assertEqual(self.refused(), f"performance.py: list.toml: {problem}\n")


def benchmark_names(source):
    """The names that a source gives to its benchmarks, less their arguments."""
    text = re.sub(r"//[^\n]*|^#.*?(?<!\\)$", "", source.read_text(encoding="utf-8"), flags=re.MULTILINE | re.DOTALL)
    for macro, inner, rest in re.findall(r"^(\w*BENCHMARK\w*)\(([^;]*?)\)(\s*(?:->[^;]*)?);", text, re.MULTILINE):
        words = [word.strip() for word in inner.split(",")]
        if given := re.search(r'->Name\("([^"]+)"\)', rest):
            yield given.group(1)
        elif macro.endswith("TEMPLATE"):
            yield f"{words[0]}<{', '.join(words[1:])}>"
        elif macro.endswith("CAPTURE"):
            yield f"{words[0]}/{words[1]}"
        else:
            yield words[0]


class ComparisonsTest(unittest.TestCase):
    comparisons = Comparisons(BENCHMARKS / "comparisons.toml")
    names = [name for source in sorted(BENCHMARKS.rglob("*Benchmark.cpp")) for name in benchmark_names(source)]

    def rows(self):
        return [row for rows in self.comparisons.groups.values() for row in rows]

    def test_no_two_benchmarks_have_one_name(self):
        self.assertGreater(len(self.names), 100)
        self.assertEqual(sorted(set(self.names)), sorted(self.names))

    def test_each_row_names_benchmarks_that_are_there(self):
        for row in self.rows():
            for sought in filter(None, [row.ours, row.theirs]):
                with self.subTest(sought):
                    self.assertTrue([name for name in self.names if sought == name or sought.startswith(name + "/")])

    def test_no_comparison_stands_there_twice(self):
        pairs = [(row.ours, row.theirs, row.limit, row.measure) for row in self.rows()]
        self.assertEqual(sorted(map(str, set(pairs))), sorted(map(str, pairs)))

    def test_each_note_and_need_is_used(self):
        self.assertEqual(set(self.comparisons.notes), {row.note for row in self.rows()} - {None})
        self.assertEqual(set(self.comparisons.needs), {row.needs for row in self.rows()} - {None})

    def test_what_may_be_missing_is_known_to_the_build_and_installed_by_bootstrap(self):
        build = (BENCHMARKS / "CMakeLists.txt").read_text(encoding="utf-8")
        built = re.findall(r"^ *peer\((\w+) ", build, re.MULTILINE)
        self.assertEqual(sorted(self.comparisons.needs), sorted(built))
        bootstrap = (ROOT / "script/bootstrap").read_text(encoding="utf-8")
        for need in self.comparisons.needs.values():
            for package in need["packages"]:
                self.assertIn(f'"{package} ', bootstrap)


if __name__ == "__main__":
    unittest.main()
