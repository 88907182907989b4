import { OzmiraError } from "./errors.js";

async function compileResponse(response) {
  if (!response.ok) throw new OzmiraError("NOT_LOADED", `${response.url} can't be loaded: status ${response.status}`);
  // Servers that do not know the type of the file make compiling while loading fail.
  const isWasm = response.headers.get("Content-Type")?.startsWith("application/wasm");
  return isWasm ? WebAssembly.compileStreaming(response) : WebAssembly.compile(await response.arrayBuffer());
}

/** Compiles what a caller gives: a module, its bytes, a response, or an address. */
export async function compile(source) {
  try {
    return await compileGiven(await source);
  } catch (cause) {
    if (cause instanceof OzmiraError) throw cause;
    const problem = cause?.message ?? cause;
    throw new OzmiraError("NOT_LOADED", `the module can't be loaded: ${problem}; give init the bytes or the address of ozmira.wasm`, {
      cause,
    });
  }
}

async function compileGiven(given) {
  if (given instanceof WebAssembly.Module) return given;
  if (given instanceof ArrayBuffer || ArrayBuffer.isView(given)) return WebAssembly.compile(given);
  if (typeof Response === "function" && given instanceof Response) return compileResponse(given);
  if (typeof given === "string" || given instanceof URL) return compileResponse(await fetch(given));
  throw new OzmiraError("BAD_OPTION", "init takes bytes, a WebAssembly.Module, a Response or a URL");
}
