// The page's half of the window: builds the controls and menus the core
// describes, paints its drawing, queues the user's actions for it, and
// shows the pages of a run in a print view.
import createQuillion from "./quillion.mjs";

const SVG = "http://www.w3.org/2000/svg";
const Kind = { Label: 0, TextBox: 1, CheckBox: 2, CommandButton: 3, PictureBox: 4 };
const Event = { Activate: 1, Click: 2, Edit: 3, KeyDown: 4, KeyUp: 5, MenuClick: 6, MouseDown: 7 };

const windowEl = document.getElementById("window");
const menubar = document.getElementById("menubar");
const client = document.getElementById("client");
const canvas = document.getElementById("surface");
const cursorEl = document.getElementById("cursor");
const gridsEl = document.getElementById("grids");
const statusEl = document.getElementById("status");
const printview = document.getElementById("printview");
const sheets = document.getElementById("sheets");
const context = canvas.getContext("2d", { alpha: true });

let controls = [];  // the elements of the core's controls, by index
let menuItems = []; // { element, popup } by the core's menu item index
let width = 0, height = 0, scale = 1;
let title = "", announced = "";
let cursorAt = null;  // the cell cursor's grid, row and column

// Events wait here until the core asks for them, at its next yield.
const queue = [];
let waiting = null;  // the sleeping core's wake-up, when it waits for an event
let ended = false;
const channel = new MessageChannel();
let wakeNext = null;
channel.port1.onmessage = () => {
  const wake = wakeNext;
  wakeNext = null;
  if (wake) wake();
};
function wakeSoon(wake) {
  wakeNext = wake;
  channel.port2.postMessage(0);
}
// A program waiting for the user takes the event at once, inside the
// browser's handler of it: a phone opens its keyboard only for a box focused
// there.
function post(kind, values, text) {
  if (ended) return;
  queue.push({ kind, values, text });
  if (waiting) {
    const wake = waiting;
    waiting = null;
    wake();
  }
}

// Classic virtual-key numbers, as the desktop binding maps its keys.
const namedKeys = {
  Enter: 13, Backspace: 8, Tab: 9, Escape: 27, " ": 32, PageUp: 33, PageDown: 34, End: 35, Home: 36,
  ArrowLeft: 37, ArrowUp: 38, ArrowRight: 39, ArrowDown: 40, Insert: 45, Delete: 46, Shift: 16,
  Control: 17, Alt: 18, "-": 189, ".": 190, ",": 188, "+": 187, F1: 112,
};
function classicKey(e) {
  if (e.key.length === 1 && /[a-z0-9]/i.test(e.key)) return e.key.toUpperCase().charCodeAt(0);
  return namedKeys[e.key] ?? 0;
}
const classicShift = (e) => (e.shiftKey ? 1 : 0) + (e.ctrlKey ? 2 : 0) + (e.altKey ? 4 : 0);

function applyControl(element, c) {
  const box = element.control;
  box.style.left = c.rect[0] + "px";
  box.style.top = c.rect[1] + "px";
  box.style.width = c.rect[2] + "px";
  box.style.height = c.rect[3] + "px";
  box.hidden = !c.visible;
  if (c.background) box.style.background = c.background;
  if (c.foreground) box.style.color = c.foreground;
  switch (c.kind) {
    case Kind.Label:
      box.textContent = c.text;
      break;
    case Kind.TextBox:
      // The limit holds for typing only: a longer text set by the core stays whole.
      box.maxLength = c.maxLength > 0 ? Math.max(c.maxLength, c.text.length) : 524288;
      if (box.value !== c.text) box.value = c.text;
      box.disabled = !c.enabled;
      break;
    case Kind.CheckBox:
      element.input.checked = c.value === 1;
      element.input.disabled = !c.enabled;
      element.caption.textContent = c.text;
      box.classList.toggle("disabled", !c.enabled);
      break;
    case Kind.CommandButton:
      box.textContent = c.text;
      box.disabled = !c.enabled;
      break;
  }
  if (c.accessibleName) box.setAttribute("aria-label", c.accessibleName);
  if (c.accessibleDescription) box.setAttribute("aria-description", c.accessibleDescription);
  else box.removeAttribute("aria-description");
  // The entry box asks a phone for its number keyboard, or for the plain one
  // when the puzzle has negative numbers (number keyboards have no sign).
  if (c.name === "Text6" && c.visible) {
    const negative = [...gridsEl.querySelectorAll(".cell")].some((cell) => cell.textContent.startsWith("-"));
    box.inputMode = negative ? "text" : "decimal";
  }
  // A control that goes away gives the keys to the window, not to the page.
  if ((!c.visible || !c.enabled) && box.contains(document.activeElement)) canvas.focus({ preventScroll: true });
}

