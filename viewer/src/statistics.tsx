// Sums over the trace, or over what filter and chosen time let through.
import type { ComponentChildren } from "preact";
import { useEffect, useState } from "preact/hooks";
import { ask, type Conversation, type Stats, type Table, type Talker, type Timeline } from "./api";
import { Chart } from "./chart";
import * as model from "./model";
import { bytes_text, count_text, duration_text, many, percent } from "./text";

// Asks again while the answer is not complete, and anew when what it is about changes.
function useAnswer<T extends { complete: boolean }>(path: string, extra: Record<string, number>, timed: boolean): T | null {
  const [value, set_value] = useState<T | null>(null);
  const { filter, after, before } = model.query.value;
  const about = timed ? { filter, after, before, ...extra } : { filter, ...extra };
  const key = JSON.stringify(about) + model.renamed.value;
  useEffect(() => {
    const stop = new AbortController();
    let timer = 0;
    const go = async () => {
      try {
        const reply = await ask<T>(path, about, stop.signal);
        set_value(reply);
        if (!reply.complete) timer = setTimeout(go, 1000);
      } catch (error) {
        if (!stop.signal.aborted) model.trouble(error);
      }
    };
    go();
    return () => {
      stop.abort();
      clearTimeout(timer);
    };
  }, [key]);
  return value;
}

function show_frames(filter: string): void {
  const now = model.filter.value;
  model.use_filter(now ? `(${now}) and ${filter}` : filter);
  model.show_page("frames");
}

function Share({ part, whole }: { part: number; whole: number }) {
  return <span class="share" aria-hidden="true"><span style={{ width: `${whole > 0 ? (100 * part) / whole : 0}%`, minWidth: part > 0 ? "1px" : "0" }} /></span>;
}

function Card({ title, note, wide, children }: { title: string; note?: string; wide?: boolean; children: ComponentChildren }) {
  return (
    <section class={wide ? "card wide" : "card"} aria-label={title}>
      <h2>{title} {note && <span class="dim">{note}</span>}</h2>
      {children}
    </section>
  );
}

function Grid({ head, children }: { head: ComponentChildren; children: ComponentChildren }) {
  return (
    <div class="table-box">
      <table>
        <thead><tr>{head}</tr></thead>
        <tbody>{children}</tbody>
      </table>
    </div>
  );
}

const kShown = 12;

// The first rows, or all that the server gave.
function Ranking<T>({ table, head, row, foot }: { table: Table<T>; head: ComponentChildren; row: (of: T) => ComponentChildren; foot?: ComponentChildren }) {
  const [all, set_all] = useState(false);
  if (table.rows.length === 0 && !foot) return <p class="dim pad">None.</p>;
  return (
    <>
      <Grid head={head}>
        {(all ? table.rows : table.rows.slice(0, kShown)).map(row)}
        {foot}
      </Grid>
      {table.rows.length > kShown && (
        <p class="pad"><button onClick={() => set_all(!all)}>{all ? "Show fewer" : `Show ${table.rows.length} of ${count_text(table.entries)}`}</button></p>
      )}
    </>
  );
}

function Protocols({ stats }: { stats: Stats }) {
  return (
    <Card title="Protocols">
      <Grid head={<><th>Protocol</th><th class="right">Frames</th><th class="right">Share</th><th class="right">Bytes</th><th /></>}>
        {stats.protocols.map(({ path, frames, bytes }) => (
          <tr key={path.join("/")}>
            <td class="indent" style={{ "--depth": String(path.length - 1) }}>{path[path.length - 1]}</td>
            <td class="right">{count_text(frames)}</td>
            <td class="right">{percent(frames, stats.frames)}</td>
            <td class="right">{bytes_text(bytes)}</td>
            <td class="bar-cell"><Share part={frames} whole={stats.frames} /></td>
          </tr>
        ))}
      </Grid>
    </Card>
  );
}

type Family = "stations" | "ipv4" | "ipv6" | "ipx";
const kFamilies: [family: Family, title: string, field: string][] = [
  ["stations", "MAC", "eth.addr"],
  ["ipv4", "IPv4", "ip.addr"],
  ["ipv6", "IPv6", "ipv6.addr"],
  ["ipx", "IPX", "ipx.addr"],
];
const kConversations = {
  stations: "station_conversations",
  ipv4: "ipv4_conversations",
  ipv6: "ipv6_conversations",
  ipx: "ipx_conversations",
} as const;

