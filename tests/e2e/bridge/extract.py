#!/usr/bin/env python3
"""Takes the code out of the guide, so that it is compiled and run as readers get it.

Usage: extract.py GUIDE DIRECTORY; writes guide.html and guide.h"""
import pathlib
import re
import sys


def only_block(text, language):
    blocks = re.findall(rf"^```{language}\n(.*?)^```$", text, re.M | re.S)
    if len(blocks) != 1:
        sys.exit(f"the guide has {len(blocks)} blocks of {language}, not one")
    return blocks[0]


def main():
    guide, directory = map(pathlib.Path, sys.argv[1:])
    text = guide.read_text(encoding="utf-8")
    (directory / "guide.html").write_text(only_block(text, "html"), encoding="utf-8")
    (directory / "guide.h").write_text("#pragma once\n" + only_block(text, "cpp"), encoding="utf-8")


main()
