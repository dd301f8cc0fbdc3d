// Builds the page into dist/: index.html, main.js, main.css, favicon.svg. Nothing inline, nothing from elsewhere.
import { build } from "esbuild";
import { cp, mkdir, rm } from "node:fs/promises";

process.chdir(import.meta.dirname ?? new URL(".", import.meta.url).pathname);
await rm("dist", { recursive: true, force: true });
await mkdir("dist");
await build({
  entryPoints: ["src/main.tsx"],
  outdir: "dist",
  bundle: true,
  minify: true,
  format: "esm",
  target: "es2022",
  jsx: "automatic",
  jsxImportSource: "preact",
  legalComments: "eof",
});
await cp("src/index.html", "dist/index.html");
await cp("src/favicon.svg", "dist/favicon.svg");
