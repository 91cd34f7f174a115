// Tables and cells over the surface's grids.
#include "platform/qt/surface_accessible.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QWidget>
#include <map>
#include <tuple>

#include "platform/qt/surface_widget.h"

namespace quill::qt {

namespace {

class SurfaceAccessible;

QString numberOrBlank(const Surface& surface, const GridArea& grid, int row, int column) {
  const float left = grid.left + static_cast<float>(column) * grid.cellWidth;
  const float top = grid.top + static_cast<float>(row) * grid.cellHeight;
  QString text;
  for (const DrawOp& op : surface.ops()) {
    const bool inside = op.x1 > left && op.x1 < left + grid.cellWidth && op.y1 > top && op.y1 < top + grid.cellHeight;
    if (op.kind == DrawOp::Kind::Text && inside) text = QString::fromStdString(op.text).trimmed();
  }
  return text.isEmpty() ? QString("blank") : text;
}

class CellAccessible : public QAccessibleInterface,
                       public QAccessibleTableCellInterface,
                       public QAccessibleActionInterface {
 public:
  CellAccessible(SurfaceAccessible* surface, std::size_t grid, int row, int column)
      : surface_(surface), grid_(grid), row_(row), column_(column) {}

  bool isValid() const override;
  QObject* object() const override { return nullptr; }
  QWindow* window() const override;
  QAccessibleInterface* parent() const override;
  QAccessibleInterface* child(int) const override { return nullptr; }
  int childCount() const override { return 0; }
  int indexOfChild(const QAccessibleInterface*) const override { return -1; }
  QAccessibleInterface* childAt(int, int) const override { return nullptr; }
  QString text(QAccessible::Text t) const override;
  void setText(QAccessible::Text, const QString&) override {}
  QRect rect() const override;
  QAccessible::Role role() const override { return QAccessible::Cell; }
  QAccessible::State state() const override;
  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::TableCellInterface) return static_cast<QAccessibleTableCellInterface*>(this);
    if (type == QAccessible::ActionInterface) return static_cast<QAccessibleActionInterface*>(this);
    return nullptr;
  }

  bool isSelected() const override { return false; }
  QList<QAccessibleInterface*> columnHeaderCells() const override { return {}; }
  QList<QAccessibleInterface*> rowHeaderCells() const override { return {}; }
  int columnIndex() const override { return column_; }
  int rowIndex() const override { return row_; }
  int columnExtent() const override { return 1; }
  int rowExtent() const override { return 1; }
  QAccessibleInterface* table() const override { return parent(); }

  QStringList actionNames() const override { return {pressAction()}; }
  void doAction(const QString& name) override;
  QStringList keyBindingsForAction(const QString&) const override { return {}; }

 private:
  SurfaceAccessible* surface_;
  std::size_t grid_;
  int row_, column_;
};

class TableAccessible : public QAccessibleInterface, public QAccessibleTableInterface {
 public:
  TableAccessible(SurfaceAccessible* surface, std::size_t grid) : surface_(surface), grid_(grid) {}

  bool isValid() const override;
  QObject* object() const override { return nullptr; }
  QWindow* window() const override;
  QAccessibleInterface* parent() const override;
  QAccessibleInterface* child(int index) const override {
    const int columns = columnCount();
    return index < 0 || index >= childCount() ? nullptr : cellAt(index / columns, index % columns);
  }
  int childCount() const override { return rowCount() * columnCount(); }
  int indexOfChild(const QAccessibleInterface* child) const override {
    const auto* cell = child == nullptr ? nullptr : const_cast<QAccessibleInterface*>(child)->tableCellInterface();
    return cell == nullptr ? -1 : cell->rowIndex() * columnCount() + cell->columnIndex();
  }
  QAccessibleInterface* childAt(int, int) const override { return nullptr; }
  QString text(QAccessible::Text t) const override;
  void setText(QAccessible::Text, const QString&) override {}
  QRect rect() const override;
  QAccessible::Role role() const override { return QAccessible::Table; }
  QAccessible::State state() const override { return {}; }
  void* interface_cast(QAccessible::InterfaceType type) override {
    return type == QAccessible::TableInterface ? static_cast<QAccessibleTableInterface*>(this) : nullptr;
  }

