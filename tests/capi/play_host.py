#!/usr/bin/env python3
"""Plays one of the hosts: waits until it has asked for its popup, clicks on the popup's button as a
player would until it is gone, and checks what the host printed.

usage: play_host.py RESOURCES HOST..."""
import os
import shutil
import socket
import subprocess
import sys
import tempfile
import time

BOUND = 90  # seconds
GREETING = "version 1.0.0, a popup: yes\n"
ANSWER = 'answer 0 {"action":"skip","msg":"hello"}\n'


def click_until_it_ends(host):
    end = time.monotonic() + BOUND
    while True:
        subprocess.run(["xdotool", "mousemove", "640", "450", "click", "1"], check=True)
        try:
            return host.wait(timeout=0.3)
        except subprocess.TimeoutExpired:
            if time.monotonic() > end:
                host.kill()
                sys.exit("the popup was not answered")


def main(resources, *command):
    with tempfile.TemporaryDirectory() as home, socket.socket() as service:
        service.bind(("127.0.0.1", 0))  # taken, but nothing listens: the service is not there
        address = f"http://127.0.0.1:{service.getsockname()[1]}"
        with subprocess.Popen([*command, resources, address], stdout=subprocess.PIPE, text=True,
                              env={**os.environ, "XDG_DATA_HOME": home}) as host:
            greeting = host.stdout.readline()
            if greeting != GREETING:
                host.kill()
                sys.exit(f"its first line is {greeting!r}, not {GREETING!r}")
            code = click_until_it_ends(host)
            printed = greeting + host.stdout.read()
    print(printed, end="")
    if (code, printed) != (0, GREETING + ANSWER):
        sys.exit(f"it ended with {code}; expected:\n{GREETING}{ANSWER}")


if __name__ == "__main__":
    if shutil.which("xdotool") is None:
        sys.exit("xdotool is not installed")
    main(*sys.argv[1:])
