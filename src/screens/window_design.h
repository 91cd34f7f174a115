// The window as designed: every control and menu item with its design-time
// caption, place, size, colours, limits, marks and visibility.
#pragma once

#include "platform/form.h"

namespace quill {

constexpr const char* kProgramTitle = "Quillion";

// Design client area, in twips.
constexpr int kDesignClientWidth = 11880;
constexpr int kDesignClientHeight = 6045;

// What the window shows: one of its three pages, or the main page's place
// taken by a run or a practice.
enum class Screen { Main, Information, Properties, Run, Practice };

struct MainForm : Form {
  MainForm();

  // Shows the controls and menus of the screen and hides the others', as the
  // screen table in window_design.cpp says. Controls with a rule of their own
  // (Command1's and Command4's enabling, Label19) are only hidden here.
  void showScreen(Screen screen);

  // The menu bar, in design order.
  MenuItem options2, quit;
  MenuItem options1, aprinting, newsquare, startover, hint, qplaying;
  MenuItem printoptions, panswers, ppuzzles, pboth, printer, answers, highlighted, nhighlighted;
  MenuItem puzzlemode, difficulty, easy, challenging, chooseproperties;
  MenuItem size, sqr5, sqr7, sqr11, sqr13, sqr17, sqr19, sqr23, sqr29, larger;

  // The main page, in reading order, and the practice entry box.
  Control Label20, Text7, Check1, Label2, Text2, Label1, Text1, Check12, Label9, text4;
  Control Command1, Label4, Label10, Text5, Label3, Label5, Label18, Label6, Label8, Text3;
  Control Label7, Command2, Label11, Command4, Label19;
  Control Text6;

  // The information page.
  Control Label12, Label13, Label14, Label15, Command3, Label16, Picture1, Label17, Picture2;

  // The properties page.
  Control Label22, Check2, Check3, Command6, Label21;
  Control Check4, Check5, Check6, Check7, Check8, Check9, Check10, Check11;
  Control Picture3, Picture6, Picture5, Picture4;
};

}  // namespace quill
