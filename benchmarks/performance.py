#!/usr/bin/env python3
"""Writes docs/performance.md, with a plot for each group of comparisons, from the results of a run.

performance.py RESULTS                              reads what a run wrote
performance.py RESULTS --run PROGRAM [ARGUMENT...]  runs the benchmarks of VRELBaseBenchmarks first, and writes RESULTS
performance.py --packages                           lists the Debian packages whose versions belong to the results

What is compared stands in comparisons.toml. The benchmarks that are compared with one another run in a process of their
own: the heap and the caches are theirs, and little time lies between the two sides. Of each pair of benchmarks,
repetition k of ours is held against repetition k of the peer: the ratio is the median of theirs, the spread goes from
the least to the most. The same results give the same page, byte for byte. A benchmark that is named there but is not
among the results is an error, unless it stands on a peer that was not there when the program was built.

script/bench does all of it; it puts the processor (cpu), the load average before (load) and the versions of packages
into the results by --benchmark_context.
"""
import argparse
import json
import math
import re
import subprocess
import sys
import tomllib
from dataclasses import dataclass
from pathlib import Path
from statistics import median

import performance_plot

ROOT = Path(__file__).resolve().parents[1]
UNITS = {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1.0, "bytes": 1.0, "kB": 1e3, "MB": 1e6}
SECONDS, BYTES = ("ns", "us", "ms", "s"), ("bytes", "kB", "MB")
# Which unit a measure has, and what it costs by the value of a counter: a rate costs the less the higher it is.
MEASURES = {
    "time": (SECONDS, None),
    "bytes_per_second": (SECONDS, lambda rate: 1 / rate),
    "items_per_second": (SECONDS, lambda rate: 1 / rate),
    "per pair": (SECONDS, lambda value: value),
    "per instance": (SECONDS, lambda value: value),
    "peak bytes": (BYTES, lambda value: value),
    "peak bytes per instance": (BYTES, lambda value: value),
}
# What Google Benchmark appends to a name for the way in which it was run.
APPENDED = re.compile(r"/(iterations:\d+|repeats:\d+|min_time:[\d.]+|min_warmup_time:[\d.]+)(?=/|$)")
CLOCKS = re.compile(r"/(real_time|manual_time|process_time)$")
ROW_KEYS = {"what", "ours", "peer", "theirs", "limit", "target", "measure", "needs", "note", "each"}


class Fault(Exception):
    """What is wrong with the list or the results, for people."""


@dataclass
class Row:
    """One comparison, as comparisons.toml has it."""

    what: str
    ours: str
    peer: str
    theirs: str | None = None
    limit: float | None = None  # what ours may cost, instead of theirs
    target: float | None = None
    measure: str = "time"
    needs: str | None = None
    note: str | None = None


@dataclass
class Outcome:
    """What a run says about a row; the names are those of performance_plot's bars."""

    row: Row
    ours: float
    theirs: float
    ratios: list

    what = property(lambda self: self.row.what)
    peer = property(lambda self: self.row.peer)
    target = property(lambda self: self.row.target)
    ratio = property(lambda self: median(self.ratios))
    low = property(lambda self: min(self.ratios))
    high = property(lambda self: max(self.ratios))

    @property
    def text(self):
        return f"{shown(self.ratio)} ({shown(self.low)}–{shown(self.high)})"

    @property
    def told_target(self):
        return "" if self.target is None else f", target {self.target:g}, {self.state}"

    @property
    def state(self):
        """Judged by the ratio as it is shown, so that nobody reads that 1.00 is more than 1."""
        if self.target is None:
            return "shown"
        return "met" if float(shown(self.ratio)) <= self.target else "missed"


def shown(ratio):
    return f"{ratio:.3f}" if ratio < 0.1 else f"{ratio:.2f}" if ratio < 10 else f"{ratio:.0f}"


def in_unit(value, units):
    """The value in the unit that fits it, with three digits."""
    unit = next((unit for unit in reversed(units) if value >= UNITS[unit]), units[0])
    number = value / UNITS[unit]
    digits = max(0, 2 - math.floor(math.log10(number))) if number > 0 else 0
    return f"{number:.{digits}f} {unit.replace('us', 'µs')}"


