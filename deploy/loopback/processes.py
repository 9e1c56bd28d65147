"""Finds and ends the processes of a deployment.

Each works in a folder below `parts`, which the kernel tells of any process. So nothing needs to be
remembered, and nothing is missed when what started them was ended in the middle.
"""
import os
import pathlib
import signal
import time


def folder_of(pid):
    try:
        return pathlib.Path(os.readlink(f"/proc/{pid}/cwd"))
    except OSError:
        return None


def has_terminal(pid):
    """Returns whether a person uses the process at a terminal, such as a shell in the folder."""
    try:
        fields = pathlib.Path(f"/proc/{pid}/stat").read_text(encoding="utf-8").rpartition(")")[2]
        return fields.split()[4] != "0"
    except (OSError, IndexError):
        return False


def is_below(path, folder):
    # The kernel adds a word to a folder that is gone.
    return f"{path} /".startswith((f"{folder} ", f"{folder}/"))


def processes_in(folder):
    pids = [int(name) for name in os.listdir("/proc") if name.isdigit()]
    return [pid for pid in pids
            if pid != os.getpid() and is_below(folder_of(pid), folder) and not has_terminal(pid)]


def end_processes(find, wanted=signal.SIGTERM, patience=15.0):
    """Ends what `find` finds, and kills what is still there after `patience` seconds."""
    end = time.monotonic() + patience
    asked = set()
    while pids := find():
        for pid in pids:
            try:
                if time.monotonic() > end:
                    os.kill(pid, signal.SIGKILL)
                elif pid not in asked:
                    os.kill(pid, wanted)
                    asked.add(pid)
            except ProcessLookupError:
                pass
        time.sleep(0.02)
