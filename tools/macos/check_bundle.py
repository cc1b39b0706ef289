# SPDX-License-Identifier: MIT
"""Reads what makes the program a bundle: its information list and its entitlements.
    check_bundle.py INFO_PLIST"""
import pathlib
import plistlib
import re
import sys
import unittest

import mac_clang

PROJECT = pathlib.Path(__file__).resolve().parents[2]


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
        self.assertLessEqual(set(keys) - {'SUPublicEDKey'}, set(self.info))  # which only releases have

    def test_the_build_gives_every_value(self):
        for key, value in self.info.items():
            self.assertNotIn('@', str(value), key)
            self.assertTrue(value, key)
        self.assertEqual(self.info['LSMinimumSystemVersion'], mac_clang.OLDEST_SYSTEM)
        self.assertIn(f'VERSION {self.info["CFBundleVersion"]} ', (PROJECT / 'CMakeLists.txt').read_text())

    def test_only_the_sandboxed_entitlements_have_a_sandbox_and_the_services_of_the_updater(self):
        plain, sandboxed = (plistlib.loads((PROJECT / f'packaging/macos/stowpocket{kind}.entitlements').read_bytes())
                            for kind in ('', '-sandboxed'))
        self.assertNotIn('com.apple.security.app-sandbox', plain)
        services = sandboxed['com.apple.security.temporary-exception.mach-lookup.global-name']
        self.assertEqual(services, [self.info['CFBundleIdentifier'] + suffix for suffix in ('-spks', '-spki')])


if __name__ == '__main__':
    INFORMATION = pathlib.Path(sys.argv.pop(1))
    unittest.main()
