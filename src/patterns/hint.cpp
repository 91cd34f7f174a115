// Finding the blank a hint shows, and saying why it can be worked out.
#include "patterns/hint.h"

#include "platform/number_text.h"

namespace quill {

namespace {

std::string lineName(int type, Position cell) {
  switch (type) {
    case 1: return "row " + std::to_string(cell.y);
    case 2: return "column " + std::to_string(cell.x);
    case 3: return "the diagonal up to the right";
    case 4: return "the diagonal down to the right";
    default: break;
  }
  static const char* const families[] = {"the cross-diagonal", "the scattered cross-diagonal", "the cross-line",
                                         "the scattered cross-line"};
  return families[(type - 5) / 5];
}

// The hint for the blank at `cell` when its line holds no other blank.
std::optional<Hint> hintAt(const Square& puzzle, Position cell, double magicTotal) {
  const double marker = puzzle.squareNumbers[cell.x][cell.y];
  const int type = isBlank(marker) ? markerType(marker) : 0;
  if (type == 0) return std::nullopt;
  Hint hint{cell, type, lineCells(puzzle.n, type, cell), {}};
  hint.others.pop_back();  // the blank itself, last of the walk
  for (const Position& at : hint.others) {
    if (isBlank(puzzle.squareNumbers[at.x][at.y])) return std::nullopt;
  }
  std::string numbers;
  double sum = 0;
  for (std::size_t i = 0; i < hint.others.size(); ++i) {
    const double number = puzzle.squareNumbers[hint.others[i].x][hint.others[i].y];
    sum += number;
    numbers += (i == 0 ? "" : i + 1 == hint.others.size() ? " and " : ", ") + numberText(number);
  }
  hint.words = "Hint: " + lineName(type, cell) + " holds " + numbers + ", which make " + numberText(sum) +
               "; the magic total is " + numberText(magicTotal);
  return hint;
}

}  // namespace

std::vector<Position> lineCells(int n, int type, Position anchor) {
  std::vector<Position> cells;
  Position at = anchor;
  for (int lineStep = 0; cells.empty() || !(at.x == anchor.x && at.y == anchor.y); ++lineStep) {
    at = stepAlong(type, anchor, at, lineStep);
    at = {wrap(at.x, n), wrap(at.y, n)};
    cells.push_back(at);
  }
  return cells;
}

std::optional<Hint> findHint(const Square& puzzle, Position preferred, double magicTotal) {
  const int n = puzzle.n;
  if (preferred.x >= 1 && preferred.x <= n && preferred.y >= 1 && preferred.y <= n) {
    if (std::optional<Hint> hint = hintAt(puzzle, preferred, magicTotal)) return hint;
  }
  for (int y = 1; y <= n; ++y) {
    for (int x = 1; x <= n; ++x) {
      if (std::optional<Hint> hint = hintAt(puzzle, {x, y}, magicTotal)) return hint;
    }
  }
  return std::nullopt;
}

}  // namespace quill
