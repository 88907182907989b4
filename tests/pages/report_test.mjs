// Drives the pages of `ozmira report` in Chromium as a person would.
//
//   node --test tests/pages/report_test.mjs
//
// OZMIRA_TOOL is the tool, OZMIRA_NODE_MODULES a folder with the packages of package.json.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { mkdirSync, mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { after, before, test } from 'node:test';
import { pathToFileURL } from 'node:url';
import { openBrowser } from './chromium.mjs';

const require = createRequire(join(process.env.OZMIRA_NODE_MODULES, 'anchor.js'));
const axe = readFileSync(require.resolve('axe-core/axe.min.js'), 'utf8');

let folder;
let browser;

before(async () => {
  // A search for "b" that looked at folders, too, would find everything in this one.
  folder = mkdtempSync(join(tmpdir(), 'ozmira-pages-abcd-'));
  browser = await openBrowser();
});

after(async () => {
  await browser?.close();
  rmSync(folder, { recursive: true, force: true });
});

/** Writes icons, given as an object of names and texts, into a folder of this name. Returns its path. */
function writeIcons(name, icons) {
  for (const [icon, text] of Object.entries(icons)) {
    mkdirSync(join(folder, name, icon, '..'), { recursive: true });
    writeFileSync(join(folder, name, icon), text);
  }
  return join(folder, name);
}

/** Reports icons and opens the page. */
const openReport = (name, icons, { options = [], ...expected } = {}) =>
  openPage(name, ['report', writeIcons(name, icons), ...options], expected);

/** Makes a page with the tool and opens it. */
async function openPage(name, command, { exitCode = 0, colorScheme = 'light' } = {}) {
  const page = join(folder, `${name}.html`);
  let status = 0;
  try {
    execFileSync(process.env.OZMIRA_TOOL, [...command, '-o', page, '--quiet'], { stdio: 'pipe' });
  } catch (error) {
    status = error.status;
  }
  assert.equal(status, exitCode);
  const tab = await browser.newPage({ viewport: { width: 1000, height: 800 }, colorScheme, bypassCSP: true });
  const errors = [];
  tab.on('pageerror', (error) => errors.push(error.message));
  tab.on('request', (request) => {
    if (!/^(file|data):/.test(request.url())) errors.push(`asks for ${request.url()}`);
  });
  await tab.goto(pathToFileURL(page).href);
  await tab.waitForSelector('body[data-measured]', { timeout: 60_000 });
  return { tab, errors };
}

const names = (tab) => tab.locator('#icons .name').allTextContents();

/** A bar of `n` tenths of the picture. Colours of the root reach browsers only. */
const bar = (n, root = '') => `<svg xmlns="http://www.w3.org/2000/svg" width="10" height="10"${root}>
  <rect width="10" height="${n}"/></svg>`;

test('twenty icons show the differences that they were made with, the worst first', async () => {
  const icons = {};
  const expected = [];
  for (let n = 1; n <= 10; ++n) {
    icons[`red-${n}.svg`] = bar(n, ' fill="#ff0000"');
    icons[`sub/black-${n}.svg`] = bar(n);
    expected.push([`red-${n}.svg`, (n / 10) * 255 / 4]); // one component of four, where there is a bar
    expected.push([`sub/black-${n}.svg`, 0]);
  }
  const { tab, errors } = await openReport('known', icons);
  const shown = await tab.evaluate(() => data.icons.map((icon) => [icon.label, icon.difference]));
  for (const [name, difference] of expected) {
    const measured = shown.find(([label]) => label === name)?.[1];
    assert.ok(Math.abs(measured - difference) < 0.01, `${name}: ${measured}, not ${difference}`);
  }
  assert.deepEqual((await names(tab)).slice(0, 3), ['red-10.svg', 'red-9.svg', 'red-8.svg']);
  assert.match(await tab.textContent('#summary'), /20 icons, 10 differ .* 10 with warnings/);
  assert.deepEqual(errors, []);
  await tab.close();
});

