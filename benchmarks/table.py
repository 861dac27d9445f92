#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""
Usage: table.py RESULT.json [--clock real|cpu]

Prints the medians of a run of vorlix_benchmarks as a Markdown table: each work beside its limit, with their ratio.
Where a goal is set, the ratio is marked when it is missed.
"""

import argparse
import collections
import json
import statistics

# (row, values): the ratio to the limit that is wanted.
GOALS = {
    ("reading of SCSVReader", 10_000_000): 1.3,
    ("pyramid of DecimatorU64", 10_000_000): 2.5,
    ("reduction of FixedDecimatorU64", 10_000_000): 1.3,
    ("unchanged series, set again", 10_000_000): 1.3,
    ("vertices of BarPlotter", 1_000_000): 2.0,
    ("average of MovingAvarangeU64", 10_000_000): 1.2,
    ("append to a stored series", 10_000_000): 1.2,
    ("hover over BarPlotterDx", 1_000_000): 2.0,
    ("hover over BarPlotterDx", 10_000_000): 2.0,
}
# (row, values): the milliseconds that are allowed to what has no limit but the length of a frame.
FRAME_GOALS = {
    ("2000 columns of a stored series", 100_000_000): 1.0,
    ("slowest 2000 columns of a stored series", 100_000_000): 2.0,
    ("statistics of a stored series", 1_000_000_000): 5.0,
}
# How much faster reading ten million lines is wanted to be than the way that one writes first.
READING = "reading of SCSVReader"
READING_LINES = "readLine and QString::toDouble"
READING_GAIN = 12.0


def medians(path, clock):
    """{(row, limit or '', values): nanoseconds}"""
    times = collections.defaultdict(list)
    with open(path, encoding="utf-8") as file:
        run = json.load(file)
    scale = {"ns": 1.0, "us": 1e3, "ms": 1e6, "s": 1e9}
    for one in run["benchmarks"]:
        if one.get("run_type") == "aggregate" or one.get("error_occurred"):
            continue
        name, values = one["run_name"].split("/")[:2]
        row, _, limit = name.partition("|")
        times[row, limit, int(values)].append(one[f"{clock}_time"] * scale[one["time_unit"]])
    return {key: statistics.median(found) for key, found in times.items()}


def human(nanoseconds):
    for unit, size in (("s", 1e9), ("ms", 1e6), ("µs", 1e3)):
        if nanoseconds >= size:
            return f"{nanoseconds / size:.3g} {unit}"
    return f"{nanoseconds:.3g} ns"


def rows(found):
    names = dict.fromkeys((row, limit) for row, limit, _ in found if limit)
    for row, limit in names:
        for values in sorted({values for name, _, values in found if name == row}):
            if (row, "", values) in found and (row, limit, values) in found:
                yield row, limit, values, found[row, "", values], found[row, limit, values]


def verdict(row, values, ratio):
    goal = GOALS.get((row, values))
    if goal is None:
        return ""
    return f"≤ {goal}" if ratio <= goal else f"≤ {goal}, missed"


def frame_rows(found):
    """Rows that have no limit but the length of a frame: (row, values, nanoseconds, the milliseconds allowed or None)"""
    names = {row for row, _ in FRAME_GOALS}
    for row, limit, values in sorted(found):
        if row in names and not limit:
            yield row, values, found[row, limit, values], FRAME_GOALS.get((row, values))


def reading_gain(found):
    """How many times as fast as line by line ten million lines are read; None if that was not measured."""
    ours, lines = (found.get((row, "", 10_000_000)) for row in (READING, READING_LINES))
    return lines / ours if ours and lines else None


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("result")
    parser.add_argument("--clock", choices=("real", "cpu"), default="real")
    arguments = parser.parse_args()
    print("| work | values | time | limit | its time | ratio | goal |")
    print("|---|--:|--:|---|--:|--:|---|")
    found = medians(arguments.result, arguments.clock)
    for row, limit, values, time, least in rows(found):
        ratio = time / least
        cells = (row, f"{values:,}".replace(",", " "), human(time), limit, human(least), f"{ratio:.2f}")
        print("|", " | ".join(cells), "|", verdict(row, values, ratio), "|")
    for row, values, time, allowed in frame_rows(found):
        goal = "" if allowed is None else f"≤ {allowed:g} ms{'' if time <= allowed * 1e6 else ', missed'}"
        print("|", row, "|", f"{values:,}".replace(",", " "), "|", human(time), "| | | |", goal, "|")
    gain = reading_gain(found)
    if gain is not None:
        print(f"\nReading ten million lines is {gain:.1f} times as fast as {READING_LINES} "
              f"(goal: {READING_GAIN:.0f}{'' if gain >= READING_GAIN else ', missed'}).")


if __name__ == "__main__":
    main()
