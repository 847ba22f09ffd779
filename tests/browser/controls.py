#!/usr/bin/env python3
"""controls.py HOST: what a screen reader is told of every kind of control, in a headless Chromium. HOST is built from
tests/support/view/HostProgram.cpp."""
import os
import subprocess
import sys
import tempfile

from devtools import DEADLINE, Browser

# What is on the frame: role, name, states.
CONTROLS = [
    ("region", "A host", {}),
    ("button", "Minimize", {}), ("button", "Maximize", {}), ("button", "Close", {}),
    ("menubar", "", {}), ("menuitem", "File", {"hasPopup": "menu"}), ("menuitem", "Edit", {"disabled": True}),
    ("button", "Ask", {"keyshortcuts": "Alt+A Enter"}), ("button", "Stop", {"disabled": True}),
    ("checkbox", "Loud", {"checked": "true"}), ("checkbox", "Some", {"checked": "mixed"}),
    ("group", "Speed", {}), ("radio", "Slow", {"checked": "true"}), ("radio", "Fast", {"checked": "false"}),
    ("textbox", "Name", {"value": "some text", "multiline": False}), ("textbox", "Password", {"value": "******"}),
    ("textbox", "Report", {"multiline": True, "readonly": True}),
    ("listbox", "Colour", {"multiselectable": False}), ("option", "first", {"selected": False}), ("option", "second", {"selected": True}),
    ("combobox", "Size", {"expanded": False, "description": "third"}), ("combobox", "Font", {"expanded": False}), ("textbox", "Font", {}),
    ("image", "Warning", {}),
    ("grid", "Files", {"multiselectable": True}), ("columnheader", "Name", {}), ("columnheader", "Size", {}),
    ("row", "file 00", {"selected": False}), ("gridcell", "file 0", {}),
]


def press(browser, key, number):
    browser.key(key, key, number)


def walk(browser):
    browser.wait("the page", "!!document.querySelector('[role=grid]')")
    for role, name, states in CONTROLS:
        browser.wait_told(role, name, **states)
    if any(name == "Secret" for _, name, _ in browser.told()):
        raise AssertionError("a hidden button is told")

    # The place in a list is told, not the list alone.
    browser.click("listbox", "Colour")
    focus = "document.getElementById(document.getElementById('desktop').getAttribute('aria-activedescendant'))"
    press(browser, "End", 35)
    browser.wait("the row under the caret", f"{focus}?.textContent === 'fourth'")

    browser.click("combobox", "Size")
    browser.wait_told("combobox", "Size", expanded=True)
    browser.wait_told("listbox", "Size")
    browser.wait("the list that belongs to it", "!!document.getElementById(document.querySelector('[role=combobox][aria-expanded=true]')"
                 ".getAttribute('aria-controls')).querySelector('[role=option]')")
    press(browser, "ArrowDown", 40)
    browser.wait("the entry under the caret", f"{focus}?.textContent === 'fourth'")
    press(browser, "Enter", 13)
    browser.wait_told("combobox", "Size", expanded=False, description="fourth")

    browser.click("menuitem", "File")
    browser.wait_told("menu", "File")
    for role, name, states in [("menuitem", "Open...", {}), ("menuitemcheckbox", "Keep", {"checked": "true"}),
                               ("menuitem", "Recent", {"hasPopup": "menu"}), ("menuitem", "Save", {"disabled": True})]:
        browser.wait_told(role, name, **states)
    browser.wait("the line between items", "!!document.querySelector('[role=separator]')")
    browser.click("menuitem", "Recent")
    browser.wait_told("menu", "Recent")
    press(browser, "Escape", 27)
    press(browser, "Escape", 27)
    press(browser, "Escape", 27)
    browser.wait("no menu", "!document.querySelector('[role=menu]')")

    browser.click("button", "Ask")
    browser.wait_told("alertdialog", "Question", modal=True, description="Is that so?")
    browser.wait_told("image", "Question")
    browser.wait("the focus on its button", f"{focus}?.getAttribute('aria-label') === 'Yes'")
    browser.click("button", "No")
    browser.wait("no box", "!document.querySelector('[role=alertdialog]')")


