"""Builds the one program of the deployment that is our own."""
import fcntl
import subprocess

from places import DEPLOY

FOLDER = DEPLOY.parent / "build" / "deploy"
RECEIVER = FOLDER / "zovkpopup-receiver"


def build_receiver():
    """Does nothing when it is there and newer than its sources."""
    FOLDER.mkdir(parents=True, exist_ok=True)
    with open(FOLDER / "lock", "wb") as lock:
        # Held on by what it runs, so that it is safe when this process is killed, too.
        fcntl.flock(lock, fcntl.LOCK_EX)
        for command in (["cmake", "-S", DEPLOY / "intake", "-B", FOLDER],
                        ["cmake", "--build", FOLDER, "--parallel"]):
            done = subprocess.run(command, check=False, capture_output=True, text=True,
                                  pass_fds=[lock.fileno()])
            if done.returncode != 0:
                raise RuntimeError(f"the receiver cannot be built:\n{done.stdout}{done.stderr}")
