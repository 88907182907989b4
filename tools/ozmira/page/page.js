'use strict';
// Shows the icons of `data`: for each the same columns of pictures. The second column is what the others are compared
// with. Names and messages come from files that nobody vouches for, so they only ever become text, never markup.

const data = JSON.parse(document.getElementById('data').textContent);
const at = (id) => document.getElementById(id);

/** A new element with properties and children. */
function make(tag, properties = {}, ...children) {
  const element = Object.assign(document.createElement(tag), properties);
  element.append(...children);
  return element;
}

const plural = (count, noun) => `${count.toLocaleString('en')} ${noun}${count === 1 ? '' : 's'}`;

// --- Differences -----------------------------------------------------------------------------------------------

async function loadPicture(url) {
  const picture = new Image();
  picture.src = url;
  await picture.decode();
  return picture;
}

/** The pixels of a picture drawn at a size. */
function pixelsOf(picture, width, height) {
  const canvas = make('canvas', { width, height });
  const context = canvas.getContext('2d', { willReadFrequently: true });
  context.drawImage(picture, 0, 0, width, height);
  return context.getImageData(0, 0, width, height).data;
}

/** What a column and the second one show at the largest scale: pixels of one size. */
async function comparedPixels(icon, column) {
  const [a, b] = await Promise.all([column, 1].map((i) => loadPicture(icon.columns[i].pictures.at(-1))));
  const { naturalWidth: width, naturalHeight: height } = a;
  return { width, height, a: pixelsOf(a, width, height), b: pixelsOf(b, width, height) };
}

/** The mean absolute difference of premultiplied components, of 255. */
function meanDifference({ a, b }) {
  let sum = 0;
  for (let i = 0; i < a.length; i += 4) {
    const alphaA = a[i + 3];
    const alphaB = b[i + 3];
    sum += Math.abs(alphaA - alphaB);
    for (let c = i; c < i + 3; ++c) sum += Math.abs(a[c] * alphaA - b[c] * alphaB) / 255;
  }
  return sum / a.length;
}

/** How far a column is from the second one. 255 stands for a picture that is missing or that the browser can't draw. */
async function differenceOf(icon, column) {
  if (![column, 1].every((i) => icon.columns[i]?.pictures.length > 0)) return 255;
  try {
    return meanDifference(await comparedPixels(icon, column));
  } catch {
    return 255;
  }
}

/** Measures an icon unless it brings its difference along. */
async function measure(icon) {
  icon.difference ??= await differenceOf(icon, 0);
  if (icon.columns[2]?.pictures.length > 0) icon.rewritten = await differenceOf(icon, 2);
}

/** Measures all icons, some at a time, so that the page stays quick. */
async function measureAll() {
  const batch = 16;
  for (let i = 0; i < data.icons.length; i += batch) {
    await Promise.all(data.icons.slice(i, i + batch).map(measure));
    at('summary').textContent = `Measured ${i.toLocaleString('en')} of ${plural(data.icons.length, 'icon')}`;
    await new Promise((resume) => setTimeout(resume));
  }
  summarise();
  for (const icon of data.icons) if (icon.card) fillFacts(icon);
  show();
  document.body.dataset.measured = 'true';
}

// --- The list --------------------------------------------------------------------------------------------------

let scaleIndex = 0;
let visible = [];

function pictureOf(icon, column) {
  const { pictures, tinted } = icon.columns[column];
  if (at('tint').checked && tinted) return tinted;
  return pictures[Math.min(scaleIndex, pictures.length - 1)];
}

/** A picture with its caption. */
function figure(url, caption, icon) {
  const ground = make('div', { className: 'ground' });
  if (url) {
    const picture = make('img', {
      src: url, alt: `${icon.label}: ${caption}`, decoding: 'async', onerror: () => ground.replaceChildren('none'),
    });
    picture.style.width = `${icon.width || 24}px`;
    picture.style.height = `${icon.height || 24}px`;
    ground.append(picture);
  } else {
    ground.append('none');
  }
  return make('figure', {}, ground, make('figcaption', { textContent: caption }));
}

function describe(icon) {
  const facts = [];
  if (icon.status) facts.push(icon.status);
  if (icon.difference !== undefined && icon.difference < 255) facts.push(`difference ${icon.difference.toFixed(2)}`);
  if (icon.rewritten !== undefined && icon.rewritten < 255) facts.push(`rewritten ${icon.rewritten.toFixed(2)}`);
  if (icon.findings.length > 0) facts.push(plural(icon.findings.length, 'finding'));
  return facts.join(', ') || (icon.difference === undefined ? 'measuring' : 'not comparable');
}

