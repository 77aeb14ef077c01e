// The page around the tools: opening, downloads, reloads, tabs, languages, names that look like markup, every size.
import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import fs from "node:fs";
import path from "node:path";
import { after, before, test } from "node:test";
import { difference, root, SEA, Server, stopBrowser, tempFolder } from "./support.mjs";

const EVIL = "<script>window.pwned=1</script>";
const MARKUP = `<svg xmlns="http://www.w3.org/2000/svg" width="200" height="100" onload="window.pwned=2"
     xmlns:inkscape="http://www.inkscape.org/namespaces/inkscape">
  <script>window.pwned=3</script>
  <defs><linearGradient id="paint" inkscape:label="&lt;img src=x onerror=window.pwned=4&gt;"><stop stop-color="teal"/></linearGradient></defs>
  <g inkscape:groupmode="layer" inkscape:label="${EVIL.replaceAll("<", "&lt;")}">
    <rect id="&lt;b&gt;one&lt;/b&gt;" width="100" height="100" fill="url(#paint)"/>
    <rect id="&lt;script&gt;'&quot;two" x="100" width="100" height="100" fill="red"/>
  </g></svg>`;

let server;
before(async () => { server = await Server.start({ "sea.svg": SEA, "other.svg": SEA.replaceAll("gold", "teal"), [`${EVIL.replaceAll("/", "")}.svg`]: MARKUP }); });
after(async () => {
  await stopBrowser();
  await server.stop();
});

// A tab for one test, without an error of the page.
function inTab(name, act, options) {
  test(name, async () => {
    const tab = await server.open(options);
    await act(tab);
    assert.deepEqual(tab.errors, []);
    await tab.close();
  });
}

async function drop(tab, name, text) {
  const data = await tab.page.evaluateHandle(([file, bytes]) => {
    const transfer = new DataTransfer();
    transfer.items.add(new File([bytes], file, { type: "image/svg+xml" }));
    return transfer;
  }, [name, text]);
  await tab.page.dispatchEvent("#stage", "drop", { dataTransfer: data });
}

inTab("the secret leaves the address", async tab => {
  assert.doesNotMatch(tab.page.url(), /secret/);
});

inTab("a dropped file opens", async tab => {
  await drop(tab, "dropped.svg", SEA.replace('id="sun"', 'id="sun" display="none"'));
  await tab.page.getByRole("heading", { name: "dropped.svg" }).waitFor();
});

inTab("a dropped file that is no drawing is told, and the drawing stays", async tab => {
  await drop(tab, "bad.svg", "<svg");
  await tab.page.getByText(/bad\.svg:1: /).waitFor();
  assert.equal(await tab.page.locator("#file-name").textContent(), "sea.svg");
});

inTab("another drawing of the command line opens from the menu", async tab => {
  await tab.page.keyboard.press("Control+o");
  await tab.page.getByRole("menuitem", { name: "other.svg" }).click();
  await tab.page.getByRole("option", { name: /^teal,/ }).waitFor();
});

const STRANGE = {
  "nosize.svg": '<svg xmlns="http://www.w3.org/2000/svg"><rect x="10" y="20" width="500" height="300" fill="teal"/></svg>',
  "empty.svg": '<svg xmlns="http://www.w3.org/2000/svg"/>',
  "layers.svg": `<svg xmlns="http://www.w3.org/2000/svg" xmlns:inkscape="http://www.inkscape.org/namespaces/inkscape" width="200" height="100">${
    Array.from({ length: 50 }, (_, i) => `<g inkscape:groupmode="layer" inkscape:label="Layer ${i} ${"long ".repeat(i)}"><rect x="${i}" width="9" height="9"/></g>`).join("")}</svg>`,
  "colors.svg": `<svg xmlns="http://www.w3.org/2000/svg" width="200" height="100">${
    Array.from({ length: 10000 }, (_, i) => `<path d="M${i % 200} ${Math.floor(i / 100)}h1v1z" fill="#${(0x100000 + i * 37).toString(16)}"/>`).join("")}</svg>`,
};

