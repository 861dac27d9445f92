#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""
Starts the viewer with a spectrum and an empty window by turns, and prints what each takes to its first picture: medians, and
their ratio. The first round isn't counted: it brings the files into memory.
"""

import argparse
import os
import statistics
import subprocess
import sys
import time
from pathlib import Path

GOAL = 2.0


def milliseconds_to_picture(command, environment):
    """(wall clock, processor time)"""
    begin = time.clock_gettime_ns(time.CLOCK_MONOTONIC)
    done = subprocess.run(command, env=environment, capture_output=True, text=True, timeout=60, check=False)
    words = done.stdout.split()
    if done.returncode != 0 or len(words) != 2:
        sys.exit(f"{command[0]} came to no picture: {done.stdout}{done.stderr}")
    return (int(words[0]) - begin) / 1e6, int(words[1]) / 1e6


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--build", type=Path, required=True, help="tree with the viewer and the benchmarks")
    parser.add_argument("--spectrum", type=Path, required=True, help="file that the viewer opens")
    parser.add_argument("--rounds", type=int, default=15, help="how often each is started (15)")
    arguments = parser.parse_args()
    start = arguments.build / "benchmarks/start"
    environment = os.environ | {
        "QT_PLUGIN_PATH": str(start / "plugins"),
        "QT_QPA_GENERIC_PLUGINS": "vorlixfirstpicture",
        "QML2_IMPORT_PATH": str(arguments.build / "qml"),
    }
    commands = {
        "empty window": [str(start / "vorlix_empty_window")],
        "viewer": [str(arguments.build / "viewer/vorlixview"), "--no-settings", str(arguments.spectrum)],
    }
    taken = {name: [] for name in commands}
    for _ in range(arguments.rounds + 1):
        for name, command in commands.items():
            taken[name].append(milliseconds_to_picture(command, environment))
    medians = {name: [statistics.median(column) for column in zip(*rounds[1:])] for name, rounds in taken.items()}
    print("| | wall clock, ms | processor time, ms |\n|---|--:|--:|")
    for name, (wall, processor) in medians.items():
        print(f"| {name} | {wall:.0f} | {processor:.0f} |")
    ratios = [viewer / empty for viewer, empty in zip(medians["viewer"], medians["empty window"])]
    print(f"| ratio, at most {GOAL:.1f} wanted | {ratios[0]:.2f} | {ratios[1]:.2f} |")


main()
