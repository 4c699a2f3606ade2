import { call, inApp } from '../api.js';
import { h, row, group, section, button, toggle, note, reportError, announce } from '../ui.js';
import { Preferences } from '../settings.js';

// The welcome a first run shows: the Dock becomes the first workspace, the own Dock is offered,
// and each permission is asked for only where the feature that needs it is chosen.
export async function render(root) {
  const [prefs, list] = await Promise.all([Preferences.load(), call('list')]);
  const hasWorkspaces = (list.profiles ?? []).length > 0;
  const step = async (page) => call('prefs/set', { name: 'onboardingPage', value: String(page) }).catch(() => {});

  const seedStatus = h('span', { class: 'description' },
    hasWorkspaces ? `You have ${list.profiles.length} workspace${list.profiles.length === 1 ? '' : 's'} already.` :
      'Your Dock as it is now becomes the first workspace, called "Main".');
  const seed = button('Create First Workspace', async () => {
    try {
      await call('new', { name: 'Main', 'from-dock': true });
      const created = (await call('list')).profiles ?? [];
      const main = created.find((profile) => profile.name === 'Main');
      if (main) await call('activate', { workspace: main.id });
      seedStatus.textContent = 'Made "Main" from your Dock.';
      seed.disabled = true;
      announce('Made the first workspace from your Dock.');
      await step(1);
    } catch (error) {
      reportError(error);
    }
  }, { kind: 'default', disabled: hasWorkspaces });

  const finish = button('Done', async () => {
    try {
      await prefs.set('onboardingVersion', 1);
      await call('prefs/set', { name: 'onboardingPage', value: 'unset' });
      await window.corvane.openPage('workspaces');
    } catch (error) {
      reportError(error);
    }
  }, { kind: 'default' });

  root.append(
    h('div', { class: 'welcome' },
      h('div', { class: 'logo', 'aria-hidden': 'true' }, '▦'),
      h('h1', {}, 'Welcome to Corvane'),
      h('p', { class: 'secondary' }, 'Keep several Docks, one for each thing you do, and switch between them.')),
    section('1. Your first workspace', group(h('div', { class: 'row' },
      h('div', { class: 'row-label' }, h('span', { class: 'title' }, 'Start from your Dock'), seedStatus),
      h('div', { class: 'row-control' }, seed)))),
    section('2. The own Dock', group(
      row('Use Corvane\'s own Dock', toggle('Use Own Dock', prefs.get('usesOwnDock'), async (on) => {
        await prefs.set('usesOwnDock', on);
        await step(2);
      }), 'Themes, magnification and widgets; the macOS Dock hides while it is on.'))),
    section('3. Permissions', group(
      row('Asked when needed', inApp() ? button('Review Permissions', () => window.corvane.openPage('permissions')) : null,
        inApp() ? 'Corvane asks for Accessibility, Focus status and notifications only when a feature you turn on needs them.'
          : 'Not needed on this system.'))),
    h('div', { class: 'footer' }, finish),
  );
}
