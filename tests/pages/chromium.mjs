import { createRequire } from 'node:module';
import { join } from 'node:path';

/**
 * Starts Debian's Chromium, or the one that OZMIRA_CHROMIUM names, with a profile of its own. `packages` is a
 * node_modules folder with playwright-core.
 */
export function openBrowser(packages = process.env.OZMIRA_NODE_MODULES) {
  const require = createRequire(join(packages, 'anchor.js'));
  return require('playwright-core').chromium.launch({
    executablePath: process.env.OZMIRA_CHROMIUM ?? '/usr/bin/chromium',
    // No window is seen, so none may rest because it is not.
    args: ['--no-sandbox', '--disable-gpu', '--no-first-run', '--disable-background-networking', '--disable-sync',
      '--disable-component-update', '--disable-renderer-backgrounding', '--disable-backgrounding-occluded-windows'],
  });
}
