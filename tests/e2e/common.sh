# Shared by the end-to-end scripts: a private home, the program started on the
# test display, its window found, and failure reporting.
# Needs: binary set by the caller. Sets: work, pid, wid.
[ -n "${QUILLION_E2E_DISPLAY:-}" ] || { echo "no test display (scripts/test starts one)"; exit 77; }
export DISPLAY="$QUILLION_E2E_DISPLAY"
work=$(mktemp -d)
export HOME="$work" XDG_RUNTIME_DIR="$work/runtime"
mkdir -m 700 "$XDG_RUNTIME_DIR"
pid=""

fail() {
  echo "FAIL: $*"
  echo "--- program output:"
  cat "$work/log" 2>/dev/null
  [ -n "$pid" ] && kill "$pid" 2>/dev/null
  rm -rf "$work"
  exit 1
}

start_program() {
  for _ in $(seq 50); do xdpyinfo >/dev/null 2>&1 && break; sleep 0.1; done
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
}

# "Options" is the first menu; "Quit" its only item while the main page shows.
quit_program() {
  xdotool mousemove --window "$wid" 25 9 click 1
  sleep 0.4
  xdotool mousemove --window "$wid" 40 29 click 1
  for _ in $(seq 50); do
    kill -0 "$pid" 2>/dev/null || break
    sleep 0.1
  done
  kill -0 "$pid" 2>/dev/null && fail "still running after Quit"
  wait "$pid"
}

# Whether a page of text holds 25 complete magic squares of 1..25; what is
# wrong goes to $work/check.
check_complete_squares() {
  awk -f "$(dirname "$0")/complete_squares.awk" "$1" >"$work/check"
}

# The test printer: a cups-pdf queue, the default, writing its jobs into
# $QUILLION_E2E_PRINTS. Skips the test when there is none. Sets: prints.
use_test_printer() {
  [ -n "${QUILLION_E2E_PRINTS:-}" ] || { echo "no test printer (scripts/test sets one up)"; exit 77; }
  prints=$QUILLION_E2E_PRINTS
  mkdir -p "$prints"
  # Jobs of an earlier test still in the queue would land as this test's pages.
  for _ in $(seq 200); do [ -z "$(lpstat -o 2>/dev/null)" ] && break; sleep 0.1; done
  ls "$prints" >"$work/before" 2>/dev/null
}

# Waits until the queue is empty and $1 new jobs have been written; prints
# their file names, oldest first.
wait_for_pages() {
  for _ in $(seq 200); do
    [ -z "$(lpstat -o 2>/dev/null)" ] && [ "$(ls "$prints" | grep -cvxFf "$work/before")" -ge "$1" ] && break
    sleep 0.1
  done
  (cd "$prints" && ls -tr | grep -vxFf "$work/before")
}

# The window's title now, and waiting up to $2 tenths of a second for it to read $1.
title() { xdotool getwindowname "$wid"; }
wait_for_title() {
  for _ in $(seq "$2"); do
    [ "$(title)" = "$1" ] && return 0
    sleep 0.1
  done
  [ "$(title)" = "$1" ]
}
