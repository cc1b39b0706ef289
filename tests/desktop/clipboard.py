# SPDX-License-Identifier: MIT
"""What the user copied before, which no program may lose."""
import subprocess

from x_display import wait_for


class Clipboard:
    """Held by a program of its own, which writes down how often it is asked for it."""

    def __init__(self, desktop, text, kind="UTF8_STRING"):
        self.desktop, self.kind = desktop, kind
        copied = desktop.home / "copied"
        copied.write_text(text)
        before = desktop.x.selection_owner("CLIPBOARD")
        desktop.start("xclip", "-verbose", "-selection", "clipboard", "-target", kind, str(copied))
        wait_for(lambda: desktop.x.selection_owner("CLIPBOARD") not in (0, before), "the clipboard to be held")

    def was_read(self, times=1):
        """Its kinds are asked for first, then what it holds."""
        return f"selection request number {2 * times}" in (self.desktop.logs / "xclip.log").read_text()

    def text(self):
        """What would be pasted now, whoever holds it."""
        return subprocess.run(["xclip", "-out", "-selection", "clipboard", "-target", self.kind], env=self.desktop.environment, capture_output=True, text=True,
                              timeout=30).stdout
