// The drawing on the screen: tiles that the session draws, what is selected, pointing and rubber band.

import * as L from "leaflet";
import { byId, icon, make, rove } from "./dom";
import { icons } from "./icons";
import { line } from "./script";
import type { Session } from "./session";
import type { State } from "./types";

const TILE = 256;  // CSS pixels
const REACH = 4;  // CSS pixels that a click may miss by
const STEP = 60;  // CSS pixels that an arrow key pans by
const ZOOM = 0.5;  // zoom levels of a key or a button

// A unit of the drawing is a pixel at zoom 0; y grows downwards.
const crs = L.Util.extend({}, L.CRS.Simple, { transformation: new L.Transformation(1, 0, 1, 0) });

const density = () => Math.min(4, Math.max(1, window.devicePixelRatio));

// Tiles of the zoom that is shown, not of the next whole one: sharp, and without seams. Those of other zooms stay below
// until the new ones are there.
class Tiles extends L.GridLayer {
  private zoom = 0;

  constructor(private readonly session: Session, readonly picture: string) {
    super({ tileSize: TILE, keepBuffer: 3, minZoom: -24, maxZoom: 24, updateWhenZooming: false, noWrap: true });
  }

  protected override _setView(center: L.LatLng, zoom: number, noPrune?: boolean, noUpdate?: boolean): void {
    if (!noUpdate) this.zoom = zoom;
    super._setView(center, zoom, noPrune, noUpdate);
  }

  protected override _clampZoom(): number { return this.zoom; }

  protected override _pruneTiles(): void {
    if (!this.isLoading()) super._pruneTiles();
  }

  protected override createTile(at: { x: number; y: number; z: number }, done: (error: Error | null, tile: HTMLElement) => void): HTMLElement {
    const tile = make("img", { alt: "", role: "presentation" });
    const side = Math.round(TILE * density());
    const scale = Math.pow(2, at.z) * side / TILE;
    tile.onload = () => done(null, tile);
    tile.onerror = () => done(new Error("no tile"), tile);
    tile.src = this.session.path(`tiles/${this.picture}/${scale}/${side}/${at.x}/${at.y}.png`);
    return tile;
  }
}

export class DrawingView {
  private readonly map: L.Map;
  private tiles: Tiles | null = null;
  private leaving: Tiles[] = [];  // tiles of the picture before, until the new ones are there
  private boxes: L.Layer | null = null;
  private surround: L.Layer[] = [];
  private drawing = 0;
  private page: [number, number, number, number] = [0, 0, 1, 1];
  private lastHit = { x: NaN, y: NaN, names: [] as string[], at: 0 };
  private selects = false;  // dragging draws a rubber band
  private zooms = false;  // a zoom is on its way
  private zoomLeft = 0;  // what was asked for meanwhile

  constructor(private readonly session: Session, private readonly fail: (error: unknown) => void) {
    const element = byId("map");
    const still = matchMedia("(prefers-reduced-motion: reduce)").matches;
    this.map = L.map(element, {
      crs, zoomSnap: 0, wheelPxPerZoomLevel: 90, attributionControl: false, zoomControl: false, boxZoom: false, keyboard: false,
      doubleClickZoom: false, fadeAnimation: false, zoomAnimation: !still, inertia: !still, maxBoundsViscosity: 0,
    });
    this.map.setView([0, 0], 0);
    this.map.on("click", event => this.hit(event.latlng.lng, event.latlng.lat, event.originalEvent.shiftKey).catch(this.fail));
    this.map.on("zoomstart", () => { this.zooms = true; });
    this.map.on("zoomend", () => {
      this.zooms = false;
      this.zoomBy(0);
    });
    element.addEventListener("pointerdown", event => {
      element.focus({ preventScroll: true });
      this.startBand(event);
    }, true);
    element.addEventListener("keydown", event => this.onKey(event));
    new ResizeObserver(() => this.map.invalidateSize({ animate: false })).observe(element);
    this.addButtons();
  }

  private addButtons(): void {
    const bar = byId("map-tools");
    const button = (name: string, path: string, act: () => void, key: string) =>
      make("button", { class: "tool", title: `${name} (${key})`, "aria-label": name, "aria-keyshortcuts": key, click: act }, icon(path));
    const pan = button("Drag to pan", icons.hand, () => choose(false), "H");
    const select = button("Drag to select", icons.arrow, () => choose(true), "V");
    const choose = (selects: boolean) => {
      this.selects = selects;
      pan.setAttribute("aria-pressed", String(!selects));
      select.setAttribute("aria-pressed", String(selects));
      byId("map").classList.toggle("selects", selects);
    };
    choose(false);
    bar.append(pan, select, make("span", { class: "gap", role: "separator", "aria-orientation": "vertical" }),
               button("Zoom in", icons.plus, () => this.zoomBy(ZOOM), "+"), button("Zoom out", icons.minus, () => this.zoomBy(-ZOOM), "-"),
               button("Show the whole page", icons.fit, () => this.fit(), "0"));
    rove(bar)();
    document.addEventListener("keydown", event => {
      if (event.ctrlKey || event.altKey || event.metaKey || document.querySelector("dialog[open]")) return;
      if ((event.target as Element).closest("#swatches, input")) return;
      if (event.key === "h") choose(false);
      else if (event.key === "v") choose(true);
      else if (event.key === "0") this.fit();
    });
  }

