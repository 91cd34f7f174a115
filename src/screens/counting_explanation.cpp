// The right-hand column of the main page: how many complete squares of the
// current size there are, and why.
#include <string>

#include "main_window.h"
#include "platform/number_text.h"

namespace quill {

void MainWindow::showCountingExplanation() {
  const std::string complete = "\"Complete\"";
  const std::string t = numberText(squareSize);
  const std::string ofSize = "(" + t + " by " + t + ")";
  Label4.setCaption("How many " + ofSize + " " + complete + " Magic Squares are there?:");

  if (squareSize == 5) {
    Label3.setCaption("There are 576 fundamental squares.");
    Label5.setCaption("Each Square yields 25 other squares by row and column shift: (576 * 25 = 14400).");
    Label6.setCaption(
        "Each Square can also be rotated once to produce a second square: (14400 * 2 = 28800).");
    Label7.setCaption("Therefore, there are exactly 28800 " + complete + " Magic Squares of (5 by 5).");
    return;
  }
  if (squareSize >= kMaxSquareSize) {
    Label3.setCaption("The number of Squares is too large!");
    Label5.setCaption("");
    Label6.setCaption("");
    Label7.setCaption("");
    return;
  }

  // ((n-1)!)² as a running product from n-1 down, carried in extended
  // precision: factorials have many factors of two, so the product stays
  // exact far beyond the 32-bit range, and the 15 digits shown are those of
  // the exact count (3·(28!)² shows as 2.78870708040214E+59, not ...213).
  const long double n = squareSize;
  long double product = n - 1;
  for (long double factor = n - 2; factor >= 2; factor -= 1) product *= factor;
  product *= product;
  const auto fundamental = static_cast<double>(3 * product);
  const auto shifted = static_cast<double>(n * n * 3 * product);
  const auto total = static_cast<double>(4 * n * n * 3 * product);

  const std::string nSquared = numberText(static_cast<double>(n * n));
  Label3.setCaption("There are " + numberText(fundamental) + " fundamental squares.");
  Label5.setCaption("Each Square yields " + nSquared + " other squares by row and column shift: (" +
                    numberText(fundamental) + " * " + nSquared + " = " + numberText(shifted) + ").");
  Label6.setCaption("Each Square can also be rotated three times to produce three more squares: (" +
                    numberText(shifted) + " * 4 = " + numberText(total) + ").");
  Label7.setCaption("Therefore, there are exactly " + numberText(total) + " " + complete +
                    " Magic Squares of " + ofSize + ".");
}

}  // namespace quill
