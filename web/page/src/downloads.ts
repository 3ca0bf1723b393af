// Files that the page makes.
import { h } from './dom.js';

export function download(name: string, type: string, text: string): void {
  const address = URL.createObjectURL(new Blob([text], { type }));
  const link = h('a', { href: address, download: name });
  link.click();
  setTimeout(() => URL.revokeObjectURL(address), 10_000);
}

export const fileName = (...parts: string[]): string => parts.join('-').replace(/[^\p{L}\p{N}.+-]+/gu, '_');

/** Comma-separated, with what needs it between quotes. */
export function csv(rows: (string | number)[][]): string {
  const cell = (value: string | number) => (/[",\n]/.test(String(value)) ? `"${String(value).replaceAll('"', '""')}"` : String(value));
  return rows.map((row) => row.map(cell).join(',')).join('\n') + '\n';
}
