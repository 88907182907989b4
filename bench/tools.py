#!/usr/bin/env python3
"""Measures tools that turn SVG files into PNG files, Ozmira's and its rivals, in turns:

    bench/tools.py TOOL LIST [ROUNDS]

TOOL is the program ozmira; LIST has the name of a drawing on each line, as bench/fetch-icons.sh writes it. Draws 1,000
of them at 64 pixels and the five longest at 2,048, and prints a table for each: processor time of the fastest of ROUNDS
(3 by default), the peak of memory of one process, and the bytes written, all from reading files to writing files. A
rival that is not installed is left out. rsvg-convert needs a process for each drawing; the others draw all in one.
"""
import os
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
RESVG = ROOT / "tests/compare/resvg-pictures.mjs"


def processor_time(command):
    """Runs a command. Its processor time in seconds, and the peak of its memory in MB."""
    # A process counts the memory of the one that started it, and Python has more than some tools; so time starts them.
    # Its own times are too coarse.
    with tempfile.NamedTemporaryFile("r") as memory, tempfile.TemporaryFile() as messages:
        process = subprocess.Popen(["/usr/bin/time", "-f", "%M", "-o", memory.name, *command], stdout=subprocess.DEVNULL,
                                   stderr=messages)
        _, status, usage = os.wait4(process.pid, 0)
        process.returncode = os.waitstatus_to_exitcode(status)
        if process.returncode != 0:
            messages.seek(0)
            sys.exit(f"tools: {command[0]} ended with {process.returncode}:\n{messages.read().decode(errors='replace')}")
        return usage.ru_utime + usage.ru_stime, int(memory.read()) / 1024


def sum_up(measures):
    times, memory = zip(*measures)
    return sum(times), max(memory)


class Measurement:
    """A folder of drawings, and what each tool takes to draw them."""

    def __init__(self, tool, folder, drawings, pixels):
        self.tool, self.folder, self.drawings, self.pixels = tool, folder, drawings, str(pixels)

    def target(self, drawing, tool):
        return self.folder / tool / (drawing.stem + ".png")

    def ozmira(self):
        command = [self.tool, "render", *self.drawings, "-o", self.folder / "ozmira"]
        return processor_time(command + ["--width", self.pixels, "--height", self.pixels, "-j", "1", "-q"])

    def ozmira_again(self):
        return self.ozmira()

    def rsvg_convert(self):
        (self.folder / "rsvg_convert").mkdir(exist_ok=True)
        size = ["-w", self.pixels, "-h", self.pixels, "--keep-aspect-ratio"]
        return sum_up(
            processor_time(["rsvg-convert", *size, drawing, "-o", self.target(drawing, "rsvg_convert")])
            for drawing in self.drawings
        )

    def resvg_js(self):
        (self.folder / "resvg_js").mkdir(exist_ok=True)
        names = self.folder / "resvg.txt"
        lines = [f"{drawing}\t{self.target(drawing, 'resvg_js')}\n" for drawing in self.drawings]
        names.write_text("".join(lines))
        return processor_time(["node", RESVG, names, self.pixels])

    def inkscape(self):
        # Pictures go beside the drawings, so that these are copied.
        folder = self.folder / "inkscape"
        folder.mkdir(exist_ok=True)
        copies = [shutil.copy(drawing, folder) for drawing in self.drawings]
        command = ["inkscape", "--export-type=png", f"--export-width={self.pixels}", *copies]
        return processor_time(command)

    def written(self, tool):
        folder = self.folder / tool.removesuffix("_again")
        return sum(file.stat().st_size for file in folder.glob("*.png"))


def is_installed(tool):
    if tool == "resvg_js":
        return shutil.which("node") and (ROOT / "build/icons/node_modules/@resvg/resvg-js").is_dir()
    return tool.startswith("ozmira") or shutil.which(tool.replace("_", "-"))


def measure(tool, drawings, pixels, rounds):
    print(f"\n{len(drawings)} drawings at {pixels} pixels\n")
    print("| | ms a drawing | MB | bytes a drawing |\n|---|---|---|---|", flush=True)
    names = [n for n in ("ozmira", "ozmira_again", "rsvg_convert", "resvg_js", "inkscape") if is_installed(n)]
    fastest, memory, sizes = {}, {}, {}
    for _ in range(rounds):
        with tempfile.TemporaryDirectory() as folder:
            measurement = Measurement(tool, Path(folder), drawings, pixels)
            for name in names:
                time, megabytes = getattr(measurement, name)()
                fastest[name] = min(fastest.get(name, 1e9), 1000 * time / len(drawings))
                memory[name] = min(memory.get(name, 1e9), megabytes)
                sizes[name] = measurement.written(name) / len(drawings)
    for name in names:
        label = name.replace("_", " ")
        print(f"| {label} | {fastest[name]:.3f} | {memory[name]:.0f} | {sizes[name]:,.0f} |")


def main():
    if len(sys.argv) not in (3, 4):
        sys.exit(__doc__)
    tool, names = sys.argv[1], Path(sys.argv[2]).read_text().splitlines()
    rounds = int(sys.argv[3]) if len(sys.argv) == 4 else 3
    with tempfile.TemporaryDirectory() as folder:
        # Numbered, because files of different sets share names.
        drawings = [Path(shutil.copy(name, f"{folder}/{number}.svg")) for number, name in enumerate(names)]
        measure(tool, drawings[:1000], 64, rounds)
        drawings.sort(key=lambda drawing: drawing.stat().st_size)
        measure(tool, drawings[-5:], 2048, rounds)


if __name__ == "__main__":
    main()
