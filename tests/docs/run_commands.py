#!/usr/bin/env python3
"""Does what the documents tell their readers to do: saves the files that they show and runs their
commands, in order, in an empty folder, with nothing of the project but what is installed. Needs a
screen; popups that come up are answered by the keyboard.

usage: run_commands.py (--build DIR | --packages DIR) DOCUMENT..."""
import argparse
import fnmatch
import hashlib
import json
import os
import pathlib
import subprocess
import sys
import tempfile
import time
import urllib.parse

from documents import ROOT, blocks, commands
from screen import Person

# Documents whose commands are run as they stand, one after another.
RUN_IN_ORDER = {"docs/integration.md", "docs/pages.md", "docs/tool.md", "docs/operations.md"}

# Commands that are not run, and why; patterns as for file names.
ITSELF = "runs all tests, this one among them"
PACKAGES = "needs root; the packages are unpacked into a folder instead"
MINUTES = "runs for minutes; its figures are taken on a quiet machine"
MAKES_PACKAGES = "scripts/test-install does the same"
NOT_RUN = {
    "README.md": {
        "scripts/demo": "builds the project anew; continuous integration runs it",
        "scripts/test": ITSELF,
    },
    "CONTRIBUTING.md": {
        "cmake --preset dev && cmake --build --preset dev": "scripts/test does the same",
        "scripts/with-display 1280x900 ctest --test-dir build/dev --output-on-failure": ITSELF,
        "cmake --preset packages": MAKES_PACKAGES,
        "cmake --build --preset packages": MAKES_PACKAGES,
        "cpack --config build/packages/CPackConfig.cmake": MAKES_PACKAGES,
        "scripts/test-install": "builds the project anew; it is a test of its own",
        "scripts/with-display 1280x900 tests/docs/run_commands.py --packages "
        "build/packages/packages docs/integration.md":
            "this program; its test follows the same document from a build folder",
    },
    "deploy/README.md": {
        "deploy/*": "deploy/test does the same, and is part of scripts/test",
    },
    "docs/integration.md": {
        "sudo apt-get install ./libzovkpopup*.deb ./zovkpopup-helper_*.deb ./zovkpopup-tool_*.deb":
            PACKAGES,
        "sudo apt-get install cmake g++ pkg-config libsdl2-dev":
            "needs root; scripts/bootstrap installs them",
    },
    "docs/operations.md": {
        "benchmarks/start_cost.py build/release": "an entry of its own in ctest, docs/start-cost",
    },
    "docs/porting.md": {
        "cmake --preset core": "scripts/test --all does the same",
        "cmake --build --preset core --target zovkpopup_unit_tests zovkpopup_contract_memory":
            "scripts/test --all does the same",
        "ctest --test-dir build/core -L 'unit|contract-memory'": "scripts/test --all does the same",
    },
    "docs/performance.md": {
        "scripts/bench": MINUTES,
        "build/release/benchmarks/*": MINUTES,
        "scripts/with-display 1280x800 build/release/benchmarks/*": MINUTES,
    },
}


# Pages that are answered by their own button, which has the keyboard.
KEYS = {"docs/pages.md": "Return"}

# Programs that go on until their player leaves.
LEFT_BY_PLAYERS = {"./hello"}

# What readers are promised to see.
PROMISED = {
    "docs/integration.md": {"./hello": 'answered 0, {"action":"skip","msg":""}'},
    "docs/pages.md": {"zovkpopup preview spring.html --size 480x800":
                      '0 skip {"action":"skip","msg":"come"}'},
    "docs/tool.md": {"zovkpopup explain shop.json --scene shop --channel 7": "would be shown"},
}


def excuse(document, command):
    """Returns the pattern that keeps a command from being run, if there is one."""
    return next((pattern for pattern in NOT_RUN.get(document, {})
                 if fnmatch.fnmatchcase(command, pattern)), None)


def install(build, packages, prefix):
    """Installs the project below a folder; gives the folder that has bin and lib in it."""
    if packages:
        for package in sorted(pathlib.Path(packages).glob("*.deb")):
            subprocess.run(["dpkg-deb", "-x", package, prefix], check=True)
        return prefix / "usr"
    subprocess.run(["cmake", "--install", build, "--prefix", prefix], check=True,
                   stdout=subprocess.DEVNULL)
    return prefix


def surroundings(installed, home):
    """Returns the environment of a new player's shell, on a machine with the project installed."""
    library = next(installed.rglob("libzovkpopup.so.1")).parent
    return {**os.environ, "HOME": str(home), "XDG_DATA_HOME": str(home / "data"),
            "PATH": f"{installed / 'bin'}:{os.environ['PATH']}",
            "PKG_CONFIG_PATH": str(library / "pkgconfig"), "CMAKE_PREFIX_PATH": str(installed),
            "LD_LIBRARY_PATH": str(library)}


def run(command, folder, environment, key):
    """Runs one command in a reader's shell. Returns its output."""
    print(f"  $ {command}", flush=True)
    output = folder / ".said"
    with output.open("w") as file:
        # With exec, so that a program gets what is meant for it, and not a shell.
        simple = not any(sign in command for sign in "|;&$(")
        process = subprocess.Popen(["bash", "-c", f"exec {command}" if simple else command],
                                   cwd=folder, env=environment, stdin=subprocess.DEVNULL,
                                   stdout=file, stderr=subprocess.STDOUT)
        key = None if "--screenshot" in command else key
        Person(key, leaves=command in LEFT_BY_PLAYERS).watch(process, output)
    said = output.read_text(errors="replace")
    if process.returncode != 0:
        sys.exit(f"{command}: ended with {process.returncode} and said\n{said}")
    return said


def follow(document, folder, environment):
    """Follows a document from its first line to its last; everything that its commands said."""
    said = {}
    for block in blocks(document):
        if block.file:
            print(f"  {block.file}")
            (folder / block.file).write_text(block.text, encoding="utf-8")
        if block.language == "sh":
            for command in commands(block):
                if not excuse(document, command):
                    said[command] = run(command, folder, environment, KEYS.get(document, "Escape"))
    return said


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    source = parser.add_mutually_exclusive_group(required=True)
    source.add_argument("--build", help="install from this build folder")
    source.add_argument("--packages", help="install from the packages in this folder")
    parser.add_argument("documents", nargs="+")
    arguments = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix="zovkpopup-docs-") as scratch:
        scratch = pathlib.Path(scratch)
        installed = install(arguments.build, arguments.packages, scratch / "installed")
        for document in arguments.documents:
            begun = time.monotonic()
            print(document, flush=True)
            folder = scratch / pathlib.Path(document).stem
            folder.mkdir()
            environment = surroundings(installed, scratch / "home")
            check(document, follow(document, folder, environment))
            if document == "docs/operations.md":
                check_site(folder / "site")
            print(f"  done in {time.monotonic() - begun:.0f} seconds", flush=True)


def check(document, said):
    for command, promised in PROMISED.get(document, {}).items():
        if promised not in said[command]:
            sys.exit(f"{command} did not say {promised}, but\n{said[command]}")


def check_site(site):
    """Checks that the files are a service: the pages that the document names are there, with the
    right bytes."""
    for popup in json.loads((site / "current/popup/get_info").read_text())["popups"]:
        page = site / urllib.parse.urlsplit(popup["uri"]).path.lstrip("/")
        if hashlib.md5(page.read_bytes()).hexdigest() != popup["sig"]:
            sys.exit(f"{page} is not the page of the document")


if __name__ == "__main__":
    main()
