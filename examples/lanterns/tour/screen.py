"""What a person has in front of the game: a screen to look at, a pointer and keys."""
import contextlib
import ctypes
import json
import os
import re
import subprocess
import time

from pixels import RootWindow

# Seconds for anything that is waited for; a machine that has much else to do needs more.
DEADLINE = float(os.environ.get("TOUR_PATIENCE", "20"))
LOOK_AGAIN = 0.05
UNTIL_IT_STANDS = 3.0


class TourFailure(Exception):
    """The game did not do what the tour expected of it."""


def wait_until(what, look):
    """Looks again and again; returns the first result that is not None or False."""
    end = time.monotonic() + DEADLINE
    while time.monotonic() < end:
        result = look()
        if result is not None and result is not False:
            return result
        time.sleep(LOOK_AGAIN)
    raise TourFailure(f"waited {DEADLINE:.0f} seconds in vain for {what}")


class Picture:
    """One look at the screen."""

    def __init__(self, pixels, stride, width, height):
        self.pixels, self.stride, self.width, self.height = pixels, stride, width, height

    def find(self, colour, run):
        """Returns the box (left, top, right, bottom) of the highest surface that has at least `run`
        pixels of a colour beside each other in each of its rows."""
        pattern = bytes((colour & 0xFF, colour >> 8 & 0xFF, colour >> 16 & 0xFF))
        # The fourth byte means nothing, and servers fill it with the one or the other.
        rows = (self._rows((pattern + b"\0") * run, run) or
                self._rows((pattern + b"\xff") * run, run))
        surfaces = []
        for row in rows:
            if not surfaces or row[0] != surfaces[-1][-1][0] + 1:
                surfaces.append([])
            surfaces[-1].append(row)
        if not surfaces:
            return None
        highest = max(surfaces, key=len)
        return (min(row[1] for row in highest), highest[0][0],
                max(row[2] for row in highest), highest[-1][0] + 1)

    def colours(self, left, top, right, bottom):
        """Returns the colours in a box."""
        seen = set()
        for y in range(top, bottom):
            row = self.pixels[y * self.stride + left * 4:y * self.stride + right * 4]
            seen.update(row[at:at + 3] for at in range(0, len(row), 4))
        return {int.from_bytes(colour, "little") for colour in seen}

    def _rows(self, needle, run):
        """Returns, for each row that has the colour, its place and the pixels from the first to the
        last one of that colour."""
        rows = []
        for y in range(self.height):
            row = self.pixels[y * self.stride:y * self.stride + self.width * 4]
            at = row.find(needle)
            if at >= 0:
                rows.append((y, at // 4, row.rfind(needle) // 4 + run))
        return rows


class Screen:
    """Its size and all places on it are those that programs see. The X server that it is drawn on
    has SCREEN_SCALE pixels for each."""

    def __init__(self, width, height):
        self.width, self.height = width, height
        self.game = (0, 0)  # where the game's window begins
        self.moves_popups = None  # the game's name, where popups may be moved after they came
        self.scale = float(os.environ.get("SCREEN_SCALE", "1"))
        self.plain = "-" not in os.environ.get("SCREEN_NAME", "")  # not within another display
        self.outside = dict(os.environ)
        for name in ("DISPLAY", "XAUTHORITY"):
            self.outside[name] = os.environ.get(f"OUTER_{name}", os.environ.get(name, ""))
        self.root = RootWindow(self.outside["DISPLAY"], self.outside["XAUTHORITY"])

    def look(self):
        width, height = round(self.width * self.scale), round(self.height * self.scale)
        return Picture(*self.root.read(width, height), width, height)

    def find(self, colour, run):
        box = self.look().find(colour, int(run * self.scale))
        return box and tuple(place / self.scale for place in box)

    def colours(self, left, top, right, bottom):
        box = [int(place * self.scale) for place in (left, top, right, bottom)]
        return self.look().colours(*box)

    def wait_for(self, what, colour, run=80):
        """Waits for a surface of a colour that stays where it is for two looks; its box."""
        seen = [None]

        def resting():
            before, seen[0] = seen[0], self.find(colour, run)
            return seen[0] if seen[0] == before else None
        return wait_until(what, resting)

    def point(self, x, y):
        self._xdotool("mousemove", *self._pixel(x, y))

    def click(self, x, y):
        # Not in one leap, as no hand does: compositors look for what is under it once a frame.
        nested = () if self.plain else ("mousemove", *self._pixel(x - 4, y), "sleep", "0.1")
        self._xdotool(*nested, "mousemove", *self._pixel(x, y), "click", "1")
        # Out of the way, so that nothing looks different because the pointer is over it.
        self.point(*self.in_game(self.width / 2, 3))

    def wake(self):
        """Compositors that are drawn on another display may keep the pointer's moves from a program
        of XWayland until it was clicked once."""
        if not self.plain:
            self.click(*self.in_game(self.width / 2, 3))

    def find_game(self, name):
        """Learns where the game's window is. Compositors may put windows of XWayland elsewhere than
        into the corner of the screen; Wayland does not say where a window is."""
        if self.plain or os.environ["SDL_VIDEODRIVER"] != "x11":
            return
        self.game = self._place("-name", name)
        # Popups on Wayland, and all windows in kiosks, are as large as the screen.
        if os.environ["GDK_BACKEND"] == "x11" and not os.environ["SCREEN_NAME"].startswith("kiosk"):
            self.moves_popups = name

    @property
    def popup(self):
        """Where the popup's window begins."""
        if not self.moves_popups:
            return 0, 0
        found = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", self.moves_popups],
                               stdout=subprocess.PIPE, text=True, check=False).stdout.split()
        places = [self._place("-id", window) for window in found]
        return next((place for place in places if place and place != self.game), self.game)

    def wait_for_place(self):
        """A popup that was put elsewhere than over the game takes the whole screen after a moment."""
        end = time.monotonic() + UNTIL_IT_STANDS
        while self.popup not in (self.game, (0, 0)) and time.monotonic() < end:
            time.sleep(LOOK_AGAIN)

    @staticmethod
    def _place(*window):
        """Empty for a window that is gone."""
        told = subprocess.run(["xwininfo", *window], stdout=subprocess.PIPE,
                              stderr=subprocess.DEVNULL, text=True, check=False)
        return tuple(map(int, re.findall(r"Absolute upper-left [XY]: +(-?\d+)", told.stdout)))

    def in_game(self, x, y):
        """Returns the place on the screen of a place in the game's window."""
        return max(1, self.game[0] + x), max(1, self.game[1] + y)

    def click_box(self, box):
        self.click((box[0] + box[2]) / 2, (box[1] + box[3]) / 2)

    def key(self, name):
        self._xdotool("key", name)

    def save(self, path):
        subprocess.run(["import", "-window", "root", str(path)], check=True, env=self.outside)

    def manage(self, *words):
        """A command for sway or i3, as the player's own keys send it."""
        tool = "i3-msg" if self.plain else "swaymsg"
        done = subprocess.run([tool, *words], stdout=subprocess.PIPE, text=True, check=False)
        if done.returncode != 0:
            raise TourFailure(f"{tool} {' '.join(words)}: {done.stdout}")
        return done.stdout

    def outputs(self):
        """The names of sway's outputs."""
        return {output["name"] for output in json.loads(self.manage("-r", "-t", "get_outputs"))}

    def _pixel(self, x, y):
        return str(int(x * self.scale)), str(int(y * self.scale))

    def _xdotool(self, *words):
        subprocess.run(["xdotool", *words], check=True, env=self.outside)


# The screens of scripts/with-display on which nothing blends windows by itself.
WITHOUT_COMPOSITOR = ("openbox", "i3", "bare")


def blending():
    """Has windows blended while it is entered, as on a desktop, so that the game shines through a
    popup."""
    bare = os.environ.get("SCREEN_NAME", "openbox") in WITHOUT_COMPOSITOR
    return Compositor() if bare else contextlib.nullcontext()


class Compositor:

    def __enter__(self):
        self.process = subprocess.Popen(["xcompmgr"], stderr=subprocess.DEVNULL)
        x11 = ctypes.CDLL("libX11.so.6")
        x11.XOpenDisplay.restype = ctypes.c_void_p
        x11.XInternAtom.restype = x11.XGetSelectionOwner.restype = ctypes.c_ulong
        display = ctypes.c_void_p(x11.XOpenDisplay(None))
        atom = ctypes.c_ulong(x11.XInternAtom(display, b"_NET_WM_CM_S0", 0))
        wait_until("the compositor", lambda: x11.XGetSelectionOwner(display, atom) != 0)
        x11.XCloseDisplay(display)
        return self

    def __exit__(self, *_):
        self.process.terminate()
        self.process.wait()
