import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { appendFileSync, readFileSync, rmSync, statSync, writeFileSync } from "node:fs";
import { after, test as node_test } from "node:test";
import { chosen_line, count_text, end_all, kFolder, kProgram, kRoot, kScreenshots, lit_bytes, serve, visit } from "./support.mjs";
import { contrast_faults } from "./contrast.mjs";
import { datagram, kTexts, read_frames, record, write_long_trace, write_trace } from "./traces.mjs";

const example = (name) => `${kRoot}examples/${name}`;
const range = (first, last) => Array.from({ length: last - first + 1 }, (_, i) => first + i);

const test = (name, body) => node_test(name, { timeout: 120_000 }, body);
after(end_all);

test("a line lights its bytes, and a byte chooses its line", async () => {
  const { address } = await serve(example("smb.pcap"));
  const { page, faults, close } = await visit(address, { hash: "#frame=8" });
  await page.locator(".line.on").waitFor();
  assert.equal(await chosen_line(page), "SMB_Negotiate (Client)", "opens at the result line");
  for (const [line, first, last] of [
    ["[Dialect Index 3] LANMAN1.0", 179, 188],
    ["[Dialect Index 9] NT LM 0.12", 249, 259],
  ]) {
    await page.locator(".line", { hasText: line }).click();
    assert.deepEqual(await lit_bytes(page), range(first, last), line);
  }
  for (const [offset, line] of [
    [26, "[Destination Address] 192.0.2.2"],
    [0, "[Destination Address] 020000000001"],
    [75, "[Status] 0x0000 (OK)"],
    [79, "[bit7] 0 = Client request"],
    [68, "[Data Length] 190 (0x00BE) byte(s)"],
  ]) {
    await page.locator("#hex").press("g");
    await page.locator(`#byte-${offset}`).click();
    assert.equal(await chosen_line(page), line);
    assert.ok((await lit_bytes(page)).includes(offset));
    assert.ok(await page.locator(".line.on").isVisible(), "the line is in view");
  }
  await page.locator(".line", { hasText: "[Type] 0 (SESSION MESSAGE)" }).hover();
  assert.deepEqual(await page.$$eval(".byte.hint", (bytes) => bytes.map((byte) => byte.dataset.offset)), ["66"]);
  assert.deepEqual(faults, []);
  await close();
});

test("six character sets, in the lines and beside the bytes", async () => {
  const names = Object.keys(kTexts);
  write_trace(`${kFolder}/sets.pcap`, names.map((name) => datagram(kTexts[name].bytes)));
  const { address } = await serve(`${kFolder}/sets.pcap`);
  const { page, faults, close } = await visit(address);
  for (const [i, name] of names.entries()) {
    const { bytes, text } = kTexts[name];
    await page.locator(`#row-${i}`).click();
    await page.locator("h2", { hasText: `Frame ${i + 1}` }).waitFor();
    await page.locator("#charset").selectOption(name);
    await page.locator(".line", { hasText: text.join("") }).waitFor();
    const cells = await page.$$eval(".cell", (all) =>
      all.filter((cell) => Number(cell.dataset.offset) >= 42).map((cell) => [cell.textContent, Math.round(cell.offsetWidth)]));
    assert.deepEqual(cells.map((cell) => cell[0]), text, name);
    const one = await page.$eval('.cell[data-offset="0"]', (cell) => cell.offsetWidth);
    for (const [, width] of cells) assert.ok(Math.abs(width - one * (bytes.length / text.length)) <= 1, `cells of ${name}`);
  }
  await page.locator("#list").focus();
  await page.keyboard.press("t");
  assert.notEqual(await page.locator("#charset").inputValue(), names.at(-1));
  assert.deepEqual(faults, []);
  await close();
});

test("a long frame, and the ends of its bytes", async () => {
  const trace = `${kFolder}/jumbo.pcap`;
  write_trace(trace, [datagram(Array.from({ length: 60_000 }, (_, i) => i & 255))]);
  const { address } = await serve(trace);
  const { page, faults, close } = await visit(address);
  await page.locator(".line.on").waitFor();
  await page.locator("#hex").press("End");
  await page.locator("#byte-60041.at").waitFor();
  assert.match(await chosen_line(page), /^EA50 {2}50 51/);
  await page.locator("#charset").selectOption("ebcdic");
  await page.locator('.cell[data-offset="60041"]', { hasText: /^[^_]$/ }).waitFor();
  const took = await page.evaluate(() => performance.getEntriesByType("resource").filter(({ name }) => name.includes("api/frame")).map(({ duration }) => duration));
  assert.ok(took.length >= 2 && Math.max(...took) < 1000, `the frame took ${took} ms`);
  assert.deepEqual(faults, []);
  await close();
});

