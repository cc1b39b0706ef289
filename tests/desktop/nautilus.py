# SPDX-License-Identifier: MIT
"""A file manager made with GTK 4, whose windows and whose words for screen readers are unlike those of the others."""
from x_display import wait_for

SELECTED = 23


class Nautilus:
    """A window on a folder. It keeps the place and size that it likes."""

    def __init__(self, desktop, folder, _):
        self.x, self.folder = desktop.x, folder
        desktop.start("nautilus", "--new-window", str(folder))
        self.window = wait_for(lambda: self.x.find(folder.name), "the window of Nautilus")
        self.program = desktop.tree.program("org.gnome.Nautilus")

    def selected_count(self):
        return sum(each.role == "grid cell" and each.has_state(SELECTED) for each in self.program.everything())

    def activate(self):
        place = self.x.rect(self.window)
        self.x.click(place.x + place.width - 60, place.y + place.height - 60)
        wait_for(lambda: self.x.active_window() == self.window, "the window to be active")

    def select_all(self):
        """Selects every file."""
        self.activate()
        count = len(list(self.folder.iterdir()))
        # What comes before the files are there, or before the view has the keyboard, is lost.
        wait_for(lambda: self.x.keys("Control_L", "a") or self.selected_count() == count, "the files to be selected")
