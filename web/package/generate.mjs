// generate.mjs DECLARATIONS.json EXPORTED.txt FOLDER: the types of the module's functions (raw.d.ts), the places of fields in
// the records they read and write, and the constants of the headers (raw.js), from what scripts/declarations --pointer 4
// has read of the C headers.
import { readFileSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';

const [declarations, exported, folder] = process.argv.slice(2);
if (folder === undefined) {
  console.error('usage: generate.mjs DECLARATIONS.json EXPORTED.txt FOLDER');
  process.exit(2);
}
const declared = JSON.parse(readFileSync(declarations, 'utf8'));
const offered = new Set(readFileSync(exported, 'utf8').split(/\s+/).filter(Boolean));

// What C has as the type, for the words beside an argument.
function inC(type) {
  switch (type.kind) {
    case 'void':
      return 'void';
    case 'number':
      return type.name;
    case 'pointer':
      return `${type.const ? 'const ' : ''}${inC(type.to)}*`;
    case 'array':
      return `${inC(type.of)}[${type.length}]`;
    case 'function':
      return 'function';
    default:
      return type.name;
  }
}

function inTypeScript(type) {
  if (type.kind === 'void') return 'void';
  if (type.kind !== 'number') return 'Pointer';
  if (type.size === 8 && !['double', 'float'].includes(type.name)) return 'bigint';
  return 'number';
}

// Words of the language cannot be names of arguments.
const argument = (name) => (['function', 'class', 'default', 'delete', 'in', 'new', 'this', 'var'].includes(name) ? `${name}_` : name);

// A comment's end within a comment would end it.
const comment = (text) => text.replaceAll('*/', '* /');

function signature(declaration) {
  const list = declaration.arguments.map(({ name, type }) => `${argument(name)}: ${inTypeScript(type)}`);
  const words = declaration.arguments.map(({ name, type }) => `${name} ${inC(type)}`).join(', ');
  const lines = `${declaration.text}\n${inC(declaration.result)} ${declaration.name}(${words})`.trim().split('\n');
  return [
    '  /**',
    ...lines.map((line) => `   * ${comment(line)}`.trimEnd()),
    '   */',
    `  _${declaration.name}(${list.join(', ')}): ${inTypeScript(declaration.result)};`,
  ].join('\n');
}

const functions = declared.functions.filter(({ name }) => offered.has(`_${name}`));

// Where a field lies, and what it is: arrays of numbers have a length, records in records are named.
function place({ name, type, offset }) {
  let length = 1;
  let inner = type;
  while (inner.kind === 'array') {
    length *= inner.length;
    inner = inner.of;
  }
  return [name, { offset, type: inner.kind === 'number' || inner.kind === 'record' ? inner.name : 'pointer', length }];
}
const records = Object.fromEntries(
  declared.records.map(({ name, size, alignment, fields }) => [
    name, { size, alignment, fields: Object.fromEntries(fields.map(place)) },
  ]),
);
const constants = Object.fromEntries(declared.constants.map(({ name, value }) => [name, value]));

writeFileSync(join(folder, 'raw.d.ts'), `// Made of the C headers by generate.mjs.

/** An address in the module's memory; 0 is null. */
export type Pointer = number;

/** The C interface, function by function; the headers tell what each does. */
export interface Functions {
${functions.map(signature).join('\n')}
}

/** Files in memory, as emscripten has them. */
export interface Files {
  mkdir(path: string): void;
  writeFile(path: string, bytes: Uint8Array): void;
  unlink(path: string): void;
}

/** The module: the functions, its memory, which moves when it grows, and texts in it. */
export interface Raw extends Functions {
  readonly HEAP8: Int8Array;
  readonly HEAPU8: Uint8Array;
  readonly HEAP16: Int16Array;
  readonly HEAPU16: Uint16Array;
  readonly HEAP32: Int32Array;
  readonly HEAPU32: Uint32Array;
  readonly HEAPF32: Float32Array;
  readonly HEAPF64: Float64Array;
  readonly FS: Files;
  UTF8ToString(address: Pointer): string;
  stringToUTF8(text: string, address: Pointer, room: number): void;
  lengthBytesUTF8(text: string): number;
  _malloc(bytes: number): Pointer;
  _free(address: Pointer): void;
  /** A question as JSON, answered as JSON (questions.ts); valid until the next one. */
  _tavdweb_answer(question: Pointer): Pointer;
}

export interface Field {
  readonly offset: number;
  /** A number such as "float" or "int16", a record, or "pointer". */
  readonly type: string;
  readonly length: number;
}
export interface RecordLayout {
  readonly size: number;
  readonly alignment: number;
  readonly fields: Readonly<Record<string, Field>>;
}
/** Every record of the interface, as it lies in the module's memory. */
export const records: {
${Object.keys(records).map((name) => `  readonly ${name}: RecordLayout;`).join('\n')}
};

/** The constants of the headers. */
export const constants: {
${Object.entries(constants).map(([name, value]) => `  readonly ${name}: ${JSON.stringify(value)};`).join('\n')}
};
`);
writeFileSync(join(folder, 'raw.js'), `// Made of the C headers by generate.mjs.
export const records = ${JSON.stringify(records)};
export const constants = ${JSON.stringify(constants)};
`);
writeFileSync(join(folder, 'tavd.d.mts'), `import type { Raw } from './raw.js';
interface Settings {
  instantiateWasm(imports: WebAssembly.Imports, done: (instance: WebAssembly.Instance) => void): object;
}
export default function createModule(settings: Settings): Promise<Raw>;
`);

const missing = [...offered].filter((name) => !functions.some((each) => `_${each.name}` === name)
  && !['_malloc', '_free', '_tavdweb_answer'].includes(name));
if (missing.length > 0) {
  console.error(`generate.mjs: exported, but declared in no header: ${missing.join(' ')}`);
  process.exit(1);
}
