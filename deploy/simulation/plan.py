#!/usr/bin/python3
"""How many machines, how much bandwidth and what money a number of starts a day takes, from what one
core was measured to carry. Prints the table of docs/operations.md."""
import argparse
import dataclasses
import json
import math
import pathlib

HERE = pathlib.Path(__file__).resolve().parent
DAY = 86_400
MONTH = 30
MILLION = 1_000_000


@dataclasses.dataclass
class Assumptions:
    """What was not measured here, and is to be replaced by what one knows."""
    peak: float = 10            # the evening, times the mean
    kept_pages: int = 10        # pages that a game has and asks about
    reports: float = 0.2        # of a start
    queries: float = 0.5        # of a start
    new_connections: float = 1  # of a start, full handshakes
    down_bytes: int = 5_251     # of a start, from the table of docs/operations.md
    up_bytes: int = 2_368
    tls_bytes: int = 3_500      # of a handshake, both ways
    most_busy: float = 0.5      # a core's load at the peak, so that one of two edges may fail
    cores: int = 4              # of a machine
    machine_month: float = 40   # money
    terabyte: float = 5         # money, of outgoing traffic


def plan(millions, costs, given):
    mean = millions * MILLION / DAY
    peak = mean * given.peak
    edge = peak * (1 / costs["starts"] + given.new_connections / costs["handshakes"]
                   + given.reports / costs["edge_reports"] + given.queries / costs["edge_queries"])
    intake = peak * given.reports * (1 / costs["stored"] - 1 / costs["edge_reports"])
    edges = max(2, math.ceil(edge / given.most_busy / given.cores))
    intakes = max(2, math.ceil(intake / given.most_busy / given.cores))
    down = peak * (given.down_bytes + given.tls_bytes * given.new_connections) * 8 / 1e6
    monthly = millions * MILLION * MONTH * given.down_bytes / 1e12
    money = (edges + intakes) * given.machine_month + monthly * given.terabyte
    return {"starts a day": f"{millions} million", "starts a second, mean": f"{mean:,.0f}",
            "starts a second, peak": f"{peak:,.0f}", "requests a second, peak":
            f"{peak * (1 + given.kept_pages + given.reports + given.queries):,.0f}",
            "cores of the edge, busy at the peak": f"{edge:.1f}",
            "cores of the intake, busy at the peak": f"{intake:.2f}",
            "machines: edges + intake": f"{edges} + {intakes}",
            "Mbit/s to games, peak": f"{down:,.0f}", "TB to games a month": f"{monthly:,.2f}",
            "money a month": f"{money:,.0f}"}


def table(plans):
    names = list(plans[0])
    rows = [[name, *[one[name] for one in plans]] for name in names]
    lines = ["| " + " | ".join(row) + " |" for row in rows]
    return "\n".join([lines[0], "|---|" + "---|" * len(plans), *lines[1:]])


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--costs", type=pathlib.Path, default=HERE / "costs.json",
                        help="what deploy/benchmark --save wrote")
    for field in dataclasses.fields(Assumptions):
        parser.add_argument("--" + field.name.replace("_", "-"), type=field.type,
                            default=field.default)
    words = vars(parser.parse_args())
    costs = json.loads(words.pop("costs").read_text())
    given = Assumptions(**words)
    print(table([plan(millions, costs, given) for millions in (1, 10, 100)]))


if __name__ == "__main__":
    main()
