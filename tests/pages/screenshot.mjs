// Takes the picture of a page that the documentation shows:
//
//   node tests/pages/screenshot.mjs PAGE PICTURE
//
// The environment is that of report_test.mjs.
import { pathToFileURL } from 'node:url';
import { openBrowser } from './chromium.mjs';

const [page, picture] = process.argv.slice(2);
const browser = await openBrowser();
const tab = await browser.newPage({ viewport: { width: 900, height: 560 }, colorScheme: 'light' });
await tab.goto(pathToFileURL(page).href);
await tab.waitForSelector('body[data-measured]');
await tab.screenshot({ path: picture });
await browser.close();