  // Shows what the state tells of.
  follow(state: State): void {
    byId("empty").hidden = state.file !== null;
    if (!state.page) return;
    if (state.drawing !== this.drawing) {
      this.drawing = state.drawing;
      this.page = state.page;
      this.tiles?.remove();
      this.tiles = null;
      this.boxes?.remove();
      this.lastHit.names = [];
      this.fit();
      this.showPage();
    }
    const picture = `${state.drawing}/${state.shown}`;
    if (this.tiles?.picture !== picture) this.showPicture(picture);
  }

  // Dims what lies beside the page.
  showPage(): void {
    for (const layer of this.surround.splice(0)) layer.remove();
    const [x, y, w, h] = this.page;
    const style = getComputedStyle(document.documentElement);
    const color = (name: string) => style.getPropertyValue(name).trim();
    const far = 50 * Math.max(w, h);
    const ring = (x0: number, y0: number, x1: number, y1: number): L.Corner[] => [[y0, x0], [y0, x1], [y1, x1], [y1, x0]];
    const renderer = L.canvas({ padding: 0.6 });
    const page = ring(x, y, x + w, y + h);
    this.surround = [
      L.polygon([ring(x - far, y - far, x + w + far, y + h + far), page],
                { renderer, interactive: false, stroke: false, fillColor: color("--ground"), fillOpacity: 0.86 }).addTo(this.map),
      L.polygon([page], { renderer, interactive: false, fill: false, color: color("--line"), weight: 1 }).addTo(this.map),
    ];
  }

  // The picture before stays below until the new one is complete.
  private showPicture(picture: string): void {
    const before = this.tiles;
    const next = new Tiles(this.session, picture);
    this.tiles = next;
    if (before) this.leaving.push(before);
    document.documentElement.dataset.tiles = "loading";
    next.on("loading", () => { document.documentElement.dataset.tiles = "loading"; });
    next.on("load", () => {
      if (this.tiles !== next) return;
      for (const old of this.leaving.splice(0)) old.remove();
      document.documentElement.dataset.tiles = picture;
    });
    next.addTo(this.map);
  }

  // Boxes of the selected objects, in user units.
  showSelection(boxes: [number, number, number, number][]): void {
    this.boxes?.remove();
    this.boxes = null;
    if (boxes.length === 0) return;
    const rings: L.Corner[][][] = boxes.map(([x, y, w, h]) => [[[y, x], [y, x + w], [y + h, x + w], [y + h, x]]]);
    const color = getComputedStyle(document.documentElement).getPropertyValue("--accent").trim() || "#1f5fbf";
    this.boxes = L.polygon(rings, {
      renderer: L.canvas({ padding: 0.2 }), interactive: false, color, weight: 1.5, fillOpacity: 0.08, noClip: true, smoothFactor: 0,
    }).addTo(this.map);
  }

  fit(): void {
    const [x, y, w, h] = this.page;
    this.map.setMinZoom(-24).setMaxZoom(24);
    this.map.invalidateSize({ animate: false });
    this.map.fitBounds([[y, x], [y + h, x + w]], { animate: false, padding: [24, 24] });
    const zoom = this.map.getZoom();
    this.map.setMinZoom(zoom - 4).setMaxZoom(zoom + 10);
  }

  // The map takes no zoom while one is on its way: what comes then follows.
  private zoomBy(levels: number): void {
    this.zoomLeft += levels;
    if (this.zooms || this.zoomLeft === 0) return;
    const from = this.map.getZoom();
    const zoom = Math.min(Math.max(from + this.zoomLeft, this.map.getMinZoom()), this.map.getMaxZoom());
    this.zoomLeft = 0;
    if (zoom === from) return;
    this.zooms = true;  // the map itself says so only with the next frame
    this.map.setZoom(zoom);
  }

  private unit(): number { return Math.pow(2, this.map.getZoom()); }  // CSS pixels of one

  // Selects what is topmost there; a further click on the same place, what lies below it.
  private async hit(x: number, y: number, adds: boolean): Promise<void> {
    if (!this.session.state?.file || this.session.state.dialog !== null) return;
    const [{ at }] = await this.session.ask(`print at ${x} ${y} ${REACH / this.unit()}`) as [{ at: string[] }];
    const isSame = Math.hypot(x - this.lastHit.x, y - this.lastHit.y) * this.unit() < REACH && at.join("\n") === this.lastHit.names.join("\n");
    this.lastHit = { x, y, names: at, at: isSame && !adds ? (this.lastHit.at + 1) % Math.max(1, at.length) : 0 };
    if (!adds) return this.select(at.length ? [at[this.lastHit.at]] : []);
    if (at.length) await this.add(at.slice(0, 1));
  }

