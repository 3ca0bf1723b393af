// Elements from their parts.
export type Child = Node | string | number | null | undefined | false;
type Attributes = Record<string, string | number | boolean | null | undefined | ((event: never) => void)>;

export function h<Tag extends keyof HTMLElementTagNameMap>(
  tag: Tag,
  attributes: Attributes = {},
  ...children: Child[]
): HTMLElementTagNameMap[Tag] {
  const element = document.createElement(tag);
  for (const [name, value] of Object.entries(attributes)) {
    if (value === undefined || value === null || value === false) continue;
    if (typeof value === 'function') element.addEventListener(name, value as EventListener);
    else element.setAttribute(name, value === true ? '' : String(value));
  }
  element.append(...shown(children));
  return element;
}

function shown(children: Child[]): (Node | string)[] {
  return children
    .filter((child): child is Node | string | number => child !== null && child !== undefined && child !== false)
    .map((child) => (typeof child === 'number' ? String(child) : child));
}

export function fill(element: Element, ...children: Child[]): void {
  element.replaceChildren(...shown(children));
}

export function byId(id: string): HTMLElement {
  const element = document.getElementById(id);
  if (element === null) throw new Error(`the page has no ${id}`);
  return element;
}

let labels = 0;

/** A field with its label in front of it. */
export function labelled(text: string, field: HTMLElement, ...behind: Child[]): HTMLElement {
  field.id ||= `field-${++labels}`;
  return h('div', { class: 'field' }, h('label', { for: field.id }, text), h('span', { class: 'entry' }, field, ...behind));
}

export function choice(
  options: { value: string; text: string }[],
  chosen: string,
  change: (value: string) => void,
): HTMLSelectElement {
  const select = h('select', { change: () => change(select.value) });
  for (const { value, text } of options) select.append(h('option', { value, selected: value === chosen }, text));
  return select;
}
