// Puts the package and the playground together from what is compiled: node npm/build.mjs
// Writes build/npm/package, the folder that npm packs, and build/playground.
import { chmod, copyFile, mkdir, readFile, readdir, rm, writeFile } from "node:fs/promises";
import { createRequire } from "node:module";
import { dirname, join } from "node:path";
import { fileURLToPath } from "node:url";

const root = dirname(dirname(fileURLToPath(import.meta.url)));
const from = (...parts) => join(root, ...parts);
const source = from("npm/src");
const compiled = from("build/wasm");
const { build } = createRequire(from("build/npm/package.json"))("esbuild");
const folder = from("build/npm/package");
const playground = from("build/playground");

const banner = "/*! ozmira, MIT License; what it contains of others: THIRD-PARTY-LICENSES.txt */";
const common = { bundle: true, minify: true, legalComments: "none", logLevel: "warning", target: "es2022" };

/** The version, which stands in the CMakeLists.txt of the project alone. */
async function readVersion() {
  const text = await readFile(from("CMakeLists.txt"), "utf8");
  return /project\(Ozmira VERSION (\S+)/.exec(text)[1];
}

async function writeManifest() {
  const manifest = JSON.parse(await readFile(from("npm/package.json"), "utf8"));
  const { name, ...rest } = manifest;
  await writeFile(join(folder, "package.json"), `${JSON.stringify({ name, version: await readVersion(), ...rest }, null, 2)}\n`);
}

/** Writes an entry of the package as an ECMAScript module and, with `withCommonJS`, as CommonJS. */
async function writeEntry(name, platform, withCommonJS) {
  const options = { ...common, entryPoints: [join(source, `${name}.js`)], platform, external: ["ozmira", "svgo"] };
  await build({ ...options, format: "esm", outfile: join(folder, `${name}.js`), banner: { js: banner } });
  if (!withCommonJS) return;
  await build({
    ...options,
    format: "cjs",
    outfile: join(folder, `${name}.cjs`),
    define: { "import.meta.url": "moduleURL" },
    banner: { js: `${banner}\nconst moduleURL = require("node:url").pathToFileURL(__filename);` },
  });
}

async function writeTypes(name) {
  for (const extension of ["d.ts", "d.cts"]) await copyFile(join(source, `${name}.d.ts`), join(folder, `${name}.${extension}`));
}

async function writeTool() {
  const tool = join(folder, "tool");
  await mkdir(tool);
  for (const file of ["ozmira.js", "ozmira.wasm", "ozmira.worker.js"]) {
    await copyFile(join(compiled, "tool/ozmira/tools/ozmira", file), join(tool, file));
  }
  await writeFile(join(tool, "package.json"), '{ "type": "commonjs" }\n');
  await copyFile(from("npm/bin.cjs"), join(folder, "bin.cjs"));
  await chmod(join(folder, "bin.cjs"), 0o755);
}

/** The licences of all code of others in the modules, as Debian states them. */
async function writeLicences() {
  const files = [];
  for (const entry of await readdir(join(compiled, "sources"), { withFileTypes: true })) {
    if (entry.isDirectory()) files.push([entry.name, join(compiled, "sources", entry.name, "debian/copyright")]);
  }
  for (const name of ["librapidxml-dev", "libhwy-dev", "libcli11-dev", "emscripten"]) {
    files.push([name, `/usr/share/doc/${name}/copyright`]);
  }
  const texts = await Promise.all(files.map(async ([name, file]) => `== ${name}\n\n${await readFile(file, "utf8")}`));
  await writeFile(join(folder, "THIRD-PARTY-LICENSES.txt"), texts.join("\n"));
}

/** The playground holds the module as text, because a page that is opened from a file may load nothing. */
async function writePlayground() {
  await rm(playground, { recursive: true, force: true });
  await mkdir(playground, { recursive: true });
  await build({
    ...common,
    entryPoints: [from("playground/main.js")],
    outfile: join(playground, "playground.js"),
    format: "iife",
    loader: { ".wasm": "binary" },
    alias: { "ozmira/ozmira.wasm": join(folder, "ozmira.wasm"), ozmira: join(folder, "browser.js") },
    define: { "import.meta.url": "document.baseURI" },
    minify: true,
    banner: { js: banner },
  });
  for (const file of ["index.html", "playground.css"]) await copyFile(from("playground", file), join(playground, file));
}

await rm(folder, { recursive: true, force: true });
await mkdir(folder, { recursive: true });
await copyFile(join(compiled, "module/module/ozmira.wasm"), join(folder, "ozmira.wasm"));
await writeEntry("node", "node", true);
await writeEntry("browser", "browser", false);
for (const name of ["svgo", "rollup"]) {
  await writeEntry(name, "node", true);
  await writeTypes(name);
}
await writeTypes("index");
await writeTool();
await writeManifest();
await writeLicences();
await copyFile(from("LICENSE"), join(folder, "LICENSE"));
await copyFile(from("npm/README.md"), join(folder, "README.md"));
await writePlayground();
