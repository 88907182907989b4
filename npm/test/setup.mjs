// What the tests share. They use the package as it is installed from the packed file, beside the native tool.
import { spawnSync } from "node:child_process";
import { mkdtempSync, readdirSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { createRequire } from "node:module";
import { tmpdir } from "node:os";
import { dirname, join, relative } from "node:path";
import { fileURLToPath, pathToFileURL } from "node:url";

export const root = dirname(dirname(dirname(fileURLToPath(import.meta.url))));
export const installed = join(root, "build/npm/installed");
export const nativeTool = join(root, "build/release/tools/ozmira/ozmira");
export const packageTool = join(installed, "node_modules/.bin/ozmira");
export const playground = join(root, "build/playground");

/** Finds the packages that tests need. */
export const requirePackage = createRequire(join(root, "build/npm/package.json"));

/** Imports from the installed package, as a module in its folder would. */
export async function importInstalled(name) {
  const importer = join(installed, "importer.mjs");
  writeFileSync(importer, "export const load = (name) => import(name);\n");
  return (await import(pathToFileURL(importer).href)).load(name);
}

/** Runs a test with a folder that is removed afterwards. */
export function withFolder(work) {
  return async (context) => {
    const folder = mkdtempSync(join(tmpdir(), "ozmira-npm-"));
    try {
      await work(folder, context);
    } finally {
      rmSync(folder, { recursive: true });
    }
  };
}

/** All files below a folder with their bytes, by their paths in it. */
export function readFolder(folder) {
  const entries = readdirSync(folder, { recursive: true, withFileTypes: true }).filter((entry) => entry.isFile());
  const names = entries.map((entry) => relative(folder, join(entry.parentPath ?? entry.path, entry.name)));
  return new Map(names.sort().map((name) => [name, readFileSync(join(folder, name))]));
}

/** What a program leaves behind when it runs in a folder. */
export function run(program, options, folder, input = "") {
  const { status, stdout, stderr } = spawnSync(program, options, { cwd: folder, input, maxBuffer: 1 << 28 });
  return { status, output: stdout.toString("latin1"), errors: stderr.toString("latin1") };
}

/** Some drawings of all sets that the benchmarks have, spread evenly over their files. */
export function listIcons(count) {
  const files = [];
  for (const folder of ["build/icons/node_modules", "build/npm/node_modules/bootstrap-icons"]) {
    for (const name of readdirSync(join(root, folder), { recursive: true })) {
      if (name.endsWith(".svg")) files.push(join(root, folder, name));
    }
  }
  files.sort();
  const step = files.length / count;
  return Array.from({ length: count }, (_, i) => files[Math.floor(i * step)]);
}

/** Changes a text in a few places, the same way for the same seed. */
export function mutate(bytes, seed) {
  let state = seed * 2654435761 + 1;
  const random = (below) => {
    state = (Math.imul(state, 1664525) + 1013904223) >>> 0;
    return Math.floor((state / 2 ** 32) * below);
  };
  let result = Buffer.from(bytes);
  for (let i = 0; i <= random(8); ++i) {
    const at = random(result.length);
    const size = random(24);
    const part = result.subarray(random(result.length)).subarray(0, size);
    const changes = [
      () => Buffer.concat([result.subarray(0, at), result.subarray(at + size)]),
      () => Buffer.concat([result.subarray(0, at), part, result.subarray(at)]),
      () => Buffer.concat([result.subarray(0, at), Buffer.from([random(256)]), result.subarray(at + 1)]),
      () => Buffer.from(result.toString("latin1").replace(/\d+/g, (n) => (random(9) ? n : `${n}e${random(40)}`)), "latin1"),
    ];
    result = changes[random(changes.length)]();
  }
  return result;
}
