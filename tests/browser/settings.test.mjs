// The settings pages save through `prefs set`, and show only what the tool took.
import { test } from 'node:test';
import assert from 'node:assert/strict';
import { openWindow } from './harness.mjs';

async function withPage(name, body) {
  const window = await openWindow({ page: name });
  try {
    await window.page.waitForFunction(() => document.querySelector('[role="tab"][aria-selected="true"]') &&
      !document.getElementById('page').hasAttribute('aria-busy'));
    await body(window);
  } finally {
    await window.close();
  }
}

async function until(check, what = String(check)) {
  for (let i = 0; i < 300; i++) {
    if (await check()) return;
    await new Promise((resolve) => setTimeout(resolve, 30));
  }
  assert.fail(`never true: ${what}`);
}

test('each switch and pop-up of the own Dock page saves its setting', async () => {
  await withPage('dock', async ({ page, tool }) => {
    const prefs = () => tool('prefs', '--json');
    const cases = [
      ['switch', 'Use Own Dock', false, (p) => p.usesOwnDock],
      ['switch', 'Hide When a Window Covers It', true, (p) => p.hidesDockWhenCovered],
      ['switch', 'Show Trash', false, (p) => p.dockStyle.showsTrash],
      ['switch', 'Window Previews', false, (p) => p.dockStyle.windowPreviews.isEnabled],
      ['combobox', 'Pointer Effect', 'magnify', (p) => p.dockStyle.hoverEffect],
      ['combobox', 'Trash Icon', 'neon', (p) => p.dockStyle.trashIcon],
      ['combobox', 'Hide Automatically', 'true', (p) => String(p.autoHidesDock)],
      ['combobox', 'macOS Dock While the Own Dock Is On', 'hidden', (p) => p.nativeDockMode],
    ];
    for (const [role, name, value, read] of cases) {
      const control = page.getByRole(role, { name, exact: true });
      if (role === 'switch') await control.setChecked(value);
      else await control.selectOption(value);
      await until(async () => read(await prefs()) === value,
        `${name} saves ${value}; shown: ${await page.getByRole('alert').allTextContents()}`);
    }
    // The style is stored whole: the changes above must all still be there together.
    const style = (await prefs()).dockStyle;
    assert.deepEqual([style.showsTrash, style.hoverEffect, style.trashIcon], [false, 'magnify', 'neon']);
  });
});

test('a value that cannot be a setting is reported and the field goes back', async () => {
  await withPage('dock', async ({ page, tool }) => {
    const delay = page.getByRole('spinbutton', { name: 'Reveal Delay' });
    await delay.fill('0.5');
    await delay.press('Enter');
    await until(async () => (await tool('prefs', '--json')).dockRevealDelay === 0.5);
    await delay.fill('-2');
    await delay.press('Enter');
    await page.getByRole('alert').filter({ hasText: 'number of seconds' }).waitFor();
    assert.equal(await delay.inputValue(), '0.5');
    assert.equal((await tool('prefs', '--json')).dockRevealDelay, 0.5);
  });
});

test('General saves the login item and hotkeys, and restores defaults only when confirmed', async () => {
  await withPage('general', async ({ page, tool }) => {
    await page.getByRole('switch', { name: 'Open at Login' }).check();
    await until(async () => (await tool('prefs', '--json')).launchAtLogin === true);

    await page.getByRole('button', { name: /^Next Workspace:/ }).click();
    await page.keyboard.press('Control+Alt+ArrowRight');
    await page.getByRole('button', { name: 'Next Workspace: ⌃⌥→' }).waitFor();
    assert.deepEqual((await tool('prefs', '--json')).nextWorkspaceHotkey, { keyCode: 124, modifiers: 6 });

    await page.getByRole('combobox', { name: 'Numbered Hotkey Modifiers' }).selectOption('5');
    await until(async () => (await tool('prefs', '--json')).workspaceHotkeyModifiers === 5);

    await page.getByRole('button', { name: 'Restore Defaults…' }).click();
    await page.getByRole('dialog').getByRole('button', { name: 'Cancel' }).click();
    assert.equal((await tool('prefs', '--json')).launchAtLogin, true);
    await page.getByRole('button', { name: 'Restore Defaults…' }).click();
    await page.getByRole('dialog').getByRole('button', { name: 'Restore Defaults' }).click();
    await until(async () => (await tool('prefs', '--json')).launchAtLogin === false);
    await page.getByRole('switch', { name: 'Open at Login' }).waitFor();
    assert.equal(await page.getByRole('switch', { name: 'Open at Login' }).isChecked(), false);
  });
});

test('choosing and customising a theme saves it in the Dock style', async () => {
  await withPage('themes', async ({ page, tool }) => {
    await page.getByRole('button', { name: 'Use Midnight' }).click();
    await until(async () => (await tool('prefs', '--json')).dockStyle.themeID === 'midnight');
    await page.getByRole('heading', { name: 'Customise Midnight' }).waitFor();
    assert.equal(await page.getByRole('button', { name: 'Use Midnight' }).isDisabled(), true);
    await page.getByRole('switch', { name: 'Reflections' }).check();
    await until(async () => (await tool('prefs', '--json')).dockStyle.themeCustomizations?.midnight?.showsReflections === true);
    await page.getByRole('button', { name: 'Use Theme As It Comes' }).click();
    await until(async () => !(await tool('prefs', '--json')).dockStyle.themeCustomizations?.midnight);
  });
});

test('permissions are listed with their state, and no System Settings button outside the app', async () => {
  await withPage('permissions', async ({ page }) => {
    for (const name of ['Accessibility', 'Focus', 'Notifications']) await page.getByText(name).first().waitFor();
    assert.equal(await page.getByRole('button', { name: /Open System Settings/ }).count(), 0);
  });
});
