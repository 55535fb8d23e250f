#!/usr/bin/env python3
"""Deploys a made-up bundle with tools that only note how they were called, and tells what the
binaries in it are linked with. Usage: deploy_test.py folder-of-the-project"""

import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

SCRIPTS = pathlib.Path(sys.argv[1]) / "packaging/macos"
IDENTITY = "Developer ID Application: Some One (TEAM)"
CODE = b"\xcf\xfa\xed\xfe..."
NEEDED = [
    "PlugIns/platforms/libqcocoa.dylib",
    "PlugIns/styles/libqmacstyle.dylib",
    "PlugIns/tls/libqsecuretransportbackend.dylib",
]
PROGRAM = "MacOS/Quillmender"
CORE = "Frameworks/QtCore.framework"
SVG = "Frameworks/QtSvg.framework"
ICONS = "PlugIns/iconengines/libqsvgicon.dylib"
LINKS_CORE = "@rpath/QtCore.framework/Versions/A/QtCore"
LINKS_SVG = "@executable_path/../Frameworks/QtSvg.framework/Versions/A/QtSvg"
SYSTEM = "/usr/lib/libSystem.B.dylib"

# Notes its call; macdeployqt leaves the bundle as it is, which has everything already.
TOOL = """#!/bin/sh
name=$(basename "$0")
printf '%s' "$name" >>"$CALLS"
for argument; do printf '|%s' "${argument#"$BUNDLE/Contents/"}" >>"$CALLS"; done
echo >>"$CALLS"
for argument; do [ "$name $argument" != "$FAILING" ] || exit 1; done
"""
# Has what it tells in a folder: otool -arch all <option> <file>.
OTOOL = """#!/bin/sh
echo "$4:"
cat "$FACTS/${4#"$BUNDLE/Contents/"}$3" 2>/dev/null || true
"""
INFO = """<dict>
	<key>LSMinimumSystemVersion</key>
	<string>13.0</string>
</dict>
"""


def framework(folder):
    return f"{folder}/Versions/A/{pathlib.PurePath(folder).stem}"


