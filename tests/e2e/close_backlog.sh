#!/bin/sh
# End to end: quitting while pages are still being delivered. Puzzles and
# answers of 29 by 29 printed page after page, then Q and at once "Quit".
# With no printer, every page printed is kept in a file announced with the
# pages it holds. With a print service that never answers, the run waits for it
# (answering Q), and "Quit" ends the program within seconds, saying that the
# pages printed were not kept. No hidden file is left either way.
# Usage: close_backlog.sh QUILLION_BINARY   (needs QUILLION_E2E_DISPLAY)
set -u
binary=$1
. "$(dirname "$0")/common.sh"

# Starts a run of print count 0 of size $1, and after $2 seconds stops it with Q.
# Sets: squares (as the title counts them, "-N out of 0").
run_then_quit() {
  start_program
  set_box 416 85 "$1"
  set_box 392 116 0
  xdotool mousemove --window "$wid" 328 190 click 1
  sleep "$2"
  squares=$(title | sed -n 's/.*: -\([0-9]*\) out of 0 .*/\1/p')
  [ "${squares:-0}" -gt 2 ] || fail "the run printed too little: $(title)"
  xdotool key --window "$wid" q
  wait_for_title Quillion 100 || fail "Q did not end the run: $(title)"
  quit_program
}

export CUPS_SERVER="$work/no-cups.sock"
run_then_quit 29 3
check_announced "$HOME/Quillion"
[ "$files" -ge "$squares" ] || fail "$squares squares printed, $files documents kept: $(cat "$work/log")"
grep -q "not kept" "$work/log" && fail "pages were not kept"
kept=$files

export CUPS_SERVER="$work/hanging.sock"
python3 -c 'import socket, sys
s = socket.socket(socket.AF_UNIX); s.bind(sys.argv[1]); s.listen(64); held = []
while True: held.append(s.accept())' "$CUPS_SERVER" &
hanging=$!
run_then_quit 29 2
kill "$hanging"
not_kept=$(sed -n 's/^Quillion: \([0-9]*\) pages\{0,1\} not kept: .*/\1/p' "$work/log")
[ "${not_kept:-0}" -ge $((2 * squares)) ] || fail "$squares squares printed, ${not_kept:-no} pages said not kept"
[ -z "$(find "$HOME" -name '.quillion-*')" ] || fail "hidden files were left: $(find "$HOME" -name '.quillion-*')"
rm -rf "$work"
echo "ok: $kept documents kept; $not_kept pages said not kept when the print service hung"
