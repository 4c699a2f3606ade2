import { call, inApp } from '../api.js';
import { h, row, group, section, button, toggle, field, reportError, announce } from '../ui.js';
import { Preferences } from '../settings.js';

// The welcome a first run shows: the Dock becomes the first workspace, the own Dock is offered,
// and each permission is asked for only where the feature that needs it is chosen.
export async function render(root) {
  const [prefs, list] = await Promise.all([Preferences.load(), call('list')]);
  const step = async (page) => call('prefs/set', { name: 'onboardingPage', value: String(page) }).catch(() => {});

  // The first start already made a workspace of the Dock as it was; with none, one is made here.
  const first = (list.profiles ?? [])[0];
  const seedStatus = h('span', { class: 'description' }, first
    ? `Your Dock is your first workspace, "${first.name}".`
    : 'Your Dock as it is now becomes the first workspace, called "Main".');
  const seed = first
    ? field('First Workspace Name', first.name, async (name) => {
      if (!name.trim()) throw new Error('A workspace needs a name.');
      await call('rename', { workspace: first.id, name: name.trim() });
      seedStatus.textContent = `Your Dock is your first workspace, "${name.trim()}".`;
      await step(1);
    })
    : button('Create First Workspace', async () => {
      try {
        const made = await call('new', { name: 'Main', 'from-dock': true });
        if (made.id) await call('activate', { workspace: made.id });
        seedStatus.textContent = 'Your Dock is your first workspace, "Main".';
        seed.disabled = true;
        announce('Made the first workspace from your Dock.');
        await step(1);
      } catch (error) {
        reportError(error);
      }
    }, { kind: 'default' });

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
