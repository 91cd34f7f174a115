// Tables and cells over the surface's grids, kept consistent for Qt's AT-SPI
// bridge, which holds interfaces by id across calls and uses what child()
// and cellAt() return without checking it:
// - a table stands for one grid from the moment it is drawn until the
//   surface is cleared; then the reader is told (if it was told of the
//   table: tables are announced after a pause, so that a run that fills
//   pages many times a second does not bury it in events), the table and its
//   cells answer as invalid, and they are deleted later, from the event
//   loop, never inside a call the bridge is making;
// - every index below a count given out yields an interface, and cellAt()
//   never yields null (a cell outside the table answers as invalid);
// - a cell's name is looked up, not searched for, so reading a large grid
//   costs no more than its cells.
#include "qt/surface_accessible.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QCoreApplication>
#include <QTimer>
#include <QWidget>
#include <algorithm>
#include <unordered_map>
#include <utility>
#include <vector>

#include "qt/surface_widget.h"

namespace quill::qt {

namespace {

class SurfaceAccessible;
class TableAccessible;

// The surfaces' interfaces once made, so that they follow every change of
// the drawing, whether or not a reader is listening just then.
std::unordered_map<const QObject*, SurfaceAccessible*>& madeForSurfaces() {
  static std::unordered_map<const QObject*, SurfaceAccessible*> made;
  return made;
}

// Deletes interfaces once the bridge can no longer be inside a call on them:
// from the event loop, after it has been told they are gone.
void deleteLater(std::vector<std::pair<QAccessible::Id, QAccessibleInterface*>> gone) {
  if (gone.empty()) return;
  QMetaObject::invokeMethod(
      QCoreApplication::instance(),
      [gone = std::move(gone)] {
        // An id is checked against its interface: never delete one reused since.
        for (const auto& [id, iface] : gone) {
          if (QAccessible::accessibleInterface(id) == iface) QAccessible::deleteAccessibleInterface(id);
        }
      },
      Qt::QueuedConnection);
}

class CellAccessible : public QAccessibleInterface,
                       public QAccessibleTableCellInterface,
                       public QAccessibleActionInterface {
 public:
  CellAccessible(const TableAccessible* table, int row, int column) : table_(table), row_(row), column_(column) {}

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
  const TableAccessible* table_;
  int row_, column_;
};

class TableAccessible : public QAccessibleInterface, public QAccessibleTableInterface {
 public:
  TableAccessible(const SurfaceAccessible* surface, std::size_t grid, const GridArea& area)
      : surface_(surface), grid_(grid), area_(area),
        cells_(static_cast<std::size_t>(std::max(area.rows, 0) * std::max(area.columns, 0))) {}
  ~TableAccessible() override {
    for (const QAccessible::Id id : cells_) {
      if (id != 0) QAccessible::deleteAccessibleInterface(id);
    }
    if (outside_ != 0) QAccessible::deleteAccessibleInterface(outside_);
  }

  // The grid has gone: from now on the table and its cells answer as invalid.
  void retire() { retired_ = true; }
  // Whether the reader was told of the table.
  bool announced = false;

  const SurfaceAccessible& surface() const { return *surface_; }
  GridCell cellOf(int row, int column) const { return {grid_, row, column}; }
  const GridArea& area() const { return area_; }
  bool holds(int row, int column) const { return row >= 0 && column >= 0 && row < area_.rows && column < area_.columns; }
  // The cell if a reader has asked for it already, else null.
  QAccessibleInterface* existingCell(int row, int column) const {
    if (!isValid() || !holds(row, column)) return nullptr;
    const QAccessible::Id id = cells_[index(row, column)];
    return id == 0 ? nullptr : QAccessible::accessibleInterface(id);
  }

  bool isValid() const override { return !retired_; }
  QObject* object() const override { return nullptr; }
  QWindow* window() const override;
  QAccessibleInterface* parent() const override;
  QAccessibleInterface* child(int index) const override {
    if (index < 0 || index >= childCount()) return nullptr;
    return cellAt(index / area_.columns, index % area_.columns);
  }
  int childCount() const override { return rowCount() * columnCount(); }
  int indexOfChild(const QAccessibleInterface* child) const override {
    const auto* cell = child == nullptr ? nullptr : const_cast<QAccessibleInterface*>(child)->tableCellInterface();
    if (cell == nullptr || child->parent() != this || !holds(cell->rowIndex(), cell->columnIndex())) return -1;
    return static_cast<int>(index(cell->rowIndex(), cell->columnIndex()));
  }
  QAccessibleInterface* childAt(int x, int y) const override;
  QString text(QAccessible::Text t) const override {
    if (t != QAccessible::Name || !isValid()) return {};
    return QString("Square, %1 by %2 cells").arg(area_.rows).arg(area_.columns);
  }
  void setText(QAccessible::Text, const QString&) override {}
  QRect rect() const override;
  QAccessible::Role role() const override { return QAccessible::Table; }
  QAccessible::State state() const override { return {}; }
  void* interface_cast(QAccessible::InterfaceType type) override {
    return type == QAccessible::TableInterface ? static_cast<QAccessibleTableInterface*>(this) : nullptr;
  }

