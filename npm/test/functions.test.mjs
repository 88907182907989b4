// Options, errors, hostile drawings and memory.
import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { before, test } from "node:test";
import { setTimeout as wait } from "node:timers/promises";
import { importInstalled, listIcons, mutate } from "./setup.mjs";

/** The memory of every instance that the package has made of its module. */
const memories = [];
let ozmira;
before(async () => {
  const { Instance } = WebAssembly;
  WebAssembly.Instance = function (...options) {
    const instance = new Instance(...options);
    memories.push(instance.exports.memory);
    return instance;
  };
  ozmira = await importInstalled("ozmira");
});

const square = '<svg viewBox="0 0 4 4" width="4" height="4"><path d="M0 0H2V4H0z"/></svg>';
const svg = (content) =>
  `<svg xmlns="http://www.w3.org/2000/svg" xmlns:xlink="http://www.w3.org/1999/xlink" viewBox="0 0 9 9">${content}</svg>`;

test("draws the pixels that are asked for", () => {
  const { width, height, data } = ozmira.render(square, { format: "rgba", scale: 2, fill: "#f00" });
  assert.deepEqual([width, height, data.length], [8, 8, 256]);
  assert.deepEqual([...data.subarray(0, 4), ...data.subarray(28, 32)], [255, 0, 0, 255, 0, 0, 0, 0]);
  assert.equal(ozmira.render(square, { width: 50 }).height, 50);
  assert.deepEqual([...ozmira.render(square).data.subarray(1, 4)], [...Buffer.from("PNG")]);
});

test("takes text and bytes of every kind", () => {
  const text = svg('<path d="M1 1a3 3 0 0 0 6 0"/><!-- ü -->');
  const bytes = new TextEncoder().encode(text);
  const expected = ozmira.check(text);
  assert.deepEqual(expected.map(({ rule }) => rule), ["arc"]);
  for (const given of [bytes, Buffer.from(bytes), bytes.buffer, new DataView(bytes.buffer)]) {
    assert.deepEqual(ozmira.check(given), expected);
  }
});

test("keeps a drawing that needs no change, down to a byte order mark", () => {
  const text = `\uFEFF${svg('<path d="M1 1L3 3"/>')}`;
  assert.deepEqual(ozmira.conform(text), { svg: text, findings: [], changed: false });
});

const errors = [
  ["BAD_OPTION", () => ozmira.render(square, { size: 3 }), /no option "size"; use one of width, height/],
  ["BAD_OPTION", () => ozmira.render(square, { width: "3" }), /width: "3" is not a number/],
  ["BAD_OPTION", () => ozmira.render(square, { width: -3 }), /width: "-3" is not a length in points/],
  ["BAD_OPTION", () => ozmira.render(square, { scale: 1000 }), /scale: "1000" is not/],
  ["BAD_OPTION", () => ozmira.render(square, { fill: "reddish" }), /fill: "reddish" is not a colour/],
  ["BAD_OPTION", () => ozmira.render(square, { format: "gif" }), /format: "gif" is not one of png, rgba/],
  ["BAD_OPTION", () => ozmira.conform(square, { decimals: 1.5 }), /decimals: "1.5" is not a whole number/],
  ["BAD_OPTION", () => ozmira.check(undefined), /must be a string or bytes/],
  ["UNREADABLE", () => ozmira.render("<svg><path"), /not well-formed XML/],
  ["UNREADABLE", () => ozmira.info(""), /empty/],
  ["BAD_SIZE", () => ozmira.render('<svg width="0" height="4"><path d="M0 0L1 1"/></svg>'), /has the size 0 x 4/],
  ["BAD_SIZE", () => ozmira.render(square, { width: 32767, scale: 2 }), /the limit is 32767 on a side/],
  ["TOO_COMPLEX", () => ozmira.render(svg('<use id="a" xlink:href="#a"/>')), /references form a cycle/],
  ["REFUSED", () => ozmira.conform(svg("<text>a</text>")), /svg:1:\d+: warning: .*\[text\]/],
  ["TOO_LARGE", () => ozmira.check(new Uint8Array((64 << 20) + 1)), /larger than 64 MB/],
];

