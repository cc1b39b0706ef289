# SPDX-License-Identifier: MIT
"""The command verbs, and a second start, through the session bus."""
import json
import os
import re

from case import DesktopTest
from stowpocket import PROJECT
from terminal import run
from x_display import wait_for

NOT_RUNNING = 3, "", "stowpocket: stowpocket is not running\n"
GONE = "stowpocket: gone: no such file, or it may not be looked at\n"


class CommandLine(DesktopTest):
    def setUp(self):
        super().setUp()
        self.first, self.second = self.desktop.files("my papers", 2)

    def command(self, *arguments):
        return run(self.desktop, self.stowpocket.program, *arguments)

    def check(self, *rows):
        for arguments, *expected in rows:
            with self.subTest(arguments):
                self.assertEqual(self.command(*arguments), tuple(expected))

    def test_examples_of_the_man_page(self):
        """All of them in their order, with programs that write their words down in the places of others."""
        self.start("trayer")
        names = ["a b.jpg", "c\nd.jpg", "old.tmp"]
        pictures, documents, programs = (self.desktop.folder(name) for name in ("Pictures", "Documents", "programs"))
        for name in names:
            (pictures / name).write_text(name)
        (programs / "stowpocket").symlink_to(self.stowpocket.program)
        for name in ("xdg-open", "xdg-email"):
            (programs / name).write_text(f'#!/bin/sh\nprintf "%s|" "$@" >>{self.desktop.home}/{name}.words\n')
            (programs / name).chmod(0o755)
        self.desktop.environment["PATH"] = f"{programs}:{os.environ['PATH']}"
        self.command("add", pictures / names[2])
        page = (PROJECT / "packaging/linux/stowpocket.1.in").read_text()
        for example in re.findall(r"^\.EX\n(.*?)^\.EE", page, re.DOTALL | re.MULTILINE):
            answer = run(self.desktop, "bash", "-c", example.replace(r"\-", "-").replace(r"\e", "\\"))
            self.assertEqual((answer.code, answer.err), (0, ""), example)
        self.assertEqual(sorted(file.read_text() for file in documents.iterdir()), names)
        staged = [f"{pictures}/{name}|" for name in (names[2], *names[:2])]
        opened, attached = ((self.desktop.home / f"{name}.words").read_text() for name in ("xdg-open", "xdg-email"))
        self.assertEqual((opened, attached), ("".join(staged), "".join("--attach|" + file for file in staged)))
        listed = json.loads(self.command("list", "--json").out)
        self.assertEqual([item["path"] for item in listed], [str(pictures / name) for name in names[:2]])

    def test_verbs_and_a_second_start_open_and_close_the_shelf(self):
        shelf = self.start("xfce4-panel")
        self.desktop.environment["DESKTOP_STARTUP_ID"] = "launcher_TIME1"
        for words, opens in ((["show"], True), (["show"], True), (["toggle"], False), (["quick-drop"], False),
                             (["toggle"], True), (["toggle"], False), ([], True)):
            self.check((words, 0, "", ""))
            wait_for(lambda: bool(shelf.popover()) == opens, f"{words} to be obeyed")
            if words == ["show"]:
                self.assertEqual(self.x.property(shelf.popover(), "_NET_STARTUP_ID"), b"launcher_TIME1")
        self.check(([self.second, "my papers/file 01.txt"], 0, f"added: {self.second}\nadded: {self.first}\n", ""))
        shelf.tile("file 01.txt")
        self.assertEqual([program.name for program in self.desktop.tree.programs()].count("stowpocket"), 1)
        self.assertIsNone(shelf.process.poll())

    def test_without_a_running_program(self):
        shelf = self.start("trayer")
        shelf.end()
        self.assertRegex(self.command("--version").out, r"^stowpocket \d+\.\d+\.\d+\n$")
        self.check((["clear"], *NOT_RUNNING), (["add", "gone"], 1, "", GONE), (["list"], *NOT_RUNNING),
                   (["lst"], 2, "", "stowpocket: lst is neither a verb nor a file; the nearest verb is list\n"
                    "Try 'stowpocket --help' for more information.\n"))
        self.desktop.environment["QT_QPA_PLATFORM"] = "none"
        self.check((["add", self.first], 3, "", "stowpocket: stowpocket is not running and could not be started\n"))
        self.desktop.environment["QT_QPA_PLATFORM"] = ""
        # Starts at the same moment make one program.
        files = self.desktop.files("many", 4)
        starts = [self.desktop.start("env", shelf.program, str(file)) for file in files]  # with a log of their own
        wait_for(lambda: [start.poll() for start in starts].count(0) == 3, "three of them to hand their files over")
        self.assertEqual(sorted(self.command("list").out.splitlines()), [str(file) for file in files])
        self.desktop.end(next(start for start in starts if start.poll() is None))
        self.check((["add", self.first], 0, f"added: {self.first}\n", ""))
        self.assertTrue(self.command("list").out.endswith(f".txt\n{self.first}\n"))
        shelf.icon()

    def test_without_a_session_bus(self):
        self.start("trayer").end()
        self.desktop.environment["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=/nowhere"
        self.check((["toggle"], 3, "", "stowpocket: there is no session bus to reach the program on\n"))
        self.stowpocket.start()