function illustration(picture, rect) {
  const [w, h] = [rect[2], rect[3]];
  const svg = document.createElementNS(SVG, "svg");
  svg.setAttribute("width", w);
  svg.setAttribute("height", h);
  const add = (name, attributes) => {
    const el = document.createElementNS(SVG, name);
    for (const [k, v] of Object.entries(attributes)) el.setAttribute(k, v);
    svg.appendChild(el);
  };
  add("rect", { x: 0, y: 0, width: w, height: h, fill: picture.white ? "#fff" : "#efefef" });
  add("rect", { x: 0.5, y: 0.5, width: w - 1, height: h - 1, fill: "none", stroke: "#808080" });
  // A 5 by 5 grid centred in the box with a margin of one twelfth.
  const margin = Math.min(w, h) / 12, cw = (w - 2 * margin) / 5, ch = (h - 2 * margin) / 5;
  for (const [column, row, style] of picture.marks) {
    const x = margin + (column - 1) * cw, y = margin + (row - 1) * ch;
    if (style === 0) {
      add("rect", { x: x + 1, y: y + 1, width: cw - 2, height: ch - 2, fill: "#00ff00" });
    } else if (style === 1) {
      add("line", { x1: x + cw * 0.25, y1: y + ch / 2, x2: x + cw * 0.75, y2: y + ch / 2, stroke: "#00a000", "stroke-width": 2 });
    } else {
      const points = [[x + cw * 0.25, y + ch / 2], [x + cw * 0.45, y + ch * 0.75], [x + cw * 0.8, y + ch * 0.2]];
      add("polyline", { points: points.map((p) => p.join(",")).join(" "), fill: "none", stroke: "#00a000", "stroke-width": 2 });
    }
  }
  for (let i = 0; i <= 5; ++i) {
    const x = Math.round(margin + i * cw) + 0.5, y = Math.round(margin + i * ch) + 0.5;
    add("line", { x1: x, y1: margin, x2: x, y2: margin + 5 * ch, stroke: "#a0a0a0", "stroke-width": 1 });
    add("line", { x1: margin, y1: y, x2: margin + 5 * cw, y2: y, stroke: "#a0a0a0", "stroke-width": 1 });
  }
  return svg;
}

function createControl(c, index) {
  const element = {};
  let box;
  const keys = (target) => {
    target.addEventListener("keydown", (e) => {
      e.stopPropagation();
      if (e.key === "F10") return openMenuBar(e);
      post(Event.KeyDown, [index, classicKey(e), classicShift(e)]);
    });
    target.addEventListener("keyup", (e) => {
      e.stopPropagation();
      post(Event.KeyUp, [index, classicKey(e), classicShift(e)]);
    });
  };
  switch (c.kind) {
    case Kind.Label:
      box = document.createElement("div");
      box.className = "control label";
      break;
    case Kind.TextBox:
      box = document.createElement("input");
      box.type = "text";
      box.className = "control";
      box.spellcheck = false;
      box.autocomplete = "off";
      box.addEventListener("input", () => post(Event.Edit, [index], box.value));
      keys(box);
      break;
    case Kind.CheckBox: {
      box = document.createElement("label");
      box.className = "control checkbox";
      element.input = document.createElement("input");
      element.input.type = "checkbox";
      element.caption = document.createElement("span");
      box.append(element.input, element.caption);
      element.input.addEventListener("click", () => post(Event.Click, [index]));
      keys(element.input);
      break;
    }
    case Kind.CommandButton:
      box = document.createElement("button");
      box.type = "button";
      box.className = "control";
      box.addEventListener("click", () => post(Event.Click, [index]));
      keys(box);
      break;
    case Kind.PictureBox:
      box = document.createElement("div");
      box.className = "control picture";
      box.setAttribute("role", "img");
      if (c.illustration) box.appendChild(illustration(c.illustration, c.rect));
      break;
  }
  box.dataset.name = c.name;
  element.control = box;
  client.appendChild(box);
  applyControl(element, c);
  return element;
}

