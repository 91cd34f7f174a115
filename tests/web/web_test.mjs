// End to end in headless Chromium: the web version's main page and its
// captions under its content security policy, with no request after loading;
// a default run whose print view, printed to PDF, holds the same words at
// the same places as the batch's PDF for the same seed; a 101 by 101 run
// stopped by Q; practice puzzles solved by hints read from the accessibility
// tree, each blank opened by a click, the keys, a press in the tree or a tap
// on a tablet held either way; the site offline and installable; hostile
// input and random clicks and taps; and no error in the page's console all
// along.
// Usage: node web_test.mjs SITE_FOLDER QUILLION_BINARY
import { execFileSync, spawn } from "node:child_process";
import { mkdtempSync, rmSync } from "node:fs";
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
const shown = await page.$$eval(".label, button.control, .menubar > .menu > .title",
                                (all) => all.filter((e) => !e.closest("[hidden]")).map((e) => e.textContent.trim()));
for (const caption of ["Allow how many random starting numbers?", "Size of Square (Prime Number):", "Print how many squares?",
  "Starting Number:", "Distance Between Numbers:", "Last number equals: 25", "Leave how many blanks?", "Magic Total = 65",
  'How many (5 by 5) "Complete" Magic Squares are there?:', 'Create "Complete" Magic Square(s)',
  'Info on "Complete" Magic Squares', "Practice Solving Squares", "Options", "Print Options", "Puzzle-mode", "Size of Square"]) {
  check(shown.includes(caption), `"${caption}" is not on the main page: ${JSON.stringify(shown)}`);
}

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

// Practice: "New Square" from the practice menu; then puzzles solved blank
// by blank as a hint (H) shows them, read from the accessibility tree: the
// focused entry box names its cell and its words give the number, and the
// line is marked. After Escape the blank is opened again by a click, by the
// arrows and Enter, or pressed in the accessibility tree, in turn; the score
// is heard from the live region.
const menu = async (top, item) => {
  await page.evaluate((t) => [...document.querySelectorAll(".menubar > .menu:not([hidden]) > .title")]
    .find((e) => e.textContent === t).click(), top);
  await page.evaluate((i) => [...document.querySelectorAll(".popup:not([hidden]) > .item:not([hidden])")]
    .find((e) => e.textContent.endsWith(i)).click(), item);
};
const score = (n) => `Number of (5 by 5) Complete Magic Square(s) solved: ${n}`;
const tree = async () => page.accessibility.snapshot({ interestingOnly: false });
const nodes = (node, role) => [...(node.role === role ? [node] : []), ...(node.children ?? []).flatMap((c) => nodes(c, role))];
const focused = (node) => (node.focused ? node : (node.children ?? []).map(focused).find(Boolean));
const entryBoxFocused = (yes) => page.waitForFunction((y) => (document.activeElement?.dataset.name === "Text6") === y,
                                                      { timeout: 5000 }, yes);
