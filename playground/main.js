import { check, conform, init } from "ozmira";
import bytes from "ozmira/ozmira.wasm";
import { compare, drawWithBrowser, drawWithOzmira, show } from "./pictures.js";

const example = `<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 24 24" fill="none" stroke="#b45309" stroke-width="2">
  <circle cx="12" cy="12" r="9"/>
  <path d="M8 14a4 4 0 0 0 8 0" stroke-linecap="round"/>
  <path fill="#b45309" stroke="none" d="M9 8h.01v2H9zM15 8h.01v2H15z"/>
</svg>
`;

const element = (id) => document.getElementById(id);
const ui = Object.fromEntries(
  [...document.querySelectorAll("[id]")].map(({ id }) => [id, element(id)]),
);

/** The open drawings; one of them is shown and can be edited. */
const drawings = [];
let current = { name: "drawing.svg", text: "" };
let conformed = "";
let updates = 0;

const isDifferent = ({ severity }) => severity !== "note";

function describe(count, singular) {
  return `${count} ${singular}${count === 1 ? "" : "s"}`;
}

function listDrawings() {
  ui.drawings.hidden = drawings.length < 2;
  ui.drawings.replaceChildren(
    ...drawings.map((drawing) => {
      const count = check(drawing.text).filter(isDifferent).length;
      const button = document.createElement("button");
      button.type = "button";
      button.textContent = `${drawing.name}: ${count === 0 ? "as in a browser" : describe(count, "difference")}`;
      button.setAttribute("aria-current", String(drawing === current));
      button.addEventListener("click", () => open(drawing));
      const item = document.createElement("li");
      item.append(button);
      return item;
    }),
  );
}

function open(drawing) {
  current = drawing;
  ui.text.value = drawing.text;
  for (const [i, item] of [...ui.drawings.children].entries()) {
    item.firstChild.setAttribute("aria-current", String(drawings[i] === drawing));
  }
  update();
}

async function addFiles(files) {
  const added = await Promise.all([...files].map(async (file) => ({ name: file.name, text: await file.text() })));
  if (added.length === 0) return;
  drawings.push(...added);
  current = added[0];
  listDrawings();
  open(added[0]);
}

/** Selects the place of a finding in the text. */
function goTo({ line, column }) {
  const lines = current.text.split("\n");
  const before = lines.slice(0, line - 1).join("\n").length + (line > 1 ? 1 : 0);
  const at = before + [...lines[line - 1]].slice(0, column - 1).join("").length;
  ui.text.focus();
  ui.text.setSelectionRange(at, at + 1);
}

function showFindings(findings) {
  ui["no-findings"].hidden = findings.length > 0;
  ui.findings.replaceChildren(
    ...findings.map((finding) => {
      const severity = document.createElement("strong");
      severity.className = finding.severity;
      severity.textContent = `${finding.line}:${finding.column} ${finding.severity}`;
      const button = document.createElement("button");
      button.type = "button";
      button.append(severity, ` ${finding.message}; ${finding.remedy} [${finding.rule}]`);
      button.addEventListener("click", () => goTo(finding));
      const item = document.createElement("li");
      item.append(button);
      return item;
    }),
  );
}

function showConformed(findings) {
  conformed = "";
  let message;
  try {
    const decimals = ui.decimals.value === "" ? undefined : Number(ui.decimals.value);
    const result = conform(current.text, { outlineStrokes: ui.outline.checked, lossy: ui.lossy.checked, decimals });
    conformed = result.svg;
    const count = new Set(findings.filter(isDifferent).map(({ rule }) => rule)).size;
    message = result.changed ? `Rewritten for ${describe(count, "rule")}.` : "Nothing to rewrite.";
  } catch (error) {
    message = `Refused: ${error.message}`;
  }
  ui.result.value = conformed;
  ui["conform-result"].textContent = message;
  ui.copy.disabled = ui.save.disabled = conformed === "";
}

const canvases = [ui.ozmira, ui.browser, ui.difference];

async function showPictures() {
  const update = ++updates;
  const scale = Number(ui.scale.value) || 1;
  const options = { size: Number(ui.size.value) || 24, scale, fill: ui.tinted.checked ? ui.tint.value : undefined };
  try {
    const ours = drawWithOzmira(ui.conformed.checked && conformed ? conformed : current.text, options);
    const theirs = await drawWithBrowser(current.text, ours.width, ours.height, options.fill);
    if (update !== updates) return; // something newer is being drawn
    const { picture, differing, most } = compare(ours, theirs);
    for (const [i, pixels] of [ours, theirs, picture].entries()) show(canvases[i], pixels, scale);
    const share = (100 * differing) / (ours.width * ours.height);
    const part = share < 0.1 ? describe(differing, "pixel") : `${share.toFixed(1)} % of the pixels`;
    ui.summary.textContent =
      `${ours.width} × ${ours.height} pixels. ` +
      (differing === 0 ? `They look the same (greatest difference ${most} of 255).` : `Different: ${part}.`);
  } catch (error) {
    if (update !== updates) return;
    clearPictures();
    ui.summary.textContent = `Not drawn: ${error.message || "this browser can't read it"}`;
  }
}

function clearPictures() {
  for (const canvas of canvases) canvas.width = canvas.height = 0;
}

/** Shows nothing: there is no drawing. */
function clear() {
  ++updates;
  conformed = "";
  showFindings([]);
  ui.result.value = "";
  ui["conform-result"].textContent = "";
  ui.copy.disabled = ui.save.disabled = true;
  clearPictures();
  ui.summary.textContent = "Open or paste a drawing to begin.";
}

function update() {
  current.text = ui.text.value;
  if (current.text.trim() === "") return clear();
  const findings = check(current.text);
  showFindings(findings);
  showConformed(findings);
  showPictures();
}

function save() {
  const link = document.createElement("a");
  link.href = URL.createObjectURL(new Blob([conformed], { type: "image/svg+xml" }));
  link.download = current.name;
  link.click();
  setTimeout(() => URL.revokeObjectURL(link.href));
}

async function copy() {
  try {
    await navigator.clipboard.writeText(conformed);
  } catch {
    // A page that was opened from a file may have no clipboard.
    ui.result.select();
    document.execCommand("copy");
  }
  ui["conform-result"].textContent = "Copied.";
}

function acceptDrops() {
  addEventListener("dragover", (event) => {
    event.preventDefault();
    document.body.classList.add("dropping");
  });
  addEventListener("dragleave", (event) => {
    if (!event.relatedTarget) document.body.classList.remove("dropping");
  });
  addEventListener("drop", (event) => {
    event.preventDefault();
    document.body.classList.remove("dropping");
    addFiles(event.dataTransfer.files);
  });
}

async function start() {
  await init(bytes);
  acceptDrops();
  ui.files.addEventListener("change", () => addFiles(ui.files.files));
  ui.example.addEventListener("click", () => open({ name: "example.svg", text: example }));
  ui.text.addEventListener("input", update);
  ui.copy.addEventListener("click", copy);
  ui.save.addEventListener("click", save);
  for (const form of [ui.options, ui["conform-options"]]) {
    form.addEventListener("input", update);
    form.addEventListener("submit", (event) => event.preventDefault());
  }
}

start().catch((error) => {
  ui.summary.textContent = `${error.message}. Load the page again, or use a browser that runs WebAssembly.`;
});
