"""Runs commands, and plays a game on a screen of its own until its popup is answered."""
import hashlib
import json
import pathlib
import shutil
import subprocess

HERE = pathlib.Path(__file__).resolve().parent
WITH_DISPLAY = HERE.parent.parent / "scripts/with-display"
BUNDLE = "ZOVKPopupResource.bundle"
ANSWERED = '0 {"action":"skip","msg":"installed"}'


class Failure(Exception):
    """A check has failed."""


def run(*command, env=None):
    """Runs a command and returns what it printed; a failure shows all of it."""
    command = [str(word) for word in command]
    done = subprocess.run(command, env=env, capture_output=True, text=True, check=False)
    if done.returncode != 0:
        raise Failure(f"{' '.join(command)}\nended with {done.returncode}\n"
                      f"{done.stdout}{done.stderr}")
    return done.stdout


def expect(holds, what):
    if not holds:
        raise Failure(what)


def write_popup(folder, document):
    """Writes a page that answers by itself, and the document that lists it."""
    page = (HERE / "page.html").read_bytes()
    popup = {"pop_id": 1, "scene": "installed", "scene_type": 1, "pop_type": 1, "content_type": 1,
             "sig": hashlib.md5(page).hexdigest(), "pop_freq": 2}
    name = "ZOVKPopup_{scene_type}_{pop_type}_{content_type}_{sig}.html".format(**popup)
    (folder / name).write_bytes(page)
    (folder / document).write_text(json.dumps({"code": 0, "server_time": 1, "popups": [popup]}))


def play(game, page, work):
    """Plays a game with a page or a folder. Returns its lines as lists, by their first words."""
    told = {}
    printed = run(WITH_DISPLAY, "1280x900", "timeout", "60", game, page, work / "home")
    for line in printed.splitlines():
        word, _, rest = line.partition(" ")
        told.setdefault(word, []).append(rest)
    return told


def play_own_page(game, bundle, work):
    """Plays a popup of the game's own resource bundle, which is made from the library's."""
    own = work / "resources" / BUNDLE
    shutil.copytree(bundle, own)
    write_popup(own, "ZOVKPopupLocal.config")
    return play(game, work / "resources", work)


def play_kept_page(game, work):
    """Plays a popup that was downloaded earlier, in a game without a bundle, so that the library's
    is used."""
    cache = work / "home/Library/Caches/ZOVKPopup"
    cache.mkdir(parents=True)
    write_popup(cache, "ZOVKPopupRemote.config")
    (work / "resources").mkdir()
    return play(game, work / "resources", work)


def expect_answered(told):
    expect(told.get("answer") == [ANSWERED], f"the popup was not answered: {told}")


def expect_from(library, runtime, told):
    """Checks that the popup was answered, by the library, the helper and the bundle of those
    folders."""
    expect_answered(told)
    expect([pathlib.Path(path).parent for path in told["library"]] == [library.resolve()],
           f"the library is not of {library}: {told}")
    helper = runtime.resolve() / "zovkpopup-helper"
    expect(told["helper"] == [str(helper)], f"the helper is not {helper}: {told}")
    expect(not misses_bundle(told), f"the bundle was not found: {told}")


def misses_bundle(told):
    return any("No resource bundle found!" in line for line in told.get("log", []))
