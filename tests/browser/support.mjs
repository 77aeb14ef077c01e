// A browser with pages of a server of its own, for tests that act as a user does and wait for what the page shows.
import assert from "node:assert/strict";
import { spawn } from "node:child_process";
import fs from "node:fs";
import os from "node:os";
import path from "node:path";
import { after, afterEach, before, beforeEach } from "node:test";
import { chromium } from "playwright-core";

export const root = process.env.KZ_ROOT;

export const SEA = `<svg xmlns="http://www.w3.org/2000/svg" width="200" height="100"
     xmlns:inkscape="http://www.inkscape.org/namespaces/inkscape" xmlns:sodipodi="http://sodipodi.sourceforge.net/DTD/sodipodi-0.dtd">
  <g inkscape:groupmode="layer" inkscape:label="Water">
    <rect id="sea" y="60" width="200" height="40" fill="navy"/>
    <rect id="hull" x="20" y="50" width="60" height="20" fill="red"/>
    <rect id="mast" x="48" y="10" width="4" height="40" fill="black"/>
    <circle id="buoy" cx="150" cy="60" r="10" fill="red"/>
  </g>
  <g inkscape:groupmode="layer" inkscape:label="Air">
    <circle id="sun" cx="170" cy="20" r="12" fill="gold"/>
    <circle id="moon" cx="110" cy="20" r="8" fill="none" stroke="gold" stroke-width="3"/>
  </g>
</svg>`;

let browser;

export const browserPath = "/usr/bin/chromium";

export async function startBrowser() {
  browser ??= await chromium.launch({ executablePath: browserPath, args: ["--no-sandbox"] });
  return browser;
}

export async function stopBrowser() {
  await browser?.close();
  browser = undefined;
}

// A folder of the test's own.
export function tempFolder() {
  return fs.mkdtempSync(path.join(os.tmpdir(), "kz-browser-"));
}

// kzdraw serve, with drawings by name. `program` is another one than the built one; `words` are its own, `variables` those
// of its environment that differ.
export class Server {
  static async start(drawings = { "sea.svg": SEA }, program = process.env.KZDRAW,
                     words = ["serve", "--no-open", ...Object.keys(drawings)], variables = {}) {
    const server = new Server();
    server.folder = tempFolder();
    for (const [name, text] of Object.entries(drawings)) fs.writeFileSync(path.join(server.folder, name), text);
    server.process = spawn(program, words, {
      cwd: server.folder, env: { ...process.env, XDG_CONFIG_HOME: path.join(server.folder, "config"), ...variables },
      stdio: ["ignore", "pipe", "inherit"],
    });
    server.address = await new Promise((resolve, reject) => {
      let text = "";
      server.process.stdout.on("data", bytes => {
        text += bytes;
        if (text.includes("\n")) resolve(text.trim());
      });
      server.process.once("exit", code => reject(new Error(`kzdraw serve ended with ${code}`)));
    });
    return server;
  }

  async stop() {
    const ended = new Promise(resolve => this.process.once("exit", resolve));
    this.process.kill("SIGTERM");
    const status = await ended;
    fs.rmSync(this.folder, { recursive: true, force: true });
    return status;
  }

  // A tab, in a window of its own.
  async open(options = {}) {
    const context = await (await startBrowser()).newContext({ viewport: { width: 1280, height: 800 }, reducedMotion: "reduce", ...options });
    await context.grantPermissions(["clipboard-read", "clipboard-write"]);
    const tab = new Tab(await context.newPage(), this);
    await tab.load(this.address);
    return tab;
  }
}

export class Tab {
  constructor(page, server) {
    this.page = page;
    this.server = server;
    this.errors = [];
    page.on("pageerror", error => this.errors.push(error.message));
    page.on("console", message => {  // a tile that came too late is none of the page's
      if (message.type() === "error" && !/404|ERR_/.test(message.text())) this.errors.push(message.text());
    });
  }

  async load(address) {
    if (address) await this.page.goto(address);
    else await this.page.reload();
    await this.page.waitForSelector("html[data-ready]");
  }

  close() { return this.page.context().close(); }

  // One more of the same server.
  another(options) { return this.server.open(options); }

  // Until the head says so: "1 selected".
  counts(text) { return this.page.locator("#counts", { hasText: text }).waitFor(); }

