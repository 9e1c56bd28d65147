#!/usr/bin/python3
"""Tells how the deployment is, in the format that Prometheus reads, at http://ADDRESS:PORT/metrics.

What games ask is counted from the edge's access log as it grows; the stream and the database are
asked when the numbers are.
"""
import argparse
import collections
import os
import pathlib
import signal
import sys
import threading
import time

import psycopg
import redis
from prometheus_client import REGISTRY, start_http_server
from prometheus_client.core import CounterMetricFamily, GaugeMetricFamily

STREAM = "reports"
LOOK_SECONDS = 0.25
LARGEST_READ = 4 * 1024 * 1024
ANSWER_SECONDS = 2
KINDS = {"start", "page", "query", "report", "other"}


class AccessLog:
    """Counts the lines of a log that grows and is replaced now and then."""

    def __init__(self, path):
        self.path = pathlib.Path(path)
        self.requests = collections.Counter()
        self.bytes = collections.Counter()
        self.lock = threading.Lock()
        self.file = None
        self.rest = b""

    def count(self, line):
        fields = line.split(b"\t")
        if len(fields) != 7:
            return
        kind, status, sent = (field.decode("ascii", "replace") for field in fields[:3])
        if kind in KINDS and len(status) == 3 and status.isdigit() and sent.isdigit():
            self.requests[kind, status] += 1
            self.bytes[kind] += int(sent)

    def read_on(self):
        if self.file is None:
            self.file = open(self.path, "rb")
        while data := self.file.read(LARGEST_READ):
            *lines, self.rest = (self.rest + data).split(b"\n")
            with self.lock:
                for line in lines:
                    self.count(line)
        # What is left of the old one has been read: now it may be the turn of another.
        if self._replaced():
            self.file.close()
            self.file, self.rest = None, b""

    def _replaced(self):
        mine, now = os.fstat(self.file.fileno()), os.stat(self.path)
        return mine.st_ino != now.st_ino or now.st_size < self.file.tell()

    def follow(self):
        while True:
            try:
                self.read_on()
            except FileNotFoundError:
                pass  # Between two logs.
            time.sleep(LOOK_SECONDS)

    def metrics(self):
        requests = CounterMetricFamily("zovkpopup_requests", "Answers of the edge",
                                       labels=["kind", "status"])
        sent = CounterMetricFamily("zovkpopup_sent_bytes", "Bytes of the edge's answers, without TLS",
                                   labels=["kind"])
        with self.lock:
            for (kind, status), count in self.requests.items():
                requests.add_metric([kind, status], count)
            for kind, count in self.bytes.items():
                sent.add_metric([kind], count)
        return [requests, sent]


class Stream:
    def __init__(self, socket):
        self.redis = redis.Redis(unix_socket_path=socket, socket_timeout=ANSWER_SECONDS)

    def metrics(self):
        facts = self.redis.xinfo_stream(STREAM)
        first = facts["first-entry"]
        age = max(0, time.time() - int(first[0].split(b"-")[0]) / 1000) if first else 0
        return [
            CounterMetricFamily("zovkpopup_reports_queued", "Reports that the stream has taken",
                                value=facts["entries-added"]),
            GaugeMetricFamily("zovkpopup_reports_waiting", "Reports that are not stored yet",
                              value=facts["length"]),
            GaugeMetricFamily("zovkpopup_oldest_report_seconds", "Age of the oldest of those",
                              value=age),
        ]


class Database:
    def __init__(self, address):
        self.address = address

    def metrics(self):
        with psycopg.connect(self.address, connect_timeout=ANSWER_SECONDS,
                             options=f"-c statement_timeout={ANSWER_SECONDS * 1000}") as connection:
            tally = connection.execute("SELECT what, count FROM tally").fetchall()
        texts = {"stored": "Reports in the table", "put_aside": "What could not be stored",
                 "repeated": "Reports that were there already"}
        return [CounterMetricFamily(f"zovkpopup_reports_{what}", texts[what], value=count)
                for what, count in tally]


class Deployment:
    """What Prometheus collects. A part that does not answer leaves its numbers out, and is down."""

    def __init__(self, log, stream, database):
        self.log, self.parts = log, {"stream": stream, "database": database}

    def collect(self):
        yield from self.log.metrics()
        up = GaugeMetricFamily("zovkpopup_up", "Whether a part answers", labels=["part"])
        for name, part in self.parts.items():
            try:
                metrics = part.metrics()
                up.add_metric([name], 1)
            except (redis.RedisError, psycopg.Error):
                metrics = []
                up.add_metric([name], 0)
            yield from metrics
        yield up


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--log", required=True, help="the edge's access log")
    parser.add_argument("--stream", required=True, help="the socket of Redis")
    parser.add_argument("--database", required=True, help="as libpq takes it")
    parser.add_argument("--address", default="127.0.0.1")
    parser.add_argument("--port", type=int, required=True)
    arguments = parser.parse_args()
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(0))
    log = AccessLog(arguments.log)
    REGISTRY.register(Deployment(log, Stream(arguments.stream), Database(arguments.database)))
    start_http_server(arguments.port, arguments.address)
    log.follow()


if __name__ == "__main__":
    main()
