"use strict";
// The page draws what the events bring and sends mouse and keys back. No key of the address stays in the history.
history.replaceState(null, "", "/");

const desktop = document.getElementById("desktop");
const windows = document.getElementById("windows");
const menus = document.getElementById("menus");
const note = document.getElementById("note");
const groups = new Map();

function draw(picture) {
  for (const [id, element] of Object.entries(picture.changed)) {
    let group = groups.get(id);
    if (!group) {
      group = document.createElementNS("http://www.w3.org/2000/svg", "g");
      groups.set(id, group);
    }
    group.innerHTML = element;
  }
  for (const [id, group] of groups) {
    if (!picture.order.includes(id)) {
      group.remove();
      groups.delete(id);
    }
  }
  picture.order.forEach((id, place) => {
    const group = groups.get(id);
    if (group && windows.children[place] !== group) windows.insertBefore(group, windows.children[place] || null);
  });
  if (picture.menus !== undefined) menus.innerHTML = picture.menus;
  desktop.setAttribute("viewBox", `0 0 ${picture.width} ${picture.height}`);
  document.title = picture.title || "kelgen";
  // The item of the innermost open menu, else the row of a list, else the control.
  const last = (element, selector) => [...element.querySelectorAll(selector)].pop();
  const focus = last(menus, "[data-focus]") || last(windows, "[data-focus=menu]") || last(windows, "[data-focus]");
  if (focus) desktop.setAttribute("aria-activedescendant", focus.id);
  else desktop.removeAttribute("aria-activedescendant");
}

const events = new EventSource("events");
events.onmessage = event => { note.textContent = ""; draw(JSON.parse(event.data)); };
events.onerror = () => {
  note.textContent = "The program has ended, or does not answer.";
  if (events.readyState === EventSource.CLOSED) events.close();
};

// Input goes in its order: one request at a time, which takes what has come meanwhile.
let waiting = [];
let isSending = false;
async function send(line) {
  const last = waiting.length - 1;
  if (last >= 0 && line.startsWith("move ") && waiting[last].startsWith("move ")) waiting[last] = line;
  else if (waiting.length < 500) waiting.push(line);
  if (isSending) return;
  isSending = true;
  while (waiting.length) {
    const lines = waiting.splice(0, 100);
    try {
      await fetch("input", { method: "POST", headers: { "Content-Type": "text/plain" }, body: lines.join("\n") });
    } catch { waiting = []; }
  }
  isSending = false;
}

function place(event) {
  const matrix = desktop.getScreenCTM();
  return `${Math.floor((event.clientX - matrix.e) / matrix.a)} ${Math.floor((event.clientY - matrix.f) / matrix.d)}`;
}

const buttons = ["left", "middle", "right"];
desktop.addEventListener("pointermove", event => send("move " + place(event)));
desktop.addEventListener("pointerdown", event => {
  desktop.focus();
  desktop.setPointerCapture(event.pointerId);
  send("move " + place(event));
  if (buttons[event.button]) send("down " + buttons[event.button]);
  event.preventDefault();
});
desktop.addEventListener("pointerup", event => {
  send("move " + place(event));
  if (buttons[event.button]) send("up " + buttons[event.button]);
});
desktop.addEventListener("contextmenu", event => event.preventDefault());
let turned = 0;
desktop.addEventListener("wheel", event => {
  turned += event.deltaMode === 0 ? event.deltaY : event.deltaY * 40;
  const steps = Math.trunc(turned / 100) || (Math.abs(turned) >= 40 ? Math.sign(turned) : 0);
  if (steps) {
    turned = 0;
    send("move " + place(event));
    send("wheel " + -steps);
  }
  event.preventDefault();
}, { passive: false });

// Numbers of keys that make no character.
const keys = {
  Backspace: 8, Tab: 9, Enter: 13, ShiftLeft: 160, ShiftRight: 161, ControlLeft: 162, ControlRight: 163, AltLeft: 164, Pause: 19,
  CapsLock: 20, Escape: 27, PageUp: 33, PageDown: 34, End: 35, Home: 36, ArrowLeft: 37, ArrowUp: 38, ArrowRight: 39, ArrowDown: 40,
  Insert: 45, Delete: 46, ContextMenu: 93, Space: 32, NumpadEnter: 13, F1: 112, F2: 113, F3: 114, F4: 115, F5: 116, F6: 117, F7: 118,
  F8: 119, F9: 120, F10: 121, F11: 122, F12: 123,
};
const held = new Map();

function numberOf(event) {
  if (keys[event.code]) return keys[event.code];
  if (/^[a-z0-9]$/i.test(event.key)) return event.key.toUpperCase().charCodeAt(0);
  const letter = /^Key([A-Z])$/.exec(event.code) || /^Digit([0-9])$/.exec(event.code);
  return letter ? letter[1].charCodeAt(0) : 0;
}

// A character is a key's own if the platform's keyboard makes the same one of it.
function isOfKey(event) {
  if (event.ctrlKey || event.altKey || event.key === " ") return true;
  if (/^[a-z]$/i.test(event.key)) return /[A-Z]/.test(event.key) === event.shiftKey;
  return /^[0-9]$/.test(event.key) && !event.shiftKey;
}

desktop.addEventListener("keydown", event => {
  if (event.isComposing || event.key === "Dead" || event.metaKey) return;
  const isAltGraph = event.getModifierState("AltGraph");
  event.preventDefault();
  if (event.key.length <= 2 && event.key !== " " && [...event.key].length === 1 && (isAltGraph || !isOfKey(event))) {
    for (let i = 0; i < event.key.length; ++i) send("text " + event.key.charCodeAt(i).toString(16));
    return;
  }
  const number = numberOf(event);
  if (!number) return;
  held.set(event.code, number);
  send("press " + number);
});
desktop.addEventListener("keyup", event => {
  event.preventDefault();
  const number = held.get(event.code);
  if (!number) return;
  held.delete(event.code);
  send("release " + number);
});
window.addEventListener("blur", () => {
  for (const number of held.values()) send("release " + number);
  held.clear();
});
desktop.focus();
