// The command line host of the release build, which the tests compare with, and databases that it makes.
import { execFileSync } from 'node:child_process';
import { copyFileSync, mkdtempSync, readFileSync, readdirSync, rmSync, writeFileSync } from 'node:fs';
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

/** A copy of the sample catalogue that something was done to, in SQL. */
function altered(sql) {
  const path = join(folder, 'altered.tavdb');
  rmSync(path, { force: true });
  copyFileSync(catalogue(), path);
  execFileSync('sqlite3', ['-bail', path], { input: sql, stdio: ['pipe', 'ignore', 'inherit'] });
  return bytes(path);
}

/** Numbers from 0 to below 1, the same ones for the same seed. */
function randomNumbers(seed) {
  let state = seed;
  return () => (state = (state * 1103515245 + 12345) % 2147483648) / 2147483648;
}

const attributeHeader = 6; // bytes: the number, the length
const extremes = [0, -0, 1, -1, 1e-38, -1e-38, 3e38, -3e38, NaN, Infinity, -Infinity];

// An attribute as no measurement has it: its numbers extremes, or any bytes, or cut anywhere.
function spoilt(value, random) {
  const copy = Buffer.from(value);
  const way = random();
  if (way < 0.6) {
    for (let at = 0; at + 4 <= copy.length; at += 4) {
      if (random() < 0.2) copy.writeFloatLE(extremes[Math.floor(random() * extremes.length)], at);
    }
    return copy;
  }
  if (way < 0.8) return copy.subarray(0, Math.floor(random() * (copy.length + 1)));
  for (let at = 0; at < copy.length; ++at) if (random() < 0.3) copy[at] = Math.floor(random() * 256);
  return copy;
}

/** The catalogue with a third of its attributes spoilt, in records that are well formed. */
function spoiltRecords(seed) {
  const random = randomNumbers(seed);
  const records = execFileSync('sqlite3', [catalogue(), 'SELECT id, hex(body) FROM record'], { encoding: 'utf8', maxBuffer: 1 << 28 });
  const changes = records.trim().split('\n').map((line) => {
    const [id, hex] = line.split('|');
    const body = Buffer.from(hex, 'hex');
    const parts = [];
    for (let at = 0; at < body.length;) {
      const end = at + attributeHeader + body.readUInt32LE(at + 2);
      const value = random() < 1 / 3 ? spoilt(body.subarray(at + attributeHeader, end), random) : body.subarray(at + attributeHeader, end);
      const header = Buffer.from(body.subarray(at, at + attributeHeader));
      header.writeUInt32LE(value.length, 2);
      parts.push(header, value);
      at = end;
    }
    return `UPDATE record SET body = x'${Buffer.concat(parts).toString('hex')}' WHERE id = ${id};`;
  });
  return altered(`BEGIN; ${changes.join('\n')} COMMIT;`);
}

/**
 * Files that are no databases, or are broken ones: what each is, its bytes, and the reason it is refused with if it must be. The
 * others open or are refused, as it happens.
 */
export function hostileFiles() {
  const good = bytes(catalogue());
  const random = randomNumbers(18);
  const firstPage = 4096;
  const scrambled = (from, to, count) => {
    const copy = good.slice();
    for (let i = 0; i < count; ++i) copy[from + Math.floor(random() * (to - from))] = Math.floor(random() * 256);
    return copy;
  };
  const none = /not a product database/;
  const otherTables = /its tables are not those of a product database/;
  const files = [
    ['an empty file', new Uint8Array(0), none],
    ['a text', new TextEncoder().encode('not a database'), none],
    ['only the header', good.slice(0, 100), /./],
    ['half of a database', good.slice(0, good.length / 2), /./],
    ['all but the last page', good.slice(0, good.length - firstPage), /./],
    ['a schema that is none', scrambled(100, firstPage, 400), /./],
    ['of another program', altered('PRAGMA application_id=1'), none],
    ['of another layout', altered('PRAGMA user_version=2'), /layout 2, this service reads layout 1/],
    ['without a table', altered('DROP TABLE record'), otherTables],
    ['a view for a table', altered("DROP TABLE ahm; CREATE VIEW ahm AS SELECT 1 AS id, x'00' AS key, x'00' AS block"), otherTables],
    ['one column more', altered('ALTER TABLE record ADD COLUMN more BLOB'), otherTables],
    ['an index of its own', altered('CREATE INDEX costly ON record(length(hex(body)))'), otherTables],
    ['records cut in the middle', altered('UPDATE record SET body = substr(body, 1, length(body) / 2)')],
    ['records of nothing', altered("UPDATE record SET body = x''")],
    ['keys of any bytes', altered("UPDATE record SET key = CAST(char(255, 1, 10) AS BLOB) || substr(key, 4) WHERE id % 2 = 0")],
    ['no record at all', altered('DELETE FROM record')],
  ];
  for (const length of [1, 16, 99, 101, 4096, 40000]) {
    files.push([`${length} random bytes`, Uint8Array.from({ length }, () => Math.floor(random() * 256)), none]);
  }
  for (let i = 0; i < 4; ++i) files.push([`bytes changed, ${i}`, scrambled(firstPage, good.length, 100 * (i + 1))]);
  for (let i = 0; i < 4; ++i) files.push([`attributes spoilt, ${i}`, spoiltRecords(i + 1)]);
  const seeds = `${root}fuzz/seeds/databases`;
  for (const name of readdirSync(seeds)) files.push([`seed ${name}`, bytes(join(seeds, name))]);
  return files;
}

/** A product whose texts would do something if they became parts of the page. */
export const markup = '<img src=x onerror="document.title=1">&amp;<script>document.title=2</script>';
export function markedUp() {
  const entries = JSON.parse(readFileSync(`${root}apps/tavd/templates/damper.json`, 'utf8').replace(/\s\/\/.*$|^\/\/.*$/gm, ''));
  Object.assign(entries.at(-1), { code: { default: markup }, description: { English: markup } });
  writeFileSync(join(folder, 'markup.json'), JSON.stringify(entries));
  return make('markup', 'db', 'build', join(folder, 'markup.json'), '-o', 'PATH');
}