test('filters and orders choose what is shown', async () => {
  const { tab } = await openReport('filters', {
    'a.svg': bar(1), 'b.svg': bar(5, ' fill="#ff0000"'), 'c.svg': bar(9, ' fill="#ff0000"'), 'd.svg': 'no drawing',
  }, { exitCode: 1 });
  const cases = [
    [() => tab.fill('#name', 'B'), ['b.svg']],
    [() => tab.fill('#name', ''), ['d.svg', 'c.svg', 'b.svg', 'a.svg']],
    [() => tab.selectOption('#order', 'name'), ['a.svg', 'b.svg', 'c.svg', 'd.svg']],
    [() => tab.fill('#least', '40'), ['c.svg', 'd.svg']],
    [() => tab.fill('#least', '0'), ['a.svg', 'b.svg', 'c.svg', 'd.svg']],
    [() => tab.selectOption('#rule', 'rule:root-style'), ['b.svg', 'c.svg']],
    [() => tab.selectOption('#rule', 'none'), ['a.svg']],
    [() => tab.selectOption('#rule', 'problem'), ['d.svg']],
  ];
  for (const [act, expected] of cases) {
    await act();
    await tab.waitForFunction((count) => document.querySelectorAll('#icons .name').length === count, expected.length);
    assert.deepEqual(await names(tab), expected, act.toString());
  }
  assert.match(await tab.textContent('#count'), /1 of 4 icons shown/);
  assert.match(await tab.textContent('#icons .problem'), /not.*XML|svg/i);
  assert.match(await tab.textContent('#icons .facts'), /1 finding/);
  await tab.close();
});

test('an icon is opened, compared and left with the keyboard', async () => {
  const { tab, errors } = await openReport('detail', {
    'a.svg': bar(9, ' fill="#ff0000"'), 'b.svg': bar(5, ' fill="#ff0000"'),
  }, { options: ['--conform'] });
  await tab.locator('#icons .card').first().focus();
  await tab.keyboard.press('Enter');
  assert.equal(await tab.textContent('#detail-name'), 'a.svg');
  assert.match(await tab.textContent('#source mark'), /^fill="#ff0000"/);
  assert.match(await tab.textContent('#findings'), /Line 1, column \d+ warning: .*\[root-style\]/);
  // Three scales and a tint of the application, the browser, three scales of the rewritten file; on two grounds.
  assert.equal(await tab.locator('#pictures img').count(), 16);

  const revealed = () => tab.locator('#stage > *').first().evaluate((top) => getComputedStyle(top).clipPath);
  assert.equal(await revealed(), 'inset(0px 50% 0px 0px)');
  await tab.locator('#slider').focus();
  await tab.keyboard.press('Home');
  assert.equal(await revealed(), 'inset(0px 100% 0px 0px)');

  await tab.selectOption('#mode', 'difference');
  const red = () => tab.locator('#stage canvas')
    .evaluate((canvas) => canvas.getContext('2d').getImageData(5, 5, 1, 1).data[0]);
  assert.equal(await red(), 255);
  await tab.selectOption('#pair', '2');
  await tab.waitForFunction(() => {
    const canvas = document.querySelector('#stage canvas');
    return canvas && canvas.getContext('2d').getImageData(5, 5, 1, 1).data[0] === 0;
  });

  await tab.selectOption('#mode', 'blink');
  await tab.click('#blink');
  assert.equal(await tab.getAttribute('#blink', 'aria-pressed'), 'true');
  await tab.waitForFunction(() => document.getElementById('shown').textContent === 'Browser');
  await tab.click('#blink');

  await tab.locator('#close').focus();
  await tab.keyboard.press('ArrowRight');
  assert.equal(await tab.textContent('#detail-name'), 'b.svg');
  await tab.keyboard.press('Escape');
  assert.equal(await tab.locator('#detail').isVisible(), false);
  // Closing first gives the focus back to the card that was opened.
  await tab.waitForFunction(() => document.activeElement.querySelector('.name')?.textContent === 'b.svg');
  assert.deepEqual(errors, []);
  await tab.close();
});

test('a tint reaches what an application can tint, and grounds change', async () => {
  const { tab } = await openReport('tint', {
    'plain.svg': bar(10), 'fixed.svg': bar(10).replace('/>', ' fill="#00ff00"/>'),
  }, { options: ['--fill', '#ff00ff'] });
  const colour = (name) => tab.evaluate(async (label) => {
    const icon = data.icons.find((other) => other.label === label);
    const picture = await loadPicture(icon.card.querySelector('img').src);
    return [...pixelsOf(picture, 1, 1)];
  }, name);
  assert.deepEqual(await colour('plain.svg'), [0, 0, 0, 255]);
  await tab.check('#tint');
  assert.deepEqual(await colour('plain.svg'), [255, 0, 255, 255]);
  assert.deepEqual(await colour('fixed.svg'), [0, 255, 0, 255]);
  await tab.selectOption('#ground', 'dark');
  const ground = tab.locator('#icons .ground').first();
  assert.equal(await ground.evaluate((element) => getComputedStyle(element).backgroundColor), 'rgb(28, 28, 30)');
  await tab.close();
});

