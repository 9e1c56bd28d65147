#!/usr/bin/python3
"""Moves reports from the stream into the database, each exactly once, and never loses one.

An entry leaves the stream only when the database has it, as a report or put aside. Run one for each
name; several share the work.
"""
import argparse
import dataclasses
import pathlib
import signal
import sys
import time

import psycopg
import redis

from report import NoReport, Report, read_report

HERE = pathlib.Path(__file__).resolve().parent
STREAM = "reports"
GROUP = "database"
LARGEST_BATCH = 500
WAIT_MILLISECONDS = 1000
# An entry that ended the consumer so often is put aside.
MOST_DELIVERIES = 5
# A consumer that holds entries for so long without a sign has died.
ABANDONED_MILLISECONDS = 30_000
SHORTEST_PAUSE = 0.1
LONGEST_PAUSE = 2.0

COLUMNS = [field.name for field in dataclasses.fields(Report)]
TYPES = {"pop_id": "integer", "received": "timestamptz", "channel_id": "bigint"}
INSERT = "INSERT INTO reports ({}) SELECT * FROM unnest({}) ON CONFLICT DO NOTHING".format(
    ", ".join(COLUMNS), ", ".join(f"%s::{TYPES.get(name, 'text')}[]" for name in COLUMNS))
PUT_ASIDE = ("INSERT INTO put_aside (stream_id, reason, path, parameters, body)"
             " VALUES (%s, %s, %s, %s, %s) ON CONFLICT DO NOTHING")
COUNT = "UPDATE tally SET count = count + %s WHERE what = %s"


class Database:
    """Stores a batch in one transaction."""

    def __init__(self, address):
        self.connection = psycopg.connect(address, autocommit=True)
        self.connection.execute((HERE / "schema.sql").read_text(encoding="utf-8"))

    def store(self, reports):
        with self.connection.transaction():
            rows = [dataclasses.astuple(report) for report in reports]
            stored = self.connection.execute(INSERT, [list(column) for column in zip(*rows)])
            self._count(stored.rowcount, "stored")
            self._count(len(reports) - stored.rowcount, "repeated")

    def put_aside(self, stream_id, fields, reason):
        with self.connection.transaction():
            pieces = [fields.get(name, b"") for name in (b"path", b"parameters", b"body")]
            added = self.connection.execute(PUT_ASIDE, [stream_id.decode(), reason, *pieces])
            self._count(added.rowcount, "put_aside")

    def _count(self, number, what):
        if number:
            self.connection.execute(COUNT, [number, what])

    def close(self):
        self.connection.close()


class Stream:
    """The entries that are this consumer's to store."""

    def __init__(self, socket, name):
        self.redis = redis.Redis(unix_socket_path=socket, socket_timeout=10)
        self.name = name
        self.redis.function_load((HERE / "add_reports.lua").read_text(encoding="utf-8"),
                                 replace=True)
        try:
            self.redis.xgroup_create(STREAM, GROUP, id="0", mkstream=True)
        except redis.ResponseError as error:
            if "BUSYGROUP" not in str(error):
                raise

    def next(self):
        """New entries, after waiting for some."""
        return self._read(">", LARGEST_BATCH, WAIT_MILLISECONDS)

    def left_over(self):
        """The first entry that was given out and never done with, with how often it was."""
        self.redis.xautoclaim(STREAM, GROUP, self.name, ABANDONED_MILLISECONDS, "0-0", justid=True)
        held = self.redis.xpending_range(STREAM, GROUP, "-", "+", 1, self.name)
        if not held:
            return [], 0
        return self._read("0", 1, None), held[0]["times_delivered"]

    def forgive(self):
        """That the database or the stream went away is no fault of what was being stored: its
        deliveries are counted from the start again, so that only ends of the consumer count."""
        held = self.redis.xpending_range(STREAM, GROUP, "-", "+", LARGEST_BATCH, self.name)
        if held:
            ids = [entry["message_id"] for entry in held]
            self.redis.xclaim(STREAM, GROUP, self.name, 0, ids, retrycount=0, justid=True)

    def _read(self, start, count, wait):
        answer = self.redis.xreadgroup(GROUP, self.name, {STREAM: start}, count, wait)
        return answer[0][1] if answer else []

    def done(self, ids):
        """Both at once: an entry that was acknowledged alone would stay for ever."""
        with self.redis.pipeline(transaction=True) as both:
            both.xack(STREAM, GROUP, *ids)
            both.xdel(STREAM, *ids)
            both.execute()

    def close(self):
        self.redis.close()


class Consumer:
    def __init__(self, stream, database):
        self.stream = stream
        self.database = database

    def finish_left_over(self):
        """One at a time, so that one that ends the consumer is found by its count."""
        while True:
            entries, deliveries = self.stream.left_over()
            if not entries:
                return
            if deliveries >= MOST_DELIVERIES and entries[0][1]:
                self.put_aside(*entries[0], f"was taken up {deliveries} times without an end")
            else:
                self.store(entries)

    def store(self, entries):
        reports, ids = [], []
        for stream_id, fields in entries:
            if not fields:  # Was deleted in between.
                ids.append(stream_id)
                continue
            try:
                reports.append((stream_id, fields, read_report(stream_id, fields)))
            except NoReport as reason:
                self.put_aside(stream_id, fields, str(reason))
        self.store_reports(reports)
        ids += [stream_id for stream_id, _, _ in reports]
        if ids:
            self.stream.done(ids)

    def store_reports(self, reports):
        """A report that the database refuses is put aside, and the others are stored."""
        if not reports:
            return
        try:
            self.database.store([report for _, _, report in reports])
        except (psycopg.DataError, psycopg.IntegrityError) as error:
            if len(reports) > 1:
                for one in reports:
                    self.store_reports([one])
            else:
                stream_id, fields, _ = reports[0]
                self.database.put_aside(stream_id, fields, type(error).__name__)

    def put_aside(self, stream_id, fields, reason):
        self.database.put_aside(stream_id, fields, reason)
        self.stream.done([stream_id])

    def run(self):
        self.finish_left_over()
        looked = time.monotonic()
        while True:
            self.store(self.stream.next())
            if time.monotonic() - looked > ABANDONED_MILLISECONDS / 1000:
                self.finish_left_over()
                looked = time.monotonic()


def connected(arguments):
    database = Database(arguments.database)
    try:
        return Consumer(Stream(arguments.stream, arguments.name), database)
    except BaseException:
        database.close()
        raise


def serve(arguments):
    """Begins anew, by and by, when the stream or the database has gone."""
    pause = SHORTEST_PAUSE
    failed = False
    while True:
        consumer = None
        try:
            began = time.monotonic()
            consumer = connected(arguments)
            if failed:
                consumer.stream.forgive()
                failed = False
            consumer.run()
        except (redis.RedisError, psycopg.Error) as error:
            failed = True
            # Messages of the database may quote what could not be stored.
            print(f"waiting: {type(error).__name__}", file=sys.stderr, flush=True)
        finally:
            if consumer:
                consumer.stream.close()
                consumer.database.close()
        if time.monotonic() - began > LONGEST_PAUSE:
            pause = SHORTEST_PAUSE
        time.sleep(pause)
        pause = min(pause * 2, LONGEST_PAUSE)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--stream", required=True, help="the socket of Redis")
    parser.add_argument("--database", required=True, help="as libpq takes it")
    parser.add_argument("--name", default="one", help="of this consumer; each has its own")
    arguments = parser.parse_args()
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(0))
    serve(arguments)


if __name__ == "__main__":
    main()
