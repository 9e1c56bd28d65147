"""The parts of a deployment: how each is prepared, started, and known to be ready."""
import dataclasses
import os
import pathlib
import shutil
import socket
import subprocess
import sys
from typing import Callable

import psycopg
import redis

from building import RECEIVER
from places import ADDRESS, DEPLOY, database_user, fill_in

POSTGRES = pathlib.Path("/usr/lib/postgresql/15/bin")


@dataclasses.dataclass
class Part:
    name: str
    command: list
    ready: Callable[[], bool]
    user: str | None = None  # Another than our own.
    stop_signal: str = "SIGTERM"


def listens(port):
    try:
        with socket.create_connection((ADDRESS, port), timeout=1):
            return True
    except OSError:
        return False


def exists_and_answers(path):
    try:
        with socket.socket(socket.AF_UNIX) as connection:
            connection.connect(str(path))
            return True
    except OSError:
        return False


def stream_ready(places):
    try:
        return redis.Redis(unix_socket_path=str(places.stream)).ping()
    except redis.RedisError:
        return False


def functions_loaded(places):
    """Returns whether the consumer has loaded the function and made the tables."""
    try:
        store = redis.Redis(unix_socket_path=str(places.stream))
        return bool(store.xinfo_groups("reports")) and database_ready(places)
    except redis.RedisError:
        return False


def database_ready(places):
    try:
        psycopg.connect(places.database).close()
        return True
    except psycopg.Error:
        return False


def make_database(places):
    """Makes an empty cluster that only processes of this machine reach, through a socket."""
    user = database_user()
    folder = places.part("database")
    shutil.chown(folder, user)
    shutil.chown(places.sockets, user)
    data = folder / "data"
    subprocess.run([POSTGRES / "initdb", "-D", data, "-U", user, "--auth=trust", "--encoding=UTF8",
                    "--locale=C"], cwd=folder, check=True, stdout=subprocess.DEVNULL,
                   user=user if os.getuid() == 0 else None)


def make_certificate(folder):
    """Makes a certificate for the loopback names. It is good for a week."""
    names = "subjectAltName=DNS:localhost,IP:127.0.0.1,IP:0:0:0:0:0:0:0:1"
    subprocess.run(
        ["openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256",
         "-nodes", "-days", "7", "-subj", "/CN=localhost", "-addext", names,
         "-keyout", folder / "certificate.key", "-out", folder / "certificate.pem"],
        check=True, stderr=subprocess.DEVNULL)
    (folder / "tickets.key").write_bytes(os.urandom(80))


def prepare_edge(places, words):
    folder = places.part("edge")
    (folder / "temporary").mkdir()
    make_certificate(folder)
    for name in ("edge.js", "report.conf"):
        shutil.copy(DEPLOY / "edge" / name, folder)
    fill_in("edge/nginx.conf.in", folder / "nginx.conf", words)


def prepare(places, words):
    for name in ("stream", "database", "receiver", "consumer", "rule", "edge", "metrics"):
        places.part(name).mkdir()
    fill_in("intake/redis.conf.in", places.part("stream") / "redis.conf", words)
    prepare_edge(places, words)
    fill_in("watching/prometheus.yml.in", places.part("metrics") / "prometheus.yml", words)
    make_database(places)


def all_parts(places, facts):
    """Returns the parts in the order in which they are started."""
    database = [POSTGRES / "postgres", "-D", places.part("database") / "data",
                "-k", places.sockets, "-h", "",
                # A statement that failed, its values and its rows are not for the log.
                "-c", "log_min_error_statement=panic", "-c", "log_parameter_max_length_on_error=0",
                "-c", "log_error_verbosity=terse"]
    python = [sys.executable, "-B"]
    return [
        Part("stream", ["redis-server", places.part("stream") / "redis.conf"],
             lambda: stream_ready(places)),
        Part("database", database, lambda: database_ready(places),
             user=database_user() if os.getuid() == 0 else None, stop_signal="SIGINT"),
        Part("receiver", [RECEIVER, "--listen", places.intake, "--games", places.games,
                          "--stream", places.stream, "--backlog", facts["backlog"]], lambda: exists_and_answers(places.intake)),
        Part("consumer", [*python, DEPLOY / "intake" / "consumer.py", "--stream", places.stream,
                          "--database", places.database], lambda: functions_loaded(places)),
        Part("rule", [*python, DEPLOY / "conditions" / "rule.py", "--socket", places.rule,
                      "--store", places.stream], lambda: exists_and_answers(places.rule)),
        Part("metrics", [*python, DEPLOY / "watching" / "exporter.py", "--log",
                         places.part("edge") / "access.log", "--stream", places.stream,
                         "--database", places.database, "--port", facts["metrics_port"]],
             lambda: listens(facts["metrics_port"])),
        Part("edge", ["nginx", "-p", places.part("edge"), "-e", "error.log", "-c",
                      places.part("edge") / "nginx.conf"],
             lambda: listens(facts["http_port"]) and listens(facts["https_port"])),
    ]
