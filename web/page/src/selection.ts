// Which products fit the duty, the best first, and why the others do not.
import type { Duty, Hit, Selected } from 'tavd';
import { Latest, messageOf, type App } from './app.js';
import { choice, fill, h, labelled } from './dom.js';
import { download } from './downloads.js';
import { amount, fixed } from './numbers.js';
import { mostCompared, type State } from './state.js';

const number = (hit: object, ...beginnings: string[]): number | undefined =>
  Object.entries(hit).find(([name, value]) => typeof value === 'number' && beginnings.some((each) => name.startsWith(each)))?.[1] as
    | number
    | undefined;

const answers = ['size', 'pressure', 'sound', 'throw'];

export class SelectionView {
  readonly element = h('div', { class: 'selection' });
  readonly #form = h('form', { class: 'duty wide', 'aria-label': 'Duty', submit: (event: Event) => event.preventDefault() });
  readonly #results = h('div', { 'aria-live': 'polite' });
  readonly #refresh = new Latest(() => this.#ask());
  #generation = 0;

  constructor(private readonly app: App) {
    fill(this.element, h('h1', {}, 'Selection'), this.#form, this.#results);
  }

  async load(): Promise<void> {
    this.#build();
    await this.refresh();
  }

  async refresh(): Promise<void> {
    await this.#refresh.run();
  }

  #build(): void {
    const { app } = this;
    const { state, units } = app;
    const field = (text: string, member: keyof State & string, unit: string, placeholder = '') => {
      const input = h('input', {
        type: 'text', name: member, autocomplete: 'off', value: state[member] as string, placeholder,
        input: () => app.update({ [member]: input.value.trim().replace(',', '.') }),
      });
      return labelled(text, input, unit && h('span', { class: 'unit' }, unit));
    };
    const classes = [...new Set(app.products.map((product) => product.class))];
    const unknown = new Set(state.unknown.split(' ').filter(Boolean));
    const boxes = answers.map((answer) => {
      const box = h('input', {
        type: 'checkbox', id: `unknown-${answer}`, checked: unknown.has(answer),
        change: () => {
          if (box.checked) unknown.add(answer);
          else unknown.delete(answer);
          app.update({ unknown: answers.filter((each) => unknown.has(each)).join(' ') });
        },
      });
      return h('span', { class: 'check' }, box, h('label', { for: box.id }, answer));
    });
    fill(this.#form,
      field('Flow', 'qv', units.flow.sign),
      field('Available pressure', 'dp', units.pressure.sign),
      field('Level in the room, at most', 'limit', 'dB(A)', 'any'),
      field('Room damping', 'damping', 'dB'),
      field('Throw, from', 'throwFrom', 'm', 'any'),
      field('Throw, to', 'throwTo', 'm', 'any'),
      field('Duct size, or from:to', 'size', 'mm', 'any'),
      labelled('Class', choice([{ value: '', text: 'all' }, ...classes.map((value) => ({ value, text: value }))], state.only, (only) => app.update({ only }))),
      labelled('Best is', choice(
        [['sound', 'the quietest'], ['pressure', 'the least pressure'], ['size', 'the smallest'], ['fit', 'the middle of its limits']].map(
          ([value, text]) => ({ value: value!, text: text! })), state.rank, (rank) => app.update({ rank }))),
      labelled('Show', choice(['5', '10', '25', '100'].map((value) => ({ value, text: value })), state.top, (top) => app.update({ top }))),
      h('fieldset', { class: 'checks' }, h('legend', {}, 'May be unknown'), ...boxes),
    );
  }

