#!/usr/bin/env python3
"""Tests checks/layers.py: an include that points up is found and named, one that points down is not."""
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

LAYERS = Path(__file__).resolve().parent / "layers.py"


def check(files):
    """The exit code and the output for a tree of {path: text}."""
    with tempfile.TemporaryDirectory() as root:
        for name in ("support", "core", "platform", "render", "api", "tools", "include"):
            (Path(root) / name).mkdir()
        for path, text in files.items():
            file = Path(root) / path
            file.parent.mkdir(parents=True, exist_ok=True)
            file.write_text(text)
        done = subprocess.run([sys.executable, LAYERS, root], stdout=subprocess.PIPE, text=True)
        return done.returncode, done.stdout


class LayersTest(unittest.TestCase):
    def test_includes(self):
        cases = [
            ("down", "core/svg/a.cpp", '#include "numbers/b.h"\n', "core/numbers/b.h", None),
            ("up", "core/numbers/a.cpp", '\n#include "svg/b.h"\n', "core/svg/b.h", "core/numbers/a.cpp:2: "),
            ("sideways", "tools/ozmira/picture/a.cpp", '#include "report/b.h"\n', "tools/ozmira/report/b.h",
             "picture/ must not include tools/ozmira/report/b.h"),
            ("core to drawing", "core/a.cpp", "#include <CoreGraphics/b.h>\n",
             "platform/include/CoreGraphics/b.h", "core/ must not include"),
            ("core to the object layer", "core/a.cpp", "#include <Ozmira/OZMb.h>\n", "include/Ozmira/OZMb.h",
             "the core must not include"),
            ("renderer to the drawing library's inside", "render/a.cpp",
             '#include "../platform/coregraphics/base/b.h"\n', "platform/coregraphics/base/b.h",
             "render/a.cpp:1: "),
            ("a folder without a rule", "core/new/a.cpp", "", "core/a.h", "core/new/ has no rule"),
            ("a file that is not there", "core/a.cpp", '#include "svg/c.h"\n', "core/svg/b.h",
             '"svg/c.h" is not found'),
        ]
        for name, path, text, target, expected in cases:
            with self.subTest(name):
                code, output = check({path: text, target: ""})
                self.assertEqual(code, 0 if expected is None else 1, output)
                self.assertIn(expected or "points down", output)


if __name__ == "__main__":
    unittest.main()
