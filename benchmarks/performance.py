#!/usr/bin/python3
"""Runs the comparisons of comparisons.toml, and writes docs/performance.md with a plot for each group.

performance.py --run PROGRAM RESULTS [ARGUMENT...]   runs VRELBaseBenchmarks and writes RESULTS (JSON)
performance.py RESULTS [--docs FOLDER] [--scale FILE]
                                                     writes the page and its plots from RESULTS, and from FILE, which
                                                     scale.py wrote
performance.py --packages                            lists the Debian packages whose versions belong to the results

Benchmarks that are compared with each other run in a process of their own, so that they share no heap and little time
passes between them. Repetition k of ours is divided by repetition k of the peer; the ratio is the median of these, the
spread goes from the smallest to the largest. Results of Google Benchmark: name, cpu_time or real_time in time_unit, and
counters. script/bench does all of it.
"""
import argparse
import json
import re
import subprocess
import sys
import tomllib
from pathlib import Path
from statistics import median

import scale

ROOT = Path(__file__).resolve().parents[1]
LIST = ROOT / "benchmarks/comparisons.toml"
TIMES = [("ns", 1e-9), ("us", 1e-6), ("ms", 1e-3), ("s", 1.0)]
SIZES = [("bytes", 1.0), ("kB", 1e3), ("MB", 1e6)]
UNITS = dict(TIMES + SIZES)
# What a row can compare: the units of its cost, and whether it is a rate, which is inverted.
MEASURES = {
    "time": (TIMES, False),
    "bytes_per_second": (TIMES, True),
    "items_per_second": (TIMES, True),
    "per pair": (TIMES, False),
    "per instance": (TIMES, False),
    "peak bytes": (SIZES, False),
    "peak bytes per instance": (SIZES, False),
}
# Suffixes that Google Benchmark appends to a name.
SUFFIX = re.compile(r"/(iterations:\d+|repeats:\d+|min_time:[\d.]+|real_time|manual_time|process_time)(?=/|$)")
# A benchmark that does not measure processor time has such a suffix.
WAITS = re.compile(r"/(real|manual|process)_time")


def read_rows(path=LIST):
    """Returns the table and its rows, one for each value of `each`, with the name of their group."""
    table = tomllib.loads(Path(path).read_text(encoding="utf-8"))
    rows = []
    for group in table["group"]:
        for entry in group["row"]:
            for value in entry.get("each", [""]):
                key, word = value if isinstance(value, list) else (value, f"{value:,}" if value != "" else "")
                row = {"group": group["name"], "measure": "time", **entry}
                row["what"] = row["what"].replace("{}", str(word))
                for name in {"ours", "theirs"} & set(row):
                    row[name] = row[name].replace("{}", str(key))
                if "limit" in row:
                    number, unit = row["limit"].split(" ")
                    row.update(peer=f"limit of {number} {unit}", allowed=float(number) * UNITS[unit], target=1.0)
                if "target" not in row and "why" not in row:
                    raise SystemExit(f"performance.py: '{row['what']}' has neither a target nor a reason (why)")
                rows.append(row)
    return table, rows


def comparable_sets(rows):
    """Returns the names of the benchmarks in sets: those that are compared with each other belong to one set."""
    sets = []
    for row in rows:
        names = {row["ours"], row.get("theirs", row["ours"])}
        joined = [each for each in sets if each & names]
        sets = [each for each in sets if not each & names] + [names.union(*joined)]
    return sets


def filter_of(names):
    """Returns the regular expression, in the extended form of POSIX, that matches these benchmarks alone."""
    # Only special characters may be escaped there; re.escape also escapes blanks.
    escaped = (re.sub(r"[][.*+?(){}^$|\\]", r"\\\g<0>", name) for name in sorted(names))
    return f"^({'|'.join(escaped)})(/[a-z_]+:[0-9.]+|/[a-z_]+_time)*$"


def run(program, rows, results, arguments):
    """Runs each set in a process of its own, and writes the results of all as those of one run."""
    whole = None
    sets = comparable_sets(rows)
    for number, names in enumerate(sets, 1):
        print(f"{number} of {len(sets)}: {', '.join(sorted(names))}", flush=True)
        options = [f"--benchmark_filter={filter_of(names)}", f"--benchmark_out={results}", "--benchmark_out_format=json"]
        subprocess.run([program, *arguments, *options], stdout=subprocess.DEVNULL, check=True)
        part = json.loads(results.read_text(encoding="utf-8"))
        if whole is None:
            whole = part
        else:
            whole["benchmarks"] += part["benchmarks"]
    results.write_text(json.dumps(whole, indent=1), encoding="utf-8")


