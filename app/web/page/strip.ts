// The strip of colours below the drawing. One is chosen; the tools that take a colour work on it. Only the swatches that
// can be seen are in the page.

import { byId, make } from "./dom";
import type { Color } from "./types";

const PITCH = 31;  // CSS pixels from one swatch to the next
const EDGE = 4;  // of the strip, around them
const MARGIN = 8;  // swatches beside those that can be seen

function paint(color: Color): string {
  if (color.value) return color.value;
  if (color.stops?.length) return `linear-gradient(90deg, ${color.stops.map(([value, at]) => `${value} ${at * 100}%`).join(", ")})`;
  return "linear-gradient(90deg, #222, #fff)";  // as the lists of the dialogs show what has no one colour
}

function objects(color: Color): string {
  return color.objects === 1 ? "1 object" : `${color.objects.toLocaleString("en")} objects`;
}

export class Strip {
  private readonly list = byId("swatches");
  private readonly sizer = make("div", { role: "none", class: "swatch-sizer" });
  private colors: Color[] = [];
  private at = -1;

  // `commands`: what can be done with a colour.
  constructor(private readonly commands: (color: Color) => { name: string; run: () => void }[]) {
    this.list.append(this.sizer);
    this.list.addEventListener("scroll", () => this.draw());
    this.list.addEventListener("wheel", event => { if (event.deltaX === 0) this.list.scrollLeft += event.deltaY; }, { passive: true });
    new ResizeObserver(() => this.draw()).observe(this.list);
    this.list.addEventListener("keydown", event => this.onKey(event));
    this.list.addEventListener("click", event => this.onClick(event));
    this.list.addEventListener("contextmenu", event => {
      const swatch = (event.target as Element).closest<HTMLElement>("[data-at]");
      if (!swatch) return;
      event.preventDefault();
      this.choose(Number(swatch.dataset.at));
      this.openCard();
    });
  }

  get chosen(): Color | null { return this.colors[this.at] ?? null; }

  show(colors: Color[], isOtherDrawing: boolean): void {
    const before = isOtherDrawing ? null : this.chosen?.item;
    this.colors = colors;
    this.at = before ? colors.findIndex(color => color.item === before) : -1;
    this.sizer.style.width = `${colors.length * PITCH}px`;
    if (isOtherDrawing) this.list.scrollLeft = 0;
    this.draw();
    const card = document.getElementById("color-card");
    if (card && this.chosen) this.openCard(false);
    else card?.remove();
  }

  private draw(): void {
    const first = Math.max(0, Math.floor(this.list.scrollLeft / PITCH) - MARGIN);
    const last = Math.min(this.colors.length, Math.ceil((this.list.scrollLeft + this.list.clientWidth) / PITCH) + MARGIN);
    const visible = Array.from({ length: Math.max(0, last - first) }, (_, i) => first + i);
    if (this.at >= 0 && (this.at < first || this.at >= last)) visible.push(this.at);  // for whoever reads it out
    this.sizer.replaceChildren(...visible.map(at => this.drawSwatch(at)));
    if (this.at >= 0) this.list.setAttribute("aria-activedescendant", `swatch-${this.at}`);
    else this.list.removeAttribute("aria-activedescendant");
  }

  private drawSwatch(at: number): HTMLElement {
    const color = this.colors[at];
    const swatch = make("div", {
      role: "option", id: `swatch-${at}`, "data-at": at, class: color.visible ? "swatch" : "swatch hidden-color",
      "aria-selected": String(at === this.at), "aria-posinset": at + 1, "aria-setsize": this.colors.length,
      title: `${color.name} · ${color.class} · ${objects(color)}${color.visible ? "" : " · hidden"}`,
      "aria-label": `${color.name}, ${color.class}, ${objects(color)}${color.visible ? "" : ", hidden"}`,
    });
    swatch.style.left = `${at * PITCH}px`;
    swatch.style.background = paint(color);
    return swatch;
  }

  // Scrolls as little as it takes.
  private choose(at: number): void {
    this.at = at;
    const { scrollLeft, clientWidth } = this.list;
    if (at * PITCH < scrollLeft) this.list.scrollLeft = at * PITCH;
    else if ((at + 1) * PITCH + 2 * EDGE > scrollLeft + clientWidth) this.list.scrollLeft = (at + 1) * PITCH + 2 * EDGE - clientWidth;
    this.draw();
  }

  // The chosen colour, larger, with what can be done with it.
  private openCard(takesFocus = true): void {
    document.getElementById("color-card")?.remove();
    const color = this.chosen;
    if (!color) return;
    const sample = make("span", { class: "sample" });
    sample.style.background = paint(color);
    const detail = [color.class, color.value && color.value !== color.name ? color.value : null,
                    objects(color), color.visible ? null : "hidden"];
    const card = make("div", { id: "color-card", role: "dialog", "aria-label": color.name },
                      make("div", { class: "head" }, sample,
                           make("div", {}, make("strong", {}, color.name), make("span", {}, detail.filter(Boolean).map(part => part!.replace(/ /g, "\u00a0")).join(" · ")))));
    for (const command of this.commands(color)) card.append(make("button", { click: () => command.run() }, command.name));
    const close = () => {
      card.remove();
      document.removeEventListener("pointerdown", outside, true);
    };
    const outside = (event: Event) => {
      const target = event.target as Node;
      if (!card.isConnected || !(card.contains(target) || this.list.contains(target))) close();
    };
    card.addEventListener("keydown", event => {
      if (event.key !== "Escape") return;
      close();
      this.list.focus();
    });
    byId("strip").append(card);
    const swatch = document.getElementById(`swatch-${this.at}`);
    const left = (swatch?.getBoundingClientRect().left ?? 8) - 12;
    card.style.left = `${Math.max(8, Math.min(left, innerWidth - card.offsetWidth - 8))}px`;
    document.addEventListener("pointerdown", outside, true);
    if (takesFocus) card.querySelector("button")?.focus();
  }

  private onClick(event: MouseEvent): void {
    const swatch = (event.target as Element).closest<HTMLElement>("[data-at]");
    if (!swatch) return;
    this.choose(Number(swatch.dataset.at));
    this.openCard(false);
  }

  private onKey(event: KeyboardEvent): void {
    const last = this.colors.length - 1;
    const page = Math.max(1, Math.floor(this.list.clientWidth / PITCH) - 1);
    const steps: Record<string, number> = {
      ArrowRight: this.at + 1, ArrowDown: this.at + 1, ArrowLeft: this.at - 1, ArrowUp: this.at - 1,
      PageDown: this.at + page, PageUp: this.at - page, Home: 0, End: last,
    };
    if (event.key in steps && last >= 0) this.choose(Math.max(0, Math.min(last, steps[event.key])));
    else if (event.key === "Enter" || event.key === " ") this.openCard();
    else return;
    event.preventDefault();
  }
}
