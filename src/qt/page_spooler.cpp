// The spooler's queue and its worker.
#include "qt/page_spooler.h"

#include <QFileInfo>
#include <algorithm>
#include <numeric>

namespace quill::qt {

PageSpooler::PageSpooler(Destinations where)
    : where_(std::move(where)), streaming_(!where_.outputFile.isEmpty()), worker_([this] { work(); }) {}

PageSpooler::~PageSpooler() {
  endDocument();
  {
    const std::lock_guard lock(mutex_);
    stopping_ = true;
  }
  wake_.notify_all();
  worker_.join();
}

void PageSpooler::submit(PageSnapshot page) {
  {
    const std::lock_guard lock(mutex_);
    if (!streaming_) {
      open_.push_back(std::move(page));
      return;
    }
    streamed_.emplace_back(std::move(page));
  }
  wake_.notify_all();
}

void PageSpooler::endDocument() {
  {
    const std::lock_guard lock(mutex_);
    if (streaming_) {
      streamed_.emplace_back(std::nullopt);
    } else {
      if (open_.empty()) return;
      ready_.push_back({std::move(open_), where_});
      open_.clear();
    }
  }
  wake_.notify_all();
}

bool PageSpooler::hasRoom() const {
  if (streaming_) return streamed_.size() < kPagesAhead || outputFailed_;
  const std::size_t waiting = std::accumulate(ready_.begin(), ready_.end(), std::size_t{0},
                                              [](std::size_t sum, const Document& d) { return sum + d.pages.size(); });
  return waiting <= kPagesBehind;
}

bool PageSpooler::waitForRoom(std::chrono::milliseconds limit) {
  std::unique_lock lock(mutex_);
  return idle_.wait_for(lock, limit, [this] { return hasRoom(); });
}

int PageSpooler::finish(std::chrono::milliseconds limit) {
  endDocument();
  std::unique_lock lock(mutex_);
  if (idle_.wait_for(lock, limit, [this] { return ready_.empty() && streamed_.empty() && pagesUnderWay_ == 0; })) {
    return 0;
  }
  abandoned_ = true;
  std::size_t left = pagesUnderWay_;
  for (const Document& document : ready_) left += document.pages.size();
  left += static_cast<std::size_t>(std::count_if(streamed_.begin(), streamed_.end(), [](const auto& p) { return p.has_value(); }));
  return static_cast<int>(left);
}

bool PageSpooler::outputFailed() const {
  const std::lock_guard lock(mutex_);
  return outputFailed_;
}

QString PageSpooler::whereDelivered() const {
  const std::lock_guard lock(mutex_);
  QStringList places;
  for (const auto& [place, pages] : deliveredTo_) places << QString("%1 went to %2").arg(pagesText(pages), place);
  return places.join(", ");
}

void PageSpooler::setDestinations(Destinations where) {
  const std::lock_guard lock(mutex_);
  where.outputFile = where_.outputFile;
  where_ = std::move(where);
}

Destinations PageSpooler::destinations() const {
  const std::lock_guard lock(mutex_);
  return where_;
}

int PageSpooler::deliveredCount() const {
  const std::lock_guard lock(mutex_);
  return delivered_;
}

int PageSpooler::lostCount() const {
  const std::lock_guard lock(mutex_);
  return lost_;
}

void PageSpooler::delivered(const QString& place, std::size_t pages, bool lost) {
  ++delivered_;
  lost_ += lost ? 1 : 0;
  if (lost || pages == 0) return;
  const auto at = std::find_if(deliveredTo_.begin(), deliveredTo_.end(), [&](const auto& p) { return p.first == place; });
  if (at == deliveredTo_.end()) {
    deliveredTo_.emplace_back(place, pages);
  } else {
    at->second += pages;
  }
}

void PageSpooler::work() {
  std::unique_lock lock(mutex_);
  std::optional<StreamedPdf> stream;
  std::size_t streamedPages = 0;
  for (;;) {
    // Documents still waiting are delivered before the worker stops, unless
    // the program has given up waiting for them.
    wake_.wait(lock, [this] { return stopping_ || abandoned_ || !ready_.empty() || !streamed_.empty(); });
    if (abandoned_) return;
    if (!streamed_.empty()) {
      std::optional<PageSnapshot> page = std::move(streamed_.front());
      const Destinations where = where_;
      pagesUnderWay_ = 1;
      lock.unlock();
      bool lost = false;
      bool failed = false;
      if (page) {
        if (!stream && !outputFailed_) stream.emplace(where.outputFile, where.paper.value_or(localePaper()));
        if (stream) stream->addPage(*page);
        ++streamedPages;
        if (stream && stream->failed()) {
          // Nothing more can reach the file: it goes (a hidden one with it) at once.
          reportLine(stream->failureLine());
          stream.reset();
          failed = true;
        }
      } else if (stream) {
        QString error;
        lost = !stream->finish(error);
        if (lost) reportLine(error);
        stream.reset();
      } else {
        lost = outputFailed_;
      }
      lock.lock();
      // Taken off the queue only now, so that finish() waits for the page's painting.
      streamed_.pop_front();
      pagesUnderWay_ = 0;
      outputFailed_ = outputFailed_ || failed;
      if (!page) {
        delivered(QFile::decodeName(where.outputFile), std::exchange(streamedPages, 0), lost);
      }
      idle_.notify_all();
      continue;
    }
    if (ready_.empty()) return;
    Document document = std::move(ready_.front());
    ready_.pop_front();
    pagesUnderWay_ = document.pages.size();
    lock.unlock();
    const Delivery delivery = deliverDocument(document.pages, document.where);
    lock.lock();
    pagesUnderWay_ = 0;
    delivered(delivery.toFile ? QFileInfo(delivery.place).path() : delivery.place, document.pages.size(),
              delivery.place.isEmpty());
    idle_.notify_all();
  }
}

}  // namespace quill::qt