def costs_of(entries, measure):
    """Returns the costs of the repetitions of one benchmark, in seconds or bytes."""
    if measure == "time":
        return [
            entry["real_time" if WAITS.search(entry["run_name"]) else "cpu_time"] * UNITS[entry["time_unit"]]
            for entry in entries
        ]
    return [1 / entry[measure] if MEASURES[measure][1] else entry[measure] for entry in entries]


def compare(rows, results, needs):
    """Adds costs, ratios and state to each row. Returns the rows with results, and a reason for each other row."""
    repetitions = {}
    for entry in results["benchmarks"]:
        if entry.get("run_type") == "iteration":
            repetitions.setdefault(SUFFIX.sub("", entry["run_name"]), []).append(entry)
    compared, left_out = [], []
    for row in rows:
        need = needs.get(row.get("needs"))
        names = [row["ours"]] + ([row["theirs"]] if "theirs" in row else [])
        if need and row["needs"] not in results["context"].get("peers", "").split():
            left_out.append((row, f"{need['name']} was not installed ({', '.join(need['packages'])})"))
            continue
        for name in names:
            if name not in repetitions:
                raise SystemExit(f"performance.py: no benchmark is called {name}: fix comparisons.toml or run it")
        failed = [entry["error_message"] for name in names for entry in repetitions[name] if entry.get("error_occurred")]
        if failed:
            left_out.append((row, failed[0]))
            continue
        costs = [costs_of(repetitions[name], row["measure"]) for name in names]
        row["ours_cost"] = median(costs[0])
        row["peer_cost"] = median(costs[1]) if len(costs) > 1 else row["allowed"]
        others = costs[1] if len(costs) > 1 else [row["allowed"]] * len(costs[0])
        row["ratios"] = [ours / theirs for ours, theirs in zip(costs[0], others)]
        row["ratio"] = median(row["ratios"])
        # The rounded ratio decides: a displayed 1.00 meets a target of 1.
        meets = float(rounded(row["ratio"])) <= row.get("target", 0)
        row["state"] = "" if "target" not in row else "met" if meets else "missed"
        compared.append(row)
    return compared, left_out


def rounded(ratio):
    return f"{ratio:.3f}" if ratio < 0.1 else f"{ratio:.2f}" if ratio < 10 else f"{ratio:.0f}"


def with_unit(value, units):
    name, size = next(((name, size) for name, size in reversed(units) if value >= size), units[0])
    return f"{value / size:.3g} {name.replace('us', 'µs')}"


def spread(row):
    return f"{rounded(row['ratio'])} ({rounded(min(row['ratios']))}–{rounded(max(row['ratios']))})"


def image_name(group):
    return "performance-" + re.sub(r"[^a-z0-9]+", "-", group.lower()).strip("-") + ".svg"


def draw(group, rows, path):
    """Draws the ratios of a group: a marker for each row, a line for its spread, a dash for its target."""
    import matplotlib

    matplotlib.use("svg")
    matplotlib.rcParams.update({"svg.hashsalt": "performance", "svg.fonttype": "none", "font.size": 9})
    from matplotlib import pyplot

    looks = {"met": ("o", "#17785a"), "missed": ("D", "#c2410c"), "": ("o", "#5a6672")}
    figure, axes = pyplot.subplots(figsize=(9.6, 0.9 + 0.33 * len(rows)), layout="constrained")
    for y, row in enumerate(reversed(rows)):
        marker, colour = looks[row["state"]]
        axes.plot([min(row["ratios"]), max(row["ratios"])], [y, y], color=colour, linewidth=2)
        fill = colour if row["state"] else "white"
        axes.plot(row["ratio"], y, marker, color=colour, markerfacecolor=fill)
        if "target" in row:
            axes.plot([row["target"]] * 2, [y - 0.35, y + 0.35], color="#6d3fc4", linestyle="--", linewidth=2)
    axes.set_yticks(range(len(rows)), [f"{row['what']} / {row['peer']}" for row in reversed(rows)])
    axes.axvline(1, color="black", linewidth=1)
    ratios = [row["ratio"] for row in rows]
    if max(ratios) / min(ratios) > 10:
        axes.set_xscale("log")
    axes.set_xlabel("cost of the library divided by that of the peer (left of 1: cheaper)")
    axes.set_title(f"{group}: filled dot: target met; diamond: missed; dashed line: target", fontsize=10)
    axes.grid(axis="x", alpha=0.3)
    figure.savefig(path, metadata={"Date": None})
    pyplot.close(figure)


HEAD = """\
# Performance

The cost of the library compared with what a user would use instead. `script/bench` writes this page and its plots from a
run of the benchmarks; to change it, change `benchmarks/comparisons.toml`, which lists the comparisons.

    script/bench                                                                     # everything; on an idle machine
    script/bench --benchmark_filter=MapGet --benchmark_repetitions=5                 # only some, without the page

A ratio is the cost of the library divided by that of its peer: below 1 the library is cheaper. Compared benchmarks run in
a process of their own, several times in random order; each repetition of ours is divided by the same one of the peer.
The ratio is the median, with the smallest and the largest in parentheses. Time is processor time unless the benchmark
waits for something. With a limit, the ratio is the used share of it. Where the peer is the library itself with less
input, the target says that cost grows in proportion to the input. The reason for a row without a target follows its
table.

## Machine
"""


