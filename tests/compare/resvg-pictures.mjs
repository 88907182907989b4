// Draws files with resvg: node tests/compare/resvg-pictures.mjs LIST
// LIST has a line for each file: its name, the name of the file to write, and the width in pixels, separated by tabs.
// What is written are the premultiplied pixels, RGBA, top row first. What resvg refuses is not written. resvg-js is
// taken from build/icons, where bench/fetch-icons.sh puts it.
import { readFileSync, writeFileSync } from "node:fs";
import { createRequire } from "node:module";

const require = createRequire(new URL("../../build/icons/package.json", import.meta.url));
const { Resvg } = require("@resvg/resvg-js");

for (const line of readFileSync(process.argv[2], "utf8").split("\n").filter(Boolean)) {
  const [source, target, width] = line.split("\t");
  try {
    const options = { fitTo: { mode: "width", value: Number(width) }, font: { loadSystemFonts: false } };
    writeFileSync(target, new Resvg(readFileSync(source, "utf8"), options).render().pixels);
  } catch (error) {
    console.log(`${source}: ${error}`);
  }
}
