// serve.mjs FOLDER [PORT]: shows a folder at a local address, which it prints. Port 0 takes any that is free.
import { createServer } from 'node:http';
import { readFile } from 'node:fs/promises';
import { extname, join, normalize, sep } from 'node:path';
import { fileURLToPath } from 'node:url';

const types = {
  '.html': 'text/html; charset=utf-8', '.js': 'text/javascript', '.mjs': 'text/javascript', '.css': 'text/css',
  '.svg': 'image/svg+xml', '.wasm': 'application/wasm', '.tavdb': 'application/octet-stream',
};
// Beside what the page itself says of this kind: what a page cannot say for itself.
const headers = {
  'Content-Security-Policy': "frame-ancestors 'none'", 'X-Content-Type-Options': 'nosniff', 'Referrer-Policy': 'no-referrer',
  'Cache-Control': 'no-cache',
};

export function serve(folder, port) {
  const root = normalize(folder + sep);
  const server = createServer(async (request, response) => {
    try {
      const path = decodeURIComponent(new URL(request.url, 'http://localhost').pathname);
      const file = normalize(join(root, path.endsWith('/') ? `${path}index.html` : path));
      if (!file.startsWith(root)) throw new Error('outside');
      const bytes = await readFile(file);
      response.writeHead(200, { 'Content-Type': types[extname(file)] ?? 'application/octet-stream', ...headers });
      response.end(bytes);
    } catch {
      response.writeHead(404, headers);
      response.end();
    }
  });
  return new Promise((resolve, reject) => {
    server.on('error', reject);
    server.listen(port, '127.0.0.1', () => resolve(server));
  });
}

if (process.argv[1] === fileURLToPath(import.meta.url)) {
  const [folder, port = '8080'] = process.argv.slice(2);
  if (folder === undefined || !/^\d+$/.test(port)) {
    console.error('usage: serve.mjs FOLDER [PORT]');
    process.exit(2);
  }
  try {
    const server = await serve(folder, Number(port));
    console.log(`http://localhost:${server.address().port}/`);
  } catch (error) {
    console.error(`serve.mjs: port ${port}: ${error.message}`);
    process.exit(1);
  }
}
