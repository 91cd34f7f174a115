// Painting the display list: operations gathered into few changes of state.
//
// On paper every change of brush or pen costs a graphics state in the PDF,
// and a page of 25 squares of 5 by 5 has over a thousand boxes and texts:
// painted one by one they made a batch slow. So boxes are filled run by run
// of one colour (still one fill a box), texts are drawn as one run of glyphs,
// and a box that would change no pixel is left out. An operation moves ahead
// of others only past what it does not touch, so the picture is the one that
// painting in order gives.
#include "qt/display_painter.h"

#include <QFontMetricsF>
#include <QGlyphRun>
#include <QPaintEngine>
#include <QPainter>
#include <QRawFont>
#include <QTextLayout>
#include <algorithm>
#include <cmath>
#include <string>
#include <unordered_map>

#include "qt/appearance.h"

namespace quill::qt {

namespace {

// A text shaped once, its glyphs placed from the left end of its baseline:
// a page of 5 by 5 squares shows the same 25 numbers 25 times each.
struct ShapedText {
  QList<QGlyphRun> runs;
  QRectF ink;  // the glyphs' boxes together, from the same baseline point
};

class ShapedTexts {
 public:
  explicit ShapedTexts(const QFont& font) : font_(font) {}

  const ShapedText& operator[](const std::string& text) {
    auto found = shaped_.find(text);
    if (found != shaped_.end()) return found->second;
    QTextLayout layout(QString::fromStdString(text), font_);
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    ShapedText shaped;
    shaped.runs = layout.glyphRuns();
    for (QGlyphRun& run : shaped.runs) {
      QList<QPointF> positions = run.positions();
      const QList<quint32> indexes = run.glyphIndexes();
      for (qsizetype i = 0; i < positions.size(); ++i) {
        positions[i].ry() -= line.ascent();
        shaped.ink |= run.rawFont().boundingRect(indexes[i]).translated(positions[i]);
      }
      run.setPositions(positions);
    }
    return shaped_.emplace(text, std::move(shaped)).first->second;
  }

 private:
  QFont font_;
  std::unordered_map<std::string, ShapedText> shaped_;
};

// Whether two rectangles come within `gap` of each other: closer than a
// device pixel, both may colour one pixel once rounded, and so meet.
bool meet(const QRectF& a, const QRectF& b, qreal gap) {
  return a.left() < b.right() + gap && b.left() < a.right() + gap && a.top() < b.bottom() + gap &&
         b.top() < a.bottom() + gap;
}

// What is waiting to be painted: runs of boxes, each of one colour, to be
// filled in order, and then the texts over them. A box joins the latest run
// of its colour that no later run it meets follows; a box that meets a
// waiting text is painted after everything waiting.
class PendingDrawing {
 public:
  // `area`: where most of the drawing lies.
  PendingDrawing(QPainter& painter, const QRectF& area)
      : painter_(painter),
        gap_(1 / std::min(std::abs(painter.worldTransform().m11()), std::abs(painter.worldTransform().m22()))),
        area_(area),
        bucketSize_(std::max(kBucketSize, std::max(area.width(), area.height()) / kMostBuckets)),
        columns_(static_cast<int>(area.width() / bucketSize_) + 1),
        rows_(static_cast<int>(area.height() / bucketSize_) + 1),
        buckets_(static_cast<std::size_t>(columns_ * rows_)) {}

  void addBox(const QRectF& box, int colour) {
    int after = -1;  // the latest run of another colour the box meets
    int inside = -1;  // the latest run with a box of this colour around it
    bool coversText = false;
    const QRectF reach = box.adjusted(-gap_, -gap_, gap_, gap_);
    forEachBucket(reach, [&](std::vector<Placed>& placed) {
      for (const Placed& p : placed) {
        if (!meet(p.rect, box, gap_)) continue;
        if (p.run == kText) {
          coversText = true;
        } else if (runs_[static_cast<std::size_t>(p.run)].colour != colour) {
          after = std::max(after, p.run);
        } else if (p.rect.contains(reach)) {
          inside = std::max(inside, p.run);
        }
      }
    });
    // A box within one of its colour that nothing has covered since changes
    // no pixel: the white dot under each number in a white cell.
    if (!coversText && inside > after) return;
    if (coversText) {
      paint();
      after = -1;
    }
    int run = static_cast<int>(runs_.size()) - 1;
    while (run > after && runs_[static_cast<std::size_t>(run)].colour != colour) --run;
    if (run <= after) {
      runs_.push_back({colour, {}});
      run = static_cast<int>(runs_.size()) - 1;
    }
    runs_[static_cast<std::size_t>(run)].boxes.push_back(box);
    place(box, run);
  }

