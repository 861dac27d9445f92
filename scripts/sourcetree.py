# SPDX-License-Identifier: MIT
"""What the checks of the tree share: which files are ours, and how a check tells what it found."""

import os
import sys
import tempfile
from pathlib import Path

SKIPPED_FOLDERS = (".git", ".cache", ".vscode", ".idea", "__pycache__")


def tree_root():
    return Path(__file__).resolve().parent.parent


def files_of(root, wanted):
    """Paths relative to root, in a fixed order, of the files for which wanted(path) holds; no build folders."""
    found = []
    for folder, subfolders, names in os.walk(root):
        at_top = Path(folder) == Path(root)
        subfolders[:] = sorted(
            name for name in subfolders if name not in SKIPPED_FOLDERS and not (at_top and name.startswith("build"))
        )
        for name in sorted(names):
            path = (Path(folder) / name).relative_to(root)
            if wanted(path):
                found.append(path)
    return found


def plant(files):
    """A temporary folder holding files, a mapping from relative path to text or bytes."""
    folder = tempfile.TemporaryDirectory(prefix="vorlix-check-")
    for name, content in files.items():
        path = Path(folder.name) / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content if isinstance(content, bytes) else content.encode())
    return folder


def self_test(check, cases):
    """Runs check(root) on made-up trees. A case is (title, files, the beginnings of the violations expected)."""
    failures = 0
    for title, files, expected in cases:
        with plant(files) as folder:
            found = check(Path(folder))
        fits = len(found) == len(expected) and all(line.startswith(start) for line, start in zip(found, expected))
        print(("ok    " if fits else "FAIL  ") + title)
        if not fits:
            failures += 1
            print(f"      expected {expected}\n      found    {found}")
    return failures


def main(check, cases, usage):
    """Without arguments checks the tree of this script; with a folder, that one; with --self-test, the check itself."""
    arguments = sys.argv[1:]
    if arguments == ["--self-test"]:
        sys.exit(1 if self_test(check, cases) else 0)
    if len(arguments) > 1 or any(argument.startswith("-") for argument in arguments):
        print(usage.strip())
        sys.exit(0 if arguments in (["-h"], ["--help"]) else 2)
    violations = check(Path(arguments[0]) if arguments else tree_root())
    for line in violations:
        print(line)
    sys.exit(1 if violations else 0)
