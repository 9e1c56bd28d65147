#!/usr/bin/env python3
"""Whom the console answers."""
import json
import socket
import unittest

from console import Service, entry


class Gate(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.service = Service(popups=[entry(1, "lobby")])

    @classmethod
    def tearDownClass(cls):
        cls.service.stop()

    def status(self, method="GET", path="/console/api/popups", token=True, **headers):
        sent = {name.replace("_", "-"): value for name, value in headers.items()}
        return self.service.request(method, path, "{}" if method == "POST" else None, sent, token)[0]

    def test_the_page_is_served_and_says_what_it_may_load(self):
        status, headers, text = self.service.request("GET", "/", token=False)
        self.assertEqual(status, 200)
        self.assertIn("<!doctype html>", text)
        self.assertIn("default-src 'none'", headers["Content-Security-Policy"])
        self.assertIn("frame-ancestors 'none'", headers["Content-Security-Policy"])

    def test_what_the_page_is_served_with_holds_no_secret(self):
        for path in ("/", "/console/common.js", "/console/console.js"):
            self.assertNotIn(self.service.token, self.service.request("GET", path, token=False)[2])

    def test_the_right_token_opens(self):
        self.assertEqual(self.status(), 200)

    def test_a_missing_token_is_refused_everywhere(self):
        for path in ("popups", "popups/1/page", "history", "answers", "answers.csv", "answers.json",
                     "refusals", "controls"):
            self.assertEqual(self.status(path="/console/api/" + path, token=False), 403, path)
        for path in ("popups", "popups/1", "popups/1/duplicate", "popups/1/delete", "popups/1/move",
                     "popups/1/pause", "popups/1/end", "preview", "publish", "rollback", "explain",
                     "checks", "faults"):
            self.assertEqual(self.status("POST", "/console/api/" + path, token=False), 403, path)
        self.assertEqual(self.status(path="/console/events", token=False), 403)

    def test_a_wrong_token_is_refused(self):
        wrong = self.service.token[:-1] + ("0" if self.service.token[-1] != "0" else "1")
        for token in (wrong, "", self.service.token[:-1], self.service.token + "0"):
            self.assertEqual(self.status(token=False, X_Console_Token=token), 403, token)

    def test_each_start_has_a_token_of_its_own(self):
        other = Service()
        self.assertNotEqual(other.token, self.service.token)
        self.assertEqual(len(other.token), 64)
        self.assertEqual(other.stop(), 0)

    def test_other_origins_are_refused_even_with_the_token(self):
        for origin in ("http://evil.example", "null", f"http://127.0.0.1:{self.service.port + 1}",
                       f"https://127.0.0.1:{self.service.port}"):
            self.assertEqual(self.status(Origin=origin), 403, origin)
        self.assertEqual(self.status(Origin=f"http://127.0.0.1:{self.service.port}"), 200)

    def test_what_a_browser_calls_cross_site_is_refused(self):
        for site in ("cross-site", "same-site"):
            self.assertEqual(self.status(Sec_Fetch_Site=site), 403, site)
        for site in ("same-origin", "none"):
            self.assertEqual(self.status(Sec_Fetch_Site=site), 200, site)

    def test_other_names_for_this_machine_are_refused(self):
        port = self.service.port
        for host in (f"evil.example:{port}", f"127.0.0.1.evil.example:{port}", "127.0.0.1",
                     f"127.0.0.1:{port + 1}", f"a@127.0.0.1:{port}", ""):
            self.assertEqual(self.status(Host=host), 403, host)
            self.assertEqual(self.status(path="/", Host=host), 403, host)
        for host in (f"localhost:{port}", f"127.0.0.1:{port}"):
            self.assertEqual(self.status(Host=host), 200, host)

    def test_a_stranger_cannot_make_it_read_a_body(self):
        with socket.create_connection(("127.0.0.1", self.service.port), 20) as stranger:
            stranger.sendall(b"POST /console/api/popups HTTP/1.1\r\nHost: evil.example\r\n"
                             b"Content-Length: 6000000\r\n\r\n")
            self.assertIn(b" 403 ", stranger.recv(4096))

    def test_bodies_have_a_bound(self):
        # At the bound the request is read, and there is no such release.
        for size, expected in ((6 << 20, 404), ((6 << 20) + 1, 413)):
            body = json.dumps({"filler": ""})
            body = body[:-2] + "x" * (size - len(body)) + body[-2:]
            status = self.service.request("POST", "/console/api/rollback", body)[0]
            self.assertEqual(status, expected)

    def test_a_body_that_is_no_object_is_refused(self):
        for body in ("[]", "{", "7", '{"a":1}x', "[" * 600):
            status = self.service.request("POST", "/console/api/rollback", body)[0]
            self.assertEqual(status, 400, body[:20])


if __name__ == "__main__":
    unittest.main()
