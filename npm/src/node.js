import { readFileSync } from "node:fs";
import { OzmiraError } from "./errors.js";
import { makeFunctions } from "./functions.js";
import { compile } from "./init.js";

/** The module beside this file. */
function loadBeside() {
  let file;
  try {
    file = new URL("./ozmira.wasm", import.meta.url);
    return new WebAssembly.Module(readFileSync(file));
  } catch (error) {
    throw new OzmiraError(
      "NOT_LOADED",
      `${file ?? "ozmira.wasm"} can't be loaded (${error.message}); if a bundler has moved the code, copy ` +
        "ozmira/ozmira.wasm beside it, or call init with its bytes first",
      { cause: error },
    );
  }
}

const functions = makeFunctions(loadBeside);
export const { check, conform, render, info } = functions;

export async function init(source) {
  if (source !== undefined) functions.use(await compile(source));
  else if (!functions.isLoaded) functions.use(loadBeside());
}

export { OzmiraError };