  // What is selected already leaves instead, when it is but one object.
  private async add(names: string[]): Promise<void> {
    const [{ selection }] = await this.session.ask("print selection") as [{ selection: string[] }];
    const selected = new Set(selection);
    const leaves = names.length === 1 && selected.has(names[0]);
    for (const name of names) leaves ? selected.delete(name) : selected.add(name);
    await this.select([...selected]);
  }

  private async select(names: string[]): Promise<void> {
    if (names.length === 0 && this.session.state?.selected === 0) return;
    await this.session.ask(names.length ? line("select", ...names) : "select none");
  }

  // With Shift, or when dragging selects: to the right what lies within, to the left also what reaches in.
  private startBand(event: PointerEvent): void {
    if (event.button !== 0 || !event.isPrimary || !(this.selects || event.shiftKey) || !this.session.state?.file) return;
    const element = byId("map");
    const origin = element.getBoundingClientRect();
    const start: [number, number] = [event.clientX - origin.left, event.clientY - origin.top];
    const adds = event.shiftKey;
    const band = make("div", { class: "band" });
    let end = start;
    this.map.dragging.disable();
    const move = (moved: PointerEvent) => {
      end = [moved.clientX - origin.left, moved.clientY - origin.top];
      band.className = end[0] < start[0] ? "band touching" : "band";
      Object.assign(band.style, {
        left: `${Math.min(start[0], end[0])}px`, top: `${Math.min(start[1], end[1])}px`,
        width: `${Math.abs(end[0] - start[0])}px`, height: `${Math.abs(end[1] - start[1])}px`,
      });
      if (!band.isConnected && Math.hypot(end[0] - start[0], end[1] - start[1]) > REACH) element.append(band);
    };
    let isGivenUp = false;
    const up = (event: PointerEvent) => {
      window.removeEventListener("pointermove", move);
      window.removeEventListener("pointerup", up);
      window.removeEventListener("pointercancel", up);
      window.removeEventListener("keydown", key, true);
      this.map.dragging.enable();
      if (!band.isConnected && !isGivenUp) return;
      band.remove();
      // The click that ends a drag is none.
      window.addEventListener("click", click => click.stopPropagation(), { capture: true, once: true });
      setTimeout(() => window.dispatchEvent(new MouseEvent("click")));
      if (!isGivenUp && event.type === "pointerup") this.takeBand(start, end, adds).catch(this.fail);
    };
    // Until the button is released nothing else comes of the drag.
    const key = (pressed: KeyboardEvent) => {
      if (pressed.key !== "Escape" || !band.isConnected) return;
      pressed.stopPropagation();
      isGivenUp = true;
      window.removeEventListener("pointermove", move);
      band.remove();
    };
    window.addEventListener("pointermove", move);
    window.addEventListener("pointerup", up);
    window.addEventListener("pointercancel", up);
    window.addEventListener("keydown", key, true);
  }

  private async takeBand(start: [number, number], end: [number, number], adds: boolean): Promise<void> {
    const a = this.map.containerPointToLatLng(start), b = this.map.containerPointToLatLng(end);
    const area = [Math.min(a.lng, b.lng), Math.min(a.lat, b.lat), Math.abs(a.lng - b.lng), Math.abs(a.lat - b.lat)];
    if (area[2] === 0 || area[3] === 0) return;
    const what = end[0] < start[0] ? "touching" : "inside";
    const [answer] = await this.session.ask(`print ${what} ${area.join(" ")}`);
    await (adds ? this.add(answer[what]) : this.select(answer[what]));
  }

  // An arrow pans at once, so that every press counts and the middle is where it is seen to be.
  private onKey(event: KeyboardEvent): void {
    if (event.ctrlKey || event.altKey || event.metaKey) return;
    const step = event.shiftKey ? 3 * STEP : STEP;
    const pans: Record<string, [number, number]> = {
      ArrowLeft: [-step, 0], ArrowRight: [step, 0], ArrowUp: [0, -step], ArrowDown: [0, step],
    };
    if (event.key in pans) this.map.panBy(pans[event.key], { animate: false });
    else if (event.key === "+" || event.key === "=") this.zoomBy(ZOOM);
    else if (event.key === "-") this.zoomBy(-ZOOM);
    else if (event.key === "Escape") this.select([]).catch(this.fail);
    else if (event.key === "Enter" || event.key === " ") {
      const center = this.map.getCenter();
      this.hit(center.lng, center.lat, event.shiftKey).catch(this.fail);
    } else return;
    event.preventDefault();
  }
}
