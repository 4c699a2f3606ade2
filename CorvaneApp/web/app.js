// api.js first: it takes the secret out of the address before the page reads the address.
import { call } from './api.js';
import { h, reportError } from './ui.js';

// The sidebar, in the order System Settings would list them. Icons are plain characters so the
// page carries no images of its own.
const PAGES = [
  { name: 'general', title: 'General', icon: '⚙', colour: '#8e8e93' },
  { name: 'workspaces', title: 'Workspaces', icon: '▦', colour: '#007aff' },
  { name: 'dock', title: 'Own Dock', icon: '▭', colour: '#5856d6' },
  { name: 'themes', title: 'Themes & Icons', icon: '◐', colour: '#ff9500' },
  { name: 'widgets', title: 'Widgets', icon: '◫', colour: '#34c759' },
  { name: 'backups', title: 'Backups', icon: '↺', colour: '#00a5c3' },
  { name: 'permissions', title: 'Permissions', icon: '◉', colour: '#5b6b7d' },
  { name: 'onboarding', title: 'Welcome', icon: '★', colour: '#ff2d55' },
];

const tabs = new Map();
const panel = document.getElementById('page');
let current = null;
let loadCount = 0;

function pageFromHash() {
  const match = /(?:^#|&)page=([a-z]+)/.exec(location.hash);
  return match && PAGES.some((page) => page.name === match[1]) ? match[1] : null;
}

/** The one thing a page opens on, such as a widget's settings: "#page=widgets&item=ID". */
function itemFromHash() {
  const match = /(?:^#|&)item=([0-9A-Za-z-]+)/.exec(location.hash);
  return match ? match[1] : null;
}

function buildSidebar() {
  const list = document.getElementById('pages');
  for (const page of PAGES) {
    const tab = h('button', {
      type: 'button', role: 'tab', id: `tab-${page.name}`, 'aria-controls': 'page',
      'aria-selected': 'false', tabIndex: -1, onclick: () => openPage(page.name),
    }, h('span', { class: 'sidebar-icon', 'aria-hidden': 'true' }, page.icon), page.title);
    tab.querySelector('.sidebar-icon').style.background = page.colour;
    tabs.set(page.name, tab);
    list.append(tab);
  }
  // A roving tab stop: Tab reaches the list once, arrows move within it.
  list.addEventListener('keydown', (event) => {
    const names = PAGES.map((page) => page.name);
    const index = names.indexOf(document.activeElement?.id?.replace('tab-', ''));
    if (index < 0) return;
    let next = null;
    if (event.key === 'ArrowDown') next = (index + 1) % names.length;
    else if (event.key === 'ArrowUp') next = (index - 1 + names.length) % names.length;
    else if (event.key === 'Home') next = 0;
    else if (event.key === 'End') next = names.length - 1;
    if (next === null) return;
    event.preventDefault();
    openPage(names[next]);
    tabs.get(names[next]).focus();
  });
}

/**
 * Shows a page; the app calls this for its menu items and launch requests. "widgets/ID" opens
 * the widgets page on that widget's settings.
 */
export async function openPage(name) {
  const [pageName, item = null] = String(name).split('/');
  const page = PAGES.find((candidate) => candidate.name === pageName) ?? PAGES[0];
  for (const [tabName, tab] of tabs) {
    const selected = tabName === page.name;
    tab.setAttribute('aria-selected', String(selected));
    tab.tabIndex = selected ? 0 : -1;
  }
  panel.setAttribute('aria-labelledby', `tab-${page.name}`);
  current = page.name;
  const hash = item ? `#page=${page.name}&item=${encodeURIComponent(item)}` : `#page=${page.name}`;
  if (location.hash !== hash) history.replaceState(null, '', hash);
  const load = ++loadCount;
  panel.setAttribute('aria-busy', 'true');
  try {
    const module = await import(`./pages/${page.name}.js`);
    if (load !== loadCount) return;
    const content = h('div', { class: 'page-content' });
    panel.replaceChildren(content);
    await module.render(content, { title: page.title, item });
  } catch (error) {
    if (load === loadCount) reportError(error);
  } finally {
    if (load === loadCount) panel.removeAttribute('aria-busy');
  }
}

/** Paths dropped on the window from the Finder: pages that take files say so by listening. */
function droppedPaths(paths) {
  (panel.firstElementChild ?? panel).dispatchEvent(new CustomEvent('corvane-dropped-paths', { bubbles: true, detail: { paths } }));
}

window.corvane = { openPage, droppedPaths, get page() { return current; } };

buildSidebar();
window.addEventListener('hashchange', () => {
  const name = pageFromHash();
  const item = itemFromHash();
  if (name && (name !== current || item)) openPage(item ? `${name}/${item}` : name);
});
/** Until the welcome has been gone through once, the window opens on it. */
async function firstPage() {
  try {
    if (!(await call('prefs')).onboardingVersion) return 'onboarding';
  } catch {
    // The workspaces page says what is wrong with the tool, if anything is.
  }
  return 'workspaces';
}

const start = pageFromHash();
openPage(start ? [start, itemFromHash()].filter(Boolean).join('/') : await firstPage());
