"""Uses the pages of `tolvmsg catalogue` as a reader does, in Chromium.

Where SHOTS names a folder, pictures of the pages go there.
"""

import base64
import json
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time
import unittest
import urllib.request

from tool import run

DRIVER = shutil.which("chromedriver")
CHROMIUM = shutil.which("chromium")
OPTIONS = ["--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
           "--disable-background-networking", "--disable-component-update", "--disable-sync",
           "--hide-scrollbars", "--disable-dev-shm-usage",
           # Only files can be reached.
           "--host-resolver-rules=MAP * ~NOTFOUND"]
DOWN, UP, ENTER, ESCAPE = "\ue015", "\ue013", "\ue007", "\ue00c"
ELEMENT = "element-6066-11e4-a52e-4f735466cecf"


class Browser:
    def __init__(self, folder):
        # The driver chooses a free port and prints it.
        self.driver = subprocess.Popen([DRIVER, "--port=0"], stdout=subprocess.PIPE,
                                       stderr=subprocess.DEVNULL, text=True)
        try:
            self.start(folder)
        except BaseException:
            self.stop()
            raise

    def start(self, folder):
        port = next(line.rstrip(".\n").rpartition(" ")[2] for line in self.driver.stdout
                    if "started successfully on port" in line)
        self.base = f"http://127.0.0.1:{port}/session"
        chosen = {"browserName": "chrome", "goog:loggingPrefs": {"browser": "ALL"},
                  "goog:chromeOptions": {"binary": CHROMIUM,
                                         "args": [*OPTIONS, f"--user-data-dir={folder}"]}}
        session = self.ask("POST", "", {"capabilities": {"alwaysMatch": chosen}})
        self.base += "/" + session["sessionId"]

    def ask(self, method, path, body=None):
        request = urllib.request.Request(self.base + path, method=method,
                                         data=None if body is None else json.dumps(body).encode())
        with urllib.request.urlopen(request, timeout=120) as answer:
            return json.load(answer)["value"]

    def close(self):
        try:
            self.ask("DELETE", "")
        finally:
            self.stop()

    def stop(self):
        self.driver.terminate()
        self.driver.communicate()

    def open(self, path, width=1280):
        self.ask("POST", "/window/rect", {"width": width, "height": 900})
        self.ask("POST", "/url", {"url": path.as_uri()})

    def run(self, script):
        return self.ask("POST", "/execute/sync", {"script": "return " + script, "args": []})

    def keys(self, text):
        """Presses keys, whatever has the focus."""
        presses = [{"type": kind, "value": key} for key in text for kind in ("keyDown", "keyUp")]
        self.ask("POST", "/actions", {"actions": [{"type": "key", "id": "keys",
                                                   "actions": presses}]})

    def click(self, selector):
        found = self.ask("POST", "/element", {"using": "css selector", "value": selector})
        self.ask("POST", f"/element/{found[ELEMENT]}/click", {})

    def shot(self, name):
        if "SHOTS" in os.environ:
            path = pathlib.Path(os.environ["SHOTS"], name + ".png")
            path.write_bytes(base64.b64decode(self.ask("GET", "/screenshot")))


