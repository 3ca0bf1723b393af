// Keeps the page for visits without a network: all of one version, from the first visit on. The build fills in the names.
const kept = 'tavd-__VERSION__';
const files = __FILES__;

self.addEventListener('install', (event) => {
  event.waitUntil(caches.open(kept).then((cache) => cache.addAll(files)).then(() => self.skipWaiting()));
});

self.addEventListener('activate', (event) => {
  const remove = (names) => Promise.all(names.filter((name) => name.startsWith('tavd-') && name !== kept).map((name) => caches.delete(name)));
  event.waitUntil(caches.keys().then(remove).then(() => self.clients.claim()));
});

self.addEventListener('fetch', (event) => {
  if (event.request.method !== 'GET' || new URL(event.request.url).origin !== location.origin) return;
  const answer = caches.open(kept).then((cache) => cache.match(event.request, { ignoreSearch: true }));
  event.respondWith(answer.then((found) => found ?? fetch(event.request)));
});
