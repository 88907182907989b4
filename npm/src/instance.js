import { OzmiraError, statusOf } from "./errors.js";

const decoder = new TextDecoder("utf-8", { ignoreBOM: true });
const encoder = new TextEncoder();
const standardOutput = 1;
const notSupported = 52; // ENOSYS of WASI
const wasteful = new Set([statusOf("TIMEOUT"), statusOf("OUT_OF_MEMORY")]);

/** Random bytes, asked for in blocks, because each request takes the engine as long as reading a small drawing. */
class RandomBytes {
  #block = new Uint8Array(1024);
  #used = this.#block.length;

  fill(target) {
    if (this.#used + target.length > this.#block.length) this.#renew();
    target.set(this.#block.subarray(this.#used, (this.#used += target.length)));
  }

  // Node 18 has no global `crypto`.
  #renew() {
    if (globalThis.crypto) crypto.getRandomValues(this.#block);
    else this.#block.forEach((_, i) => (this.#block[i] = 256 * Math.random()));
    this.#used = 0;
  }
}

/** What the module imports: the few functions of the system that a program without files needs. */
class System {
  output = "";
  #decoder = new TextDecoder();
  #random = new RandomBytes();

  attach(exports) {
    this.memory = exports.memory;
  }

  takeOutput() {
    const output = this.output;
    this.output = "";
    return output;
  }

  get imports() {
    const functions = {
      now: () => performance.now(),
      fd_write: (file, buffers, count, at) => {
        const view = new DataView(this.memory.buffer);
        let written = 0;
        for (let i = 0; i < count; ++i) {
          const start = view.getUint32(buffers + 8 * i, true);
          const size = view.getUint32(buffers + 8 * i + 4, true);
          if (file === standardOutput) {
            this.output += this.#decoder.decode(new Uint8Array(this.memory.buffer, start, size), { stream: true });
          }
          written += size;
        }
        view.setUint32(at, written, true);
        return 0;
      },
      // The salt of hash tables.
      getentropy: (at, size) => {
        this.#random.fill(new Uint8Array(this.memory.buffer, at, size));
        return 0;
      },
      proc_exit: (code) => {
        throw new WebAssembly.RuntimeError(`exit ${code}`);
      },
      emscripten_notify_memory_growth: () => {},
    };
    const lookup = { get: (target, name) => functions[name] ?? (() => notSupported) };
    return { wasi_snapshot_preview1: new Proxy({}, lookup), env: new Proxy({}, lookup) };
  }
}

/**
 * One instance of the module. Any number of calls may be made, one after the other. After a call that `isSpent` reports,
 * make another instance.
 */
export class Instance {
  static #mostMemory = 256 << 20;

  #system = new System();
  #exports;
  #session;

  constructor(module) {
    this.#exports = new WebAssembly.Instance(module, this.#system.imports).exports;
    this.#system.attach(this.#exports);
    this.#exports._initialize?.();
    this.#session = this.#exports.ozmira_open();
    this.isBroken = false;
    if (this.#session === 0) throw new OzmiraError("OUT_OF_MEMORY", "there is not enough memory for the module; close other programs");
  }

  /** The instance has trapped, has lost memory, or holds more than only a large drawing needs. */
  get isSpent() {
    return this.isBroken || this.#exports.memory.buffer.byteLength > Instance.#mostMemory;
  }

  check(text) {
    this.#putInput(text);
    this.#call("ozmira_check");
    return this.#takeJSON();
  }

  info(text) {
    this.#putInput(text);
    this.#call("ozmira_info");
    return this.#takeJSON();
  }

  conform(text, { decimals = NaN, outlineStrokes = false, lossy = false }) {
    this.#putInput(text);
    this.#call("ozmira_conform", decimals, outlineStrokes ? 1 : 0, lossy ? 1 : 0);
    const svg = decoder.decode(this.#borrowOutput());
    return { svg, findings: this.#takeJSON(), changed: this.#exports.ozmira_is_changed(this.#session) !== 0 };
  }

  render(text, { width = 0, height = 0, scale = 1, timeout = 30, fill = "", format = "png" }) {
    const fillSize = this.#putInput(text, fill);
    this.#call("ozmira_render", width, height, scale, timeout, fillSize, format === "png" ? 1 : 0);
    return {
      width: this.#exports.ozmira_width(this.#session),
      height: this.#exports.ozmira_height(this.#session),
      data: this.#borrowOutput().slice(),
    };
  }

  /** Writes a text, or bytes, and another text behind it, whose size in bytes it returns. */
  #putInput(text, more = "") {
    const bytes = typeof text === "string" ? encoder.encode(text) : text;
    const moreBytes = encoder.encode(more);
    const size = bytes.length + moreBytes.length;
    const at = this.#exports.ozmira_input(this.#session, size);
    if (at === 0) {
      const most = this.#exports.ozmira_most_input();
      if (size > most) throw new OzmiraError("TOO_LARGE", `larger than ${most >> 20} MB, the most that is read; split the drawing`);
      this.isBroken = true;
      throw new OzmiraError("OUT_OF_MEMORY", "there is not enough memory for the drawing; split it");
    }
    const target = new Uint8Array(this.#exports.memory.buffer, at, size);
    target.set(bytes);
    target.set(moreBytes, bytes.length);
    return moreBytes.length;
  }

  #call(name, ...options) {
    let status;
    try {
      status = this.#exports[name](this.#session, ...options);
    } catch (error) {
      // A trap or an overflow of the engine's stack leaves destructors undone.
      this.isBroken = true;
      this.#system.takeOutput();
      throw new OzmiraError("CRASHED", `nests too deep, or needs more than there is (${error.message})`, {
        cause: error,
      });
    }
    if (status === 0) return;
    // Memory that was in use stays so where an exception passes (npm/module/CMakeLists.txt).
    if (wasteful.has(status)) this.isBroken = true;
    const output = this.#system.takeOutput();
    const message = decoder.decode(this.#borrowOutput());
    throw OzmiraError.ofStatus(status, message, output ? { findings: JSON.parse(output) } : {});
  }

  #borrowOutput() {
    const at = this.#exports.ozmira_output(this.#session);
    return new Uint8Array(this.#exports.memory.buffer, at, this.#exports.ozmira_output_size(this.#session));
  }

  #takeJSON() {
    return JSON.parse(this.#system.takeOutput());
  }
}
