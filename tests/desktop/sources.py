# SPDX-License-Identifier: MIT
"""Programs that drag what is no file yet."""
import sys
import zipfile
from pathlib import Path

from drag import Drag
from x_display import wait_for


class Archive:
    """A window on an archive, from which files can be dragged; they are unpacked only where they are dropped."""

    def __init__(self, desktop, *names):
        self.x = desktop.x
        archive = desktop.home / "papers.zip"
        with zipfile.ZipFile(archive, "w") as packed:
            for name in names:
                packed.writestr(name, f"content of {name}")
        desktop.start("file-roller", str(archive))
        self.program = desktop.tree.program("file-roller")

    def drag(self, name):
        cell = wait_for(lambda: self.program.find(name, "table cell"), f"{name} in the archive")
        return Drag(self.x, cell.centre())


class Picture:
    """A window with a picture that can be dragged and is nothing but its pixels."""

    def __init__(self, desktop, png):
        self.desktop, self.x = desktop, desktop.x
        desktop.start(sys.executable, __file__, str(png))
        self.window = wait_for(lambda: self.x.find("picture"), "the picture")

    def drag(self):
        return Drag(self.x, self.x.rect(self.window).centre())

    def was_read(self):
        return "read" in (self.desktop.logs / f"{Path(sys.executable).name}.log").read_text()


def show_picture(png):
    """The program behind `Picture`."""
    import gi
    gi.require_version("Gdk", "3.0")  # where GTK 4 is there too, it would come first
    gi.require_version("Gtk", "3.0")
    from gi.repository import Gdk, Gtk

    def hand_over(_, _context, data, *_rest):
        print("read", flush=True)
        data.set(data.get_target(), 8, Path(png).read_bytes())

    window, area = Gtk.Window(title="picture"), Gtk.EventBox()
    window.set_default_size(200, 150)
    window.add(area)
    area.drag_source_set(Gdk.ModifierType.BUTTON1_MASK, [Gtk.TargetEntry.new("image/png", 0, 0)], Gdk.DragAction.COPY)
    area.connect("drag-data-get", hand_over)
    window.show_all()
    Gtk.main()


if __name__ == "__main__":
    show_picture(sys.argv[1])
