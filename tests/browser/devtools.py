"""devtools.py: a headless Chromium, driven over its remote debugging pipe: only the standard library."""
import json
import os
import select
import shutil
import subprocess
import tempfile
import time

DEADLINE = 30


class Browser:
    """One page of one browser. Whatever does not happen within DEADLINE seconds is a failure."""

    def __init__(self, dark=False):
        self.folder = tempfile.mkdtemp(prefix="kelgen-browser-")
        to_browser, self.write_end = os.pipe()
        self.read_end, from_browser = os.pipe()

        def take_ends():
            # The browser reads descriptor 3 and writes descriptor 4.
            ends = os.dup(to_browser), os.dup(from_browser)
            os.dup2(ends[0], 3)
            os.dup2(ends[1], 4)

        command = ["chromium", "--headless=new", "--remote-debugging-pipe", "--disable-gpu", "--disable-dev-shm-usage", "--no-first-run",
                   "--disable-background-networking", "--disable-component-update", "--disable-extensions", "--disable-sync",
                   "--force-color-profile=srgb", "--user-data-dir=" + self.folder, "--window-size=1296,900"]
        if os.geteuid() == 0:
            command.append("--no-sandbox")
        if dark:
            command.append("--force-dark-mode")
        self.process = subprocess.Popen(command + ["about:blank"], preexec_fn=take_ends, close_fds=False, stdin=subprocess.DEVNULL,
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, env={**os.environ, "HOME": self.folder})
        os.close(to_browser)
        os.close(from_browser)
        self.bytes = b""
        self.number = 0
        self.session = None
        pages = [target for target in self.call("Target.getTargets")["targetInfos"] if target["type"] == "page"]
        target = pages[0]["targetId"] if pages else self.call("Target.createTarget", url="about:blank")["targetId"]
        self.session = self.call("Target.attachToTarget", targetId=target, flatten=True)["sessionId"]
        self.call("Page.enable")
        self.call("Emulation.setDeviceMetricsOverride", width=1280, height=800, deviceScaleFactor=1, mobile=False)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.kill()
        self.process.wait()
        os.close(self.write_end)
        os.close(self.read_end)
        shutil.rmtree(self.folder, ignore_errors=True)

    def call(self, method, **parameters):
        self.number += 1
        message = {"id": self.number, "method": method, "params": parameters}
        if self.session:
            message["sessionId"] = self.session
        os.write(self.write_end, json.dumps(message).encode() + b"\0")
        end = time.monotonic() + DEADLINE
        while True:
            answer = self.read(end)
            if answer.get("id") == self.number:
                if "error" in answer:
                    raise AssertionError(f"{method}: {answer['error']}")
                return answer["result"]

    def read(self, end):
        while b"\0" not in self.bytes:
            if not select.select([self.read_end], [], [], max(end - time.monotonic(), 0))[0]:
                raise AssertionError("the browser does not answer")
            more = os.read(self.read_end, 1 << 16)
            if not more:
                raise AssertionError("the browser has ended")
            self.bytes += more
        line, self.bytes = self.bytes.split(b"\0", 1)
        return json.loads(line)

    def open(self, url):
        self.call("Page.navigate", url=url)

    def evaluate(self, expression):
        result = self.call("Runtime.evaluate", expression=expression, returnByValue=True, awaitPromise=True)
        if "exceptionDetails" in result:
            raise AssertionError(f"{expression}: {result['exceptionDetails']}")
        return result["result"].get("value")

    def wait(self, what, expression):
        """The value of the expression as soon as it is one that counts."""
        end = time.monotonic() + DEADLINE
        while time.monotonic() < end:
            value = self.evaluate(expression)
            if value:
                return value
            time.sleep(0.02)
        raise AssertionError(f"{what}: {expression} stays {value!r}; the page: " + self.evaluate("document.body.textContent")[:2000])

    def find(self, role, name):
        """The middle of the element that a person would know by that role and name, once it is there."""
        selector = json.dumps(f'[role="{role}"][aria-label="{name}"]')
        x, y = self.wait(f"{role} {name}", f"(() => {{ const e = [...document.querySelectorAll({selector})].pop(); if (!e) return null;"
                         "const r = e.getBoundingClientRect(); return r.width ? [r.x + r.width / 2, r.y + r.height / 2] : null; })()")
        return x, y

    def told(self):
        """What a screen reader is told: (role, name, what else there is) of all elements but plain texts."""
        self.call("Accessibility.enable")
        found = []
        for node in self.call("Accessibility.getFullAXTree")["nodes"]:
            if node.get("ignored"):
                continue
            more = {each["name"]: each["value"].get("value", each["value"].get("relatedNodes")) for each in node.get("properties", [])}
            for part in ("value", "description"):
                if node.get(part, {}).get("value"):
                    more[part] = node[part]["value"]
            found.append((node["role"]["value"], node.get("name", {}).get("value", ""), more))
        return found

    def wait_told(self, role, name, **more):
        """Waits until an element of that role and name is told, with these states."""
        end = time.monotonic() + DEADLINE
        while time.monotonic() < end:
            told = self.told()
            for has_role, has_name, has in told:
                if (has_role, has_name) == (role, name) and all(has.get(key) == value for key, value in more.items()):
                    return
            time.sleep(0.05)
        raise AssertionError(f"no {role} {name!r} {more} is told, but {[each for each in told if each[0] == role]}")

    def click(self, role, name):
        x, y = self.find(role, name)
        for kind in ("mouseMoved", "mousePressed", "mouseReleased"):
            self.call("Input.dispatchMouseEvent", type=kind, x=x, y=y, button="none" if kind == "mouseMoved" else "left", clickCount=1)

    def drag(self, start, end):
        self.call("Input.dispatchMouseEvent", type="mouseMoved", x=start[0], y=start[1])
        self.call("Input.dispatchMouseEvent", type="mousePressed", x=start[0], y=start[1], button="left", clickCount=1)
        self.call("Input.dispatchMouseEvent", type="mouseMoved", x=end[0], y=end[1], button="left")
        self.call("Input.dispatchMouseEvent", type="mouseReleased", x=end[0], y=end[1], button="left", clickCount=1)

    def key(self, key, code, number, text="", modifiers=0):
        common = {"key": key, "code": code, "windowsVirtualKeyCode": number, "modifiers": modifiers}
        self.call("Input.dispatchKeyEvent", type="keyDown" if text else "rawKeyDown", **common, **({"text": text} if text else {}))
        self.call("Input.dispatchKeyEvent", type="keyUp", **common)

    def type(self, text):
        for character in text:
            code = "Key" + character.upper() if character.isalpha() else "Digit" + character if character.isdigit() else ""
            self.key(character, code, ord(character.upper()), character)

    def screenshot(self, path):
        import base64
        data = self.call("Page.captureScreenshot", format="png")["data"]
        with open(path, "wb") as file:
            file.write(base64.b64decode(data))
