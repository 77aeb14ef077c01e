// The dialog of a tool, as the session shows it: its pages as tabs, its boxes and buttons with their captions. Whatever
// the user does becomes a script line; what the session answers is shown.

import { byId, make } from "./dom";
import { line } from "./script";
import type { Session } from "./session";
import { checkState, CheckTree } from "./tree";
import type { Control, Dialog, Images, Kind, Row, Rows } from "./types";

const OK = 1, CANCEL = 2;  // every dialog's

export class ToolDialog {
  private readonly element = byId<HTMLDialogElement>("tool-dialog");
  private tree: CheckTree | null = null;
  private shown: Dialog | null = null;
  private parts: { tabs: HTMLElement; above: HTMLElement; below: HTMLElement; body: HTMLElement; buttons: HTMLElement; title: HTMLElement } | null = null;
  private last: Promise<unknown> = Promise.resolve();
  private opening: string | null = null;
  private before: Element | null = null;  // what had the focus

  constructor(private readonly session: Session, private readonly tell: (text: string) => void,
              private readonly fail: (error: unknown) => void, private readonly closed: () => void) {
    this.element.addEventListener("cancel", event => {
      event.preventDefault();
      this.pressId(CANCEL);
    });
    this.element.addEventListener("keydown", event => this.onKey(event));
  }

  get isOpen(): boolean { return this.element.open; }

  // After every line: `title` is that of the dialog that waits, null without one.
  async follow(title: string | null): Promise<void> {
    if (title === null) return this.close();
    if (this.opening === title || (this.shown?.title === title && this.element.open)) return;
    this.opening = title;
    try {
      await this.load();
    } finally {
      this.opening = null;
    }
  }

  private async load(): Promise<void> {
    const [{ dialog }, { kinds }, { rows }, { images }] =
      await this.session.ask("print dialog", "print kinds", "print rows", "print images") as
        [{ dialog: Dialog }, { kinds: Kind[] }, { rows: Rows }, { images: Images }];
    dialog.controls.forEach((control, i) => { control.kind = kinds[i]; });
    this.open(dialog);
    this.show(dialog, rows, images);
    const first = ['[role="tree"]', '[role="tab"][aria-selected="true"]', "button"].map(one => this.element.querySelector<HTMLElement>(one));
    first.find(one => one !== null)?.focus();
  }

  private open(dialog: Dialog): void {
    const title = make("h2", { id: "dialog-title" }, dialog.title);
    const parts = {
      title,
      tabs: make("div", { role: "tablist", class: "tabs", "aria-label": dialog.title }),
      above: make("div", { class: "boxes" }),
      body: make("div", { class: "page", id: "dialog-page" }),
      below: make("div", { class: "boxes below" }),
      buttons: make("div", { class: "buttons" }),
    };
    this.parts = parts;
    this.element.replaceChildren(title, parts.tabs, parts.above, parts.body, parts.below, parts.buttons);
    this.tree = null;
    if (!this.element.open) {
      this.before = document.activeElement;
      this.element.showModal();
    }
  }

  private close(): void {
    this.shown = null;
    if (!this.element.open) return;
    this.element.close();
    this.element.replaceChildren();
    this.tree = null;
    if (this.before instanceof HTMLElement) this.before.focus();
    this.closed();
  }

  private show(dialog: Dialog, rows?: Rows, images?: Images): number {
    const parts = this.parts!;
    const isOtherPage = !this.shown || this.shown.page !== dialog.page;
    this.shown = dialog;
    this.showTabs(dialog);
    const tree = dialog.controls.find(control => control.kind === "tree");
    const boxes = dialog.controls.filter(control => control.kind === "check box");
    const isAbove = (control: Control) => tree !== undefined && control.rect[1] < tree.rect[1];
    this.showButtons(parts.above, boxes.filter(isAbove));
    this.showButtons(parts.below, boxes.filter(control => !isAbove(control)));
    this.showButtons(parts.buttons, dialog.controls.filter(control => control.kind === "button"));
    if (tree && (!this.tree || (isOtherPage && rows?.all))) {
      this.tree = new CheckTree(dialog.page ?? dialog.title, (verb, path, row) => this.actOnTree(verb, path, row));
      parts.body.replaceChildren(this.tree.element);
    }
    parts.body.setAttribute("role", dialog.pages.length ? "tabpanel" : "group");
    parts.body.setAttribute("aria-label", dialog.page ?? dialog.title);
    return rows && this.tree ? this.tree.update(rows, images) : 0;
  }