  tool(name) { return this.page.locator("#tools").getByRole("button", { name, exact: true }); }

  // Until the tiles of what is shown are there.
  tiles() { return this.page.waitForSelector('html[data-tiles*="/"]'); }

  // On the screen, of a place in user units of a drawing of that size, as long as the whole page is shown.
  async place(x, y, width = 200, height = 100) {
    const box = await this.page.locator("#map").boundingBox();
    const scale = Math.min((box.width - 48) / width, (box.height - 48) / height);
    return [box.x + box.width / 2 + (x - width / 2) * scale, box.y + box.height / 2 + (y - height / 2) * scale];
  }

  async clickAt(x, y, options) {
    await this.page.mouse.move(...await this.place(x, y));
    if (options?.shift) await this.page.keyboard.down("Shift");
    await this.page.mouse.click(...await this.place(x, y));
    if (options?.shift) await this.page.keyboard.up("Shift");
  }

  async drag(from, to, modifier) {
    if (modifier) await this.page.keyboard.down(modifier);
    await this.page.mouse.move(...await this.place(...from));
    await this.page.mouse.down();
    await this.page.mouse.move(...await this.place(...to), { steps: 4 });
    await this.page.mouse.up();
    if (modifier) await this.page.keyboard.up(modifier);
  }

  async chooseColor(name) {
    await this.page.getByRole("option", { name: new RegExp(`^${name},`) }).click();
  }

  async openDrawing(name) {
    await this.page.locator("#open").click();
    await this.page.getByRole("menuitem", { name }).click();
    await this.page.getByRole("heading", { name }).waitFor();
  }

  // A row of the open dialog's tree.
  row(name) { return this.page.locator("#tool-dialog").getByRole("treeitem", { name, exact: true }); }

  async rowIs(name, state) {
    await this.page.locator(`#tool-dialog .row[aria-checked="${state}"]`, { hasText: name }).first().waitFor();
  }

  dialogButton(name) { return this.page.locator("#tool-dialog").getByRole("button", { name, exact: true }); }

  async openTool(name, title) {
    await this.tool(name).click();
    await this.page.getByRole("dialog", { name: title }).locator(".row").first().waitFor();
  }

  dialogClosed() { return this.page.locator("#tool-dialog:not([open])").waitFor({ state: "attached" }); }

  // The lines of "Copy as script".
  async script() {
    await this.page.locator("#script").click();
    const text = await this.page.locator("#script-dialog pre").textContent();
    await this.page.locator("#script-dialog").getByRole("button", { name: "Close" }).click();
    return text;
  }
}

// For the tests of a file: a server for all, and for each a tab, handed to `take`, which ends without an error of the page.
export function eachInItsTab(drawings, take) {
  let server, tab;
  before(async () => { server = await Server.start(drawings); });
  after(async () => {
    await stopBrowser();
    assert.equal(await server.stop(), 0);
  });
  beforeEach(async () => take(tab = await server.open()));
  afterEach(async () => {
    assert.deepEqual(tab.errors, []);
    await tab.close();
  });
}

// How much of two pictures differs by more than what another version of the browser may draw otherwise: the part of all
// pixels of which a channel differs by over 48. Both are PNG files' bytes; 1 when they are not of one size.
export async function difference(picture, kept) {
  const page = await (await startBrowser()).newPage();
  const part = await page.evaluate(async files => {
    const pixels = await Promise.all(files.map(async file => {
      const bitmap = await createImageBitmap(await (await fetch(`data:image/png;base64,${file}`)).blob());
      const context = new OffscreenCanvas(bitmap.width, bitmap.height).getContext("2d");
      context.drawImage(bitmap, 0, 0);
      return context.getImageData(0, 0, bitmap.width, bitmap.height);
    }));
    if (pixels[0].width !== pixels[1].width || pixels[0].height !== pixels[1].height) return 1;
    const [one, other] = pixels.map(found => found.data);
    let differing = 0;
    for (let i = 0; i < one.length; i += 4) {
      if (Math.max(...[0, 1, 2].map(channel => Math.abs(one[i + channel] - other[i + channel]))) > 48) differing++;
    }
    return differing / (one.length / 4);
  }, [picture.toString("base64"), kept.toString("base64")]);
  await page.close();
  return part;
}