  QAccessibleInterface* caption() const override { return nullptr; }
  QAccessibleInterface* summary() const override { return nullptr; }
  QAccessibleInterface* cellAt(int row, int column) const override;
  QString columnDescription(int column) const override;
  QString rowDescription(int row) const override;
  int columnCount() const override;
  int rowCount() const override;
  int selectedCellCount() const override { return 0; }
  int selectedColumnCount() const override { return 0; }
  int selectedRowCount() const override { return 0; }
  QList<QAccessibleInterface*> selectedCells() const override { return {}; }
  QList<int> selectedColumns() const override { return {}; }
  QList<int> selectedRows() const override { return {}; }
  bool isColumnSelected(int) const override { return false; }
  bool isRowSelected(int) const override { return false; }
  bool selectRow(int) override { return false; }
  bool selectColumn(int) override { return false; }
  bool unselectRow(int) override { return false; }
  bool unselectColumn(int) override { return false; }
  void modelChange(QAccessibleTableModelChangeEvent*) override {}

 private:
  SurfaceAccessible* surface_;
  std::size_t grid_;
};

class SurfaceAccessible : public QAccessibleWidget {
 public:
  // Made for a finished SurfaceWidget: its form is taken now, as the widget
  // may be half torn down when the interface is last asked something.
  explicit SurfaceAccessible(SurfaceWidget* widget)
      : QAccessibleWidget(widget, QAccessible::Pane), form_(widget->form()) {}
  ~SurfaceAccessible() override { forget(); }

  const Surface& surface() const { return form_.surface(); }
  const std::vector<GridArea>& grids() const { return surface().grids(); }

  QString text(QAccessible::Text t) const override {
    return t == QAccessible::Name ? QString("Drawing") : QAccessibleWidget::text(t);
  }
  int childCount() const override { return QAccessibleWidget::childCount() + static_cast<int>(grids().size()); }
  QAccessibleInterface* child(int index) const override {
    const int controls = QAccessibleWidget::childCount();
    if (index < controls) return QAccessibleWidget::child(index);
    return table(static_cast<std::size_t>(index - controls));
  }
  int indexOfChild(const QAccessibleInterface* child) const override {
    for (const auto& [key, id] : cache_) {
      if (QAccessible::accessibleInterface(id) == child && std::get<1>(key) < 0) {
        return QAccessibleWidget::childCount() + static_cast<int>(std::get<0>(key));
      }
    }
    return QAccessibleWidget::indexOfChild(child);
  }

  // The table of a grid, and a cell of it (row and column from 0), made once
  // per drawing of the grids and kept until the grids change.
  QAccessibleInterface* table(std::size_t grid) const { return cached(grid, -1, -1); }
  QAccessibleInterface* cell(std::size_t grid, int row, int column) const { return cached(grid, row, column); }

  QRect cellRect(const GridArea& g, int row, int column) const {
    const QPoint corner = widget()->mapToGlobal(QPoint(0, 0));
    return QRect(corner.x() + static_cast<int>(g.left + static_cast<float>(column) * g.cellWidth),
                 corner.y() + static_cast<int>(g.top + static_cast<float>(row) * g.cellHeight),
                 static_cast<int>(g.cellWidth), static_cast<int>(g.cellHeight));
  }
  // Whether the practice's entry box stands over this cell.
  bool holdsEntryBox(const GridArea& g, int row, int column) const {
    const Control* box = form_.findControl("Text6");
    if (box == nullptr || !box->visible()) return false;
    return box->rect().left / kTwipsPerPixel == static_cast<int>(g.left + static_cast<float>(column) * g.cellWidth) &&
           box->rect().top / kTwipsPerPixel == static_cast<int>(g.top + static_cast<float>(row) * g.cellHeight);
  }
  void press(const GridArea& g, int row, int column) const {
    const float x = g.left + (static_cast<float>(column) + 0.5F) * g.cellWidth;
    const float y = g.top + (static_cast<float>(row) + 0.5F) * g.cellHeight;
    form_.userMouseDown(1, 0, x, y);
  }