test("filters, and what is wrong with them", async () => {
  const { address } = await serve(example("lan.pcap"));
  const { page, close } = await visit(address);
  const box = page.locator("#filter");
  await page.keyboard.press("/");
  assert.ok(await box.evaluate((input) => input === document.activeElement));
  await page.keyboard.type("tcp and ip.scr == 10.0.0.1");
  await page.keyboard.press("Enter");
  await page.locator(".fault", { hasText: "did you mean ip.src?" }).waitFor();
  const text = await box.evaluate((input) => input.getBoundingClientRect().left + Number.parseFloat(getComputedStyle(input).paddingLeft));
  const caret = await page.locator(".fault .caret").boundingBox();
  const width = await page.locator(".fault .caret").evaluate((mark) => mark.offsetWidth);
  assert.ok(Math.abs(caret.x - text - 8 * width) < width, "the mark stands under the eighth character");
  assert.equal(await count_text(page), "40 frames", "the list stays");

  await box.fill("udp and not dns");
  await box.press("Enter");
  const passed = execFileSync(kProgram, ["list", "-q", "-Y", "udp and not dns", example("lan.pcap")]).toString().trim().split("\n").length;
  await page.locator("#count", { hasText: `${passed} of 40 frames` }).waitFor();
  assert.equal(await page.locator(".fault").count(), 0);
  assert.match(page.url(), /filter=udp\+and\+not\+dns/);

  // Frame 1 is chosen and does not pass; the one behind it is the next.
  await box.fill("arp or frame.number > 8");
  await box.press("Enter");
  await page.locator("#row-0 .col-no", { hasText: "5" }).waitFor();
  assert.equal(await page.locator("#list .row.on").count(), 0);
  await page.keyboard.press("j");
  await page.locator("#row-0.on").waitFor();
  await page.locator("h2", { hasText: "Frame 5" }).waitFor();

  await box.fill("smb");
  await box.press("Enter");
  await page.locator(".nothing", { hasText: "No frame passes the filter." }).waitFor();
  await page.getByRole("button", { name: "Show all frames" }).click();
  await page.locator("#count", { hasText: /^40 frames$/ }).waitFor();
  await close();
});

test("statistics say what the stats command says, and a span is dragged", async () => {
  const { address } = await serve(example("lan.pcap"));
  const told = JSON.parse(execFileSync(kProgram, ["stats", "--json", example("lan.pcap")]));
  const { page, faults, close } = await visit(address, { hash: "#view=statistics" });
  const card = (name) => page.getByRole("region", { name, exact: true });
  await page.locator('#sheet[aria-busy="false"]').waitFor();
  const cells = (name) => card(name).locator("tbody tr").evaluateAll((rows) => rows.map((row) => [...row.cells].map((cell) => cell.innerText.trim())));
  assert.deepEqual((await cells("Protocols")).map((row) => [row[0], Number(row[1])]), told.protocols.map(({ path, frames }) => [path.at(-1), frames]));
  assert.deepEqual((await cells("Sizes")).map((row) => Number(row[1])), told.sizes.map(({ frames }) => frames));
  assert.deepEqual((await cells("Checksums")).map((row) => Number(row[1])), Object.values(told.checksums).map(({ right }) => right));
  assert.deepEqual((await cells("Framing by station")).at(-1), ["All", String(told.framings["Ethernet II"].frames)]);
  const talkers = told.ipv4.rows.map(({ address, sent, received }) => [address, sent.frames, received.frames]);
  assert.deepEqual((await cells("Talkers")).map((row) => [row[0], Number(row[1]), Number(row[3])]), talkers);

  const chart = await page.locator(".u-over").boundingBox();
  await page.mouse.move(chart.x + chart.width * 0.05, chart.y + 60);
  await page.mouse.down();
  await page.mouse.move(chart.x + chart.width * 0.6, chart.y + 60, { steps: 6 });
  await page.mouse.up();
  await page.locator("#count", { hasText: /^(?!40)[1-9]\d? of 40 frames$/ }).waitFor();
  await page.getByRole("button", { name: "Show in the list" }).click();
  const shown = Number.parseInt(await count_text(page), 10);
  assert.ok(shown > 0 && shown < 40, `${shown} frames`);
  await page.locator("#row-0").waitFor();
  assert.notEqual(await page.locator("#row-0 .col-no").innerText(), "1");
  await page.locator(".chip button").click();
  await page.locator("#count", { hasText: /^40 frames$/ }).waitFor();

  await page.locator("#filter").fill("smb");
  await page.locator("#filter").press("Enter");
  await page.locator("#count", { hasText: "0 of 40 frames" }).waitFor();
  await page.keyboard.press("2");
  await page.locator(".sheet-head", { hasText: /^Statistics\s*0 frames, 0 bytes$/ }).waitFor();
  await card("Traffic over time").getByText("No frames.").waitFor();
  assert.deepEqual(faults, []);
  await close();
});

