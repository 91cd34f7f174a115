// MainWindow: the one window. It is the form (its controls and menus, from
// the window design), its settings, and the event handlers with their
// classic names; they read the controls into the components (construction,
// puzzle maker, display, pages of a run) and write the results back.
//
// The handlers are defined in one file per concern, in this folder:
//   pages.cpp         start-up, moving between pages, property options, quitting
//   settings.cpp      size, print count, starting number, distance, captions
//   creation_run.cpp  "Create", the run and its abort
//   practice.cpp      "Practice Solving Squares", clicks on cells, the entry box
//   menus.cpp         the print and puzzle menus
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "construction/progression.h"
#include "construction/square_builder.h"
#include "window/run_session.h"
#include "window/window_state.h"
#include "display/cell_entry.h"
#include "display/square_display.h"
#include "platform/platform.h"
#include "screens/window_design.h"

namespace quill {

class MainWindow : public MainForm, private WindowState {
 public:
  explicit MainWindow(Platform& platform);
  ~MainWindow() override = default;
  MainWindow(const MainWindow&) = delete;
  MainWindow& operator=(const MainWindow&) = delete;

  // Start-up and quitting.
  void Form_Activate();
  void quit_Click();
  void Form_Unload();
  void Form_Terminate();

  // Pages.
  void Command2_Click();
  void Command3_Click();
  void chooseproperties_Click();
  void Command6_Click();

  // Property options.
  void Check2_Click();
  void Check3_Click();
  void Check4_Click();
  void Check5_Click();
  void Check6_Click();
  void Check7_Click();
  void Check8_Click();
  void Check9_Click();
  void Check10_Click();
  void Check11_Click();

  // Size.
  void sqr5_Click();
  void sqr7_Click();
  void sqr11_Click();
  void sqr13_Click();
  void sqr17_Click();
  void sqr19_Click();
  void sqr23_Click();
  void sqr29_Click();
  void Text2_KeyUp(int keyCode, int shift);

  // Numeric inputs.
  void Text1_Change();
  void Check12_Click();
  void text4_KeyUp(int keyCode, int shift);
  void Text5_KeyUp(int keyCode, int shift);

  // The creation run.
  void Command1_Click();
  void aprinting_Click();
  void Command1_KeyDown(int keyCode, int shift);
  void Form_KeyDown(int keyCode, int shift);

  // Practice: the practice run, a click on a cell, Enter in the entry box.
  void Command4_Click();
  void Form_MouseDown(int button, int shift, float x, float y);
  void Text6_KeyDown(int keyCode, int shift);

  // The print and puzzle menus.
  void panswers_Click();
  void ppuzzles_Click();
  void pboth_Click();
  void printer_Click();
  void highlighted_Click();
  void nhighlighted_Click();
  void easy_Click();
  void challenging_Click();
  void newsquare_Click();
  void startover_Click();
  void hint_Click();
  void qplaying_Click();

  // The window's own variables, to read.
  const WindowState& state() const { return *this; }

  // What the running command and the handlers that run meanwhile share.
  RunState runState() const { return run_.runState(); }
  const Selection& selection() const { return run_.selection; }

  // The square of the run or practice in hand.
  Square& square() { return square_; }
  const Square& square() const { return square_; }

  // The cell layout.
  int cellWidth() const { return display_.cellWidth(); }
  // A practice puzzle stands where a page's first square does; clicks are
  // measured from there.
  static constexpr page::Placement kPracticeCorner{};

 private:
  // Shared refreshes after a change of size, starting number or distance.
  void refreshTotals();
  void refreshCellMetrics();
  void refreshPageFit();
  // Brings the print count and "Fill Page" in line with the page capacity.
  void syncPrintCount();
  void showCountingExplanation();
  // The numbers of a square of the current size, starting number and distance.
  Progression progression() const { return {squareSize, startNumber, distance}; }

  void mainsub1();
  // The cell layout of a run or a practice; the practice also sizes its entry box.
  void prepareLayout(bool sizeEntryBox);
  void openPage(Screen page);
  void showMainPage();

  // What a creation run and a practice both start with: the pattern
  // families (5 by 5 only) from their check boxes, and the number boxes
  // corrected and read into the settings.
  void readPatternChoices();
  void readRunSettings(bool sizeEntryBox);
  // One square of a run, from its starting number to its place on the page;
  // true when it was the run's last.
  bool makeOneSquare();
  // The square in hand made a puzzle; its accepted choices, one more than
  // its blanks. Ends the command when a yield asks to.
  int makeSquarePuzzle();
  // Yields while the printing is far behind the pages printed; ends the
  // command when a yield asks to.
  void keepUpWithPrinting();
  void drawRandomStartNumber();
  void endRun();
  // What the ends of a run and of a practice both bring back: the main
  // page, the title, an empty surface and the starting number.
  void restoreMainPage();
  std::string progressCaption() const;
  // Practice: its start, one puzzle from building to solved (or dropped),
  // its end; the captions, each followed by Maximise and Refresh.
  void startPractice();
  void playOnePuzzle();
  void endPractice();
  std::string practiceCreationCaption() const;
  // Practice by keyboard: whether a puzzle is in play, the middle of a cell,
  // the cell cursor, and what the window's keys do to them.
  bool puzzleInPlay() const;
  std::pair<float, float> cellCentre(int originX, int originY) const;
  void moveCellCursor(int originX, int originY);
  // Takes a hint's marks and words away.
  void hideHint();
  void openEntryBox(const CellHit& hit);
  void playByKeyboard(int keyCode);
  std::string scoreCaption() const;
  void showScore();
  // The square in hand, as drawn before its answers are known, at `at`.
  void showsquare(const page::Placement& at);

  void applySize(int newSize);
  // Checks the size menu item of this size, or "Larger Size" above 29.
  void checkSizeItems(int newSize);
  // What every change of size, starting number or distance ends with.
  void refreshAfterSettingChange();
  void pairClicked(Control& clicked, Control& partner, int& choice, int choiceWhenChecked);
  void choosePrint(PrintChoice choice);
  void chooseHighlight(bool shaded);
  void chooseDifficulty(Difficulty level);
  void wireEvents();

  Platform& platform_;
  RunSession run_{platform_};
  // The square in hand: the puzzle maker blanks its numbers, the practice
  // fills them back in.
  Square square_;
  SquareDisplay display_{platform_, surface()};
  RunPages pages_{[this] { run_.yieldToUser(); }, display_};
  // What puzzles leave behind: the failed flags of the pattern lines, which
  // outlive a puzzle, and the last puzzle's reserved line.
  FailedLines lineFailed_{};
  std::optional<ReservedLine> reservedLine_;
};

}  // namespace quill
