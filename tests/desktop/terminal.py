# SPDX-License-Identifier: MIT
"""A window that any key can be typed into, and a program run from the command line."""
import subprocess
from collections import namedtuple

from x_display import wait_for

Answer = namedtuple("Answer", "code out err")


def run(desktop, *command):
    """Runs a command in the home folder to its end. Bytes that are no UTF-8 come and go as in Python's file names."""
    ended = subprocess.run(list(map(str, command)), env=desktop.environment, cwd=desktop.home, stdin=subprocess.DEVNULL,
                           capture_output=True, encoding="utf-8", errors="surrogateescape", timeout=60, check=False)
    return Answer(ended.returncode, ended.stdout, ended.stderr)


class Terminal:
    """An xterm that writes down every byte the keyboard gives it."""

    def __init__(self, desktop):
        self.x, self.log = desktop.x, desktop.home / "typed"
        desktop.start("xterm", "-T", "terminal", "-geometry", "60x10+40+400", "-e", "stty raw -echo; exec cat > typed")
        self.window = wait_for(lambda: self.x.find("terminal"), "the terminal")
        wait_for(self.log.exists, "the terminal to listen")

    def centre(self):
        return self.x.rect(self.window).centre()

    def activate(self):
        self.x.click(*self.centre())
        wait_for(lambda: self.x.active_window() == self.window, "the terminal to be active")

    def typed(self):
        return self.log.read_bytes()
