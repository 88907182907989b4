import { OzmiraError } from "./errors.js";
import { Instance } from "./instance.js";

const formats = ["png", "rgba"];

/** The options of each function and the types of their values. */
const types = {
  conform: { decimals: "number", outlineStrokes: "boolean", lossy: "boolean" },
  render: { width: "number", height: "number", scale: "number", timeout: "number", fill: "string", format: "string" },
};

function checkOptions(name, options) {
  for (const [key, value] of Object.entries(options)) {
    const type = types[name][key];
    if (!type) {
      const known = Object.keys(types[name]).join(", ");
      throw new OzmiraError("BAD_OPTION", `${name} has no option "${key}"; use one of ${known}`);
    }
    if (value !== undefined && typeof value !== type) {
      throw new OzmiraError("BAD_OPTION", `${key}: ${JSON.stringify(value)} is not a ${type}`);
    }
  }
  if (options.format !== undefined && !formats.includes(options.format)) {
    throw new OzmiraError("BAD_OPTION", `format: "${options.format}" is not one of ${formats.join(", ")}`);
  }
}

function toText(svg) {
  if (typeof svg === "string" || svg instanceof Uint8Array) return svg;
  if (svg instanceof ArrayBuffer) return new Uint8Array(svg);
  if (ArrayBuffer.isView(svg)) return new Uint8Array(svg.buffer, svg.byteOffset, svg.byteLength);
  throw new OzmiraError("BAD_OPTION", "the drawing must be a string or bytes");
}

/** The functions of the package on instances of the module that `loadModule` returns when it is first needed. */
export function makeFunctions(loadModule) {
  let module;
  let instance;

  function run(name, svg, options = {}) {
    checkOptions(name, options);
    const text = toText(svg);
    module ??= loadModule();
    instance ??= new Instance(module);
    try {
      return instance[name](text, options);
    } finally {
      if (instance.isSpent) instance = undefined;
    }
  }

  return {
    check: (svg) => run("check", svg),
    conform: (svg, options) => run("conform", svg, options),
    render: (svg, options) => run("render", svg, options),
    info: (svg) => run("info", svg),
    /** Uses a module from now on. */
    use(newModule) {
      module = newModule;
      instance = undefined;
    },
    get isLoaded() {
      return module !== undefined;
    },
  };
}
