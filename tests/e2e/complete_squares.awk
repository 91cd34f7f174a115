# A printed page of 25 squares of 5 by 5, as pdftotext -layout writes it:
# five rows of five squares, so 25 lines of 25 numbers. Each square must hold
# 1..25 with every row, column and broken diagonal summing to 65.
!/[0-9]/ { next }
NF != 25 { print "line " NR " has " NF " numbers"; bad = 1; next }
{
  r = lines % 5; band = int(lines / 5); lines++
  for (i = 1; i <= 25; i++) { s = band * 5 + int((i - 1) / 5); cell[s, r, (i - 1) % 5] = $i }
}
END {
  if (lines != 25) { print lines " lines of numbers"; exit 1 }
  for (s = 0; s < 25; s++) {
    split("", seen)
    for (a = 0; a < 5; a++) {
      row = col = down = up = 0
      for (b = 0; b < 5; b++) {
        row += cell[s, a, b]; col += cell[s, b, a]
        down += cell[s, b, (a + b) % 5]; up += cell[s, b, (a - b + 5) % 5]
        seen[cell[s, a, b]] = 1
      }
      if (row != 65 || col != 65 || down != 65 || up != 65) { print "square " s " is not magic"; bad = 1 }
    }
    n = 0; for (v in seen) if (v + 0 >= 1 && v + 0 <= 25) n++
    if (n != 25) { print "square " s " does not hold 1..25"; bad = 1 }
  }
  exit bad
}
