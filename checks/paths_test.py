#!/usr/bin/env python3
"""Tests checks/paths.py: files and folders whose names differ in case alone are found."""
import unittest

from paths import collisions


class PathsTest(unittest.TestCase):
    def test_collisions(self):
        cases = [
            ("different names", ["a/b.h", "a/c.h", "b/a.h"], []),
            ("files", ["a/Doc.h", "a/doc.h"], ["a/Doc.h and a/doc.h"]),
            ("folders", ["A/b.h", "a/c.h"], ["A and a"]),
            ("the same name in two folders", ["a/x.h", "b/X.h"], []),
        ]
        for name, paths, expected in cases:
            with self.subTest(name):
                self.assertEqual(list(collisions(paths)), expected)


if __name__ == "__main__":
    unittest.main()
