# SPDX-License-Identifier: MIT
"""Tests the checks in tools/macos: every marked line of faults.mm is refused and no other, a block that keeps a
reference is found, and so is a misspelt method of a delegate."""
import pathlib
import tempfile
import unittest

import check_objects
import check_types
import mac_clang

HERE = pathlib.Path(__file__).parent


def verify(text, architecture, *options, system=mac_clang.OLDEST_SYSTEM):
    with tempfile.TemporaryDirectory() as folder:
        source = pathlib.Path(folder) / 'faults.mm'
        source.write_text(text)
        return mac_clang.run([*mac_clang.command(architecture, system), *mac_clang.WARNINGS, *options,
                              '-ferror-limit=0', *mac_clang.OBJECTIVE_CXX, '-fsyntax-only',
                              '-Xclang', '-verify', '-Xclang', '-verify-ignore-unexpected=note', source])


class FaultsTest(unittest.TestCase):
    text = (HERE / 'faults.mm').read_text()

    def test_refuses_what_is_marked_and_nothing_else(self):
        for architecture in mac_clang.ARCHITECTURES:
            self.assertIs(verify(self.text, architecture), True)

    def test_minds_the_oldest_system(self):
        self.assertIs(verify(self.text, 'arm64', '-DBEFORE_LOGIN_ITEMS', system='12.0'), True)
        self.assertIsNot(verify(self.text, 'arm64', '-DBEFORE_LOGIN_ITEMS'), True)

    def test_finds_a_block_that_keeps_a_reference(self):
        text = '''#import <Foundation/Foundation.h>
namespace stowpocket { void (^later)(); struct Held { int value; };
void parameter(const Held& held) { later = ^{ static_cast<void>(held.value); }; }
void variable(Held* given) { Held& same = *given; later = ^{ ^{ static_cast<void>(same.value); }(); }; }
void copied(Held held) { const Held* const pointer = &held; later = ^{ static_cast<void>(held.value + pointer->value); }; }
}'''
        with tempfile.TemporaryDirectory() as folder:
            source = pathlib.Path(folder) / 'blocks.mm'
            source.write_text(text)
            words = [*mac_clang.command('arm64'), *mac_clang.OBJECTIVE_CXX]
            self.assertEqual(check_types.kept_references(words, source),
                             [f'blocks.mm: a block keeps the reference {name}' for name in ('held', 'same')])

    def test_finds_a_misspelt_method_of_a_delegate(self):
        source = HERE / 'misspelt_delegate.mm'
        with tempfile.TemporaryDirectory() as folder:
            compiled = pathlib.Path(folder) / 'misspelt.o'
            said = mac_clang.run([*mac_clang.command('arm64'), *mac_clang.WARNINGS, *mac_clang.OBJECTIVE_CXX, '-c',
                                  source, '-o', compiled])
            self.assertIs(said, True)
            found = check_objects.undeclared_methods([compiled], check_objects.declared_selectors([source]))
        self.assertEqual(found, ['misspelt.o: -[StowpocketMisspelt popoverDidClosed:] is declared nowhere'])


if __name__ == '__main__':
    unittest.main()
