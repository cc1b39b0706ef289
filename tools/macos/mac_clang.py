# SPDX-License-Identifier: MIT
"""Calls clang as the compiler for macOS, with our own declarations of the system's calls instead of its headers."""
import json
import pathlib
import platform
import re
import subprocess

PROJECT = pathlib.Path(__file__).resolve().parents[2]
ADAPTERS = PROJECT / 'src/platform/macos'
DECLARATIONS = PROJECT / 'tools/macos/declarations'
ARCHITECTURES = ('arm64', 'x86_64')
OLDEST_SYSTEM = '13.0'
CLANG = pathlib.Path('/usr/lib/llvm-14/bin/clang')
# About as old as the one that Xcode 15 brings; the one before it lacks algorithms on ranges.
STANDARD_LIBRARY = pathlib.Path('/usr/lib/llvm-16/include/c++/v1')
OBJECTIVE_CXX = ('-x', 'objective-c++')

CORE = ('foundation', 'services', 'platform/posix', 'shelf', 'intake', 'updates', 'presentation', 'app', 'cli')

# Each stands on those before it.
FRAMEWORKS = ('CoreFoundation', 'CoreGraphics', 'Foundation', 'Carbon', 'AppKit', 'QuickLookThumbnailing',
              'ServiceManagement', 'Sparkle', 'Quartz')

# What cmake/Warnings.cmake asks of every target, and what concerns Objective-C.
WARNINGS = '''-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast -Woverloaded-virtual
    -Wnon-virtual-dtor -Wcast-align -Wdouble-promotion -Wformat=2 -Wimplicit-fallthrough -Wnull-dereference -Werror
    -Wunguarded-availability -Wundeclared-selector -Wselector -Wstrict-selector-match -Wnullability-completeness
    -Wnullable-to-nonnull-conversion -Wobjc-interface-ivars'''.split()


def answer(*words):
    return subprocess.run(words, capture_output=True, text=True, check=True).stdout.strip()


def command(architecture, system=OLDEST_SYSTEM):
    """The C library's headers are this machine's: they use a name that clang keeps for itself on macOS, and know the
    size of a word only from the name of this machine's processor."""
    is_foreign = architecture == 'arm64' and platform.machine() == 'x86_64'
    own_processor = ['-D__x86_64__=1'] if is_foreign else []
    folders = [DECLARATIONS / 'libcxx', STANDARD_LIBRARY, answer(CLANG, '-print-resource-dir') + '/include',
               '/usr/include/' + answer('gcc', '-print-multiarch'), '/usr/include']
    return [str(CLANG), '-target', f'{architecture}-apple-macos{system}', '-std=c++20', '-fobjc-arc', '-fblocks',
            '-stdlib=libc++', '-nostdlibinc', '-nostdinc++', '-D_GNU_SOURCE=1', '-U__nonnull', *own_processor,
            *(f'-isystem{folder}' for folder in folders), f'-I{DECLARATIONS}', f'-I{PROJECT / "src"}']


def run(words):
    """True, or what the compiler said."""
    result = subprocess.run([str(word) for word in words], capture_output=True, text=True, check=False)
    return True if result.returncode == 0 else result.stdout + result.stderr


def names_declared_by(framework):
    """The names of classes, functions, constants and methods in a framework and all that it stands on."""
    words = [*command('arm64'), *OBJECTIVE_CXX, '-fsyntax-only', '-Xclang', '-ast-dump=json', '-']
    source = f'#import <{framework}/{framework}.h>\n'
    tree = json.loads(subprocess.run(words, input=source, capture_output=True, text=True, check=True).stdout)
    names, methods = set(), set()

    def visit(node):
        kind = node.get('kind')
        if kind == 'ObjCMethodDecl':
            methods.add(node['name'])
        elif kind in ('ObjCInterfaceDecl', 'FunctionDecl', 'VarDecl') and 'name' in node:
            names.add(node['name'])
        if kind != 'FunctionDecl':
            for child in node.get('inner', []):
                visit(child)

    visit(tree)
    return names, methods


def selectors_declared_in(text):
    """The methods between @interface and @end in a source text."""
    selectors = set()
    for block in re.findall(r'^@interface\b.*?^@end', text, re.DOTALL | re.MULTILINE):
        for declaration in re.findall(r'^[-+]\s*(.*?);', block, re.DOTALL | re.MULTILINE):
            while (stripped := re.sub(r'\([^()]*\)', ' ', declaration)) != declaration:
                declaration = stripped
            selectors.add(''.join(re.findall(r'\w+:', declaration)) or declaration.split()[0])
    return selectors
