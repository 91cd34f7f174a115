// MainWindow: the one window. It is the form (its controls and menus), the
// window state (its variables) and the procedures and event handlers that
// work on both, talking to the outside only through the Platform.
//
// The procedures are defined in one file per concern:
//   screens/navigation.cpp        start-up, pages, quitting
//   screens/property_options.cpp  the properties page's check boxes
//   screens/size_totals.cpp       totals, cell metrics, page fit
//   screens/size_selection.cpp    the size menu and the size entry
//   screens/numeric_inputs.cpp    print count, "Fill Page", start and distance
//   screens/counting_explanation.cpp  how many squares of the size there are
#pragma once

#include "construction/window_state.h"
#include "platform/platform.h"
#include "screens/window_design.h"

namespace quill {

class MainWindow : public MainForm, public WindowState {
 public:
  explicit MainWindow(Platform& platform);

  Platform& platform() { return platform_; }

  // Start-up and quitting.
  void Form_Activate();
  void quit_Click();
  void Form_Unload();
  void Form_Terminate();

  // Pages.
  void Command2_Click();
  void Command3_Click();
  void chooseproperties_Click();
  void Command6_Click();

  // Property options.
  void Check2_Click();
  void Check3_Click();
  void Check4_Click();
  void Check5_Click();
  void Check6_Click();
  void Check7_Click();
  void Check8_Click();
  void Check9_Click();
  void Check10_Click();
  void Check11_Click();

  // Size.
  void sqr5_Click();
  void sqr7_Click();
  void sqr11_Click();
  void sqr13_Click();
  void sqr17_Click();
  void sqr19_Click();
  void sqr23_Click();
  void sqr29_Click();
  void Text2_KeyUp(int keyCode, int shift);

  // Numeric inputs.
  void Text1_Change();
  void Check12_Click();
  void text4_KeyUp(int keyCode, int shift);
  void Text5_KeyUp(int keyCode, int shift);

  // Shared refreshes after a change of size, starting number or distance.
  void refreshTotals();
  void refreshCellMetrics();
  void refreshPageFit();
  // How many squares of the current size and cell width one page holds.
  int pageCapacity();
  // Brings the print count and "Fill Page" in line with the page capacity.
  void syncPrintCount();
  void showCountingExplanation();

 private:
  enum class Page { Information, Properties };
  void openPage(Page page);
  void showMainPage(Page leaving);
  // Shows a page's own controls, or hides them.
  void showInformationPage(bool shown);
  void showPropertiesPage(bool shown);
  void applySize(int newSize);
  // Checks the size menu item of this size, or "Larger Size" above 29.
  void checkSizeItems(int newSize);
  bool sizeEntryIsPrime();
  // What every change of size, starting number or distance ends with.
  void refreshAfterSettingChange();
  void pairClicked(Control& clicked, Control& partner, int& choice, int choiceWhenChecked);
  void wireEvents();

  Platform& platform_;
};

}  // namespace quill
