#!/usr/bin/env python3
"""Looks into the installed bundle. Usage: bundle_test.py Quillmender.app architecture version"""

import pathlib
import plistlib
import struct
import subprocess
import sys
import unittest

BUNDLE = pathlib.Path(sys.argv[1])
ARCHITECTURE, VERSION = sys.argv[2:4]
PROGRAM = BUNDLE / "Contents/MacOS/Quillmender"
FRAMEWORKS = {
    "AppKit",
    "ApplicationServices",
    "Carbon",
    "CoreFoundation",
    "Foundation",
    "Security",
    "ServiceManagement",
}
# The pixels that each type of picture has.
PICTURES = {
    "ic07": 128,
    "ic08": 256,
    "ic09": 512,
    "ic10": 1024,
    "ic11": 32,
    "ic12": 64,
    "ic13": 256,
    "ic14": 512,
}


def otool(*options):
    command = ["/usr/lib/llvm-19/bin/llvm-otool", *options, str(PROGRAM)]
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


class Properties(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.content = (BUNDLE / "Contents/Info.plist").read_bytes()
        cls.properties = plistlib.loads(cls.content)

    def test_nothing_is_left_to_fill_in(self):
        self.assertNotIn(b"@", self.content)
        self.assertNotIn(b"${", self.content)
        for key, value in self.properties.items():
            self.assertNotEqual(value, "", key)

    def test_names_the_program(self):
        self.assertEqual(self.properties["CFBundleIdentifier"], "com.quillmender.Quillmender")
        self.assertEqual(self.properties["CFBundlePackageType"], "APPL")
        self.assertTrue((BUNDLE / "Contents/MacOS" / self.properties["CFBundleExecutable"]).is_file())

    def test_has_the_project_s_version(self):
        self.assertEqual(self.properties["CFBundleShortVersionString"], VERSION)
        self.assertEqual(self.properties["CFBundleVersion"], VERSION)

    def test_is_a_menu_bar_program_of_macos_13(self):
        self.assertIs(self.properties["LSUIElement"], True)
        self.assertEqual(self.properties["LSMinimumSystemVersion"], "13.0")

    def test_is_started_once(self):
        self.assertIs(self.properties["LSMultipleInstancesProhibited"], True)

    def test_asks_for_nothing_but_the_local_network(self):
        usages = [key for key in self.properties if key.endswith("UsageDescription")]
        self.assertEqual(usages, ["NSLocalNetworkUsageDescription"])


class Icon(unittest.TestCase):
    def test_has_a_picture_of_every_size(self):
        properties = plistlib.loads((BUNDLE / "Contents/Info.plist").read_bytes())
        name = properties["CFBundleIconFile"] + ".icns"
        content = (BUNDLE / "Contents/Resources" / name).read_bytes()
        self.assertEqual(content[:8], b"icns" + struct.pack(">I", len(content)))
        pictures = {}
        rest = content[8:]
        while rest:
            kind, size = struct.unpack(">4sI", rest[:8])
            self.assertGreater(size, 8)
            picture, rest = rest[8:size], rest[size:]
            self.assertEqual(picture[:8], b"\x89PNG\r\n\x1a\n")
            width, height = struct.unpack(">II", picture[16:24])
            self.assertEqual(width, height)
            pictures[kind.decode()] = width
        self.assertEqual(pictures, PICTURES)


class Program(unittest.TestCase):
    def test_is_for_the_architecture_and_macos_13(self):
        header = PROGRAM.read_bytes()[:8]
        magic, cpu = struct.unpack("<II", header)
        self.assertEqual(magic, 0xFEEDFACF)
        self.assertEqual(cpu, {"arm64": 0x0100000C, "x86_64": 0x01000007}[ARCHITECTURE])
        commands = otool("-l")
        self.assertIn("LC_BUILD_VERSION", commands)
        self.assertRegex(commands, r"platform (1|macos)\b")
        self.assertRegex(commands, r"minos 13\.0\b")

    def test_is_loaded_at_any_address_and_checks_its_stack(self):
        position_independent = 0x200000
        (flags,) = struct.unpack("<I", PROGRAM.read_bytes()[24:28])
        self.assertTrue(flags & position_independent)
        self.assertIn("___stack_chk_fail", otool("-Iv"))

    def test_links_the_frameworks_and_no_others(self):
        libraries = otool("-L")
        found = {
            pathlib.PurePath(line.split()[0]).name
            for line in libraries.splitlines()
            if "/Frameworks/" in line
        }
        self.assertEqual(found, FRAMEWORKS)


class Deployment(unittest.TestCase):
    def test_qt_is_deployed(self):
        options = (BUNDLE / "Contents/Resources/deployed").read_text().splitlines()
        self.assertEqual(options, ["-always-overwrite"])

    def test_only_the_plugins_that_are_needed_are_left(self):
        plugins = BUNDLE / "Contents/PlugIns"
        self.assertEqual(
            sorted(str(path.relative_to(plugins)) for path in plugins.rglob("*.dylib")),
            [
                "platforms/libqcocoa.dylib",
                "styles/libqmacstyle.dylib",
                "tls/libqsecuretransportbackend.dylib",
            ],
        )

    def test_nothing_is_installed_beside_the_bundle(self):
        self.assertEqual(list(BUNDLE.parent.iterdir()), [BUNDLE])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
