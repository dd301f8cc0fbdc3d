// Traffic over time; a span is chosen by dragging. Without a mouse, frame.time in a filter does the same.
import { useEffect, useRef } from "preact/hooks";
import uPlot from "uplot";
import "uplot/dist/uPlot.min.css";
import type { Timeline } from "./api";
import * as model from "./model";
import { bytes_text, count_text, moment_text, time_text } from "./text";

const kHeight = 180;

// Steps of the axis in seconds: round ones of the clock.
const kSteps = [-6, -5, -4, -3, -2, -1]
  .flatMap((power) => [1, 2, 5].map((step) => step * 10 ** power))
  .concat([1, 2, 5, 10, 15, 30], [1, 2, 5, 10, 15, 30].map((m) => 60 * m), [1, 2, 3, 6, 12, 24, 48, 168, 720, 2400, 9600, 24_000, 96_000].map((h) => 3600 * h));

function color(name: string): string {
  return getComputedStyle(document.documentElement).getPropertyValue(name).trim();
}

export function Chart({ timeline, unit }: { timeline: Timeline | null; unit: "frames" | "bytes" }) {
  const box = useRef<HTMLDivElement>(null);
  const span = model.span.value;
  const offset = model.state.value?.utcOffset ?? 0;

  useEffect(() => {
    const room = box.current;
    if (!room || !timeline || timeline.frames.length === 0) return;
    const start = BigInt(timeline.start);
    // The axis counts from midnight, so that its round values are round times.
    const day = 86_400_000_000_000n;
    const shift = BigInt(offset) * 1_000_000_000n;
    const midnight = start - ((start + shift) % day);
    const second = (ns: bigint) => Number(ns - midnight) / 1e9;
    const nanosecond = (at: number) => midnight + BigInt(Math.round(at * 1e9));
    const first = second(start);
    const width = timeline.width / 1e9;
    const bins = timeline[unit];
    const xs = bins.map((_, i) => first + i * width);
    const whole = Math.max(width, bins.length * width);
    const digits = whole < 0.01 ? 6 : whole < 20 ? 3 : 0;
    const label = (at: number) => (whole > 86_400 ? moment_text : time_text)(nanosecond(at), offset, digits);
    const amount = (n: number) => (unit === "bytes" ? bytes_text(n) : count_text(n));
    const ink = color("--ink-dim");
    const grid = { stroke: color("--rule"), width: 1 };
    const font = `12px ${getComputedStyle(document.body).fontFamily}`;

    let settling = false;
    const draw = () =>
      new uPlot(
        {
          width: Math.max(200, room.clientWidth),
          height: kHeight,
          padding: [10, 40, 0, 0],
          scales: { x: { time: false, range: () => [first, first + whole] }, y: { range: (_u, _low, high) => [0, Math.max(1, high * 1.08)] } },
          legend: { show: false },
          cursor: { y: false, drag: { x: true, y: false, setScale: false, dist: 4 }, points: { show: false } },
          axes: [
            { stroke: ink, grid, ticks: grid, font, size: 30, space: whole > 86_400 ? 150 : 110, incrs: kSteps, values: (_u, ticks) => ticks.map(label) },
            { stroke: ink, grid, ticks: grid, font, size: 74, values: (_u, ticks) => ticks.map((n) => (Number.isInteger(n) ? amount(n) : "")) },
          ],
          series: [
            {},
            {
              fill: color("--accent"),
              width: 0,
              points: { show: false },
              paths: uPlot.paths.bars!({ size: [1, Infinity, 1], align: 1, gap: 0 }),
            },
          ],
          hooks: {
            ready: [(plot) => mark(plot)],
            setSelect: [
              (plot) => {
                const { left, width: dragged } = plot.select;
                if (settling || dragged < 4) return;
                const after = nanosecond(plot.posToVal(left, "x"));
                const before = nanosecond(plot.posToVal(left + dragged, "x"));
                model.use_span({ after: String(after), before: String(before) });
              },
            ],
            setCursor: [
              (plot) => {
                const at = plot.cursor.idx;
                const tip = room.parentElement?.querySelector(".tip");
                if (tip) tip.textContent = at === null || at === undefined ? "" : `${label(xs[at] ?? 0)}  ${amount(bins[at] ?? 0)}`;
              },
            ],
          },
        },
        [xs, bins],
        room,
      );
    const mark = (plot: uPlot) => {
      settling = true;
      const now = model.span.value;
      const left = now ? plot.valToPos(Math.max(first, second(BigInt(now.after))), "x") : 0;
      const right = now ? plot.valToPos(Math.min(first + whole, second(BigInt(now.before))), "x") : 0;
      plot.setSelect({ left, width: Math.max(now ? 2 : 0, right - left), top: 0, height: plot.bbox.height / devicePixelRatio }, false);
      settling = false;
    };
    let plot = draw();
    const redraw = () => {
      plot.destroy();
      plot = draw();
    };
    const watch = new ResizeObserver(() => {
      if (room.clientWidth !== plot.width && room.clientWidth > 0) {
        plot.setSize({ width: room.clientWidth, height: kHeight });
        mark(plot);
      }
    });
    watch.observe(room);
    const dark = matchMedia("(prefers-color-scheme: dark)");
    dark.addEventListener("change", redraw);
    return () => {
      watch.disconnect();
      dark.removeEventListener("change", redraw);
      plot.destroy();
    };
  }, [timeline, unit, span, offset]);

  const total = timeline ? timeline[unit].reduce((sum, n) => sum + n, 0) : 0;
  return (
    <div class="chart">
      <div ref={box} role="img" aria-label={`${unit === "frames" ? "Frames" : "Bytes"} over time, ${count_text(total)} in all`} />
      {timeline && timeline.frames.length === 0 && <p class="dim pad">No frames.</p>}
      <p class="tip mono dim" aria-hidden="true" />
    </div>
  );
}
