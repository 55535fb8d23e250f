#!/usr/bin/env python3
"""Runs the scripts that are for a Mac with tools that only note how they were called.
Usage: scripts_test.py folder-of-the-project"""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

PROJECT = pathlib.Path(sys.argv[1])
IDENTITY = "Developer ID Application: Some One (TEAM)"
IMAGE = "build/macos/package/Quillmender-1.0.0.dmg"
TOOL = """#!/bin/sh
printf '%s' "$(basename "$0")" >>"$CALLS"
for argument; do printf '|%s' "$argument" >>"$CALLS"; done
echo >>"$CALLS"
case "$(basename "$0")" in
    sysctl) echo 8 ;;
    cpack) mkdir -p build/macos/package && : >build/macos/package/Quillmender-1.0.0.dmg ;;
esac
[ "$(basename "$0") $1" != "$FAILING" ]
"""


class Scripts(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)
        self.tools = self.root / "tools"
        self.tools.mkdir()
        for name in ("cmake", "codesign", "cpack", "shasum", "spctl", "sysctl", "xcrun"):
            tool = self.tools / name
            tool.write_text(TOOL)
            tool.chmod(0o755)
        shutil.copytree(PROJECT / "scripts", self.root / "scripts")

    def run_script(self, name, *arguments, failing=""):
        calls = self.root / "calls"
        environment = {
            "PATH": f"{self.tools}:{os.environ['PATH']}",
            "CALLS": str(calls),
            "FAILING": failing,
        }
        result = subprocess.run(
            [self.root / "scripts" / name, *arguments], env=environment, capture_output=True, text=True
        )
        lines = calls.read_text().splitlines() if calls.exists() else []
        return result.returncode, [line for line in lines if not line.startswith("sysctl")]

    def test_building_is_two_commands(self):
        self.assertEqual(
            self.run_script("macos-build", "-DCMAKE_PREFIX_PATH=/Users/some one/Qt"),
            (
                0,
                [
                    "cmake|--preset|macos|-DCMAKE_PREFIX_PATH=/Users/some one/Qt",
                    "cmake|--build|--preset|macos|--target|bundle|--parallel|8",
                ],
            ),
        )

    def test_the_image_is_signed_then_notarised_then_stapled(self):
        self.assertEqual(
            self.run_script("macos-package", IDENTITY, "some-profile"),
            (
                0,
                [
                    f"cmake|--preset|macos|-DQUILLMENDER_SIGNING_IDENTITY={IDENTITY}",
                    "cmake|--build|--preset|macos|--parallel|8",
                    "cpack|--config|build/macos/CPackConfig.cmake|-B|build/macos/package",
                    f"codesign|--force|--timestamp|--sign|{IDENTITY}|{IMAGE}",
                    f"xcrun|notarytool|submit|{IMAGE}|--keychain-profile|some-profile|--wait",
                    f"xcrun|stapler|staple|{IMAGE}",
                    "spctl|--assess|--type|open|--context|context:primary-signature|--verbose"
                    f"|{IMAGE}",
                    # Of what is left when all of that has been done to it.
                    "shasum|-a|256|Quillmender-1.0.0.dmg",
                ],
            ),
        )
        self.assertTrue((self.root / (IMAGE + ".sha256")).is_file())

    def test_nothing_follows_a_failure(self):
        for tool in ("codesign --force", "xcrun notarytool"):
            status, calls = self.run_script("macos-package", IDENTITY, "profile", failing=tool)
            self.assertNotEqual(status, 0)
            self.assertEqual(calls[-1].split("|")[:2], tool.split())
            (self.root / "calls").unlink()

    def test_without_a_profile_nothing_is_done(self):
        status, calls = self.run_script("macos-package", IDENTITY)
        self.assertEqual((status, calls), (2, []))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
