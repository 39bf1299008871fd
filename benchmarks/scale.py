#!/usr/bin/python3
"""Measures how the time and the memory of brivet grow with the size of the input, from 1 KB to 1 GB.

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
import sys
import tempfile
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
    command = [brivet, "-nolog", "-nosync", "-force", *arguments]
    with subprocess.Popen(command, cwd=folder, stdout=subprocess.DEVNULL) as process:
        _, status, usage = os.wait4(process.pid, 0)
        process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode != 0:
        raise SystemExit(f"scale.py: {' '.join(command)} returned {process.returncode}")
    for output in folder.glob("out.*"):
        output.unlink()
    return usage.ru_utime + usage.ru_stime, usage.ru_maxrss * 1024


def run(brivet, largest):
    points = []
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        source = folder / "input.stp"
        for size in SIZES:
            if size > largest:
                break
            instances = generate(size, source)
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


def section(points):
    """Returns the lines of the section of docs/performance.md."""
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
        points = run(options.brivet.resolve(), options.largest * 10**6)
        options.results.write_text(json.dumps(points, indent=1), encoding="utf-8")


if __name__ == "__main__":
    main()
