// Runs in the page: texts whose contrast with what is behind them is below 4.5 to 1.
export function contrast_faults() {
  const canvas = document.createElement("canvas").getContext("2d", { willReadFrequently: true });
  const rgba = (color) => {
    canvas.clearRect(0, 0, 1, 1);
    canvas.fillStyle = color;
    canvas.fillRect(0, 0, 1, 1);
    return [...canvas.getImageData(0, 0, 1, 1).data];
  };
  const over = (top, below) => below.map((value, i) => top[i] * (top[3] / 255) + value * (1 - top[3] / 255));
  const behind = (element) => {
    const layers = [];
    for (let up = element; up; up = up.parentElement) layers.push(rgba(getComputedStyle(up).backgroundColor));
    return layers.reverse().reduce((below, layer) => over(layer, below), [255, 255, 255]);
  };
  const light = (color) => {
    const [r, g, b] = color.map((value) => (value / 255 <= 0.04045 ? value / 255 / 12.92 : ((value / 255 + 0.055) / 1.055) ** 2.4));
    return 0.2126 * r + 0.7152 * g + 0.0722 * b;
  };
  const faults = new Set();
  const walk = document.createTreeWalker(document.body, NodeFilter.SHOW_TEXT);
  while (walk.nextNode()) {
    const element = walk.currentNode.parentElement;
    if (!walk.currentNode.data.trim() || element.closest(":disabled, noscript, option") || !element.checkVisibility()) continue;
    const ground = behind(element);
    const [a, b] = [light(over(rgba(getComputedStyle(element).color), ground)), light(ground)];
    const ratio = (Math.max(a, b) + 0.05) / (Math.min(a, b) + 0.05);
    if (ratio < 4.5) faults.add(`${element.className || element.tagName} ${ratio.toFixed(2)} "${walk.currentNode.data.trim().slice(0, 20)}"`);
  }
  return [...faults];
}