// The menu bar: menus open on a click or F10, and the arrows, Enter and
// Escape move through them as on the desktop.
let openMenus = [];
function closeMenus() {
  for (const m of openMenus) {
    m.popup.hidden = true;
    m.element.classList.remove("open");
    m.element.setAttribute("aria-expanded", "false");
  }
  openMenus = [];
}
function openMenu(entry, depth, focusFirst) {
  for (const m of openMenus.splice(depth)) {
    m.popup.hidden = true;
    m.element.classList.remove("open");
    m.element.setAttribute("aria-expanded", "false");
  }
  entry.popup.hidden = false;
  entry.element.classList.add("open");
  entry.element.setAttribute("aria-expanded", "true");
  openMenus.push(entry);
  if (focusFirst) visibleItems(entry.popup)[0]?.focus();
}
const visibleItems = (popup) => [...popup.children].filter((el) => !el.hidden);
function openMenuBar(e) {
  e?.preventDefault();
  const first = [...menubar.children].find((el) => !el.hidden);
  first?.querySelector(".title").focus();
}

function buildMenu(item, parentPopup, depth) {
  const top = depth === 0;
  const element = document.createElement("div");
  let title = element;
  if (top) {
    element.className = "menu";
    title = document.createElement("div");
    title.className = "title";
    title.textContent = item.caption;
    element.appendChild(title);
  } else {
    element.className = "item";
    const check = document.createElement("span");
    check.className = "check";
    const text = document.createElement("span");
    text.textContent = item.caption;
    element.append(check, text);
  }
  title.tabIndex = -1;
  title.setAttribute("role", "menuitem");
  const entry = { element: title, holder: element, popup: null, item, depth };
  menuItems[item.index] = entry;
  if (item.children.length > 0) {
    if (!top) element.classList.add("sub");
    title.setAttribute("aria-haspopup", "menu");
    title.setAttribute("aria-expanded", "false");
    entry.popup = document.createElement("div");
    entry.popup.className = "popup";
    entry.popup.setAttribute("role", "menu");
    entry.popup.hidden = true;
    element.appendChild(entry.popup);
    for (const child of item.children) buildMenu(child, entry.popup, depth + 1);
  }
  title.addEventListener("click", (e) => {
    e.stopPropagation();
    if (title.getAttribute("aria-disabled") === "true") return;
    if (entry.popup) {
      if (top && openMenus[0] === entry) return closeMenus();
      return openMenu(entry, depth, false);
    }
    closeMenus();
    canvas.focus();
    post(Event.MenuClick, [item.index]);
  });
  title.addEventListener("mouseenter", () => {
    if (openMenus.length > 0 && entry.popup && title.getAttribute("aria-disabled") !== "true") openMenu(entry, depth, false);
    if (!top) title.focus();
  });
  title.addEventListener("keydown", (e) => menuKey(e, entry));
  (top ? menubar : parentPopup).appendChild(element);
  applyMenu(item.index, item.visible, item.enabled, item.checked);
}

