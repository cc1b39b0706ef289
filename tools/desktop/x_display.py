# SPDX-License-Identifier: MIT
"""A connection to an X server: its windows, its picture, and a hand on mouse and keyboard (through XTEST)."""
import contextlib
import time
from collections import namedtuple

from PIL import ImageGrab
from Xlib import XK, X, display, error
from Xlib.ext import xinput, xtest
from Xlib.protocol import event, rq

# Windows of other programs come and go while they are looked at.
window_may_go = contextlib.suppress(error.BadWindow, error.BadDrawable)


class Rect(namedtuple("Rect", "x y width height")):
    def centre(self):
        return self.x + self.width // 2, self.y + self.height // 2


def wait_for(condition, what, limit=30):
    """The first true answer of `condition`. The limit only ends a run that has failed already."""
    end = time.monotonic() + limit
    while time.monotonic() < end:
        with window_may_go:
            if answer := condition():
                return answer
        time.sleep(0.02)
    raise TimeoutError(f"waited {limit} s in vain for {what}")


class DeviceKey(rq.Request):
    """XTestFakeDeviceKeyEvent: a key of one keyboard among several."""
    _request = rq.Struct(rq.Card8("opcode"), rq.Opcode(2), rq.RequestLength(), rq.Card8("event"), rq.Card8("code"),
                         rq.Pad(29), rq.Card8("device"))


class CursorName(rq.ReplyRequest):
    """XFixesGetCursorImageAndName, of whose answer only the name is read."""
    _request = rq.Struct(rq.Card8("opcode"), rq.Opcode(25), rq.RequestLength())
    _reply = rq.Struct(rq.ReplyCode(), rq.Pad(1), rq.Card16("sequence_number"), rq.ReplyLength(), rq.Pad(16),
                       rq.Card32("atom"), rq.Pad(4))


class XDisplay:
    """Windows are those of python3-xlib."""

    pocket = None  # where the compositor itself shows the pocket, if it does

    def __init__(self, name):
        self.name, self.display = name, display.Display(name)
        self.display.set_error_handler(lambda *_: None)
        self.display.xfixes_query_version()
        self.root, self.atom = self.display.screen().root, self.display.get_atom
        self.sync = self.display.sync

    def close(self):
        self.display.close()

    def ask(self, kind, extension, **arguments):
        """Sends a request that the library does not know."""
        own = self.display.display
        return kind(display=own, opcode=own.get_extension_major(extension), **arguments)

    def property(self, window, name):
        """The bytes or numbers of a property, or nothing."""
        found = window.get_full_property(self.atom(name), X.AnyPropertyType)
        return found and found.value

    def title(self, window):
        name = self.property(window, "_NET_WM_NAME") or self.property(window, "WM_NAME") or b""
        return name.decode(errors="replace")

    def titled(self, is_wanted):
        """All windows with a title that is wanted, those nearest to the root first."""
        pending = [self.root]
        while pending:
            window = pending.pop(0)
            with window_may_go:
                pending += window.query_tree().children
                if is_wanted(self.title(window)):
                    yield window

    def is_viewable(self, window):
        return window.get_attributes().map_state == X.IsViewable

    def find(self, title):
        """The window with this title that is on the screen, or nothing."""
        with window_may_go:
            return next(filter(self.is_viewable, self.titled(title.__eq__)), None)

    def rect(self, window):
        """Where a window really is on the screen."""
        size, place = window.get_geometry(), self.root.translate_coords(window, 0, 0)
        return Rect(place.x, place.y, size.width, size.height)

    def new_window(self):
        """A small window that the window manager leaves alone."""
        window = self.root.create_window(0, 0, 24, 24, 0, X.CopyFromParent, override_redirect=True)
        window.map()
        return window

    def send(self, receiver, mask, kind, *values):
        """Sends a client message about the receiver."""
        data = 32, values + (0,) * (5 - len(values))
        receiver.send_event(event.ClientMessage(window=receiver, client_type=self.atom(kind), data=data), mask)
        self.sync()

    def manage(self, selection):
        """Takes a selection that stands for a part of the desktop, and says so; the window that has it."""
        window = self.new_window()
        window.set_selection_owner(self.atom(selection), X.CurrentTime)
        self.send(self.root, X.StructureNotifyMask, "MANAGER", X.CurrentTime, self.atom(selection), window.id)
        return window

    def active_window(self):
        window, *_ = self.property(self.root, "_NET_ACTIVE_WINDOW") or [X.NONE]
        return self.display.create_resource_object("window", window)

    # Mouse and keyboard

    def point(self, x, y):
        xtest.fake_input(self.display, X.MotionNotify, x=int(x), y=int(y))
        self.sync()

    def button(self, press, number=1):
        xtest.fake_input(self.display, X.ButtonPress if press else X.ButtonRelease, number)
        self.sync()

    def click(self, x, y, number=1):
        self.point(x, y)
        self.button(True, number)
        self.button(False, number)

    @contextlib.contextmanager
    def holding(self, *names):
        """Holds the keys down, as in holding("Control_L", "a")."""
        codes = [self.display.keysym_to_keycode(XK.string_to_keysym(name)) for name in names]
        self.press(codes, True)
        yield
        self.press(reversed(codes), False)

    def press(self, codes, press):
        """On the screen's own keyboard: other programs press the keys of the one that belongs to XTEST."""
        devices = self.display.xinput_query_device(xinput.AllDevices).devices
        keyboard = next(each.deviceid for each in devices if each.name == "Xvfb keyboard")
        first = self.display.query_extension("XInputExtension").first_event
        for code in codes:
            self.ask(DeviceKey, xtest.extname, event=first + (1 if press else 2), code=code, device=keyboard)
        self.sync()

    def keys(self, *names):
        """Presses the keys together."""
        with self.holding(*names):
            pass

    def pointer_look(self):
        """The name of the pointer's picture: a drag shows in it whether the place underneath takes the drop."""
        atom = self.ask(CursorName, "XFIXES").atom
        return self.display.get_atom_name(atom) if atom else ""

    def selection_owner(self, name):
        return self.display.get_selection_owner(self.atom(name))

    def is_dragging(self):
        return self.selection_owner("XdndSelection") != X.NONE

    def forget_drag(self):
        """Some programs keep the drag selection after the drop; without it the next drag shows by itself."""
        nobody = self.display.create_resource_object("window", X.NONE)
        nobody.set_selection_owner(self.atom("XdndSelection"), X.CurrentTime)
        self.sync()

    # Picture

    def picture(self):
        """What is on the screen."""
        return ImageGrab.grab(xdisplay=self.name)

    def pixels(self, place):
        """The colours of this part of the screen, three bytes each, row by row."""
        return self.picture().crop((place.x, place.y, place.x + place.width, place.y + place.height)).tobytes()

    def contrast(self, place):
        """How far its darkest colour is from its lightest."""
        pixels = self.pixels(place)
        return max(pixels) - min(pixels)
