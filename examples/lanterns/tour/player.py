"""What the player does in the game, and what the tour looks for afterwards."""
import json
import pathlib
import re

from screen import wait_until

PAGES = pathlib.Path(__file__).resolve().parent.parent / "resources" / "pages"
LANTERN_BAND = 0xD9B7A8  # around a lantern that is not lit
AGREE = 0x1A5FB4         # the library's own confirm button
PAD_RING = 0xF6C344      # around what a game pad is at
PAD_LETTERS = 0xEEEEEC   # of the line at the foot
OPAQUE = ("arcade",)     # pages that fill the screen
SKY = 40                 # colours that a ground without the game does not have
LIGHTING = 2.0           # seconds after which a lantern that was tapped is bright


def colour_in(file, name):
    found = re.search(rf"--{name}: #([0-9a-f]{{6}})", (PAGES / file).read_text(encoding="utf-8"))
    return int(found.group(1), 16)


def record(action, message=""):
    return json.dumps({"action": action, "msg": message}, separators=(",", ":"))


class Album:
    """The pictures, and what was right and wrong, over all starts of the game."""

    def __init__(self, screen, directory):
        self.screen, self.directory = screen, directory
        self.shots = self.checks = 0
        self.wrong = []

    def shoot(self, name):
        self.shots += 1
        self.screen.save(self.directory / f"{self.shots:02d}-{name}.png")

    def check(self, got, expected):
        self.checks += 1
        if got == expected:
            print("      as expected", flush=True)
        else:
            self.wrong.append(str(got))
            print(f"      WRONG: {got}\n      expected: {expected}", flush=True)


class Player:
    def __init__(self, screen, game, album):
        self.screen, self.game, self.album = screen, game, album
        self.calls = 0
        self.landscape = screen.width > screen.height

    # What the player does.

    def ask(self, what, key, calls=1, pointer=False):
        """Asks for popups by the game's key or, with the pointer, by its button."""
        self.game.wait_keyboard()
        print(f"  {what}", flush=True)
        if pointer:
            self.screen.click(*self.screen.in_game(*self.game.button(key)))
        else:
            self.screen.key(key)
        first = self.calls + 1
        self.calls += calls
        for number in range(first, self.calls + 1):
            self.game.wait_line(f"#{number} show")
        return first

    def page(self, name, shot=True):
        """Waits for a page to stand on the screen; the box of its main button."""
        colour = colour_in(f"{name}.html", "accent")
        box = self.screen.wait_for(f"the page \"{name}\"", colour)
        if self.screen.moves_popups:
            self.screen.wait_for_place()
            box = self.screen.wait_for(f"the page \"{name}\"", colour)
        if shot:
            self.shoot(name)
        if shot and name not in OPAQUE:
            self.expect_game_behind()
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

    def press_policy(self, agree, picture=None):
        self.screen.wait_for("the policy's page", colour_in("page.css", "quiet"))
        box = self.screen.wait_for("the policy's buttons", AGREE)
        if picture:
            self.shoot(picture)
        middle = (box[0] + box[2]) / 2
        # The two buttons stand side by side in the middle of the popup.
        other = 2 * self.screen.popup[0] + self.screen.width - middle
        self.screen.click(middle if agree else other, (box[1] + box[3]) / 2)

    def press_permission(self, picture):
        self.screen.wait_for("the permission's page", colour_in("page.css", "quiet"))
        box = self.screen.wait_for("the permission's button", AGREE)
        self.shoot(picture)
        self.screen.click_box(box)

    def expect_pad_at_other(self, picture):
        """Waits for the ring of game pads to be around the page's other button, and checks the line
        that says what the pad's buttons do."""
        top = self.screen.wait_for("the other button", colour_in("page.css", "quiet"))[1]

        def around():
            ring = self.screen.find(PAD_RING, 80)
            return ring and top - 20 < ring[1] < top
        wait_until("the ring around the other button", around)
        self.shoot(picture)
        left, foot = self.screen.popup[0], self.screen.popup[1] + self.screen.height
        if foot <= self.screen.height:  # else it is below the screen's edge
            seen = self.screen.colours(left, foot - 40, left + 200, foot - 12)
            self.album.check("the pad's line" if PAD_LETTERS in seen else "no line", "the pad's line")

    def _corner(self, right):
        across, down = (38, 30) if self.landscape else (34, 34)
        left, top = self.screen.popup
        return left + (self.screen.width - across if right else across), top + down

    # What the tour looks for.

    def shoot(self, name):
        self.album.shoot(name)

    def expect_game_behind(self):
        """Checks that the game is visible around a page: its sky and its words, not one dark
        ground."""
        # Not where the pointer rests, which some compositors paint.
        left, top = self.screen.popup
        colours = len(self.screen.colours(left, top, left + self.screen.width * 0.4, top + 70))
        self.album.check("the game behind the page" if colours > SKY else f"{colours} colours",
                         "the game behind the page")

    def expect(self, number, code, message):
        self.album.check(self.game.wait_line(f"#{number} answered "),
                         f"#{number} answered {code}, {message or 'no message'}")

    def expect_unanswered(self, number):
        if self.game.said(f"#{number} answered "):
            self.album.wrong.append(f"#{number} was answered too early")

    def light_a_lantern(self):
        """Taps a dark lantern. The one that was lit last may still look dark, until it is drawn
        anew, and lanterns move: like any player, the tour taps again when nothing lights up."""
        print("  A lantern is lit", flush=True)
        before = self.game.count()

        def tap():
            box = self.screen.find(LANTERN_BAND, 20)
            if not box:
                return False
            self.screen.click(box[0] + 10, (box[1] + box[3]) / 2)
            return self.game.said("lit ", before, LIGHTING)
        wait_until("a lantern to be lit", tap)

    def light_until_the_night_ends(self):
        """Lights lanterns until the game itself asks for a popup."""
        self.game.wait_keyboard()
        self.calls += 1
        while not self.game.said(f"#{self.calls} show"):
            self.light_a_lantern()
        return self.calls

    def fly(self, key):
        """Brings out the pointer of those who play without a mouse."""
        self.screen.key(key)

    def leave(self):
        """Ends the game; what it says of itself last."""
        self.game.wait_keyboard()
        with self.game.changed:
            told = [line for line in self.game.lines if line in ("paused", "goes on")]
        self.album.check(told, ["paused", "goes on"] * max(1, len(told) // 2))
        self.screen.key("Escape")
        return self.game.wait_end()
