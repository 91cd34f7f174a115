#!/bin/sh
# End to end on the command line: a batch runs without any display and writes
# one PDF, a puzzle page whose numbers stand where its answer page has them;
# bad input is one line on standard error, exit status 2 and nothing
# written; a file that cannot be written is one line and exit status 1;
# standard output, devices and names in any encoding take the pages; Ctrl+C
# leaves nothing behind; progress shows on a terminal only; and the window
# started with the same seed prints, word for word and place for place, what
# the batch wrote.
# Usage: batch.sh QUILLION_BINARY   (needs QUILLION_E2E_DISPLAY for the window)
set -u
binary=$1
. "$(dirname "$0")/common.sh"
export CUPS_SERVER="$work/no-cups.sock" LC_ALL=C

batch() { env -u DISPLAY -u WAYLAND_DISPLAY "$binary" "$@"; }
# The batch with the arguments after $1 ends with status $1 and one line on standard error.
ends() {
  want=$1
  shift
  batch "$@" 2>"$work/err"
  [ $? -eq "$want" ] && [ "$(wc -l <"$work/err")" -eq 1 ]
}

batch --seed 11 --output "$work/batch.pdf" 2>"$work/err" || fail "the batch failed: $(cat "$work/err")"
[ ! -s "$work/err" ] || fail "the batch said: $(cat "$work/err")"
[ "$(pdfinfo "$work/batch.pdf" | sed -n 's/^Pages: *//p')" = 2 ] || fail "the batch did not write a puzzle page and its answers"

# Every number of the puzzle page stands where the answer page has it, and
# some cells are blank.
placed() { pdftotext -f "$1" -l "$1" -bbox "$work/batch.pdf" - | sed -n 's/.*xMin="\([0-9.]*\)" yMin="\([0-9.]*\)".*>\(.*\)<\/word>.*/\1 \2 \3/p'; }
placed 2 >"$work/answers.words"
placed 1 | awk '
  NR == FNR { at[$1 " " $2] = $3; next }
  { shown++; if (at[$1 " " $2] != $3) { print "puzzle shows " $3 " where the answer is \"" at[$1 " " $2] "\""; bad = 1 } }
  END { if (shown >= 625 || shown < 125) { print "the puzzle page shows " shown " numbers"; bad = 1 }; exit bad }
' "$work/answers.words" - >"$work/check" || fail "puzzle page: $(cat "$work/check")"

batch --help >"$work/help" || fail "--help failed"
for option in size count start distance random-start print shaded plain difficulty blanks main-lines \
  all-diagonals cross-diagonals cross-lines scattered-cross-diagonals scattered-cross-lines output printer paper \
  seed quiet; do
  grep -q -- "--$option" "$work/help" || fail "--help does not list --$option"
done

# Each bad input: status 2, one line, nothing written.
while read -r arguments; do
  # shellcheck disable=SC2086
  ends 2 $arguments --output "$work/bad.pdf" && [ ! -e "$work/bad.pdf" ] || fail "'$arguments': $(cat "$work/err")"
done <<'BAD'
--size 9
--size 103
--count 0
--count 3x
--blanks 0
--start 1..2
--distance x
--print answers
--shaded --plain
--main-lines off
--frobnicate
--seed -1
stray
BAD
batch --size 9 --output - >"$work/bad-out" 2>/dev/null
[ $? -eq 2 ] && [ ! -s "$work/bad-out" ] || fail "bad input wrote to standard output"
ends 2 --output "$work/no/such/folder.pdf" || fail "an output folder that does not exist: $(cat "$work/err")"
ends 1 --output /proc/quillion.pdf || fail "an output that cannot be written: $(cat "$work/err")"

