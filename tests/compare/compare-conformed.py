#!/usr/bin/env python3
"""Compares what Ozmira draws of conformed files with what resvg, or Chromium, draws of the originals. Used by hand.

    tests/compare/compare-conformed.py build/release/tools/ozmira/ozmira
    tests/compare/compare-conformed.py OZMIRA --width 512 --set tabler --list build/tabler.tsv
    tests/compare/compare-conformed.py OZMIRA --browser --sample 500
    tests/compare/compare-conformed.py OZMIRA --sample 50 --page build/page.png FILE-OR-FOLDER...

Without files, it compares the icon sets that bench/fetch-icons.sh fetches, whole. It prints a table with a row for
each set, or for each folder that is named and for all files together:

    files, refused   a refusal is printed with its message
    alike            files of which Ozmira draws the conformed one as the other program draws the original
    again            files that change when they are conformed again, or in which `ozmira check` then finds something
    missing          files of which one of the two programs draws nothing
    silent           files without a warning, and how many of them are unlike, which edges alone explain
    warned           files with a warning, and how many of them Ozmira draws the same before and after
    size             the median of the bytes written by the bytes read; how many files more than double; and how many of
                     those have neither markers nor patterns, dashes or strokes turned into outlines

Two pictures are alike when the mean absolute difference of their premultiplied components is at most --limit, in
255ths, and the same when it is at most a tenth of 1/255. A picture has the width nearest to --width at which its height
is a whole number of pixels, too. --list writes a line for each file, --keep a picture of each that is not alike, and
--page one picture of all: the other program's, Ozmira's, and the difference. Exit status: 0 when the share of --require
of all files is alike and "missing" and "again" are 0; 1 otherwise. Needs Python 3 with numpy and PIL, node, and what
bench/fetch-icons.sh fetches, or Chromium; `./dev compare` sees to all of it.
"""
import argparse
import collections
import concurrent.futures
import dataclasses
import json
import os
import statistics
import subprocess
import sys
import tempfile
from pathlib import Path
from xml.etree import ElementTree

from PIL import Image

from drawings import find_files, known_sets, whole_width
from pictures import difference, draw_with_chromium, draw_with_ozmira, draw_with_resvg, side_by_side

BATCH = 128
SAME = 0.1
# What these stand for takes a shape for each mark, tile, dash or part of an outline.
GROWING_RULES = {"dashes", "gradient-stroke", "marker", "pattern"}


@dataclasses.dataclass
class Outcome:
    """What became of a file. Distances are in 255ths; None stands for a picture that is missing."""
    source: str
    refusal: str = ""
    width: int = 0
    distance: float | None = None
    effect: float | None = None
    warnings: frozenset = frozenset()
    bytes_read: int = 0
    bytes_written: int = 0
    changes_again: bool = False
    rules_again: frozenset = frozenset()
    image: Image.Image | None = None

    def is_alike(self, limit):
        return self.distance is not None and self.distance <= limit


def parse_arguments():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("ozmira", help="path of the tool")
    parser.add_argument("inputs", nargs="*", metavar="FILE-OR-FOLDER", help="instead of the icon sets")
    parser.add_argument("--set", action="append", choices=sorted(known_sets()), help="only this set; may be repeated")
    parser.add_argument("--width", type=int, default=64, help="width of the pictures in pixels (default 64)")
    parser.add_argument("--sample", type=int, help="number of files to take of all, evenly spread (default all)")
    parser.add_argument("--browser", action="store_true", help="compare with Chromium instead of resvg")
    parser.add_argument("--limit", type=float, default=1.0, help="limit of the mean difference in 255ths (default 1)")
    parser.add_argument("--require", type=float, default=94, metavar="PERCENT", help="share to be alike (default 94)")
    parser.add_argument("--list", type=Path, metavar="FILE", help="a line for each file, with tabs")
    parser.add_argument("--keep", type=Path, metavar="FOLDER", help="pictures of the files that are not alike")
    parser.add_argument("--page", type=Path, metavar="FILE", help="one picture of all files, which should be few")
    parser.add_argument("-j", "--jobs", type=int, default=os.cpu_count())
    return parser.parse_args()


def run(tool, *options):
    return subprocess.run([tool, *map(str, options)], capture_output=True, text=True, errors="replace", check=False)


