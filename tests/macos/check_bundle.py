# SPDX-License-Identifier: MIT
"""Reads what makes the program a bundle: its information list, its entitlements and its disk-image script.
    check_bundle.py INFO_PLIST"""
import pathlib
import plistlib
import re
import subprocess
import sys
import unittest

import mac_clang

PROJECT = pathlib.Path(__file__).resolve().parents[2]
PACKAGING = PROJECT / 'packaging/macos'


def source(path):
    return (PROJECT / 'src' / path).read_text()


class BundleTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.info = plistlib.loads(INFORMATION.read_bytes())

    def test_names_the_program_as_the_code_does(self):
        identifier = re.search(r'bundleIdentifier = "([^"]+)"', source('services/MainBundle.h'))[1]
        self.assertEqual(self.info['CFBundleIdentifier'], identifier)
        self.assertEqual(self.info['CFBundleExecutable'], 'stowpocket')
        icon = re.search(r'/(\w+)\.icns', source('main/macos/CMakeLists.txt'))[1]
        self.assertEqual(self.info['CFBundleIconFile'], icon)

    def test_has_every_key_that_the_code_reads(self):
        keys = re.findall(r'inline constexpr std::string_view \w+ = "(\w+)";', source('services/MainBundle.h'))
        self.assertGreater(len(keys), 2)
        self.assertLessEqual(set(keys), set(self.info))

    def test_is_an_agent_that_may_ask_the_finder(self):
        self.assertIs(self.info['LSUIElement'], True)
        self.assertTrue(self.info['NSAppleEventsUsageDescription'])
        self.assertEqual(self.info['NSPrincipalClass'], 'NSApplication')

    def test_the_build_gives_every_value(self):
        for key, value in self.info.items():
            self.assertNotIn('@', str(value), key)
            self.assertTrue(value or key == 'SUPublicEDKey', key)
        self.assertEqual(self.info['LSMinimumSystemVersion'], mac_clang.OLDEST_SYSTEM)
        self.assertIn(f'VERSION {self.info["CFBundleVersion"]} ', (PROJECT / 'CMakeLists.txt').read_text())

    def test_entitlements_allow_what_the_program_does(self):
        plain = plistlib.loads((PACKAGING / 'stowpocket.entitlements').read_bytes())
        sandboxed = plistlib.loads((PACKAGING / 'stowpocket-sandboxed.entitlements').read_bytes())
        self.assertNotIn('com.apple.security.app-sandbox', plain)
        self.assertTrue(plain['com.apple.security.automation.apple-events'])
        for right in ('app-sandbox', 'automation.apple-events', 'files.user-selected.read-write',
                      'files.bookmarks.app-scope', 'network.client'):
            self.assertIs(sandboxed[f'com.apple.security.{right}'], True, right)
        self.assertEqual(sandboxed['com.apple.security.temporary-exception.apple-events'], ['com.apple.finder'])
        services = sandboxed['com.apple.security.temporary-exception.mach-lookup.global-name']
        self.assertEqual(services, [self.info['CFBundleIdentifier'] + suffix for suffix in ('-spks', '-spki')])

    def test_the_disk_image_script_is_a_script(self):
        said = subprocess.run(['bash', '-n', PACKAGING / 'disk-image'], capture_output=True, text=True, check=False)
        self.assertEqual(said.returncode, 0, said.stderr)


if __name__ == '__main__':
    INFORMATION = pathlib.Path(sys.argv.pop(1))
    unittest.main()
