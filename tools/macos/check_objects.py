# SPDX-License-Identifier: MIT
"""Looks through the objects that check_types.py left: is every Objective-C method declared somewhere, and every symbol
that is needed found in a library that the program links?
    check_objects.py FOLDER"""
import pathlib
import re
import sys

import mac_clang
import mach_o

# What the languages' own libraries and the C library have, and what stands for @[] and @{} in CoreFoundation.
RUNTIME = re.compile(r'^_objc_|^_OBJC_(META)?CLASS_\$_NSObject$|^__objc_|^_OBJC_EHTYPE_id$|^__NSConcrete\w+Block$'
                     r'|^__Block_|^___CFConstantStringClassReference$|^___NS(Array|Dictionary)0__$|^___cxa_|^__Z'
                     r'|^___(gxx|objc)_personality_v0$|^__Unwind_Resume$|^___(dso_handle|dynamic_cast)$'
                     r'|^___stack_chk_(fail|guard)$|^_dispatch_')
C_LIBRARY = {'_abort', '_memcpy', '_memmove', '_memset', '_memcmp', '_strlen', '_bzero', '_fprintf', '_stderr',
             '_llround', '_getfsstat', '_kill', '_poll', '_read'}
METHOD = re.compile(r'^[-+]\[(\w+)(?:\(\w+\))? ([\w:]+)\]$')
OWN_CLASS = re.compile(r'^_OBJC_(?:META)?CLASS_\$_(\w+)$')


def undeclared_methods(objects, declared):
    """A misspelt method of a delegate compiles, since the right one is optional: it is declared nowhere."""
    found = []
    for path in objects:
        for symbol in mach_o.symbols(path)[0]:
            method = METHOD.match(symbol)
            # What the compiler itself makes for members that C++ or ARC destroys.
            if method and method[2] not in declared and not method[2].startswith('.cxx_'):
                found.append(f'{path.name}: {symbol} is declared nowhere')
    return sorted(found)


def owners():
    owner = {}
    for framework in mac_clang.FRAMEWORKS:
        for name in mac_clang.names_declared_by(framework)[0]:
            owner.setdefault(name, framework)
    return owner


def linked_frameworks():
    text = (mac_clang.ADAPTERS / 'CMakeLists.txt').read_text()
    return set(re.findall(r'-framework (\w+)', text)) | set(re.findall(r'find_library\(\w+ (\w+)', text))


def needed_frameworks(objects):
    """The frameworks that the objects need, and the symbols that nobody has."""
    owner = owners()
    defined, needed = set(), set()
    for path in objects:
        has, wants = mach_o.symbols(path)
        defined |= has
        needed |= wants
    frameworks, homeless = set(), []
    for symbol in sorted(needed - defined):
        name = (OWN_CLASS.match(symbol) or re.match(r'_(\w+)$', symbol) or [None, None])[1]
        if RUNTIME.match(symbol) or symbol in C_LIBRARY:
            continue
        if name in owner:
            frameworks.add(owner[name])
        else:
            homeless.append(f'nobody has {symbol}')
    return frameworks, homeless


def declared_selectors(sources):
    declared = set()
    for framework in mac_clang.FRAMEWORKS:
        declared |= mac_clang.names_declared_by(framework)[1]
    for source in sources:
        declared |= mac_clang.selectors_declared_in(source.read_text())
    return declared


def main(folder):
    sources = [*mac_clang.ADAPTERS.glob('*.mm'), *mac_clang.ADAPTERS.glob('*.h')]
    declared = declared_selectors(sources)
    complaints = []
    for architecture in mac_clang.ARCHITECTURES:
        objects = sorted((pathlib.Path(folder) / architecture).glob('*.o'))
        if len(objects) < 10:
            sys.exit(f'no objects in {folder}')
        complaints += undeclared_methods(objects, declared)
        frameworks, homeless = needed_frameworks(objects)
        complaints += homeless
        complaints += [f'{name} is needed but not linked' for name in sorted(frameworks - linked_frameworks())]
        complaints += [f'{name} is linked but not needed' for name in sorted(linked_frameworks() - frameworks)]
    print('\n'.join(complaints) or 'all methods are declared, all symbols have a home')
    return complaints


if __name__ == '__main__':
    sys.exit(1 if main(sys.argv[1]) else 0)
