// Choosing the printer, its paper, copies and sides, or a PDF file, with
// Qt's print dialog.
#pragma once

#include <QPrinter>
#include <optional>

#include "qt/page_delivery.h"

class QWidget;

namespace quill::qt {

// The dialog's settings, kept from one opening to the next so that it shows
// what was chosen last.
class PrintChoice {
 public:
  PrintChoice();
  // Opens the dialog over `window`; where the documents go after it was
  // accepted (the folders as in `current`), nothing when it was cancelled.
  std::optional<Destinations> ask(QWidget* window, const Destinations& current);

 private:
  QPrinter printer_;
};

}  // namespace quill::qt
