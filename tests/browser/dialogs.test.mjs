// Both dialogs, by mouse and by keyboard alone, and what a screen reader gets of them.
import assert from "node:assert/strict";
import { test } from "node:test";
import { eachInItsTab, SEA } from "./support.mjs";

const MANY = `<svg xmlns="http://www.w3.org/2000/svg" width="200" height="100">${Array.from({ length: 10000 }, (_, i) =>
  `<rect id="r${i}" x="${i % 200}" y="${Math.floor(i / 200) * 2}" width="1" height="1" fill="#${(0x100000 + i * 37).toString(16)}"/>`).join("")}</svg>`;

let tab;
eachInItsTab({ "sea.svg": SEA, "many.svg": MANY }, opened => { tab = opened; });

const focus = () => tab.page.evaluate(() => {
  const active = document.activeElement;
  const row = active.getAttribute("aria-activedescendant");
  return row ? document.getElementById(row).getAttribute("aria-label") : active.textContent;
});

test("Select by Attributes by mouse: a page, an entry, OK", async () => {
  await tab.openTool("Select by Attributes...", "Select by Attributes");
  await tab.page.getByRole("tab", { name: "Fill" }).click();
  await tab.row("red").click();
  await tab.rowIs("red", "true");
  await tab.rowIs("RGB Color", "mixed");
  await tab.dialogButton("OK").click();
  await tab.dialogClosed();
  await tab.counts("2 selected");
});

test("Select by Attributes by keyboard alone", async () => {
  await tab.tool("View Filter...").focus();
  await tab.page.keyboard.press("ArrowDown");
  await tab.page.keyboard.press("Enter");
  await tab.page.getByRole("dialog", { name: "Select by Attributes" }).locator(".row").first().waitFor();
  await tab.page.keyboard.press("Shift+Tab");  // Show all
  await tab.page.keyboard.press("Shift+Tab");  // All types
  await tab.page.keyboard.press("Shift+Tab");  // the tabs
  assert.equal(await focus(), "Object");
  await tab.page.keyboard.press("ArrowRight");
  await tab.page.locator('[role="tab"][aria-selected="true"]', { hasText: "Dimension" }).waitFor();
  await tab.page.keyboard.press("ArrowRight");
  await tab.page.locator('[role="tab"][aria-selected="true"]', { hasText: "Fill" }).waitFor();
  for (let i = 0; i < 3; i++) await tab.page.keyboard.press("Tab");
  await tab.page.keyboard.press("End");
  await tab.page.keyboard.press("g");
  assert.equal(await focus(), "gold");
  await tab.page.keyboard.press("Space");
  await tab.rowIs("gold", "true");
  await tab.page.keyboard.press("Enter");
  await tab.dialogClosed();
  await tab.counts("1 selected");
  assert.equal(await focus(), "Select by Attributes...");
});

test("Selection only and All types work as the plug-in has them", async () => {
  await tab.openTool("Select by Attributes...", "Select by Attributes");
  assert.equal(await tab.page.getByRole("checkbox", { name: "Selection only" }).isDisabled(), true);
  await tab.page.keyboard.press("Escape");
  await tab.dialogClosed();
  await tab.clickAt(30, 55);
  await tab.counts("1 selected");
  await tab.openTool("Select by Attributes...", "Select by Attributes");
  const rows = tab.page.locator("#tool-dialog .row");
  const all = await rows.count();
  await tab.page.getByRole("checkbox", { name: "Selection only" }).click();
  await tab.page.locator('[role="checkbox"][aria-checked="true"]', { hasText: "Selection only" }).waitFor();
  assert.ok(await rows.count() < all);
  await tab.page.getByRole("checkbox", { name: "All types" }).click();
  await tab.page.locator('.tree[aria-disabled="true"]').waitFor();
  await tab.dialogButton("OK").click();
  await tab.dialogClosed();
});

test("nothing ticked is told as the plug-in tells it", async () => {
  await tab.openTool("Select by Attributes...", "Select by Attributes");
  await tab.dialogButton("OK").click();
  await tab.page.getByText("No object matches the criteria.").waitFor();
});

