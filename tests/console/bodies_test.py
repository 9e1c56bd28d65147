#!/usr/bin/env python3
"""Bodies of requests to the console, at their bounds and of any shape."""
import json
import random
import unittest

from console import PAGE, Service, entry

DEEPEST = 512
MOST_POPUPS = 500
REQUESTS = 600
# Values that are at an edge, or of another kind than those that are wanted.
ODD = [None, True, -1, 0, 2**31, 2**63 - 1, 2**63, 2**64, -2**63, 1e308, 0.5, "", "0", "-1", "../..",
       "a/b", "a\\b", "nul\0", "line\nline", ".", "\ud7ff\uffff", "x" * 70_000, [], {}, [[]],
       {"a": {"b": [None]}}, [1] * 600]


class Bodies(unittest.TestCase):
    def setUp(self):
        self.service = Service(popups=[entry(1, "lobby"), entry(2, "shop")])
        self.addCleanup(self.stop)
        self.id = self.service.popup(1)["id"]

    def stop(self):
        # A sanitizer that has found something ends the service with another code.
        self.assertEqual(self.service.stop(), 0)

    def status(self, path, body):
        return self.service.request("POST", "/console/api/" + path, body)[0]

    def test_bodies_nest_512_deep_at_most(self):
        for depth, expected in ((DEEPEST, 404), (DEEPEST + 1, 400)):
            body = '{"a":' + "[" * (depth - 1) + "]" * (depth - 1) + "}"
            self.assertEqual(self.status("rollback", body), expected, depth)

    def test_five_hundred_popups_are_published_at_once_at_most(self):
        for count, expected in ((MOST_POPUPS, 404), (MOST_POPUPS + 1, 413)):
            self.assertEqual(self.status("publish", json.dumps({"ids": [-1] * count})), expected)
        for other in ("1", 1.5, None, [1], 2**63):
            self.assertEqual(self.status("publish", json.dumps({"ids": [other]})), 400, other)

    def test_names_of_pages_have_no_separators(self):
        for name in ("a/b.html", "/a.html", "..", "a\\b.html", "a\0.html", "a\n.html", "a\x7f.html"):
            body = json.dumps({"entry": {**entry(7, "gift"), "page": name}, "page_text": PAGE})
            self.assertEqual(self.status("popups", body), 400, repr(name))

    def seeds(self):
        """Returns a good request to each endpoint that takes a body."""
        popup = f"popups/{self.id}"
        whole = {"who": "Ada", "entry": entry(7, "gift"), "page_text": PAGE}
        return [("popups", whole), (popup, {**whole, "version": 1}), (popup + "/duplicate", {}),
                (popup + "/move", {"before": 0}), (popup + "/pause", {}), (popup + "/end", {}),
                ("popups/99/delete", {}), ("popups/99999999999999999999/move", {"before": 1}),
                ("publish", {"ids": [self.id]}), ("rollback", {"release": 1}),
                ("preview", {"page_text": PAGE}),
                ("explain", {"scene": "lobby", "scene_type": 1, "channel": 1, "moment": 1}),
                ("checks", {"name": "vip", "answer": {"need_popup": 1}}),
                ("faults", {"path": "/popup/get_info", "fault": "status-500"})]

    def shaken(self, chance, value):
        """Returns the same with one odd value somewhere, or without a member."""
        if not isinstance(value, dict) or not value:
            return chance.choice(ODD)
        key = chance.choice(list(value))
        rest = {name: member for name, member in value.items() if name != key}
        if chance.random() < 0.2:
            return rest
        return {**rest, key: self.shaken(chance, value[key])}

    def torn(self, chance, text):
        """Returns the same with a few bytes missing, doubled or changed."""
        body = bytearray(text.encode())
        for _ in range(chance.randrange(4)):
            place = chance.randrange(len(body) + 1)
            size = chance.randrange(8)
            body[place:place + size] = chance.choice(
                [b"", bytes([chance.randrange(256)]), body[place:place + size] * 2])
        return bytes(body)

    def test_bodies_of_any_shape_are_carried_out_or_refused(self):
        chance = random.Random(11)
        seeds = self.seeds()
        for number in range(REQUESTS):
            path, seed = seeds[number % len(seeds)]
            body = json.dumps(self.shaken(chance, seed))
            if chance.random() < 0.3:
                body = self.torn(chance, body)
            # 500 would be an error that nobody has thought of.
            self.assertIn(self.status(path, body), (200, 400, 404, 409, 413), (number, path, body[:300]))
        self.assertEqual(self.service.get("popups")["problem"], "")
        status, _, text = self.service.request("GET", "/console/api/history")
        self.assertEqual(status, 200, text)


if __name__ == "__main__":
    unittest.main()
