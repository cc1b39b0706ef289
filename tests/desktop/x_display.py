# SPDX-License-Identifier: MIT
"""A connection to an X server: its windows, its picture, and a hand on mouse and keyboard (through XTEST)."""
import contextlib
import ctypes
import struct
import time
from collections import namedtuple

from PIL import ImageGrab

x11 = ctypes.CDLL("libX11.so.6")
xtst = ctypes.CDLL("libXtst.so.6")
xfixes = ctypes.CDLL("libXfixes.so.3")
XID, Pointer, Int = ctypes.c_ulong, ctypes.c_void_p, ctypes.c_int
# Xvfb numbers its devices in the order in which it makes them; its keyboard comes after those of XTEST, which other programs press keys on.
keyboard = (XID * 3)(7)
for function in (x11.XOpenDisplay, xfixes.XFixesGetCursorImage):
    function.restype = Pointer
for function in (x11.XInternAtom, x11.XDefaultRootWindow, x11.XGetSelectionOwner, x11.XStringToKeysym, x11.XCreateSimpleWindow):
    function.restype = XID
ErrorHandler = ctypes.CFUNCTYPE(Int, Pointer, Pointer)
# Windows of other programs come and go while they are looked at: an error answer must not end the process.
ignore_errors = ErrorHandler(lambda display, event: 0)
x11.XSetErrorHandler(ignore_errors)


class Rect(namedtuple("Rect", "x y width height")):
    def centre(self):
        return self.x + self.width // 2, self.y + self.height // 2


def wait_for(condition, what, limit=30):
    """The first true answer of `condition`. The limit only ends a run that has failed already."""
    end = time.monotonic() + limit
    while True:
        answer = condition()
        if answer:
            return answer
        if time.monotonic() > end:
            raise TimeoutError(f"waited {limit} s in vain for {what}")
        time.sleep(0.02)


class CursorImage(ctypes.Structure):
    _fields_ = [("position", ctypes.c_short * 2), ("size", ctypes.c_ushort * 2), ("hot", ctypes.c_ushort * 2),
                ("serial", XID), ("pixels", Pointer), ("atom", XID), ("name", ctypes.c_char_p)]


