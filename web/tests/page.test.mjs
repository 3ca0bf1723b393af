// The page in Debian's chromium: every feature by clicks and keys, its numbers beside those of the command line host. With
// TAVD_WEB_PICTURES=FOLDER the pictures of the documents are left there.
import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { after, before, test } from 'node:test';
import { createRequire } from 'node:module';
import { join } from 'node:path';
import { start, watch } from './browser.mjs';
import { catalogue, hostileFiles, json, madeUp, tavd } from './program.mjs';

const axe = createRequire(import.meta.url).resolve('axe-core');
const pictures = process.env.TAVD_WEB_PICTURES;
const looks = process.env.TAVD_WEB_LOOKS; // a folder for pictures to look at, in all sizes
const changes = Number(process.env.TAVD_WEB_CHANGES ?? 1000);

let world;
before(async () => { world = await start(); });
after(() => world.stop());

// A page that is told so shows what it does, and nothing went wrong at its end.
async function withPage(query, look, options = {}) {
  const context = await world.browser.newContext({ viewport: { width: 1280, height: 900 }, acceptDownloads: true, ...options });
  const page = await context.newPage();
  const faults = watch(page, world.address);
  try {
    await page.goto(world.address + query);
    await page.waitForSelector('[data-generation]');
    await look(page, context);
    assert.deepEqual(faults, []);
  } finally {
    await context.close();
  }
}

const settled = (page) => page.waitForFunction(() => document.documentElement.dataset.busy === 'false');

const answersOn = (page) => page.$$eval('.results [data-answer]', (cells) =>
  Object.fromEntries(cells.map((cell) => [cell.dataset.answer, cell.dataset.value])));

// The numbers on the page, in full, are those of "tavd calc --json".
async function assertNumbers(page, classId, id, args) {
  await settled(page);
  const expected = json('calc', catalogue(), classId, id, ...args);
  const answers = await answersOn(page);
  const pressure = (object, name) => Object.entries(object ?? {}).find(([key]) => key.startsWith(name))?.[1];
  const wanted = {
    dp_min: pressure(expected.pressure_range, 'dp_min_'), dp_max: pressure(expected.pressure_range, 'dp_max_'),
    position_stepless: expected.position_stepless?.position, position_stepped: expected.position_stepped?.position,
    room_level_dBA: expected.sound?.room_level_dBA, lw_dBA: expected.sound?.lw_dBA, throw_length_m: expected.throw_length_m,
    dp_total: pressure(expected.fan, 'dp_total_'), dp_static: pressure(expected.fan, 'dp_static_'),
  };
  expected.sound?.lw_dB?.forEach((level, band) => { wanted[`lw_${band}`] = level; });
  expected.attenuation_dB?.forEach((level, band) => { wanted[`attenuation_${band}`] = level; });
  let compared = 0;
  for (const [name, value] of Object.entries(wanted)) {
    if (value === undefined) continue;
    assert.equal(Number(answers[name]), value, `${id} ${name}`);
    ++compared;
  }
  assert.ok(compared >= 2, `${id}: ${compared} numbers`);
}

test('the page shows a product at once, and its numbers are those of tavd calc', async () => {
  await withPage('?class=DMP&id=QZDA-160&qv=50&dp=60', async (page) => {
    const paint = await page.evaluate(() => performance.getEntriesByName('first-contentful-paint')[0].startTime);
    assert.ok(paint < 1000, `first paint after ${paint} ms`);
    await assertNumbers(page, 'DMP', 'QZDA-160', ['--qv', '50', '--dp', '60']);
    assert.equal(await page.locator('.figure.flow svg text', { hasText: 'QZDA-160' }).count(), 1);
  });
  for (const [classId, id, qv, dp] of [['FAN', 'QZFA-160', '60', '100'], ['ASD', 'QZSA-160', '60', '40'], ['CCB', 'QZKA-1800', '30', '100']]) {
    await withPage(`?class=${classId}&id=${id}&qv=${qv}&dp=${dp}`, (page) => assertNumbers(page, classId, id, ['--qv', qv, '--dp', dp]));
  }
});

