// The print spooler: Print window hands over a snapshot of the page and
// returns at once; a worker thread delivers the pages, in order, one
// document per run (the pages between two ends of a document). Into a
// chosen output file the pages are painted as they come, so that a long
// batch takes no more memory than a short one.
#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include "qt/page_delivery.h"

namespace quill::qt {

class PageSpooler {
 public:
  explicit PageSpooler(Destinations where = defaultDestinations());
  ~PageSpooler();
  PageSpooler(const PageSpooler&) = delete;
  PageSpooler& operator=(const PageSpooler&) = delete;

  // The next page of the open document.
  void submit(PageSnapshot page);
  // The pages handed over since the last end form one document, which goes
  // to the worker for delivery. Nothing happens when there are none.
  void endDocument();
  // Where the documents ended from now on go (a choice made in the window;
  // the output file of a batch stays as it was).
  void setDestinations(Destinations where);
  Destinations destinations() const;

  // Ends the open document and waits until every document handed over is
  // delivered, at most `limit`; true when all were.
  bool finish(std::chrono::milliseconds limit);

  // Documents delivered so far, and of those the ones that went nowhere.
  int deliveredCount() const;
  int lostCount() const;

 private:
  void work();

  Destinations where_;
  mutable std::mutex mutex_;
  std::condition_variable wake_;
  std::condition_variable idle_;
  std::vector<PageSnapshot> open_;
  struct Document {
    std::vector<PageSnapshot> pages;
    Destinations where;
  };
  std::deque<Document> ready_;
  // Into one output file, each page is painted as it comes (none: the end
  // of the document); the window waits when the painter is that far behind.
  const bool streaming_;
  static constexpr std::size_t kPagesAhead = 64;
  std::deque<std::optional<PageSnapshot>> streamed_;
  bool delivering_ = false;
  bool stopping_ = false;
  int delivered_ = 0;
  int lost_ = 0;
  std::thread worker_;  // last: it starts once everything above is there
};

}  // namespace quill::qt
