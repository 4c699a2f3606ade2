import { call } from '../api.js';
import { h, row, group, section, button, popup, field, note, reportError, announce } from '../ui.js';
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
        .then((reply) => { image.src = reply.image; }, () => { image.alt = `No preview of ${theme.name}`; });
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
