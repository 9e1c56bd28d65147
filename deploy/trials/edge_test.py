"""What games meet at the edge."""
import gzip
import hashlib
import json
import pathlib
import re
import ssl
import socket
import subprocess
import unittest

from deployment import (ADDRESS, DEPLOY, INSTALL, KEY, parameters, query_body, report_body, signed,
                        the_deployment, wait_until)

PAGE = "<!doctype html><title>A page</title>" + "<p>of some length</p>" * 100
DOCUMENT = b'{"code":0,"popups":[{"pop_id":1}]}'


def vectors():
    """Returns the requests that the documents give to the author of a service."""
    text = (DEPLOY.parent / "docs" / "service.md").read_text(encoding="utf-8")
    blocks = [json.loads(block) for block in re.findall(r"```json\n(.*?)```", text, re.DOTALL)
              if '"vector"' in block]
    return [block for block in blocks if block["method"] == "POST"]


def curl(*arguments):
    return subprocess.run(["curl", "-sS", "--max-time", "20", *arguments], check=False,
                          capture_output=True, text=True)


class Signatures(unittest.TestCase):
    def setUp(self):
        self.edge = the_deployment()

    def send_vector(self, vector, *how):
        target = vector["url"].removeprefix("https://popups.example")
        return curl("-o", "/dev/null", "-w", "%{http_code} %{http_version}", "--path-as-is", *how,
                    "--cacert", str(self.edge.certificate), "--data-binary", vector["body"],
                    f"https://localhost:{self.edge.https_port}{target}").stdout

    def test_that_the_documents_give_are_accepted_over_either_version_of_http(self):
        self.change_games({"1001": "s3cret-key", "spiel-ü": "schlüssel-€"})
        self.assertGreaterEqual(len(vectors()), 4)
        for vector in vectors():
            with self.subTest(vector["vector"]):
                self.assertEqual(self.send_vector(vector, "--http1.1"), "200 1.1")
                self.assertEqual(self.send_vector(vector, "--http2"), "200 2")

    def test_of_another_key_game_body_path_or_parameter_are_refused(self):
        body = report_body("somebody")
        self.assertEqual(self.edge.report(body, key="another").status, 403)
        self.assertEqual(self.edge.report(body, game="9999").status, 403)
        for game in ("__proto__", "constructor", "toString"):
            self.assertEqual(self.edge.report(body, game=game, key="").status, 403)
        good = signed("/report/shop", body)
        for target, sent in [(good, body + b" "), (good.replace("shop", "shop/"), body),
                             (good.replace("os=2", "os=3"), body),
                             (good.replace("/report/", "//report/"), body)]:
            self.assertIn(self.edge.request("POST", target, sent).status, (403, 404), target)
        self.assertEqual(self.edge.request("POST", good, body).status, 200)

    def test_are_refused_with_the_same_words_whoever_checks_them(self):
        body = report_body("somebody")
        for how in ({"key": "another"}, {"game": "9999"}):
            report, query = self.edge.report(body, **how), self.edge.ask(body, **how)
            for answer in (report, query):
                self.assertEqual((answer.status, answer.headers["Content-Type"],
                                  answer.headers["Cache-Control"]),
                                 (403, "application/json", "no-store"))
            self.assertEqual(json.loads(report.body), json.loads(query.body))
        for method in ("GET", "PUT"):
            report, query = (self.edge.request(method, signed(path, body), body)
                             for path in ("/report/shop", "/check/shop"))
            self.assertEqual((report.status, report.headers["Content-Type"], report.body),
                             (query.status, query.headers["Content-Type"], query.body))

    def test_that_are_missing_or_lack_a_parameter_are_told_so(self):
        body = report_body("somebody")
        for target in ("/report", "/report?", f"/report?{parameters()}",
                       signed("/report", body).replace("&os=2", "")):
            self.assertIn(self.edge.request("POST", target, body).status, (400, 403), target)
        self.assertEqual(self.edge.request("GET", signed("/report", b"")).status, 405)
        self.assertEqual(self.edge.report(b"").status, 400)

    def test_lack_a_parameter_that_is_named(self):
        body = report_body("somebody")
        for name in ("game_id", "install_id", "os", "version"):
            pieces = parameters().split("&")
            common = "&".join(piece for piece in pieces if not piece.startswith(name + "="))
            empty = "&".join(name + "=" if piece.startswith(name) else piece for piece in pieces)
            for left in (common,) if name == "install_id" else (common, empty):
                sig = hashlib.md5(f"/report?{left}".encode() + body + KEY.encode()).hexdigest()
                answer = self.edge.request("POST", f"/report?{left}&sig={sig}", body)
                self.assertEqual(json.loads(answer.body),
                                 {"code": 400, "message": name + " is missing"}, left)

    def test_cover_only_what_stands_behind_the_last_game_id(self):
        body = report_body("somebody")
        target = signed("/report", body).replace("?", "?a=1&game_id=9999&b=2&")
        self.assertEqual(self.edge.request("POST", target, body).status, 200)

    def test_cover_an_installation_that_has_no_identifier(self):
        self.assertEqual(self.edge.report(report_body("nameless"), install="").status, 200)

    def write_games(self, content):
        """Comes back when neither the edge nor the receiver knows the keys of before."""
        workers = self.edge.edge_workers()
        told = self.receiver_log().count("the keys ")
        new = self.edge.places.games.with_suffix(".new")
        new.write_bytes(content)
        new.rename(self.edge.places.games)
        wait_until(lambda: workers.isdisjoint(self.edge.edge_workers() or workers),
                   "the keys are read")
        wait_until(lambda: self.receiver_log().count("the keys ") > told, "the receiver has read them")

    def receiver_log(self):
        return (self.edge.places.part("receiver") / "output.log").read_text()

    def change_games(self, games):
        self.addCleanup(self.write_games, self.edge.places.games.read_bytes())
        self.write_games(json.dumps(games).encode())

    def test_follow_the_file_of_keys_without_a_restart(self):
        self.assertEqual(self.edge.ask(query_body("x"), game="2002", key="new").status, 403)
        master = int((self.edge.places.part("edge") / "nginx.pid").read_text())
        self.change_games({"1001": KEY, "2002": "new"})
        for send in (self.edge.ask, self.edge.report):
            self.assertEqual(send(report_body("x"), game="2002", key="new").status, 200)
        self.change_games({"1001": KEY, "2002": "newer"})
        for send in (self.edge.ask, self.edge.report):
            self.assertEqual(send(report_body("x"), game="2002", key="new").status, 403)
            self.assertEqual(send(report_body("x"), game="2002", key="newer").status, 200)
        self.assertEqual(int((self.edge.places.part("edge") / "nginx.pid").read_text()), master)

    def test_of_a_game_with_an_empty_key_or_none_that_is_a_text_are_refused(self):
        self.change_games({"1001": KEY, "2002": "", "3003": 3})
        for send in (self.edge.ask, self.edge.report):
            for game, key in (("2002", ""), ("3003", "3"), ("3003", "")):
                self.assertEqual(send(report_body("x"), game=game, key=key).status, 403)

    def test_go_on_with_the_keys_of_before_when_the_file_is_broken(self):
        self.addCleanup(self.write_games, self.edge.places.games.read_bytes())
        log = self.edge.places.state / "supervisor.log"
        self.edge.places.games.write_text("{")
        wait_until(lambda: "the edge keeps what it has" in log.read_text(), "the file was read")
        wait_until(lambda: "keys of before stay in force" in self.receiver_log(), "the receiver read it")
        self.assertEqual(self.edge.ask(query_body("x")).status, 200)
        self.assertEqual(self.edge.report(report_body("x")).status, 200)