  QAccessibleInterface* caption() const override { return nullptr; }
  QAccessibleInterface* summary() const override { return nullptr; }
  // Never null: a cell outside the table (or of a table gone) is an invalid one.
  QAccessibleInterface* cellAt(int row, int column) const override {
    if (!isValid() || !holds(row, column)) return outside();
    QAccessible::Id& id = cells_[index(row, column)];
    if (id == 0) id = QAccessible::registerAccessibleInterface(new CellAccessible(this, row, column));
    return QAccessible::accessibleInterface(id);
  }
  QString columnDescription(int column) const override {
    return isValid() ? QString("column %1").arg(area_.firstColumn + column) : QString();
  }
  QString rowDescription(int row) const override {
    return isValid() ? QString("row %1").arg(area_.firstRow + row) : QString();
  }
  int columnCount() const override { return isValid() ? area_.columns : 0; }
  int rowCount() const override { return isValid() ? area_.rows : 0; }
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
  std::size_t index(int row, int column) const { return static_cast<std::size_t>(row * area_.columns + column); }
  QAccessibleInterface* outside() const {
    if (outside_ == 0) outside_ = QAccessible::registerAccessibleInterface(new CellAccessible(this, -1, -1));
    return QAccessible::accessibleInterface(outside_);
  }

  const SurfaceAccessible* surface_;  // not to be touched once retired: it may be gone
  std::size_t grid_;
  GridArea area_;
  bool retired_ = false;
  mutable std::vector<QAccessible::Id> cells_;  // 0 until a reader asks for the cell
  mutable QAccessible::Id outside_ = 0;
};

class SurfaceAccessible : public QAccessibleWidget {
 public:
  // Made for a finished SurfaceWidget: its form is taken now, as the widget
  // may be half torn down when the interface is last asked something.
  explicit SurfaceAccessible(SurfaceWidget* widget)
      : QAccessibleWidget(widget, QAccessible::Pane), form_(widget->form()), entryBox_(form_.findControl("Text6")),
        widget_(widget) {
    madeForSurfaces()[widget_] = this;
    announcer_.setSingleShot(true);
    announcer_.setInterval(kAnnouncePause);
    announcer_.callOnTimeout([this] { announceTables(); });
    sync(false);
  }
  ~SurfaceAccessible() override {
    madeForSurfaces().erase(widget_);
    // By id only: at the program's end the cache may have deleted the tables first.
    for (const auto& [id, table] : tables_) QAccessible::deleteAccessibleInterface(id);
  }

  const Surface& surface() const { return form_.surface(); }

  QString text(QAccessible::Text t) const override {
    return t == QAccessible::Name ? QString("Drawing") : QAccessibleWidget::text(t);
  }
  int childCount() const override {
    sync(false);
    return QAccessibleWidget::childCount() + static_cast<int>(tables_.size());
  }
  QAccessibleInterface* child(int index) const override {
    sync(false);
    const int controls = QAccessibleWidget::childCount();
    if (index < controls) return QAccessibleWidget::child(index);
    const auto table = static_cast<std::size_t>(index - controls);
    return table < tables_.size() ? tables_[table].second : nullptr;
  }
  int indexOfChild(const QAccessibleInterface* child) const override {
    sync(false);
    for (std::size_t i = 0; i < tables_.size(); ++i) {
      if (tables_[i].second == child) return QAccessibleWidget::childCount() + static_cast<int>(i);
    }
    return QAccessibleWidget::indexOfChild(child);
  }
  QAccessibleInterface* focusChild() const override {
    QAccessibleInterface* cell = cursorCell();
    return cell != nullptr ? cell : QAccessibleWidget::focusChild();
  }

  // The cell under the cell cursor while the surface has the keys.
  QAccessibleInterface* cursorCell() const {
    sync(false);
    const std::optional<GridCell> cursor = surface().cellCursor();
    if (!cursor || !hasKeys() || cursor->grid >= tables_.size()) return nullptr;
    return tables_[cursor->grid].second->cellAt(cursor->row, cursor->column);
  }