  void addText(const QPointF& baseline, const ShapedText& text) {
    for (const QGlyphRun& run : text.runs) {
      auto glyphs = std::find_if(texts_.begin(), texts_.end(),
                                 [&](const Glyphs& g) { return g.font == run.rawFont(); });
      if (glyphs == texts_.end()) glyphs = texts_.insert(texts_.end(), {run.rawFont(), {}, {}});
      glyphs->indexes.append(run.glyphIndexes());
      for (const QPointF& position : run.positions()) glyphs->positions.append(baseline + position);
    }
    place(text.ink.translated(baseline), kText);
  }

  void paint() {
    if (painter_.paintEngine()->isExtended()) {
      // The screen's engine fills a rectangle without a change of state.
      for (const Run& run : runs_) {
        const PaletteColour c = paletteColour(run.colour);
        for (const QRectF& box : run.boxes) painter_.fillRect(box, QColor(c.red, c.green, c.blue));
      }
    } else {
      fillOnPaper();
    }
    painter_.setPen(Qt::black);
    for (const Glyphs& glyphs : texts_) {
      QGlyphRun run;
      run.setRawFont(glyphs.font);
      run.setGlyphIndexes(glyphs.indexes);
      run.setPositions(glyphs.positions);
      painter_.drawGlyphRun(QPointF(0, 0), run);
    }
    runs_.clear();
    texts_.clear();
    for (std::vector<Placed>* placed : filled_) placed->clear();
    filled_.clear();
  }

 private:
  // On paper a fill with a change of brush costs a graphics state, so the
  // brush is set once a run.
  void fillOnPaper() {
    painter_.save();
    painter_.setPen(Qt::NoPen);
    for (const Run& run : runs_) {
      const PaletteColour c = paletteColour(run.colour);
      painter_.setBrush(QColor(c.red, c.green, c.blue));
      // One fill a box: a viewer snaps a lone rectangle to whole pixels,
      // not a path of many.
      for (const QRectF& box : run.boxes) painter_.drawRects(&box, 1);
    }
    painter_.restore();
  }

  static constexpr int kText = -1;
  static constexpr qreal kBucketSize = 32;
  static constexpr int kMostBuckets = 256;  // along a side
  struct Run {
    int colour;
    std::vector<QRectF> boxes;
  };
  struct Glyphs {
    QRawFont font;
    QList<quint32> indexes;
    QList<QPointF> positions;
  };
  struct Placed {
    QRectF rect;
    int run;  // or kText
  };

  // The waiting rectangles are filed by the squares of a coarse grid over
  // the drawing that they touch, so a new box looks at its neighbours only.
  // Whatever lies beyond the grid is filed in its edge squares.
  template <typename Visit>
  void forEachBucket(const QRectF& rect, Visit visit) {
    const auto bucket = [this](qreal v, qreal origin, int count) {
      return std::clamp(static_cast<int>(std::floor((v - origin) / bucketSize_)), 0, count - 1);
    };
    const int lastColumn = bucket(rect.right(), area_.left(), columns_);
    const int lastRow = bucket(rect.bottom(), area_.top(), rows_);
    for (int column = bucket(rect.left(), area_.left(), columns_); column <= lastColumn; ++column) {
      for (int row = bucket(rect.top(), area_.top(), rows_); row <= lastRow; ++row) {
        std::vector<Placed>& placed = buckets_[static_cast<std::size_t>(row * columns_ + column)];
        if (placed.empty()) filled_.push_back(&placed);
        visit(placed);
      }
    }
  }

  void place(const QRectF& rect, int run) {
    forEachBucket(rect, [&](std::vector<Placed>& placed) { placed.push_back({rect, run}); });
  }

  QPainter& painter_;
  const qreal gap_;
  std::vector<Run> runs_;
  std::vector<Glyphs> texts_;
  const QRectF area_;
  const qreal bucketSize_;
  const int columns_, rows_;
  std::vector<std::vector<Placed>> buckets_;
  std::vector<std::vector<Placed>*> filled_;
};

}  // namespace

void paintDisplayList(QPainter& painter, const std::vector<DrawOp>& drawing) {
  painter.save();
  painter.setFont(drawingFont());
  const qreal ascent = QFontMetricsF(painter.font()).ascent();
  ShapedTexts texts(painter.font());
  QRectF area;
  for (const DrawOp& op : drawing) area |= QRectF(QPointF(op.x1, op.y1), QPointF(op.x2, op.y2)).normalized();
  PendingDrawing pending(painter, area);
  for (const DrawOp& op : drawing) {
    if (op.kind == DrawOp::Kind::Box) {
      // Both corners are inside the box: (x1, y1)-(x1, y1) is one pixel.
      const qreal left = std::min(op.x1, op.x2);
      const qreal top = std::min(op.y1, op.y2);
      pending.addBox(QRectF(left, top, std::max(op.x1, op.x2) + 1 - left, std::max(op.y1, op.y2) + 1 - top),
                     op.colour);
    } else {
      // The text's top-left corner is at the text position; transparent background.
      pending.addText(QPointF(op.x1, op.y1 + ascent), texts[op.text]);
    }
  }
  pending.paint();
  painter.restore();
}

}  // namespace quill::qt
