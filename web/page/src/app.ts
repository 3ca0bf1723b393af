// What all parts of the page share.
import type { About, ListedProduct } from 'tavd';
import type { RemoteTavd } from 'tavd/worker';
import type { Units } from './numbers.js';
import type { State } from './state.js';

export interface App {
  readonly tavd: RemoteTavd;
  readonly about: About;
  /** As it is; update() changes it. */
  readonly state: State;
  readonly units: Units;
  readonly products: ListedProduct[];
  /** Changes the state and the address, and shows what is new. */
  update(change: Partial<State>): void;
  /** Tells the user what went wrong, or that all is well again. */
  tell(message: string): void;
}

let busy = 0;

/** Does some work, and says on the page itself that it does: for tests, and for whoever looks on. */
export async function working<Result>(work: () => Promise<Result>): Promise<Result> {
  const count = (by: 1 | -1) => {
    busy += by;
    document.documentElement.dataset['busy'] = busy > 0 ? 'true' : 'false';
  };
  count(1);
  try {
    return await work();
  } finally {
    count(-1);
  }
}

/** Calls `work` again and again as long as something is new, one call at a time, the latest state alone. */
export class Latest {
  #running = false;
  #again = false;

  constructor(private readonly work: () => Promise<void>) {}

  async run(): Promise<void> {
    this.#again = true;
    if (this.#running) return;
    this.#running = true;
    try {
      await working(async () => {
        while (this.#again) {
          this.#again = false;
          await this.work();
        }
      });
    } finally {
      this.#running = false;
    }
  }
}

export const messageOf = (error: unknown): string => (error instanceof Error ? error.message : String(error));
