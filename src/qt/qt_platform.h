// The platform operations carried out with Qt: window, printer, event loop.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "platform/platform.h"
#include "qt/page_spooler.h"
#include "platform/random_source.h"

namespace quill::qt {

class FormView;
class PrintChoice;

class QtPlatform : public Platform {
 public:
  // Pages go to `where`; with a seed, the window's draws are the same every
  // time instead of following the time of day.
  explicit QtPlatform(Destinations where = defaultDestinations(), std::optional<std::uint64_t> seed = {});
  ~QtPlatform() override;

  // Attaches the window that maximising, printing and refreshing act on.
  void attach(FormView* view) { view_ = view; }

  void maximiseWindow() override;
  void printWindow() override;
  void endDocument() override;
  bool printingBehind() override;
  void choosePrinter() override;
  void refreshWindow() override;
  void yield() override;
  void waitForEvents() override;
  double random() override;
  void seedRandom(double secondsSinceMidnight) override;
  double secondsSinceMidnight() override;
  [[noreturn]] void endProgram() override;

  // Waits until every page handed over is delivered, at most `limit`; the
  // documents that went nowhere. Past the limit the program ends (status 1)
  // with a line saying what was not kept: a delivery given up on may hang
  // for good.
  int finishPrinting(std::chrono::milliseconds limit);
  // A batch's output file can take no more pages (the line saying why is out).
  bool outputFailed() const { return spooler_.outputFailed(); }
  // Told of every page handed over for printing.
  std::function<void()> onPagePrinted;
  // All runs' pages as one document, ended by finishPrinting (a batch of
  // several pages of squares is one file).
  bool oneDocument = false;
  // A batch's window is never shown: maximising and refreshing it would only
  // paint what nobody sees, and with no one to answer, its yields look at
  // the event loop only now and then.
  bool showsWindow = true;

 private:
  // Says how many pages were not kept and where the others went, and leaves
  // no hidden file behind.
  void giveUpDelivering(int left);

  FormView* view_ = nullptr;
  std::optional<std::uint64_t> seed_;
  std::chrono::steady_clock::time_point lastEvents_;
  RandomSource random_;
  PageSpooler spooler_;
  std::unique_ptr<PrintChoice> printChoice_;  // the print dialog's settings, once it has been opened
};

}  // namespace quill::qt
