#!/usr/bin/env python3
"""monitor.py MONITOR: drives the monitor's page in a headless Chromium as a person would, and sees that the process ends with 0."""
import os
import signal
import subprocess
import sys
import tempfile
import xml.etree.ElementTree
from pathlib import Path

from devtools import Browser, DEADLINE


class Monitor:
    """The program, with its page's address."""

    def __init__(self, program, folder, home):
        environment = {**os.environ, "KELGEN_HOME": str(home), "KELGEN_VIEW": "0", "KELGEN_SNAPSHOT": str(home / "picture.svg")}
        self.process = subprocess.Popen([program, "Z:" + str(folder)], cwd=home, env=environment, stdout=subprocess.PIPE, text=True)
        self.url = self.line("view: ").removeprefix("view: ")

    def line(self, beginning):
        """The next line that begins so."""
        signal.alarm(DEADLINE)
        for line in self.process.stdout:
            if line.startswith(beginning):
                signal.alarm(0)
                return line.strip()
        raise AssertionError(f"the monitor never says {beginning!r}")

    def end(self):
        return self.process.wait(timeout=DEADLINE)


def check(is_right, what):
    if not is_right:
        raise AssertionError(what)


def run(program, scratch):
    folder = scratch / "project"
    home = scratch / "home"
    folder.mkdir()
    home.mkdir()
    (folder / "notes.txt").write_text("first")
    monitor = Monitor(program, folder, home)
    try:
        with Browser() as browser:
            walk(browser, monitor, folder)
        check_picture(home / "picture.svg")
        check(monitor.end() == 0, f"the monitor ends with {monitor.process.returncode}")
    finally:
        monitor.process.kill()


def walk(browser, monitor, folder):
    browser.open(monitor.url)
    browser.wait("the file's row", "[...document.querySelectorAll('[role=gridcell]')].some(e => e.textContent === 'notes.txt')")
    check("key=" not in browser.evaluate("location.href"), "the key stays in the address")

    (folder / "notes.txt").write_text("first and second")
    browser.wait("the change", "[...document.querySelectorAll('[role=row]')].some(e => /notes.txt16.*changed/.test(e.textContent))")
    (folder / "added.txt").write_text("new")
    browser.wait("the new row", "[...document.querySelectorAll('[role=row]')].some(e => /added.txt.*added/.test(e.textContent))")

    # By the mouse into the settings, by the keyboard to another language.
    browser.click("menuitem", "File")
    browser.click("menuitem", "Settings...")
    browser.find("dialog", "Settings")
    browser.click("textbox", "At most")
    browser.key("End", "End", 35)
    for _ in range(4):
        browser.key("Backspace", "Backspace", 8)
    browser.type("77")
    browser.wait("what was typed", "document.querySelector('[role=textbox][aria-label=\"At most\"]').textContent === '77'")
    browser.key("Tab", "Tab", 9)
    browser.wait("the focus", "!!document.querySelector('[role=radio][aria-label=English][data-focus]')")
    browser.key("ArrowRight", "ArrowRight", 39)
    browser.wait("the choice", "!!document.querySelector('[role=radio][aria-label=Deutsch][aria-checked=true]')")
    browser.key("Enter", "Enter", 13, "\r")
    browser.find("menuitem", "Datei")
    browser.wait("German headings", "[...document.querySelectorAll('[role=columnheader]')].some(e => e.textContent === 'Gr\u00f6\u00dfe')")
    check(not browser.evaluate("!!document.querySelector('[role=dialog]')"), "the dialog stays open")

    monitor.process.send_signal(signal.SIGUSR1)

    # The Alt key opens menus, a letter chooses.
    browser.key("Alt", "AltLeft", 18)
    browser.key("d", "KeyD", 68, "d")
    browser.wait("the menu", "!!document.querySelector('[role=menu]')")
    browser.key("Escape", "Escape", 27)
    browser.wait("no menu", "!document.querySelector('[role=menu]')")
    browser.key("Escape", "Escape", 27)

    frame = "document.querySelector('[role=region]')"
    start = browser.evaluate(f"(() => {{ const r = {frame}.getBoundingClientRect(); return [r.x + 300, r.y + 10]; }})()")
    browser.drag(start, (start[0] + 120, start[1] + 80))
    browser.wait("the frame's new place", f"Math.abs({frame}.getBoundingClientRect().x + 300 - {start[0] + 120}) < 3")

    browser.click("button", "Close")
    browser.wait("the end's note", "document.getElementById('note').textContent !== ''")


def check_picture(path):
    """What the signal has written: a whole document of the monitor's window."""
    root = xml.etree.ElementTree.parse(path).getroot()
    names = [element.get("aria-label") for element in root.iter()]
    check(root.tag == "{http://www.w3.org/2000/svg}svg" and "Datei" in names, f"the picture lacks the menu: {names}")


def main():
    with tempfile.TemporaryDirectory(prefix="kelgen-view-") as scratch:
        run(Path(sys.argv[1]).resolve(), Path(scratch))
    print("the monitor's page works")


if __name__ == "__main__":
    main()
