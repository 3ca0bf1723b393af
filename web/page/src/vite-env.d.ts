/// <reference types="vite/client" />
declare module 'tavd/tavd.wasm?url' {
  const address: string;
  export default address;
}
