"""The example game's tour against the deployment, with what the tool published: what a player presses
ends in the database. It brings a display of its own."""
import pathlib
import subprocess
import sys
import unittest

from deployment import DEPLOY
from published import BUILD

SIZE = "1280x800"


class Tour(unittest.TestCase):
    def test_is_played_with_every_answer_right(self):
        pictures = pathlib.Path(BUILD) / "deployed-tour"
        tour = subprocess.run(
            [DEPLOY.parent / "scripts" / "with-display", SIZE, sys.executable,
             DEPLOY / "trials" / "deployed_tour.py", "--size", SIZE, "--pictures", pictures,
             "--game", BUILD / "examples" / "lanterns" / "lanterns"],
            check=False, capture_output=True, text=True)
        self.assertEqual(tour.returncode, 0, tour.stdout + tour.stderr)
        self.assertIn(", 0 wrong,", tour.stdout)
