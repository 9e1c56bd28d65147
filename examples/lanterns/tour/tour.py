#!/usr/bin/env python3
"""Plays the example game with a real pointer and real keys, and checks every answer it gets.

Needs a display of its own with a window manager, of the size that is given."""
import argparse
import json
import pathlib
import re
import sys
import tempfile
import time

from game import Game
from screen import Compositor, Screen, TourFailure, wait_until

PAGES = pathlib.Path(__file__).resolve().parent.parent / "resources" / "pages"
LANTERN_BAND = 0xD9B7A8  # around a lantern that is not lit
AGREE = 0x1A5FB4         # the library's own confirm button


def colour_in(file, name):
    found = re.search(rf"--{name}: #([0-9a-f]{{6}})", (PAGES / file).read_text(encoding="utf-8"))
    return int(found.group(1), 16)


def record(action, message=""):
    return json.dumps({"action": action, "msg": message}, separators=(",", ":"))


class Tour:
    def __init__(self, screen, game, pictures):
        self.screen, self.game, self.pictures = screen, game, pictures
        self.calls = self.shots = self.answers = 0
        self.wrong = []
        self.landscape = screen.width > screen.height

    # What the player does.

    def ask(self, what, key, calls=1, pointer=False):
        """Asks for popups by the game's key or, with the pointer, by its button."""
        self.screen.wait_active("Lanterns")
        print(f"  {what}", flush=True)
        if pointer:
            self.screen.click(*self.game.button(key))
        else:
            self.screen.key(key)
        first = self.calls + 1
        self.calls += calls
        for number in range(first, self.calls + 1):
            self.game.wait_line(f"#{number} show")
        return first

    def page(self, name, shot=True):
        """Waits for a page to stand on the screen; the box of its main button."""
        box = self.screen.wait_for(f"the page \"{name}\"", colour_in(f"{name}.html", "accent"))
        if shot:
            self.shoot(name)
        return box

    def press(self, name, shot=True):
        self.screen.click_box(self.page(name, shot))

    def press_later(self, name):
        self.page(name, shot=False)
        self.screen.click_box(self.screen.wait_for("the other button", colour_in("page.css", "quiet")))

    def press_cross(self, name, shot=True):
        self.page(name, shot)
        self.screen.click(*self._corner(right=True))

    def press_return(self, name):
        self.page(name)
        self.screen.click(*self._corner(right=False))

    def press_policy(self, agree):
        self.screen.wait_for("the policy's page", colour_in("page.css", "quiet"))
        box = self.screen.wait_for("the policy's buttons", AGREE)
        self.shoot("policy" if agree else "policy-by-scene")
        middle = (box[0] + box[2]) / 2
        # The two buttons stand side by side in the middle of the screen.
        self.screen.click(middle if agree else self.screen.width - middle, (box[1] + box[3]) / 2)

    def _corner(self, right):
        across, down = (38, 30) if self.landscape else (34, 34)
        return (self.screen.width - across if right else across, down)

    # What the tour looks for.

    def shoot(self, name):
        self.shots += 1
        self.screen.save(self.pictures / f"{self.shots:02d}-{name}.png")

    def expect(self, number, code, message):
        got = self.game.wait_line(f"#{number} answered ")
        expected = f"#{number} answered {code}, {message or 'no message'}"
        self.answers += 1
        if got == expected:
            print("      as expected", flush=True)
        else:
            self.wrong.append(got)
            print(f"      WRONG, expected: {expected}", flush=True)

    def expect_unanswered(self, number):
        if self.game.said(f"#{number} answered "):
            self.wrong.append(f"#{number} was answered too early")

    # The tour itself.

    def light_a_lantern(self):
        print("  A lantern is lit", flush=True)
        box = wait_until("a dark lantern", lambda: self.screen.find(LANTERN_BAND, 20))
        before = self.game.count()
        self.screen.click(box[0] + 10, (box[1] + box[3]) / 2)
        self.game.wait_line("lit ", before)

    def run(self):
        self.screen.wait_active("Lanterns")
        self.light_a_lantern()
        self.shoot("lake")

        number = self.ask("Welcome, answered by the page's button", "1", pointer=True)
        self.press("welcome")
        self.expect(number, 0, record("skip", "start"))

        number = self.ask("Welcome, closed with the cross", "1")
        self.press_cross("welcome", shot=False)
        self.expect(number, 0, record("skip"))

        number = self.ask("Events: two pages, one after another", "2")
        self.press("fair")
        self.page("double", shot=False)
        self.expect_unanswered(number)
        self.press("double")
        self.expect(number, 0, record("skip", "double"))

        number = self.ask("Events: the second is declined", "2", pointer=True)
        self.press("fair", shot=False)
        self.press_later("double")
        self.expect(number, 2, record("cancel", "not-tonight"))

        number = self.ask("Policy page by its scene, declined", "3")
        self.press_policy(agree=False)
        self.expect(number, 2, record("cancel"))

        number = self.ask("The new policy, agreed to", "4", pointer=True)
        self.press_policy(agree=True)
        self.expect(number, 0, record("skip"))

        number = self.ask("The policy again: it is not new any more", "4")
        self.expect(number, -1, "")

        number = self.ask("Two requests in quick succession", "5", calls=2)
        self.press("welcome", shot=False)
        self.expect(number, 0, record("skip", "start"))
        self.page("moon", shot=False)
        self.expect_unanswered(number + 1)
        self.press("moon")
        self.expect(number + 1, 0, record("skip", "moon"))

        number = self.ask("A page that comes once", "6", pointer=True)
        self.press("letter")
        self.expect(number, 0, record("skip", "read"))

        number = self.ask("The same again: it does not come back", "6")
        self.expect(number, -1, "No valid Popup now")

        number = self.ask("A small game, left by the arrow", "7")
        self.press_return("arcade")
        self.expect(number, 2, record("cancel"))

        number = self.ask("A gift, accepted; nobody takes the report", "8", pointer=True)
        self.press("gift")
        self.expect(number, 1, record("commit", "three-lanterns"))

        number = self.ask("A wish, sent over the other channel", "9")
        self.press("wish")
        self.expect(number, 1, record("commit", "calm-wind"))

        self.screen.wait_active("Lanterns")
        self.shoot("lake-again")
        self.screen.key("Escape")
        return self.game.wait_end()


def read_arguments():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--game", required=True, help="the game's program")
    parser.add_argument("--size", required=True, help="WIDTHxHEIGHT of the display")
    parser.add_argument("--pictures", required=True, type=pathlib.Path, help="where pictures go")
    return parser.parse_args()


def main():
    arguments = read_arguments()
    width, height = map(int, arguments.size.split("x"))
    arguments.pictures.mkdir(parents=True, exist_ok=True)
    began = time.monotonic()
    with tempfile.TemporaryDirectory(prefix="lanterns-") as data, Compositor():
        screen = Screen(width, height)
        game = Game([arguments.game, "--size", arguments.size, "--tour", "--data", data],
                    arguments.pictures / "game.log")
        tour = Tour(screen, game, arguments.pictures)
        try:
            tour.run()
        except TourFailure as failure:
            tour.wrong.append(str(failure))
            tour.shoot("failure")
        finally:
            game.close()
    for wrong in tour.wrong:
        print(f"  WRONG: {wrong}")
    print(f"  {arguments.size}: {tour.answers} answers, {len(tour.wrong)} wrong, "
          f"{tour.shots} pictures, {time.monotonic() - began:.0f} seconds", flush=True)
    return 1 if tour.wrong else 0


if __name__ == "__main__":
    sys.exit(main())
