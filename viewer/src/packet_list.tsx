// The list of frames.
import { useEffect, useRef } from "preact/hooks";
import type { Column, Row, Who } from "./api";
import { key_text, who_of } from "./frame";
import { row_height } from "./metrics";
import * as model from "./model";
import { count_text } from "./text";
import { VirtualList } from "./virtual_list";

function track(column: Column, frames: number): string {
  switch (column.key) {
    case "no":
      return `${Math.max(5, String(frames).length) + 1}ch`;
    case "src":
    case "dst":
      return `minmax(${column.width + 1}ch, 1fr)`;
    case "note":
      return "minmax(24ch, 2.5fr)";
    default:
      return `${Math.max(column.width, column.title.length) + 1}ch`;
  }
}

function least(column: Column): number {
  return (column.key === "note" ? 24 : column.width) + 2;
}

// A cell shows an address, or the name of one; of several of that name it is the one in the frame.
function who_in(text: string, row: Row): Who | null {
  if (/^\d+\.\d+\.\d+\.\d+$/.test(text)) return ["ip", text];
  if (/^([0-9a-f]{2}:){5}[0-9a-f]{2}$/i.test(text)) return ["station", text];
  if (/^[0-9a-f:.]*:[0-9a-f:.]*$/i.test(text)) return ["ip6", text];
  const named = model.names.value?.names.filter(({ kind, name }) => name === text && ["ip", "ip6", "station"].includes(kind)) ?? [];
  const frame = model.frame.value?.n === row.n ? model.frame.value : null;
  const there = new Set(frame?.lines.map((line) => key_text(who_of(frame, line))));
  const found = named.find(({ kind, key }) => there.has(key_text([kind, key]))) ?? named[0];
  return found ? [found.kind, found.key] : null;
}

function name_cell(list: VirtualList | null, index: number, side: "src" | "dst"): void {
  const row = model.rows.at(index);
  const column = model.state.value?.columns.findIndex(({ key }) => key === side) ?? -1;
  const cell = list?.element?.querySelector(`[data-row="${index}"] .col-${side}`) ?? list?.element;
  const who = row && who_in(row.c[column] ?? "", row);
  if (who && cell) model.naming.value = { who, near: cell.getBoundingClientRect(), back: list?.element ?? null };
  else if (row) model.say("What stands here cannot be named.");
}

function Cells({ row, columns }: { row: Row; columns: Column[] }) {
  return (
    <>
      <span class="mark" role="gridcell" aria-label={row.bad ? "checksum wrong" : ""}>
        {row.bad ? "\u2716" : ""}
      </span>
      {columns.map((column, i) => (
        <span key={column.key} class={`col-${column.key} ${column.align}`} role="gridcell" title={(row.c[i]?.length ?? 0) > 17 ? row.c[i] : undefined}>
          {row.c[i]}
        </span>
      ))}
    </>
  );
}

export function PacketList() {
  const list = useRef<VirtualList>(null);
  const state = model.state.value;
  const total = model.rows.total.value;
  const arrived = model.rows.arrived.value;
  const cursor = model.cursor.value;
  const wanted = model.reveal.value;

  useEffect(() => {
    if (wanted) list.current?.reveal(wanted.index, wanted.how);
  }, [wanted, state === null]);
  useEffect(() => {
    model.rows_arrived();
    // A trace opens with its first frame chosen.
    if (!model.chosen.value && !model.follow.value && model.rows.at(0)) model.choose_row(0);
  }, [arrived]);
  useEffect(() => {
    if (document.activeElement === document.body) list.current?.element?.focus();
  }, [state === null]);

  if (!state) return <div class="pane list" id="list" aria-busy="true" />;
  const columns = state.columns;
  const template = ["1rem", ...columns.map((column) => track(column, state.frames))].join(" ");
  const width = `${columns.reduce((sum, column) => sum + least(column), 4)}ch`;

  const keys = (event: KeyboardEvent) => {
    if (event.ctrlKey || event.altKey || event.metaKey) return;
    const page = list.current?.page ?? 10;
    const by = new Map([["ArrowDown", 1], ["ArrowUp", -1], ["PageDown", page], ["PageUp", -page]]).get(event.key);
    const to = new Map([["Home", 0], ["g", 0], ["End", total - 1], ["G", total - 1]]).get(event.key);
    if (by !== undefined) {
      event.preventDefault();
      model.step(by);
    } else if (to !== undefined && total > 0) {
      event.preventDefault();
      model.choose_row(to);
    } else if (event.key === "Enter") {
      document.getElementById("detail")?.focus();
    } else if (event.key === "n" || event.key === "N") {
      event.preventDefault();
      event.stopPropagation();
      name_cell(list.current, cursor, event.key === "n" ? "src" : "dst");
    }
  };

  const show = (index: number) => {
    const row = model.rows.at(index);
    const kind = row ? `row fam-${row.k}${row.bad ? " bad" : ""}` : "row coming";
    const on = index === cursor && (!row || row.n === model.chosen.value);
    return (
      <div
        id={`row-${index}`}
        class={on ? kind + " on" : kind}
        role="row"
        aria-rowindex={index + 2}
        aria-selected={on}
        style={{ gridTemplateColumns: template }}
        onMouseDown={() => model.choose_row(index)}
        onDblClick={(event) => {
          const cell = (event.target as Element).closest(".col-src, .col-dst");
          if (cell) name_cell(list.current, index, cell.classList.contains("col-src") ? "src" : "dst");
        }}
      >
        {row ? <Cells row={row} columns={columns} /> : <span class="dim" role="gridcell">{"\u2026"}</span>}
      </div>
    );
  };

  const head = (
    <div class="row" role="row" aria-rowindex={1} style={{ gridTemplateColumns: template }}>
      <span class="mark" role="columnheader" aria-label="Faults" />
      {columns.map((column) => (
        <span key={column.key} class={column.align} role="columnheader">
          {column.title}
        </span>
      ))}
    </div>
  );

  return (
    <section class="pane list" aria-label="Frames">
      <VirtualList
        handle={list}
        id="list"
        class="scroller"
        tabIndex={0}
        role="grid"
        aria-label={`Frames, ${count_text(total)}`}
        aria-rowcount={total + 1}
        aria-colcount={columns.length + 1}
        aria-activedescendant={cursor >= 0 ? `row-${cursor}` : undefined}
        aria-busy={!model.rows.complete.value}
        count={total}
        rowHeight={row_height.value}
        headHeight={row_height.value + 3}
        head={head}
        least={width}
        row={show}
        seen={(first, last) => model.rows.want(first, last)}
        scrolled={(up) => {
          if (up && model.follow.value) model.follow.value = false;
        }}
        onKeyDown={keys}
      />
      {total === 0 && <Nothing />}
    </section>
  );
}

function Nothing() {
  const state = model.state.value;
  const working = !model.rows.complete.value;
  if (model.filter.value || model.span.value) {
    return (
      <div class="nothing" role="status">
        {working ? (
          <p>Looking for frames {"\u2026"}</p>
        ) : (
          <>
            <p>No frame passes {model.filter.value ? "the filter" : "the chosen time"}.</p>
            <button
              onClick={() => {
                model.use_span(null);
                model.use_filter("");
              }}
            >
              Show all frames
            </button>
          </>
        )}
      </div>
    );
  }
  if (working) return <div class="nothing" role="status"><p>{state?.live ? "Waiting for frames \u2026" : "Reading the trace \u2026"}</p></div>;
  return <div class="nothing" role="status"><p>{state?.damage ? "Nothing in this trace can be read." : "The trace has no frames."}</p></div>;
}
