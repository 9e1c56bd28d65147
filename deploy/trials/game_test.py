"""The example game starts against the deployment, with what the tool published: the engine itself
asks for the document and the pages. It needs no display."""
import hashlib
import os
import pathlib
import subprocess
import tempfile
import unittest

from deployment import wait_until
from published import BUILD, PublishedService


class Lanterns(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        scratch = pathlib.Path(self.folder.name)
        self.service = PublishedService(scratch / "service")
        self.addCleanup(self.service.close)
        self.data = scratch / "data"

    def answers(self):
        """Returns what was requested and how it was answered, from the edge's log."""
        log = self.service.deployment.places.part("edge") / "access.log"
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
