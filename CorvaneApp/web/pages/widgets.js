import { call, ApiError } from '../api.js';
import { h, row, group, section, button, popup, toggle, field, note, confirmAction, reportError, announce } from '../ui.js';
import { rebuildKeepingFocus } from './common.js';

// Every kind the widgets file knows, in the gallery's order, with a sign and one line about it.
const KINDS = [
  ['timer', 'Timer', '◴', 'Counts down from a preset.'],
  ['pomodoro', 'Pomodoro', '◔', 'Focus and break rounds.'],
  ['stopwatch', 'Stopwatch', '◶', 'Counts up, with laps.'],
  ['clock', 'Clock', '◷', 'The time here or elsewhere.'],
  ['countdown', 'Countdown', '◒', 'Days until a date.'],
  ['timeProgress', 'Time Progress', '▰', 'How much of the day or year is gone.'],
  ['calendar', 'Calendar', '▦', 'Your next events.'],
  ['reminders', 'Reminders', '☑', 'Reminders due soon.'],
  ['weather', 'Weather', '☀', 'Now and the next days.'],
  ['claudeUsage', 'Claude Code Usage', '◆', 'Tokens used and the plan limits.'],
  ['github', 'GitHub', '◇', 'Pull requests and contributions.'],
  ['music', 'Music', '♫', 'What is playing.'],
  ['battery', 'Battery', '▮', 'Charge of the Mac and devices.'],
  ['activity', 'Activity', '▲', 'Processor and memory.'],
  ['network', 'Network', '⇅', 'Traffic up and down.'],
  ['note', 'Note', '✎', 'A few lines to keep in sight.'],
  ['shortcut', 'Shortcut', '▶', 'Runs a shortcut.'],
  ['airdrop', 'AirDrop', '◎', 'Drop files to send them.'],
  ['pet', 'Pet', '●', 'A pet that roams the Dock.'],
  ['water', 'Water', '◍', 'Glasses drunk today.'],
  ['colourPicker', 'Colour Picker', '◐', 'Pick a colour from the screen.'],
  ['clipboard', 'Clipboard', '⎘', 'What you copied lately.'],
  ['bookmarks', 'Bookmarks', '★', 'Links at hand.'],
  ['emoji', 'Emoji', '☺', 'Your frequent emoji.'],
  ['screenshots', 'Screenshots', '⬚', 'The latest screenshots.'],
  ['files', 'Files', '▤', 'Recent files.'],
  ['shelf', 'Shelf', '⊟', 'Keep files for a moment.'],
  ['converter', 'Converter', '⇄', 'Units and currencies.'],
  ['fans', 'Fans', '✲', 'Fan speeds and temperatures.'],
  ['keyboardLock', 'Keyboard Lock', '▤', 'Lock the keys to clean them.'],
  ['collection', 'Collection', '⧉', 'Several widgets in one place.'],
];

function kindOf(widget) {
  const kind = widget.kind;
  return typeof kind === 'string' ? kind : Object.keys(kind ?? {})[0] ?? 'unknown';
}

function kindTitle(kind) {
  return KINDS.find(([name]) => name === kind)?.[1] ?? kind;
}

// Field names are the widgets file's keys ("showsApparent"); this turns them into words.
function fieldTitle(key) {
  const words = key.replace(/([a-z0-9])([A-Z])/g, '$1 $2').replace(/Hex$/, ' colour').toLowerCase();
  return words.charAt(0).toUpperCase() + words.slice(1);
}