test("strange drawings: no size, empty, fifty layers, ten thousand colors", async () => {
  const strange = await Server.start(STRANGE);
  const tab = await strange.open();
  await tab.counts("1 object");
  await tab.tiles();
  await tab.clickAt(100, 50);  // of a page as large as one without a size is
  await tab.counts("1 selected");
  await tab.openDrawing("empty.svg");
  await tab.counts("0 objects");
  await tab.page.locator("#layers:empty").waitFor({ state: "attached" });
  assert.equal(await tab.page.getByRole("option").count(), 0);
  assert.equal(await tab.tool("Select by Attributes...").isDisabled(), true);
  await tab.openDrawing("layers.svg");
  await tab.counts("50 objects");
  await tab.page.locator("#layers li:nth-child(50)").waitFor({ state: "attached" });
  assert.equal(await tab.page.evaluate(() => {
    const list = document.getElementById("layers");
    list.scrollTop = list.scrollHeight;
    return list.scrollTop > 0 && list.scrollWidth === list.clientWidth;
  }), true);
  assert.ok((await tab.tool("View Filter...").boundingBox()).y > 0, "the tools stay in sight");
  await tab.openDrawing("colors.svg");
  await tab.counts("10,000 objects");
  await tab.page.locator('#swatches [aria-setsize="10000"]').first().waitFor();
  await tab.page.locator("#swatches").focus();
  await tab.page.keyboard.press("End");
  await tab.page.locator('[aria-posinset="10000"][aria-selected="true"]').waitFor();
  assert.ok(await tab.page.getByRole("option").count() < 200);
  await tab.page.keyboard.press("Enter");
  await tab.page.locator("#color-card").getByRole("button", { name: "Hide This Color" }).click();
  await tab.counts("1 hidden");
  assert.deepEqual(tab.errors, []);
  await tab.close();
  assert.equal(await strange.stop(), 0);
});

test("the address is opened where there is a desktop", async () => {
  const folder = tempFolder();
  const given = path.join(folder, "given");
  execFileSync("mkfifo", [given]);
  fs.writeFileSync(path.join(folder, "xdg-open"), `#!/bin/sh\necho "$1" > '${given}'\n`, { mode: 0o755 });
  const desktop = await Server.start({ "sea.svg": SEA }, process.env.KZDRAW, ["serve", "sea.svg"],
                                     { PATH: `${folder}:${process.env.PATH}`, DISPLAY: ":99" });
  assert.equal((await fs.promises.readFile(given, "utf8")).trim(), desktop.address);
  assert.match(desktop.address, /^http:\/\/127\.0\.0\.1:\d+\/\?secret=[0-9a-f]+$/);
  await desktop.stop();
  fs.rmSync(folder, { recursive: true });
});

test("in a narrow window the panel closes by Escape, beside it and with a tool", async () => {
  const tab = await server.open({ viewport: { width: 360, height: 720 } });
  const panel = tab.page.getByRole("button", { name: "Tools and layers" });
  const isOpen = state => tab.page.locator(`#panel[aria-expanded="${state}"]`).waitFor();
  await tab.counts("6 objects");
  await panel.click();
  await isOpen(true);
  await tab.page.keyboard.press("Escape");
  await isOpen(false);
  assert.equal(await panel.evaluate(button => document.activeElement === button), true);
  await panel.click();
  await isOpen(true);
  await tab.page.mouse.click(350, 600);
  await isOpen(false);
  await panel.click();
  await tab.openTool("View Filter...", "View Filter");
  await isOpen(false);
  await tab.dialogButton("Cancel").click();
  await tab.dialogClosed();
  assert.deepEqual(tab.errors, []);
  await tab.close();
});

inTab("the drawing and its picture can be downloaded", async tab => {
  const download = async entry => {
    await tab.page.getByRole("button", { name: "Download" }).click();
    const coming = tab.page.waitForEvent("download");
    await tab.page.getByRole("menuitem", { name: entry, exact: true }).click();
    const file = await coming;
    return [file.suggestedFilename(), fs.readFileSync(await file.path())];
  };
  await tab.chooseColor("red");
  await tab.tool("Hide This Color").click();
  await tab.counts("2 hidden");
  const [name, whole] = await download("Drawing, SVG");
  assert.equal(name, "sea.svg");
  assert.equal(whole.toString(), SEA);
  const [, shown] = await download("Drawing as shown, SVG");
  assert.doesNotMatch(shown.toString(), /hull/);
  const [, picture] = await download("Picture, PNG");
  assert.equal(picture.subarray(1, 4).toString(), "PNG");
});

inTab("a reload keeps the session, even its open dialog", async tab => {
  await tab.clickAt(30, 55);
  await tab.counts("1 selected");
  await tab.openTool("View Filter...", "View Filter");
  await tab.row("navy").click();
  await tab.rowIs("navy", "false");
  await tab.load();
  await tab.rowIs("navy", "false");
  await tab.dialogButton("OK").click();
  await tab.dialogClosed();
  await tab.counts("1 hidden");
  assert.match(await tab.script(), /^open sea\.svg\nselect hull\ntool AViewFilterTool\nclick 'RGB Color\/navy'\npress OK\n$/);
});

