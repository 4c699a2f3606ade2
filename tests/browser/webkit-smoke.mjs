// The window's smoke flow in WebKitGTK, the engine family the Mac app shows the pages in, driven
// through WebKitWebDriver's W3C WebDriver protocol with plain HTTP calls: every page opens with
// no error, and a workspace is made through the New Workspace sheet.
//
//   node webkit-smoke.mjs [SCREENSHOT_FOLDER]     (under a display: scripts/test-webkit)
import { spawn } from 'node:child_process';
import { cpSync, mkdtempSync, rmSync, writeFileSync } from 'node:fs';
import { createServer } from 'node:net';
import { tmpdir } from 'node:os';
import path from 'node:path';
import { corvaneBinary, root } from './harness.mjs';

const driverPath = process.env.CORVANE_WEBKIT_DRIVER ?? '/usr/bin/WebKitWebDriver';
const browserPath = process.env.CORVANE_WEBKIT_BROWSER ?? '/usr/lib/x86_64-linux-gnu/webkit2gtk-4.1/MiniBrowser';
const shots = process.argv[2];
const PAGES = [['general', 'General'], ['workspaces', 'Workspaces'], ['dock', 'Own Dock'], ['themes', 'Themes & Icons'],
  ['widgets', 'Widgets'], ['backups', 'Backups'], ['permissions', 'Permissions'], ['onboarding', 'Welcome']];

const freePort = () => new Promise((resolve) => {
  const server = createServer().listen(0, '127.0.0.1', () => {
    const { port } = server.address();
    server.close(() => resolve(port));
  });
});

function firstLine(stream) {
  return new Promise((resolve, reject) => {
    let text = '';
    stream.on('data', (chunk) => {
      text += chunk;
      if (text.includes('\n')) resolve(text.slice(0, text.indexOf('\n')));
    });
    stream.on('end', () => reject(new Error('no address printed')));
  });
}

async function waitFor(what, check, seconds = 20) {
  const end = Date.now() + seconds * 1000;
  for (;;) {
    const value = await check();
    if (value) return value;
    if (Date.now() > end) throw new Error(`timed out waiting for ${what}`);
    await new Promise((resolve) => setTimeout(resolve, 100));
  }
}

const dataDir = mkdtempSync(path.join(tmpdir(), 'corvane-webkit-'));
const dockPlist = path.join(dataDir, 'dock.plist');
cpSync(path.join(root, 'samples/com.apple.dock.plist'), dockPlist);
const base = ['--data-dir', path.join(dataDir, 'data'), '--dock-plist', dockPlist];
const server = spawn(corvaneBinary, [...base, 'ui', '--port', '0'], { stdio: ['ignore', 'pipe', 'inherit'] });
const serverExited = new Promise((resolve) => server.once('exit', resolve));
const driverPort = await freePort();
const driver = spawn(driverPath, [`--port=${driverPort}`], { stdio: 'ignore' });
let session = null;

async function webdriver(method, route, body) {
  const reply = await fetch(`http://127.0.0.1:${driverPort}${route}`, {
    method,
    headers: { 'Content-Type': 'application/json' },
    body: body === undefined ? undefined : JSON.stringify(body),
  });
  const answer = await reply.json();
  if (!reply.ok) throw new Error(`${method} ${route}: ${answer.value?.message ?? reply.status}`);
  return answer.value;
}
const run = (script, ...args) => webdriver('POST', `/session/${session}/execute/sync`, { script, args });
const runAsync = (script, ...args) => webdriver('POST', `/session/${session}/execute/async`, { script, args });

function tool(...args) {
  return new Promise((resolve, reject) => {
    const child = spawn(corvaneBinary, [...base, ...args]);
    let out = '';
    child.stdout.on('data', (chunk) => { out += chunk; });
    child.once('exit', (code) => (code === 0 ? resolve(out) : reject(new Error(`corvane ${args.join(' ')} failed`))));
  });
}

