import { call, native, inApp, ApiError } from '../api.js';
import { h, row, group, section, button, popup, field, toggle, note, sheet, confirmAction, reportError, announce } from '../ui.js';
import { hotkeyLabel } from '../elements/hotkey.js';
import '../elements/hotkey-recorder.js';
import { COLOURS, colourSwatch, rebuildKeepingFocus, appIcon, initials } from './common.js';

const OTHER_APPS = [['keep', 'Keep Open'], ['hide', 'Hide'], ['quit', 'Quit']];
const TILE_KINDS = [['app', 'Application'], ['folder', 'Folder'], ['file', 'File'], ['link', 'Link'], ['spacer', 'Spacer']];
const SPACERS = { spacer: 'Spacer', smallSpacer: 'Small Spacer', flexSpacer: 'Flexible Spacer' };

export async function render(root) {
  const state = { selectedId: null, file: null, hotkeys: null, desktops: undefined, tilesMissing: false };
  const list = h('div');
  const detail = h('div');
  root.append(h('h1', {}, 'Workspaces'), list, detail);

  async function load() {
    state.file = await call('list');
    state.hotkeys = await call('hotkeys').catch(() => null);
    const profiles = state.file.profiles ?? [];
    if (!profiles.some((p) => p.id === state.selectedId)) {
      state.selectedId = state.file.activeProfileId ?? profiles[0]?.id ?? null;
    }
  }

  async function refresh() {
    await load();
    await rebuildKeepingFocus(list, buildList);
    await rebuildKeepingFocus(detail, buildDetail);
  }

  async function run(words, body, done) {
    try {
      const reply = await call(words, body);
      if (done) announce(done);
      await refresh();
      return reply;
    } catch (error) {
      reportError(error);
      return null;
    }
  }

  function buildList() {
    const profiles = state.file.profiles ?? [];
    const rows = profiles.map((profile, index) => {
      const active = profile.id === state.file.activeProfileId;
      const selected = profile.id === state.selectedId;
      const select = h('button', {
        type: 'button', class: 'plain', 'aria-pressed': String(selected), 'data-key': `select-${profile.id}`,
        onclick: async () => { state.selectedId = profile.id; await refresh(); },
      }, profile.name);
      return h('div', { class: selected ? 'row selected' : 'row' },
        colourSwatch(profile.color),
        h('div', { class: 'row-label' }, select),
        active ? h('span', { class: 'badge' }, 'Active') : null,
        h('span', { class: 'keys' }, hotkeyLabel(profile.hotkey)),
        h('button', {
          type: 'button', class: 'icon', 'aria-label': `Move ${profile.name} Up`, disabled: index === 0,
          'data-key': `up-${profile.id}`, onclick: () => run('move', { workspace: profile.id, position: index }),
        }, '▲'),
        h('button', {
          type: 'button', class: 'icon', 'aria-label': `Move ${profile.name} Down`, disabled: index === profiles.length - 1,
          'data-key': `down-${profile.id}`, onclick: () => run('move', { workspace: profile.id, position: index + 2 }),
        }, '▼'));
    });
    return [
      section('All Workspaces',
        rows.length ? group(...rows) : group(note('No workspaces yet. Make one, or start with the Dock as it is.'))),
      h('div', { class: 'footer' },
        button('New Workspace', newWorkspace, { kind: 'default' })),
    ];
  }

  async function newWorkspace() {
    const values = await sheet({
      title: 'New Workspace',
      fields: [
        { name: 'name', label: 'Name', required: true },
        { name: 'color', label: 'Colour', options: COLOURS },
        { name: 'fromDock', label: "Start with the Dock's tiles", type: 'checkbox' },
      ],
      confirmLabel: 'Create',
    });
    if (!values || !values.name.trim()) return;
    try {
      const reply = await call('new', { name: values.name.trim(), color: values.color, 'from-dock': values.fromDock });
      state.selectedId = reply.id ?? null;
      announce(`Made "${values.name.trim()}".`);
      await refresh();
      detail.querySelector('input[aria-label="Name"]')?.focus();
    } catch (error) {
      reportError(error);
    }
  }

  async function buildDetail() {
    const profile = (state.file.profiles ?? []).find((p) => p.id === state.selectedId);
    if (!profile) return [];
    const id = profile.id;
    const active = id === state.file.activeProfileId;
    const edit = (body) => call('edit', { workspace: id, ...body }).then(refresh);

    const recorder = h('cv-hotkey-recorder', { label: 'Hotkey', 'data-key': 'hotkey' });
    recorder.keys = hotkeyLabel(profile.hotkey);
    recorder.addEventListener('hotkey-record', (event) => {
      const { typed } = event.detail;
      event.detail.wait.push((typed ? edit({ hotkey: typed }) : edit({ 'no-hotkey': true })).catch((error) => {
        reportError(error);
        throw error;
      }));
    });
    const dropped = (state.hotkeys?.dropped ?? []).filter((entry) => entry.id === id);
    const hotkeyNotes = dropped.map((entry) => note(
      `${entry.keys ?? 'This hotkey'} is not registered: ${entry.reason ?? entry.description ?? 'another hotkey uses it'}.`, true));

    const indicatorColour = h('input', {
      type: 'color', 'aria-label': 'Indicator Colour', value: profile.indicatorColorHex ?? '#007aff',
      disabled: !profile.indicatorColorHex,
    });
    indicatorColour.addEventListener('change', () => edit({ indicator: indicatorColour.value.toUpperCase() }).catch(reportError));

    const rows = [
      row('Name', field('Name', profile.name, async (name) => {
        if (!name.trim()) throw new Error('A workspace needs a name.');
        await call('rename', { workspace: id, name: name.trim() });
        await refresh();
      })),
      row('Colour', [colourSwatch(profile.color), popup('Colour', COLOURS, profile.color, (color) => edit({ color }))]),
      row('Own indicator colour', [
        indicatorColour,
        toggle('Own Indicator Colour', !!profile.indicatorColorHex, (on) =>
          edit(on ? { indicator: indicatorColour.value.toUpperCase() } : { 'no-indicator': true })),
      ], 'Off: the running indicator takes the workspace colour.'),
      row("Other workspaces' apps", popup("Other Workspaces' Apps", OTHER_APPS, profile.otherWorkspaceApps ?? 'keep',
        (value) => edit({ 'other-apps': value })), 'What switching here does to the apps of the other workspaces.'),
      row('Hotkey', [recorder, button('Clear', () => edit({ 'no-hotkey': true }).catch(reportError),
        { name: 'Clear Hotkey', disabled: !profile.hotkey })], 'Click, then press the keys. Delete clears it.'),
      ...hotkeyNotes,
      row('Focus', field('Focus', profile.focusModeBinding ?? '', (value) =>
        edit(value.trim() ? { focus: value.trim() } : { 'no-focus': true }), { placeholder: 'None' }),
      'The Focus that brings this workspace when it turns on.'),
      await desktopRow(profile),
    ];

    const actions = h('div', { class: 'footer' },
      active
        ? button('Capture Dock', () => run('capture', {}, 'Captured the Dock.'), { name: 'Capture Dock into This Workspace' })
        : button('Switch to Workspace', () => run('switch', { workspace: id }, `Switched to "${profile.name}".`)),
      button('Delete Workspace…', async () => {
        if (!await confirmAction(`Delete "${profile.name}"?`, 'Its tiles and settings are removed. A backup is kept.', 'Delete')) return;
        state.selectedId = null;
        await run('delete', { workspace: id }, `Deleted "${profile.name}".`);
        list.querySelector('button.default')?.focus();
      }, { kind: 'destructive' }));

    return [
      section(profile.name, group(...rows), actions),
      await tilesSection(profile),
    ];
  }

  async function desktopRow(profile) {
    if (state.desktops === undefined) {
      state.desktops = await call('desktops').catch((error) => (error instanceof ApiError && error.isMissing ? null : []));
    }
    const bound = profile.desktopUUIDs ?? (profile.desktopUUID ? [profile.desktopUUID] : []);
    if (state.desktops === null) {
      return row('Desktop', h('span', { class: 'secondary' }, bound.length ? bound.join(', ') : 'None'),
        'Choosing a desktop here needs a newer version of the corvane tool.');
    }
    const desktops = Array.isArray(state.desktops) ? state.desktops : (state.desktops.desktops ?? []);
    const options = [['', 'None'], ...desktops.map((desktop) => [desktop.uuid,
      (desktop.number ? `Desktop ${desktop.number}` : desktop.uuid) + (desktop.current ? ' (current)' : '')])];
    for (const uuid of bound) if (!options.some(([value]) => value === uuid)) options.push([uuid, uuid]);
    return row('Desktop', popup('Desktop', options, bound[0] ?? '', async (uuid) => {
      await call(uuid ? 'desktop/bind' : 'desktop/unbind', uuid ? { workspace: profile.id, uuid } : { workspace: profile.id });
      state.desktops = undefined;
      await refresh();
    }), 'Moving to this desktop brings the workspace.');
  }

  async function tilesSection(profile) {
    let tiles = null;
    try {
      const reply = await call('tiles', { workspace: profile.id });
      tiles = Array.isArray(reply) ? reply : reply.tiles ?? [];
      state.tilesMissing = false;
    } catch (error) {
      if (!(error instanceof ApiError && error.isMissing)) throw error;
      state.tilesMissing = true;
      tiles = [...(profile.items ?? []).map((item) => tileFromItem(item, 'apps')),
        ...(profile.others ?? []).map((item) => tileFromItem(item, 'others'))]
        .map((tile, index) => ({ ...tile, index: index + 1 }));
    }
    const editable = !state.tilesMissing;
    const rows = tiles.map((tile) => tileRow(profile, tile, tiles, editable));
    const content = [group(...(rows.length ? rows : [note('No tiles. Add some below, or capture the Dock.')]))];
    if (editable) content.push(addTileForm(profile));
    else content.push(note('Editing tiles here needs a newer version of the corvane tool.'));
    return section(`Tiles of ${profile.name}`, ...content);
  }

  function tileRow(profile, tile, tiles, editable) {
    const label = tileName(tile);
    const sameSection = tiles.filter((other) => other.section === tile.section);
    const first = sameSection[0]?.index === tile.index;
    const last = sameSection.at(-1)?.index === tile.index;
    const move = (to) => run('tiles/move', { workspace: profile.id, from: tile.index, to }, `Moved ${label}.`);
    const icon = tile.kind === 'app' ? appIcon(tile.path, label) : tileGlyph(tile);
    const item = h('div', { class: 'row', 'data-index': tile.index },
      icon,
      h('div', { class: 'row-label' },
        h('span', { class: 'title' }, label),
        h('span', { class: 'description' }, tileDescription(tile))),
      editable ? [
        h('button', { type: 'button', class: 'icon', 'aria-label': `Move ${label} Up`, disabled: first,
          'data-key': `tile-up-${tile.index}`, onclick: () => move(tile.index - 1) }, '▲'),
        h('button', { type: 'button', class: 'icon', 'aria-label': `Move ${label} Down`, disabled: last,
          'data-key': `tile-down-${tile.index}`, onclick: () => move(tile.index + 1) }, '▼'),
        h('button', { type: 'button', class: 'icon', 'aria-label': `Remove ${label}`,
          onclick: () => run('tiles/remove', { workspace: profile.id, index: tile.index }, `Removed ${label}.`) }, '−'),
      ] : null);
    if (editable) makeDraggable(item, profile, tile);
    return item;
  }

  let dragging = null;
  function makeDraggable(item, profile, tile) {
    item.draggable = true;
    item.addEventListener('dragstart', (event) => {
      dragging = tile;
      item.classList.add('dragging');
      event.dataTransfer.effectAllowed = 'move';
      event.dataTransfer.setData('text/plain', String(tile.index));
    });
    item.addEventListener('dragend', () => { dragging = null; item.classList.remove('dragging'); });
    item.addEventListener('dragover', (event) => {
      if (!dragging || dragging.section !== tile.section) return;
      event.preventDefault();
      item.classList.add('drop-target');
    });
    item.addEventListener('dragleave', () => item.classList.remove('drop-target'));
    item.addEventListener('drop', (event) => {
      event.preventDefault();
      item.classList.remove('drop-target');
      if (!dragging || dragging.index === tile.index) return;
      run('tiles/move', { workspace: profile.id, from: dragging.index, to: tile.index });
    });
  }

  function addTileForm(profile) {
    const kind = h('select', { 'aria-label': 'Tile Kind' }, TILE_KINDS.map(([value, text]) => h('option', { value }, text)));
    const where = h('input', { type: 'text', 'aria-label': 'Path or Address', placeholder: '/Applications/Safari.app' });
    const spacer = h('select', { 'aria-label': 'Spacer Kind', hidden: true },
      [['spacer', 'Spacer'], ['small', 'Small'], ['flex', 'Flexible']].map(([value, text]) => h('option', { value }, text)));
    const choose = inApp() ? button('Choose…', async () => {
      const reply = await native('open-panel', { kind: kind.value === 'folder' ? 'folder' : kind.value === 'app' ? 'app' : 'file' });
      if (reply?.paths?.[0]) where.value = reply.paths[0];
    }) : null;
    const placeholders = { app: '/Applications/Safari.app', folder: '~/Downloads', file: '~/Documents/Notes.txt', link: 'https://example.com' };
    kind.addEventListener('change', () => {
      const isSpacer = kind.value === 'spacer';
      where.hidden = isSpacer;
      spacer.hidden = !isSpacer;
      if (choose) choose.hidden = isSpacer || kind.value === 'link';
      where.placeholder = placeholders[kind.value] ?? '';
    });
    const add = async () => {
      const body = { workspace: profile.id };
      if (kind.value === 'spacer') body.spacer = spacer.value;
      else {
        if (!where.value.trim()) { where.focus(); return; }
        body[kind.value] = where.value.trim();
      }
      if (await run('tiles/add', body, 'Added a tile.')) where.value = '';
    };
    where.addEventListener('keydown', (event) => { if (event.key === 'Enter') add(); });
    return h('div', { class: 'footer' }, kind, where, spacer, choose, button('Add Tile', add));
  }

  // Apps, folders and files dropped from the Finder become tiles of the shown workspace.
  root.addEventListener('corvane-dropped-paths', async (event) => {
    if (state.tilesMissing || !state.selectedId) return;
    for (const path of event.detail.paths ?? []) {
      const kind = /\.app\/?$/.test(path) ? 'app' : /\/$/.test(path) ? 'folder' : 'file';
      try {
        await call('tiles/add', { workspace: state.selectedId, [kind]: path });
      } catch (error) {
        reportError(error);
      }
    }
    await refresh();
  });

  await refresh();
}

