import { call } from './api.js';

function sameValue(a, b) {
  return JSON.stringify(a) === JSON.stringify(b);
}

// `prefs set` reads its value as text: objects as JSON, an absent optional as "unset".
function asText(value) {
  if (value === null || value === undefined) return 'unset';
  if (typeof value === 'object') return JSON.stringify(value);
  return String(value);
}

/**
 * The application's settings as `prefs` lists them. A change is saved through `prefs set` first
 * and shown only after the tool took it; an unchanged value saves nothing. Listeners hear
 * "change" with detail {name, value}.
 */
export class Preferences extends EventTarget {
  #values;

  constructor(values) {
    super();
    this.#values = values;
  }

  static async load() {
    return new Preferences(await call('prefs'));
  }

  get(name) {
    return this.#values[name];
  }

  async set(name, value) {
    if (sameValue(this.#values[name], value)) return;
    await call('prefs/set', { name, value: asText(value) });
    this.#values[name] = value;
    this.dispatchEvent(new CustomEvent('change', { detail: { name, value } }));
  }

  /** One key of the own Dock's style; the tool stores the style whole, so it is sent whole. */
  style(key) {
    return this.#values.dockStyle?.[key];
  }

  async setStyle(key, value) {
    const style = { ...(this.#values.dockStyle ?? {}) };
    if (value === null || value === undefined) delete style[key];
    else style[key] = value;
    await this.set('dockStyle', style);
  }
}
