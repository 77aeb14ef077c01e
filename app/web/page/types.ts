// The JSON that script lines answer with.

export interface State {
  file: string | null;
  drawing: number;
  page: [number, number, number, number] | null;
  scale: number | null;
  objects: number | null;
  selected: number | null;
  hidden: number | null;
  selection: number | null;
  shown: number | null;
  filter: boolean | null;
  undo: boolean | null;
  redo: boolean | null;
  dialog: string | null;
}

export interface Answer { output: any[]; error: string | null; state: State; }

export interface Tool { class: string; name: string; description: string; flags: number; valid: boolean; }

export interface Layer { name: string; class: string; master: boolean; locked: boolean; hidden: boolean; objects: number; }

export interface Color {
  name: string;
  class: string;
  value?: string;
  stops?: [string, number][];
  item: string;
  objects: number;
  visible: boolean;
}

export interface Row { depth: number; text: string; check: number; image: number; expanded: boolean; children: number; }

export interface Rows {
  revision: number;
  page: string | null;
  enabled: boolean;
  all?: Row[];
  changed?: { row: number; check: number; image: number; expanded: boolean }[];
}

export interface Images { width: number; height: number; columns: number; count: number; png: string | null; }

export type Kind = "button" | "check box" | "tree" | "tabs" | "other";

export interface Control {
  id: number;
  kind: Kind;  // "print kinds" tells them
  text: string;
  enabled: boolean;
  checked: boolean | null;
  rect: [number, number, number, number];
}

export interface Dialog { title: string; page: string | null; pages: string[]; controls: Control[]; }
