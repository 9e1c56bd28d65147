#!/usr/bin/env python3
"""What the start of a game costs its popup service: requests, connections and bytes of HTTP, for a
new player and at the next start, between the library and the development service. Needs no screen.

usage: start_cost.py BUILD, a build folder with the library and the service"""
import argparse
import contextlib
import ctypes
import json
import pathlib
import random
import re
import select
import socket
import subprocess
import sys
import tempfile
import threading
import time

CASES = [(0, 0), (1, 50_000), (10, 50_000), (50, 50_000)]  # pages, bytes of each
DEADLINE = 60.0


class Settings(ctypes.Structure):
    _fields_ = [("size", ctypes.c_size_t), ("application_id", ctypes.c_char_p),
                ("resource_directory", ctypes.c_char_p), ("data_directory", ctypes.c_char_p),
                ("helper_path", ctypes.c_char_p), ("native_window", ctypes.c_uint64),
                ("certificate_authority", ctypes.c_char_p), ("log", ctypes.c_void_p),
                ("log_user", ctypes.c_void_p), ("log_destroy", ctypes.c_void_p)]


def play(library, address, folder, scenes):
    """Starts a game that ends when it is asked to and has every page; it shows nothing."""
    api = ctypes.CDLL(library)
    api.zovkpopup_have_popup.argtypes = [ctypes.c_uint64]
    api.zovkpopup_have_popup.restype = ctypes.c_bool
    settings = Settings(size=ctypes.sizeof(Settings), application_id=b"start-cost",
                        resource_directory=folder.encode(), data_directory=folder.encode(),
                        helper_path=b"/bin/false")
    api.zovkpopup_set_up(ctypes.byref(settings))
    api.zovkpopup_start(address.encode(), b"1001", b"s3cret-key")
    end = time.monotonic() + DEADLINE
    told = False
    while not (told and all(api.zovkpopup_have_popup(n + 1) for n in range(scenes))):
        if time.monotonic() > end:
            sys.exit("not every page came")
        sources = [api.zovkpopup_poll_descriptor()] + [sys.stdin] * (not told)
        ready, _, _ = select.select(sources, [], [], 0.1)
        told = told or sys.stdin in ready
        api.zovkpopup_pump(2000)
    api.zovkpopup_shut_down()


class Meter:
    """Stands between game and service and counts what passes."""

    def __init__(self):
        self.listener = socket.create_server(("127.0.0.1", 0))
        self.address = "http://127.0.0.1:%d" % self.listener.getsockname()[1]
        self.service = None
        self.changed = threading.Condition()
        self.reset()
        threading.Thread(target=self._accept, daemon=True).start()

    def reset(self):
        self.connections = []

    def up(self):
        return sum(len(connection["up"]) for connection in self.connections)

    def down(self):
        return sum(len(connection["down"]) for connection in self.connections)

    def statuses(self):
        return [int(status) for connection in self.connections
                for status in re.findall(rb"HTTP/1\.1 (\d{3}) ", bytes(connection["down"]))]

    def wait_answers(self, count):
        with self.changed:
            if not self.changed.wait_for(lambda: len(self.statuses()) >= count, DEADLINE):
                sys.exit(f"{len(self.statuses())} of {count} answers came")

    def _accept(self):
        while True:
            game, _ = self.listener.accept()
            service = socket.create_connection(self.service)
            seen = {"up": bytearray(), "down": bytearray()}
            self.connections.append(seen)
            for source, target, way in ((game, service, "up"), (service, game, "down")):
                threading.Thread(target=self._pass_on, args=(source, target, seen[way]),
                                 daemon=True).start()

    def _pass_on(self, source, target, seen):
        with contextlib.suppress(OSError):
            while data := source.recv(65536):
                target.sendall(data)
                with self.changed:
                    seen += data
                    self.changed.notify_all()
            target.shutdown(socket.SHUT_WR)


def write_service(folder, pages, size):
    (folder / "pages").mkdir(parents=True)
    popups = []
    for number in range(1, pages + 1):
        name = f"page-{number}.html"
        (folder / "pages" / name).write_bytes(random.Random(number).randbytes(size // 2).hex().encode())
        popups.append({"pop_id": number, "scene": f"scene-{number}", "scene_type": number,
                       "valid_platform": "", "pop_type": 1, "pop_freq": 2, "priority": 0,
                       "publish_time": 1700000000, "valid_time": 0, "expire_time": 0, "page": name,
                       "report_url": "{{base}}/report"})
    # An answer without popups is rejected, so "none" is one that is no page to download.
    if not popups:
        popups = [{"pop_id": 1, "scene": "none", "content_type": 3, "uri": "{{base}}/none"}]
    (folder / "config.json").write_text(json.dumps({"code": 0, "popups": popups}))


def one_start(meter, command, pages):
    meter.reset()
    with tempfile.TemporaryFile("w+") as log:
        game = subprocess.Popen([*command, meter.address], stdin=subprocess.PIPE, stderr=log)
        try:
            meter.wait_answers(pages + 1)
            game.stdin.close()
            if game.wait(DEADLINE) != 0:
                sys.exit("the game failed")
        except SystemExit:
            log.seek(0)
            print("What the game wrote:", log.read()[-20_000:], sep="\n", file=sys.stderr)
            raise
        finally:
            game.kill()
            game.wait()
    statuses = meter.statuses()
    return len(statuses), statuses.count(304), len(meter.connections), meter.up(), meter.down()


def measure(build, pages, size):
    with tempfile.TemporaryDirectory(prefix="start-cost-") as scratch:
        scratch = pathlib.Path(scratch)
        write_service(scratch / "service", pages, size)
        (scratch / "game").mkdir()
        meter = Meter()
        service = subprocess.Popen(
            [build / "bin/zovkpopup-service", scratch / "service", "--game", "1001=s3cret-key",
             "--base", meter.address], stdout=subprocess.PIPE, text=True)
        try:
            port = int(service.stdout.readline().rsplit(":", 1)[1])
            meter.service = ("127.0.0.1", port)
            command = [sys.executable, __file__, "--play", build / "lib/libzovkpopup.so",
                       scratch / "game", str(pages)]
            return [one_start(meter, command, pages) for _ in range(2)]
        finally:
            service.terminate()
            service.wait()
            service.stdout.close()


def main():
    if sys.argv[1:2] == ["--play"]:
        library, folder, scenes, address = sys.argv[2:]
        return play(library, address, folder, int(scenes))
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("build", type=pathlib.Path)
    build = parser.parse_args().build.resolve()
    print("pages  start   requests  not modified  connections  bytes up  bytes down")
    for pages, size in CASES:
        for name, figures in zip(("first", "second"), measure(build, pages, size)):
            print("%5d  %-6s  %8d  %12d  %11d  %8d  %10d" % (pages, name, *figures), flush=True)
        if figures[1] != pages:
            sys.exit(f"only {figures[1]} of {pages} pages were known at the second start")
    return 0


if __name__ == "__main__":
    sys.exit(main())
