// Each tool's whole way: from the button to what the page shows.
import assert from "node:assert/strict";
import { test } from "node:test";
import { eachInItsTab } from "./support.mjs";

let tab;
eachInItsTab(undefined, opened => { tab = opened; });

test("a click selects, and Select Similar Objects selects what is like it", async () => {
  assert.equal(await tab.tool("Select Similar Objects").isDisabled(), true);
  await tab.clickAt(30, 55);
  await tab.counts("1 selected");
  await tab.tool("Select Similar Objects").click();
  await tab.counts("3 selected");
  assert.match(await tab.script(), /^open sea\.svg\nselect hull\ntool ASelectSimilarTool\n$/);
});

test("Select Similar Color selects what is filled alike", async () => {
  await tab.clickAt(30, 55);
  await tab.counts("1 selected");
  await tab.tool("Select Similar Color").click();
  await tab.counts("2 selected");
});

test("Hide This Color hides, and Show All shows again", async () => {
  await tab.chooseColor("red");
  await tab.tool("Hide This Color").click();
  await tab.counts("2 hidden");
  await tab.page.getByText("Filter on").waitFor();
  await tab.page.getByRole("option", { name: /^red,.*hidden/ }).waitFor();
  await tab.tool("Show All").click();
  await tab.page.waitForSelector("#counts:not(:has-text('hidden'))");
  await tab.page.getByRole("option", { name: /^red,.*objects$/ }).waitFor();
});

test("Show This Color shows a hidden one again", async () => {
  await tab.chooseColor("red");
  await tab.tool("Hide This Color").click();
  await tab.counts("2 hidden");
  await tab.tool("Show This Color").click();
  await tab.page.waitForSelector("#counts:not(:has-text('hidden'))");
});

test("Hide All But This Color leaves one color", async () => {
  await tab.chooseColor("red");
  await tab.tool("Hide All But This Color").click();
  await tab.counts("4 hidden");
});

test("All But This Color shows all others", async () => {
  await tab.chooseColor("red");
  await tab.tool("All But This Color").click();
  await tab.counts("2 hidden");
});

test("the card of a color offers the tools that take one", async () => {
  await tab.chooseColor("gold");
  const card = tab.page.getByRole("dialog", { name: "gold" });
  await card.getByRole("button", { name: "Hide This Color" }).click();
  await tab.counts("2 hidden");
});

test("a tool that needs a color says so", async () => {
  await tab.tool("Hide This Color").click();
  await tab.page.getByText("Choose a color in the strip first.").waitFor();
});

test("undo and redo go through selections and filters", async () => {
  await tab.clickAt(30, 55);
  await tab.counts("1 selected");
  await tab.tool("Select Similar Objects").click();
  await tab.counts("3 selected");
  await tab.chooseColor("red");
  await tab.tool("Hide This Color").click();
  await tab.counts("2 hidden");
  await tab.chooseColor("gold");
  await tab.tool("Hide This Color").click();
  await tab.counts("4 hidden");
  const undo = tab.page.getByRole("button", { name: "Undo" });
  await undo.click();
  await tab.counts("2 hidden");
  await tab.page.keyboard.press("Control+z");
  await tab.page.waitForSelector("#counts:not(:has-text('hidden'))");
  await tab.page.keyboard.press("Control+y");
  await tab.counts("2 hidden");
  await undo.click();
  await undo.click();
  await tab.counts("1 selected");
});

test("arrows go from tool to tool, also after many changes", async () => {
  await tab.clickAt(30, 55);
  await tab.counts("1 selected");
  await tab.chooseColor("red");
  await tab.tool("Hide This Color").click();
  await tab.counts("2 hidden");
  await tab.tool("Show All").click();
  await tab.page.waitForSelector("#counts:not(:has-text('hidden'))");
  await tab.tool("View Filter...").focus();
  for (const name of ["Select by Attributes...", "Show All", "All But This Color"]) {
    await tab.page.keyboard.press("ArrowDown");
    assert.equal(await tab.page.evaluate(() => document.activeElement.textContent), name);
  }
});

test("a layer is hidden and locked by its buttons, and the script has it", async () => {
  const button = name => tab.page.locator("#layers").getByRole("button", { name, exact: true });
  await tab.tiles();
  const before = await tab.page.getAttribute("html", "data-tiles");
  await button("Air: Hidden").click();
  await tab.page.locator('#layers [aria-pressed="true"][aria-label="Air: Hidden"]').waitFor();
  await tab.page.waitForSelector(`html[data-tiles*="/"]:not([data-tiles="${before}"])`);
  await tab.page.keyboard.press("ArrowDown");
  await tab.page.keyboard.press("ArrowRight");
  await tab.page.keyboard.press("Enter");
  await tab.page.locator('#layers [aria-pressed="true"][aria-label="Water: Locked"]').waitFor();
  assert.match(await tab.script(), /^layer Air hide\nlayer Water lock$/m);
  await button("Air: Hidden").click();
  await tab.page.locator('#layers [aria-pressed="false"][aria-label="Air: Hidden"]').waitFor();
});

test("the picture is another one when a color is hidden", async () => {
  await tab.tiles();
  const before = await tab.page.getAttribute("html", "data-tiles");
  const picture = await tab.page.locator("#map").screenshot();
  await tab.chooseColor("navy");
  await tab.tool("Hide This Color").click();
  await tab.page.waitForSelector(`html[data-tiles*="/"]:not([data-tiles="${before}"])`);
  assert.notDeepEqual(await tab.page.locator("#map").screenshot(), picture);
});
