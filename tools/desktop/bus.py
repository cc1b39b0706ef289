# SPDX-License-Identifier: MIT
"""A connection to a message bus of the desktop."""
from gi.repository import Gio


class Bus:
    def __init__(self, address):
        flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        self.connection = Gio.DBusConnection.new_for_address_sync(address, flags, None, None)

    def close(self):
        self.connection.close_sync(None)

    def call(self, program, path, interface, method, arguments=None):
        """What the program answers, one value for each that it gives back. A failure is a GLib.Error."""
        answer = self.connection.call_sync(program, path, interface, method, arguments, None, Gio.DBusCallFlags.NONE,
                                           20000, None)
        return answer.unpack()
