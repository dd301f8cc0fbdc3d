// The lines of the chosen frame, to be folded by layer.
import { signal } from "@preact/signals";
import { useEffect, useMemo, useRef } from "preact/hooks";
import { copy_hex, copy_layer, copy_line } from "./copying";
import { heading, who_of, type Frame, type Node } from "./frame";
import { row_height } from "./metrics";
import * as model from "./model";
import { columns_of, many } from "./text";
import { VirtualList } from "./virtual_list";

// Folded layers and headings stay folded from frame to frame.
const folded = signal<ReadonlySet<string>>(new Set());

function fold(node: Node, close: boolean): void {
  const next = new Set(folded.value);
  if (close) next.add(node.key);
  else next.delete(node.key);
  folded.value = next;
}

function fold_layers(frame: Frame, close: boolean): void {
  folded.value = new Set(close ? frame.roots.map((node) => node.key) : []);
}

const open_to = (node: Node | null) => {
  for (let up = node; up; up = up.parent) if (folded.value.has(up.key)) fold(up, false);
};

function visible(nodes: Node[], closed: ReadonlySet<string>, into: Node[] = []): Node[] {
  for (const node of nodes) {
    into.push(node);
    if (!closed.has(node.key) || node.children.length === 0) visible(node.children, closed, into);
  }
  return into;
}

const kVerdict = /\((OK|NG)\)$/;

// A label in brackets before a value, a verdict at the end. The tree indents; blanks in the text need not.
function Text({ node, cut }: { node: Node; cut: boolean }) {
  const { level } = node.line;
  const text = level < 2 ? node.line.text : node.line.text.trimStart();
  const verdict = kVerdict.exec(text)?.[1];
  const body = verdict ? text.slice(0, -4) : text;
  const label = level === 1 && body.startsWith("[") ? body.slice(0, body.indexOf("]") + 1) : "";
  return (
    <span class="text">
      {label && <span class="label">{label}</span>}
      {body.slice(label.length)}
      {verdict === "OK" && <span class="good">(OK)</span>}
      {verdict === "NG" && (cut ? "(NG)" : <span class="wrong">{"\u2716"} (NG)</span>)}
    </span>
  );
}

function name_line(frame: Frame, index: number, list: VirtualList | null, row: number): void {
  const line = frame.lines[index];
  const who = line && who_of(frame, line);
  const near = list?.rect(row) ?? list?.element?.getBoundingClientRect();
  if (who && near) model.naming.value = { who, near, back: list?.element ?? null };
  else model.say("This line shows nothing that can be named.");
}

