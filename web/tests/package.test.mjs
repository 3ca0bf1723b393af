// The npm package under node beside the command line host of the release build.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { readFileSync, statSync } from 'node:fs';
import { test } from 'node:test';
import { gzipSync } from 'node:zlib';
import { load, TavdError } from '../../build/web/package/index.js';
import { constants, records } from '../../build/web/package/raw.js';
import { bytes, catalogue, hostileFiles, json, madeUp, narrowCatalogue, root, tavd as run } from './program.mjs';

const tavd = await load();
const changes = process.env.TAVD_WEB_FULL === undefined ? 150 : 1000; // of the product

test('numbers and drawings have the bits of the release build, all kinds and shapes', () => {
  const told = execFileSync(`${root}web/tests/bits`, { encoding: 'utf8' });
  assert.match(told, /\n0 of \d{6} results of 31 functions differ\n/);
  assert.match(told, /\n\d{4,5} drawings compared\n/);
});

const inUnits = [['50', '60', ''], ['180m3/h', '0.2in.wg', 'm3/h,Pa'], ['3', '12.5', 'cfm,fpm,inwg']];
for (const [name, database, leastKinds, points] of [
  ['the sample catalogue', catalogue, 6, inUnits], ['made-up products', () => madeUp(60), 5, inUnits.slice(0, 1)],
]) {
  test(`every product of ${name} is calculated as "tavd calc --json" does`, () => {
    tavd.open(bytes(database()));
    let compared = 0;
    const kinds = new Set();
    const byClass = new Map();
    for (const product of tavd.products()) {
      if (product.limits === null) continue;
      kinds.add(product.kind);
      byClass.set(product.class, [...(byClass.get(product.class) ?? []), product.id]);
    }
    for (const [classId, ids] of byClass) {
      for (const [qv, dp, units] of points) {
        for (const id of ids) {
          const args = [database(), classId, id, '--qv', qv, '--dp', dp, ...(units ? ['--units', units] : [])];
          const question = { class: classId, id, qv, dp, units };
          let expected;
          try {
            expected = json('calc', ...args);
          } catch (error) {
            assert.throws(() => tavd.calculate(question), TavdError, `${id}: ${error.stderr}`);
            continue;
          }
          assert.deepEqual(tavd.calculate(question), expected, `${classId} ${id} ${qv} ${dp}`);
          ++compared;
        }
        if (ids.length > 12) break; // starting the program takes longer than the answer
      }
    }
    assert.ok(compared >= 50, `${compared} answers compared`);
    assert.ok(kinds.size >= leastKinds, `kinds ${[...kinds]}`);
  });
}

test('products are listed as "tavd list --json" does', () => {
  tavd.open(bytes(catalogue()));
  const listed = tavd.products().map(({ family, ...product }) => product);
  assert.deepEqual(listed, json('list', catalogue()));
});

test('texts are told in a market and a language', () => {
  tavd.open(bytes(catalogue()), { market: 'RUS', language: 'ru' });
  const listed = tavd.products().map(({ family, ...product }) => product);
  assert.deepEqual(listed, json('list', catalogue(), '--market', 'RUS', '--language', 'ru'));
  assert.throws(() => tavd.setTexts({ market: 'XXX' }), /no market area "XXX"; expected/);
  assert.equal(tavd.products()[1].code, listed[1].code);
});

test('selection is answered as "tavd select --json --explain" does', () => {
  tavd.open(bytes(catalogue()));
  for (const [options, question] of [
    [[], {}],
    [['--max-lp', '30', '--rank', 'size', '--top', '100'], { max_lp: '30', rank: 'size', top: '100' }],
    [['--throw', '1:3', '--class', 'ASD', '--units', 'm3/h,Pa'], { throw: '1:3', class: 'ASD', units: 'm3/h,Pa' }],
    [['--allow-unknown', 'sound throw', '--max-lp', '25', '--throw', '1:'], { allow_unknown: 'sound throw', max_lp: '25', throw: '1:' }],
  ]) {
    const { fitting_text, nearest, ...selected } = tavd.select({ qv: '80', dp: '70', ...question });
    assert.deepEqual(selected, json('select', catalogue(), '--qv', '80', '--dp', '70', '--explain', ...options));
  }
  assert.equal(tavd.select({ qv: '80', dp: '70', max_lp: '30' }).fitting_text, '14 of 66 products fit');
  assert.equal(tavd.selectAsCsv({ qv: '80', dp: '70' }), run('select', catalogue(), '--qv', '80', '--dp', '70', '--csv'));
});

