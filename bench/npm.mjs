// Measures the npm package beside its rivals over the icons of a list: node bench/npm.mjs build/icons/list.txt [ROUNDS]
// Prints the time per icon, in microseconds, of the fastest of ROUNDS rounds (7 by default); the rounds of all take
// turns. Then the sizes of what is downloaded.
import { readFileSync, readdirSync, statSync } from "node:fs";
import { createRequire } from "node:module";
import { join } from "node:path";
import { fileURLToPath } from "node:url";
import { gzipSync } from "node:zlib";

const [listName, rounds = "7"] = process.argv.slice(2);
if (!listName || !(Number(rounds) >= 1)) {
  console.error("usage: node bench/npm.mjs LIST [ROUNDS]\n./dev npm builds the package, bench/fetch-icons.sh writes the list");
  process.exit(2);
}
const root = fileURLToPath(new URL("..", import.meta.url));
const require = createRequire(join(root, "build/npm/package.json"));
const ozmira = createRequire(join(root, "build/npm/installed/package.json"))("ozmira");
const texts = readFileSync(listName, "utf8").trim().split("\n").map((name) => readFileSync(name, "utf8"));

/** A rival that may not be installed on this machine. */
function load(name) {
  try {
    return require(name);
  } catch {
    console.error(`bench: ${name} is not installed`);
    return undefined;
  }
}

const tasks = new Map();
const add = (task, name, work) => tasks.set(task, [...(tasks.get(task) ?? []), { name, work, fastest: Infinity }]);

const resvg = load("@resvg/resvg-js");
const resvgWasm = load("@resvg/resvg-wasm");
if (resvgWasm) await resvgWasm.initWasm(readFileSync(require.resolve("@resvg/resvg-wasm/index_bg.wasm")));
const sharp = load("sharp");
const svgo = load("svgo");

for (const size of [24, 64, 256]) {
  const task = `text to pixels, ${size} px`;
  const fitTo = { mode: "width", value: size };
  const free = (drawing) => drawing.free?.();
  add(task, "ozmira", (text) => ozmira.render(text, { width: size, height: size, format: "rgba" }));
  if (resvg) add(task, "@resvg/resvg-js", (text) => new resvg.Resvg(text, { font: { loadSystemFonts: false }, fitTo }).render());
  if (resvgWasm) {
    add(task, "@resvg/resvg-wasm", (text) => {
      const drawing = new resvgWasm.Resvg(text, { fitTo });
      free(drawing.render());
      free(drawing);
    });
  }
  if (sharp) add(task, "sharp", (text) => sharp(Buffer.from(text)).resize(size, size).raw().toBuffer());
}
add("check", "ozmira", (text) => ozmira.check(text));
const refusing = (text) => {
  try {
    ozmira.conform(text);
  } catch (error) {
    if (error.code !== "REFUSED") throw error;
  }
};
add("rewrite", "ozmira conform", refusing);
if (svgo) add("rewrite", "svgo, its defaults", (text) => svgo.optimize(text));

for (let round = 0; round < Number(rounds); ++round) {
  for (const rivals of tasks.values()) {
    for (const rival of rivals) {
      const start = performance.now();
      for (const text of texts) {
        const result = rival.work(text);
        if (result instanceof Promise) await result;
      }
      rival.fastest = Math.min(rival.fastest, performance.now() - start);
    }
  }
}
console.log(`${texts.length} icons, Node ${process.versions.node}`);
for (const [task, rivals] of tasks) {
  for (const { name, fastest } of rivals) {
    const each = (1000 * fastest) / texts.length;
    console.log(`${task}: ${name} ${each.toFixed(1)} us, ${(fastest / rivals[0].fastest).toFixed(2)}x`);
  }
}

const folder = join(root, "build/npm/installed/node_modules/ozmira");
for (const name of ["ozmira.wasm", "browser.js", "tool/ozmira.wasm", "tool/ozmira.js"]) {
  const bytes = readFileSync(join(folder, name));
  console.log(`${name}: ${bytes.length} bytes, ${gzipSync(bytes, { level: 9 }).length} gzipped`);
}
const all = readdirSync(folder, { recursive: true }).map((name) => statSync(join(folder, name)));
console.log(`package: ${all.reduce((sum, { size }) => sum + size, 0)} bytes`);
