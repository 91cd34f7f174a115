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

# Runs the command given after $1 every tenth of a second until it succeeds,
# $1 times at most; succeeds when it did.
within() {
  tries=$1
  shift
  for _ in $(seq "$tries"); do
    "$@" && return 0
    sleep 0.1
  done
  return 1
}

start_program() {
  within 50 xdpyinfo >/dev/null 2>&1
  "$binary" "$@" >"$work/log" 2>&1 &
  pid=$!
  window_found() { wid=$(xdotool search --onlyvisible --name '^Quillion$' 2>/dev/null | head -1) && [ -n "$wid" ]; }
  within 50 window_found || fail "no window titled Quillion appeared"
  # Ready once activation has maximised it to the screen.
  screen=$(xdpyinfo | sed -n 's/^ *dimensions: *\([0-9]*x[0-9]*\) pixels.*/\1/p')
  maximised() { xdotool getwindowgeometry "$wid" 2>/dev/null | grep -q "Geometry: $screen"; }
  within 50 maximised || fail "the window was not maximised to $screen"
}

# "Options", the first menu, then "Quit", its only item while the main page
# shows, from the keyboard as a person without a mouse chooses it: F10 opens
# the first menu, Down moves to its first item, Return chooses.
quit_program() {
  xdotool key F10 Down Return
  ended() { ! kill -0 "$pid" 2>/dev/null; }
  within 100 ended || fail "still running after Quit"
  wait "$pid" || fail "Quit ended the program with status $?"
}

# The window's title now, and waiting up to $2 tenths of a second for it to read $1.
title() { xdotool getwindowname "$wid"; }
title_is() { [ "$(title)" = "$1" ]; }
wait_for_title() { within "$2" title_is "$1"; }

# A print service of the test's own, on a socket in $work, with the queues
# named (Keep when none is), the first the default, each copying a job into
# $work/cups/out as QUEUE-job-N.pdf; the program is pointed at it. Needs
# root. Sets: cups_dir, cups_pid. Stop it with stop_private_cups.
start_private_cups() {
  [ $# -eq 0 ] && set -- Keep
  [ "$(id -u)" -eq 0 ] || { echo "a private print service needs root"; exit 77; }
  cups_dir="$work/cups"
  mkdir -p "$cups_dir/serverbin/backend" "$cups_dir/spool" "$cups_dir/tmp" "$cups_dir/cache" \
    "$cups_dir/state" "$cups_dir/out" "$cups_dir/options"
  chmod 777 "$cups_dir/out" "$cups_dir/options" "$cups_dir/tmp"
  chmod 755 "$work"
  for part in filter daemon cgi-bin driver monitor notifier; do
    [ -e "/usr/lib/cups/$part" ] && ln -s "/usr/lib/cups/$part" "$cups_dir/serverbin/$part"
  done
  cat >"$cups_dir/serverbin/backend/keep" <<'KEEP'
#!/bin/sh
[ $# -eq 0 ] && { echo 'direct keep "Unknown" "Keep"'; exit 0; }
out="$(dirname "$0")/../../out"
echo "copies=$4 $5" >"$out/../options/$PRINTER-job-$1"
if [ -n "$6" ]; then cp "$6" "$out/.job-$1"; else cat >"$out/.job-$1"; fi && mv "$out/.job-$1" "$out/$PRINTER-job-$1.pdf"
KEEP
  chmod 755 "$cups_dir/serverbin/backend/keep"
  printf '%s\n' "Listen $cups_dir/cups.sock" "LogLevel warn" "DefaultAuthType None" \
    "<Location />" "Order allow,deny" "Allow all" "</Location>" >"$cups_dir/cupsd.conf"
  printf '%s\n' "ServerRoot $cups_dir" "RequestRoot $cups_dir/spool" "TempDir $cups_dir/tmp" \
    "CacheDir $cups_dir/cache" "StateDir $cups_dir/state" "ServerBin $cups_dir/serverbin" \
    "DataDir /usr/share/cups" "ErrorLog $cups_dir/error_log" "AccessLog $cups_dir/access_log" \
    "PageLog $cups_dir/page_log" "FileDevice No" >"$cups_dir/cups-files.conf"
  /usr/sbin/cupsd -f -c "$cups_dir/cupsd.conf" -s "$cups_dir/cups-files.conf" >"$cups_dir/cupsd.log" 2>&1 &
  cups_pid=$!
  CUPS_SERVER="$cups_dir/cups.sock"
  PRINTER=$1
  export CUPS_SERVER PRINTER
  scheduler_running() { [ "$(lpstat -r 2>/dev/null)" = "scheduler is running" ]; }
  within 50 scheduler_running
  for queue in "$@"; do
    lpadmin -p "$queue" -v keep:/ -E -m raw 2>/dev/null || fail "the private print service did not start"
  done
}
stop_private_cups() {
  [ -n "${cups_pid:-}" ] && kill "$cups_pid" 2>/dev/null && wait "$cups_pid" 2>/dev/null
  cups_pid=""
}

# Types $3 into the box whose centre is at ($1, $2) in the window, replacing its text.
set_box() {
  xdotool mousemove --window "$wid" "$1" "$2" click 1
  xdotool key --window "$wid" ctrl+a
  xdotool type --window "$wid" "$3"
}

# The files that the lines on standard error announce, each holding the pages
# its line names, no name announced twice, no file under the folders $@ that
# was not announced or is hidden. Sets: said (pages said saved), files.
check_announced() {
  said=0 files=0
  sed -n 's/.*; \([0-9]*\) pages\{0,1\} saved as \(.*\)$/\1 \2/p' "$work/log" >"$work/saved"
  while read -r count path; do
    pages=$(pdfinfo "$path" 2>/dev/null | sed -n 's/^Pages: *//p')
    [ "$pages" = "$count" ] || fail "$path was said to hold $count pages but holds '$pages'"
    said=$((said + count)) files=$((files + 1))
  done <"$work/saved"
  [ "$(cut -d' ' -f2 "$work/saved" | sort | uniq -d)" = "" ] || fail "a name was announced twice"
  for path in $(find "$@" -type f); do
    grep -qF " $path" "$work/saved" || fail "$path was left but never announced"
  done
}