function Tabs<T extends string>({ label, tabs, at, set }: { label: string; tabs: [T, string][]; at: T; set: (tab: T) => void }) {
  return (
    <span class="segments" role="group" aria-label={label}>
      {tabs.map(([key, title]) => (
        <button key={key} aria-pressed={key === at} onClick={() => set(key)}>{title}</button>
      ))}
    </span>
  );
}

function Address({ of, field }: { of: { address: string; name?: string }; field: string }) {
  return (
    <button class="link mono" title={`Show the frames of ${of.address}`} onClick={() => show_frames(`${field} == ${of.address}`)}>
      {of.name ? <>{of.name} <span class="dim">{of.address}</span></> : of.address}
    </button>
  );
}

function Talkers({ stats }: { stats: Stats }) {
  const [family, set_family] = useState<Family>(stats.ipv4.rows.length > 0 ? "ipv4" : "stations");
  const [pairs, set_pairs] = useState<"one" | "two">("one");
  const field = kFamilies.find(([key]) => key === family)?.[2] ?? "";
  const table: Table<Talker | Conversation> = pairs === "one" ? stats[family] : stats[kConversations[family]];
  const most = Math.max(1, ...table.rows.map((row) => ("sent" in row ? row.sent.bytes + row.received.bytes : row.a_to_b.bytes + row.b_to_a.bytes)));
  const head = (
    <>
      {pairs === "one" ? <th>Address</th> : <><th>A</th><th>B</th></>}
      <th class="right">{pairs === "one" ? "Frames sent" : "Frames A to B"}</th><th class="right">Bytes</th>
      <th class="right">{pairs === "one" ? "Frames received" : "Frames B to A"}</th><th class="right">Bytes</th><th />
    </>
  );
  return (
    <Card title="Talkers" wide>
      <div class="choices">
        <Tabs label="Addresses" tabs={kFamilies.map(([key, title]): [Family, string] => [key, title])} at={family} set={set_family} />
        <Tabs label="Rows" tabs={[["one", "Stations"], ["two", "Conversations"]]} at={pairs} set={set_pairs} />
      </div>
      <Ranking
        table={table}
        head={head}
        row={(row) => {
          const [there, back] = "sent" in row ? [row.sent, row.received] : [row.a_to_b, row.b_to_a];
          return (
            <tr key={"sent" in row ? row.address : `${row.a.address} ${row.b.address}`}>
              {"sent" in row ? <td><Address of={row} field={field} /></td> : <><td><Address of={row.a} field={field} /></td><td><Address of={row.b} field={field} /></td></>}
              <td class="right">{count_text(there.frames)}</td><td class="right">{bytes_text(there.bytes)}</td>
              <td class="right">{count_text(back.frames)}</td><td class="right">{bytes_text(back.bytes)}</td>
              <td class="bar-cell"><Share part={there.bytes + back.bytes} whole={most} /></td>
            </tr>
          );
        }}
      />
    </Card>
  );
}

function Sizes({ stats }: { stats: Stats }) {
  const note = stats.shortest !== undefined && stats.longest !== undefined ? `${stats.shortest} to ${many(stats.longest, "byte")}` : "";
  return (
    <Card title="Sizes" note={note}>
      <Grid head={<><th class="right">Bytes</th><th class="right">Frames</th><th class="right">Share</th><th /></>}>
        {stats.sizes.map(({ from, to, frames }) => (
          <tr key={from}>
            <td class="right">{to === undefined ? `${from} and more` : `${from}\u2013${to}`}</td>
            <td class="right">{count_text(frames)}</td>
            <td class="right">{percent(frames, stats.frames)}</td>
            <td class="bar-cell"><Share part={frames} whole={stats.frames} /></td>
          </tr>
        ))}
      </Grid>
    </Card>
  );
}

const kSums: Record<string, [title: string, field: string]> = {
  ipv4: ["IPv4 header", "ip.checksum.bad"],
  icmp: ["ICMP, ICMPv6", "icmp.checksum.bad"],
  tcp: ["TCP", "tcp.checksum.bad"],
  udp: ["UDP", "udp.checksum.bad"],
};

