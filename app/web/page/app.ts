// The page of kzdraw serve. It knows no rule of the tools: it sends script lines, and shows what they answer.

import { ToolDialog } from "./dialog";
import { byId, icon, make, rove } from "./dom";
import { icons } from "./icons";
import { line } from "./script";
import { Session } from "./session";
import { Strip } from "./strip";
import type { Layer, State, Tool } from "./types";
import { DrawingView } from "./view";

const TAKES_ITEM = 0x1000;  // of a tool's flags
const number = new Intl.NumberFormat("en");

function notify(text: string, isError = false): void {
  const notice = make("div", { class: isError ? "notice error" : "notice" }, make("span", {}, text));
  notice.append(make("button", { class: "tool", "aria-label": "Dismiss", click: () => notice.remove() }, icon(icons.close)));
  byId("notices").append(notice);
  while (byId("notices").childElementCount > 4) byId("notices").firstElementChild!.remove();
  setTimeout(() => notice.remove(), isError ? 12000 : 6000);
}

function speak(text: string): void {
  byId("spoken").textContent = text;
}

function fail(error: unknown): void {
  notify(message(error), true);
}

// The page can do nothing any more, or nothing yet.
function showEnd(title: string, reason: string): void {
  const dialog = byId<HTMLDialogElement>("ended-dialog");
  if (dialog.open) return;
  dialog.replaceChildren(make("h2", { id: "ended-title" }, title), make("p", {}, reason),
                         make("div", { class: "buttons" }, make("button", { class: "primary end", click: () => location.reload() }, "Start again")));
  dialog.showModal();
}

function message(error: unknown): string {
  return error instanceof Error ? error.message : String(error);
}

class App {
  private readonly view: DrawingView;
  private readonly dialog: ToolDialog;
  private readonly strip: Strip;
  private seen: Partial<State> = {};
  private seenChanges = 0;
  private tools: Tool[] = [];
  private readonly settleTools = rove(byId("tools"));
  private readonly settleLayers = rove(byId("layers"), 2);

  constructor(private readonly session: Session) {
    this.view = new DrawingView(session, fail);
    this.strip = new Strip(color => this.tools.filter(tool => tool.flags & TAKES_ITEM && color).map(tool =>
      ({ name: tool.name, run: () => this.run(tool) })));
    this.dialog = new ToolDialog(session, speak, fail, () => { this.showMessages().catch(fail); });
    session.onState = state => this.follow(state).catch(fail);
    session.onProgress = progress => this.showProgress(progress);
    session.onEnded = reason => showEnd("The session has ended", reason);
    this.addActions();
    this.takeDrops();
  }

  // Shows what the state tells to be another than before.
  private async follow(state: State): Promise<void> {
    const before = this.seen;
    this.seen = state;
    this.showHead(state);
    this.view.follow(state);
    await this.dialog.follow(state.dialog);
    if (state.file === null || state.dialog !== null) return;
    const isOther = (...names: (keyof State)[]) => names.some(name => before[name] !== state[name]);
    const mayBeOther = this.session.changes !== this.seenChanges;
    this.seenChanges = this.session.changes;
    const lines: string[] = [];
    if (mayBeOther || isOther("drawing")) lines.push("print layers");
    if (mayBeOther || isOther("drawing", "shown", "filter")) lines.push("print colors");
    if (isOther("drawing", "selection", "selected")) lines.push("print extents");
    if (mayBeOther || isOther("drawing", "selection", "selected")) lines.push("print tools");
    if (lines.length === 0) return;
    for (const answer of await this.session.ask(...lines)) {
      if (answer.layers) this.showLayers(answer.layers);
      if (answer.colors) this.strip.show([...answer.colors, ...answer.brushes], isOther("drawing"));
      if (answer.extents) this.view.showSelection(answer.extents.boxes);
      if (answer.tools) this.showTools(answer.tools);
    }
  }

