"""The tour with the popup service: what it changes, asks and hears, on three days."""
from player import record
from screen import wait_until

NEXT_POLICY = 1796000000  # published after the one in config.json


def wait_for_pages(service, data):
    """Waits until the game has stored all page files that the service offers."""
    cache = data / "Library" / "Caches" / "ZOVKPopup"
    wait_until("the downloaded pages",
               lambda: all((cache / name).is_file() for name in service.page_files()))


def first_day(player, service, data):
    wait_for_pages(service, data)
    number = player.ask("Welcome: the service's newer page, downloaded, in place of the shipped one",
                        "1", pointer=True)
    player.press("news")
    player.expect(number, 0, record("skip", "seen"))

    number = player.ask("A gift, accepted: the service gets a report", "8")
    before = service.position()
    player.press("gift", shot=False)
    player.expect(number, 1, record("commit", "three-lanterns"))
    report = service.next_report(before)
    player.album.check((report["name"], report["game_id"], report["body"]["gopenid"], report["result"]),
                       ("gift", "lanterns", "guest", {"action": "commit", "msg": "three-lanterns"}))

    number = player.ask("The policy, declined", "4")
    player.press_policy(agree=False)
    player.expect(number, 2, record("cancel"))
    number = player.ask("So it comes again; agreed to", "4")
    player.press_policy(agree=True)
    player.expect(number, 0, record("skip"))
    number = player.ask("Now it stays away", "4")
    player.expect(number, -1, "")

    number = player.ask("An invitation that the service does not want shown", "0")
    player.expect(number, 0, "reatin complete")
    service.change("checks.json", lambda checks: checks.update(
        invitation={"need_popup": 1, "extra": {"boats": 3, "guest": "Ayla"}}))
    number = player.ask("The invitation, wanted now, with the service's own parameters", "0")
    player.press("invitation")
    player.expect(number, 0, record("skip", "lake-3-Ayla"))


def second_day(player, service, data):
    wait_for_pages(service, data)
    number = player.ask("A newer policy was published: it comes again", "4")
    player.press_policy(agree=True)
    player.expect(number, 0, record("skip"))


def publish(service):
    """Publishes the second day's changes: words on a page, and a policy. The document comes last,
    as with every service."""
    page = service.folder / "pages" / "news.html"
    page.write_text(page.read_text(encoding="utf-8").replace("This morning", "Since yesterday"),
                    encoding="utf-8")

    def renew(document):
        for popup in document["popups"]:
            if popup["scene"] == "ZOVKPolicy":
                popup["publish_time"] = NEXT_POLICY
    service.change("config.json", renew)


def third_day(player):
    number = player.ask("The service is down: yesterday's page is shown all the same", "1")
    player.press("news", shot=False)
    player.expect(number, 0, record("skip", "seen"))
    number = player.ask("The policy that was agreed to yesterday stays away", "4")
    player.expect(number, -1, "")