function fillFacts(icon) {
  icon.card.querySelector('.facts').textContent = describe(icon);
}

/** Draws the card of an icon into its place in the list. */
function fill(icon) {
  const row = make('div', { className: 'row' });
  icon.columns.forEach((_, column) => {
    const url = pictureOf(icon, column);
    if (url || !icon.problem) row.append(figure(url, data.columns[column], icon));
  });
  const card = make('button', { type: 'button', className: 'card', onclick: () => open(icon) },
    make('span', { className: 'name', textContent: icon.label, title: icon.name }));
  if (icon.problem) card.append(make('span', { className: 'problem', textContent: icon.problem }));
  card.append(row, make('span', { className: 'facts' }));
  icon.place.replaceChildren(card);
  icon.card = card;
  fillFacts(icon);
}

function empty(icon) {
  if (icon.place.contains(document.activeElement)) return;
  icon.place.replaceChildren();
  icon.card = null;
}

// Only cards near the window have pictures, so that thousands of icons stay quick.
const watcher = new IntersectionObserver((entries) => {
  for (const { target, isIntersecting } of entries) {
    const icon = data.icons[target.dataset.index];
    if (isIntersecting && !icon.card) fill(icon);
    if (!isIntersecting && icon.card) empty(icon);
  }
}, { rootMargin: '600px' });

const orders = {
  difference: (a, b) => (b.difference ?? -1) - (a.difference ?? -1),
  rewritten: (a, b) => (b.rewritten ?? -1) - (a.rewritten ?? -1),
  findings: (a, b) => b.findings.length - a.findings.length,
  name: () => 0,
};

/** Whether an icon has what the list of findings asks for. */
function matchesRule(icon, rule) {
  if (rule === '') return true;
  if (rule === 'any') return icon.findings.length > 0;
  if (rule === 'none') return icon.findings.length === 0;
  if (rule === 'problem') return Boolean(icon.problem);
  if (rule.startsWith('status:')) return icon.status === rule.slice('status:'.length);
  return icon.findings.some((finding) => finding.rule === rule.slice('rule:'.length));
}

/** Shows the icons that pass the filters, in the chosen order. */
function show() {
  const name = at('name').value.trim().toLowerCase();
  const least = Number(at('least').value) || 0;
  const rule = at('rule').value;
  visible = data.icons.filter((icon) => icon.label.toLowerCase().includes(name) &&
    (least === 0 || (icon.difference ?? 0) >= least) && matchesRule(icon, rule));
  visible.sort((a, b) => orders[at('order').value](a, b) || a.index - b.index);
  at('icons').replaceChildren(...visible.map((icon) => icon.place));
  at('count').textContent = `${visible.length.toLocaleString('en')} of ${plural(data.icons.length, 'icon')} shown`;
}

function redraw() {
  for (const icon of data.icons) if (icon.card) fill(icon);
}

function summarise() {
  const different = data.icons.filter((icon) => icon.difference > 1).length;
  const failed = data.icons.filter((icon) => icon.problem).length;
  const found = data.icons.filter((icon) => icon.findings.some((finding) => finding.severity !== 'note')).length;
  const parts = [plural(data.icons.length, 'icon')];
  for (const [status, count] of statuses()) parts.push(`${count.toLocaleString('en')} ${status}`);
  if (parts.length === 1) parts.push(`${different.toLocaleString('en')} differ by more than 1 of 255`);
  if (data.hasFindings) parts.push(`${found.toLocaleString('en')} with warnings`);
  if (failed > 0) parts.push(`${failed.toLocaleString('en')} with problems`);
  at('summary').textContent = parts.join(', ');
}

/** How often each word of the lists occurs, as pairs, the most frequent first. */
function countWords(lists) {
  const counts = new Map();
  for (const word of lists.flatMap((list) => [...new Set(list)])) counts.set(word, (counts.get(word) ?? 0) + 1);
  return [...counts].sort((a, b) => b[1] - a[1]);
}

/** What became of icons, where the page tells, with the number of icons. */
const statuses = () => countWords(data.icons.map((icon) => (icon.status ? [icon.status] : [])));