// A line of cases.txt: class, id, setting, database, command and its options.
function goldenCases() {
  const words = (line) => [...line.matchAll(/"([^"]*)"|(\S+)/g)].map((match) => match[1] ?? match[2]);
  return readFileSync(`${root}tests/program/golden/cases.txt`, 'utf8')
    .split('\n')
    .filter((line) => line !== '' && !line.startsWith('#'))
    .map((line) => {
      const [classId, id, setting, database, command, ...options] = words(line);
      return { classId, id, setting, database, command, options };
    });
}

test('drawings equal the golden recordings, operation by operation', () => {
  const members = { '--qv': 'qv', '--dp': 'dp', '--units': 'units', '--title': 'title', '--value': 'value', '--unit': 'unit' };
  const methods = { diagram: 'flowDiagram', throw: 'throwDiagram', picture: 'sketch' };
  const databases = { utf8: bytes(catalogue()), narrow: bytes(narrowCatalogue()) };
  let compared = 0;
  let opened = '';
  for (const { classId, id, setting, database, command, options } of goldenCases()) {
    const size = command === 'picture' ? '500x840' : '1200x900';
    const question = { class: classId, id, size, form: 'txt', parameters: [] };
    const texts = {};
    let known = methods[command] !== undefined;
    for (let i = 0; i < options.length; ++i) {
      const option = options[i];
      if (option === '--static') question.static = true;
      else if (option === '--params') question.parameters.push(...options[++i].split(','));
      else if (option === '--param') question.parameters.push(options[++i]);
      else if (option === '--market') texts.market = options[++i];
      else if (option === '--language') texts.language = options[++i];
      else if (members[option] !== undefined) question[members[option]] = options[++i];
      else known = false; // what the page has no use for
    }
    if (!known) continue;
    const wanted = `${database} ${JSON.stringify(texts)}`;
    if (wanted !== opened) tavd.open(databases[database], texts);
    opened = wanted;
    const file = `${root}tests/program/golden/recordings/${classId}/${id.replaceAll('*', 'any').replaceAll('/', '_')}.${setting}.txt`;
    assert.equal(tavd[methods[command]](question).picture, readFileSync(file, 'utf8'), `${classId} ${id} ${setting}`);
    ++compared;
  }
  assert.ok(compared > 180, `${compared} drawings compared`);
});

test('a drawing is an SVG with its texts as texts, and says what it does not show', () => {
  tavd.open(bytes(catalogue()));
  const { picture, description, unmarked } = tavd.flowDiagram({ class: 'DMP', id: 'QZDA-160', qv: '500', dp: '60' });
  assert.match(picture, /^<\?xml[^]*<text [^>]*>QZDA-160<\/text>[^]*<\/svg>\n$/);
  assert.match(description, /\S/);
  assert.match(unmarked, /500 l\/s and 60 Pa not marked: the flow axis is 16 - 160 l\/s/);
});

