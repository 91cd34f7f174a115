// The Qt binding under the offscreen platform: the user's actions reach the
// model, the model's changes reach the widgets, and nothing echoes back.
#include <gtest/gtest.h>

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDirIterator>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QProcess>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <csignal>
#include <memory>

#include "window/main_window.h"
#include "qt/form_view.h"
#include "qt/qt_platform.h"
#include "qt/surface_widget.h"

namespace quill::qt {
namespace {

using KeyLog = std::vector<std::pair<int, int>>;

class QtBinding : public ::testing::Test {
 protected:
  QtBinding() : window(std::make_unique<MainWindow>(platform)), w(*window), view(w) {
    platform.attach(&view);
    view.showAndActivate();
    QApplication::processEvents();
  }

  template <typename Widget>
  Widget* widget(const char* name) {
    auto* found = qobject_cast<Widget*>(view.widgetFor(name));
    EXPECT_NE(found, nullptr) << name;
    return found;
  }

  QtPlatform platform;
  std::unique_ptr<MainWindow> window;
  MainWindow& w;
  FormView view;
};

TEST_F(QtBinding, TypingRunsTheChangeHandlingOncePerEditAndKeyReleasesArrive) {
  std::vector<std::string> changes;
  KeyLog releases;
  w.Text1.onChange = [&] { changes.push_back(w.Text1.text()); };
  w.Text2.onKeyUp = [&](int key, int shift) { releases.emplace_back(key, shift); };

  auto* text1 = widget<QLineEdit>("Text1");
  text1->setFocus();
  text1->selectAll();
  QTest::keyClicks(text1, "12");
  EXPECT_EQ(w.Text1.text(), "12");
  EXPECT_EQ(changes, (std::vector<std::string>{"1", "12"}));

  auto* text2 = widget<QLineEdit>("Text2");
  text2->setFocus();
  QTest::keyClick(text2, Qt::Key_Up);
  QTest::keyClick(text2, Qt::Key_Down, Qt::ShiftModifier);
  QTest::keyClick(text2, Qt::Key_7);
  QTest::keyClick(text2, Qt::Key_Return);
  QTest::keyClick(text2, Qt::Key_Q);
  // The Shift key is a key of its own (16), released with no shift held.
  EXPECT_EQ(releases, (KeyLog{{38, 0}, {40, 1}, {16, 0}, {55, 0}, {13, 0}, {81, 0}}));
  EXPECT_EQ(w.Text2.text(), "57q");

  auto* text4 = widget<QLineEdit>("text4");  // typing stops at the length limit; the program does not
  text4->setFocus();
  text4->selectAll();
  QTest::keyClicks(text4, "12345678901");
  EXPECT_EQ(w.text4.text(), "123456789");
  w.text4.setText("12345678901");
  EXPECT_EQ(text4->text(), "12345678901");
}

TEST_F(QtBinding, KeysReachButtonsAndTheWindow) {
  KeyLog buttonKeys;
  KeyLog windowKeys;
  w.Command1.onKeyDown = [&](int key, int shift) { buttonKeys.emplace_back(key, shift); };
  w.onKeyDown = [&](int key, int shift) { windowKeys.emplace_back(key, shift); };
  auto* command1 = widget<QPushButton>("Command1");
  command1->setFocus();
  QTest::keyClick(command1, Qt::Key_Q);
  EXPECT_EQ(buttonKeys, (KeyLog{{81, 0}}));
  EXPECT_TRUE(windowKeys.empty());  // a control had the focus

  view.surfaceWidget()->setFocus();
  QTest::keyClick(view.surfaceWidget(), Qt::Key_Q, Qt::ControlModifier);
  EXPECT_EQ(windowKeys, (KeyLog{{17, 2}, {81, 2}}));  // Ctrl goes down first

  // The desktop's conventions: F10 opens the menu bar; Enter presses the focused button.
  QTest::keyClick(view.surfaceWidget(), Qt::Key_F10);
  EXPECT_EQ(view.menuBar()->activeAction(), view.actionFor("options2"));
  view.menuBar()->setActiveAction(nullptr);
  auto* info = widget<QPushButton>("Command2");
  info->setFocus();
  QTest::keyClick(info, Qt::Key_Return);
  EXPECT_TRUE(w.Label12.visible());  // the information page
}

TEST_F(QtBinding, ModelChangesReachTheWidgetsWithoutEchoes) {
  int text1Changes = 0;
  int check1Clicks = 0;
  w.Text1.onChange = [&] { ++text1Changes; };
  w.Check1.onClick = [&] { ++check1Clicks; };

  w.Text1.setText("9");
  w.Check1.setValue(1);
  w.Label11.setCaption("Magic Total = 175");
  w.setCaption("Creating");
  w.Label19.setVisible(true);
  w.Command4.setEnabled(false);
  w.Text6.setPixelPosition(10, 20);
  QApplication::processEvents();

  EXPECT_EQ(widget<QLineEdit>("Text1")->text(), "9");
  EXPECT_TRUE(widget<QCheckBox>("Check1")->isChecked());
  EXPECT_EQ(widget<QLabel>("Label11")->text(), "Magic Total = 175");
  EXPECT_EQ(view.windowTitle(), "Creating");
  EXPECT_TRUE(widget<QLabel>("Label19")->isVisible());
  EXPECT_FALSE(widget<QPushButton>("Command4")->isEnabled());
  EXPECT_EQ(widget<QLineEdit>("Text6")->pos(), QPoint(10, 20));
  EXPECT_EQ(text1Changes, 1);
  EXPECT_EQ(check1Clicks, 1);

  // A menu item's check mark is the model's, never the action's own toggle.
  view.actionFor("sqr7")->trigger();
  EXPECT_TRUE(view.actionFor("sqr7")->isChecked());
  w.sqr5.userClick();
  view.actionFor("sqr5")->trigger();  // no handler here moves the mark
  EXPECT_FALSE(view.actionFor("sqr7")->isChecked());
  EXPECT_TRUE(view.actionFor("sqr5")->isChecked());
}

TEST_F(QtBinding, TheSurfacePaintsBoxesWithBothCornersAndTextFromItsTopLeft) {
  w.surface().fillBox(8, 8, 20, 20, 15);
  w.surface().fillBox(30, 5, 30, 40, 0);  // a vertical line one pixel wide
  w.surface().fillBox(40, 40, 40, 40, 7);  // one pixel
  w.surface().fillBox(60, 260, 60, 260, 15);  // an empty stretch of the main page
  w.surface().printText("88");
  const QImage image = view.surfaceWidget()->grab().toImage();
  const QColor background = view.surfaceWidget()->palette().color(QPalette::Window);
  auto at = [&](int x, int y) { return image.pixelColor(x, y); };

  const std::tuple<int, int, QColor> pixels[] = {{8, 8, Qt::white},   {20, 20, Qt::white},  {21, 21, background},
                                                 {30, 20, Qt::black},  {29, 20, background}, {31, 20, background},
                                                 {40, 40, QColor(192, 192, 192)}, {41, 40, background}};
  for (const auto& [x, y, colour] : pixels) EXPECT_EQ(at(x, y), colour) << x << "," << y;

  // The text's ink lies right of and below the text position, within one
  // line of the 13 px font, and two digits fit in 16 pixels.
  QRect ink;
  for (int y = 250; y < 290; ++y) {
    for (int x = 50; x < 100; ++x) ink |= at(x, y).lightness() < 100 ? QRect(x, y, 1, 1) : QRect();
  }
  EXPECT_TRUE(QRect(60, 260, 17, 16).contains(ink)) << ink.x() << "," << ink.y() << " " << ink.width();
  EXPECT_LT(ink.top(), 260 + 5);  // digits start near the top, not a baseline's height lower

  w.surface().clear();
  EXPECT_EQ(view.surfaceWidget()->grab().toImage().pixelColor(8, 8), background);

  // Mouse presses arrive in the same pixels, with the button and shift codes.
  std::vector<std::tuple<int, int, float, float>> presses;
  w.onMouseDown = [&](int button, int shift, float x, float y) { presses.emplace_back(button, shift, x, y); };
  QTest::mousePress(view.surfaceWidget(), Qt::LeftButton, {}, QPoint(700, 500));
  QTest::mousePress(view.surfaceWidget(), Qt::RightButton, Qt::ShiftModifier, QPoint(12, 30));
  EXPECT_EQ(presses, (std::vector<std::tuple<int, int, float, float>>{{1, 0, 700.0f, 500.0f}, {2, 1, 12.0f, 30.0f}}));
}

// What a screen reader finds: every input named after its caption, every
// illustration described, and during practice the puzzle as a table of its
// cells, a blank of which opens the entry box when pressed.
TEST_F(QtBinding, AssistiveTechnologyReadsTheInputsAndPlaysThePuzzle) {
  const auto name = [&](const char* control) {
    return QAccessible::queryAccessibleInterface(view.widgetFor(control))->text(QAccessible::Name).toStdString();
  };
  for (const auto& [box, label] : {std::pair{"Text7", "Label20"}, {"Text2", "Label2"}, {"Text1", "Label1"},
                                   {"text4", "Label9"}, {"Text5", "Label10"}, {"Text3", "Label8"}}) {
    EXPECT_EQ(name(box), w.findControl(label)->caption()) << box;
  }
  for (const char* picture : {"Picture1", "Picture2", "Picture3", "Picture4", "Picture5", "Picture6"}) {
    EXPECT_GT(name(picture).size(), 20u) << picture;
  }

  bool played = false;
  QAccessibleInterface* surface = nullptr;
  QTimer poll;
  QObject::connect(&poll, &QTimer::timeout, [&] {
    if (played || w.runState() != RunState::Puzzle || view.windowTitle().startsWith("Creating")) return;
    played = true;
    surface = QAccessible::queryAccessibleInterface(view.surfaceWidget());
    QAccessibleTableInterface* table = nullptr;
    for (int i = 0; i < surface->childCount() && table == nullptr; ++i) table = surface->child(i)->tableInterface();
    ASSERT_NE(table, nullptr);
    ASSERT_EQ(table->rowCount(), 5);
    ASSERT_EQ(table->columnCount(), 5);
    QAccessibleInterface* blank = nullptr;
    for (int row = 0; row < 5; ++row) {
      for (int column = 0; column < 5; ++column) {
        QAccessibleInterface* cell = table->cellAt(row, column);
        const double number = w.square().squareNumbers[column + 1][row + 1];
        const QString expected = isBlank(number) ? "blank" : QString::number(number);
        EXPECT_EQ(cell->text(QAccessible::Name), expected) << row << "," << column;
        if (isBlank(number) && blank == nullptr) blank = cell;
      }
    }
    ASSERT_NE(blank, nullptr);
    blank->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    const int row = blank->tableCellInterface()->rowIndex() + 1, column = blank->tableCellInterface()->columnIndex() + 1;
    auto* box = widget<QLineEdit>("Text6");
    EXPECT_TRUE(box->isVisible() && box->hasFocus());
    EXPECT_EQ(box->geometry(), QRect(8 + (column - 1) * w.cellWidth(), 8 + (row - 1) * page::kRowHeight,
                                     w.cellWidth() + 1, page::kRowHeight));
    EXPECT_EQ(QAccessible::queryAccessibleInterface(box)->text(QAccessible::Name),
              QString("row %1, column %2").arg(row).arg(column));
    EXPECT_EQ(blank->text(QAccessible::Description), "entry box");
    // Typing and Enter reach the model through the box itself.
    QTest::keyClicks(box, "99");
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_TRUE(box->text().isEmpty());
    QTest::keyClicks(box, QString::number(w.square().squareRanks[column][row]));
    KeyLog windowKeys;
    const auto windowKeyDown = w.onKeyDown;
    w.onKeyDown = [&](int key, int shift) {
      windowKeys.emplace_back(key, shift);
      windowKeyDown(key, shift);
    };
    QTest::keyClick(box, Qt::Key_Enter);  // the keypad's Enter too
    EXPECT_FALSE(box->isVisible());
    EXPECT_TRUE(view.windowTitle().endsWith("Numbers correct: 1 / Numbers incorrect: 1"));
    EXPECT_EQ(blank->text(QAccessible::Name), QString::number(w.square().squareRanks[column][row]));
    // The Enter that closed the box went no further; the keys are the puzzle's
    // now, and the cell under the cursor is the focused one.
    EXPECT_TRUE(windowKeys.empty());
    EXPECT_TRUE(view.surfaceWidget()->hasFocus());
    const int right = column < 5 ? 1 : -1;
    QTest::keyClick(view.surfaceWidget(), right > 0 ? Qt::Key_Right : Qt::Key_Left);
    const QAccessibleInterface* focused = surface->focusChild();
    ASSERT_NE(focused, nullptr);
    EXPECT_EQ(focused, table->cellAt(row - 1, column - 1 + right));
    EXPECT_TRUE(focused->state().focused);
    view.actionFor("qplaying")->trigger();
  });
  poll.start(5);
  QTimer::singleShot(20000, [&] { view.actionFor("qplaying")->trigger(); });  // never hang
  QTest::mouseClick(widget<QPushButton>("Command4"), Qt::LeftButton);
  EXPECT_TRUE(played);
  EXPECT_EQ(view.windowTitle(), "Quillion");
}

// A table a reader holds stays safe once its grid has gone: it answers as
// invalid, gives out only invalid cells (never null), and is deleted from the
// event loop, not under the reader's feet.
TEST_F(QtBinding, ATableWhoseGridHasGoneAnswersAsInvalidUntilDeleted) {
  QAccessibleInterface* surface = QAccessible::queryAccessibleInterface(view.surfaceWidget());
  const int controls = surface->childCount();
  w.surface().addGrid({8, 8, 24, 18, 7, 3, 1, 1});
  w.surface().nameCell(8 + 24 * 6 + 2, 8 + 18 * 2 + 3, "26");
  ASSERT_EQ(surface->childCount(), controls + 1);
  QAccessibleInterface* table = surface->child(controls);
  QAccessibleInterface* cell = table->tableInterface()->cellAt(2, 6);
  EXPECT_EQ(cell->text(QAccessible::Name), "26");
  EXPECT_EQ(table->tableInterface()->cellAt(2, 5)->text(QAccessible::Name), "blank");
  EXPECT_FALSE(table->tableInterface()->cellAt(3, 0)->isValid());
  const QAccessible::Id tableId = QAccessible::uniqueId(table), cellId = QAccessible::uniqueId(cell);

  w.surface().clear();
  w.surface().addGrid({8, 8, 24, 18, 5, 5, 1, 1});
  EXPECT_FALSE(table->isValid() || cell->isValid());
  EXPECT_EQ(table->childCount(), 0);
  ASSERT_NE(table->tableInterface()->cellAt(2, 6), nullptr);
  EXPECT_FALSE(table->tableInterface()->cellAt(2, 6)->isValid());
  ASSERT_EQ(surface->childCount(), controls + 1);
  EXPECT_EQ(surface->child(controls)->tableInterface()->rowCount(), 5);
  EXPECT_EQ(QAccessible::accessibleInterface(tableId), table);
  QApplication::processEvents();
  EXPECT_EQ(QAccessible::accessibleInterface(tableId), nullptr);
  EXPECT_EQ(QAccessible::accessibleInterface(cellId), nullptr);
}

// Closing the window while a long loop yields ends the process at once and
// cleanly; the probe is the real window in a process of its own.
// The page handed over before the close is still delivered: without a
// printer, as a complete file.
TEST(QtProcess, ClosingTheWindowDuringAYieldingLoopEndsTheProgram) {
  QTemporaryDir home;
  QProcess probe;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert("HOME", home.path());
  environment.insert("CUPS_SERVER", home.filePath("no-cups.sock"));
  probe.setProcessEnvironment(environment);
  probe.setProcessChannelMode(QProcess::MergedChannels);
  probe.start(QUILLION_CLOSE_PROBE, {});
  ASSERT_TRUE(probe.waitForStarted(5000));
  const qint64 pid = probe.processId();
  const bool finished = probe.waitForFinished(20000);
  if (!finished) probe.kill();
  const std::string output = QString::fromUtf8(probe.readAll()).toStdString();
  ASSERT_TRUE(finished) << "the program kept running after its window closed";
  EXPECT_EQ(probe.exitStatus() == QProcess::NormalExit ? probe.exitCode() : -1, 0) << output;
  EXPECT_NE(output.find("closing inside the loop"), std::string::npos) << output;
  EXPECT_NE(::kill(static_cast<pid_t>(pid), 0), 0);  // nothing left behind
  QDirIterator saved(home.filePath("Quillion/pages"), QDir::Files);
  ASSERT_TRUE(saved.hasNext()) << output;
  QFile file(saved.next());
  ASSERT_TRUE(file.open(QIODevice::ReadOnly) && !saved.hasNext());
  EXPECT_TRUE(file.readAll().trimmed().endsWith("%%EOF"));
}

}  // namespace
}  // namespace quill::qt
