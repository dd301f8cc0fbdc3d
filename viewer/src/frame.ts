// One frame as the panes need it: its lines as a tree, its bytes, and which line tells of which byte.
import type { WireFrame, Who } from "./api";

export interface Line {
  index: number;
  text: string;
  code: number;
  level: number;
  start: number; // -1 without bytes
  end: number;
  style: [number, number];
}

export interface Node {
  line: Line;
  kind: "layer" | "section" | "line";
  depth: number;
  parent: Node | null;
  children: Node[];
  key: string; // the same for the same layer or section of every frame
}

export interface Cell {
  width: number;
  text: string; // empty in the second byte of a character
}

export interface Frame {
  n: number;
  time: string;
  length: number;
  originalLength: number;
  top: number;
  lines: Line[];
  roots: Node[];
  nodes: (Node | undefined)[]; // by line; blank lines have none
  bytes: Uint8Array;
  cells: Cell[];
}

const kBar = /^--- ?([^-].*?) ?-{2,}$/;

// What stands in the rule of a title or heading, one or two texts; null where the line is none.
export function heading(text: string): string[] | null {
  return kBar.exec(text)?.[1]?.split(/ -{4,} /) ?? null;
}

function parse_hex(digits: string): Uint8Array {
  const bytes = new Uint8Array(digits.length >> 1);
  for (let i = 0; i < bytes.length; ++i) bytes[i] = Number.parseInt(digits.substr(2 * i, 2), 16);
  return bytes;
}

// A layer holds its headings, a heading the fields up to the next one, a field the details below it.
function grow(lines: Line[]): { roots: Node[]; nodes: (Node | undefined)[] } {
  const roots: Node[] = [];
  const nodes: (Node | undefined)[] = [];
  const open: (Node | null)[] = [null, null, null]; // layer, section, field
  for (const line of lines) {
    if (line.text === "") continue;
    const title = heading(line.text);
    const kind = title === null ? "line" : line.level === 0 ? "layer" : "section";
    const rank = kind === "layer" ? 0 : kind === "section" ? 1 : line.level >= 2 ? 3 : 2;
    let parent: Node | null = null;
    for (let i = 0; i < rank; ++i) parent = open[i] ?? parent;
    const name = (title?.[0] ?? line.text.slice(0, line.text.indexOf("]") + 1)).replace(/[0-9].*/, "");
    const node: Node = {
      line,
      kind,
      depth: parent ? parent.depth + 1 : 0,
      parent,
      children: [],
      key: kind === "layer" ? `${line.code}` : `${line.code}/${name}`,
    };
    nodes[line.index] = node;
    (parent ? parent.children : roots).push(node);
    for (let i = rank; i < open.length; ++i) open[i] = i === rank ? node : null;
  }
  return { roots, nodes };
}

export function read_frame(wire: WireFrame): Frame {
  const lines = wire.lines.map((line, index): Line => {
    const start = line.s ?? -1;
    return { index, text: line.t, code: line.p, level: line.l, start, end: line.e ?? start, style: line.y };
  });
  const bytes = parse_hex(wire.bytes);
  const cells: Cell[] = Array.from(bytes, () => ({ width: 1, text: "" }));
  for (const [offset, width, text] of wire.cells) cells[offset] = { width, text };
  const { n, time, length, originalLength, top } = wire;
  return { n, time, length, originalLength, top, lines, ...grow(lines), bytes, cells };
}

// The deepest line that covers a byte; of several the one with the fewest bytes. -1 where none does.
export function line_of(frame: Frame, offset: number): number {
  let best: Node | undefined;
  for (const node of frame.nodes) {
    if (!node || node.line.start < 0 || offset < node.line.start || offset > node.line.end) continue;
    const width = node.line.end - node.line.start;
    const rank = best ? node.depth - best.depth : 1;
    if (!best || rank > 0 || (rank === 0 && width < best.line.end - best.line.start)) best = node;
  }
  return best ? best.line.index : -1;
}

export function layer_of(node: Node): Node {
  return node.parent ? layer_of(node.parent) : node;
}

export function text_of(node: Node): string {
  const indent = "  ".repeat(Math.min(node.line.level, 2));
  return [indent + node.line.text.trimEnd(), ...node.children.map(text_of)].join("\n");
}

export function hex_of(bytes: Uint8Array): string {
  return Array.from(bytes, (byte) => byte.toString(16).padStart(2, "0")).join(" ");
}

// What a line shows that can be named: it is read from the bytes, for the text may already show the name.
export function who_of(frame: Frame, line: Line): Who | null {
  if (line.start < 0 || line.end >= frame.bytes.length) return null;
  const label = line.text.slice(0, line.text.indexOf("]") + 1);
  const bytes = Array.from(frame.bytes.subarray(line.start, line.end + 1));
  if (/Address\]$/.test(label)) {
    const pair = (i: number) => ((bytes[i] ?? 0) * 256 + (bytes[i + 1] ?? 0)).toString(16);
    if (bytes.length === 4 && !label.includes("Network")) return ["ip", bytes.join(".")];
    if (bytes.length === 6) return ["station", bytes.map((byte) => byte.toString(16).padStart(2, "0")).join(":")];
    if (bytes.length === 16) return ["ip6", [0, 2, 4, 6, 8, 10, 12, 14].map(pair).join(":")];
  }
  if (/^\[(Source|Destination) Port\]$/.test(label) && bytes.length === 2) {
    return ["port", String((bytes[0] ?? 0) * 256 + (bytes[1] ?? 0))];
  }
  return null;
}

// Kind and key in one form: the digits of a station, all groups of an IPv6 address.
export function key_text(who: Who | null): string {
  if (!who) return "";
  const [kind, key] = [who[0], who[1].toLowerCase()];
  if (kind === "station") return `${kind} ${key.replace(/[^0-9a-f]/g, "")}`;
  if (kind !== "ip6") return `${kind} ${key}`;
  const groups = (part = "") => part.split(":").filter(Boolean).map((group) => Number.parseInt(group, 16));
  const [head, tail] = key.split("::");
  const [left, right] = [groups(head), groups(tail)];
  return [kind, ...left, ...Array<number>(Math.max(0, 8 - left.length - right.length)).fill(0), ...right].join(" ");
}
