#!/usr/bin/env python3
"""Whether the table of what a game hears and the tests that play it agree, row for row."""
import re
import unittest

from documents import ROOT, text_of

TEST = re.compile(r"^TEST_F\(WhatTheGameHears, (\w+)\) \{\n(.*?)^\}", re.M | re.S)
HEARS = re.compile(r'hears\(When::k(\w+), (-?\d), (?:R"\((.*?)\)"|"(.*?)"|kReason)\);|hearsNothing\(\);')
WHEN = {"AtOnce": "at once", "InAPump": "in a pump"}


def rows():
    table = text_of("docs/integration.md").split("## What the game hears")[1].split("\n## ")[0]
    for line in re.findall(r"^\| (.*) \|$", table, re.M)[1:]:
        cells = [cell.strip() for cell in line.split(" | ")]
        if len(cells) == 4 and not cells[0].startswith("**"):
            yield cells


def name_of(row):
    words = re.sub(r"[^\w ]", "", row[0]).split()
    return "".join(word[0].upper() + word[1:] for word in words)


def said_by(test_body):
    """Returns code, message and time of the first callback that a test expects."""
    found = HEARS.search(test_body)
    if found is None:
        return None
    when, code, json, text = found.groups()
    if when is None:
        return "–", "–", None
    message = json or text
    if message is None:
        return code, "empty" if found[0].endswith('"");') else "the reason", WHEN[when]
    return code, f"`{message}`" if message else "empty", WHEN[when]


class Answers(unittest.TestCase):
    tests = TEST.findall((ROOT / "tests/unit/host/WhatTheGameHearsTest.cpp").read_text(encoding="utf-8"))

    def test_each_row_has_its_test_and_each_test_its_row(self):
        self.assertGreater(len(self.tests), 30)
        self.assertEqual([name for name, _ in self.tests], [name_of(row) for row in rows()])

    def test_they_say_the_same(self):
        bodies = dict(self.tests)
        for row in rows():
            with self.subTest(row[0]):
                code, message, when = said_by(bodies[name_of(row)])
                self.assertEqual([code, message], row[1:3])
                if when is None:
                    self.assertRegex(row[3], "^(not yet|never)")
                else:
                    self.assertRegex(row[3], f"^{when}")


if __name__ == "__main__":
    unittest.main()
