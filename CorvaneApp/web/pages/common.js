import { call, ApiError } from '../api.js';
import { h, note } from '../ui.js';

export const COLOURS = [
  ['blue', 'Blue'], ['pink', 'Pink'], ['orange', 'Orange'],
  ['green', 'Green'], ['purple', 'Purple'], ['graphite', 'Graphite'],
];

export function colourSwatch(colour) {
  const swatch = h('span', { class: 'swatch', 'aria-hidden': 'true' });
  swatch.style.background = `var(--workspace-${COLOURS.some(([c]) => c === colour) ? colour : 'graphite'})`;
  return swatch;
}

/**
 * Runs a read that an older tool may not have; null and a note in `where` when it is missing, so
 * the rest of the page still works.
 */
export async function optionalRead(words, body, where, what) {
  try {
    return await call(words, body);
  } catch (error) {
    if (!(error instanceof ApiError) || !error.isMissing) throw error;
    where?.append(note(`${what} need a newer version of the corvane tool.`));
    return null;
  }
}

/** Rebuilds `container` with `build()` and puts focus back on the control that had it. */
export async function rebuildKeepingFocus(container, build) {
  const key = document.activeElement?.closest?.('[data-key]')?.dataset.key;
  const content = await build();
  container.replaceChildren(...[content].flat());
  if (key) container.querySelector(`[data-key="${CSS.escape(key)}"]`)?.focus();
}

/** The first letters of a name, for a tile that has no picture. */
export function initials(name) {
  return (name ?? '?').trim().slice(0, 1).toUpperCase() || '?';
}

const icons = new Map();
let iconsMissing = false;

/** An application's icon through the tool, cached per path; a lettered square when none. */
export function appIcon(path, name) {
  const box = h('span', { class: 'tile-icon', 'aria-hidden': 'true' }, initials(name));
  if (!path || iconsMissing) return box;
  if (!icons.has(path)) {
    icons.set(path, call('icon', { app: path, size: 56, output: '-' }).then((reply) => reply.image ?? null, (error) => {
      if (error instanceof ApiError && error.isMissing) iconsMissing = true;
      return null;
    }));
  }
  icons.get(path).then((image) => {
    if (!image) return;
    box.replaceChildren(h('img', { src: image, alt: '' }));
    box.style.background = 'none';
  });
  return box;
}
