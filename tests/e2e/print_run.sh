#!/bin/sh
# End to end with a real printer: "Print only completed Squares", then
# "Create", prints one page through CUPS whose text holds 25 complete magic
# squares of 5 by 5, while the title counts down.
# Usage: print_run.sh QUILLION_BINARY
#   (needs QUILLION_E2E_DISPLAY, and QUILLION_E2E_PRINTS: where the default
#    printer, a cups-pdf queue, writes its jobs)
set -u
binary=$1
. "$(dirname "$0")/common.sh"
use_test_printer
start_program

xprop -id "$wid" -spy WM_NAME >"$work/titles" 2>/dev/null &
spy=$!
# "Print Options" > "Print only completed Squares"; then the create button.
choose_menu Right Return
xdotool mousemove --window "$wid" 328 190 click 1

for _ in $(seq 100); do
  [ "$(xdotool getwindowname "$wid")" = "Quillion" ] && grep -q "out of 25" "$work/titles" && break
  sleep 0.1
done
kill "$spy" 2>/dev/null
# The spy reads the title when told of a change, so on a busy machine a quick
# change may be seen late, twice, or not at all; what it sees must count
# down. (That the count starts at 25 is checked against the fake platform.)
sed -n 's/.*Complete Magic Square(s): \([0-9]*\) out of 25 squares left to print."$/\1/p' \
  "$work/titles" | uniq >"$work/counts"
sort -rn -c "$work/counts" 2>/dev/null || fail "the title did not count down: $(cat "$work/counts")"
[ "$(wc -l <"$work/counts")" -ge 3 ] || fail "the title showed too few counts: $(cat "$work/titles")"

new=$(wait_for_pages 1)
[ "$(echo "$new" | grep -c .)" -eq 1 ] || fail "expected one printed page, got: $new"
pdftotext -layout "$prints/$new" "$work/page.txt" || fail "pdftotext failed on $new"
rm -f "$prints/$new"

check_complete_squares "$work/page.txt" || fail "printed page: $(cat "$work/check")"

quit_program
rm -rf "$work"
echo "ok: one printed page of 25 complete magic squares; the title counted down"
