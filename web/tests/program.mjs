// The command line host of the release build, which the tests compare with, and databases that it makes.
import { execFileSync } from 'node:child_process';
import { mkdtempSync, readFileSync, readdirSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { fileURLToPath } from 'node:url';

export const root = fileURLToPath(new URL('../..', import.meta.url));
const program = join(process.env.TAVD_NATIVE ?? `${root}build/release/bin`, 'tavd');

export const tavd = (...args) => execFileSync(program, args, { encoding: 'utf8', maxBuffer: 1 << 28, stdio: ['ignore', 'pipe', 'pipe'] });
export const json = (...args) => JSON.parse(tavd(...args, '--json'));

/** A folder that goes away with the process, and databases in it. */
const folder = mkdtempSync(join(tmpdir(), 'tavd-web-'));
process.on('exit', () => rmSync(folder, { recursive: true, force: true }));

const made = new Map();
function make(name, ...args) {
  if (!made.has(name)) {
    const path = join(folder, `${name}.tavdb`);
    tavd(...args.map((each) => (each === 'PATH' ? path : each)));
    made.set(name, path);
  }
  return made.get(name);
}

export const catalogue = () => make('utf8', 'db', 'build', `${root}catalogue`, '-o', 'PATH');
export function narrowCatalogue() {
  const sources = readdirSync(`${root}catalogue`).filter((name) => name.endsWith('.json') && name !== 'fileheader.json').sort();
  return make('narrow', 'db', 'build', ...sources.map((name) => `${root}catalogue/${name}`), `${root}tests/program/golden/narrow.json`, '-o', 'PATH');
}
export const madeUp = (records) => make(`synth-${records}`, 'db', 'synth', '--records', String(records), 'PATH');

export const bytes = (path) => new Uint8Array(readFileSync(path));

/** Files that are no databases, or are broken ones, each with what it is. */
export function hostileFiles() {
  const good = bytes(catalogue());
  let seed = 18;
  const random = () => (seed = (seed * 1103515245 + 12345) % 2147483648) / 2147483648;
  const scrambled = (from, count) => {
    const copy = good.slice();
    for (let i = 0; i < count; ++i) copy[from + Math.floor(random() * (copy.length - from))] = Math.floor(random() * 256);
    return copy;
  };
  const files = [
    ['an empty file', new Uint8Array(0)],
    ['random bytes', Uint8Array.from({ length: 40000 }, () => Math.floor(random() * 256))],
    ['a text', new TextEncoder().encode('not a database')],
    ['only the header', good.slice(0, 100)],
    ['half of a database', good.slice(0, good.length / 2)],
    ['all but the last page', good.slice(0, good.length - 4096)],
    ['a schema that is none', scrambled(100, 400)],
  ];
  for (let i = 0; i < 10; ++i) files.push([`bytes changed, ${i}`, scrambled(4096, 50 * (i + 1))]);
  const seeds = `${root}fuzz/seeds/databases`;
  for (const name of readdirSync(seeds)) files.push([`seed ${name}`, bytes(join(seeds, name))]);
  return files;
}
