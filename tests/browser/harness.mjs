// Starts `corvane ui` on a throw-away data folder with a copy of the sample Dock, and opens its
// window in headless Chromium.
import { spawn, spawnSync } from 'node:child_process';
import { cpSync, mkdtempSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import path from 'node:path';
import { createInterface } from 'node:readline';
import { fileURLToPath } from 'node:url';
import { chromium } from 'playwright-core';

export const root = path.resolve(path.dirname(fileURLToPath(import.meta.url)), '../..');
export const corvaneBinary = process.env.CORVANE_BIN ?? path.join(root, 'build/CorvaneApp/corvane');
export const chromiumPath = process.env.CORVANE_CHROMIUM ?? '/usr/bin/chromium';

function firstLine(stream) {
  return new Promise((resolve, reject) => {
    const lines = createInterface({ input: stream });
    lines.once('line', (line) => { resolve(line.trim()); lines.close(); });
    lines.once('close', () => reject(new Error('corvane ui printed no URL')));
  });
}

/** Whether this build of the tool has a command ("tiles move"), for tests of newer commands. */
export function toolHas(words) {
  // An unknown subcommand can come back as its parent's help, so the usage line must name it.
  const run = spawnSync(corvaneBinary, [...words.split(' '), '--help'], { encoding: 'utf8' });
  return run.status === 0 && run.stdout.includes(`Usage: corvane ${words} `);
}

/** Whether the help of a command mentions `text` (what older builds lack, like "- for standard input"). */
export function toolHelpSays(words, text) {
  const run = spawnSync(corvaneBinary, [...words.split(' '), '--help'], { encoding: 'utf8' });
  return run.status === 0 && run.stdout.includes(text);
}

/** Whether `preview -o -` writes the picture to standard output (older builds wrote a file "-"). */
export function previewWritesToStdout() {
  const dir = mkdtempSync(path.join(tmpdir(), 'corvane-preview-'));
  try {
    const run = spawnSync(corvaneBinary, ['--data-dir', dir, 'preview', '-o', '-'], { cwd: dir });
    return run.status === 0 && run.stdout.subarray(0, 4).toString('latin1') === '\x89PNG';
  } finally {
    rmSync(dir, { recursive: true, force: true });
  }
}

/** A running `corvane ui` and a page on it; `errors` collects console errors and page faults. */
export async function openWindow({ colorScheme = 'light', page: pageName } = {}) {
  const dataDir = mkdtempSync(path.join(tmpdir(), 'corvane-window-'));
  const dockPlist = path.join(dataDir, 'dock.plist');
  cpSync(path.join(root, 'samples/com.apple.dock.plist'), dockPlist);
  const server = spawn(corvaneBinary, ['--data-dir', path.join(dataDir, 'data'), '--dock-plist', dockPlist, 'ui', '--port', '0'],
    { stdio: ['ignore', 'pipe', 'inherit'] });
  const exited = new Promise((resolve) => server.once('exit', resolve));
  let url;
  try {
    url = await Promise.race([firstLine(server.stdout), exited.then((code) => { throw new Error(`corvane ui exited (${code})`); })]);
  } catch (error) {
    server.kill();
    rmSync(dataDir, { recursive: true, force: true });
    throw error;
  }
  const browser = await chromium.launch({ executablePath: chromiumPath });
  const context = await browser.newContext({ colorScheme, viewport: { width: 960, height: 720 } });
  const page = await context.newPage();
  const errors = [];
  page.on('console', (message) => {
    if (message.type() === 'error') errors.push(`${message.text()} (${message.location().url})`);
  });
  page.on('pageerror', (error) => errors.push(String(error)));
  page.on('dialog', (dialog) => { errors.push(`unexpected ${dialog.type()}: ${dialog.message()}`); dialog.dismiss(); });
  const address = pageName ? url.replace('#', `#page=${pageName}&`) : url;
  await page.goto(address);

  /** Runs the tool itself on the same data, to set things up or check what the page did. */
  async function tool(...args) {
    const child = spawn(corvaneBinary, ['--data-dir', path.join(dataDir, 'data'), '--dock-plist', dockPlist, ...args]);
    let out = '';
    let err = '';
    child.stdout.on('data', (chunk) => { out += chunk; });
    child.stderr.on('data', (chunk) => { err += chunk; });
    const code = await new Promise((resolve) => child.once('exit', resolve));
    if (code !== 0) throw new Error(`corvane ${args.join(' ')}: ${err.trim()}`);
    return args.includes('--json') ? JSON.parse(out) : out;
  }

  async function close() {
    await browser.close();
    server.kill('SIGTERM');
    await exited;
    rmSync(dataDir, { recursive: true, force: true });
  }

  return { page, errors, tool, close, dataDir };
}
