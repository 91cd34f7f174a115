// The Qt binding under the offscreen platform: the user's actions reach the
// model, the model's changes reach the widgets, and nothing echoes back.
#include <gtest/gtest.h>

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
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

// A table a reader holds stays safe once its grid has gone: it answers as
// invalid, gives out only invalid cells (never null), and is deleted from the
// event loop, not under the reader's feet. Before that, its cell under the
// cursor is the drawing's focused child.
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
  // While the drawing has the keys, the cell under the cursor is its focused
  // child: what a reader is told when the focus comes back to the drawing.
  view.surfaceWidget()->setFocus();
  w.surface().placeCellCursor(8 + 24 * 6 + 2, 8 + 18 * 2 + 3);
  EXPECT_EQ(surface->focusChild(), cell);
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

// Closing the window while a long loop yields ends the program at once and
// cleanly, from inside the loop (in a process of its own, since it ends
// there), and the page handed over before the close is still delivered:
// without a printer, as a complete file.
TEST(QtProcess, ClosingTheWindowDuringAYieldingLoopEndsTheProgram) {
  GTEST_FLAG_SET(death_test_style, "fast");  // the child shares the folder made here
  QTemporaryDir home;
  const QByteArray ownHome = qgetenv("HOME");
  qputenv("HOME", QFile::encodeName(home.path()));
  qputenv("CUPS_SERVER", QFile::encodeName(home.filePath("no-cups.sock")));
  const auto closeInsideALoop = [] {
    QtPlatform platform;
    MainWindow window(platform);
    FormView view(window);
    platform.attach(&view);
    view.showAndActivate();
    window.surface().fillBox(8, 8, 128, 98, 15);
    window.surface().printText("4711");
    platform.printWindow();
    QTimer::singleShot(200, &view, [&] { view.close(); });
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < 10000) platform.yield();
    std::exit(3);  // the loop outlived its window
  };
  EXPECT_EXIT(closeInsideALoop(), ::testing::ExitedWithCode(0), "");
  qputenv("HOME", ownHome);
  qunsetenv("CUPS_SERVER");
  QDirIterator saved(home.filePath("Quillion/pages"), QDir::Files);
  ASSERT_TRUE(saved.hasNext());
  QFile file(saved.next());
  ASSERT_TRUE(file.open(QIODevice::ReadOnly) && !saved.hasNext());
  EXPECT_TRUE(file.readAll().trimmed().endsWith("%%EOF"));
}

}  // namespace
}  // namespace quill::qt