def rules_found(tool, folder):
    """The rules of all errors and warnings of the files in a folder, by the names of the files."""
    reports = json.loads(run(tool, "check", "--json", folder).stdout or "[]")
    return {Path(report["file"]).stem: frozenset(finding["rule"] for finding in report["findings"]
                                                 if finding["severity"] != "note") for report in reports}


def size_to_draw(file, wanted):
    """Width and height in pixels for a conformed file."""
    root = next(ElementTree.iterparse(file, events=("start",)))[1]
    width, height = (float(number) for number in root.get("viewBox", "0 0 0 0").split()[2:])
    if root.get("width"):
        width, height = (float(root.get(name).removesuffix("px")) for name in ("width", "height"))
    found = whole_width(width, height, wanted) or wanted
    return found, round(found * height / width)


def conform(options, outcomes, folder):
    """Conforms the files of the outcomes, which are named by number. Returns the files written."""
    originals, conformed, again = (folder / name for name in ("originals", "conformed", "again"))
    for part in (originals, conformed, again):
        part.mkdir()
    for name, outcome in outcomes.items():
        text = Path(outcome.source).read_bytes()
        outcome.bytes_read = len(text)
        (originals / f"{name}.svg").write_bytes(text)
    messages = run(options.ozmira, "conform", originals, "-o", f"{conformed}/", "--quiet").stderr.splitlines()
    run(options.ozmira, "conform", conformed, "-o", f"{again}/", "--quiet")
    found, found_again = rules_found(options.ozmira, originals), rules_found(options.ozmira, conformed)
    written = {}
    for name, outcome in outcomes.items():
        outcome.warnings = found.get(name, frozenset())
        file = conformed / f"{name}.svg"
        if not file.exists():
            place = str(originals / f"{name}.svg")
            outcome.refusal = next((line.replace(place, outcome.source) for line in messages if place in line),
                                   f"{outcome.source}: REFUSED WITHOUT A MESSAGE")
            continue
        written[name] = file
        text = file.read_bytes()
        outcome.bytes_written = len(text)
        outcome.changes_again = text != (again / f"{name}.svg").read_bytes()
        outcome.rules_again = found_again.get(name, frozenset())
    return written


def compare_batch(options, sources):
    outcomes = {f"{i:03}": Outcome(source) for i, source in enumerate(sources)}
    with tempfile.TemporaryDirectory() as folder:
        folder = Path(folder)
        written = conform(options, outcomes, folder)
        if not written:
            return list(outcomes.values())
        sizes = {name: size_to_draw(file, options.width) for name, file in written.items()}
        originals = {name: folder / "originals" / f"{name}.svg" for name in written}
        draw_expected = draw_with_chromium if options.browser else draw_with_resvg
        for name in ("expected", "got", "before"):
            (folder / name).mkdir()
        expected = draw_expected(originals, sizes, folder / "expected")
        got = draw_with_ozmira(options.ozmira, written, sizes, folder / "got")
        rewritten = {name: originals[name] for name in written if outcomes[name].warnings}
        before = draw_with_ozmira(options.ozmira, rewritten, sizes, folder / "before")
    for name in written:
        outcome = outcomes[name]
        outcome.width = sizes[name][0]
        if name in expected and name in got:
            outcome.distance = difference(expected[name], got[name])
            if options.page or options.keep and not outcome.is_alike(options.limit):
                label = f"{outcome.distance:.2f} {'/'.join(Path(outcome.source).parts[-3:])}"
                outcome.image = side_by_side(expected[name], got[name], label)
        if name in got and name in rewritten:
            outcome.effect = difference(before[name], got[name]) if name in before else 255.0
    return list(outcomes.values())


