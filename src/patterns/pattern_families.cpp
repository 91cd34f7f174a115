// The four pattern families, each with a trying procedure (blank the cell
// through the first of the family's lines that is free and keeps the blanks
// free of cycles) and a scoring procedure (which of the family's lines could
// take the cell, and how many blanks each already holds). The family's choice
// is 1 for placements inside the square only, 2 for every placement.
#include "main_window.h"
#include "patterns/line_types.h"

namespace quill {

void MainWindow::d1scross() { tryFamily(kFamilyFirstType[0], crossDiagonalChoice); }
void MainWindow::d1scross2() { tryFamily(kFamilyFirstType[1], scatteredCrossDiagonalChoice); }
void MainWindow::d1scline() { tryFamily(kFamilyFirstType[2], crossLineChoice); }
void MainWindow::d1scline2() { tryFamily(kFamilyFirstType[3], scatteredCrossLineChoice); }
void MainWindow::d2scross() { scoreFamily(kFamilyFirstType[0], crossDiagonalChoice); }
void MainWindow::d2scross2() { scoreFamily(kFamilyFirstType[1], scatteredCrossDiagonalChoice); }
void MainWindow::d2scline() { scoreFamily(kFamilyFirstType[2], crossLineChoice); }
void MainWindow::d2scline2() { scoreFamily(kFamilyFirstType[3], scatteredCrossLineChoice); }

void MainWindow::tryFamily(int firstType, int choice) {
  for (int type = firstType; type < firstType + kFamilySize; ++type) {
    if (choice != 2 && !insidePlacement(type, cellX, cellY, squareSize)) continue;
    if (tryLine(type)) {
      patternFound = 1;
      return;
    }
  }
}

void MainWindow::scoreFamily(int firstType, int choice) {
  for (int type = firstType; type < firstType + kFamilySize; ++type) {
    scoreLine(type, choice == 2 || insidePlacement(type, cellX, cellY, squareSize));
  }
}

bool MainWindow::tryLine(int type) {
  if (walkLine(type).taken) return false;
  lineType = type;
  makeblanks();
  if (lineAccepted != 1) return false;
  markBlank(type);
  return true;
}

void MainWindow::scoreLine(int type, bool placed) {
  if (placed) {
    const LineWalk walk = walkLine(type);
    lineBlankTally += walk.blanks;
    if (!walk.taken) lineUsable[type] = 1;
  }
  if (lineBlankTally >= bestBlankTally && lineUsable[type] == 1) {
    bestBlankTally = lineBlankTally;
    lineTally[type] = bestBlankTally;
  }
  if (lineUsable[type] != 1) lineFailed[type] = 1;
  lineBlankTally = 0;
}

}  // namespace quill