  get #duty(): Duty {
    const { state, units } = this.app;
    const thrown = state.throwFrom || state.throwTo ? `${state.throwFrom}:${state.throwTo}` : '';
    return {
      qv: amount(state.qv, units.flow), dp: amount(state.dp, units.pressure), max_lp: state.limit, room_damping: state.damping,
      throw: thrown, size: state.size, class: state.only, rank: state.rank, top: state.top, allow_unknown: state.unknown,
      units: units.list,
    };
  }

  async #ask(): Promise<void> {
    try {
      this.#show(await this.app.tavd.select(this.#duty));
    } catch (error) {
      fill(this.#results, h('p', { class: 'bad' }, messageOf(error)));
    }
    this.element.dataset['generation'] = String(++this.#generation);
  }

  #show(selected: Selected): void {
    const save = h('button', {
      type: 'button', click: async () => download('selection.csv', 'text/csv;charset=utf-8', await this.app.tavd.selectAsCsv(this.#duty)),
    }, 'CSV');
    const print = h('button', { type: 'button', click: () => window.print() }, 'Print');
    fill(this.#results,
      h('div', { class: 'found' }, h('p', { class: 'fitting' }, selected.fitting_text), h('div', { class: 'actions' }, save, print)),
      selected.hits.length > 0 ? this.#table(selected.hits) : h('p', {}, `Nearest: ${selected.nearest}`),
      this.#whyNot(selected),
    );
  }

  #table(hits: Hit[]): HTMLElement {
    const { units } = this.app;
    const heads = ['', 'Product', 'Size', 'Flow', `Pressure, ${units.pressure.sign}`, `Lowest, ${units.pressure.sign}`, 'Room, dB(A)', 'Throw, m', 'Position', 'Fit', ''];
    const numbers = new Set([3, 4, 5, 6, 7, 8, 9]);
    return h('div', { class: 'scrolled', tabindex: 0, role: 'region', 'aria-label': 'Products that fit' },
      h('table', { class: 'hits' },
        h('caption', {}, 'Products that fit, the best first'),
        h('thead', {}, h('tr', {}, ...heads.map((text, index) =>
          text === '' ? h('td', {}) : h('th', { scope: 'col', class: numbers.has(index) ? 'number' : undefined }, text)))),
        h('tbody', {}, ...hits.map((hit) => this.#row(hit)))));
  }

  #row(hit: Hit): HTMLElement {
    const { app } = this;
    const { units } = app;
    const key = `${hit.class} ${hit.id}`;
    const velocity = number(hit, 'v_');
    const flow = velocity ?? number(hit, 'qv_');
    const unit = units.flowOf(velocity !== undefined);
    const pressure = hit.fan === undefined ? number(hit, 'dp_') : number(hit.fan, 'dp_total_');
    const isUnknown = (answer: string) => hit.unknown.split(' ').includes(answer);
    const cell = (name: string, value: number | undefined, shown: string) =>
      h('td', { class: 'number', 'data-answer': name, 'data-value': value }, shown);
    const open = h('button', { type: 'button', class: 'link', click: () => this.#open(hit) }, hit.code || hit.id);
    const compare = h('button', {
      type: 'button', class: 'quiet', 'aria-label': `Compare ${hit.id}`, disabled: app.state.compare.includes(key) || app.state.compare.length >= mostCompared,
      click: () => {
        app.update({ compare: [...app.state.compare, key] });
        compare.setAttribute('disabled', '');
      },
    }, 'Compare');
    return h('tr', {},
      h('td', { class: 'rank' }, hit.rank),
      h('th', { scope: 'row' }, open, h('span', { class: 'what' }, hit.description)),
      h('td', {}, hit.size_mm),
      cell('flow', flow, `${fixed(flow, unit.decimals)} ${unit.sign}`),
      cell('pressure', pressure, isUnknown('pressure') ? 'unknown' : fixed(pressure, units.pressure.decimals)),
      cell('lowest', number(hit.pressure_range, 'dp_min_'), fixed(number(hit.pressure_range, 'dp_min_'), units.pressure.decimals)),
      cell('level', hit.sound.room_level_dBA, isUnknown('sound') ? 'unknown' : fixed(hit.sound.room_level_dBA, 1)),
      cell('throw', hit.throw_length_m, fixed(hit.throw_length_m, 1)),
      cell('position', hit.position_stepless?.position, fixed(hit.position_stepless?.position, 2)),
      cell('fit', hit.fit, fixed(hit.fit, 2)),
      h('td', {}, compare));
  }

  #open(hit: Hit): void {
    const parameters = Object.entries(hit.parameters ?? {}).map(([name, value]) => `${name}=${value}`);
    this.app.update({ view: 'product', class: hit.class, id: hit.id, parameters, throwValue: '' });
  }

  #whyNot({ rejected }: Selected): HTMLElement | null {
    if (rejected.length === 0) return null;
    const reasons = new Map<string, Selected['rejected']>();
    for (const each of rejected) {
      const text = String(each['text'] ?? each['reason'] ?? '');
      reasons.set(text, [...(reasons.get(text) ?? []), each]);
    }
    const most = 200;
    return h('section', { class: 'why-not', 'aria-label': 'Why not the others' },
      h('h2', {}, 'Why not the others'),
      ...[...reasons].sort((a, b) => b[1].length - a[1].length).map(([text, products]) =>
        h('details', {},
          h('summary', {}, `${text}: ${products.length} ${products.length === 1 ? 'product' : 'products'}`),
          h('ul', {}, ...products.slice(0, most).map((product) => h('li', {}, h('button', {
            type: 'button', class: 'link',
            click: () => this.app.update({ view: 'product', class: product.class, id: product.id, parameters: [], throwValue: '' }),
          }, `${product.class} ${product.id}`)))),
          products.length > most ? h('p', {}, `and ${products.length - most} more`) : null)));
  }
}
