// Practice: the window becomes a practice page; puzzle after puzzle is built
// and drawn, and the user fills its blanks with the score in the title,
// until "Quit playing".
#include <algorithm>

#include "display/cell_entry.h"
#include "patterns/hint.h"
#include "platform/number_text.h"
#include "screens/settings_texts.h"
#include "window/main_window.h"

namespace quill {

std::string MainWindow::practiceCreationCaption() const {
  return "Creating " + sizeText(squareSize) + " Complete Magic Square (with blanks)";
}

std::string MainWindow::scoreCaption() const {
  return "Number of " + sizeText(squareSize) + " Complete Magic Square(s) solved: " + numberText(runDone) +
         " / Numbers correct: " + numberText(correctCount) + " / Numbers incorrect: " + numberText(incorrectCount);
}

void MainWindow::showScore() {
  setCaption(scoreCaption());
  platform_.maximiseWindow();
  platform_.refreshWindow();
}

void MainWindow::Command4_Click() {
  startPractice();
  try {
    for (;;) {
      playOnePuzzle();
      if (run_.runState() == RunState::Abort) break;
      // Solved, or dropped for a new one: wiped at once, answers unseen.
      Text6.setAvailable(false);
      platform_.maximiseWindow();
      surface().clear();
      if (run_.runState() != RunState::NewSquare) ++runDone;
      run_.setRunState(RunState::Idle);
      showScore();
    }
  } catch (const RunAborted&) {
    // "Quit playing" while the puzzle was being built.
  }
  endPractice();
}

void MainWindow::startPractice() {
  Check12.setVisible(false);
  readPatternChoices();
  practiceActive = 1;
  savedPrintChoice = printChoice;
  printChoice = PrintChoice::Puzzles;  // every practice square is a puzzle
  correctCount = 0;
  incorrectCount = 0;
  readRunSettings(true);

  createWasDisabled = Command1.enabled() ? 0 : 1;
  showScreen(Screen::Practice);

  platform_.maximiseWindow();
  baseStartNumber = startNumber;
}

void MainWindow::playOnePuzzle() {
  // The random start keeps every number below the next power of ten, so the
  // cell width found at the start fits every puzzle.
  if (Check1.value() == 1) drawRandomStartNumber();
  setCaption(practiceCreationCaption());
  if (!buildSquare(square_, squareSize, startNumber, distance, run_.buildSteps())) throw RunAborted{};
  const int choices = makeSquarePuzzle();
  showsquare(kPracticeCorner);
  blanksLeft = choices;
  showScore();
  // The keyboard's cell cursor starts on the top-left cell, and the keys go to the puzzle.
  moveCellCursor(1, 1);
  focusSurface();

  // Wait for the last blank, a new square or the end, asleep between events.
  platform_.yield();
  while (run_.runState() != RunState::Abort && blanksLeft != 1 && run_.runState() != RunState::NewSquare) {
    platform_.waitForEvents();
  }
}

void MainWindow::endPractice() {
  Text6.setAvailable(false);
  practiceActive = 0;
  printChoice = savedPrintChoice;
  restoreMainPage();
  if (createWasDisabled == 0) Command1.setEnabled(true);
  // Practice only starts for a square that fits; the page fit is not looked at again.
  Command4.setEnabled(true);
}

// Filling a practice puzzle: a click on a blank cell opens the entry box over
// it; Enter checks the number typed, writes a right one into the cell and
// counts a wrong one, with the score in the title.

bool MainWindow::puzzleInPlay() const {
  return practiceActive == 1 && run_.runState() == RunState::Puzzle && caption() != practiceCreationCaption();
}

std::pair<float, float> MainWindow::cellCentre(int originX, int originY) const {
  const auto w = static_cast<float>(cellWidth());
  const auto h = static_cast<float>(page::kRowHeight);
  return {static_cast<float>(kPracticeCorner.gridLeft) + (static_cast<float>(originX) - 0.5F) * w,
          static_cast<float>(kPracticeCorner.gridTop) + (static_cast<float>(originY) - 0.5F) * h};
}

void MainWindow::moveCellCursor(int originX, int originY) {
  const auto [x, y] = cellCentre(originX, originY);
  surface().placeCellCursor(x, y);
}

// Practice by keyboard, the one use the window makes of keys besides Q, and
// only while a puzzle is in play: the arrows move the cell cursor, stopping
// at the edges, and Enter or Space is a click at the centre of its cell.
void MainWindow::playByKeyboard(int keyCode) {
  const std::optional<GridCell> at = surface().cellCursor();
  if (!puzzleInPlay() || !at) return;
  int originX = at->column + 1;
  int originY = at->row + 1;
  switch (keyCode) {
    case keys::left: originX = std::max(originX - 1, 1); break;
    case keys::right: originX = std::min(originX + 1, squareSize); break;
    case keys::up: originY = std::max(originY - 1, 1); break;
    case keys::down: originY = std::min(originY + 1, squareSize); break;
    case keys::enter:
    case keys::space: {
      const auto [x, y] = cellCentre(originX, originY);
      Form_MouseDown(1, 0, x, y);
      return;
    }
    default: return;
  }
  moveCellCursor(originX, originY);
}

// A hint, by the menu or H, while a puzzle is in play: the cell cursor goes
// to a blank that can be worked out now and its entry box opens, as a click
// there does; the other cells of its line are marked and the reasoning is
// told to assistive technology, until the next entry, click, key or hint.
// It counts nothing.
void MainWindow::hint_Click() {
  if (!puzzleInPlay()) return;
  const std::optional<GridCell> at = surface().cellCursor();
  double total = 0;  // what every line adds up to
  for (int x = 1; x <= squareSize; ++x) total += square().squareRanks[x][1];
  const std::optional<Hint> found =
      findHint(square(), at ? Position{at->column + 1, at->row + 1} : Position{0, 0}, total);
  if (!found) return;
  const auto [x, y] = cellCentre(found->cell.x, found->cell.y);
  hideHint();
  moveCellCursor(found->cell.x, found->cell.y);
  // As a click there opens it; also when the maker's last check left the
  // cell selected, which a click would ignore.
  const std::optional<CellHit> hit = cellUnder(x, y, kPracticeCorner, squareSize, cellWidth());
  if (!hit) return;
  const Selection& selection = run_.selection;
  if (!Text6.visible() || hit->originX != selection.originX || hit->originY != selection.originY) openEntryBox(*hit);
  // The cursor stands on the hinted cell now, in the puzzle's grid.
  const GridCell hinted = *surface().cellCursor();
  std::vector<GridCell> marked;
  for (const Position& other : found->others) marked.push_back({hinted.grid, other.y - 1, other.x - 1});
  surface().showHint(std::move(marked), hinted, found->words);
  Text6.setAccessibleDescription(found->words);
}

void MainWindow::hideHint() {
  surface().hideHint();
  Text6.setAccessibleDescription("");
}

void MainWindow::Form_MouseDown(int /*button*/, int /*shift*/, float x, float y) {
  if (practiceActive != 1) return;
  hideHint();
  const std::optional<CellHit> hit = cellUnder(x, y, kPracticeCorner, squareSize, cellWidth());
  if (!hit) return;
  if (puzzleInPlay()) moveCellCursor(hit->originX, hit->originY);
  // The same cell again does nothing, whichever selected it before.
  const Selection& selection = run_.selection;
  if (hit->originX == selection.originX && hit->originY == selection.originY) {
    cursorX = hit->cursorX;
    cursorY = hit->cursorY;
    return;
  }
  openEntryBox(*hit);
}

// Selects the hit cell; only a blank of a puzzle in play takes entry.
void MainWindow::openEntryBox(const CellHit& hit) {
  cursorX = hit.cursorX;
  cursorY = hit.cursorY;
  run_.selection = {hit.originX, hit.originY};
  const bool beingBuilt = caption() == practiceCreationCaption();
  if (beingBuilt || run_.runState() != RunState::Puzzle || !isBlank(square().squareNumbers[hit.originX][hit.originY])) {
    return;
  }
  Text6.setText("");
  Text6.setAccessibleName("row " + numberText(hit.originY) + ", column " + numberText(hit.originX));
  Text6.setPixelPosition(cursorX, cursorY);
  Text6.setVisible(true);
  Text6.setEnabled(true);
  Text6.setFocus();
}

void MainWindow::Text6_KeyDown(int keyCode, int /*shift*/) {
  if (keyCode == keys::escape || keyCode == keys::enter) hideHint();
  if (keyCode == keys::escape) {
    // The box closes with nothing counted; its cell can be chosen again.
    Text6.setAvailable(false);
    Text6.setText("");
    run_.selection = {};
    focusSurface();
    return;
  }
  if (keyCode != keys::enter) return;
  const auto [originX, originY] = run_.selection;
  const double answer = square().squareRanks[originX][originY];
  const EntryResult result = judgeEntry(Text6.text(), answer);
  if (result != EntryResult::Right) {
    if (result == EntryResult::Wrong) {
      ++incorrectCount;
      showScore();
    }
    Text6.setText("");
    return;
  }

  // The answer in print form, three units left of where the drawing writes
  // numbers.
  square().squareNumbers[originX][originY] = answer;
  const TextPlace drawn = numberPlace(cursorX, cursorY, progression().holdsNegatives() && answer >= 0);
  const auto left = static_cast<float>(drawn.x - 3);
  const auto top = static_cast<float>(drawn.y);
  surface().fillBox(left, top, left, top, palette::white);
  surface().printText(printNumberText(answer));
  surface().nameCell(static_cast<float>(cursorX + 1), static_cast<float>(cursorY + 1), numberText(answer));
  Text6.setEnabled(false);
  Text6.setVisible(false);
  Text6.setText("");
  focusSurface();
  ++correctCount;
  showScore();
  --blanksLeft;
}

}  // namespace quill
