# SPDX-License-Identifier: MIT
"""The check for updates that the user asks for in the settings, against a feed on this machine."""
import plistlib
import re
import shutil
import sys
import unittest
from pathlib import Path

from case import DesktopTest
from peers import start_panel
from stowpocket import PROGRAM, Stowpocket
from x_display import wait_for

ITEM = """<item><s:version>{}</s:version><link>https://stowpocket.example/download</link>
<description>What is new</description><enclosure url="https://stowpocket.example/stowpocket.AppImage" length="1"
type="application/octet-stream" s:os="linux" s:edSignature=""/></item>"""
FEED = '<rss version="2.0" xmlns:s="http://www.andymatuschak.org/xml-namespaces/sparkle"><channel>{}</channel></rss>'


class Updates(DesktopTest):
    def serve(self):
        """Has a web server show the folder that the feed is in; its address."""
        self.feed = self.desktop.folder("feed") / "appcast.xml"
        self.desktop.start(sys.executable, "-u", "-m", "http.server", "--bind", "127.0.0.1",
                           "--directory", str(self.feed.parent), "0")
        log = self.desktop.logs / f"{Path(sys.executable).name}.log"
        return wait_for(lambda: re.search(r"http://127\.0\.0\.1:\d+/", log.read_text()), "the web server").group()

    def install(self):
        """Puts the program, its helper and its information list into a folder of their own."""
        built, installed = Path(PROGRAM).resolve().parents[1], self.desktop.home / "installed"
        for path in ("bin/stowpocket", "libexec/stowpocket/stowpocket-updater", "share/stowpocket/Info.plist"):
            (installed / path).parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(built / path, installed / path)
        information = installed / "share/stowpocket/Info.plist"
        address = self.serve() + self.feed.name
        information.write_bytes(plistlib.dumps(plistlib.loads(information.read_bytes()) | {"SUFeedURL": address}))
        return installed / "bin/stowpocket"

    def test_check_that_is_asked_for(self):
        start_panel(self.desktop, "trayer")
        stowpocket = self.stowpocket = Stowpocket(self.desktop, program=self.install())
        stowpocket.open_settings()
        stowpocket.press("About")
        for feed in None, FEED.format(""):
            if feed:
                self.feed.write_text(feed)
            stowpocket.press("Check for Updates…")
            alert = stowpocket.wait_for_shown("You're up to date!")
            stowpocket.wait_for_shown("stowpocket 0.1.0 is the latest version.")
            stowpocket.press("OK")
            wait_for(lambda: not stowpocket.shown("You're up to date!"), f"the alert to go, {alert.name}")

        self.feed.write_text(FEED.format(ITEM.format("9.0")))
        stowpocket.press("Check for Updates…")
        stowpocket.wait_for_shown("stowpocket 9.0 is available")
        self.desktop.picture("update")
        stowpocket.press("Later")
        wait_for(lambda: not stowpocket.shown("stowpocket 9.0 is available"), "the window to close")

        stowpocket.press("Automatically download updates")
        wait_for(lambda: stowpocket.preferences().get("SUAutomaticallyUpdate") is False, "the choice on the disk")


if __name__ == "__main__":
    unittest.main()
