#!/bin/sh
# How fast a batch makes pages, and how much memory it takes as it grows: a
# measurement, not a test. Pages a second for 1,000 puzzle pages of 25
# squares of 5 by 5 with their answer pages in one PDF, and for ten 101 by
# 101 squares with puzzles and answers; the peak memory of 100 and of 10,000
# pages.
# Usage: batch_speed.sh QUILLION_BINARY
set -eu
binary=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
measure() {
  label=$1
  shift
  /usr/bin/time -f "%e %M" -o "$work/time" env -u DISPLAY HOME="$work" "$binary" --seed 1 --quiet \
    --output "$work/out.pdf" "$@"
  pages=$(pdfinfo "$work/out.pdf" | sed -n 's/^Pages: *//p')
  read -r seconds kilobytes <"$work/time"
  awk -v l="$label" -v p="$pages" -v s="$seconds" -v k="$kilobytes" \
    'BEGIN { printf "%-46s %6d pages %7.2f s %7.0f pages/s %6.0f MB peak\n", l, p, s, p / s, k / 1024 }'
}
measure "1,000 puzzle pages of 25 with their answers" --count 25000
measure "ten 101 by 101 with puzzles and answers" --size 101 --count 10
measure "100 pages" --count 1250
measure "10,000 pages" --count 125000
