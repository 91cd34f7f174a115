// A page as Print window took it: the drawing and every visible control as it
// looked at that moment, kept as plain data so that the page can be painted
// later, on any thread, while the window goes on.
#pragma once

#include <QColor>
#include <QPainter>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <optional>
#include <vector>

#include "construction/page_geometry.h"
#include "platform/form.h"
#include "platform/surface.h"

namespace quill::qt {

class FormView;

struct ControlImage {
  ControlKind kind = ControlKind::Label;
  QString text;
  QRectF box;
  std::optional<QColor> background;  // none: the window's colour shows through
  QColor textColour;
  bool checked = false;
  std::optional<Illustration> illustration;
  QColor windowColour, buttonColour;
};

struct PageSnapshot {
  std::vector<DrawOp> drawing;
  std::vector<ControlImage> controls;
};

PageSnapshot takeSnapshot(const FormView& view);

// Paints the page into a rectangle of the given size, scaled to fit with the
// page area's proportions (widened to take in anything drawn beyond it).
// Vector output: texts stay texts.
void renderPage(QPainter& painter, const PageSnapshot& page, QSizeF target);

}  // namespace quill::qt
