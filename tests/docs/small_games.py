#!/usr/bin/env python3
"""Makes two games from the lines of documents: that of the README, and one whose loop is GLib's, as
in integration.md. Both show the README's popup on the screen; the page is answered by its own button,
and the game has to hear it.

usage: small_games.py (--build DIR | --packages DIR)"""
import argparse
import hashlib
import json
import pathlib
import subprocess
import sys
import tempfile

from documents import blocks
from run_commands import install, run, surroundings

# What a game has before it has popups.
PROJECT = """cmake_minimum_required(VERSION 3.25)
project(game LANGUAGES C CXX)
add_executable(game main.cpp)
"""
README_GAME = """#include <chrono>
#include <cstdint>
#include <iostream>
#include <string>
#include <thread>

static bool running = true;
static void drawFrame() { std::this_thread::sleep_for(std::chrono::milliseconds(16)); }
static void playerAnswered(std::int32_t code, const std::string& message) {
  std::cout << "answered " << code << ' ' << message << std::endl;
  running = false;
}

int main() {
%s}
"""
GLIB_PROJECT = """find_package(PkgConfig REQUIRED)
pkg_check_modules(GLIB REQUIRED IMPORTED_TARGET glib-2.0)
target_link_libraries(game PRIVATE PkgConfig::GLIB)
"""
GLIB_HOST = """#include <glib-unix.h>

#include <cstdint>
#include <iostream>
#include <string>

#include "zovkpopup/ZOVKPopup.h"
#include "zovkpopup/Host.h"

int main() {
  GMainLoop* loop = g_main_loop_new(nullptr, FALSE);
  zovk::ZOVKPopupHost::setUp(zovk::ZOVKPopupHostSettings());
  zovk::ZOVKPopup::showPopup("lobby", 0, [&](std::int32_t code, const std::string& message) {
    std::cout << "answered " << code << ' ' << message << std::endl;
    g_main_loop_quit(loop);
  });
%s
  g_main_loop_run(loop);
  zovk::ZOVKPopupHost::shutDown();
  g_main_loop_unref(loop);
}
"""


def only_block(language):
    found = blocks("README.md", language)
    if len(found) != 1:
        sys.exit(f"the README has {len(found)} blocks of {language}, not one")
    return found[0].text


def readme_game():
    lines = only_block("cpp").splitlines(keepends=True)
    includes = [line for line in lines if line.startswith("#include")]
    body = [line for line in lines if not line.startswith("#include")]
    return "".join(includes) + README_GAME % "".join(body)


def glib_host():
    (piece,) = [block.text for block in blocks("docs/integration.md", "cpp")
                if "g_unix_fd_add" in block.text]
    return GLIB_HOST % piece


def write_popup(bundle):
    page, document = only_block("html").encode(), only_block("json")
    popup = json.loads(document)["popups"][0]
    if popup["sig"] != hashlib.md5(page).hexdigest():
        sys.exit(f"the README's \"sig\" should be {hashlib.md5(page).hexdigest()}")
    name = "ZOVKPopup_{scene_type}_{pop_type}_{content_type}_{sig}.html".format(**popup)
    (bundle / name).write_bytes(page)
    (bundle / "ZOVKPopupLocal.config").write_text(document, encoding="utf-8")


def play(name, project, program, folder, installed):
    print(name, flush=True)
    folder.mkdir()
    environment = surroundings(installed, folder / "home")
    (folder / "CMakeLists.txt").write_text(PROJECT + project, encoding="utf-8")
    (folder / "main.cpp").write_text(program, encoding="utf-8")
    run("cmake -B build -DCMAKE_BUILD_TYPE=Release", folder, environment, None)
    run("cmake --build build", folder, environment, None)
    source = next(installed.rglob("ZOVKPopupResource.bundle"))
    bundle = folder / "build" / source.name
    subprocess.run(["cp", "-r", source, bundle], check=True)
    write_popup(bundle)
    said = run("build/game", folder, environment, "Return")
    if 'answered 0 {"action":"skip","msg":"later"}' not in said:
        sys.exit(f"the game said\n{said}")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    source = parser.add_mutually_exclusive_group(required=True)
    source.add_argument("--build")
    source.add_argument("--packages")
    arguments = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix="zovkpopup-games-") as scratch:
        scratch = pathlib.Path(scratch)
        installed = install(arguments.build, arguments.packages, scratch / "installed")
        cmake = only_block("cmake")
        play("the README's game", cmake, readme_game(), scratch / "readme", installed)
        play("a host with GLib's loop", cmake + GLIB_PROJECT, glib_host(), scratch / "glib", installed)


if __name__ == "__main__":
    main()
