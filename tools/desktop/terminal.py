# SPDX-License-Identifier: MIT
"""A program run from the command line."""
import subprocess
from collections import namedtuple

Answer = namedtuple("Answer", "code out err")


def run(desktop, *command):
    """Runs a command in the home folder to its end. Bytes that are no UTF-8 come and go as in Python's file names."""
    ended = subprocess.run(list(map(str, command)), env=desktop.environment, cwd=desktop.home, stdin=subprocess.DEVNULL,
                           capture_output=True, encoding="utf-8", errors="surrogateescape", timeout=60, check=False)
    return Answer(ended.returncode, ended.stdout, ended.stderr)
