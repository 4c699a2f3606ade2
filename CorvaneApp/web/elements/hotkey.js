// Hotkeys as the tool stores them ({keyCode, modifiers} with macOS virtual key codes of the ANSI
// layout) and as it reads them typed ("ctrl+opt+k").

const COMMAND = 1;
const OPTION = 2;
const CONTROL = 4;
const SHIFT = 8;

const KEY_CAPS = new Map([
  [0, 'A'], [1, 'S'], [2, 'D'], [3, 'F'], [4, 'H'], [5, 'G'], [6, 'Z'], [7, 'X'], [8, 'C'], [9, 'V'],
  [11, 'B'], [12, 'Q'], [13, 'W'], [14, 'E'], [15, 'R'], [16, 'Y'], [17, 'T'], [18, '1'], [19, '2'],
  [20, '3'], [21, '4'], [22, '6'], [23, '5'], [24, '='], [25, '9'], [26, '7'], [27, '-'], [28, '8'],
  [29, '0'], [30, ']'], [31, 'O'], [32, 'U'], [33, '['], [34, 'I'], [35, 'P'], [36, 'Return'],
  [37, 'L'], [38, 'J'], [39, "'"], [40, 'K'], [41, ';'], [42, '\\'], [43, ','], [44, '/'], [45, 'N'],
  [46, 'M'], [47, '.'], [48, 'Tab'], [49, 'Space'], [51, 'Delete'], [53, 'Escape'], [123, '←'],
  [124, '→'], [125, '↓'], [126, '↑'],
]);

/** "⌃⌥K" for a stored hotkey, in the menu's modifier order; "" for none. */
export function hotkeyLabel(hotkey) {
  if (!hotkey || typeof hotkey.keyCode !== 'number') return '';
  const m = hotkey.modifiers ?? 0;
  return (m & CONTROL ? '⌃' : '') + (m & OPTION ? '⌥' : '') + (m & SHIFT ? '⇧' : '') +
    (m & COMMAND ? '⌘' : '') + (KEY_CAPS.get(hotkey.keyCode) ?? `Key${hotkey.keyCode}`);
}

// KeyboardEvent.code names the physical key, so a recorded hotkey does not depend on the layout,
// as the system's virtual key codes do not.
const CODE_NAMES = {
  Space: 'space', Enter: 'enter', Tab: 'tab', Backspace: 'backspace',
  ArrowLeft: 'left', ArrowRight: 'right', ArrowUp: 'up', ArrowDown: 'down',
  Minus: 'minus', Equal: 'equal', BracketLeft: '[', BracketRight: ']', Semicolon: 'semicolon',
  Quote: 'quote', Comma: 'comma', Period: 'period', Slash: 'slash', Backslash: 'backslash',
};

const CODE_SYMBOLS = {
  space: 'Space', enter: 'Return', tab: 'Tab', backspace: 'Delete', left: '←', right: '→', up: '↑',
  down: '↓', minus: '-', equal: '=', semicolon: ';', quote: "'", comma: ',', period: '.', slash: '/',
  backslash: '\\',
};

/**
 * The typed form of a key press ("ctrl+opt+k") and its label ("⌃⌥K"), or null while only
 * modifiers are down or the key has no place in a global hotkey.
 */
export function hotkeyFromEvent(event) {
  let key = null;
  if (/^Key[A-Z]$/.test(event.code)) key = event.code.slice(3).toLowerCase();
  else if (/^Digit[0-9]$/.test(event.code)) key = event.code.slice(5);
  else key = CODE_NAMES[event.code] ?? null;
  if (!key) return null;
  const names = [];
  let symbols = '';
  if (event.ctrlKey) { names.push('ctrl'); symbols += '⌃'; }
  if (event.altKey) { names.push('opt'); symbols += '⌥'; }
  if (event.shiftKey) { names.push('shift'); symbols += '⇧'; }
  if (event.metaKey) { names.push('cmd'); symbols += '⌘'; }
  if (!event.ctrlKey && !event.altKey && !event.metaKey) return null;
  return { typed: [...names, key].join('+'), label: symbols + (CODE_SYMBOLS[key] ?? key.toUpperCase()) };
}
