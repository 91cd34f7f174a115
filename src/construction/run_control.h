// What the long commands (a creation run, a practice) share with the handlers
// that run while they yield: the one request variable, the yield after which
// it is read, and the platform's random numbers.
#pragma once

#include "construction/square_builder.h"
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

class RunControl {
 public:
  explicit RunControl(Platform& platform) : platform_(platform) {}

  // Shared on purpose: the abort and practice menu items, the Q key and the
  // cell entry write it while a command yields; the command reads it after
  // every yield.
  RunState runState() const { return runState_; }
  void setRunState(RunState state) { runState_ = state; }

  // The selected cell, shared on purpose: the dependency check records the
  // cell it tests, and a practice click is compared with the cell selected
  // before it, whichever of the two selected that.
  struct Selection {
    int originX = 0, originY = 0;
  };
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
  // The random numbers and the yields a square is built with.
  BuildSteps buildSteps() {
    return {[this](int count) { return randomWhole(count); }, [this] { return yieldGoesOn(); }};
  }
  // Int(Rnd × count) + 1: a whole number from 1 to count.
  int randomWhole(int count) { return static_cast<int>(platform_.random() * count) + 1; }
  double random() { return platform_.random(); }

 private:
  Platform& platform_;
  RunState runState_ = RunState::Idle;
};

}  // namespace quill
