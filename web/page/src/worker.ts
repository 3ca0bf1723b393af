import { serve } from 'tavd/worker';
import wasm from 'tavd/tavd.wasm?url';

serve(self as unknown as Parameters<typeof serve>[0], new URL(wasm, self.location.href));
