import { call, native, inApp } from '../api.js';
import { h, row, group, section, button, note, confirmAction, reportError, announce } from '../ui.js';
import { rebuildKeepingFocus } from './common.js';

function when(backup) {
  const date = backup.date ? new Date(backup.date) : null;
  if (date && !Number.isNaN(date.getTime())) {
    return date.toLocaleString(undefined, { dateStyle: 'medium', timeStyle: 'short' });
  }
  return backup.id;
}

const REASONS = { manual: 'Taken by hand', launch: 'At launch', quit: 'At quit', switch: 'Before a switch', restore: 'Before a restore' };

export async function render(root, { title }) {
  const lists = h('div');
  root.append(h('h1', {}, title),
    h('div', { class: 'footer' }, button('Back Up Now', async () => {
      try {
        const reply = await call('backups/take');
        announce(reply.message ?? 'Backed up.');
        await refresh();
      } catch (error) {
        reportError(error);
      }
    }, { kind: 'default' })),
    lists,
    transferView());

  async function refresh() {
    await rebuildKeepingFocus(lists, async () => {
      const backups = await call('backups');
      const newestFirst = (items) => [...(items ?? [])].sort((a, b) => String(b.id).localeCompare(String(a.id)));
      const workspaceRows = newestFirst(backups.workspaces).map((backup) => {
        const label = when(backup);
        return row(label, restoreButton(backup.id, `the workspaces as they were ${label}`, `Restore Workspaces from ${label}`),
          REASONS[backup.reason] ?? backup.reason ?? '');
      });
      const dockRows = newestFirst(backups.dock).map((backup) => {
        // Dock backups are named by their moment: dock-2026-11-25T21-38-39.160Z.plist.
        const stamp = /^dock-(\d{4}-\d\d-\d\d)T(\d\d)-(\d\d)-(\d\d(?:\.\d+)?Z)/.exec(backup.id);
        const label = when(backup.date || !stamp ? backup : { date: `${stamp[1]}T${stamp[2]}:${stamp[3]}:${stamp[4]}` });
        return row(label, restoreButton(backup.id, `the Dock as it was ${label}`, `Restore Dock from ${label}`));
      });
      return [
        section('Workspace Backups', group(...(workspaceRows.length ? workspaceRows : [note('No workspace backups yet.')]))),
        section('Dock Backups', group(...(dockRows.length ? dockRows : [note('No Dock backups yet.')]))),
      ];
    });
  }

  function restoreButton(id, what, name) {
    return button('Restore…', async () => {
      if (!await confirmAction(`Restore ${what}?`, 'What is there now is backed up first, so this can be undone.', 'Restore', false)) return;
      try {
        const reply = await call('backups/restore', { backup: id });
        announce(reply.message ?? 'Restored.');
        await refresh();
      } catch (error) {
        reportError(error);
      }
    }, { name, kind: '', title: id });
  }

  // In the app the system's panels pick the file; in a browser the export is downloaded and the
  // import read from a chosen file, both through standard input and output ("-").
  function transferView() {
    const exportButton = button('Export…', async () => {
      try {
        if (inApp()) {
          const file = (await native('save-panel', { name: 'Workspaces.json' }))?.path;
          if (file) announce((await call('export', { file })).message ?? 'Exported.');
          return;
        }
        const exported = await call('export', { file: '-' });
        const link = h('a', { href: URL.createObjectURL(new Blob([JSON.stringify(exported, null, 2)], { type: 'application/json' })), download: 'Workspaces.json' });
        link.click();
        setTimeout(() => URL.revokeObjectURL(link.href), 1000);
        announce('Exported the workspaces.');
      } catch (error) {
        reportError(error);
      }
    }, { name: 'Export Workspaces' });

    const chooser = h('input', { type: 'file', accept: '.json,application/json', hidden: true, 'aria-label': 'Workspaces File' });
    chooser.addEventListener('change', async () => {
      const file = chooser.files?.[0];
      chooser.value = '';
      if (!file) return;
      try {
        announce((await call('import', { file: '-', stdin: await file.text() })).message ?? 'Imported.');
      } catch (error) {
        reportError(error);
      }
    });
    const importButton = button('Import…', async () => {
      if (!inApp()) { chooser.click(); return; }
      try {
        const file = (await native('open-panel', { kind: 'json' }))?.paths?.[0];
        if (file) announce((await call('import', { file })).message ?? 'Imported.');
      } catch (error) {
        reportError(error);
      }
    }, { name: 'Import Workspaces' });
    return section('Export and Import', group(
      row('Export every workspace to a file', exportButton, 'Another Mac can import it.'),
      row('Import workspaces from a file', [chooser, importButton], 'They are added beside the ones here.')));
  }

  await refresh();
}