class Comparisons:
    """The list of what is compared."""

    def __init__(self, path):
        try:
            table = tomllib.loads(path.read_text(encoding="utf-8"))
        except (OSError, tomllib.TOMLDecodeError) as error:
            raise Fault(f"{path}: {error}") from error
        self.needs = table.get("needs", {})
        self.notes = {name: " ".join(text.split()) for name, text in table.get("notes", {}).items()}
        self.packages = table.get("packages", []) + [name for need in self.needs.values() for name in need["packages"]]
        self.groups = {
            group["name"]: [row for entry in group["row"] for row in self.rows(entry, f"{path.name}: {group['name']}")]
            for group in table["group"]
        }

    def rows(self, entry, place):
        place += f": {entry.get('what', entry.get('ours', 'a row'))}"
        if unknown := set(entry) - ROW_KEYS:
            raise Fault(f"{place}: no such key: {', '.join(sorted(unknown))}")
        if not {"what", "ours"} <= set(entry) or ({"peer", "theirs"} <= set(entry)) == ("limit" in entry):
            raise Fault(f"{place}: needs what and ours, and either peer and theirs or a limit")
        for key, table in [("measure", MEASURES), ("needs", self.needs), ("note", self.notes)]:
            if key in entry and entry[key] not in table:
                raise Fault(f"{place}: no such {key}: {entry[key]}")
        entry = dict(entry)
        if "limit" in entry:
            number, _, unit = entry["limit"].partition(" ")
            if unit not in MEASURES[entry.get("measure", "time")][0]:
                raise Fault(f"{place}: a limit in {unit or 'no unit'}")
            limit = f"a limit of {number} {unit.replace('us', 'µs')}"
            entry.update(limit=float(number) * UNITS[unit], peer=limit, target=1.0)
        for each in entry.pop("each", [""]):
            value, word = each if isinstance(each, list) else (each, f"{each:,}" if isinstance(each, int) else each)
            row = Row(**entry)
            row.what = row.what.replace("{}", word)
            row.ours = row.ours.replace("{}", str(value))
            row.theirs = row.theirs and row.theirs.replace("{}", str(value))
            yield row


def sets_to_run(rows):
    """The names of the benchmarks, those that are compared with one another together, in the order of the rows."""
    sets = []
    for row in rows:
        names = [row.ours] + ([row.theirs] if row.theirs else [])
        joined = [each for each in sets if not set(names).isdisjoint(each)]
        first = joined[0] if joined else []
        for other in joined[1:]:
            first += other
            sets.remove(other)
        first += [name for name in names if name not in first]
        if not joined:
            sets.append(first)
    return sets


def run_all(comparisons, program, arguments, results):
    """Runs what is compared, a process for each set, and writes the results of all of them as those of one run."""
    sets = sets_to_run([row for rows in comparisons.groups.values() for row in rows])
    whole = None
    for number, names in enumerate(sets, 1):
        print(f"{number} of {len(sets)}: {', '.join(names)}", flush=True)
        pattern = f"^({'|'.join(names)})(/[a-z_]+:[0-9.]+|{CLOCKS.pattern[:-1]})*$"
        command = [program, *arguments, f"--benchmark_filter={pattern}", f"--benchmark_out={results}"]
        ended = subprocess.run([*command, "--benchmark_out_format=json"], capture_output=True, text=True)
        if ended.returncode != 0:
            raise Fault(f"{program} ended with status {ended.returncode} over {names[0]}: {ended.stderr.strip()}")
        try:
            part = json.loads(results.read_text(encoding="utf-8"))
        except (OSError, json.JSONDecodeError) as error:
            raise Fault(f"{program} has run no benchmark called {' or '.join(names)}: {error}") from error
        finally:
            results.unlink(missing_ok=True)
        if whole is None:
            whole = part
        else:
            whole["benchmarks"] += part["benchmarks"]
    results.write_text(json.dumps(whole, indent=1), encoding="utf-8")


