"""Programs that are started, tell line by line what happens in them, and end."""
import pathlib
import subprocess
import threading

from screen import DEADLINE, TourFailure, wait_until


class Program:
    quiet = "button "  # the start of lines that are not for people

    def __init__(self, name, command, log):
        self.name = name
        self.lines = []
        self.changed = threading.Condition()
        self.log = open(log, "a", encoding="utf-8")
        self.process = subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=self.log,
                                        text=True, encoding="utf-8")
        self.reader = threading.Thread(target=self._read, daemon=True)
        self.reader.start()

    def _read(self):
        for line in self.process.stdout:
            line = line.rstrip("\n")
            if not line.startswith(self.quiet):
                print(f"    {line}", flush=True)
            with self.changed:
                self.lines.append(line)
                self.changed.notify_all()

    def said(self, start, after=0, within=0):
        """Returns the first line that begins with `start`, behind the first `after` lines. Waits
        for it for `within` seconds at most."""
        def found():
            return next((line for line in self.lines[after:] if line.startswith(start)), None)
        with self.changed:
            self.changed.wait_for(lambda: found() or self.process.poll() is not None, within)
            if not found() and self.process.poll() is not None:
                raise TourFailure(f"the {self.name} ended with {self.process.returncode}")
            return found()

    def wait_line(self, start, after=0):
        line = self.said(start, after, DEADLINE)
        if line is None:
            raise TourFailure(f"waited {DEADLINE:.0f} seconds in vain for \"{start}…\"")
        return line

    def count(self):
        with self.changed:
            return len(self.lines)

    def close(self):
        if self.process.poll() is None:
            self.process.kill()
            self.process.wait()
        self.log.close()


class Game(Program):
    quiet = ("button ", "paused", "goes on", "has the keyboard", "lost the keyboard")

    def __init__(self, command, log):
        self.began = len(log.read_text(encoding="utf-8")) if log.exists() else 0
        super().__init__("game", command, log)

    def troubles(self):
        """Returns what the game's log says about popups that did not come up as they should."""
        told = pathlib.Path(self.log.name).read_text(encoding="utf-8")[self.began:]
        return [line for line in told.splitlines() if " helper: " in line]

    def pad(self, button):
        """Presses a button of the game pad."""
        self.process.stdin.write(button + "\n")
        self.process.stdin.flush()

    def button(self, key):
        return tuple(map(int, self.wait_line(f"button {key} at ").split()[-2:]))

    def wait_keyboard(self):
        """Waits until the game's window has the keyboard, as the game itself was informed."""
        def has_it():
            with self.changed:
                told = [line for line in self.lines if line.endswith(" the keyboard")]
            return bool(told) and told[-1].startswith("has ")
        wait_until("the keyboard to be with the game", has_it)

    def wait_end(self):
        try:
            status = self.process.wait(DEADLINE)
        except subprocess.TimeoutExpired:
            raise TourFailure("the game does not end") from None
        self.reader.join()
        if status != 0:
            raise TourFailure(f"the game ended with {status}")
        return self.lines[-1]