test('flow and pressure are typed, slid, and moved by arrow keys; the address follows', async () => {
  await withPage('?class=DMP&id=QZDA-160&qv=50&dp=60', async (page) => {
    await page.getByLabel('Flow', { exact: true }).fill('72.5');
    await page.getByLabel('Total pressure', { exact: true }).fill('41');
    await assertNumbers(page, 'DMP', 'QZDA-160', ['--qv', '72.5', '--dp', '41']);
    await page.getByLabel('Flow, slider').focus();
    await page.keyboard.press('ArrowRight');
    await settled(page);
    assert.notEqual(await page.getByLabel('Flow', { exact: true }).inputValue(), '72.5');
    await page.locator('.diagram.draggable').focus();
    const before = Number(await page.getByLabel('Total pressure', { exact: true }).inputValue());
    await page.keyboard.press('Shift+ArrowUp');
    await settled(page);
    const qv = await page.getByLabel('Flow', { exact: true }).inputValue();
    const dp = await page.getByLabel('Total pressure', { exact: true }).inputValue();
    assert.ok(Math.abs(Number(dp) / before - 1.1) < 0.01, `${before} to ${dp}`);
    await page.waitForFunction((wanted) => location.search.includes(`dp=${wanted}`), dp);
    await page.reload();
    await assertNumbers(page, 'DMP', 'QZDA-160', ['--qv', qv, '--dp', dp]);
    await page.getByLabel('Level in the room, at most').fill('30');
    await settled(page);
    assert.match(await page.locator('.results').innerText(), /dB above the limit/);
    await page.getByLabel('Flow', { exact: true }).fill('lots');
    await settled(page);
    assert.match(await page.locator('.results').innerText(), /flow is "lots", expected a number above 0/);
  });
});

test('a drag of the operating point is followed frame by frame, and the drawn mark lies under the pointer', async () => {
  await withPage('?class=ASD&id=QZSA-160&qv=60&dp=40', async (page) => {
    await settled(page);
    const box = await page.locator('.figure.flow svg').boundingBox();
    const at = (part) => [box.x + box.width * (0.35 + 0.3 * part), box.y + box.height * (0.6 - 0.3 * part)];
    await page.mouse.move(...at(0));
    await page.mouse.down();
    await page.evaluate(() => {
      window.drawn = 0;
      new MutationObserver(() => ++window.drawn).observe(document.querySelector('.figure.flow .diagram'), { childList: true });
    });
    // A move of the pointer for each frame, as a hand makes them.
    const [drawn, frames, took, usual] = await page.evaluate(async ([from, to]) => {
      const diagram = document.querySelector('.figure.flow .diagram');
      const wanted = 120;
      const frame = () => new Promise((done) => requestAnimationFrame(done));
      const idle = performance.now();
      for (let i = 0; i < 30; ++i) await frame();
      const began = performance.now();
      const usual = (began - idle) / 30;
      for (let i = 1; i <= wanted; ++i) {
        await frame();
        const part = i / wanted;
        const place = { clientX: from[0] + (to[0] - from[0]) * part, clientY: from[1] + (to[1] - from[1]) * part };
        diagram.dispatchEvent(new PointerEvent('pointermove', { ...place, pointerId: 1, bubbles: true }));
      }
      return [window.drawn, wanted, performance.now() - began, usual];
    }, [at(0), at(1)]);
    await page.mouse.move(...at(1));
    await page.mouse.up();
    await settled(page);
    console.log(`# ${drawn} drawings and ${frames} frames in ${took.toFixed(0)} ms of dragging; a frame takes ${usual.toFixed(1)} ms without`);
    assert.ok(drawn > 10, `${drawn} drawings`);
    // What the page itself does for a frame leaves time in it; a machine that is busy has fewer for everybody.
    assert.ok(took / frames < Math.max(20, 4 * usual), `${frames} frames in ${took} ms, ${usual} ms each without a drag`);
    const mark = await page.locator('.figure.flow [data-name^="operating-point"] ellipse').first().boundingBox();
    const [x, y] = at(1);
    assert.ok(Math.hypot(mark.x + mark.width / 2 - x, mark.y + mark.height / 2 - y) < 3, `mark at ${mark.x} ${mark.y}, pointer at ${x} ${y}`);
    const qv = await page.getByLabel('Flow', { exact: true }).inputValue();
    const dp = await page.getByLabel('Total pressure', { exact: true }).inputValue();
    await assertNumbers(page, 'ASD', 'QZSA-160', ['--qv', qv, '--dp', dp]);
    if (pictures) await page.screenshot({ path: join(pictures, 'page-drag.png') });
  });
});

