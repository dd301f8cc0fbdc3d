// What is shown: the state of the trace, the filter, the chosen frame, line and byte. Everything on the page reads these
// signals and changes them through the functions below.
import { batch, computed, signal } from "@preact/signals";
import { ask, Refusal, tell, type Names, type Query, type Rows, type State, type WireFrame, type Who } from "./api";
import { line_of, read_frame, type Frame } from "./frame";
import { RowCache } from "./rows";
import { file_name } from "./text";

export type Page = "frames" | "statistics" | "names";

export const state = signal<State | null>(null);
export const lost = signal(""); // why the server cannot be reached
export const page = signal<Page>("frames");
export const filter = signal("");
export const fault = signal<{ message: string; at: number | undefined } | null>(null);
export const span = signal<{ after: string; before: string } | null>(null);
export const charset = signal("");
export const follow = signal(false);
export const cursor = signal(-1); // row of the chosen frame, -1 while it is not known
export const chosen = signal(0); // its number
export const frame = signal<Frame | null>(null);
export const frame_error = signal("");
export const line = signal(-1); // of the chosen frame's lines
export const byte = signal(-1);
export const hovered = signal(-1); // line under the pointer
export const names = signal<Names | null>(null);
export const renamed = signal(0); // counts up when a name changes
export const toast = signal("");
export const naming = signal<{ who: Who; near: DOMRect; back: Element | null } | null>(null);
export const reveal = signal<{ index: number; how: "near" | "middle" } | null>(null); // a row to bring into view

export const rows = new RowCache((error) => trouble(error));

export const query = computed<Query>(() => ({
  filter: filter.value || undefined,
  after: span.value?.after,
  before: span.value?.before,
}));

const kUnreachable = "The program no longer answers. What is shown stays; frames not yet loaded cannot be.";

// A fault of the filter belongs below it; an aborted question is none.
export function trouble(error: unknown): void {
  if (error instanceof DOMException && error.name === "AbortError") return;
  if (error instanceof Refusal) {
    if (filter.value && error.at !== undefined) fault.value = { message: error.message, at: error.at };
    else say(error.message);
  } else {
    lost.value = kUnreachable;
  }
}

let toast_timer = 0;
export function say(text: string): void {
  toast.value = text;
  clearTimeout(toast_timer);
  toast_timer = setTimeout(() => (toast.value = ""), 4000);
}

// The address of the page

function read_address(): { frame: number; filter: string; charset: string; page: Page; span: typeof span.value } {
  const words = new URLSearchParams(location.hash.slice(1));
  const view = words.get("view");
  const [, after, before] = /^(\d{1,19})-(\d{1,19})$/.exec(words.get("span") ?? "") ?? [];
  return {
    frame: Number.parseInt(words.get("frame") ?? "", 10) || 0,
    filter: words.get("filter") ?? "",
    charset: words.get("charset") ?? "",
    page: view === "statistics" || view === "names" ? view : "frames",
    span: after && before ? { after, before } : null,
  };
}

function write_address(): void {
  const words = new URLSearchParams();
  if (page.value !== "frames") words.set("view", page.value);
  if (chosen.value) words.set("frame", String(chosen.value));
  if (filter.value) words.set("filter", filter.value);
  if (span.value) words.set("span", `${span.value.after}-${span.value.before}`);
  if (charset.value && charset.value !== state.value?.charset) words.set("charset", charset.value);
  const hash = words.toString();
  if (hash !== location.hash.slice(1)) history.replaceState(null, "", hash ? "#" + hash : location.pathname);
}

// Frames

let frame_asked: AbortController | null = null;

async function load_frame(keep_line: boolean): Promise<void> {
  frame_asked?.abort();
  const asked = new AbortController();
  frame_asked = asked;
  try {
    const wire = await ask<WireFrame>("frame", { n: chosen.value, charset: charset.value || undefined }, asked.signal);
    if (frame_asked !== asked) return;
    const read = read_frame(wire);
    batch(() => {
      frame.value = read;
      frame_error.value = "";
      hovered.value = -1;
      if (!keep_line || line.value >= read.lines.length) {
        line.value = read.nodes[read.top] ? read.top : (read.roots[0]?.line.index ?? -1);
        byte.value = -1;
      }
    });
  } catch (error) {
    if (frame_asked !== asked || (error instanceof DOMException && error.name === "AbortError")) return;
    frame_error.value = error instanceof Refusal ? error.message : kUnreachable;
    frame.value = null;
  }
}

export function choose_row(index: number): void {
  const row = rows.at(index);
  batch(() => {
    cursor.value = index;
    reveal.value = { index, how: "near" };
    if (follow.value && index < rows.total.value - 1) follow.value = false;
    if (row && row.n !== chosen.value) choose_frame(row.n);
    else if (!row) waiting_row = index;
  });
}

// Onwards in the list. Where the chosen frame is not in it, the cursor stands at the one behind it.
export function step(by: number): void {
  const last = rows.total.value - 1;
  const behind = (rows.at(cursor.value)?.n ?? 0) > chosen.value;
  const to = cursor.value + (behind && by > 0 ? by - 1 : by);
  if (last >= 0) choose_row(Math.max(0, Math.min(to, last)));
}

// A row that was chosen before its page came.
let waiting_row = -1;
export function rows_arrived(): void {
  const row = waiting_row >= 0 ? rows.at(waiting_row) : undefined;
  if (row) {
    waiting_row = -1;
    if (row.n !== chosen.value) choose_frame(row.n);
  }
}

