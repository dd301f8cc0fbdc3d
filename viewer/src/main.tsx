import { signal } from "@preact/signals";
import { render } from "preact";
import "./main.css";
import { ask, type Rows } from "./api";
import { copy_hex, copy_layer, copy_line } from "./copying";
import { Detail } from "./detail";
import { Help, helping } from "./help";
import { HexPane } from "./hex_pane";
import * as model from "./model";
import { NameEditor, NamesPage } from "./naming";
import { PacketList } from "./packet_list";
import { Splitter } from "./splitter";
import { StatisticsPage } from "./statistics";
import { Notices, StatusBar, Toolbar } from "./toolbar";

const across = signal(45); // share of the list
const along = signal(47); // share of the lines

// The splitters come last in the document, so that Tab goes from pane to pane; the style sheet puts them between.
function Frames() {
  return (
    <main class="frames" style={{ "--across": `${across.value}%`, "--along": `${along.value}%` }}>
      <PacketList />
      <div class="lower">
        <Detail />
        <HexPane />
        <Splitter label="Width of the lines" upright share={along.value} set={(share) => (along.value = share)} />
      </div>
      <Splitter label="Height of the list" upright={false} share={across.value} set={(share) => (across.value = share)} />
    </main>
  );
}

function App() {
  const page = model.page.value;
  return (
    <>
      <Toolbar />
      <Notices />
      {page === "frames" ? <Frames /> : page === "statistics" ? <StatisticsPage /> : <NamesPage />}
      <StatusBar />
      <NameEditor />
      <Help />
      <div class="toast" role="status">{model.toast.value && <p>{model.toast.value}</p>}</div>
    </>
  );
}

function next_charset(): void {
  const sets = model.state.value?.charsets ?? [];
  const next = sets[(sets.indexOf(model.charset.value) + 1) % sets.length];
  if (!next) return;
  model.use_charset(next);
  model.say(`Text in ${next}`);
}

// The nearest frame with a wrong checksum before or behind the chosen one. In a long trace the server may not have come
// there yet: then it is asked again, until something else is wanted.
let searches = 0;
async function to_fault(forward: boolean): Promise<void> {
  const [search, about, chosen] = [++searches, model.query.value, model.chosen.value];
  const filter = about.filter ? `(${about.filter}) and checksum.bad` : "checksum.bad";
  try {
    while (search === searches && about === model.query.value && chosen === model.chosen.value) {
      const { index } = await ask<{ index: number }>("row", { ...about, filter, n: chosen + (forward ? 1 : 0) });
      const at = forward ? index : index - 1;
      const reply = at < 0 ? null : await ask<Rows>("rows", { ...about, filter, from: at, count: 1 });
      const found = reply?.rows[0];
      if (found) return await model.go_to_frame(found.n);
      if (index >= 0 && (!reply || reply.complete || model.state.value?.live)) {
        return model.say(`No ${forward ? "later" : "earlier"} frame has a wrong checksum.`);
      }
      model.say("Looking for a wrong checksum \u2026");
      await new Promise((done) => setTimeout(done, 250));
    }
  } catch (error) {
    model.trouble(error);
  }
}

function focus(id: string): void {
  const element = document.getElementById(id);
  element?.focus();
  if (element instanceof HTMLInputElement) element.select();
}

const kFramesOnly = new Map<string, () => void>([
  ["j", () => model.step(1)],
  ["k", () => model.step(-1)],
  ["f", () => focus("go-to")],
  ["e", () => to_fault(true)],
  ["E", () => to_fault(false)],
  ["c", copy_line],
  ["C", copy_layer],
  ["x", copy_hex],
  ["t", next_charset],
  ["Escape", () => focus("list")],
]);

const kAlways = new Map<string, () => void>([
  [
    "/",
    () => {
      if (model.page.value === "names") model.show_page("frames");
      requestAnimationFrame(() => focus("filter"));
    },
  ],
  ["?", () => (helping.value = true)],
  ["1", () => model.show_page("frames")],
  ["2", () => model.show_page("statistics")],
  ["3", () => model.show_page("names")],
  ["s", () => model.names.value?.unsaved && model.save_names()],
  ["p", () => model.state.value?.live && model.pause(!model.state.value.paused)],
  ["l", () => model.state.value?.live && (model.follow.value = !model.follow.value)],
]);

document.addEventListener("keydown", (event) => {
  if (event.ctrlKey || event.altKey || event.metaKey || helping.value) return;
  if ((event.target as Element).closest("input, select, textarea")) {
    if (event.key === "Escape") focus("list");
    return;
  }
  const act = (model.page.value === "frames" ? kFramesOnly.get(event.key) : undefined) ?? kAlways.get(event.key);
  if (!act) return;
  event.preventDefault();
  act();
});

model.page.subscribe((page) => {
  requestAnimationFrame(() => {
    if (document.activeElement?.id !== "filter") focus(page === "frames" ? "list" : "sheet");
  });
});
model.start();
render(<App />, document.body);
