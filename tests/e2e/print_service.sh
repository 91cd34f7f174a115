#!/bin/sh
# End to end with a print service of the test's own, its queue on A4, in a
# United States locale (Letter): a run's job that the queue refuses is kept
# as one complete PDF file in ~/Quillion/pages, on the locale's paper, and
# said so in one line; then a run of print count 0 delivers each page and its
# answers to the printer as it goes, on the printer's paper, until the service
# stops; the documents after are kept as files, and every document is whole.
# Usage: print_service.sh QUILLION_BINARY   (needs QUILLION_E2E_DISPLAY; root)
set -u
binary=$1
. "$(dirname "$0")/common.sh"
start_private_cups
trap 'stop_private_cups' EXIT
queue=$PRINTER
lpoptions -p "$queue" -o media=A4 >/dev/null
cupsreject "$queue"
LC_ALL=en_US.UTF-8
export LC_ALL
start_program
out="$cups_dir/out"
pages="$HOME/Quillion/pages"
pages_of() { pdfinfo "$1" 2>/dev/null | sed -n 's/^Pages: *//p'; }
paper_of() { pdfinfo "$1" | sed -n 's/^Page size: *\([0-9]* x [0-9]*\) pts.*/\1/p'; }

xdotool mousemove --window "$wid" 328 190 click 1
files_in() { [ "$(ls "$1" 2>/dev/null | wc -l)" -ge "$2" ]; }
within 100 files_in "$pages" 1
refused=$(ls -A "$pages" 2>/dev/null)
case "$refused" in *.pdf) ;; *) fail "expected one PDF file, got: $refused" ;; esac
[ "$(echo "$refused" | wc -l)" -eq 1 ] && [ "$(pages_of "$pages/$refused")" = 2 ] ||
  fail "the refused run did not leave one file of its two pages: $refused"
[ "$(paper_of "$pages/$refused")" = "792 x 612" ] || fail "the refused run's file is not on Letter, landscape"
grep -q "^Quillion: $queue did not take the job (.*); 2 pages saved as $pages/$refused$" "$work/log" ||
  fail "no line on standard error saying where the refused pages went"

cupsaccept "$queue"
set_box 392 116 0
xdotool mousemove --window "$wid" 328 190 click 1
within 100 files_in "$out" 1 || fail "no job reached the printer"
stop_private_cups
within 100 files_in "$pages" 2
xdotool key --window "$wid" q
wait_for_title Quillion 50 || fail "Q did not end the run: $(title)"
quit_program

# Every document is a page and its answers (the last may have been cut short
# by Q), on the printer's paper or, kept as a file, on the locale's.
for f in "$out"/* "$pages"/*; do
  case "$(pages_of "$f")" in 1|2) ;; *) fail "$f is not a whole document of a page and its answers" ;; esac
done
for f in "$out"/*; do [ "$(paper_of "$f")" = "842 x 595" ] || fail "$f is not on the printer's A4"; done
for f in "$pages"/*; do [ "$(paper_of "$f")" = "792 x 612" ] || fail "$f is not on the locale's Letter"; done
[ "$(ls "$pages" | wc -l)" -gt 1 ] || fail "no page was kept after the print service stopped"
grep -q "^Quillion: the print service is not running; [12] pages\{0,1\} saved as $pages/quillion-.*\.pdf$" "$work/log" ||
  fail "no line on standard error saying where the pages went: $(cat "$work/log")"
printed=$(ls "$out" | wc -l) kept=$(ls "$pages" | wc -l)
rm -rf "$work"
echo "ok: a refused job kept and said so; $printed documents printed before the print service stopped, $kept kept"
