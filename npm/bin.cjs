#!/usr/bin/env node
// Runs the command-line tool.
"use strict";

const [major] = process.versions.node.split(".");
if (Number(major) < 18) {
  process.stderr.write(`ozmira: Node ${process.versions.node} is too old; install Node 18 or newer\n`);
  process.exitCode = 1;
} else if (process.argv.length === 3 && process.argv[2] === "--version") {
  const { version } = require("./package.json");
  process.stdout.write(`ozmira ${version} (WebAssembly, on Node ${process.versions.node})\n`);
} else {
  // Folders are separated by slashes in the tool, which Windows understands as well.
  if (process.platform === "win32") process.argv = process.argv.map((text, i) => (i < 2 ? text : text.replaceAll("\\", "/")));
  require("./tool/ozmira.js");
}
