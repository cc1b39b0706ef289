# SPDX-License-Identifier: MIT
"""What a text declares in Objective-C, read from clang's printout of its syntax tree (its JSON printer breaks down on
some headers)."""
import dataclasses
import re
import subprocess

NODE = re.compile(r'^([ |`-]*)(\w+) 0x[0-9a-f]+ (.*)$')
SUPERCLASS = re.compile(r"^\| [|`]-super ObjCInterface \w+ '(\w+)'")
VALUE = re.compile(r'^[ |`-]*value: Int (-?\d+)')
METHOD = re.compile(r"([-+]) (\S+) '([^']*)'(?::'([^']*)')?")
ARGUMENT = re.compile(r"'([^']*)'(?::'([^']*)')?[\w ]*$")
NAMED = re.compile(r"'(\w+)'")

# Nullability, ownership and tags, which only one of two headers may have.
QUALIFIER = re.compile(r'\b(_Nonnull|_Nullable|__autoreleasing|__strong|__unsafe_unretained|__kindof|const|enum|'
                       r'struct)\b')


def plain(type_name):
    """The type without what both sides need not say alike."""
    plain_name = re.sub(r'\binstancetype\b', 'id', QUALIFIER.sub('', type_name))
    while (shorter := re.sub(r'\b(\w+)\s*<[^<>]*>', r'\1', plain_name)) != plain_name:
        plain_name = shorter
    return re.sub(r'\s', '', plain_name)


@dataclasses.dataclass
class Interface:
    """A class or protocol with its categories. A method's types, the result's first, each as written and resolved."""
    parents: list = dataclasses.field(default_factory=list)
    methods: dict = dataclasses.field(default_factory=dict)


class Declarations:
    def __init__(self, command, source):
        options = ['-fsyntax-only', '-w', '-fno-color-diagnostics', '-Xclang', '-ast-dump', '-']
        printed = subprocess.run([*command, *options], input=source, capture_output=True, text=True, check=False)
        if printed.returncode != 0:
            raise RuntimeError(printed.stderr)
        self.interfaces = {}
        self.constants = {}
        self._interface = self._types = self._constant = None
        self._value = -1
        for line in printed.stdout.splitlines():
            self._read(line)

    def find(self, interface, method, seen=()):
        """The types of a method that a class has, itself or from those it stands on."""
        if interface not in self.interfaces or interface in seen:
            return None
        found = self.interfaces[interface]
        if method in found.methods:
            return found.methods[method]
        inherited = (self.find(parent, method, (*seen, interface)) for parent in found.parents)
        return next((types for types in inherited if types), None)

    def _read(self, line):
        if superclass := SUPERCLASS.match(line):
            self._interface.parents.append(superclass[1])
        elif (value := VALUE.match(line)) and self._constant:
            self.constants[self._constant] = self._value = int(value[1])
            self._constant = None
        elif node := NODE.match(line):
            self._read_node(len(node[1]) // 2, node[2], node[3])

    def _read_node(self, depth, kind, rest):
        if depth == 1:
            self._interface = self._types = self._constant = None
            self._value = -1
            if kind in ('ObjCInterfaceDecl', 'ObjCProtocolDecl'):
                self._open(rest.split()[-1])
        elif kind == 'EnumConstantDecl':
            # One without a value of its own follows the one before it.
            self._constant = rest.split(" '")[0].split()[-1]
            self._value += 1
            self.constants[self._constant] = self._value
        elif depth == 2 and kind == 'ObjCInterface':
            self._open(NAMED.search(rest)[1])
        elif depth == 2 and kind == 'ObjCProtocol' and self._interface:
            self._interface.parents.append(NAMED.search(rest)[1])
        elif depth == 2 and kind == 'ObjCMethodDecl' and self._interface:
            sign, selector, result, resolved = METHOD.search(rest).groups()
            self._types = self._interface.methods[sign + selector] = [(result, resolved or result)]
        elif depth == 3 and kind == 'ParmVarDecl' and self._types:
            written, resolved = ARGUMENT.search(rest).groups()
            self._types.append((written, resolved or written))

    def _open(self, name):
        self._interface = self.interfaces.setdefault(name, Interface())
