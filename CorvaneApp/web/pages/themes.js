import { call } from '../api.js';
import { h, row, group, section, button, popup, field, toggle, slider, note, reportError, announce } from '../ui.js';
import { Preferences } from '../settings.js';

export async function render(root, { title }) {
  const [prefs, themes, packs] = await Promise.all([Preferences.load(), call('themes'), call('icons/packs')]);
  root.append(h('h1', {}, title));

  const cards = new Map();
  function markChosen(id) {
    for (const [themeId, card] of cards) {
      card.setAttribute('aria-current', String(themeId === id));
      card.querySelector('button').disabled = themeId === id;
    }
  }

  function gallery(list) {
    return h('div', { class: 'gallery' }, list.map((theme) => {
      const image = h('img', { alt: `Preview of ${theme.name}` });
      call('preview', { theme: theme.id, size: 32, width: 420, output: '-' })
        .then((reply) => { if (reply.image) image.src = reply.image; else image.alt = `No preview of ${theme.name}`; },
          () => { image.alt = `No preview of ${theme.name}`; });
      const card = h('div', { class: 'card' }, image, h('strong', {}, theme.name),
        button('Use', async () => {
          try {
            await prefs.setStyle('themeID', theme.id);
            markChosen(theme.id);
            announce(`Using ${theme.name}.`);
          } catch (error) {
            reportError(error);
          }
        }, { name: `Use ${theme.name}` }));
      cards.set(theme.id, card);
      return card;
    }));
  }

  const list = Array.isArray(themes) ? themes : themes.themes ?? [];
  root.append(
    section('Themes', gallery(list.filter((theme) => !theme.seasonal))),
    section('Seasonal Themes', gallery(list.filter((theme) => theme.seasonal))),
  );
  const customiser = h('div');
  const chosenTheme = () => list.find((theme) => theme.id === (prefs.style('themeID') ?? 'native')) ?? list[0];
  customiser.append(customisation(prefs, chosenTheme()));
  prefs.addEventListener('change', (event) => {
    if (event.detail.name !== 'dockStyle') return;
    const theme = chosenTheme();
    if (customiser.dataset.theme !== theme.id) customiser.replaceChildren(customisation(prefs, theme));
    customiser.dataset.theme = theme.id;
  });
  customiser.dataset.theme = chosenTheme()?.id ?? '';
  root.append(customiser);
  markChosen(prefs.style('themeID') ?? list.find((theme) => theme.chosen)?.id ?? 'native');

  const packList = Array.isArray(packs) ? packs : packs.packs ?? [];
  const packOptions = [['', 'Original Icons'], ...packList.map((pack) => [pack.id, pack.name ?? pack.id])];
  const chosen = packList.find((pack) => pack.chosen || pack.inUse)?.id ?? '';
  const useForAll = (id) => call('icons/use', id ? { pack: id } : { original: true }).then((reply) => announce(reply.message ?? 'Done.'));

  const appPath = field('Application', '', () => {}, { placeholder: '/Applications/Safari.app', width: '240px' });
  const appPack = h('select', { 'aria-label': 'Icon for the Application' }, packOptions.map(([v, t]) => h('option', { value: v }, t)));
  const answer = h('span', { class: 'description' });
  const apply = button('Apply', async () => {
    const path = appPath.value.trim();
    if (!path) { appPath.focus(); return; }
    try {
      const body = { for: path, ...(appPack.value ? { pack: appPack.value } : { original: true }) };
      const reply = await call('icons/use', body);
      const resolved = await call('icons/resolve', { app: path }).catch(() => null);
      answer.textContent = resolved?.reason ?? resolved?.source ?? reply.message ?? '';
      announce(reply.message ?? 'Done.');
    } catch (error) {
      reportError(error);
    }
  }, { name: 'Apply Icon to the Application' });

  root.append(section('Icon Packs',
    packList.length ? null : note('No icon packs are installed. Put a pack folder with a pack.json into the icon packs folder.'),
    group(
      row('Icons for every app', popup('Icons for Every App', packOptions, chosen, useForAll)),
      h('div', { class: 'row' },
        h('div', { class: 'row-label' }, h('span', { class: 'title' }, 'Icon for one app'), answer),
        h('div', { class: 'row-control' }, appPath, appPack, apply)),
    )));
}

/** Overrides laid over the chosen theme; a field left alone keeps the theme's own value. */
function customisation(prefs, theme) {
  if (!theme) return h('div');
  const image = h('img', { alt: `Preview of ${theme.name} as customised` });
  const redraw = () => call('preview', { theme: theme.id, size: 48, width: 700, output: '-' })
    .then((reply) => { if (reply.image) image.src = reply.image; }, () => {});
  const current = () => ({ ...(prefs.style('themeCustomizations')?.[theme.id] ?? {}) });
  const save = async (key, value) => {
    const custom = current();
    if (value === null) delete custom[key];
    else custom[key] = value;
    const all = { ...(prefs.style('themeCustomizations') ?? {}) };
    if (Object.keys(custom).length) all[theme.id] = custom;
    else delete all[theme.id];
    await prefs.setStyle('themeCustomizations', all);
    await redraw();
  };
  const value = (key) => current()[key] ?? theme[key] ?? theme.background?.[key];
  const colour = (key, label) => {
    const input = h('input', { type: 'color', 'aria-label': label, value: /^#[0-9a-f]{6}$/i.test(value(key) ?? '') ? value(key) : '#888888' });
    input.addEventListener('change', () => save(key, input.value.toUpperCase()).catch(reportError));
    return input;
  };
  const flag = (key, label, themeDefault) => toggle(label, current()[key] ?? themeDefault, (on) => save(key, on));
  redraw();
  return section(`Customise ${theme.name}`,
    group(h('div', { class: 'preview' }, image)),
    group(
      row('Background', [colour('topHex', 'Background Top Colour'), colour('bottomHex', 'Background Bottom Colour')]),
      row('Opacity', slider('Opacity', value('opacity') ?? 1, { min: 0, max: 1, step: 0.05 }, (v) => save('opacity', v))),
      row('Border', [colour('borderHex', 'Border Colour'),
        ...slider('Border Width', value('borderWidth') ?? 0, { min: 0, max: 4, step: 0.5, unit: ' pt' }, (v) => save('borderWidth', v)),
        flag('showsBorder', 'Show Border', (theme.borderWidth ?? 0) > 0)]),
      row('Glow', [colour('glowHex', 'Glow Colour'), flag('showsGlow', 'Show Glow', !!theme.glowHex)]),
      row('Corner rounding', slider('Corner Rounding', value('cornerRadiusScale') ?? 0.4, { min: 0, max: 0.6, step: 0.02 },
        (v) => save('cornerRadiusScale', v))),
      row('Reflections', toggle('Reflections', value('showsReflections') ?? false, (on) => save('showsReflections', on))),
      row('Separator', colour('separatorHex', 'Separator Colour')),
    ),
    h('div', { class: 'footer' }, button('Use Theme As It Comes', async () => {
      const all = { ...(prefs.style('themeCustomizations') ?? {}) };
      delete all[theme.id];
      try {
        await prefs.setStyle('themeCustomizations', all);
        announce(`${theme.name} is back as it comes.`);
        await window.corvane.openPage('themes');
      } catch (error) {
        reportError(error);
      }
    })));
}
