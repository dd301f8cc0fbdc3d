// The bytes of the chosen frame: offset, bytes, and text in the chosen character set.
import { useEffect, useLayoutEffect, useRef, useState } from "preact/hooks";
import type { Frame, Line } from "./frame";
import { row_height } from "./metrics";
import * as model from "./model";
import { line_of } from "./frame";
import { hex, many } from "./text";
import { VirtualList } from "./virtual_list";

const kCharsets: Record<string, string> = {
  ascii: "ASCII",
  sjis: "Shift JIS",
  jis: "JIS",
  utf16: "UTF-16",
  euc: "EUC",
  ebcdic: "EBCDIC",
};

function covers(line: Line | undefined, offset: number): boolean {
  return line !== undefined && line.start >= 0 && offset >= line.start && offset <= line.end;
}

// Of lit bytes, which edges are the outline of all that is lit.
function classes(frame: Frame, offset: number, width: number): string {
  const chosen = frame.lines[model.line.value];
  const hovered = frame.lines[model.hovered.value];
  const column = offset % width;
  let name = "";
  if (covers(chosen, offset)) {
    name += " lit";
    if (!covers(chosen, offset - width)) name += " edge-n";
    if (!covers(chosen, offset + width)) name += " edge-s";
    if (column === 0 || !covers(chosen, offset - 1)) name += " edge-w";
    if (column === width - 1 || !covers(chosen, offset + 1)) name += " edge-e";
  }
  if (covers(hovered, offset)) name += " hint";
  if (offset === model.byte.value) name += " at";
  return name;
}

function HexRow({ frame, start, width, digits }: { frame: Frame; start: number; width: number; digits: number }) {
  const bytes = [];
  const cells = [];
  for (let i = 0; i < width; ++i) {
    const offset = start + i;
    const value = frame.bytes[offset];
    if (value === undefined) break;
    const name = classes(frame, offset, width);
    const half = i === 8 ? " half" : "";
    bytes.push(
      <span key={i} id={`byte-${offset}`} class={"byte" + half + name} data-offset={offset} role="gridcell" aria-selected={offset === model.byte.value} aria-label={`${hex(value, 2)}, offset ${offset}`}>
        {hex(value, 2)}
      </span>,
    );
    const cell = frame.cells[offset];
    if (cell?.text === "" && i > 0) continue; // the second byte of a character
    const wide = (cell?.width ?? 1) > 1;
    const lit = wide ? name + classes(frame, offset + 1, width) : name;
    const bare = cell?.text === "." && (value < 0x20 || value >= 0x7f);
    cells.push(
      <span key={i} class={`cell${wide ? " wide" : ""}${bare ? " bare" : ""}${lit}`} data-offset={offset}>
        {cell?.text ?? ""}
      </span>,
    );
  }
  return (
    <div class="hex-row" role="row" aria-rowindex={start / width + 1}>
      <span class="offset" role="rowheader">{hex(start, digits)}</span>
      <span class="bytes" role="presentation" style={{ width: `${3 * width + (width > 8 ? 1 : 0)}ch` }}>{bytes}</span>
      <span class="cells" aria-hidden="true">{cells}</span>
    </div>
  );
}

