import { signal } from "@preact/signals";
import { useEffect, useRef } from "preact/hooks";

export const helping = signal(false);

const kKeys: [title: string, keys: [keys: string[], what: string][]][] = [
  [
    "Everywhere",
    [
      [["j", "k"], "Next, previous frame"],
      [["/"], "Filter"],
      [["f"], "Go to a frame by number"],
      [["Tab"], "Next pane: list, lines, bytes"],
      [["1", "2", "3"], "Frames, statistics, nicknames"],
      [["t"], "Next character set"],
      [["e", "E"], "Next, previous frame with a wrong checksum"],
      [["?"], "This help"],
    ],
  ],
  [
    "Copying and names",
    [
      [["c"], "Copy the line"],
      [["C"], "Copy the layer"],
      [["x"], "Copy the bytes as hex"],
      [["n", "N"], "List: name the source, the destination"],
      [["n"], "Lines: name the address or port of the line"],
      [["s"], "Save the names"],
    ],
  ],
  [
    "In a pane",
    [
      [["\u2191", "\u2193", "PgUp", "PgDn"], "Move"],
      [["g", "G"], "First, last"],
      [["\u2190", "\u2192"], "Lines: fold, unfold. Bytes: move"],
      [["<", ">"], "Lines: fold, unfold all layers"],
      [["Enter"], "List: to the lines. Lines: fold"],
      [["Esc"], "Back to the list"],
    ],
  ],
  [
    "Live",
    [
      [["p"], "Pause, go on"],
      [["l"], "Follow the newest frame"],
    ],
  ],
];

const kFilters: [filter: string, what: string][] = [
  ["tcp.port == 139", "a port, either side"],
  ["ip.src == 10.0.0.0/8", "a network"],
  ['station ~ "printer"', "part of a name"],
  ["arp or dns", "protocols"],
  ["checksum.bad", "wrong checksums"],
  ["frame.length > 1000", "long frames"],
  ['line ~ "Share Name"', "any line of the decode"],
];

export function Help() {
  const dialog = useRef<HTMLDialogElement>(null);
  useEffect(() => {
    if (helping.value) dialog.current?.showModal();
    else dialog.current?.close();
  }, [helping.value]);
  return (
    <dialog
      ref={dialog}
      class="help"
      aria-label="Help"
      onClose={() => (helping.value = false)}
      onClick={(event) => {
        if (event.target === dialog.current) helping.value = false;
      }}
    >
      <div class="help-body">
        <header>
          <h1>Keys</h1>
          <span class="grow" />
          <button onClick={() => (helping.value = false)}>Close <kbd>Esc</kbd></button>
        </header>
        <div class="columns">
          {kKeys.map(([title, keys]) => (
            <section key={title}>
              <h2>{title}</h2>
              <dl>
                {keys.map(([names, what]) => (
                  <div key={what}>
                    <dt>{names.map((name) => <kbd key={name}>{name}</kbd>)}</dt>
                    <dd>{what}</dd>
                  </div>
                ))}
              </dl>
            </section>
          ))}
          <section>
            <h2>Filters</h2>
            <dl class="filters">
              {kFilters.map(([filter, what]) => (
                <div key={filter}>
                  <dt><code>{filter}</code></dt>
                  <dd>{what}</dd>
                </div>
              ))}
            </dl>
          </section>
        </div>
      </div>
    </dialog>
  );
}
