// Traces made for the tests.
import { closeSync, openSync, readFileSync, writeFileSync, writeSync } from "node:fs";

const kHeader = 24;
const kRecord = 16;

function header() {
  const bytes = Buffer.alloc(kHeader);
  bytes.writeUInt32LE(0xa1b2c3d4, 0);
  bytes.writeUInt16LE(2, 4);
  bytes.writeUInt16LE(4, 6);
  bytes.writeUInt32LE(65535, 16);
  bytes.writeUInt32LE(1, 20);
  return bytes;
}

export function record(frame, milliseconds) {
  const head = Buffer.alloc(kRecord);
  head.writeUInt32LE(1_700_000_000 + Math.floor(milliseconds / 1000), 0);
  head.writeUInt32LE((milliseconds % 1000) * 1000, 4);
  head.writeUInt32LE(frame.length, 8);
  head.writeUInt32LE(frame.length, 12);
  return Buffer.concat([head, frame]);
}

// `when` gives the millisecond of each frame.
export function write_trace(path, frames, when = (i) => i) {
  writeFileSync(path, Buffer.concat([header(), ...frames.map((frame, i) => record(frame, when(i)))]));
}

export function read_frames(path) {
  const bytes = readFileSync(path);
  const frames = [];
  for (let at = kHeader; at + kRecord <= bytes.length; ) {
    const length = bytes.readUInt32LE(at + 8);
    frames.push(bytes.subarray(at + kRecord, at + kRecord + length));
    at += kRecord + length;
  }
  return frames;
}

// The frames over and over; a million records are written in pieces.
export function write_long_trace(path, frames, count) {
  const file = openSync(path, "w");
  writeSync(file, header());
  for (let from = 0; from < count; from += 50_000) {
    const piece = [];
    for (let i = from; i < Math.min(count, from + 50_000); ++i) piece.push(record(frames[i % frames.length], i));
    writeSync(file, Buffer.concat(piece));
  }
  closeSync(file);
}

// A UDP datagram to a port of nobody: what it carries is shown as a data block.
export function datagram(payload) {
  const length = 28 + payload.length;
  const ip = [0x45, 0, length >> 8, length & 255, 0, 1, 0, 0, 64, 17, 0, 0, 192, 0, 2, 1, 192, 0, 2, 2];
  let sum = 0;
  for (let i = 0; i < 20; i += 2) sum += ip[i] * 256 + ip[i + 1];
  sum = (sum >> 16) + (sum & 0xffff);
  sum = ~((sum >> 16) + sum) & 0xffff;
  [ip[10], ip[11]] = [sum >> 8, sum & 255];
  const ethernet = [2, 0, 0, 0, 0, 2, 2, 0, 0, 0, 0, 1, 8, 0];
  const udp = [0x9c, 0x40, 0x27, 0x0f, (length - 20) >> 8, (length - 20) & 255, 0, 0];
  return Buffer.from([...ethernet, ...ip, ...udp, ...payload]);
}

// "Japan" in the two-byte sets, "Hello" in EBCDIC.
export const kTexts = {
  sjis: { bytes: [0x93, 0xfa, 0x96, 0x7b, 0x8c, 0xea], text: ["日", "本", "語"] },
  jis: { bytes: [0x46, 0x7c, 0x4b, 0x5c, 0x38, 0x6c], text: ["日", "本", "語"] },
  utf16: { bytes: [0xe5, 0x65, 0x2c, 0x67, 0x9e, 0x8a], text: ["日", "本", "語"] },
  euc: { bytes: [0xc6, 0xfc, 0xcb, 0xdc, 0xb8, 0xec], text: ["日", "本", "語"] },
  ebcdic: { bytes: [0xc8, 0x85, 0x93, 0x93, 0x96], text: ["H", "e", "l", "l", "o"] },
  ascii: { bytes: [0x48, 0x65, 0x6c, 0x6c, 0x6f], text: ["H", "e", "l", "l", "o"] },
};
