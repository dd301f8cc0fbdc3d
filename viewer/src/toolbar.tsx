import { signal } from "@preact/signals";
import { useEffect, useRef, useState } from "preact/hooks";
import { helping } from "./help";
import * as model from "./model";
import { bytes_text, count_text, file_name, many, moment_text, time_text } from "./text";

// What stands in the box, used or not.
const typed = signal("");

function FilterBox() {
  const input = useRef<HTMLInputElement>(null);
  const [scroll, set_scroll] = useState(0);
  const used = model.filter.value;
  const fault = model.fault.value;
  useEffect(() => {
    typed.value = used;
  }, [used]);
  const follow_scroll = () => set_scroll(input.current?.scrollLeft ?? 0);
  return (
    <form
      class="filter"
      role="search"
      onSubmit={async (event) => {
        event.preventDefault();
        if (await model.use_filter(typed.value)) document.getElementById("list")?.focus();
        else input.current?.focus();
        follow_scroll();
      }}
    >
      <input
        ref={input}
        id="filter"
        type="text"
        class={`mono${used && used === typed.value.trim() ? " used" : ""}`}
        placeholder="Filter: tcp.port == 139 and not checksum.bad"
        aria-label="Display filter"
        aria-invalid={fault !== null}
        aria-describedby={fault ? "fault" : undefined}
        title="Display filter (/)"
        autoComplete="off"
        autoCapitalize="off"
        spellcheck={false}
        value={typed.value}
        onInput={(event) => {
          typed.value = event.currentTarget.value;
          model.fault.value = null;
        }}
        onScroll={follow_scroll}
        onKeyDown={(event) => {
          if (event.key !== "Escape") return;
          event.stopPropagation();
          model.fault.value = null;
          typed.value = used;
          document.getElementById("list")?.focus();
        }}
      />
      {(typed.value || used) && (
        <button
          type="button"
          class="clear"
          aria-label="Clear the filter"
          title="Clear the filter"
          onClick={() => {
            typed.value = "";
            model.use_filter("");
            input.current?.focus();
          }}
        >
          {"\u2715"}
        </button>
      )}
      <button type="submit" class="apply">Apply</button>
      {fault && (
        <div class="fault" id="fault" role="alert">
          {fault.at !== undefined && (
            <span class="caret mono" aria-hidden="true" style={{ marginLeft: `calc(${fault.at}ch - ${scroll}px)` }}>{"\u25B2"}</span>
          )}
          <span class="fault-text">{fault.message}</span>
        </div>
      )}
    </form>
  );
}

function Span() {
  const span = model.span.value;
  const state = model.state.value;
  if (!span || !state) return null;
  const digits = BigInt(span.before) - BigInt(span.after) < 20_000_000_000n ? 3 : 0;
  const text = BigInt(state.last) - BigInt(state.first) > 86_400_000_000_000n ? moment_text : time_text;
  return (
    <span class="chip">
      <span class="mono">{text(BigInt(span.after), state.utcOffset, digits)} {"\u2013"} {text(BigInt(span.before), state.utcOffset, digits)}</span>
      <button aria-label="Show the whole time" title="Show the whole time" onClick={() => model.use_span(null)}>{"\u2715"}</button>
    </span>
  );
}

const kPages: [model.Page, string, string][] = [
  ["frames", "Frames", "1"],
  ["statistics", "Statistics", "2"],
  ["names", "Nicknames", "3"],
];

export function Toolbar() {
  const state = model.state.value;
  return (
    <header class="toolbar">
      <nav class="segments" aria-label="Views">
        {kPages.map(([key, title, shortcut]) => (
          <button key={key} aria-current={model.page.value === key ? "page" : undefined} title={`${title} (${shortcut})`} onClick={() => model.show_page(key)}>
            {title}
          </button>
        ))}
      </nav>
      {model.page.value === "names" ? <span class="grow" /> : <><FilterBox /><Span /></>}
      {state?.live && (
        <span class="group" role="group" aria-label="Live">
          <button aria-pressed={state.paused} title="Pause (p)" onClick={() => model.pause(!state.paused)}>{state.paused ? "\u25B6 Go on" : "\u2016 Pause"}</button>
          <button aria-pressed={model.follow.value} title="Follow the newest frame (l)" onClick={() => (model.follow.value = !model.follow.value)}>Follow</button>
        </span>
      )}
      {model.page.value !== "names" && model.names.value !== null && model.names.value.unsaved > 0 && <button class="first" title={`Save the names in ${model.names.value.file} (s)`} onClick={model.save_names}>Save names</button>}
      <button class="round" aria-label="Help" title="Help (?)" onClick={() => (helping.value = true)}>?</button>
    </header>
  );
}

export function Notices() {
  const state = model.state.value;
  return (
    <>
      {model.lost.value && <p class="notice lost" role="alert"><b>{"\u2716"} Connection lost.</b> {model.lost.value}</p>}
      {state?.damage && <p class="notice damaged" role="status"><b>{"\u26A0\uFE0E"} Damaged trace.</b> {state.damage}</p>}
    </>
  );
}

function GoTo() {
  const input = useRef<HTMLInputElement>(null);
  const chosen = model.chosen.value;
  // Set only when it changes, so that a live trace does not disturb who types.
  useEffect(() => {
    if (input.current) input.current.value = chosen ? String(chosen) : "";
  }, [chosen]);
  return (
    <form
      class="go-to"
      onSubmit={(event) => {
        event.preventDefault();
        const n = Number.parseInt(input.current?.value ?? "", 10);
        const frames = model.state.value?.frames ?? 0;
        if (!(n >= 1 && n <= frames)) return model.say(`Frames have the numbers 1 to ${count_text(frames)}.`);
        model.go_to_frame(n);
        document.getElementById("list")?.focus();
      }}
    >
      <label>
        Frame
        <input id="go-to" ref={input} class="mono" inputMode="numeric" autoComplete="off" title="Go to a frame by number (f)" size={8} onFocus={(event) => event.currentTarget.select()} />
      </label>
    </form>
  );
}

export function StatusBar() {
  const state = model.state.value;
  const total = model.rows.total.value;
  if (!state) return <footer class="status" />;
  const narrowed = model.filter.value || model.span.value;
  const share = state.size ? Math.min(1, state.bytes / state.size) : null;
  return (
    <footer class="status">
      {model.page.value === "frames" && <GoTo />}
      <span id="count">
        {narrowed ? `${count_text(total)} of ${many(state.frames, "frame")}` : many(total, "frame")}
      </span>
      {!state.live && !state.complete && (
        <span class="progress">
          {share !== null && <progress value={share} aria-label="Reading the trace" />}
          Reading {share !== null ? `${Math.floor(100 * share)} %` : bytes_text(state.bytes)}
        </span>
      )}
      {narrowed && state.complete && !model.rows.complete.value && <span>Filtering {"\u2026"}</span>}
      {state.live && <span class={state.paused ? "" : "live"}>{state.paused ? "\u2016 Paused" : "\u25CF Live"}</span>}
      {state.dropped > 0 && <span class="wrong">{"\u2716"} {many(state.dropped, "frame")} dropped</span>}
      <span class="grow" />
      <span class="files" title={state.files.join("\n")}>{state.files.map(file_name).join(", ")}</span>
    </footer>
  );
}
