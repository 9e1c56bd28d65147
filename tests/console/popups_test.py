#!/usr/bin/env python3
"""Making, changing, publishing and taking back popups."""
import http.client
import json
import pathlib
import random
import sqlite3
import threading
import time
import unittest

from console import PAGE, Service, entry


class Popups(unittest.TestCase):
    def start(self, *popups):
        self.service = Service(popups=popups)
        self.addCleanup(self.service.stop)
        return self.service

    def states(self):
        return {p["entry"]["pop_id"]: p["state"] for p in self.service.get("popups")["popups"]}

    def make(self, pop_id, scene, **more):
        return self.service.post("popups", who="Ada", entry=entry(pop_id, scene, **more),
                                 page_text=PAGE)["id"]

    def publish(self, *ids, status=200):
        return self.service.post("publish", status, who="Ada", ids=list(ids))

    def live(self):
        return [p["pop_id"] for p in self.service.config()["popups"]]

    def test_what_the_folder_has_is_there_with_its_states(self):
        now = int(time.time())
        self.start(entry(1, "lobby"), entry(2, "shop", valid_time=now + 1000),
                   entry(3, "fair", expire_time=now - 10), entry(4, "gift", pop_freq=3))
        self.assertEqual(self.states(), {1: "live", 2: "scheduled", 3: "ended", 4: "broken"})
        self.assertEqual([p["severity"] for p in self.service.popup(3)["problems"]], ["hint"])
        why = [p["message"] for p in self.service.popup(4)["live_problems"]]
        self.assertTrue(any("check_url" not in m and "conditional popup" in m for m in why), why)

    def test_a_new_popup_is_a_draft_until_it_is_published(self):
        self.start(entry(1, "lobby"))
        made = self.make(7, "shop")
        self.assertEqual(self.states(), {1: "live", 7: "draft"})
        self.assertEqual(self.live(), [1])
        self.assertFalse((self.service.folder / "pages/shop.html").exists())
        self.publish(made)
        self.assertEqual(self.states(), {1: "live", 7: "live"})
        self.assertEqual(self.live(), [1, 7])
        self.assertEqual(self.service.read("pages/shop.html"), PAGE)

    def test_a_change_waits_until_it_is_published(self):
        self.start(entry(1, "lobby"))
        popup = self.service.popup(1)
        path = f"popups/{popup['id']}"
        self.service.post(path, who="Ada", version=popup["version"],
                          entry=entry(1, "lobby", priority=5), page_text=PAGE + "<!-- new -->")
        changed = self.service.popup(1)
        self.assertTrue(changed["changed"])
        self.assertNotIn("priority", changed["live"])
        self.assertEqual(self.service.read("pages/lobby.html"), PAGE)
        self.publish(popup["id"])
        self.assertFalse(self.service.popup(1)["changed"])
        self.assertEqual(self.service.config()["popups"][0]["priority"], 5)
        self.assertEqual(self.service.read("pages/lobby.html"), PAGE + "<!-- new -->")

    def test_two_who_change_the_same_popup_do_not_lose_the_first_change(self):
        self.start(entry(1, "lobby"))
        popup = self.service.popup(1)
        path = f"popups/{popup['id']}"
        self.service.post(path, version=popup["version"], entry=entry(1, "lobby", priority=5))
        told = self.service.post(path, 409, version=popup["version"], entry=entry(1, "lobby"))
        self.assertIn("somebody else", told["message"])
        self.assertEqual(self.service.popup(1)["entry"]["priority"], 5)

    def test_what_is_not_valid_cannot_be_published_and_says_why_as_the_checker_does(self):
        self.start(entry(1, "lobby"))
        made = self.make(7, "shop", pop_freq=3)
        told = self.publish(made, status=409)
        errors = [p for p in told["problems"] if p["severity"] == "error"]
        self.assertEqual([p["path"] for p in errors], ["/popups/1/check_url"])
        self.assertIn("a conditional popup (pop_freq 3) is never shown without it",
                      errors[0]["message"])
        self.assertEqual(told["popups"][1], made)
        self.assertEqual(self.live(), [1])
        self.assertEqual(self.states()[7], "broken")

    def test_the_services_own_address_is_nothing_to_warn_of_but_others_are(self):
        self.start(entry(1, "lobby"), entry(2, "shop", report_url="http://other.example/report"))
        self.assertEqual(self.service.popup(1)["problems"], [])
        (warning,) = self.service.popup(2)["problems"]
        self.assertEqual(warning["path"], "/report_url")
        self.assertIn("is not https", warning["message"])

    def test_a_document_that_games_would_reject_cannot_be_published(self):
        self.start(entry(1, "lobby"))
        made = self.make(7, "shop", priority={})
        self.publish(made, status=409)
        self.assertEqual(self.live(), [1])

    def test_pausing_takes_it_from_games_and_publishing_gives_it_back(self):
        self.start(entry(1, "lobby"), entry(2, "shop"))
        popup = self.service.popup(1)["id"]
        self.service.post(f"popups/{popup}/pause", who="Ada")
        self.assertEqual(self.states(), {1: "paused", 2: "live"})
        self.assertEqual(self.live(), [2])
        self.publish(popup)
        self.assertEqual(self.states(), {1: "live", 2: "live"})

    def assert_nothing_is_live(self):
        """Games reject an empty list and keep what they have, so there is an entry that is past."""
        (filling,) = self.service.config()["popups"]
        self.assertEqual((filling["scene"], filling["expire_time"]), ("nothing", 1))
        told = self.service.post("explain", scene="lobby", channel=1, moment=int(time.time()))
        self.assertEqual([p for p in told["popups"] if p["rank"] > 0], [])

    def test_pausing_the_last_one_takes_it_from_games_too(self):
        self.start(entry(1, "lobby"))
        popup = self.service.popup(1)["id"]
        self.service.post(f"popups/{popup}/pause", who="Ada")
        self.assert_nothing_is_live()
        self.assertEqual(self.states(), {1: "paused"})
        self.publish(self.make(2, "shop"))
        self.assertEqual(self.live(), [2])
        self.publish(popup)
        self.assertEqual(self.live(), [2, 1])

    def test_rolling_back_to_nothing_takes_the_popup_from_games_too(self):
        self.start()
        nothing = self.service.get("popups")["releases"][0]["id"]
        self.publish(self.make(1, "lobby"))
        self.service.post("rollback", release=nothing)
        self.assert_nothing_is_live()
        self.assertEqual(self.states(), {1: "draft"})
        config = self.service.config()
        self.service.write("config.json", json.dumps(config))  # by hand, which makes no popup of it
        self.assertEqual(self.states(), {1: "draft"})
        self.publish(self.make(2, "shop"))
        self.assertEqual(self.live(), [2])

    def test_ending_gives_it_an_end_that_is_past(self):
        self.start(entry(1, "lobby"))
        self.service.post(f"popups/{self.service.popup(1)['id']}/end", who="Ada")
        self.assertEqual(self.states(), {1: "ended"})
        self.assertLessEqual(self.service.config()["popups"][0]["expire_time"], time.time())

    def test_a_copy_has_a_number_and_a_page_of_its_own(self):
        self.start(entry(1, "lobby"), entry(9, "shop"))
        self.service.post(f"popups/{self.service.popup(1)['id']}/duplicate", who="Ada")
        copy = self.service.popup(10)
        self.assertEqual(copy["entry"]["page"], "lobby-10.html")
        self.assertEqual(copy["state"], "draft")
        self.assertEqual(self.service.get(f"popups/{copy['id']}/page")["text"], PAGE)

    def test_only_what_is_not_live_can_be_deleted(self):
        self.start(entry(1, "lobby"))
        popup = self.service.popup(1)["id"]
        self.service.post(f"popups/{popup}/delete", 409)
        self.service.post(f"popups/{popup}/pause")
        self.service.post(f"popups/{popup}/delete")
        self.assertEqual(self.states(), {})

    def order(self):
        return [p["entry"]["pop_id"] for p in self.service.get("popups")["popups"]]

    def test_moving_gives_priorities_that_make_the_order(self):
        self.start(*(entry(i, f"s{i}") for i in range(1, 6)))
        ids = {i: self.service.popup(i)["id"] for i in range(1, 6)}
        wanted = self.order()
        chance = random.Random(7)
        for _ in range(40):
            moved = chance.choice(wanted)
            before = chance.choice([i for i in wanted if i != moved] + [0])
            self.service.post(f"popups/{ids[moved]}/move", before=ids.get(before, 0))
            wanted.remove(moved)
            wanted.insert(wanted.index(before) if before else len(wanted), moved)
            self.assertEqual(self.order(), wanted)

    def test_rolling_back_brings_documents_and_pages_of_before(self):
        self.start(entry(1, "lobby"))
        popup = self.service.popup(1)
        first = self.service.get("popups")["releases"][0]["id"]
        self.service.post(f"popups/{popup['id']}", version=popup["version"],
                          entry=entry(1, "lobby", priority=5), page_text="<!doctype html>worse")
        before = self.service.read("config.json")
        self.publish(popup["id"], self.make(7, "shop"))
        self.service.post("rollback", who="Ada", release=first)
        self.assertEqual(self.service.read("config.json"), before)
        self.assertEqual(self.service.read("pages/lobby.html"), PAGE)
        self.assertEqual(self.states(), {1: "live", 7: "draft"})
        self.service.post("rollback", 404, release=12345)

    def test_the_history_says_who_did_what(self):
        self.start(entry(1, "lobby"))
        made = self.make(7, "shop")
        self.publish(made)
        history = self.service.get("history")["history"]
        self.assertEqual([(h["who"], h["what"]) for h in history],
                         [("Ada", "published"), ("Ada", "made"), ("config.json", "taken in")])
        self.assertIn('scene "shop"', history[0]["details"])
        self.assertAlmostEqual(history[0]["time"], time.time(), delta=60)

    def test_changes_by_hand_are_taken_in_and_keep_what_waits(self):
        self.start(entry(1, "lobby"), entry(2, "shop"))
        ids = {i: self.service.popup(i)["id"] for i in (1, 2)}
        popup = self.service.popup(2)
        self.service.post(f"popups/{ids[2]}", version=popup["version"],
                          entry=entry(2, "shop", priority=9))
        self.service.write("config.json", json.dumps(
            {"code": 0, "popups": [entry(2, "shop", pop_freq=1), entry(3, "lobby"),
                                   entry(1, "lobby", priority=4)]}))
        self.assertEqual(self.service.popup(1)["id"], ids[1])
        self.assertEqual(self.service.popup(1)["entry"]["priority"], 4)
        self.assertFalse(self.service.popup(1)["changed"])
        self.assertEqual(self.service.popup(2)["entry"]["priority"], 9)
        self.assertEqual(self.service.popup(2)["live"]["pop_freq"], 1)
        self.assertTrue(self.service.popup(2)["changed"])
        self.assertEqual(self.states()[3], "live")
        self.assertEqual(self.service.get("history")["history"][0]["what"], "changed by hand")

    def test_a_file_that_is_spoilt_by_hand_is_said_and_can_be_rolled_back(self):
        self.start(entry(1, "lobby"))
        made = self.make(7, "shop")
        good = self.service.get("popups")["releases"][0]["id"]
        self.service.write("config.json", "{spoilt")
        self.assertIn("config.json", self.service.get("popups")["problem"])
        self.assertIn("Mend the file", self.publish(made, status=409)["message"])
        self.assertEqual(self.service.read("config.json"), "{spoilt")
        self.service.post("rollback", release=good)
        self.assertEqual(self.live(), [1])

    def test_a_folder_with_nothing_in_it_gets_its_first_popup(self):
        self.start()
        (self.service.folder / "config.json").unlink()
        self.publish(self.make(1, "lobby"))
        self.assertEqual(self.live(), [1])

    def test_why_a_player_sees_something_or_nothing_is_the_librarys_explanation(self):
        now = int(time.time())
        self.start(entry(1, "lobby", expire_time=now + 1000, valid_platform="2"),
                   entry(2, "shop"))
        ask = {"scene": "lobby", "channel": 2, "moment": now}
        told = self.service.post("explain", **ask)
        self.assertEqual(told["popups"][0]["verdict"], "passed")
        told = self.service.post("explain", **{**ask, "channel": 1})
        self.assertEqual(told["popups"][0]["verdict"], "other_channel")
        self.assertIn('the player\'s channel is 1', told["popups"][0]["sentence"])
        told = self.service.post("explain", **{**ask, "moment": now + 2000})
        self.assertEqual(told["popups"][0]["verdict"], "expired")
        told = self.service.post("explain", scene="", scene_type=1, channel=1, moment=now)
        self.assertEqual([p["rank"] for p in told["popups"] if p["pop_id"] == 2], [1])

    def test_pages_entries_names_and_counts_have_bounds(self):
        self.start()
        page = "x" * (4 << 20)
        self.service.post("popups", entry=entry(1, "big"), page_text=page)
        self.service.post("popups", 413, entry=entry(1, "big"), page_text=page + "x")
        self.service.post("preview", page_text=page)
        self.service.post("preview", 413, page_text=page + "x")
        room = (64 << 10) - len(json.dumps(entry(1, "s", note=""), separators=(",", ":")))
        self.service.post("popups", entry=entry(1, "s", note="n" * room))
        self.service.post("popups", 413, entry=entry(1, "s", note="n" * (room + 1)))
        self.service.post("popups", who="w" * 64, entry=entry(1, "s"))
        self.service.post("popups", 400, who="w" * 65, entry=entry(1, "s"))
        for name in ("../games.json", "a/b.html", ".hidden", "", "n" * 101):
            self.service.post("popups", 400, entry={**entry(1, "s"), "page": name}, page_text=PAGE)

    def test_there_may_be_five_hundred_popups(self):
        self.start(*(entry(i, "same") for i in range(1, 500)))
        self.assertEqual(len(self.states()), 499)
        last = self.make(500, "same")
        self.service.post("popups", 409, entry=entry(501, "same"))
        self.service.post(f"popups/{last}/duplicate", 409)
        many = {"code": 0, "popups": [entry(i, "same") for i in range(1, 502)]}
        self.service.write("config.json", json.dumps(many))
        self.assertIn("more popups than the console works with",
                      self.service.get("popups")["problem"])

    def test_what_was_acknowledged_is_there_after_a_kill(self):
        self.start(entry(1, "lobby"))
        made = self.make(7, "shop")
        self.publish(made)
        draft = self.make(8, "draft")
        self.service.kill()
        self.service.start()
        self.assertEqual(self.states(), {1: "live", 7: "live", 8: "draft"})
        self.assertEqual(self.service.get(f"popups/{draft}/page")["text"], PAGE)

    def test_a_kill_at_any_moment_leaves_one_whole_release(self):
        self.start(entry(1, "lobby"))
        popup = self.service.popup(1)["id"]
        chance = random.Random(3)
        for round_ in range(5):
            done = []

            def publish():
                try:
                    for step in range(100):
                        priority = round_ * 1000 + step + 1
                        version = self.service.popup(1)["version"]
                        self.service.post(f"popups/{popup}", version=version,
                                          entry=entry(1, "lobby", priority=priority),
                                          page_text=f"{PAGE}<!-- {priority} -->")
                        self.publish(popup)
                        done.append(priority)
                except (OSError, AssertionError, http.client.HTTPException, json.JSONDecodeError):
                    pass  # it was killed

            thread = threading.Thread(target=publish)
            thread.start()
            until = time.monotonic() + 20
            while not done and time.monotonic() < until:
                time.sleep(0.001)  # until the first is through; then it is killed within the next
            threading.Event().wait(chance.random() * 0.05)
            self.service.kill()
            thread.join()
            self.service.start()
            live = self.service.popup(1)["live"]["priority"]
            self.assertIn(live, (done[-1], done[-1] + 1))
            self.assertEqual(self.service.read("pages/lobby.html"), f"{PAGE}<!-- {live} -->")
            self.assertEqual(self.service.config()["popups"][0]["priority"], live)

    def test_a_release_that_was_kept_but_not_written_goes_live_at_the_next_start(self):
        self.start(entry(1, "lobby"))
        first = self.service.get("popups")["releases"][0]["id"]
        old = (self.service.read("config.json"), self.service.read("pages/lobby.html"))
        popup = self.service.popup(1)
        self.service.post(f"popups/{popup['id']}", version=popup["version"],
                          entry=entry(1, "lobby", priority=5), page_text=PAGE + "<!-- new -->")
        self.publish(popup["id"])
        self.service.kill()
        # As if the kill had come between the store and the folder.
        self.service.write("config.json", old[0])
        self.service.write("pages/lobby.html", old[1])
        store = sqlite3.connect(self.service.folder / "reports.sqlite")
        store.execute("UPDATE releases SET live = 0 WHERE id > ?", (first,))
        store.commit()
        store.close()
        self.service.start()
        self.service.get("popups")
        self.assertEqual(self.service.config()["popups"][0]["priority"], 5)
        self.assertEqual(self.service.read("pages/lobby.html"), PAGE + "<!-- new -->")

    def test_a_preview_is_a_stranger_in_its_frame_and_only_the_latest_are_kept(self):
        self.start()
        addresses = [self.service.post("preview", page_text=f"page {i}")["address"]
                     for i in range(9)]
        status, headers, text = self.service.request("GET", addresses[-1], token=False)
        self.assertEqual((status, text), (200, "page 8"))
        self.assertIn("sandbox allow-scripts;", headers["Content-Security-Policy"])
        self.assertIn("default-src 'none'", headers["Content-Security-Policy"])
        self.assertEqual(self.service.request("GET", addresses[1])[0], 200)
        self.assertEqual(self.service.request("GET", addresses[0])[0], 404)


if __name__ == "__main__":
    unittest.main()
