#!/usr/bin/python3
"""Three bad hours, simulated in steps of a tenth of a second: everybody starts at once after an
outage, an edge fails, and the database stays away. Prints what became of whom; --plots draws it
with gnuplot."""
import argparse
import collections
import json
import pathlib
import random
import subprocess

HERE = pathlib.Path(__file__).resolve().parent
STEP = 0.1
# A game gives up a request after this number of seconds.
PATIENCE = 15.0


class Queue:
    """Requests that wait for a server, first come first served; who waits too long has left, and
    the server finds out for a tenth of the work."""

    def __init__(self, capacity):
        self.capacity, self.waiting = capacity, collections.deque()
        self.served = self.failed = 0

    def step(self, now, arrivals):
        if arrivals:
            self.waiting.append([now, arrivals])
        work = self.capacity * STEP
        while self.waiting and work > 0:
            since, count = self.waiting[0]
            gone = now - since > PATIENCE
            done = min(count, work * 10 if gone else work)
            work -= done / 10 if gone else done
            if gone:
                self.failed += done
            else:
                self.served += done
            self.waiting[0][1] -= done
            if self.waiting[0][1] <= 0:
                self.waiting.popleft()

    def length(self):
        return sum(count for _, count in self.waiting)


def herd(capacity, players, spread, seed=1):
    """Simulates an outage after which the games of all players come back within `spread`
    seconds."""
    chance = random.Random(seed)
    # In lots of a thousand, so that a step is quick.
    lots = collections.Counter(int(chance.uniform(0, spread) / STEP) for _ in range(players // 1000))
    queue, rows, step = Queue(capacity), [], 0
    while step * STEP <= spread or queue.waiting:
        queue.step(step * STEP, lots.get(step, 0) * 1000)
        if step % 10 == 0:
            rows.append((step * STEP, queue.length(), queue.served, queue.failed))
        step += 1
    return queue, rows


def edge_failure(capacity, edges, load, noticed):
    """Simulates an edge that fails after a minute; names lead to it until that is noticed."""
    queues = [Queue(capacity) for _ in range(edges)]
    rows, lost = [], 0.0
    arriving = capacity * edges * load * STEP
    for step in range(int(240 / STEP)):
        now = step * STEP
        failed, known = now >= 60, now >= 60 + noticed
        alive = queues[1:] if failed else queues
        if failed and not known:
            lost += arriving / edges
        share = arriving / (len(alive) if known or not failed else edges)
        for queue in alive:
            queue.step(now, share)
        if step % 10 == 0:
            wait = max(queue.length() for queue in alive) / capacity
            rows.append((now, wait, lost, sum(queue.failed for queue in queues)))
    return lost, sum(queue.failed for queue in queues), rows


def filling_stream(reports, stored, bound, away):
    """Simulates a database that is away for `away` seconds, and a consumer that then catches up."""
    waiting = refused = full_at = 0.0
    rows, now = [], 0.0
    while now < 60 + away or waiting > 0:
        waiting += reports * STEP
        if 60 <= now < 60 + away:
            out = 0.0
        else:
            out = min(waiting, stored * STEP)
        waiting -= out
        if waiting > bound:
            full_at = full_at or now
            refused += waiting - bound
            waiting = bound
        if int(now / STEP) % 100 == 0:
            rows.append((now / 60, waiting, refused))
        now += STEP
        if stored <= reports and now > 60 + away + 3600:
            break
    return full_at, refused, now, rows


def write(path, rows):
    path.write_text("\n".join(" ".join(f"{value:.3f}" for value in row) for row in rows) + "\n")


def plot(folder, name, title, x, y, lines, extra=""):
    """Draws a plot. `lines` are (file, columns, title)."""
    drawn = ", ".join(f"'{folder / (file + '.data')}' using {columns} with lines lw 2 title '{title}'"
                      for file, columns, title in lines)
    script = (f"set terminal pngcairo size 900,360 font 'DejaVu Sans,11'\nset output "
              f"'{folder / (name + '.png')}'\nset title '{title}'\nset xlabel '{x}'\n"
              f"set ylabel '{y}'\nset key outside right top\nset grid lc rgb '#dddddd'\n"
              f"set yrange [0:*]\nset format y '%.0s%c'\n{extra}\nplot {drawn}\n")
    subprocess.run(["gnuplot"], input=script, text=True, check=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--costs", type=pathlib.Path, default=HERE / "costs.json")
    parser.add_argument("--players", type=int, default=1_000_000)
    parser.add_argument("--cores", type=int, default=8, help="of the edges together")
    parser.add_argument("--reports", type=float, default=3000, help="a second, in the evening")
    parser.add_argument("--bound", type=int, default=1_000_000, help="of the stream")
    parser.add_argument("--plots", type=pathlib.Path, help="a folder for them")
    options = parser.parse_args()
    costs = json.loads(options.costs.read_text())
    # A start is a new connection and its requests.
    core = 1 / (1 / costs["starts"] + 1 / costs["handshakes"])
    capacity = core * options.cores
    files = {}

    print(f"{options.players:,} games start after an outage; the edges carry {capacity:,.0f} a second")
    for spread in (1, 60, 300, 900):
        queue, files[f"herd-{spread}"] = herd(capacity, options.players, spread)
        print(f"  within {spread:4} s: {queue.served / options.players:6.1%} get the document, "
              f"{queue.failed:10,.0f} play without news")
    print("one of the edges fails, and is noticed after 30 s")
    for edges, load in ((4, 0.5), (4, 0.7), (4, 0.9), (2, 0.5), (2, 0.7)):
        lost, late, files[f"edge-{edges}-{load}"] = edge_failure(core * 2, edges, load, 30)
        print(f"  {edges} edges at {load:.0%}: {lost:8,.0f} starts find nobody, "
              f"{late:8,.0f} give up waiting afterwards")
    print(f"the database is away at {options.reports:,.0f} reports a second; "
          f"one consumer stores {costs['consumer']:,.0f}")
    for minutes in (2, 5, 10):
        full_at, refused, over, files[f"stream-{minutes}"] = filling_stream(
            options.reports, costs["consumer"], options.bound, minutes * 60)
        full = f"full after {full_at - 60:4.0f} s" if full_at else "never full     "
        print(f"  {minutes:3} minutes: {full}, {refused:10,.0f} refused, "
              f"all stored {over - 60 - minutes * 60:6.0f} s after it came back")

    if options.plots:
        options.plots.mkdir(parents=True, exist_ok=True)
        for name, rows in files.items():
            write(options.plots / f"{name}.data", rows)
        plot(options.plots, "herd", f"{options.players:,} games start after an outage",
             "seconds", "requests that wait",
             [(f"herd-{spread}", "1:2", f"within {spread} s") for spread in (1, 60, 300, 900)],
             "set xrange [0:120]")
        plot(options.plots, "edge", "One of four edges fails after 60 s, noticed 30 s later",
             "seconds", "seconds of waiting",
             [(f"edge-4-{load}", "1:2", f"{load:.0%} busy before") for load in (0.5, 0.7, 0.9)])
        plot(options.plots, "stream", f"The database is away, {options.reports:,.0f} reports a second",
             "minutes", "reports that wait",
             [(f"stream-{minutes}", "1:2", f"for {minutes} minutes") for minutes in (2, 5, 10)])
        for name in files:
            (options.plots / f"{name}.data").unlink()


if __name__ == "__main__":
    main()
