// A tree of check boxes after the ARIA pattern. Only the rows that can be seen are in the page.
//
// The tree itself has the focus; aria-activedescendant names the row that keys act on.

import { icon, make } from "./dom";
import { icons } from "./icons";
import type { Images, Row, Rows } from "./types";

export const ROW_HEIGHT = 26;
const MARGIN = 8;  // rows above and below those that can be seen
const TYPE_AHEAD_MS = 900;

export type CheckState = "true" | "false" | "mixed";

export function checkState(check: number): CheckState {
  return check >= 5 ? "mixed" : check >= 3 ? "true" : "false";
}

interface Place { parent: number; position: number; siblings: number; }

export class CheckTree {
  readonly element: HTMLElement;
  private readonly sizer: HTMLElement;
  private rows: Row[] = [];
  private places: Place[] = [];
  private shown: number[] = [];  // the numbers of the rows below no closed one
  private active = 0;  // a number of a row
  private revision = 0;
  private enabled = true;
  private images: Images | null = null;
  private picturesUrl = "";
  private typed = "";
  private typedAt = 0;

  constructor(label: string, private readonly act: (verb: "click" | "expand" | "collapse", path: string, row: Row) => void) {
    this.sizer = make("div", { role: "none", class: "sizer" });
    this.element = make("div", { role: "tree", class: "tree", tabindex: 0, "aria-label": label }, this.sizer);
    this.element.addEventListener("scroll", () => this.draw());
    this.element.addEventListener("keydown", event => this.onKey(event));
    this.element.addEventListener("click", event => this.onClick(event));
    this.element.addEventListener("dblclick", event => this.onDoubleClick(event));
    new ResizeObserver(() => this.draw()).observe(this.element);
  }

  get since(): number { return this.revision; }

  path(row: number): string {
    const parts: string[] = [];
    for (let at = row; at >= 0; at = this.places[at].parent) parts.unshift(this.rows[at].text);
    return parts.join("/");
  }

  // Shows what the session told; answers how many rows changed their box.
  update(told: Rows, images?: Images): number {
    let changed = 0;
    this.revision = told.revision;
    this.enabled = told.enabled;
    this.element.setAttribute("aria-disabled", String(!told.enabled));
    if (images) this.setImages(images);
    if (told.all) {
      const before = this.rows.length ? this.path(this.active) : "";
      this.rows = told.all;
      this.place();
      this.active = Math.max(0, this.rows.findIndex((_, row) => this.path(row) === before));
    }
    for (const change of told.changed ?? []) {
      const row = this.rows[change.row];
      if (checkState(row.check) !== checkState(change.check)) changed++;
      Object.assign(row, { check: change.check, image: change.image, expanded: change.expanded });
    }
    this.list();
    return changed;
  }

  private setImages(images: Images): void {
    this.images = images;
    URL.revokeObjectURL(this.picturesUrl);
    if (!images.png) return;
    const bytes = Uint8Array.from(atob(images.png), c => c.charCodeAt(0));
    this.picturesUrl = URL.createObjectURL(new Blob([bytes], { type: "image/png" }));
    this.element.style.setProperty("--pictures", `url("${this.picturesUrl}")`);
  }

  private place(): void {
    const open: number[] = [];  // the row above at each depth
    const children = new Map<number, number>();
    this.places = this.rows.map((row, at) => {
      open.length = row.depth;
      const parent = row.depth === 0 ? -1 : open[row.depth - 1];
      open[row.depth] = at;
      const position = (children.get(parent) ?? 0) + 1;
      children.set(parent, position);
      return { parent, position, siblings: 0 };
    });
    for (const place of this.places) place.siblings = children.get(place.parent)!;
  }

  private list(): void {
    this.shown = [];
    for (let at = 0, closed = Infinity; at < this.rows.length; at++) {
      const row = this.rows[at];
      if (row.depth > closed) continue;
      closed = row.children > 0 && !row.expanded ? row.depth : Infinity;
      this.shown.push(at);
    }
    if (!this.shown.includes(this.active)) {
      let at = this.active;
      while (at >= 0 && !this.shown.includes(at)) at = this.places[at]?.parent ?? -1;
      this.active = Math.max(0, at);
    }
    this.sizer.style.height = `${this.shown.length * ROW_HEIGHT}px`;
    this.draw();
  }

  private draw(): void {
    const first = Math.max(0, Math.floor(this.element.scrollTop / ROW_HEIGHT) - MARGIN);
    const last = Math.min(this.shown.length, Math.ceil((this.element.scrollTop + this.element.clientHeight) / ROW_HEIGHT) + MARGIN);
    const visible = this.shown.slice(first, last).map((row, i) => this.drawRow(row, first + i));
    const at = this.shown.indexOf(this.active);  // in the page even when it is scrolled away, for whoever reads it out
    if (at >= 0 && (at < first || at >= last)) visible.push(this.drawRow(this.active, at));
    this.sizer.replaceChildren(...visible);
    if (at >= 0) this.element.setAttribute("aria-activedescendant", `row-${this.active}`);
    else this.element.removeAttribute("aria-activedescendant");
  }

