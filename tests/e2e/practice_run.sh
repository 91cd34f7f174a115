#!/bin/sh
# End to end: the window opens maximised on the main page in its colours;
# "Practice Solving Squares" draws a 5 by 5 puzzle; a click on a
# blank cell opens the entry box, and a wrong number with Enter is counted in
# the title. The program sleeps while it waits for the user.
# Usage: practice_run.sh QUILLION_BINARY   (needs QUILLION_E2E_DISPLAY)
set -u
binary=$1
. "$(dirname "$0")/common.sh"
start_program

# The main page is drawn in its colours: the orange labels cover thousands of pixels.
import -window root "$work/shot.png" || fail "no screenshot"
orange=$(convert "$work/shot.png" -fill black +opaque "#FF8000" -fill white -opaque "#FF8000" \
  -colorspace gray -format "%[fx:round(mean*w*h)]" info:)
[ "$orange" -gt 3000 ] || fail "only $orange orange pixels: the main page is not drawn as designed"

score="Number of (5 by 5) Complete Magic Square(s) solved: 0 / Numbers correct: 0 / Numbers incorrect"

# The button stands at (208, 312) on the page, below the 19-pixel menu bar.
xdotool mousemove --window "$wid" 268 347 click 1
wait_for_title "$score: 0" 50 || fail "practice did not start: $(title)"

# Asleep while waiting: no CPU time over one second.
before=$(awk '{ print $14 + $15 }' "/proc/$pid/stat")
sleep 1
after=$(awk '{ print $14 + $15 }' "/proc/$pid/stat")
[ $((after - before)) -le 5 ] || fail "waiting took $((after - before)) ticks of CPU in one second"

# Cells are 24 by 18 from (8, 8) of the drawing. Clicking a cell that shows
# a number opens nothing, and the keys go nowhere; on a blank cell they go
# into the entry box: 99 is no number of 1..25.
for row in 1 2 3 4 5; do
  for column in 1 2 3 4 5; do
    # The click is handled before the keys that follow it: no pause between.
    xdotool mousemove --window "$wid" $((8 + 24 * column - 12)) $((27 + 18 * row - 9)) click 1
    xdotool type --delay 20 99
    xdotool key Return
    wait_for_title "$score: 1" 3 && break 2
  done
done
[ "$(title)" = "$score: 1" ] || fail "after a wrong number the title reads: $(title)"

# "Options" > "Quit playing" (after "New Square" and "Start Over") brings
# the main page back.
choose_menu Down Down Down Return
wait_for_title Quillion 30 || fail "Quit playing left the title at: $(title)"

quit_program
rm -rf "$work"
echo "ok: a wrong number in a practice puzzle is counted in the title"
