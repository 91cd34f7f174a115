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
  // A run decides its pages: no page range of the program's own, no current
  // page, no selection.
  dialog.setOptions(QAbstractPrintDialog::PrintToFile | QAbstractPrintDialog::PrintShowPageSize);
  // The print service may still pick pages of each document ("Pages"); how
  // many a run prints is not known yet.
  dialog.setMinMax(1, 9999);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return chosenDestinations(printer_, current);
}

}  // namespace quill::qt
