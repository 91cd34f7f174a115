#!/bin/sh
# End to end on disks that fill document by document: with no printer, a
# print count of 0 writes page after page into a pages folder and a spare
# folder on two small filesystems until both are full, then Q, then one more
# run of one square. Every file left opens as a PDF with the pages its line
# on standard error announced, none is empty or hidden, no name is announced
# twice, and the pages said saved are the pages that can be read.
# Usage: full_disk.sh QUILLION_BINARY   (needs QUILLION_E2E_DISPLAY; root)
set -u
binary=$1
. "$(dirname "$0")/common.sh"
[ "$(id -u)" -eq 0 ] || { echo "skipped: small filesystems to fill need root"; rm -rf "$work"; exit 77; }
small="$work/home" spare="$work/tmp"
mkdir -p "$small" "$spare"
mount -t tmpfs -o size=300k tmpfs "$small" 2>/dev/null && mount -t tmpfs -o size=300k tmpfs "$spare" 2>/dev/null || {
  umount "$small" 2>/dev/null
  echo "skipped: cannot mount a small filesystem here"
  rm -rf "$work"
  exit 77
}
trap 'umount "$small" "$spare" 2>/dev/null; rm -rf "$work"' EXIT
HOME="$small" TMPDIR="$spare" CUPS_SERVER="$work/no-cups.sock"
export HOME TMPDIR CUPS_SERVER
start_program

# Print count 0, then "Create", until nothing more can be kept; then Q.
set_box 392 116 0
xdotool mousemove --window "$wid" 328 190 click 1
for _ in $(seq 250); do grep -q "could not be kept" "$work/log" && break; sleep 0.1; done
grep -q "could not be kept" "$work/log" || fail "the disks never filled"
sleep 1
xdotool key --window "$wid" q
wait_for_title Quillion 100 || fail "Q did not end the run: $(title)"

# One more run of one square, on the full disks.
lines=$(wc -l <"$work/log")
set_box 392 116 1
xdotool mousemove --window "$wid" 328 190 click 1
for _ in $(seq 100); do [ "$(wc -l <"$work/log")" -gt "$lines" ] && break; sleep 0.1; done
[ "$(wc -l <"$work/log")" -gt "$lines" ] || fail "the last run said nothing of its pages"
quit_program

# Each announced file holds the pages announced; nothing else is left.
check_announced "$small/Quillion" "$spare"
readable=0
for path in "$small"/Quillion/pages/* "$spare"/quillion-pages-*/*; do
  [ -e "$path" ] && readable=$((readable + $(pdfinfo "$path" | sed -n 's/^Pages: *//p')))
done
[ -z "$(find "$small" "$spare" -name '.*' ! -name '.' ! -name '..' | head -1)" ] ||
  fail "hidden files were left: $(find "$small" "$spare" -name '.*')"
[ "$said" -eq "$readable" ] || fail "$said pages said saved, $readable readable"
lost=$(grep -c "could not be kept" "$work/log")
umount "$small" "$spare"; rm -rf "$work"
echo "ok: $files documents ($said pages) kept and readable, $lost said could not be kept"
