"""Pictures of drawings by Ozmira, resvg and Chromium, as arrays of premultiplied components, and their difference."""
import html
import subprocess
from collections import defaultdict
from pathlib import Path

import numpy
from PIL import Image, ImageDraw

# No side of a picture by Chromium is longer.
LARGEST_SHEET = 4096


def read_picture(file):
    """Premultiplied components of a PNG, rounded."""
    pixels = numpy.asarray(Image.open(file).convert("RGBA")).astype(numpy.uint16)
    pixels[..., :3] = (pixels[..., :3] * pixels[..., 3:] + 127) // 255
    return pixels.astype(numpy.uint8)


def draw_with_ozmira(tool, files, sizes, folder):
    """Pictures by the tool, in files of the folder. `files` has a file for each name, `sizes` its width and height."""
    names_of = defaultdict(list)
    for name in files:
        names_of[sizes[name][0]].append(name)
    for width, names in names_of.items():
        subprocess.run([tool, "render", *(files[name] for name in names), "-o", f"{folder}/", "--width", str(width),
                        "--jobs", "1", "--quiet"], capture_output=True, check=False)
    return {name: read_picture(folder / f"{name}.png") for name in files if (folder / f"{name}.png").exists()}


def draw_with_resvg(files, sizes, folder):
    """The same by resvg. What it refuses is missing."""
    order = folder / "order"
    order.write_text("".join(f"{file}\t{folder / name}.rgba\t{sizes[name][0]}\n" for name, file in files.items()))
    subprocess.run(["node", Path(__file__).with_name("resvg-pictures.mjs"), order], capture_output=True, check=True)
    return {name: numpy.fromfile(folder / f"{name}.rgba", numpy.uint8).reshape(-1, sizes[name][0], 4)
            for name in files if (folder / f"{name}.rgba").exists()}


def draw_with_chromium(files, sizes, folder):
    """The same by headless Chromium, of pages that show many drawings side by side."""
    cell_width, cell_height = (max(size[side] for size in sizes.values()) + 1 for side in (0, 1))
    columns, rows = LARGEST_SHEET // cell_width, LARGEST_SHEET // cell_height
    pictures, names = {}, list(files)
    for first in range(0, len(names), columns * rows):
        page, places = "<!doctype html><meta charset=utf-8><style>img{position:absolute}</style>", {}
        for i, name in enumerate(names[first:first + columns * rows]):
            x, y = i % columns * cell_width, i // columns * cell_height
            width, height = sizes[name]
            places[name] = slice(y, y + height), slice(x, x + width)
            page += (f'<img src="{html.escape(Path(files[name]).as_uri())}" '
                     f'style="left:{x}px;top:{y}px;width:{width}px;height:{height}px">')
        (folder / "page.html").write_text(page)
        sheet = photograph(folder, columns * cell_width, rows * cell_height)
        pictures.update((name, sheet[place]) for name, place in places.items())
    return pictures


def photograph(folder, width, height):
    """What Chromium shows of page.html in the folder, on a transparent ground."""
    target = folder / "page.png"
    target.unlink(missing_ok=True)
    subprocess.run(["chromium", "--headless", "--no-sandbox", "--disable-gpu", "--no-first-run", "--hide-scrollbars",
                    "--disable-background-networking", "--disable-component-update", "--disable-sync",
                    "--force-device-scale-factor=1", "--default-background-color=00000000",
                    f"--user-data-dir={folder}/profile", f"--window-size={width},{height}", f"--screenshot={target}",
                    (folder / "page.html").as_uri()], capture_output=True, check=True, timeout=300)
    return read_picture(target)


def difference(expected, got):
    """The mean absolute difference of all components, in 255ths; 255 for pictures of different sizes."""
    if expected.shape != got.shape:
        return 255.0
    return float((numpy.maximum(expected, got) - numpy.minimum(expected, got)).mean())


def side_by_side(expected, got, label):
    """An image of both pictures and their difference, for people."""
    height = max(expected.shape[0], got.shape[0])
    width = max(expected.shape[1], got.shape[1])
    image = Image.new("RGB", (3 * width + 8, height + 14), "white")
    for i, pixels in enumerate((expected, got)):
        on_white = pixels[..., :3] + (255 - pixels[..., 3:])
        image.paste(Image.fromarray(on_white), (i * (width + 4), 14))
    if expected.shape == got.shape:
        delta = numpy.maximum(expected, got) - numpy.minimum(expected, got)
        image.paste(Image.fromarray(255 - delta.max(axis=2)).convert("RGB"), (2 * (width + 4), 14))
    ImageDraw.Draw(image).text((0, 1), label, fill="black")
    return image
