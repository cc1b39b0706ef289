# SPDX-License-Identifier: MIT
"""Private desktops that are Wayland sessions, in which the program runs through XWayland.

A compositor is one subclass of `WaylandDesktop`, which starts it and gives the pointer and a way to take pictures;
everything else is shared.
"""
import contextlib
import io
import json
import os
import pwd
import shutil
import signal
import subprocess
import sys
import threading
from pathlib import Path

from PIL import Image
from gi.repository import Gio, GLib

from private_desktop import PrivateDesktop
from wayland_client import GnomePointer, KwinPointer, WlrootsPointer
from x_display import Rect, XDisplay, wait_for

WINDOW = Path(__file__).with_name("wayland_window.py")


class XWayland(XDisplay):
    """The X11 windows of a Wayland session. Only the compositor knows the pointer and sees the whole screen."""

    def __init__(self, name, pointer, picture, scale):
        super().__init__(name)
        self.pointer, self.picture, self.scale = pointer, picture, scale

    def close(self):
        self.pointer.close()
        super().close()

    def point(self, x, y):
        self.pointer.move(x / self.scale, y / self.scale)

    def button(self, press, number=1):
        self.pointer.button(press, number)


class WaylandDesktop(PrivateDesktop):
    """`start_compositor` starts one that tells `tell_display` its X11 display, and the other two reach into it."""

    portal_backend = "gtk"
    has_layers = True  # whether it shows the pocket itself

    def __init__(self, log_folder, size="1280x900", scale=1):
        super().__init__(log_folder, size)
        self.scale = scale  # how many pixels along each side of one of the points that `size` counts

    def start_screen(self):
        self.socket = self.home / "run/wayland-0"
        self.environment |= {"XDG_SESSION_TYPE": "wayland", "LIBGL_ALWAYS_SOFTWARE": "1",
                             "GSETTINGS_BACKEND": "keyfile"}
        self.start_bus()
        told, tell = self.home / "display", self.home / "tell_display"
        user = pwd.getpwuid(os.geteuid()).pw_name
        tell.write_text(f'#!/bin/sh\nxhost +si:localuser:{user}\n'
                        f'echo "$DISPLAY" > {told}.new && mv {told}.new {told}\n')
        tell.chmod(0o755)
        self.server = self.start_compositor(tell)
        wait_for(told.exists, "the compositor")
        # What many a user of Wayland has in his environment must not keep the program from XWayland.
        self.environment |= {"WAYLAND_DISPLAY": str(self.socket), "DISPLAY": told.read_text().strip(),
                             "QT_QPA_PLATFORM": "wayland"}
        self.x = XWayland(self.environment["DISPLAY"], self.make_pointer(), self.screen_picture, self.scale)
        if self.has_layers:
            # Without a count; the count widens it to the left.
            pocket = int(self.size.split("x")[0]) - 52, 56, 44, 44
            self.x.pocket = Rect(*(self.scale * length for length in pocket))

    def start_portal(self):
        """Starts what tells programs which colours the user wants."""
        backend = self.portal_backend
        self.start_owner(f"xdg-desktop-portal-{backend}", f"org.freedesktop.impl.portal.desktop.{backend}")
        self.start_owner("xdg-desktop-portal", "org.freedesktop.portal.Desktop")

    def start_owner(self, program, name):
        """Starts a program that others find by its name on the bus."""
        self.start(f"/usr/libexec/{program}")
        bus, asked = "org.freedesktop.DBus", GLib.Variant("(s)", (name,))
        wait_for(lambda: self.bus.call(bus, "/org/freedesktop/DBus", bus, "NameHasOwner", asked)[0], program)

    def ask_for_dark_colours(self):
        subprocess.run(["gsettings", "set", "org.gnome.desktop.interface", "color-scheme", "prefer-dark"],
                       env=self.environment, check=True)

    def is_of_server(self, pid):
        """sway starts a new XWayland for each that is ended."""
        with contextlib.suppress(OSError):
            return self.server in self.started and Path(f"/proc/{pid}/comm").read_text() == "Xwayland\n"
        return False

    def end_everything(self):
        super().end_everything()
        self.end_orphans(set(), signal.SIGKILL)  # now and then an XWayland without its compositor


