// The measuring half of bench/window: given the window's address and a number of runs, prints
// the median first paint of the page and the median round trip of a call made from it.
import { chromium } from 'playwright-core';

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

// What the last load brought: the page and every file it asked for (its calls are not files).
const weight = await page.evaluate(() =>
  performance
    .getEntriesByType('resource')
    .filter((entry) => !new URL(entry.name).pathname.includes('/api/'))
    .reduce((sum, entry) => sum + entry.encodedBodySize, performance.getEntriesByType('navigation')[0].encodedBodySize)
);

const token = new URL(url).hash.replace('#token=', '');
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

console.log(`first contentful paint   ${median(paints).toFixed(1)} ms median over ${paints.length} loads (goal: under 200 ms)`);
console.log(`call round trip (list)   ${median(trips).toFixed(2)} ms median over ${trips.length} calls (goal: under 5 ms)`);
console.log(`page weight              ${(weight / 1024).toFixed(1)} KB (goal: under 200 KB)`);
