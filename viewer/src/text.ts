// Numbers, times and widths as text.

export function count_text(n: number): string {
  return n.toLocaleString("en-US");
}

export function many(n: number, one: string, more = one + "s"): string {
  return `${count_text(n)} ${n === 1 ? one : more}`;
}

export function bytes_text(n: number): string {
  const units = ["bytes", "kB", "MB", "GB", "TB"];
  let unit = 0;
  while (n >= 1000 && unit < units.length - 1) {
    n /= 1000;
    ++unit;
  }
  return unit === 0 ? many(Math.round(n), "byte") : `${n < 10 ? n.toFixed(2) : n < 100 ? n.toFixed(1) : n.toFixed(0)} ${units[unit]}`;
}

export function percent(part: number, whole: number): string {
  return whole > 0 ? `${((100 * part) / whole).toFixed(1)} %` : "\u2013";
}

export function hex(n: number, digits: number): string {
  return n.toString(16).toUpperCase().padStart(digits, "0");
}

const kBillion = 1_000_000_000n;

// Time of day of nanoseconds since 1970, in a zone so many seconds east of UTC, to `digits` places.
export function time_text(ns: bigint, offset: number, digits = 6): string {
  const there = ns + BigInt(offset) * kBillion;
  const date = new Date(Number(there / 1_000_000n));
  const two = (n: number) => String(n).padStart(2, "0");
  const part = String(there % kBillion).padStart(9, "0").slice(0, digits);
  const time = [date.getUTCHours(), date.getUTCMinutes(), date.getUTCSeconds()].map(two).join(":");
  return digits ? `${time}.${part}` : time;
}

// The same with its day, for traces that are longer than one; the time only where it is not a day's begin.
export function moment_text(ns: bigint, offset: number, digits: number): string {
  const there = Number((ns + BigInt(offset) * kBillion) / 1_000_000n);
  const day = new Date(there).toISOString().slice(0, 10);
  return there % 86_400_000 === 0 ? day : `${day} ${time_text(ns, offset, digits)}`;
}

export function duration_text(seconds: number): string {
  if (seconds < 120) return `${seconds.toFixed(seconds < 10 ? 3 : 0)} s`;
  const minutes = Math.round(seconds / 60);
  if (minutes < 120) return `${minutes} min`;
  const hours = Math.floor(minutes / 60);
  return hours < 48 ? `${hours} h ${minutes % 60} min` : `${count_text(Math.floor(hours / 24))} d ${hours % 24} h`;
}

// In columns of a fixed-width font: a Japanese character takes two.
export function columns_of(text: string): number {
  let n = 0;
  for (const c of text) n += (c.codePointAt(0) ?? 0) >= 0x1100 ? 2 : 1;
  return n;
}

export function file_name(path: string): string {
  return path.slice(path.lastIndexOf("/") + 1);
}
