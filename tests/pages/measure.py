#!/usr/bin/env python3
"""Measures how written pages open in headless Chromium, with WebGL in software.

    measure.py BRIVET SOURCE_FOLDER [-p] PAGE...

Prints for each page when its contents, all its sections and its picture were ready, the longest tasks of the tab, and its
memory. -p prints which functions the longest tasks ran, too.
"""
import sys
import time

from browser import Page, PageTest

LONG = 100  # milliseconds


def memory_of(driver):
    """Returns the resident memory of the largest renderer process, in MB."""
    import pathlib
    sizes = [0]
    profile = PageMeasurement.profile
    for folder in pathlib.Path("/proc").glob("[0-9]*"):
        try:
            command = (folder / "cmdline").read_bytes().decode(errors="replace")
            if "--type=renderer" in command and profile in command:
                status = (folder / "status").read_text()
                sizes.append(int(status[status.index("VmHWM:") + 6:].split()[0]) // 1024)
        except (OSError, ValueError):
            pass
    return max(sizes)


def long_parts(profile, tasks, origin):
    """Returns the functions that ran most in `tasks`: milliseconds and name."""
    names = {node["id"]: node["callFrame"]["functionName"] or "(anonymous)" for node in profile["nodes"]}
    parents = {child: node["id"] for node in profile["nodes"] for child in node.get("children", [])}
    found = {}
    at = profile["startTime"]
    for sample, delta in zip(profile["samples"], profile["timeDeltas"]):
        at += delta
        when = at / 1000 - origin
        if any(begin <= when <= begin + length for begin, length in tasks):
            stack = names[sample]
            parent = parents.get(sample)
            for _ in range(3):
                if parent is None:
                    break
                stack += " < " + names[parent]
                parent = parents.get(parent)
            found[stack] = found.get(stack, 0) + delta / 1000
    return sorted(((length, stack) for stack, length in found.items()), reverse=True)[:14]


class PageMeasurement(PageTest):
    arguments = ("--use-angle=swiftshader", "--enable-unsafe-swiftshader", "--ignore-gpu-blocklist")

    def runTest(self):
        pass

    def measure(self, path, isProfiled):
        driver = self.driver
        driver.get("about:blank")
        if isProfiled:
            driver.execute_cdp_cmd("Profiler.enable", {})
            driver.execute_cdp_cmd("Profiler.setSamplingInterval", {"interval": 1000})
            driver.execute_cdp_cmd("Profiler.start", {})
        page = Page(driver, path)
        begin = time.perf_counter()
        driver.get(page.url)
        page.wait("return document.documentElement.dataset.ready === 'true'", 200)
        if page.run("return document.getElementById('data-geometry') !== null"):
            page.wait("return document.getElementById('view').dataset.picture !== undefined", 200)
            try:
                page.wait("return document.querySelector('#view canvas')?.dataset.frame === 'drawn'", 60)
            except Exception:
                print("   the picture is not complete after 60 s")
        time.sleep(1)
        marks = page.run("""return {marks: performance.getEntriesByType('mark').map(each => [each.name, each.startTime]),
            paint: performance.getEntriesByName('first-contentful-paint').map(each => each.startTime), tasks: watched.tasks,
            origin: performance.timeOrigin}""")
        tasks = sorted((each for each in marks["tasks"] if each[1] > LONG), key=lambda each: -each[1])
        times = [f"{name} {at / 1000:.2f} s" for name, at in marks["marks"]] + [f"paint {at / 1000:.2f} s" for at in marks["paint"]]
        print(path, ", ".join(times), f"{time.perf_counter() - begin - 1:.2f} s in all, {memory_of(driver)} MB,",
              page.count("*"), "elements")
        print("   tasks:", ", ".join(f"{length:.0f} ms at {at / 1000:.2f} s" for at, length in tasks[:8]) or "none")
        if isProfiled:
            profile = driver.execute_cdp_cmd("Profiler.stop", {})["profile"]
            # Times of the profile are those of the monotonic clock.
            end = page.run("return performance.now()")
            origin = profile["endTime"] / 1000 - end
            for begin, length in tasks[:4]:
                for part, stack in long_parts(profile, [(begin, length)], origin)[:5]:
                    print(f"   {length:6.0f} ms at {begin / 1000:.2f} s: {part:6.0f} ms  {stack}")


def main():
    words = sys.argv[3:]
    isProfiled = "-p" in words
    PageMeasurement.setUpClass()
    try:
        test = PageMeasurement()
        for path in (word for word in words if word != "-p"):
            test.measure(path, isProfiled)
    finally:
        PageMeasurement.tearDownClass()


if __name__ == "__main__":
    main()