test("View Filter by mouse hides what is not ticked", async () => {
  await tab.openTool("View Filter...", "View Filter");
  await tab.dialogButton("Show None").click();
  await tab.rowIs("navy", "false");
  await tab.row("navy").click();
  await tab.rowIs("navy", "true");
  await tab.dialogButton("OK").click();
  await tab.dialogClosed();
  await tab.counts("5 hidden");
  await tab.openTool("View Filter...", "View Filter");
  await tab.rowIs("navy", "true");
  await tab.rowIs("red", "false");
  await tab.dialogButton("Show All").click();
  await tab.rowIs("red", "true");
  await tab.dialogButton("OK").click();
  await tab.page.waitForSelector("#counts:not(:has-text('hidden'))");
});

test("View Filter by keyboard: closing a group, a tick by Space, Escape cancels", async () => {
  await tab.tool("View Filter...").focus();
  await tab.page.keyboard.press("Enter");
  await tab.page.getByRole("dialog", { name: "View Filter" }).locator(".row").first().waitFor();
  await tab.page.keyboard.type("rgb");
  assert.equal(await focus(), "RGB Color");
  const group = tab.row("RGB Color");
  if (await group.getAttribute("aria-expanded") === "false") await tab.page.keyboard.press("ArrowRight");
  await tab.page.locator('.row[aria-expanded="true"]', { hasText: "RGB Color" }).waitFor();
  await tab.page.keyboard.press("ArrowRight");
  await tab.page.keyboard.press("Space");
  await tab.rowIs("RGB Color", "mixed");
  await tab.page.keyboard.press("ArrowLeft");
  assert.equal(await focus(), "RGB Color");
  await tab.page.keyboard.press("ArrowLeft");
  await tab.page.locator('.row[aria-expanded="false"]', { hasText: "RGB Color" }).waitFor();
  await tab.page.keyboard.press("Escape");
  await tab.dialogClosed();
  await tab.page.waitForSelector("#counts:not(:has-text('hidden'))");
});

test("a screen reader gets level, position and the mixed state, and is told what a click changed", async () => {
  await tab.openTool("View Filter...", "View Filter");
  await tab.row("red").click();
  await tab.rowIs("red", "false");
  const session = await tab.page.context().newCDPSession(tab.page);
  const { nodes } = await session.send("Accessibility.getFullAXTree");
  const item = name => nodes.find(node => node.role?.value === "treeitem" && node.name?.value === name);
  const property = (name, key) => item(name).properties.find(one => one.name === key)?.value.value;
  assert.equal(property("RGB Color", "checked"), "mixed");
  assert.equal(property("RGB Color", "expanded"), true);
  assert.equal(property("red", "checked"), "false");
  assert.equal(property("red", "level"), 2);
  assert.match(await tab.page.locator("#spoken").textContent(), /^red not checked/);
});

test("ten thousand colors scroll with a few rows in the page", async () => {
  await tab.page.locator("#open").click();
  await tab.page.getByRole("menuitem", { name: "many.svg" }).click();
  await tab.counts("10,000 objects");
  await tab.openTool("View Filter...", "View Filter");
  await tab.page.locator('.tree').focus();
  const group = tab.row("RGB Color");
  if (await group.getAttribute("aria-expanded") === "false") await group.locator(".twisty").click();
  await tab.page.locator('.row[aria-setsize="10000"]').first().waitFor();
  await tab.page.keyboard.press("End");
  await tab.page.locator('.row[aria-posinset="10000"], .row.active').first().waitFor();
  assert.ok(await tab.page.locator("#tool-dialog .row").count() < 100);
  await tab.dialogButton("Show None").click();
  await tab.rowIs("", "false");
  await tab.page.locator('#spoken', { hasText: /Show None: 1\d{4} entries changed/ }).waitFor({ state: "attached" });
  await tab.dialogButton("Cancel").click();
  await tab.dialogClosed();
});
