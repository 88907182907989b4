#!/usr/bin/env python3
"""Checks that no two paths differ in case alone: on most Macs they name one file.

    checks/paths.py [ROOT]

Prints each pair of paths and exits with 1 when there is one.
"""
import subprocess
import sys
from pathlib import Path, PurePosixPath


def collisions(paths):
    """Pairs of files or folders among the given paths whose names differ in case alone."""
    seen = {}
    for path in sorted(paths):
        for part in (PurePosixPath(path), *PurePosixPath(path).parents):
            first = seen.setdefault(str(part).casefold(), part)
            if first != part:
                yield f"{first} and {part}"
                break


def main():
    root = Path(sys.argv[1]) if len(sys.argv) > 1 else Path(__file__).resolve().parent.parent
    listed = ["git", "-C", root, "ls-files", "-z", "--cached", "--others", "--exclude-standard"]
    paths = subprocess.run(listed, stdout=subprocess.PIPE, check=True).stdout.decode().split("\0")
    found = list(collisions(filter(None, paths)))
    print("\n".join(f"{pair} differ in case alone" for pair in found) or "No two paths differ in case alone.")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