export async function render(root, { title, item = null }) {
  const state = { widgets: [], profiles: [], openId: item };
  const installed = h('div');
  const detail = h('div');
  // Tiles as the bar draws them, fetched one at a time once the page is up, so that a person's
  // own calls never wait behind a row of pictures. The signs stand in until they come.
  const pictures = [];
  const tilePicture = (body, glyph, className) => {
    const box = h('div', { class: className, 'aria-hidden': 'true' }, glyph);
    pictures.push([box, body]);
    return box;
  };
  const drawTiles = async () => {
    while (pictures.length) {
      const [box, body] = pictures.shift();
      if (!box.isConnected) continue;
      try {
        const reply = await call('widgets/tile', { ...body, size: 96, output: '-' });
        if (reply.image) box.replaceChildren(h('img', { src: reply.image, alt: '' }));
      } catch {
        return; // a tool without tiles keeps the signs
      }
    }
  };
  root.append(h('h1', {}, title), installed, detail, galleryView());

  async function refresh() {
    const [file, list] = await Promise.all([call('widgets'), call('list')]);
    state.widgets = file.widgets ?? [];
    state.profiles = list.profiles ?? [];
    if (!state.widgets.some((w) => w.id === state.openId)) state.openId = null;
    await rebuildKeepingFocus(installed, installedView);
    await rebuildKeepingFocus(detail, detailView);
  }

  function galleryView() {
    return section('Gallery', h('div', { class: 'gallery' }, KINDS.map(([kind, name, glyph, about]) =>
      h('div', { class: 'card' },
        tilePicture({ kind }, glyph, 'glyph'),
        h('strong', {}, name),
        h('span', { class: 'secondary' }, about),
        button('Add', async () => {
          try {
            const reply = await call('widgets/add', { kind });
            state.openId = reply.id ?? null;
            announce(`Added ${name}.`);
            await refresh();
            detail.querySelector('input, select, button')?.focus();
          } catch (error) {
            reportError(error);
          }
        }, { name: `Add ${name}` })))));
  }

  function installedView() {
    if (!state.widgets.length) return section('Your Widgets', group(note('No widgets yet. Add one from the gallery below.')));
    return section('Your Widgets', group(...state.widgets.map((widget) => {
      const shown = (widget.shownIn ?? []).map((id) => state.profiles.find((p) => p.id === id)?.name).filter(Boolean);
      return h('div', { class: widget.id === state.openId ? 'row selected' : 'row' },
        h('span', { class: 'tile-icon', 'aria-hidden': 'true' }, KINDS.find(([k]) => k === kindOf(widget))?.[2] ?? '◫'),
        h('div', { class: 'row-label' },
          h('span', { class: 'title' }, widget.name),
          h('span', { class: 'description' }, `${kindTitle(kindOf(widget))} · ${shown.length ? `in ${shown.join(', ')}` : 'in no workspace'}`)),
        h('button', {
          type: 'button', 'aria-label': `Edit ${widget.name}`, 'aria-pressed': String(widget.id === state.openId),
          'data-key': `edit-${widget.id}`,
          onclick: async () => { state.openId = widget.id === state.openId ? null : widget.id; await refresh(); },
        }, 'Edit…'));
    })));
  }

  async function detailView() {
    const widget = state.widgets.find((w) => w.id === state.openId);
    if (!widget) return [];
    const kind = kindOf(widget);
    let settings = null;
    try {
      settings = await call('widgets/settings', { widget: widget.id });
    } catch (error) {
      if (!(error instanceof ApiError && error.isMissing)) throw error;
    }
    const set = async (body) => {
      await call('widgets/set', { widget: widget.id, ...body });
      await refresh();
    };
    const maxSpan = settings?.maxSpan ?? 4;
    const spans = Array.from({ length: maxSpan }, (_, i) => [String(i + 1), i === 0 ? '1 tile' : `${i + 1} tiles`]);
    const general = [
      row('Name', field('Widget Name', widget.name, (name) => set({ name: name.trim() }))),
      row('Width', popup('Width', spans, String(widget.span ?? 1), (span) => set({ span: Number(span) }))),
    ];
    const fields = settings?.fields ?? Object.values(widget.kind?.[kind] ?? {})[0] ?? {};
    const fieldRows = Object.entries(fields).map(([key, value]) =>
      settings ? fieldRow(key, value, (next) => set({ field: key, value: JSON.stringify(next) }))
        : row(fieldTitle(key), h('span', { class: 'secondary' }, JSON.stringify(value))));

    const shownIn = new Set(widget.shownIn ?? []);
    const placeRows = state.profiles.map((profile) => row(profile.name,
      toggle(`Show in ${profile.name}`, shownIn.has(profile.id), async (on) => {
        await call(on ? 'widgets/show' : 'widgets/hide', { widget: widget.id, in: profile.id });
        await refresh();
      })));

    return section(`${widget.name}`,
      group(...general),
      fieldRows.length ? h('h2', {}, 'Settings') : null,
      fieldRows.length ? group(...fieldRows) : null,
      settings ? null : note('Changing these settings here needs a newer version of the corvane tool.'),
      await connectionView(kind, settings, set),
      h('h2', {}, 'Shown In'),
      group(...(placeRows.length ? placeRows : [note('No workspaces yet.')])),
      stackView(widget),
      h('div', { class: 'footer' },
        button('Remove Widget…', async () => {
          if (!await confirmAction(`Remove "${widget.name}"?`, 'It leaves every workspace too.', 'Remove')) return;
          try {
            await call('widgets/remove', { widget: widget.id });
            announce(`Removed ${widget.name}.`);
            await refresh();
          } catch (error) {
            reportError(error);
          }
        }, { kind: 'destructive' })));
  }

  /**
   * Where the widget is shown, it can share one place with widgets of its width: a stack, whose
   * tile shows one member at a time. Stacking with a widget that is stacked already joins its stack.
   */
  function stackView(widget) {
    const byId = new Map(state.widgets.map((w) => [w.id, w]));
    const names = (ids) => ids.map((id) => byId.get(id)?.name ?? 'a widget of a newer version').join(', ');
    const change = (words, body, done) => async () => {
      try {
        await call(words, body);
        announce(done);
        await refresh();
      } catch (error) {
        reportError(error);
      }
    };
    const rows = state.profiles.filter((profile) => (widget.shownIn ?? []).includes(profile.id)).map((profile) => {
      const stacks = profile.stacks ?? [];
      const own = stacks.find((stack) => stack.members.includes(widget.id));
      if (own) {
        const others = own.members.filter((id) => id !== widget.id);
        return row(profile.name,
          button('Unstack', change('widgets/unstack', { workspace: profile.id, widget: widget.id },
            `Unstacked ${widget.name} in ${profile.name}.`), { name: `Unstack in ${profile.name}` }),
          `Stacked with ${names(others)}.`);
      }
      const partners = state.widgets.filter((other) => other.id !== widget.id &&
        (other.shownIn ?? []).includes(profile.id) && (other.span ?? 1) === (widget.span ?? 1));
      if (!partners.length) return row(profile.name, null, 'No other widget of this width is shown here.');
      const options = [['', 'Not stacked'], ...partners.map((other) => [other.id, other.name])];
      return row(profile.name, popup(`Stack in ${profile.name}`, options, '', async (partner) => {
        if (!partner) return;
        const joined = stacks.find((stack) => stack.members.includes(partner));
        const members = joined ? [...joined.members, widget.id] : [partner, widget.id];
        await change('widgets/stack', { workspace: profile.id, widget: members },
          `Stacked ${widget.name} with ${names(members.filter((id) => id !== widget.id))}.`)();
      }), 'Share one place with another widget of this width.');
    });
    if (!rows.length) return null;
    return [h('h2', {}, 'Stacks'), group(...rows)];
  }

  await refresh();
  drawTiles();
}

