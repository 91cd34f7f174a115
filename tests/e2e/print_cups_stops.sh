#!/bin/sh
# End to end with a print service that stops in the middle of a run: a run
# without a print count delivers each page and its answers as it goes; the
# documents printed before the service stops reach the printer, those after
# are kept as PDF files, and every one is complete: the printed ones on the
# printer's paper (Letter here), the kept ones on the locale's (A4).
# Usage: print_cups_stops.sh QUILLION_BINARY   (needs QUILLION_E2E_DISPLAY; root)
set -u
binary=$1
. "$(dirname "$0")/common.sh"
start_private_cups
trap 'stop_private_cups' EXIT
lpoptions -p "$PRINTER" -o media=Letter >/dev/null
LC_ALL=C
export LC_ALL
start_program

# Print count 0, then "Create": page after page until Q.
xdotool mousemove --window "$wid" 392 116 click 1
xdotool key --window "$wid" ctrl+a
xdotool type --window "$wid" 0
xdotool mousemove --window "$wid" 328 190 click 1

out="$cups_dir/out"
pages="$HOME/Quillion/pages"
for _ in $(seq 100); do [ -n "$(ls "$out")" ] && break; sleep 0.1; done
[ -n "$(ls "$out")" ] || fail "no job reached the printer"
stop_private_cups
for _ in $(seq 100); do [ -n "$(ls "$pages" 2>/dev/null)" ] && break; sleep 0.1; done
[ -n "$(ls "$pages" 2>/dev/null)" ] || fail "no page was kept after the print service stopped"
xdotool key --window "$wid" q
wait_for_title Quillion 50 || fail "Q did not end the run: $(title)"
quit_program

# Every document is a complete PDF of a page and its answers (the last may
# have been cut short by Q before its answers), and nothing else is left.
for f in "$out"/* "$pages"/*; do
  count=$(pdfinfo "$f" 2>/dev/null | sed -n 's/^Pages: *//p')
  case "$count" in 1|2) ;; *) fail "$f is not a whole document of a page and its answers: '$count'" ;; esac
done
for f in "$out"/*; do
  pdfinfo "$f" | grep -q '^Page size: *792 x 612 pts (letter)' || fail "$f is not on the printer's Letter paper"
done
for f in "$pages"/*; do
  pdfinfo "$f" | grep -q '^Page size: *842 x 595 pts (A4)' || fail "$f is not on the locale's A4 paper"
done
[ "$(ls -A "$pages" | grep -vc '\.pdf$')" -eq 0 ] || fail "something else was left: $(ls -A "$pages")"
grep -q "^Quillion: the print service is not running; [12] pages\{0,1\} saved as $pages/quillion-.*\.pdf$" "$work/log" ||
  fail "no line on standard error saying where the pages went: $(cat "$work/log")"
printed=$(ls "$out" | wc -l)
kept=$(ls "$pages" | wc -l)
rm -rf "$work"
echo "ok: $printed documents printed before the print service stopped, $kept kept as files after"
