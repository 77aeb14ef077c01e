// The strip of colours below the drawing. One is chosen; the tools that take a colour work on it.

import { byId, make } from "./dom";
import type { Color } from "./types";

const MOST = 2000;  // swatches in the page; who has more colours chooses in the dialog

function paint(color: Color): string {
  if (color.value) return color.value;
  if (color.stops?.length) return `linear-gradient(90deg, ${color.stops.map(([value, at]) => `${value} ${at * 100}%`).join(", ")})`;
  return "linear-gradient(90deg, #222, #fff)";  // as the lists of the dialogs show what has no one colour
}

export class Strip {
  private readonly list = byId("swatches");
  private colors: Color[] = [];
  private at = -1;

  // `commands`: what can be done with a colour.
  constructor(private readonly commands: (color: Color) => { name: string; run: () => void }[]) {
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
    this.list.replaceChildren(...colors.slice(0, MOST).map((color, i) => {
      const swatch = make("div", {
        role: "option", id: `swatch-${i}`, "data-at": i, class: color.visible ? "swatch" : "swatch hidden-color",
        title: `${color.name} · ${color.class} · ${color.objects}${color.visible ? "" : " · hidden"}`,
        "aria-label": `${color.name}, ${color.class}, ${color.objects} objects${color.visible ? "" : ", hidden"}`,
      });
      swatch.style.background = paint(color);
      return swatch;
    }));
    this.mark();
    const card = document.getElementById("color-card");
    if (card && this.chosen) this.openCard(false);
    else card?.remove();
  }

  private choose(at: number): void {
    this.at = at;
    this.mark();
  }

  private mark(): void {
    [...this.list.children].forEach((swatch, i) => swatch.setAttribute("aria-selected", String(i === this.at)));
    if (this.at >= 0) {
      this.list.setAttribute("aria-activedescendant", `swatch-${this.at}`);
      this.list.children[this.at]?.scrollIntoView({ block: "nearest", inline: "nearest" });
    } else this.list.removeAttribute("aria-activedescendant");
  }

  // The chosen colour, larger, with what can be done with it.
  private openCard(takesFocus = true): void {
    document.getElementById("color-card")?.remove();
    const color = this.chosen;
    if (!color) return;
    const sample = make("span", { class: "sample" });
    sample.style.background = paint(color);
    const detail = [color.class, color.value && color.value !== color.name ? color.value : null,
                    `${color.objects} ${color.objects === 1 ? "object" : "objects"}`, color.visible ? null : "hidden"];
    const card = make("div", { id: "color-card", role: "dialog", "aria-label": color.name },
                      make("div", { class: "head" }, sample,
                           make("div", {}, make("strong", {}, color.name), make("span", {}, detail.filter(Boolean).join(" · ")))));
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
    const swatch = this.list.children[this.at] as HTMLElement | undefined;
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
    const last = Math.min(this.colors.length, MOST) - 1;
    const steps: Record<string, number> = { ArrowRight: this.at + 1, ArrowDown: this.at + 1, ArrowLeft: this.at - 1, ArrowUp: this.at - 1, Home: 0, End: last };
    if (event.key in steps) this.choose(Math.max(0, Math.min(last, steps[event.key])));
    else if (event.key === "Enter" || event.key === " ") this.openCard();
    else return;
    event.preventDefault();
  }
}
