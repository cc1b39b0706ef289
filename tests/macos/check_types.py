# SPDX-License-Identifier: MIT
"""Compiles every adapter for one processor and leaves the objects for check_objects.py.
    check_types.py ARCHITECTURE FOLDER"""
import pathlib
import sys

import mac_clang

# Read once for all; what each file includes itself is found out by the compiler of a real build.
STANDARD_HEADERS = '''algorithm array atomic chrono cmath cstdio functional map memory optional set span string
    string_view utility variant vector'''.split()


def main(architecture, folder):
    folder = pathlib.Path(folder) / architecture
    folder.mkdir(parents=True, exist_ok=True)
    for old in folder.glob('*.o'):
        old.unlink()
    words = [*mac_clang.command(architecture), *mac_clang.WARNINGS]
    prefix = folder / 'standard.h'
    prefix.write_text(''.join(f'#include <{header}>\n' for header in STANDARD_HEADERS))
    compiled = folder / 'standard.pch'
    said = mac_clang.run([*words, '-x', 'objective-c++-header', prefix, '-o', compiled])
    sources = sorted(mac_clang.ADAPTERS.glob('*.mm'))
    if said is not True or len(sources) < 10:
        sys.exit(f'the check itself is broken, it found {len(sources)} adapters: {said}')
    refused = 0
    for source in sources:
        said = mac_clang.run([*words, '-include-pch', compiled, *mac_clang.OBJECTIVE_CXX, '-c', source,
                              '-o', folder / (source.stem + '.o')])
        if said is not True:
            refused += 1
            print(said)
    print(f'{len(sources) - refused} of {len(sources)} adapters pass for {architecture}')
    return refused


if __name__ == '__main__':
    sys.exit(1 if main(*sys.argv[1:]) else 0)