function tileFromItem(item, section) {
  const [kind, value] = Object.entries(item)[0] ?? ['app', {}];
  const record = value?._0 ?? value ?? {};
  if (kind === 'spacer') {
    const spacerKind = { 'small-spacer-tile': 'smallSpacer', 'flex-spacer-tile': 'flexSpacer' }[record] ?? 'spacer';
    return { section, kind: spacerKind, name: SPACERS[spacerKind] };
  }
  if (kind === 'file') return { section, kind: record.isDirectory ? 'folder' : 'file', name: record.displayName, path: record.path };
  if (kind === 'url') return { section, kind: 'link', name: record.displayName, url: record.url };
  const widget = /^dev\.tessik\.Corvane\.(Widget\.|Slot)/.test(record.bundleIdentifier ?? '');
  return { section, kind: widget ? 'widget' : 'app', name: record.displayName, path: record.path };
}

function tileName(tile) {
  return tile.name || SPACERS[tile.kind] || tile.path?.split('/').filter(Boolean).at(-1) || tile.url || 'Tile';
}

function tileDescription(tile) {
  const kinds = { app: 'Application', folder: 'Folder', file: 'File', link: 'Link', widget: 'Widget place' };
  if (SPACERS[tile.kind]) return 'Spacer';
  return [kinds[tile.kind] ?? tile.kind, tile.path ?? tile.url].filter(Boolean).join(' · ');
}

function tileGlyph(tile) {
  const glyphs = { folder: '▤', file: '▧', link: '↗', widget: '◫', spacer: '', smallSpacer: '', flexSpacer: '↔' };
  const box = h('span', { class: 'tile-icon', 'aria-hidden': 'true' }, glyphs[tile.kind] ?? initials(tile.name));
  if (SPACERS[tile.kind]) box.style.background = 'transparent';
  return box;
}
