# SPDX-License-Identifier: MIT
"""Reads the symbols of a Mach-O object file with 64-bit headers, as clang writes it."""
import struct

_MAGIC = 0xFEEDFACF
_LOAD_SYMTAB = 2
_HEADER_SIZE = 32
_SYMBOL_SIZE = 16
_TYPE_MASK, _UNDEFINED = 0x0E, 0x00


def symbols(path):
    """Two sets: the names defined in the object, and those that it needs."""
    data = path.read_bytes()
    magic, _, _, _, command_count = struct.unpack_from('<5I', data)
    if magic != _MAGIC:
        raise ValueError(f'{path} is no Mach-O object')
    defined, needed = set(), set()
    at = _HEADER_SIZE
    for _ in range(command_count):
        command, size = struct.unpack_from('<2I', data, at)
        if command == _LOAD_SYMTAB:
            table, count, strings, _ = struct.unpack_from('<4I', data, at + 8)
            for index in range(count):
                name, kind = struct.unpack_from('<IB', data, table + index * _SYMBOL_SIZE)
                start = strings + name
                text = data[start:data.index(0, start)].decode()
                (needed if kind & _TYPE_MASK == _UNDEFINED else defined).add(text)
        at += size
    return defined, needed
