// The plug-ins for svgo, Rollup and Vite.
import assert from "node:assert/strict";
import { mkdirSync, readFileSync, writeFileSync } from "node:fs";
import { join } from "node:path";
import { before, test } from "node:test";
import { importInstalled, listIcons, requirePackage, withFolder } from "./setup.mjs";

let plugin, ozmira;
before(async () => {
  ozmira = await importInstalled("ozmira");
  plugin = await importInstalled("ozmira/rollup");
});

const arc = '<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 9 9"><path d="M1 1a3 3 0 0 0 6 0"/></svg>';

test("what svgo writes with the plug-in as its last is drawn as in a browser", async () => {
  const { optimize } = requirePackage("svgo");
  const { default: conformLast } = await importInstalled("ozmira/svgo");
  const countDifferences = (text) => ozmira.check(text).filter(({ severity }) => severity !== "note").length;
  let mended = 0;
  for (const icon of listIcons(150)) {
    const text = readFileSync(icon, "utf8");
    const without = optimize(text, { multipass: true, plugins: ["preset-default"] }).data;
    let after;
    try {
      after = optimize(text, { multipass: true, plugins: ["preset-default", conformLast()] }).data;
    } catch (error) {
      assert.equal(error.code, "REFUSED", `${icon}: ${error.stack}`);
      continue;
    }
    assert.equal(countDifferences(after), 0, icon);
    if (countDifferences(without) > 0) ++mended;
  }
  assert.ok(mended > 20, `${mended}`);
});

/** Builds a folder with a drawing and a module that imports it; returns warnings or throws. */
async function buildWith(bundler, folder, options) {
  writeFileSync(join(folder, "main.js"), 'import icon from "./icon.svg?url"; console.log(icon);');
  writeFileSync(join(folder, "icon.svg"), arc);
  const warnings = [];
  const onwarn = ({ message }) => warnings.push(message);
  if (bundler === "vite") {
    const { build } = await import(requirePackage.resolve("vite"));
    const rollupOptions = { input: join(folder, "main.js"), onwarn };
    await build({ root: folder, logLevel: "silent", plugins: [plugin.ozmira(options)], build: { rollupOptions } });
  } else {
    const { rollup } = requirePackage("rollup");
    const asText = {
      name: "text",
      resolveId: (id, from) => (from ? join(folder, id.replace("?url", "")) : null),
      transform: (code, id) => (id.endsWith(".svg") ? "export default 1" : null),
    };
    await rollup({ input: join(folder, "main.js"), onwarn, plugins: [plugin.ozmira(options), asText] });
  }
  return warnings;
}

for (const bundler of ["rollup", "vite"]) {
  test(`${bundler} warns of differences, and fails on request`, withFolder(async (folder) => {
    mkdirSync(folder, { recursive: true });
    const warnings = await buildWith(bundler, folder, {});
    assert.equal(warnings.length, 1, warnings.join("\n"));
    assert.match(warnings[0], /icon\.svg:1:\d+: warning: .* \[arc\]/);
    await assert.rejects(buildWith(bundler, folder, { failOn: "warning" }), /\[arc\]/);
    assert.throws(() => plugin.ozmira({ failOn: "hint" }), /failOn: "hint" is not one of error, warning/);
  }));
}
