"""The plan for many players, and the simulation of bad hours."""
import subprocess
import sys
import unittest

from deployment import DEPLOY

sys.path.insert(0, str(DEPLOY / "simulation"))

import plan  # noqa: E402
import simulate  # noqa: E402

COSTS = {"starts": 1000, "handshakes": 1000, "edge_reports": 1000, "edge_queries": 1000,
         "stored": 500}


class Plan(unittest.TestCase):
    def planned(self, millions, **given):
        return plan.plan(millions, COSTS, plan.Assumptions(**given))

    def test_counts_cores_from_the_cost_of_each_request(self):
        one = self.planned(86.4, peak=1, reports=0.5, queries=0.5)
        self.assertEqual(one["starts a second, peak"], "1,000")
        # A start, its handshake, half a report and half a query take a millisecond each.
        self.assertEqual(one["cores of the edge, busy at the peak"], "3.0")
        self.assertEqual(one["cores of the intake, busy at the peak"], "0.50")

    def test_leaves_an_edge_to_spare(self):
        self.assertEqual(self.planned(1)["machines: edges + intake"], "2 + 2")
        self.assertEqual(self.planned(864, peak=1, reports=0, queries=0, most_busy=0.5,
                                      cores=4)["machines: edges + intake"], "10 + 2")

    def test_is_the_one_of_the_documents(self):
        printed = subprocess.run([DEPLOY / "simulation" / "plan.py"], check=True,
                                 capture_output=True, text=True).stdout
        operations = (DEPLOY.parent / "docs" / "operations.md").read_text(encoding="utf-8")
        self.assertIn(printed.strip(), operations)

    def test_of_the_documents_stands_beside_what_the_simulation_prints(self):
        printed = subprocess.run([DEPLOY / "simulation" / "simulate.py"], check=True,
                                 capture_output=True, text=True).stdout
        operations = (DEPLOY.parent / "docs" / "operations.md").read_text(encoding="utf-8")
        self.assertIn(printed.strip(), operations)


class Simulation(unittest.TestCase):
    def test_a_herd_is_served_or_gives_up_and_nobody_is_forgotten(self):
        for spread in (1, 30, 120):
            queue, _ = simulate.herd(5000, 100_000, spread)
            self.assertAlmostEqual(queue.served + queue.failed, 100_000, places=3)

    def test_a_herd_that_spreads_fares_better(self):
        failed = [simulate.herd(5000, 300_000, spread)[0].failed for spread in (1, 20, 40, 90)]
        self.assertEqual(failed, sorted(failed, reverse=True))
        self.assertGreater(failed[0], 200_000)
        self.assertEqual(failed[-1], 0)

    def test_the_others_carry_a_failed_edge_if_they_have_room(self):
        lost, late, _ = simulate.edge_failure(100, edges=4, load=0.5, noticed=30)
        self.assertAlmostEqual(lost, 100 * 4 * 0.5 / 4 * 30, delta=60)
        self.assertEqual(late, 0)
        self.assertGreater(simulate.edge_failure(100, edges=2, load=0.7, noticed=30)[1], 0)

    def test_a_stream_refuses_what_is_over_its_bound_and_then_runs_dry(self):
        full_at, refused, over, _ = simulate.filling_stream(100, 1000, 6000, away=120)
        self.assertAlmostEqual(full_at, 120, delta=1)
        self.assertAlmostEqual(refused, 6000, delta=100)
        self.assertAlmostEqual(over, 180 + 6000 / 900, delta=2)
        self.assertEqual(simulate.filling_stream(100, 1000, 60000, away=120)[1], 0)
