// Nicknames: edited in place, and the page of all of them.
import { signal } from "@preact/signals";
import { useEffect, useRef, useState } from "preact/hooks";
import { Refusal, type Name } from "./api";
import { key_text } from "./frame";
import * as model from "./model";
import { many } from "./text";

const kKinds: [kind: string, title: string, example: string][] = [
  ["station", "MAC address", "00:00:5e:00:53:01"],
  ["ip", "IPv4 address", "192.0.2.1"],
  ["ip6", "IPv6 address", "2001:db8::1"],
  ["port", "Port", "8080"],
  ["sap", "SAP pair", "f0/f0"],
  ["type", "EtherType", "0x0800"],
];

function kind_title(kind: string): string {
  return kKinds.find((known) => known[0] === kind)?.[1] ?? kind;
}

// Why it was not taken; empty when it was.
async function give(kind: string, key: string, name: string): Promise<string> {
  try {
    await model.give_name(kind, key, name.trim());
    return "";
  } catch (error) {
    if (error instanceof Refusal) return error.message;
    model.trouble(error);
    return "The program does not answer.";
  }
}

export function NameEditor() {
  const about = model.naming.value;
  const box = useRef<HTMLFormElement>(null);
  const input = useRef<HTMLInputElement>(null);
  const [error, set_error] = useState("");
  const known =
    about &&
    model.names.value?.names.find(({ kind, key }) => key_text([kind, key]) === key_text(about.who));

  useEffect(() => {
    set_error("");
    input.current?.select();
  }, [about]);
  if (!about) return null;

  const close = () => {
    model.naming.value = null;
    if (about.back instanceof HTMLElement) about.back.focus();
  };
  const [kind, key] = about.who;
  const width = Math.min(352, innerWidth - 16);
  const left = Math.max(8, Math.min(about.near.left - 6, innerWidth - width - 8));
  const below = about.near.bottom + 150 < innerHeight;
  const place = below ? { top: `${about.near.bottom + 2}px` } : { bottom: `${innerHeight - about.near.top + 2}px` };
  return (
    <form
      ref={box}
      class="naming"
      aria-label={`Name of ${key}`}
      style={{ left: `${left}px`, width: `${width}px`, ...place }}
      onSubmit={async (event) => {
        event.preventDefault();
        const refused = await give(kind, key, input.current?.value ?? "");
        if (refused) set_error(refused);
        else close();
      }}
      onKeyDown={(event) => {
        event.stopPropagation();
        if (event.key === "Escape") close();
      }}
      onFocusOut={(event) => {
        if (!box.current?.contains(event.relatedTarget as globalThis.Node | null)) model.naming.value = null;
      }}
    >
      <label>
        <span>
          Name of {kind_title(kind)} <b class="mono">{key}</b>
        </span>
        <input ref={input} type="text" defaultValue={known?.name ?? ""} autoComplete="off" spellcheck={false} aria-invalid={error !== ""} aria-describedby="naming-error" />
      </label>
      {error && <p id="naming-error" class="error" role="alert">{error}</p>}
      <div class="buttons">
        <span class="dim">Empty removes the name.</span>
        <button type="button" onClick={close}>Cancel</button>
        <button type="submit" class="first">Apply</button>
      </div>
    </form>
  );
}

const errors = signal<{ row: string; text: string } | null>(null);

function shown_key({ kind, key }: Name): string {
  return kind === "station" && /^[0-9a-f]{12}$/i.test(key) ? (key.match(/../g)?.join(":") ?? key) : key;
}

function NameRow({ entry }: { entry: Name }) {
  const id = `${entry.kind} ${entry.key}`;
  const put = async (name: string) => {
    if (name.trim() === entry.name) return;
    const refused = await give(entry.kind, entry.key, name);
    errors.value = refused ? { row: id, text: refused } : null;
  };
  const error = errors.value?.row === id ? errors.value.text : "";
  return (
    <tr>
      <td>{kind_title(entry.kind)}</td>
      <td class="mono">{shown_key(entry)}</td>
      <td>
        <input
          type="text"
          defaultValue={entry.name}
          aria-label={`Name of ${entry.key}`}
          aria-invalid={error !== ""}
          autoComplete="off"
          spellcheck={false}
          onKeyDown={(event) => {
            if (event.key === "Enter") event.currentTarget.blur();
            if (event.key === "Escape") {
              event.currentTarget.value = entry.name;
              event.currentTarget.blur();
            }
          }}
          onBlur={(event) => put(event.currentTarget.value)}
        />
        {error && <p class="error" role="alert">{error}</p>}
      </td>
      <td class="dim">{entry.source || "not saved yet"}</td>
      <td>
        <button onClick={() => put("")} aria-label={`Remove the name of ${entry.key}`}>Remove</button>
      </td>
    </tr>
  );
}

function NewName() {
  const [kind, set_kind] = useState("station");
  const [error, set_error] = useState("");
  return (
    <form
      class="new-name"
      onSubmit={async (event) => {
        event.preventDefault();
        const form = event.currentTarget;
        const field = (name: string) => form.elements.namedItem(name) as HTMLInputElement;
        const refused = await give(kind, field("key").value.trim(), field("name").value);
        set_error(refused);
        if (refused) return;
        form.reset();
        field("key").focus();
      }}
    >
      <label>
        <span>Kind</span>
        <select value={kind} onChange={(event) => set_kind(event.currentTarget.value)}>
          {kKinds.map(([value, title]) => <option key={value} value={value}>{title}</option>)}
        </select>
      </label>
      <label>
        <span>Key</span>
        <input name="key" class="mono" required placeholder={kKinds.find(([value]) => value === kind)?.[2]} autoComplete="off" spellcheck={false} />
      </label>
      <label>
        <span>Name</span>
        <input name="name" required autoComplete="off" spellcheck={false} />
      </label>
      <button type="submit">Add</button>
      {error && <p class="error" role="alert">{error}</p>}
    </form>
  );
}

export function NamesPage() {
  const names = model.names.value;
  return (
    <main class="sheet" id="sheet" tabIndex={-1}>
      <div class="sheet-head">
        <h1>Nicknames</h1>
        {names && <span class="dim">{many(names.names.length, "name")}</span>}
        <span class="grow" />
        {names && <span class="dim">{names.unsaved ? `${many(names.unsaved, "change")} not saved` : "All saved"} {"\u00B7"} <span class="mono">{names.file}</span></span>}
        <button class="first" disabled={!names?.unsaved} onClick={model.save_names}>Save</button>
      </div>
      <section class="card">
        <NewName />
        {names && names.names.length > 0 ? (
          <div class="table-box">
            <table class="names">
              <thead>
                <tr><th>Kind</th><th>Key</th><th>Name</th><th>From</th><th><span class="unseen">Remove</span></th></tr>
              </thead>
              <tbody>{names.names.map((entry) => <NameRow key={`${entry.kind} ${entry.key} ${entry.name}`} entry={entry} />)}</tbody>
            </table>
          </div>
        ) : (
          <p class="dim pad">{names ? "Nothing has a name yet. In the list, n names the source of a frame and Shift+N its destination." : "Loading \u2026"}</p>
        )}
      </section>
    </main>
  );
}