class KwinDesktop(WaylandDesktop):
    settings = ""

    def start_compositor(self, tell_display):
        # The installed file has a privilege that containers refuse, so that it cannot be run there; a copy has none.
        program = shutil.copy("/usr/bin/kwin_wayland", self.home)
        self.environment |= {
            "XDG_CURRENT_DESKTOP": "KDE", "KDE_FULL_SESSION": "true", "KDE_SESSION_VERSION": "5", "KWIN_COMPOSE": "O2",
            "KWIN_WAYLAND_NO_PERMISSION_CHECKS": "1", "KWIN_SCREENSHOT_NO_PERMISSION_CHECKS": "1"}
        # As Plasma sets it up: X11 programs are drawn pixel by pixel, and told how many there are.
        (self.home / "config/kwinrc").write_text(f"[Xwayland]\nScale={self.scale}\n{self.settings}")
        with open(tell_display, "a", encoding="ascii") as script:
            script.write(f"echo Xft.dpi: {self.scale * 96} | xrdb -merge\n")
        width, height = self.size.split("x")
        return self.start(program, "--virtual", "--width", width, "--height", height, "--scale", str(self.scale),
                          "--no-lockscreen", "--no-global-shortcuts", "--xwayland", "--socket", self.socket.name,
                          str(tell_display))

    def make_pointer(self):
        return KwinPointer(self.socket)

    def screen_picture(self):
        """KWin writes the pixels into a pipe while it answers."""
        reading, writing = os.pipe()
        written = []
        with os.fdopen(reading, "rb") as pipe:
            reader = threading.Thread(target=lambda: written.append(pipe.read()))
            reader.start()
            descriptors = Gio.UnixFDList.new_from_array([writing])  # takes the descriptor
            wanted = {name: GLib.Variant("b", True) for name in ("include-cursor", "native-resolution")}
            arguments = GLib.Variant("(a{sv}h)", (wanted, 0))
            answer, _ = self.bus.connection.call_with_unix_fd_list_sync(
                "org.kde.KWin", "/org/kde/KWin/ScreenShot2", "org.kde.KWin.ScreenShot2", "CaptureWorkspace", arguments,
                None, Gio.DBusCallFlags.NONE, 20000, descriptors, None)
            del descriptors
            reader.join()
        about = answer.unpack()[0]
        return Image.frombytes("RGB", (about["width"], about["height"]), written[0], "raw", "BGRX", about["stride"])


class PlasmaDesktop(KwinDesktop):
    """KWin with Plasma's panel along the lower edge, which shows tray icons of the bus."""

    # So that the places of what is in other programs' windows, which those tell, are places on the screen.
    settings = "[Windows]\nPlacement=Maximizing\nBorderlessMaximizedWindows=true\n"
    services = [*KwinDesktop.services, "org.kde.ActivityManager.service", "org.kde.kded5.service"]

    def start_screen(self):
        super().start_screen()
        bus, known = "org.freedesktop.DBus", GLib.Variant("(a{ss})", (self.environment,))
        self.bus.call(bus, "/org/freedesktop/DBus", bus, "UpdateActivationEnvironment", known)
        self.start("plasmashell")
        self.x.pocket = self.x.pocket._replace(y=8)  # there the upper edge is known to be free

    def shown(self, program, start):
        """What the program shows whose name begins so, or nothing."""
        for window in self.tree.program(program).children():
            for each in window.everything():
                if each.name.startswith(start) and each.is_showing():
                    return each
        return None