class XDisplay:
    def __init__(self, name):
        self.name, self.handle = name, Pointer(x11.XOpenDisplay(name.encode()))
        assert self.handle, f"no X server at {name}"
        self.root = XID(x11.XDefaultRootWindow(self.handle))

    def close(self):
        x11.XCloseDisplay(self.handle)

    def atom(self, name):
        return XID(x11.XInternAtom(self.handle, name.encode(), 0))

    # Windows

    def children(self, window):
        root, parent, array, count = XID(), XID(), ctypes.POINTER(XID)(), ctypes.c_uint()
        if not x11.XQueryTree(self.handle, XID(window), ctypes.byref(root), ctypes.byref(parent), ctypes.byref(array), ctypes.byref(count)):
            return []
        found = array[:count.value]
        if count.value:
            x11.XFree(array)
        return found

    def property(self, window, name):
        """The bytes of a property (32-bit items come as unsigned longs), or nothing."""
        kind, form, count, rest, data = XID(), Int(), ctypes.c_ulong(), ctypes.c_ulong(), Pointer()
        failed = x11.XGetWindowProperty(self.handle, XID(window), self.atom(name), ctypes.c_long(0), ctypes.c_long(1000), 0, XID(0), *map(
            ctypes.byref, (kind, form, count, rest, data)))
        if failed or not data:
            return b""
        answer = ctypes.string_at(data, count.value * {0: 0, 8: 1, 16: 2, 32: 8}[form.value])
        x11.XFree(data)
        return answer

    def title(self, window):
        return (self.property(window, "_NET_WM_NAME") or self.property(window, "WM_NAME")).decode(errors="replace")

    def find(self, title):
        """The viewable window with this title, or nothing."""
        pending = self.children(self.root.value)
        while pending:
            window = pending.pop(0)
            pending += self.children(window)
            if self.title(window) == title and self.is_viewable(window):
                return window
        return None

    def is_viewable(self, window):
        attributes = (ctypes.c_byte * 256)()
        if not x11.XGetWindowAttributes(self.handle, XID(window), attributes):
            return False
        # map_state follows x, y, width, height, border, depth, visual, root, class, 2 gravities, backing store and its 2 masks, save_under, colormap, map_installed
        return struct.unpack_from("i", attributes, 92)[0] == 2

    def rect(self, window):
        """Where a window really is on the screen."""
        root, child, x, y, w, h, rest = XID(), XID(), Int(), Int(), Int(), Int(), ctypes.c_uint()
        x11.XGetGeometry(self.handle, XID(window), *map(ctypes.byref, (root, x, y, w, h, rest, rest)))
        x11.XTranslateCoordinates(self.handle, XID(window), self.root, 0, 0, *map(ctypes.byref, (x, y, child)))
        return Rect(x.value, y.value, w.value, h.value)

    def move(self, window, x, y, width, height):
        x11.XMoveResizeWindow(self.handle, XID(window), x, y, width, height)
        x11.XSync(self.handle, 0)

    def new_window(self):
        """A small window that the window manager leaves alone."""
        window = x11.XCreateSimpleWindow(self.handle, self.root, 0, 0, 24, 24, 0, XID(0), XID(0))
        # override_redirect comes last but two in the attributes, of which no other is looked at.
        x11.XChangeWindowAttributes(self.handle, XID(window), XID(1 << 9), struct.pack("@88xi20x", 1))
        x11.XMapWindow(self.handle, XID(window))
        return window

    def send(self, receiver, mask, window, kind, *values):
        """Sends a client message about `window`."""
        values += (0,) * (5 - len(values))
        message = struct.pack("@iLiPLLi5l", 33, 0, 0, 0, window, self.atom(kind).value, 32, *values).ljust(192)
        x11.XSendEvent(self.handle, XID(receiver), 0, ctypes.c_long(mask), message)
        x11.XSync(self.handle, 0)

    def set_property(self, window, name, value):
        x11.XChangeProperty(self.handle, XID(window), self.atom(name), self.atom(name), 8, 0, value, len(value))
        x11.XSync(self.handle, 0)

    def manage(self, selection):
        """Takes a selection that stands for a part of the desktop, and says so; the window that has it."""
        window = self.new_window()
        x11.XSetSelectionOwner(self.handle, self.atom(selection), XID(window), XID(0))
        self.send(self.root.value, 1 << 17, self.root.value, "MANAGER", 0, self.atom(selection).value, window)
        return window

    def destroy(self, window):
        x11.XDestroyWindow(self.handle, XID(window))
        x11.XSync(self.handle, 0)

    def active_window(self):
        answer = self.property(self.root.value, "_NET_ACTIVE_WINDOW")
        return struct.unpack("L", answer)[0] if answer else 0

    # Mouse and keyboard

    def point(self, x, y):
        xtst.XTestFakeMotionEvent(self.handle, -1, int(x), int(y), 0)
        x11.XSync(self.handle, 0)

    def button(self, press, number=1):
        xtst.XTestFakeButtonEvent(self.handle, number, int(press), 0)
        x11.XSync(self.handle, 0)

    def click(self, x, y, number=1):
        self.point(x, y)
        self.button(True, number)
        self.button(False, number)

    @contextlib.contextmanager
    def holding(self, *names):
        """Holds the keys of the keyboard down, as in holding("Control_L", "a")."""
        codes = [x11.XKeysymToKeycode(self.handle, XID(x11.XStringToKeysym(name.encode()))) & 0xff for name in names]
        self.press(codes, True)
        yield
        self.press(reversed(codes), False)

    def press(self, codes, press):
        for code in codes:
            xtst.XTestFakeDeviceKeyEvent(self.handle, keyboard, code, int(press), None, 0, 0)
        x11.XSync(self.handle, 0)

    def keys(self, *names):
        """Presses the keys together."""
        with self.holding(*names):
            pass

    def modifiers(self):
        """The modifiers and locks that are on, as bits."""
        windows, places, state = [XID(), XID()], [Int() for _ in range(4)], ctypes.c_uint()
        x11.XQueryPointer(self.handle, self.root, *map(ctypes.byref, (*windows, *places, state)))
        return state.value & 0xff

    def pointer_look(self):
        """The name of the pointer's picture: a program that drags shows in it whether the place underneath takes the drop."""
        address = xfixes.XFixesGetCursorImage(self.handle)
        name = (CursorImage.from_address(address).name or b"").decode()
        x11.XFree(Pointer(address))
        return name

    def selection_owner(self, name):
        return x11.XGetSelectionOwner(self.handle, self.atom(name))

    def is_dragging(self):
        return self.selection_owner("XdndSelection") != 0

    def forget_drag(self):
        """Some programs keep the drag selection after the drop; without it the next drag shows by itself."""
        x11.XSetSelectionOwner(self.handle, self.atom("XdndSelection"), XID(0), XID(0))
        x11.XSync(self.handle, 0)

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