class Deployment(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)
        self.bundle = self.root / "some one/Quillmender.app"
        self.contents = self.bundle / "Contents"
        self.tools = self.root / "tools"
        self.tools.mkdir()
        for name in ("codesign", "macdeployqt", "otool"):
            tool = self.tools / name
            tool.write_text(OTOOL if name == "otool" else TOOL)
            tool.chmod(0o755)
        self.contents.mkdir(parents=True)
        (self.contents / "Info.plist").write_text(INFO)
        self.add(PROGRAM, LINKS_CORE, "/System/Library/Frameworks/AppKit.framework/AppKit")
        self.add(framework(CORE))
        for plugin in NEEDED:
            self.add(plugin, LINKS_CORE)

    def add(self, name, *libraries, minos="12.0", command="LC_BUILD_VERSION", rpath=None):
        file = self.contents / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_bytes(CODE)
        facts = self.root / "facts" / name
        facts.parent.mkdir(parents=True, exist_ok=True)
        own = f"/elsewhere/{file.name}" if file.suffix != "" or "Frameworks" in name else None
        lines = [f"\t{each} (compatibility version 6.0.0, current version 6.8.2)\n" for each in libraries]
        if own:
            lines.insert(0, f"\t{own} (compatibility version 6.0.0, current version 6.8.2)\n")
            pathlib.Path(f"{facts}-D").write_text(own + "\n")
        lines.append(f"\t{SYSTEM} (compatibility version 1.0.0, current version 1345.0.0)\n")
        pathlib.Path(f"{facts}-L").write_text("".join(lines))
        field = "minos" if command == "LC_BUILD_VERSION" else "version"
        commands = f"      cmd {command}\n  cmdsize 32\n platform 1\n    {field} {minos}\n      sdk 15.0\n"
        # Another command's field of the same name.
        commands += "      cmd LC_SOURCE_VERSION\n  cmdsize 16\n  version 99.0\n"
        if rpath:
            commands += f"          cmd LC_RPATH\n      cmdsize 48\n         path {rpath} (offset 12)\n"
        pathlib.Path(f"{facts}-l").write_text(commands if minos else "")

    def deploy(self, identity="-", failing=""):
        calls = self.root / "calls"
        calls.unlink(missing_ok=True)
        result = subprocess.run(
            [SCRIPTS / "deploy-bundle", self.tools / "macdeployqt", self.bundle, identity],
            env={
                "PATH": f"{self.tools}:{os.environ['PATH']}",
                "CALLS": str(calls),
                "BUNDLE": str(self.bundle),
                "FACTS": str(self.root / "facts"),
                "FAILING": failing,
            },
            capture_output=True,
            text=True,
        )
        self.calls = calls.read_text().splitlines()
        self.message = result.stderr
        return result.returncode == 0

    def refused(self, identity="-"):
        self.assertFalse(self.deploy(identity))
        return self.message

    def test_signs_from_the_inside_and_looks_whether_it_holds(self):
        self.assertTrue(self.deploy(), self.message)
        self.assertEqual(
            self.calls,
            [f"macdeployqt|{self.bundle}|-always-overwrite"]
            + [f"codesign|--force|--sign|-|{code}" for code in [CORE, *NEEDED, str(self.bundle)]]
            + [f"codesign|--verify|--deep|--strict|{self.bundle}"],
        )

    def test_a_release_is_hardened_and_has_a_time_stamp(self):
        self.assertTrue(self.deploy(IDENTITY), self.message)
        for call in self.calls[1:-1]:
            self.assertTrue(
                call.startswith(f"codesign|--force|--sign|{IDENTITY}|--options|runtime|--timestamp|")
            )

    def test_a_signature_that_fails_or_does_not_hold_is_noticed(self):
        self.assertFalse(self.deploy(failing=f"codesign {self.contents}/{NEEDED[1]}"))
        self.assertEqual(self.calls[-1], f"codesign|--force|--sign|-|{NEEDED[1]}")
        self.assertFalse(self.deploy(failing="codesign --verify"))

    def test_other_plugins_go_and_what_only_they_wanted(self):
        deeper = "Frameworks/QtDeeper.framework"
        library = "Frameworks/libwebp.7.dylib"
        self.add(ICONS, LINKS_CORE, LINKS_SVG, "@rpath/libwebp.7.dylib")
        self.add(framework(SVG), "@rpath/QtDeeper.framework/Versions/A/QtDeeper")
        self.add(framework(deeper))
        self.add(library)
        self.assertTrue(self.deploy(), self.message)
        for gone in (ICONS, "PlugIns/iconengines", SVG, deeper):
            self.assertFalse((self.contents / gone).exists(), gone)
        self.assertFalse((self.contents / library).exists())
        self.assertTrue((self.contents / CORE).exists())

    def test_a_missing_plugin_is_noticed(self):
        (self.contents / NEEDED[2]).unlink()
        self.assertIn("tls/libqsecuretransportbackend.dylib", self.refused())

    def test_a_library_of_this_machine_is_noticed_in_every_binary(self):
        for name in (PROGRAM, framework(CORE), NEEDED[2]):
            self.add(name, LINKS_CORE, "/opt/some where/lib/libssl.3.dylib")
            self.assertIn(
                f"Contents/{name}: is linked with /opt/some where/lib/libssl.3.dylib", self.refused()
            )
            self.add(name, LINKS_CORE)
        self.assertTrue(self.deploy(), self.message)

    def test_a_library_that_was_not_deployed_is_noticed(self):
        for library in (LINKS_SVG, "@rpath/libssl.3.dylib", "@loader_path/libssl.3.dylib"):
            self.add(NEEDED[0], LINKS_CORE, library)
            self.assertIn(library, self.refused())
        self.add(NEEDED[0], LINKS_CORE, "@loader_path/../../MacOS/Quillmender")
        self.assertTrue(self.deploy(), self.message)

    def test_a_folder_of_this_machine_is_noticed(self):
        self.add(PROGRAM, LINKS_CORE, rpath="/Users/some one/Qt/lib")
        self.assertIn("looks for libraries in /Users/some one/Qt/lib", self.refused())
        self.add(PROGRAM, LINKS_CORE, rpath="@executable_path/../Frameworks")
        self.assertTrue(self.deploy(), self.message)

    def test_a_qt_for_newer_systems_makes_no_release(self):
        for minos, command in (("13.0.1", "LC_BUILD_VERSION"), ("15.0", "LC_VERSION_MIN_MACOSX")):
            self.add(framework(CORE), minos=minos, command=command)
            self.assertIn(f"needs macOS {minos}", self.refused(IDENTITY))
            self.assertTrue(self.deploy(), self.message)
            self.assertIn(f"needs macOS {minos}", self.message)
        for minos, command in (("13.0", "LC_BUILD_VERSION"), ("9.5", "LC_VERSION_MIN_MACOSX")):
            self.add(framework(CORE), minos=minos, command=command)
            self.assertTrue(self.deploy(IDENTITY), self.message)
            self.assertEqual(self.message, "")

    def test_code_that_does_not_say_what_it_needs_is_noticed(self):
        self.add(NEEDED[1], minos=None)
        self.assertIn("does not say on which macOS it runs", self.refused())


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