  private showTabs(dialog: Dialog): void {
    const { tabs } = this.parts!;
    tabs.hidden = dialog.pages.length === 0;
    if (tabs.childElementCount !== dialog.pages.length) {
      tabs.replaceChildren(...dialog.pages.map((page, i) =>
        make("button", { role: "tab", id: `tab-${i}`, "aria-controls": "dialog-page", click: () => this.turnTo(page) }, page)));
      tabs.onkeydown = event => this.onTabKey(event);
    }
    [...tabs.children].forEach((tab, i) => {
      const isShown = dialog.pages[i] === dialog.page;
      tab.setAttribute("aria-selected", String(isShown));
      (tab as HTMLElement).tabIndex = isShown ? 0 : -1;
      if (isShown) tab.scrollIntoView({ block: "nearest", inline: "nearest" });
    });
  }

  // Kept as they are where only their state changed, so that the focus stays.
  private showButtons(place: HTMLElement, controls: Control[]): void {
    const ordered = [...controls].sort((a, b) => a.rect[0] - b.rect[0]);
    const key = ordered.map(control => `${control.id} ${control.text}`).join("\n");
    if (place.dataset.key !== key) {
      place.dataset.key = key;
      place.replaceChildren(...ordered.map(control => control.kind === "check box"
        ? make("button", { role: "checkbox", class: "check", "data-id": control.id, click: () => this.press(control.text) },
               make("span", { class: "box" }), control.text)
        : make("button", { class: control.id === OK ? "primary" : control.id === CANCEL ? "end" : "", "data-id": control.id,
                           click: () => this.press(control.text) }, control.text)));
    }
    ordered.forEach((control, i) => {
      const button = place.children[i] as HTMLButtonElement;
      button.disabled = !control.enabled;
      if (control.checked === null) return;
      button.setAttribute("aria-checked", String(control.checked));
      button.firstElementChild!.className = `box ${control.checked}`;
    });
    place.hidden = ordered.length === 0;
  }

  // Runs a line on the dialog and shows what it did; answers how many boxes of the tree changed. One after the other.
  private run(done: string): Promise<number> {
    const ran = this.last.then(() => this.runNow(done));
    this.last = ran;
    return ran;
  }

  private async runNow(done: string): Promise<number> {
    if (!this.shown) return 0;  // the line before closed it
    try {
      const [first] = await this.session.send([done]);
      if (first.error) throw new Error(first.error);
      if (first.state.dialog === null) return 0;  // follow() closes it
      const since = this.tree?.since;
      const [{ dialog }, { kinds }, { rows }] = await this.session.ask("print dialog", "print kinds", since ? `print rows ${since}` : "print rows") as
        [{ dialog: Dialog }, { kinds: Kind[] }, { rows: Rows }];
      dialog.controls.forEach((control, i) => { control.kind = kinds[i]; });
      if (!rows.all) return this.show(dialog, rows);
      const [{ images }] = await this.session.ask("print images");
      return this.show(dialog, rows, images);
    } catch (error) {
      this.fail(error);
      return 0;
    }
  }

  private async actOnTree(verb: "click" | "expand" | "collapse", path: string, row: Row): Promise<void> {
    const changed = await this.run(line(verb, path));
    if (verb !== "click") return;
    const now = { true: "checked", false: "not checked", mixed: "partly checked" }[checkState(row.check)];
    this.tell(changed > 1 ? `${row.text} ${now}, ${changed} entries changed` : `${row.text} ${now}`);
  }

  private async turnTo(page: string): Promise<void> {
    await this.run(line("page", page));
    this.element.querySelector<HTMLElement>('[role="tab"][aria-selected="true"]')?.focus();
  }

  private async press(caption: string): Promise<void> {
    const changed = await this.run(line("press", caption));
    if (changed > 0) this.tell(`${caption}: ${changed} entries changed`);
  }

  private pressId(id: number): void {
    const control = this.shown?.controls.find(one => one.id === id);
    if (control) this.press(control.text);
    else if (this.shown) this.fail(new Error(`the dialog has no button ${id}`));
  }

  private onTabKey(event: KeyboardEvent): void {
    const { pages, page } = this.shown!;
    const at = pages.indexOf(page ?? "");
    const next = { ArrowRight: at + 1, ArrowLeft: at - 1, Home: 0, End: pages.length - 1 }[event.key];
    if (next === undefined) return;
    event.preventDefault();
    this.turnTo(pages[(next + pages.length) % pages.length]);
  }

  // Enter presses OK, but where a button has the focus: that one.
  private onKey(event: KeyboardEvent): void {
    if (event.key !== "Enter" || (event.target as Element).closest("button")) return;
    event.preventDefault();
    this.pressId(OK);
  }
}
