# SPDX-License-Identifier: MIT
"""The check for updates that the user asks for in the settings, against a feed on this machine."""
import contextlib
import http.server
import plistlib
import shutil
import threading
import unittest
from pathlib import Path

from case import DesktopTest
from peers import start_panel
from stowpocket import PROGRAM, Stowpocket
from x_display import wait_for

ITEM = """<item><s:version>{}</s:version><link>https://stowpocket.example/download</link><description>What is new</description>
<enclosure url="https://stowpocket.example/stowpocket.AppImage" length="1" type="application/octet-stream" s:os="linux" s:edSignature=""/></item>"""
FEED = '<rss version="2.0" xmlns:s="http://www.andymatuschak.org/xml-namespaces/sparkle"><channel>{}</channel></rss>'


class Feed(http.server.HTTPServer):
    """Answers every request with `status` and `body`."""
    status, body = 200, ""

    class Answer(http.server.BaseHTTPRequestHandler):
        def do_GET(self):
            self.send_response(self.server.status)
            self.end_headers()
            with contextlib.suppress(BrokenPipeError):  # an answer that is refused is not read to its end
                self.wfile.write(self.server.body.encode())

        def log_message(self, *_):
            pass

    def __init__(self):
        super().__init__(("127.0.0.1", 0), self.Answer)
        self.thread = threading.Thread(target=self.serve_forever)
        self.thread.start()

    def end(self):
        self.shutdown()
        self.thread.join()
        self.server_close()


class Updates(DesktopTest):
    def install(self, feed):
        """Puts the program, its helper and its information list into a folder of their own."""
        built, installed = Path(PROGRAM).resolve().parents[1], self.desktop.home / "installed"
        for path in ("src/stowpocket", "libexec/stowpocket/stowpocket-updater", "share/stowpocket/Info.plist"):
            (installed / path).parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(built / path, installed / path)
        information = installed / "share/stowpocket/Info.plist"
        address = "http://127.0.0.1:{}/appcast.xml".format(feed.server_address[1])
        information.write_bytes(plistlib.dumps(plistlib.loads(information.read_bytes()) | {"SUFeedURL": address}))
        return installed / "src/stowpocket"

    def test_check_that_is_asked_for(self):
        feed = Feed()
        self.addCleanup(feed.end)
        start_panel(self.desktop, "trayer")
        stowpocket = self.stowpocket = Stowpocket(self.desktop, program=self.install(feed))
        stowpocket.open_settings()
        stowpocket.press("About")
        for status, body in (200, FEED.format("")), (404, FEED.format(ITEM.format("9.0"))):
            feed.status, feed.body = status, body
            stowpocket.press("Check for Updates…")
            alert = stowpocket.wait_for_shown("You're up to date!")
            stowpocket.wait_for_shown("stowpocket 0.1.0 is the latest version.")
            stowpocket.press("OK")
            wait_for(lambda: not stowpocket.shown("You're up to date!"), f"the alert to go, {alert.name}")

        feed.status, feed.body = 200, FEED.format(ITEM.format("9.0"))
        stowpocket.press("Check for Updates…")
        stowpocket.wait_for_shown("stowpocket 9.0 is available")
        self.desktop.picture("update")
        stowpocket.press("Later")
        wait_for(lambda: not stowpocket.shown("stowpocket 9.0 is available"), "the window to close")

        stowpocket.press("Automatically download updates")
        wait_for(lambda: stowpocket.preferences().get("SUAutomaticallyUpdate") is False, "the choice on the disk")


if __name__ == "__main__":
    unittest.main()
