# SPDX-License-Identifier: MIT
"""What the user copied before, which no program may lose."""
import subprocess

from x_display import wait_for


class Clipboard:
    """Held by a program of its own, which writes down how often it is asked for it."""

    def __init__(self, desktop, text, kind="UTF8_STRING"):
        self.desktop, self.kind, self.copied = desktop, kind, desktop.home / "copied"
        self.copied.write_text(text)
        self.fill()

    def owner(self):
        return self.desktop.x.selection_owner("CLIPBOARD")

    def fill(self):
        before = self.owner()
        self.process = self.desktop.start("xclip", "-verbose", "-selection", "clipboard", "-target", self.kind, str(self.copied))
        wait_for(lambda: self.owner() not in (0, before), "the clipboard to be held")
        self.holder = self.owner()

    def is_held(self):
        return self.owner() == self.holder

    def was_read(self, times=1):
        """What it tells is the number of the request that it waits for; those for its kinds are not counted."""
        return f"selection request number {times + 1}" in (self.desktop.logs / "xclip.log").read_text()

    def text(self):
        """What would be pasted now, whoever holds it."""
        return subprocess.run(["xclip", "-out", "-selection", "clipboard", "-target", self.kind], env=self.desktop.environment, capture_output=True, text=True,
                              timeout=30).stdout
