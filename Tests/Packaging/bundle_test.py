"""Looks at a Quorvex.app as it was built: layout, property list, icon, and that it runs.

Usage: bundle_test.py Quorvex.app VERSION
"""

import pathlib
import plistlib
import struct
import subprocess
import sys
import tempfile
import unittest

BUNDLE = pathlib.Path(sys.argv[1])
VERSION = sys.argv[2]


class Bundle(unittest.TestCase):
    def test_layout(self):
        files = {str(p.relative_to(BUNDLE)) for p in BUNDLE.rglob("*") if p.is_file()}
        for name in (
            "Contents/Info.plist",
            "Contents/PkgInfo",
            "Contents/MacOS/quorvex",
            "Contents/MacOS/libquorvex-cli.so",
            "Contents/MacOS/libquorvex-app.so",
            "Contents/MacOS/libquorvex-windows.so",
            "Contents/Resources/AppIcon.icns",
            "Contents/Resources/QuorvexHelper",
        ):
            self.assertIn(name, files)

    def test_property_list(self):
        info = plistlib.loads((BUNDLE / "Contents/Info.plist").read_bytes())
        self.assertIs(info["LSUIElement"], True)
        self.assertEqual(info["CFBundleShortVersionString"], VERSION)
        self.assertEqual(info["CFBundleVersion"], VERSION)
        self.assertEqual(info["CFBundleIdentifier"], "com.quorvex.app")
        self.assertEqual(info["LSMinimumSystemVersion"], "14.0")
        self.assertTrue((BUNDLE / "Contents/MacOS" / info["CFBundleExecutable"]).is_file())
        self.assertTrue((BUNDLE / "Contents/Resources" / (info["CFBundleIconFile"] + ".icns")).is_file())

    def test_icon_holds_a_picture_of_every_size(self):
        icon = (BUNDLE / "Contents/Resources/AppIcon.icns").read_bytes()
        magic, length = struct.unpack(">4sI", icon[:8])
        self.assertEqual((magic, length), (b"icns", len(icon)))
        sides = {}
        at = 8
        while at < len(icon):
            kind, size = struct.unpack(">4sI", icon[at : at + 8])
            picture = icon[at + 8 : at + size]
            self.assertEqual(picture[:8], b"\x89PNG\r\n\x1a\n")
            sides[kind.decode()] = struct.unpack(">II", picture[16:24])
            at += size
        expected = {"ic11": 32, "ic12": 64, "ic07": 128, "ic13": 256, "ic08": 256, "ic14": 512, "ic09": 512, "ic10": 1024}
        self.assertEqual(sides, {kind: (side, side) for kind, side in expected.items()})

    def test_the_command_line_runs_through_a_link_to_it(self):
        with tempfile.TemporaryDirectory() as folder:
            link = pathlib.Path(folder) / "quorvex"
            link.symlink_to((BUNDLE / "Contents/MacOS/quorvex").resolve())
            for words in (["--version"], ["battery", "--json"]):
                result = subprocess.run([link, *words], capture_output=True, text=True, cwd=folder, timeout=60)
                self.assertEqual(result.returncode, 0, result.stderr)
            self.assertNotIn("incomplete", result.stderr)


unittest.main(argv=[sys.argv[0]])