/** The editor for one field, picked from the value's type; null (unset) reads as text. */
function fieldRow(key, value, save) {
  const title = fieldTitle(key);
  if (typeof value === 'boolean') return row(title, toggle(title, value, save));
  if (typeof value === 'number') {
    return row(title, field(title, String(value), (text) => {
      const number = Number(text);
      if (text.trim() === '' || Number.isNaN(number)) throw new Error(`${title} takes a number.`);
      return save(number);
    }, { type: 'number' }));
  }
  if (typeof value === 'string' && /Hex$/.test(key) && /^#[0-9a-f]{6}$/i.test(value)) {
    const input = h('input', { type: 'color', 'aria-label': title, value });
    input.addEventListener('change', () => save(input.value.toUpperCase()).catch(reportError));
    return row(title, input);
  }
  if (typeof value === 'string' || value === null) {
    return row(title, field(title, value ?? '', (text) => save(text === '' && value === null ? null : text),
      { placeholder: value === null ? 'None' : undefined }));
  }
  return row(title, field(title, JSON.stringify(value), (text) => {
    let parsed;
    try {
      parsed = JSON.parse(text);
    } catch {
      throw new Error(`${title} takes JSON, like ${JSON.stringify(value)}.`);
    }
    return save(parsed);
  }, { width: '260px' }), 'As JSON.');
}

