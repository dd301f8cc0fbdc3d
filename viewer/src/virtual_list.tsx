// A list of any number of rows of one height, of which only those in view exist. Browsers end an element's height near
// 33 million pixels, so the scroll bar of a longer list is scaled: a wheel still moves by rows, the bar by shares.
import { Component, createRef, type ComponentChildren, type JSX } from "preact";

const kTallest = 8_000_000;

export interface Handle {
  current: VirtualList | null;
}

interface Props extends Omit<JSX.IntrinsicElements["div"], "children" | "ref"> {
  handle: Handle;
  count: number;
  rowHeight: number;
  headHeight?: number;
  head?: ComponentChildren;
  least?: string; // least width of what scrolls
  row: (index: number) => ComponentChildren;
  seen?: (first: number, last: number) => void;
  scrolled?: (up: boolean) => void; // by the reader's hand
}

interface Place {
  top: number; // row at the upper edge, with its fraction
  height: number;
}

export class VirtualList extends Component<Props, Place> {
  override state: Place = { top: 0, height: 0 };
  private box = createRef<HTMLDivElement>();
  private expected = -1; // where we put the scroll bar ourselves
  private watch: ResizeObserver | null = null;
  private later: (() => void) | null = null; // what is to come into view once there is a view

  get element(): HTMLDivElement | null {
    return this.box.current;
  }

  get page(): number {
    return Math.max(1, Math.floor(this.state.height / this.props.rowHeight) - 1);
  }

  private most(): number {
    return Math.max(0, this.props.count - this.state.height / this.props.rowHeight);
  }

  private get natural(): number {
    return this.props.count * this.props.rowHeight;
  }

  override componentDidMount(): void {
    const box = this.box.current;
    if (!box) return;
    this.props.handle.current = this;
    this.watch = new ResizeObserver(() => this.measure());
    this.watch.observe(box);
    box.addEventListener("wheel", this.wheel, { passive: false });
    this.measure();
  }

  override componentWillUnmount(): void {
    this.watch?.disconnect();
    this.props.handle.current = null;
  }

  override componentDidUpdate(before: Props): void {
    if (this.state.top > this.most()) this.go(this.most());
    else if (before.count !== this.props.count) this.place_bar();
    this.tell_seen();
  }

  private measure(): void {
    const box = this.box.current;
    if (!box) return;
    const height = Math.max(0, box.clientHeight - (this.props.headHeight ?? 0));
    if (height === this.state.height) return;
    const at_end = this.state.top > 0 && this.state.top >= this.most(); // where it stays
    this.setState({ height }, () => {
      if (this.later) this.later();
      else if (at_end) this.go(this.most());
      else this.place_bar();
    });
  }

  private tell_seen(): void {
    const first = Math.floor(this.state.top);
    const last = Math.min(this.props.count - 1, first + Math.ceil(this.state.height / this.props.rowHeight));
    this.props.seen?.(first, Math.max(first, last));
  }

  private range(): number {
    return Math.max(0, Math.min(this.natural, kTallest) - this.state.height);
  }

  private place_bar(): void {
    const box = this.box.current;
    const most = this.most();
    if (!box || most <= 0) return;
    box.scrollTop = (this.state.top / most) * this.range();
    this.expected = box.scrollTop;
  }

  private go(top: number): void {
    this.setState({ top: Math.max(0, Math.min(top, this.most())) }, () => this.place_bar());
  }

  // Brings a row into view: at the nearer edge, or in the middle unless it is in view already.
  reveal(index: number, how: "near" | "middle" | "start" = "near"): void {
    this.later = null;
    if (this.state.height === 0) {
      this.later = () => this.reveal(index, how);
      return;
    }
    const rows = Math.max(1, Math.floor(this.state.height / this.props.rowHeight));
    const { top } = this.state;
    if (how === "start") return this.go(index);
    if (index >= top && index + 1 <= top + this.state.height / this.props.rowHeight) return;
    if (how === "middle") return this.go(Math.floor(index - rows / 2));
    this.go(index < top ? index : index + 1 - this.state.height / this.props.rowHeight);
  }

  rect(index: number): DOMRect | null {
    return this.box.current?.querySelector(`[data-row="${index}"]`)?.getBoundingClientRect() ?? null;
  }

  private wheel = (event: WheelEvent): void => {
    if (this.natural <= kTallest || event.ctrlKey || event.deltaY === 0 || event.shiftKey) return;
    event.preventDefault();
    const unit = event.deltaMode === 1 ? 3 : event.deltaMode === 2 ? this.page : 1 / this.props.rowHeight;
    this.go(this.state.top + event.deltaY * unit);
    this.props.scrolled?.(event.deltaY < 0);
  };

  private scroll = (): void => {
    const box = this.box.current;
    const range = this.range();
    if (!box || range <= 0 || Math.abs(box.scrollTop - this.expected) < 1) return;
    this.expected = -1;
    const top = Math.min(1, box.scrollTop / range) * this.most();
    const up = top < this.state.top;
    this.setState({ top });
    this.props.scrolled?.(up);
  };

  render() {
    const { count, rowHeight, headHeight = 0, head, least, row, seen: _seen, scrolled: _scrolled, handle: _handle, ...rest } = this.props;
    const { top, height } = this.state;
    const shown = [];
    for (let i = Math.floor(top); i < Math.min(count, top + height / rowHeight); ++i) {
      const style = { transform: `translateY(${Math.round((i - top) * rowHeight)}px)`, height: `${rowHeight}px` };
      shown.push(
        <div key={i} class="slot" style={style} data-row={i} role="presentation">
          {row(i)}
        </div>,
      );
    }
    const wide = least ? { minWidth: least } : {};
    return (
      <div {...rest} ref={this.box} onScroll={this.scroll}>
        {head && <div class="head" style={{ height: `${headHeight}px`, ...wide }}>{head}</div>}
        <div class="spacer" role="presentation" style={{ height: `${Math.min(this.natural, kTallest)}px`, ...wide }}>
          <div class="window" role="presentation" style={{ top: `${headHeight}px`, height: `${Math.min(height, this.natural)}px` }}>
            {shown}
          </div>
        </div>
      </div>
    );
  }
}
