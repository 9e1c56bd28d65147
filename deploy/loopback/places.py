"""Where a deployment on this machine keeps everything, and how its configuration is filled in."""
import json
import os
import pathlib
import pwd
import re
import socket
import tempfile

DEPLOY = pathlib.Path(__file__).resolve().parent.parent
ADDRESS = "127.0.0.1"


def default_state():
    return pathlib.Path(tempfile.gettempdir()) / f"zovkpopup-deploy-{os.getuid()}"


def free_ports(count):
    """Ports that the kernel picks, all different."""
    sockets = [socket.socket() for _ in range(count)]
    try:
        for one in sockets:
            one.bind((ADDRESS, 0))
        return [one.getsockname()[1] for one in sockets]
    finally:
        for one in sockets:
            one.close()


def database_user():
    """Returns the user that PostgreSQL runs as. It refuses to run as root."""
    return "postgres" if os.getuid() == 0 else pwd.getpwuid(os.getuid()).pw_name


class Places:
    """The folder of one deployment. Each part works in a folder of its own below `parts`."""

    def __init__(self, state):
        self.state = pathlib.Path(state).resolve()
        self.parts = self.state / "parts"
        self.site = self.state / "site"
        self.games = self.state / "games.json"
        self.sockets = self.state / "sockets"
        self.intake = self.sockets / "intake"
        self.stream = self.sockets / "stream"
        self.rule = self.sockets / "rule"
        self.facts = self.state / "facts.json"

    def part(self, name):
        return self.parts / name

    @property
    def database(self):
        return f"host={self.sockets} user={database_user()} dbname=postgres"

    def write_facts(self, facts):
        new = self.facts.with_suffix(".new")
        new.write_text(json.dumps(facts, indent=2), encoding="utf-8")
        new.rename(self.facts)

    def read_facts(self):
        return json.loads(self.facts.read_text(encoding="utf-8"))


def fill_in(template, target, words):
    """Writes a configuration with its @WORDS@ replaced; each must be known."""
    text = (DEPLOY / template).read_text(encoding="utf-8")
    target.write_text(re.sub(r"@([A-Z_]+)@", lambda word: str(words[word[1]]), text),
                      encoding="utf-8")
