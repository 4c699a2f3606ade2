import { h } from '../ui.js';

export async function render(root, { title }) {
  root.append(h('h1', {}, title));
}