test('units, language, market and parameters are switched', async () => {
  await withPage('?class=ASD&id=QZSA-160&qv=60&dp=40', async (page) => {
    await page.getByLabel('Unit of flow').selectOption('m3/h');
    await page.getByLabel('Unit of pressure').selectOption('inwg');
    await settled(page);
    assert.equal(await page.getByLabel('Flow', { exact: true }).inputValue(), '216');
    const dp = await page.getByLabel('Total pressure', { exact: true }).inputValue();
    await assertNumbers(page, 'ASD', 'QZSA-160', ['--qv', '216m3/h', '--dp', `${dp}inwg`, '--units', 'm3/h,m/s,inwg']);
    await page.getByLabel('G', { exact: true }).selectOption('45');
    await assertNumbers(page, 'ASD', 'QZSA-160', ['--qv', '216m3/h', '--dp', `${dp}inwg`, '--units', 'm3/h,m/s,inwg', '--param', 'G=45']);
    await page.getByLabel('Language of descriptions').selectOption('ru');
    await page.getByLabel('Market of product codes').selectOption('RUS');
    const expected = json('list', catalogue(), '--market', 'RUS', '--language', 'ru').find((product) => product.id === 'QZSA-160');
    await page.getByRole('heading', { level: 1, name: expected.code, exact: true }).waitFor();
    assert.match(await page.locator('.heading .what').innerText(), new RegExp(`^${expected.description}`));
  });
});

test('a product is found by typing, and 10 000 products are searched in under 50 ms', async () => {
  await withPage('', async (page) => {
    await page.getByLabel('Search products').fill('QZDA-160 damper');
    await page.getByText('1 of 90 products').waitFor();
    await page.keyboard.press('Enter');
    await page.getByRole('heading', { level: 1, name: 'QZDA-160' }).waitFor();
    await page.getByLabel('Search products').fill('');
    await page.getByRole('listbox').focus();
    await page.keyboard.press('ArrowDown');
    await page.getByRole('heading', { level: 1, name: 'QZDA-200' }).waitFor();
    await page.getByLabel('Product database').setInputFiles(madeUp(10000));
    await page.waitForFunction(() => /^\d{4,5} products$/.test(document.querySelector('.count').textContent) && document.querySelector('.count').textContent !== '90 products', null, { timeout: 60000 });
    const products = Number((await page.locator('.count').innerText()).split(' ')[0]);
    assert.ok(products >= 9000, `${products} products`);
    for (const words of ['d', 'damper 2', 'fan', 'nothing at all']) {
      await page.getByLabel('Search products').fill(words);
      const took = await page.evaluate(() => Number(document.getElementById('list').dataset.milliseconds));
      assert.ok(took < 50, `${words}: ${took} ms`);
    }
    assert.ok((await page.locator('[role=option]').count()) < 100);
  });
});

test('selection ranks what fits, tells why not, and opens a product', async () => {
  await withPage('?view=selection&qv=80&dp=70&max-lp=30', async (page) => {
    await settled(page);
    const expected = json('select', catalogue(), '--qv', '80', '--dp', '70', '--max-lp', '30', '--top', '10', '--explain');
    assert.equal(await page.locator('.fitting').innerText(), '14 of 66 products fit');
    const levels = await page.$$eval('.hits [data-answer=level]', (cells) => cells.map((cell) => Number(cell.dataset.value)));
    assert.deepEqual(levels, expected.hits.map((hit) => hit.sound.room_level_dBA));
    if (pictures) await page.screenshot({ path: join(pictures, 'page-selection.png') });
    const reason = page.locator('.why-not summary').first();
    const counts = new Map();
    for (const { text } of expected.rejected) counts.set(text, (counts.get(text) ?? 0) + 1);
    const [text, count] = [...counts].sort((a, b) => b[1] - a[1])[0];
    assert.equal(await reason.innerText(), `${text}: ${count} products`);
    await reason.click();
    assert.equal(await page.locator('.why-not details[open] li').count(), count);
    await page.getByLabel('Best is').selectOption('size');
    await page.getByLabel('Level in the room, at most').fill('1');
    await page.getByText('none of 66 products fit').waitFor();
    assert.match(await page.locator('.selection').innerText(), /Nearest: it is too loud in the room: \d+ products/);
    await page.getByLabel('Level in the room, at most').fill('');
    await page.locator('.hits button.link').first().click();
    await page.locator('.product h1').waitFor();
  });
});

