"""Starting and ending a deployment."""
import os
import pathlib
import signal
import subprocess
import tempfile
import unittest

from deployment import DEPLOY, Deployment, Places, wait_until
from processes import folder_of, processes_in


def down(places):
    return subprocess.run([DEPLOY / "down", "--state", places.state], check=False,
                          capture_output=True, text=True)


class Addresses(unittest.TestCase):
    def test_that_ask_too_much_are_held_up(self):
        deployment = Deployment("--per-address", "1")
        try:
            url = f"http://127.0.0.1:{deployment.http_port}/popup/get_info?[1-1500]"
            answers = subprocess.run(["curl", "-s", "-Z", "--parallel-max", "100", "-o", "/dev/null",
                                      "-w", "%{http_code}\n", url], check=False,
                                     capture_output=True, text=True).stdout.split()
            self.assertGreaterEqual(answers.count("404"), 1000)
            self.assertGreater(answers.count("429"), 300)
        finally:
            deployment.close()


class Life(unittest.TestCase):
    def assert_nothing_left(self, places):
        self.assertFalse(places.state.exists())
        self.assertEqual(processes_in(places.state), [])

    def test_nothing_is_left_when_the_supervisor_was_killed(self):
        deployment = Deployment()
        supervisor = [pid for pid in processes_in(deployment.places.parts)
                      if folder_of(pid) == deployment.places.parts]
        self.assertEqual(len(supervisor), 1)
        os.kill(supervisor[0], signal.SIGKILL)
        wait_until(lambda: supervisor[0] not in processes_in(deployment.places.parts), "it is gone")
        self.assertGreaterEqual(len(processes_in(deployment.places.parts)), 6)
        deployment.close()
        self.assert_nothing_left(deployment.places)

    def test_nothing_is_left_when_the_start_was_killed_at_any_moment(self):
        for sign in ("parts/database/data/PG_VERSION", "parts/stream/appendonlydir", "sockets/rule"):
            with self.subTest(sign), tempfile.TemporaryDirectory() as folder:
                os.chmod(folder, 0o711)
                places = Places(pathlib.Path(folder) / "state")
                start = subprocess.Popen([DEPLOY / "up", "--state", places.state],
                                         stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
                wait_until((places.state / sign).exists, f"there is {sign}")
                start.kill()
                start.wait()
                self.assertEqual(down(places).returncode, 0)
                self.assert_nothing_left(places)

    def test_a_folder_that_is_no_deployment_is_left_alone(self):
        with tempfile.TemporaryDirectory() as folder:
            place = pathlib.Path(folder)
            (place / "mine").touch()
            self.assertNotEqual(down(Places(place)).returncode, 0)
            self.assertTrue((place / "mine").exists())
