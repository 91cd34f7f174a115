// How fast and small the web version is, in headless Chromium: a
// measurement, not a test. The bytes of a first visit (as served, and
// compressed as a server would send them), the time to a usable main page,
// a default run and a 101 by 101 run from the click to the print view, the
// longest task during the 101 by 101 run, and memory after 1 and 100 runs.
// Usage: node bench/web_speed.mjs SITE_FOLDER   (after scripts/web)
import { spawn } from "node:child_process";
import { readFileSync } from "node:fs";
import { createRequire } from "node:module";
import { join } from "node:path";
import { brotliCompressSync, gzipSync } from "node:zlib";

const require = createRequire(new URL("../tests/web/", import.meta.url));
const puppeteer = require("puppeteer-core");
const site = process.argv[2];
const server = spawn("/usr/bin/python3", [new URL("../scripts/serve-web.py", import.meta.url).pathname, site, "0"]);
const port = await new Promise((resolve) => server.stdout.on("data", (d) => resolve(/localhost:(\d+)/.exec(d)?.[1])));
const browser = await puppeteer.launch({ executablePath: "/usr/bin/chromium", headless: true, args: ["--no-sandbox"] });
const median = (xs) => [...xs].sort((a, b) => a - b)[Math.floor(xs.length / 2)];
const show = (label, value) => console.log(label.padEnd(52) + value);
try {
  // A first visit: every file fetched, as served and as it would be compressed.
  const page = await browser.newPage();
  const files = new Map();
  page.on("requestfinished", (r) => files.set(new URL(r.url()).pathname, 0));
  await page.goto(`http://localhost:${port}/?seed=1&noprint`, { waitUntil: "networkidle0" });
  let raw = 0, gzip = 0, brotli = 0;
  for (const path of files.keys()) {
    const bytes = readFileSync(join(site, path === "/" ? "index.html" : path));
    raw += bytes.length;
    gzip += gzipSync(bytes, { level: 9 }).length;
    brotli += brotliCompressSync(bytes).length;
  }
  show(`first visit, ${files.size} files`, `${(raw / 1024).toFixed(0)} KB, gzip ${(gzip / 1024).toFixed(0)} KB, brotli ${(brotli / 1024).toFixed(0)} KB`);

  // Navigation to the main page built and painted, five times (kept copy or not).
  const ready = [];
  for (let i = 0; i < 5; ++i) {
    const fresh = await browser.createBrowserContext();
    const tab = await fresh.newPage();
    await tab.goto(`http://localhost:${port}/?seed=1&noprint`);
    await tab.waitForFunction(() => performance.getEntriesByName("quillion-ready").length > 0);
    ready.push(await tab.evaluate(() => performance.getEntriesByName("quillion-ready")[0].startTime));
    await fresh.close();
  }
  show("navigation to a usable main page (median of 5)", `${median(ready).toFixed(0)} ms`);

  // Runs from the click to the print view; the longest task of the big one.
  const run = async (size, count) => {
    await page.goto(`http://localhost:${port}/?seed=1&noprint`, { waitUntil: "networkidle0" });
    for (const [name, text] of [["Text2", size], ["Text1", count]]) {
      await page.click(`[data-name=${name}]`, { clickCount: 3 });
      await page.keyboard.type(text);
    }
    return page.evaluate(() => new Promise((resolve) => {
      let longest = 0;
      new PerformanceObserver((list) => list.getEntries().forEach((e) => { longest = Math.max(longest, e.duration); }))
        .observe({ type: "longtask" });
      const view = document.getElementById("printview");
      const start = performance.now();
      new MutationObserver(() => view.dataset.ready !== undefined && resolve([performance.now() - start, longest]))
        .observe(view, { attributes: true });
      document.querySelector("[data-name=Command1]").click();
    }));
  };
  const small = [], big = [], longest = [];
  for (let i = 0; i < 5; ++i) small.push((await run("5", "25"))[0]);
  for (let i = 0; i < 5; ++i) {
    const [time, task] = await run("101", "1");
    big.push(time);
    longest.push(task);
  }
  show("default run (25 of 5 by 5, answers), click to print view", `median ${median(small).toFixed(0)} ms of ${small.map((t) => t.toFixed(0)).join(", ")}`);
  show("101 by 101 with puzzle and answers, click to print view", `median ${median(big).toFixed(0)} ms of ${big.map((t) => t.toFixed(0)).join(", ")}`);
  show("longest task during it (0: none of 50 ms or more)", `${Math.max(...longest).toFixed(0)} ms`);

  // Memory: the page's heap and nodes after one run and after a hundred.
  const session = await page.createCDPSession();
  const memory = async () => {
    await session.send("HeapProfiler.collectGarbage");
    const m = await page.metrics();
    return `${(m.JSHeapUsedSize / 1048576).toFixed(1)} MB heap, ${m.Nodes} nodes`;
  };
  await run("5", "25");
  const afterOne = await memory();
  for (let i = 0; i < 99; ++i) {
    await page.$eval("#closeprint", (b) => b.click());
    await page.evaluate(() => new Promise((resolve) => {
      const view = document.getElementById("printview");
      new MutationObserver(() => view.dataset.ready !== undefined && resolve()).observe(view, { attributes: true });
      document.querySelector("[data-name=Command1]").click();
    }));
  }
  show("memory after 1 run / after 100 runs", `${afterOne} / ${await memory()}`);
} finally {
  await browser.close();
  server.kill();
}
