// The edge between two panes: dragged, or moved with the arrow keys.
interface Props {
  label: string;
  upright: boolean; // stands between left and right
  share: number; // of the first pane, in percent
  set: (share: number) => void;
}

export function Splitter({ label, upright, share, set }: Props) {
  const bounded = (value: number) => set(Math.round(Math.max(12, Math.min(85, value)) * 10) / 10);
  const drag = (event: PointerEvent) => {
    const edge = event.currentTarget as HTMLElement;
    const box = edge.parentElement?.getBoundingClientRect();
    if (!box) return;
    event.preventDefault();
    edge.setPointerCapture(event.pointerId);
    edge.onpointermove = (move) =>
      bounded(upright ? (100 * (move.clientX - box.left)) / box.width : (100 * (move.clientY - box.top)) / box.height);
    edge.onpointerup = edge.onpointercancel = () => (edge.onpointermove = null);
  };
  return (
    <div
      class={upright ? "splitter upright" : "splitter"}
      role="separator"
      tabIndex={0}
      aria-label={label}
      aria-orientation={upright ? "vertical" : "horizontal"}
      aria-valuenow={Math.round(share)}
      aria-valuemin={12}
      aria-valuemax={85}
      onPointerDown={drag}
      onKeyDown={(event) => {
        const step = { ArrowLeft: -2, ArrowUp: -2, ArrowRight: 2, ArrowDown: 2 }[event.key];
        if (!step) return;
        event.preventDefault();
        event.stopPropagation();
        bounded(share + step);
      }}
    />
  );
}
