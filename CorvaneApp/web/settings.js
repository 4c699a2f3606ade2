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
  // Writes go one at a time, each built from what the one before left: the style is sent whole,
  // so two quick changes built from the same old style would undo each other.
  #queue = Promise.resolve();

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

  set(name, value) {
    return this.#enqueue(() => this.#write(name, value));
  }

  async #write(name, value) {
    if (sameValue(this.#values[name], value)) return;
    await call('prefs/set', { name, value: asText(value) });
    this.#values[name] = value;
    this.dispatchEvent(new CustomEvent('change', { detail: { name, value } }));
  }

  #enqueue(write) {
    const done = this.#queue.then(write);
    this.#queue = done.catch(() => {});
    return done;
  }

  /** One key of the own Dock's style; the tool stores the style whole, so it is sent whole. */
  style(key) {
    return this.#values.dockStyle?.[key];
  }

  setStyle(key, value) {
    return this.#enqueue(() => {
      const style = { ...(this.#values.dockStyle ?? {}) };
      if (value === null || value === undefined) delete style[key];
      else style[key] = value;
      return this.#write('dockStyle', style);
    });
  }
}
