#!/usr/bin/env python3
"""What players answered, faults, conditions, and what was refused."""
import csv
import http.client
import io
import json
import sqlite3
import time
import unittest

from console import KEY, Service, entry
from player import answer, signed


class Answers(unittest.TestCase):
    def setUp(self):
        self.service = Service(popups=[entry(1, "lobby")])
        self.addCleanup(self.service.stop)

    def signed(self, path, body, key=KEY):
        return signed(self.service, path, body, key)

    def answer(self, pop_id, scene, text):
        answer(self.service, pop_id, scene, text)

    def totals(self, query=""):
        return self.service.get("answers" + query)

    def test_totals_are_by_popup_by_day_and_by_text(self):
        for text in ("sword", "sword", "shield"):
            self.answer(1, "lobby", text)
        self.answer(2, "shop", "sword")
        totals = self.totals("?zone=utc")
        self.assertEqual(totals["count"], 4)
        self.assertEqual(totals["by_popup"], [{"key": "1", "scene": "lobby", "count": 3},
                                              {"key": "2", "scene": "shop", "count": 1}])
        self.assertEqual([(t["key"], t["count"]) for t in totals["by_text"]],
                         [("sword", 3), ("shield", 1)])
        self.assertEqual(sum(day["count"] for day in totals["by_day"]), 4)
        self.assertRegex(totals["by_day"][0]["key"], r"^\d{4}-\d\d-\d\d$")
        self.assertEqual(totals["latest"][0]["scene"], "shop")

    def test_filters_limit_by_popup_text_and_time(self):
        self.answer(1, "lobby", "Sword of dawn")
        self.answer(2, "shop", "shield")
        now = int(time.time())
        self.assertEqual(self.totals("?popup=2")["count"], 1)
        self.assertEqual(self.totals("?text=sword")["count"], 1)
        self.assertEqual(self.totals("?text=%25")["count"], 0)
        self.assertEqual(self.totals(f"?from={now + 100}")["count"], 0)
        self.assertEqual(self.totals(f"?until={now + 100}")["count"], 2)
        self.assertEqual(self.totals(f"?until={now - 100}")["count"], 0)

    def test_exports_have_every_answer_and_are_safe_to_open(self):
        texts = ['=HYPERLINK("x")', 'a "quoted", text\nof two lines', "grüße", "+1", ""]
        for text in texts:
            self.answer(1, "lobby", text)
        exported = json.loads(self.service.request("GET", "/console/api/answers.json")[2])
        self.assertEqual([a["msg"] for a in exported], texts[::-1])
        status, headers, text = self.service.request("GET", "/console/api/answers.csv")
        self.assertTrue(headers["Content-Type"].startswith("text/csv"))
        rows = list(csv.DictReader(io.StringIO(text, newline="")))
        self.assertEqual([row["msg"] for row in rows],
                         ["", "'+1", "grüße", texts[1], "'" + texts[0]])

    def test_reports_of_any_shape_are_counted_and_break_nothing(self):
        for data in ('"text"', "7", '"{"', 'null', '{"msg": [1]}', '"{\\"msg\\": {\\"a\\": 1}}"'):
            self.assertEqual(self.signed("/report", '{"data": %s}' % data)[0], 200, data)
        self.assertEqual(self.totals()["count"], 6)
        self.assertEqual(len(self.totals()["latest"]), 6)

    def test_exports_have_a_bound(self):
        # Straight into the file, as ten thousand requests would take too long.
        store = sqlite3.connect(self.service.folder / "reports.sqlite")
        store.executemany("INSERT INTO reports (received, name, game_id, install_id, os, version,"
                          " body) VALUES (?, '', '', '', '', '', '{}')",
                          [(i,) for i in range(10_001)])
        store.commit()
        store.close()
        exported = json.loads(self.service.request("GET", "/console/api/answers.json")[2])
        self.assertEqual(len(exported), 10_000)
        self.assertEqual(self.totals()["count"], 10_001)
        self.assertEqual(len(self.totals()["by_day"]), 1)

    def listen(self):
        connection = http.client.HTTPConnection("127.0.0.1", self.service.port, timeout=20)
        connection.request("GET", "/console/events?token=" + self.service.token)
        answer = connection.getresponse()
        self.addCleanup(connection.close)
        if answer.status == 200:
            self.assertEqual(answer.readline(), b":\n")
        return answer

    def next_event(self, stream):
        while not (line := stream.readline().decode()).startswith("data: "):
            self.assertNotEqual(line, "", "the stream has ended")
        return json.loads(line[len("data: "):])

    def test_reports_reach_every_listener_as_they_come_in(self):
        streams = [self.listen(), self.listen()]
        self.answer(1, "lobby", "first")
        self.answer(1, "lobby", "second")
        for stream in streams:
            self.assertEqual(stream.getheader("Content-Type"), "text/event-stream")
            self.assertEqual(self.next_event(stream)["result"]["msg"], "first")
            self.assertEqual(self.next_event(stream)["result"]["msg"], "second")

    def test_eight_listen_at_most_and_none_keeps_the_service_from_ending(self):
        streams = [self.listen() for _ in range(8)]
        self.assertTrue(all(stream.status == 200 for stream in streams))
        self.assertEqual(self.listen().status, 503)
        started = time.monotonic()
        self.service.process.terminate()
        self.assertEqual(self.service.process.wait(20), 0)
        self.assertLess(time.monotonic() - started, 4)

    def test_refused_signatures_are_listed_with_what_was_signed(self):
        self.signed("/report/shop", '{"a":1}', key="wrong")
        refusal = self.service.get("refusals")["refusals"][0]
        self.assertEqual(refusal["path"], "/report/shop")
        self.assertTrue(refusal["signed_text"].startswith("/report/shop?game_id=1001&"))
        self.assertTrue(refusal["signed_text"].endswith('{"a":1}<game key>'))
        self.assertNotIn(KEY, json.dumps(refusal))

    def test_the_latest_hundred_refusals_are_kept_and_long_ones_cut(self):
        self.signed("/report", "é" * 100_000, key="wrong")
        self.assertLess(len(self.service.get("refusals")["refusals"][0]["signed_text"]), 8300)
        for number in range(101):
            self.signed(f"/report/r{number}", "{}", key="wrong")
        paths = [refusal["path"] for refusal in self.service.get("refusals")["refusals"]]
        self.assertEqual(paths, [f"/report/r{number}" for number in range(100, 0, -1)])

    def test_a_fault_that_is_switched_on_spoils_the_answer_until_it_is_switched_off(self):
        self.service.post("faults", path="/pages/lobby.html", fault="status-500")
        self.assertEqual(self.service.request("GET", "/pages/lobby.html")[0], 500)
        self.assertEqual(self.service.get("controls")["faults"][0]["spoilt"], 1)
        self.service.post("faults", path="/pages/lobby.html", fault="none")
        self.assertEqual(self.service.request("GET", "/pages/lobby.html")[0], 200)

    def test_faults_have_a_bound_and_never_lock_the_user_out(self):
        for path in ("/", "/console/api/popups", "/console", "/_control/fault", "no/path"):
            self.service.post("faults", 400, path=path, fault="drop")
        self.service.post("faults", 400, path="/x", fault="explode")
        for number in range(64):
            self.service.post("faults", path=f"/{number}", fault="drop")
        told = self.service.post("faults", 400, path="/64", fault="drop")
        self.assertIn("there may be 64 faults", told["message"])
        self.service.post("faults", path="/63", fault="empty")
        self.service.post("faults", path="/0", fault="none")

    def test_a_condition_is_answered_as_it_is_set(self):
        check = lambda: json.loads(self.signed("/check/vip", "{}")[2])["need_popup"]
        self.assertEqual(check(), 0)
        self.service.post("checks", name="vip", answer=1)
        self.assertEqual(check(), 1)
        self.assertEqual(self.service.get("controls")["checks"], {"vip": 1})
        self.service.post("checks", name="vip", answer=None)
        self.assertEqual(check(), 0)

    def test_conditions_have_a_bound(self):
        self.service.write("checks.json", json.dumps({str(n): 1 for n in range(199)}))
        self.service.post("checks", name="last", answer=0)
        self.service.post("checks", 409, name="too many", answer=0)
        self.service.post("checks", name="n" * 64, answer=None)
        for name in ("", "n" * 65):
            self.service.post("checks", 400, name=name, answer=0)


if __name__ == "__main__":
    unittest.main()