/** Fills the list of rules and of what became of icons, each with the number of icons. */
function listRules() {
  const options = [['', 'All icons']];
  if (data.hasFindings) options.push(['any', 'With findings'], ['none', 'Without findings'], ['problem', 'With a problem']);
  for (const [rule, count] of countWords(data.icons.map((icon) => icon.findings.map((finding) => finding.rule)))) {
    options.push([`rule:${rule}`, `${rule} (${count})`]);
  }
  for (const [status, count] of statuses()) options.push([`status:${status}`, `${status} (${count})`]);
  at('rule').replaceChildren(...options.map(([value, textContent]) => make('option', { value, textContent })));
}

// --- One icon --------------------------------------------------------------------------------------------------

let opened = null;
let blinking = 0;

/** The columns that are compared: a chosen one and the second. */
const pair = () => [Number(at('pair').value), 1];

function stopBlinking() {
  clearInterval(blinking);
  blinking = 0;
  at('blink').setAttribute('aria-pressed', 'false');
}

/** Shows the left `share` of the first picture over the second one. */
function reveal(share) {
  const top = at('stage').firstElementChild;
  if (top) top.style.clipPath = `inset(0 ${100 - share}% 0 0)`;
  const bottom = at('stage').lastElementChild;
  if (bottom && bottom !== top) bottom.style.clipPath = `inset(0 0 0 ${share}%)`;
}

function toggleBlink() {
  if (blinking) {
    stopBlinking();
    return;
  }
  at('blink').setAttribute('aria-pressed', 'true');
  let first = false;
  const flip = () => {
    first = !first;
    reveal(first ? 100 : 0);
    at('shown').textContent = data.columns[pair()[first ? 0 : 1]];
  };
  flip();
  blinking = setInterval(flip, 700);
}

/** Draws where two pictures differ: black where they are equal, brighter with the difference. */
async function drawDifference(icon) {
  const [column] = pair();
  const { width, height, a, b } = await comparedPixels(icon, column);
  const canvas = make('canvas', { width, height, role: 'img', ariaLabel: `${icon.label}: difference` });
  const context = canvas.getContext('2d');
  const picture = context.createImageData(width, height);
  for (let i = 0; i < a.length; i += 4) {
    let largest = Math.abs(a[i + 3] - b[i + 3]);
    for (let c = i; c < i + 3; ++c) largest = Math.max(largest, Math.abs(a[c] * a[i + 3] - b[c] * b[i + 3]) / 255);
    picture.data.set([Math.min(255, largest * 2), largest, 0, 255], i);
  }
  context.putImageData(picture, 0, 0);
  if (opened === icon && column === pair()[0] && at('mode').value === 'difference') at('stage').replaceChildren(canvas);
}

function compare() {
  stopBlinking();
  const mode = at('mode').value;
  const urls = pair().map((column) => opened.columns[column]?.pictures.at(-1));
  at('stage').hidden = !urls.every(Boolean);
  [at('slider-left').textContent, at('slider-right').textContent] = pair().map((column) => data.columns[column]);
  at('slider-label').hidden = mode !== 'slider';
  at('blink').hidden = mode !== 'blink';
  at('shown').textContent = '';
  at('stage').replaceChildren();
  if (at('stage').hidden) return;
  if (mode === 'difference') {
    drawDifference(opened).catch(() => { at('shown').textContent = 'The browser cannot draw it.'; });
    return;
  }
  at('stage').append(...urls.map((src, i) => make('img', { src, alt: `${opened.label}: ${data.columns[pair()[i]]}` })));
  reveal(mode === 'slider' ? Number(at('slider').value) : 100);
  if (mode === 'blink') at('shown').textContent = data.columns[pair()[0]];
}

/** Every picture of an icon, each in its own size, on light and on dark ground. */
function showPictures(icon) {
  const figures = [];
  for (const ground of ['light', 'dark']) {
    icon.columns.forEach(({ pictures, tinted }, column) => {
      pictures.forEach((url, i) => {
        const scale = pictures.length > 1 ? ` ${data.scales[i]}x` : '';
        figures.push([figure(url, `${data.columns[column]}${scale}`, icon), ground]);
      });
      if (tinted) figures.push([figure(tinted, `${data.columns[column]} tinted`, icon), ground]);
    });
  }
  at('pictures').replaceChildren(...figures.map(([element, ground]) => {
    element.firstElementChild.classList.add(ground);
    return element;
  }));
}

/** The text of the file, for files that have one. */
function sourceText(icon) {
  const [url] = icon.columns[data.sourceColumn]?.pictures ?? [];
  if (!url) return '';
  const bytes = Uint8Array.from(atob(url.slice(url.indexOf(',') + 1)), (c) => c.charCodeAt(0));
  return new TextDecoder().decode(bytes);
}

