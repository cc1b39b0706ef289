# SPDX-License-Identifier: MIT
"""Pointers of Wayland compositors, moved through a client that only sends, or through the compositor's own script."""
import os
import socket
import struct
import time

DISPLAY, REGISTRY = 1, 2
BUTTONS = {1: 0x110, 2: 0x112, 3: 0x111}
KEYMAP = b"""xkb_keymap { xkb_keycodes { include "evdev" }; xkb_types { include "complete" };
xkb_compat { include "complete" }; xkb_symbols { include "pc+us" }; };\0"""


class WaylandClient:
    """Speaks the wire protocol itself: a message is object, opcode and size, then the arguments in words of 32 bits."""

    def __init__(self, path):
        self.socket = socket.socket(socket.AF_UNIX)
        self.socket.connect(str(path))
        self.received, self.last_id, self.offered = b"", REGISTRY, {}
        self.send(DISPLAY, 1, struct.pack("I", REGISTRY))
        self.sync()

    def close(self):
        self.socket.close()

    def send(self, target, opcode, arguments=b"", descriptors=()):
        message = struct.pack("IHH", target, opcode, 8 + len(arguments)) + arguments
        socket.send_fds(self.socket, [message], descriptors)

    @staticmethod
    def text(value):
        with_end = value.encode() + b"\0"
        return struct.pack("I", len(with_end)) + with_end + bytes(-len(with_end) % 4)

    def new_id(self):
        self.last_id += 1
        return self.last_id

    def bind(self, interface, version):
        """Takes one of the global objects that the compositor offers."""
        made = self.new_id()
        name = struct.pack("I", self.offered[interface])
        self.send(REGISTRY, 0, name + self.text(interface) + struct.pack("II", version, made))
        return made

    def sync(self):
        """Returns when the compositor has done everything that was sent before."""
        done = self.new_id()
        self.send(DISPLAY, 0, struct.pack("I", done))
        while self.read_event() != done:
            pass

    def read_event(self):
        """The object that the next event is from. Only the list of global objects is kept; an error ends the test."""
        target, opcode, size = struct.unpack("IHH", self.bytes(8))
        arguments = self.bytes(size - 8)
        if (target, opcode) == (DISPLAY, 0):
            raise RuntimeError(f"the compositor refuses: {arguments[12:].decode(errors='replace')}")
        if (target, opcode) == (REGISTRY, 0):
            name, length = struct.unpack_from("II", arguments)
            self.offered[arguments[8:7 + length].decode()] = name
        return target

    def bytes(self, count):
        while len(self.received) < count:
            part = self.socket.recv(65536)
            if not part:
                raise EOFError("the compositor has gone")
            self.received += part
        taken, self.received = self.received[:count], self.received[count:]
        return taken


class KwinPointer(WaylandClient):
    """The pointer of a KWin that was started without checks of permissions, moved by its fake-input protocol."""

    def __init__(self, path):
        super().__init__(path)
        self.input = self.bind("org_kde_kwin_fake_input", 4)
        self.request(0, self.text("test") + self.text("test"))

    def request(self, opcode, arguments):
        self.send(self.input, opcode, arguments)
        self.sync()

    def move(self, x, y):
        self.request(9, struct.pack("ii", int(x) * 256, int(y) * 256))  # in 24.8 fixed point

    def button(self, press, number):
        self.request(2, struct.pack("II", BUTTONS[number], int(press)))


class WlrootsPointer(WaylandClient):
    """The pointer of a compositor made with wlroots, and a keyboard, without which no window there is ever active."""

    def __init__(self, path, size):
        super().__init__(path)
        self.size, seat = size, self.bind("wl_seat", 1)
        self.pointer = self.make("zwlr_virtual_pointer_manager_v1", seat)
        with os.fdopen(os.memfd_create("keymap"), "wb", buffering=0) as keymap:
            keymap.write(KEYMAP)
            keyboard = self.make("zwp_virtual_keyboard_manager_v1", seat)
            self.send(keyboard, 0, struct.pack("II", 1, len(KEYMAP)), [keymap.fileno()])
        self.sync()

    def make(self, manager, seat):
        manager, made = self.bind(manager, 1), self.new_id()
        self.send(manager, 0, struct.pack("II", seat, made))
        return made

    def request(self, opcode, *values):
        now = int(time.monotonic() * 1000) & 0xffffffff
        self.send(self.pointer, opcode, struct.pack(f"{len(values) + 1}I", now, *values))
        self.send(self.pointer, 4)  # these requests belong together
        self.sync()

    def move(self, x, y):
        """XWayland takes the last movement for made once more when a button is pressed, so that one is small."""
        for place in x - 1, x:
            self.request(1, int(place), int(y), *self.size)

    def button(self, press, number):
        self.request(2, BUTTONS[number], int(press))


class GnomePointer:
    """The pointer of a GNOME Shell that runs our scripts, and a keyboard, without which no window there hears that
    it is active."""

    def __init__(self, evaluate):
        self.evaluate = evaluate
        evaluate("""const {Clutter, GLib} = imports.gi, seat = Clutter.get_default_backend().get_default_seat();
            global.pointer = seat.create_virtual_device(Clutter.InputDeviceType.POINTER_DEVICE);
            global.keyboard = seat.create_virtual_device(Clutter.InputDeviceType.KEYBOARD_DEVICE);
            global.now = () => GLib.get_monotonic_time(); null""")

    def close(self):
        """It goes with the Shell."""

    def move(self, x, y):
        self.evaluate(f"global.pointer.notify_absolute_motion(global.now(), {int(x)}, {int(y)})")

    def button(self, press, number):
        self.evaluate(f"global.pointer.notify_button(global.now(), {number}, {int(press)})")
