// What the server of the view answers, and how it is asked.

export interface Column {
  key: string;
  title: string;
  align: "left" | "right";
  width: number;
}

export interface State {
  version: number; // of this interface
  files: string[];
  frames: number;
  bytes: number;
  size: number | null;
  complete: boolean;
  live: boolean;
  paused: boolean;
  dropped: number;
  damage: string | null;
  first: string;
  last: string;
  charsets: string[];
  columns: Column[];
  charset: string;
  utcOffset: number; // seconds, of the zone in which the list shows times
}

// Kind and key of something that can be named.
export type Who = [kind: string, key: string];

export interface Row {
  n: number;
  c: string[];
  k: string;
  bad: boolean;
}

export interface Rows {
  total: number;
  complete: boolean;
  rows: Row[];
}

// Text, code, level, first and last byte where it tells of any, style.
export interface WireLine {
  t: string;
  p: number;
  l: number;
  s?: number;
  e?: number;
  y: [number, number];
}

export interface WireFrame {
  n: number;
  time: string;
  length: number;
  originalLength: number;
  top: number;
  lines: WireLine[];
  bytes: string;
  cells: [offset: number, width: number, text: string][];
}

export interface Count {
  frames: number;
  bytes: number;
}

export interface Talker {
  address: string;
  name?: string;
  sent: Count;
  received: Count;
  framings?: Record<string, Count>;
}

export interface Conversation {
  a: { address: string; name?: string };
  b: { address: string; name?: string };
  a_to_b: Count;
  b_to_a: Count;
}

export interface Table<T> {
  entries: number;
  rows: T[];
}

export interface Sums {
  right: number;
  wrong: number;
  none: number;
  not_verified: number;
}

export interface Stats extends Count {
  complete: boolean;
  seconds?: number; // these three: where there are frames
  shortest?: number;
  longest?: number;
  protocols: (Count & { path: string[] })[];
  stations: Table<Talker>;
  ipv4: Table<Talker>;
  ipv6: Table<Talker>;
  ipx: Table<Talker>;
  station_conversations: Table<Conversation>;
  ipv4_conversations: Table<Conversation>;
  ipv6_conversations: Table<Conversation>;
  ipx_conversations: Table<Conversation>;
  ports: Table<Count & { protocol: string; port: number; name?: string }>;
  sizes: (Count & { from: number; to?: number })[];
  checksums: Record<string, Sums>;
  framings: Record<string, Count>;
}

export interface Timeline {
  start: string;
  width: number;
  frames: number[];
  bytes: number[];
  complete: boolean;
}

export interface Name {
  kind: string;
  key: string;
  name: string;
  source: string;
}

export interface Names {
  names: Name[];
  file: string;
  unsaved: number;
}

export type Query = Record<string, string | number | undefined>;

// What the server said against a question; `at` is the column of a fault in a filter.
export class Refusal extends Error {
  constructor(message: string, readonly at?: number) {
    super(message);
  }
}

async function answer<T>(reply: Response): Promise<T> {
  const body = await reply.json().catch(() => null);
  if (reply.ok) return body as T;
  throw new Refusal(body?.message ?? `The server answered ${reply.status}.`, body?.at);
}

export async function ask<T>(path: string, query: Query = {}, signal?: AbortSignal): Promise<T> {
  const words = new URLSearchParams();
  for (const [key, value] of Object.entries(query)) {
    if (value !== undefined && value !== "") words.set(key, String(value));
  }
  const tail = words.toString();
  return answer<T>(await fetch(`api/${path}${tail && "?" + tail}`, signal ? { signal } : {}));
}

export async function tell<T>(method: "PUT" | "POST", path: string, body: unknown = {}): Promise<T> {
  const headers = { "Content-Type": "application/json", "X-Wirelines": "1" };
  return answer<T>(await fetch(`api/${path}`, { method, headers, body: JSON.stringify(body) }));
}
