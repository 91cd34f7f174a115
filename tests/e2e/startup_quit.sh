#!/bin/sh
# End to end on the real binary in a real X server: the window opens maximised
# with the title "Quillion" and the coloured main page, and "Options" > "Quit"
# ends the process with status 0.
# Usage: startup_quit.sh QUILLION_BINARY   (needs QUILLION_E2E_DISPLAY)
set -u
binary=$1
[ -n "${QUILLION_E2E_DISPLAY:-}" ] || { echo "no test display (scripts/test starts one)"; exit 77; }
export DISPLAY="$QUILLION_E2E_DISPLAY"
work=$(mktemp -d)
export HOME="$work" XDG_RUNTIME_DIR="$work/runtime"
mkdir -m 700 "$XDG_RUNTIME_DIR"

fail() { echo "FAIL: $*"; echo "--- program output:"; cat "$work/log" 2>/dev/null; [ -n "${pid:-}" ] && kill "$pid" 2>/dev/null; rm -rf "$work"; exit 1; }

"$binary" >"$work/log" 2>&1 &
pid=$!

wid=""
for _ in $(seq 50); do
  wid=$(xdotool search --onlyvisible --name '^Quillion$' 2>/dev/null | head -1)
  [ -n "$wid" ] && break
  sleep 0.1
done
[ -n "$wid" ] || fail "no window titled Quillion appeared"
sleep 0.5

[ "$(xdotool getwindowname "$wid")" = "Quillion" ] || fail "title is $(xdotool getwindowname "$wid")"
screen=$(xdpyinfo 2>/dev/null | awk '/dimensions:/ {print $2; exit}')
size=$(xdotool getwindowgeometry "$wid" | awk '/Geometry:/ {print $2}')
[ -z "$screen" ] || [ "$size" = "$screen" ] || fail "window is $size, screen is $screen: not maximised"

# The orange labels (Label20, Check12) are on screen: several thousand pixels.
import -window root "$work/shot.png" || fail "no screenshot"
orange=$(convert "$work/shot.png" -fill black +opaque "#FF8000" -fill white -opaque "#FF8000" \
  -colorspace gray -format "%[fx:round(mean*w*h)]" info:)
[ "$orange" -gt 3000 ] || fail "only $orange orange pixels: the main page is not drawn as designed"

# "Options" is the first menu; "Quit" its only item.
xdotool mousemove --window "$wid" 25 9 click 1
sleep 0.4
xdotool mousemove --window "$wid" 40 29 click 1

for _ in $(seq 50); do
  kill -0 "$pid" 2>/dev/null || break
  sleep 0.1
done
kill -0 "$pid" 2>/dev/null && fail "still running after Quit"
wait "$pid"
status=$?
[ "$status" -eq 0 ] || fail "exit status $status: $(cat "$work/log")"
rm -rf "$work"
echo "ok: window opened maximised and Quit ended the program"
