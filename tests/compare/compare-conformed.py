#!/usr/bin/env python3
"""Compares what Ozmira draws of conformed files with what resvg draws of the originals. Used by hand.

    tests/compare/compare-conformed.py build/release/tools/ozmira/ozmira build/icons/node_modules/openmoji/color/svg
    tests/compare/compare-conformed.py OZMIRA --width 512 --every 10 --keep build/unequal FILE-OR-FOLDER...

Two pictures agree when the mean absolute difference of their premultiplied components is at most --limit, in 255ths.
What is written must have no finding of `ozmira check`, and conforming it again must change nothing. --keep writes a
picture of each disagreement: resvg's, Ozmira's, and the difference. Exit status: 0 when 94 % agree and the written
files are clean; 1 otherwise. Needs Python 3 with numpy and PIL, node, and resvg-js (bench/fetch-icons.sh).
"""
import argparse
import subprocess
import sys
import tempfile
from pathlib import Path

import numpy
from PIL import Image


def arguments():
    parser = argparse.ArgumentParser(description="Compares conformed drawings with resvg's pictures.")
    parser.add_argument("ozmira")
    parser.add_argument("inputs", nargs="+", type=Path)
    parser.add_argument("--width", type=int, default=64)
    parser.add_argument("--every", type=int, default=1, help="take one file of so many")
    parser.add_argument("--limit", type=float, default=1)
    parser.add_argument("--keep", type=Path)
    return parser.parse_args()


def premultiplied(image):
    pixels = numpy.asarray(image.convert("RGBA")).astype(numpy.float32).copy()
    pixels[..., :3] *= pixels[..., 3:] / 255
    return pixels


def difference(expected, got):
    a, b = premultiplied(expected), premultiplied(got)
    height = min(a.shape[0], b.shape[0])
    # Ozmira rounds the height up, resvg to the nearest whole number.
    if a.shape[1] != b.shape[1] or abs(a.shape[0] - b.shape[0]) > 1:
        return 255.0
    return float(numpy.abs(a[:height] - b[:height]).mean())


def keep(folder, name, expected, got):
    a, b = (Image.fromarray(premultiplied(image).astype(numpy.uint8)) for image in (expected, got))
    width, height = a.size
    sheet = Image.new("RGB", (3 * width, height), "white")
    sheet.paste(expected.convert("RGBA"), (0, 0), expected.convert("RGBA"))
    sheet.paste(got.convert("RGBA"), (width, 0), got.convert("RGBA"))
    delta = numpy.abs(numpy.asarray(a).astype(int) - numpy.asarray(b.crop((0, 0, width, height))).astype(int))
    sheet.paste(Image.fromarray(delta.astype(numpy.uint8)[..., :3]), (2 * width, 0))
    folder.mkdir(parents=True, exist_ok=True)
    sheet.save(folder / (name + ".png"))


def run(tool, *options):
    return subprocess.run([tool, *map(str, options)], capture_output=True, text=True, errors="replace")


def main():
    options = arguments()
    sources = sorted(file for item in options.inputs
                     for file in (item.rglob("*.svg") if item.is_dir() else [item]))[::options.every]
    with tempfile.TemporaryDirectory() as work:
        work = Path(work)
        folders = {name: work / name for name in ("originals", "conformed", "again", "expected", "got")}
        for folder in folders.values():
            folder.mkdir()
        names = {f"{i:06}": source for i, source in enumerate(sources)}
        for name, source in names.items():
            (folders["originals"] / f"{name}.svg").write_bytes(source.read_bytes())
        refusals = run(options.ozmira, "conform", folders["originals"], "-o", f"{folders['conformed']}/", "--quiet")
        for line in refusals.stderr.splitlines():
            print(line)
        isClean = run(options.ozmira, "check", folders["conformed"]).returncode == 0
        run(options.ozmira, "conform", folders["conformed"], "-o", f"{folders['again']}/", "--quiet")
        written = sorted(file.stem for file in folders["conformed"].glob("*.svg"))
        changed = [name for name in written if (folders["conformed"] / f"{name}.svg").read_bytes()
                   != (folders["again"] / f"{name}.svg").read_bytes()]
        run(options.ozmira, "render", folders["conformed"], "-o", f"{folders['got']}/", "--width", options.width)
        (work / "list").write_text("".join(f"{names[name]}\t{folders['expected'] / name}.png\n" for name in written))
        node = subprocess.run(["node", Path(__file__).with_name("resvg-pictures.mjs"), work / "list",
                               str(options.width)], capture_output=True, text=True, check=False)
        print(node.stdout, end="")
        agreeing = compared = 0
        for name in written:
            expected = folders["expected"] / f"{name}.png"
            if not expected.exists():
                continue
            compared += 1
            got = folders["got"] / f"{name}.png"
            if not got.exists():
                print(f"{names[name]}: not drawn")
                continue
            pictures = Image.open(expected), Image.open(got)
            distance = difference(*pictures)
            if distance <= options.limit:
                agreeing += 1
                continue
            print(f"{names[name]}: differs by {distance:.2f}")
            if options.keep:
                keep(options.keep, f"{names[name].stem}-{name}", *pictures)
        print(f"{len(sources)} files, {len(sources) - len(written)} refused, {compared} compared, "
              f"{agreeing} agree ({100 * agreeing / max(1, compared):.2f} %), {len(changed)} change again, "
              f"{'no' if isClean else 'some'} findings in what is written")
        return 0 if isClean and not changed and agreeing >= 0.94 * compared else 1


if __name__ == "__main__":
    sys.exit(main())