function Checksums({ stats }: { stats: Stats }) {
  return (
    <Card title="Checksums">
      <Grid head={<><th>Of</th><th class="right">Right</th><th class="right">Wrong</th><th class="right">None</th><th class="right">Not verified</th></>}>
        {Object.entries(stats.checksums).map(([key, sums]) => {
          const [title, field] = kSums[key] ?? [key, ""];
          return (
            <tr key={key}>
              <td>{title}</td>
              <td class="right">{count_text(sums.right)}</td>
              <td class="right">
                {sums.wrong > 0 ? (
                  <button class="link wrong" title="Show these frames" onClick={() => show_frames(field)}>{"\u2716"} {count_text(sums.wrong)}</button>
                ) : (
                  "0"
                )}
              </td>
              <td class="right">{count_text(sums.none)}</td>
              <td class="right">{count_text(sums.not_verified)}</td>
            </tr>
          );
        })}
      </Grid>
    </Card>
  );
}

function Framings({ stats }: { stats: Stats }) {
  const framings = Object.keys(stats.framings);
  const senders = { ...stats.stations, rows: stats.stations.rows.filter((row) => row.sent.frames > 0) };
  const sum = framings.length > 0 && (
    <tr class="sum">
      <td>All</td>
      {framings.map((name) => <td key={name} class="right">{count_text(stats.framings[name]?.frames ?? 0)}</td>)}
    </tr>
  );
  return (
    <Card title="Framing by station" note="frames sent">
      <Ranking
        table={senders}
        head={<><th>Station</th>{framings.map((name) => <th key={name} class="right">{name}</th>)}</>}
        row={(row) => (
          <tr key={row.address}>
            <td><Address of={row} field="eth.src" /></td>
            {framings.map((name) => <td key={name} class="right">{row.framings?.[name] ? count_text(row.framings[name].frames) : <span class="dim">{"\u2013"}</span>}</td>)}
          </tr>
        )}
        foot={sum}
      />
    </Card>
  );
}

function Ports({ stats }: { stats: Stats }) {
  return (
    <Card title="Ports">
      <Ranking
        table={stats.ports}
        head={<><th>Port</th><th>Name</th><th class="right">Frames</th><th class="right">Bytes</th></>}
        row={(row) => (
          <tr key={`${row.protocol}${row.port}`}>
            <td><button class="link mono" title="Show the frames of this port" onClick={() => show_frames(`${row.protocol === "ipx" ? "ipx.socket" : row.protocol + ".port"} == ${row.port}`)}>{row.protocol} {row.port}</button></td>
            <td>{row.name}</td>
            <td class="right">{count_text(row.frames)}</td>
            <td class="right">{bytes_text(row.bytes)}</td>
          </tr>
        )}
      />
    </Card>
  );
}

export function StatisticsPage() {
  const stats = useAnswer<Stats>("stats", { top: 100 }, true);
  const timeline = useAnswer<Timeline>("timeline", { bins: 400 }, false);
  const [unit, set_unit] = useState<"frames" | "bytes">("frames");
  const span = model.span.value;
  return (
    <main class="sheet" id="sheet" tabIndex={-1} aria-busy={!stats?.complete}>
      <div class="sheet-head">
        <h1>Statistics</h1>
        {stats && (
          <span class="dim">
            {many(stats.frames, "frame")}, {bytes_text(stats.bytes)}
            {stats.seconds !== undefined && `, ${duration_text(stats.seconds)}`}
            {Boolean(stats.seconds) && `, ${bytes_text(stats.bytes / (stats.seconds ?? 1))}/s`}
            {stats.complete ? "" : " \u2013 still counting"}
          </span>
        )}
      </div>
      <div class="cards">
        <Card title="Traffic over time" wide>
          <div class="choices">
            <Tabs label="Unit" tabs={[["frames", "Frames"], ["bytes", "Bytes"]]} at={unit} set={set_unit} />
            <span class="dim grow">Drag over a span to choose it.</span>
            {span && (
              <>
                <button onClick={() => model.show_page("frames")}>Show in the list</button>
                <button onClick={() => model.use_span(null)}>Whole time</button>
              </>
            )}
          </div>
          <Chart timeline={timeline} unit={unit} />
        </Card>
        {stats ? (
          <>
            <Talkers key={stats.ipv4.rows.length > 0 ? "ip" : "mac"} stats={stats} />
            <div class="stack">
              <Protocols stats={stats} />
              <Framings stats={stats} />
            </div>
            <div class="stack">
              <Checksums stats={stats} />
              <Sizes stats={stats} />
              <Ports stats={stats} />
            </div>
          </>
        ) : (
          <p class="dim pad">Counting {"\u2026"}</p>
        )}
      </div>
    </main>
  );
}