function menuKey(e, entry) {
  e.stopPropagation();
  const top = entry.depth === 0;
  const siblings = (top ? [...menubar.children] : visibleItems(entry.holder.parentElement))
    .filter((el) => !el.hidden).map((el) => (top ? el.querySelector(".title") : el));
  const at = siblings.indexOf(entry.element);
  const move = (step) => siblings[(at + step + siblings.length) % siblings.length]?.focus();
  const topEntry = (step) => {
    const tops = [...menubar.children].filter((el) => !el.hidden).map((el) => el.querySelector(".title"));
    const current = tops.indexOf(openMenus[0]?.element ?? entry.element);
    const next = menuItems.find((m) => m && m.element === tops[(current + step + tops.length) % tops.length]);
    if (next) openMenu(next, 0, true);
  };
  switch (e.key) {
    case "ArrowDown":
      if (top) openMenu(entry, 0, true); else move(1);
      break;
    case "ArrowUp":
      if (!top) move(-1);
      break;
    case "ArrowRight":
      if (top) move(1);
      else if (entry.popup) openMenu(entry, entry.depth, true);
      else topEntry(1);
      break;
    case "ArrowLeft":
      if (top) move(-1);
      else if (entry.depth > 1) { openMenus[entry.depth - 1]?.element.focus(); openMenu(openMenus[entry.depth - 1], entry.depth - 1, false); openMenus.pop(); }
      else topEntry(-1);
      break;
    case "Enter":
    case " ":
      entry.element.click();
      if (entry.popup) visibleItems(entry.popup)[0]?.focus();
      break;
    case "Escape":
    case "F10":
      closeMenus();
      canvas.focus();
      break;
    default:
      return;
  }
  e.preventDefault();
}

function applyMenu(index, visible, enabled, checked) {
  const entry = menuItems[index];
  if (!entry) return;
  entry.holder.hidden = !visible;
  entry.element.setAttribute("aria-disabled", enabled ? "false" : "true");
  // Only a checked item shows a mark; unchecked ones show nothing at all.
  const check = entry.holder.querySelector(":scope > .check");
  if (check) check.textContent = checked ? "\u2713" : "";
  if (entry.depth > 0 && !entry.popup) {
    entry.element.setAttribute("role", checked ? "menuitemcheckbox" : "menuitem");
    if (checked) entry.element.setAttribute("aria-checked", "true"); else entry.element.removeAttribute("aria-checked");
  }
}

// The whole window scaled down to fit a smaller screen; never laid out anew.
function fit() {
  const fullHeight = height + 19;
  scale = Math.min(1, window.innerWidth / width, window.innerHeight / fullHeight);
  windowEl.style.transform = scale < 1 ? `scale(${scale})` : "";
  const ratio = (window.devicePixelRatio || 1) * scale;
  const pixels = Math.max(1, Math.round(ratio * 4) / 4);
  if (canvas.width !== Math.round(width * pixels)) {
    const keep = painted.concat(unpainted.slice(next));
    canvas.width = Math.round(width * pixels);
    canvas.height = Math.round(height * pixels);
    context.setTransform(pixels, 0, 0, pixels, 0, 0);
    clearDrawing();
    paint(keep);
  }
}

// The drawing: boxes include both corners; texts stand with their top-left
// corner at their position, in the drawing font.
let painted = [];
let ascent = 11.77;
// Painted a few milliseconds a frame, so that a drawing of thousands of
// numbers never holds up the page or the run that draws it.
let unpainted = [], next = 0, painting = false;
function paint(ops) {
  for (const op of ops) unpainted.push(op);
  if (!painting) {
    painting = true;
    requestAnimationFrame(paintSome);
  }
}
function paintSome() {
  const until = performance.now() + 6;
  context.font = '13px "Liberation Sans"';
  context.textBaseline = "alphabetic";
  while (next < unpainted.length && ((next & 255) !== 0 || performance.now() < until)) {
    const op = unpainted[next++];
    if (op.text === undefined) {
      context.fillStyle = op.colour;
      const x = Math.min(op.x1, op.x2), y = Math.min(op.y1, op.y2);
      context.fillRect(x, y, Math.abs(op.x2 - op.x1) + 1, Math.abs(op.y2 - op.y1) + 1);
    } else {
      context.fillStyle = "#000";
      context.fillText(op.text, op.x1, op.y1 + ascent);
    }
    painted.push(op);
  }
  painting = next < unpainted.length;
  if (painting) requestAnimationFrame(paintSome);
  else unpainted = [], next = 0;
}
function clearDrawing() {
  context.clearRect(0, 0, width, height);
  painted = [];
  unpainted = [];
  next = 0;
}
const hex = (rgb) => "#" + (rgb | 0).toString(16).padStart(6, "0");
function decode(numbers, texts) {
  const ops = [];
  let t = 0;
  for (let i = 0; i < numbers.length; i += 6) {
    const op = { x1: numbers[i + 1], y1: numbers[i + 2], x2: numbers[i + 3], y2: numbers[i + 4] };
    if (numbers[i] === 1) op.text = texts[t++]; else op.colour = hex(numbers[i + 5]);
    ops.push(op);
  }
  return ops;
}