test('four products are compared, and no fifth', async () => {
  await withPage('?view=selection&qv=50&dp=60', async (page) => {
    await page.locator('.hits').waitFor();
    for (let i = 0; i < 4; ++i) await page.locator('.hits button.quiet:enabled').first().click();
    await page.getByRole('button', { name: 'Compare (4)' }).click();
    await page.locator('.compared thead th').nth(3).waitFor();
    assert.equal(await page.locator('.compared .diagram svg').count(), 4);
    const url = await page.evaluate(() => new Promise((resolve) => setTimeout(() => resolve(location.search), 400)));
    const first = new URLSearchParams(url).getAll('compare')[0].split(' ');
    const expected = json('calc', catalogue(), first[0], first[1], '--qv', '50', '--dp', '60');
    assert.equal(Number(await page.locator('.compared [data-answer=dp_min]').first().getAttribute('data-value')), expected.pressure_range.dp_min_Pa);
    await page.getByRole('button', { name: /^Remove/ }).first().click();
    await page.getByRole('button', { name: 'Compare (3)' }).waitFor();
  });
});

test('SVG, CSV and a page for print are made', async () => {
  await withPage('?class=ASD&id=QZSA-160&qv=60&dp=40', async (page) => {
    await settled(page);
    const saved = async (press) => {
      const [download] = await Promise.all([page.waitForEvent('download'), press()]);
      return [download.suggestedFilename(), readFileSync(await download.path(), 'utf8')];
    };
    for (const [name, file] of [['flow', 'QZSA-160-flow.svg'], ['throw', 'QZSA-160-throw.svg'], ['sketch', 'QZSA-160-sketch.svg']]) {
      const [fileName, text] = await saved(() => page.locator(`.figure.${name} figcaption button`).click());
      assert.equal(fileName, file);
      assert.match(text, /^<\?xml[^]*<\/svg>\n$/);
    }
    const [, csv] = await saved(() => page.getByRole('button', { name: 'CSV', exact: true }).click());
    const level = json('calc', catalogue(), 'ASD', 'QZSA-160', '--qv', '60', '--dp', '40').sound.room_level_dBA;
    assert.ok(csv.includes(`Level in the room,${level},dB(A)\n`), csv);
    const pdf = await page.pdf({ format: 'A4' });
    assert.equal(pdf.subarray(0, 5).toString(), '%PDF-');
    await page.emulateMedia({ media: 'print' });
    assert.equal(await page.locator('#products').isVisible(), false);
    assert.equal(await page.locator('.figure.sketch svg').isVisible(), true);
  });
  await withPage('?view=selection&qv=80&dp=70&top=5', async (page) => {
    await page.locator('.hits').waitFor();
    const [download] = await Promise.all([page.waitForEvent('download'), page.getByRole('button', { name: 'CSV', exact: true }).click()]);
    const expected = tavd('select', catalogue(), '--qv', '80', '--dp', '70', '--csv', '--units', 'l/s,m/s,Pa');
    assert.equal(readFileSync(await download.path(), 'utf8'), expected);
  });
});