class Catalogue(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        cls.addClassCleanup(folder.cleanup)
        cls.site = pathlib.Path(folder.name, "site")
        assert run("catalogue", str(cls.site)).status == 0
        cls.browser = Browser(folder.name + "/profile")
        cls.addClassCleanup(cls.browser.close)

    def setUp(self):
        self.browser.open(self.site / "index.html")
        self.browser.run("localStorage.clear()")
        self.browser.open(self.site / "index.html")

    def tearDown(self):
        faults = [entry["message"] for entry in self.browser.ask("POST", "/se/log",
                                                                 {"type": "browser"})]
        self.assertEqual([], faults)

    def results(self):
        return self.browser.run(
            "[...document.querySelectorAll('#results .name')].map((name) => name.textContent)")

    def assertSoon(self, expected, ask):
        """Waits: the element may appear only with the next page."""
        end = time.monotonic() + 20
        while (answer := ask()) != expected and time.monotonic() < end:
            time.sleep(0.05)
        self.assertEqual(expected, answer)

    def search(self, text):
        self.browser.keys("/" + text)
        return self.results()

    def test_search_answers_as_one_types(self):
        self.assertEqual(143, self.browser.run(
            "document.querySelectorAll('#families li').length"))
        table = (
            # typed, the first result, the possible number of results
            ("connectm", "App::ConnectMessage", range(1, 2)),
            ("CONNECT", "App::ConnectMessage", range(3, 20)),         # those that begin so first
            ("3.0.0.1", "App::ConnectMessage", range(2, 20)),         # others begin so, too
            ("844424930131969", "App::ConnectMessage", range(1, 2)),
            ("0x0003000000000001", "App::ConnectMessage", range(1, 2)),
            ("0x3000000000001", "App::ConnectMessage", range(1, 2)),
            ("opens a conn", "App::ConnectMessage", range(1, 2)),     # role, word by word
            ("resourceid", "App::ChassisInformationResponseMessage", range(1, 2)),  # key, deep
            ("hardwarecomponent", "App::ChassisInformationResponseMessage", range(1, 2)),  # record
            ("nothing of that kind", None, range(0, 1)),
        )
        for typed, first, count in table:
            with self.subTest(typed):
                found = self.search(typed)
                self.assertEqual(first, found[0] if found else None)
                self.assertIn(len(found), count)
                self.assertEqual(typed == "resourceid", "key ResourceID" in self.browser.run(
                    "document.getElementById('results').textContent"))
                self.browser.keys(ESCAPE)
                self.assertFalse(self.browser.run("document.getElementById('families').hidden"))

    def test_keyboard_alone(self):
        found = self.search("trace")
        self.assertGreater(len(found), 5)
        self.browser.keys(DOWN + DOWN + UP)
        self.browser.shot("search")
        self.assertEqual(found[1], self.browser.run(
            "document.querySelector('#results [aria-current] .name').textContent"))
        self.browser.keys(ENTER)
        self.assertSoon(found[1], lambda: self.browser.run("document.title"))
        self.assertSoon(found[1].split("::")[1],
                        lambda: self.browser.run("document.querySelector('h1')?.textContent"))
        # And from a page back into the search.
        self.browser.keys("/fan" + ENTER)
        self.assertSoon("fan", lambda: self.browser.run(
            "document.getElementById('search')?.value"))
        self.assertSoon(True, lambda: "Attrs::FanBankMessage" in self.results())

    def test_theme(self):
        ground = "getComputedStyle(document.body).backgroundColor"
        before = self.browser.run(ground)
        self.browser.click("#theme")
        after = self.browser.run(ground)
        self.assertEqual({"rgb(255, 255, 255)", "rgb(16, 21, 27)"}, {before, after})
        self.browser.open(self.site / "App.ChassisInformationResponseMessage.html")
        self.assertEqual(after, self.browser.run(ground))  # the choice stays
        self.browser.shot("dark")
        self.browser.click("#theme")
        self.assertEqual(before, self.browser.run(ground))
        self.browser.shot("light")

    def test_nothing_is_wider_than_the_window(self):
        for page in ("index.html", "Attrs.SegmentedComplexTraceMessage.html",
                     "App.ChassisInformationResponseMessage.html"):
            for width in (500, 900):
                with self.subTest(page=page, width=width):
                    self.browser.open(self.site / page, width)
                    self.assertLessEqual(
                        self.browser.run("document.documentElement.scrollWidth - innerWidth"), 0)
                    self.browser.shot(f"{page.partition('M')[0]}{width}")

    def test_header_stays(self):
        self.browser.run("scrollTo(0, 2000)")
        self.assertEqual(0, self.browser.run(
            "document.querySelector('.top').getBoundingClientRect().top"))


if __name__ == "__main__":
    if DRIVER is None or CHROMIUM is None:
        sys.exit("chromium and chromedriver are needed; scripts/setup installs them")
    unittest.main()
