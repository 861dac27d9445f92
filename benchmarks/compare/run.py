#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""
Draws the same series with every contender, each in a process of its own, and prints tables of the medians.

A contender that shows no picture within a minute, or takes more memory than is allowed, is said to have done so, and
longer series are not tried with it. Run it on a display; scripts/compare does.
"""

import argparse
import json
import os
import statistics
import subprocess
import sys
import threading
import time

KINDS = ("bars", "line", "area")
SIZES = (1_000, 10_000, 100_000, 1_000_000, 10_000_000)
PATIENCE = 65  # seconds without a new measurement; a contender gives up by itself after 60
MEMORY_LIMIT = 8  # GiB

# (program, its name in the tables)
CONTENDERS = (
    ("vorlix", "VorlixPlugin"),
    ("views", "VorlixPlugin.Views"),
    ("columns", "hand-written pixel columns"),
    ("painter", "QPainter item"),
    ("qtcharts", "Qt Charts"),
    ("quickcharts", "KQuickCharts"),
    ("qcustomplot", "QCustomPlot"),
    ("qwt", "Qwt"),
)
OURS = "VorlixPlugin, pyramid"
ALONE = "VorlixPlugin, plotter alone"
WIDE = "VorlixPlugin, bars of individual widths alone"
BORDER = "VorlixPlugin, plotter alone, border"
VIEWS = "VorlixPlugin.Views"
COLUMNS = "hand-written pixel columns"
MEASURES = (
    ("first frame", statistics.median, "First frame: from the series in memory to the picture on the screen"),
    ("replace", statistics.median, "Replacing the whole series, to the picture"),
    ("zoom step", statistics.median, "A zoom step over the same series, to the picture"),
    ("zoom step", max, "The slowest zoom step of a way from all values to 60 of them and back"),
)


def variants(program, kind):
    answer = subprocess.run([program, "--variants", "--kind", kind], capture_output=True, text=True, check=True)
    return answer.stdout.split("\n")[:-1]


def resident_bytes(pid):
    try:
        with open(f"/proc/{pid}/statm", encoding="ascii") as file:
            return int(file.read().split()[1]) * os.sysconf("SC_PAGE_SIZE")
    except (OSError, IndexError):
        return 0


class Attempt:
    """One process: its measurements as they come, and why it ended before all were made."""

    def __init__(self, command):
        self.found = {}
        self.failure = None
        self.last = time.monotonic()
        self.process = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        reader = threading.Thread(target=self.read)
        reader.start()
        self.watch()
        reader.join()
        if self.process.wait() != 0 and not self.failure:
            self.failure = "it crashed"

    def read(self):
        for line in self.process.stdout:
            self.last = time.monotonic()
            one = json.loads(line)
            if one["what"] == "no picture":
                self.failure = "> 60 s"
            else:
                self.found.setdefault(one["what"], []).append(one.get("ms", one.get("kB")))

    def watch(self):
        while self.process.poll() is None:
            if time.monotonic() - self.last > PATIENCE:
                self.stop("> 60 s")
            elif resident_bytes(self.process.pid) > MEMORY_LIMIT << 30:
                self.stop(f"> {MEMORY_LIMIT} GiB")
            time.sleep(0.02)

    def stop(self, failure):
        self.failure = failure
        self.process.kill()
        self.process.wait()


def measure(arguments):
    """[{contender, kind, count, failure, found}]"""
    results = []
    for kind in arguments.kinds:
        for program, title in CONTENDERS:
            path = os.path.join(arguments.programs, "compare_" + program)
            if program not in arguments.contenders or not os.path.exists(path):
                continue
            for variant in variants(path, kind):
                name = f"{title}, {variant}" if variant else title
                results += measure_sizes(arguments, name, [path, "--kind", kind, "--variant", variant], kind)
    return results


def measure_sizes(arguments, name, command, kind):
    results = []
    failed = None
    for count in arguments.sizes:
        if failed:
            results.append({"contender": name, "kind": kind, "count": count, "failure": "not tried", "found": {}})
            continue
        attempt = Attempt(command + ["--count", str(count)])
        failed = attempt.failure
        results.append({"contender": name, "kind": kind, "count": count, "failure": failed, "found": attempt.found})
        medians = {what: round(statistics.median(found), 1) for what, found in attempt.found.items()}
        print(f"{name}, {kind}, {count}: {medians} {failed or ''}", file=sys.stderr, flush=True)
    return results


class Results:
    def __init__(self, results):
        self.results = results
        self.by_key = {(one["contender"], one["kind"], one["count"]): one for one in results}

    def value(self, contender, kind, count, what, choose=statistics.median):
        """The median, or what `choose` takes; None if there is none."""
        found = self.by_key.get((contender, kind, count), {}).get("found", {}).get(what)
        return choose(found) if found else None

    def memory(self, contender, kind, count, what="memory"):
        """In multiples of the series, above the same contender with the shortest series; None if not measured."""
        least = min(one["count"] for one in self.results)
        empty = self.value(contender, kind, least, what)
        full = self.value(contender, kind, count, what)
        return None if empty is None or full is None else (full - empty) * 1024 / (8 * count)

    def failure(self, contender, kind, count):
        return self.by_key.get((contender, kind, count), {}).get("failure") or "not measured"

    def contenders(self, kind):
        return list(dict.fromkeys(one["contender"] for one in self.results if one["kind"] == kind))

    def kinds(self):
        return list(dict.fromkeys(one["kind"] for one in self.results))

    def sizes(self):
        return sorted({one["count"] for one in self.results})


def spaced(number):
    return f"{number:,}".replace(",", " ")


def milliseconds(value):
    if value >= 10_000:
        return f"{value / 1000:.0f} s"
    if value >= 1_000:
        return f"{value / 1000:.1f} s"
    return f"{value:.0f} ms" if value >= 10 else f"{value:.1f} ms"


def print_table(title, names, sizes, cell):
    print(f"\n**{title}**\n")
    print("| |", " | ".join(spaced(size) for size in sizes), "|")
    print("|---|" + "--:|" * len(sizes))
    for name in names:
        print(f"| {name} |", " | ".join(cell(name, size) for size in sizes), "|")


def print_tables(results):
    sizes = results.sizes()
    for kind in results.kinds():
        names = results.contenders(kind)
        print(f"\n### {kind.capitalize()}")
        for what, choose, title in MEASURES:
            def time_of(name, size, what=what, choose=choose, kind=kind):
                value = results.value(name, kind, size, what, choose)
                return results.failure(name, kind, size) if value is None else milliseconds(value)

            print_table(title, names, sizes, time_of)

        def memory_of(name, size, kind=kind):
            value = results.memory(name, kind, size)
            return results.failure(name, kind, size) if value is None else f"{value:.1f} ×"

        long = [size for size in sizes if size >= 1_000_000]
        if long:
            print_table(f"Peak memory in multiples of the series, above a chart of {spaced(sizes[0])} values",
                        names, long, memory_of)


def print_losses(results):
    print("\n### Where this module is not the fastest\n")
    lost = False
    for kind in results.kinds():
        for what in dict.fromkeys(what for what, _, _ in MEASURES):
            for size in results.sizes():
                ours = results.value(OURS, kind, size, what)
                others = [
                    (results.value(name, kind, size, what), name)
                    for name in results.contenders(kind)
                    if not name.startswith("VorlixPlugin")
                ]
                best = min((one for one in others if one[0] is not None), default=None)
                if ours is not None and best and best[0] < ours:
                    lost = True
                    print(f"- {kind}, {spaced(size)} values, {what}: {milliseconds(ours)} here, "
                          f"{milliseconds(best[0])} with {best[1]}")
    if not lost:
        print("Nowhere in this run.")


def ratio(above, below):
    return None if not above or not below else above / below


def goals(results):
    """(what, measured, allowed, whether at most); measured is None where the run has no figure."""
    longest = 10_000_000
    replaced = results.value(OURS, "bars", longest, "replace")
    yield ("replacing 10 million values: ratio to the hand-written pixel columns",
           ratio(replaced, results.value(COLUMNS, "bars", longest, "replace")), 1.3)
    yield ("replacing 10 million values: ratio to QCustomPlot's adaptive line",
           ratio(replaced, results.value("QCustomPlot, adaptive sampling", "line", longest, "replace")), 0.5)
    charts = results.value("Qt Charts", "bars", longest, "replace")
    if charts is None and ("Qt Charts", "bars", longest) in results.by_key:
        charts = 60_000.0  # it did not come that far within a minute
    yield "replacing 10 million values: ratio to the bars of Qt Charts, or to one minute", ratio(replaced, charts), 0.02
    steps = [results.value(OURS, "bars", size, "zoom step") for size in results.sizes() if size >= 10_000]
    if steps and None not in steps:
        yield "a zoom step, 10 000 to 10 million values: slowest to fastest", max(steps) / min(steps), 1.5
    few = results.value(ALONE, "bars", 10_000, "zoom step")
    for size in (1_000_000, longest):
        yield (f"a zoom step of the plotter alone, {spaced(size)} values: ratio to 10 000",
               ratio(results.value(ALONE, "bars", size, "zoom step"), few), 2.0)
    for size in (1_000_000, longest):
        for what in ("replace", "zoom step"):
            yield (f"{what}, {spaced(size)} bars of individual widths: ratio to bars of one width",
                   ratio(results.value(WIDE, "bars", size, what), results.value(ALONE, "bars", size, what)), 2.0)
            yield (f"{what}, {spaced(size)} points of an area with a border: ratio to one without",
                   ratio(results.value(BORDER, "area", size, what), results.value(ALONE, "area", size, what)), 2.0)
    yield "memory at 10 million values, in multiples of the series", results.memory(OURS, "bars", longest), 2.3
    for kind in ("bars", "line"):
        yield from goals_of_views(results, kind)


def goals_of_views(results, kind):
    steps = [results.value(VIEWS, kind, size, "zoom step") for size in results.sizes() if size >= 10_000]
    if steps and None not in steps:
        yield f"Views, {kind}, a zoom step, 10 000 values and more: slowest to fastest", max(steps) / min(steps), 1.2
    for size in (1_000_000, 10_000_000):
        step = results.value(VIEWS, kind, size, "zoom step")
        yield (f"Views, {kind}, a zoom step, {spaced(size)} values: ratio to the hand-written pixel columns",
               ratio(step, results.value(COLUMNS, kind, size, "zoom step")), 1.1)
        if kind == "line":
            adaptive = results.value("QCustomPlot, adaptive sampling", kind, size, "replace")
            yield (f"Views, replacing a line of {spaced(size)} values: ratio to QCustomPlot's adaptive one",
                   ratio(results.value(VIEWS, kind, size, "replace"), adaptive), 1.0)


def print_goals(results):
    print("\n### Goals\n")
    print("| goal | at most | measured | |")
    print("|---|--:|--:|---|")
    for what, measured, allowed in goals(results):
        if measured is not None:
            print(f"| {what} | {allowed} | {measured:.2g} | {'reached' if measured <= allowed else 'missed'} |")


def machine():
    with open("/proc/cpuinfo", encoding="utf-8", errors="replace") as file:
        lines = [line.split(":", 1) for line in file if ":" in line]
    models = [value.strip() for key, value in lines if key.strip() == "model name"]
    return f"{len(models)} × {models[0] if models else 'unknown processor'}"


def joined(paths):
    """The runs in these files as one, with what the first says of the date and the machine."""
    runs = []
    for path in paths:
        with open(path, encoding="utf-8") as file:
            runs.append(json.load(file))
    return dict(runs[0], results=[one for run in runs for one in run["results"]])


def parse():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--programs", default="build/benchmarks/compare", help="the folder of the contenders")
    parser.add_argument("--result", help="where the figures go, as JSON")
    parser.add_argument("--from", dest="earlier", nargs="+",
                        help="print the tables of earlier results, as one, and measure nothing")
    parser.add_argument("--quick", action="store_true", help="bars of 1000 and 100 000 values only")
    parser.add_argument("--kinds", nargs="+", choices=KINDS, default=list(KINDS))
    parser.add_argument("--sizes", nargs="+", type=int, default=list(SIZES))
    names = [program for program, _ in CONTENDERS]
    parser.add_argument("--contenders", nargs="+", choices=names, default=names)
    arguments = parser.parse_args()
    if arguments.quick:
        arguments.kinds, arguments.sizes = ["bars"], [1_000, 100_000]
    return arguments


def main():
    arguments = parse()
    if arguments.earlier:
        run = joined(arguments.earlier)
    else:
        run = {"date": time.strftime("%Y-%m-%d"), "machine": machine(), "load before": os.getloadavg()}
        run["results"] = measure(arguments)
        run["load after"] = os.getloadavg()
    if arguments.result:
        with open(arguments.result, "w", encoding="utf-8") as file:
            json.dump(run, file, indent=1)
    print(f"{run['date']}, {run['machine']}")
    results = Results(run["results"])
    print_tables(results)
    print_losses(results)
    print_goals(results)


if __name__ == "__main__":
    main()
