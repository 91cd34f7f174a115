// Qt's print dialog for the window's "Printer..." item.
#include "qt/print_choice.h"

#include <QPrintDialog>

namespace quill::qt {

PrintChoice::PrintChoice() : printer_(QPrinter::HighResolution) {
  // Pages are always landscape; the file the dialog proposes is
  // worksheet.pdf in the current folder.
  printer_.setPageOrientation(QPageLayout::Landscape);
  printer_.setDocName("worksheet");
}

std::optional<Destinations> PrintChoice::ask(QWidget* window, const Destinations& current) {
  QPrintDialog dialog(&printer_, window);
  // A run decides its pages: no page range, no current page, no selection.
  dialog.setOptions(QAbstractPrintDialog::PrintToFile | QAbstractPrintDialog::PrintShowPageSize);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return chosenDestinations(printer_, current);
}

}  // namespace quill::qt
