import { hotkeyFromEvent } from './hotkey.js';

/**
 * A button that records the next key combination pressed while it is armed. It asks before it
 * changes: a cancelable "hotkey-record" event carries the typed hotkey (detail.typed) and a
 * detail.wait promise list, and the shown keys change only when every listener's promise settles
 * without rejecting. Escape or Tab leaves recording with the old keys; Delete asks to clear.
 */
export class HotkeyRecorder extends HTMLElement {
  static define(tag = 'cv-hotkey-recorder') {
    if (!customElements.get(tag)) customElements.define(tag, this);
  }

  get label() { return this.getAttribute('label') ?? 'Hotkey'; }
  set label(value) { this.setAttribute('label', value); }

  /** The shown keys ("⌃⌥K"); empty for none. */
  get keys() { return this.getAttribute('keys') ?? ''; }
  set keys(value) {
    if (value === this.keys) return;
    if (value) this.setAttribute('keys', value);
    else this.removeAttribute('keys');
    this.#render();
  }

  get recording() { return this.hasAttribute('recording'); }
  set recording(value) {
    this.toggleAttribute('recording', !!value);
    this.#render();
  }

  #button = null;
  #onKeyDown = (event) => this.#keyDown(event);
  #onBlur = () => { this.recording = false; };

  connectedCallback() {
    if (!this.#button) {
      this.#button = document.createElement('button');
      this.#button.type = 'button';
      this.#button.className = 'recorder';
      this.#button.addEventListener('click', () => { this.recording = !this.recording; });
      this.append(this.#button);
    }
    this.#button.addEventListener('keydown', this.#onKeyDown);
    this.#button.addEventListener('blur', this.#onBlur);
    this.#render();
  }

  disconnectedCallback() {
    this.#button?.removeEventListener('keydown', this.#onKeyDown);
    this.#button?.removeEventListener('blur', this.#onBlur);
  }

  focus() { this.#button?.focus(); }

  #render() {
    if (!this.#button) return;
    this.#button.setAttribute('aria-pressed', String(this.recording));
    this.#button.setAttribute('aria-label', `${this.label}: ${this.recording ? 'press the new keys' : (this.keys || 'none')}`);
    this.#button.textContent = this.recording ? 'Type Shortcut…' : (this.keys || 'Record Shortcut');
  }

  async #keyDown(event) {
    if (!this.recording) return;
    if (event.key === 'Tab') { this.recording = false; return; }
    event.preventDefault();
    event.stopPropagation();
    if (event.key === 'Escape') { this.recording = false; return; }
    if ((event.key === 'Backspace' || event.key === 'Delete') && !event.ctrlKey && !event.altKey && !event.metaKey) {
      this.recording = false;
      await this.#ask(null, '');
      return;
    }
    const hotkey = hotkeyFromEvent(event);
    if (!hotkey) return;
    this.recording = false;
    await this.#ask(hotkey.typed, hotkey.label);
  }

  async #ask(typed, label) {
    const wait = [];
    const proceed = this.dispatchEvent(new CustomEvent('hotkey-record', {
      bubbles: true, cancelable: true, detail: { typed, label, wait },
    }));
    if (!proceed) return;
    try {
      await Promise.all(wait);
    } catch {
      return;
    }
    this.keys = label;
    this.dispatchEvent(new CustomEvent('hotkey-change', { bubbles: true, detail: { typed, label } }));
  }
}

HotkeyRecorder.define();
