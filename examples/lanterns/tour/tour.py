#!/usr/bin/env python3
"""Plays the example game with a real pointer and real keys, and checks every answer it gets: first
with what the game ships, then on three days with the popup service, which is down on the third.

Needs a display of its own, of the size that is given: one of scripts/with-display."""
import argparse
import contextlib
import os
import pathlib
import sys
import tempfile
import time

import moves
import served
import shipped
from player import Album, Player
from program import Game
from screen import Screen, TourFailure, blending
from service import Service


class Tour:
    def __init__(self, arguments, album):
        self.arguments, self.album = arguments, album

    def start(self, title, data, play, service=""):
        """Plays one start of the game, from its window to its end."""
        print(f" {title}", flush=True)
        words = [self.arguments.game, "--size", self.arguments.size, "--tour", "--pad",
                 "--data", str(data)]
        if service:
            words += ["--service", service]
        if self.arguments.full_screen:
            words += ["--full-screen", self.arguments.full_screen]
        game = Game(words, self.arguments.pictures / "game.log")
        try:
            player = Player(self.album.screen, game, self.album)
            player.game.wait_keyboard()
            self.album.screen.find_game("Lanterns")
            self.album.screen.wake()
            play(player)
            player.leave()
            # Weston puts popups over some full-screen games elsewhere at first.
            if os.environ["SCREEN_NAME"] != "weston-x11":
                self.album.wrong += game.troubles()
        except TourFailure:
            self.album.shoot("failure")
            raise
        finally:
            game.close()

    def open_service(self, folder):
        return Service(self.arguments.service, folder, self.arguments.pictures / "service.log")

    def run(self, scratch):
        if self.arguments.moves:
            self.start("While the game is moved about", scratch / "moves", moves.play)
            return
        if self.arguments.two:
            self.start("Two popups", scratch / "two", shipped.play_two)
            return
        if self.arguments.short:
            self.start("In short, with what the game ships", scratch / "short", shipped.play_some)
            return
        self.start("With what the game ships", scratch / "shipped", shipped.play)
        data = scratch / "served"
        with contextlib.closing(self.open_service(scratch / "service")) as service:
            address = service.address
            self.start("With the service, the first day", data,
                       lambda player: served.first_day(player, service, data), address)
            served.publish(service)
            self.start("The second day", data,
                       lambda player: served.second_day(player, service, data), address)
        self.start("The third day", data, served.third_day, address)


def command_line(description):
    parser = argparse.ArgumentParser(description=description)
    parser.add_argument("--game", required=True, help="the game's program")
    parser.add_argument("--size", required=True, help="WIDTHxHEIGHT of the display")
    parser.add_argument("--pictures", required=True, type=pathlib.Path, help="where pictures go")
    parser.add_argument("--full-screen", help="how the game fills the screen")
    parser.add_argument("--short", action="store_true", help="only some popups of each kind")
    return parser


def play(tour, arguments):
    """Plays a tour of that class; returns the program's exit code."""
    width, height = map(int, arguments.size.split("x"))
    arguments.pictures.mkdir(parents=True, exist_ok=True)
    album = Album(Screen(width, height), arguments.pictures)
    began = time.monotonic()
    with tempfile.TemporaryDirectory(prefix="lanterns-") as scratch, blending():
        try:
            tour(arguments, album).run(pathlib.Path(scratch))
        except TourFailure as failure:
            album.wrong.append(str(failure))
    for wrong in album.wrong:
        print(f"  WRONG: {wrong}")
    print(f"  {arguments.size}: {album.checks} answers and reports, {len(album.wrong)} wrong, "
          f"{album.shots} pictures, {time.monotonic() - began:.0f} seconds", flush=True)
    return 1 if album.wrong else 0


if __name__ == "__main__":
    words = command_line(__doc__)
    words.add_argument("--two", action="store_true", help="only two popups")
    words.add_argument("--moves", action="store_true",
                       help="only popups over a game that i3 or sway moves about")
    words.add_argument("--service", required=True, help="the popup service's program")
    sys.exit(play(Tour, words.parse_args()))
