#!/usr/bin/env python3
"""Whether the documents are whole: their links lead somewhere, their JSON is JSON, what they say of
the log is what the code writes, and every command in them is run by a test or excused with a reason."""
import json
import pathlib
import re
import unittest
import urllib.parse

from documents import ROOT, blocks, commands, documents, prose_of, text_of
from run_commands import NOT_RUN, RUN_IN_ORDER, excuse

LINK = re.compile(r"\[[^\]]*\]\(([^)\s]+)\)")
CODE = re.compile(r"`[^`]*`")


def anchors(document):
    """As the usual renderers of such documents name the headings."""
    for heading in re.findall(r"^#+ +(.+?) *$", prose_of(document), re.M):
        kept = re.sub(r"[^\w\- ]", "", heading.lower())
        yield kept.replace(" ", "-")


class Documents(unittest.TestCase):
    def test_links_lead_somewhere(self):
        for document in documents():
            folder = (ROOT / document).parent
            for link in LINK.findall(CODE.sub("", prose_of(document))):
                if re.match(r"[a-z]+:", link):
                    continue
                path, _, anchor = urllib.parse.unquote(link).partition("#")
                target = (folder / path).resolve() if path else ROOT / document
                with self.subTest(document=document, link=link):
                    self.assertTrue(target.is_relative_to(ROOT) and target.exists(), "leads nowhere")
                    if anchor:
                        self.assertIn(anchor, list(anchors(target.relative_to(ROOT))))

    def test_pages_are_linked_from_the_readme(self):
        reached = {str(pathlib.PurePath(link)) for link in LINK.findall(text_of("README.md"))}
        for document in documents():
            if document.startswith("docs/"):
                self.assertIn(document, reached)

    def test_json_is_json(self):
        for document in documents():
            for block in blocks(document, "json"):
                with self.subTest(block.place):
                    json.loads(block.text)

    def test_the_check_of_signatures_holds_for_the_vectors(self):
        (check,) = blocks("docs/operations.md", "python")
        names = {}
        exec(compile(check.text, check.place, "exec"), names)
        vectors = [json.loads(block.text) for block in blocks("docs/service.md", "json")]
        vectors = [vector for vector in vectors if "vector" in vector]
        self.assertGreater(len(vectors), 4)
        for vector in vectors:
            with self.subTest(vector["vector"]):
                host = "https://popups.example"
                target = vector["url"].removeprefix(host).encode()
                body, key = vector["body"].encode(), vector["game_key"].encode()
                self.assertTrue(names["is_signed"](target, body, key))
                self.assertFalse(names["is_signed"](target, body + b" ", key))
                self.assertFalse(names["is_signed"](target, body, key + b"x"))
                self.assertFalse(names["is_signed"](target.replace(b"os=2", b"os=1"), body, key))

    def test_log_lines_are_those_of_the_code(self):
        code = "".join(path.read_text(encoding="utf-8") for path in (ROOT / "src").rglob("*.cpp"))
        literals = re.sub(r"%[@sd]", "\0", code)
        table = text_of("docs/integration.md").split("## What the log says about mistakes")[1].split("\n## ")[0]
        lines = re.findall(r"^\| [^|]+ \| (.+) \|$", table, re.M)[1:]
        self.assertGreater(len(lines), 5)
        for line in lines:
            for said in CODE.findall(line):
                # Where the code has a value, the table has an example or an ellipsis.
                wanted = said.strip("`").replace("ZOVKPopupHost::pump", "ZOVKPopupHost::\0")
                wanted = re.sub(r"ZOVKPopup_….html|ZOVKPopup(Remote|FrequencyOnce).config", "\0", wanted)
                with self.subTest(said):
                    self.assertTrue(wanted in literals, "no code of src/ writes that")

    def test_every_command_is_run_or_excused(self):
        excused = set()
        for document in documents():
            for block in blocks(document, "sh"):
                for command in commands(block):
                    with self.subTest(block.place, command=command):
                        if pattern := excuse(document, command):
                            excused.add((document, pattern))
                        else:
                            self.assertIn(document, RUN_IN_ORDER, "is neither run nor excused")
        listed = {(document, pattern) for document in NOT_RUN for pattern in NOT_RUN[document]}
        self.assertEqual(listed - excused, set(), "no document has these any more")


if __name__ == "__main__":
    unittest.main()
