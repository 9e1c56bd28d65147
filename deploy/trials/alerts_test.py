"""Prometheus itself judges the alerts, on times of plenty and of want."""
import subprocess
import unittest

from deployment import DEPLOY

WATCHING = DEPLOY / "watching"


class Alerts(unittest.TestCase):
    def promtool(self, *words):
        run = subprocess.run(["promtool", *words], check=False, capture_output=True, text=True)
        self.assertEqual(run.returncode, 0, run.stdout + run.stderr)

    def test_are_understood(self):
        self.promtool("check", "rules", WATCHING / "alerts.yml")

    def test_fire_when_they_should_and_no_sooner(self):
        self.promtool("test", "rules", WATCHING / "alerts_test.yml")