test("what the statistics link to is a filter that finds frames", async () => {
  const ipx = "010203040506 0A0B0C0D0E0F 8137 FFFF 001E 0004 00000010 FFFFFFFFFFFF 0452 00000002 00001B123456 4003";
  const bad = Buffer.from(read_frames(example("lan.pcap"))[6]);
  bad[24] ^= 0xff; // the checksum of the IPv4 header
  const trace = `${kFolder}/links.pcap`;
  write_trace(trace, [Buffer.from(ipx.replaceAll(" ", ""), "hex"), bad, Buffer.from(bad)]);
  const { address } = await serve(trace);
  const { page, faults, close } = await visit(address, { hash: "#view=statistics" });
  for (const [card, tab] of [["Talkers", "MAC"], ["Talkers", "IPv4"], ["Talkers", "IPX"], ["Framing by station"], ["Ports"], ["Checksums"]]) {
    const links = page.getByRole("region", { name: card, exact: true });
    if (tab) await links.getByRole("button", { name: tab, exact: true }).click();
    for (let i = 0; i < (await links.locator(".link").count()); ++i) {
      const link = links.locator(".link").nth(i);
      const title = `${card}: ${await link.innerText()}`;
      await link.click();
      await page.locator("#count", { hasText: /^[12] of 3 frames$/ }).waitFor().catch(() => assert.fail(title));
      await page.getByRole("button", { name: "Clear the filter" }).click();
      await page.keyboard.press("Escape");
      await page.keyboard.press("2");
      await page.locator("#count", { hasText: /^3 frames$/ }).waitFor();
      if (tab) await links.getByRole("button", { name: tab, exact: true }).click();
    }
  }
  assert.deepEqual(faults, []);
  await close();
});

test("a name given in place stands everywhere at once, and is kept", async () => {
  const { address } = await serve(example("lan.pcap"));
  const { page, close } = await visit(address, { hash: "#frame=7" });
  await page.locator("#row-6.on").waitFor();
  await page.locator("#list").focus();
  await page.keyboard.press("n");
  await page.locator(".naming input").fill("x".repeat(36));
  await page.keyboard.press("Enter");
  await page.locator(".naming .error").waitFor();
  assert.equal(await page.locator(".naming input").inputValue(), "x".repeat(36), "what was typed stays");
  await page.locator(".naming input").fill("gate 7");
  await page.keyboard.press("Enter");
  await page.locator("#row-6 .col-src", { hasText: "gate 7" }).waitFor();
  await page.locator("#row-7 .col-dst", { hasText: "gate 7" }).waitFor();
  await page.locator(".line", { hasText: "(gate 7)" }).first().waitFor();

  await page.locator("#detail").press("g");
  await page.locator(".line", { hasText: "[Source Address] 02" }).click();
  await page.keyboard.press("n");
  await page.locator(".naming input").fill("板 1");
  await page.keyboard.press("Enter");
  await page.locator(".line", { hasText: "板 1" }).first().waitFor();

  await page.keyboard.press("2");
  await page.getByRole("region", { name: "Talkers" }).getByText("gate 7").waitFor();
  await page.keyboard.press("3");
  await page.getByRole("button", { name: "Save", exact: true }).click();
  await page.locator(".toast", { hasText: "Names saved" }).waitFor();
  const file = await page.locator(".sheet-head .mono").innerText();
  assert.match(readFileSync(file, "utf8"), /^ip\s+192\.0\.2\.2\s+gate 7$/m);
  assert.match(readFileSync(file, "utf8"), /板 1$/m);
  await page.getByLabel("Name of 192.0.2.2", { exact: true }).fill("");
  await page.keyboard.press("Enter");
  await page.locator("td", { hasText: "192.0.2.2" }).waitFor({ state: "detached" });
  await page.keyboard.press("1");
  await page.locator("#row-6 .col-src", { hasText: "192.0.2.2" }).waitFor();
  await close();
  rmSync(file);
});

