import { serve } from 'tavd/worker';

serve(self as unknown as Parameters<typeof serve>[0]);
