#!/usr/bin/env python3
"""Makes the game's resource bundle: the library's layouts and images, the pages of pages/ under
the names that the library looks for, and the document that lists them.

usage: make_bundle.py LIBRARY_BUNDLE SOURCES BUNDLE"""
import hashlib
import json
import pathlib
import shutil
import sys

PAGE_FILE = 1
LOCAL = {"content_type": PAGE_FILE, "pop_type": 1, "priority": 0, "publish_time": 1,
         "valid_time": 0, "expire_time": 0, "valid_platform": "", "uri": "", "check_url": "",
         "report_url": ""}


def whole_page(pages, name):
    """Returns a page with everything in it that it links to, because it reaches no other file when
    it is shown."""
    text = (pages / f"{name}.html").read_text(encoding="utf-8")
    style = (pages / "page.css").read_text(encoding="utf-8")
    script = (pages / "page.js").read_text(encoding="utf-8")
    text = text.replace('<link rel="stylesheet" href="page.css">', f"<style>\n{style}</style>")
    return text.replace('<script src="page.js"></script>', f"<script>\n{script}</script>")


def add_popup(pages, bundle, number, source):
    popup = {"pop_id": number, **LOCAL, **source}
    page = whole_page(pages, popup.pop("page")).encode()
    popup["sig"] = hashlib.md5(page).hexdigest()
    name = "ZOVKPopup_{scene_type}_{pop_type}_{content_type}_{sig}.html".format(**popup)
    (bundle / name).write_bytes(page)
    return popup


def main(library_bundle, sources, bundle):
    sources, bundle = pathlib.Path(sources), pathlib.Path(bundle)
    shutil.rmtree(bundle, ignore_errors=True)
    shutil.copytree(library_bundle, bundle)
    entries = json.loads((sources / "popups.json").read_text(encoding="utf-8"))["popups"]
    popups = [add_popup(sources / "pages", bundle, number, entry)
              for number, entry in enumerate(entries, 1)]
    document = json.dumps({"popups": popups}, indent=1)
    (bundle / "ZOVKPopupLocal.config").write_text(document + "\n", encoding="utf-8")


if __name__ == "__main__":
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    main(*sys.argv[1:])
