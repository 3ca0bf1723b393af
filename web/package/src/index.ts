// The library in JavaScript: one database at a time, in memory, read only.
//
//   const tavd = await load();
//   tavd.open(await readFile('products.tavdb'));
//   const answer = tavd.calculate({ class: 'DMP', id: 'QZDA-160', qv: '50', dp: '60' });
//   console.log(answer.position_stepless.position, answer.sound.room_level_dBA);
//
// What cannot be asked or answered throws a TavdError that says what was expected.
import createModule from './tavd.mjs';
import type { Raw } from './raw.js';
import type {
  About, Calculated, Drawing, DrawingQuestion, Duty, FlowDiagramQuestion, ListedProduct, Point, Selected, ShownProduct,
  Texts, ThrowDiagramQuestion, Which,
} from './questions.js';

export type * from './questions.js';
export type { Raw } from './raw.js';

export class TavdError extends Error {
  override name = 'TavdError';
}

/** Where the module comes from: a response, its bytes, or its address; tavd.wasm beside this file unless told. */
export type Wasm = Response | Promise<Response> | BufferSource | URL | string;

const folder = '/databases';

async function bytesOf(wasm: Wasm): Promise<BufferSource | Response> {
  const given = await wasm;
  if (given instanceof URL || typeof given === 'string') {
    const address = new URL(given, import.meta.url);
    if (address.protocol !== 'file:') return await fetch(address);
    const node = 'node:fs/promises';
    const { readFile } = (await import(/* @vite-ignore */ node)) as { readFile(file: URL): Promise<Uint8Array<ArrayBuffer>> };
    return await readFile(address);
  }
  return given;
}

async function instantiate(wasm: Wasm, imports: WebAssembly.Imports): Promise<WebAssembly.WebAssemblyInstantiatedSource> {
  const given = await bytesOf(wasm);
  if (!(typeof Response !== 'undefined' && given instanceof Response)) {
    return await WebAssembly.instantiate(given as BufferSource, imports);
  }
  if (!given.ok) throw new TavdError(`the module could not be loaded: ${given.status} ${given.statusText}`);
  // A server that does not know the type is no reason to fail.
  if (given.headers.get('Content-Type') !== 'application/wasm') {
    return await WebAssembly.instantiate(await given.arrayBuffer(), imports);
  }
  return await WebAssembly.instantiateStreaming(given, imports);
}

export async function load(wasm: Wasm = new URL('./tavd.wasm', import.meta.url)): Promise<Tavd> {
  let failed: (reason: unknown) => void = () => undefined;
  const failure = new Promise<never>((_, reject) => (failed = reject));
  const made = createModule({
    instantiateWasm(imports: WebAssembly.Imports, done: (instance: WebAssembly.Instance) => void) {
      instantiate(wasm, imports).then(({ instance }) => done(instance), failed);
      return {};
    },
  });
  return new Tavd(await Promise.race([made, failure]));
}

export class Tavd {
  #count = 0;
  #path = '';

  /** `raw` has the functions of the C interface, for what this class does not offer. */
  constructor(readonly raw: Raw) {
    raw.FS.mkdir(folder);
  }

  /** Opens a database in place of the last one, which stays open if this one is none. */
  open(bytes: Uint8Array, texts: Texts = {}): { classes: string[] } {
    const path = `${folder}/${++this.#count}.tavdb`;
    this.raw.FS.writeFile(path, bytes);
    try {
      const opened = this.#ask<{ classes: string[] }>('open', { path, ...texts });
      if (this.#path !== '') this.raw.FS.unlink(this.#path);
      this.#path = path;
      return opened;
    } catch (error) {
      this.raw.FS.unlink(path);
      throw error;
    }
  }

  /** Tells the open database in other texts. */
  setTexts(texts: Texts): void {
    if (this.#path === '') throw new TavdError('no database is open');
    this.#ask('open', { path: this.#path, ...texts });
  }

  about(): About {
    return this.#ask('about', {});
  }

  products(): ListedProduct[] {
    return this.#ask('products', {});
  }

  product(which: Which): ShownProduct {
    return this.#ask('product', which);
  }

  calculate(point: Point): Calculated {
    return this.#ask('calculate', point);
  }

  flowDiagram(question: FlowDiagramQuestion): Drawing {
    return this.#ask('flow diagram', question);
  }

  throwDiagram(question: ThrowDiagramQuestion): Drawing {
    return this.#ask('throw diagram', question);
  }

  sketch(question: DrawingQuestion): Drawing {
    return this.#ask('sketch', question);
  }

  select(duty: Duty): Selected {
    return this.#ask('select', duty);
  }

  selectAsCsv(duty: Duty): string {
    return this.#ask<{ csv: string }>('select as csv', duty).csv;
  }

  #ask<Answer>(ask: string, question: object): Answer {
    const { raw } = this;
    const text = JSON.stringify({ ...question, ask });
    const room = raw.lengthBytesUTF8(text) + 1;
    const address = raw._malloc(room);
    if (address === 0) throw new TavdError('memory ran out');
    try {
      raw.stringToUTF8(text, address, room);
      const reply = JSON.parse(raw.UTF8ToString(raw._tavdweb_answer(address))) as { answer: Answer; error?: string };
      // The file's name in here says nothing to a user.
      if (reply.error !== undefined) throw new TavdError(reply.error.replaceAll(/\/databases\/\d+\.tavdb/g, 'the file'));
      return reply.answer;
    } finally {
      raw._free(address);
    }
  }
}