/** Shows the text of the file with the place of a finding marked. */
function showSource(text, finding) {
  const lines = text.split('\n');
  const before = finding ? lines.slice(0, finding.line - 1) : lines;
  const line = finding ? [...(lines[finding.line - 1] ?? '')] : [];
  const start = finding ? finding.column - 1 : 0;
  const end = start + 24;
  const parts = [before.map((other) => `${other}\n`).join('')];
  if (finding) {
    parts.push(line.slice(0, start).join(''), make('mark', { textContent: line.slice(start, end).join('') || ' ' }),
      `${line.slice(end).join('')}\n`, lines.slice(finding.line).join('\n'));
  }
  at('source').replaceChildren(...parts);
  at('source').querySelector('mark')?.scrollIntoView({ block: 'nearest' });
}

function showFindings(icon) {
  const text = sourceText(icon);
  at('findings-title').hidden = at('findings').hidden = icon.findings.length === 0;
  at('source').hidden = text === '';
  at('findings').replaceChildren(...icon.findings.map((finding) => {
    const place = make('button', { type: 'button', textContent: `Line ${finding.line}, column ${finding.column}`,
      onclick: () => showSource(text, finding) });
    return make('li', {}, place, ` ${finding.severity}: ${finding.message} `,
      make('span', { className: 'remedy', textContent: `${finding.remedy} [${finding.rule}]` }));
  }));
  showSource(text, icon.findings[0]);
}

function open(icon) {
  opened = icon;
  at('detail-name').textContent = icon.label;
  at('detail-problem').textContent = icon.problem ?? '';
  at('detail-problem').hidden = !icon.problem;
  compare();
  showPictures(icon);
  showFindings(icon);
  if (!at('detail').open) at('detail').showModal();
}

function step(by) {
  const next = visible[visible.indexOf(opened) + by];
  if (next) open(next);
}

// --- The page --------------------------------------------------------------------------------------------------

/** The folder that all icons are in, with its slash. */
function commonFolder() {
  let folder = data.icons[0]?.name.replace(/[^/]*$/, '') ?? '';
  while (!data.icons.every((icon) => icon.name.startsWith(folder))) folder = folder.replace(/[^/]*\/$/, '');
  return folder;
}

function begin() {
  const folder = commonFolder();
  document.title = data.title;
  at('title').textContent = data.title;
  data.icons.forEach((icon, index) => {
    icon.index = index;
    icon.label = icon.name.slice(folder.length);
    icon.place = make('li');
    icon.place.dataset.index = index;
    watcher.observe(icon.place);
  });
  at('scale').replaceChildren(...data.scales.map((scale, i) => make('option', { value: i, textContent: `${scale}x` })));
  scaleIndex = data.scales.length - 1;
  at('scale').value = scaleIndex;
  at('scale').parentElement.hidden = data.scales.length < 2;
  at('tint-label').hidden = !data.tint;
  at('tint-sample').style.background = data.tint ?? '';
  at('rule-label').hidden = !data.hasFindings && statuses().length === 0;
  at('rule-label').firstChild.textContent = data.hasFindings ? 'Finding ' : 'Change ';
  at('pair').replaceChildren(...data.columns.flatMap((name, i) =>
    i === 1 ? [] : [make('option', { value: i, textContent: `${name} and ${data.columns[1]}` })]));
  at('order').querySelector('[value="rewritten"]').hidden = data.columns.length < 3;
  listRules();

  for (const id of ['name', 'least']) at(id).addEventListener('input', show);
  for (const id of ['rule', 'order']) at(id).addEventListener('change', show);
  at('ground').addEventListener('change', () => { document.body.dataset.ground = at('ground').value; });
  at('tint').addEventListener('change', redraw);
  at('scale').addEventListener('change', () => {
    scaleIndex = Number(at('scale').value);
    redraw();
  });
  for (const id of ['pair', 'mode']) at(id).addEventListener('change', compare);
  at('slider').addEventListener('input', () => reveal(Number(at('slider').value)));
  at('blink').addEventListener('click', toggleBlink);
  at('previous').addEventListener('click', () => step(-1));
  at('next').addEventListener('click', () => step(1));
  at('close').addEventListener('click', () => at('detail').close());
  at('detail').addEventListener('close', () => {
    stopBlinking();
    opened.card?.focus();
  });
  at('detail').addEventListener('keydown', (event) => {
    if (event.target.matches('input, select')) return;
    if (event.key === 'ArrowLeft') step(-1);
    if (event.key === 'ArrowRight') step(1);
  });
  show();
  measureAll();
}

begin();
