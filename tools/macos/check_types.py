# SPDX-License-Identifier: MIT
"""Compiles every adapter for one processor and leaves the objects for check_objects.py; or the core, of which nothing
is left.
    check_types.py ARCHITECTURE FOLDER
    check_types.py core FOLDER"""
import pathlib
import re
import subprocess
import sys

import mac_clang

# Read once for all; what each file includes itself is found out by the compiler of a real build.
STANDARD_HEADERS = '''algorithm array atomic chrono cmath cstdio functional map memory optional set span string
    string_view utility variant vector'''.split()


def prepared(words, language, folder):
    """The options that make all files share one reading of the standard library."""
    folder.mkdir(parents=True, exist_ok=True)
    prefix = folder / 'standard.h'
    prefix.write_text(''.join(f'#include <{header}>\n' for header in STANDARD_HEADERS))
    compiled = folder / 'standard.pch'
    said = mac_clang.run([*words, '-x', f'{language}-header', prefix, '-o', compiled])
    if said is not True:
        sys.exit(f'the check itself is broken: {said}')
    return [*words, '-include-pch', compiled, '-x', language]


def refused(words, sources, options):
    """How many of the sources do not pass; what the compiler says of them is printed."""
    if len(sources) < 10:
        sys.exit(f'the check itself is broken: it found {len(sources)} sources')
    count = 0
    for source in sources:
        said = mac_clang.run([*words, source, *options(source)])
        if said is not True:
            count += 1
            print(said)
    print(f'{len(sources) - count} of {len(sources)} sources pass')
    return count


def kept_references(words, source):
    """A block copies what it captures, but of a reference the address: of a value that may be gone when it runs."""
    dump = ['-fsyntax-only', '-Xclang', '-ast-dump', '-Xclang', '-ast-dump-filter=towpocket']
    command = [str(word) for word in [*words, *dump, source]]
    tree = subprocess.run(command, capture_output=True, text=True, check=True).stdout
    kept = re.findall(r"-capture (?:nested )?(?:ParmVar|Var) 0x\w+ '(\w+)' '[^']*&'", tree)
    return sorted({f'{source.name}: a block keeps the reference {name}' for name in kept})


def check_core(folder):
    sources = [source for room in mac_clang.CORE for source in sorted((mac_clang.PROJECT / 'src' / room).glob('*.cpp'))
               if source.name != 'StowpocketApp.cpp']
    sources.append(mac_clang.PROJECT / 'src/platform/qt/WorkerThreads.cpp')  # the one beyond it that calls the system
    words = prepared([*mac_clang.command('arm64'), '-Wall', '-Wextra', '-Werror'], 'c++', folder / 'core')
    return refused(words, sources, lambda source: ['-fsyntax-only'])


def check_adapters(architecture, folder):
    folder = folder / architecture
    for old in folder.glob('*.o'):
        old.unlink()
    words = prepared([*mac_clang.command(architecture), *mac_clang.WARNINGS], 'objective-c++', folder)
    sources = sorted(mac_clang.ADAPTERS.glob('*.mm'))
    count = refused(words, sources, lambda source: ['-c', '-o', folder / (source.stem + '.o')])
    if count or architecture != mac_clang.ARCHITECTURES[0]:
        return count
    kept = [fault for source in sources if '^' in source.read_text() for fault in kept_references(words, source)]
    print('\n'.join(kept) or 'no block keeps a reference')
    return len(kept)


if __name__ == '__main__':
    what, where = sys.argv[1], pathlib.Path(sys.argv[2])
    sys.exit(1 if (check_core(where) if what == 'core' else check_adapters(what, where)) else 0)
