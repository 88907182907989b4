// Measures resvg, from text to pixels, over the icons of a list: node bench/resvg.mjs build/icons/list.txt [ROUNDS]
// Prints the processor time per icon, in microseconds, of the fastest of ROUNDS rounds (9 by default). resvg allocates
// a bitmap for every drawing; the time includes what the kernel takes to provide its pages.
import { readFileSync } from "node:fs";
import { createRequire } from "node:module";
import { setImmediate } from "node:timers/promises";
import { setFlagsFromString } from "node:v8";
import { runInNewContext } from "node:vm";

const sizes = [24, 72, 256, 1024];

const [listName, rounds = "9"] = process.argv.slice(2);
if (!listName || !(Number(rounds) >= 1)) {
  console.error("usage: node bench/resvg.mjs LIST [ROUNDS]\nbench/fetch-icons.sh writes build/icons/list.txt");
  process.exit(2);
}
const require = createRequire(new URL("../build/icons/package.json", import.meta.url));
const { Resvg } = require("@resvg/resvg-js");

const texts = readFileSync(listName, "utf8").trim().split("\n").map((name) => readFileSync(name, "utf8"));
const font = { loadSystemFonts: false };

function draw(text, size) {
  const { width } = new Resvg(text, { font, fitTo: { mode: "width", value: size } }).render();
  if (width !== size) throw new Error(`drew ${width} pixels a row instead of ${size}`);
}

// The constructor parses and render() draws, so the constructor alone is parsing.
const measures = [["parse", (text) => new Resvg(text, { font })]];
for (const size of sizes) measures.push([`${size} px`, (text) => draw(text, size)]);

// Only the garbage collector frees bitmaps, between turns of the event loop, and it does not know how large they are.
// So it is run after every few icons.
setFlagsFromString("--expose-gc");
const collect = runInNewContext("gc");
const iconsPerTurn = 64;

async function time(measure) {
  let total = 0;
  for (let first = 0; first < texts.length; first += iconsPerTurn) {
    const before = process.cpuUsage();
    for (const text of texts.slice(first, first + iconsPerTurn)) measure(text);
    const { user, system } = process.cpuUsage(before);
    total += user + system;
    collect();
    await setImmediate();
  }
  return total / texts.length;
}

const fastest = new Map();
for (let round = 0; round < Number(rounds); ++round) {
  for (const [name, measure] of measures)
    fastest.set(name, Math.min(fastest.get(name) ?? Infinity, await time(measure)));
}
for (const [name, microseconds] of fastest) console.log(`resvg ${name}: ${microseconds.toFixed(1)} us an icon`);