 private:
  QAccessibleInterface* cached(std::size_t grid, int row, int column) const {
    if (generation_ != surface().gridGeneration()) {
      forget();
      generation_ = surface().gridGeneration();
    }
    if (grid >= grids().size()) return nullptr;
    const auto key = std::make_tuple(grid, row, column);
    if (const auto it = cache_.find(key); it != cache_.end()) return QAccessible::accessibleInterface(it->second);
    auto* self = const_cast<SurfaceAccessible*>(this);
    QAccessibleInterface* made = row < 0 ? static_cast<QAccessibleInterface*>(new TableAccessible(self, grid))
                                         : new CellAccessible(self, grid, row, column);
    cache_[key] = QAccessible::registerAccessibleInterface(made);
    return made;
  }
  void forget() const {
    for (const auto& [key, id] : cache_) QAccessible::deleteAccessibleInterface(id);
    cache_.clear();
  }

  Form& form_;
  mutable std::map<std::tuple<std::size_t, int, int>, QAccessible::Id> cache_;
  mutable unsigned generation_ = 0;
};

bool CellAccessible::isValid() const { return grid_ < surface_->grids().size(); }
QWindow* CellAccessible::window() const { return surface_->window(); }
QAccessibleInterface* CellAccessible::parent() const { return surface_->table(grid_); }
QString CellAccessible::text(QAccessible::Text t) const {
  if (!isValid()) return {};
  const GridArea& g = surface_->grids()[grid_];
  if (t == QAccessible::Name) return numberOrBlank(surface_->surface(), g, row_, column_);
  if (t == QAccessible::Description && surface_->holdsEntryBox(g, row_, column_)) return "entry box";
  return {};
}
QRect CellAccessible::rect() const {
  return isValid() ? surface_->cellRect(surface_->grids()[grid_], row_, column_) : QRect();
}
QAccessible::State CellAccessible::state() const {
  QAccessible::State state;
  state.focusable = true;
  if (isValid() && surface_->holdsEntryBox(surface_->grids()[grid_], row_, column_)) state.editable = true;
  return state;
}
void CellAccessible::doAction(const QString& name) {
  if (name == pressAction() && isValid()) surface_->press(surface_->grids()[grid_], row_, column_);
}

bool TableAccessible::isValid() const { return grid_ < surface_->grids().size(); }
QWindow* TableAccessible::window() const { return surface_->window(); }
QAccessibleInterface* TableAccessible::parent() const { return surface_; }
QString TableAccessible::text(QAccessible::Text t) const {
  if (t != QAccessible::Name || !isValid()) return {};
  return QString("Square, %1 by %2 cells").arg(rowCount()).arg(columnCount());
}
QRect TableAccessible::rect() const {
  if (!isValid()) return {};
  const GridArea& g = surface_->grids()[grid_];
  return surface_->cellRect(g, 0, 0).united(surface_->cellRect(g, g.rows - 1, g.columns - 1));
}
QAccessibleInterface* TableAccessible::cellAt(int row, int column) const {
  if (row < 0 || column < 0 || row >= rowCount() || column >= columnCount()) return nullptr;
  return surface_->cell(grid_, row, column);
}
QString TableAccessible::columnDescription(int column) const {
  return isValid() ? QString("column %1").arg(surface_->grids()[grid_].firstColumn + column) : QString();
}
QString TableAccessible::rowDescription(int row) const {
  return isValid() ? QString("row %1").arg(surface_->grids()[grid_].firstRow + row) : QString();
}
int TableAccessible::columnCount() const { return isValid() ? surface_->grids()[grid_].columns : 0; }
int TableAccessible::rowCount() const { return isValid() ? surface_->grids()[grid_].rows : 0; }

QAccessibleInterface* surfaceFactory(const QString& className, QObject* object) {
  if (className != "quill::qt::SurfaceWidget" || object == nullptr || !object->isWidgetType()) return nullptr;
  return new SurfaceAccessible(static_cast<SurfaceWidget*>(object));
}

}  // namespace

void installSurfaceAccessibility() {
  static const bool installed = [] {
    QAccessible::installFactory(surfaceFactory);
    return true;
  }();
  (void)installed;
}

void surfaceDrawingChanged(QWidget* surface) {
  if (!QAccessible::isActive()) return;
  QAccessibleEvent event(surface, QAccessible::ObjectReorder);
  QAccessible::updateAccessibility(&event);
}

}  // namespace quill::qt