test('changes are shown, the worst first, and chosen by what became of them', async () => {
  const red = ' fill="#ff0000"';
  const before = writeIcons('before', { 'same.svg': bar(1), 'little.svg': bar(5), 'much.svg': bar(1), 'gone.svg': bar(1) });
  const after = writeIcons('after', { 'same.svg': bar(1), 'little.svg': bar(6), 'much.svg': bar(10), 'new.svg': bar(1, red) });
  const { tab, errors } = await openPage('changes', ['diff', before, after], { exitCode: 1 });
  assert.deepEqual(await names(tab), ['gone.svg', 'new.svg', 'much.svg', 'little.svg']);
  assert.match(await tab.textContent('#summary'), /4 icons, 2 changed, 1 gone, 1 new/);
  assert.match(await tab.locator('#icons .facts').nth(2).textContent(), /changed, difference 57\.38/);
  assert.deepEqual(await tab.locator('#icons li').nth(0).locator('.ground').allTextContents(), ['', 'none']);
  await tab.selectOption('#rule', 'status:changed');
  assert.deepEqual(await names(tab), ['much.svg', 'little.svg']);
  await tab.locator('#icons .card').first().click();
  await tab.selectOption('#mode', 'difference');
  const pixel = (y) => tab.locator('#stage canvas')
    .evaluate((canvas, row) => canvas.getContext('2d').getImageData(5, row, 1, 1).data[0], y);
  assert.deepEqual([await pixel(0), await pixel(5)], [0, 255]);
  assert.deepEqual(errors, []);
  await tab.close();
});

test('hostile names and texts stay text', async () => {
  const hostile = '</script><img src=x onerror="document.title=\'broken\'">';
  const escaped = hostile.replaceAll('<', '&lt;').replaceAll('"', '&quot;');
  const { tab, errors } = await openReport('hostile', {
    '<img src=x onerror=alert(1)>.svg': bar(5),
    'script.svg': bar(5).replace('</svg>', `<script>alert(1)</script><g id="${escaped}"/></svg>`),
    'text.svg': hostile,
  }, { exitCode: 1 });
  assert.equal(await tab.locator('#icons .card').count(), 3);
  assert.equal(await tab.locator('img[src="x"]').count(), 0);
  assert.equal(await tab.title(), 'Icons');
  assert.deepEqual(errors, []);
  await tab.close();
});

for (const colorScheme of ['light', 'dark']) {
  test(`nothing bars people from the page in ${colorScheme} colours`, async () => {
    const { tab } = await openReport(`access-${colorScheme}`, {
      'a.svg': bar(9, ' fill="#ff0000"'), 'b.svg': bar(2), 'c.svg': 'no drawing',
    }, { exitCode: 1, colorScheme });
    await tab.addScriptTag({ content: axe });
    const violations = () => tab.evaluate(async () => (await axe.run()).violations
      .map(({ id, nodes }) => `${id}: ${nodes.map((node) => node.html).join(' ')}`));
    assert.deepEqual(await violations(), []);
    await tab.locator('#icons .card').first().click();
    assert.deepEqual(await violations(), []);
    await tab.close();
  });
}

test('five thousand icons stay usable', async (context) => {
  const icons = {};
  for (let i = 0; i < 5000; ++i) icons[`icon-${i}.svg`] = bar(1 + i % 9, i % 2 ? ' fill="#ff0000"' : '');
  const start = performance.now();
  const { tab } = await openReport('large', icons);
  context.diagnostic(`reported and measured after ${((performance.now() - start) / 1000).toFixed(1)} s`);
  assert.ok(await tab.locator('#icons .card').count() < 300, 'only cards near the window are filled');
  await tab.fill('#name', 'icon-4999.svg');
  await tab.waitForFunction(() => document.querySelectorAll('#icons .name').length === 1);
  await tab.fill('#name', '');
  await tab.evaluate(() => window.scrollTo(0, document.body.scrollHeight));
  await tab.waitForFunction(() => document.querySelector('#icons li:last-child .name'));
  await tab.close();
});
