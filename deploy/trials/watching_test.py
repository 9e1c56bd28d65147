"""The figures and alerts of the deployment for the people who watch it."""
import json
import re
import subprocess
import time
import unittest
import urllib.request

from prometheus_client.parser import text_string_to_metric_families

from deployment import (ADDRESS, DEPLOY, parameters, query_body, report_body, the_deployment,
                        wait_until)

WATCHING = DEPLOY / "watching"
NAME = re.compile(r"zovkpopup_\w+")


class Metrics(unittest.TestCase):
    def setUp(self):
        self.edge = the_deployment()

    def values(self):
        """Returns each metric's value, by its name and labels."""
        address = f"http://{ADDRESS}:{self.edge.facts['metrics_port']}/metrics"
        with urllib.request.urlopen(address, timeout=20) as answer:
            text = answer.read().decode()
        return {(sample.name, *sorted(sample.labels.values())): sample.value
                for family in text_string_to_metric_families(text) for sample in family.samples}

    def value(self, *key):
        return self.values().get(key, 0)

    def wait_for_growth(self, act, growth, *key):
        before = self.value(*key)
        act()
        wait_until(lambda: self.value(*key) >= before + growth, f"{key} has grown")
        self.assertEqual(self.value(*key), before + growth)

    def test_count_starts_and_pages_by_how_they_were_answered(self):
        self.edge.publish_document(b'{"code":0,"popups":[{"pop_id":1}]}')
        page = self.edge.publish_page("a page to count")
        tag = self.edge.get(page).headers["ETag"]
        start = f"/popup/get_info?{parameters('COUNTED')}&sig={0:032x}"
        self.wait_for_growth(lambda: [self.edge.get(start) for _ in range(3)], 3,
                             "zovkpopup_requests_total", "200", "start")
        self.wait_for_growth(lambda: [self.edge.get(page, If_None_Match=tag) for _ in range(4)], 4,
                             "zovkpopup_requests_total", "304", "page")
        answer = self.edge.get(page)
        sent = self.value("zovkpopup_sent_bytes_total", "page")
        self.assertGreater(sent, len(answer.body))

    def test_count_refused_signatures(self):
        self.wait_for_growth(lambda: self.edge.report(report_body("x"), key="wrong"), 1,
                             "zovkpopup_requests_total", "403", "report")
        self.wait_for_growth(lambda: self.edge.ask(query_body("x"), key="wrong"), 1,
                             "zovkpopup_requests_total", "403", "query")

    def test_count_reports_from_the_queue_to_the_table(self):
        before = self.values()
        for popup in (1, 2, 2):
            self.edge.report(report_body("counted", popup), install="COUNTED")
        self.edge.report(b"no report", install="COUNTED")
        self.edge.wait_until_stored()
        after = self.values()
        for what, growth in (("queued", 4), ("stored", 2), ("repeated", 1), ("put_aside", 1)):
            key = (f"zovkpopup_reports_{what}_total",)
            self.assertEqual(after[key], before[key] + growth, what)
        self.assertEqual(after[("zovkpopup_oldest_report_seconds",)], 0)

    def test_tell_how_long_the_oldest_report_has_waited(self):
        with self.edge.halted("consumer"):
            self.edge.report(report_body("waiting"), install="WAITING")
            wait_until(lambda: self.value("zovkpopup_oldest_report_seconds") > 1, "it is a second old")
            self.assertEqual(self.value("zovkpopup_reports_waiting"), 1)
        self.edge.wait_until_stored()

    def test_tell_which_part_does_not_answer_and_do_not_wait_for_it(self):
        with self.edge.halted("stream"):
            begin = time.monotonic()
            values = self.values()
            self.assertLess(time.monotonic() - begin, 10)
            self.assertEqual(values[("zovkpopup_up", "stream")], 0)
            self.assertEqual(values[("zovkpopup_up", "database")], 1)
        self.assertEqual(self.value("zovkpopup_up", "stream"), 1)

    def test_go_on_with_a_new_log(self):
        log = self.edge.places.part("edge") / "access.log"
        master = int((self.edge.places.part("edge") / "nginx.pid").read_text())
        log.rename(log.with_suffix(".1"))
        subprocess.run(["kill", "-USR1", str(master)], check=True)
        wait_until(log.exists, "there is a new log")
        self.wait_for_growth(lambda: self.edge.get("/elsewhere"), 1,
                             "zovkpopup_requests_total", "404", "other")

    def test_are_all_that_dashboard_and_alerts_speak_of(self):
        self.edge.report(report_body("spoken-of"))
        wait_until(lambda: any(key[0] == "zovkpopup_requests_total" for key in self.values()), "counted")
        known = {key[0] for key in self.values()}
        dashboard = json.loads((WATCHING / "dashboard.json").read_text())
        expressions = [target["expr"] for panel in dashboard["panels"] for target in panel["targets"]]
        self.assertGreaterEqual(len(expressions), 10)
        for text in (*expressions, (WATCHING / "alerts.yml").read_text()):
            self.assertLessEqual(set(NAME.findall(text)), known)
