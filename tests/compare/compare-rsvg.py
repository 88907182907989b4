#!/usr/bin/env python3
"""Compares the pictures of `ozmira render` with those of librsvg's `rsvg-convert`. Used by hand.

    tests/compare/compare-rsvg.py build/release/tools/ozmira/ozmira build/icons/node_modules/openmoji/color/svg
    tests/compare/compare-rsvg.py OZMIRA --sample 4000 --keep build/unequal FILE-OR-FOLDER...

Only drawings that should look the same are compared. A file that uses something that Ozmira leaves out, or draws
differently on purpose (docs/differences.md), is counted under that reason instead; --all-ways compares the
second kind as well. Two pictures agree if the mean absolute difference of their premultiplied components is below
--limit, in 255ths. A picture is drawn at the width nearest to --width for which its height is also a whole number
of pixels, because Ozmira centres a drawing in a height that it rounds up, and librsvg does not. For each
disagreement, --keep writes an enlarged picture of Ozmira's result, librsvg's, and the difference. Exit status: 0
if 99 % agree and Ozmira drew every file, 1 otherwise. Needs Python 3 and rsvg-convert.
"""
import argparse
import collections
import concurrent.futures
import os
import re
import struct
import subprocess
import sys
import xml.etree.ElementTree as ElementTree
import zlib

SVG = "{http://www.w3.org/2000/svg}"
XLINK_HREF = "{http://www.w3.org/1999/xlink}href"
ROOT_ATTRIBUTES = {"width", "height", "viewBox", "id", "version", "baseProfile", "role", "class", "x", "y"}
SHAPES = {"path", "rect", "circle", "ellipse", "line", "polyline", "polygon", "use"}
GRADIENTS = {"linearGradient", "radialGradient"}
CONTAINERS = {"g", "a", "defs", "clipPath"}
SILENT = {"title", "desc", "metadata"}
LEFT_OUT_ATTRIBUTES = {"mask", "filter", "stroke-dasharray", "vector-effect", "paint-order", "marker-start",
                       "marker-mid", "marker-end", "mix-blend-mode", "transform-origin"}
NUMBER = r"[-+]?(?:\d+\.?\d*|\.\d+)(?:[eE][-+]?\d+)?"
PLAIN = r"-?(?:\d+\.?\d*|\.\d+)"
TRANSFORM_ITEM = rf"(?:matrix|translate|scale|rotate|skewX|skewY)\(\s*{PLAIN}(?:\s*,?\s*{PLAIN})*\s*\)"
COLOR = rf"#[0-9a-fA-F]{{6}}|#[0-9a-fA-F]{{3}}|[a-z]+|currentColor|url\(#.*\)|rgb\([\d.%,\s]+\)"


class Unsuitable(Exception):
    """A file is not compared. Arguments: the reason; whether Ozmira draws it, but differently on purpose."""


def left_out(what):
    raise Unsuitable(what, False)


def own_way(what):
    raise Unsuitable(what, True)


def declarations(element):
    """Presentation attributes, overridden by the declarations of the style attribute."""
    found = dict(element.attrib)
    for declaration in found.pop("style", "").split(";"):
        name, colon, value = declaration.partition(":")
        if colon:
            found[name.strip()] = value.strip()
    return found


def check_root(root):
    if root.tag != SVG + "svg":
        left_out("no svg element in its namespace")
    for name, value in root.attrib.items():
        if name in ROOT_ATTRIBUTES or name.startswith(("data-", "aria-", "{")) or (name, value) in (
                ("fill", "currentColor"), ("preserveAspectRatio", "xMidYMid meet")):
            continue
        left_out("style on the root")
    box = root.get("viewBox")
    sizes = [root.get(name) for name in ("width", "height")]
    if box and not re.fullmatch(rf"\s*{PLAIN}(\s+{PLAIN}){{3}}\s*", box):
        own_way("view box with commas")
    if (sizes[0] is None) != (sizes[1] is None):
        own_way("width without height")
    if sizes[0] is None:
        return
    if not all(re.fullmatch(rf"{PLAIN}(px)?", size) for size in sizes):
        own_way("size with a unit")
    width, height = (float(size.removesuffix("px")) for size in sizes)
    if box and abs(float(box.split()[2]) * height - float(box.split()[3]) * width) > 1e-6 * width * height:
        own_way("view box of other proportions")


