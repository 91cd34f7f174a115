// Printing the window's page area as one finished page: to the default
// printer when there is one, otherwise as a PDF file, so no page is lost.
#pragma once

#include <QSizeF>
#include <QString>

#include "construction/page_geometry.h"

class QPainter;

namespace quill::qt {

class FormView;

// The page area and its margin on the far sides.
constexpr int kPageAreaWidth = page::surfaceWidth + page::kMargin;
constexpr int kPageAreaHeight = page::surfaceHeight + page::kMargin;

// Where pages go when no printer is installed: ~/Quillion/pages.
QString pdfPageFolder();

// Paints the drawing and every visible control into a rectangle of the
// given size, scaled to fit with the page area's proportions. Vector output.
void renderPage(QPainter& painter, const FormView& view, QSizeF target);

// Prints one page and returns where it went: the printer's name, or the PDF
// file's path. The job is complete when this returns.
QString printPage(const FormView& view);

// Writes one page as a PDF file at the given path (written aside and renamed,
// so the file never exists half-written). Returns false when it cannot.
bool printPageToPdf(const FormView& view, const QString& path);

}  // namespace quill::qt
