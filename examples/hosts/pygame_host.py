#!/usr/bin/env python3
"""A game with pygame: popups stand over its window, and its sound pauses meanwhile.
usage: pygame_host.py RESOURCES SERVICE, with the folder of zovkpopup.py in PYTHONPATH"""
import os
import sys

import pygame
import zovkpopup


def main(resources, service):
    pygame.init()
    screen = pygame.display.set_mode((960, 540))
    window = f"x11:{pygame.display.get_wm_info()['window']}"
    zovkpopup.check(zovkpopup.set_up(zovkpopup.Settings(
        application_id=b"hello-host", resource_directory=os.fsencode(resources),
        game_window=window.encode())))
    answers = []
    # The library calls these later, so the game keeps them.
    answered = zovkpopup.Complete(lambda code, message, _: answers.append((code, message.decode())))
    pause = zovkpopup.Event(lambda _: pygame.mixer.get_init() and pygame.mixer.pause())
    resume = zovkpopup.Event(lambda _: pygame.mixer.get_init() and pygame.mixer.unpause())
    zovkpopup.check(zovkpopup.set_hooks(zovkpopup.Hooks(
        popups_will_appear=pause, popups_did_disappear=resume)))
    zovkpopup.check(zovkpopup.start(service, "1", "key"))
    have = "yes" if zovkpopup.have_popup(1) else "no"
    print(f"version {zovkpopup.version()}, a popup: {have}", flush=True)
    zovkpopup.check(zovkpopup.show_popup("hello", 0, answered, None, None))
    clock = pygame.time.Clock()
    while not answers and not pygame.event.peek(pygame.QUIT):
        pygame.event.pump()
        zovkpopup.pump(2000)
        screen.fill((20, 30, 60))
        pygame.display.flip()
        clock.tick(60)
    for code, message in answers:
        print(f"answer {code} {message}")
    zovkpopup.shut_down()
    pygame.quit()


main(*sys.argv[1:])
