#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""
Prints a Markdown table of the goals and of what several runs reached, one column each. Missed ones are marked.

A run of the comparison may lie in several files, with commas between their names.
"""

import argparse
import pathlib
import sys

import table

sys.path.insert(0, str(pathlib.Path(__file__).parent / "compare"))
import run as compare  # noqa: E402


def of_hot_paths(path):
    """{what: (measured, allowed, whether it holds)}"""
    found = table.medians(path, "real")
    reached = {}
    for row, limit, values, time, least in table.rows(found):
        goal = table.GOALS.get((row, values))
        if goal is not None:
            what = f"{row}, {compare.spaced(values)} values: ratio to {limit}"
            reached[what] = (time / least, f"≤ {goal}", time / least <= goal)
    for row, values, time, allowed in table.frame_rows(found):
        if allowed is not None:
            what = f"{row}, {compare.spaced(values)} values: milliseconds"
            reached[what] = (time / 1e6, f"≤ {allowed:g}", time <= allowed * 1e6)
    gain = table.reading_gain(found)
    if gain is not None:
        reached["reading 10 million lines: times as fast as readLine and toDouble"] = (
            gain, f"≥ {table.READING_GAIN:.0f}", gain >= table.READING_GAIN)
    return reached


def of_comparison(paths):
    """{what: (measured, allowed, whether it holds)}"""
    results = compare.Results(compare.joined(paths.split(","))["results"])
    return {what: (measured, f"≤ {allowed}", measured <= allowed)
            for what, measured, allowed in compare.goals(results) if measured is not None}


def print_goals(runs):
    print("| goal | |", " | ".join(f"run {number + 1}" for number in range(len(runs))), "|")
    print("|---|--:|" + "--:|" * len(runs))
    for what in dict.fromkeys(what for run in runs for what in run):
        cells = [run.get(what) for run in runs]
        allowed = next(cell[1] for cell in cells if cell)
        print(f"| {what} | {allowed} |",
              " | ".join("" if not cell else f"{cell[0]:.2g}{'' if cell[2] else ', missed'}" for cell in cells), "|")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--bench", nargs="*", default=[], help="what scripts/bench wrote, a file for each run")
    parser.add_argument("--compare", nargs="*", default=[], help="what scripts/compare wrote, files for each run")
    arguments = parser.parse_args()
    for runs in ([of_hot_paths(path) for path in arguments.bench], [of_comparison(path) for path in arguments.compare]):
        if runs:
            print_goals(runs)
            print()


if __name__ == "__main__":
    main()
