// Heights that follow the size of the reader's font.
import { signal } from "@preact/signals";

function rem(): number {
  return Number.parseFloat(getComputedStyle(document.documentElement).fontSize) || 16;
}

export const row_height = signal(Math.round(1.3125 * rem()));
window.addEventListener("resize", () => (row_height.value = Math.round(1.3125 * rem())));
