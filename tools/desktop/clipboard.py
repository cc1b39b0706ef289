# SPDX-License-Identifier: MIT
"""What the user copied before, which no program may lose."""
from terminal import run
from x_display import wait_for


class Clipboard:
    """Held by a program of its own, which writes down how often it is asked for it."""

    XCLIP = "xclip", "-selection", "clipboard", "-target"

    def __init__(self, desktop, text, kind="UTF8_STRING"):
        self.desktop, self.kind, self.copied = desktop, kind, desktop.home / "copied"
        self.copied.write_text(text)
        self.fill()

    def owner(self):
        return self.desktop.x.selection_owner("CLIPBOARD")

    def fill(self):
        before = self.owner()
        self.process = self.desktop.start(*self.XCLIP, self.kind, "-verbose", str(self.copied))
        wait_for(lambda: self.owner() not in (0, before), "the clipboard to be held")
        self.holder = self.owner()

    def is_held(self):
        return self.owner() == self.holder

    def was_read(self, times=1):
        """What it tells is the number of the request that it waits for; those for its kinds are not counted."""
        return f"selection request number {times + 1}" in (self.desktop.logs / "xclip.log").read_text()

    def text(self):
        """What would be pasted now, whoever holds it."""
        return run(self.desktop, *self.XCLIP, self.kind, "-out").out
