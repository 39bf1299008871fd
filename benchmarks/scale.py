#!/usr/bin/python3
"""Measures how the time and the memory of brivet grow with the size of the input, from 1 KB to 1 GB, how long it takes to
start, and how much faster a batch of small files is with two jobs.

scale.py BRIVET RESULTS [--largest MEGABYTES]    measures and writes RESULTS (JSON)

An input is a boundary representation with lines, circles, ellipses and B-splines (benchmarks/brivet/make_step.py). The
smallest ones have points only. Pages are made without exact shading, which only small documents have. Each run reads from
the page cache and writes to a scratch folder without fsync. Time is the processor time of the process, the median of three
runs, or of one above 100 MB; memory is its peak, but at least that of this script, from which the kernel starts to count.
"""
import argparse
import json
import os
import subprocess
import shutil
import sys
import tempfile
import time
from pathlib import Path
from statistics import median

ROOT = Path(__file__).resolve().parents[1]
sys.path.insert(0, str(ROOT / "benchmarks/brivet"))
import make_step  # noqa: E402

SIZES = [10**power for power in range(3, 10)]
MODES = {
    "-list": ["-list", "INPUT"],
    "page": ["-quiet", "-set", "Html.*.Writer.Shade=Off", "INPUT", "OUT.html"],
    "JSON": ["-quiet", "INPUT", "OUT.json"],
    "STEP": ["-quiet", "INPUT", "OUT.stp"],
}
SMALLEST = 30_000  # bytes of a solid and what it needs
BATCH = 1000  # files
STARTS = 41  # runs


def generate(size, path):
    """Writes a STEP file of about that many bytes, and returns the number of its instances."""
    if size >= SMALLEST:
        return make_step.make("brep", size, path)
    target = make_step.StepFile(path, 0.0)
    while target.size < size:
        target.point(float(target.instances), 0.0, 0.0)
    target.close([])
    return target.instances


def measure(brivet, mode, source, folder):
    """Runs brivet once. Returns processor seconds and peak bytes."""
    arguments = [word.replace("INPUT", str(source)).replace("OUT", str(folder / "out")) for word in MODES[mode]]
    seconds, peak = execute([brivet, "-nolog", "-nosync", "-force", *arguments], folder)
    for output in folder.glob("out.*"):
        output.unlink()
    return seconds, peak


def execute(command, folder):
    """Runs a command. Returns processor seconds and peak bytes."""
    with subprocess.Popen(command, cwd=folder, stdout=subprocess.DEVNULL) as process:
        _, status, usage = os.wait4(process.pid, 0)
        process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode != 0:
        raise SystemExit(f"scale.py: {' '.join(map(str, command))} returned {process.returncode}")
    return usage.ru_utime + usage.ru_stime, usage.ru_maxrss * 1024


def measure_starts(brivet):
    """Returns the median processor seconds of -version, and of a small document to a page."""
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        page = [brivet, "-nolog", "-nosync", "-force", "-quiet", "-set", "Html.*.Writer.Shade=Off"]
        page += [ROOT / "examples/bracket.stp", "out.html"]
        pairs = [(execute([brivet, "-version"], folder)[0], execute(page, folder)[0]) for _ in range(STARTS)]
    return {"version": median(pair[0] for pair in pairs), "page": median(pair[1] for pair in pairs)}


def measure_batch(brivet, files):
    """Returns the median seconds that a batch of equal files takes with one and with two jobs, and the median speed-up."""
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        make_step.make("brep", SMALLEST, folder / "0.stp")
        names = [f"{number}.stp" for number in range(files)]
        for each in names[1:]:
            shutil.copy(folder / "0.stp", folder / each)
        rounds = []
        for _ in range(3):
            pair = []
            for jobs in [1, 2]:
                (folder / "out").mkdir()
                begin = time.monotonic()
                command = [brivet, "-nolog", "-nosync", "-quiet", "-jobs", str(jobs), "-write", "json", "-outdir", "out"]
                execute(command + names, folder)
                pair.append(time.monotonic() - begin)
                shutil.rmtree(folder / "out")
            rounds.append(pair)
    speed_up = median(one / two for one, two in rounds)
    return {"files": files, "one": median(r[0] for r in rounds), "two": median(r[1] for r in rounds), "speed_up": speed_up}


