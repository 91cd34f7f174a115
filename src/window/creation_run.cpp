// The creation run: read the main page's settings, hide it, make, draw and
// print the squares with the progress in the title bar, then restore the page.
#include <cmath>

#include "window/main_window.h"
#include "platform/number_text.h"
#include "screens/settings_texts.h"

namespace quill {

namespace {

// The numeric value of a box, and the box rewritten as the text of it.
double valueOf(const Control& box) { return numericValue(box.text()); }
void rewriteAsNumber(Control& box) { box.setText(numberText(valueOf(box))); }

// For 5 by 5 the first box of a pattern pair wins when both are checked.
void takePairChoice(Control& onlyMain, Control& all, int& choice) {
  if (onlyMain.checked()) {
    all.setValue(0);
    choice = family::onlyMain;
  }
  if (all.checked()) {
    onlyMain.setValue(0);
    choice = family::all;
  }
}

}  // namespace

void MainWindow::aprinting_Click() { run_.setRunState(RunState::Abort); }

void MainWindow::Command1_KeyDown(int keyCode, int /*shift*/) {
  if (keyCode == keys::letterQ) run_.setRunState(RunState::Abort);
}

void MainWindow::Form_KeyDown(int keyCode, int /*shift*/) {
  if (keyCode == keys::letterQ) {
    run_.setRunState(RunState::Abort);
  } else if (keyCode == keys::letterH) {
    hint_Click();
  } else {
    hideHint();
    playByKeyboard(keyCode);
  }
}

std::string MainWindow::progressCaption() const {
  const char* ending = printChoice == PrintChoice::PuzzlesAndAnswers ? " puzzles and answers left to print."
                       : printChoice == PrintChoice::Puzzles         ? " puzzles left to print."
                                          : " squares left to print.";
  return std::string(pagePhase.keySquare() ? "Creating Giant " : "Creating ") + sizeText(squareSize) +
         " Complete Magic Square(s): " + numberText(runTotal - runDone) + " out of " + numberText(runTotal) +
         ending;
}

void MainWindow::readPatternChoices() {
  puzzle.clearFamilies();
  if (squareSize == 5) {
    takePairChoice(Check4, Check5, puzzle.crossDiagonalChoice);
    takePairChoice(Check6, Check7, puzzle.crossLineChoice);
    takePairChoice(Check8, Check9, puzzle.scatteredCrossDiagonalChoice);
    takePairChoice(Check10, Check11, puzzle.scatteredCrossLineChoice);
  }
  pagePhase.startRun();
}

void MainWindow::Command1_Click() {
  Check12.setVisible(false);
  readPatternChoices();
  mainsub1();
  try {
    while (run_.runState() != RunState::Abort && !makeOneSquare()) {
    }
  } catch (const RunAborted&) {
    // The square in hand is abandoned; pages already printed stay printed.
  }
  endRun();
}

void MainWindow::readRunSettings(bool sizeEntryBox) {
  if (valueOf(Text7) < 1) Text7.setText("2");
  // Unusable entries are corrected on the page rather than refused.
  rewriteAsNumber(Text1);
  Text2.setText(numberText(squareSize));
  rewriteAsNumber(Text3);
  rewriteAsNumber(text4);
  rewriteAsNumber(Text5);
  if (valueOf(Text5) == 0) Text5.setText("1");
  if (valueOf(Text3) == 0) Text3.setText("1");
  startNumber = valueOf(text4);
  // A negative distance only stands when the distance in force is positive,
  // and then the distance in force is kept.
  if (distance <= 0 && valueOf(Text5) <= 0) Text5.setText("1");
  if (valueOf(Text5) > 0) distance = valueOf(Text5);
  run_.setRunState(RunState::Idle);
  refreshTotals();
  surface().clear();
  prepareLayout(sizeEntryBox);
  if (valueOf(Text3) < 1) Text3.setText("1");
  puzzle.blankTarget = valueOf(Text3);
  runDone = 0;
  runTotal = valueOf(Text1);
}

void MainWindow::prepareLayout(bool sizeEntryBox) {
  display_.prepareLayout(squareSize, progression());
  if (sizeEntryBox) {
    Text6.setMaxLength(display_.entryMaxLength());
    Text6.setPixelSize(display_.cellWidth() + 1, page::kRowHeight);
  }
}

void MainWindow::showsquare(const page::Placement& at) {
  display_.showsquare(square(), at, progression(), {});
}

void MainWindow::mainsub1() {
  practiceActive = 0;
  readRunSettings(false);
  setCaption(progressCaption());

  // Only "Abort printing", the Q key and closing the window stay reachable.
  showScreen(Screen::Run);
  platform_.maximiseWindow();

  pages_.startPage();
  baseStartNumber = startNumber;
}

void MainWindow::drawRandomStartNumber() {
  // p: the first power of ten wider than the widest number, so the last
  // number stays below it. Powers from 10^15 up are written in exponent form
  // and grow no wider, so the search stops there.
  double p = 1;
  do {
    p *= 10;
  } while (numberText(p).size() <= static_cast<std::size_t>(display_.entryMaxLength()) && p < 1e15);
  const double room = p - (static_cast<double>(squareSize) * squareSize * distance + baseStartNumber);
  startNumber = baseStartNumber + std::floor(run_.random() * (room - 1));
  const double allowed = valueOf(Text7);
  if (allowed < room) startNumber = baseStartNumber + std::floor(run_.random() * allowed);
  firstStartNumber = startNumber;
}

bool MainWindow::makeOneSquare() {
  const int n = squareSize;
  if (Check1.checked() && !pagePhase.continuation()) drawRandomStartNumber();
  if (pagePhase.keySquare()) {
    // The key square holds a progression from 1 whose numbers stay below 100.
    const double span = (static_cast<double>(n) * n - 1) * distance;
    if (span + startNumber >= 100) {
      startNumber = 99 - span;
      firstStartNumber = startNumber;
    }
  }
  if (!buildRanks(square_, n, run_.buildSteps())) throw RunAborted{};
  if (pagePhase.keySquare()) startNumber = 1;
  if (pagePhase.continuation()) {
    // Each continuation square starts at the next number of the key square's corner.
    startNumber = pages_.nextKeyRank() * distance + firstStartNumber;
  }
  assignNumbers(square_, startNumber, distance);

  if (printChoice == PrintChoice::Squares) showsquare(pages_.placement());
  if (printChoice != PrintChoice::Squares) {
    makeSquarePuzzle();
    if (pagePhase.keySquare()) pages_.keepKeyCorner(square());
    if (pagePhase.continuation() && reservedLine_) {
      blankKeyCell(square_, *reservedLine_, [this](int count) { return run_.randomWhole(count); });
    }
    if (!pagePhase.keySquare()) showsquare(pages_.placement());
  }

  const bool lastOfRun = runDone + 1 == runTotal && pagePhase.ordinary();
  // A square placed, the run is no longer making a puzzle.
  if (!pagePhase.keySquare()) run_.setRunState(RunState::Idle);
  const bool pagePrinted = pages_.placeOnPage(square(), {printChoice, pagePhase.keySquare(),
                                                         pagePhase.lastContinuation(), lastOfRun,
                                                         highlightAnswers == 1, progression()});
  // Never far ahead of the pages' delivery (a document ended below is
  // waited for at the next square's placing).
  keepUpWithPrinting();
  if (pagePrinted || pagePhase.ordinary()) {
    ++runDone;
    if (runDone == runTotal) return true;
  }
  if (!pagePhase.continuation()) setCaption(progressCaption());
  pagePhase.advance();
  if (pagePrinted) {
    // A run that goes on page after page delivers each page as it is done.
    platform_.endDocument();
    pagePhase.startKeySquare();
  }
  return false;
}

void MainWindow::keepUpWithPrinting() {
  while (platform_.printingBehind()) run_.yieldToUser();
}

int MainWindow::makeSquarePuzzle() {
  const std::optional<PuzzleMade> made = makePuzzle(square_, puzzle, lineFailed_, run_.puzzleSteps());
  if (!made) throw RunAborted{};
  reservedLine_ = made->reservedLine;
  return made->rankCounter;
}

void MainWindow::restoreMainPage() {
  startNumber = baseStartNumber;  // a random starting number never outlives its run
  pages_.startPage();
  surface().clear();
  setCaption(kProgramTitle);
  showScreen(Screen::Main);
}

void MainWindow::endRun() {
  platform_.endDocument();  // the run's pages, finished or aborted, as one document
  restoreMainPage();
  Command1.setEnabled(true);
  refreshCellMetrics();
  refreshPageFit();
}

}  // namespace quill
