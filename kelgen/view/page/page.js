"use strict";
// The page draws what the events bring and sends mouse and keys back. No key of the address stays in the history.
history.replaceState(null, "", "/");

const desktop = document.getElementById("desktop");
const windows = document.getElementById("windows");
const menus = document.getElementById("menus");
const note = document.getElementById("note");

// The elements of windows by their ids, and which windows lie in which; those of the desktop are under "".
const elements = new Map();
const within = new Map();

const sheets = new Map();

function parsed(text) {
  const scratch = document.createElementNS("http://www.w3.org/2000/svg", "g");
  scratch.innerHTML = text;
  // The page's policy leaves styles in texts out: they are set by hand.
  for (const element of scratch.querySelectorAll("[style]")) element.style.cssText = element.getAttribute("style");
  return scratch;
}

// A window's own colours.
function takeSheet(id, element) {
  const style = element.querySelector("style");
  style?.remove();
  if (!style && !sheets.has(id)) return;
  if (style) {
    sheets.set(id, new CSSStyleSheet());
    sheets.get(id).replaceSync(style.textContent);
  } else sheets.delete(id);
  document.adoptedStyleSheets = [...sheets.values()];
}

const isWindow = node => elements.get(node.id) === node;
// Where the windows in a window lie: its last own element. One without it shows none.
const roomOf = element => {
  const last = element.lastElementChild;
  return last?.getAttribute("role") === "none" ? last : null;
};

function copyAttributes(to, from) {
  for (const name of to.getAttributeNames()) if (!from.hasAttribute(name)) to.removeAttribute(name);
  for (const name of from.getAttributeNames())
    if (to.getAttribute(name) !== from.getAttribute(name)) to.setAttribute(name, from.getAttribute(name));
}

// The element stays, as do those of the windows in it: whatever looks at them, goes on.
function renew(element, fresh) {
  const room = roomOf(element), freshRoom = roomOf(fresh);
  copyAttributes(element, fresh);
  for (const node of [...element.childNodes]) if (node !== room || !freshRoom) node.remove();
  if (room && freshRoom) {
    copyAttributes(room, freshRoom);
    for (const node of [...room.childNodes]) if (!isWindow(node)) node.remove();
    room.prepend(...freshRoom.childNodes);
    freshRoom.remove();
  }
  element.prepend(...fresh.childNodes);
}

// In their order from the bottom up, behind what is the room's own.
function arrange(room, ids) {
  const wanted = ids.map(id => elements.get(id)).filter(Boolean);
  for (const node of [...room.children]) if (isWindow(node) && !wanted.includes(node)) node.remove();
  let next = null;
  for (const element of wanted.reverse()) {
    if (element.parentNode !== room || element.nextSibling !== next) room.insertBefore(element, next);
    next = element;
  }
}

function forgetClosed() {
  const open = new Set();
  const waiting = [""];
  while (waiting.length) {
    const id = waiting.pop();
    open.add(id);
    waiting.push(...(within.get(id) || []));
  }
  for (const id of elements.keys()) if (!open.has(id)) { elements.get(id).remove(); elements.delete(id); }
  for (const id of within.keys()) if (!open.has(id)) within.delete(id);
  for (const id of sheets.keys()) if (!open.has(id)) sheets.delete(id);
  document.adoptedStyleSheets = [...sheets.values()];
}

function draw(picture) {
  for (const [id, text] of Object.entries(picture.changed)) {
    const fresh = parsed(text).firstElementChild;
    takeSheet(id, fresh);
    if (elements.has(id)) renew(elements.get(id), fresh);
    else elements.set(id, fresh);
  }
  const arranged = Object.entries(picture.within);
  for (const [id, ids] of arranged) {
    within.set(id, ids);
    const room = roomOf(elements.get(id));
    if (room) arrange(room, ids);
  }
  if (picture.order) {
    within.set("", picture.order);
    arrange(windows, picture.order);
    desktop.setAttribute("viewBox", `0 0 ${picture.width} ${picture.height}`);
    document.title = picture.title || "kelgen";
  }
  if (arranged.length || picture.order) forgetClosed();
  if (picture.menus !== undefined) menus.replaceChildren(...parsed(picture.menus).childNodes);
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
