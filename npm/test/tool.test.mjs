// `npx ozmira` is the native tool: the same output, messages, exit codes and files.
import assert from "node:assert/strict";
import { spawn } from "node:child_process";
import { once } from "node:events";
import { copyFileSync, mkdirSync, readdirSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { join } from "node:path";
import { test } from "node:test";
import { setTimeout as wait } from "node:timers/promises";
import { installed, listIcons, nativeTool, packageTool, readFolder, root, run, withFolder } from "./setup.mjs";

const arc = '<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 9 9"><path d="M1 1a3 3 0 0 0 6 0"/></svg>';

/** Files with everything that the commands can meet. */
function fill(folder) {
  mkdirSync(join(folder, "icons/sub folder"), { recursive: true });
  listIcons(60).forEach((icon, i) => copyFileSync(icon, join(folder, i % 3 ? "icons" : "icons/sub folder", `${i}.svg`)));
  writeFileSync(join(folder, "a.svg"), arc);
  writeFileSync(join(folder, "ünï.svg"), arc);
  writeFileSync(join(folder, "text.svg"), arc.replace("<path", "<text>a</text><path"));
  writeFileSync(join(folder, "broken.svg"), "<svg><path");
  writeFileSync(join(folder, "cycle.svg"), '<svg viewBox="0 0 9 9"><use id="a" xlink:href="#a"/></svg>');
}

const commandLines = [
  [],
  ["--help"],
  ["render", "--help"],
  ["check", "--help"],
  ["conform", "--help"],
  ["sharpen"],
  ["check"],
  ["check", "a.svg"],
  ["check", "icons", "text.svg", "broken.svg", "missing.svg"],
  ["check", "--json", "icons", "ünï.svg"],
  ["check", "--sarif", "icons"],
  ["check", "--github", "icons", "a.svg"],
  ["check", "--rules"],
  ["check", "-"],
  ["conform", "a.svg"],
  ["conform", "icons", "text.svg", "broken.svg", "-o", "out/"],
  ["conform", "icons", "--in-place"],
  ["conform", "icons", "a.svg", "--dry-run", "-j", "3"],
  ["conform", "-", "--decimals", "1"],
  ["conform", "text.svg", "--lossy", "-o", "new.svg"],
  ["conform", "a.svg", "-o", "out/", "--decimals", "13"],
  ["render", "icons", "-o", "pictures", "--width", "24", "--scale", "1,2,3"],
  ["render", "ünï.svg", "a.svg", "cycle.svg", "broken.svg", "text.svg"],
  ["render", "a.svg", "--fill", "reddish"],
  ["render", "a.svg", "--strict", "-q"],
  ["render", "a.svg", "--width", "40000"],
  ["render", "a.svg", "-o", "a.svg"],
  ["render", "-", "--conform"],
  ["render", "icons", "--conform", "-o", "pictures/", "-j", "2", "--height", "17"],
  ["info", "icons", "a.svg", "broken.svg"],
  ["info", "--json", "a.svg"],
  ["dump", "--json", "a.svg"],
];

test("every command does what it does natively", withFolder(async (folder) => {
  for (const options of commandLines) {
    const [native, packaged] = [nativeTool, packageTool].map((tool, i) => {
      const work = join(folder, `${i}`, "work");
      mkdirSync(work, { recursive: true });
      fill(work);
      return { ...run(tool, options, work, arc), files: readFolder(work) };
    });
    assert.deepEqual(packaged, native, `ozmira ${options.join(" ")}`);
    for (const i of ["0", "1"]) rmSync(join(folder, i), { recursive: true });
  }
}));

test("the version says which tool it is", () => {
  const { version } = JSON.parse(readFileSync(join(installed, "node_modules/ozmira/package.json")));
  assert.equal(run(nativeTool, ["--version"], root).output, `ozmira ${version}\n`);
  assert.match(run(packageTool, ["--version"], root).output, new RegExp(`^ozmira ${version} \\(WebAssembly, on Node `));
});

test("an interrupted run leaves no temporary file behind", withFolder(async (folder) => {
  mkdirSync(join(folder, "icons"));
  listIcons(2000).forEach((icon, i) => copyFileSync(icon, join(folder, "icons", `${i}.svg`)));
  const child = spawn(packageTool, ["render", "icons", "-o", "pictures", "-q", "--width", "256"], { cwd: folder });
  const isStarted = () => readdirSync(folder).length > 1 && readdirSync(join(folder, "pictures")).length > 5;
  while (!isStarted() && child.exitCode === null) await wait(20);
  child.kill("SIGINT");
  const [code, signal] = await once(child, "exit");
  assert.deepEqual([code, signal], [null, "SIGINT"]);
  const left = readdirSync(join(folder, "pictures"));
  assert.ok(left.length > 0 && left.length < 2000);
  assert.deepEqual(left.filter((name) => !/^\d+\.png$/.test(name)), []);
}));
