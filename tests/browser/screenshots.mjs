// Writes a PNG of every page, light and dark, into the folder given (default: screenshots/).
import { mkdirSync } from 'node:fs';
import path from 'node:path';
import { openWindow } from './harness.mjs';

const pages = ['general', 'workspaces', 'dock', 'themes', 'widgets', 'backups', 'permissions', 'onboarding'];
const out = path.resolve(process.argv[2] ?? 'screenshots');
mkdirSync(out, { recursive: true });

for (const colorScheme of ['light', 'dark']) {
  const window = await openWindow({ colorScheme });
  try {
    await window.tool('new', 'Work', '--from-dock', '--color', 'blue');
    await window.tool('new', 'Home', '--color', 'green');
    await window.tool('widgets', 'add', 'timer');
    await window.tool('switch', 'Work');
    await window.tool('backups', 'take');
    for (const name of pages) {
      await window.page.evaluate((pageName) => window.corvane.openPage(pageName), name);
      await window.page.waitForFunction(() => document.querySelector('[role="tab"][aria-selected="true"]') &&
        !document.getElementById('page').hasAttribute('aria-busy'));
      await window.page.waitForTimeout(300);
      await window.page.screenshot({ path: path.join(out, `${name}-${colorScheme}.png`), fullPage: false });
    }
    if (window.errors.length) console.error(window.errors.join('\n'));
  } finally {
    await window.close();
  }
}
console.log(`Wrote ${pages.length * 2} screenshots to ${out}`);
