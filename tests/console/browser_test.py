#!/usr/bin/env python3
"""The console as a person uses it: in a browser, by mouse and keyboard."""
import csv
import json
import pathlib
import time
import unittest

from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.keys import Keys
from selenium.webdriver.support.ui import Select

from browser import Browser, axe_script
from console import Service, entry
from player import answer, refused


STARTERS = pathlib.Path(__file__).parents[2] / "tools/zovkpopup/starter"


class InTheBrowser(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.browser = Browser()

    @classmethod
    def tearDownClass(cls):
        cls.browser.close()

    def setUp(self):
        self.browser.phone(False)
        self.browser.dark(False)
        self.browser.command("Emulation.setTimezoneOverride", timezoneId="UTC")
        self.browser.complaints()

    def tearDown(self):
        complaints = self.browser.complaints()
        # Before the service goes, as the page would complain of that.
        self.browser.driver.get("about:blank")
        self.assertEqual(complaints, [])

    def start(self, *popups):
        self.service = Service(popups=popups)
        self.addCleanup(self.service.stop)
        self.browser.open(self.service.address)
        self.browser.find("main h1")

    def open(self, scene):
        def chosen():
            row = next((r for r in self.browser.all(".popups .row")
                        if r.find_element("css selector", ".title").text.startswith(scene)), None)
            return row is not None and self.browser.clicked(row)
        self.browser.wait(chosen, scene)
        self.browser.wait_text(".editor h1", scene)

    def some(self):
        now = int(time.time())
        self.start(entry(1, "welcome", priority=9), entry(2, "shop", valid_time=now + 300_000),
                   entry(3, "fair", expire_time=now - 60),
                   entry(4, "gift", pop_freq=3, valid_platform="2,9"))

    def test_the_token_opens_the_console_and_is_taken_out_of_sight(self):
        self.some()
        self.assertEqual(self.browser.driver.current_url, self.service.console + "#popups")
        self.browser.driver.refresh()
        self.browser.find(".popups li")
        self.browser.command("Storage.clearDataForOrigin", origin=self.service.console.rstrip("/"),
                             storageTypes="all")
        self.browser.script("sessionStorage.clear()")
        self.browser.open(self.service.console)
        self.browser.wait_text("main", "This is the wrong address")

    def test_every_popup_is_shown_with_its_state_and_what_it_is(self):
        self.some()
        rows = self.browser.wait(
            lambda: {row.text.split(" ")[0]: row.text for row in self.browser.all(".popups .row")})
        states = {"welcome": "Live", "shop": "Scheduled", "fair": "Ended", "gift": "Broken"}
        for scene, state in states.items():
            self.assertIn(state, rows[scene])
        self.assertIn("channel 2,9", rows["gift"])
        self.assertIn("a conditional popup (pop_freq 3) is never shown without it", rows["gift"])
        self.assertIn("priority 9", rows["welcome"])
        self.browser.picture("popups")

    def test_the_preview_follows_what_is_typed_and_shows_what_the_page_posts(self):
        self.some()
        self.open("welcome")
        self.browser.script(
            "const t = document.querySelector('[name=page_text]');"
            "t.value = t.value.replace('Welcome to the lake', 'Typed just now');"
            "t.dispatchEvent(new Event('input', {bubbles: true}));")

        def typed():
            self.browser.driver.switch_to.default_content()
            self.browser.driver.switch_to.frame(self.browser.find(".frame iframe"))
            return self.browser.all("h1") and self.browser.all("h1")[0].text == "Typed just now"
        self.browser.wait(typed, "the preview")
        self.assertEqual(self.browser.script("return document.compatMode"), "CSS1Compat")
        self.assertEqual(self.browser.script("return window.origin"), "null")
        self.browser.click("button")
        self.browser.driver.switch_to.default_content()
        self.browser.wait_text(".answer", '{"action":"commit","msg":"lantern"}')
        self.browser.picture("preview")

    def test_a_page_in_the_preview_reaches_neither_the_console_nor_the_network(self):
        self.some()
        self.open("welcome")
        hostile = """<!doctype html><title>x</title><p id=told></p><script>
            const told = [];
            function tell(text) {
              told.push(text);
              if (told.length === 4) document.getElementById('told').textContent = told.sort().join();
            }
            try { tell(parent.document.title); } catch (e) { tell('no parent'); }
            try { tell(localStorage.length); } catch (e) { tell('no storage'); }
            document.addEventListener('securitypolicyviolation', (e) => tell(e.effectiveDirective));
            fetch('%s/console/api/popups').then(() => tell('network'), () => tell('no network'));
            </script>""" % self.service.base
        self.browser.script(
            "const t = document.querySelector('[name=page_text]'); t.value = arguments[0];"
            "t.dispatchEvent(new Event('input', {bubbles: true}));", hostile)

        def told():
            self.browser.driver.switch_to.default_content()
            self.browser.driver.switch_to.frame(self.browser.find(".frame iframe"))
            return self.browser.all("#told") and self.browser.all("#told")[0].text
        self.assertEqual(self.browser.wait(told, "the page"), 
                         "connect-src,no network,no parent,no storage")
        self.browser.driver.switch_to.default_content()
        self.browser.complaints()  # of what the page was kept from

    def test_dates_are_typed_in_the_time_zone_and_kept_to_the_second(self):
        self.browser.command("Emulation.setTimezoneOverride", timezoneId="America/New_York")
        self.start(entry(1, "welcome", valid_time=1767225601, expire_time=1798761600))
        self.open("welcome")
        field = self.browser.find("[name=valid_time]")
        self.assertEqual(field.get_attribute("value"), "2025-12-31T19:00")
        self.browser.script(
            "const f = document.querySelector('[name=expire_time]'); f.value = '2026-07-01T12:30';"
            "f.dispatchEvent(new Event('input', {bubbles: true}));")
        self.browser.press("Save")
        self.browser.wait(lambda: self.service.popup(1)["version"] == 2)
        kept = self.service.popup(1)["entry"]
        self.assertEqual(kept["expire_time"], 1782923400)  # 16:30 UTC, in daylight saving time
        self.assertEqual(kept["valid_time"], 1767225601)
        self.assertIn("America/New_York", self.browser.text(".list"))
        self.browser.script("const z = document.getElementById('zone'); z.value = 'utc';"
                            "z.dispatchEvent(new Event('change'))")
        self.browser.wait(lambda: self.browser.attribute("[name=valid_time]", "value")
                          == "2026-01-01T00:00")
        self.browser.script("localStorage.clear()")

    def test_a_row_is_dragged_for_priority(self):
        self.start(entry(1, "first", priority=3), entry(2, "second", priority=2),
                   entry(3, "third", priority=1))
        handles = self.browser.all(".handle")
        ActionChains(self.browser.driver).click_and_hold(handles[2]).move_to_element(
            handles[1]).move_to_element_with_offset(handles[0], 0, -20).release().perform()
        self.browser.wait(lambda: self.service.popup(3)["entry"]["priority"] == 4)
        self.browser.wait_text(".popups li:first-child", "third")
        self.browser.wait_text(".waiting", "1 with unpublished changes")
        self.browser.press("Publish them")
        self.browser.wait(lambda: self.service.config()["popups"][2]["priority"] == 4)

    def test_keys_alone_move_open_change_and_publish(self):
        self.start(entry(1, "first", priority=3), entry(2, "second", priority=2))
        keys = lambda *sent: ActionChains(self.browser.driver).send_keys(*sent).perform()
        focused = self.browser.focused
        keys(Keys.TAB)
        self.assertEqual(focused()["text"].strip(), "Skip to the content")
        keys(Keys.ENTER)
        for _ in range(30):
            keys(Keys.TAB)
            if focused()["label"] == "Lower priority: popup 1":
                break
        keys(Keys.ENTER)
        self.browser.wait(lambda: [p["entry"]["pop_id"] for p in
                                   self.service.get("popups")["popups"]] == [2, 1])
        # The last row cannot go lower, so the keyboard goes to the row itself.
        def is_on_row():
            now = focused()
            return "first" in now["text"] and now["kind"] == "row"
        self.browser.wait(is_on_row)
        keys(Keys.ENTER)
        def is_on_title():
            now = focused()
            return "first" in now["text"] and now["tag"] == "H1"
        self.browser.wait(is_on_title)
        for _ in range(30):
            keys(Keys.TAB)
            if focused()["name"] == "scene":
                break
        keys("-later")
        self.browser.do(lambda: self.browser.find("[name=save]").send_keys(Keys.SPACE))
        self.browser.wait(lambda: self.service.popup(1)["entry"]["scene"].endswith("later"))
        self.browser.wait(lambda: focused()["name"] == "save")
        keys(Keys.TAB, Keys.SPACE)
        self.browser.wait(lambda: self.service.config()["popups"][0]["scene"].endswith("later"))

    def test_what_is_pressed_while_the_console_waits_for_the_service_is_done_afterwards(self):
        self.start(entry(1, "first"))
        self.open("first")
        self.browser.type("[name=scene]", "later")
        self.browser.slow_network(200)
        self.addCleanup(self.browser.slow_network, 0)
        self.browser.script("document.querySelector('[name=save]').click();"
                            "document.querySelector('[name=publish]').click();")
        self.browser.wait(lambda: self.service.config()["popups"][0]["scene"] == "later")

    def test_popups_are_made_duplicated_paused_ended_and_rolled_back(self):
        self.some()
        self.browser.type("#who", "Ada")
        self.browser.press("New popup")
        self.browser.wait_text(".editor h1", "scene-5")
        self.browser.type("[name=scene]", "harbour")
        self.browser.press("Publish")
        self.browser.wait_text(".problems", "It cannot be published")  # gift is live and broken
        self.open("gift")
        self.browser.press("Pause")
        self.browser.wait_text(".chosen", "Paused")
        self.open("harbour")
        self.browser.press("Publish")
        self.browser.wait_text(".chosen", "Live")
        self.browser.press("Duplicate")
        self.browser.wait_text(".editor h1", "#6")
        self.open("welcome")
        self.browser.press("End now")
        self.browser.wait_text(".chosen", "Ended")
        self.assertEqual([p["pop_id"] for p in self.service.config()["popups"]], [1, 2, 3, 5])
        self.browser.click('[aria-label="Roll back to release 1"]')
        self.browser.wait(lambda: [p["pop_id"] for p in self.service.config()["popups"]] == [1, 2, 3, 4])
        self.browser.picture("rolled-back")
        self.browser.section("history")
        self.browser.wait_text("tbody tr:first-child", "rolled back")
        self.assertIn("Ada", self.browser.text("tbody tr:first-child"))
        self.browser.picture("history")
        self.assertTrue(all("409" in line for line in self.browser.complaints()))

    def test_a_new_popup_starts_from_each_of_the_five_pages_of_the_tool(self):
        self.start(entry(1, "welcome"))
        choice = "[name=starter]"
        names = self.browser.wait(lambda: [option.get_attribute("value") for option in
                                           self.browser.all(choice + " option")])
        self.assertEqual(names, ["announcement", "event", "reward", "survey", "policy"])
        for number, name in enumerate(names, start=2):
            self.browser.do(lambda: Select(self.browser.find(choice)).select_by_value(name))
            self.browser.press("New popup")
            scene = "ZOVKPolicy" if name == "policy" else f"scene-{number}"
            self.browser.wait_text(".editor h1", scene)
            page = self.browser.wait(
                lambda: self.browser.attribute("[name=page_text]", "value"), name)
            self.assertEqual(page.strip(), (STARTERS / f"{name}.html").read_text().strip())
            made = next(p for p in self.service.get("popups")["popups"]
                        if p["entry"]["pop_id"] == number)
            self.assertEqual((made["entry"]["scene"], made["entry"]["scene_type"], made["state"]),
                             (scene, 0 if name == "policy" else 1, "draft"))
            self.assertEqual(made["problems"], [])
            self.assertEqual(self.browser.attribute(choice, "value"), name)
            self.browser.picture("new-" + name)

    def test_what_is_not_valid_is_said_at_its_field(self):
        self.start(entry(1, "welcome"))
        self.open("welcome")
        self.browser.script("const f = document.querySelector('[name=pop_freq]'); f.value = 3;"
                            "f.dispatchEvent(new Event('input', {bubbles: true}))")
        self.browser.press("Publish")
        self.browser.wait_text(".problems", "It cannot be published")
        self.assertIn("a conditional popup (pop_freq 3) is never shown without it",
                      self.browser.text(".problems"))
        self.assertEqual(self.browser.attribute("[name=check_url]", "aria-invalid"), "true")
        self.browser.picture("not-valid")
        self.assertTrue(any("409" in line for line in self.browser.complaints()))

    def test_why_nothing_is_seen(self):
        self.some()
        self.browser.section("why")
        self.browser.type("[name=scene]", "gift")
        self.browser.press("Explain")
        self.browser.wait_text(".result", "the player's channel is 1")
        self.browser.wait_text(".result", "ther channel")
        self.browser.picture("why")

    def test_answers_come_in_are_plotted_filtered_and_exported(self):
        self.some()
        self.browser.section("answers")
        self.browser.wait_text(".head .chip", "Live")
        for number, text in enumerate(["sword", "sword", "shield"]):
            answer(self.service, 1 + number // 2, "welcome", text)
        self.browser.wait_text(".count", "3 answers")
        self.assertEqual(len(self.browser.all(".canvas canvas")), 3)
        drawn = self.browser.script(
            "const c = document.querySelector('canvas'); const d = c.getContext('2d')"
            ".getImageData(0, 0, c.width, c.height).data; let n = 0;"
            "for (let i = 0; i < d.length; i += 4) if (d[i] > 200 && d[i + 2] < 60 && d[i + 3] > 200) n++;"
            "return n")
        self.assertGreater(drawn, 500)
        self.browser.picture("answers")
        self.browser.type("[name=text]", "SHIELD")
        self.browser.wait_text(".count", "1 answer")
        self.browser.press("CSV")
        self.browser.press("JSON")
        files = lambda: sorted(f.name for f in self.browser.downloads.glob("answers*[nv]"))
        self.browser.wait(lambda: files() == ["answers.csv", "answers.json"], "the downloads")
        text = (self.browser.downloads / "answers.csv").read_text()
        self.assertEqual([row["msg"] for row in csv.DictReader(text.splitlines())], ["shield"])
        self.assertEqual(len(json.loads((self.browser.downloads / "answers.json").read_text())), 1)

    def test_without_the_plotting_library_tables_say_the_same(self):
        self.some()
        answer(self.service, 1, "welcome", "sword")
        self.browser.command("Network.enable")
        self.browser.command("Network.setBlockedURLs", urls=["*/console/plots.js"])
        self.addCleanup(self.browser.command, "Network.setBlockedURLs", urls=[])
        self.browser.open(self.service.address)
        self.browser.section("answers")
        self.browser.wait_text(".plot table", "sword")
        self.assertIn("libjs-chart.js", self.browser.text(".notice"))
        self.browser.complaints()  # of the one that is missing

    def test_faults_and_conditions_are_switched_and_refusals_shown(self):
        self.some()
        refused(self.service, "/report/shop", '{"pop_id":1}')
        self.browser.section("controls")
        self.browser.press("Switch on")
        self.browser.wait_text(".switches", "/popup/get_info delay 1500")
        self.browser.type("[name=name]", "vip")
        self.browser.press("Add with yes")
        self.browser.click('[aria-label="Condition vip"]')
        self.browser.wait(lambda: json.loads(self.service.read("checks.json")) == {"vip": 0})
        self.browser.find('[aria-label="Condition vip"][aria-checked="false"]')
        self.browser.click(".refusals summary")
        self.browser.wait_text(".refusals pre", '{"pop_id":1}<game key>')
        self.browser.picture("controls")
        self.browser.click('[aria-label="Fault for /popup/get_info"]')
        self.browser.wait(lambda: self.service.get("controls")["faults"] == [])

    def every_section(self):
        self.browser.open(self.service.address)
        self.open("gift")
        yield "popups"
        for name, there in (("answers", ".plot"), ("why", ".result"), ("controls", ".panels"),
                            ("history", "tbody")):
            self.browser.section(name)
            self.browser.find(there)
            yield name

    def test_nothing_is_wider_than_a_small_phone(self):
        self.some()
        answer(self.service, 1, "welcome", "w" * 300)
        refused(self.service, "/report/shop", json.dumps({"long": "x" * 500}))
        self.browser.phone(True)
        for name in self.every_section():
            self.assertLessEqual(self.browser.script("return document.scrollingElement.scrollWidth"),
                                 320, name)
            self.browser.picture("phone-" + name)
        self.browser.section("popups")
        self.browser.press("← All popups")
        self.browser.wait(lambda: self.browser.find(".popups").is_displayed())
        self.browser.picture("phone-list")

    def test_the_checker_of_accessibility_finds_nothing(self):
        axe = axe_script()
        if axe is None:
            self.skipTest("axe-core is not to be had: no npm, or its registry is not reached")
        self.some()
        answer(self.service, 1, "welcome", "sword")
        refused(self.service, "/report/shop", "{}")
        for dark in (False, True):
            self.browser.dark(dark)
            for name in self.every_section():
                self.assertEqual(self.browser.accessibility(axe), [], f"{name}, dark: {dark}")
                if dark:
                    self.browser.picture("dark-" + name)
        self.browser.phone(True)
        for name in self.every_section():
            self.assertEqual(self.browser.accessibility(axe), [], f"{name} on a phone")


if __name__ == "__main__":
    unittest.main()