class Run:
    """The results of a run: of each benchmark the repetitions in order."""

    def __init__(self, path):
        try:
            results = json.loads(path.read_text(encoding="utf-8"))
        except (OSError, json.JSONDecodeError) as error:
            raise Fault(f"{path}: {error}") from error
        self.context = results["context"]
        self.peers = self.context.get("peers", "").split()
        self.repetitions = {}
        for entry in results["benchmarks"]:
            if entry.get("run_type", "iteration") != "iteration":
                continue
            name = CLOCKS.sub("", APPENDED.sub("", entry.get("run_name", entry["name"])))
            of_name = self.repetitions.setdefault(name, {})
            number = entry.get("repetition_index", 0)
            if number in of_name:
                raise Fault(f"{path.name}: two benchmarks are called {name}")
            of_name[number] = entry

    def entries(self, name):
        if name not in self.repetitions:
            raise Fault(f"no benchmark is called {name}: mend comparisons.toml, or run all of the benchmarks")
        of_name = self.repetitions[name]
        return [of_name[number] for number in sorted(of_name)]

    def error(self, name):
        """What a benchmark said when it gave up, or nothing."""
        return next((entry.get("error_message") for entry in self.entries(name) if entry.get("error_occurred")), None)

    def costs(self, name, measure):
        return [cost(entry, measure) for entry in self.entries(name)]


def cost(entry, measure):
    """What one repetition costs, in seconds or bytes."""
    if measure == "time":
        clock = "real_time" if CLOCKS.search(entry.get("run_name", entry["name"])) else "cpu_time"
        return entry[clock] * UNITS[entry["time_unit"]]
    if measure not in entry:
        raise Fault(f"{entry['name']} does not count {measure}")
    return MEASURES[measure][1](entry[measure])


def outcome(row, run):
    if error := run.error(row.ours):
        raise Fault(f"{row.ours} gave up: {error}")
    ours = run.costs(row.ours, row.measure)
    theirs = [row.limit] * len(ours) if row.theirs is None else run.costs(row.theirs, row.measure)
    ratios = [our / their for our, their in zip(ours, theirs)]
    return Outcome(row, median(ours), median(theirs), ratios)


def compare(comparisons, run):
    """Of each group the outcomes; and of the rows that cannot be had, what they lack."""
    outcomes, left_out = {}, []
    for name, rows in comparisons.groups.items():
        outcomes[name] = []
        for row in rows:
            if row.needs and row.needs not in run.peers:
                need = comparisons.needs[row.needs]
                left_out.append((row, f"{need['name']} is not installed ({', '.join(need['packages'])})"))
            elif row.theirs and (error := run.error(row.theirs)):
                left_out.append((row, error))
            else:
                outcomes[name].append(outcome(row, run))
    return {name: rows for name, rows in outcomes.items() if rows}, left_out


def picture(group):
    return f"performance-{re.sub(r'[^a-z0-9]+', '-', group.lower()).strip('-')}.svg"


def table(head, rows):
    lines = [head, ["---"] * len(head), *rows]
    return ["| " + " | ".join(cell.replace("|", "\\|") for cell in line) + " |" for line in lines]


def machine(run, comparisons):
    context = run.context
    count = context["num_cpus"]
    caches = ", ".join(
        f"L{cache['level']} {cache['type'].lower()} {cache['size'] // 1024} KiB" for cache in context.get("caches", [])
    )
    rows = [
        ["Date", context["date"][:10]],
        ["Processor", f"{context.get('cpu', 'unknown')}, {count} of them" + (f"; {caches}" if caches else "")],
        ["Compiler", context.get("compiler", "unknown")],
        ["Repetitions", str(max(len(entries) for entries in run.repetitions.values()))],
    ]
    if "load" in context:
        busy = float(context["load"]) > 0.25 * count
        doubt = ": **the machine was busy, trust no figure of this page**" if busy else ""
        rows.append(["Load average before", context["load"] + doubt])
    rows += [[f"`{name}`", context[name]] for name in sorted(set(comparisons.packages)) if name in context]
    return table(["", ""], rows)


HEAD = """\
# Performance

What the library costs beside what one would take in its stead. `script/bench` writes this page and its plots from a run
of the benchmarks; change `benchmarks/comparisons.toml`, which lists what is compared, and not this page.

## To make it anew

    script/bench

on a machine that does nothing else: it installs the peers, builds, runs everything and writes the page, all within some
ten minutes on two processors. With arguments it runs the benchmarks and prints what they say, so that one can be looked
at while it is worked on:

    script/bench --benchmark_filter=MapGet --benchmark_repetitions=5

## Where it was measured
"""

