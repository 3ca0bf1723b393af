// A real browser for the tests: Debian's chromium, and the page as scripts/web has built it.
import { chromium } from 'playwright-core';
import { fileURLToPath } from 'node:url';
import { serve } from '../serve.mjs';

export const root = fileURLToPath(new URL('../..', import.meta.url));

const flags = [
  '--no-sandbox', '--disable-gpu', '--disable-quic', '--no-first-run', '--disable-background-networking',
  '--disable-component-update', '--disable-sync', '--enable-precise-memory-info', '--js-flags=--expose-gc',
];

export async function start() {
  const server = await serve(`${root}build/web/site`, 0);
  const browser = await chromium.launch({ executablePath: '/usr/bin/chromium', args: flags });
  const address = `http://localhost:${server.address().port}/`;
  return { browser, server, address, stop: async () => { await browser.close(); server.close(); } };
}

/** What the page said that it should not: errors, refusals of the policy, requests to elsewhere. */
export function watch(page, address) {
  const faults = [];
  page.on('pageerror', (error) => faults.push(`error: ${error.message}`));
  page.on('console', (message) => { if (['error', 'warning'].includes(message.type())) faults.push(`${message.type()}: ${message.text()}`); });
  page.on('request', (request) => { if (!request.url().startsWith(address) && !/^(blob|data):/.test(request.url())) faults.push(`elsewhere: ${request.url()}`); });
  // A page that is left or loaded anew breaks off what it was fetching.
  page.on('requestfailed', (request) => { if (request.failure()?.errorText !== 'net::ERR_ABORTED') faults.push(`failed: ${request.url()}`); });
  return faults;
}

/** Nothing is left to be done. */
export const settled = (page) => page.waitForFunction(() => document.documentElement.dataset.busy === 'false');

export const shown = (page) => page.waitForSelector('.product[data-generation] .diagram svg');