// The next puzzle solved, each blank opened by `open(at, centre, n)`, the n-th.
async function solve(solved, open) {
  await waitForTitle((s) => document.title.startsWith(s), "a puzzle", 30000, score(solved));
  const grid = "#grids [role=grid]:not(.seen)";  // the puzzle's own: not one solved before
  await page.waitForFunction((g) => document.querySelectorAll(`${g} [role=gridcell]`).length === 25, { timeout: 10000 }, grid);
  const centres = await page.$$eval(`${grid} [role=gridcell]`, (all) => all.map((c) => {
    const r = c.getBoundingClientRect();
    return { x: r.x + r.width / 2, y: r.y + r.height / 2 };
  }));
  await page.$eval(grid, (g) => g.classList.add("seen"));
  for (let n = 0; (await page.title()).startsWith(score(solved)); ++n) {
    await page.keyboard.press("h");
    const box = focused(await tree());
    const cell = /^row (\d), column (\d)$/.exec(box?.name);
    const words = /^Hint: .*, which make (\d+); the magic total is 65$/.exec(box?.description);
    check(box?.role === "textbox" && cell && words, `the hint's entry box reads ${JSON.stringify(box)}`);
    check((await page.$$("#marks .mark")).length >= 4, "no hint marks on the screen");
    await page.keyboard.press("Escape");
    const at = (cell[1] - 1) * 5 + (cell[2] - 1);
    await open(at, centres[at], n);
    await entryBoxFocused(true).catch(() => finish("no entry box took the keys"));
    check(focused(await tree())?.name === box.name, "the blank opened is not the one hinted");
    await page.keyboard.type(String(65 - words[1]));
    await page.keyboard.press("Enter");
    await entryBoxFocused(false);
  }
  await waitForTitle((s) => document.title.startsWith(s), "the puzzle to count as solved", 10000, score(solved + 1));
}
await open("seed=7");
await retype("Text3", "6");
await page.click("[data-name=Command4]");
await waitForTitle((s) => document.title.startsWith(s), "practice", 30000, score(0));
await page.waitForSelector("#grids [role=grid]");
await page.$eval("#grids [role=grid]", (g) => g.classList.add("seen"));  // the puzzle "New Square" replaces
await menu("Options", "New Square");
await solve(0, async (at, centre, n) => {
  if (n % 3 === 0) return page.mouse.click(centre.x, centre.y);
  const [away, back] = at % 5 < 4 ? ["ArrowRight", "ArrowLeft"] : ["ArrowLeft", "ArrowRight"];
  if (n % 3 === 1) for (const key of [away, back, "Enter"]) await page.keyboard.press(key);
  if (n % 3 !== 2) return;
  const whole = await tree();
  check(nodes(whole, "textbox").every((box) => box.name), "a box without a name");
  const cells = nodes(nodes(whole, "grid").at(-1), "gridcell");
  check(cells.length === 25 && focused(cells[at]), "the puzzle is not a grid of 25 cells with the cursor's cell focused");
  await (await cells[at].elementHandle()).evaluate((c) => c.click());
});
await page.waitForFunction(() => document.getElementById("status").textContent === document.title, { timeout: 5000 })
  .catch(() => finish("the score was not announced"));
console.log("practice: solved by hints through the accessibility tree, by clicks, keys and presses: " + (await page.title()));

// By touch on a tablet, held either way: the window fits the screen, a tap
// on a blank opens the entry box with a number keyboard.
for (const device of ["iPad Pro 11", "iPad Pro 11 landscape"]) {
  await page.emulate(KnownDevices[device]);
  await open("seed=11");
  const fits = await page.$eval("#window", (w) => w.getBoundingClientRect().right <= innerWidth + 1 &&
                                                 w.getBoundingClientRect().bottom <= innerHeight + 1);
  check(fits, `the window does not fit the ${device}'s screen`);
  await page.tap("[data-name=Command4]");
  await solve(0, async (at, centre, n) => {
    await page.touchscreen.tap(centre.x, centre.y);
    if (n === 0) check(await page.$eval("[data-name=Text6]", (b) => b.inputMode === "decimal"), "no number keyboard");
  });
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

// Hostile input in every box, then clicks and taps at random during a 101
// by 101 run printed until stopped by Q and during practice: no trap, no
// error, the menu bar in the accessibility tree all along, and the main
// page as it was after each stop, with Create back and the pages printed
// in the print view.
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
  await retype("Text2", start === "Command1" ? "101" : "5");
  // A run or practice takes the boxes' corrected values: as they are after one.
  const stop = async () => {
    check(JSON.stringify(await tree()).includes('"role":"menubar"'), "no menu bar in the accessibility tree");
    if (start === "Command1") await page.keyboard.press("q");
    else await menu("Options", "Quit playing");
    await waitForTitle(() => document.title === "Quillion", "the main page after " + start);
    if (start === "Command1") {
      await page.waitForSelector("#printview[data-ready]", { timeout: 60000 });
      check(await page.$eval("[data-name=Command1]", (b) => !b.hidden && !b.disabled), "Create is not back after Q");
      check((await page.$$("#sheets .sheet")).length > 0, "the stopped run's pages are not in the print view");
    }
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