test('hostile files dropped onto the page give a message, and the page lives on', async () => {
  await withPage('?class=DMP&id=QZDA-160&qv=50&dp=60', async (page) => {
    await settled(page);
    let refused = 0;
    for (const [name, content] of hostileFiles()) {
      await page.evaluate(([text, file]) => {
        const bytes = Uint8Array.from(atob(text), (each) => each.charCodeAt(0));
        const transfer = new DataTransfer();
        transfer.items.add(new File([bytes], file));
        for (const type of ['dragover', 'drop']) document.body.dispatchEvent(new DragEvent(type, { dataTransfer: transfer, bubbles: true, cancelable: true }));
      }, [Buffer.from(content).toString('base64'), `${name}.tavdb`]);
      await page.waitForFunction((file) => {
        const message = document.getElementById('message');
        return (!message.hidden && message.textContent.includes(file)) || document.querySelector('#settings button').title === file;
      }, `${name}.tavdb`);
      if (await page.locator('#message').isVisible()) ++refused;
      assert.equal(await page.locator('#search').isVisible(), true, name);
    }
    assert.ok(refused >= 6, `${refused} refused`);
    await page.getByLabel('Product database').setInputFiles(catalogue());
    await page.getByText('90 products', { exact: true }).waitFor();
    assert.equal(await page.locator('#message').isVisible(), false);
  });
});

test('axe finds no fault, light and dark, in any view', async () => {
  for (const colorScheme of ['light', 'dark']) {
    for (const query of ['?class=ASD&id=QZSA-160&qv=60&dp=40', '?view=selection&qv=80&dp=70&max-lp=30', '?view=compare&qv=50&dp=60&compare=DMP+QZDA-160&compare=ASD+QZSA-160']) {
      await withPage(query, async (page) => {
        await settled(page);
        await page.evaluate(readFileSync(axe, 'utf8'));
        const { violations } = await page.evaluate(() => window.axe.run());
        assert.deepEqual(violations.map(({ id, nodes }) => `${id}: ${nodes.map((node) => node.target).join(', ')}`), [], `${query} ${colorScheme}`);
      }, { colorScheme });
    }
  }
});

test('nothing is cut or wider than the window from 360 px to 4K', async () => {
  for (const [name, width, height, colorScheme] of [['phone', 360, 740, 'light'], ['desk-dark', 1280, 900, 'dark'], ['4k', 3840, 2160, 'light']]) {
    for (const query of ['?class=ASD&id=QZSA-160&qv=60&dp=40', '?view=selection&qv=80&dp=70', '?view=compare&qv=50&dp=60&compare=DMP+QZDA-160']) {
      await withPage(query, async (page) => {
        await settled(page);
        const wide = await page.evaluate(() => document.documentElement.scrollWidth - innerWidth);
        assert.ok(wide <= 0, `${query} at ${width}: ${wide} px too wide`);
        if (looks && !query.includes('view')) await page.screenshot({ path: join(looks, `page-${name}.png`) });
      }, { viewport: { width, height }, colorScheme });
    }
  }
});

test('the page works without a network after the first visit', async () => {
  await withPage('', async (page, context) => {
    await page.evaluate(() => navigator.serviceWorker.ready);
    await page.waitForFunction(() => navigator.serviceWorker.controller !== null);
    await context.setOffline(true);
    await page.goto(`${world.address}?class=DMP&id=QZDA-160&qv=50&dp=60`);
    await assertNumbers(page, 'DMP', 'QZDA-160', ['--qv', '50', '--dp', '60']);
  });
});

test('memory stays where it is over many changes of the product', async () => {
  await withPage('?class=DMP&id=QZDA-160&qv=50&dp=60', async (page) => {
    const change = (count) => page.evaluate(async (wanted) => {
      const list = document.getElementById('list');
      const view = () => document.querySelector('.product');
      for (let i = 0; i < wanted; ++i) {
        const before = view().dataset.generation;
        list.dispatchEvent(new KeyboardEvent('keydown', { key: i % 20 < 10 ? 'ArrowDown' : 'ArrowUp', bubbles: true, cancelable: true }));
        const started = performance.now();
        while (view().dataset.generation === before && performance.now() - started < 200) await new Promise((done) => setTimeout(done));
      }
      window.gc();
      return performance.memory.usedJSHeapSize;
    }, count);
    const first = await change(Math.min(100, changes));
    const last = await change(changes);
    assert.ok(last - first < 4e6, `${first} bytes, then ${last}`);
  });
});
