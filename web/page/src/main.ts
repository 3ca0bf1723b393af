// The page: its settings, its database, and which of the views is shown.
import type { About, ListedProduct } from 'tavd';
import { connect } from 'tavd/worker';
import { messageOf, working, type App } from './app.js';
import { CompareView } from './compare.js';
import { byId, choice, fill, h } from './dom.js';
import { ProductList } from './list.js';
import { Units, converted } from './numbers.js';
import { ProductView } from './product.js';
import { SelectionView } from './selection.js';
import { read, written, type State, type View } from './state.js';

const catalogue = './catalogue.tavdb';
const shownFirst = { class: 'DMP', id: 'QZDA-160' }; // of the catalogue: a damper, whose answers a drag changes most
const addressDelay = 250; // ms: a browser takes only so many changes of the address in a while
const mostBytes = 512 * 1024 * 1024; // of a database: what a page can keep in memory with room to spare

const titles: Record<View, string> = { product: 'Product', selection: 'Selection', compare: 'Compare' };

/** Members that change what a view is made of, rather than its duty. */
const structural: (keyof State)[] = ['view', 'class', 'id', 'parameters', 'flowUnit', 'pressureUnit'];

class Page implements App {
  readonly tavd = connect(new Worker(new URL('./worker.ts', import.meta.url), { type: 'module' }));
  about!: About;
  units!: Units;
  state: State = read(location.search);
  products: ListedProduct[] = [];
  #database = 'Sample catalogue';
  #addressTimer = 0;
  #views!: Record<View, ProductView | SelectionView | CompareView>;
  #list!: ProductList;

  async start(): Promise<void> {
    await this.tavd.ready;
    this.about = await this.tavd.about();
    this.units = new Units(this.about, this.state);
    this.#views = { product: new ProductView(this), selection: new SelectionView(this), compare: new CompareView(this) };
    this.#list = new ProductList(this, byId('products'));
    this.#acceptFiles();
    // A sheet that is printed says where its numbers are from.
    addEventListener('beforeprint', () => fill(byId('printed'), [
      `Calculated with tavd ${this.about.version}`, this.#database, new Date().toLocaleDateString(undefined, { dateStyle: 'long' }),
    ].join(' · ')));
    const response = await fetch(catalogue);
    if (!response.ok) throw new Error(`the catalogue could not be loaded: ${response.status} ${response.statusText}`);
    await this.#openWithTexts(new Uint8Array(await response.arrayBuffer()));
    if (this.state.id === '') this.state = { ...this.state, ...shownFirst };
    await this.#takeProducts();
    this.#show();
    addEventListener('popstate', () => {
      this.state = read(location.search);
      void working(() => this.#setTexts());
    });
  }

  /** A link may name a market or a language that there is none of. */
  async #openWithTexts(bytes: Uint8Array): Promise<void> {
    const { market, language } = this.state;
    try {
      await this.tavd.open(bytes, { market, language });
    } catch (error) {
      if (market === '' && language === '') throw error;
      await this.tavd.open(bytes);
      this.state = { ...this.state, market: '', language: '' };
      this.tell(messageOf(error));
    }
  }