def summarise(label, outcomes, limit):
    """A row of the table, the share that is alike, and whether the rest is as it should be."""
    written = [outcome for outcome in outcomes if not outcome.refusal]
    compared = [outcome for outcome in written if outcome.distance is not None]
    alike = sum(outcome.is_alike(limit) for outcome in compared)
    again = sum(outcome.changes_again or bool(outcome.rules_again) for outcome in written)
    silent = [outcome for outcome in compared if not outcome.warnings]
    silent_unlike = sum(not outcome.is_alike(limit) for outcome in silent)
    warned = [outcome for outcome in written if outcome.warnings and outcome.effect is not None]
    unseen = sum(outcome.effect <= SAME for outcome in warned)
    growths = [outcome.bytes_written / max(1, outcome.bytes_read) for outcome in written]
    doubled = [outcome for outcome, growth in zip(written, growths) if growth > 2]
    undue = sum(not outcome.warnings & GROWING_RULES for outcome in doubled)
    share = 100 * alike / max(1, len(compared))
    missing = len(written) - len(compared)
    row = (f"{label:16} {len(outcomes):6} {len(outcomes) - len(written):7} {missing:7} {share:8.2f} {again:5} "
           f"{len(silent):6} {silent_unlike:6} {len(warned):6} {unseen:6} "
           f"{statistics.median(growths) if growths else 0:6.3f} {len(doubled):6} {undue:5}")
    return row, share, not again and not missing


def write_list(file, outcomes):
    with open(file, "w") as out:
        print("file", "refused", "width", "distance", "effect", "read", "written", "again", "warnings", sep="\t",
              file=out)
        for outcome in outcomes:
            again = ",".join(sorted(outcome.rules_again)) or ("changed" if outcome.changes_again else "")
            numbers = ("" if number is None else f"{number:.3f}" for number in (outcome.distance, outcome.effect))
            print(outcome.source, int(bool(outcome.refusal)), outcome.width, *numbers, outcome.bytes_read,
                  outcome.bytes_written, again, ",".join(sorted(outcome.warnings)), sep="\t", file=out)


def write_page(file, images):
    """Stacks the images in columns."""
    columns = max(1, round((len(images) / 4) ** 0.5))
    per_column = -(-len(images) // columns)
    width, height = (max(image.size[side] for image in images) + 8 for side in (0, 1))
    page = Image.new("RGB", (columns * width, per_column * height), "white")
    for i, image in enumerate(images):
        page.paste(image, (i // per_column * width, i % per_column * height))
    page.save(file)


def gather(options):
    """The files to compare, by the label of their row."""
    if options.inputs and not options.set:
        inputs = [(name if os.path.isdir(name) else "files", name) for name in options.inputs]
    else:
        sets = known_sets()
        inputs = [(name, sets[name]) for name in options.set or sorted(sets)]
    labels = {}
    for label, name in inputs:
        files = find_files([name])
        if not files:
            sys.exit(f"{name} has no drawings; bench/fetch-icons.sh fetches the icon sets")
        labels.update((file, label[-16:]) for file in files)
    taken = find_files(labels, options.sample)
    rows = collections.defaultdict(list)
    for file in taken:
        rows[labels[file]].append(file)
    return rows


def main():
    options = parse_arguments()
    rows = gather(options)
    files = [file for group in rows.values() for file in group]
    batches = [files[first:first + BATCH] for first in range(0, len(files), BATCH)]
    outcomes = {}
    with concurrent.futures.ProcessPoolExecutor(options.jobs) as pool:
        for batch in pool.map(compare_batch, [options] * len(batches), batches):
            outcomes.update((outcome.source, outcome) for outcome in batch)
            for outcome in batch:
                if outcome.refusal:
                    print(outcome.refusal)
            if sys.stderr.isatty():
                print(f"\r{len(outcomes)} of {len(files)} files", end="", file=sys.stderr)

    print(f"{'':16} {'files':>6} {'refused':>7} {'missing':>7} {'alike, %':>8} {'again':>5} {'silent':>6} "
          f"{'unlike':>6} {'warned':>6} {'unseen':>6} {'size':>6} {'double':>6} {'undue':>5}")
    for label, group in rows.items():
        print(summarise(label, [outcomes[file] for file in group], options.limit)[0])
    row, share, is_clean = summarise("all", list(outcomes.values()), options.limit)
    print(row)
    if options.list:
        write_list(options.list, outcomes.values())
    images = [(outcome, outcome.image) for outcome in outcomes.values() if outcome.image]
    if options.keep:
        options.keep.mkdir(parents=True, exist_ok=True)
        for i, (outcome, image) in enumerate(images):
            if not outcome.is_alike(options.limit):
                image.save(options.keep / f"{Path(outcome.source).stem}-{i:04}.png")
    if options.page and images:
        write_page(options.page, [image for _, image in images])
    return 0 if is_clean and share >= options.require else 1


if __name__ == "__main__":
    sys.exit(main())
