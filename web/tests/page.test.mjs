// The page in Debian's chromium: every feature by clicks and keys, its numbers beside those of the command line host. With
// TAVD_WEB_PICTURES=FOLDER the pictures of the documents are left there, and with TAVD_WEB_LOOKS=FOLDER those of every view in
// several sizes, to be looked at. How quick the page is, `web/tests/bench` measures.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { mkdtempSync, readFileSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { after, before, test } from 'node:test';
import { createRequire } from 'node:module';
import { join } from 'node:path';
import { settled, start, watch } from './browser.mjs';
import { acrossDiagram, changeProduct, drag } from './measure.mjs';
import { bytes, catalogue, hostileFiles, json, madeUp, markedUp, markup, tavd } from './program.mjs';

const axe = createRequire(import.meta.url).resolve('axe-core');
const pictures = process.env.TAVD_WEB_PICTURES;
const looks = process.env.TAVD_WEB_LOOKS;
// TAVD_WEB_FULL has the long forms of the tests.
const full = process.env.TAVD_WEB_FULL !== undefined;
const changes = full ? 1000 : 30; // of the product
const records = full ? 10_000 : 500; // of a long list

let world;
let shared;
before(async () => {
  world = await start();
  shared = await newPage('?class=DMP&id=QZDA-160&qv=50&dp=60');
});
after(() => world.stop());

async function newPage(query) {
  const context = await world.browser.newContext({ viewport: { width: 1280, height: 900 }, acceptDownloads: true });
  const page = await context.newPage();
  const faults = watch(page, world.address);
  await page.goto(world.address + query);
  await page.waitForSelector('[data-generation]');
  return { context, page, faults };
}

/** A page of its own, for what databases, other addresses or other windows leave behind. */
async function withNewPage(query, look) {
  const { context, page, faults } = await newPage(query);
  try {
    await look(page, context);
    assert.deepEqual(faults, []);
  } finally {
    await context.close();
  }
}

/** What the address says is shown in a page that is there already, as when a user goes back to it. Loading takes seconds. */
async function withPage(query, look) {
  const { page, faults } = shared;
  await page.evaluate((address) => {
    history.pushState(null, '', address || location.pathname);
    dispatchEvent(new PopStateEvent('popstate'));
  }, query);
  await settled(page);
  await look(page);
  assert.deepEqual(faults.splice(0), []);
}

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
  await assertNumbers(shared.page, 'DMP', 'QZDA-160', ['--qv', '50', '--dp', '60']);
  assert.equal(await shared.page.locator('.figure.flow svg text', { hasText: 'QZDA-160' }).count(), 1);
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
    // What was changed in place is what is drawn anew.
    const drawn = () => page.locator('.figure.flow .diagram').innerHTML();
    const moved = await drawn();
    await page.reload();
    await assertNumbers(page, 'DMP', 'QZDA-160', ['--qv', qv, '--dp', dp]);
    assert.equal(await drawn(), moved);
    await page.getByLabel('Level in the room, at most').fill('30');
    await settled(page);
    assert.match(await page.locator('.results').innerText(), /dB above the limit/);
    await page.getByLabel('Flow', { exact: true }).fill('lots');
    await settled(page);
    assert.match(await page.locator('.results').innerText(), /flow is "lots", expected a number above 0/);
  });
});

test('limits that begin at 0 have the duty in their middle and sliders of equal steps', async () => {
  await withPage('?class=FAN&id=QZFA-160', async (page) => {
    const flow = page.getByLabel('Flow', { exact: true });
    assert.equal(await flow.inputValue(), '100');
    const slider = page.getByLabel('Flow, slider');
    assert.equal(await slider.inputValue(), '500');
    await slider.focus();
    await page.keyboard.press('ArrowRight');
    await settled(page);
    assert.equal(await flow.inputValue(), '100.2');
    const dp = await page.getByLabel('Total pressure', { exact: true }).inputValue();
    await assertNumbers(page, 'FAN', 'QZFA-160', ['--qv', '100.2', '--dp', dp]);
  });
});

