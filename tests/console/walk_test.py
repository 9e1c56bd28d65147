#!/usr/bin/env python3
"""A popup's way: it is made, seen, checked and published in the console, shown by the example game,
answered there, counted in the console, and taken back. With a real browser and a real game.

Needs a display of its own: one of scripts/with-display."""
import os
import pathlib
import sys
import tempfile
import unittest

from browser import Browser
from console import Service

LANTERNS = pathlib.Path(__file__).resolve().parents[2] / "examples/lanterns"
sys.path.insert(0, str(LANTERNS / "tour"))
from player import colour_in  # noqa: E402 (it lies with the game)
from program import Game  # noqa: E402
from screen import Screen, blending, wait_until  # noqa: E402

ACCENT = "#0b7a55"  # nothing else on the screen has it
SIZE = (1280, 800)


class Walk(unittest.TestCase):
    def setUp(self):
        self.scratch = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory(prefix="walk-")))
        self.service = Service()
        self.addCleanup(self.service.stop)
        self.service.write("games.json", (LANTERNS / "service/games.json").read_text())
        self.browser = Browser(SIZE)
        self.addCleanup(self.browser.close)
        self.screen = Screen(*SIZE)

    def enterContext(self, context):  # which the library has from Python 3.11 on
        self.addCleanup(context.__exit__, None, None, None)
        return context.__enter__()

    def test_a_popup_is_made_seen_checked_published_played_counted_and_taken_back(self):
        self.browser.open(self.service.address)
        self.browser.type("#who", "Ada")
        self.make()
        self.see()
        self.check()
        self.publish()
        # A game has a machine to itself, more or less.
        self.browser.driver.get("about:blank")
        self.play("the first evening", self.page_is_there, int(ACCENT[1:], 16),
                  '1, {"action":"commit","msg":"lanterns"}', "walk-3-game")
        self.browser.open(self.service.address)
        self.count()
        self.take_back()
        self.browser.driver.get("about:blank")
        # The game's own welcome is back.
        self.play("the evening after", self.list_is_past, colour_in("welcome.html", "accent"),
                  "0, ", None)

    def make(self):
        self.browser.press("New popup")
        self.browser.type(".editor [name=scene]", "welcome")
        self.browser.type(".editor [name=scene_type]", "10")
        self.browser.script("""
            const area = document.querySelector('[name=page_text]');
            area.value = area.value.replace(/--accent: #[0-9a-f]{6}/g, '--accent: ' + arguments[0])
              .replace(/--on-accent: #[0-9a-f]{6}/g, '--on-accent: #ffffff')
              .replace(/<h1([^>]*)>[^<]*</, '<h1$1>The lanterns are back<')
              .replace(/<title>[^<]*</, '<title>The lanterns are back<')
              .replace('data-message="look"', 'data-message="lanterns"');
            area.dispatchEvent(new Event('input', {bubbles: true}));""", ACCENT)

    def see(self):
        frame = lambda: self.browser.driver.switch_to.frame(self.browser.find(".frame iframe"))

        def heading():
            self.browser.driver.switch_to.default_content()
            frame()
            return self.browser.all("h1") and self.browser.all("h1")[0].text
        self.browser.wait(lambda: heading() == "The lanterns are back", "the preview")
        self.browser.click("button")
        self.browser.driver.switch_to.default_content()
        self.browser.wait_text(".answer", '"action":"commit"')
        self.browser.picture("walk-1-made")

    def often(self, value):
        self.browser.script(
            "const f = document.querySelector('.editor [name=pop_freq]'); f.value = arguments[0];"
            "f.dispatchEvent(new Event('input', {bubbles: true}))", value)

    def check(self):
        self.often(3)
        self.browser.press("Publish")
        self.browser.wait_text(".problems", "It cannot be published")
        self.assertIn("is never shown without it", self.browser.text(".problems"))
        self.assertEqual(self.service.config()["popups"], [])
        self.browser.picture("walk-2-checked")

    def publish(self):
        self.often(2)
        self.browser.press("Publish")
        self.browser.wait_text(".chosen", "Live")
        self.assertEqual([p["scene"] for p in self.service.config()["popups"]], ["welcome"])

    def kept(self):
        """Returns what the game has kept of the service's files."""
        return (self.scratch / "data/Library/Caches/ZOVKPopup").glob("*")

    def page_is_there(self):
        return any(file.suffix == ".html" for file in self.kept())

    def list_is_past(self):
        return any(file.is_file() and b'"expire_time":1}' in file.read_bytes() for file in self.kept())

    def play(self, evening, ready, colour, answer, picture):
        game = Game([os.environ["ZOVKPOPUP_GAME"], "--size", "%dx%d" % SIZE, "--tour", "--data",
                     str(self.scratch / "data"), "--service", self.service.base],
                    self.scratch / "game.log")
        try:
            game.wait_keyboard()
            wait_until("what the service has", ready)
            self.screen.key("1")
            box = self.screen.wait_for(f"the popup of {evening}", colour)
            if picture and "ZOVKPOPUP_PICTURES" in os.environ:
                self.screen.save(pathlib.Path(os.environ["ZOVKPOPUP_PICTURES"]) / f"{picture}.png")
            self.screen.click_box(box)
            self.assertIn(f"#1 answered {answer}", game.wait_line("#1 answered "))
            # A game that ends takes what it has not sent yet with it.
            wait_until("the report", lambda: self.service.get("answers")["count"] == 1)
            game.wait_keyboard()
            self.screen.key("Escape")
            game.wait_end()
        finally:
            game.close()
            game.process.stdin.close()
            game.reader.join()
            game.process.stdout.close()

    def count(self):
        self.browser.section("answers")
        self.browser.wait_text(".count", "1 answer")
        self.browser.wait_text(".results", "welcome")
        self.assertEqual(len(self.browser.all(".canvas canvas")), 3)
        self.browser.click(".plot:last-child summary")
        self.assertIn("lanterns 1", self.browser.text(".plot:last-child table"))
        self.browser.picture("walk-4-counted")

    def take_back(self):
        self.browser.section("popups")
        self.browser.click('[aria-label="Roll back to release 1"]')
        self.browser.wait_text(".popups", "Draft")
        self.browser.picture("walk-5-taken-back")


if __name__ == "__main__":
    with blending():
        unittest.main()
