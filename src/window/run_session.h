// What a creation run or a practice shares with the handlers that run while
// it yields: the one request variable, the selected cell, and the yields and
// random numbers the square builder and the puzzle maker draw on.
#pragma once

#include "construction/square_builder.h"
#include "patterns/puzzle_maker.h"
#include "platform/platform.h"

namespace quill {

// What the handlers that run during a yield ask of the running command.
enum class RunState {
  Idle = 0,
  Puzzle = 2,      // a puzzle is being made or played
  Abort = -1,      // "Abort printing", "Quit playing" or the Q key
  NewSquare = -7,  // practice: drop this puzzle for a new one
};

// Thrown out of the loops of a command once the user has asked to abort; the
// command catches it and restores the main page. Never leaves a handler.
struct RunAborted {};

// The selected cell, (column, row) from 1.
struct Selection {
  int originX = 0, originY = 0;
};

class RunSession {
 public:
  explicit RunSession(Platform& platform) : platform_(platform) {}

  // Shared on purpose: the abort and practice menu items, the Q key and the
  // cell entry write it while a command yields; the command reads it after
  // every yield.
  RunState runState() const { return runState_; }
  void setRunState(RunState state) { runState_ = state; }

  // Shared on purpose: the dependency check's cell becomes it while a puzzle
  // is made, and a practice click is compared with the cell selected before
  // it, whichever of the two selected that.
  Selection selection;

  // Yields; whether the command goes on, the user not having asked to abort
  // meanwhile.
  bool yieldGoesOn() {
    platform_.yield();
    return runState_ != RunState::Abort;
  }
  // Yields, then ends the command if the user asked to abort meanwhile.
  void yieldToUser() {
    if (!yieldGoesOn()) throw RunAborted{};
  }
  // Int(Rnd × count) + 1: a whole number from 1 to count.
  int randomWhole(int count) { return static_cast<int>(platform_.random() * count) + 1; }
  double random() { return platform_.random(); }

  // The random numbers and the yields a square is built with.
  BuildSteps buildSteps() {
    return {[this](int count) { return randomWhole(count); }, [this] { return yieldGoesOn(); }};
  }
  // The same for a puzzle; while a cell is scored a puzzle is in the making,
  // and the cell the dependency check tests becomes the selection.
  PuzzleSteps puzzleSteps() {
    return {[this](int count) { return randomWhole(count); }, [this] { return yieldGoesOn(); },
            [this] { runState_ = RunState::Puzzle; }, [this](int x, int y) { selection = {x, y}; }};
  }

 private:
  Platform& platform_;
  RunState runState_ = RunState::Idle;
};

}  // namespace quill