def page(table, results, rows, left_out, scales):
    context = results["context"]
    machine = [("Date", context["date"][:10]), ("Processor", f"{context.get('cpu', 'unknown')}, {context['num_cpus']}")]
    machine += [("Compiler", context.get("compiler", "unknown")), ("Load before", context.get("load", "unknown"))]
    names = table["packages"] + [name for need in table["needs"].values() for name in need["packages"]]
    machine += [(f"`{name}`", context[name]) for name in sorted(set(names)) if name in context]
    lines = [HEAD, "| | |", "|---|---|"] + [f"| {key} | {value} |" for key, value in machine]
    if float(context.get("load", 0)) > 0.25 * context["num_cpus"]:
        lines.append("\n**The machine was busy: the results are not valid.**")
    judged = [row for row in rows if row["state"]]
    missed = [row for row in rows if row["state"] == "missed"]
    lines.append(f"\n{len(judged) - len(missed)} of {len(judged)} targets are met.")
    for group in dict.fromkeys(row["group"] for row in rows):
        lines += [f"\n## {group}\n", f"![Ratios of the table below, with spread and targets](images/{image_name(group)})\n"]
        lines += ["| What | Peer | Ours | Peer's | Ratio (spread) | Target | |", "|---|---|---|---|---|---|---|"]
        for row in rows:
            if row["group"] == group:
                costs = [with_unit(row[key], MEASURES[row["measure"]][0]) for key in ("ours_cost", "peer_cost")]
                target = f"{row['target']:g}" if "target" in row else ""
                state = "**missed**" if row["state"] == "missed" else row["state"]
                lines.append("| " + " | ".join([row["what"], row["peer"], *costs, spread(row), target, state]) + " |")
        reasons = [f"- {r['what']} / {r['peer']}: {r['why']}" for r in rows if r["group"] == group and "why" in r]
        lines += ["\nWithout a target:\n", *reasons] if reasons else []
    if scales:
        lines += scale.section(scales)
    if missed:
        lines.append("\n## Missed targets\n")
    for note in dict.fromkeys(row.get("note") for row in missed):
        lines += [f"- {r['group']}: {r['what']} / {r['peer']}: {spread(r)}, target {r['target']:g}"
                  for r in missed if r.get("note") == note]
        lines.append("\n" + table["notes"].get(note, "The reason is not known yet.").strip() + "\n")
    if left_out:
        lines.append("\n## Not measured\n")
        lines += [f"- {row['what']} / {row['peer']}: {reason}" for row, reason in left_out]
    return "\n".join(lines).rstrip() + "\n"


def write(table, rows, results_path, docs, scale_path=None):
    results = json.loads(results_path.read_text(encoding="utf-8"))
    rows, left_out = compare(rows, results, table["needs"])
    images = docs / "images"
    images.mkdir(parents=True, exist_ok=True)
    for old in images.glob("performance-*.svg"):
        old.unlink()
    for group in dict.fromkeys(row["group"] for row in rows):
        draw(group, [row for row in rows if row["group"] == group], images / image_name(group))
    scales = json.loads(scale_path.read_text(encoding="utf-8")) if scale_path else None
    if scales:
        scale.draw(scales["points"], images / "performance-scale.svg")
    (docs / "performance.md").write_text(page(table, results, rows, left_out, scales), encoding="utf-8")
    for row in rows:
        if row["state"] == "missed":
            print(f"missed: {row['what']} / {row['peer']}: {spread(row)}, target {row['target']:g}")
    for row, reason in left_out:
        print(f"not measured: {row['what']} / {row['peer']}: {reason}")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("results", type=Path, nargs="?")
    parser.add_argument("--packages", action="store_true")
    parser.add_argument("--run", metavar="PROGRAM")
    parser.add_argument("--comparisons", type=Path, default=LIST)
    parser.add_argument("--docs", type=Path, default=ROOT / "docs", help="folder of the page and of images/")
    parser.add_argument("--scale", type=Path, metavar="FILE")
    options, arguments = parser.parse_known_args()
    table, rows = read_rows(options.comparisons)
    if options.packages:
        print("\n".join(table["packages"] + [name for need in table["needs"].values() for name in need["packages"]]))
    elif options.results is None:
        parser.error("RESULTS is missing")
    elif options.run:
        run(options.run, rows, options.results, arguments)
    else:
        write(table, rows, options.results, options.docs, options.scale)


if __name__ == "__main__":
    main()
