// The window in the page: every change of the form told to the page's
// JavaScript, and the user's actions, queued there, fed back into the form.
#pragma once

#include <string>
#include <vector>

#include "platform/form.h"

namespace quill::web {

class WebView : public FormObserver {
 public:
  explicit WebView(Form& form);
  ~WebView() override;
  WebView(const WebView&) = delete;
  WebView& operator=(const WebView&) = delete;

  // Builds the window in the page and makes it active.
  void show();
  // Hands the page the drawing done since the last time.
  void paint();
  // Tells the page what the cells of the grids drawn show, for assistive
  // technology: when the program waits for the user, not at every yield of
  // a run, which may draw thousands of grids nobody reads.
  void describeGrids();
  // Takes the page's queued events into the form, in order; whether any came.
  bool handleEvents();
  // The page area, the drawing and every visible control, as one printed
  // page; the bytes handed to the page for it.
  std::size_t printPage();

  void controlChanged(const Control& control) override;
  void focusRequested(const Control& control) override;
  void menuChanged(const MenuItem& item) override;
  void captionChanged(const std::string& caption) override;
  void surfaceChanged(const SurfaceChange& change) override;
  void surfaceFocusRequested() override;

 private:
  void handle(int kind, const double* values, const std::string& text);
  int indexOf(const Control& control) const;
  int indexOf(const MenuItem& item) const;

  Form& form_;
  std::size_t painted_ = 0;  // operations the page has
  std::vector<bool> gridsToTell_;  // grids whose cells changed since the page last heard
  bool cleared_ = true;
  std::vector<float> numbers_;
  std::string texts_;
  std::string eventText_;
};

}  // namespace quill::web
