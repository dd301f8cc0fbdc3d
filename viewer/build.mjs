// Builds the page into $OUT_DIR, or dist/: index.html, main.js, main.css, favicon.svg. Nothing inline, nothing from elsewhere.
import { build } from "esbuild";
import { cp, mkdir, rm } from "node:fs/promises";
import { fileURLToPath } from "node:url";

process.chdir(fileURLToPath(new URL(".", import.meta.url)));
const out = process.env.OUT_DIR || "dist";
await rm(out, { recursive: true, force: true });
await mkdir(out, { recursive: true });
await build({
  entryPoints: ["src/main.tsx"],
  outdir: out,
  bundle: true,
  minify: true,
  format: "esm",
  target: "es2022",
  jsx: "automatic",
  jsxImportSource: "preact",
  legalComments: "eof",
});
await cp("src/index.html", `${out}/index.html`);
await cp("src/favicon.svg", `${out}/favicon.svg`);
