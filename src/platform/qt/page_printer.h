// Printing the window's page area as one finished page: to the default
// printer when there is one, otherwise as a PDF file, so no page is lost.
#pragma once

#include <QSizeF>
#include <QString>

class QPainter;

namespace quill::qt {

class FormView;

// The page area: 753 by 530 drawing units and its 8-unit margin on the far sides.
constexpr int kPageAreaWidth = 753 + 8;
constexpr int kPageAreaHeight = 530 + 8;

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
