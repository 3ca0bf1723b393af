// One product: its duty, what it does there, and its drawings.
import type { Calculated, Drawing, ShownProduct, Which } from 'tavd';
import { Latest, messageOf, type App } from './app.js';
import { FlowDiagram, showPicture, type PlotPoint } from './diagram.js';
import { choice, fill, h, labelled } from './dom.js';
import { csv, download, fileName } from './downloads.js';
import { amount, brief, nameOf, sizeText } from './numbers.js';
import { answersOf, answersTable, bandsTable, type Answer } from './results.js';
import { mostCompared, type State } from './state.js';

const steps = 1000; // of a slider
const proportion = 0.75; // height of a drawing to its width
const usualWidth = 640;

type Range = [number, number];

interface Amount {
  field: HTMLInputElement;
  slider: HTMLInputElement;
}

/** What stands of a flow or a pressure on its axis, and back: logarithmic as the diagrams, unless it begins at 0 as a fan's. */
const partOf = (value: number, [low, high]: Range) =>
  low > 0 ? Math.log(value / low) / Math.log(high / low) : (value - low) / (high - low);
const valueOf = (part: number, [low, high]: Range) => (low > 0 ? low * (high / low) ** part : low + part * (high - low));

export class ProductView {
  readonly element = h('div', { class: 'product' });
  readonly #answers = h('div', { class: 'results', 'aria-live': 'off' });
  readonly #diagram: FlowDiagram;
  readonly #flowNote = h('p', { class: 'note' });
  readonly #throw = h('div', { class: 'diagram' });
  readonly #sketch = h('div', { class: 'diagram' });
  readonly #refresh = new Latest(() => this.#ask());
  readonly #load = new Latest(() => this.#read());
  #product: ShownProduct | null = null;
  #amounts: { qv: Amount; dp: Amount } | null = null;
  #shown: { key: string; pictures: Map<string, Drawing>; answers: Answer[] } = { key: '', pictures: new Map(), answers: [] };
  /** Of how many states the answers were shown: what tests wait for. */
  #generation = 0;

  constructor(private readonly app: App) {
    this.#diagram = new FlowDiagram((point) => this.#dragged(point), (flow, pressure) => this.#stepped(flow, pressure));
  }

  /** Another product, other parameters, units or texts. */
  load(): Promise<void> {
    return this.#load.run();
  }

  /** Another duty. */
  async refresh(): Promise<void> {
    if (this.#product === null) return;
    this.#showDuty();
    await this.#refresh.run();
  }

  get #which(): Which {
    const { state } = this.app;
    return { class: state.class, id: state.id, parameters: state.parameters };
  }

  get #flowUnit() {
    return this.app.units.flowOf(this.#product?.by_velocity ?? false);
  }

  /** The duty as the module takes it. */
  get #duty(): { qv: string; dp: string } {
    const { state, units } = this.app;
    return { qv: amount(state.qv, this.#flowUnit), dp: amount(state.dp, units.pressure) };
  }

  get #limits(): { qv: Range; dp: Range } {
    const limits = this.#product?.limits ?? {};
    const find = (...names: string[]) => Object.entries(limits).find(([name]) => names.some((each) => name.startsWith(each)))?.[1] ?? 0;
    return { qv: [find('qv_min_', 'v_min_'), find('qv_max_', 'v_max_')], dp: [find('dp_min_'), find('dp_max_')] };
  }

