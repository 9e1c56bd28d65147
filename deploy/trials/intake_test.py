"""What becomes of reports behind the edge."""
import hashlib
import json
import re
import signal
import socket
import socketserver
import threading
import unittest

import psycopg

from deployment import (ADDRESS, INSTALL, KEY, parameters, report_body, signed, the_deployment,
                        wait_until)


def fields_of(body):
    return {"path": "/report", "parameters": parameters(), "body": body}


class Reports(unittest.TestCase):
    def setUp(self):
        self.edge = the_deployment()

    def rows_of(self, player):
        self.edge.wait_until_stored()
        return self.edge.rows("SELECT pop_id, message, path, token FROM reports WHERE player = %s"
                              " ORDER BY pop_id", player)

    def test_are_in_the_database_with_what_the_player_chose(self):
        self.assertEqual(self.edge.report(report_body("chooser", 7, "größe-€")).status, 200)
        self.assertEqual(self.rows_of("chooser"),
                         [(7, "größe-€", "/report/shop", "t0ken-of-a-player")])

    def test_count_once_for_each_player_and_popup(self):
        for popup, message in ((1, "first"), (1, "second"), (2, "other"), (1, "third")):
            self.edge.report(report_body("repeater", popup, message), install="REPEATER")
        self.assertEqual([row[:2] for row in self.rows_of("repeater")],
                         [(1, "first"), (2, "other")])

    def test_of_a_player_without_a_name_count_for_the_installation(self):
        self.edge.report(report_body("", 3), install="NAMELESS")
        self.assertEqual(len(self.rows_of("install:NAMELESS")), 1)

    def test_that_nobody_can_store_are_put_aside_and_hold_up_nothing(self):
        whole = json.loads(report_body("odd"))
        odd = [b"{", b"[]", b"[" * 60000, b'"\xff"', b"{}"]
        for name, value in [("data", "x"), ("data", "[]"), ("data", 1), ("pop_id", "8"),
                            ("pop_id", 2**31), ("pop_id", True), ("gopenid", "zero\0"),
                            ("scene", "half \ud800"), ("channel_id", 2**63), ("token", [1])]:
            odd.append(json.dumps({**whole, name: value}).encode())
        before = self.edge.rows("SELECT count(*) FROM put_aside")[0][0]
        for number, body in enumerate(odd):
            self.assertEqual(self.edge.report(body, install=f"ODD{number}").status, 200, body[:60])
        self.edge.report(report_body("behind-the-odd"))
        self.assertEqual(len(self.rows_of("behind-the-odd")), 1)
        self.assertEqual(self.rows_of("odd"), [])
        self.assertEqual(self.edge.rows("SELECT count(*) FROM put_aside")[0][0], before + len(odd))

    def test_that_the_database_refuses_are_put_aside_without_their_neighbours(self):
        self.execute("ALTER TABLE reports ADD CONSTRAINT tested CHECK (player <> 'refused')")
        self.addCleanup(self.execute, "ALTER TABLE reports DROP CONSTRAINT tested")
        with self.edge.halted("consumer"):
            for player in ("before", "refused", "after"):
                self.edge.report(report_body(player), install=player)
        self.assertEqual(len(self.rows_of("before")), 1)
        self.assertEqual(len(self.rows_of("after")), 1)
        self.assertEqual(self.rows_of("refused"), [])
        self.assertIn(("CheckViolation",), self.edge.rows("SELECT reason FROM put_aside"))

    def execute(self, statement):
        with psycopg.connect(self.edge.places.database, autocommit=True,
                             options="-c lock_timeout=20s") as connection:
            connection.execute(statement)

    def test_that_end_the_consumer_each_time_are_put_aside_in_the_end(self):
        stream = self.edge.stream()
        with self.edge.halted("consumer"):
            poisoned = stream.xadd("reports", fields_of(report_body("poison")))
            # As if the consumer had been ended by it so often.
            stream.xreadgroup("database", "one", {"reports": ">"})
            stream.xclaim("reports", "database", "one", 0, [poisoned], retrycount=5)
            self.edge.signal_part("consumer", signal.SIGKILL)
        self.edge.wait_until_stored()
        reasons = self.edge.rows("SELECT reason FROM put_aside WHERE stream_id = %s",
                                 poisoned.decode())
        self.assertEqual(reasons, [("was taken up 5 times without an end",)])

    def test_are_not_put_aside_because_the_database_went_away(self):
        stream = self.edge.stream()
        # Before the consumer is halted, which may be in the middle of storing what came before.
        self.execute("CREATE FUNCTION full_disk() RETURNS trigger LANGUAGE plpgsql AS $$ BEGIN "
                     "RAISE EXCEPTION 'full' USING ERRCODE = 'disk_full'; END $$")
        self.execute("CREATE TRIGGER tested BEFORE INSERT ON reports EXECUTE FUNCTION full_disk()")
        with self.edge.halted("consumer"):
            held = stream.xadd("reports", fields_of(report_body("blameless")))
            stream.xreadgroup("database", "one", {"reports": ">"})
            # One more end of the consumer would be too many.
            stream.xclaim("reports", "database", "one", 0, [held], retrycount=4)
            self.edge.signal_part("consumer", signal.SIGKILL)
        log = self.edge.places.part("consumer") / "output.log"
        known = log.read_text().count("waiting")
        wait_until(lambda: log.read_text().count("waiting") >= known + 3, "it has failed thrice")
        self.execute("DROP FUNCTION full_disk CASCADE")
        self.assertEqual(len(self.rows_of("blameless")), 1)

    def test_that_an_ended_consumer_held_are_stored_by_the_next(self):
        stream = self.edge.stream()
        with self.edge.halted("consumer"):
            stream.xadd("reports", fields_of(report_body("held")))
            stream.xreadgroup("database", "one", {"reports": ">"})
            self.edge.signal_part("consumer", signal.SIGKILL)
        self.assertEqual(len(self.rows_of("held")), 1)

    def test_are_refused_and_none_dropped_when_the_stream_is_full(self):
        stream = self.edge.stream()
        with self.edge.halted("consumer"):
            room = 3000 - stream.xlen("reports")
            with stream.pipeline(transaction=False) as many:
                for number in range(room):
                    many.xadd("reports", fields_of(report_body(f"waiting{number}")))
                many.execute()
            self.assertEqual(self.edge.report(report_body("too-late")).status, 503)
            self.assertEqual(stream.xlen("reports"), 3000)
        self.edge.wait_until_stored()
        stored = self.edge.rows("SELECT count(*) FROM reports WHERE player LIKE 'waiting%%'")
        self.assertEqual(stored, [(room,)])
        self.assertEqual(self.edge.report(report_body("in-time")).status, 200)

    def test_are_no_longer_promised_when_the_stream_stands_still(self):
        with self.edge.halted("stream"):
            self.assertEqual(self.edge.report(report_body("unlucky"), install=INSTALL + "S").status,
                             503)

    def test_reach_the_stream_byte_for_byte(self):
        path = b"/report/gr%C3%B6%C3%9Fe%3F%23%25%20+%FF/b\xfc"
        decoded = "/report/größe?#% +".encode() + b"\xff/b\xfc"
        common = b"game_id=1001&install_id=\xff\xfe%41&os=" + "ü".encode() + b"&version=?/1"
        body = bytes(range(256))
        sig = hashlib.md5(decoded + b"?" + common + body + KEY.encode()).hexdigest().encode()
        with self.edge.halted("consumer"):
            with socket.create_connection((ADDRESS, self.edge.http_port), timeout=20) as game:
                game.sendall(b"POST %s?a=1&%s&sig=%s HTTP/1.1\r\nHost: a\r\nContent-Length: %d\r\n\r\n%s"
                             % (path, common, sig, len(body), body))
                self.assertIn(b" 200 ", game.recv(4096))
            ((_, fields),) = self.edge.stream().xrevrange("reports", count=1)
        self.assertEqual(fields, {b"path": decoded, b"parameters": common, b"body": body})

    def test_that_come_in_chunks_are_stored_whole(self):
        body = report_body("chunked")
        pieces = iter([body[:20], body[20:]])
        self.assertEqual(self.edge.request("POST", signed("/report/shop", body), pieces).status, 200)
        self.assertEqual(len(self.rows_of("chunked")), 1)

    def answer_for_the_receiver(self, answers):
        """Takes the place of the receiver, which nobody starts again meanwhile; gives these answers
        in turn, and the heads of the requests that came."""
        heads = []

        class Handler(socketserver.StreamRequestHandler):
            def handle(self):
                head = b""
                while not head.endswith(b"\r\n\r\n"):
                    head += self.rfile.readline()
                self.rfile.read(int(re.search(rb"Content-Length: (\d+)", head)[1]))
                heads.append(head)
                self.wfile.write(answers[len(heads) - 1])

        self.edge.signal_supervisor(signal.SIGSTOP)
        self.addCleanup(wait_until, lambda: self.edge.report(report_body("again")).status == 200,
                        "the receiver is back")
        self.addCleanup(self.edge.signal_supervisor, signal.SIGCONT)
        self.edge.signal_part("receiver", signal.SIGKILL)
        self.edge.places.intake.unlink()
        server = socketserver.UnixStreamServer(str(self.edge.places.intake), Handler)
        thread = threading.Thread(target=server.serve_forever)
        thread.start()
        self.addCleanup(thread.join)
        self.addCleanup(server.server_close)
        self.addCleanup(server.shutdown)
        return heads

    def test_are_promised_by_a_whole_good_answer_only(self):
        good = b'HTTP/1.1 200 OK\r\nContent-Length: 10\r\nConnection: close\r\n\r\n{"code":0}'
        bad = [b"", b"HTTP/1.1 2", b"HTTP/1.1 200 OK\r\nContent-Le"]
        bad += [b"HTTP/1.1 %d No\r\nContent-Length: 6\r\nConnection: close\r\n\r\nsecret" % status
                for status in (404, 405, 417, 500, 501, 502, 503, 504)]
        self.answer_for_the_receiver([good, *bad])
        self.assertEqual(self.edge.report(report_body("mine")).status, 200)
        for said in bad:
            answer = self.edge.report(report_body("mine"))
            self.assertEqual((answer.status, answer.headers["Content-Type"], answer.body),
                             (503, "application/json", b'{"code":503,"message":"not stored"}'), said)

    def test_reach_the_receiver_without_the_headers_of_the_player(self):
        good = b"HTTP/1.1 200 OK\r\nContent-Length: 0\r\nConnection: close\r\n\r\n"
        heads = self.answer_for_the_receiver([good])
        body = report_body("mine")
        self.edge.request("POST", signed("/report/shop", body), body,
                          {"X-Mine": "mine", "Cookie": "mine", "Expect": ""})
        target = signed("/report/shop", body).encode()
        self.assertEqual(heads, [b"POST %s HTTP/1.1\r\nHost: intake\r\n"
                                 b"Content-Length: %d\r\n\r\n" % (target, len(body))])

    def test_wait_while_the_database_is_away(self):
        with self.edge.halted("database"):
            for number in range(20):
                answer = self.edge.report(report_body(f"patient{number}"), install=f"P{number}")
                self.assertEqual(answer.status, 200)
        self.edge.wait_until_stored()
        stored = self.edge.rows("SELECT count(*) FROM reports WHERE player LIKE 'patient%%'")
        self.assertEqual(stored, [(20,)])