test("two tabs have a drawing each", async () => {
  const one = await server.open();
  const other = await server.open();
  await one.chooseColor("red");
  await one.tool("Hide This Color").click();
  await one.counts("2 hidden");
  assert.equal(await other.page.locator("#counts").textContent(), "6 objects");
  await other.clickAt(30, 55);
  await other.counts("1 selected");
  assert.equal(await one.page.locator("#counts").textContent(), "6 objects · 2 hidden");
  await one.close();
  await other.close();
});

test("one tab too many is told why, and starts once another is closed", { timeout: 120000 }, async () => {
  const own = await Server.start();
  const tabs = [];
  for (let i = 0; i < 4; i++) tabs.push(await own.open());
  const late = await own.open();
  const told = late.page.getByRole("dialog", { name: "No session could be started" });
  await told.getByText("as many drawings are open as there may be: close a tab").waitFor();
  await tabs[0].close();
  while (await told.isVisible()) {
    await Promise.all([late.page.waitForEvent("load"), told.getByRole("button", { name: "Start again" }).click()]);
    await late.page.waitForSelector("html[data-ready]");
  }
  await late.counts("6 objects");
  for (const tab of [...tabs.slice(1), late]) await tab.close();
  assert.equal(await own.stop(), 0);
});

inTab("what was done is copied as a script that kzdraw runs", async tab => {
  await tab.chooseColor("red");
  await tab.tool("Hide This Color").click();
  await tab.counts("2 hidden");
  await tab.page.locator("#script").click();
  await tab.page.locator("#script-dialog").getByRole("button", { name: "Copy" }).click();
  await tab.page.getByRole("button", { name: "Copied" }).waitFor();
  const copied = await tab.page.evaluate(() => navigator.clipboard.readText());
  assert.equal(copied, "open sea.svg\ntool AHideThisTool 'color:RGB Color/red'\n");
});

