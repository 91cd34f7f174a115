// Keeps every file of the site, so that after one visit Quillion loads and
// works with no network. Each version of the site is one cache, filled whole
// before it serves anything and used alone: a new version takes over on the
// next visit, once no page of the old one is open, and never serves a mix.
const VERSION = "quillion-__VERSION__";
const FILES = __FILES__;

self.addEventListener("install", (event) => {
  event.waitUntil(caches.open(VERSION).then((cache) =>
    cache.addAll(FILES.map((file) => new Request(file, { cache: "reload" })))));
});

self.addEventListener("activate", (event) => {
  event.waitUntil(caches.keys()
    .then((keys) => Promise.all(keys.filter((key) => key !== VERSION).map((key) => caches.delete(key))))
    .then(() => self.clients.claim()));
});

self.addEventListener("fetch", (event) => {
  const request = event.request;
  if (request.method !== "GET" || new URL(request.url).origin !== self.location.origin) return;
  // The address's query (?seed=N) is the page's own business: the same file.
  event.respondWith(caches.open(VERSION)
    .then((cache) => cache.match(request, { ignoreSearch: true }))
    .then((kept) => kept || fetch(request)));
});
