// resvg over the icons of a list, all the way from text: node bench/resvg.mjs build/icons/list.txt [ROUNDS]
// Prints processor microseconds per icon, of the fastest of 9 or ROUNDS rounds. resvg makes a bitmap for every drawing;
// what the kernel takes for its pages is part of the time.
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

// Reading alone: the constructor parses, render draws.
const measures = [["parse", (text) => new Resvg(text, { font })]];
for (const size of sizes) measures.push([`${size} px`, (text) => draw(text, size)]);

// Bitmaps are freed by the collector, which doesn't know how large they are, and only when the loop turns.
setFlagsFromString("--expose-gc");
const collect = runInNewContext("gc");
const atOnce = 64;

async function time(measure) {
  let total = 0;
  for (let first = 0; first < texts.length; first += atOnce) {
    const before = process.cpuUsage();
    for (const text of texts.slice(first, first + atOnce)) measure(text);
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
