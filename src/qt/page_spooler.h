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
#include <utility>
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

  // Whether the window may print on, waiting at most `limit` for it: the
  // worker is never far behind, so that what was printed is delivered soon
  // after the program ends. Into an output file, fewer than kPagesAhead
  // pages wait to be painted; otherwise at most kPagesBehind pages wait in
  // ended documents besides the one under way.
  bool waitForRoom(std::chrono::milliseconds limit);

  // Ends the open document and waits until every document handed over is
  // delivered, at most `limit`; then nothing more is started. The pages not
  // delivered: 0 when all were.
  int finish(std::chrono::milliseconds limit);

  // Documents delivered so far, and of those the ones that went nowhere.
  int deliveredCount() const;
  int lostCount() const;
  // Into an output file: whether a write has failed (its line is on
  // standard error; the pages after it are dropped).
  bool outputFailed() const;
  // Where the pages delivered so far went, with their counts, for the line
  // that says what became of the others: "40 pages went to Office, ...".
  QString whereDelivered() const;

 private:
  void work();
  bool hasRoom() const;
  void delivered(const QString& place, std::size_t pages, bool lost);

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
  static constexpr std::size_t kPagesBehind = 16;
  // Into one output file, each page is painted as it comes (none: the end
  // of the document).
  const bool streaming_;
  static constexpr std::size_t kPagesAhead = 64;
  std::deque<std::optional<PageSnapshot>> streamed_;
  std::size_t pagesUnderWay_ = 0;  // of the document being delivered, or the page being painted
  bool outputFailed_ = false;
  bool stopping_ = false;
  bool abandoned_ = false;
  int delivered_ = 0;
  int lost_ = 0;
  std::vector<std::pair<QString, std::size_t>> deliveredTo_;  // place, pages
  std::thread worker_;  // last: it starts once everything above is there
};

}  // namespace quill::qt
