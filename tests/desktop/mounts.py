# SPDX-License-Identifier: MIT
"""A volume that comes and goes, seen by the programs of one test only."""
import ctypes
import os
import unittest
from pathlib import Path

CLONE_NEWNS, CLONE_NEWUSER = 0x20000, 0x10000000
MS_BIND, MS_REC, MS_PRIVATE, MNT_DETACH = 0x1000, 0x4000, 0x40000, 2
libc = ctypes.CDLL(None, use_errno=True)
libc.mount.argtypes = [ctypes.c_char_p, ctypes.c_char_p, ctypes.c_char_p, ctypes.c_ulong, ctypes.c_char_p]


def check(failed):
    if failed:
        raise unittest.SkipTest(f"mounting is not allowed here: {os.strerror(ctypes.get_errno())}")


def take_own_mounts():
    """From now on, what this process and those it starts mount stays theirs. Comes before the first thread and the first program."""
    user, group = os.getuid(), os.getgid()
    check(libc.unshare(CLONE_NEWNS if user == 0 else CLONE_NEWNS | CLONE_NEWUSER))
    if user != 0:
        for name, text in (("setgroups", "deny"), ("uid_map", f"{user} {user} 1"), ("gid_map", f"{group} {group} 1")):
            Path(f"/proc/self/{name}").write_text(text)
    check(libc.mount(b"none", b"/", None, MS_REC | MS_PRIVATE, None))


class Stick:
    """A disk in memory that keeps its files while it is pulled out of `folder`."""

    def __init__(self, desktop):
        self.disk, self.folder = desktop.folder("disk"), desktop.folder("stick")
        check(libc.mount(b"stick", os.fsencode(self.disk), b"tmpfs", 0, None))

    def plug_in(self):
        check(libc.mount(os.fsencode(self.disk), os.fsencode(self.folder), None, MS_BIND, None))

    def pull_out(self):
        libc.umount2(os.fsencode(self.folder), MNT_DETACH)

    def remove(self):
        self.pull_out()
        libc.umount2(os.fsencode(self.disk), MNT_DETACH)
