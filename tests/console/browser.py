"""A real browser on the console, without a screen of its own."""
import os
import pathlib
import shutil
import subprocess
import tempfile

from selenium import webdriver
from selenium.common.exceptions import StaleElementReferenceException
from selenium.webdriver.chrome.service import Service as Driver
from selenium.webdriver.common.by import By
from selenium.webdriver.support.ui import WebDriverWait

AXE = "4.14.1"
SECONDS = 30


class Browser:
    def __init__(self, size=(1400, 900)):
        options = webdriver.ChromeOptions()
        options.binary_location = shutil.which("chromium")
        self.profile = tempfile.TemporaryDirectory(prefix="zovkpopup-browser-")
        self.downloads = pathlib.Path(self.profile.name) / "downloads"
        arguments = ["--headless=new", "--disable-gpu", "--disable-dev-shm-usage", "--no-first-run",
                     "--disable-background-networking", "--lang=en-US",
                     f"--window-size={size[0]},{size[1]}", f"--user-data-dir={self.profile.name}/data"]
        if os.geteuid() == 0:
            arguments.append("--no-sandbox")  # Chromium's sandbox is not for root
        for argument in arguments:
            options.add_argument(argument)
        options.add_experimental_option("prefs", {"download.default_directory": str(self.downloads)})
        options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
        self.driver = webdriver.Chrome(service=Driver(shutil.which("chromedriver")), options=options)
        self.driver.set_page_load_timeout(SECONDS)
        self.driver.set_script_timeout(SECONDS)

    def close(self):
        self.driver.quit()
        self.profile.cleanup()

    def open(self, address):
        # The same page with another fragment would not be loaded anew.
        self.driver.get("about:blank")
        self.driver.get(address)

    def section(self, name):
        self.find(f'.tabs a[href="#{name}"]').click()
        self.wait(lambda: self.find(f'.tabs a[href="#{name}"]').get_attribute("aria-current"), name)

    def wait(self, condition, what=""):
        def holds(_):
            try:
                return condition()
            except StaleElementReferenceException:
                return False
        return WebDriverWait(self.driver, SECONDS, 0.05).until(holds, what)

    def all(self, selector):
        return self.driver.find_elements(By.CSS_SELECTOR, selector)

    def find(self, selector):
        return self.wait(lambda: self.all(selector)[:1], "there is no " + selector)[0]

    def do(self, action, what=""):
        """Does it, once more when the page makes the element anew meanwhile."""
        self.wait(lambda: (action(), True)[1], what)

    def click(self, selector):
        self.do(lambda: self.find(selector).click(), "no click on " + selector)

    def press(self, text):
        """Clicks on the button with that text, also when the page makes it anew meanwhile."""
        def pressed():
            button = next((b for b in self.all("button") if b.text == text), None)
            return button is not None and self.clicked(button)
        self.wait(pressed, "no click on the button " + text)

    @staticmethod
    def clicked(element):
        element.click()
        return True

    def slow_network(self, milliseconds):
        self.command("Network.enable")
        self.command("Network.emulateNetworkConditions", offline=False, latency=milliseconds,
                     downloadThroughput=-1, uploadThroughput=-1)

    def text(self, selector):
        return self.wait(lambda: [e.text for e in self.all(selector)[:1]], "no " + selector)[0]

    def wait_text(self, selector, text):
        self.wait(lambda: any(text in e.text for e in self.all(selector)), f"{selector} has no {text}")

    def attribute(self, selector, name):
        """An attribute of an element, also when the page makes it anew meanwhile."""
        return self.wait(lambda: [self.find(selector).get_attribute(name)], "no " + selector)[0]

    def type(self, selector, text):
        def typed():
            field = self.find(selector)
            field.clear()
            field.send_keys(text)
        self.do(typed, "no typing into " + selector)

    def focused(self):
        """What the keyboard is on, read at once, as the page may make it anew at any time."""
        return self.script(
            "const {tagName, name, className, innerText, ariaLabel} = document.activeElement;"
            "return {tag: tagName, name, kind: className, text: innerText, label: ariaLabel};")

    def script(self, text, *arguments):
        return self.driver.execute_script(text, *arguments)

    def command(self, name, **members):
        return self.driver.execute_cdp_cmd(name, members)

    def dark(self, on):
        self.command("Emulation.setEmulatedMedia", features=[
            {"name": "prefers-color-scheme", "value": "dark" if on else "light"}])

    def phone(self, on):
        if on:
            self.command("Emulation.setDeviceMetricsOverride", width=320, height=700,
                         deviceScaleFactor=2, mobile=True)
        else:
            self.command("Emulation.clearDeviceMetricsOverride")

    def picture(self, name):
        folder = os.environ.get("ZOVKPOPUP_PICTURES")
        if folder:
            pathlib.Path(folder).mkdir(parents=True, exist_ok=True)
            self.driver.save_screenshot(str(pathlib.Path(folder) / f"{name}.png"))

    def complaints(self):
        """Returns what the browser wrote on its console as errors."""
        return [line["message"] for line in self.driver.get_log("browser")
                if line["level"] == "SEVERE"]

    def accessibility(self, axe):
        """Returns what the accessibility checker finds in the page."""
        self.script(axe)
        found = self.driver.execute_async_script(
            "const done = arguments[0];"
            "axe.run(document, {iframes: false, resultTypes: ['violations']})"
            ".then((r) => done(r.violations), (e) => done([{id: String(e), nodes: []}]));")
        return [f"{v['id']}: {n['html'][:120]} {n.get('failureSummary', '')[:200]}"
                for v in found for n in (v["nodes"] or [{"html": ""}])]


def axe_script():
    """Returns the accessibility checker from its registry; None if that cannot be reached. It is
    kept in the build folder."""
    folder = pathlib.Path(os.environ["ZOVKPOPUP_BROWSER_TOOLS"])
    script = folder / f"axe-{AXE}" / "node_modules/axe-core/axe.min.js"
    if not script.exists() and shutil.which("npm"):
        try:
            subprocess.run(["npm", "install", "--ignore-scripts", "--no-audit", "--no-fund",
                            "--no-save", "--prefix", str(folder / f"axe-{AXE}"), f"axe-core@{AXE}"],
                           stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, timeout=60, check=True)
        except (subprocess.SubprocessError, OSError):
            return None
    return script.read_text() if script.exists() else None