/** Widgets fed from outside show whether their source is reachable, and how to connect it. */
async function connectionView(kind, settings, set) {
  if (kind === 'claudeUsage') {
    const status = await call('usage/status').catch((error) => ({ message: error.message }));
    const line = h('span', { class: 'description' }, status.message ?? '');
    const act = (words) => async () => {
      try {
        const reply = await call(words);
        line.textContent = reply.message ?? '';
        announce(reply.message ?? 'Done.');
      } catch (error) {
        reportError(error);
      }
    };
    return [h('h2', {}, 'Claude Code'), group(h('div', { class: 'row' },
      h('div', { class: 'row-label' }, h('span', { class: 'title' }, 'Plan limits through the status line'), line),
      h('div', { class: 'row-control' },
        button('Connect', act('usage/connect'), { name: 'Connect Claude Code' }),
        button('Disconnect', act('usage/disconnect'), { name: 'Disconnect Claude Code' }))))];
  }
  if (kind === 'github') {
    const state = await call('github', { limit: 1 }).then(() => 'gh is installed and signed in.', (error) => error.message);
    return [h('h2', {}, 'GitHub'), group(row('GitHub command-line tool', null, state))];
  }
  if (kind === 'weather') return placeSearch(settings?.fields, set);
  return null;
}

/** The weather widget's place: a city looked up by name, one of the places found chosen. */
function placeSearch(fields, set) {
  const current = fields?.cityName
    ?? (fields?.latitude != null ? `${fields.latitude}, ${fields.longitude}` : 'None yet');
  const input = h('input', { type: 'search', 'aria-label': 'City to look up', placeholder: 'City' });
  const found = h('div', { class: 'group', role: 'list', 'aria-label': 'Places found', hidden: true });
  const choose = (place) => async () => {
    const name = [place.name, place.region].filter(Boolean).join(', ');
    try {
      // The position first: until the name follows, the tile shows the new place unnamed
      // rather than the old name over another place's weather.
      await set({ field: 'latitude', value: JSON.stringify(place.latitude) });
      await set({ field: 'longitude', value: JSON.stringify(place.longitude) });
      await set({ field: 'cityName', value: JSON.stringify(name) });
      announce(`The weather now shows ${name}.`);
    } catch (error) {
      reportError(error);
    }
  };
  const search = async () => {
    const city = input.value.trim();
    if (city.length < 2) {
      reportError(new Error('Type at least two letters of the city.'));
      return;
    }
    try {
      const reply = await call('weather', { city, places: true, json: true });
      found.replaceChildren(...reply.places.map((place) => {
        const name = [place.name, place.region].filter(Boolean).join(', ');
        const position = `${place.latitude.toFixed(2)}, ${place.longitude.toFixed(2)}`;
        const line = row(name, button('Use', choose(place), { name: `Use ${name}` }), position);
        line.setAttribute('role', 'listitem');
        return line;
      }));
      found.hidden = false;
    } catch (error) {
      found.hidden = true;
      reportError(error);
    }
  };
  input.addEventListener('keydown', (event) => {
    if (event.key !== 'Enter') return;
    event.preventDefault();
    search();
  });
  return [h('h2', {}, 'Place'),
    group(row('Shown', h('span', { class: 'secondary' }, current)),
      row('Look up a city', h('div', { class: 'row-control' }, input,
        button('Search', search, { name: 'Search for the city' })))),
    found];
}
