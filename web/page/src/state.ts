// What the page shows, all of it in the address, so that a link shows the same.
export type View = 'product' | 'selection' | 'compare';

export interface State {
  view: View;
  class: string;
  id: string;
  parameters: string[];
  /** Value that selects the throw line. */
  throwValue: string;
  /** The duty, in the shown units; empty: not told yet. */
  qv: string;
  dp: string;
  /** Highest level in the room, dB(A); empty: any. */
  limit: string;
  damping: string;
  flowUnit: string;
  pressureUnit: string;
  market: string;
  language: string;
  /** What a selection asks beside the duty. */
  only: string;
  throwFrom: string;
  throwTo: string;
  size: string;
  rank: string;
  top: string;
  unknown: string;
  /** "CLASS ID" of each. */
  compare: string[];
}

export const mostCompared = 4;

const beginning: State = {
  view: 'product', class: '', id: '', parameters: [], throwValue: '', qv: '', dp: '', limit: '', damping: '4',
  flowUnit: 'l/s', pressureUnit: 'Pa', market: '', language: '', only: '', throwFrom: '', throwTo: '', size: '',
  rank: 'sound', top: '10', unknown: '', compare: [],
};

const names: Record<keyof State, string> = {
  view: 'view', class: 'class', id: 'id', parameters: 'param', throwValue: 'throw-line', qv: 'qv', dp: 'dp', limit: 'max-lp',
  damping: 'room-damping', flowUnit: 'flow-unit', pressureUnit: 'pressure-unit', market: 'market', language: 'language',
  only: 'only', throwFrom: 'throw-from', throwTo: 'throw-to', size: 'size', rank: 'rank', top: 'top', unknown: 'unknown',
  compare: 'compare',
};

export function read(address: string): State {
  const query = new URLSearchParams(address);
  const state: Record<string, unknown> = { ...beginning, parameters: [], compare: [] };
  for (const [member, name] of Object.entries(names)) {
    const given = query.getAll(name);
    if (given.length === 0) continue;
    state[member] = Array.isArray(beginning[member as keyof State]) ? given : given[0];
  }
  const read = state as unknown as State;
  if (!['product', 'selection', 'compare'].includes(read.view)) read.view = 'product';
  read.compare = read.compare.slice(0, mostCompared);
  return read;
}

export function written(state: State): string {
  const query = new URLSearchParams();
  for (const [member, name] of Object.entries(names)) {
    const value = state[member as keyof State];
    if (Array.isArray(value)) value.forEach((each) => query.append(name, each));
    else if (value !== beginning[member as keyof State]) query.set(name, value);
  }
  const text = query.toString();
  return text === '' ? '' : `?${text}`;
}
