#!/usr/bin/env python3
"""Whether the pieces of code in the documents compile. Whole programs among them are built and run
by other tests: those of the bridge's guide, of the README and of the way through integration.md."""
import os
import re
import subprocess
import unittest

from documents import ROOT, blocks, documents

RUN_ELSEWHERE = {"README.md", "docs/bridge.md"}
WARNINGS = ["-Wall", "-Wextra", "-Wpedantic", "-Werror", "-fsyntax-only"]
TOP_LEVEL = re.compile(r"^(namespace|class|struct|void|int|const char\*) .*\{", re.M)


def flags_of(*packages):
    return subprocess.run(["pkg-config", "--cflags", *packages], check=True, stdout=subprocess.PIPE,
                          text=True).stdout.split()


def whole(pieces):
    """Returns one file with all snippets: includes first, statements within functions. Complaints
    name the lines of the documents."""
    lines = ['#include "surroundings.h"']
    for piece in pieces:
        lines += [line for line in piece.text.splitlines() if line.startswith("#include")]
    for number, piece in enumerate(pieces):
        text = "\n".join("" if line.startswith("#include") else line
                         for line in piece.text.splitlines())
        lines.append(f'#line {piece.line + 1} "{piece.document}"')
        if TOP_LEVEL.search(text):
            lines.append(text)
        else:
            lines.append(f"[[maybe_unused]] static void piece{number}() {{ {text}\n}}")
    return "\n".join(lines) + "\n"


def pieces(language):
    return [block for document in sorted(set(documents()) - RUN_ELSEWHERE)
            for block in blocks(document, language) if not block.file]


class Snippets(unittest.TestCase):
    def compile(self, compiler, text, *flags):
        done = subprocess.run([*compiler.split(), *flags, *WARNINGS, "-"], input=text, text=True,
                              stderr=subprocess.PIPE, check=False)
        self.assertEqual(done.returncode, 0, done.stderr)

    def test_cpp_compiles(self):
        found = pieces("cpp")
        self.assertGreater(len(found), 7)
        self.compile(os.environ.get("CXX", "c++"), whole(found), "-std=c++20", "-xc++",
                     f"-I{ROOT}/include", f"-I{ROOT}/tests/docs", *flags_of("sdl2", "glib-2.0"))

    def test_c_compiles(self):
        found = pieces("c")
        self.assertEqual(len(found), 1)
        self.compile(os.environ.get("CC", "cc"), found[0].text, "-std=c99", "-xc",
                     f"-I{ROOT}/include")


if __name__ == "__main__":
    unittest.main()
