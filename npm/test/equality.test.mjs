// The functions return what the native tool does: findings, rewritten drawings and pictures byte for byte.
import assert from "node:assert/strict";
import { copyFileSync, existsSync, mkdirSync, readFileSync, writeFileSync } from "node:fs";
import { join } from "node:path";
import { before, test } from "node:test";
import { importInstalled, listIcons, mutate, nativeTool, run, withFolder } from "./setup.mjs";

let ozmira;
before(async () => {
  ozmira = await importInstalled("ozmira");
});

const name = (i) => `${String(i).padStart(4, "0")}.svg`;

/** A drawing without an area, which nothing can be drawn of. */
const flat = '<svg xmlns="http://www.w3.org/2000/svg" width="0" height="8"><path d="M0 0h8v8z"/></svg>';

/** Puts 2,000 drawings, 500 damaged ones and a flat one into a folder. */
function collect(folder) {
  mkdirSync(folder);
  const icons = listIcons(2000);
  icons.forEach((icon, i) => copyFileSync(icon, join(folder, name(i))));
  for (let i = 0; i < 500; ++i) {
    writeFileSync(join(folder, name(icons.length + i)), mutate(readFileSync(icons[4 * i]), i));
  }
  writeFileSync(join(folder, name(icons.length + 500)), flat);
  return Array.from({ length: icons.length + 501 }, (_, i) => name(i));
}

/** Calls a function that may refuse. */
function attempt(work) {
  try {
    return work();
  } catch (error) {
    if (!(error instanceof ozmira.OzmiraError)) throw error;
    return error;
  }
}

test("2,000 drawings and 500 damaged ones come out as from the native tool", withFolder((folder) => {
  const names = collect(join(folder, "in"));
  const { output } = run(nativeTool, ["check", "--json", "in"], folder);
  const native = JSON.parse(Buffer.from(output, "latin1").toString());
  assert.equal(native.length, names.length);
  run(nativeTool, ["conform", "in", "-o", "conformed/", "-q"], folder);
  run(nativeTool, ["conform", "in", "-o", "outlined/", "-q", "--outline-strokes", "--lossy", "--decimals", "2"], folder);
  run(nativeTool, ["render", "in", "-o", "pictures/", "-q", "--width", "48", "--scale", "2", "--fill", "teal"], folder);
  const fileIn = (part, file) => (existsSync(join(folder, part, file)) ? readFileSync(join(folder, part, file)) : null);

  const counts = { refused: 0, drawn: 0, roundedOtherwise: 0 };
  for (const [i, file] of names.entries()) {
    const text = readFileSync(join(folder, "in", file));
    assert.deepEqual(ozmira.check(text), native[i].findings, file);

    for (const [part, options] of [
      ["conformed", {}],
      ["outlined", { outlineStrokes: true, lossy: true, decimals: 2 }],
    ]) {
      const result = attempt(() => ozmira.conform(text, options));
      const expected = fileIn(part, file);
      if (expected === null) {
        assert.equal(result.code, "REFUSED", file);
        assert.deepEqual(result.findings, native[i].findings, file);
        ++counts.refused;
      } else if (result.changed && part === "outlined" && result.svg !== expected.toString()) {
        // The functions of the two C libraries round otherwise, which decides a last digit now and then.
        ++counts.roundedOtherwise;
      } else if (result.changed) {
        assert.equal(result.svg, expected.toString(), `${part}/${file}`);
      } else {
        assert.deepEqual(expected, text, `${part}/${file}`);
      }
    }

    const picture = attempt(() => ozmira.render(text, { width: 48, scale: 2, fill: "teal" }));
    const expected = fileIn("pictures", file.replace(".svg", "@2x.png"));
    assert.equal(expected === null, picture instanceof Error, `${file}: ${picture.message}`);
    if (expected === null) continue;
    assert.deepEqual(Buffer.from(picture.data), expected, file);
    ++counts.drawn;
  }
  assert.ok(counts.drawn > 2000 && counts.refused > 10, JSON.stringify(counts));
  assert.ok(counts.roundedOtherwise < 10, JSON.stringify(counts));
}));

test("info is what the tool prints", withFolder((folder) => {
  for (const icon of listIcons(40)) {
    const { output } = run(nativeTool, ["info", "--json", icon], folder);
    const [{ file, ...expected }] = JSON.parse(Buffer.from(output, "latin1").toString());
    assert.equal(file, icon);
    assert.deepEqual(ozmira.info(readFileSync(icon)), expected, icon);
  }
}));
