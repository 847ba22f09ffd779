#!/usr/bin/env python3
"""screen.py HOST: how soon a viewer sees what a host of the view changes, and how many bytes that takes: at sockets, and in a headless
Chromium, beside the same with GTK's Broadway. Prints the table of docs/performance.md. ./bench --screen builds the host and runs this."""
import os
import random
import socket
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "tests/browser"))
from devtools import Browser  # noqa: E402

ROUNDS = 200
KEYS = 60
DEADLINE = 30


class Host:
    """tests/support/view/HostProgram.cpp, which shows the time at each line of its input."""

    def __init__(self, program):
        self.home = tempfile.TemporaryDirectory(prefix="kelgen-screen-")
        environment = {**os.environ, "KELGEN_HOME": self.home.name, "KELGEN_VIEW": "0"}
        self.process = subprocess.Popen([program], env=environment, stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        self.url = self.line("view: ").removeprefix("view: ")
        self.port, self.key = self.url.removeprefix("http://127.0.0.1:").split("/?key=")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.stdin.close()
        if self.process.wait(timeout=DEADLINE):
            raise AssertionError("the host fails")
        self.home.cleanup()

    def line(self, beginning=""):
        for line in self.process.stdout:
            if line.startswith(beginning):
                return line.strip()
        raise AssertionError(f"the host never says {beginning!r}")

    def show_clock(self):
        """Has it show the time in microseconds, which it returns."""
        self.process.stdin.write("\n")
        self.process.stdin.flush()
        return self.line()

    def headers(self):
        return (f"Host: 127.0.0.1:{self.port}\r\nOrigin: http://127.0.0.1:{self.port}\r\n"
                f"Cookie: kelgen-view-{self.port}={self.key}\r\n")

    def view_time(self):
        """The seconds of processor time that its view's threads have taken: all but the first, which serves the windows."""
        total = 0
        for thread in Path(f"/proc/{self.process.pid}/task").iterdir():
            if thread.name != str(self.process.pid):
                total += int((thread / "schedstat").read_text().split()[0])
        return total / 1e9


class Viewer:
    """Reads the stream of a page from a socket."""

    def __init__(self, host):
        self.socket = socket.create_connection(("127.0.0.1", int(host.port)), timeout=DEADLINE)
        self.socket.sendall(f"GET /events HTTP/1.1\r\n{host.headers()}\r\n".encode())

    def read_until(self, text):
        """The number of bytes up to those that bring the text."""
        seen = b""
        while text.encode() not in seen:
            more = self.socket.recv(1 << 16)
            if not more:
                raise AssertionError("the stream ends")
            seen += more
        return len(seen)


def now():
    return time.time_ns() / 1000


def pause():
    time.sleep(random.uniform(0.02, 0.06))


def row(name, times, size="", note=""):
    """Times in milliseconds: the middle, nineteen of twenty, the worst."""
    times = sorted(times)
    figures = [statistics.median(times), times[len(times) * 95 // 100], times[-1]]
    print(f"| {name} | " + " | ".join(f"{figure:.1f} ms" for figure in figures) + f" | {size} |{note}", flush=True)


def kilobytes(sizes):
    return f"{statistics.median(sizes) / 1000:.1f} KB"


def measure_sockets(program):
    with Host(program) as host:
        reader = Viewer(host)
        reader.read_until("A host")
        for name, readers in (("text to socket, 1 viewer", 0), ("text to socket, 10 viewers of which one never reads", 8)):
            others = [Viewer(host) for _ in range(readers)] + [reader]
            asleep = Viewer(host) if readers else None
            for other in others[:-1]:
                other.read_until("A host")
            times, sizes = [], []
            for _ in range(ROUNDS):
                pause()
                shown = host.show_clock()
                for other in others:
                    size = other.read_until(shown)
                times.append((now() - int(shown)) / 1000)
                sizes.append(size)
            row(name, times, kilobytes(sizes))
            del asleep


def measure_scrolling(program):
    with Host(program) as host:
        reader = Viewer(host)
        reader.read_until("A host")
        user = socket.create_connection(("127.0.0.1", int(host.port)), timeout=DEADLINE)
        times, sizes = [], []
        lines = "move 300 350\nwheel -1"
        for step in range(ROUNDS):
            pause()
            begin = now()
            user.sendall(f"POST /input HTTP/1.1\r\n{host.headers()}Content-Length: {len(lines)}\r\n\r\n{lines}".encode())
            sizes.append(reader.read_until(f">file {3 * step + 14}<"))
            times.append((now() - begin) / 1000)
            user.recv(4096)
        row("wheel to socket, 100 000 items", times, kilobytes(sizes))


def measure_idle(program):
    with Host(program) as host:
        host.show_clock()
        begin = host.view_time()
        for _ in range(1000):
            host.show_clock()
        own = 1000 * (host.view_time() - begin)
        time.sleep(2)
        begin = host.view_time()
        time.sleep(10)
        nobody = 1000 * (host.view_time() - begin)
        reader = Viewer(host)
        reader.read_until("A host")
        time.sleep(1)
        begin = host.view_time()
        time.sleep(10)
        looks = 1000 * (host.view_time() - begin)
        reader.socket.close()
    print(f"processor time of the threads but the host's first: 1000 changes unseen {own:.1f} ms (reading its input), ten seconds unseen "
          f"{nobody:.1f} ms, ten seconds seen without a change {looks:.1f} ms", flush=True)


OBSERVE = """(() => {
  window.seen = [];
  const wait = () => {
    const label = [...document.querySelectorAll("text")].find(e => /^[0-9]{16}$/.test(e.textContent));
    if (!label || label.textContent === window.last) return;
    window.last = label.textContent;
    const now = () => (performance.timeOrigin + performance.now()) * 1000;
    const times = [now() - Number(window.last)];
    window.seen.push(times);
    // The task after the frame's own ones comes when it is drawn.
    const shown = Number(window.last);
    requestAnimationFrame(() => setTimeout(() => times.push(now() - shown)));
  };
  new MutationObserver(wait).observe(document.documentElement, { subtree: true, childList: true, characterData: true });
})()"""


def measure_browser(program):
    with Host(program) as host, Browser() as browser:
        browser.open(host.url)
        browser.wait("the page", "!!document.querySelector('[role=grid]')")
        browser.evaluate(OBSERVE)
        for _ in range(ROUNDS):
            pause()
            host.show_clock()
        browser.wait("all", f"window.seen.length >= {ROUNDS * 9 // 10} && window.seen.every(times => times.length === 2)")
        # More may come: their frames are yet to be drawn.
        seen = browser.evaluate("window.seen.filter(times => times.length === 2)")
        row("text to the page's elements, Chromium", [first / 1000 for first, _ in seen])
        row("text to the frame that shows it, Chromium", [second / 1000 for _, second in seen])


# Both pages are asked the same: from the key's event in the page to the first bytes that the page hears afterwards.
LISTEN = """
window.heard = []; window.pressed = 0;
addEventListener("keydown", () => { pressed = performance.now(); }, true);
for (const name of ["WebSocket", "EventSource"]) {
  const Plain = window[name];
  window[name] = class extends Plain {
    constructor(...all) {
      super(...all);
      this.addEventListener("message", e => heard.push([performance.now() - pressed, e.data.byteLength ?? e.data.size ?? e.data.length]));
    }
  };
}"""


def press_keys(browser, name):
    times, sizes = [], []
    for number in range(KEYS):
        pause()
        browser.evaluate("heard.length = 0")
        # In turn: a field that is full of one letter looks the same with one more.
        browser.key(*(("Backspace", "Backspace", 8) if number % 2 else ("a", "KeyA", 65, "a")))
        time.sleep(0.15)
        heard = browser.evaluate("heard")
        if heard:
            times.append(heard[0][0])
            sizes.append(sum(size for _, size in heard))
    if len(times) < KEYS * 9 // 10:
        raise AssertionError(f"{name}: only {len(times)} of {KEYS} keys are answered")
    row(name, times, kilobytes(sizes))


def measure_keys(program):
    with Host(program) as host, Browser() as browser:
        browser.call("Page.addScriptToEvaluateOnNewDocument", source=LISTEN)
        browser.open(host.url)
        browser.click("textbox", "Name")
        time.sleep(0.5)
        press_keys(browser, "key to the page's bytes, kelgen")


def measure_broadway():
    port = "8095"
    with tempfile.TemporaryDirectory(prefix="kelgen-broadway-") as home:
        environment = {**os.environ, "HOME": home, "XDG_RUNTIME_DIR": home, "XDG_CACHE_HOME": home, "GDK_BACKEND": "broadway",
                       "BROADWAY_DISPLAY": ":5", "NO_AT_BRIDGE": "1"}
        quiet = {"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL}
        server = subprocess.Popen(["broadwayd", "--address", "127.0.0.1", "--port", port, ":5"], env=environment, **quiet)
        time.sleep(1)
        demo = subprocess.Popen(["gtk3-demo", "--run=entry_completion"], env=environment, **quiet)
        try:
            time.sleep(2)
            with Browser() as browser:
                browser.call("Page.addScriptToEvaluateOnNewDocument", source=LISTEN)
                browser.open(f"http://127.0.0.1:{port}/")
                time.sleep(3)
                press_keys(browser, "key to the page's bytes, gtk3-demo under broadwayd")
        finally:
            demo.kill()
            server.kill()
            demo.wait()
            server.wait()


def main():
    program = Path(sys.argv[1]).resolve()
    print("| from a change to a viewer | median | 95 of 100 | worst | sent |\n|---|---|---|---|---|")
    measure_sockets(program)
    measure_scrolling(program)
    measure_browser(program)
    measure_keys(program)
    measure_broadway()
    measure_idle(program)


if __name__ == "__main__":
    main()