test("errors have a code and a message, and the next call works on the same instance", () => {
  ozmira.render(square);
  const instances = memories.length;
  for (const [code, work, message] of errors) {
    assert.throws(work, (error) => {
      assert.ok(error instanceof ozmira.OzmiraError && error instanceof Error, `${error}`);
      assert.equal(error.code, code, error.message);
      assert.match(error.message, message);
      return true;
    });
    assert.equal(ozmira.render(square).width, 4);
    assert.equal(memories.length, instances, `${code} costs an instance`);
  }
});

const repeat = (text, count) => Array.from({ length: count }, () => text).join("");
const uses = (levels) =>
  Array.from({ length: levels }, (_, i) => `<g id="a${i + 1}">${repeat(`<use xlink:href="#a${i}"/>`, 10)}</g>`).join("");
const hostile = {
  "elements nested too deep": svg(repeat("<g>", 100_000)),
  "elements nested as deep as may be": svg(`${repeat("<g>", 1000)}<path d="M0 0L1 1"/>${repeat("</g>", 1000)}`),
  "references that multiply": svg(`<path id="a0" d="M0 0L1 1"/>${uses(20)}`),
  "entities that multiply": `<!DOCTYPE svg [<!ENTITY a "aaaaaaaaaa">${Array.from("bcdefghij", (c, i) => `<!ENTITY ${c} "${repeat(`&${"abcdefghij"[i]};`, 10)}">`).join("")}]>${svg("<title>&j;</title>")}`,
  "endless dashes": svg('<path d="M0 0H1e9" stroke="red" stroke-dasharray="1e-6"/>'),
  "a long path": svg(`<path d="M0 0${repeat("L9 9L0 1", 200_000)}"/>`),
  "huge numbers": svg('<path d="M-1e300 1e300L1e308 -1e308Z" stroke="red" stroke-width="1e300"/>'),
  "many clips": svg(`<clipPath id="c"><rect width="9" height="9"/></clipPath>${repeat('<g clip-path="url(#c)">', 500)}`),
  "bytes that are no text": Buffer.from(Array.from({ length: 4096 }, (_, i) => (i * 7919) & 255)),
};

test("hostile drawings end in a result or an error with a code", () => {
  for (const [what, text] of Object.entries(hostile)) {
    for (const work of [ozmira.check, ozmira.conform, ozmira.info, (s) => ozmira.render(s, { width: 64, timeout: 2 })]) {
      const start = performance.now();
      try {
        work(text);
      } catch (error) {
        assert.ok(error instanceof ozmira.OzmiraError, `${what}: ${error.stack}`);
      }
      assert.ok(performance.now() - start < 30_000, `${what} takes too long`);
      assert.equal(ozmira.render(square).width, 4);
    }
  }
});

test("drawing gives up after the time that it may take", () => {
  const text = svg(repeat('<rect width="9" height="9" opacity=".5"/>', 20_000));
  assert.throws(() => ozmira.render(text, { width: 4000, timeout: 0.2 }), { code: "TIMEOUT" });
});

test("memory does not grow with the number of calls", async () => {
  const icons = listIcons(100).map((icon) => readFileSync(icon));
  const callAll = () => {
    for (const [i, icon] of icons.entries()) {
      for (const work of [ozmira.check, ozmira.conform, (s) => ozmira.render(s, { width: 64 })]) {
        for (const text of [icon, mutate(icon, i)]) {
          try {
            work(text);
          } catch (error) {
            assert.ok(error instanceof ozmira.OzmiraError, error.stack);
          }
        }
      }
    }
  };
  // The process's own size says nothing: what is collected goes back to the system at any time.
  const measure = async () => {
    globalThis.gc();
    await wait(100); // Another thread frees the memory of arrays.
    globalThis.gc();
    const { heapUsed, arrayBuffers } = process.memoryUsage();
    return { instances: memories.length, module: memories.at(-1).buffer.byteLength, heap: (heapUsed + arrayBuffers) / 1e6 };
  };
  for (let i = 0; i < 3; ++i) callAll();
  const before = await measure();
  for (let i = 0; i < 10; ++i) callAll();
  const after = await measure();
  const figures = JSON.stringify({ before, after });
  assert.deepEqual([after.instances, after.module], [before.instances, before.module], figures);
  assert.ok(after.heap - before.heap < 4, figures);
});