  private drawRow(number: number, at: number): HTMLElement {
    const row = this.rows[number];
    const place = this.places[number];
    const item = make("div", {
      role: "treeitem", id: `row-${number}`, class: number === this.active ? "row active" : "row", "data-row": number,
      "aria-level": row.depth + 1, "aria-posinset": place.position, "aria-setsize": place.siblings,
      "aria-checked": checkState(row.check), "aria-expanded": row.children > 0 ? String(row.expanded) : null,
      "aria-disabled": this.enabled ? null : "true", "aria-label": row.text,
    });
    item.style.top = `${at * ROW_HEIGHT}px`;
    item.style.setProperty("--depth", String(row.depth));
    const twisty = make("span", { class: row.children > 0 ? "twisty" : "twisty leaf" });
    if (row.children > 0) twisty.append(icon(icons.open_branch));
    item.append(twisty, make("span", { class: `box ${checkState(row.check)}` }));
    const picture = this.picture(row);
    if (picture) item.append(picture);
    item.append(make("span", { class: "text" }, row.text));
    return item;
  }

  private picture(row: Row): HTMLElement | null {
    const { images } = this;
    if (!images?.png || row.children > 0 || row.image < 0 || row.image >= images.count) return null;
    const picture = make("span", { class: "picture" });
    const x = (row.image % images.columns) * images.width;
    const y = Math.floor(row.image / images.columns) * images.height;
    picture.style.backgroundPosition = `${-x}px ${-y}px`;
    return picture;
  }

  // Scrolls as little as it takes.
  private activate(row: number): void {
    this.active = row;
    const top = this.shown.indexOf(row) * ROW_HEIGHT;
    const { scrollTop, clientHeight } = this.element;
    if (top < scrollTop) this.element.scrollTop = top;
    else if (top + ROW_HEIGHT > scrollTop + clientHeight) this.element.scrollTop = top + ROW_HEIGHT - clientHeight;
    this.draw();
  }

  private toggle(verb: "click" | "expand" | "collapse", row: number): void {
    if (this.enabled && this.rows[row]) this.act(verb, this.path(row), this.rows[row]);
  }

  private onClick(event: MouseEvent): void {
    const target = event.target as Element;
    const item = target.closest<HTMLElement>(".row");
    if (!item) return;
    const row = Number(item.dataset.row);
    this.activate(row);
    this.element.focus();
    if (target.closest(".twisty") && this.rows[row].children > 0) this.toggle(this.rows[row].expanded ? "collapse" : "expand", row);
    else if (!target.closest(".twisty")) this.toggle("click", row);
  }

  private onDoubleClick(event: MouseEvent): void {
    event.preventDefault();
  }

  private onKey(event: KeyboardEvent): void {
    if (event.ctrlKey || event.altKey || event.metaKey || this.rows.length === 0) return;
    const at = this.shown.indexOf(this.active);
    const page = Math.max(1, Math.floor(this.element.clientHeight / ROW_HEIGHT) - 1);
    const last = this.shown.length - 1;
    const row = this.rows[this.active];
    const steps: Record<string, number> = {
      ArrowDown: at + 1, ArrowUp: at - 1, Home: 0, End: last, PageDown: at + page, PageUp: at - page,
    };
    if (event.key in steps) this.activate(this.shown[Math.max(0, Math.min(last, steps[event.key]))]);
    else if (event.key === " " && !this.isTyped(this.typed + " ")) this.toggle("click", this.active);
    else if (event.key === "ArrowRight") this.stepIn(row);
    else if (event.key === "ArrowLeft") this.stepOut(row);
    else if (event.key.length === 1) this.typeAhead(event);
    else return;
    if (event.key.length > 1) this.typed = "";
    event.preventDefault();
    event.stopPropagation();
  }

  private stepIn(row: Row): void {
    if (row.children === 0) return;
    if (!row.expanded) this.toggle("expand", this.active);
    else this.activate(this.active + 1);
  }

  private stepOut(row: Row): void {
    if (row.children > 0 && row.expanded) this.toggle("collapse", this.active);
    else if (this.places[this.active].parent >= 0) this.activate(this.places[this.active].parent);
  }

  private isTyped(text: string): boolean {
    return text.length > 1 && this.shown.some(row => this.rows[row].text.toLocaleLowerCase().startsWith(text));
  }

  // The next row that starts with what was typed.
  private typeAhead(event: KeyboardEvent): void {
    const goesOn = event.timeStamp - this.typedAt < TYPE_AHEAD_MS;
    this.typed = (goesOn ? this.typed : "") + event.key.toLocaleLowerCase();
    this.typedAt = event.timeStamp;
    setTimeout(() => { if (performance.now() - this.typedAt >= TYPE_AHEAD_MS) this.typed = ""; }, TYPE_AHEAD_MS + 50);
    const from = this.shown.indexOf(this.active) + (this.typed.length === 1 ? 1 : 0);
    for (let i = 0; i < this.shown.length; i++) {
      const row = this.shown[(from + i) % this.shown.length];
      if (this.rows[row].text.toLocaleLowerCase().startsWith(this.typed)) return this.activate(row);
    }
  }
}