test('a drag of the operating point is followed while it lasts, and the drawn mark lies under the pointer', async () => {
  await withPage('?class=DMP&id=QZDA-160&qv=60&dp=40', async (page) => {
    await settled(page);
    const [from, to] = await acrossDiagram(page);
    await drag(page, from, to, 20);
    await page.mouse.move(...to);
    // The pointer is still held.
    await page.waitForFunction(([x, y]) => {
      const mark = document.querySelector('.figure.flow [data-name^="operating-point"] ellipse').getBoundingClientRect();
      return document.querySelector('.diagram.held') !== null && Math.hypot(mark.x + mark.width / 2 - x, mark.y + mark.height / 2 - y) < 3;
    }, to);
    await settled(page);
    if (pictures) await page.screenshot({ path: join(pictures, 'page-drag.png') });
    await page.mouse.up();
    await page.mouse.move(...from);
    await settled(page);
    const qv = await page.getByLabel('Flow', { exact: true }).inputValue();
    const dp = await page.getByLabel('Total pressure', { exact: true }).inputValue();
    assert.notEqual(qv, '60');
    await assertNumbers(page, 'DMP', 'QZDA-160', ['--qv', qv, '--dp', dp]);
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

test('a product is found by typing, and of a long list only what is in sight has elements', async () => {
  await withNewPage('', async (page) => {
    await page.getByRole('heading', { level: 1, name: 'QZDA-160' }).waitFor();
    await page.getByLabel('Search products').fill('QZDA-200 damper');
    await page.getByText('1 of 90 products').waitFor();
    await page.keyboard.press('Enter');
    await page.getByRole('heading', { level: 1, name: 'QZDA-200' }).waitFor();
    await page.getByLabel('Search products').fill('');
    await page.getByRole('listbox').focus();
    await page.keyboard.press('ArrowDown');
    await page.getByRole('heading', { level: 1, name: 'QZDA-250' }).waitFor();
    await page.getByLabel('Product database').setInputFiles(madeUp(records));
    const listed = JSON.parse(tavd('list', madeUp(records), '--json')).length;
    await page.getByText(`${listed} products`, { exact: true }).waitFor();
    await page.getByLabel('Search products').fill('damper');
    await page.getByText(new RegExp(`^\\d+ of ${listed} products$`)).waitFor();
    await page.getByLabel('Search products').fill('nothing at all');
    await page.getByText(`0 of ${listed} products`).waitFor();
    await page.getByLabel('Search products').fill('');
    await page.getByText(`${listed} products`, { exact: true }).waitFor();
    assert.ok((await page.locator('[role=option]').count()) > 10);
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

const views = {
  product: '?class=ASD&id=QZSA-160&qv=60&dp=40&max-lp=30',
  selection: '?view=selection&qv=80&dp=70&max-lp=30',
  compare: '?view=compare&qv=50&dp=60&compare=DMP+QZDA-160&compare=ASD+QZSA-160&compare=AEX+QZEA-160&compare=VLV+QZTA-160',
};

// The view on paper: its text, and how many pages it takes.
async function printed(page, name) {
  const folder = mkdtempSync(join(tmpdir(), 'tavd-print-'));
  try {
    const path = join(looks ?? folder, `${name}.pdf`);
    await page.pdf({ path, format: 'A4', preferCSSPageSize: true });
    const told = execFileSync('pdfinfo', [path], { encoding: 'utf8' });
    return [execFileSync('pdftotext', ['-layout', path, '-'], { encoding: 'utf8' }), Number(/^Pages: +(\d+)/m.exec(told)[1])];
  } finally {
    rmSync(folder, { recursive: true });
  }
}

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
    // One page, with the numbers, what they are of and where they are from.
    const [sheet, pages] = await printed(page, 'product');
    assert.equal(pages, 1);
    for (const words of ['QZSA-160', 'Adjustable supply diffuser', '60 l/s\\s+40 Pa\\s+4 dB', 'Level in the room\\s+34.1\\s+dB\\(A\\)', 'Calculated with tavd [\\d.]+ · Sample catalogue · \\S']) {
      assert.match(sheet, new RegExp(words));
    }
    assert.doesNotMatch(sheet, /SVG|Search|Print|none|any/);
    await page.emulateMedia({ media: 'print' });
    assert.equal(await page.locator('#products').isVisible(), false);
    assert.equal(await page.locator('.figure.sketch svg').isVisible(), true);
    await page.emulateMedia({ media: null });
  });
  await withPage(views.compare, async (page) => {
    const [sheet, pages] = await printed(page, 'compare');
    assert.equal(pages, 1);
    for (const id of ['QZDA-160', 'QZSA-160', 'QZEA-160', 'QZTA-160']) assert.match(sheet, new RegExp(id));
  });
  await withPage('?view=selection&qv=80&dp=70&top=5', async (page) => {
    await page.locator('.hits').waitFor();
    const [sheet, pages] = await printed(page, 'selection');
    assert.equal(pages, 1);
    assert.match(sheet, /products fit[^]*Why not the others/);
    const [download] = await Promise.all([page.waitForEvent('download'), page.getByRole('button', { name: 'CSV', exact: true }).click()]);
    const expected = tavd('select', catalogue(), '--qv', '80', '--dp', '70', '--csv', '--units', 'l/s,m/s,Pa');
    assert.equal(readFileSync(await download.path(), 'utf8'), expected);
  });
});

// Drops a file onto the page: what the page says against it, empty where it opened.
async function drop(page, name, content) {
  await page.evaluate(([text, file]) => {
    const bytes = Uint8Array.from(atob(text), (each) => each.charCodeAt(0));
    const transfer = new DataTransfer();
    transfer.items.add(new File([bytes], file));
    for (const type of ['dragover', 'drop']) document.body.dispatchEvent(new DragEvent(type, { dataTransfer: transfer, bubbles: true, cancelable: true }));
  }, [Buffer.from(content).toString('base64'), name]);
  await page.waitForFunction((file) => {
    const message = document.getElementById('message');
    return (!message.hidden && message.textContent.includes(file)) || document.querySelector('#settings [title]').title === file;
  }, name);
  await settled(page);
  const message = page.locator('#message');
  return (await message.isVisible()) ? await message.innerText() : '';
}

test('hostile files dropped onto the page give a message or open, and the page lives on', async () => {
  await withNewPage('?class=DMP&id=QZDA-160&qv=50&dp=60', async (page) => {
    await settled(page);
    const stopped = async (name) => assert.doesNotMatch(await page.locator('body').innerText(), /the calculation has stopped/, name);
    let opened = 0;
    const files = hostileFiles().filter(([name]) => full || !/, [1-9]$/.test(name));
    for (const [name, content, refusal] of [...files.filter((file) => file[2]), ...files.filter((file) => !file[2])]) {
      const message = await drop(page, `${name}.tavdb`, content);
      if (refusal !== undefined) {
        assert.ok(message.startsWith(`${name}.tavdb: `), message);
        assert.match(message, refusal);
        // What was shown before is shown still.
        assert.equal(await page.locator('.product h1').innerText(), 'QZDA-160');
        continue;
      }
      await stopped(name);
      if (message === '' && ++opened) {
        await page.getByRole('listbox').focus();
        for (const key of ['End', 'PageUp']) {
          await page.keyboard.press(key);
          await settled(page);
          await stopped(`${name} ${key}`);
        }
        await page.locator('[data-view=selection]').click();
        await settled(page);
        await stopped(`${name}, selection`);
        await page.locator('[data-view=product]').click();
      }
    }
    assert.ok(opened >= 6, `${opened} opened`);
    await page.getByLabel('Product database').setInputFiles(catalogue());
    await page.getByText('90 products', { exact: true }).waitFor();
    await page.getByRole('heading', { level: 1, name: 'QZSA-125' }).waitFor();
    assert.equal(await page.locator('#message').isVisible(), false);
  });
});

test('texts of a database stay texts', async () => {
  await withPage('', async (page) => {
    assert.equal(await drop(page, '<b>marked up</b>.tavdb', bytes(markedUp())), '');
    await page.getByRole('heading', { level: 1, name: markup, exact: true }).waitFor();
    await settled(page);
    assert.ok((await page.locator('.figure.flow svg').getAttribute('aria-label')).includes(markup));
    assert.equal(await page.locator('img, main script, aside script').count(), 0);
    assert.match(await page.title(), /^MY-DAMPER-160/);
    assert.equal(await drop(page, 'catalogue.tavdb', bytes(catalogue())), '');
  });
});

test('axe finds no fault, light and dark, in any view', async () => {
  for (const colorScheme of ['light', 'dark']) {
    await shared.page.emulateMedia({ colorScheme });
    for (const [name, query] of Object.entries(views)) {
      await withPage(query, async (page) => {
        await page.evaluate(readFileSync(axe, 'utf8'));
        // Of what axe looks at the colours alone are others in the dark.
        const rules = colorScheme === 'dark' ? { runOnly: ['color-contrast'] } : {};
        const { violations, passes } = await page.evaluate((given) => window.axe.run(given), rules);
        assert.deepEqual(violations.map(({ id, nodes }) => `${id}: ${nodes.map((node) => node.target).join(', ')}`), [], `${name} ${colorScheme}`);
        assert.ok(passes.length > (colorScheme === 'dark' ? 0 : 20), `${passes.length} rules`);
      });
    }
  }
  await shared.page.emulateMedia({ colorScheme: null });
});

test('nothing is cut or wider than the window from 360 px to 4K', async () => {
  for (const [size, width, height, colorScheme] of [['phone', 360, 740, 'light'], ['desk', 1280, 900, 'dark'], ['4k', 3840, 2160, 'light']]) {
    await shared.page.setViewportSize({ width, height });
    await shared.page.emulateMedia({ colorScheme });
    for (const [name, query] of Object.entries(views)) {
      await withPage(query, async (page) => {
        const wide = await page.evaluate(() => document.documentElement.scrollWidth - innerWidth);
        assert.ok(wide <= 0, `${name} at ${width}: ${wide} px too wide`);
        const cut = await page.$$eval('main label, main button, main caption, main h1, main h2, main legend, main .unit, #settings :not(.unseen)', (elements) => elements
          .filter((element) => element.scrollWidth > element.clientWidth + 1 && element.clientWidth > 0 && getComputedStyle(element).overflow !== 'visible')
          .map((element) => element.textContent));
        assert.deepEqual(cut, [], `${name} at ${width}`);
        if (looks) await page.screenshot({ path: join(looks, `${name}-${size}-${colorScheme}.png`), fullPage: size === 'phone' });
      });
    }
  }
  await shared.page.setViewportSize({ width: 1280, height: 900 });
  await shared.page.emulateMedia({ colorScheme: null });
});

test('the page works without a network after the first visit', async () => {
  await withNewPage('', async (page, context) => {
    await page.evaluate(() => navigator.serviceWorker.ready);
    await page.waitForFunction(() => navigator.serviceWorker.controller !== null);
    await context.setOffline(true);
    await page.goto(`${world.address}?class=DMP&id=QZDA-160&qv=50&dp=60`);
    await assertNumbers(page, 'DMP', 'QZDA-160', ['--qv', '50', '--dp', '60']);
  });
});

test('nothing is left behind by changes of the product', async () => {
  await withPage('?class=DMP&id=QZDA-160&qv=50&dp=60', async (page) => {
    await settled(page);
    const before = await changeProduct(page, full ? 100 : 10);
    const after = await changeProduct(page, changes);
    console.log(`# ${changes} changes: ${JSON.stringify(before)}, then ${JSON.stringify(after)}`);
    assert.ok(after.bytes - before.bytes < 1e6, `${before.bytes} bytes, then ${after.bytes}`);
    assert.ok(after.nodes - before.nodes < 2000, `${before.nodes} nodes, then ${after.nodes}`);
    assert.ok(after.listeners - before.listeners < 100, `${before.listeners} listeners, then ${after.listeners}`);
  });
});