def check_path(data):
    if re.search("[AaQqTt]", data):
        left_out("arc or quadratic curve")
    if re.search(r"[zZ][\s,]*[a-y]", data):
        own_way("relative command after z")


def check_paint(name, style):
    fill, stroke = (style.get(key, "inherit") for key in ("fill", "stroke"))
    if stroke == "currentColor":
        left_out("currentColor")
    if stroke.startswith("url("):
        left_out("gradient for a stroke")
    if fill.startswith("url(") and (name not in SHAPES or stroke not in ("inherit", "none")):
        own_way("gradient on a group or with a stroke")
    if not all(re.fullmatch(COLOR, value) for value in (fill, stroke)):
        left_out("colour syntax")
    if float(style.get("opacity", 1)) != 1 and (name not in SHAPES - {"use"} or "stroke" in style):
        own_way("opacity of a group")


def check_gradient(name, element):
    if element.get(XLINK_HREF) or element.get("href"):
        left_out("gradient that refers to another")
    needed = ("x2",) if name == "linearGradient" else ("cx", "cy", "r")
    if not all(key in element.attrib for key in needed):
        own_way("gradient without coordinates")
    if element.get("spreadMethod", "pad") != "pad":
        left_out("spreadMethod")
    if element.get("gradientUnits") != "userSpaceOnUse":
        own_way("gradient in fractions of the box")


def check_element(element, fill_is_black):
    if not isinstance(element.tag, str) or not element.tag.startswith(SVG):
        return
    name = element.tag.removeprefix(SVG)
    if name in SILENT:
        return
    if name not in SHAPES | GRADIENTS | CONTAINERS | {"stop"}:
        left_out("element " + name)
    style = declarations(element)
    for attribute in LEFT_OUT_ATTRIBUTES & style.keys():
        if style[attribute] not in ("none", "normal"):
            left_out(attribute)
    for attribute in ("transform", "gradientTransform"):
        if not re.fullmatch(rf"(\s*{TRANSFORM_ITEM})*\s*", element.get(attribute, "")):
            own_way("transform syntax")
    if "visibility" in style:
        left_out("visibility")
    if name in GRADIENTS:
        check_gradient(name, element)
    elif name != "stop":
        check_paint(name, style)
    if "fill" in style:
        if style["fill"] == "currentColor" and not fill_is_black:
            left_out("currentColor")
        fill_is_black = style["fill"] in ("currentColor", "black", "#000", "#000000")
    if name == "use" and not element.get(XLINK_HREF, "").startswith("#"):
        left_out("use without xlink:href")
    if name == "path":
        check_path(element.get("d", ""))
    if name == "clipPath" and (len(element) > 1 or element.keys() != ["id"] or
                               any("clip-rule" in declarations(child) for child in element)):
        own_way("clip path of several shapes or with a rule")
    if name == "polyline" and len(re.findall(NUMBER, element.get("points", ""))) % 2:
        own_way("odd number of coordinates")
    for child in element:
        check_element(child, fill_is_black)


