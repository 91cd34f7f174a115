// The platform operations carried out with Qt: window, printer, event loop.
#pragma once

#include <functional>

#include "platform/platform.h"
#include "platform/qt/page_spooler.h"
#include "platform/random_source.h"

namespace quill::qt {

class FormView;

class QtPlatform : public Platform {
 public:
  // Attaches the window that maximising, printing and refreshing act on.
  void attach(FormView* view) { view_ = view; }

  void maximiseWindow() override;
  void printWindow() override;
  void endDocument() override;
  void refreshWindow() override;
  void yield() override;
  void waitForEvents() override;
  double random() override;
  void seedRandom(double secondsSinceMidnight) override;
  double secondsSinceMidnight() override;
  [[noreturn]] void endProgram() override;

 private:
  FormView* view_ = nullptr;
  RandomSource random_;
  PageSpooler spooler_;
};

}  // namespace quill::qt
