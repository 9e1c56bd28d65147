"""What the example game's service offers, published to a deployment: for the game, it is a service
as any other."""
import hashlib
import json
import os
import pathlib
import shutil
import subprocess
import sys

from deployment import DEPLOY, Deployment, wait_until

LANTERNS = DEPLOY.parent / "examples" / "lanterns"
sys.path.insert(0, str(LANTERNS / "tour"))

from service import fill_folder  # noqa: E402 (it lies with the game)

BUILD = pathlib.Path(os.environ.get("ZOVKPOPUP_BUILD", "build"))


class PublishedService:
    """A deployment of its own. `folder` holds what the studio edits before it publishes."""

    def __init__(self, folder):
        self.folder = folder
        fill_folder(folder)
        self.web = folder / "web"
        self.web.mkdir()
        shutil.move(folder / "pages" / "invitation.html", self.web)
        self.deployment = Deployment("--games", folder / "games.json")
        self.address = f"http://127.0.0.1:{self.deployment.http_port}"
        self.popups = []
        self.publish()

    def close(self):
        self.deployment.close()

    def completed(self, popup):
        popup = json.loads(json.dumps(popup).replace("{{base}}", self.address))
        if page := popup.pop("page", None):
            content = (self.folder / "pages" / page).read_bytes()
            return {**popup, "content_type": 1, "uri": f"{self.address}/pages/{page}",
                    "sig": hashlib.md5(content).hexdigest()}
        return {**popup, "sig": hashlib.md5(popup["uri"].encode()).hexdigest()}

    def publish(self):
        popups = json.loads((self.folder / "config.json").read_text(encoding="utf-8"))["popups"]
        self.popups = [self.completed(popup) for popup in popups]
        document = self.folder / "popups.json"
        document.write_text(json.dumps({"code": 0, "popups": self.popups}), encoding="utf-8")
        subprocess.run([BUILD / "bin" / "zovkpopup", "publish", document, "--to",
                        self.deployment.places.site, "--pages", self.folder / "pages",
                        "--lasting", self.web], check=True, stdout=subprocess.DEVNULL)

    def change(self, document, change):
        """Changes a document of the folder, and puts it where players meet it."""
        path = self.folder / document
        content = json.loads(path.read_text(encoding="utf-8"))
        change(content)
        path.write_text(json.dumps(content), encoding="utf-8")
        if document == "config.json":
            self.publish()
        else:
            self.tell_the_rule(content)

    def tell_the_rule(self, checks):
        """Gives the example rule what the development service reads from checks.json."""
        for popup in self.popups:
            check = checks.get(popup.get("check_url", "").rpartition("/")[2], 0)
            if isinstance(check, dict) and check.get("need_popup"):
                name = f"popup:{popup['pop_id']}"
                self.deployment.stream().set(f"{name}:extra", json.dumps(check.get("extra", {})))
                self.deployment.stream().sadd(name, "guest")

    def page_files(self):
        """Returns the names under which a game keeps the pages."""
        return ["ZOVKPopup_{scene_type}_{pop_type}_1_{sig}.html".format(**popup)
                for popup in self.popups if popup["content_type"] == 1]

    def position(self):
        """Returns the next report's position in the database."""
        return self.deployment.rows("SELECT count(*) FROM reports")[0][0]

    def next_report(self, position):
        """Returns the first report from that position on, in the form of the development
        service."""
        wait_until(lambda: self.position() > position, "the report is stored")
        path, game, player, action, message = self.deployment.rows(
            "SELECT path, game_id, player, action, message FROM reports"
            " ORDER BY received, stream_id OFFSET %s LIMIT 1", position)[0]
        return {"name": path.rpartition("/")[2], "game_id": game, "body": {"gopenid": player},
                "result": {"action": action, "msg": message}}
