import { hex_of, layer_of, text_of } from "./frame";
import * as model from "./model";
import { many } from "./text";

async function copy(text: string, what: string): Promise<void> {
  try {
    await navigator.clipboard.writeText(text);
    model.say(`Copied ${what}`);
  } catch {
    model.say("The browser does not let this page copy.");
  }
}

function chosen() {
  const frame = model.frame.value;
  const node = frame?.nodes[model.line.value];
  if (frame && !node) model.say("No line is chosen.");
  return frame && node ? { frame, node } : null;
}

export function copy_line(): void {
  const found = chosen();
  if (found) copy(found.node.line.text.trimEnd(), "the line");
}

export function copy_layer(): void {
  const found = chosen();
  if (found) copy(text_of(layer_of(found.node)), "the layer");
}

// The bytes of the chosen line; of a line without bytes, and where none is chosen, the whole frame.
export function copy_hex(): void {
  const frame = model.frame.value;
  if (!frame) return;
  const line = frame.lines[model.line.value];
  const bytes = line && line.start >= 0 ? frame.bytes.subarray(line.start, line.end + 1) : frame.bytes;
  copy(hex_of(bytes), `${many(bytes.length, "byte")} as hex`);
}
