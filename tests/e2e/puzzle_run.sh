#!/bin/sh
# End to end with a real printer: "Create" with the settings as the program
# starts (25 puzzles of 5 by 5, with answers) prints one job of two pages,
# the puzzles, then the answers. Every number of the puzzle page stands at the
# same place on the answer page, and some cells are blank.
# Usage: puzzle_run.sh QUILLION_BINARY
#   (needs QUILLION_E2E_DISPLAY, and QUILLION_E2E_PRINTS: where the default
#    printer, a cups-pdf queue, writes its jobs)
set -u
binary=$1
. "$(dirname "$0")/common.sh"
use_test_printer
start_program

xdotool mousemove --window "$wid" 328 190 click 1

new=$(wait_for_pages 1)
[ "$(echo "$new" | grep -c .)" -eq 1 ] || fail "expected one print job, got: $new"
job="$prints/$new"
pages=$(pdfinfo "$job" | sed -n 's/^Pages: *//p')
[ "$pages" = 2 ] || fail "expected two pages in the job, got $pages"
pdftotext -f 1 -l 1 -bbox "$job" "$work/puzzles.html" || fail "pdftotext failed on $new"
pdftotext -f 2 -l 2 -bbox "$job" "$work/answers.html" || fail "pdftotext failed on $new"
rm -f "$job"

# Each word as "x y text". The print service's conversions move a word by a
# hundredth of a point or so, so places match within half a point.
words() {
  sed -n 's/.*xMin="\([0-9.]*\)" yMin="\([0-9.]*\)".*>\(.*\)<\/word>.*/\1 \2 \3/p' "$1"
}
words "$work/answers.html" >"$work/answers.words"
words "$work/puzzles.html" >"$work/puzzles.words"
awk '
  function near(a, b) { return a - b < 0.5 && b - a < 0.5 }
  NR == FNR { n++; ax[n] = $1; ay[n] = $2; at[n] = $3; next }
  {
    shown++
    answer = ""
    for (i = 1; i <= n; i++) if (near(ax[i], $1) && near(ay[i], $2)) answer = at[i]
    if (answer != $3) { print "puzzle shows " $3 " where the answer is \"" answer "\""; bad = 1 }
  }
  END {
    if (shown >= 625) { print "the puzzle page has no blank"; bad = 1 }
    if (shown < 125) { print "the puzzle page shows only " shown " numbers"; bad = 1 }
    exit bad
  }' "$work/answers.words" "$work/puzzles.words" >"$work/check" || fail "puzzle page: $(cat "$work/check")"

quit_program
rm -rf "$work"
echo "ok: a puzzle page and its answer page of 25 complete magic squares"