# Standard output, into a pipe and into a file, holds the very pages; a
# reader that goes away early ends the batch at once with one line and
# status 1. A device takes the pages as it is (written into, never replaced);
# a name that is not UTF-8 is the name written.
words() { pdftotext -bbox "$1" - | grep '<word'; }
words "$work/batch.pdf" >"$work/batch.words"
batch --seed 11 --output - 2>"$work/err" | cat >"$work/piped.pdf"
words "$work/piped.pdf" | cmp -s - "$work/batch.words" || fail "standard output into a pipe: $(cat "$work/err")"
batch --seed 11 --output - >"$work/stdout.pdf" 2>"$work/err" || fail "standard output into a file: $(cat "$work/err")"
words "$work/stdout.pdf" | cmp -s - "$work/batch.words" || fail "standard output into a file differs"
{ batch --count 5000 --output - 2>"$work/err"; echo $? >"$work/status"; } | head -c 10 >/dev/null
[ "$(cat "$work/status")" -eq 1 ] && [ "$(wc -l <"$work/err")" -le 1 ] ||
  fail "a reader gone early: status $(cat "$work/status"), $(cat "$work/err")"
batch --count 2 --output /dev/null 2>"$work/err" || fail "/dev/null did not take the pages: $(cat "$work/err")"
ends 1 --output /dev/full && [ -c /dev/full ] || fail "/dev/full: $(cat "$work/err")"
batch --seed 11 --output "$work/caf$(printf '\351').pdf" && words "$work/caf$(printf '\351').pdf" >/dev/null ||
  fail "a name that is not UTF-8 was not written: $(ls "$work")"
[ -z "$(find "$work" /tmp -maxdepth 1 -name '.quillion-*.part' 2>/dev/null)" ] || fail "a hidden file was left"

# Progress: on a terminal, one line redrawn in place once a batch has taken a
# second, ending at every page made; nothing with --quiet, nothing off a terminal.
on_terminal() {
  script -qec "env -u DISPLAY -u WAYLAND_DISPLAY '$binary' --seed 1 --count 10000 --output '$work/long.pdf' $*" \
    "$work/terminal" >/dev/null
  tr '\r' '\n' <"$work/terminal" | grep 'pages/s'
}
on_terminal | tail -1 | grep -q '\] 800 of 800 pages, [0-9]* pages/s' || fail "no progress line: $(tail -c 300 "$work/terminal")"
[ -z "$(on_terminal --quiet)" ] || fail "--quiet showed progress"
batch --seed 1 --count 10000 --output "$work/long.pdf" 2>"$work/err"
[ ! -s "$work/err" ] || fail "progress off a terminal: $(head -c 200 "$work/err")"

# Ctrl+C: the batch ends at once, and no file is left, whole, cut off or hidden.
mkdir "$work/interrupted"
env -u DISPLAY "$binary" --seed 1 --count 25000 --output "$work/interrupted/out.pdf" &
batch_pid=$!
sleep 1
kill -INT "$batch_pid"
wait "$batch_pid"
status=$?
[ "$status" -eq 130 ] || fail "Ctrl+C ended the batch with status $status"
[ -z "$(ls -A "$work/interrupted")" ] || fail "Ctrl+C left: $(ls -A "$work/interrupted")"

# The window with the same seed, "Create" with its start-up settings.
start_program --seed 11
xdotool mousemove --window "$wid" 328 190 click 1
within 100 grep -q " saved as " "$work/log"
window=$(sed -n 's/.* saved as \(.*\)$/\1/p' "$work/log" | head -1)
[ -n "$window" ] || fail "the window kept no pages: $(cat "$work/log")"
quit_program
words "$window" >"$work/window.words"
[ "$(wc -l <"$work/batch.words")" -gt 125 ] || fail "the batch's pages hold too few words"
cmp -s "$work/window.words" "$work/batch.words" || fail "the window's pages differ from the batch's: $(diff "$work/window.words" "$work/batch.words" | head -5)"
rm -rf "$work"
echo "ok: a batch without a display, bad input refused, and the window's pages on the same seed"
