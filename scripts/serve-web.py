#!/usr/bin/env python3
# Serves the web version's static folder on localhost, with the types
# browsers require of a module and of WebAssembly.
# Usage: serve-web.py FOLDER PORT
import functools
import http.server
import sys

folder, port = sys.argv[1], int(sys.argv[2])


class Handler(http.server.SimpleHTTPRequestHandler):
    extensions_map = dict(http.server.SimpleHTTPRequestHandler.extensions_map,
                          **{".mjs": "text/javascript", ".js": "text/javascript", ".wasm": "application/wasm",
                             ".woff2": "font/woff2"})

    def log_message(self, *args):
        pass


server = http.server.ThreadingHTTPServer(("127.0.0.1", port), functools.partial(Handler, directory=folder))
print("Quillion is served on http://localhost:%d/ (Ctrl+C stops it)" % server.server_address[1], flush=True)
try:
    server.serve_forever()
except KeyboardInterrupt:
    pass