function choose_frame(n: number): void {
  waiting_row = -1;
  chosen.value = n;
  write_address();
  load_frame(false);
}

// By number: where it stands in the list is asked for.
export async function go_to_frame(n: number): Promise<void> {
  if (n !== chosen.value) choose_frame(n);
  await find_row();
}

async function find_row(): Promise<void> {
  const [n, about] = [chosen.value, query.value];
  if (!n) return;
  try {
    const { index } = await ask<{ index: number }>("row", { ...about, n });
    if (n === chosen.value && about === query.value) {
      cursor.value = index;
      if (index >= 0) reveal.value = { index, how: "middle" };
    }
  } catch (error) {
    trouble(error);
  }
}

export function choose_line(index: number, at = -1): void {
  batch(() => {
    line.value = index;
    byte.value = at;
  });
}

export function choose_byte(offset: number): void {
  const shown = frame.value;
  if (!shown || offset < 0 || offset >= shown.bytes.length) return;
  choose_line(line_of(shown, offset), offset);
}

export function use_charset(name: string): void {
  charset.value = name;
  write_address();
  if (chosen.value) load_frame(true);
}

// Filter and span

export async function use_filter(text: string): Promise<boolean> {
  const expression = text.trim();
  if (expression) {
    try {
      const reply = await ask<{ ok: boolean; message?: string; at?: number }>("check", { filter: expression });
      if (!reply.ok) {
        fault.value = { message: reply.message ?? "This is no filter.", at: reply.at };
        return false;
      }
    } catch (error) {
      if (error instanceof Refusal) fault.value = { message: error.message, at: error.at };
      else trouble(error);
      return false;
    }
  }
  fault.value = null;
  if (expression !== filter.value) {
    batch(() => {
      filter.value = expression;
      restart_rows();
    });
  }
  return true;
}

export function use_span(chosen_span: typeof span.value): void {
  batch(() => {
    span.value = chosen_span;
    restart_rows();
  });
}

function restart_rows(keep = false): void {
  if (!keep) cursor.value = -1;
  rows.reset(query.value, keep);
  write_address();
  find_row();
  poll();
}

export function show_page(which: Page): void {
  page.value = which;
  write_address();
}

// Names

async function load_names(): Promise<void> {
  try {
    names.value = await ask<Names>("names");
  } catch (error) {
    trouble(error);
  }
}

function everything_anew(): void {
  renamed.value += 1;
  restart_rows(true);
  if (chosen.value) load_frame(true);
}

// Throws Refusal with the reason why a name cannot be used.
export async function give_name(kind: string, key: string, name: string): Promise<void> {
  names.value = await tell<Names>("PUT", "names", { kind, key, name });
  everything_anew();
}

export async function save_names(): Promise<void> {
  try {
    names.value = await tell<Names>("POST", "names/save");
    say(`Names saved in ${names.value.file}`);
  } catch (error) {
    if (error instanceof Refusal) say(error.message);
    else trouble(error);
  }
}

// Live

export async function pause(paused: boolean): Promise<void> {
  try {
    await tell("POST", "pause", { paused });
    await poll();
  } catch (error) {
    trouble(error);
  }
}

// The server is asked for news: often while the trace is read or a filter is at work, else because a trace may grow.

let timer = 0;
async function poll(): Promise<void> {
  clearTimeout(timer);
  let wait = 2000;
  try {
    const now = await ask<State>("state");
    const first = state.value === null;
    const found = query.value;
    const narrowed = Boolean(found.filter || found.after);
    batch(() => {
      state.value = now;
      lost.value = "";
      if (first) {
        if (!now.charsets.includes(charset.value)) charset.value = now.charset;
        follow.value = now.live;
        document.title = `${now.files.map(file_name).join(", ")} \u2013 wirelines`;
      }
      if (!narrowed) rows.grown(now.frames, now.complete);
    });
    if (narrowed) {
      const counted = await ask<Rows>("rows", { ...found, from: 0, count: 0 });
      if (found === query.value) rows.grown(counted.total, counted.complete);
    }
    if (follow.value && rows.total.value > 0) reveal.value = { index: rows.total.value - 1, how: "near" };
    if (chosen.value && cursor.value < 0) await find_row();
    if (now.live) wait = 1000;
    else if (!now.complete || !rows.complete.value) wait = 250;
  } catch (error) {
    trouble(error);
    if (error instanceof Refusal) wait = 0;
  }
  clearTimeout(timer);
  if (wait) timer = setTimeout(poll, wait);
}

export function start(): void {
  const there = read_address();
  batch(() => {
    filter.value = there.filter;
    charset.value = there.charset;
    page.value = there.page;
    span.value = there.span;
  });
  rows.reset(query.value);
  poll();
  load_names();
  if (there.frame) go_to_frame(there.frame);
  window.addEventListener("hashchange", () => {
    const to = read_address();
    page.value = to.page;
    if (to.charset && to.charset !== charset.value) use_charset(to.charset);
    if (to.span?.after !== span.value?.after || to.span?.before !== span.value?.before) use_span(to.span);
    if (to.filter !== filter.value) use_filter(to.filter);
    if (to.frame && to.frame !== chosen.value) go_to_frame(to.frame);
  });
}