  void changed(const SurfaceChange& change) {
    sync(true);
    if (change.kind == SurfaceChange::Kind::CellNamed && change.cell.grid < tables_.size()) {
      // A grid being drawn names every cell; the reader hears of the table
      // once it is done, so only a change to a table it knows is news.
      TableAccessible* table = tables_[change.cell.grid].second;
      if (!table->announced) return;
      if (QAccessibleInterface* cell = table->existingCell(change.cell.row, change.cell.column)) {
        QAccessibleEvent named(cell, QAccessible::NameChanged);
        QAccessible::updateAccessibility(&named);
      }
      QAccessibleTableModelChangeEvent model(table, QAccessibleTableModelChangeEvent::DataChanged);
      model.setFirstRow(change.cell.row);
      model.setLastRow(change.cell.row);
      model.setFirstColumn(change.cell.column);
      model.setLastColumn(change.cell.column);
      QAccessible::updateAccessibility(&model);
    } else if (change.kind == SurfaceChange::Kind::Cursor) {
      focusCursorCell();
    } else if (change.kind == SurfaceChange::Kind::Hint && change.cell.grid < tables_.size()) {
      if (QAccessibleInterface* cell = tables_[change.cell.grid].second->existingCell(change.cell.row, change.cell.column)) {
        QAccessibleEvent described(cell, QAccessible::DescriptionChanged);
        QAccessible::updateAccessibility(&described);
      }
    }
  }
  void focusCursorCell() const {
    if (QAccessibleInterface* cell = cursorCell()) {
      QAccessibleEvent focus(cell, QAccessible::Focus);
      QAccessible::updateAccessibility(&focus);
    }
  }

  // Whether the practice's entry box stands over this cell.
  bool holdsEntryBox(const GridArea& g, int row, int column) const {
    if (entryBox_ == nullptr || !entryBox_->visible()) return false;
    const CellBox cell = cellBox(g, row, column);
    return entryBox_->rect().left / kTwipsPerPixel == static_cast<int>(cell.left) &&
           entryBox_->rect().top / kTwipsPerPixel == static_cast<int>(cell.top);
  }
  // The widget is asked only while it lives: it may be going while a reader asks.
  QRect cellRect(const GridArea& g, int row, int column) const {
    const QPoint corner = widget() != nullptr ? widget()->mapToGlobal(QPoint(0, 0)) : QPoint();
    const CellBox cell = cellBox(g, row, column);
    return QRect(corner.x() + static_cast<int>(cell.left), corner.y() + static_cast<int>(cell.top),
                 static_cast<int>(cell.width), static_cast<int>(cell.height));
  }
  QPoint fromScreen(int x, int y) const { return widget() != nullptr ? widget()->mapFromGlobal(QPoint(x, y)) : QPoint(x, y); }
  void press(const GridArea& g, int row, int column) const {
    const float x = g.left + (static_cast<float>(column) + 0.5F) * g.cellWidth;
    const float y = g.top + (static_cast<float>(row) + 0.5F) * g.cellHeight;
    form_.userMouseDown(1, 0, x, y);
  }
  bool hasKeys() const { return widget() != nullptr && widget()->hasFocus(); }

 private:
  // Brings the tables in line with the grids: all of them go when the
  // surface was cleared, and each new grid gets one. With `announce`, and a
  // reader listening, it is told of each: a removal while the table still
  // answers, an addition once it is in place.
  void sync(bool announce) const {
    if (syncing_) return;  // the events below ask for the children again
    syncing_ = true;
    const bool tell = announce && QAccessible::isActive();
    if (clearCount_ != surface().clearCount()) {
      clearCount_ = surface().clearCount();
      std::vector<std::pair<QAccessible::Id, QAccessibleInterface*>> gone;
      for (const auto& [id, table] : tables_) {
        if (tell && table->announced) {
          QAccessibleEvent removed(table, QAccessible::ObjectDestroyed);
          QAccessible::updateAccessibility(&removed);
        }
        table->retire();
        gone.emplace_back(id, table);
      }
      tables_.clear();
      deleteLater(std::move(gone));
    }
    const std::vector<GridArea>& grids = surface().grids();
    for (std::size_t grid = tables_.size(); grid < grids.size(); ++grid) {
      auto* table = new TableAccessible(this, grid, grids[grid]);
      tables_.emplace_back(QAccessible::registerAccessibleInterface(table), table);
      if (tell && !announcer_.isActive()) announcer_.start();
    }
    syncing_ = false;
  }

  // New tables are announced after a pause, those still there then: a run
  // that fills pages many times a second would otherwise bury the reader
  // under events for tables gone before it could look at them. Each is its
  // own children-changed event: Qt 6.4's bridge turns a reorder of the
  // surface into one signal per child, of a form readers reject.
  static constexpr int kAnnouncePause = 250;  // milliseconds
  void announceTables() const {
    if (!QAccessible::isActive()) return;
    sync(false);
    for (const auto& [id, table] : tables_) {
      if (table->announced) continue;
      table->announced = true;
      QAccessibleEvent added(table, QAccessible::ObjectCreated);
      QAccessible::updateAccessibility(&added);
    }
  }

