# SPDX-License-Identifier: MIT
"""What the programs on a desktop tell a screen reader: names, roles and places of everything on their windows."""
from gi.repository import GLib

from bus import Bus
from x_display import Rect, wait_for

FOCUSED, SELECTED, SHOWING = 12, 23, 25
ROOT = "/org/a11y/atspi/accessible/root"


class Accessible:
    """One object of the tree. Programs change while they are read, so an object that is gone answers with nothing."""

    def __init__(self, tree, address):
        self.tree, self.address = tree, address

    def call(self, interface, method, arguments=None):
        bus, path = self.address
        try:
            return self.tree.bus.call(bus, path, interface, method, arguments)
        except GLib.Error:
            return None

    def ask(self, interface, name):
        arguments = GLib.Variant("(ss)", (f"org.a11y.atspi.{interface}", name))
        answer = self.call("org.freedesktop.DBus.Properties", "Get", arguments)
        return answer[0] if answer else None

    @property
    def name(self):
        return self.ask("Accessible", "Name") or ""

    @property
    def role(self):
        answer = self.call("org.a11y.atspi.Accessible", "GetRoleName")
        return answer[0] if answer else ""

    def children(self):
        answer = self.call("org.a11y.atspi.Accessible", "GetChildren")
        return [Accessible(self.tree, address) for address in answer[0]] if answer else []

    def has_state(self, state):
        answer = self.call("org.a11y.atspi.Accessible", "GetState")
        return bool(answer and answer[0][0] >> state & 1)

    def is_showing(self):
        return self.has_state(SHOWING)

    def is_focused(self):
        return self.has_state(FOCUSED)

    def is_selected(self):
        return self.has_state(SELECTED)

    def do(self, action):
        """Has the object do what it offers under this name. False when it offers nothing of the kind."""
        for index in range(self.ask("Action", "NActions") or 0):
            if self.call("org.a11y.atspi.Action", "GetName", GLib.Variant("(i)", (index,))) == (action,):
                return self.call("org.a11y.atspi.Action", "DoAction", GLib.Variant("(i)", (index,))) == (True,)
        return False

    def rect(self):
        answer = self.call("org.a11y.atspi.Component", "GetExtents", GLib.Variant("(u)", (0,)))
        return Rect(*answer[0]) if answer else None

    def centre(self):
        return self.rect().centre()

    def everything(self):
        """This object and all below it, parents first."""
        yield self
        for child in self.children():
            yield from child.everything()

    def find(self, name=None, role=None):
        """The first object below with this name and role that is on the screen, or nothing."""
        return next((each for each in self.everything()
                     if name in (None, each.name) and role in (None, each.role) and each.is_showing()), None)


class AccessibleTree:
    """The accessibility bus of one desktop, reached through its session bus."""

    def __init__(self, session):
        self.bus = Bus(*session.call("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress"))
        self.programs()  # starts the registry before any program asks for it

    def close(self):
        self.bus.close()

    def programs(self):
        return Accessible(self, ("org.a11y.atspi.Registry", ROOT)).children()

    def program(self, name):
        """The program that calls itself `name`, once it is there."""
        return wait_for(lambda: next((each for each in self.programs() if each.name == name), None),
                        f"{name} in the accessibility tree")
