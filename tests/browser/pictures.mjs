// Draws the pictures of the documents: tests/browser/run pictures.mjs
import fs from "node:fs";
import path from "node:path";
import { test } from "node:test";
import { root, Server, stopBrowser } from "./support.mjs";

const pictures = path.join(root, "docs/pictures");
const harbour = fs.readFileSync(path.join(root, "samples/harbour.svg"), "utf8");

test("the pictures of the documents", async () => {
  const server = await Server.start({ "harbour.svg": harbour });
  const tab = await server.open({ viewport: { width: 1120, height: 700 } });
  const shot = name => tab.page.screenshot({ path: path.join(pictures, name) });
  const tick = async state => {
    await tab.row("Gradient").click();
    await tab.rowIs("Gradient", state);
  };
  await tab.tiles();
  await tab.chooseColor("Signal Red");
  await tab.page.getByRole("dialog", { name: "Signal Red" }).waitFor();
  await shot("page.png");
  await tab.page.keyboard.press("Escape");
  await tab.openTool("Select by Attributes...", "Select by Attributes");
  await tab.page.getByRole("tab", { name: "Fill" }).click();
  await tick("true");
  await shot("page-dialog.png");
  await tab.dialogButton("Cancel").click();
  await tab.dialogClosed();
  await tab.openTool("View Filter...", "View Filter");
  await tab.page.locator('#tool-dialog .row[aria-level="2"]').first().click();
  await tab.page.locator("#spoken", { hasText: "not checked" }).waitFor({ state: "attached" });
  await shot("page-filter.png");
  await tab.page.keyboard.press("Escape");
  await tab.dialogClosed();
  await tab.close();
  await stopBrowser();
  await server.stop();
});
