"""The development service with its console, on a folder of its own."""
import http.client
import json
import os
import pathlib
import re
import signal
import subprocess
import tempfile

KEY = "s3cret-key"
GAME = "1001"
PAGE = """<!doctype html>
<html lang="en">
<meta charset="utf-8">
<meta name="viewport" content="width=device-width">
<title>Welcome</title>
<body style="background: #fffaf3">
<h1>Welcome to the lake</h1>
<button onclick="window.webkit.messageHandlers.ZOVKPopup.postMessage(
    JSON.stringify({action: 'commit', msg: 'lantern'}))">Light one</button>
</html>
"""


def entry(pop_id, scene, **more):
    """Returns a popup in which the checker finds no problem."""
    return {"pop_id": pop_id, "scene": scene, "scene_type": 1, "pop_type": 1, "pop_freq": 2,
            "page": f"{scene}.html", "report_url": "{{base}}/report/" + scene, **more}


class Service:
    def __init__(self, folder=None, popups=(), arguments=(), program=None):
        self.program = program or os.environ["ZOVKPOPUP_SERVICE"]
        self.own = tempfile.TemporaryDirectory(prefix="zovkpopup-console-") if folder is None else None
        self.folder = pathlib.Path(folder or self.own.name)
        (self.folder / "pages").mkdir(exist_ok=True)
        if self.own:
            self.write("games.json", json.dumps({GAME: KEY}))
            self.write("config.json", json.dumps({"code": 0, "popups": list(popups)}))
            for popup in popups:
                self.write("pages/" + popup["page"], PAGE)
        self.arguments = arguments
        self.start()

    def write(self, name, text):
        (self.folder / name).write_text(text)

    def read(self, name):
        return (self.folder / name).read_text()

    def config(self):
        return json.loads(self.read("config.json"))

    def start(self):
        self.errors = open(self.folder / "errors.log", "w+b")
        self.process = subprocess.Popen(
            [self.program, str(self.folder), *self.arguments],
            stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        line = self.process.stdout.readline()
        if not line.startswith("listening on "):
            raise AssertionError(line + self.process.stderr.read())
        self.base = line.split()[-1]
        # Warnings may stand before it.
        while not (found := re.search(r"console at (\S+)#token=(\S+)", self.process.stderr.readline())):
            pass
        self.console, self.token = found.groups()
        self.address = self.console + "#token=" + self.token
        self.port = int(self.console.rstrip("/").rpartition(":")[2])

    def kill(self):
        self.process.send_signal(signal.SIGKILL)
        self.wait()

    def wait(self):
        code = self.process.wait(20)
        self.process.stdout.close()
        self.process.stderr.close()
        self.errors.close()
        return code

    def stop(self):
        if self.process.poll() is None:
            self.process.send_signal(signal.SIGTERM)
        code = self.wait()
        if self.own:
            self.own.cleanup()
        return code

    def request(self, method, path, body=None, headers=None, token=True):
        """Returns status, headers and text of an answer."""
        connection = http.client.HTTPConnection("127.0.0.1", self.port, timeout=20)
        try:
            sent = dict(headers or {})
            if token:
                sent["X-Console-Token"] = self.token
            text = body if body is None or isinstance(body, (str, bytes)) else json.dumps(body)
            connection.request(method, path, text, sent)
            answer = connection.getresponse()
            return answer.status, answer.headers, answer.read().decode()
        finally:
            connection.close()

    def get(self, path):
        status, _, text = self.request("GET", "/console/api/" + path)
        assert status == 200, (status, text)
        return json.loads(text)

    def post(self, path, status=200, /, **members):
        got, _, text = self.request("POST", "/console/api/" + path, members)
        assert got == status, (got, text)
        return json.loads(text)

    def popup(self, pop_id):
        """Returns a popup of the overview by its number."""
        return next(p for p in self.get("popups")["popups"] if p["entry"]["pop_id"] == pop_id)
