#!/usr/bin/env python3
# Serves the web version's static folder on localhost, with the types
# browsers require of a module and of WebAssembly, and the page's content
# security policy as a header too (where frame-ancestors holds).
# Usage: serve-web.py FOLDER PORT
import functools
import http.server
import os
import re
import sys

folder, port = sys.argv[1], int(sys.argv[2])
# The page's own policy, with what only a header can say.
with open(os.path.join(folder, "index.html")) as page:
    POLICY = re.search(r'http-equiv="Content-Security-Policy" content="([^"]+)"', page.read()).group(1) + \
        "; frame-ancestors 'none'"


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
