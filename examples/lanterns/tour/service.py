"""The development popup service, on a folder of the tour's own."""
import hashlib
import json
import pathlib
import shutil
import sys

from program import Program

HERE = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(HERE / "resources"))
from make_bundle import whole_page  # noqa: E402 (it lies beside the pages)

PAGE_FILE = 1


def fill_folder(folder):
    """Copies what the service offers: the documents of service/, and the pages that they name."""
    shutil.copytree(HERE / "service", folder, dirs_exist_ok=True)
    (folder / "pages").mkdir(exist_ok=True)
    for name in ("news", "gift", "policy", "invitation"):
        page = whole_page(HERE / "resources" / "pages", name)
        (folder / "pages" / f"{name}.html").write_bytes(page.encode())


class Service:
    def __init__(self, program, folder, log):
        self.folder = folder
        fill_folder(folder)
        self.program = Program("service", [program, str(folder)], log)
        self.address = self.program.wait_line("listening on ").split()[-1]

    def change(self, document, change):
        """Changes a document of the folder; the service reads it anew at each request."""
        path = self.folder / document
        content = json.loads(path.read_text(encoding="utf-8"))
        change(content)
        path.write_text(json.dumps(content), encoding="utf-8")

    def page_files(self):
        """Returns the names under which a game keeps the service's page files."""
        popups = json.loads((self.folder / "config.json").read_text(encoding="utf-8"))["popups"]
        for popup in popups:
            if "page" in popup:
                page = (self.folder / "pages" / popup["page"]).read_bytes()
                yield "ZOVKPopup_{scene_type}_{pop_type}_{kind}_{digest}.html".format(
                    **popup, kind=PAGE_FILE, digest=hashlib.md5(page).hexdigest())

    def position(self):
        """Returns the next report's position."""
        return self.program.count()

    def next_report(self, position):
        """Returns the first report from that position on."""
        return json.loads(self.program.wait_line("{", position))

    def close(self):
        self.program.close()
