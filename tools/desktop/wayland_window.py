# SPDX-License-Identifier: MIT
"""The program behind `WaylandWindow`: it drags the files of a folder, takes drops, and writes down what happens."""
import sys
from pathlib import Path

import gi
gi.require_version("Gtk", "3.0")
gi.require_version("Gdk", "3.0")
from gi.repository import Gdk, Gtk

Gdk.set_allowed_backends("wayland")
folder, log = Path(sys.argv[1]), open(sys.argv[2], "a", buffering=1)
uri_list = [Gtk.TargetEntry.new("text/uri-list", 0, 0)]


def tell(line):
    print(line, file=log)


window, area = Gtk.Window(title="a Wayland window"), Gtk.EventBox()
window.add(area)
area.drag_source_set(Gdk.ModifierType.BUTTON1_MASK, uri_list, Gdk.DragAction.COPY)
area.connect("drag-data-get",
             lambda _, context, data, *rest: data.set_uris([file.as_uri() for file in sorted(folder.iterdir())]))
area.connect("drag-begin", lambda *_: tell("drag begun"))
area.connect("drag-end", lambda *_: tell("drag ended"))
area.drag_dest_set(Gtk.DestDefaults.ALL, uri_list, Gdk.DragAction.COPY)
area.connect("drag-motion", lambda *_: tell("drag over it"))
area.connect("drag-data-received", lambda _, context, x, y, data, *rest: tell(f"dropped {' '.join(data.get_uris())}"))
area.connect("button-press-event", lambda *_: tell("pressed"))
window.connect("focus-in-event", lambda *_: tell("active"))
window.maximize()
window.show_all()
Gtk.main()
