"""Publishing over ssh, with the real client and the real server; a pipe stands for the network."""
import getpass
import hashlib
import json
import os
import pathlib
import shlex
import subprocess
import tempfile
import unittest

from deployment import the_deployment, wait_until
from published import BUILD

SERVER = """\
HostKey {folder}/host
AuthorizedKeysFile {folder}/admitted
StrictModes no
UsePAM {pam}
PidFile none
"""
CLIENT = """\
Host edge.example
  User {user}
  IdentityFile {folder}/mine
  IdentitiesOnly yes
  BatchMode yes
  StrictHostKeyChecking no
  UserKnownHostsFile {folder}/known
  LogLevel ERROR
  ProxyCommand /usr/sbin/sshd -i -f {folder}/server
"""


def make_key(path):
    subprocess.run(["ssh-keygen", "-q", "-t", "ed25519", "-N", "", "-f", path], check=True)


class Ssh(unittest.TestCase):
    def setUp(self):
        self.edge = the_deployment()
        folder = tempfile.TemporaryDirectory(prefix="zovkpopup-ssh-")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        is_root = os.getuid() == 0
        if is_root:  # The server locks itself into it, and Debian makes it when it starts one.
            os.makedirs("/run/sshd", exist_ok=True)
        make_key(self.folder / "host")
        make_key(self.folder / "mine")
        self.admit("mine")
        facts = {"folder": self.folder, "user": getpass.getuser(), "pam": "yes" if is_root else "no"}
        (self.folder / "server").write_text(SERVER.format(**facts))
        (self.folder / "client").write_text(CLIENT.format(**facts))
        programs = self.folder / "programs"
        programs.mkdir()
        ssh = programs / "ssh"
        ssh.write_text(f'#!/bin/sh\nexec /usr/bin/ssh -F {shlex.quote(str(self.folder / "client"))} "$@"\n')
        ssh.chmod(0o700)
        self.environment = {**os.environ, "PATH": f"{programs}:{os.environ['PATH']}"}
        (self.folder / "pages").mkdir()
        self.document = self.folder / "popups.json"
        current = self.edge.places.site / "current"
        before = os.readlink(current)
        self.addCleanup(self.put_back, current, before)

    def put_back(self, current, before):
        current.unlink()
        current.symlink_to(before)

    def admit(self, name):
        (self.folder / "admitted").write_text((self.folder / f"{name}.pub").read_text())

    def publish(self, *more):
        return subprocess.run([BUILD / "bin" / "zovkpopup", "publish", self.document, "--to",
                               f"ssh:edge.example:{self.edge.places.site}", "--pages",
                               self.folder / "pages", *more],
                              check=False, capture_output=True, text=True, env=self.environment)

    def write_document(self, words):
        page = f"<!doctype html><title>News</title>" \
               f"<p>{words}</p>"
        (self.folder / "pages" / "news.html").write_text(page)
        self.document.write_text(json.dumps({"code": 0, "popups": [
            {"pop_id": 7, "scene": "welcome", "scene_type": 10, "pop_type": 1, "pop_freq": 2,
             "content_type": 1, "publish_time": 1795000000,
             "sig": hashlib.md5(page.encode()).hexdigest(),
             "uri": f"http://127.0.0.1:{self.edge.http_port}/pages/news.html"}]}))

    def page_text(self):
        document = json.loads(self.edge.get("/popup/get_info").body)
        address = document["popups"][0]["uri"]
        return self.edge.get(address.partition(f":{self.edge.http_port}")[2]).body.decode()

    def await_page(self, words):
        """Waits until the edge serves a page. The edge looks once a second which release is
        current."""
        wait_until(lambda: f"<p>{words}</p>" in self.page_text(), f"players get the page {words}")

    def test_puts_pages_and_document_behind_the_edge_and_takes_them_back(self):
        self.write_document("one")
        first = self.publish()
        self.assertEqual(first.returncode, 0, first.stdout + first.stderr)
        self.await_page("one")
        self.write_document("two")
        self.assertEqual(self.publish().returncode, 0)
        self.await_page("two")
        self.assertEqual(self.publish("--rollback").returncode, 0)
        self.await_page("one")

    def test_changes_nothing_when_the_server_does_not_know_the_key(self):
        self.write_document("one")
        self.assertEqual(self.publish().returncode, 0)
        current = os.readlink(self.edge.places.site / "current")
        make_key(self.folder / "another")
        self.admit("another")
        self.write_document("two")
        refused = self.publish()
        self.assertNotEqual(refused.returncode, 0)
        self.assertIn("255", refused.stderr)
        self.assertEqual(os.readlink(self.edge.places.site / "current"), current)
