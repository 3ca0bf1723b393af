// The page: sources in page/, what is shipped in build/web/site/.
import { readFileSync, readdirSync, writeFileSync } from 'node:fs';
import { createHash } from 'node:crypto';
import { fileURLToPath } from 'node:url';
import { join, relative } from 'node:path';
import { defineConfig } from 'vite';

const here = fileURLToPath(new URL('.', import.meta.url));
const built = join(here, '../build/web');
const site = join(built, 'site');

// All that the page is made of, for the worker that keeps it for visits without a network.
function offline() {
  return {
    name: 'offline',
    closeBundle() {
      const files = readdirSync(site, { recursive: true, withFileTypes: true })
        .filter((entry) => entry.isFile() && entry.name !== 'offline.js')
        .map((entry) => relative(site, join(entry.parentPath ?? entry.path, entry.name)))
        .sort();
      const hash = createHash('sha256');
      for (const file of files) hash.update(file).update(readFileSync(join(site, file)));
      const source = readFileSync(join(here, 'page/offline.js'), 'utf8');
      writeFileSync(
        join(site, 'offline.js'),
        source.replace('__VERSION__', hash.digest('hex').slice(0, 16)).replace('__FILES__', JSON.stringify(['./', ...files])),
      );
    },
  };
}

export default defineConfig({
  root: join(here, 'page'),
  base: './',
  publicDir: join(built, 'public'),
  clearScreen: false,
  logLevel: 'warn',
  resolve: {
    alias: [
      { find: 'tavd/worker', replacement: join(built, 'package/worker.js') },
      { find: /^tavd$/, replacement: join(built, 'package/index.js') },
    ],
  },
  worker: { format: 'es' },
  build: { outDir: site, emptyOutDir: true, target: 'es2022', assetsInlineLimit: 0, modulePreload: { polyfill: false } },
  plugins: [offline()],
});