  async #takeProducts(): Promise<void> {
    this.products = await this.tavd.products();
    const { state } = this;
    const isThere = this.products.some((product) => product.class === state.class && product.id === state.id);
    const first = this.products.find((product) => product.kind === 20 && !product.family) ?? this.products.find((product) => product.kind !== null) ?? this.products[0];
    if (!isThere && state.id === '' && first !== undefined) this.state = { ...state, class: first.class, id: first.id };
    this.#list.load();
  }

  update(change: Partial<State>): void {
    const before = this.state;
    this.state = { ...before, ...change };
    const changed = (Object.keys(change) as (keyof State)[]).filter(
      (member) => JSON.stringify(before[member]) !== JSON.stringify(this.state[member]));
    if (changed.length === 0) return;
    clearTimeout(this.#addressTimer);
    this.#addressTimer = setTimeout(() => history.replaceState(null, '', written(this.state) || location.pathname), addressDelay);
    this.tell('');
    if (changed.includes('market') || changed.includes('language')) void working(() => this.#setTexts());
    else if (changed.some((member) => structural.includes(member))) this.#show();
    else if (changed.includes('compare')) {
      this.#showViews();
      if (this.state.view === 'compare') void this.#views.compare.refresh();
    } else void this.#views[this.state.view].refresh();
  }

  tell(message: string): void {
    const place = byId('message');
    place.hidden = message === '';
    fill(place, message && h('span', {}, message),
      message && h('button', { type: 'button', class: 'quiet', 'aria-label': 'Close the message', click: () => this.tell('') }, '×'));
  }

  async #setTexts(): Promise<void> {
    const { market, language } = this.state;
    try {
      await this.tavd.setTexts({ market, language });
    } catch (error) {
      this.state = { ...this.state, market: '', language: '' };
      await this.tavd.setTexts({});
      this.tell(messageOf(error));
    }
    await this.#takeProducts();
    this.#show();
  }

  #show(): void {
    this.units = new Units(this.about, this.state);
    this.#list.select();
    this.#showSettings();
    this.#showViews();
    const view = this.#views[this.state.view];
    const main = byId('main');
    if (main.firstChild !== view.element) fill(main, view.element);
    document.title = `${this.state.view === 'product' ? this.state.id || 'Product' : titles[this.state.view]} – tavd`;
    void view.load();
  }

  #showViews(): void {
    const { state } = this;
    const button = (view: View) => h('button', {
      type: 'button', 'aria-current': view === state.view ? 'page' : undefined, 'data-view': view, click: () => this.update({ view }),
    }, titles[view], view === 'compare' && state.compare.length > 0 ? ` (${state.compare.length})` : null);
    const held = (document.activeElement as HTMLElement | null)?.dataset['view'];
    fill(byId('views'), ...(Object.keys(titles) as View[]).map(button));
    if (held !== undefined) byId('views').querySelector<HTMLElement>(`[data-view="${held}"]`)?.focus();
  }

  #showSettings(): void {
    const { state, about } = this;
    const named = (units: { name: string; sign: string }[]) => units.map(({ name, sign }) => ({ value: name, text: sign }));
    const flow = choice(named(about.flow_units), this.units.flow.name, (flowUnit) => this.#changeUnits({ flowUnit }));
    const pressure = choice(named(about.pressure_units), this.units.pressure.name, (pressureUnit) => this.#changeUnits({ pressureUnit }));
    const languages = about.languages.map(({ language, name }) => ({ value: language, text: name }));
    const language = choice([{ value: '', text: 'Language' }, ...languages], state.language, (value) => this.update({ language: value }));
    const markets = about.languages.filter(({ market }) => market.length === 3).map(({ market }) => ({ value: market, text: market }));
    const market = choice([{ value: '', text: 'All markets' }, ...markets], state.market, (value) => this.update({ market: value }));
    const file = h('input', { type: 'file', id: 'file', class: 'unseen', tabindex: -1, 'aria-label': 'Product database', change: () => this.#take(file.files?.[0]) });
    const open = h('button', { type: 'button', title: this.#database, click: () => file.click() }, 'Open …');
    const theme = h('button', { type: 'button', 'aria-label': 'Light or dark', click: () => this.#changeTheme() }, '◐');
    const entries: [HTMLElement, string, string][] = [
      [flow, 'flow-unit', 'Unit of flow'], [pressure, 'pressure-unit', 'Unit of pressure'], [language, 'language', 'Language of descriptions'],
      [market, 'market', 'Market of product codes'],
    ];
    for (const [field, id, text] of entries) {
      field.id = id;
      field.setAttribute('aria-label', text);
    }
    const held = document.activeElement?.id ?? '';
    fill(byId('settings'), flow, pressure, language, market, file, open, theme);
    if (entries.some(([, id]) => id === held)) byId(held).focus();
  }

  /** The duty stays what it is, told in the new units. */
  #changeUnits(change: Partial<Pick<State, 'flowUnit' | 'pressureUnit'>>): void {
    const before = this.units;
    const after = new Units(this.about, { ...this.state, ...change });
    const product = this.products.find((each) => each.class === this.state.class && each.id === this.state.id);
    const byVelocity = this.state.view === 'product' && Object.keys(product?.limits ?? {}).some((name) => name.startsWith('v_'));
    this.update({
      ...change,
      qv: converted(this.state.qv, before.flowOf(byVelocity), after.flowOf(byVelocity)),
      dp: converted(this.state.dp, before.pressure, after.pressure),
    });
  }

  #changeTheme(): void {
    const { dataset } = document.documentElement;
    const isDark = dataset['theme'] ? dataset['theme'] === 'dark' : matchMedia('(prefers-color-scheme: dark)').matches;
    dataset['theme'] = isDark ? 'light' : 'dark';
    try {
      localStorage.setItem('theme', dataset['theme']);
    } catch {
      // A browser that keeps nothing shows the theme for this visit.
    }
  }

  #acceptFiles(): void {
    const drop = byId('drop');
    addEventListener('dragover', (event) => {
      event.preventDefault();
      drop.hidden = false;
    });
    addEventListener('dragleave', (event) => {
      if (event.relatedTarget === null) drop.hidden = true;
    });
    addEventListener('drop', (event) => {
      event.preventDefault();
      drop.hidden = true;
      this.#take(event.dataTransfer?.files[0]);
    });
  }

  #take(file: File | undefined): void {
    if (file !== undefined) void working(() => this.#open(file));
  }

  async #open(file: File): Promise<void> {
    try {
      if (file.size > mostBytes) throw new Error('the file is larger than a page can hold');
      await this.tavd.open(new Uint8Array(await file.arrayBuffer()), { market: this.state.market, language: this.state.language });
      this.#database = file.name;
      this.state = { ...this.state, class: '', id: '', parameters: [], throwValue: '', qv: '', dp: '', only: '', compare: [] };
      this.products = [];
      await this.#takeProducts();
      this.tell('');
      this.#show();
      history.replaceState(null, '', written(this.state) || location.pathname);
    } catch (error) {
      this.tell(`${file.name}: ${messageOf(error)}`);
    }
  }
}

const theme = (() => {
  try {
    return localStorage.getItem('theme');
  } catch {
    return null;
  }
})();
if (theme === 'light' || theme === 'dark') document.documentElement.dataset['theme'] = theme;

const page = new Page();
working(() => page.start()).catch((error: unknown) => {
  page.tell(`The page could not start: ${messageOf(error)}`);
});
if ('serviceWorker' in navigator && import.meta.env.PROD) void navigator.serviceWorker.register('./offline.js');
