// The platform operations the core draws, prints, yields and draws random
// numbers with. Drawing itself goes to the form's Surface; the caption to the Form.
#pragma once

namespace quill {

class Platform {
 public:
  virtual ~Platform() = default;

  // Shows the window maximised.
  virtual void maximiseWindow() = 0;
  // Prints the page area (the drawing and any visible controls) as one page.
  virtual void printWindow() = 0;
  // The pages printed since the last end form one document: one print job,
  // or one file.
  virtual void endDocument() = 0;
  // Whether the pages handed over are too far from delivered, after waiting
  // a moment for them: a run yields while it holds, so that the window
  // answers (and can be stopped) and little is left to deliver at the end.
  virtual bool printingBehind() { return false; }
  // Asks the user where the documents of the runs to come go: a printer with
  // its paper, copies and sides, or a PDF file. Cancelling changes nothing.
  virtual void choosePrinter() = 0;
  // Brings the window's image up to date and shows it as a normal window.
  virtual void refreshWindow() = 0;
  // Processes pending events (clicks, keys, menu commands, closing) and returns.
  virtual void yield() = 0;
  // Blocks until at least one event has arrived, processes the pending events
  // and returns; costs no CPU while nothing happens.
  virtual void waitForEvents() = 0;

  // A uniform real in [0, 1).
  virtual double random() = 0;
  virtual void seedRandom(double secondsSinceMidnight) = 0;
  // The time of day, for the seed.
  virtual double secondsSinceMidnight() = 0;

  // Ends the program at once, whatever is running. Never returns.
  [[noreturn]] virtual void endProgram() = 0;
};

}  // namespace quill
