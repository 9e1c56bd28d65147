#!/usr/bin/env python3
"""Starts the popup service and the game with it, and ends both together."""
import argparse
import contextlib
import pathlib
import subprocess
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent / "tour"))
from service import Service  # noqa: E402


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--game", required=True, help="the game's program")
    parser.add_argument("--service", required=True, help="the popup service's program")
    arguments = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix="lanterns-") as directory:
        scratch = pathlib.Path(directory)
        service = Service(arguments.service, scratch / "service", scratch / "service.log")
        with contextlib.closing(service):
            words = ["--data", str(scratch / "data"), "--service", service.address]
            return subprocess.run([arguments.game, *words], check=False).returncode


if __name__ == "__main__":
    sys.exit(main())