  async #read(): Promise<void> {
    const { app } = this;
    const which = this.#which;
    if (which.id === '') {
      this.#product = null;
      fill(this.element, h('p', { class: 'empty' }, 'Choose a product from the list.'));
      this.#told(which);
      return;
    }
    let product: ShownProduct;
    try {
      product = await app.tavd.product(which);
    } catch (error) {
      this.#product = null;
      fill(this.element, h('p', { class: 'empty' }, messageOf(error)));
      this.#told(which);
      return;
    }
    const wasByVelocity = this.#product?.by_velocity;
    this.#product = product;
    const changes = wasByVelocity !== undefined && wasByVelocity !== product.by_velocity;
    if (app.state.qv === '' || app.state.dp === '' || changes) this.#chooseDuty();
    this.#shown = { key: '', pictures: new Map(), answers: [] };
    this.#build(product);
    if (product.limits === null) {
      this.#told(which);
      return;
    }
    await this.#calibrate();
    await this.#drawSketch(product);
    await this.refresh();
  }

  /** The middle of what the product is for. */
  #chooseDuty(): void {
    const { qv, dp } = this.#limits;
    const number = (value: number) => (Number.isFinite(value) && value > 0 ? String(Number(value.toPrecision(2))) : '');
    this.app.update({
      qv: number(valueOf(1 / 2, qv) / this.#flowUnit.in_base),
      dp: number(valueOf(1 / 2, dp) / this.app.units.pressure.in_base),
    });
  }

  #build(product: ShownProduct): void {
    const { app } = this;
    const throwChoice = product.throw_values.length > 1
      ? labelled('Throw line', choice(
          [{ value: '', text: 'first' }, ...product.throw_values.map((value) => ({ value, text: value }))], app.state.throwValue,
          (throwValue) => app.update({ throwValue })))
      : null;
    fill(this.element,
      this.#heading(product),
      product.limits === null
        ? h('p', { class: 'empty' }, 'This product has no flow data to calculate with.')
        : h('div', { class: 'sheet' },
            h('section', { class: 'duty', 'aria-label': 'Duty' }, ...this.#dutyFields(product), ...this.#parameterFields(product), throwChoice),
            h('section', { class: 'numbers', 'aria-label': 'Results' }, this.#answers),
            this.#figure('flow', 'Flow diagram', this.#diagram.element, this.#flowNote),
            product.has_throw && this.#figure('throw', 'Throw diagram', this.#throw),
            product.has_sketch && this.#figure('sketch', 'Sketch', this.#sketch),
          ),
    );
  }

  #heading(product: ShownProduct): HTMLElement {
    const { app } = this;
    const key = `${product.class} ${product.id}`;
    const isCompared = app.state.compare.includes(key);
    const compare = h('button', {
      type: 'button', 'aria-pressed': isCompared ? 'true' : 'false', disabled: !isCompared && app.state.compare.length >= mostCompared,
      click: () => {
        const now = app.state.compare.includes(key);
        app.update({ compare: now ? app.state.compare.filter((each) => each !== key) : [...app.state.compare, key] });
        compare.setAttribute('aria-pressed', now ? 'false' : 'true');
      },
    }, 'Compare');
    const size = sizeText(product.size);
    const sizes = product.sizes.length > 0
      ? labelled('Size', choice(
          [{ value: '', text: `${product.sizes.length} sizes` }, ...product.sizes.map(({ id, size: each }) => ({ value: id, text: `${sizeText(each)}  ${id}` }))],
          '', (id) => id !== '' && app.update({ id })))
      : null;
    return h('header', { class: 'heading' },
      h('div', {},
        h('h1', {}, nameOf(product)),
        h('p', { class: 'what' }, [product.description, product.kind_text, size && `${size} mm`].filter(Boolean).join(' · ')),
      ),
      h('div', { class: 'actions' }, sizes, compare,
        h('button', { type: 'button', click: () => this.#downloadCsv() }, 'CSV'),
        h('button', { type: 'button', click: () => window.print() }, 'Print'),
      ),
    );
  }

  #dutyFields(product: ShownProduct): HTMLElement[] {
    const { state, units } = this.app;
    const { qv, dp } = this.#limits;
    const make = (name: 'qv' | 'dp', text: string, range: Range, unit: { sign: string; in_base: number }) => {
      const shown: Range = [range[0] / unit.in_base, range[1] / unit.in_base];
      const field = h('input', {
        type: 'text', inputmode: 'decimal', name, autocomplete: 'off', value: state[name],
        input: () => this.app.update({ [name]: field.value.trim().replace(',', '.') }),
      });
      const slider = h('input', {
        type: 'range', min: 0, max: steps, step: 1, 'aria-label': `${text}, slider`,
        input: () => this.app.update({ [name]: brief(valueOf(Number(slider.value) / steps, shown)) }),
      });
      const element = h('div', { class: 'amount' }, labelled(text, field, h('span', { class: 'unit' }, unit.sign)), slider,
        h('p', { class: 'range' }, `${brief(shown[0])} to ${brief(shown[1])} ${unit.sign}`));
      return { field, slider, element };
    };
    const flow = make('qv', product.by_velocity ? 'Air velocity' : 'Flow', qv, this.#flowUnit);
    const pressure = make('dp', 'Total pressure', dp, units.pressure);
    this.#amounts = { qv: flow, dp: pressure };
    const limit = h('input', {
      type: 'text', inputmode: 'decimal', name: 'limit', autocomplete: 'off', value: state.limit, placeholder: 'any',
      input: () => this.app.update({ limit: limit.value.trim() }),
    });
    const damping = h('input', {
      type: 'text', inputmode: 'decimal', name: 'damping', autocomplete: 'off', value: state.damping,
      input: () => this.app.update({ damping: damping.value.trim() }),
    });
    return [flow.element, pressure.element,
      labelled('Level in the room, at most', limit, h('span', { class: 'unit' }, 'dB(A)')),
      labelled('Room damping', damping, h('span', { class: 'unit' }, 'dB'))];
  }

  #parameterFields(product: ShownProduct): HTMLElement[] {
    const chosen = new Map(this.app.state.parameters.map((each) => [each.slice(0, each.indexOf('=')), each.slice(each.indexOf('=') + 1)]));
    return product.parameters.map(({ name, values }) =>
      labelled(name, choice(
        [{ value: '', text: 'none' }, ...values.map((value) => ({ value, text: value }))], chosen.get(name) ?? '',
        (value) => {
          if (value === '') chosen.delete(name);
          else chosen.set(name, value);
          this.app.update({ parameters: [...chosen].map(([each, of]) => `${each}=${of}`) });
        })));
  }

  #figure(name: string, text: string, picture: HTMLElement, ...behind: HTMLElement[]): HTMLElement {
    const save = h('button', {
      type: 'button', class: 'quiet', 'aria-label': `Download the ${text.toLowerCase()} as SVG`,
      click: () => {
        const drawing = this.#shown.pictures.get(name);
        if (drawing) download(fileName(this.app.state.id, `${name}.svg`), 'image/svg+xml', drawing.picture);
      },
    }, 'SVG');
    return h('figure', { class: `figure ${name}` }, h('figcaption', {}, text, save), picture, ...behind);
  }

  /** Width and height that a drawing is asked for. */
  #size(place: HTMLElement): string {
    const width = Math.round(Math.min(1400, Math.max(280, place.clientWidth || usualWidth)));
    return `${width}x${Math.round(width * proportion)}`;
  }

  async #calibrate(): Promise<void> {
    const { tavd, units } = this.app;
    const size = this.#size(this.#diagram.element);
    try {
      await this.#diagram.calibrate(this.#limits, ({ qv, dp }) => tavd.flowDiagram({ ...this.#which, qv, dp, size, units: units.list }));
    } catch {
      // The diagram itself will say what is wrong with it.
    }
  }

  async #drawSketch(product: ShownProduct): Promise<void> {
    if (!product.has_sketch) return;
    try {
      const drawing = await this.app.tavd.sketch({ ...this.#which, size: this.#size(this.#sketch) });
      this.#shown.pictures.set('sketch', drawing);
      showPicture(this.#sketch, drawing);
    } catch (error) {
      fill(this.#sketch, h('p', { class: 'note' }, messageOf(error)));
    }
  }

  #showDuty(): void {
    const { state, units } = this.app;
    const limits = this.#limits;
    for (const [name, unit] of [['qv', this.#flowUnit], ['dp', units.pressure]] as const) {
      const parts = this.#amounts?.[name];
      if (parts === undefined) continue;
      if (document.activeElement !== parts.field) parts.field.value = state[name];
      const part = partOf(Number(state[name]) * unit.in_base, limits[name]);
      const place = Number.isFinite(part) ? Math.round(Math.min(1, Math.max(0, part)) * steps) : 0;
      if (document.activeElement !== parts.slider) parts.slider.value = String(place);
      parts.slider.setAttribute('aria-valuetext', `${state[name]} ${unit.sign}`);
    }
  }

  async #ask(): Promise<void> {
    const { tavd, state, units } = this.app;
    const product = this.#product;
    if (product === null || product.limits === null) return;
    const { qv, dp } = this.#duty;
    const point = { ...this.#which, qv, dp, units: units.list };
    const asked: [Promise<Calculated>, Promise<Drawing>, Promise<Drawing> | null] = [
      tavd.calculate({ ...point, room_damping: state.damping }),
      tavd.flowDiagram({ ...point, size: this.#size(this.#diagram.element) }),
      product.has_throw
        ? tavd.throwDiagram({ ...this.#which, qv, value: state.throwValue, unit: units.flow.on_axes ? units.flow.name : 'l/s', size: this.#size(this.#throw) })
        : null,
    ];
    const [calculated, flow, thrown] = await Promise.allSettled(asked);
    if (product !== this.#product) return;
    if (calculated.status === 'fulfilled') this.#showAnswers(calculated.value);
    else fill(this.#answers, h('p', { class: 'bad' }, messageOf(calculated.reason)));
    if (flow.status === 'fulfilled') {
      this.#shown.pictures.set('flow', flow.value);
      this.#diagram.show(flow.value);
      this.#flowNote.textContent = flow.value.unmarked;
    } else this.#flowNote.textContent = calculated.status === 'fulfilled' ? messageOf(flow.reason) : '';
    if (thrown.status === 'fulfilled' && thrown.value !== null) {
      this.#shown.pictures.set('throw', thrown.value);
      showPicture(this.#throw, thrown.value);
    } else if (thrown.status === 'rejected') fill(this.#throw, h('p', { class: 'note' }, messageOf(thrown.reason)));
    this.#told(state);
  }

  /** Says on the element what it shows, once it does. */
  #told(state: Pick<State, 'class' | 'id'>): void {
    this.element.dataset['generation'] = String(++this.#generation);
    this.element.dataset['shows'] = `${state.class} ${state.id}`;
  }

  #showAnswers(calculated: Calculated): void {
    const answers = answersOf(calculated, this.app.units, this.app.state.limit);
    this.#shown.answers = answers;
    fill(this.#answers, answersTable(answers), bandsTable(calculated));
  }

  #dragged({ qv, dp }: PlotPoint): void {
    const limits = this.#limits;
    const held = (value: number, [low, high]: Range) => Math.min(high, Math.max(low, value));
    this.app.update({
      qv: brief(held(qv, limits.qv) / this.#flowUnit.in_base),
      dp: brief(held(dp, limits.dp) / this.app.units.pressure.in_base),
    });
  }

  #stepped(flow: number, pressure: number): void {
    const { state, units } = this.app;
    this.#dragged({
      qv: Number(state.qv) * this.#flowUnit.in_base * flow,
      dp: Number(state.dp) * units.pressure.in_base * pressure,
    });
  }

  #downloadCsv(): void {
    const { state, units } = this.app;
    const rows: (string | number)[][] = [
      ['answer', 'value', 'unit'], ['class', state.class, ''], ['id', state.id, ''],
      ['flow', state.qv, this.#flowUnit.name], ['total pressure', state.dp, units.pressure.name],
      ...this.#shown.answers.map(({ name, value, unit }) => [name, value, unit]),
    ];
    download(fileName(state.id, 'results.csv'), 'text/csv;charset=utf-8', csv(rows));
  }
}
