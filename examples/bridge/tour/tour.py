#!/usr/bin/env python3
"""Goes shopping in the example of the page bridge with a real pointer and real keys, and checks each
step in what the game says and in what the page shows.

Needs a display of its own, of the size that is given: one of scripts/with-display."""
import argparse
import json
import os
import pathlib
import re
import sys
import tempfile
import time

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent.parent / "lanterns" / "tour"))

from program import Game  # noqa: E402
from screen import Screen, TourFailure, blending, wait_until  # noqa: E402

PLAYER = "Inês & 'Tom' <b>"


class Desktop:
    """The settings of a desktop of its own, which the helper follows."""

    def __init__(self, directory):
        self.file = directory / "glib-2.0" / "settings" / "keyfile"
        self.file.parent.mkdir(parents=True)
        self.set_scheme("prefer-light")
        os.environ["XDG_CONFIG_HOME"] = str(directory)
        os.environ["GSETTINGS_BACKEND"] = "keyfile"

    def set_scheme(self, scheme):
        self.file.write_text(f"[org/gnome/desktop/interface]\ncolor-scheme='{scheme}'\n")


class Watched(Game):
    quiet = (*Game.quiet, "page ")


class Visit:
    def __init__(self, arguments, desktop):
        width, height = map(int, arguments.size.split("x"))
        self.screen = Screen(width, height)
        self.pictures, self.desktop = arguments.pictures, desktop
        self.steps = self.shots = 0
        self.wrong = []

    # What there is to see.

    def start(self, arguments, data):
        words = [arguments.game, "--size", arguments.size, "--player", PLAYER, "--data", str(data),
                 "--look", str(HERE / "look.js")]
        if arguments.full_screen:
            words += ["--full-screen", arguments.full_screen]
        self.game = Watched(words, arguments.pictures / "game.log")

    def page(self):
        """Returns what the page showed last; None before there is one."""
        with self.game.changed:
            line = next((line for line in reversed(self.game.lines) if line.startswith("page ")), None)
        return json.loads(line[5:]) if line else None

    def wait_page(self, what, holds):
        def look():
            page = self.page()
            return page if page and holds(page) else None
        return wait_until(f"the page to show {what}", look)

    def step(self, what):
        print(f"  {what}", flush=True)
        self.steps += 1

    def check(self, got, expected):
        if got != expected:
            self.wrong.append(f"{got!r} in place of {expected!r}")

    def shoot(self, name):
        self.shots += 1
        seen = [None]

        def resting():
            before, seen[0] = seen[0], self.screen.look().pixels
            return seen[0] == before
        wait_until("the screen to rest", resting)
        self.screen.save(self.pictures / f"{self.shots:02d}-{name}.png")

    def coins_before(self, line):
        """Returns the number of coins that the game had last reported before it wrote the line."""
        with self.game.changed:
            said = self.game.lines[:self.game.lines.index(line)]
        for earlier in reversed(said):
            found = re.match(r"a coin: (\d+)|sold \w+, (\d+) coins left", earlier)
            if found:
                return int(found[1] or found[2])
        return 30

    # What the player does.

    def enter(self):
        self.step("The page greets the player by name and shows the coins and the lanterns")
        self.game.wait_line("the page asks who plays")
        page = self.wait_page("the shelf", lambda page: page["lanterns"] and page["coins"].isdigit()
                              and page["keyboard"])
        self.check(page["hello"], f"Good evening, {PLAYER}")
        self.check([(lantern["price"], lantern["owned"]) for lantern in page["lanterns"].values()],
                   [("8", False), ("12", False), ("20", False), ("60", False)])
        self.check(page["wrong"], [])
        self.check(30 <= int(page["coins"]) < 60, True)
        self.shoot("light")
        self.screen.wake()

    def buy_with_the_pointer(self):
        self.step("A lantern is bought: the game sells it, and the page says so")
        self.screen.click(*self.page()["lanterns"]["moon"]["button"])
        sold = self.game.wait_line("sold moon, ")
        left = int(sold.split()[2])
        self.check(left, self.coins_before(sold) - 8)
        self.game.wait_line(f"the page shows \"{left}\"")
        self.wait_page("the lantern as bought", lambda page: page["lanterns"]["moon"]["owned"])

    def ask_for_too_much(self):
        self.step("One that costs too much: the game declines, and the page says why")
        self.screen.click(*self.page()["lanterns"]["star"]["button"])
        said = self.game.wait_line("not sold: ")
        self.check(said, f"not sold: {60 - self.coins_before(said)} coins short")
        page = self.wait_page("why", lambda page: page["lanterns"]["star"]["note"])
        self.check(page["lanterns"]["star"]["note"], f"{60 - int(page['coins'])} coins short")
        self.check(page["lanterns"]["star"]["owned"], False)
        self.check(page["wrong"], [])

    def hear_of_a_coin(self):
        self.step("The game pays a coin: the page is told, shows it and answers")
        before = self.game.count()
        coins = self.game.wait_line("a coin: ", before).split()[-1]
        self.game.wait_line(f"the page shows \"{coins}\"", before)
        self.wait_page(f"{coins} coins", lambda page: page["coins"] == coins)

    def tab_to(self, label):
        for _ in range(8):
            focus = self.page()["focus"]
            if focus == label:
                return
            self.screen.key("Tab")
            self.wait_page("another focus", lambda page: page["focus"] != focus)
        raise TourFailure(f"the tabulator does not reach \"{label}\"")

    def buy_with_the_keyboard(self):
        self.step("The theme turns dark; another lantern is bought with the keyboard")
        self.desktop.set_scheme("prefer-dark")
        self.wait_page("the dark theme", lambda page: page["dark"])
        self.tab_to("Plum Blossom, buy for 12 coins")
        self.shoot("dark")
        self.screen.key("Return")
        self.game.wait_line("sold plum, ")
        page = self.wait_page("the lantern as bought", lambda page: page["lanterns"]["plum"]["owned"])
        self.check(page["wrong"], [])

    def leave_and_return(self):
        self.step("The button closes the shop, space opens it again, and it knows what was bought")
        self.screen.click(*self.page()["close"])
        self.game.wait_line("the shop closes")
        self.game.wait_keyboard()
        self.shoot("harbour")
        before = self.game.count()
        self.screen.key("space")
        self.game.wait_line("the shop opens", before)
        self.game.wait_line("page ", before)
        page = self.wait_page("both lanterns and the keyboard", lambda page: page["keyboard"] and
                              [key for key, lantern in page["lanterns"].items()
                               if lantern["owned"]] == ["moon", "plum"])
        self.check(page["hello"], f"Good evening, {PLAYER}")
        self.shoot("again")

    def escape(self):
        self.step("Escape closes the shop, and once more ends the game")
        before = self.game.count()
        self.screen.key("Escape")
        self.game.wait_line("the shop closes", before)
        self.game.wait_keyboard()
        self.screen.key("Escape")
        self.game.wait_end()
        self.wrong += self.game.troubles()

    def run(self):
        self.enter()
        self.buy_with_the_pointer()
        self.ask_for_too_much()
        self.hear_of_a_coin()
        self.buy_with_the_keyboard()
        self.leave_and_return()
        self.escape()


def read_arguments():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--game", required=True, help="the game's program")
    parser.add_argument("--size", required=True, help="WIDTHxHEIGHT of the display")
    parser.add_argument("--pictures", required=True, type=pathlib.Path, help="where pictures go")
    parser.add_argument("--full-screen", help="how the game fills the screen")
    return parser.parse_args()


def main():
    arguments = read_arguments()
    arguments.pictures.mkdir(parents=True, exist_ok=True)
    began = time.monotonic()
    with tempfile.TemporaryDirectory(prefix="lantern-shop-") as scratch, blending():
        scratch = pathlib.Path(scratch)
        visit = Visit(arguments, Desktop(scratch / "desktop"))
        visit.start(arguments, scratch / "data")
        try:
            visit.run()
        except TourFailure as failure:
            visit.wrong.append(str(failure))
            visit.shoot("failure")
        finally:
            visit.game.close()
    for wrong in visit.wrong:
        print(f"  WRONG: {wrong}")
    print(f"  {arguments.size}: {visit.steps} steps, {len(visit.wrong)} wrong, {visit.shots} pictures, "
          f"{time.monotonic() - began:.0f} seconds", flush=True)
    return 1 if visit.wrong else 0


if __name__ == "__main__":
    sys.exit(main())
