"""A deployment for tests, and signed requests to it."""
import contextlib
import hashlib
import http.client
import json
import os
import pathlib
import signal
import subprocess
import sys
import tempfile
import time
import urllib.parse

DEPLOY = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(DEPLOY / "loopback"))

import psycopg  # noqa: E402
import redis  # noqa: E402

from places import ADDRESS, Places  # noqa: E402 (it lies in a folder beside this one)
from processes import folder_of, processes_in  # noqa: E402

GAME = "1001"
KEY = "s3cret-key"
INSTALL = "6F9619FF-8B86-D011-B42D-00CF4FC964FF"
# Enough for a machine that does other work beside.
PATIENCE = 60


def wait_until(done, what):
    end = time.monotonic() + PATIENCE
    while not done():
        if time.monotonic() > end:
            raise TimeoutError(f"waited in vain until {what}")
        time.sleep(0.01)


def parameters(install=INSTALL, game=GAME):
    return f"game_id={game}&install_id={install}&os=2&version=1.0.0"


def signed(path, body, install=INSTALL, game=GAME, key=KEY):
    """Returns the target of a request, as a game would send it."""
    common = parameters(install, game)
    plain = urllib.parse.unquote(path)
    sig = hashlib.md5(f"{plain}?{common}".encode() + body + key.encode()).hexdigest()
    return f"{path}?{common}&sig={sig}"


def report_body(player, popup=8, message="buyit"):
    choice = json.dumps({"action": "commit", "msg": message}, separators=(",", ":"))
    return json.dumps({"channel_id": 1, "gopenid": player, "token": "t0ken-of-a-player",
                       "jwt_token": "", "pop_id": popup, "scene": "shop", "data": choice},
                      separators=(",", ":")).encode()


def query_body(player, popup=8):
    return json.dumps({"channel_id": 1, "gopenid": player, "token": "t0ken-of-a-player",
                       "jwt_token": "", "pop_id": popup, "scene": "shop"},
                      separators=(",", ":")).encode()


class Deployment:
    """What deploy/up starts, in a folder of its own."""

    def __init__(self, *options):
        self.folder = tempfile.TemporaryDirectory(prefix="zovkpopup-trial-")
        os.chmod(self.folder.name, 0o711)
        self.places = Places(pathlib.Path(self.folder.name) / "state")
        self.up = [DEPLOY / "up", "--state", self.places.state, *options]
        started = subprocess.run(self.up, check=False, capture_output=True, text=True)
        if started.returncode != 0:
            logs = [path.read_text(errors="replace")[-2000:]
                    for path in self.places.parts.glob("*/*.log")]
            self.close()
            raise RuntimeError("\n".join([started.stderr, *logs]))
        self.facts = self.places.read_facts()

    def close(self):
        subprocess.run([DEPLOY / "down", "--state", self.places.state], check=True)
        self.folder.cleanup()

    @property
    def http_port(self):
        return self.facts["http_port"]

    @property
    def https_port(self):
        return self.facts["https_port"]

    @property
    def certificate(self):
        return self.places.part("edge") / "certificate.pem"

    def connect(self):
        return http.client.HTTPConnection(ADDRESS, self.http_port, timeout=20)

    def request(self, method, target, body=None, headers=None):
        with contextlib.closing(self.connect()) as connection:
            connection.request(method, target, body, headers or {})
            answer = connection.getresponse()
            answer.body = answer.read()
            return answer

    def get(self, target, **headers):
        names = {name.replace("_", "-"): value for name, value in headers.items()}
        return self.request("GET", target, None, names)

    def report(self, body, path="/report/shop", **how):
        return self.request("POST", signed(path, body, **how), body)

    def ask(self, body, path="/check/friend", **how):
        return self.request("POST", signed(path, body, **how), body)

    def stream(self):
        return redis.Redis(unix_socket_path=str(self.places.stream))

    def rows(self, statement, *values):
        with psycopg.connect(self.places.database) as connection:
            return connection.execute(statement, values).fetchall()

    def wait_until_stored(self):
        wait_until(lambda: self.stream().xlen("reports") == 0, "the stream is empty")

    def signal_part(self, name, number):
        pids = processes_in(self.places.part(name))
        for pid in pids:
            with contextlib.suppress(ProcessLookupError):
                os.kill(pid, number)
        return pids

    def edge_workers(self):
        """Returns the workers that take connections. A worker that a reload replaces serves the
        connections that it has, and ends."""
        def title(pid):
            with contextlib.suppress(OSError):
                return pathlib.Path(f"/proc/{pid}/cmdline").read_bytes().rstrip(b"\0 ")
        return {pid for pid in processes_in(self.places.part("edge"))
                if title(pid) == b"nginx: worker process"}

    def signal_supervisor(self, number):
        for pid in processes_in(self.places.parts):
            if folder_of(pid) == self.places.parts:
                os.kill(pid, number)

    @contextlib.contextmanager
    def halted(self, name):
        """Holds a part up, as a machine would that does not get on."""
        self.signal_part(name, signal.SIGSTOP)
        try:
            yield
        finally:
            self.signal_part(name, signal.SIGCONT)

    def publish_page(self, text):
        """Puts a page where publishing would, and gives its path."""
        page = text.encode()
        folder = self.places.site / "pages" / hashlib.md5(page).hexdigest()
        folder.mkdir(exist_ok=True)
        (folder / "page.html").write_bytes(page)
        return f"/pages/{folder.name}/page.html"

    def publish_document(self, document):
        folder = self.places.site / "releases" / "0" / "popup"
        folder.mkdir(parents=True, exist_ok=True)
        (folder / "get_info").write_bytes(document)


shared = None


def the_deployment():
    """Returns the deployment that all tests share which leave it unchanged."""
    global shared
    if shared is None:
        shared = Deployment("--one-address", "--backlog", "3000")
    return shared


def close_the_deployment():
    if shared is not None:
        shared.close()
