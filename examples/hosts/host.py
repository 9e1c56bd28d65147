#!/usr/bin/env python3
"""A game in Python: it greets the player with a popup and prints what the player chose.
usage: host.py RESOURCES SERVICE, with the library's path in ZOVKPOPUP_LIBRARY if need be."""
import ctypes
import os
import select
import sys
from ctypes import CFUNCTYPE, POINTER, Structure, c_char_p, c_int32, c_size_t, c_uint64, c_void_p

library = ctypes.CDLL(os.environ.get("ZOVKPOPUP_LIBRARY", "libzovkpopup.so.1"))

# Python keeps the functions that it lends to C; so they are named, and outlive their use.
Event = CFUNCTYPE(None, c_void_p)
Complete = CFUNCTYPE(None, c_int32, c_char_p, c_void_p)


class Settings(Structure):
    """As far as this game knows them; the library takes the rest for defaults."""
    _fields_ = [("size", c_size_t), ("application_id", c_char_p),
                ("resource_directory", c_char_p)]


class Hooks(Structure):
    _fields_ = [("size", c_size_t), ("popups_will_appear", Event),
                ("popups_did_disappear", Event)]


library.zovkpopup_set_up.argtypes = [POINTER(Settings)]
library.zovkpopup_set_hooks.argtypes = [POINTER(Hooks)]
library.zovkpopup_start.argtypes = [c_char_p, c_char_p, c_char_p]
library.zovkpopup_have_popup.argtypes = [c_uint64]
library.zovkpopup_have_popup.restype = ctypes.c_bool
library.zovkpopup_show_popup.argtypes = [c_char_p, c_uint64, Complete, c_void_p, c_void_p]
library.zovkpopup_version.restype = c_char_p
library.zovkpopup_error_message.restype = c_char_p


class Game:
    def __init__(self):
        self.is_paused = self.is_answered = False
        self.answered = Complete(self._answered)
        self.hooks = Hooks(ctypes.sizeof(Hooks), Event(lambda _: self._pause(True)),
                           Event(lambda _: self._pause(False)))

    def _pause(self, paused):
        self.is_paused = paused

    def _answered(self, code, message, _):
        print(f"answer {code} {message.decode()}")
        self.is_answered = True


def check(status):
    if status != 0:
        sys.exit(library.zovkpopup_error_message(status).decode())


def main(resources, service):
    settings = Settings(ctypes.sizeof(Settings), b"hello-host", os.fsencode(resources))
    check(library.zovkpopup_set_up(settings))
    game = Game()
    check(library.zovkpopup_set_hooks(game.hooks))
    check(library.zovkpopup_start(service.encode(), b"1", b"key"))
    have = "yes" if library.zovkpopup_have_popup(1) else "no"
    print(f"version {library.zovkpopup_version().decode()}, a popup: {have}", flush=True)
    check(library.zovkpopup_show_popup(b"hello", 0, game.answered, None, None))
    while not game.is_answered or game.is_paused:
        select.select([library.zovkpopup_poll_descriptor()], [], [], 0.016)
        library.zovkpopup_pump(2000)
    library.zovkpopup_shut_down()


main(*sys.argv[1:])
