// Draws files with resvg: node tests/compare/resvg-pictures.mjs LIST WIDTH
// LIST has a line for each file: its name, a tab, and the name of the PNG to write. What resvg refuses is named on
// standard output. resvg-js is taken from build/icons, where bench/fetch-icons.sh puts it.
import { readFileSync, writeFileSync } from "node:fs";
import { createRequire } from "node:module";

const [listName, width] = process.argv.slice(2);
const require = createRequire(new URL("../../build/icons/package.json", import.meta.url));
const { Resvg } = require("@resvg/resvg-js");

for (const line of readFileSync(listName, "utf8").split("\n").filter(Boolean)) {
  const [source, target] = line.split("\t");
  try {
    const options = { fitTo: { mode: "width", value: Number(width) }, font: { loadSystemFonts: false } };
    writeFileSync(target, new Resvg(readFileSync(source, "utf8"), options).render().asPng());
  } catch (error) {
    console.log(`${source}: ${error}`);
  }
}
