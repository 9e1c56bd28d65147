#!/usr/bin/env python3
"""Makes the resource folder of the hosts: the library's own bundle, with a document that lists one
page, and that page under the name that the library looks for.

usage: make_resources.py LIBRARY_BUNDLE PAGE RESOURCES"""
import hashlib
import json
import pathlib
import shutil
import sys


def main(library_bundle, page_file, resources):
    bundle = pathlib.Path(resources) / "ZOVKPopupResource.bundle"
    shutil.rmtree(bundle, ignore_errors=True)
    shutil.copytree(library_bundle, bundle)
    page = pathlib.Path(page_file).read_bytes()
    popup = {"pop_id": 1, "scene": "hello", "scene_type": 1, "pop_type": 1, "content_type": 1,
             "pop_freq": 2, "publish_time": 1, "sig": hashlib.md5(page).hexdigest()}
    name = "ZOVKPopup_{scene_type}_{pop_type}_{content_type}_{sig}.html".format(**popup)
    (bundle / name).write_bytes(page)
    document = json.dumps({"popups": [popup]}, indent=1) + "\n"
    (bundle / "ZOVKPopupLocal.config").write_text(document, encoding="utf-8")


if __name__ == "__main__":
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    main(*sys.argv[1:])