class SwayDesktop(WaylandDesktop):
    def start_compositor(self, tell_display):
        own = self.home / "sway"  # the folder of its socket must be its user's, who is never root
        own.mkdir(mode=0o700)
        self.socket = own / "wayland-1"
        self.environment["SWAYSOCK"] = str(own / "sway.sock")
        (own / "config").write_text(f"output HEADLESS-1 resolution {self.size} position 0 0\nxwayland force\n"
                                    f"exec {tell_display}\n")
        command = ["env", f"XDG_RUNTIME_DIR={own}", "WLR_BACKENDS=headless", "WLR_RENDERER=pixman",
                   "WLR_LIBINPUT_NO_DEVICES=1", "sway", "--config", str(own / "config")]
        if os.geteuid() == 0:
            self.home.chmod(0o777)
            for path in own, own / "config":
                shutil.chown(path, "nobody")
            command = ["setpriv", "--reuid=nobody", "--regid=nogroup", "--clear-groups", *command]
        return self.start(*command)

    def make_pointer(self):
        return WlrootsPointer(self.socket, [int(side) for side in self.size.split("x")])

    def screen_picture(self):
        shot = subprocess.run(["grim", "-c", "-"], env=self.environment, capture_output=True, check=True)
        return Image.open(io.BytesIO(shot.stdout)).convert("RGB")


class GnomeDesktop(WaylandDesktop):
    """GNOME Shell, which does everything that is asked of it here by running a script of ours inside itself."""

    portal_backend, has_layers = "gnome", False
    has_indicators = False  # whether the extension that shows tray icons is on at first
    extension = "ubuntu-appindicators@ubuntu.com"

    def start_compositor(self, tell_display):
        settings = self.home / "config/glib-2.0/settings"
        settings.mkdir(parents=True)
        enabled = [self.extension] if self.has_indicators else []
        (settings / "keyfile").write_text(f"[org/gnome/shell]\nenabled-extensions={enabled}\n"
                                          "welcome-dialog-last-shown-version='99'\n")
        self.environment |= {
            "XDG_CURRENT_DESKTOP": "GNOME", "GNOME_SHELL_SESSION_MODE": "user",
            # It ends without a system bus; that there is nobody on it does no harm.
            "DBUS_SYSTEM_BUS_ADDRESS": self.environment["DBUS_SESSION_BUS_ADDRESS"]}
        shell = self.start("gnome-shell", "--headless", "--wayland", "--virtual-monitor", self.size,
                           "--wayland-display", self.socket.name, "--unsafe-mode")
        wait_for(self.is_started, "the Shell")
        self.evaluate(f"Main.overview.hide(); imports.gi.GLib.spawn_command_line_async('{tell_display}')")
        return shell

    def is_started(self):
        try:
            return self.evaluate("Main.layoutManager?._startingUp === false")
        except GLib.Error:  # it is not on the bus yet, or has no script yet
            return False

    def evaluate(self, script):
        """What the last expression of the script is."""
        shell = "org.gnome.Shell"
        done, answer = self.bus.call(shell, "/org/gnome/Shell", shell, "Eval", GLib.Variant("(s)", (script,)))
        if not done:
            raise RuntimeError(f"the Shell cannot do it: {answer}")
        return json.loads(answer or "null")

    def enable_indicators(self, enabled):
        self.evaluate(f"Main.extensionManager.{'enable' if enabled else 'disable'}Extension('{self.extension}')")

    def make_pointer(self):
        return GnomePointer(self.evaluate)

    def screen_picture(self):
        file, screenshot = str(self.home / "screenshot.png"), "org.gnome.Shell.Screenshot"
        self.bus.call(screenshot, "/org/gnome/Shell/Screenshot", screenshot, "Screenshot",
                      GLib.Variant("(bbs)", (True, False, file)))
        return Image.open(file).convert("RGB")


class WaylandWindow:
    """A Wayland program's window over the whole screen, which takes drops and lets the files of `folder` be dragged."""

    def __init__(self, desktop, folder):
        self.log = desktop.logs / "window"
        self.log.touch()
        self.heard = 0
        desktop.start(sys.executable, str(WINDOW), str(folder), str(self.log))
        self.wait_for("active")
        # Only then does it hear of a drag too.
        wait_for(lambda: desktop.x.click(300, 600) or self.says("pressed"), "the window to hear of a click")
        self.forget()

    def says(self, line):
        """Whether it has said so since the last time."""
        said = self.log.read_text().splitlines()[self.heard:]
        self.heard += said.index(line) + 1 if line in said else 0
        return line in said

    def forget(self):
        self.heard = len(self.log.read_text().splitlines())

    def wait_for(self, line):
        wait_for(lambda: self.says(line), f"the window to say: {line}")
