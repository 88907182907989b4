// The packed file, installed into an empty folder, works wherever JavaScript runs.
import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { copyFileSync, readFileSync, statSync, writeFileSync } from "node:fs";
import { createServer } from "node:http";
import { join } from "node:path";
import { test } from "node:test";
import { gzipSync } from "node:zlib";
import { openBrowser } from "./browser.mjs";
import { installed, requirePackage } from "./setup.mjs";

const { build } = requirePackage("esbuild");
const folder = join(installed, "node_modules/ozmira");
const square = '<svg viewBox="0 0 4 4"><path d="M0 0H2V4H0z"/></svg>';
const expected = "4 x 4, arc";

/** Draws and checks, and says what came out. */
const use = `
  const { width, height } = ozmira.render('${square}');
  const text = '<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 9 9"><path d="M1 1a3 3 0 0 0 6 0"/></svg>';
  const [{ rule }] = ozmira.check(text);
  if (ozmira.check(ozmira.conform(text).svg).length > 0) throw new Error("conform leaves a finding");
  result = width + " x " + height + ", " + rule;`;

const runNode = (file) => execFileSync(process.execPath, [file], { cwd: installed, encoding: "utf8" }).trim();
const write = (name, text) => {
  writeFileSync(join(installed, name), text);
  return name;
};

test("an ECMAScript module of Node uses it", () => {
  const file = write("use.mjs", `import * as ozmira from "ozmira"; let result; ${use} console.log(result);`);
  assert.equal(runNode(file), expected);
});

test("a CommonJS module of Node uses it", () => {
  const file = write("use.cjs", `const ozmira = require("ozmira"); let result; ${use} console.log(result);`);
  assert.equal(runNode(file), expected);
});

test("a worker uses it with a module that its parent has compiled", () => {
  write("worker.mjs", `
    import * as ozmira from "ozmira";
    import { parentPort, workerData } from "node:worker_threads";
    await ozmira.init(workerData);
    let result; ${use} parentPort.postMessage(result);`);
  const file = write("parent.mjs", `
    import { readFileSync } from "node:fs";
    import { Worker } from "node:worker_threads";
    const workerData = new WebAssembly.Module(readFileSync("node_modules/ozmira/ozmira.wasm"));
    new Worker("./worker.mjs", { workerData }).on("message", (result) => console.log(result));`);
  assert.equal(runNode(file), expected);
});

test("a bundle for Node says what to do when the module is not beside it, and works with its bytes", async () => {
  const bundle = async (name, text) => {
    await build({ stdin: { contents: text, resolveDir: installed }, bundle: true, platform: "node", format: "esm", outfile: join(installed, "bundles", name) });
    return join("bundles", name);
  };
  const without = await bundle("without.mjs", `import * as ozmira from "ozmira";
    try { ozmira.check("") } catch ({ code, message }) { console.log(code, message.includes("copy ozmira/ozmira.wasm")) }`);
  assert.equal(runNode(without), "NOT_LOADED true");
  const bytes = await bundle("bytes.mjs", `import * as ozmira from "ozmira"; import { readFileSync } from "node:fs";
    await ozmira.init(readFileSync("node_modules/ozmira/ozmira.wasm")); let result; ${use} console.log(result);`);
  assert.equal(runNode(bytes), expected);
});

/** Serves the files of a map to a page that runs `main.js`, and returns what it prints. */
async function runInBrowser(files) {
  const types = { html: "text/html", js: "text/javascript", wasm: "application/wasm" };
  const server = createServer((request, response) => {
    const name = request.url === "/" ? "/index.html" : request.url;
    const content = name === "/index.html" ? "<script type=module src=main.js></script>" : files.get(name.slice(1));
    response.writeHead(content ? 200 : 404, { "Content-Type": types[name.split(".").pop()] ?? "text/plain" });
    response.end(content ?? "");
  });
  await new Promise((resolve) => server.listen(0, "127.0.0.1", resolve));
  const browser = await openBrowser();
  try {
    const page = await browser.newPage();
    page.on("pageerror", (error) => console.error(error));
    await page.goto(`http://127.0.0.1:${server.address().port}/`);
    await page.waitForFunction(() => globalThis.result !== undefined);
    return await page.evaluate(() => globalThis.result);
  } finally {
    await browser.close();
    server.close();
  }
}

test("a browser loads it as it is, and bundled by esbuild", async () => {
  const files = ["browser.js", "ozmira.wasm"].map((name) => [name, readFileSync(join(folder, name))]);
  const main = (from) => `import * as ozmira from "${from}";
    try { ozmira.check(""); } catch ({ code }) { if (code !== "NOT_LOADED") throw code; }
    await ozmira.init(); let result; ${use} globalThis.result = result;`;
  assert.equal(await runInBrowser(new Map([...files, ["main.js", main("./browser.js")]])), expected);
  const { outputFiles } = await build({ stdin: { contents: main("ozmira"), resolveDir: installed }, bundle: true, format: "esm", write: false });
  assert.equal(await runInBrowser(new Map([files[1], ["main.js", outputFiles[0].contents]])), expected);
});

test("the types fit the functions", () => {
  copyFileSync(new URL("./types.ts", import.meta.url), join(installed, "types.ts"));
  const compiler = requirePackage.resolve("typescript/bin/tsc");
  const options = ["--noEmit", "--strict", "--module", "node16", "--target", "es2022", "--lib", "es2022,dom", "types.ts"];
  execFileSync(process.execPath, [compiler, ...options], { cwd: installed, stdio: "inherit" });
});

test("the module is small", () => {
  const module = readFileSync(join(folder, "ozmira.wasm"));
  const code = readFileSync(join(folder, "browser.js"));
  const size = gzipSync(module, { level: 9 }).length + gzipSync(code, { level: 9 }).length;
  assert.ok(size <= 290 * 1024, `${size} bytes`);
  assert.ok(statSync(join(folder, "tool/ozmira.wasm")).size > 0);
});
