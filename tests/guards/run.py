#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""
Usage: run.py VALGRIND PROGRAM CEILINGS [--print]

Counts the instructions of the hot functions and compares them with their ceilings: a function that got slower by more
than its room fails, on any machine and under any load. --print writes new ceilings, a tenth above what was counted.
A function without a ceiling fails, and so does a ceiling without a function.
"""

import argparse
import os
import pathlib
import subprocess
import sys
import tempfile

ROOM = 1.10


def counted(valgrind, program):
    """{function: instructions}"""
    with tempfile.TemporaryDirectory() as folder:
        out = pathlib.Path(folder, "out")
        command = [valgrind, "--tool=callgrind", "--collect-atstart=no", f"--callgrind-out-file={out}", program]
        environment = dict(os.environ, LD_BIND_NOW="1")  # or the first call of a library's function costs more
        run = subprocess.run(command, capture_output=True, text=True, env=environment)
        if run.returncode != 0:
            sys.exit(f"{' '.join(command)} ended with {run.returncode}:\n{run.stderr}")
        counts = {}
        for dump in sorted(pathlib.Path(folder).glob("out.*"), key=lambda path: int(path.suffix[1:])):
            name = None
            for line in dump.read_text().splitlines():
                if line.startswith("desc: Trigger: Client Request: "):
                    name = line.rsplit(": ", 1)[1]
                elif line.startswith("summary: ") and name:
                    counts[name] = int(line.split()[1])
        return counts


def ceilings(path):
    lines = [line.split("#")[0].split() for line in pathlib.Path(path).read_text().splitlines()]
    return {line[0]: int(line[1]) for line in lines if line}


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("valgrind")
    parser.add_argument("program")
    parser.add_argument("ceilings")
    parser.add_argument("--print", action="store_true", dest="show")
    arguments = parser.parse_args()
    counts = counted(arguments.valgrind, arguments.program)
    if arguments.show:
        for name, count in counts.items():
            print(f"{name:32}{int(count * ROOM):>12}")
        return
    allowed = ceilings(arguments.ceilings)
    failed = sorted(set(counts) ^ set(allowed))
    for name in failed:
        print(f"{name}: " + ("no ceiling" if name in counts else "not counted"))
    for name in counts.keys() & allowed.keys():
        verdict = "" if counts[name] <= allowed[name] else "   TOO MANY"
        print(f"{name:32}{counts[name]:>12} of at most{allowed[name]:>12}{verdict}")
        if verdict:
            failed.append(name)
    if failed:
        sys.exit(1)


if __name__ == "__main__":
    main()
