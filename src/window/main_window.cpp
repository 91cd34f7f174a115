// Connects the window's events to their handlers.
#include "window/main_window.h"

namespace quill {

MainWindow::MainWindow(Platform& platform) : platform_(platform) { wireEvents(); }

void MainWindow::wireEvents() {
  onActivate = [this] { Form_Activate(); };
  onUnload = [this] { Form_Unload(); };
  onTerminate = [this] { Form_Terminate(); };

  onKeyDown = [this](int key, int shift) { Form_KeyDown(key, shift); };
  onMouseDown = [this](int button, int shift, float x, float y) { Form_MouseDown(button, shift, x, y); };
  Command4.onClick = [this] { Command4_Click(); };
  Text6.onKeyDown = [this](int key, int shift) { Text6_KeyDown(key, shift); };
  Command1.onClick = [this] { Command1_Click(); };
  Command1.onKeyDown = [this](int key, int shift) { Command1_KeyDown(key, shift); };
  aprinting.onClick = [this] { aprinting_Click(); };
  panswers.onClick = [this] { panswers_Click(); };
  ppuzzles.onClick = [this] { ppuzzles_Click(); };
  pboth.onClick = [this] { pboth_Click(); };
  printer.onClick = [this] { printer_Click(); };
  highlighted.onClick = [this] { highlighted_Click(); };
  nhighlighted.onClick = [this] { nhighlighted_Click(); };
  easy.onClick = [this] { easy_Click(); };
  challenging.onClick = [this] { challenging_Click(); };
  newsquare.onClick = [this] { newsquare_Click(); };
  startover.onClick = [this] { startover_Click(); };
  hint.onClick = [this] { hint_Click(); };
  qplaying.onClick = [this] { qplaying_Click(); };
  quit.onClick = [this] { quit_Click(); };
  chooseproperties.onClick = [this] { chooseproperties_Click(); };
  Command2.onClick = [this] { Command2_Click(); };
  Command3.onClick = [this] { Command3_Click(); };
  Command6.onClick = [this] { Command6_Click(); };

  sqr5.onClick = [this] { sqr5_Click(); };
  sqr7.onClick = [this] { sqr7_Click(); };
  sqr11.onClick = [this] { sqr11_Click(); };
  sqr13.onClick = [this] { sqr13_Click(); };
  sqr17.onClick = [this] { sqr17_Click(); };
  sqr19.onClick = [this] { sqr19_Click(); };
  sqr23.onClick = [this] { sqr23_Click(); };
  sqr29.onClick = [this] { sqr29_Click(); };
  Text2.onKeyUp = [this](int key, int shift) { Text2_KeyUp(key, shift); };

  Text1.onChange = [this] { Text1_Change(); };
  Check12.onClick = [this] { Check12_Click(); };
  text4.onKeyUp = [this](int key, int shift) { text4_KeyUp(key, shift); };
  Text5.onKeyUp = [this](int key, int shift) { Text5_KeyUp(key, shift); };

  Check2.onClick = [this] { Check2_Click(); };
  Check3.onClick = [this] { Check3_Click(); };
  Check4.onClick = [this] { Check4_Click(); };
  Check5.onClick = [this] { Check5_Click(); };
  Check6.onClick = [this] { Check6_Click(); };
  Check7.onClick = [this] { Check7_Click(); };
  Check8.onClick = [this] { Check8_Click(); };
  Check9.onClick = [this] { Check9_Click(); };
  Check10.onClick = [this] { Check10_Click(); };
  Check11.onClick = [this] { Check11_Click(); };
}

}  // namespace quill