  private showHead(state: State): void {
    const name = state.file?.split("/").pop() ?? "kzdraw";
    byId("file-name").textContent = name;
    document.title = state.file === null ? "kzdraw" : `${name} – kzdraw`;
    const parts = state.objects === null ? [] : [state.objects === 1 ? "1 object" : `${number.format(state.objects)} objects`];
    if (state.selected) parts.push(`${number.format(state.selected)} selected`);
    if (state.hidden) parts.push(`${number.format(state.hidden)} hidden`);
    byId("counts").textContent = parts.join(" · ");
    const badge = byId("badge");
    badge.hidden = !state.filter;
    badge.textContent = "Filter on";
    badge.title = "A view filter decides what is shown";
    byId<HTMLButtonElement>("undo").disabled = !state.undo || state.dialog !== null;
    byId<HTMLButtonElement>("redo").disabled = !state.redo || state.dialog !== null;
    byId<HTMLButtonElement>("download").disabled = state.file === null;
  }

  private showTools(tools: Tool[]): void {
    this.tools = tools;
    const bar = byId("tools");
    const focused = (document.activeElement as HTMLElement | null)?.dataset.tool;
    if (bar.childElementCount !== tools.length) {
      bar.replaceChildren(...tools.map(tool => make("button", { "data-tool": tool.class, title: tool.description, click: () => this.run(tool) },
                                                    icon(icons[tool.class] ?? icons.tool), make("span", {}, tool.name))));
    }
    tools.forEach((tool, i) => { (bar.children[i] as HTMLButtonElement).disabled = !tool.valid; });
    this.settleTools();
    if (focused) bar.querySelector<HTMLElement>(`[data-tool="${CSS.escape(focused)}"]`)?.focus();
  }

  // A tool that takes a colour gets the one that is chosen; one that only may take one works without.
  private async run(tool: Tool): Promise<void> {
    if (document.body.classList.contains("panel-open")) this.togglePanel();
    const item = tool.flags & TAKES_ITEM ? this.strip.chosen?.item : undefined;
    try {
      const [first] = await this.session.send([line("tool", tool.class, ...(item ? [item] : []))]);
      if (first.error && item) await this.session.ask(line("tool", tool.class));
      else if (first.error && tool.flags & TAKES_ITEM) return notify("Choose a color in the strip first.");
      else if (first.error) throw new Error(first.error);
      if (this.session.state?.dialog === null) await this.showMessages();
    } catch (error) {
      fail(error);
    }
  }

  private async showMessages(): Promise<void> {
    const [{ messages }] = await this.session.ask("print messages") as [{ messages: string[] }];
    for (const text of messages) notify(text);
  }

  private showLayers(layers: Layer[]): void {
    const list = byId("layers");
    const focused = (document.activeElement as HTMLElement | null)?.dataset.act;
    const button = (layer: Layer, name: string, isOn: boolean, path: string, verb: string) =>
      make("button", { class: "tool", "aria-label": `${layer.name}: ${name}`, title: name, "aria-pressed": String(isOn),
                       "data-act": `${name} ${layer.name}`,
                       click: () => { this.session.ask(line("layer", layer.name, verb)).catch(fail); } }, icon(path));
    list.replaceChildren(...[...layers].reverse().map(layer => make(
      "li", { class: layer.hidden || layer.locked ? "dim" : "" },
      layer.master ? icon(icons.layer) : button(layer, "Hidden", layer.hidden, layer.hidden ? icons.hidden : icons.shown, layer.hidden ? "show" : "hide"),
      make("span", { class: "text", title: layer.name }, layer.name),
      layer.master ? make("span", { class: "tag" }, "master")
                   : button(layer, "Locked", layer.locked, layer.locked ? icons.lock : icons.unlocked, layer.locked ? "unlock" : "lock"),
      make("span", { class: "count" }, number.format(layer.objects)))));
    this.settleLayers();
    if (focused) list.querySelector<HTMLElement>(`[data-act="${CSS.escape(focused)}"]`)?.focus();
  }