test("two million rows scroll to their end", async () => {
  const kRows = 2_000_000;
  const trace = `${kFolder}/long.pcap`;
  const frames = read_frames(example("lan.pcap")).filter((frame) => frame.length <= 74);
  const bad = Buffer.from(frames[8]);
  bad[24] ^= 0xff; // the checksum of the IPv4 header
  write_long_trace(trace, frames, kRows - 1);
  appendFileSync(trace, record(bad, kRows - 1));
  const { address, child } = await serve(trace);
  const { page, faults, close } = await visit(address);
  await page.locator("#row-10 .col-no").waitFor();
  const took = await page.evaluate(() => performance.getEntriesByType("resource").find(({ name }) => name.includes("api/rows")).duration);
  assert.ok(took < 1000, `the first rows took ${took} ms`);
  await page.locator("#count", { hasText: "2,000,000 frames" }).waitFor({ timeout: 60_000 });

  const last = page.locator(`#row-${kRows - 1} .col-no`, { hasText: String(kRows) });
  const number_at = (place) => page.$$eval("#list .slot .row", (rows, at) => Number(rows.at(at)?.querySelector(".col-no")?.textContent), place);
  await page.locator("#list").press("End");
  await last.waitFor();
  await page.locator("h2", { hasText: `Frame ${kRows}` }).waitFor();
  await page.keyboard.press("k");
  await page.locator(`#row-${kRows - 2}.on`).waitFor();

  // By the bar to the middle, by the wheel row by row, by the bar to the end.
  await page.locator("#list").evaluate((list) => (list.scrollTop = list.scrollHeight / 2));
  await page.waitForFunction(() => Math.abs(Number(document.querySelector("#list .col-no:not(.head *)")?.textContent) - 1_000_000) < 1000);
  await page.locator("#list .slot .col-no").first().waitFor();
  const before = await number_at(0);
  await page.locator("#list").hover();
  await page.mouse.wheel(0, 210);
  await page.waitForFunction((n) => Number(document.querySelector("#list .slot .col-no")?.textContent) > n, before);
  const after_wheel = await number_at(0);
  assert.ok(after_wheel - before >= 8 && after_wheel - before <= 12, `a wheel of ten rows went ${after_wheel - before}`);
  await page.locator("#list").evaluate((list) => (list.scrollTop = list.scrollHeight));
  await last.waitFor();
  await page.locator("#list").press("Home");
  await page.locator("#row-0.on").waitFor();
  await page.keyboard.press("e");
  await page.locator("h2", { hasText: `Frame ${kRows}` }).waitFor();

  const memory = Number(/VmRSS:\s+(\d+)/.exec(readFileSync(`/proc/${child.pid}/status`, "utf8"))[1]);
  assert.ok(memory < 200_000, `the server holds ${memory} kB`);
  assert.deepEqual(faults, []);
  await close();
  child.kill();
  rmSync(trace);
});

test("a damaged trace shows what is readable and says so", async () => {
  const whole = readFileSync(example("lan.pcap"));
  const cut = `${kFolder}/cut.pcap`;
  writeFileSync(cut, whole.subarray(0, whole.length - 30));
  const { address } = await serve(cut);
  const { page, close } = await visit(address, { hash: "#frame=39" });
  await page.locator(".notice.damaged").waitFor();
  await page.locator("#count", { hasText: "39 frames" }).waitFor();
  await page.locator("#row-38.on").waitFor();
  await close();
});

