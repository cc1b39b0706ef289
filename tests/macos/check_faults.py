# SPDX-License-Identifier: MIT
"""Tests the checks in tools/macos: every marked line below is refused and no other, a block that keeps a reference is
found, and so is a misspelt method of a delegate."""
import pathlib
import tempfile
import unittest

import check_objects
import check_types
import mac_clang

IMPORTS = '''#import <AppKit/AppKit.h>
#import <ServiceManagement/ServiceManagement.h>
'''
FAULTS = IMPORTS + '''void faults(NSPopover* popover, NSStatusItem* item, NSArray<NSURL*>* urls) {
    [urls[0] startAccessingSecurityScopeResource];         // expected-error {{startAccessingSecurityScopeResource}}
    static_cast<void>(@selector(clickd:));                 // expected-error {{undeclared selector 'clickd:'}}
    static_cast<void>([NSURL fileURLWithPath:nil isDirectory:NO]);               // expected-error {{null passed}}
    [popover showRelativeToRect:NSZeroRect ofView:item.button preferredEdge:1];  // expected-error 1+ {{}}
    static_cast<void>([NSURL URLWithString:urls[0]]);                            // expected-error {{'NSString *}}
}
'''
GUARDED = IMPORTS + 'id service() { return SMAppService.mainAppService; }  // expected-error 1+ {{only available}}\n'
BLOCKS = '''#import <Foundation/Foundation.h>
namespace stowpocket { void (^later)(); struct Held { int value; };
void parameter(const Held& held) { later = ^{ static_cast<void>(held.value); }; }
void variable(Held* given) { Held& same = *given; later = ^{ ^{ static_cast<void>(same.value); }(); }; }
void copied(Held held) { const Held* const at = &held; later = ^{ static_cast<void>(held.value + at->value); }; }
}'''
DELEGATE = IMPORTS + '''@interface StowpocketMisspelt : NSObject <NSPopoverDelegate>
@end
@implementation StowpocketMisspelt
- (void)popoverDidClosed:(NSNotification*)notification {
}
@end
'''


class FaultsTest(unittest.TestCase):
    def compiled(self, text, *options, architecture='arm64', system=mac_clang.OLDEST_SYSTEM):
        """The command, the source, and True or what the compiler says."""
        folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        source = folder / 'faults.mm'
        source.write_text(text)
        words = [*mac_clang.command(architecture, system), *mac_clang.WARNINGS, *mac_clang.OBJECTIVE_CXX]
        return words, source, mac_clang.run([*words, *options, source, '-o', folder / 'faults.o'])

    def test_refuses_what_is_marked_and_nothing_else(self):
        verify = ('-fsyntax-only', '-ferror-limit=0', '-Xclang', '-verify', '-Xclang', '-verify-ignore-unexpected=note')
        for architecture in mac_clang.ARCHITECTURES:
            self.assertIs(self.compiled(FAULTS, *verify, architecture=architecture)[2], True)
        self.assertIs(self.compiled(GUARDED, *verify, system='12.0')[2], True)
        self.assertIsNot(self.compiled(GUARDED, *verify)[2], True)

    def test_finds_what_compiles(self):
        words, source, _ = self.compiled(BLOCKS, '-c')
        self.assertEqual(check_types.kept_references(words, source),
                         [f'faults.mm: a block keeps the reference {name}' for name in ('held', 'same')])
        _, source, said = self.compiled(DELEGATE, '-c')
        self.assertIs(said, True)
        self.assertEqual(check_objects.undeclared_methods([source.with_suffix('.o')],
                                                          check_objects.declared_selectors([source])),
                         ['faults.o: -[StowpocketMisspelt popoverDidClosed:] is declared nowhere'])


if __name__ == '__main__':
    unittest.main()