// The pages of the document under way, those of the documents the run has
// ended, and the last run's, kept for "Print again" until the next run's.
let pages = [];
let runPages = [];
let documentPages = [];
// The print view, filled a few pages at a time so that the page answers
// while a long document is laid out; printed once it is whole.
let building = 0;
function showPrintView(print) {
  const token = ++building;
  const again = document.getElementById("printagain");
  sheets.replaceChildren();
  delete printview.dataset.ready;
  again.disabled = true;
  printview.hidden = false;
  let next = 0;
  const fill = () => {
    if (token !== building) return;
    const until = performance.now() + 25;
    while (next < documentPages.length && performance.now() < until) sheets.appendChild(sheet(documentPages[next++]));
    if (next < documentPages.length) return void setTimeout(fill, 0);
    printview.dataset.ready = "";
    again.disabled = false;
    again.focus();
    if (print) window.print();
  };
  fill();
}
// A page as vector drawing, built element by element (no text of the run's
// ever becomes markup): the boxes of one colour as one path, every text its
// own, so that it stays text on paper.
function svgElement(name, attributes, parent) {
  const el = document.createElementNS(SVG, name);
  for (const key in attributes) el.setAttribute(key, attributes[key]);
  parent?.appendChild(el);
  return el;
}
function sheet(page) {
  const div = document.createElement("div");
  div.className = "sheet";
  const svg = svgElement("svg", { viewBox: `0 0 ${page.width} ${page.height}`, preserveAspectRatio: "xMinYMin meet" }, div);
  const paths = new Map();
  const texts = svgElement("g", { "font-family": "Liberation Sans", "font-size": 13, fill: "#000" });
  for (const op of decode(page.numbers, page.texts.split("\x1f"))) {
    if (op.text === undefined) {
      const x = Math.min(op.x1, op.x2), y = Math.min(op.y1, op.y2);
      const w = Math.abs(op.x2 - op.x1) + 1, h = Math.abs(op.y2 - op.y1) + 1;
      paths.set(op.colour, (paths.get(op.colour) ?? "") + `M${x} ${y}h${w}v${h}h${-w}z`);
    } else {
      svgElement("text", { x: op.x1, y: op.y1 + ascent }, texts).textContent = op.text;
    }
  }
  for (const [colour, d] of paths) svgElement("path", { fill: colour, d }, svg);
  svg.appendChild(texts);
  for (const c of page.controls) printedControl(c, svg);
  return div;
}
// A control on a printed page: its caption as the window wraps it.
function printedControl(c, svg) {
  if (c.kind === Kind.PictureBox) return;
  const [x, y, w, h] = c.rect;
  if (c.kind === Kind.TextBox) svgElement("rect", { x: x + 0.5, y: y + 0.5, width: w - 1, height: h - 1, fill: "#fff", stroke: "#808080" }, svg);
  const box = svgElement("foreignObject", { x, y, width: w, height: h }, svg);
  const text = box.appendChild(document.createElement("div"));
  text.className = "printed";
  text.textContent = c.text;
  Object.assign(text.style, { color: c.enabled ? c.foreground ?? "#000" : "#a0a0a0", width: w + "px", height: h + "px",
                              background: c.background ?? "transparent" });
}

