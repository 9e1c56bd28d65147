"""The example game starts against the deployment, with what the tool published: the engine itself
asks for the document and the pages. It needs no display."""
import hashlib
import json
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

from deployment import DEPLOY, Deployment, wait_until

LANTERNS = DEPLOY.parent / "examples" / "lanterns"
sys.path.insert(0, str(LANTERNS / "tour"))

from service import fill_folder  # noqa: E402 (it lies with the game)

BUILD = pathlib.Path(os.environ.get("ZOVKPOPUP_BUILD", "build"))


class PublishedService:
    """What the example game's service offers, published to a deployment."""

    def __init__(self, deployment, folder):
        self.deployment, self.folder = deployment, folder
        self.address = f"http://127.0.0.1:{deployment.http_port}"
        fill_folder(folder)
        self.web = folder / "web"
        self.web.mkdir()
        shutil.move(folder / "pages" / "invitation.html", self.web)
        document = json.loads((folder / "config.json").read_text(encoding="utf-8"))
        self.popups = [self.completed(popup) for popup in document["popups"]]
        self.publish()

    def completed(self, popup):
        popup = json.loads(json.dumps(popup).replace("{{base}}", self.address))
        if page := popup.pop("page", None):
            content = (self.folder / "pages" / page).read_bytes()
            return {**popup, "content_type": 1, "uri": f"{self.address}/pages/{page}",
                    "sig": hashlib.md5(content).hexdigest()}
        return {**popup, "sig": hashlib.md5(popup["uri"].encode()).hexdigest()}

    def publish(self):
        document = self.folder / "popups.json"
        document.write_text(json.dumps({"code": 0, "popups": self.popups}), encoding="utf-8")
        subprocess.run([BUILD / "bin" / "zovkpopup", "publish", document, "--to",
                        self.deployment.places.site, "--pages", self.folder / "pages",
                        "--lasting", self.web], check=True, stdout=subprocess.DEVNULL)

    def page_files(self):
        """The names under which a game keeps the pages."""
        return ["ZOVKPopup_{scene_type}_{pop_type}_1_{sig}.html".format(**popup)
                for popup in self.popups if popup["content_type"] == 1]


class Lanterns(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        scratch = pathlib.Path(self.folder.name)
        games = scratch / "games.json"
        shutil.copy(LANTERNS / "service" / "games.json", games)
        self.deployment = Deployment("--games", games)
        self.addCleanup(self.deployment.close)
        self.service = PublishedService(self.deployment, scratch / "service")
        self.data = scratch / "data"

    def answers(self):
        """What was asked for and how it was answered, from the edge's log."""
        log = self.deployment.places.part("edge") / "access.log"
        lines = [line.split("\t") for line in log.read_text().splitlines()]
        return [(line[0], line[1]) for line in lines if len(line) == 7]

    def start_game(self, until):
        environment = {**os.environ, "SDL_VIDEODRIVER": "dummy", "SDL_AUDIODRIVER": "dummy"}
        game = subprocess.Popen([BUILD / "examples" / "lanterns" / "lanterns", "--data", self.data,
                                 "--service", self.service.address], env=environment,
                                stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        try:
            wait_until(until, "the game has got everything")
        finally:
            game.kill()
            game.wait()

    def test_downloads_what_was_published_and_asks_for_it_again_the_next_day(self):
        cache = self.data / "Library" / "Caches" / "ZOVKPopup"
        pages = self.service.page_files()
        self.assertEqual(len(pages), 3)
        self.start_game(lambda: all((cache / page).is_file() for page in pages)
                        and self.answers().count(("page", "200")) == 3)
        for page in pages:
            digest = hashlib.md5((cache / page).read_bytes()).hexdigest()
            self.assertIn(digest, page)
        self.start_game(lambda: self.answers().count(("page", "304")) == 3)
        self.assertEqual(self.answers().count(("start", "200")), 2)
        self.assertEqual(len(self.answers()), 8)
