// Every call speaks the tool's command vocabulary: WORDS joined by "/" and a JSON object of
// parameters. Two hosts carry it: the app's web view (a script message handler, no network) and
// `corvane ui` (loopback HTTP with a per-run secret).

const TOKEN_KEY = 'corvane.token';

export class ApiError extends Error {
  constructor(status, message) {
    super(message);
    this.status = status;
  }

  /** The command does not exist in this build of the tool. */
  get isMissing() { return this.status === 404; }
}

function appHandler() {
  return window.webkit?.messageHandlers?.corvane ?? null;
}

/** Inside the Mac app, where native panels and System Settings can be reached. */
export function inApp() {
  return appHandler() !== null;
}

function takeToken() {
  const match = /(?:^#|&)token=([^&]+)/.exec(location.hash);
  if (match) {
    sessionStorage.setItem(TOKEN_KEY, decodeURIComponent(match[1]));
    // The secret should not linger in the address bar, history or a copied link.
    const rest = location.hash.slice(1).split('&').filter((part) => !part.startsWith('token='));
    history.replaceState(null, '', location.pathname + location.search + (rest.length ? '#' + rest.join('&') : ''));
  }
  return sessionStorage.getItem(TOKEN_KEY) ?? '';
}

const token = inApp() ? '' : takeToken();

function parse(status, text) {
  let body = null;
  try {
    body = text ? JSON.parse(text) : {};
  } catch {
    throw new ApiError(status >= 400 ? status : 502, 'The reply could not be read.');
  }
  if (status >= 400) throw new ApiError(status, body?.error ?? `The call failed (${status}).`);
  return body;
}

async function post(words, body) {
  const handler = appHandler();
  if (handler) {
    const reply = await handler.postMessage({ words, body });
    return parse(reply.status, reply.body);
  }
  const response = await fetch('api/' + words, {
    method: 'POST',
    headers: { 'Authorization': `Bearer ${token}`, 'Content-Type': 'application/json' },
    body: JSON.stringify(body),
  });
  return parse(response.status, await response.text());
}

/** Runs one command; rejects with an ApiError carrying the tool's one-line message. */
export function call(words, body = {}) {
  return post(words, body);
}

/** A service only the app has (open and save panels, System Settings); null in a browser. */
export async function native(words, body = {}) {
  if (!inApp()) return null;
  return post('native/' + words, body);
}
