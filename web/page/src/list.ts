// The list of products with its search. Of a long list only what is in sight has elements.
import type { ListedProduct } from 'tavd';
import type { App } from './app.js';
import { fill, h } from './dom.js';
import { nameOf, sizeText } from './numbers.js';

const rowHeight = 46; // CSS pixels, as style.css has it
const margin = 8; // rows above and below what is in sight

export class ProductList {
  readonly #search = h('input', {
    type: 'search', id: 'search', placeholder: 'Search: code, size, kind', autocomplete: 'off', spellcheck: 'false',
    'aria-label': 'Search products', 'aria-controls': 'list', input: () => this.#find(), keydown: (event: KeyboardEvent) => this.#key(event),
  });
  readonly #count = h('p', { class: 'count', 'aria-live': 'polite' });
  readonly #rows = h('div', { class: 'rows' });
  readonly #list = h('div', {
    id: 'list', role: 'listbox', tabindex: 0, 'aria-label': 'Products',
    scroll: () => this.#draw(), keydown: (event: KeyboardEvent) => this.#key(event),
  }, this.#rows);
  #texts: string[] = [];
  #found: ListedProduct[] = [];
  #at = -1;

  constructor(private readonly app: App, place: HTMLElement) {
    fill(place, this.#search, this.#count, this.#list);
    new ResizeObserver(() => this.#draw()).observe(this.#list);
  }

  /** The products have changed. */
  load(): void {
    this.#texts = this.app.products.map((product) =>
      [product.code, product.id, product.class, product.description, product.kind_text, sizeText(product.size)]
        .join(' ')
        .toLowerCase(),
    );
    this.#find();
    this.select();
  }

  /** Another product is chosen. */
  select(): void {
    const { state } = this.app;
    this.#at = this.#found.findIndex((product) => product.class === state.class && product.id === state.id);
    if (this.#at >= 0) this.#reveal();
    this.#draw();
  }

  #find(): void {
    const started = performance.now();
    const words = this.#search.value.toLowerCase().split(/\s+/).filter(Boolean);
    this.#found = this.app.products.filter((_, index) => words.every((word) => this.#texts[index]!.includes(word)));
    const { state } = this.app;
    this.#at = this.#found.findIndex((product) => product.class === state.class && product.id === state.id);
    this.#list.scrollTop = 0;
    this.#draw();
    const all = this.app.products.length;
    this.#count.textContent =
      this.#found.length === all ? `${all} products` : `${this.#found.length} of ${all} products`;
    this.#list.dataset['milliseconds'] = (performance.now() - started).toFixed(1);
  }

  #draw(): void {
    const first = Math.max(0, Math.floor(this.#list.scrollTop / rowHeight) - margin);
    const last = Math.min(this.#found.length, Math.ceil((this.#list.scrollTop + this.#list.clientHeight) / rowHeight) + margin);
    this.#rows.style.height = `${this.#found.length * rowHeight}px`;
    const rows = this.#found.slice(first, last).map((product, index) => this.#row(product, first + index));
    fill(this.#rows, ...rows);
    const chosen = this.#at >= first && this.#at < last ? `product-${this.#at}` : '';
    if (chosen !== '') this.#list.setAttribute('aria-activedescendant', chosen);
    else this.#list.removeAttribute('aria-activedescendant');
  }

  #row(product: ListedProduct, index: number): HTMLElement {
    const row = h('div', {
      role: 'option', id: `product-${index}`, class: 'row', 'aria-selected': index === this.#at ? 'true' : 'false',
      'aria-setsize': this.#found.length, 'aria-posinset': index + 1, click: () => this.#choose(index),
    },
      h('span', { class: 'code' }, nameOf(product)),
      h('span', { class: 'size' }, product.family ? 'family' : sizeText(product.size)),
      h('span', { class: 'what' }, product.description || product.kind_text),
    );
    row.style.top = `${index * rowHeight}px`;
    return row;
  }

  #choose(index: number): void {
    const product = this.#found[index];
    if (product === undefined) return;
    this.#at = index;
    this.#reveal();
    this.#draw();
    this.app.update({ view: 'product', class: product.class, id: product.id, parameters: [], throwValue: '' });
  }

  #reveal(): void {
    const top = this.#at * rowHeight;
    const list = this.#list;
    if (top < list.scrollTop) list.scrollTop = top;
    else if (top + rowHeight > list.scrollTop + list.clientHeight) list.scrollTop = top + rowHeight - list.clientHeight;
  }

  #key(event: KeyboardEvent): void {
    const page = Math.max(1, Math.floor(this.#list.clientHeight / rowHeight) - 1);
    const inSearch = event.target === this.#search;
    const steps: Record<string, number> = { ArrowDown: 1, ArrowUp: -1, PageDown: page, PageUp: -page };
    if (!inSearch) Object.assign(steps, { Home: -this.#found.length, End: this.#found.length });
    const step = steps[event.key] ?? (inSearch && event.key === 'Enter' && this.#at < 0 ? 1 : 0);
    if (step === 0 || this.#found.length === 0) return;
    event.preventDefault();
    this.#choose(Math.min(this.#found.length - 1, Math.max(0, this.#at + step)));
  }
}
