"""The receiver between the edge and the stream, alone with a stream."""
import contextlib
import hashlib
import json
import os
import pathlib
import re
import resource
import selectors
import signal
import socket
import subprocess
import tempfile
import unittest
import urllib.parse

import redis

from deployment import ADDRESS, DEPLOY, GAME, KEY, PATIENCE, parameters, wait_until
from building import RECEIVER, build_receiver
from places import free_ports

BACKLOG = 3000
MOST_IN_BATCH = 256
LATE = 5  # Seconds after which the stream's silence is a no.


def signed(body, path=b"/report/shop", common=parameters().encode(), key=KEY):
    """Returns the target of a report, of bytes that need not be text."""
    plain = urllib.parse.unquote_to_bytes(path)
    sig = hashlib.md5(plain + b"?" + common + body + key.encode()).hexdigest()
    return b"%s?%s&sig=%s" % (path, common, sig.encode())


def request(body, target=None):
    return b"POST %s HTTP/1.1\r\nHost: intake\r\nContent-Length: %d\r\n\r\n%s" % (
        signed(body) if target is None else target, len(body), body)


def read_answer(connection):
    """Status and text of an answer; None when the connection was ended instead."""
    data = b""
    while b"\r\n\r\n" not in data:
        if not (more := connection.recv(4096)):
            return None
        data += more
    head, _, text = data.partition(b"\r\n\r\n")
    length = int(re.search(rb"Content-Length: (\d+)", head)[1])
    while len(text) < length:
        text += connection.recv(4096)
    return int(head.split()[1]), text.decode()


