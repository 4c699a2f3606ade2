import { call, ApiError } from '../api.js';
import { h, row, group, section, button, popup, toggle, confirmAction, reportError, announce } from '../ui.js';
import { Preferences } from '../settings.js';
import { hotkeyLabel } from '../elements/hotkey.js';
import '../elements/hotkey-recorder.js';

const MODIFIER_SETS = [['6', '⌃⌥ Control-Option'], ['5', '⌃⌘ Control-Command'], ['3', '⌥⌘ Option-Command'],
  ['7', '⌃⌥⌘ Control-Option-Command'], ['14', '⌃⌥⇧ Control-Option-Shift']];
const MODIFIER_TEXT = { 6: 'ctrl+opt', 5: 'ctrl+cmd', 3: 'opt+cmd', 7: 'ctrl+opt+cmd', 14: 'ctrl+opt+shift' };

export async function render(root, { title }) {
  const prefs = await Preferences.load();
  let version = 'Unknown';
  try {
    const reply = await call('version');
    version = (reply.version ?? reply.message ?? version).trim();
  } catch (error) {
    if (!(error instanceof ApiError)) throw error;
  }

  function hotkeyRow(name, label, description) {
    const recorder = h('cv-hotkey-recorder', { label });
    recorder.keys = hotkeyLabel(prefs.get(name));
    recorder.addEventListener('hotkey-record', (event) => {
      event.detail.wait.push(call('prefs/set', { name, value: event.detail.typed ?? 'none' }).catch((error) => {
        reportError(error);
        throw error;
      }));
    });
    const clear = button('Clear', async () => {
      try {
        await call('prefs/set', { name, value: 'none' });
        recorder.keys = '';
      } catch (error) {
        reportError(error);
      }
    }, { name: `Clear ${label}` });
    return row(label, [recorder, clear], description);
  }

  root.append(
    h('h1', {}, title),
    group(
      row('Open at login', toggle('Open at Login', prefs.get('launchAtLogin'), (on) => prefs.set('launchAtLogin', on))),
      row('Language', h('span', { class: 'secondary' }, 'Same as macOS'),
        'Change it for Corvane in System Settings → General → Language & Region → Applications.'),
    ),
    section('Hotkeys',
      group(
        hotkeyRow('nextWorkspaceHotkey', 'Next Workspace'),
        hotkeyRow('previousWorkspaceHotkey', 'Previous Workspace'),
        hotkeyRow('focusDockHotkey', 'Bring the Dock Forward'),
        row('Numbered workspace hotkeys', [
          popup('Numbered Hotkey Modifiers', MODIFIER_SETS, String(prefs.get('workspaceHotkeyModifiers') ?? 6),
            (value) => call('prefs/set', { name: 'workspaceHotkeyModifiers', value: MODIFIER_TEXT[value] })),
          toggle('Numbered Workspace Hotkeys', prefs.get('numberedWorkspaceHotkeys'), (on) => prefs.set('numberedWorkspaceHotkeys', on)),
        ], 'The modifiers with 1 to 9 bring the workspaces in list order.'),
      )),
    section('Switching',
      group(
        row('Switch workspaces by scrolling on the Dock', toggle('Switch Workspaces by Scrolling on the Dock',
          prefs.get('switchesWorkspaceByGesture'), (on) => prefs.set('switchesWorkspaceByGesture', on))),
        row('Workspace switcher in the Dock', toggle('Workspace Switcher in the Dock',
          prefs.get('showsWorkspaceSwitcherInDock'), (on) => prefs.set('showsWorkspaceSwitcherInDock', on))),
        row("Apps' own Dock menu items", toggle("Apps' Own Dock Menu Items",
          prefs.get('showsAppDockMenuItems'), (on) => prefs.set('showsAppDockMenuItems', on))),
      )),
    section('About',
      group(
        row('Version', h('span', { class: 'secondary' }, version)),
        row('Restore default settings', button('Restore Defaults…', async () => {
          if (!await confirmAction('Restore the default settings?', 'Workspaces, widgets and backups stay as they are.', 'Restore Defaults')) return;
          try {
            await call('prefs/reset');
            announce('Settings restored to their defaults.');
            await window.corvane.openPage('general');
          } catch (error) {
            reportError(error);
          }
        }, { kind: 'destructive' }), 'Every setting goes back to what a new installation has.'),
      )),
  );
}
