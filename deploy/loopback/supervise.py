#!/usr/bin/python3
"""Starts the parts of a deployment and starts each again when it ends, until it is told to stop.

On real machines systemd does that. Started by deploy/up.
"""
import os
import signal
import subprocess
import sys
import threading
import time

from parts import all_parts
from places import Places
from processes import end_processes, processes_in

SHORTEST_PAUSE = 0.05
LONGEST_PAUSE = 2.0
# Who lived for so long did not end at once.
GOOD_LIFE = 2.0
STARTUP_SECONDS = 30


class Keeper:
    """Keeps one part running."""

    def __init__(self, part, places, stopping):
        self.part = part
        self.folder = places.part(part.name)
        self.stopping = stopping
        self.process = None
        self.thread = threading.Thread(target=self._keep, name=part.name)

    def _start(self):
        with open(self.folder / "output.log", "ab") as output:
            return subprocess.Popen(
                [str(word) for word in self.part.command], cwd=self.folder, user=self.part.user,
                stdin=subprocess.DEVNULL, stdout=output, stderr=output, start_new_session=True)

    def _end_rest(self, patience):
        """Ends the processes that a killed part left behind, because they would hold its sockets or
        files."""
        end_processes(lambda: processes_in(self.folder), patience=patience)

    def _keep(self):
        pause = SHORTEST_PAUSE
        while not self.stopping.is_set():
            started = time.monotonic()
            self.process = self._start()
            self.process.wait()
            if self.stopping.is_set():
                return
            self._end_rest(patience=1.0)
            pause = SHORTEST_PAUSE if time.monotonic() - started > GOOD_LIFE else pause * 2
            self.stopping.wait(min(pause, LONGEST_PAUSE))

    def start(self):
        self.thread.start()
        end = time.monotonic() + STARTUP_SECONDS
        while not self.part.ready():
            if time.monotonic() > end or self.stopping.is_set():
                raise TimeoutError(f"{self.part.name} does not come up; see {self.folder}")
            time.sleep(0.05)

    def stop(self):
        if self.process and self.process.poll() is None:
            self.process.send_signal(getattr(signal, self.part.stop_signal))
            try:
                self.process.wait(timeout=10)
            except subprocess.TimeoutExpired:
                self.process.kill()
        if self.thread.ident:
            self.thread.join()
        self._end_rest(patience=1.0)


def reload_edge(places, edge):
    """Has the edge read its files again. If they cannot be read, the edge stays as it is, and nginx
    reports nothing."""
    trial = subprocess.run([*map(str, edge.part.command), "-t"], check=False, capture_output=True,
                           text=True)
    if trial.returncode == 0:
        edge.process.send_signal(signal.SIGHUP)
    else:
        print(f"the edge keeps what it has; {places.games} or its certificate cannot be read:",
              trial.stderr.strip(), file=sys.stderr, flush=True)


def watch_games(places, stopping, edge, receiver):
    """Applies a changed file of keys or a new certificate without a restart."""
    watched = [places.games, places.part("edge") / "certificate.pem"]

    def state():
        return [(path.stat().st_mtime_ns, path.stat().st_ino) if path.exists() else None
                for path in watched]
    before = state()
    while not stopping.wait(0.2):
        if (now := state()) != before:
            before = now
            reload_edge(places, edge)
            receiver.process.send_signal(signal.SIGHUP)


def main():
    places = Places(sys.argv[1])
    facts = places.read_facts()
    stopping = threading.Event()
    for number in (signal.SIGTERM, signal.SIGINT):
        signal.signal(number, lambda *_: stopping.set())
    keepers = [Keeper(part, places, stopping) for part in all_parts(places, facts)]
    try:
        for keeper in keepers:
            keeper.start()
        places.write_facts({**facts, "ready": True})
        by_name = {keeper.part.name: keeper for keeper in keepers}
        watch_games(places, stopping, by_name["edge"], by_name["receiver"])
    except TimeoutError as error:
        places.write_facts({**facts, "failed": str(error)})
    stopping.set()
    for keeper in reversed(keepers):
        keeper.stop()


if __name__ == "__main__":
    os.umask(0o022)
    main()