def run(brivet, largest):
    points = []
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        source = folder / "input.stp"
        for size in SIZES:
            if size > largest:
                break
            instances = generate(size, source)
            # The first run is not measured: the system is still writing the file.
            os.sync()
            measure(brivet, "-list", source, folder)
            for mode in MODES:
                runs = [measure(brivet, mode, source, folder) for _ in range(3 if size <= 10**8 else 1)]
                point = {"mode": mode, "bytes": source.stat().st_size, "instances": instances}
                point.update(seconds=median(each[0] for each in runs), peak=max(each[1] for each in runs))
                print(f"{mode}: {point['bytes']:,} bytes: {point['seconds']:.3f} s, {point['peak'] / 1e6:.1f} MB", flush=True)
                points.append(point)
    return points


def draw(points, path):
    """Draws time and memory over the size of the input, on logarithmic axes."""
    import matplotlib

    matplotlib.use("svg")
    matplotlib.rcParams.update({"svg.hashsalt": "scale", "svg.fonttype": "none", "font.size": 9})
    from matplotlib import pyplot

    figure, both = pyplot.subplots(1, 2, figsize=(9.6, 4), layout="constrained")
    for axes, key, unit, name in zip(both, ["seconds", "peak"], [1, 1e6], ["processor time, s", "peak memory, MB"]):
        for mode, marker in zip(MODES, "osD^"):
            of_mode = [point for point in points if point["mode"] == mode]
            axes.plot([p["bytes"] / 1e6 for p in of_mode], [max(p[key], 1e-3) / unit for p in of_mode], marker + "-", label=mode)
        axes.set(xscale="log", yscale="log", xlabel="input, MB", ylabel=name)
        axes.grid(alpha=0.3)
        axes.legend()
    figure.savefig(path, metadata={"Date": None})
    pyplot.close(figure)


def section(results):
    """Returns the lines of the section of docs/performance.md."""
    points, starts, batch = results["points"], results["starts"], results["batch"]
    lines = [
        "\n## Scale\n",
        "![Time and memory of brivet over the size of the input](images/performance-scale.svg)\n",
        "Inputs are boundary representations with lines, circles, ellipses and B-splines (`benchmarks/brivet/make_step.py`).",
        "`-list` includes the summary, and pages are made without exact shading. Processor time of the whole process; below",
        "1 MB most of it is the start of the program. Peak memory; below",
        f"{min(p['peak'] for p in points) / 1e6:.0f} MB it is not measured.\n",
        "| Input | Instances | " + " | ".join(f"`{m}`" if m == "-list" else m for m in MODES) + " |",
        "|---|---|" + "---|" * len(MODES),
    ]
    for size in dict.fromkeys(point["bytes"] for point in points):
        of_size = {point["mode"]: point for point in points if point["bytes"] == size}
        cells = [f"{p['seconds']:.3g} s, {p['peak'] / 1e6:.3g} MB" for p in (of_size[mode] for mode in MODES)]
        lines.append(f"| {size / 1e6:.3g} MB | {of_size['-list']['instances']:,} | " + " | ".join(cells) + " |")
    lines += [
        f"\nbrivet starts and ends in {1000 * starts['version']:.1f} ms of processor time (`-version`); `examples/bracket.stp` becomes a",
        f"page in {1000 * starts['page']:.1f} ms. {batch['files']:,} files of {SMALLEST / 1000:.0f} KB become JSON in {batch['one']:.1f} s with `-jobs 1`",
        f"and in {batch['two']:.1f} s with `-jobs 2`: {batch['speed_up']:.2f} times as fast.",
    ]
    return lines


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("brivet", type=Path, nargs="?")
    parser.add_argument("results", type=Path, nargs="?")
    parser.add_argument("--largest", type=int, default=1000, metavar="MEGABYTES")
    options = parser.parse_args()
    if options.results is None:
        parser.error("RESULTS is missing")
    else:
        brivet = options.brivet.resolve()
        results = {"starts": measure_starts(brivet), "batch": measure_batch(brivet, BATCH)}
        print(f"starts and batch: {results}", flush=True)
        results["points"] = run(brivet, options.largest * 10**6)
        options.results.write_text(json.dumps(results, indent=1), encoding="utf-8")


if __name__ == "__main__":
    main()
