// The index of blanks: lines, coverings and what each blank waits on, kept as blanks are made.
#include "patterns/puzzle_blanks.h"

#include <algorithm>

#include "patterns/line_types.h"

namespace quill {

void PuzzleBlanks::rebuild(const SquareGrid& grid, int n, bool keepReach) {
  n_ = n;
  blanks_.clear();
  for (auto& lines : onLine_) {
    for (auto& line : lines) line.clear();
  }
  for (auto& tied : tied_) tied.fill(0);
  coveredBy_.resize(static_cast<std::size_t>(kGridExtent) * kGridExtent);
  for (int x = 1; x <= n; ++x) {
    for (int y = 1; y <= n; ++y) {
      id_[x][y] = -1;
      coveredBy_[x * kGridExtent + y].clear();
    }
  }
  keepReach_ = false;
  words_ = 1;
  lastChecked_.type = -1;
  for (int y = 1; y <= n; ++y) {
    for (int x = 1; x <= n; ++x) {
      if (quill::isBlank(grid[x][y])) mark(x, y, markerType(grid[x][y]));
    }
  }
  keepReach_ = keepReach;
  if (keepReach) rebuildReach();
}

void PuzzleBlanks::rebuildReach() {
  reach_.assign(words_ * 64 * words_, 0);
  Words reach;
  for (std::size_t id = 0; id < blanks_.size(); ++id) {
    const Blank& blank = blanks_[id];
    reachFrom(blank.type, blank.cell.x, blank.cell.y, reach);
    std::copy(reach.begin(), reach.end(), reachOf(static_cast<int>(id)));
  }
}

void PuzzleBlanks::mark(int x, int y, int type) {
  const auto cover = [&](int id, bool covering) {
    const Blank& blank = blanks_[id];
    if (isStraight(blank.type)) tied_[blank.type - 1][lineOf(blank.type, x, y)] += covering ? 1 : -1;
    if (!isPattern(blank.type)) return;
    for (const Offset& o : kPatternCells[blank.type]) {
      std::vector<int>& covered = coveredBy_[wrap(x + o.dx, n_) * kGridExtent + wrap(y + o.dy, n_)];
      if (covering) {
        covered.push_back(id);
      } else {
        covered.erase(std::find(covered.begin(), covered.end(), id));
      }
    }
  };

  if (id_[x][y] >= 0) {
    // A new line for a blank: what every blank waits on is worked out afresh.
    const int id = id_[x][y];
    cover(id, false);
    blanks_[id].type = type;
    cover(id, true);
    if (keepReach_) rebuildReach();
    return;
  }

  const int id = static_cast<int>(blanks_.size());
  blanks_.push_back({{static_cast<std::int16_t>(x), static_cast<std::int16_t>(y)}, type});
  id_[x][y] = static_cast<std::int16_t>(id);
  for (int line = 1; line <= 4; ++line) onLine_[line - 1][lineOf(line, x, y)].push_back(id);
  cover(id, true);
  growReach(id + 1);
  if (!keepReach_) return;

  // The new blank waits on what its line reaches; every blank that waits on
  // a blank whose line passes through it now waits on it and on all of that.
  const bool checked = lastChecked_.cell.x == x && lastChecked_.cell.y == y && lastChecked_.type == type;
  if (!checked) reachFrom(type, x, y, lastReach_);
  lastReach_.resize(words_, 0);
  std::copy(lastReach_.begin(), lastReach_.end(), reachOf(id));
  lastChecked_.type = -1;
  add(lastReach_, id);
  std::vector<int> through;
  forEachLineThrough(x, y, [&](int other) { through.push_back(other); });
  for (int other = 0; other < id; ++other) {
    const std::uint64_t* reach = reachOf(other);
    const bool waits = std::any_of(through.begin(), through.end(), [&](int p) {
      return p == other || (reach[p / 64] >> (p % 64) & 1U) != 0;
    });
    if (!waits) continue;
    std::uint64_t* target = reachOf(other);
    for (std::size_t w = 0; w < words_; ++w) target[w] |= lastReach_[w];
  }
}

PuzzleBlanks::LineSurvey PuzzleBlanks::survey(int type, int x, int y) const {
  const int line = lineOf(type, x, y);
  return {tied_[type - 1][line] > 0, static_cast<int>(onLine_[type - 1][line].size())};
}

bool PuzzleBlanks::closesCycle(int x, int y, int type) {
  Words& reach = lastReach_;
  if (keepReach_) {
    reach.assign(words_, 0);
    forEachOnLine(type, x, y, [&](int id) {
      add(reach, id);
      const std::uint64_t* waits = reachOf(id);
      for (std::size_t w = 0; w < words_; ++w) reach[w] |= waits[w];
    });
  } else {
    reachFrom(type, x, y, reach);
  }
  lastChecked_ = {{static_cast<std::int16_t>(x), static_cast<std::int16_t>(y)}, type};
  bool closes = false;
  forEachLineThrough(x, y, [&](int id) { closes = closes || has(reach, id); });
  return closes;
}

int PuzzleBlanks::lineOf(int type, int x, int y) const { return straightLineNumber(type, x, y, n_); }

std::span<const int> PuzzleBlanks::blanksOn(int type, int x, int y) const { return onLine_[type - 1][lineOf(type, x, y)]; }

template <class F>
void PuzzleBlanks::forEachOnLine(int type, int x, int y, F f) const {
  if (isStraight(type)) {
    for (const int id : blanksOn(type, x, y)) {
      if (blanks_[id].cell.x != x || blanks_[id].cell.y != y) f(id);
    }
  } else if (isPattern(type)) {
    for (const Offset& o : kPatternCells[type]) {
      const int id = id_[wrap(x + o.dx, n_)][wrap(y + o.dy, n_)];
      if (id >= 0) f(id);
    }
  }
}

template <class F>
void PuzzleBlanks::forEachLineThrough(int x, int y, F f) const {
  for (int type = 1; type <= 4; ++type) {
    if (tied_[type - 1][lineOf(type, x, y)] == 0) continue;
    for (const int id : blanksOn(type, x, y)) {
      const Blank& blank = blanks_[id];
      if (blank.type == type && (blank.cell.x != x || blank.cell.y != y)) f(id);
    }
  }
  for (const int id : coveredBy_[x * kGridExtent + y]) f(id);
}

void PuzzleBlanks::reachFrom(int type, int x, int y, Words& reach) const {
  reach.assign(words_, 0);
  std::vector<int> queue;
  const auto visit = [&](int id) {
    if (has(reach, id)) return;
    add(reach, id);
    queue.push_back(id);
  };
  forEachOnLine(type, x, y, visit);
  for (std::size_t next = 0; next < queue.size(); ++next) {
    const Blank& blank = blanks_[queue[next]];
    forEachOnLine(blank.type, blank.cell.x, blank.cell.y, visit);
  }
}

void PuzzleBlanks::growReach(int blanks) {
  if (static_cast<std::size_t>(blanks) <= words_ * 64) return;
  const std::size_t words = std::max<std::size_t>(4, 2 * words_);
  if (keepReach_) {
    // Each blank's set widens; the sets keep their contents.
    Words wider(words * 64 * words, 0);
    for (std::size_t id = 0; id < words_ * 64 && (id + 1) * words_ <= reach_.size(); ++id) {
      std::copy_n(reach_.begin() + static_cast<std::ptrdiff_t>(id * words_), words_,
                  wider.begin() + static_cast<std::ptrdiff_t>(id * words));
    }
    reach_ = std::move(wider);
  }
  words_ = words;
  lastReach_.resize(words_, 0);
  growReach(blanks);
}

}  // namespace quill
