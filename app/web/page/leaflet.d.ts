// What the page uses of the library of maps.
declare module "leaflet" {
  export interface Point { x: number; y: number; }
  export interface LatLng { lat: number; lng: number; }
  export type Corner = [number, number];
  export interface MouseEvent { latlng: LatLng; containerPoint: Point; originalEvent: globalThis.MouseEvent; }
  export interface Handler { enable(): void; disable(): void; }
  export class Layer {
    addTo(map: Map): this;
    remove(): this;
    on(event: string, listener: () => void): this;
    once(event: string, listener: () => void): this;
  }
  export class Map {
    dragging: Handler;
    boxZoom: Handler;
    getContainer(): HTMLElement;
    setView(center: Corner | LatLng, zoom: number, options?: object): this;
    fitBounds(bounds: [Corner, Corner], options?: object): this;
    getMinZoom(): number;
    getMaxZoom(): number;
    setMinZoom(zoom: number): this;
    setMaxZoom(zoom: number): this;
    getZoom(): number;
    getCenter(): LatLng;
    setZoom(zoom: number): this;
    panBy(offset: [number, number], options?: object): this;
    getSize(): Point;
    invalidateSize(options?: object): this;
    containerPointToLatLng(point: [number, number]): LatLng;
    latLngToContainerPoint(place: Corner): Point;
    on(event: string, listener: (event: MouseEvent) => void): this;
  }
  export class GridLayer extends Layer {
    constructor(options?: object);
    redraw(): this;
    isLoading(): boolean;
    getContainer(): HTMLElement | null;
    protected _setView(center: LatLng, zoom: number, noPrune?: boolean, noUpdate?: boolean): void;
    protected _clampZoom(zoom: number): number;
    protected _pruneTiles(): void;
    protected createTile(at: { x: number; y: number; z: number }, done: (error: Error | null, tile: HTMLElement) => void): HTMLElement;
  }
  export class Transformation { constructor(a: number, b: number, c: number, d: number); }
  export const CRS: { Simple: object };
  export const Util: { extend<A, B>(target: object, a: A, b: B): A & B };
  export function map(element: HTMLElement, options?: object): Map;
  export function canvas(options?: object): object;
  export function polygon(rings: Corner[][][] | Corner[][], options?: object): Layer;
}