  private addActions(): void {
    const bar = byId("actions");
    const button = (id: string, name: string, path: string, keys: string, act: () => void) =>
      make("button", { id, class: "tool", title: keys ? `${name} (${keys})` : name, "aria-label": name, click: act }, icon(path));
    const go = (done: string) => () => { this.session.ask(done).catch(fail); };
    bar.append(
      button("panel", "Tools and layers", icons.panel, "", () => this.togglePanel()),
      button("undo", "Undo", icons.undo, "Ctrl+Z", go("undo")), button("redo", "Redo", icons.redo, "Ctrl+Y", go("redo")),
      make("span", { class: "gap" }),
      button("open", "Open a drawing", icons.open, "Ctrl+O", () => this.openMenu("open")),
      button("download", "Download", icons.download, "", () => this.openMenu("download")),
      button("script", "Copy as script", icons.script, "", () => this.showScript()),
      button("theme", "Light or dark", icons.theme, "", () => this.turnTheme()));
    document.addEventListener("keydown", event => {
      if (!(event.ctrlKey || event.metaKey) || document.querySelector("dialog[open]")) return;
      const key = event.key.toLowerCase();
      const id = key === "z" ? (event.shiftKey ? "redo" : "undo") : key === "y" ? "redo" : key === "o" ? "open" : null;
      if (!id) return;
      event.preventDefault();
      byId(id).click();
    });
    byId("badge").addEventListener("click", () => {
      if (getComputedStyle(byId("side")).visibility === "hidden") this.togglePanel();
      else byId("tools").querySelector<HTMLElement>("button")?.focus();
    });
    const closePanel = () => { if (document.body.classList.contains("panel-open")) this.togglePanel(); };
    byId("stage").addEventListener("pointerdown", closePanel, true);
    byId("side").addEventListener("keydown", event => { if (event.key === "Escape") closePanel(); });
    byId("choose").addEventListener("click", () => byId("file").click());
    byId<HTMLInputElement>("file").addEventListener("change", event => {
      const input = event.target as HTMLInputElement;
      if (input.files?.[0]) this.openFile(input.files[0]);
      input.value = "";
    });
  }

  // Where the window is narrow the tools and layers lie in a panel.
  private togglePanel(): void {
    const isOpen = document.body.classList.toggle("panel-open");
    byId("panel").setAttribute("aria-expanded", String(isOpen));
    if (isOpen) byId("tools").querySelector<HTMLElement>('button[tabindex="0"]')?.focus();
    else if (byId("side").contains(document.activeElement)) byId("panel").focus();
  }

  private openMenu(of: "open" | "download"): void {
    const entries: [string, () => void][] = of === "open"
      ? [...this.session.files.map(file => [file, () => { this.open(file).catch(fail); }] as [string, () => void]),
         ["Choose a file…", () => byId("file").click()]]
      : [["Drawing, SVG", () => this.download("drawing.svg", ".svg")],
         ["Drawing as shown, SVG", () => this.download("drawing.svg?shown", ".svg")],
         ["Picture, PNG", () => this.download("picture.png", ".png")],
         ["Large picture, PNG", () => this.download("picture.png?width=4096", ".png")]];
    showMenu(byId(of), entries);
  }

  private download(path: string, extension: string): void {
    const name = (this.session.state?.file ?? "drawing").split("/").pop()!.replace(/\.svgz?$/i, "");
    make("a", { href: this.session.path(path), download: name + extension }).click();
  }

  async open(name: string): Promise<void> {
    await this.session.ask(line("open", name));
  }

  private async openFile(file: File): Promise<void> {
    try {
      this.showProgress({ line: `open ${file.name}`, seconds: 0 });
      await this.session.upload(file);
      await this.open(file.name);
    } catch (error) {
      fail(error);
    } finally {
      this.showProgress(null);
    }
  }

