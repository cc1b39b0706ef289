# SPDX-License-Identifier: MIT
"""Compares our declarations of the system's calls with those that GNUstep's authors wrote from the same public
documentation. Where both have a method or a constant they must agree."""
import pathlib
import tempfile
import unittest

import mac_clang
from declarations import Declarations, plain

GNUSTEP = '/usr/include/GNUstep'
MISDECLARED = pathlib.Path(__file__).with_name('misdeclared.h')
# Arrays and dictionaries of C are made by the compiler for @[] and @{}, which checks them itself.
LITERAL = 'a type parameter where GNUstep has `id`'
DIFFERENT = {
    'NSArray +arrayWithObjects:count:': LITERAL,
    'NSDictionary +dictionaryWithObjects:forKeys:count:': LITERAL,
    'NSItemProvider -registerDataRepresentationForTypeIdentifier:visibility:loadHandler:':
        'GNUstep names the type of the handler\'s own handler',
    'NSItemProvider -loadFileRepresentationForTypeIdentifier:completionHandler:':
        'GNUstep hands the error over by reference, which no handler of an answer does',
}
# Constants that were renamed after GNUstep took them over.
FORMER_NAMES = {
    **{f'NSRectEdge{edge}': f'NS{edge}Edge' for edge in ('MinX', 'MinY', 'MaxX', 'MaxY')},
    **{f'NSEventMask{event}': f'NS{event}Mask'
       for event in ('LeftMouseDown', 'LeftMouseUp', 'RightMouseDown', 'KeyDown')},
    **{f'NSEventModifierFlag{key}': f'NS{former}KeyMask' for key, former in
       {'Shift': 'Shift', 'Control': 'Control', 'Option': 'Alternate', 'Command': 'Command'}.items()},
    **{f'NSAlertStyle{style}': f'NS{style}AlertStyle' for style in ('Warning', 'Informational', 'Critical')},
}


def ours(source):
    return Declarations([*mac_clang.command('x86_64'), *mac_clang.OBJECTIVE_CXX], source)


def theirs():
    with tempfile.TemporaryDirectory() as folder:
        # GNUstep asks for this one when blocks are on; clang's own support of blocks does without.
        missing = pathlib.Path(folder) / 'objc/blocks_runtime.h'
        missing.parent.mkdir()
        missing.touch()
        compiler_headers = mac_clang.answer('gcc', '-print-file-name=include')
        return Declarations([str(mac_clang.CLANG), '-x', 'objective-c', '-fblocks', '-fobjc-runtime=gcc',
                             '-isystem', folder, '-isystem', GNUSTEP, '-idirafter', compiler_headers, '-DGNUSTEP',
                             '-DGNUSTEP_BASE_LIBRARY=1', '-DGNU_GUI_LIBRARY=1', '-D_NATIVE_OBJC_EXCEPTIONS',
                             '-fexceptions', '-fobjc-exceptions', '-fconstant-string-class=NSConstantString'],
                            '#import <AppKit/AppKit.h>\n')


def values_of_both(own, witness):
    pairs = {name: (value, witness.constants.get(FORMER_NAMES.get(name, name)))
             for name, value in own.constants.items()}
    return {name: pair for name, pair in pairs.items() if pair[1] is not None}


def alike(interface, written, resolved):
    """A type may be written with the same name, resolve to the same one, or be the class itself for `id`."""
    return written[0] == written[1] or resolved[0] == resolved[1] or set(written) == {'id', interface + '*'}


def compared(own, witness):
    """The methods on which both agree, those on which they do not, with both types, and those that only we have."""
    same, different, unknown = [], {}, []
    for interface, has in own.interfaces.items():
        for method, types in has.methods.items():
            name = f'{interface} {method}'
            # What is a protocol for us was a category of every object once.
            other = witness.find(interface, method) or witness.find('NSObject', method)
            if other is None:
                unknown.append(name)
            elif all(alike(interface, *([plain(side[form]) for side in pair] for form in (0, 1)))
                     for pair in zip(types, other)):
                same.append(name)
            else:
                different[name] = types, other
    return same, different, unknown


class WitnessTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.witness = theirs()

    def test_methods_and_constants_agree(self):
        own = ours(''.join(f'#import <{framework}/{framework}.h>\n' for framework in mac_clang.FRAMEWORKS))
        same, different, unknown = compared(own, self.witness)
        constants = values_of_both(own, self.witness)
        print(f'{len(same)} methods and {len(constants)} constants are the same, {len(different)} methods differ as '
              f'they may, {len(unknown)} are unknown to GNUstep:', *unknown, sep='\n  ')
        self.assertEqual(different.keys(), DIFFERENT.keys(), different)
        self.assertEqual({name: values for name, values in constants.items() if values[0] != values[1]}, {})
        self.assertGreater(len(same), 150)
        self.assertGreater(len(constants), 35)

    def test_finds_every_mistake(self):
        own = ours(f'#import "{MISDECLARED}"\n')
        _, different, unknown = compared(own, self.witness)
        self.assertEqual(different.keys() - DIFFERENT.keys(), {
            'NSWindow -makeFirstResponder:', 'NSWindow -setAlphaValue:', 'NSWindow -setFrameOrigin:',
            'NSWindow -convertBaseToScreen:', 'NSView -opaqueAncestor'})
        self.assertLessEqual({'NSView +setNeedsDisplay:', 'NSView -setDoubleAction:'}, set(unknown))
        self.assertNotIn('NSWindow -setHidesOnDeactivate:', unknown)
        self.assertEqual(values_of_both(own, self.witness)['NSOrderedSame'], (2, 0))


if __name__ == '__main__':
    unittest.main()
