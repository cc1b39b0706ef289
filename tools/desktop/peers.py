# SPDX-License-Identifier: MIT
"""The programs that share the desktop with ours: panels that show tray icons, file managers and an archive."""
import signal
import zipfile

from drag import Drag
from x_display import Rect, wait_for

PANEL = """<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array"><value type="int" value="1"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="length" type="uint" value="100"/><property name="size" type="uint" value="28"/>
      <property name="plugin-ids" type="array"><value type="int" value="1"/><value type="int" value="2"/></property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="separator"><property name="expand" type="bool" value="true"/></property>
    <property name="plugin-2" type="string" value="systray"/>
  </property>
</channel>
"""
PCMANFM = "[System]\nFallbackIconThemeName=Adwaita\n"
LEFT, RIGHT = Rect(10, 300, 580, 520), Rect(660, 420, 580, 420)


def start_panel(desktop, name):
    """Starts "xfce4-panel" or "trayer" along the upper edge, with its icons at the right."""
    if name == "trayer":
        return desktop.start("trayer", "--edge", "top", "--align", "right", "--widthtype", "request", "--height", "28")
    settings = desktop.home / "config/xfce4/xfconf/xfce-perchannel-xml"
    settings.mkdir(parents=True, exist_ok=True)
    (settings / "xfce4-panel.xml").write_text(PANEL)
    return desktop.start("xfce4-panel", "--disable-wm-check")


class CopyingTray:
    """A tray that shows only a copy of what it takes in, and keeps that in a window of its own right below the root."""

    def __init__(self, x):
        self.x, self.window = x, x.manage("_NET_SYSTEM_TRAY_S0")

    def take_in(self, title):
        window = wait_for(lambda: next(self.x.titled(title.__eq__), None), f"{title} to be offered")
        window.reparent(self.x.new_window(), 0, 0)
        window.map()
        self.x.send(window, 0, "_XEMBED")


def embed_silently(x, title):
    """Takes a window into a bar of a tray's as JWM does, which does not say that it has embedded it; gives both."""
    tray = x.manage("_NET_SYSTEM_TRAY_S0")
    window = wait_for(lambda: next(x.titled(title.__eq__), None), f"{title} to be offered")
    bar = x.new_window()
    bar.configure(x=600, width=100)
    slot = bar.create_window(40, 0, 24, 24, 0, depth=0)
    window.reparent(slot, 0, 0)
    window.configure(width=24, height=24)
    window.map()
    slot.map()
    x.sync()
    return tray, bar


class FileManager:
    """A window on a folder, in icon view."""

    def __init__(self, desktop, folder, place):
        self.desktop, self.x, self.folder = desktop, desktop.x, folder
        title = self.open()
        self.window = wait_for(lambda: self.x.find(title), f"the window {title}")
        self.window.configure(**place._asdict())
        wait_for(lambda: self.x.rect(self.window)[2:] == place[2:], f"the window {title} to be as large as asked")
        self.frame = wait_for(lambda: desktop.tree.program(self.program).find(title), f"the accessible window {title}")
        self.status = wait_for(self.find_status, "the status bar")

    def activate(self):
        title_bar = self.x.rect(self.window)
        self.x.click(title_bar.x + 150, title_bar.y - 8)
        wait_for(lambda: self.x.active_window() == self.window, "the window to be active")

    def wait_for_count(self, count):
        wait_for(lambda: self.status.name.startswith(f"{count} "), f"{count} files in the window")

    def select_all(self):
        """Selects every file and gives a place where a drag of them begins."""
        count = len(list(self.folder.iterdir()))
        self.wait_for_count(count)
        self.select(lambda: self.x.keys("Control_L", "a"))
        return self.first_icon()

    def select_first(self):
        self.select(lambda: self.x.click(*self.first_icon()))

    def select(self, act):
        before = self.status.name
        self.activate()
        act()
        wait_for(lambda: self.status.name != before, "the files to be selected")

    def is_text_edited(self):
        """True while a name or the folder's path has the keyboard."""
        program = self.desktop.tree.program(self.program)
        return any(each.role in ("text", "entry") and each.is_focused() for each in program.everything())

    def blank_place(self):
        """A place in the view where no file lies."""
        view = self.view()
        return view.x + view.width - 24, view.y + view.height - 24

    def drag_all(self):
        return Drag(self.x, self.select_all())

    def confirm_drop(self):
        """Does what a user has to do after letting go, so that the files are copied."""


class Thunar(FileManager):
    program = "thunar"

    def open(self):
        self.process = self.desktop.start("thunar", str(self.folder))
        return f"{self.folder.name} - Thunar"

    def find_status(self):
        return self.frame.find(role="statusbar")

    def view(self):
        return self.frame.find("Icon view").rect()

    def first_icon(self):
        # Its icons are not in the accessibility tree; the first one lies in the upper left corner.
        view = self.view()
        return view.x + 42, view.y + 40


class PcmanfmQt(FileManager):
    program = "pcmanfm-qt"

    def open(self):
        settings = self.desktop.home / "config/pcmanfm-qt/default"
        settings.mkdir(parents=True, exist_ok=True)
        (settings / "settings.conf").write_text(PCMANFM)
        process = self.desktop.start("pcmanfm-qt", str(self.folder))
        try:
            wait_for(lambda: self.x.find(self.folder.name), "its window", limit=10)
        except TimeoutError:
            # One start of some 200 on a busy machine: libfm-qt 1.2 waits for a job that has ended before.
            self.desktop.end(process, signal.SIGKILL)
            self.desktop.start("pcmanfm-qt", str(self.folder))
        return self.folder.name

    def find_status(self):
        bar = self.frame.find(role="status bar")
        return bar and bar.find(role="label")

    def view(self):
        return self.frame.find(role="layered pane").find(role="list").rect()

    def first_icon(self):
        return self.frame.find(role="layered pane").find(role="list item").centre()

    def confirm_drop(self):
        menu = self.x.rect(wait_for(lambda: self.x.find("pcmanfm-qt"), "the menu of the drop"))
        self.x.click(menu.x + menu.width // 2, menu.y + 12)


class Archive:
    """A window on an archive, from which files can be dragged; they are unpacked only where they are dropped."""

    def __init__(self, desktop, *names):
        self.x = desktop.x
        archive = desktop.home / "papers.zip"
        with zipfile.ZipFile(archive, "w") as packed:
            for name in names:
                packed.writestr(name, f"content of {name}")
        before = self.x.active_window()
        desktop.start("file-roller", str(archive))
        self.program = desktop.tree.program("file-roller")
        wait_for(lambda: self.x.active_window() not in (before, None), "the archive's window to be active")

    def drag(self, name):
        cell = wait_for(lambda: self.program.find(name, "table cell"), f"{name} in the archive")
        return Drag(self.x, cell.centre())
