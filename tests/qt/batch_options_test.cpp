// The command line's options, each held to its meaning: parsed as a shell
// hands them over, applied to a fresh window as the batch applies them, and
// read back from the window's own boxes, menus and check boxes.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "batch/batch.h"
#include "qt/qt_platform.h"
#include "window/main_window.h"

namespace quill::batch {
namespace {

// What a control or menu item holds: a box its text, a check box its value,
// a menu item 1 when checked.
std::string holds(const MainWindow& w, const std::string& name) {
  for (const Control* c : w.controls()) {
    if (c->name() == name) return c->kind() == ControlKind::CheckBox ? std::to_string(c->value()) : c->text();
  }
  for (const MenuItem* item : w.menuItems()) {
    if (item->name() == name) return item->checked() ? "1" : "0";
  }
  ADD_FAILURE() << "no control " << name;
  return {};
}

TEST(BatchOptions, EachSetsTheInputItStandsFor) {
  using Leaves = std::vector<std::pair<std::string, std::string>>;  // control, what it holds
  const std::vector<std::pair<std::vector<std::string>, Leaves>> table = {
      {{"--size", "7"}, {{"Text2", "7"}}},
      {{"--start", "-2.5"}, {{"text4", "-2.5"}}},
      {{"--distance", "3"}, {{"Text5", "3"}}},
      {{"--random-start", "50"}, {{"Check1", "1"}, {"Text7", "50"}}},
      {{"--blanks", "12"}, {{"Text3", "12"}}},
      {{"--print", "squares"}, {{"panswers", "1"}, {"ppuzzles", "0"}, {"pboth", "0"}}},
      {{"--print", "puzzles"}, {{"panswers", "0"}, {"ppuzzles", "1"}, {"pboth", "0"}}},
      {{"--print", "both"}, {{"panswers", "0"}, {"ppuzzles", "0"}, {"pboth", "1"}}},
      {{"--plain"}, {{"highlighted", "0"}, {"nhighlighted", "1"}}},
      {{"--shaded"}, {{"highlighted", "1"}, {"nhighlighted", "0"}}},
      {{"--difficulty", "easy"}, {{"easy", "1"}, {"challenging", "0"}}},
      {{"--difficulty", "challenging"}, {{"easy", "0"}, {"challenging", "1"}}},
      {{"--main-lines", "off", "--all-diagonals", "on"}, {{"Check2", "0"}, {"Check3", "1"}}},
      {{"--main-lines", "on"}, {{"Check2", "1"}}},
      {{"--all-diagonals", "on"}, {{"Check3", "1"}}},
      {{"--all-diagonals", "off"}, {{"Check3", "0"}}},
      {{"--cross-diagonals", "main"}, {{"Check4", "1"}, {"Check5", "0"}}},
      {{"--cross-diagonals", "all"}, {{"Check4", "0"}, {"Check5", "1"}}},
      {{"--cross-lines", "main"}, {{"Check6", "1"}, {"Check7", "0"}}},
      {{"--cross-lines", "all"}, {{"Check6", "0"}, {"Check7", "1"}}},
      {{"--scattered-cross-diagonals", "main"}, {{"Check8", "1"}, {"Check9", "0"}}},
      {{"--scattered-cross-diagonals", "all"}, {{"Check8", "0"}, {"Check9", "1"}}},
      {{"--scattered-cross-lines", "main"}, {{"Check10", "1"}, {"Check11", "0"}}},
      {{"--scattered-cross-lines", "all"}, {{"Check10", "0"}, {"Check11", "1"}}},
      {{"--cross-lines", "off"}, {{"Check6", "0"}, {"Check7", "0"}}},
  };
  for (const auto& [options, leaves] : table) {
    std::vector<std::string> words{"quillion"};
    words.insert(words.end(), options.begin(), options.end());
    std::vector<char*> argv;
    for (std::string& word : words) argv.push_back(word.data());
    const Request request = parseArguments(static_cast<int>(argv.size()), argv.data(), true);
    ASSERT_EQ(request.kind, Request::Kind::Batch) << options.front() << ": " << request.text.toStdString();

    qt::QtPlatform platform;
    auto window = std::make_unique<MainWindow>(platform);
    window->userActivate();
    applyInputs(*window, request.inputs);
    for (const auto& [control, value] : leaves) EXPECT_EQ(holds(*window, control), value) << options.front();
  }
}

}  // namespace
}  // namespace quill::batch
