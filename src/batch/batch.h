// The command-line front end: options that stand for the window's inputs,
// checked before anything runs, and a run of the very same window, headless,
// that prints its pages and ends.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <array>
#include <cstdint>
#include <optional>

namespace quill {
class MainWindow;
}  // namespace quill

namespace quill::batch {

// Whether the arguments ask for a batch (or its help) rather than the
// window: any of them but a seed. Decided before Qt looks for a display.
bool asksForBatch(int argc, char** argv);

// The window's inputs a batch sets; what is not given keeps its start-up value.
struct Inputs {
  std::optional<QString> size, count, start, distance, randomStartLimit, blanks;
  std::optional<QString> print;       // squares, puzzles, both
  std::optional<bool> shaded;         // answers' former blanks shaded
  std::optional<QString> difficulty;  // easy, challenging
  std::optional<bool> mainLines, allDiagonals;
  // The pattern families of 5 by 5 puzzles: off, main, all.
  std::array<std::optional<QString>, 4> families;
};

// What the command line asks for, or why it cannot be done.
struct Request {
  enum class Kind { Window, Batch, Help, Version, Invalid };
  Kind kind = Kind::Window;
  QString text;  // the help, or the one line saying what is wrong
  std::optional<std::uint64_t> seed;
  Inputs inputs;
  QByteArray output;  // the file's name as the bytes given; "-": standard output
  QString printer, paper;
  bool quiet = false;
};
Request parseArguments(int argc, char** argv, bool batch);

// Sets the window's inputs as a person would, through its own controls.
void applyInputs(MainWindow& w, const Inputs& in);

// Runs a batch request on the window, headless; the exit status: 0 when
// every page was delivered, 1 when some could not be.
int runBatch(const Request& request);

}  // namespace quill::batch