export function HexPane() {
  const frame = model.frame.value;
  const state = model.state.value;
  const list = useRef<VirtualList>(null);
  const pane = useRef<HTMLElement>(null);
  const [width, set_width] = useState(16);
  const line = frame?.lines[model.line.value];

  // Sixteen bytes a row where they fit, else eight.
  useLayoutEffect(() => {
    const box = pane.current;
    if (!box) return;
    const ruler = box.querySelector(".ruler");
    const watch = new ResizeObserver(() => {
      const ch = (ruler?.getBoundingClientRect().width ?? 80) / 10;
      set_width(box.clientWidth >= 75 * ch ? 16 : 8);
    });
    watch.observe(box);
    return () => watch.disconnect();
  }, []);

  useEffect(() => {
    const offset = model.byte.value >= 0 ? model.byte.value : (line?.start ?? -1);
    if (!frame || offset < 0 || !list.current) return;
    if (line && line.end > line.start) list.current.reveal(Math.floor(line.end / width), "near");
    list.current.reveal(Math.floor(offset / width), "near");
  }, [frame, model.line.value, model.byte.value, width]);

  const offset_at = (event: Event): number => {
    const found = (event.target as Element).closest("[data-offset]");
    return found ? Number(found.getAttribute("data-offset")) : -1;
  };
  const keys = (event: KeyboardEvent) => {
    if (!frame || event.ctrlKey || event.altKey || event.metaKey) return;
    const at = model.byte.value >= 0 ? model.byte.value : Math.max(0, line?.start ?? 0);
    const last = frame.bytes.length - 1;
    const page = (list.current?.page ?? 8) * width;
    const to = new Map<string, number>([
      ["ArrowRight", at + 1], ["ArrowLeft", at - 1], ["ArrowDown", at + width], ["ArrowUp", at - width],
      ["l", at + 1], ["h", at - 1], ["j", at + width], ["k", at - width], ["PageDown", at + page], ["PageUp", at - page],
      ["Home", 0], ["End", last], ["g", 0], ["G", last], ["Enter", at],
    ]).get(event.key);
    if (to === undefined) return;
    event.preventDefault();
    event.stopPropagation();
    if (model.byte.value < 0 && event.key.startsWith("Arrow")) model.choose_byte(at);
    else if (to >= 0 && to <= last) model.choose_byte(to);
    else if (event.key.startsWith("Page")) model.choose_byte(to < 0 ? 0 : last);
  };

  const digits = frame && frame.bytes.length > 0x10000 ? 6 : 4;
  const range =
    line && line.start >= 0
      ? `${line.start === line.end ? `Byte ${line.start}` : `Bytes ${line.start}\u2013${line.end}`} (${many(line.end - line.start + 1, "byte")})`
      : "";
  return (
    <section class="pane hex" aria-label="Bytes" ref={pane}>
      <span class="ruler" aria-hidden="true">0000000000</span>
      {frame && frame.bytes.length > 0 ? (
        <VirtualList
          handle={list}
          id="hex"
          class="scroller"
          tabIndex={0}
          role="grid"
          aria-label={`Bytes of frame ${frame.n}`}
          aria-rowcount={Math.ceil(frame.bytes.length / width)}
          aria-activedescendant={model.byte.value >= 0 ? `byte-${model.byte.value}` : undefined}
          count={Math.ceil(frame.bytes.length / width)}
          rowHeight={row_height.value}
          least={`${(width === 16 ? 70 : 37) + digits}ch`}
          row={(index) => <HexRow frame={frame} start={index * width} width={width} digits={digits} />}
          onKeyDown={keys}
          onMouseDown={(event: MouseEvent) => {
            const offset = offset_at(event);
            if (offset >= 0) model.choose_byte(offset);
          }}
          onMouseOver={(event: MouseEvent) => {
            const offset = offset_at(event);
            model.hovered.value = offset >= 0 ? line_of(frame, offset) : -1;
          }}
          onMouseLeave={() => (model.hovered.value = -1)}
        />
      ) : (
        <div id="hex" class="nothing" tabIndex={0}>
          <p>{frame ? "The frame has no bytes." : ""}</p>
        </div>
      )}
      <header class="pane-head">
        <h2>Bytes</h2>
        <span class="dim">{range}</span>
        <span class="grow" />
        <label class="group">
          <span class="dim" aria-hidden="true">Text</span>
          <select id="charset" aria-label="Character set" title="Character set (t)" value={model.charset.value} onChange={(event) => model.use_charset(event.currentTarget.value)}>
            {(state?.charsets ?? []).map((name) => (
              <option key={name} value={name}>{kCharsets[name] ?? name}</option>
            ))}
          </select>
        </label>
      </header>
    </section>
  );
}