test("keys, copies and the address", async () => {
  const { address } = await serve(example("smb.pcap"));
  const { page, faults, close } = await visit(address);
  const copied = () => page.evaluate(() => navigator.clipboard.readText());
  const active = () => page.evaluate(() => document.activeElement?.id);
  await page.locator("#row-0.on").waitFor();
  for (const key of "jjjk") await page.keyboard.press(key);
  await page.locator("#row-2.on").waitFor();
  await page.waitForURL(/#frame=3$/);
  await page.keyboard.press("f");
  await page.keyboard.type("8");
  await page.keyboard.press("Enter");
  await page.locator("#row-7.on").waitFor();
  await page.locator("h2", { hasText: "Frame 8" }).waitFor();

  const panes = [await active()];
  for (let i = 0; i < 2; ++i) {
    await page.keyboard.press("Tab");
    panes.push(await active());
  }
  assert.deepEqual(panes, ["list", "detail", "hex"]);
  await page.keyboard.press("Shift+Tab");
  await page.keyboard.press("j");
  assert.equal(await chosen_line(page), "[Word Count] 0 (0x00) word(s)");
  await page.keyboard.press("c");
  await page.locator(".toast", { hasText: "Copied the line" }).waitFor();
  assert.equal(await copied(), "[Word Count] 0 (0x00) word(s)");
  await page.keyboard.press("j");
  await page.keyboard.press("x");
  await page.locator(".toast", { hasText: "2 bytes as hex" }).waitFor();
  assert.equal(await copied(), "9b 00");
  await page.keyboard.press("Shift+C");
  await page.locator(".toast", { hasText: "Copied the layer" }).waitFor();
  assert.match(await copied(), /^--- SMB_Negotiate \(Client\) -+\n {2}\[Word Count\][^]*\n {2}\[Dialect Index 9\] NT LM 0\.12$/);

  await page.keyboard.press("ArrowLeft");
  await page.keyboard.press("ArrowLeft");
  assert.equal(await page.locator(".line.on").getAttribute("aria-expanded"), "false");
  await page.keyboard.press(">");
  await page.keyboard.press("j");
  await page.keyboard.press("<");
  await page.locator(".line:not(.layer)").first().waitFor({ state: "detached" });
  assert.equal(await chosen_line(page), "SMB_Negotiate (Client)", "into which the line was folded");
  await page.locator("#byte-26").click();
  assert.equal(await chosen_line(page), "[Destination Address] 192.0.2.2", "its layer unfolds");
  await page.locator("#detail").press(">");
  assert.ok((await page.locator(".line:not(.layer)").count()) > 5);

  await page.keyboard.press("?");
  await page.locator("dialog[open]").waitFor();
  await page.keyboard.press("j");
  await page.keyboard.press("Escape");
  await page.locator("dialog[open]").waitFor({ state: "detached" });
  await page.locator("#row-7.on").waitFor();
  await page.reload();
  await page.locator("#row-7.on").waitFor();
  assert.deepEqual(faults, []);
  await close();
});

test("a trace that grows is followed, and the choice stays", async () => {
  const frames = read_frames(example("lan.pcap"));
  const records = (from, to) => Buffer.concat(range(from, to - 1).map((i) => record(frames[i % frames.length], i)));
  const begin = Buffer.concat([readFileSync(example("lan.pcap")).subarray(0, 24), records(0, 50)]);
  const trace = `${kFolder}/growing.pcap`;
  writeFileSync(trace, begin);
  for (const what of ["-", trace]) {
    const { address, child } = await serve(what, what === "-" ? begin : "");
    const { page, close } = await visit(address);
    await page.locator("#count", { hasText: "50 frames" }).waitFor();
    await page.locator("#list").press("Home");
    await page.keyboard.press("j");
    await page.locator("#row-1.on").waitFor();
    if (what === "-") child.stdin.write(records(50, 90));
    else appendFileSync(trace, records(50, 90));
    await page.locator("#count", { hasText: "90 frames" }).waitFor();
    await page.locator("#row-1.on").waitFor();
    assert.match(page.url(), /#frame=2$/);
    child.stdin.end();
    await close();
  }
});

test("an interface is followed, with pause", async (context) => {
  const live = await serve(["-i", "lo"]).catch(() => null);
  if (!live) return context.skip("no right to capture");
  const { page, close } = await visit(live.address); // its own questions are the traffic
  const count = async () => Number.parseInt((await count_text(page)).replaceAll(",", ""), 10);
  await page.waitForFunction(() => Number.parseInt(document.querySelector("#count").textContent, 10) > 20);
  await page.locator(".live").waitFor();
  await page.locator("#list").press("Home");
  await page.keyboard.press("j");
  await page.locator("#row-1.on").waitFor();
  const before = await count();
  await page.waitForFunction((n) => Number.parseInt(document.querySelector("#count").textContent, 10) > n, before);
  await page.locator("#row-1.on").waitFor();
  await page.keyboard.press("p");
  await page.locator(".status", { hasText: "Paused" }).waitFor();
  const held = await count();
  await page.waitForTimeout(2500);
  assert.equal(await count(), held);
  await page.keyboard.press("l");
  await page.keyboard.press("p");
  await page.waitForFunction((n) => Number(document.querySelector("#list .slot:last-child .col-no")?.textContent) > n, held + 5);
  assert.match(page.url(), /#frame=2$/);
  await close();
});

test("it can be read: contrast, narrow windows, no colours, what a screen reader is told", async () => {
  const bad = read_frames(example("lan.pcap")).map((frame) => Buffer.from(frame));
  bad[6][24] ^= 0xff; // the checksum of the IPv4 header
  const trace = `${kFolder}/checksum.pcap`;
  write_trace(trace, bad);
  const { address } = await serve(trace);
  for (const colorScheme of ["light", "dark"]) {
    for (const view of ["frames", "statistics", "names"]) {
      const { page, close } = await visit(address, { hash: `#frame=7&view=${view}`, colorScheme });
      await page.locator(view === "frames" ? "#row-6.on" : ".sheet .card >> nth=0").waitFor();
      if (view === "frames") {
        await page.locator("#detail").press("g");
        await page.locator("#row-6.bad .mark", { hasText: "✖" }).waitFor();
        await page.locator("#row-3").hover();
      }
      assert.deepEqual(await page.evaluate(contrast_faults), [], `${view}, ${colorScheme}`);
      await close();
    }
  }
  const { page, close } = await visit(address, { hash: "#frame=7", viewport: { width: 640, height: 400 } });
  for (const [width, height] of [[640, 400], [400, 700]]) {
    await page.setViewportSize({ width, height });
    for (const id of ["list", "detail", "hex"]) {
      const box = await page.locator("#" + id).boundingBox();
      assert.ok(box.width > 200 && box.height > 60 && box.x >= 0 && box.x + box.width <= width, `${id} at ${width}x${height}`);
    }
    assert.ok(await page.evaluate(() => document.documentElement.scrollWidth <= innerWidth), `${width} wide`);
  }
  await page.locator("#list").press("Home");
  await page.locator("#row-0.on").waitFor();
  await page.keyboard.press("e");
  await page.locator("#row-6.on").waitFor();
  await page.locator("h2", { hasText: "Frame 7" }).waitFor();
  const roles = await page.evaluate(() => [...document.querySelectorAll("#list, #detail, #hex")].map((pane) => {
    const active = document.getElementById(pane.getAttribute("aria-activedescendant") ?? "");
    return [pane.getAttribute("role"), pane.getAttribute("aria-label"), active?.getAttribute("role")];
  }));
  assert.deepEqual(roles, [["grid", "Frames, 40", "row"], ["tree", "Lines of frame 7", "treeitem"], ["grid", "Bytes of frame 7", undefined]]);
  await close();
});

test("pictures of the main views", async () => {
  const [lan, smb] = ["lan.pcap", "smb.pcap"].map((name) => read_frames(example(name)));
  const bad = Buffer.from(lan[8]);
  bad[24] ^= 0xff;
  const mixed = [...lan.slice(0, 8), bad, ...lan.slice(9, 14), smb[7], smb[8], ...lan.slice(14), ...smb.slice(9)];
  write_trace(`${kFolder}/office.pcap`, mixed, (i) => Math.round(40 * i + 320 * Math.sin(i / 9)));
  const { address } = await serve(`${kFolder}/office.pcap`);
  const pictures = [];
  for (const colorScheme of ["light", "dark"]) {
    const { page, faults, close } = await visit(address, { hash: "#frame=15", colorScheme, viewport: { width: 1080, height: 640 } });
    await page.locator(".line", { hasText: "[Dialect Index 3]" }).click();
    await page.mouse.move(540, 634);
    pictures.push(`${kScreenshots}/view-${colorScheme}.png`);
    await page.screenshot({ path: pictures.at(-1) });
    await page.keyboard.press("2");
    await page.locator(".u-over").waitFor();
    await page.getByRole("region", { name: "Ports" }).waitFor();
    pictures.push(`${kScreenshots}/view-statistics-${colorScheme}.png`);
    await page.screenshot({ path: pictures.at(-1) });
    assert.deepEqual(faults, []);
    await close();
  }
  for (const picture of pictures) assert.ok(statSync(picture).size < 200_000, `${picture} has ${statSync(picture).size} bytes`);
});
