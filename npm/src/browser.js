import { OzmiraError } from "./errors.js";
import { makeFunctions } from "./functions.js";
import { compile } from "./init.js";

const functions = makeFunctions(() => {
  throw new OzmiraError("NOT_LOADED", 'nothing is loaded yet; write "await init()" first');
});
export const { check, conform, render, info } = functions;

let loading;

export function init(source) {
  if (source === undefined && loading) return loading;
  loading = (async () => functions.use(await compile(source ?? new URL("./ozmira.wasm", import.meta.url))))();
  loading.catch(() => {
    loading = undefined;
  });
  return loading;
}

export { OzmiraError };
