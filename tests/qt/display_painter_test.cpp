// Painting a display list in few calls shows what painting it op by op shows.
#include <gtest/gtest.h>

#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <QProcess>
#include <QTemporaryDir>
#include <random>
#include <string>

#include "qt/appearance.h"
#include "qt/display_painter.h"

namespace quill::qt {
namespace {

// Every operation on its own, in order: the picture the gathering must keep.
void paintOneByOne(QPainter& painter, const std::vector<DrawOp>& drawing) {
  painter.setFont(drawingFont());
  painter.setPen(Qt::black);
  const qreal ascent = QFontMetricsF(painter.font()).ascent();
  for (const DrawOp& op : drawing) {
    if (op.kind == DrawOp::Kind::Box) {
      const PaletteColour c = paletteColour(op.colour);
      painter.fillRect(QRectF(QPointF(std::min(op.x1, op.x2), std::min(op.y1, op.y2)),
                              QPointF(std::max(op.x1, op.x2) + 1, std::max(op.y1, op.y2) + 1)),
                       QColor(c.red, c.green, c.blue));
    } else {
      painter.drawText(QPointF(op.x1, op.y1 + ascent), QString::fromStdString(op.text));
    }
  }
}

// Crowded drawings where boxes and texts of every colour cover one another:
// grid-like lines, cells, single pixels, numbers and tile labels.
std::vector<DrawOp> crowdedDrawing(std::mt19937& random) {
  std::uniform_int_distribution<int> coordinate(0, 150), extent(0, 30), kind(0, 3);
  // Mostly the colours squares are drawn in, so that boxes often lie within
  // boxes of their own colour.
  const int colours[] = {palette::white, palette::white, palette::black, palette::lightGrey, 12};
  std::uniform_int_distribution<std::size_t> colour(0, std::size(colours) - 1);
  std::uniform_int_distribution<int> number(1, 10201);
  std::vector<DrawOp> drawing;
  for (int i = 0; i < 300; ++i) {
    DrawOp op;
    op.x1 = static_cast<float>(coordinate(random));
    op.y1 = static_cast<float>(coordinate(random));
    switch (kind(random)) {
      case 0:
        op.kind = DrawOp::Kind::Text;
        // A number, or a tile's label.
        op.text = number(random) % 3 != 0 ? std::to_string(number(random))
                                          : std::to_string(number(random) % 20) + "," + std::to_string(i % 20);
        break;
      case 1:  // a pixel, as under each number
        op.x2 = op.x1;
        op.y2 = op.y1;
        break;
      default:  // corners in either order
        op.x2 = op.x1 + static_cast<float>(extent(random) - (i % 2 ? 0 : 30));
        op.y2 = op.y1 + static_cast<float>(extent(random) - (i % 3 ? 0 : 30));
    }
    op.colour = colours[colour(random)];
    drawing.push_back(op);
  }
  return drawing;
}

TEST(DisplayPainter, ShowsWhatPaintingEachOperationInOrderShows) {
  for (const qreal scale : {1.0, 0.75, 2.5}) {
    for (unsigned seed = 1; seed <= 40; ++seed) {
      std::mt19937 random(seed);
      const std::vector<DrawOp> drawing = crowdedDrawing(random);
      QImage gathered(480, 480, QImage::Format_RGB32), alone(480, 480, QImage::Format_RGB32);
      for (auto [image, paint] : {std::pair{&gathered, &paintDisplayList}, std::pair{&alone, &paintOneByOne}}) {
        image->fill(QColor(239, 239, 239));
        QPainter painter(image);
        painter.translate(7, 3);
        painter.scale(scale, scale);
        paint(painter, drawing);
      }
      ASSERT_EQ(gathered, alone) << "seed " << seed << " scale " << scale;
    }
  }
}

// On paper the gathering takes another road (one brush a run, boxes in the
// device's units, which a viewer snaps to pixels as lone rectangles): each
// drawing painted both ways on two pages must look alike once rendered.
TEST(DisplayPainter, PaperShowsWhatPaintingEachOperationInOrderShows) {
  QTemporaryDir folder;
  const QString pdf = folder.filePath("drawings.pdf"); 
  constexpr unsigned kDrawings = 8;
  {
    QPdfWriter writer(pdf);
    writer.setPageSize(QPageSize(QPageSize::A6));
    writer.setPageOrientation(QPageLayout::Landscape);
    QPainter painter(&writer);
    for (unsigned seed = 1; seed <= kDrawings; ++seed) {
      std::mt19937 random(seed);
      const std::vector<DrawOp> drawing = crowdedDrawing(random);
      for (auto paint : {&paintDisplayList, &paintOneByOne}) {
        if (seed > 1 || paint == &paintOneByOne) writer.newPage();
        painter.save();
        const qreal scale = seed % 2 ? 29.0 : 31.7;
        painter.scale(scale, scale);
        paint(painter, drawing);
        painter.restore();
      }
    }
  }
  ASSERT_EQ(QProcess::execute("pdftoppm", {"-r", "150", "-png", pdf, folder.filePath("page")}), 0);
  for (unsigned page = 1; page <= 2 * kDrawings; page += 2) {
    const auto image = [&](unsigned n) {
      return QImage(folder.filePath(QString("page-%1.png").arg(n, 2, 10, QChar('0'))));
    };
    ASSERT_FALSE(image(page).isNull());
    EXPECT_EQ(image(page), image(page + 1)) << "drawing " << (page + 1) / 2;
  }
}

}  // namespace
}  // namespace quill::qt
