// End to end in headless Chromium: the web version's main page and its
// captions under its content security policy, with no request after loading;
// a default run whose print view, printed to PDF, holds the same words at
// the same places as the batch's PDF for the same seed; a 101 by 101 run
// stopped by Q; practice puzzles solved by clicks, by keys, through the
// accessibility tree (after a hint read there) and by touch on a tablet held either way; the site
// offline and installable; hostile input and random clicks and taps; and no
// error in the page's console all along.
// Usage: node web_test.mjs SITE_FOLDER QUILLION_BINARY
import { execFileSync, spawn } from "node:child_process";
import { mkdtempSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import puppeteer, { KnownDevices } from "puppeteer-core";

const [site, binary] = process.argv.slice(2);
const work = mkdtempSync(join(tmpdir(), "quillion-web-"));
const errors = [];
let server, browser;

function finish(failure) {
  browser?.process()?.kill("SIGKILL");
  server?.kill();
  rmSync(work, { recursive: true, force: true });
  if (failure) console.error("FAIL: " + failure);
  process.exit(failure ? 1 : 0);
}
const check = (ok, what) => ok || finish(what);

// The site on a port of its own, and the browser.
server = spawn("/usr/bin/python3", [new URL("../../scripts/serve-web.py", import.meta.url).pathname, site, "0"]);
const port = await new Promise((resolve) => server.stdout.on("data", (d) => resolve(/localhost:(\d+)/.exec(d)?.[1])));
browser = await puppeteer.launch({ executablePath: "/usr/bin/chromium", headless: true,
                                   args: ["--no-sandbox", "--font-render-hinting=none"] });
const page = await browser.newPage();
await page.setViewport({ width: 1280, height: 900 });
page.on("console", (m) => m.type() === "error" && errors.push(m.text()));
page.on("pageerror", (e) => errors.push(e.message));

const open = (query) => page.goto(`http://localhost:${port}/?${query}`, { waitUntil: "networkidle0" });
const waitForTitle = (test, what, timeout = 30000, arg = null) =>
  page.waitForFunction(test, { timeout, polling: 20 }, arg).catch(async () => finish(`waited for ${what}; the title reads: ${await page.title()}`));
const texts = (selector) => page.$$eval(selector, (els) => els.filter((e) => !e.closest("[hidden]")).map((e) => e.textContent));
async function retype(name, text) {
  await page.click(`[data-name=${name}]`, { clickCount: 3 });
  await page.keyboard.type(text);
}

// The main page as the window shows it, locked down: the content security
// policy in the page and in the server's headers, and no request of any
// kind once the page has loaded (counted until the end of the first run).
const policy = (await open("seed=1&noprint")).headers()["content-security-policy"] ?? "";
check(policy.includes("script-src 'self' 'wasm-unsafe-eval';") && policy.includes("frame-ancestors 'none'") &&
      await page.$("meta[http-equiv=Content-Security-Policy]"), "the content security policy is missing");
let requests = [];
page.on("request", (r) => requests.push(r.url()));
check((await page.title()) === "Quillion", "the title is not Quillion");
const labels = (await texts(".label")).map((t) => t.trim());
for (const caption of ["Allow how many random starting numbers?", "Size of Square (Prime Number):", "Print how many squares?",
  "Starting Number:", "Distance Between Numbers:", "Last number equals: 25", "Leave how many blanks?", "Magic Total = 65",
  'How many (5 by 5) "Complete" Magic Squares are there?:']) {
  check(labels.includes(caption), `no caption "${caption}" on the main page: ${JSON.stringify(labels)}`);
}
check(JSON.stringify(await texts("button.control")) === JSON.stringify(['Create "Complete" Magic Square(s)',
  'Info on "Complete" Magic Squares', "Practice Solving Squares"]), "the main page's buttons differ");
check(JSON.stringify(await texts(".menubar > .menu > .title")) ===
  JSON.stringify(["Options", "Print Options", "Puzzle-mode", "Size of Square"]), "the menu bar differs");

// A default run: its print view on A4 against the batch's PDF, word by word.
await page.click("[data-name=Command1]");
await page.waitForSelector("#printview[data-ready]", { timeout: 30000 });
check(requests.length === 0, "the page asked for more after loading: " + requests.join(" "));
await page.pdf({ path: join(work, "web.pdf"), format: "A4", landscape: true });
execFileSync(binary, ["--seed", "1", "--output", join(work, "batch.pdf")], { env: { ...process.env, LC_ALL: "C.UTF-8" } });
const words = (file) => [...execFileSync("pdftotext", ["-bbox", file, "-"]).toString()
  .matchAll(/<page |<word xMin="([\d.]+)" yMin="([\d.]+)"[^>]*>([^<]*)</g)]
  .map((m) => (m[3] === undefined ? { page: true } : { x: +m[1], y: +m[2], text: m[3] }));
const [web, batch] = [words(join(work, "web.pdf")), words(join(work, "batch.pdf"))];
check(web.length === batch.length && batch.length > 600, `the print view has ${web.length} words and pages, the batch ${batch.length}`);
// Within a point and a half: the browser rounds the paper's printable area to
// whole pixels, which stretches the page by about a thousandth.
batch.forEach((b, i) => {
  const w = web[i];
  check(b.page ? w.page : w.text === b.text && Math.abs(w.x - b.x) < 1.5 && Math.abs(w.y - b.y) < 1.5,
        `word ${i} differs: the print view has ${JSON.stringify(w)}, the batch ${JSON.stringify(b)}`);
});
console.log(`default run: ${batch.filter((b) => b.page).length} pages, ${batch.length} words and pages alike`);
await page.click("#closeprint");

// A 101 by 101 run printed until stopped, stopped by Q: the page answered
// all along, and the main page comes back with the pages printed.
await retype("Text2", "101");
await retype("Text1", "0");
await page.click("[data-name=Command1]");
await waitForTitle(() => document.title.startsWith("Creating"), "the 101 by 101 run to start");
await page.evaluate(() => new Promise((r) => setTimeout(r, 300)));
const during = await page.accessibility.snapshot({ interestingOnly: false });
check(JSON.stringify(during).includes('"role":"menubar"'), "no menu bar in the accessibility tree during a run");
await page.keyboard.press("q");
await waitForTitle(() => document.title === "Quillion", "Q to end the run");
await page.waitForSelector("#printview[data-ready]", { timeout: 60000 });
check(await page.$eval("[data-name=Command1]", (b) => !b.hidden && !b.disabled), "Create is not back after Q");
const aborted = await page.$$eval("#sheets .sheet", (s) => s.length);
check(aborted > 0, "the stopped run's pages are not in the print view");
console.log(`101 by 101 run stopped by Q after ${aborted} pages`);
await page.click("#closeprint");

// Practice: "New Square" from the practice menu; then a puzzle solved by
// clicks, and the next by the arrows and Enter.
const menu = async (top, item) => {
  await page.evaluate((t) => [...document.querySelectorAll(".menubar > .menu:not([hidden]) > .title")]
    .find((e) => e.textContent === t).click(), top);
  await page.evaluate((i) => [...document.querySelectorAll(".popup:not([hidden]) > .item:not([hidden])")]
    .find((e) => e.textContent.endsWith(i)).click(), item);
};
await open("seed=7");
await retype("Text3", "6");
await page.click("[data-name=Command4]");
const score = (n) => `Number of (5 by 5) Complete Magic Square(s) solved: ${n}`;
// The blanks of a 5 by 5 puzzle, worked out line by line (rows, columns and
// broken diagonals all sum to 65) in the order found: [cell, number].
function solve(names) {
  const known = new Map(names.flatMap((n, i) => (n === "blank" ? [] : [[i, Number(n)]])));
  const lines = [];
  for (let k = 0; k < 5; ++k) {
    lines.push([0, 1, 2, 3, 4].map((c) => k * 5 + c), [0, 1, 2, 3, 4].map((r) => r * 5 + k),
               [0, 1, 2, 3, 4].map((r) => r * 5 + ((r + k) % 5)), [0, 1, 2, 3, 4].map((r) => r * 5 + ((k - r + 5) % 5)));
  }
  const found = [];
  while (known.size < 25) {
    const line = lines.find((l) => l.filter((i) => !known.has(i)).length === 1);
    check(line, "the puzzle cannot be worked out line by line");
    const at = line.find((i) => !known.has(i));
    known.set(at, 65 - line.reduce((s, i) => s + (known.get(i) ?? 0), 0));
    found.push([at, known.get(at)]);
  }
  return found;
}
// The next puzzle's blanks and the centres of its cells on the screen.
async function puzzle(solved) {
  await waitForTitle((s) => document.title.startsWith(s), "a puzzle", 30000, score(solved));
  // The puzzle's own grid: not one marked as seen before.
  await page.waitForFunction(() => document.querySelectorAll("#grids [role=grid]:not(.seen) [role=gridcell]").length === 25,
                             { timeout: 10000 });
  const cells = await page.$$eval("#grids [role=grid]:not(.seen) [role=gridcell]", (all) => all.map((c) => {
    const r = c.getBoundingClientRect();
    return { name: c.textContent, x: r.x + r.width / 2, y: r.y + r.height / 2 };
  }));
  await page.$eval("#grids [role=grid]:not(.seen)", (g) => g.classList.add("seen"));
  return { found: solve(cells.map((c) => c.name)), cells };
}
async function answer(value, last) {
  await page.waitForFunction(() => document.activeElement?.dataset.name === "Text6", { timeout: 5000 })
    .catch(() => finish("no entry box took the keys"));
  await page.keyboard.type(String(value));
  await page.keyboard.press("Enter");
  if (!last) await page.waitForFunction(() => document.activeElement?.dataset.name !== "Text6", { timeout: 5000 });
}
await puzzle(0);
await menu("Options", "New Square");
let { found, cells } = await puzzle(0);
for (const [n, [at, value]] of found.entries()) {
  await page.mouse.click(cells[at].x, cells[at].y);
  await answer(value, n === found.length - 1);
}
({ found } = await puzzle(1));
let cursor = 0;
for (const [n, [at, value]] of found.entries()) {
  const [r, c, cr, cc] = [Math.floor(at / 5), at % 5, Math.floor(cursor / 5), cursor % 5];
  for (let k = 0; k < Math.abs(r - cr); ++k) await page.keyboard.press(r > cr ? "ArrowDown" : "ArrowUp");
  for (let k = 0; k < Math.abs(c - cc); ++k) await page.keyboard.press(c > cc ? "ArrowRight" : "ArrowLeft");
  cursor = at;
  await page.keyboard.press("Enter");
  await answer(value, n === found.length - 1);
}
await waitForTitle((s) => document.title.startsWith(s), "the second puzzle to count as solved", 10000, score(2));
console.log("practice: solved by clicks and by keys: " + (await page.title()));

// A screen reader's way: the third puzzle read from the accessibility tree,
// each blank pressed there, the number typed into the focused entry box,
// the score heard from the live region.
const tree = async () => page.accessibility.snapshot({ interestingOnly: false });
const nodes = (node, role) => [...(node.role === role ? [node] : []), ...(node.children ?? []).flatMap((c) => nodes(c, role))];
const focused = (node) => (node.focused ? node : (node.children ?? []).map(focused).find(Boolean));
await puzzle(2);
// A hint first (H): the entry box opens, says the hint's words, and the line is marked; Escape closes it.
await page.keyboard.press("h");
const hinted = focused(await tree());
check(hinted?.role === "textbox" && /^Hint: .*; the magic total is 65$/.test(hinted.description ?? ""),
      `the hint's entry box reads ${JSON.stringify(hinted)}`);
check((await page.$$("#marks .mark")).length >= 4, "no hint marks on the screen");
await page.keyboard.press("Escape");
const whole = await tree();
check(nodes(whole, "textbox").every((box) => box.name), "a box without a name");
const grid = nodes(whole, "grid").at(-1);
const axCells = nodes(grid, "gridcell");
check(axCells.length === 25 && focused(grid)?.role === "gridcell", "the puzzle is not a grid of 25 cells with the cursor's cell focused");
found = solve(axCells.map((c) => c.name));
for (const [n, [at, value]] of found.entries()) {
  await (await axCells[at].elementHandle()).evaluate((cell) => cell.click());
  const box = focused(await tree());
  check(box?.role === "textbox" && box.name === `row ${Math.floor(at / 5) + 1}, column ${(at % 5) + 1}`,
        `pressing a blank focused ${JSON.stringify(box)}`);
  await answer(value, n === found.length - 1);
}
await waitForTitle((s) => document.title.startsWith(s), "the third puzzle to count as solved", 10000, score(3));
await page.waitForFunction(() => document.getElementById("status").textContent === document.title, { timeout: 5000 })
  .catch(() => finish("the score was not announced"));
console.log("practice: solved through the accessibility tree");

// By touch on a tablet, held either way: the window fits the screen, a tap
// on a blank opens the entry box with a number keyboard.
for (const device of ["iPad Pro 11", "iPad Pro 11 landscape"]) {
  await page.emulate(KnownDevices[device]);
  await open("seed=11");
  const fits = await page.$eval("#window", (w) => w.getBoundingClientRect().right <= innerWidth + 1 &&
                                                 w.getBoundingClientRect().bottom <= innerHeight + 1);
  check(fits, `the window does not fit the ${device}'s screen`);
  await page.tap("[data-name=Command4]");
  ({ found, cells } = await puzzle(0));
  for (const [n, [at, value]] of found.entries()) {
    await page.touchscreen.tap(cells[at].x, cells[at].y);
    if (n === 0) check(await page.$eval("[data-name=Text6]", (b) => b.inputMode === "decimal"), "no number keyboard");
    await answer(value, n === found.length - 1);
  }
  await waitForTitle((s) => document.title.startsWith(s), `a puzzle solved by touch on the ${device}`, 10000, score(1));
}
await page.emulate({ viewport: { width: 1280, height: 900 }, userAgent: await browser.userAgent() });
console.log("touch: a puzzle solved by taps, upright and on its side");

// Offline: once visited, the page loads and runs with no network at all.
await page.evaluate(() => navigator.serviceWorker.ready);
await page.setOfflineMode(true);
await open("seed=1&noprint");
await page.click("[data-name=Command1]");
await page.waitForSelector("#printview[data-ready]", { timeout: 30000 });
await page.setOfflineMode(false);
const { installabilityErrors } = await (await page.createCDPSession()).send("Page.getInstallabilityErrors");
check(installabilityErrors.length === 0, "not installable: " + JSON.stringify(installabilityErrors));
console.log("offline: loaded and ran from the kept copy; installable as an app");

// Hostile input in every box, then clicks and taps at random during runs
// and practice: no trap, no error, and the main page as it was after each
// abort and after practice.
await open("seed=5&noprint");
let draw = 5;
const random = (n) => ((draw = (draw * 1103515245 + 12345) % 2147483648) % n);
const mainPage = () => page.$$eval(".control", (all) => all.map((c) => `${c.dataset.name} ${c.hidden} ${c.disabled} ${c.value ?? c.textContent}`).join("\n"));
const hostile = ["9".repeat(400), "abc", "1e308", "-1e308", "-", "+-1.5e", ".5.5", "1E+99999", "-0", "٣", "<b>x</b>&amp;"];
for (const name of ["Text7", "Text2", "Text1", "text4", "Text5", "Text3"]) {
  for (const text of hostile) await retype(name, text);
  await retype(name, hostile[random(hostile.length)]);
}
// Then settings that make a run: printed until stopped, five blanks.
for (const [name, text] of [["text4", "1"], ["Text5", "1"], ["Text1", "0"], ["Text3", "5"]]) await retype(name, text);
for (const start of ["Command1", "Command4"]) {
  await retype("Text2", start === "Command1" ? ["5", "7", "101"][random(3)] : "5");
  // A run or practice takes the boxes' corrected values: as they are after one.
  const stop = async () => {
    if (start === "Command1") await page.keyboard.press("q");
    else await menu("Options", "Quit playing");
    await waitForTitle(() => document.title === "Quillion", "the main page after " + start);
    if (start === "Command1") await page.waitForSelector("#printview[data-ready]", { timeout: 60000 });
    await page.$eval("#closeprint", (b) => b.click());
  };
  await page.click(`[data-name=${start}]`);
  await waitForTitle(() => document.title !== "Quillion", "a start");
  await stop();
  const before = await mainPage();
  await page.click(`[data-name=${start}]`);
  for (let k = 0; k < 40; ++k) {
    const [x, y] = [random(760), 25 + random(540)];
    if (k % 3 === 0) await page.touchscreen.tap(x, y); else await page.mouse.click(x, y);
    if (k % 5 === 0) await page.keyboard.type(hostile[random(hostile.length)].slice(0, 20));
    if (k % 7 === 0) await page.keyboard.press(["ArrowUp", "Enter", "Escape", " ", "ArrowLeft"][random(5)]);
  }
  await stop();
  check((await mainPage()) === before, `the main page differs after ${start}:\n${await mainPage()}\nwas\n${before}`);
}
console.log("hostile input and random clicks: no error, the main page back each time");

check(errors.length === 0, "the page's console says: " + errors.join(" | "));
finish();
