// The rows of the list, fetched a page at a time as they come into view.
import { signal } from "@preact/signals";
import { ask, type Query, type Row, type Rows } from "./api";

const kPage = 200;
const kKeep = 60;

export class RowCache {
  readonly total = signal(0);
  readonly complete = signal(false);
  readonly arrived = signal(0); // counts up with every page
  private pages = new Map<number, Row[]>();
  private stale = new Map<number, Row[]>(); // stands until the new ones are there
  private asking: { page: number; stop: AbortController } | null = null;
  private wanted: [first: number, last: number] = [0, 0];
  private query: Query = {};

  constructor(private readonly failed: (error: unknown) => void) {}

  // Forgets everything; `keep`: the same rows are expected again, with other texts.
  reset(query: Query, keep = false): void {
    this.query = query;
    this.asking?.stop.abort();
    this.asking = null;
    this.stale = keep ? this.pages : new Map();
    this.pages = new Map();
    if (!keep) this.total.value = 0;
    this.complete.value = false;
    if (!keep) this.wanted = [0, 0];
    this.next();
  }

  at(index: number): Row | undefined {
    const page = Math.floor(index / kPage);
    return (this.pages.get(page) ?? this.stale.get(page))?.[index % kPage];
  }

  want(first: number, last: number): void {
    this.wanted = [first, Math.max(first, last)];
    const asked = this.asking?.page;
    if (asked !== undefined && (asked < Math.floor(first / kPage) || asked > Math.floor(last / kPage))) {
      this.asking?.stop.abort();
      this.asking = null;
    }
    this.next();
  }

  grown(total: number, complete: boolean): void {
    this.total.value = total;
    this.complete.value = complete;
    this.next();
  }

  private missing(): number {
    const last = Math.floor(this.wanted[1] / kPage);
    for (let page = Math.floor(this.wanted[0] / kPage); page <= last; ++page) {
      const rows = this.pages.get(page);
      if (!rows) return page;
      if (rows.length < kPage && page * kPage + rows.length < this.total.value) return page;
    }
    return -1;
  }

  private async next(): Promise<void> {
    if (this.asking) return;
    const page = this.missing();
    if (page < 0) return;
    const asking = { page, stop: new AbortController() };
    this.asking = asking;
    try {
      const reply = await ask<Rows>("rows", { ...this.query, from: page * kPage, count: kPage }, asking.stop.signal);
      if (this.asking !== asking) return;
      this.asking = null;
      this.pages.delete(page);
      this.pages.set(page, reply.rows);
      for (const old of this.pages.keys()) {
        if (this.pages.size <= kKeep) break;
        this.pages.delete(old);
      }
      this.total.value = Math.max(reply.total, page * kPage + reply.rows.length);
      this.complete.value = reply.complete;
      this.arrived.value += 1;
      if (reply.rows.length > 0) this.next();
    } catch (error) {
      if (this.asking !== asking) return;
      this.asking = null;
      this.failed(error);
    }
  }
}