/** The page's state once it has settled: which tab is chosen, its heading, and any problem shown. */
const pageState = () => run(`
  const tab = document.querySelector('[role="tab"][aria-selected="true"]');
  const panel = document.getElementById('page');
  if (!tab || !panel || panel.hasAttribute('aria-busy')) return null;
  return { tab: tab.id.replace('tab-', ''), heading: panel.querySelector('h1')?.textContent ?? '',
           problem: panel.querySelector('.note.problem')?.textContent ?? null,
           errors: window.smokeErrors ?? [] };`);

let failed = false;
try {
  const url = await firstLine(server.stdout);
  await waitFor('WebKitWebDriver', () => fetch(`http://127.0.0.1:${driverPort}/status`).then((r) => r.ok, () => false));
  const created = await webdriver('POST', '/session', {
    capabilities: { alwaysMatch: { 'webkitgtk:browserOptions': { binary: browserPath, args: ['--automation'] } } },
  });
  session = created.sessionId;
  console.log(`WebKitGTK ${created.capabilities.browserVersion}`);

  await webdriver('POST', `/session/${session}/url`, { url });
  await waitFor('the first page', pageState);
  // Errors from here on are collected where the checks can read them.
  await run(`window.smokeErrors = [];
    addEventListener('error', (event) => window.smokeErrors.push(String(event.message)));
    addEventListener('unhandledrejection', (event) => window.smokeErrors.push(String(event.reason)));`);

  for (const [name, title] of PAGES) {
    await run('window.corvane.openPage(arguments[0]);', name);
    const state = await waitFor(`the ${title} page`, async () => {
      const now = await pageState();
      return now && now.tab === name ? now : null;
    });
    if (name === 'dock') {
      // The bar's picture comes from the renderer through a call, and must show in this engine.
      await waitFor('the bar preview', () => run(`const image = document.querySelector('.preview img');
        return !!image && image.complete && image.naturalWidth > 0;`));
      // Decoded and painted, so that the screenshot shows it.
      await runAsync(`const done = arguments[arguments.length - 1];
        document.querySelector('.preview img').decode()
          .then(() => requestAnimationFrame(() => requestAnimationFrame(() => done())), () => done());`);
    }
    const trouble = state.errors.length ? state.errors.join('; ') : state.problem;
    console.log(`${trouble ? 'not ok' : 'ok'} - ${title}${trouble ? `: ${trouble}` : ''}`);
    if (trouble) failed = true;
    if (shots) {
      const png = await webdriver('GET', `/session/${session}/screenshot`);
      writeFileSync(path.join(shots, `webkit-${name}.png`), Buffer.from(png, 'base64'));
    }
  }

  // A workspace made through the sheet, as a person makes one.
  await run('window.corvane.openPage("workspaces");');
  await waitFor('the workspaces page', async () => (await pageState())?.tab === 'workspaces');
  await runAsync(`const done = arguments[arguments.length - 1];
    [...document.querySelectorAll('button')].find((b) => b.textContent === 'New Workspace').click();
    requestAnimationFrame(() => {
      const dialog = document.querySelector('dialog[open]');
      dialog.querySelector('input[name="name"]').value = 'Made in WebKit';
      dialog.querySelector('button[type="submit"]').click();
      done();
    });`);
  const made = await waitFor('the new workspace', async () =>
    JSON.parse(await tool('list', '--json')).profiles.some((profile) => profile.name === 'Made in WebKit'));
  console.log(`${made ? 'ok' : 'not ok'} - a workspace made through the New Workspace sheet`);
  const errors = (await pageState())?.errors ?? [];
  if (errors.length) {
    console.log(`not ok - errors: ${errors.join('; ')}`);
    failed = true;
  }
} catch (error) {
  console.log(`not ok - ${error.message}`);
  failed = true;
} finally {
  if (session) await webdriver('DELETE', `/session/${session}`).catch(() => {});
  driver.kill();
  server.kill('SIGTERM');
  await serverExited; // it takes its quit backup first
  rmSync(dataDir, { recursive: true, force: true });
}
process.exit(failed ? 1 : 0);
