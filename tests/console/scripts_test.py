#!/usr/bin/env python3
"""Scripts of pages, which are parsed before they are published."""
import os
import pathlib
import shutil
import tempfile
import unittest

from console import PAGE, Service, entry

BROKEN = "<script>\nlet lantern = ;\n</script>\n"
LONGEST_PAGE = 4 << 20


class Scripts(unittest.TestCase):
    def start(self, *popups, program=None):
        self.service = Service(popups=popups, program=program)
        self.addCleanup(self.service.stop)
        return self.service

    def copy_of_the_service(self, helper=None):
        """Returns a copy of the service in an empty folder, with this text as its helper."""
        folder = tempfile.TemporaryDirectory(prefix="zovkpopup-programs-")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        (self.folder / "bin").mkdir()
        program = shutil.copy(os.environ["ZOVKPOPUP_SERVICE"], self.folder / "bin")
        if helper is not None:
            (self.folder / "zovkpopup").mkdir()
            file = self.folder / "zovkpopup/zovkpopup-helper"
            file.write_text(helper)
            file.chmod(0o755)
        return program

    def make(self, page):
        return self.service.post("popups", entry=entry(7, "shop"), page_text=page)["id"]

    def states(self):
        return [p["state"] for p in self.service.get("popups")["popups"]]

    def test_a_page_with_a_script_that_cannot_be_parsed_is_not_published(self):
        self.start(entry(1, "lobby"))
        made = self.make(PAGE + BROKEN)
        told = self.service.post("publish", 409, ids=[made])
        (error,) = [p for p in told["problems"] if p["severity"] == "error"]
        line = PAGE.count("\n") + 2
        self.assertEqual(error["path"], "/popups/1")
        self.assertEqual(error["message"], "the page shop.html has a script that cannot be parsed, "
                         f"at line {line}: Unexpected token ';'")
        self.assertEqual([p["pop_id"] for p in self.service.config()["popups"]], [1])
        popup = self.service.popup(7)
        self.assertEqual(popup["state"], "broken")
        self.assertIn(error["message"], [p["message"] for p in popup["problems"]])
        self.service.post(f"popups/{made}", version=popup["version"], entry=entry(7, "shop"),
                          page_text=PAGE)
        self.service.post("publish", ids=[made])
        self.assertEqual(self.service.popup(7)["state"], "live")

    def test_a_page_that_came_by_hand_is_shown_as_broken(self):
        self.start(entry(1, "lobby"))
        self.service.write("pages/lobby.html", PAGE + BROKEN)
        popup = self.service.popup(1)
        self.assertEqual(popup["state"], "broken")
        self.assertIn("cannot be parsed", popup["live_problems"][0]["message"])
        self.assertEqual(self.service.get("popups")["unchecked"], "")

    def test_the_list_of_popups_has_16_mib_of_new_pages_parsed_at_a_time(self):
        self.start(*[entry(n, f"scene{n}") for n in range(1, 6)])
        for n in range(1, 6):
            page = PAGE + BROKEN + f"<!--{n}"
            self.service.write(f"pages/scene{n}.html", page + "x" * (LONGEST_PAGE - len(page)))
        self.assertEqual(sorted(self.states()), ["broken"] * 4 + ["live"])
        self.assertEqual(self.states(), ["broken"] * 5)

    def test_without_the_helper_pages_are_published_and_the_list_says_so_once(self):
        self.start(entry(1, "lobby"), program=self.copy_of_the_service())
        made = self.make(PAGE + BROKEN)
        self.service.post("publish", ids=[made])
        told = self.service.get("popups")
        self.assertIn("zovkpopup-helper is not installed", told["unchecked"])
        self.assertEqual([p["problems"] for p in told["popups"]], [[], []])

    def test_a_helper_that_fails_is_asked_again_only_to_publish(self):
        program = self.copy_of_the_service('#!/bin/sh\necho >>"$(dirname "$0")/runs"\nexit 7\n')
        self.start(entry(1, "lobby"), program=program)

        def runs():
            return (self.folder / "zovkpopup/runs").read_text().count("\n")
        for _ in range(3):
            self.assertIn("exited with status 7", self.service.get("popups")["unchecked"])
            self.assertEqual(runs(), 1)
        self.service.post("publish", ids=[self.service.popup(1)["id"]])
        self.assertEqual(runs(), 2)


if __name__ == "__main__":
    unittest.main()
