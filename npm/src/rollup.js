import { readFile } from "node:fs/promises";
import { check } from "ozmira";

const levels = ["error", "warning", "note"];

/**
 * A plug-in for Rollup and Vite that checks every drawing that is imported. `failOn` is the least severity that fails
 * the build, or false; what is less severe is a warning.
 */
export function ozmira({ failOn = "error" } = {}) {
  if (failOn !== false && !levels.includes(failOn)) {
    throw new TypeError(`ozmira: failOn: "${failOn}" is not one of ${levels.join(", ")} or false`);
  }
  const isFailure = (finding) => failOn !== false && levels.indexOf(finding.severity) <= levels.indexOf(failOn);
  return {
    name: "ozmira",
    enforce: "pre",
    async load(id) {
      const file = id.replace(/[?#].*$/s, "");
      if (!/\.svg$/i.test(file) || file.startsWith("\0")) return null;
      this.addWatchFile(file);
      const failures = [];
      for (const finding of check(await readFile(file))) {
        const { line, column, severity, message, remedy, rule } = finding;
        const text = `${file}:${line}:${column}: ${severity}: ${message}; ${remedy} [${rule}]`;
        if (isFailure(finding)) failures.push(text);
        else if (severity !== "note") this.warn({ message: text, id, loc: { file, line, column: column - 1 } });
      }
      if (failures.length > 0) this.error({ message: failures.join("\n"), id });
      return null;
    },
  };
}

export default ozmira;
