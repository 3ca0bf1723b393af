// The answers at an operating point, as a table.
import type { Calculated, Code } from 'tavd';
import { h, type Child } from './dom.js';
import { fixed, type Units } from './numbers.js';

/** One answer: what it is, its number in full, as it is shown, and its unit. */
export interface Answer {
  name: string;
  key: string;
  value: number | string;
  shown: string;
  unit: string;
  note?: string;
  bad?: boolean;
}

const noteOf = (code: Code | undefined): string => (code === undefined || code.code === 0 ? '' : code.text);

const member = (answer: object | undefined, name: string): number | undefined =>
  Object.entries(answer ?? {}).find(([key, value]) => key.startsWith(name) && typeof value === 'number')?.[1] as number | undefined;

export function answersOf(calculated: Calculated, units: Units, limit: string): Answer[] {
  const { operating_point: point, pressure_range: range, fan, sound } = calculated;
  const pressure = units.pressure;
  const answers: Answer[] = [];
  const add = (name: string, key: string, value: number | undefined, decimals: number, unit: string, more: Partial<Answer> = {}) => {
    if (value !== undefined) answers.push({ name, key, value, shown: fixed(value, decimals), unit, ...more });
  };
  const tell = (name: string, key: string, code: Code | undefined) => {
    if (code !== undefined && code.code !== 0) answers.push({ name, key, value: code.text, shown: code.text, unit: '', bad: true });
  };
  const inLimits = point?.flow_in_range !== false;
  if (!inLimits) {
    answers.push({ name: 'Flow', key: 'flow_in_range', value: 'outside', shown: 'outside the limits of the product', unit: '', bad: true });
  }
  add('Lowest pressure', 'dp_min', member(range, 'dp_min_'), pressure.decimals, pressure.sign);
  add('Highest pressure', 'dp_max', member(range, 'dp_max_'), pressure.decimals, pressure.sign);
  tell('Pressure', 'pressure_range', range);
  for (const [name, key] of [['Position', 'position_stepless'], ['Nearest setting', 'position_stepped']] as const) {
    const found = calculated[key];
    if (found?.position === undefined) tell(name, key, found);
    else add(name, key, found.position, 2, '', { note: noteOf(found), bad: found.code !== 0 });
  }
  if (fan !== undefined) {
    add('Total pressure', 'dp_total', member(fan, 'dp_total_'), pressure.decimals, pressure.sign);
    add('Static pressure', 'dp_static', member(fan, 'dp_static_'), pressure.decimals, pressure.sign);
    add('Dynamic pressure', 'dp_dynamic', member(fan, 'dp_dynamic_'), pressure.decimals, pressure.sign);
    tell('Fan', 'fan', fan as Code);
    tell('Duty', 'fan_check', fan.check);
  }
  const level = sound?.room_level_dBA;
  const over = level !== undefined && limit !== '' && level > Number(limit);
  const within = level !== undefined && limit !== '' && !over ? `within ${limit} dB(A)` : '';
  add('Level in the room', 'room_level_dBA', level, 1, 'dB(A)', {
    note: over ? `${fixed(level - Number(limit), 1)} dB above the limit` : within, bad: over,
  });
  add('Sound power, A-weighted', 'lw_dBA', sound?.lw_dBA, 1, 'dB(A)');
  tell('Sound', 'sound', sound);
  add('Throw length', 'throw_length_m', calculated.throw_length_m, 2, 'm');
  if (point?.reachable === false) {
    answers.push({ name: 'Operating point', key: 'reachable', value: 'no', shown: 'cannot be reached with this product', unit: '', bad: true });
  }
  return answers;
}

export function answersTable(answers: Answer[]): HTMLElement {
  const rows = answers.map(({ name, key, value, shown, unit, note, bad }) =>
    h('tr', { class: bad ? 'bad' : undefined },
      h('th', { scope: 'row' }, name),
      h('td', { class: typeof value === 'number' ? 'number' : 'words', colspan: typeof value === 'number' ? undefined : 2,
        'data-answer': key, 'data-value': value }, shown),
      typeof value === 'number' && h('td', { class: 'unit' }, unit, note ? h('span', { class: 'note' }, ` ${note}`) : null),
    ),
  );
  return h('table', { class: 'answers' }, h('caption', {}, 'At the operating point'), h('tbody', {}, ...rows));
}

/** Levels band by band; null where there are none. */
export function bandsTable(calculated: Calculated): HTMLElement | null {
  const { sound, attenuation_dB: attenuation } = calculated;
  const bands = sound?.bands_Hz ?? (attenuation !== undefined ? [63, 125, 250, 500, 1000, 2000, 4000, 8000] : null);
  if (bands === null) return null;
  const line = (name: string, key: string, levels: number[] | undefined): Child =>
    levels !== undefined &&
    h('tr', {}, h('th', { scope: 'row' }, name),
      ...levels.map((level, band) => h('td', { class: 'number', 'data-answer': `${key}_${band}`, 'data-value': level }, fixed(level, 0))));
  return h('div', { class: 'scrolled', tabindex: 0, role: 'region', 'aria-label': 'Octave bands' },
    h('table', { class: 'bands' },
      h('caption', {}, 'Octave bands, dB'),
      h('thead', {}, h('tr', {}, h('th', { scope: 'col' }, 'Hz'),
        ...bands.map((hz) => h('th', { scope: 'col', class: 'number' }, hz < 1000 ? String(hz) : `${hz / 1000}k`)))),
      h('tbody', {}, line('Sound power', 'lw', sound?.lw_dB), line('Attenuation', 'attenuation', attenuation)),
    ));
}