class Files(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.edge = the_deployment()
        cls.page = cls.edge.publish_page(PAGE)
        cls.edge.publish_document(DOCUMENT)
        digest = pathlib.Path(cls.page).parent
        (cls.edge.places.site / str(digest)[1:] / "page.html.gz").write_bytes(
            gzip.compress(PAGE.encode(), mtime=0))

    def test_the_document_is_the_same_whatever_the_query_is(self):
        tags = set()
        for number in range(20):
            answer = self.edge.get(f"/popup/get_info?{parameters(f'I{number}')}&sig={number:032x}")
            self.assertEqual((answer.status, answer.body), (200, DOCUMENT))
            self.assertEqual(answer.headers["Cache-Control"], "s-maxage=60, max-age=0")
            tags.add(answer.headers["ETag"])
        self.assertEqual(len(tags), 1)

    def test_validators_are_strong_and_unchanged_files_cost_no_body(self):
        for target in (self.page, "/popup/get_info"):
            first = self.edge.get(target)
            self.assertRegex(first.headers["ETag"], r'^"[^"]+"$')
            again = self.edge.get(target, If_None_Match=first.headers["ETag"])
            self.assertEqual((again.status, again.body), (304, b""))
            since = self.edge.get(target, If_Modified_Since=first.headers["Last-Modified"])
            self.assertEqual(since.status, 304)

    def test_a_page_under_its_digest_is_kept_for_ever(self):
        answer = self.edge.get(self.page)
        self.assertEqual(answer.body.decode(), PAGE)
        self.assertEqual(answer.headers["Cache-Control"], "max-age=31536000, immutable")

    def test_compression_was_done_beforehand(self):
        packed = self.edge.get(self.page, Accept_Encoding="gzip")
        self.assertEqual(packed.headers["Content-Encoding"], "gzip")
        self.assertEqual(gzip.decompress(packed.body).decode(), PAGE)
        self.assertNotEqual(packed.headers["ETag"], self.edge.get(self.page).headers["ETag"])

    def test_a_missing_page_is_dropped_without_an_answer(self):
        nothing = hashlib.md5(b"nothing").hexdigest()
        for target in (f"/pages/{nothing}/page.html", "/pages/none.html", "/pages/"):
            with self.assertRaises(ConnectionResetError):
                self.edge.get(target)
            with self.subTest(target):
                answer = curl("--http2", "-w", "%{http_code}", "--cacert", str(self.edge.certificate),
                              f"https://localhost:{self.edge.https_port}{target}")
                self.assertNotEqual(answer.returncode, 0)
                self.assertEqual(answer.stdout, "000")

    def test_nothing_else_of_the_site_is_shown(self):
        for target in ("/releases/0/popup/get_info", "/current", "/", "/games.json", "/@intake",
                       "/_rule", "/pages/../games.json"):
            with self.subTest(target):
                try:
                    self.assertIn(self.edge.get(target).status, (400, 404))
                except ConnectionResetError:
                    pass


class Bounds(unittest.TestCase):
    def setUp(self):
        self.edge = the_deployment()

    def test_a_body_may_have_64_kilobytes_and_not_one_byte_more(self):
        self.assertEqual(self.edge.report(b"x" * 65536, install="BIG").status, 200)
        self.assertEqual(self.edge.report(b"x" * 65537, install="BIG").status, 413)

    def test_an_installation_that_starts_over_and_over_is_held_up_and_no_other(self):
        target = f"/popup/get_info?{parameters('BUSY')}&sig={0:032x}"
        statuses = [self.edge.get(target).status for _ in range(12)]
        self.assertNotIn(429, statuses[:6])
        self.assertIn(429, statuses[6:])
        self.assertNotEqual(self.edge.get(target.replace("BUSY", "IDLE")).status, 429)

    def test_an_installation_that_asks_or_reports_over_and_over_is_held_up(self):
        body = report_body("busy")
        # However long its name is.
        for send, install in ((self.edge.ask, "BUSY-ASKING"), (self.edge.report, "B" * 1000)):
            statuses = [send(body, install=install).status for _ in range(80)]
            self.assertEqual(set(statuses[:60]), {200})
            self.assertIn(429, statuses[60:])


class Tls(unittest.TestCase):
    def test_a_session_goes_on_where_it_was(self):
        edge = the_deployment()
        for version in (ssl.TLSVersion.TLSv1_2, ssl.TLSVersion.TLSv1_3):
            context = ssl.create_default_context(cafile=edge.certificate)
            context.maximum_version = version
            session = None
            for reused in (False, True):
                with socket.create_connection((ADDRESS, edge.https_port), timeout=20) as plain:
                    with context.wrap_socket(plain, server_hostname="localhost",
                                             session=session) as secure:
                        secure.sendall(b"GET / HTTP/1.1\r\nHost: a\r\nConnection: close\r\n\r\n")
                        self.assertIn(b" 404 ", secure.recv(4096))
                        self.assertEqual(secure.session_reused, reused, version)
                        session = secure.session


class Logs(unittest.TestCase):
    def test_hold_no_token_no_signature_and_no_installation(self):
        edge = the_deployment()
        edge.report(report_body("logged"), path="/report/logged")
        edge.report(report_body("logged"), key="wrong")
        edge.ask(query_body("logged"))
        log = edge.places.part("edge") / "access.log"
        wait_until(lambda: b"/report/logged" in log.read_bytes(), "the log is written")
        edge.wait_until_stored()
        for path in edge.places.parts.glob("*/*.log"):
            content = path.read_text(errors="replace")
            for secret in ("t0ken", "sig=", INSTALL, KEY):
                self.assertNotIn(secret, content, path)
