#!/bin/sh
# End to end with a default printer that refuses every job: "Create" with the
# settings as the program starts keeps the run's two pages as one complete
# PDF file in ~/Quillion/pages, on the locale's paper (here the United
# States': Letter), and says so in one line on standard error.
# Usage: print_refused.sh QUILLION_BINARY
#   (needs QUILLION_E2E_DISPLAY; root, for a print service of its own)
set -u
binary=$1
. "$(dirname "$0")/common.sh"
start_private_cups
trap 'stop_private_cups' EXIT
queue=$PRINTER
cupsreject "$queue"
LC_ALL=en_US.UTF-8
export LC_ALL
start_program

xdotool mousemove --window "$wid" 328 190 click 1

pages="$HOME/Quillion/pages"
for _ in $(seq 100); do
  [ -n "$(ls "$pages" 2>/dev/null)" ] && break
  sleep 0.1
done
[ "$(ls "$pages" | grep -c '\.pdf$')" -eq 1 ] || fail "expected one PDF file, got: $(ls -a "$pages" 2>&1)"
[ "$(ls -A "$pages" | grep -vc '\.pdf$')" -eq 0 ] || fail "something else was left: $(ls -A "$pages")"
count=$(pdfinfo "$pages"/*.pdf | sed -n 's/^Pages: *//p')
[ "$count" = 2 ] || fail "expected two pages in the file, got $count"
pdfinfo "$pages"/*.pdf | grep -q '^Page size: *792 x 612 pts (letter)' ||
  fail "not on Letter paper, landscape: $(pdfinfo "$pages"/*.pdf | grep 'Page size')"
grep -q "^Quillion: $queue did not take the job (.*); 2 pages saved as $pages/quillion-.*\.pdf$" "$work/log" ||
  fail "no line on standard error saying where the pages went"

quit_program
rm -rf "$work"
echo "ok: a refused job is kept as one complete PDF file, and said so"