inTab("names that look like markup are text", async tab => {
  await tab.page.locator("#open").click();
  await tab.page.getByRole("menuitem", { name: "<script>" }).click();
  await tab.counts("2 objects");
  await tab.page.locator("#layers", { hasText: "<script>window.pwned=1<" }).waitFor();
  await tab.clickAt(150, 50);
  await tab.counts("1 selected");
  await tab.openTool("Select by Attributes...", "Select by Attributes");
  await tab.page.getByRole("tab", { name: "Layer" }).click();
  await tab.page.locator("#tool-dialog .row").first().waitFor();
  await tab.page.keyboard.press("Escape");
  await tab.dialogClosed();
  await tab.page.getByRole("option").first().click();
  assert.match(await tab.script(), /select "<script>'\\"two"/);
  assert.equal(await tab.page.evaluate(() => window.pwned), undefined);
  assert.equal(await tab.page.locator("main script, aside script, footer script, dialog script, #stage img[src=x]").count(), 0);
});

test("the texts are those of a language module", async () => {
  const folder = tempFolder();
  const built = path.dirname(process.env.KZDRAW);
  fs.cpSync(built, folder, { recursive: true, filter: name => !/test_|_bench|\.a$/.test(path.basename(name)) });
  fs.copyFileSync(path.join(built, "Languages/de/kzattributeloc.dll"), path.join(folder, "Plugins/kzattributeloc.dll"));
  const german = await Server.start({ "sea.svg": SEA }, path.join(folder, "kzdraw"));
  const tab = await german.open();
  assert.equal(await tab.tool("Select Similar Objects").count(), 0);
  const names = await tab.page.locator("#tools button").allTextContents();
  assert.equal(names.length, 9);
  await tab.page.locator('[data-tool="AViewFilterTool"]').click();
  await tab.page.locator("#tool-dialog .row").first().waitFor();
  await tab.page.locator("#tool-dialog").getByRole("button", { name: "Abbrechen" }).click();
  await tab.dialogClosed();
  await tab.close();
  await german.stop();
  fs.rmSync(folder, { recursive: true, force: true });
});

inTab("a session that has ended is told, and a new one starts", async tab => {
  await tab.page.evaluate(() => sessionStorage.setItem("kzdraw-session", JSON.stringify({ name: "0123456789abcdef", files: ["sea.svg"] })));
  await tab.load();
  await tab.counts("6 objects");
  // The server answers for the old session with 410, which the browser logs.
  tab.errors.splice(0, tab.errors.length, ...tab.errors.filter(text => !text.includes("status of 410")));
});

const kKept = path.join(root, "tests/browser/kept");
const kKeptWidths = [320, 1280, 2560];

// Some lines of text may be drawn otherwise; a panel that is gone or a color is more. With KZ_KEEP set the picture is kept.
async function looksAsKept(picture, name) {
  const file = path.join(kKept, name);
  if (process.env.KZ_KEEP) {
    fs.mkdirSync(kKept, { recursive: true });
    fs.writeFileSync(file, picture);
  }
  const part = await difference(picture, fs.readFileSync(file));
  assert.ok(part < 0.01, `${(100 * part).toFixed(2)} % of ${name} differ: build/browser/shots has it as it is now`);
}

const axe = fs.readFileSync(path.join(root, "build/browser/node_modules/axe-core/axe.min.js"), "utf8");

for (const colorScheme of ["light", "dark"]) {
  for (const [width, height] of [[320, 640], [360, 720], [1280, 800], [2560, 1440], [3840, 2160]]) {
    test(`${width} pixels, ${colorScheme}: nothing is cut off, and axe finds nothing`, async () => {
      const tab = await server.open({ viewport: { width, height }, colorScheme });
      await tab.tiles();
      const shot = async name => {
        const file = path.join(root, "build/browser/shots", `${width}-${colorScheme}-${name}.png`);
        fs.mkdirSync(path.dirname(file), { recursive: true });
        const picture = await tab.page.screenshot({ path: file });
        if (kKeptWidths.includes(width) && name === "dialog") await looksAsKept(picture, path.basename(file));
      };
      const check = async name => {
        assert.equal(await tab.page.evaluate(() => document.documentElement.scrollWidth), width);
        await tab.page.evaluate(axe);
        const { violations } = await tab.page.evaluate(() => axe.run());
        assert.deepEqual(violations.map(found => [found.id, found.nodes.map(node => node.html)]), [], name);
        await shot(name);
      };
      await check("drawing");
      if (width < 860) {
        await tab.page.getByRole("button", { name: "Tools and layers" }).click();
        await check("panel");
      }
      await tab.openTool("Select by Attributes...", "Select by Attributes");
      await tab.page.getByRole("tab", { name: "Fill" }).click();
      await tab.row("red").click();
      await tab.rowIs("red", "true");
      await check("dialog");
      await tab.dialogButton("Cancel").click();
      await tab.dialogClosed();
      await tab.chooseColor("red");
      const card = tab.page.getByRole("dialog", { name: "red" });
      await card.waitFor();
      assert.equal(await card.evaluate(element => {
        const { left, top, right, bottom } = element.getBoundingClientRect();
        return [[left, top], [right, top], [left, bottom], [right, bottom]].every(([x, y]) => element.contains(
          document.elementFromPoint(x + (x === left ? 12 : -12), y + (y === top ? 12 : -12))));
      }), true, "nothing lies above the card of a color");
      await check("color");
      await tab.page.locator("#script").click();
      await check("script");
      assert.deepEqual(tab.errors, []);
      await tab.close();
    });
  }
}

test("light and dark are not the same", async () => {
  const colors = [];
  for (const colorScheme of ["light", "dark"]) {
    const tab = await server.open({ colorScheme });
    colors.push(await tab.page.evaluate(() => getComputedStyle(document.body).backgroundColor));
    await tab.page.getByRole("button", { name: "Light or dark" }).click();
    colors.push(await tab.page.evaluate(() => getComputedStyle(document.body).backgroundColor));
    await tab.close();
  }
  assert.notEqual(colors[0], colors[2]);
  assert.equal(colors[0], colors[3]);
  assert.equal(colors[1], colors[2]);
});

test("nothing moves for those who want no motion", async () => {
  const moving = async reducedMotion => {
    const tab = await server.open({ reducedMotion });
    await tab.tiles();
    const count = await tab.page.evaluate(() => [...document.querySelectorAll("*")].filter(element => {
      const style = getComputedStyle(element);
      return /[1-9]/.test(style.transitionDuration) || style.animationName !== "none";
    }).length);
    // What the map moves while it zooms on the way.
    const animated = await tab.page.locator(".leaflet-proxy").count() > 0;
    await tab.close();
    return { count, animated };
  };
  assert.deepEqual(await moving("reduce"), { count: 0, animated: false });
  const usual = await moving("no-preference");
  assert.ok(usual.count > 0 && usual.animated, JSON.stringify(usual));
});
