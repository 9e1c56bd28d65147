"""What becomes of reports behind the edge."""
import http.server
import json
import signal
import threading
import unittest

import psycopg

from deployment import INSTALL, parameters, report_body, the_deployment, wait_until
from parts import listens


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
        with psycopg.connect(self.edge.places.database, autocommit=True) as connection:
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
        with self.edge.halted("consumer"):
            held = stream.xadd("reports", fields_of(report_body("blameless")))
            stream.xreadgroup("database", "one", {"reports": ">"})
            # One more end of the consumer would be too many.
            stream.xclaim("reports", "database", "one", 0, [held], retrycount=4)
            self.execute("CREATE FUNCTION full_disk() RETURNS trigger LANGUAGE plpgsql AS $$ BEGIN "
                     "RAISE EXCEPTION 'full' USING ERRCODE = 'disk_full'; END $$")
            self.execute("CREATE TRIGGER tested BEFORE INSERT ON reports EXECUTE FUNCTION full_disk()")
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

    def answer_for_webdis(self, answers):
        """Takes the place of webdis, which nobody starts again meanwhile; gives these answers in
        turn, in which NAME is the report's, and the commands that came."""
        commands = []

        class Handler(http.server.BaseHTTPRequestHandler):
            protocol_version = "HTTP/1.1"

            def do_PUT(self):
                self.rfile.read(int(self.headers["Content-Length"]))
                commands.append(self.path.split("/"))
                said = answers[len(commands) - 1].replace("NAME", commands[-1][6])
                self.send_response(200)
                self.send_header("Content-Length", str(len(said)))
                self.send_header("Connection", "close")
                self.end_headers()
                self.wfile.write(said.encode())

            def log_message(self, *_):
                pass

        self.edge.signal_supervisor(signal.SIGSTOP)
        self.addCleanup(wait_until, lambda: self.edge.report(report_body("again")).status == 200,
                        "webdis is back")
        self.addCleanup(self.edge.signal_supervisor, signal.SIGCONT)
        self.edge.signal_part("queue", signal.SIGKILL)
        port = self.edge.facts["queue_port"]
        wait_until(lambda: not listens(port), "webdis has gone")
        server = http.server.ThreadingHTTPServer(("127.0.0.1", port), Handler)
        server.daemon_threads = True
        thread = threading.Thread(target=server.serve_forever)
        thread.start()
        self.addCleanup(thread.join)
        self.addCleanup(server.server_close)
        self.addCleanup(server.shutdown)
        return commands

    def test_are_promised_by_their_own_answer_only(self):
        another = '{"FCALL":"0123456789abcdef0123456789abcdef 1700000000000-0"}'
        commands = self.answer_for_webdis(
            ['{"FCALL":"NAME 1700000000000-0"}', another, '{"FCALL":"NAME 1700000000000-1"}',
             another, another, '{"FCALL":[false,"NAME"]}', "NAME", '{"FCALL":null}'])
        statuses = [self.edge.report(report_body("mine")).status for _ in range(6)]
        self.assertEqual(statuses, [200, 200, 503, 503, 503, 503])
        # The second attempt has the same name, so that either answer would count.
        self.assertEqual(commands[1][6], commands[2][6])
        self.assertEqual(len(commands), 8)

    def test_wait_while_the_database_is_away(self):
        with self.edge.halted("database"):
            for number in range(20):
                answer = self.edge.report(report_body(f"patient{number}"), install=f"P{number}")
                self.assertEqual(answer.status, 200)
        self.edge.wait_until_stored()
        stored = self.edge.rows("SELECT count(*) FROM reports WHERE player LIKE 'patient%%'")
        self.assertEqual(stored, [(20,)])
