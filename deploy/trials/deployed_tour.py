#!/usr/bin/env python3
"""Plays the example game's tour against a deployment: real clicks and keys, and each answer's way
into the database. Needs a display of its own, of the size that is given."""
import pathlib
import sys

HERE = pathlib.Path(__file__).resolve().parent
sys.path[:0] = [str(HERE), str(HERE.parent.parent / "examples" / "lanterns" / "tour")]

from published import PublishedService  # noqa: E402 (it lies beside this file)
from tour import Tour, command_line, play  # noqa: E402 (it lies with the game)


class DeployedTour(Tour):
    def open_service(self, folder):
        return PublishedService(folder)


if __name__ == "__main__":
    sys.exit(play(DeployedTour, command_line(__doc__).parse_args()))
