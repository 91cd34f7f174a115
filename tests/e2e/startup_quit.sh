#!/bin/sh
# End to end on the real binary in a real X server: the window opens maximised
# with the title "Quillion" and the coloured main page, and "Options" > "Quit"
# ends the process with status 0.
# Usage: startup_quit.sh QUILLION_BINARY   (needs QUILLION_E2E_DISPLAY)
set -u
binary=$1
. "$(dirname "$0")/common.sh"
start_program

[ "$(xdotool getwindowname "$wid")" = "Quillion" ] || fail "title is $(xdotool getwindowname "$wid")"
screen=$(xdpyinfo 2>/dev/null | awk '/dimensions:/ {print $2; exit}')
size=$(xdotool getwindowgeometry "$wid" | awk '/Geometry:/ {print $2}')
[ -z "$screen" ] || [ "$size" = "$screen" ] || fail "window is $size, screen is $screen: not maximised"

# The orange labels (Label20, Check12) are on screen: several thousand pixels.
import -window root "$work/shot.png" || fail "no screenshot"
orange=$(convert "$work/shot.png" -fill black +opaque "#FF8000" -fill white -opaque "#FF8000" \
  -colorspace gray -format "%[fx:round(mean*w*h)]" info:)
[ "$orange" -gt 3000 ] || fail "only $orange orange pixels: the main page is not drawn as designed"

quit_program
status=$?
[ "$status" -eq 0 ] || fail "exit status $status: $(cat "$work/log")"
rm -rf "$work"
echo "ok: window opened maximised and Quit ended the program"
