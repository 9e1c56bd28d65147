"""A person at the screen, with a keyboard, who answers popups and leaves games."""
import os
import subprocess
import time

DEADLINE = 120.0  # seconds for a program to end
LOOK_AGAIN = 0.1


class Person:
    """Looks at a program until it ends. Popups that stand on the screen are answered with a key, if
    there is one; a game, which goes on after the answer, is then ended."""

    def __init__(self, key, leaves):
        self.key = key
        self.leaves = leaves

    def watch(self, process, output):
        end = time.monotonic() + DEADLINE
        left = False
        while process.poll() is None:
            if time.monotonic() > end:
                process.kill()
                raise TimeoutError(f"it did not end within {DEADLINE:.0f} seconds; it said:\n{output.read_text()}")
            if self.leaves and "answered " in output.read_text(errors="replace"):
                if not left:
                    process.terminate()  # a shell may have its children ignore interrupts
                left = True
            elif self.key and self._popup_is_up():
                subprocess.run(["xdotool", "key", self.key], check=True)
            time.sleep(LOOK_AGAIN)

    @staticmethod
    def _popup_is_up():
        """Popups come from the helper program, whose window has the keyboard then."""
        found = subprocess.run(["xdotool", "getactivewindow", "getwindowpid"], check=False,
                               stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        try:
            return os.readlink(f"/proc/{found.stdout.strip()}/exe").endswith("zovkpopup-helper")
        except OSError:
            return False
