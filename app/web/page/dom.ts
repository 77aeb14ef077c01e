// Making elements. Texts become text nodes, never markup.

type Attributes = Record<string, string | number | boolean | ((event: any) => void) | null | undefined>;

export function make<K extends keyof HTMLElementTagNameMap>(
  tag: K, attributes: Attributes = {}, ...children: (Node | string | null)[]): HTMLElementTagNameMap[K] {
  const element = document.createElement(tag);
  for (const [name, value] of Object.entries(attributes)) {
    if (value === null || value === undefined || value === false) continue;
    if (typeof value === "function") element.addEventListener(name, value);
    else element.setAttribute(name, value === true ? "" : String(value));
  }
  for (const child of children) if (child !== null) element.append(child);
  return element;
}

export function byId<T extends HTMLElement>(id: string): T {
  const element = document.getElementById(id);
  if (!element) throw new Error(`the page lacks #${id}`);
  return element as T;
}

const SVG = "http://www.w3.org/2000/svg";

// A picture of 20 by 20 in the colour of the text. `path` is one of icons.ts.
export function icon(path: string): SVGSVGElement {
  const svg = document.createElementNS(SVG, "svg");
  svg.setAttribute("viewBox", "0 0 20 20");
  svg.setAttribute("class", "icon");
  svg.setAttribute("aria-hidden", "true");
  const line = document.createElementNS(SVG, "path");
  line.setAttribute("d", path);
  svg.append(line);
  return svg;
}

// One tab stop for the buttons of an element; arrows move within it, up and down by as many as a line of it has. What is
// returned is for after every change of the buttons.
export function rove(container: HTMLElement, columns = 1): () => void {
  const buttons = () => [...container.querySelectorAll<HTMLButtonElement>("button")];
  const settle = () => {
    const all = buttons();
    const current = all.find(button => button.tabIndex === 0 && !button.disabled) ?? all.find(button => !button.disabled);
    for (const button of all) button.tabIndex = button === current ? 0 : -1;
  };
  container.addEventListener("keydown", event => {
    const all = buttons().filter(button => !button.disabled);
    const at = all.indexOf(document.activeElement as HTMLButtonElement);
    if (at < 0) return;
    const last = all.length - 1;
    const next = {
      ArrowRight: at + 1, ArrowDown: at + columns, ArrowLeft: at - 1, ArrowUp: at - columns, Home: 0, End: last,
    }[event.key];
    if (next === undefined) return;
    event.preventDefault();
    const target = all[next < 0 || next > last ? at : next];
    for (const button of buttons()) button.tabIndex = button === target ? 0 : -1;
    target.focus();
  });
  return settle;
}
