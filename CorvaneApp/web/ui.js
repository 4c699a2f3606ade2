// Small builders for the window's controls. Anything that came from a file or a person goes in
// as text (text nodes, textContent, attribute values), never as markup.

let nextId = 0;
export function uniqueId(prefix = 'cv') {
  nextId += 1;
  return `${prefix}-${nextId}`;
}

/** createElement with properties, attributes ("aria-*", "data-*", "role"), listeners ("onclick"). */
export function h(tag, props = {}, ...children) {
  const element = document.createElement(tag);
  for (const [key, value] of Object.entries(props ?? {})) {
    if (value === undefined || value === null || value === false) continue;
    if (key.startsWith('on') && typeof value === 'function') element.addEventListener(key.slice(2), value);
    else if (key === 'class') element.className = value;
    else if (key.includes('-') || key === 'role' || key === 'for') element.setAttribute(key, value === true ? '' : String(value));
    else element[key] = value;
  }
  append(element, children);
  return element;
}

function append(element, children) {
  for (const child of children.flat(Infinity)) {
    if (child === null || child === undefined || child === false) continue;
    element.append(child instanceof Node ? child : document.createTextNode(String(child)));
  }
}

export function group(...rows) {
  return h('div', { class: 'group' }, ...rows);
}

export function section(title, ...content) {
  const id = uniqueId('section');
  return h('section', { 'aria-labelledby': id }, h('h2', { id }, title), ...content);
}

/** A settings row: the title (and an optional description) on the left, controls on the right. */
export function row(title, controls, description) {
  return h('div', { class: 'row' },
    h('div', { class: 'row-label' },
      h('span', { class: 'title' }, title),
      description ? h('span', { class: 'description' }, description) : null),
    h('div', { class: 'row-control' }, controls));
}

export function note(text, problem = false) {
  return h('div', { class: problem ? 'note problem' : 'note', role: problem ? 'alert' : null }, text);
}

export function button(label, onclick, { kind = '', name, disabled = false, title } = {}) {
  return h('button', {
    type: 'button', class: kind, onclick, disabled, title,
    'aria-label': name && name !== label ? name : null,
  }, label);
}

export function toggle(label, checked, onChange) {
  const input = h('input', { type: 'checkbox', role: 'switch', checked: !!checked, 'aria-label': label });
  input.addEventListener('change', async () => {
    input.disabled = true;
    try {
      await onChange(input.checked);
    } catch (error) {
      input.checked = !input.checked;
      reportError(error);
    } finally {
      input.disabled = false;
    }
  });
  return input;
}

/** A pop-up button; `options` is a list of [value, text]. */
export function popup(label, options, value, onChange) {
  const select = h('select', { 'aria-label': label },
    options.map(([optionValue, text]) => h('option', { value: optionValue }, text)));
  select.value = value ?? '';
  let committed = select.value;
  select.addEventListener('change', async () => {
    try {
      await onChange(select.value);
      committed = select.value;
    } catch (error) {
      select.value = committed;
      reportError(error);
    }
  });
  return select;
}

/** A text field that commits on Return or when it loses focus, and only when it changed. */
export function field(label, value, onCommit, { type = 'text', placeholder, width } = {}) {
  const input = h('input', { type, 'aria-label': label, value: value ?? '', placeholder });
  if (width) input.style.width = width;
  let committed = input.value;
  const commit = async () => {
    if (input.value === committed) return;
    try {
      await onCommit(input.value);
      committed = input.value;
    } catch (error) {
      input.value = committed;
      reportError(error);
    }
  };
  input.addEventListener('change', commit);
  input.addEventListener('keydown', (event) => {
    if (event.key === 'Escape' && input.value !== committed) {
      input.value = committed;
      event.stopPropagation();
    }
  });
  return input;
}

/** A slider with its value beside it; saves when the person lets go (or on each arrow key). */
export function slider(label, value, { min, max, step, unit = '' }, onCommit) {
  const input = h('input', { type: 'range', 'aria-label': label, min, max, step, value });
  const output = h('span', { class: 'secondary' });
  const show = () => { output.textContent = `${Number(input.value)}${unit}`; };
  show();
  let committed = input.value;
  input.addEventListener('input', show);
  input.addEventListener('change', async () => {
    try {
      await onCommit(Number(input.value));
      committed = input.value;
    } catch (error) {
      input.value = committed;
      show();
      reportError(error);
    }
  });
  return [input, output];
}

export function announce(text) {
  const announcer = document.getElementById('announcer');
  if (!announcer) return;
  announcer.textContent = '';
  requestAnimationFrame(() => { announcer.textContent = text; });
}

/** Shows a failed call's one line where the page can be seen, and tells assistive tools. */
export function reportError(error) {
  const text = error?.message ?? String(error);
  const page = document.getElementById('page');
  page?.querySelector(':scope > .note.problem.transient')?.remove();
  const banner = note(text, true);
  banner.classList.add('transient');
  page?.prepend(banner);
  if (!(error && 'status' in error)) console.warn(error);
}

/**
 * A modal sheet built on <dialog>: Escape cancels and focus goes back where it was. Resolves to
 * the form's values (an object by field name) when confirmed, or null.
 */
export function sheet({ title, message, fields = [], confirmLabel = 'OK', destructive = false }) {
  return new Promise((resolve) => {
    const previous = document.activeElement;
    const inputs = fields.map((wanted) => {
      const id = uniqueId('field');
      const control = wanted.options
        ? h('select', { id, name: wanted.name }, wanted.options.map(([v, t]) => h('option', { value: v }, t)))
        : h('input', { id, name: wanted.name, type: wanted.type ?? 'text', required: wanted.required, value: wanted.value ?? '' });
      if (wanted.type === 'checkbox') control.checked = !!wanted.value;
      else if (wanted.value !== undefined) control.value = wanted.value;
      return [h('label', { for: id }, wanted.label), control];
    });
    const titleId = uniqueId('sheet');
    const confirm = h('button', { type: 'submit', class: destructive ? 'default destructive-default' : 'default' }, confirmLabel);
    const form = h('form', { method: 'dialog' },
      h('h2', { id: titleId }, title),
      message ? h('p', {}, message) : null,
      inputs.length ? h('div', { class: 'fields' }, inputs) : null,
      h('div', { class: 'buttons' },
        h('button', { type: 'button', onclick: () => finish(null) }, 'Cancel'),
        confirm));
    const dialog = h('dialog', { 'aria-labelledby': titleId }, form);
    let done = false;
    function finish(result) {
      if (done) return;
      done = true;
      dialog.close();
      dialog.remove();
      if (previous && previous.isConnected) previous.focus();
      resolve(result);
    }
    form.addEventListener('submit', (event) => {
      event.preventDefault();
      const values = {};
      for (const wanted of fields) {
        const control = form.elements[wanted.name];
        values[wanted.name] = wanted.type === 'checkbox' ? control.checked : control.value;
      }
      finish(values);
    });
    dialog.addEventListener('cancel', (event) => {
      event.preventDefault();
      finish(null);
    });
    document.body.append(dialog);
    dialog.showModal();
    (form.querySelector('input, select') ?? confirm).focus();
  });
}

export async function confirmAction(title, message, confirmLabel, destructive = true) {
  return (await sheet({ title, message, confirmLabel, destructive })) !== null;
}