const page = {
  build(d) {
    width = d.width;
    height = d.height;
    document.title = title = announced = d.caption;
    windowEl.style.width = width + "px";
    client.style.width = width + "px";
    client.style.height = height + "px";
    canvas.style.width = width + "px";
    canvas.style.height = height + "px";
    menuItems = [];
    for (const top of d.menus) buildMenu(top, null, 0);
    controls = d.controls.map(createControl);
    windowEl.hidden = false;
    context.font = '13px "Liberation Sans"';
    fit();
    performance.mark("quillion-ready");  // for the speed measurements
  },
  control(index, c) {
    if (controls[index]) applyControl(controls[index], c);
  },
  menu: applyMenu,
  // The title follows the caption once a turn: setting it costs the
  // browser far more than a run's step.
  caption(text) {
    title = text;
  },
  // The surface's keys go to the cursor's cell when there is one.
  focus(index) {
    const element = index < 0 ? canvas : controls[index]?.input ?? controls[index]?.control;
    element?.focus({ preventScroll: true });
    if (index < 0) focusCursor();
  },
  draw(clear, numbers, texts) {
    if (clear) {
      clearDrawing();
      gridsEl.replaceChildren();
      document.getElementById("marks").replaceChildren();
    }
    paint(decode(numbers, texts));
  },
  grid(index, left, top, cw, ch, columns, rows, names) {
    let grid = gridsEl.children[index];
    if (!grid || grid.cells.length !== columns * rows) {
      const fresh = document.createElement("div");
      fresh.className = "grid";
      fresh.setAttribute("role", "grid");
      Object.assign(fresh.style, { left: left + "px", top: top + "px", width: cw * columns + "px", height: ch * rows + "px" });
      fresh.cells = [];
      for (let r = 0; r < rows; ++r) {
        const row = document.createElement("div");
        row.setAttribute("role", "row");
        for (let c = 0; c < columns; ++c) {
          const cell = document.createElement("div");
          cell.className = "cell";
          cell.setAttribute("role", "gridcell");
          cell.tabIndex = -1;
          Object.assign(cell.style, { left: c * cw + "px", top: r * ch + "px", width: cw + "px", height: ch + "px" });
          row.appendChild(cell);
          fresh.cells.push(cell);
        }
        fresh.appendChild(row);
      }
      if (grid) grid.replaceWith(fresh); else gridsEl.appendChild(fresh);
      grid = fresh;
    }
    names.length = columns * rows;
    names.forEach((name, i) => {
      if (grid.cells[i].textContent !== name) grid.cells[i].textContent = name;
    });
    focusCursor();
  },
  // A hint's line marked over the drawing (never on paper), and its words
  // on the hinted cell for assistive technology.
  hint(boxes, grid, row, column, words) {
    const marks = document.getElementById("marks");
    marks.replaceChildren();
    for (let i = 0; i < boxes.length; i += 4) {
      const mark = marks.appendChild(document.createElement("div"));
      mark.className = "mark";
      Object.assign(mark.style, { left: boxes[i] + "px", top: boxes[i + 1] + "px", width: boxes[i + 2] + 1 + "px",
                                  height: boxes[i + 3] + 1 + "px" });
    }
    const cell = gridCell(grid, row, column);
    if (cell && words) cell.setAttribute("aria-description", words);
    else cell?.removeAttribute("aria-description");
  },
  cursor(grid, row, column, left, top, w, h) {
    cursorAt = grid < 0 ? null : { grid, row, column };
    focusCursor();
    cursorEl.hidden = grid < 0;
    Object.assign(cursorEl.style, { left: left - 1 + "px", top: top - 1 + "px", width: w + 3 + "px", height: h + 3 + "px" });
  },
  // Kept as they came (numbers and one string of texts), decoded only for
  // the print view: a run printed until stopped may print thousands.
  print(numbers, texts, controlsShown, w, h) {
    pages.push({ numbers, texts, controls: controlsShown, width: w, height: h });
  },
  endDocument() {
    runPages = runPages.concat(pages);
    pages = [];
  },
  showDocuments() {
    if (runPages.length === 0) return;
    documentPages = runPages;
    runPages = [];
    setTimeout(() => showPrintView(!new URLSearchParams(location.search).has("noprint")), 0);
  },
  // The program ended: the window closes where the browser lets a page
  // close itself (an installed app's window); elsewhere the pages of a run
  // still under way are shown to print, or the program starts afresh.
  ended() {
    ended = true;
    queue.length = 0;
    closeMenus();
    windowEl.hidden = true;
    document.title = title = "Quillion";
    if (matchMedia("(display-mode: standalone)").matches) window.close();
    page.endDocument();
    if (runPages.length > 0) page.showDocuments();
    else if (printview.hidden) location.reload();
  },
  nextEvent: () => queue.shift(),
  sleep(waitForEvent, wake) {
    if (ended) return;
    if (document.title !== title) document.title = title;
    // The title is said when the program waits for the user (a score, the
    // end of a run), not at each step of a run.
    if (waitForEvent && title !== announced) statusEl.textContent = announced = title;
    if (waitForEvent && queue.length === 0) waiting = wake;
    else wakeSoon(wake);
  },
};

