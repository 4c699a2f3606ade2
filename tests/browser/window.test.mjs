// Drives Corvane's window through `corvane ui` in headless Chromium. Controls are found by role
// and accessible name, so each test is also a check that a person with a screen reader finds them.
import { test } from 'node:test';
import assert from 'node:assert/strict';
import { openWindow, toolHas, toolHelpSays, previewWritesToStdout } from './harness.mjs';

const PAGES = [['general', 'General'], ['workspaces', 'Workspaces'], ['dock', 'Own Dock'], ['themes', 'Themes & Icons'],
  ['widgets', 'Widgets'], ['backups', 'Backups'], ['permissions', 'Permissions'], ['onboarding', 'Welcome']];

// A command this build of the tool lacks answers 404, which the page turns into a note; the
// browser still logs the failed request.
const realErrors = (errors) => errors.filter((text) => !/status of 404 .*\/api\//.test(text));

async function withWindow(options, body) {
  const window = await openWindow(options);
  try {
    await body(window);
  } finally {
    await window.close();
  }
}

async function settled(page) {
  await page.waitForFunction(() => document.querySelector('[role="tab"][aria-selected="true"]') &&
    !document.getElementById('page').hasAttribute('aria-busy'));
}

async function openPage(page, title) {
  await page.getByRole('tab', { name: title }).click();
  await settled(page);
}

test('every page loads with no console error, and names with markup show as text', async () => {
  await withWindow({}, async ({ page, errors, tool }) => {
    await tool('new', '<img src=x onerror=alert(1)>', '--from-dock');
    await tool('widgets', 'add', 'timer', '--name', '<b>bold</b>');
    await tool('backups', 'take');
    for (const [, title] of PAGES) {
      await openPage(page, title);
      await page.getByRole('heading', { level: 1 }).first().waitFor();
      assert.equal(await page.getByRole('tab', { name: title }).getAttribute('aria-selected'), 'true');
    }
    await openPage(page, 'Workspaces');
    await page.getByRole('button', { name: '<img src=x onerror=alert(1)>', exact: true }).waitFor();
    assert.equal(await page.locator('main img[src="x"]').count(), 0);
    await openPage(page, 'Widgets');
    await page.getByText('<b>bold</b>', { exact: true }).waitFor();
    assert.equal(await page.locator('main b').count(), 0);
    assert.deepEqual(realErrors(errors), []);
  });
});

test('a first run opens on the welcome, which makes the first workspace from the Dock', async () => {
  await withWindow({}, async ({ page, tool }) => {
    await settled(page);
    assert.equal(await page.getByRole('tab', { name: 'Welcome' }).getAttribute('aria-selected'), 'true');
    // The first start already made a workspace of the Dock; the welcome lets it be named.
    const name = page.getByRole('textbox', { name: 'First Workspace Name' });
    await name.fill('Main');
    await name.press('Enter');
    await page.getByText('Your Dock is your first workspace, "Main".').waitFor();
    const file = await tool('list', '--json');
    assert.deepEqual(file.profiles.map((p) => p.name), ['Main']);
    assert.equal(file.activeProfileId, file.profiles[0].id);
    assert.ok(file.profiles[0].items.length > 0);
    await page.getByRole('button', { name: 'Done' }).click();
    await page.getByRole('button', { name: 'Main', exact: true }).waitFor();
    assert.equal((await tool('prefs', '--json')).onboardingVersion, 1);
  });
});

test('a page named in the address opens first, and the secret leaves the address', async () => {
  await withWindow({ page: 'backups' }, async ({ page }) => {
    await settled(page);
    assert.equal(await page.getByRole('tab', { name: 'Backups' }).getAttribute('aria-selected'), 'true');
    assert.doesNotMatch(page.url(), /token=/);
    await page.getByRole('button', { name: 'Back Up Now' }).click();
    await page.getByRole('button', { name: /^Restore Workspaces from / }).first().waitFor();
  });
});

test('create, rename, reorder and delete a workspace', { skip: !toolHas('move') && 'needs corvane move' }, async () => {
  await withWindow({}, async ({ page, tool }) => {
    await tool('new', 'Mail');
    await openPage(page, 'Workspaces');

    await page.getByRole('button', { name: 'New Workspace' }).click();
    const sheet = page.getByRole('dialog', { name: 'New Workspace' });
    await sheet.getByLabel('Name').fill('Studio');
    await sheet.getByLabel('Colour').selectOption('green');
    await sheet.getByRole('button', { name: 'Create' }).click();
    await page.getByRole('button', { name: 'Studio', exact: true }).waitFor();
    let file = await tool('list', '--json');
    assert.deepEqual(file.profiles.map((p) => p.name), ['Default', 'Mail', 'Studio']);
    assert.equal(file.profiles[2].color, 'green');

    // The new workspace opens in the editor below the list.
    await page.getByRole('heading', { name: 'Studio', exact: true }).waitFor();
    const name = page.getByRole('textbox', { name: 'Name' });
    await name.fill('Deep Work');
    await name.press('Enter');
    await page.getByRole('button', { name: 'Deep Work', exact: true }).waitFor();

    await page.getByRole('button', { name: 'Move Deep Work Up' }).click();
    await page.waitForFunction(() => document.querySelectorAll('main .row button.plain')[1]?.textContent === 'Deep Work');
    file = await tool('list', '--json');
    assert.deepEqual(file.profiles.map((p) => p.name), ['Default', 'Deep Work', 'Mail']);

    await page.getByRole('button', { name: 'Delete Workspace…' }).click();
    const confirm = page.getByRole('dialog', { name: 'Delete "Deep Work"?' });
    await confirm.getByRole('button', { name: 'Cancel' }).click();
    assert.equal((await tool('list', '--json')).profiles.length, 3);
    await page.getByRole('button', { name: 'Delete Workspace…' }).click();
    await confirm.getByRole('button', { name: 'Delete' }).click();
    await page.getByRole('button', { name: 'Deep Work', exact: true }).waitFor({ state: 'detached' });
    assert.deepEqual((await tool('list', '--json')).profiles.map((p) => p.name), ['Default', 'Mail']);
  });
});

test("a workspace's tiles can be added, moved and removed", { skip: !toolHas('tiles add') && 'needs corvane tiles' }, async () => {
  await withWindow({}, async ({ page, tool }) => {
    // The first start made the active workspace "Default" of the sample Dock; the page shows it.
    await openPage(page, 'Workspaces');
    await page.getByRole('button', { name: 'Move Safari Up' }).click();
    await page.waitForFunction(() => document.querySelector('main [data-index="1"] .title')?.textContent === 'Safari');
    await page.getByRole('button', { name: 'Remove Safari' }).click();
    await page.getByRole('button', { name: 'Remove Safari' }).waitFor({ state: 'detached' });
    await page.getByRole('combobox', { name: 'Tile Kind' }).selectOption('link');
    await page.getByRole('textbox', { name: 'Path or Address' }).fill('https://example.com/');
    await page.getByRole('button', { name: 'Add Tile' }).click();
    await page.getByRole('button', { name: /^Remove .*example/ }).waitFor();
    const work = (await tool('list', '--json')).profiles[0];
    assert.equal(work.items[0].app._0.displayName, 'Mail');
    assert.ok(!JSON.stringify(work.items).includes('Safari'));
    assert.ok(JSON.stringify(work.others).includes('example.com'));
  });
});

test('recording a hotkey saves it, and a taken one is refused with its reason', async () => {
  await withWindow({}, async ({ page, tool }) => {
    await tool('new', 'Home');
    await tool('edit', 'Home', '--hotkey', 'ctrl+opt+h');
    await openPage(page, 'Workspaces');
    const recorder = page.getByRole('button', { name: /^Hotkey:/ });
    await recorder.click();
    assert.equal(await recorder.getAttribute('aria-pressed'), 'true');
    await page.keyboard.press('Control+Alt+KeyK');
    await page.getByRole('button', { name: 'Hotkey: ⌃⌥K' }).waitFor();
    assert.deepEqual((await tool('list', '--json')).profiles[0].hotkey, { keyCode: 40, modifiers: 6 });

    await page.getByRole('button', { name: 'Hotkey: ⌃⌥K' }).click();
    await page.keyboard.press('Control+Alt+KeyH');
    await page.getByRole('alert').filter({ hasText: 'already used' }).waitFor();
    await page.getByRole('button', { name: 'Hotkey: ⌃⌥K' }).waitFor();
    assert.deepEqual((await tool('list', '--json')).profiles[0].hotkey, { keyCode: 40, modifiers: 6 });
  });
});

test('changing a bar setting redraws the preview', { skip: !previewWritesToStdout() && 'needs corvane preview -o -' }, async () => {
  await withWindow({}, async ({ page, tool }) => {
    await tool('new', 'Work', '--from-dock');
    await tool('switch', 'Work');
    await openPage(page, 'Own Dock');
    const preview = page.getByRole('img', { name: 'Preview of the own Dock' });
    await page.waitForFunction(() => document.querySelector('.preview img')?.src.startsWith('data:image/png'));
    const before = await preview.getAttribute('src');
    await page.getByRole('combobox', { name: 'Position on Screen' }).selectOption('left');
    await page.waitForFunction((old) => document.querySelector('.preview img').src !== old, before);
    const size = async () => preview.evaluate((img) => img.decode().then(() => [img.naturalWidth, img.naturalHeight]));
    const [width, height] = await size();
    assert.ok(height > width, `a bar at the left is upright, not ${width}×${height}`);
    assert.equal((await tool('prefs', '--json')).dockStyle.position, 'left');
  });
});

test('add a widget, edit its settings and show it in a workspace', { skip: !toolHas('widgets set') && 'needs corvane widgets set' }, async () => {
  await withWindow({}, async ({ page, tool }) => {
    await tool('new', 'Work');
    await openPage(page, 'Widgets');
    await page.getByRole('button', { name: 'Add Timer' }).click();
    const name = page.getByRole('textbox', { name: 'Widget Name' });
    await name.fill('Tea');
    await name.press('Enter');
    await page.getByRole('button', { name: 'Edit Tea' }).waitFor();
    const tint = page.getByLabel('Tint colour');
    await tint.evaluate((input) => { input.value = '#112233'; input.dispatchEvent(new Event('change')); });
    await page.getByRole('switch', { name: 'Show in Work' }).check();
    await page.getByText('Timer · in Work').waitFor();
    const [widget] = (await tool('widgets', '--json')).widgets;
    assert.equal(widget.name, 'Tea');
    assert.equal(widget.kind.timer._0.tintHex, '#112233');
    assert.equal(widget.shownIn.length, 1);
  });
});

test("a widget named in the address opens on its settings, and the weather's place is looked up and chosen", async () => {
  await withWindow({}, async ({ page, tool }) => {
    const id = (await tool('widgets', 'add', 'weather')).trim();
    // What the app does for a widget's Edit: the page and the widget, in the address.
    await page.evaluate((widget) => { location.hash = `#page=widgets&item=${widget}`; }, id);
    await settled(page);
    assert.equal(await page.getByRole('textbox', { name: 'Widget Name' }).inputValue(), 'Weather');

    // The search goes to the network; here it answers from the page's side.
    await page.route('**/api/weather', (route) => route.fulfill({
      status: 200, contentType: 'application/json',
      body: JSON.stringify({ places: [
        { name: 'Oslo', region: 'Oslo, Norway', latitude: 59.91273, longitude: 10.74609 },
        { name: 'Oslo', region: 'Minnesota, United States', latitude: 48.19551, longitude: -97.13175 }] }),
    }));
    const city = page.getByRole('searchbox', { name: 'City to look up' });
    await city.fill('Oslo');
    await city.press('Enter');
    await page.getByRole('button', { name: 'Use Oslo, Minnesota, United States' }).click();
    await page.getByText('The weather now shows Oslo, Minnesota, United States.').waitFor({ state: 'attached' });
    const fields = (await tool('widgets', 'settings', id, '--json')).fields;
    assert.deepEqual([fields.cityName, fields.latitude, fields.longitude],
      ['Oslo, Minnesota, United States', 48.19551, -97.13175]);
  });
});

test('two widgets shown in a workspace are stacked and taken apart again', { skip: !toolHas('widgets unstack') && 'needs corvane widgets unstack' }, async () => {
  await withWindow({}, async ({ page, tool }) => {
    await tool('new', 'Work');
    const tea = (await tool('widgets', 'add', 'timer', '--name', 'Tea')).trim();
    await tool('widgets', 'add', 'stopwatch', '--name', 'Laps');
    await tool('widgets', 'show', 'Tea', '--in', 'Work');
    await tool('widgets', 'show', 'Laps', '--in', 'Work');
    await page.evaluate((widget) => { location.hash = `#page=widgets&item=${widget}`; }, tea);
    await settled(page);
    await page.getByRole('combobox', { name: 'Stack in Work' }).selectOption({ label: 'Laps' });
    await page.getByText('Stacked with Laps.').waitFor();
    const work = async () => (await tool('list', '--json')).profiles.find((profile) => profile.name === 'Work');
    const [stack] = (await work()).stacks ?? [];
    assert.equal(stack.members.length, 2);
    assert.equal(stack.members[1], tea);

    await page.getByRole('button', { name: 'Unstack in Work' }).click();
    await page.getByRole('combobox', { name: 'Stack in Work' }).waitFor();
    assert.equal((await work()).stacks, undefined);
  });
});

test('restoring a backup asks first, then puts the workspaces back', async () => {
  await withWindow({}, async ({ page, tool }) => {
    await tool('new', 'Before');
    await tool('backups', 'take');
    await tool('rename', 'Before', 'After');
    await openPage(page, 'Backups');
    const restore = page.getByRole('button', { name: /^Restore Workspaces from / }).first();
    await restore.click();
    await page.getByRole('dialog').getByRole('button', { name: 'Cancel' }).click();
    const names = async () => (await tool('list', '--json')).profiles.map((p) => p.name);
    assert.ok((await names()).includes('After'));
    await restore.click();
    await page.getByRole('dialog').getByRole('button', { name: 'Restore' }).click();
    await page.getByRole('dialog').waitFor({ state: 'detached' });
    await page.waitForFunction(() => !document.querySelector('dialog'));
    assert.ok((await names()).includes('Before'));
    assert.ok(!(await names()).includes('After'));
  });
});

test('export downloads the workspaces as a file that import takes back', async () => {
  await withWindow({ page: 'backups' }, async ({ page, tool }) => {
    await tool('new', 'Travel', '--color', 'orange');
    await settled(page);
    const [download] = await Promise.all([page.waitForEvent('download'),
      page.getByRole('button', { name: 'Export Workspaces' }).click()]);
    const text = await (await download.createReadStream()).toArray().then((chunks) => Buffer.concat(chunks).toString());
    assert.match(text, /"Travel"/);
    if (!toolHelpSays('import', '- for standard input')) return;
    await tool('delete', 'Travel');
    await page.getByLabel('Workspaces File').setInputFiles({ name: 'Workspaces.json', mimeType: 'application/json', buffer: Buffer.from(text) });
    await page.getByRole('status').filter({ hasText: /Travel|[Ii]mported/ }).waitFor({ state: 'attached' });
    assert.deepEqual((await tool('list', '--json')).profiles.map((p) => p.name).sort(), ['Default', 'Default (Imported)', 'Travel']);
  });
});

test('the keyboard alone reaches a page and makes a workspace', async () => {
  await withWindow({ page: 'workspaces' }, async ({ page, tool }) => {
    await settled(page);
    const hasFocus = (locator) => locator.evaluate((element) => element === document.activeElement);
    await page.keyboard.press('Tab');
    assert.ok(await hasFocus(page.getByRole('tab', { name: 'Workspaces' })));
    await page.keyboard.press('ArrowDown');
    await settled(page);
    assert.ok(await hasFocus(page.getByRole('tab', { name: 'Own Dock' })));
    await page.keyboard.press('ArrowUp');
    await settled(page);
    await page.keyboard.press('Tab');
    assert.ok(await hasFocus(page.getByRole('button', { name: 'Default', exact: true })));
    // Its move buttons are disabled, being the only workspace, so they are passed over.
    await page.keyboard.press('Tab');
    const newWorkspace = page.getByRole('button', { name: 'New Workspace' });
    assert.ok(await hasFocus(newWorkspace));
    await page.keyboard.press('Enter');
    await page.keyboard.type('Writing');
    await page.keyboard.press('Enter');
    await page.getByRole('button', { name: 'Writing', exact: true }).waitFor();
    // The new workspace's editor opens with its name field ready for typing.
    await page.waitForFunction(() => document.activeElement?.getAttribute('aria-label') === 'Name');

    // Escape leaves the sheet without making anything, and focus goes back to its button.
    await newWorkspace.focus();
    await page.keyboard.press('Enter');
    await page.getByRole('dialog').waitFor();
    await page.keyboard.press('Escape');
    await page.getByRole('dialog').waitFor({ state: 'detached' });
    assert.ok(await hasFocus(newWorkspace));
    assert.deepEqual((await tool('list', '--json')).profiles.map((p) => p.name), ['Default', 'Writing']);
  });
});