  Form& form_;
  const Control* entryBox_;
  const QObject* widget_;
  mutable std::vector<std::pair<QAccessible::Id, TableAccessible*>> tables_;  // one per grid, in order
  mutable unsigned clearCount_ = 0;
  mutable bool syncing_ = false;
  mutable QTimer announcer_;
};

bool CellAccessible::isValid() const { return table_->isValid() && table_->holds(row_, column_); }
QWindow* CellAccessible::window() const { return isValid() ? table_->window() : nullptr; }
QAccessibleInterface* CellAccessible::parent() const {
  return table_->isValid() ? const_cast<TableAccessible*>(table_) : nullptr;
}
QString CellAccessible::text(QAccessible::Text t) const {
  if (!isValid()) return {};
  const SurfaceAccessible& surface = table_->surface();
  if (t == QAccessible::Name) {
    return QString::fromStdString(surface.surface().spokenName(table_->cellOf(row_, column_)));
  }
  if (t == QAccessible::Description) {
    const std::string hint = surface.surface().cellDescription(table_->cellOf(row_, column_));
    if (!hint.empty()) return QString::fromStdString(hint);
    if (surface.holdsEntryBox(table_->area(), row_, column_)) return "entry box";
  }
  return {};
}
QRect CellAccessible::rect() const {
  return isValid() ? table_->surface().cellRect(table_->area(), row_, column_) : QRect();
}
QAccessible::State CellAccessible::state() const {
  QAccessible::State state;
  if (!isValid()) {
    state.invalid = true;
    return state;
  }
  const SurfaceAccessible& surface = table_->surface();
  state.focusable = true;
  const std::optional<GridCell> cursor = surface.surface().cellCursor();
  state.focused = surface.hasKeys() && cursor && *cursor == table_->cellOf(row_, column_);
  if (surface.holdsEntryBox(table_->area(), row_, column_)) state.editable = true;
  return state;
}
void CellAccessible::doAction(const QString& name) {
  if (name == pressAction() && isValid()) table_->surface().press(table_->area(), row_, column_);
}

QWindow* TableAccessible::window() const { return isValid() ? surface_->window() : nullptr; }
QAccessibleInterface* TableAccessible::parent() const {
  return isValid() ? const_cast<SurfaceAccessible*>(surface_) : nullptr;
}
QRect TableAccessible::rect() const {
  if (!isValid() || area_.rows <= 0 || area_.columns <= 0) return {};
  return surface_->cellRect(area_, 0, 0).united(surface_->cellRect(area_, area_.rows - 1, area_.columns - 1));
}
QAccessibleInterface* TableAccessible::childAt(int x, int y) const {
  if (!isValid() || area_.cellWidth <= 0 || area_.cellHeight <= 0) return nullptr;
  const QPoint at = surface_->fromScreen(x, y);
  const float left = static_cast<float>(at.x()) - area_.left;
  const float top = static_cast<float>(at.y()) - area_.top;
  if (left < 0 || top < 0) return nullptr;
  const auto column = static_cast<int>(left / area_.cellWidth);
  const auto row = static_cast<int>(top / area_.cellHeight);
  return holds(row, column) ? cellAt(row, column) : nullptr;
}

QAccessibleInterface* surfaceFactory(const QString& className, QObject* object) {
  if (className != "quill::qt::SurfaceWidget" || object == nullptr || !object->isWidgetType()) return nullptr;
  return new SurfaceAccessible(static_cast<SurfaceWidget*>(object));
}

// Made on demand while a reader listens; otherwise only if made already.
SurfaceAccessible* accessibleOf(SurfaceWidget* surface) {
  if (QAccessible::isActive()) return dynamic_cast<SurfaceAccessible*>(QAccessible::queryAccessibleInterface(surface));
  const auto made = madeForSurfaces().find(surface);
  return made == madeForSurfaces().end() ? nullptr : made->second;
}

}  // namespace

void installSurfaceAccessibility() {
  static const bool installed = [] {
    QAccessible::installFactory(surfaceFactory);
    return true;
  }();
  (void)installed;
}

void surfaceAccessibilityChanged(SurfaceWidget* surface, const SurfaceChange& change) {
  if (SurfaceAccessible* accessible = accessibleOf(surface)) accessible->changed(change);
}

void surfaceFocused(SurfaceWidget* surface) {
  if (SurfaceAccessible* accessible = accessibleOf(surface)) accessible->focusCursorCell();
}

}  // namespace quill::qt
