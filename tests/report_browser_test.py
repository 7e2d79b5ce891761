#!/usr/bin/env python3
"""A report in a browser without a window: tables sort, the theme switches, the console stays empty, and pictures
and paper come out. Where there is no browser, the test is skipped.

    report_browser_test.py RTCM2 SAMPLES [CHROMIUM [FOLDER FOR PICTURES]]
"""

import base64
import json
import os
import subprocess
import sys
import tempfile
from pathlib import Path

SKIPPED = 77
FLAGS = ["--headless", "--no-sandbox", "--disable-gpu", "--no-first-run", "--disable-background-networking",
         "--disable-component-update", "--disable-sync", "--remote-debugging-pipe", "--force-color-profile=srgb"]


class Browser:
    """Speaks to Chromium through two pipes, its descriptors 3 and 4."""

    def __init__(self, chromium, folder):
        read_end, self.write = os.pipe()
        self.read, write_end = os.pipe()

        def take_pipes():
            spare = [os.dup2(end, place) for end, place in ((read_end, 40), (write_end, 41))]
            os.dup2(spare[0], 3)
            os.dup2(spare[1], 4)

        self.process = subprocess.Popen([chromium, *FLAGS, f"--user-data-dir={folder}/profile", "about:blank"],
                                        preexec_fn=take_pipes, close_fds=False, stderr=subprocess.DEVNULL)
        os.close(read_end)
        os.close(write_end)
        self.number, self.rest, self.told, self.session = 0, b"", [], None
        target = self.ask("Target.createTarget", url="about:blank")["targetId"]
        self.session = self.ask("Target.attachToTarget", targetId=target, flatten=True)["sessionId"]
        for domain in ("Page", "Runtime", "Log"):
            self.ask(f"{domain}.enable")

    def message(self):
        while b"\0" not in self.rest:
            piece = os.read(self.read, 1 << 20)
            assert piece, "the browser has gone"
            self.rest += piece
        text, self.rest = self.rest.split(b"\0", 1)
        return json.loads(text)

    def ask(self, method, **parameters):
        self.number += 1
        request = {"id": self.number, "method": method, "params": parameters}
        request |= {"sessionId": self.session} if self.session else {}
        os.write(self.write, json.dumps(request).encode() + b"\0")
        while (answer := self.message()).get("id") != self.number:
            self.told.append(answer)
        assert "error" not in answer, answer
        return answer["result"]

    def evaluate(self, script):
        answer = self.ask("Runtime.evaluate", expression=script, returnByValue=True)
        assert "exceptionDetails" not in answer, answer
        return answer["result"].get("value")

    def open(self, page):
        self.ask("Page.navigate", url=page.as_uri())
        while not any(each.get("method") == "Page.loadEventFired" for each in self.told):
            self.told.append(self.message())

    def click(self, script):
        """The middle of the element that the script gives, as a mouse does it."""
        box = self.evaluate(f"(() => {{ const e = {script}; e.scrollIntoView({{block: 'center'}});"
                            "const b = e.getBoundingClientRect(); return [b.x + b.width / 2, b.y + b.height / 2]; })()")
        for kind in ("mousePressed", "mouseReleased"):
            self.ask("Input.dispatchMouseEvent", type=kind, x=box[0], y=box[1], button="left", clickCount=1)

    def picture(self):
        return base64.b64decode(self.ask("Page.captureScreenshot", captureBeyondViewport=True)["data"])

    def complaints(self):
        wrong = ("Runtime.exceptionThrown", "Runtime.consoleAPICalled", "Log.entryAdded")
        return [each for each in self.told if each.get("method") in wrong]


def column(browser, table, index):
    return browser.evaluate(f"[...document.querySelector('table[data-name={table}]').tBodies[0].rows]"
                            f".map(row => row.cells[{index}].textContent)")


def main(program, samples, chromium=None, pictures=None):
    if not chromium or not os.access(chromium, os.X_OK):
        print("no browser")
        return SKIPPED
    with tempfile.TemporaryDirectory(ignore_cleanup_errors=True) as folder:
        page = Path(folder) / "report.html"
        subprocess.run([program, "report", "--quiet", "-o", page, f"{samples}/damaged.rtcm2"], check=True)
        browser = Browser(chromium, folder)
        try:
            browser.open(page)
            heading = "document.querySelector('table[data-name=rates]').tHead.rows[0].cells[%d].firstElementChild"
            before = column(browser, "rates", 3)
            browser.click(heading % 3)
            assert column(browser, "rates", 3) == sorted(before, key=int) != before, before
            browser.click(heading % 3)
            assert column(browser, "rates", 3) == sorted(before, key=int, reverse=True)
            browser.click(heading % 4)    # some have no rate; they come last
            rates = column(browser, "rates", 4)
            assert rates == sorted(rates, key=lambda text: (text == "", float(text or 0))) and rates[-1] == "", rates
            wide = browser.evaluate("document.documentElement.scrollWidth - document.documentElement.clientWidth")
            assert wide <= 0, f"{wide} pixels too wide"
            colour = "getComputedStyle(document.body).backgroundColor"
            light, light_picture = browser.evaluate(colour), browser.picture()
            browser.click("document.getElementById('theme')")
            dark, dark_picture = browser.evaluate(colour), browser.picture()
            assert light == "rgb(255, 255, 255)" and dark == "rgb(20, 24, 29)", (light, dark)
            assert light_picture.startswith(b"\x89PNG") and light_picture != dark_picture
            paper = base64.b64decode(browser.ask("Page.printToPDF", printBackground=True)["data"])
            assert paper.startswith(b"%PDF")
            assert not browser.complaints(), browser.complaints()
            for name, bytes_ in (("light.png", light_picture), ("dark.png", dark_picture), ("paper.pdf", paper)):
                if pictures:
                    (Path(pictures) / name).write_bytes(bytes_)
        finally:
            browser.process.kill()
            browser.process.wait()
    return 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
