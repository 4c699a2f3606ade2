import { call, native, inApp, ApiError } from '../api.js';
import { h, row, group, button, note, reportError } from '../ui.js';

// What a Mac asks for, for when the tool cannot say (an older tool): the page still explains.
const KNOWN = [
  { name: 'Accessibility', reason: 'Keeps windows off the own Dock and reads title bars to hide the Dock when covered.', pane: 'accessibility' },
  { name: 'Focus Status', reason: 'Brings the workspace bound to a Focus when it turns on.', pane: 'focus' },
  { name: 'Notifications', reason: 'Timers, pomodoro rounds and water reminders tell you when they are due.', pane: 'notifications' },
];

const STATES = { 'allowed': 'Allowed', 'not allowed': 'Not Allowed', 'not asked': 'Not Asked Yet', 'not needed': 'Not Needed Here', 'unknown': 'Unknown' };

function paneOf(permission) {
  const text = `${permission.pane ?? ''} ${permission.name ?? ''}`.toLowerCase();
  if (text.includes('access')) return 'accessibility';
  if (text.includes('focus')) return 'focus';
  return 'notifications';
}

export async function render(root, { title }) {
  root.append(h('h1', {}, title));
  let permissions = null;
  try {
    const reply = await call('permissions');
    permissions = Array.isArray(reply) ? reply : reply.permissions;
  } catch (error) {
    if (!(error instanceof ApiError && error.isMissing)) throw error;
  }
  if (!permissions) {
    root.append(note('This version of the corvane tool cannot tell the states; on a Mac the app asks when each is first needed.'));
    permissions = KNOWN.map((permission) => ({ ...permission, state: inApp() ? 'unknown' : 'not needed' }));
  }
  root.append(group(...permissions.map((permission) => {
    const state = STATES[permission.state] ?? permission.state ?? '';
    const open = inApp() && permission.state !== 'not needed' && permission.state !== 'allowed'
      ? button('Open System Settings', async () => {
        try {
          await native('open-settings', { pane: paneOf(permission) });
        } catch (error) {
          reportError(error);
        }
      }, { name: `Open System Settings for ${permission.name}` })
      : null;
    return row(permission.name, [h('span', { class: 'secondary' }, state), open], permission.reason);
  })));
}
