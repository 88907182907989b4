#!/usr/bin/env python3
"""Tests tests/apple/swift_names.py: what Swift could not call, or would call by a poor name, is found."""
import tempfile
import unittest
from pathlib import Path

from swift_names import faults

INIT = "+ (instancetype)iconWithURL:(NSURL*)url error:(NSError**)error NS_SWIFT_NAME(init(url:));\n"


class SwiftNamesTest(unittest.TestCase):
    def test_faults(self):
        cases = [
            ("good names", INIT + "- (void)purge;\n- (void)drawIn:(CGRect)rect NS_SWIFT_NAME(draw(in:));", []),
            ("no name", "- (void)drawIn:(CGRect)rect;", ["NS_SWIFT_NAME is missing"]),
            ("too few arguments", "- (void)drawIn:(CGRect)rect of:(CGContextRef)context NS_SWIFT_NAME(draw(in:));",
             ["draw(in:) has not as many arguments"]),
            ("one name twice", INIT + "- (instancetype)initWithURL:(NSURL*)url NS_SWIFT_NAME(init(url:));",
             ["two methods are init(url:)"]),
            ("a class method's name", "+ (void)a:(id)b NS_SWIFT_NAME(c(_:));\n- (void)d:(id)e NS_SWIFT_NAME(c(_:));", []),
            ("an unknown class", "- (Hidden*)hidden;", ["NS_SWIFT_UNAVAILABLE is missing"]),
            ("an unknown class, not for Swift", '- (Hidden*)hidden NS_SWIFT_UNAVAILABLE("internal");', []),
        ]
        with tempfile.TemporaryDirectory() as folder:
            header = Path(folder) / "Icon.h"
            for name, methods, expected in cases:
                with self.subTest(name):
                    header.write_text(f"@class Hidden;\n@interface Icon : NSObject\n{methods}\n@end\n")
                    found = list(faults([header]))
                    self.assertEqual(len(found), len(expected), found)
                    for fault, text in zip(found, expected):
                        self.assertIn(text, fault)


if __name__ == "__main__":
    unittest.main()
