// Pointing at the drawing: clicks, the rubber band, keys.
import assert from "node:assert/strict";
import { test } from "node:test";
import { eachInItsTab } from "./support.mjs";

let tab;
eachInItsTab(undefined, opened => { tab = opened; });

test("a click takes what is topmost, another one on the same place what lies below", async () => {
  await tab.clickAt(30, 65);
  await tab.counts("1 selected");
  await tab.clickAt(30, 65);
  await tab.page.locator("#script").click();
  await tab.page.locator("#script-dialog pre", { hasText: "select hull\nselect sea" }).waitFor();
});

test("a click beside everything selects nothing", async () => {
  await tab.clickAt(30, 65);
  await tab.counts("1 selected");
  await tab.clickAt(10, 10);
  await tab.page.waitForSelector("#counts:not(:has-text('selected'))");
});

test("Shift adds to the selection, and takes away again", async () => {
  await tab.clickAt(30, 55);
  await tab.counts("1 selected");
  await tab.clickAt(170, 20, { shift: true });
  await tab.counts("2 selected");
  await tab.clickAt(170, 20, { shift: true });
  await tab.counts("1 selected");
});

test("a rubber band to the right takes what lies within", async () => {
  await tab.drag([5, 5], [90, 75], "Shift");
  await tab.counts("2 selected");
});

test("a rubber band to the left takes what reaches in, too", async () => {
  await tab.page.getByRole("button", { name: "Drag to select" }).click();
  await tab.drag([90, 75], [5, 5]);
  await tab.counts("3 selected");
});

test("Escape gives a rubber band up", async () => {
  await tab.page.keyboard.down("Shift");
  await tab.page.mouse.move(...await tab.place(5, 5));
  await tab.page.mouse.down();
  await tab.page.mouse.move(...await tab.place(90, 75), { steps: 3 });
  await tab.page.locator(".band").waitFor();
  await tab.page.keyboard.press("Escape");
  await tab.page.locator(".band").waitFor({ state: "detached" });
  await tab.page.mouse.up();
  await tab.page.keyboard.up("Shift");
  await tab.page.waitForSelector("#counts:not(:has-text('selected'))");
});

test("each press of an arrow pans, and Enter selects what is in the middle", async () => {
  await tab.page.locator("#map").focus();
  for (let i = 0; i < 6; i++) await tab.page.keyboard.press("ArrowRight");
  for (let i = 0; i < 3; i++) await tab.page.keyboard.press("ArrowUp");
  await tab.page.keyboard.press("Enter");
  await tab.counts("1 selected");
  assert.match(await tab.script(), /^select sun$/m);
});

test("each press of plus zooms, also while a zoom is on its way", { timeout: 60000 }, async () => {
  const moving = await tab.another({ reducedMotion: "no-preference" });
  await moving.tiles();
  const scale = () => moving.page.evaluate(() => Number(document.querySelector(".leaflet-tile").src.split("/").at(-4)));
  const before = await scale();
  await moving.page.locator("#map").focus();
  for (let i = 0; i < 4; i++) await moving.page.keyboard.press("+");
  while (Math.abs(await scale() / before - 4) > 0.01);
  await moving.tiles();
  await moving.close();
});

test("dragging pans, and the wheel zooms", async () => {
  await tab.tiles();
  const before = await tab.page.locator("#map").screenshot();
  await tab.drag([100, 50], [60, 40]);
  await tab.page.mouse.wheel(0, -400);
  await tab.tiles();
  assert.notDeepEqual(await tab.page.locator("#map").screenshot(), before);
});
