// A diagram whose operating point can be dragged, or moved by the arrow keys.
import type { Drawing, FlowDiagramQuestion } from 'tavd';
import { h } from './dom.js';

export interface PlotPoint {
  qv: number;
  dp: number;
}

/** One axis: where in the picture a number stands. */
interface Axis {
  from: number; // picture units at `low`
  to: number; // and at `high`
  low: number;
  high: number;
  logarithmic: boolean;
}

/** The picture as an element of the page, with a name in place of its own ids, which another picture may have too. */
export function pictureElement(drawing: Drawing): SVGSVGElement {
  const parsed = new DOMParser().parseFromString(drawing.picture, 'image/svg+xml').documentElement;
  const svg = document.importNode(parsed, true) as unknown as SVGSVGElement;
  svg.removeAttribute('aria-labelledby');
  svg.setAttribute('role', 'img');
  svg.setAttribute('aria-label', svg.querySelector('desc')?.textContent ?? 'drawing');
  for (const element of svg.querySelectorAll(':scope > title, :scope > desc')) element.remove();
  for (const element of svg.querySelectorAll('[id]')) {
    element.setAttribute('data-name', element.id);
    element.removeAttribute('id');
  }
  for (const title of svg.querySelectorAll('title')) title.remove();
  return svg;
}

/** Makes `shown` what `next` is, where they differ: of a diagram that is dragged that is its mark, and the rest keeps its layout. */
function become(shown: Element, next: Element): void {
  if (shown.isEqualNode(next)) return;
  const count = shown.childElementCount;
  if (shown.tagName !== next.tagName || count !== next.childElementCount || count === 0) {
    shown.replaceWith(next);
    return;
  }
  for (const { name } of [...shown.attributes]) if (!next.hasAttribute(name)) shown.removeAttribute(name);
  for (const { name, value } of [...next.attributes]) if (shown.getAttribute(name) !== value) shown.setAttribute(name, value);
  const following = [...next.children];
  [...shown.children].forEach((child, index) => become(child, following[index]!));
}

/** Shows the picture in a place that has none, or another one. */
export function showPicture(place: HTMLElement, drawing: Drawing): void {
  const svg = pictureElement(drawing);
  const shown = place.firstElementChild;
  if (shown instanceof SVGSVGElement && place.childElementCount === 1) become(shown, svg);
  else place.replaceChildren(svg);
}

function markOf(svg: SVGSVGElement): { x: number; y: number } | null {
  const mark = svg.querySelector('[data-name^="operating-point"] ellipse');
  return mark === null ? null : { x: Number(mark.getAttribute('cx')), y: Number(mark.getAttribute('cy')) };
}

/** Of places of three numbers, the middle one between the others on a logarithmic axis. */
function axis(low: number, high: number, places: [number, number, number]): Axis {
  const [from, middle, to] = places;
  return { from, to, low, high, logarithmic: Math.abs((from + to) / 2 - middle) < Math.abs(to - from) / 50 };
}

function numberAt(axis: Axis, place: number): number {
  const part = (place - axis.from) / (axis.to - axis.from);
  return axis.logarithmic ? axis.low * (axis.high / axis.low) ** part : axis.low + part * (axis.high - axis.low);
}

export class FlowDiagram {
  readonly element = h('div', {
    class: 'diagram', tabindex: 0, role: 'application', 'aria-roledescription': 'flow diagram',
    'aria-label': 'Flow diagram. Arrow keys move the operating point, with Shift by larger steps',
  });
  #axes: { x: Axis; y: Axis } | null = null;

  /** `moved` gets the number at a place, in base units; `stepped` a factor for flow and for pressure. */
  constructor(moved: (point: PlotPoint) => void, stepped: (flow: number, pressure: number) => void) {
    let held = false;
    const move = (event: PointerEvent) => {
      if (!held) return;
      const point = this.#pointAt(event);
      if (point !== null) moved(point);
    };
    this.element.addEventListener('pointerdown', (event) => {
      if (this.#axes === null || event.button !== 0) return;
      held = true;
      this.element.setPointerCapture(event.pointerId);
      this.element.classList.add('held');
      move(event);
    });
    this.element.addEventListener('pointermove', move);
    for (const end of ['pointerup', 'pointercancel'] as const) {
      this.element.addEventListener(end, () => {
        held = false;
        this.element.classList.remove('held');
      });
    }
    this.element.addEventListener('keydown', (event) => {
      const step = event.shiftKey ? 1.1 : 1.01;
      const factors: Record<string, [number, number]> = {
        ArrowRight: [step, 1], ArrowLeft: [1 / step, 1], ArrowUp: [1, step], ArrowDown: [1, 1 / step],
      };
      const factor = factors[event.key];
      if (factor === undefined) return;
      event.preventDefault();
      stepped(...factor);
    });
  }

  get canBeDragged(): boolean {
    return this.#axes !== null;
  }

  /** Where numbers stand is read off the drawing's own marks of three points within the limits. */
  async calibrate(
    limits: { qv: [number, number]; dp: [number, number] },
    draw: (point: Pick<FlowDiagramQuestion, 'qv' | 'dp'>) => Promise<Drawing>,
  ): Promise<void> {
    const at = ([low, high]: [number, number], part: number) => low * (high / low) ** part;
    const parts = [0.25, 0.5, 0.75];
    const marks = [];
    for (const part of parts) {
      const drawing = await draw({ qv: String(at(limits.qv, part)), dp: String(at(limits.dp, part)) });
      marks.push(markOf(pictureElement(drawing)));
    }
    const [first, middle, last] = marks;
    this.#axes =
      first && middle && last
        ? {
            x: axis(at(limits.qv, 0.25), at(limits.qv, 0.75), [first.x, middle.x, last.x]),
            y: axis(at(limits.dp, 0.25), at(limits.dp, 0.75), [first.y, middle.y, last.y]),
          }
        : null;
    this.element.classList.toggle('draggable', this.#axes !== null);
  }

  show(drawing: Drawing): void {
    showPicture(this.element, drawing);
  }

  #pointAt(event: PointerEvent): PlotPoint | null {
    const svg = this.element.firstElementChild;
    if (this.#axes === null || !(svg instanceof SVGSVGElement)) return null;
    const box = svg.getBoundingClientRect();
    const view = svg.viewBox.baseVal;
    const x = ((event.clientX - box.left) / box.width) * view.width;
    const y = ((event.clientY - box.top) / box.height) * view.height;
    return { qv: numberAt(this.#axes.x, x), dp: numberAt(this.#axes.y, y) };
  }
}
