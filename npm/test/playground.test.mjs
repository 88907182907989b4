// The playground as people use it: from a file and from a server, with the mouse, the keyboard and a screen reader.
import assert from "node:assert/strict";
import { mkdirSync, readFileSync } from "node:fs";
import { createServer } from "node:http";
import { join } from "node:path";
import { test } from "node:test";
import { pathToFileURL } from "node:url";
import { openBrowser } from "./browser.mjs";
import { importInstalled, playground, root, withFolder } from "./setup.mjs";

const arc = `<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 24 24">
  <path d="M4 4h16v16H4z" fill="#ccc"/>
  <path d="M6 12a6 6 0 0 0 12 0"/>
</svg>
`;
const pictures = join(root, "build/npm/screenshots");

async function withPage(address, settings, work) {
  const browser = await openBrowser();
  try {
    const page = await browser.newPage({ viewport: { width: 1200, height: 900 }, ...settings });
    const errors = [];
    page.on("pageerror", (error) => errors.push(error.message));
    page.on("request", (request) => {
      if (!/^(file|data|blob):|127\.0\.0\.1/.test(request.url())) errors.push(`asks for ${request.url()}`);
    });
    await page.goto(address);
    await work(page);
    assert.deepEqual(errors, []);
  } finally {
    await browser.close();
  }
}

const fileAddress = pathToFileURL(join(playground, "index.html")).href;

/** Drops files on the page as a file manager does. */
async function drop(page, files) {
  const data = await page.evaluateHandle((list) => {
    const transfer = new DataTransfer();
    for (const [name, text] of list) transfer.items.add(new File([text], name, { type: "image/svg+xml" }));
    return transfer;
  }, files);
  await page.dispatchEvent("body", "dragover", { dataTransfer: data });
  await page.dispatchEvent("body", "drop", { dataTransfer: data });
}

const colourAt = (page, id, x, y) =>
  page.evaluate(([name, left, top]) => {
    const canvas = document.getElementById(name);
    const at = [left * canvas.width, top * canvas.height].map(Math.floor);
    return [...canvas.getContext("2d").getImageData(...at, 1, 1).data];
  }, [id, x, y]);

const summary = (page, pattern) =>
  page.waitForFunction((text) => new RegExp(text).test(document.getElementById("summary").textContent), pattern);

async function walkThrough(page, folder) {
  await drop(page, [["square.svg", arc], ["plain.svg", '<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 1 1"><path d="M0 0H1V1H0z"/></svg>']]);
  await summary(page, "Different: \\d+\\.\\d % of the pixels");
  const list = page.getByRole("list", { name: "Open drawings" });
  await list.getByRole("button", { name: "square.svg: 1 difference" }).waitFor();

  const finding = page.getByRole("button", { name: /^3:17 warning elliptical arcs .*\[arc\]$/ });
  await finding.focus();
  await page.keyboard.press("Enter");
  const place = await page.getByLabel("SVG text").evaluate((text) => text.value.slice(text.selectionStart, text.selectionStart + 2));
  assert.equal(place, "a6");

  await page.getByLabel("Draw the conformed drawing").check();
  await summary(page, "192 × 192 pixels. They look the same");
  await page.getByLabel("Tint").check();
  await page.getByLabel("Colour").fill("#ff0000");
  await page.waitForFunction(() => {
    const canvas = document.getElementById("ozmira");
    return canvas.getContext("2d").getImageData(96, 120, 1, 1).data[0] === 255;
  });
  for (const id of ["ozmira", "browser"]) {
    assert.deepEqual(await colourAt(page, id, 0.5, 0.6), [255, 0, 0, 255], id);
    assert.deepEqual(await colourAt(page, id, 0.2, 0.2), [204, 204, 204, 255], id);
  }
  await page.getByLabel("Size in points").fill("24");
  await page.getByLabel("Scale").fill("3");
  await summary(page, "72 × 72 pixels");

  const saved = page.waitForEvent("download");
  await page.getByRole("button", { name: "Save" }).click();
  const download = await saved;
  assert.equal(download.suggestedFilename(), "square.svg");
  await download.saveAs(join(folder, "saved.svg"));
  const { conform } = await importInstalled("ozmira");
  assert.equal(readFileSync(join(folder, "saved.svg"), "utf8"), conform(arc).svg);

  await list.getByRole("button", { name: "plain.svg: as in a browser" }).click();
  await page.getByText("Nothing to rewrite.").waitFor();
  await page.getByLabel("SVG text").fill("<svg><path");
  await summary(page, "Not drawn: not well-formed XML");
}

for (const colorScheme of ["light", "dark"]) {
  test(`works from a file, in ${colorScheme}`, withFolder((folder) =>
    withPage(fileAddress, { colorScheme }, async (page) => {
      await walkThrough(page, folder);
      await page.getByRole("button", { name: "Example" }).click();
      await summary(page, "pixels");
      mkdirSync(pictures, { recursive: true });
      await page.screenshot({ path: join(pictures, `${colorScheme}.png`), fullPage: true });
    })));
}

test("works from a static server", withFolder(async (folder) => {
  const server = createServer((request, response) => {
    const name = request.url === "/" ? "index.html" : request.url.slice(1);
    const types = { css: "text/css", html: "text/html", js: "text/javascript" };
    response.setHeader("Content-Type", types[name.split(".").pop()] ?? "text/plain");
    response.end(readFileSync(join(playground, name)));
  });
  await new Promise((resolve) => server.listen(0, "127.0.0.1", resolve));
  try {
    await withPage(`http://127.0.0.1:${server.address().port}/`, {}, (page) => walkThrough(page, folder));
  } finally {
    server.close();
  }
}));

test("everything can be reached and done with the keyboard, and has a name", () =>
  withPage(fileAddress, {}, async (page) => {
    await drop(page, [["arc.svg", arc]]);
    await summary(page, "Different");
    const names = new Set();
    await page.locator("body").click({ position: { x: 2, y: 2 } });
    for (let i = 0; i < 30; ++i) {
      await page.keyboard.press("Tab");
      names.add(
        await page.evaluate(() => {
          const { activeElement: at } = document;
          return at === document.body ? "" : (at.labels?.[0]?.textContent ?? at.textContent).trim().slice(0, 12);
        }),
      );
    }
    for (const name of ["Open files…", "Example", "SVG text", "Size in poin", "Scale", "Tint", "Draw the con", "3:17 warning", "Copy", "Save"]) {
      assert.ok(names.has(name), `${name} is not among ${[...names].join(", ")}`);
    }
    const unnamed = await page.$$eval("input, textarea, button, canvas", (elements) =>
      elements.filter((e) => !(e.labels?.length || e.textContent.trim() || e.getAttribute("aria-label"))).map((e) => e.id),
    );
    assert.deepEqual(unnamed, []);
    assert.equal(await page.getByRole("status").count(), 2);
  }));
