"""Any part may be killed at any moment: what was answered with 200 is in the database."""
import contextlib
import http.client
import os
import random
import signal
import threading
import unittest

from deployment import report_body, signed, the_deployment, wait_until

PARTS = ("edge", "receiver", "stream", "consumer", "database")
KILLS = int(os.environ.get("ZOVKPOPUP_DEPLOY_KILLS", "10"))
SENDERS = 4
# So many promises lie between two kills at least.
BETWEEN = 20
# Between two reports of a sender: without it the stream would be full whenever the database is away.
PAUSE = 0.005


class Senders:
    """Players who report one after another, each once."""

    def __init__(self, deployment):
        self.deployment = deployment
        self.promised = set()
        self.refused = 0
        self.lock = threading.Lock()
        self.over = threading.Event()
        self.threads = [threading.Thread(target=self._send, args=[number])
                        for number in range(SENDERS)]

    def __enter__(self):
        for thread in self.threads:
            thread.start()
        return self

    def __exit__(self, *_):
        self.over.set()
        for thread in self.threads:
            thread.join()

    def _send(self, sender):
        connection = self.deployment.connect()
        number = 0
        while not self.over.is_set():
            number += 1
            player = f"sender{sender}-{number}"
            body = report_body(player)
            try:
                connection.request("POST", signed("/report/kill", body, install=player), body)
                answer = connection.getresponse()
                answer.read()
                promised = answer.status == 200
            except (OSError, http.client.HTTPException):
                connection.close()
                promised = False
            with self.lock:
                if promised:
                    self.promised.add(player)
                else:
                    self.refused += 1
            self.over.wait(PAUSE)
        connection.close()

    def count(self):
        with self.lock:
            return len(self.promised)

    def wait_for_more(self, number):
        wanted = self.count() + number
        wait_until(lambda: self.count() >= wanted, "reports are taken again")


class Kills(unittest.TestCase):
    def test_lose_no_report_that_was_promised(self):
        deployment = the_deployment()
        chance = random.Random(20)
        killed = dict.fromkeys(PARTS, 0)
        with Senders(deployment) as senders:
            for number in range(KILLS):
                part = PARTS[number % len(PARTS)] if KILLS < 100 else chance.choice(PARTS)
                senders.wait_for_more(BETWEEN)
                senders.over.wait(chance.uniform(0, 0.05))  # Any moment.
                wait_until(lambda: self.kill(deployment, part), f"{part} runs")
                killed[part] += 1
            senders.wait_for_more(BETWEEN)
        deployment.wait_until_stored()
        stored = {row[0] for row in deployment.rows(
            "SELECT player FROM reports WHERE player LIKE 'sender%%'")}
        lost = senders.promised - stored
        aside = deployment.rows("SELECT reason, count(*) FROM put_aside WHERE path = '/report/kill'"
                                " GROUP BY reason")
        print(f"\nkilled {killed}; promised {len(senders.promised)}, not promised "
              f"{senders.refused}, stored {len(stored)}, lost {len(lost)}; put aside {aside}")
        self.assertEqual(lost, set())
        self.assertGreater(len(senders.promised), KILLS * BETWEEN)

    @staticmethod
    def kill(deployment, part):
        with contextlib.suppress(ProcessLookupError):
            return deployment.signal_part(part, signal.SIGKILL)
        return []
