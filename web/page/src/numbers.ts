// Numbers as the page shows them, in the units that are chosen.
import type { About, Size, Unit } from 'tavd';
import type { State } from './state.js';

export function fixed(value: number | undefined | null, decimals: number): string {
  return value === undefined || value === null || !Number.isFinite(value) ? '–' : value.toFixed(decimals);
}

/** Four significant digits, without zeros behind them. */
export function brief(value: number): string {
  return Number.isFinite(value) ? String(Number(value.toPrecision(4))) : '–';
}

/** The member of an answer whose name begins so and ends in its unit. */
export function measure(answer: object | null | undefined, name: string): number | undefined {
  for (const [member, value] of Object.entries(answer ?? {})) {
    if (!member.startsWith(`${name}_`) || typeof value !== 'number') continue;
    if (!/_(min|max|total|static|dynamic)/.test(member.slice(name.length))) return value;
  }
  return undefined;
}

export const sizeText = (size: Size | null): string =>
  size === null ? '' : size.diameter_mm !== undefined ? `⌀${size.diameter_mm}` : `${size.width_mm}×${size.height_mm}`;

/** What a product is called. The code of a family may be a template, which its sizes alone fill in. */
export const nameOf = ({ code, id }: { code: string; id: string }): string => (code === '' || code.includes('{') ? id : code);

/** The chosen units, and texts in them. */
export class Units {
  readonly flow: Unit;
  readonly velocity: Unit;
  readonly pressure: Unit;

  constructor(readonly about: About, state: State) {
    const named = (units: Unit[], name: string) => units.find((unit) => unit.name === name) ?? units[0]!;
    this.flow = named(about.flow_units, state.flowUnit);
    this.pressure = named(about.pressure_units, state.pressureUnit);
    this.velocity = named(about.velocity_units, this.flow.name === 'cfm' ? 'fpm' : 'm/s');
  }

  /** That of a product's flows. */
  flowOf(byVelocity: boolean): Unit {
    return byVelocity ? this.velocity : this.flow;
  }

  /** As the module takes them. */
  get list(): string {
    return [this.flow, this.velocity, this.pressure].map((unit) => unit.name).join(',');
  }
}

/** A number with its unit, as the module takes it; base units have none, so that every digit counts. */
export function amount(text: string, unit: Unit): string {
  return text === '' || unit.in_base === 1 ? text : `${text}${unit.name}`;
}

export function converted(text: string, from: Unit, to: Unit): string {
  const value = Number(text);
  if (text === '' || !Number.isFinite(value) || from === to) return text;
  return brief((value * from.in_base) / to.in_base);
}
