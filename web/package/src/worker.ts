// The library in a worker, so that a page never waits for it. In the worker: serve(). In the page: connect(worker),
// which has the methods of Tavd, each with a promise.
import { load, Tavd, TavdError, type Wasm } from './index.js';

type Asked = { [Name in keyof Tavd as Tavd[Name] extends (...args: never[]) => unknown ? Name : never]: Tavd[Name] };
type Method = keyof Asked;

/** Tavd from outside of its worker. */
export type RemoteTavd = {
  [Name in Method]: (...args: Parameters<Asked[Name]>) => Promise<ReturnType<Asked[Name]>>;
} & {
  /** Resolved when the module is ready. */
  ready: Promise<void>;
};

interface Call {
  id: number;
  method: Method;
  args: unknown[];
}
interface Reply {
  id: number;
  result?: unknown;
  error?: string;
}

const ready = 0; // the id of what the worker says first

/** What a worker has of the world, with which types for pages and for workers agree. */
interface Port {
  postMessage(message: unknown, transfer?: Transferable[]): void;
  addEventListener(type: 'message', listener: (event: MessageEvent) => void): void;
}

export function serve(port: Port, wasm?: Wasm): void {
  const loaded = load(wasm);
  loaded.then(
    () => port.postMessage({ id: ready } satisfies Reply),
    (error: unknown) => port.postMessage({ id: ready, error: String(error) } satisfies Reply),
  );
  port.addEventListener('message', ({ data }: MessageEvent<Call>) => {
    void loaded.then((tavd) => {
      const reply: Reply = { id: data.id };
      try {
        const method = tavd[data.method] as (...args: unknown[]) => unknown;
        reply.result = method.apply(tavd, data.args);
      } catch (error) {
        reply.error = error instanceof TavdError ? error.message : `the calculation has stopped: ${String(error)}`;
      }
      port.postMessage(reply);
    });
  });
}

export function connect(worker: Port): RemoteTavd {
  const waiting = new Map<number, { resolve: (value: never) => void; reject: (reason: Error) => void }>();
  let last = ready;
  const wait = (id: number): Promise<never> =>
    new Promise((resolve, reject) => waiting.set(id, { resolve, reject }));
  const whenReady = wait(ready) as Promise<unknown> as Promise<void>;
  worker.addEventListener('message', ({ data }: MessageEvent<Reply>) => {
    const asked = waiting.get(data.id);
    waiting.delete(data.id);
    if (data.error === undefined) asked?.resolve(data.result as never);
    else asked?.reject(new TavdError(data.error));
  });
  const call = (method: Method) => (...args: unknown[]) => {
    const id = ++last;
    const answer = wait(id);
    worker.postMessage({ id, method, args } satisfies Call);
    return answer;
  };
  const methods: Method[] = [
    'open', 'setTexts', 'about', 'products', 'product', 'calculate', 'flowDiagram', 'throwDiagram', 'sketch', 'select',
    'selectAsCsv',
  ];
  const remote = Object.fromEntries(methods.map((method) => [method, call(method)]));
  return Object.assign(remote, { ready: whenReady }) as unknown as RemoteTavd;
}