READING = """\
## How to read it

A ratio is the library's cost divided by its peer's: below 1 the library is cheaper. What is compared with one another
runs in a process of its own, several times in a random order, so that both see the same machine; each repetition of
ours is divided by the same one of the peer. The ratio is the median of these, and the least and the most stand behind
it. The columns of costs are medians as well. What is timed is the processor's time, except where several processes or
the loading of libraries are involved.

In the plots a mark is a ratio and the line through it its spread, which ends at the edge where it runs far out; the
dashed line is the target. The mark is a dot where the target is met, a diamond where it is missed, and hollow where
there is none. Beside a limit the ratio is the share of it that is used. Where the other side is the library itself with
less to do, the target says that the cost grows in step with the work.
"""


def group_section(name, outcomes):
    yield f"## {name}\n"
    yield f"![The ratios of the table below, with their spread and targets](images/{picture(name)})\n"
    rows = []
    for each in outcomes:
        unit = MEASURES[each.row.measure][0]
        target = "" if each.target is None else f"{each.target:g}"
        verdict = {"met": "met", "missed": "**missed**", "shown": ""}[each.state]
        costs = [in_unit(value, unit) for value in (each.ours, each.theirs)]
        rows.append([each.what, each.peer, *costs, each.text, target, verdict])
    yield from table(["What", "Beside", "Ours", "Peer's", "Ratio (spread)", "Target", ""], rows)
    yield ""


def missed_section(outcomes, notes):
    missed = {}
    for name, group in outcomes.items():
        for each in group:
            if each.state == "missed":
                missed.setdefault(each.row.note, []).append(
                    f"- {name}: {each.what}, beside {each.peer}: {each.text}, target {each.target:g}"
                )
    yield "## Targets that are missed\n"
    if not missed:
        yield "None."
    for number, (note, lines) in enumerate(missed.items()):
        yield from ([""] if number else []) + lines
        yield "\n" + wrapped(notes.get(note, "Why, and what helps, is not known yet."))


def wrapped(text, width=120):
    lines = [""]
    for word in text.split():
        if lines[-1] and len(lines[-1]) + 1 + len(word) > width:
            lines.append("")
        lines[-1] += (" " if lines[-1] else "") + word
    return "\n".join(lines)


def page(comparisons, run, outcomes, left_out):
    states = [each.state for group in outcomes.values() for each in group]
    met, judged = states.count("met"), len(states) - states.count("shown")
    lines = [HEAD, *machine(run, comparisons), "", READING]
    end = "" if met == judged else "; those that are missed stand at the end"
    lines.append(f"Of {judged} targets {met} are met{end}.\n")
    for name, group in outcomes.items():
        lines += group_section(name, group)
    lines += missed_section(outcomes, comparisons.notes)
    if left_out:
        lines.append("\n## What is left out\n")
        lines += [f"- {row.what}, beside {row.peer}: {why}" for row, why in left_out]
    return "\n".join(lines) + "\n"


def write(comparisons, run, docs):
    outcomes, left_out = compare(comparisons, run)
    text = page(comparisons, run, outcomes, left_out)
    plots = {picture(name): performance_plot.draw(name, group) for name, group in outcomes.items()}
    images = docs / "images"
    images.mkdir(parents=True, exist_ok=True)
    for old in images.glob("performance-*.svg"):
        old.unlink()
    for name, plot in plots.items():
        (images / name).write_text(plot, encoding="utf-8")
    (docs / "performance.md").write_text(text, encoding="utf-8")
    for row, why in left_out:
        print(f"left out: {row.what}, beside {row.peer}: {why}")
    for group in outcomes.values():
        for each in group:
            if each.state == "missed":
                known = "" if each.row.note else "; comparisons.toml has no note that says why"
                print(f"missed: {each.what}, beside {each.peer}: {each.text}, target {each.target:g}{known}")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("results", type=Path, nargs="?")
    parser.add_argument("--packages", action="store_true")
    parser.add_argument("--comparisons", type=Path, default=ROOT / "benchmarks/comparisons.toml")
    parser.add_argument("--run", nargs=argparse.REMAINDER, metavar="PROGRAM", help="and what it is to be given")
    parser.add_argument("--docs", type=Path, default=ROOT / "docs", help="where the page and images/ are written")
    options = parser.parse_args()
    if (options.results is None) != options.packages:
        parser.error("give either RESULTS or --packages")
    try:
        comparisons = Comparisons(options.comparisons)
        if options.packages:
            print("\n".join(comparisons.packages))
        else:
            if options.run:
                run_all(comparisons, options.run[0], options.run[1:], options.results)
            write(comparisons, Run(options.results), options.docs)
    except Fault as fault:
        print(f"performance.py: {fault}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
