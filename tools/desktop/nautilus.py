# SPDX-License-Identifier: MIT
"""A file manager made with GTK 4, whose windows and whose words for screen readers are unlike those of the others."""
from x_display import wait_for

SELECTED = 23


class Nautilus:
    """A window on a folder. It keeps the place and size that it likes."""

    def __init__(self, desktop, folder, _):
        self.x, self.count = desktop.x, len(list(folder.iterdir()))
        # Its windows take seconds to come where OpenGL is drawn in software.
        desktop.environment |= {"GSK_RENDERER": "cairo", "GSETTINGS_BACKEND": "memory"}
        # With a file to select it gives the files the keyboard, as no click and no key does before they are there.
        desktop.start("nautilus", "--select", str(min(folder.iterdir())))
        self.window = wait_for(lambda: self.x.find(folder.name), "the window of Nautilus")
        self.program = desktop.tree.program("org.gnome.Nautilus")
        self.grid = wait_for(lambda: next((each for each in self.program.everything() if each.role == "grid"), None),
                             "the files' grid")
        wait_for(lambda: any(cell.is_focused() for cell in self.selected()), "the selected file to have the keyboard")

    def selected(self):
        return [cell for cell in self.grid.children() if cell.has_state(SELECTED)]

    def select(self, count, *keys):
        wait_for(lambda: self.x.active_window() == self.window, "the window to be active")
        self.x.keys(*keys)
        wait_for(lambda: len(self.selected()) == count, f"{count} files to be selected")

    def select_all(self):
        wait_for(lambda: len(self.grid.children()) == self.count, f"{self.count} files in the window")
        self.select(self.count, "Control_L", "a")

    def select_first(self):
        self.select(1, "Home")
