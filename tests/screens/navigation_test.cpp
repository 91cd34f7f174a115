// Start-up and the moves between the three pages, checked against one table.
#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <string>

#include "support/window_fixture.h"

namespace quill::testing {
namespace {

// Every control and menu item on each page: V shown / - hidden, then
// E enabled / - disabled. Columns: main page, information page, properties page.
constexpr const char* kPageTable = R"(
Label20 VE -E -E
Text7 VE -E -E
Check1 VE -E -E
Label2 VE -E -E
Text2 VE -- --
Label1 VE -- --
Text1 VE -- --
Check12 VE -E -E
Label9 VE -E -E
text4 VE -- --
Command1 VE -- --
Label4 VE -E -E
Label10 VE -E -E
Text5 VE -- --
Label3 VE -E -E
Label5 VE -E -E
Label18 VE -E -E
Label6 VE -E -E
Label8 VE -- --
Text3 VE -- --
Label7 VE -E -E
Command2 VE -- --
Label11 VE -E -E
Command4 VE -- --
Label19 -E -E -E
Text6 -- -- --
Label12 -E VE -E
Label13 -E VE -E
Label14 -E VE -E
Label15 -E VE -E
Command3 -- VE --
Label16 -E VE -E
Picture1 -E VE -E
Label17 -E VE -E
Picture2 -E VE -E
Label22 -E -E VE
Check2 -E -E VE
Check3 -E -E VE
Command6 -E -E VE
Label21 -E -E VE
Check4 -E -E VE
Check5 -E -E VE
Check6 -E -E VE
Check7 -E -E VE
Check8 -E -E VE
Check9 -E -E VE
Check10 -E -E VE
Check11 -E -E VE
Picture3 -E -E VE
Picture6 -E -E VE
Picture5 -E -E VE
Picture4 -E -E VE
options2 VE -E -E
quit VE VE VE
options1 -E -E -E
aprinting VE VE VE
newsquare VE VE VE
startover VE VE VE
qplaying VE VE VE
printoptions VE VE VE
panswers VE VE VE
ppuzzles VE VE VE
pboth VE VE VE
answers VE VE VE
highlighted VE VE VE
nhighlighted VE VE VE
puzzlemode VE VE VE
difficulty VE VE VE
easy VE VE VE
challenging VE VE VE
chooseproperties VE V- V-
size VE VE VE
sqr5 VE VE VE
sqr7 VE VE VE
sqr11 VE VE VE
sqr13 VE VE VE
sqr17 VE VE VE
sqr19 VE VE VE
sqr23 VE VE VE
sqr29 VE VE VE
larger VE VE VE
)";

enum Column { MainPage = 1, InformationPage = 2, PropertiesPage = 3 };

std::string code(bool visible, bool enabled) {
  return std::string(visible ? "V" : "-") + (enabled ? "E" : "-");
}

// "name code" lines for one column of the table.
std::string expected(Column column) {
  std::istringstream table(kPageTable);
  std::string out, name, main, info, properties;
  while (table >> name >> main >> info >> properties) {
    const std::string& chosen = column == MainPage ? main : column == InformationPage ? info : properties;
    out += name + " " + chosen + "\n";
  }
  return out;
}

// The same lines read off the window, in the table's order.
std::string actual(const MainWindow& w) {
  std::istringstream table(kPageTable);
  std::string out, name, rest;
  while (table >> name && std::getline(table, rest)) {
    if (const Control* c = w.findControl(name)) {
      out += name + " " + code(c->visible(), c->enabled()) + "\n";
    } else if (const MenuItem* m = w.findMenuItem(name)) {
      out += name + " " + code(m->visible(), m->enabled()) + "\n";
    } else {
      out += name + " missing\n";
    }
  }
  return out;
}

class Pages : public WindowTest {};

TEST_F(Pages, TheTableNamesEveryControlAndMenuItemOnce) {
  std::istringstream table(kPageTable);
  std::map<std::string, int> seen;
  std::string name, rest;
  while (table >> name && std::getline(table, rest)) ++seen[name];
  EXPECT_EQ(seen.size(), w.controls().size() + w.menuItems().size());
  for (const auto& [n, count] : seen) EXPECT_EQ(count, 1) << n;
  EXPECT_EQ(w.menuItems().size(), 29u);
}

TEST_F(Pages, StartUpLeavesTheDesignedMainPageAndTheStartValues) {
  EXPECT_EQ(actual(w), expected(MainPage));
  EXPECT_EQ(w.caption(), "Quillion");
  EXPECT_EQ(platform.maximiseCount, 1);
  EXPECT_EQ(platform.seedCount, 1);
  EXPECT_EQ(platform.lastSeed, 1.0);  // the fake's time of day is its seed

  EXPECT_EQ(w.state().squareSize, 5);
  EXPECT_EQ(w.state().startNumber, 1);
  EXPECT_EQ(w.state().distance, 1);
  EXPECT_EQ(w.state().runTotal, 20);
  EXPECT_EQ(w.state().runDone, 0);
  EXPECT_EQ(w.state().printChoice, PrintChoice::PuzzlesAndAnswers);
  EXPECT_EQ(w.state().highlightAnswers, 1);
  EXPECT_EQ(w.state().puzzle.difficultyLevel, Difficulty::Challenging);
  EXPECT_EQ(w.state().puzzle.blankTarget, 100);
  EXPECT_EQ(w.state().puzzle.mainLinesChoice, 1);
  EXPECT_EQ(w.state().puzzle.allDiagonalsChoice, 0);
  EXPECT_EQ(w.state().puzzle.crossDiagonalChoice + w.state().puzzle.crossLineChoice + w.state().puzzle.scatteredCrossDiagonalChoice +
                w.state().puzzle.scatteredCrossLineChoice,
            0);
  EXPECT_EQ(w.state().pagePhase, 0);
  EXPECT_EQ(w.state().practiceActive, 0);
  EXPECT_EQ(w.cellWidth(), 0);  // nothing is computed until something changes

  // The design-time texts agree with those values.
  EXPECT_EQ(w.Text2.text(), "5");
  EXPECT_EQ(w.Text1.text(), "25");
  EXPECT_TRUE(w.Check12.checked());
  EXPECT_EQ(w.Label11.caption(), "Magic Total = 65");
  EXPECT_EQ(w.Label18.caption(), "Last number equals: 25");
  EXPECT_TRUE(w.sqr5.checked());
  EXPECT_TRUE(w.pboth.checked());
  EXPECT_TRUE(w.highlighted.checked());
  EXPECT_TRUE(w.challenging.checked());
  EXPECT_TRUE(w.Check2.checked());
}

TEST_F(Pages, EveryPageMoveLeavesExactlyTheTablesVisibility) {
  w.Command2.userClick();
  EXPECT_EQ(actual(w), expected(InformationPage));
  w.Command3.userClick();
  EXPECT_EQ(actual(w), expected(MainPage));
  w.chooseproperties.userClick();
  EXPECT_EQ(actual(w), expected(PropertiesPage));
  w.Command6.userClick();
  EXPECT_EQ(actual(w), expected(MainPage));
  w.Command2.userClick();
  w.Command3.userClick();
  w.chooseproperties.userClick();
  w.Command6.userClick();
  EXPECT_EQ(actual(w), expected(MainPage));
}

TEST_F(Pages, NoOtherPageOpensFromAnOtherPage) {
  w.Command2.userClick();
  w.chooseproperties.userClick();  // disabled here
  EXPECT_EQ(actual(w), expected(InformationPage));
  w.Command3.userClick();
  w.chooseproperties.userClick();
  w.Command2.userClick();  // hidden here
  w.Command3.userClick();  // hidden here
  EXPECT_EQ(actual(w), expected(PropertiesPage));
}

TEST_F(Pages, ADisabledCreateButtonStaysDisabledThroughEitherPage) {
  w.Command1.setEnabled(false);  // as after a size above 101
  w.Command2.userClick();
  EXPECT_EQ(w.state().createWasDisabled, 1);
  w.Command3.userClick();
  EXPECT_TRUE(w.Command1.visible());
  EXPECT_FALSE(w.Command1.enabled());

  w.chooseproperties.userClick();
  w.Command6.userClick();
  EXPECT_FALSE(w.Command1.enabled());

  w.Command1.setEnabled(true);
  w.Command2.userClick();
  EXPECT_EQ(w.state().createWasDisabled, 0);
  w.Command3.userClick();
  EXPECT_TRUE(w.Command1.enabled());
}

TEST_F(Pages, ReturningKeepsTheInputsAndRecomputesOnlyThePageFit) {
  retype(w.Text2, "41");  // larger than the page
  w.text4.setText("abc");
  w.Command2.userClick();
  w.Command3.userClick();
  EXPECT_EQ(w.text4.text(), "abc");
  EXPECT_EQ(w.state().startNumber, 1);
  EXPECT_EQ(w.cellWidth(), 32);  // 1681 has four characters
  EXPECT_TRUE(w.Label19.visible());
  EXPECT_FALSE(w.Command4.enabled());

  w.sqr5.userClick();
  w.chooseproperties.userClick();
  w.Command6.userClick();
  EXPECT_FALSE(w.Label19.visible());
  EXPECT_TRUE(w.Command4.enabled());
}

TEST_F(Pages, QuitAndClosingEndTheProgram) {
  EXPECT_THROW(w.quit.userClick(), ProgramEnded);
  EXPECT_THROW(w.userClose(), ProgramEnded);

  w.Command2.userClick();
  EXPECT_NO_THROW(w.quit.userClick());  // "Options" is absent here
  EXPECT_THROW(w.userClose(), ProgramEnded);
  EXPECT_THROW(w.Form_Terminate(), ProgramEnded);
}

}  // namespace
}  // namespace quill::testing