class Receiver(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        build_receiver()

    def setUp(self):
        self.folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        self.stream = redis.Redis(unix_socket_path=str(self.folder / "stream"))
        self.games = self.folder / "games.json"
        self.games.write_text(json.dumps({GAME: KEY}))
        (self.port,) = free_ports(1)
        self.start_stream()
        self.receiver = None

    def start_stream(self):
        self.redis = subprocess.Popen(
            ["redis-server", "--port", str(self.port), "--bind", ADDRESS, "--unixsocket", self.folder / "stream", "--dir",
             self.folder, "--save", "", "--logfile", "redis.log"])
        self.addCleanup(self.end, self.redis)
        wait_until(self.stream_answers, "the stream is there")
        self.stream.function_load((DEPLOY / "intake" / "add_reports.lua").read_text(), replace=True)

    def stream_answers(self):
        with contextlib.suppress(redis.ConnectionError):
            return self.stream.ping()

    @staticmethod
    def end(process):
        if process.poll() is None:
            process.kill()
        process.wait()

    def start_receiver(self, *options, stream=None, files=None, sign="the stream is there"):
        def few_files():
            most = resource.getrlimit(resource.RLIMIT_NOFILE)[1]
            resource.setrlimit(resource.RLIMIT_NOFILE, (files, files) if files else (1024, most))
        self.log = self.folder / "receiver.log"
        with open(self.log, "ab") as log:
            self.receiver = subprocess.Popen(
                [RECEIVER, "--listen", self.folder / "intake", "--games", self.games, "--stream",
                 stream or self.folder / "stream", "--backlog", str(BACKLOG), *options],
                stderr=log, preexec_fn=few_files)
        self.addCleanup(self.end, self.receiver)
        wait_until(lambda: sign in self.log.read_text(), sign)
        self.addCleanup(self.assert_well)

    def assert_well(self):
        """Checks that nothing in the test has ended the receiver. Each test ends with it."""
        self.assertIn(self.receiver.poll(), (None, 0), self.log.read_text())

    def connect(self):
        connection = socket.socket(socket.AF_UNIX)
        connection.settimeout(PATIENCE)
        self.addCleanup(connection.close)
        connection.connect(str(self.folder / "intake"))
        return connection

    def sent(self, *what, **how):
        connection = self.connect()
        connection.sendall(request(*what, **how))
        return connection

    def ask(self, *what, **how):
        return read_answer(self.sent(*what, **how))

    def halt_stream(self):
        self.redis.send_signal(signal.SIGSTOP)
        self.addCleanup(self.redis.send_signal, signal.SIGCONT)

    def go_on(self):
        self.redis.send_signal(signal.SIGCONT)

    def bodies(self):
        return {fields[b"body"] for _, fields in self.stream.xrange("reports")}

    def waiting(self, count, more=b""):
        """Returns the connections of `count` reports that wait for a stream that has halted, with
        their bodies. One more than may wait is sent: when it is refused, the others have
        arrived."""
        self.halt_stream()
        bodies = [b"%d%s" % (number, more) for number in range(count + 1)]
        connections = {self.sent(body): body for body in bodies}
        with selectors.DefaultSelector() as selector:
            for connection in connections:
                selector.register(connection, selectors.EVENT_READ)
            (key, _), *others = selector.select(PATIENCE)
        self.assertEqual(others, [])
        self.assertEqual(read_answer(key.fileobj), (503, "too many reports wait for the stream"))
        del connections[key.fileobj]
        return connections

    def test_hands_on_every_byte_of_path_parameters_and_body(self):
        self.start_receiver()
        body = bytes(range(256)) * 3
        path = b"/report/gr%C3%B6%C3%9Fe%20+%3F%23%25%26%FF%0A/" + "größe".encode("latin1")
        common = b"game_id=1001&install_id=%41+\xff\xfe;%zz&os=\xc3\xbc&version=1?/:@"
        self.assertEqual(self.ask(body, signed(body, path, common)), (200, '{"code":0}'))
        ((_, fields),) = self.stream.xrange("reports")
        self.assertEqual(fields, {
            b"path": "/report/größe +?#%&".encode() + b"\xff\n/gr\xf6\xdfe",
            b"parameters": common, b"body": body})

    def test_answers_one_report_after_another_on_a_connection_that_stays(self):
        self.start_receiver()
        connection = self.connect()
        for number in range(50):
            connection.sendall(request(b"%d" % number))
            self.assertEqual(read_answer(connection)[0], 200)
        self.assertEqual(len(self.bodies()), 50)

    def test_refuses_what_no_known_game_has_signed(self):
        self.games.write_text(json.dumps({GAME: KEY, "2002": "", "3003": 3, "4004": None}))
        self.start_receiver()
        body, path, common = b"body", b"/report/shop", parameters().encode()
        good = signed(body)
        refused = {
            "wrong signature": [
                good[:-1] + (b"0" if good[-1:] != b"0" else b"1"), good[:-1], good + b"0",
                good[:-32] + good[-32:].upper(),
                path + b"?" + common, path + b"?" + common + b"&sig=", signed(body, key="another"),
                signed(b"another"), good.replace(b"shop", b"shop/"), good.replace(b"os=2", b"os=3")],
            "unknown game_id": [
                signed(body, common=parameters(game=game).encode(), key=key)
                for game, key in (("1", KEY), ("2002", ""), ("3003", "3"), ("4004", ""),
                                  ("10010", KEY), ("%31001", KEY))],
            **{f"{name} is missing": [
                signed(body, common=b"&".join(piece for piece in common.split(b"&")
                                              if not piece.startswith(name.encode() + b"=")))]
               for name in ("game_id", "install_id", "os", "version")},
        }
        refused["game_id is missing"] += [path, path + b"?", path + b"?sig=1",
                                          good.replace(b"=1001", b"=")]
        for message, targets in refused.items():
            status = 400 if message.endswith("missing") else 403
            for target in targets:
                self.assertEqual(self.ask(body, target), (
                    status, '{"code":%d,"message":"%s"}' % (status, message)), target)
        self.assertEqual(self.ask(b""), (400, '{"code":400,"message":"the body is empty"}'))
        self.assertEqual(self.stream.xlen("reports"), 0)
        self.assertEqual(self.ask(body, good)[0], 200)
        self.assertNotIn("sig", self.log.read_text())

    def test_checks_what_stands_behind_the_last_game_id(self):
        self.start_receiver()
        target = signed(b"body").replace(b"?", b"?a=1&game_id=9999&sig=0&b=2&")
        self.assertEqual(self.ask(b"body", target)[0], 200)
        ((_, fields),) = self.stream.xrange("reports")
        self.assertEqual(fields[b"parameters"], parameters().encode())

    def read_games(self, content, sign):
        """Has the file of keys read again, and waits for the report of that."""
        known = self.log.read_text().count(sign)
        self.games.write_bytes(content)
        self.receiver.send_signal(signal.SIGHUP)
        wait_until(lambda: self.log.read_text().count(sign) == known + 1, sign)

    def ask_with_key(self, key):
        return self.ask(b"body", signed(b"body", key=key))[0]

    def test_honours_new_keys_and_old_ones_no_longer_without_a_restart(self):
        self.start_receiver()
        self.assertEqual((self.ask_with_key(KEY), self.ask_with_key("new")), (200, 403))
        self.read_games(b'{"1001": "new", "2002": "other"}', "keys have been read again")
        self.assertEqual((self.ask_with_key(KEY), self.ask_with_key("new")), (403, 200))
        self.read_games(b"{}", "keys have been read again")
        self.assertEqual((self.ask_with_key(KEY), self.ask_with_key("new")), (403, 403))

    def test_keeps_the_keys_of_before_when_the_file_is_broken_and_says_so_once(self):
        self.start_receiver()
        largest = json.dumps({GAME: "new"}).encode()
        broken = [b"", b"{", b"[]", b'"text"', b'{"1001": "new"} x', b"[" * 100_000,
                  largest + b" " * (2**20 + 1 - len(largest))]
        for content in broken:
            self.read_games(content, "keys of before stay in force")
            self.assertEqual((self.ask_with_key(KEY), self.ask_with_key("new")), (200, 403))
        self.games.unlink()
        self.receiver.send_signal(signal.SIGHUP)
        wait_until(lambda: self.log.read_text().count("keys of before") == len(broken) + 1, "it is told")
        self.assertEqual(self.ask_with_key(KEY), 200)
        self.assertNotIn("new", self.log.read_text())
        self.read_games(largest + b" " * (2**20 - len(largest)), "keys have been read again")
        self.assertEqual((self.ask_with_key(KEY), self.ask_with_key("new")), (403, 200))

    def test_does_not_start_without_keys(self):
        for content in (None, b"", b"{", b"[]"):
            self.games.unlink(missing_ok=True)
            if content is not None:
                self.games.write_bytes(content)
            refused = subprocess.run(
                [RECEIVER, "--listen", self.folder / "other", "--games", self.games, "--stream",
                 self.folder / "stream"], check=False, capture_output=True, text=True,
                timeout=PATIENCE)
            self.assertEqual(refused.returncode, 1)
            self.assertIn(f"zovkpopup-receiver: {self.games}: it ", refused.stderr)

    def answer_for_the_stream(self, answer, before=""):
        self.stream.function_load(
            "#!lua name=popup_reports\nredis.register_function('add_reports', "
            f"function(keys, arguments) {before} return {answer} end)", replace=True)

    def sizes_of_batches(self, connections):
        """Returns the number of reports in each command that the stream gets when it goes on."""
        self.go_on()
        self.assertEqual({read_answer(one)[0] for one in connections}, {200})
        return [int(size) for size in self.stream.lrange("sizes", 0, -1)]

    def count_batches(self):
        self.answer_for_the_stream(
            "ids", "local ids = {} for i = 2, #arguments, 3 do ids[#ids + 1] = '1-1' end "
            "redis.call('RPUSH', 'sizes', #ids)")

    def test_hands_on_together_what_comes_while_the_stream_is_busy(self):
        self.count_batches()
        self.start_receiver("--most-waiting", "600")
        sizes = self.sizes_of_batches(self.waiting(600))
        self.assertEqual(sum(sizes), 600)
        self.assertEqual(max(sizes), MOST_IN_BATCH)
        # The first two may have gone out with less.
        self.assertLessEqual(len(sizes), 5)

    def test_hands_on_no_more_than_a_mebibyte_together(self):
        self.count_batches()
        self.start_receiver("--most-waiting", "60")
        sizes = self.sizes_of_batches(self.waiting(60, b"x" * 60_000))
        self.assertEqual(sum(sizes), 60)
        self.assertEqual(max(sizes), 2**20 // 60_100)

    def test_answers_each_of_those_that_went_out_together_for_itself(self):
        self.start_receiver("--most-waiting", "20")
        for number in range(BACKLOG - 7):
            self.stream.xadd("reports", {"body": "before%d" % number})
        connections = self.waiting(20)
        self.go_on()
        taken = {body for one, body in connections.items() if read_answer(one)[0] == 200}
        self.assertEqual(len(taken), 7)
        self.assertEqual(self.stream.xlen("reports"), BACKLOG)
        self.assertLess(taken, self.bodies())

    def test_says_that_the_stream_is_full(self):
        self.start_receiver()
        with self.stream.pipeline(transaction=False) as many:
            for number in range(BACKLOG - 1):
                many.xadd("reports", {"body": number})
            many.execute()
        self.assertEqual(self.ask(b"last")[0], 200)
        self.assertEqual(self.ask(b"late"), (503, "FULL no more reports are taken"))
        self.assertEqual(self.stream.xlen("reports"), BACKLOG)
        self.stream.xtrim("reports", maxlen=0)
        self.assertEqual(self.ask(b"again")[0], 200)
        self.assertIn("reports are refused: FULL", self.log.read_text())

    def test_promises_nothing_on_an_answer_that_names_no_entry(self):
        self.start_receiver()
        for answer in ("nil", "1", "'1-1'", "{}", "{1}", "{''}", "{{'1-1'}}", "{'1-1', '1-2'}",
                       "redis.status_reply('OK')", "{redis.status_reply('OK')}",
                       "redis.error_reply('NO')", "{redis.error_reply('NO')}"):
            self.answer_for_the_stream(answer)
            self.assertEqual(self.ask(b"body")[0], 503, answer)
        self.answer_for_the_stream("{'1-1'}")
        self.assertEqual(self.ask(b"body")[0], 200)
        self.stream.function_delete("popup_reports")
        self.assertEqual(self.ask(b"body"), (503, "ERR Function not found"))

    def test_refuses_at_once_while_the_stream_is_away_and_goes_on_when_it_is_back(self):
        self.start_receiver()
        self.assertEqual(self.ask(b"before")[0], 200)
        self.redis.kill()
        self.redis.wait()
        wait_until(lambda: "the stream has gone" in self.log.read_text(), "it is noticed")
        self.assertEqual(self.ask(b"meanwhile"), (503, "the stream is away"))
        self.start_stream()
        wait_until(lambda: self.ask(b"after")[0] == 200, "reports are taken again")
        self.assertEqual(self.bodies(), {b"after"})

    def test_refuses_what_waits_when_the_stream_goes(self):
        # More than can have been sent to it.
        self.start_receiver("--most-waiting", str(3 * MOST_IN_BATCH))
        connections = self.waiting(3 * MOST_IN_BATCH)
        self.redis.kill()
        self.assertEqual({read_answer(one) for one in connections}, {(503, "the stream went away")})

    def test_refuses_what_has_waited_for_five_seconds_and_takes_up_the_stream_again(self):
        self.start_receiver("--most-waiting", "1")
        begin = os.times().elapsed
        (connection,) = self.waiting(1)
        self.assertEqual(read_answer(connection)[0], 503)
        self.assertGreaterEqual(os.times().elapsed - begin, LATE - 0.1)
        self.go_on()
        wait_until(lambda: self.ask(b"after")[0] == 200, "reports are taken again")

    def test_takes_a_body_of_64_kilobytes_and_not_one_byte_more(self):
        self.start_receiver()
        self.assertEqual(self.ask(b"x" * 65536)[0], 200)
        self.assertEqual(self.ask(b"x" * 65537)[0], 413)
        self.assertEqual(self.stream.xlen("reports"), 1)

    def test_takes_a_head_of_the_size_that_the_edge_can_send_and_no_endless_one(self):
        self.start_receiver()
        self.assertEqual(self.ask(b"long", signed(b"long", b"/report/" + b"%FF" * 2700))[0], 200)
        answer = None
        with contextlib.suppress(ConnectionError):
            answer = self.ask(b"endless", signed(b"endless", b"/report/" + b"%FF" * 10000))
        self.assertIn(answer and answer[0], (None, 400, 413))
        self.assertEqual(self.bodies(), {b"long"})

    def test_stores_nothing_of_half_a_request_and_of_what_is_none(self):
        self.start_receiver()
        whole = request(b"half a body")
        for length in (1, 20, len(whole) - 1):
            connection = self.connect()
            connection.sendall(whole[:length])
            connection.close()
        for text in (b"\0\1\2\r\n\r\n", b"POST\r\n\r\n", b"GET /report HTTP/1.1\r\n\r\n",
                     b"PUT /report HTTP/1.1\r\nContent-Length: 1\r\n\r\nx",
                     b"POST /report HTTP/1.1\r\nContent-Length: -1\r\n\r\nx",
                     b"POST /report HTTP/1.1\r\nContent-Length: x\r\n\r\nx",
                     b"POST http://[ HTTP/1.1\r\nContent-Length: 1\r\n\r\nx"):
            connection = self.connect()
            connection.sendall(text)
            connection.shutdown(socket.SHUT_WR)
            with contextlib.suppress(ConnectionError):
                self.assertNotIn(b" 200 ", connection.recv(4096), text)
        self.assertEqual(self.ask(b"whole")[0], 200)
        self.assertEqual(self.bodies(), {b"whole"})

    def test_has_thousands_wait_and_answers_each(self):
        self.start_receiver("--most-waiting", "2500")
        connections = self.waiting(2500)
        self.go_on()
        self.assertEqual({read_answer(one)[0] for one in connections}, {200})
        self.assertEqual(self.bodies(), set(connections.values()))

    def test_keeps_the_report_of_whoever_goes_before_the_answer(self):
        self.start_receiver("--most-waiting", "100")
        connections = self.waiting(100)
        for connection in list(connections)[::2]:
            connection.close()
        self.go_on()
        for connection in list(connections)[1::2]:
            self.assertEqual(read_answer(connection)[0], 200)
        self.assertEqual(self.ask(b"after")[0], 200)
        self.assertEqual(self.bodies(), {*connections.values(), b"after"})

    def test_answers_what_waits_before_it_ends(self):
        self.start_receiver("--most-waiting", "100")
        connections = self.waiting(100)
        other = self.connect()
        self.receiver.terminate()

        def refused():
            other.sendall(request(b"too late"))
            return read_answer(other) == (503, "the receiver is ending")
        wait_until(refused, "it knows that it is to end")
        self.go_on()
        self.assertEqual({read_answer(one)[0] for one in connections}, {200})
        self.assertEqual(self.receiver.wait(PATIENCE), 0)
        self.assertEqual(self.bodies(), set(connections.values()))

    def test_ends_without_the_stream(self):
        self.start_receiver("--most-waiting", "10")
        connections = self.waiting(10)
        self.receiver.terminate()
        self.assertEqual({read_answer(one)[0] for one in connections}, {503})
        self.assertEqual(self.receiver.wait(PATIENCE), 0)

    def test_does_not_wait_for_ever_for_a_stream_that_cannot_be_reached(self):
        with socket.create_server((ADDRESS, 0), backlog=0) as silent:
            port = silent.getsockname()[1]
            # The kernel takes no more for a server that does not accept.
            with contextlib.ExitStack() as others:
                for _ in range(3):
                    other = others.enter_context(socket.socket())
                    other.setblocking(False)
                    other.connect_ex((ADDRESS, port))
                self.start_receiver(stream=f"{ADDRESS}:{port}", sign="cannot be reached")
                self.assertEqual(self.ask(b"meanwhile"), (503, "the stream is away"))

    def test_takes_connections_again_when_it_had_no_more_files(self):
        self.start_receiver(files=40)
        connections = [self.connect() for _ in range(60)]
        begin = os.times().elapsed
        wait_until(lambda: self.log.read_text().count("no connection can be taken") >= 4,
                   "it has tried four times")
        self.assertGreater(os.times().elapsed - begin, 0.2)
        for connection in connections:
            connection.close()
        self.assertEqual(self.ask(b"after")[0], 200)

    def test_finds_its_stream_by_host_and_port_too(self):
        for address in ("nowhere", "127.0.0.1:", "127.0.0.1:x"):
            refused = subprocess.run(
                [RECEIVER, "--listen", self.folder / "other", "--games", self.games, "--stream",
                 address], check=False, capture_output=True, text=True, timeout=PATIENCE)
            self.assertEqual(refused.returncode, 1)
            self.assertIn("is neither a path nor HOST:PORT", refused.stderr)
        self.start_receiver(stream=f"{ADDRESS}:{self.port}")
        self.assertEqual(self.ask(b"from afar")[0], 200)
        self.assertEqual(self.bodies(), {b"from afar"})
