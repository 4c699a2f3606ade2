// The measuring half of bench/window: given the window's address and a number of runs, prints
// the median first paint of the page and the median round trip of a call made from it.
import { createRequire } from 'node:module';

// The browser tests' copy of the test package, from the folder the script runs in.
const { chromium } = createRequire(process.cwd() + '/')('playwright-core');

const [url, runsText] = process.argv.slice(2);
const runs = Number(runsText);
const median = (values) => {
  const sorted = [...values].sort((a, b) => a - b);
  return sorted[Math.floor(sorted.length / 2)];
};

const browser = await chromium.launch({ executablePath: process.env.CORVANE_CHROMIUM });
const page = await browser.newPage();
const paints = [];
for (let i = 0; i <= runs; i++) {
  await page.goto(i === 0 ? url : url.replace('#', '?run=' + i + '#'), { waitUntil: 'load' });
  const paint = await page.evaluate(
    () =>
      new Promise((resolve) => {
        const seen = () => performance.getEntriesByName('first-contentful-paint')[0];
        if (seen()) return resolve(seen().startTime);
        new PerformanceObserver(() => seen() && resolve(seen().startTime)).observe({ type: 'paint', buffered: true });
      })
  );
  if (i > 0) paints.push(paint); // the first load warms the browser up
}

const token = new URL(url).hash.replace('#token=', '');
// Calls from a quiet page of the same origin, so that the window's own calls (its pictures among
// them) do not queue ahead of the measured ones.
await page.goto(new URL('quiet', url).href);
const trips = await page.evaluate(
  async ({ token, runs }) => {
    const call = () =>
      fetch('api/list', {
        method: 'POST',
        headers: { Authorization: 'Bearer ' + token, 'Content-Type': 'application/json' },
        body: '{}',
      }).then((reply) => reply.json());
    await call();
    const times = [];
    for (let i = 0; i < runs; i++) {
      const start = performance.now();
      await call();
      times.push(performance.now() - start);
    }
    return times;
  },
  { token, runs }
);
await browser.close();

// The same calls from outside a browser: the server and the command alone.
const direct = [];
for (let i = 0; i <= runs; i++) {
  const start = performance.now();
  const reply = await fetch(new URL('api/list', url), {
    method: 'POST',
    headers: { Authorization: 'Bearer ' + token, 'Content-Type': 'application/json', Origin: new URL(url).origin },
    body: '{}',
  });
  await reply.json();
  if (i > 0) direct.push(performance.now() - start);
}

console.log(`first contentful paint   ${median(paints).toFixed(1)} ms median over ${paints.length} loads (goal: under 200 ms)`);
console.log(`call round trip (list)   ${median(trips).toFixed(2)} ms median over ${trips.length} calls from the page (goal: under 5 ms)`);
console.log(`                         ${median(direct).toFixed(2)} ms median over ${direct.length} calls without a browser`);
