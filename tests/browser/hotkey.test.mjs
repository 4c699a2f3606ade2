// The hotkey text the window sends must be what the tool parses, and the label what the menu shows.
import { test } from 'node:test';
import assert from 'node:assert/strict';
import { hotkeyFromEvent, hotkeyLabel } from '../../CorvaneApp/web/elements/hotkey.js';

const press = (code, modifiers = {}) => ({ code, ctrlKey: false, altKey: false, shiftKey: false, metaKey: false, ...modifiers });

test('key presses become the typed form and the menu label', () => {
  const cases = [
    [press('KeyK', { ctrlKey: true, altKey: true }), 'ctrl+opt+k', '⌃⌥K'],
    [press('Digit1', { metaKey: true, shiftKey: true }), 'shift+cmd+1', '⇧⌘1'],
    [press('ArrowRight', { ctrlKey: true, altKey: true, shiftKey: true, metaKey: true }), 'ctrl+opt+shift+cmd+right', '⌃⌥⇧⌘→'],
    [press('BracketRight', { altKey: true }), 'opt+]', '⌥]'],
    [press('Space', { ctrlKey: true }), 'ctrl+space', '⌃Space'],
    [press('Slash', { metaKey: true }), 'cmd+slash', '⌘/'],
  ];
  for (const [event, typed, label] of cases) assert.deepEqual(hotkeyFromEvent(event), { typed, label }, typed);
});

test('modifiers alone, shift alone and keys a hotkey cannot use record nothing', () => {
  assert.equal(hotkeyFromEvent(press('ControlLeft', { ctrlKey: true })), null);
  assert.equal(hotkeyFromEvent(press('KeyA', { shiftKey: true })), null);
  assert.equal(hotkeyFromEvent(press('KeyA')), null);
  assert.equal(hotkeyFromEvent(press('F5', { ctrlKey: true })), null);
});

test('stored hotkeys read as the menu shows them, whatever the bit order', () => {
  assert.equal(hotkeyLabel({ keyCode: 40, modifiers: 6 }), '⌃⌥K');
  assert.equal(hotkeyLabel({ keyCode: 18, modifiers: 9 }), '⇧⌘1');
  assert.equal(hotkeyLabel({ keyCode: 124, modifiers: 15 }), '⌃⌥⇧⌘→');
  assert.equal(hotkeyLabel({ keyCode: 200, modifiers: 4 }), '⌃Key200');
  assert.equal(hotkeyLabel(null), '');
});
