// Up to four products side by side at the same duty.
import type { Calculated, Drawing, ShownProduct } from 'tavd';
import { Latest, messageOf, type App } from './app.js';
import { pictureElement } from './diagram.js';
import { fill, h } from './dom.js';
import { amount, nameOf, sizeText } from './numbers.js';
import { answersOf, type Answer } from './results.js';
import { mostCompared } from './state.js';

interface Column {
  key: string;
  product?: ShownProduct;
  answers: Answer[];
  diagram?: Drawing;
  problem: string;
}

export class CompareView {
  readonly element = h('div', { class: 'compare' });
  readonly #refresh = new Latest(() => this.#ask());
  #generation = 0;

  constructor(private readonly app: App) {}

  load(): Promise<void> {
    return this.refresh();
  }

  refresh(): Promise<void> {
    return this.#refresh.run();
  }

  async #column(key: string): Promise<Column> {
    const { tavd, state, units } = this.app;
    const [name = '', ...rest] = key.split(' ');
    const which = { class: name, id: rest.join(' ') };
    const column: Column = { key, answers: [], problem: '' };
    try {
      column.product = await tavd.product(which);
      const point = { ...which, qv: amount(state.qv, units.flow), dp: amount(state.dp, units.pressure), units: units.list };
      const calculated: Calculated = await tavd.calculate({ ...point, room_damping: state.damping });
      column.answers = answersOf(calculated, units, state.limit);
      column.diagram = await tavd.flowDiagram({ ...point, size: '400x300' });
    } catch (error) {
      column.problem = messageOf(error);
    }
    return column;
  }

  async #ask(): Promise<void> {
    const columns = await Promise.all(this.app.state.compare.map((key) => this.#column(key)));
    this.#show(columns);
    this.element.dataset['generation'] = String(++this.#generation);
  }

  #show(columns: Column[]): void {
    const { app } = this;
    const { state, units } = app;
    if (columns.length === 0) {
      fill(this.element, h('h1', {}, 'Compare'),
        h('p', { class: 'empty' }, `Up to ${mostCompared} products stand side by side here: press Compare beside a product.`));
      return;
    }
    const rows = new Map<string, { name: string; unit: string }>();
    for (const column of columns) for (const { key, name, unit } of column.answers) rows.set(key, rows.get(key) ?? { name, unit });
    const cell = (column: Column, key: string) => {
      const answer = column.answers.find((each) => each.key === key);
      return h('td', { class: answer?.bad ? 'number bad' : 'number', 'data-answer': answer && key, 'data-value': answer?.value }, answer?.shown ?? '–');
    };
    const remove = (key: string) => app.update({ compare: state.compare.filter((each) => each !== key) });
    const table = h('table', { class: 'compared' },
      h('caption', {}, 'Products side by side'),
      h('thead', {}, h('tr', {}, h('td', {}),
        ...columns.map(({ key, product }) => h('th', { scope: 'col' },
          h('span', {}, product ? nameOf(product) : key), ' ',
          h('button', { type: 'button', class: 'quiet', 'aria-label': `Remove ${key}`, click: () => remove(key) }, '×'))))),
      h('tbody', {},
        h('tr', {}, h('th', { scope: 'row' }, 'Description'), ...columns.map(({ product, problem }) => h('td', {}, problem || product?.description || product?.kind_text))),
        h('tr', {}, h('th', { scope: 'row' }, 'Size'), ...columns.map(({ product }) => h('td', {}, product ? sizeText(product.size) : ''))),
        ...[...rows].map(([key, { name, unit }]) =>
          h('tr', {}, h('th', { scope: 'row' }, name, unit && h('span', { class: 'unit' }, ` ${unit}`)), ...columns.map((column) => cell(column, key)))),
        h('tr', { class: 'pictures' }, h('th', { scope: 'row' }, 'Flow diagram'),
          ...columns.map(({ diagram }) => h('td', {}, diagram ? h('div', { class: 'diagram' }, pictureElement(diagram)) : '–'))),
      ));
    table.style.setProperty('--products', String(columns.length));
    fill(this.element,
      h('h1', {}, 'Compare'),
      h('p', { class: 'what' }, `At ${state.qv} ${units.flow.sign} and ${state.dp} ${units.pressure.sign}`),
      h('div', { class: 'scrolled', tabindex: 0, role: 'region', 'aria-label': 'Comparison' }, table));
  }
}
