"""A browser without a window, driven over WebDriver's HTTP protocol."""

import contextlib
import json
import re
import subprocess
import tempfile
import urllib.error
import urllib.request

SWITCHES = ["headless", "no-sandbox", "disable-gpu", "disable-quic", "no-first-run",
            "disable-background-networking", "disable-component-update", "disable-sync",
            "disable-dev-shm-usage"]
DIRECTLY = urllib.request.build_opener(urllib.request.ProxyHandler({}))  # by no proxy
ELEMENT = "element-6066-11e4-a52e-4f735466cecf"


class Browser:
    def __init__(self, base):
        self.base = base
        self.session = ""

    def call(self, method, path, **arguments):
        data = json.dumps(arguments).encode() if method == "POST" else None
        request = urllib.request.Request(f"{self.base}{self.session}{path}", data, method=method,
                                         headers={"Content-Type": "application/json"})
        try:
            with DIRECTLY.open(request, timeout=120) as answer:
                return json.load(answer)["value"]
        except urllib.error.HTTPError as error:
            raise RuntimeError(json.load(error)["value"]["message"]) from None

    def start(self, binary, folder):
        options = {"binary": binary, "args": [*SWITCHES, f"user-data-dir={folder}"]}
        wanted = {"goog:chromeOptions": options, "goog:loggingPrefs": {"browser": "ALL"}}
        answer = self.call("POST", "/session", capabilities={"alwaysMatch": wanted})
        self.session = f"/session/{answer['sessionId']}"

    def devtools(self, command, **arguments):
        return self.call("POST", "/goog/cdp/execute", cmd=command, params=arguments)

    def open(self, path):
        self.call("POST", "/url", url=path.resolve().as_uri())

    def run(self, script, *arguments):
        return self.call("POST", "/execute/sync", script=script, args=list(arguments))

    def size(self, width, height=900):
        self.devtools("Emulation.setDeviceMetricsOverride", width=width, height=height,
                      deviceScaleFactor=1, mobile=False)

    def media(self, kind="screen", scheme="light"):
        self.devtools("Emulation.setEmulatedMedia", media=kind,
                      features=[{"name": "prefers-color-scheme", "value": scheme}])

    def type(self, selector, text):
        element = self.call("POST", "/element", using="css selector", value=selector)[ELEMENT]
        self.call("POST", f"/element/{element}/value", text=text)

    def log(self):
        """What came since the last time."""
        return [f"{entry['level']}: {entry['message']}"
                for entry in self.call("POST", "/se/log", type="browser")]


def port_of(driver):
    for line in driver.stdout:
        if found := re.search(r"successfully on port (\d+)", line):
            return found[1]
    raise RuntimeError("the driver told no port")


@contextlib.contextmanager
def browser(driver_binary, binary):
    with tempfile.TemporaryDirectory(ignore_cleanup_errors=True) as folder, \
            subprocess.Popen([driver_binary, "--port=0"], stdout=subprocess.PIPE, text=True,
                             stderr=subprocess.DEVNULL) as driver:
        try:
            one = Browser(f"http://127.0.0.1:{port_of(driver)}")
            one.start(binary, folder)
            try:
                yield one
            finally:
                one.call("DELETE", "")
        finally:
            driver.terminate()
