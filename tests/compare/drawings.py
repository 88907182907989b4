"""Which drawings are compared, and in which size."""
import os
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[2]
ICONS = PROJECT / "build" / "icons"


def known_sets():
    """The folders of the icon sets that bench/fetch-icons.sh fetches, by name."""
    rows = (line.split() for line in (PROJECT / "bench/icons/sets").read_text().splitlines()
            if line and not line.startswith("#"))
    return {name: ICONS / "node_modules" / folder for name, folder, *_ in rows}


def find_files(inputs, sample=None):
    """The files named and the SVG files in the folders named; of all these `sample`, evenly spread."""
    files = []
    for name in inputs:
        if os.path.isdir(name):
            files += sorted(os.path.join(folder, file) for folder, _, names in os.walk(name)
                            for file in names if file.endswith(".svg"))
        else:
            files.append(str(name))
    count = min(sample or len(files), len(files))
    return [files[i * len(files) // count] for i in range(count)]


def whole_width(width, height, wanted):
    """The width in pixels nearest to the wanted one at which the height is a whole number too, or None.

    Ozmira centres a drawing in a height that it rounds up, and others do something else.
    """
    for candidate in sorted(range(wanted // 2, wanted * 2), key=lambda c: abs(c - wanted)):
        exact = candidate * height / width
        if exact >= 1 and abs(exact - round(exact)) < 1e-9 and candidate / width * height <= round(exact):
            return candidate
    return None