test('functions of the C interface answer through the module', () => {
  const { raw } = tavd;
  const flow = raw._malloc(records.FlowData.size);
  const classId = raw._malloc(64);
  raw.stringToUTF8('DMP', classId, 8);
  raw.stringToUTF8('QZDA-160', classId + 8, 32);
  tavd.open(bytes(catalogue()));
  raw.FS.writeFile('/raw.tavdb', bytes(catalogue()));
  const path = raw._malloc(32);
  raw.stringToUTF8('/raw.tavdb', path, 32);
  const db = raw._tavdf_open_database(path, 0);
  const record = raw._tavbfindrec(db, classId, classId + 8, constants.TAVB_FIND_EXACT);
  assert.equal(raw._tavca_load_flowdata(db, record, flow), 0);
  const view = new DataView(raw.HEAPU8.buffer, flow, records.FlowData.size);
  assert.equal(view.getInt16(records.FlowData.fields.kind.offset, true), constants.TAVD_KIND_DAMPER);
  assert.equal(raw._tavca_damper_pos(flow, 50, 60, path), 0);
  const expected = json('calc', catalogue(), 'DMP', 'QZDA-160', '--qv', '50', '--dp', '60').position_stepless.position;
  assert.equal(raw.HEAPF32[path / 4], Math.fround(expected));
  raw._tavbreleaserec(record);
  assert.equal(raw._tavdsrv_closedatabase(db), 0);
  for (const address of [flow, classId, path]) raw._free(address);
});

test('what is no number, no product or no question is told', () => {
  tavd.open(bytes(catalogue()));
  assert.throws(() => tavd.calculate({ class: 'DMP', id: 'QZDA-160', qv: 'x' }), { name: 'TavdError', message: 'flow is "x", expected a number above 0 such as 50 or 12.5' });
  assert.throws(() => tavd.calculate({ class: 'DMP', id: 'QZDA-161', qv: '5' }), /no product "QZDA-161" of class "DMP".*near it: QZDA-160/);
  assert.throws(() => tavd.calculate({ class: 'DMP', id: 5, qv: '5' }), /id is not as expected: a text/);
  assert.throws(() => tavd.select({ qv: '80', dp: '' }), /a pressure is needed/);
});

test('hostile files are refused or read, and the module goes on', () => {
  tavd.open(bytes(catalogue()));
  let answered = 0;
  // Every question about a product is answered, or refused with a reason.
  const ask = (name, question) => {
    try {
      question();
      ++answered;
    } catch (error) {
      assert.ok(error instanceof TavdError, `${name}: ${error.stack}`);
      assert.doesNotMatch(error.message, /\/databases\//, name);
    }
  };
  for (const [name, content, refusal] of hostileFiles()) {
    if (refusal !== undefined) {
      assert.throws(() => tavd.open(content), (error) => error instanceof TavdError && refusal.test(error.message), name);
      continue;
    }
    ask(name, () => {
      tavd.open(content);
      for (const { class: classId, id } of tavd.products()) {
        const point = { class: classId, id, qv: '50', dp: '60' };
        ask(name, () => tavd.product(point));
        ask(name, () => tavd.calculate(point));
        ask(name, () => tavd.flowDiagram(point));
        ask(name, () => tavd.throwDiagram({ class: classId, id, qv: '50' }));
        ask(name, () => tavd.sketch(point));
      }
      tavd.select({ qv: '50', dp: '60' });
    });
  }
  assert.ok(answered > 1000, `${answered} answers`);
  tavd.open(bytes(catalogue()));
  assert.equal(tavd.products().length, 90);
});

test('memory does not grow with the number of products shown', () => {
  tavd.open(bytes(catalogue()));
  const products = tavd.products().filter(({ limits }) => limits !== null);
  const show = ({ class: classId, id }) => {
    const point = { class: classId, id, qv: '50', dp: '60' };
    tavd.product(point);
    tavd.calculate(point);
    tavd.flowDiagram(point);
  };
  products.forEach(show);
  const before = tavd.raw.HEAPU8.length;
  for (let i = 0; i < changes; ++i) show(products[i % products.length]);
  console.log(`# ${changes} changes: ${before} bytes, then ${tavd.raw.HEAPU8.length}`);
  assert.equal(tavd.raw.HEAPU8.length, before);
});

test('the module takes less than 1.5 MB compressed', () => {
  const wasm = readFileSync(`${root}build/web/package/tavd.wasm`);
  assert.ok(gzipSync(wasm, { level: 9 }).length < 1.5e6, `${statSync(`${root}build/web/package/tavd.wasm`).size} bytes`);
});
