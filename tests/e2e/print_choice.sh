#!/bin/sh
# End to end with a print service of the test's own and two queues, Front
# (the default) and Back: "Printer..." in "Print Options" opens the print
# dialog; after Back is chosen with two copies of page 1 a run lands on Back
# with those options; Cancel changes nothing. (Files chosen in the dialog:
# the Qt tests.)
# Usage: print_choice.sh QUILLION_BINARY
#   (needs QUILLION_E2E_DISPLAY; root, for a print service of its own)
set -u
binary=$1
. "$(dirname "$0")/common.sh"
start_private_cups Front Back
trap 'stop_private_cups' EXIT
start_program
out="$cups_dir/out"

# The menu with the mouse ("Print Options", then its fourth item), and the
# dialog's fields by their mnemonics, as a person would.
print_dialog() { xdotool search --all --onlyvisible --pid "$pid" --name '^Print$' 2>/dev/null | head -1; }
dialog_open() { [ -n "$(print_dialog)" ]; }
dialog_closed() { [ -z "$(print_dialog)" ]; }
open_print_dialog() {
  xdotool mousemove --window "$wid" 110 8 click 1
  sleep 0.3
  xdotool mousemove --window "$wid" 120 95 click 1
  within 50 dialog_open || fail "no print dialog"
}
# "Create" with the start-up settings; waits for the run's document to be in $out.
create_into() {
  before=$(ls "$out" | wc -l)
  more_out() { [ "$(ls "$out" | wc -l)" -gt "$before" ]; }
  xdotool mousemove --window "$wid" 328 190 click 1
  within 100 more_out || fail "$1: nothing arrived in $out ($(ls "$out" | tr '\n' ' '))"
}

# Back, with two copies of page 1 only: the copies box and "Pages from"
# clicked where the expanded dialog has them.
open_print_dialog
xdotool type Back  # the printer list finds the queue by its name
xdotool key alt+o
sleep 0.5
dialog=$(print_dialog)
xdotool mousemove --window "$dialog" 365 223 click --repeat 3 1 type 2
xdotool mousemove --window "$dialog" 38 243 click 1  # "Pages from" 1 to 1
xdotool key Return
within 50 dialog_closed || fail "the print dialog did not close"
create_into "the run after choosing Back"
[ -n "$(ls "$out" | grep '^Back-job-')" ] && [ -z "$(ls "$out" | grep '^Front-job-')" ] ||
  fail "the run did not land on Back alone: $(ls "$out")"
options=$(cat "$cups_dir"/options/Back-job-*)
for option in copies=2 page-ranges=1 sides=one-sided; do
  echo " $options " | grep -q " $option " || fail "the job was not sent with $option: $options"
done

# Cancel keeps the choice: the next run lands on Back too.
open_print_dialog
xdotool key Escape
within 50 dialog_closed || fail "the print dialog did not close"
create_into "the run after Cancel"
[ "$(ls "$out" | grep -c '^Back-job-')" -eq 2 ] && [ -z "$(ls "$out" | grep '^Front-job-')" ] ||
  fail "the run after Cancel did not land on Back: $(ls "$out")"
[ ! -e "$HOME/Quillion/pages" ] || fail "pages went to the pages folder: $(ls "$HOME/Quillion/pages")"
[ ! -s "$work/log" ] || fail "the program said: $(cat "$work/log")"

quit_program
rm -rf "$work"
echo "ok: a run on the chosen queue with its copies and pages, Cancel keeping the choice"
