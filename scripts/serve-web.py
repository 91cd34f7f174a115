#!/usr/bin/env python3
# Serves the web version's static folder on localhost, with the types
# browsers require of a module and of WebAssembly, and the page's content
# security policy as a header too (where frame-ancestors holds).
# Usage: serve-web.py FOLDER PORT
import functools
import http.server
import sys

folder, port = sys.argv[1], int(sys.argv[2])
POLICY = ("default-src 'self'; script-src 'self' 'wasm-unsafe-eval'; style-src 'self'; img-src 'self'; "
          "font-src 'self'; connect-src 'self'; manifest-src 'self'; worker-src 'self'; object-src 'none'; "
          "base-uri 'none'; form-action 'none'; frame-ancestors 'none'")


class Handler(http.server.SimpleHTTPRequestHandler):
    extensions_map = dict(http.server.SimpleHTTPRequestHandler.extensions_map,
                          **{".mjs": "text/javascript", ".js": "text/javascript", ".wasm": "application/wasm",
                             ".woff2": "font/woff2", ".webmanifest": "application/manifest+json",
                             ".svg": "image/svg+xml"})

    def end_headers(self):
        self.send_header("Content-Security-Policy", POLICY)
        self.send_header("X-Content-Type-Options", "nosniff")
        super().end_headers()

    def log_message(self, *args):
        pass


server = http.server.ThreadingHTTPServer(("127.0.0.1", port), functools.partial(Handler, directory=folder))
print("Quillion is served on http://localhost:%d/ (Ctrl+C stops it)" % server.server_address[1], flush=True)
try:
    server.serve_forever()
except KeyboardInterrupt:
    pass