  private takeDrops(): void {
    let depth = 0;
    const mark = (by: number) => document.body.classList.toggle("dropping", (depth += by) > 0);
    document.addEventListener("dragenter", event => { event.preventDefault(); mark(1); });
    document.addEventListener("dragleave", () => mark(-1));
    document.addEventListener("dragover", event => event.preventDefault());
    document.addEventListener("drop", event => {
      event.preventDefault();
      mark(-depth);
      const file = event.dataTransfer?.files[0];
      if (file && !this.session.state?.dialog) this.openFile(file);
    });
  }

  private showScript(): void {
    const dialog = byId<HTMLDialogElement>("script-dialog");
    const text = this.session.recording.text();
    const copy = make("button", { class: "primary", click: async () => {
      try {
        await navigator.clipboard.writeText(text);
      } catch {
        getSelection()?.selectAllChildren(code);
        document.execCommand("copy");
      }
      copy.textContent = "Copied";
    } }, "Copy");
    const code = make("pre", { tabindex: 0, "aria-label": "Script" }, text || "# Nothing has been done yet.\n");
    dialog.replaceChildren(
      make("h2", { id: "script-title" }, "What was done, as a script"),
      make("p", {}, "kzdraw script runs these lines."), code,
      make("div", { class: "buttons" },
           make("button", { click: () => { this.session.recording.clear(); dialog.close(); } }, "Forget"),
           make("button", { class: "end", click: () => dialog.close() }, "Close"), copy));
    dialog.showModal();
  }

  private turnTheme(): void {
    const isDark = document.documentElement.dataset.theme
      ? document.documentElement.dataset.theme === "dark" : matchMedia("(prefers-color-scheme: dark)").matches;
    setTheme(isDark ? "light" : "dark");
    localStorage.setItem("kzdraw-theme", isDark ? "light" : "dark");
    this.view.showPage();
  }

  private showProgress(progress: { line: string; seconds: number } | null): void {
    byId("progress").hidden = progress === null;
    if (progress) byId("progress-text").textContent = `${progress.line}  ${progress.seconds >= 1 ? `${Math.round(progress.seconds)} s` : ""}`;
  }

  async begin(): Promise<void> {
    if (this.session.state) await this.follow(this.session.state);
    else await this.session.ask("print state");
    if (this.session.state?.file == null && this.session.files.length) await this.open(this.session.files[0]);
    if (this.session.state?.file == null) this.showTools((await this.session.ask("print tools"))[0].tools);
  }
}

// A list of commands below a button.
function showMenu(button: HTMLElement, entries: [string, () => void][]): void {
  document.querySelector(".menu")?.remove();
  const menu = make("div", { role: "menu", class: "menu", "aria-label": button.getAttribute("aria-label") });
  const close = () => {
    menu.remove();
    button.setAttribute("aria-expanded", "false");
    document.removeEventListener("pointerdown", outside, true);
  };
  const outside = (event: Event) => { if (!menu.contains(event.target as Node)) close(); };
  for (const [name, act] of entries)
    menu.append(make("button", { role: "menuitem", tabindex: -1, click: () => { close(); button.focus(); act(); } }, name));
  menu.addEventListener("keydown", event => {
    if (event.key === "Escape" || event.key === "Tab") { close(); button.focus(); }
  });
  document.body.append(menu);
  const place = button.getBoundingClientRect();
  menu.style.top = `${place.bottom + 4}px`;
  menu.style.left = `${Math.max(8, Math.min(place.left, innerWidth - menu.offsetWidth - 8))}px`;
  button.setAttribute("aria-expanded", "true");
  rove(menu)();
  menu.querySelector("button")?.focus();
  document.addEventListener("pointerdown", outside, true);
}

function setTheme(theme: string | null): void {
  if (theme === "light" || theme === "dark") document.documentElement.dataset.theme = theme;
}

async function main(): Promise<void> {
  setTheme(localStorage.getItem("kzdraw-theme"));
  const session = await Session.start().catch((error: unknown) => showEnd("No session could be started", message(error)));
  if (session) await new App(session).begin().catch(fail);
  document.documentElement.dataset.ready = "true";
}

main();