// A cell of one of the grids described, if it is there.
function gridCell(index, row, column) {
  const grid = gridsEl.children[index];
  return grid?.cells[row * (grid.firstChild?.childElementCount ?? 0) + column];
}

// The cell under the cursor has the keys, as the desktop's focused cell
// does, unless a control holds them.
function focusCursor() {
  const cell = cursorAt && gridCell(cursorAt.grid, cursorAt.row, cursorAt.column);
  const active = document.activeElement;
  if (cell && (active === canvas || active === document.body || active?.classList.contains("cell"))) {
    cell.focus({ preventScroll: true });
  }
}

// The surface takes clicks and taps (a mouse's button or a finger) and,
// when no control has the focus, the keys.
canvas.addEventListener("pointerdown", (e) => {
  e.preventDefault();  // no focus moved after the program has placed it
  closeMenus();
  canvas.focus({ preventScroll: true });
  const r = canvas.getBoundingClientRect();
  const button = e.button === 2 ? 2 : e.button === 1 ? 4 : 1;
  post(Event.MouseDown, [button, classicShift(e), (e.clientX - r.left) / scale, (e.clientY - r.top) / scale]);
});
// Assistive technology presses a cell: a click at its centre.
gridsEl.addEventListener("click", (e) => {
  const cell = e.target.closest?.(".cell");
  if (!cell) return;
  const grid = cell.closest(".grid");
  post(Event.MouseDown, [1, 0, grid.offsetLeft + cell.offsetLeft + cell.offsetWidth / 2,
                         grid.offsetTop + cell.offsetTop + cell.offsetHeight / 2]);
});
canvas.addEventListener("contextmenu", (e) => e.preventDefault());
document.addEventListener("keydown", (e) => {
  if (!printview.hidden) return;
  if (e.key === "F10") return openMenuBar(e);
  if (e.ctrlKey || e.metaKey) return;  // the browser's own shortcuts
  // The window's keys are the program's: a letter that opens the entry box
  // (H) is not typed into it, and the arrows and Space do not scroll.
  if (e.key.length === 1 || e.key.startsWith("Arrow") || e.key === "Enter") e.preventDefault();
  post(Event.KeyDown, [-1, classicKey(e), classicShift(e)]);
});
document.addEventListener("mousedown", (e) => {
  if (!menubar.contains(e.target)) closeMenus();
});
window.addEventListener("resize", fit);
document.getElementById("printagain").addEventListener("click", () => window.print());
document.getElementById("closeprint").addEventListener("click", () => {
  printview.hidden = true;
  if (ended) location.reload();
  else canvas.focus();
});

// Kept for use with no network once the page has been visited.
if ("serviceWorker" in navigator) navigator.serviceWorker.register("sw.js").catch(() => {});

const seed = new URLSearchParams(location.search).get("seed");
// The program starts while the drawing's font still loads: nothing is drawn
// before the user asks for it, and its ascent places every number.
document.fonts.load('13px "Liberation Sans"').then(() => {
  context.font = '13px "Liberation Sans"';
  ascent = context.measureText("0").fontBoundingBoxAscent || ascent;
});
createQuillion({ page, arguments: seed === null ? [] : ["--seed", seed] });