def whole_width(root, wanted):
    """The width nearest to the wanted one for which the height is also a whole number of pixels."""
    if root.get("width"):
        width, height = (float(root.get(name).removesuffix("px")) for name in ("width", "height"))
    else:
        width, height = (float(length) for length in root.get("viewBox", "0 0 0 0").split()[2:])
    if width <= 0 or height <= 0:
        own_way("no size")
    for candidate in sorted(range(wanted // 2, wanted * 2), key=lambda c: abs(c - wanted)):
        exact = candidate * height / width
        if exact >= 1 and abs(exact - round(exact)) < 1e-9 and candidate / width * height <= round(exact):
            return candidate
    own_way("height that is no whole number of pixels")


def check(path, wanted_width, all_ways):
    """The width at which to compare. Raises `Unsuitable` for a file that need not look the same."""
    try:
        root = ElementTree.parse(path).getroot()
    except ElementTree.ParseError:
        left_out("malformed XML")
    try:
        check_root(root)
        for child in root:
            check_element(child, True)
        return whole_width(root, wanted_width)
    except Unsuitable as reason:
        if not (all_ways and reason.args[1]):
            raise
        return wanted_width


def unfilter(data, row_length, step):
    """Undoes the filters of a PNG's rows."""
    rows, above = [], bytes(row_length)
    for start in range(0, len(data), row_length + 1):
        kind, row = data[start], bytearray(data[start + 1:start + 1 + row_length])
        for i in range(row_length if kind else 0):
            left = row[i - step] if i >= step else 0
            corner = above[i - step] if i >= step else 0
            if kind == 1:
                predicted = left
            elif kind == 2:
                predicted = above[i]
            elif kind == 3:
                predicted = (left + above[i]) // 2
            else:
                predicted = min((left, above[i], corner), key=lambda c: abs(left + above[i] - corner - c))
            row[i] = (row[i] + predicted) & 255
        rows.append(row)
        above = row
    return rows


def read_png(data):
    """Width, height and premultiplied RGBA bytes of a PNG. Reads only the formats that the two programs write."""
    chunks, at = collections.defaultdict(bytes), 8
    while at < len(data):
        length, kind = struct.unpack_from(">I4s", data, at)
        chunks[kind] += data[at + 8:at + 8 + length]
        at += 12 + length
    width, height, depth, color_type = struct.unpack_from(">IIBB", chunks[b"IHDR"])
    if color_type != 3 and (depth != 8 or color_type not in (4, 6)):
        raise ValueError("neither indexed nor gray and alpha nor RGBA, 8 bits each")
    bits = {3: depth, 4: 16, 6: 32}[color_type]
    rows = unfilter(zlib.decompress(chunks[b"IDAT"]), (width * bits + 7) // 8, max(1, bits // 8))
    if color_type == 3:
        palette, alphas = chunks[b"PLTE"], chunks[b"tRNS"].ljust(256, b"\xff")
        colors = [palette[3 * i:3 * i + 3] + alphas[i:i + 1] for i in range(len(palette) // 3)]
        rows = [b"".join(colors[row[x * bits // 8] >> (8 - bits - x * bits % 8) & ((1 << bits) - 1)]
                         for x in range(width)) for row in rows]
    elif color_type == 4:
        rows = [b"".join(row[i:i + 1] * 3 + row[i + 1:i + 2] for i in range(0, len(row), 2)) for row in rows]
    pixels = bytearray(b"".join(rows))
    for i in range(0, len(pixels), 4):
        for component in range(i, i + 3):
            pixels[component] = (pixels[component] * pixels[i + 3] + 127) // 255
    return width, height, pixels


def write_enlarged(path, width, height, pictures, factor=6):
    """Writes the pictures side by side on white, as a PNG."""
    rows = b""
    for y in range(height):
        row = bytearray(1)
        for pixels in pictures:
            for x in range(width):
                red, green, blue, alpha = pixels[4 * (y * width + x):4 * (y * width + x) + 4]
                row += bytes(c + 255 - alpha for c in (red, green, blue)) * factor
            row += bytes(3 * factor)
        rows += row * factor
    header = struct.pack(">IIBBBBB", (width + 1) * factor * len(pictures), height * factor, 8, 2, 0, 0, 0)
    with open(path, "wb") as file:
        file.write(b"\x89PNG\r\n\x1a\n")
        for kind, data in ((b"IHDR", header), (b"IDAT", zlib.compress(rows)), (b"IEND", b"")):
            file.write(struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data)))


def draw(command):
    done = subprocess.run(command, capture_output=True, timeout=60)
    if done.returncode:
        raise RuntimeError(f"{command[0]}: exit status {done.returncode}: {done.stderr.decode()[:200]}")
    return read_png(done.stdout)


def compare(path, arguments):
    """Returns ("left out" or "own way", reason), ("compared", difference) or ("failed", message)."""
    try:
        width = str(check(path, arguments.width, arguments.all_ways))
    except Unsuitable as reason:
        return "own way" if reason.args[1] else "left out", reason.args[0]
    try:
        ours = draw([arguments.ozmira, "render", path, "-o", "-", "--width", width])
    except (RuntimeError, subprocess.TimeoutExpired) as error:
        return "failed", str(error)
    try:
        theirs = draw(["rsvg-convert", "-w", width, path])
    except (RuntimeError, subprocess.TimeoutExpired):
        return "left out", "librsvg fails"
    if ours[:2] != theirs[:2]:
        return "compared", 255.0
    differences = [abs(a - b) for a, b in zip(ours[2], theirs[2])]
    mean = sum(differences) / len(differences)
    if arguments.keep and mean >= arguments.limit:
        shown = bytearray(differences)
        for i in range(3, len(shown), 4):
            shown[i - 3:i + 1] = bytes((255 - max(shown[i - 3:i + 1]),)) * 3 + bytes((255,))
        name = re.sub(r"[^\w.-]+", "_", path[-80:]) + ".png"
        write_enlarged(os.path.join(arguments.keep, name), *ours[:2], (ours[2], theirs[2], shown))
    return "compared", mean


def find_files(inputs, sample):
    files = []
    for name in inputs:
        if os.path.isdir(name):
            files += sorted(os.path.join(folder, file) for folder, _, names in os.walk(name)
                            for file in names if file.endswith(".svg"))
        else:
            files.append(name)
    count = min(sample or len(files), len(files))
    return [files[i * len(files) // count] for i in range(count)]


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("ozmira", help="path of the tool")
    parser.add_argument("inputs", nargs="+", metavar="FILE-OR-FOLDER")
    parser.add_argument("--width", type=int, default=64, help="width of the pictures in pixels (default 64)")
    parser.add_argument("--limit", type=float, default=1.0, help="limit of the mean difference in 255ths (default 1)")
    parser.add_argument("--sample", type=int, help="number of files to take, evenly spread (default all)")
    parser.add_argument("--all-ways", action="store_true", help="compare what Ozmira draws differently on purpose, too")
    parser.add_argument("--keep", metavar="DIR", help="folder for a picture of each disagreement")
    parser.add_argument("-j", "--jobs", type=int, default=os.cpu_count())
    arguments = parser.parse_args()
    if arguments.keep:
        os.makedirs(arguments.keep, exist_ok=True)

    files = find_files(arguments.inputs, arguments.sample)
    with concurrent.futures.ProcessPoolExecutor(arguments.jobs) as pool:
        outcomes = list(pool.map(compare, files, [arguments] * len(files), chunksize=16))

    reasons = collections.Counter(outcome for outcome in outcomes if outcome[0] in ("left out", "own way"))
    for (kind, reason), count in reasons.most_common():
        print(f"{count:7} {kind}: {reason}")
    failed = [(path, detail) for path, (kind, detail) in zip(files, outcomes) if kind == "failed"]
    for path, why in failed:
        print(f"FAILED {path}: {why}")
    compared = sorted(((detail, path) for path, (kind, detail) in zip(files, outcomes) if kind == "compared"),
                      reverse=True)
    unequal = [item for item in compared if item[0] >= arguments.limit]
    for difference, path in unequal:
        print(f"{difference:7.2f} {path}")
    if not compared:
        sys.exit("nothing was compared")
    differences = [difference for difference, _ in compared]
    share = 100 * (1 - len(unequal) / len(compared))
    print(f"{len(files)} files, {len(compared)} compared: {share:.2f} % within {arguments.limit:g}/255; mean "
          f"{sum(differences) / len(compared):.3f}, median {differences[len(differences) // 2]:.3f}, "
          f"largest {differences[0]:.2f}")
    sys.exit(bool(failed) or share < 99)


if __name__ == "__main__":
    main()
