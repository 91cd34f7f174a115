// What the puzzle maker knows about the blanks of the puzzle in the making:
// for every row, column and diagonal the blanks on it and whether one is tied
// to it; for every cell the pattern blanks whose lines cover it; and, while
// the maker runs, for every blank the set of blanks it waits on, directly or
// through others. With these the dependency check costs a few word
// operations instead of walks over the lines of every blank it reaches.
//
// A blank waits on the blanks of its own line (other than itself). Blanking a
// cell closes a cycle when a blank that its line reaches, directly or through
// others, has a line through the cell.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "construction/square.h"

namespace quill {

class PuzzleBlanks {
 public:
  struct Cell {
    std::int16_t x, y;
  };
  struct LineSurvey {
    bool taken = false;  // a blank is tied to this very line
    int blanks = 0;
  };

  // Reads every blank of the n by n grid afresh. With `keepReach`, also
  // works out what each blank waits on and keeps it up to date as blanks are
  // marked; without, each check searches afresh.
  void rebuild(const SquareGrid& grid, int n, bool keepReach);
  // (x, y) is now a blank tied to `type`: a new blank, or one whose type changed.
  void mark(int x, int y, int type);

  // The blanks on the straight line of type 1..4 through (x, y), and whether
  // one of them is tied to that line.
  LineSurvey survey(int type, int x, int y) const;
  // Whether blanking (x, y) through `type` would make a blank wait on itself.
  bool closesCycle(int x, int y, int type);

 private:
  struct Blank {
    Cell cell;
    int type;
  };
  using Words = std::vector<std::uint64_t>;

  int lineOf(int type, int x, int y) const;
  std::span<const int> blanksOn(int type, int x, int y) const;
  // Calls f(id) for every blank of the line of `type` anchored at (x, y), the anchor left out.
  template <class F>
  void forEachOnLine(int type, int x, int y, F f) const;
  // Calls f(id) for every other blank whose line passes through (x, y).
  template <class F>
  void forEachLineThrough(int x, int y, F f) const;
  // Every blank that the blanks on the line reach, themselves included, into `reach`.
  void reachFrom(int type, int x, int y, Words& reach) const;
  // Room in every set for this many blanks.
  void growReach(int blanks);
  // Works out afresh what every blank waits on.
  void rebuildReach();
  std::uint64_t* reachOf(int id) { return reach_.data() + static_cast<std::size_t>(id) * words_; }
  static bool has(const Words& set, int id) { return (set[id / 64] >> (id % 64) & 1U) != 0; }
  static void add(Words& set, int id) { set[id / 64] |= std::uint64_t{1} << (id % 64); }

  int n_ = 0;
  std::vector<Blank> blanks_;
  std::array<std::array<std::int16_t, kGridExtent>, kGridExtent> id_{};  // -1: not blank
  // Per straight line type and line number: its blanks, and how many are tied to it.
  std::array<std::array<std::vector<int>, kMaxSquareSize>, 4> onLine_{};
  std::array<std::array<int, kMaxSquareSize>, 4> tied_{};
  // Per cell: the pattern blanks whose lines cover it.
  std::vector<std::vector<int>> coveredBy_;

  bool keepReach_ = false;
  std::size_t words_ = 0;  // words per set
  Words reach_;            // what each blank waits on, one set after another
  Words lastReach_;        // what the cell of the last check would wait on
  Blank lastChecked_{{0, 0}, -1};
};

}  // namespace quill
