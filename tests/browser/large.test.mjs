// A large drawing: panned and zoomed, and what it takes given back. How long frames take is told, not judged: the machine
// may be busy. What the page's own thread takes of the processor, in its longest task, is told beside it.
import assert from "node:assert/strict";
import { after, before, test } from "node:test";
import fs from "node:fs";
import { chromium } from "playwright-core";
import { browserPath, Server, startBrowser, stopBrowser } from "./support.mjs";

const COLUMNS = 400, ROWS = 250;
const LARGE = `<svg xmlns="http://www.w3.org/2000/svg" width="${COLUMNS * 4}" height="${ROWS * 4}">${
  Array.from({ length: COLUMNS * ROWS }, (_, i) =>
    `<rect x="${(i % COLUMNS) * 4}" y="${Math.floor(i / COLUMNS) * 4}" width="3" height="3" fill="hsl(${i % 360},60%,50%)"/>`).join("")}</svg>`;

let server;
before(async () => { server = await Server.start({ "large.svg": LARGE }); });
after(async () => {
  await stopBrowser();
  await server.stop();
});

// The longest task of the page's thread while something is done, in milliseconds of the processor.
async function longestTask(act) {
  const session = await (await startBrowser()).newBrowserCDPSession();
  const events = [];
  session.on("Tracing.dataCollected", part => events.push(...part.value));
  await session.send("Tracing.start", { transferMode: "ReportEvents", traceConfig: { includedCategories: ["toplevel"] } });
  await act();
  const complete = new Promise(resolve => session.once("Tracing.tracingComplete", resolve));
  await session.send("Tracing.end");
  await complete;
  const threads = new Set(events.filter(event => event.name === "thread_name" && event.args.name === "CrRendererMain").map(event => `${event.pid} ${event.tid}`));
  return Math.max(...events.filter(event => event.tdur && threads.has(`${event.pid} ${event.tid}`)).map(event => event.tdur)) / 1000;
}

// The longest and the median frame while something is done, in milliseconds.
async function frames(tab, act) {
  await tab.page.evaluate(() => {
    window.frames_ = [];
    let last = performance.now();
    const next = now => {
      window.frames_.push(now - last);
      last = now;
      if (window.frames_) window.frame_ = requestAnimationFrame(next);
    };
    window.frame_ = requestAnimationFrame(next);
  });
  await act();
  const times = await tab.page.evaluate(() => {
    cancelAnimationFrame(window.frame_);
    return window.frames_;
  });
  times.sort((a, b) => a - b);
  return { frames: times.length, median: times[times.length >> 1], p99: times[Math.floor(times.length * 0.99)], longest: times.at(-1) };
}

function told(what, figures) {
  const ms = value => `${value.toFixed(1)} ms`;
  console.log(`${what}: ${figures.frames} frames, median ${ms(figures.median)}, 99th of 100 ${ms(figures.p99)}, longest ${ms(figures.longest)}`);
}

test("100,000 objects are panned, zoomed and selected", async () => {
  const tab = await server.open({ reducedMotion: "no-preference" });
  await tab.counts("100,000 objects");
  await tab.tiles();
  const box = await tab.page.locator("#map").boundingBox();
  const middle = [box.x + box.width / 2, box.y + box.height / 2];
  for (const key of ["+", "+", "+", "+"]) {
    await tab.page.locator("#map").press(key);
    await tab.tiles();
  }
  const pan = async () => {
    await tab.page.mouse.move(...middle);
    await tab.page.mouse.down();
    for (let i = 0; i < 60; i++) await tab.page.mouse.move(middle[0] - 3 * i, middle[1] - 2 * i);
    for (let i = 60; i > 0; i--) await tab.page.mouse.move(middle[0] - 3 * i, middle[1] - 2 * i);
    await tab.page.mouse.up();
  };
  await pan();  // the tiles around
  await tab.tiles();
  told("panning, with tiles", await frames(tab, pan));
  await tab.tiles();
  const tilesDrawn = await tab.page.evaluate(() => performance.getEntriesByType("resource").filter(entry => entry.name.includes("/tiles/")).length);
  const zoom = async () => {
    await tab.page.mouse.move(...middle);
    for (let i = 0; i < 10; i++) await tab.page.mouse.wheel(0, i < 5 ? 120 : -120);
    await tab.tiles();
  };
  told("zooming", await frames(tab, zoom));
  console.log(`the page's longest task: ${(await longestTask(async () => { await pan(); await zoom(); })).toFixed(1)} ms of the processor`);
  console.log(`tiles drawn: ${tilesDrawn}`);
  assert.ok(tilesDrawn > 0);
  await tab.page.mouse.click(...middle);
  await tab.page.locator("#counts", { hasText: /100,000 objects/ }).waitFor();
  await tab.page.getByRole("button", { name: "Show the whole page" }).click();
  await tab.tool("Select by Attributes...").click();
  await tab.row("Rectangle").click();
  await tab.rowIs("Rectangle", "true");
  await tab.dialogButton("OK").click();
  await tab.counts("100,000 selected");
  assert.deepEqual(tab.errors, []);
  await tab.close();
});

// The processes that one has started, by whichever thread.
function children(pid) {
  const files = fs.readdirSync(`/proc/${pid}/task`).map(thread => `/proc/${pid}/task/${thread}/children`);
  return files.flatMap(file => fs.existsSync(file) ? fs.readFileSync(file, "utf8").split(" ").filter(Boolean) : []);
}

// Of a process and its children, in MiB.
function memory(pid) {
  return [pid, ...children(pid)].map(one => Number(/VmRSS:\s+(\d+)/.exec(fs.readFileSync(`/proc/${one}/status`, "utf8"))?.[1] ?? 0) / 1024)
    .reduce((sum, one) => sum + one);
}

test("what a killed browser has taken comes back", { timeout: 120000 }, async () => {
  const own = await Server.start({ "large.svg": LARGE });
  const { pid } = own.process;
  const before = memory(pid);
  const doomed = await chromium.launchServer({ executablePath: browserPath, args: ["--no-sandbox"] });
  const page = await (await chromium.connect(doomed.wsEndpoint())).newPage();
  await page.goto(own.address);
  await page.waitForSelector('html[data-tiles*="/"]');
  const meanwhile = memory(pid);
  await doomed.kill();
  // The server waits for a page that is only loaded again.
  while (children(pid).length > 0) await new Promise(setImmediate);
  const after = memory(pid);
  console.log(`memory: ${before.toFixed(0)} MiB, with the page ${meanwhile.toFixed(0)}, after it was killed ${after.toFixed(0)}`);
  assert.ok(after - before < (meanwhile - before) / 4, "what is left is the server's own");
  const tab = await own.open();
  await tab.counts("100,000 objects");
  await tab.close();
  assert.equal(await own.stop(), 0);
});