def check_stays(browser):
    """What changes is renewed alone: all elements of windows stay, those in a frame that changes, too."""
    windows = "[...document.querySelectorAll('#windows svg[id]')]"
    browser.evaluate(f"window.kept = {windows}")
    browser.click("textbox", "Name")
    browser.key("Home", "Home", 36)
    browser.type("q")
    browser.wait("the letter", "document.querySelector('[role=textbox][aria-label=Name]').textContent === 'qsome text'")
    browser.wait("the caret behind it", "document.querySelector('[role=textbox] .caret').getAttribute('x') === '8'")
    browser.key("Alt", "AltLeft", 18)
    browser.wait("the frame's change", "!!document.querySelector('[role=menubar] [data-focus=menu]')")
    browser.key("Escape", "Escape", 27)
    browser.wait("its end", "!document.querySelector('[data-focus=menu]')")
    if not browser.evaluate(f"{windows}.length === kept.length && {windows}.every((element, place) => element === kept[place])"):
        raise AssertionError("elements have been replaced, or are in another order")
    focus = browser.evaluate("[document.activeElement.id, document.getElementById('desktop').getAttribute('aria-activedescendant')]")
    if focus != ["desktop", browser.evaluate("document.querySelector('[role=textbox][aria-label=Name]').id")]:
        raise AssertionError(f"the focus is on {focus}")


# The luminance of what is drawn there, from 0 to 1.
LIGHT = """(selector => {
  const [red, green, blue] = getComputedStyle(document.querySelector(selector)).fill.match(/[0-9.]+/g).map(Number);
  return (0.3 * red + 0.6 * green + 0.1 * blue) / 255;
})"""


def check_colors(browser, dark):
    """Texts stand out from what is behind them, in the light and in the dark."""
    for text, ground in (("[role=button] text.text:not(.off)", ".button"), ("[role=textbox] text.cells", ".field"),
                         ("[role=gridcell] text", ".field"), ("[role=menuitem] text.text:not(.off)", ".face"), ("text.title.active", ".caption.active")):
        ink, paper = (browser.evaluate(f"{LIGHT}({selector!r})") for selector in (text, ground))
        if abs(ink - paper) < 0.4:
            raise AssertionError(f"{text} is {ink:.2f} on {paper:.2f}, dark: {dark}")
    if (browser.evaluate(f"{LIGHT}('.field')") < 0.5) != dark:
        raise AssertionError(f"the field's colour is that of the other mode, dark: {dark}")


def check_painted(browser):
    """Colours that the host has chosen, and what it paints, are as it says, although the page's policy forbids styles in texts."""
    def has(selector, which, name, wanted):
        return f"[...document.querySelectorAll('{selector}')].some(e => {which} && getComputedStyle(e)['{name}'] === '{wanted}')"
    browser.wait("the label's colour", has("text", "e.textContent === 'Files:'", "fill", "rgb(200, 0, 0)"))
    browser.wait("the painted text's", has("text", "e.textContent === 'mark'", "fill", "rgb(200, 0, 0)"))
    browser.wait("what is inverted", has("rect", "true", "mixBlendMode", "difference"))


def main():
    with tempfile.TemporaryDirectory(prefix="kelgen-controls-") as home:
        environment = {**os.environ, "KELGEN_HOME": home, "KELGEN_VIEW": "0"}
        host = subprocess.Popen([sys.argv[1]], env=environment, stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        try:
            url = next(line for line in host.stdout if line.startswith("view: ")).removeprefix("view: ").strip()
            with Browser() as browser:
                browser.open(url)
                walk(browser)
                check_stays(browser)
                check_painted(browser)
                for dark in (False, True):
                    browser.call("Emulation.setEmulatedMedia", features=[{"name": "prefers-color-scheme", "value": "dark" if dark else "light"}])
                    check_colors(browser, dark)
            host.stdin.close()
            if host.wait(timeout=DEADLINE):
                raise AssertionError(f"the host ends with {host.returncode}")
        finally:
            host.kill()
    print("every control is told by role and name")


if __name__ == "__main__":
    main()