export function Detail() {
  const frame = model.frame.value;
  const closed = folded.value;
  const list = useRef<VirtualList>(null);
  const shown = useMemo(() => (frame ? visible(frame.roots, closed) : []), [frame, closed]);
  const width = useMemo(() => shown.reduce((most, n) => Math.max(most, columns_of(n.line.text) + 2 * n.depth), 0), [shown]);
  const at = shown.findIndex((node) => node.line.index === model.line.value);
  const before = useRef({ n: 0, line: -1 });

  // A frame opens at its result line; a line chosen by its byte comes into view. Where the chosen line was folded away,
  // what it was folded into is chosen.
  useEffect(() => {
    if (!frame) return;
    const line = model.line.value;
    const { n, line: last } = before.current;
    before.current = { n: frame.n, line };
    if (at >= 0) return list.current?.reveal(at, n === frame.n ? "near" : "start");
    let node = frame.nodes[line];
    if (n !== frame.n || line !== last) return open_to(node?.parent ?? null);
    while (node && !shown.includes(node)) node = node.parent ?? undefined;
    if (node) model.choose_line(node.line.index);
  }, [frame, at]);

  // The buttons have keys; Tab goes from pane to pane.
  const head = (
    <header class="pane-head">
      <h2>{frame ? `Frame ${frame.n}` : "Frame"}</h2>
      {frame && (
        <span class="dim">
          {frame.length < frame.originalLength
            ? `${many(frame.originalLength, "byte")}, ${frame.length} captured`
            : many(frame.length, "byte")}
        </span>
      )}
      <span class="grow" />
      <span class="group" role="group" aria-label="Copy">
        <span class="dim" aria-hidden="true">Copy</span>
        <button tabIndex={-1} disabled={!frame} onClick={copy_line} title="Copy the line (c)" aria-label="Copy the line">line</button>
        <button tabIndex={-1} disabled={!frame} onClick={copy_layer} title="Copy the layer (Shift+C)" aria-label="Copy the layer">layer</button>
        <button tabIndex={-1} disabled={!frame} onClick={copy_hex} title="Copy the bytes as hex (x)" aria-label="Copy the bytes as hex">hex</button>
      </span>
      <span class="group" role="group" aria-label="Fold">
        <button tabIndex={-1} disabled={!frame} onClick={() => frame && fold_layers(frame, true)} title="Fold all layers (&lt;)" aria-label="Fold all layers">{"\u2212"}</button>
        <button tabIndex={-1} disabled={!frame} onClick={() => frame && fold_layers(frame, false)} title="Unfold all (&gt;)" aria-label="Unfold all">+</button>
      </span>
    </header>
  );

  if (!frame) {
    return (
      <section class="pane detail" aria-label="Lines">
        {head}
        <div id="detail" class="nothing" tabIndex={0}>
          {model.frame_error.value ? <p role="alert">{model.frame_error.value}</p> : <p>{model.chosen.value ? "Decoding \u2026" : "No frame is chosen."}</p>}
        </div>
      </section>
    );
  }

  const go = (index: number) => {
    const node = shown[Math.max(0, Math.min(index, shown.length - 1))];
    if (node) model.choose_line(node.line.index);
  };
  const keys = (event: KeyboardEvent) => {
    if (event.ctrlKey || event.altKey || event.metaKey) return;
    const node = shown[at];
    const page = list.current?.page ?? 10;
    const moves: Record<string, () => void> = {
      ArrowDown: () => go(at + 1),
      ArrowUp: () => go(at - 1),
      j: () => go(at + 1),
      k: () => go(at - 1),
      PageDown: () => go(at + page),
      PageUp: () => go(at - page),
      Home: () => go(0),
      End: () => go(shown.length - 1),
      g: () => go(0),
      G: () => go(shown.length - 1),
      ArrowRight: () => node && node.children.length > 0 && (closed.has(node.key) ? fold(node, false) : go(at + 1)),
      ArrowLeft: () => {
        if (!node) return;
        if (node.children.length > 0 && !closed.has(node.key)) fold(node, true);
        else if (node.parent) model.choose_line(node.parent.line.index);
      },
      Enter: () => node && node.children.length > 0 && fold(node, !closed.has(node.key)),
      "<": () => fold_layers(frame, true),
      ">": () => fold_layers(frame, false),
      n: () => name_line(frame, model.line.value, list.current, at),
    };
    const move = moves[event.key];
    if (!move) return;
    event.preventDefault();
    event.stopPropagation();
    move();
  };

  const cut = frame.length < frame.originalLength;
  const show = (index: number) => {
    const node = shown[index];
    if (!node) return null;
    const { line } = node;
    const here = index === at;
    const title = heading(line.text);
    const folds = node.children.length > 0;
    const lit = line.index === model.hovered.value;
    const who = here ? who_of(frame, line) : null;
    return (
      <div
        id={`line-${line.index}`}
        role="treeitem"
        class={`line ${node.kind} style-${line.style[1]}${here ? " on" : ""}${lit && !here ? " lit" : ""}`}
        style={{ "--depth": String(node.depth), "--tone": String(line.style[0]) }}
        aria-level={node.depth + 1}
        aria-selected={here}
        aria-expanded={folds ? !closed.has(node.key) : undefined}
        onMouseDown={() => model.choose_line(line.index)}
        onMouseEnter={() => (model.hovered.value = line.index)}
        onDblClick={() => (who_of(frame, line) ? name_line(frame, line.index, list.current, index) : folds && fold(node, !closed.has(node.key)))}
      >
        {folds ? (
          <span
            class="twist"
            aria-hidden="true"
            onMouseDown={(event) => {
              event.stopPropagation();
              fold(node, !closed.has(node.key));
            }}
          >
            {closed.has(node.key) ? "\u25B8" : "\u25BE"}
          </span>
        ) : (
          <span class="twist" aria-hidden="true" />
        )}
        {title === null ? (
          <Text node={node} cut={cut} />
        ) : (
          <span class="bar">
            {title.map((text) => <span key={text}>{text}</span>)}
          </span>
        )}
        {who && (
          <button class="pen" tabIndex={-1} title="Name it (n)" aria-label="Name it" onMouseDown={(event) => event.stopPropagation()} onClick={() => name_line(frame, line.index, list.current, index)}>
            {"\u270E"}
          </button>
        )}
      </div>
    );
  };

  return (
    <section class="pane detail" aria-label="Lines">
      {head}
      <VirtualList
        handle={list}
        id="detail"
        class="scroller"
        tabIndex={0}
        role="tree"
        aria-label={`Lines of frame ${frame.n}`}
        aria-activedescendant={at >= 0 ? `line-${model.line.value}` : undefined}
        count={shown.length}
        rowHeight={row_height.value}
        least={`${width + 6}ch`}
        row={show}
        onKeyDown={keys}
        onMouseLeave={() => (model.hovered.value = -1)}
      />
    </section>
  );
}
