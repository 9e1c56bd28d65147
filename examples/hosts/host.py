#!/usr/bin/env python3
"""A game in Python: it greets the player with a popup and prints what the player chose.
usage: host.py RESOURCES SERVICE, with the folder of zovkpopup.py in PYTHONPATH"""
import os
import select
import sys

import zovkpopup


class Game:
    def __init__(self):
        self.is_paused = self.is_answered = False
        # The library calls these later, so the game keeps them.
        self.answered = zovkpopup.Complete(self._answered)
        self.pause = zovkpopup.Event(lambda _: self._pause(True))
        self.resume = zovkpopup.Event(lambda _: self._pause(False))

    def _pause(self, paused):
        self.is_paused = paused

    def _answered(self, code, message, _):
        print(f"answer {code} {message.decode()}")
        self.is_answered = True


def main(resources, service):
    zovkpopup.check(zovkpopup.set_up(zovkpopup.Settings(
        application_id=b"hello-host", resource_directory=os.fsencode(resources))))
    game = Game()
    zovkpopup.check(zovkpopup.set_hooks(zovkpopup.Hooks(
        popups_will_appear=game.pause, popups_did_disappear=game.resume)))
    zovkpopup.check(zovkpopup.start(service, "1", "key"))
    have = "yes" if zovkpopup.have_popup(1) else "no"
    print(f"version {zovkpopup.version()}, a popup: {have}", flush=True)
    zovkpopup.check(zovkpopup.show_popup("hello", 0, game.answered, None, None))
    while not game.is_answered or game.is_paused:
        select.select([zovkpopup.poll_descriptor()], [], [], 0.016)
        zovkpopup.pump(2000)
    zovkpopup.shut_down()


main(*sys.argv[1:])
