// A server for a trace, and pages of a browser at it.
import { spawn } from "node:child_process";
import { createRequire } from "node:module";

const { chromium } = createRequire(new URL("../../viewer/package.json", import.meta.url))("playwright-core");

export const { PROGRAM: kProgram, FOLDER: kFolder, SCREENSHOTS: kScreenshots } = process.env;
export const kRoot = new URL("../../", import.meta.url).pathname;

const kFlags = [
  "--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
  "--disable-background-networking", "--disable-component-update", "--disable-sync",
];

const open = []; // what is to be ended
let browser = null;

// `fed` is what stands on standard input at first.
export async function serve(what, fed = "") {
  const child = spawn(kProgram, ["view", "--no-open", "--utc", ...[what].flat()], { stdio: ["pipe", "pipe", "inherit"] });
  open.push(() => child.kill());
  child.stdin.write(fed);
  const address = await new Promise((done, failed) => {
    child.stdout.once("data", (line) => done(String(line).trim()));
    child.once("exit", (code) => failed(new Error(`wirelines view ended with ${code}`)));
  });
  return { address, child };
}

// A page of a trace; `faults` gathers what the browser complains of.
export async function visit(address, { hash = "", ...options } = {}) {
  browser ??= await chromium.launch({ executablePath: process.env.CHROMIUM ?? "/usr/bin/chromium", args: kFlags });
  const context = await browser.newContext({ viewport: { width: 1280, height: 800 }, ...options });
  await context.grantPermissions(["clipboard-read", "clipboard-write"]);
  const page = await context.newPage();
  page.setDefaultTimeout(5_000);
  const faults = [];
  page.on("pageerror", (error) => faults.push(error.message));
  page.on("console", (message) => message.type() === "error" && faults.push(message.text()));
  await page.goto(address + hash);
  await page.locator("#count").waitFor();
  return { page, faults, close: () => context.close() };
}

export async function end_all() {
  await browser?.close();
  for (const end of open) end();
}

export const lit_bytes = (page) =>
  page.$$eval(".byte.lit", (bytes) => bytes.map((byte) => Number(byte.dataset.offset)));

export const chosen_line = (page) => page.locator(".line.on :is(.text, .bar)").innerText().then((text) => text.trim());

export const count_text = (page) => page.locator("#count").innerText();
