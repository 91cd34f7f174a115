// The spooler's queue and its worker.
#include "qt/page_spooler.h"

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
  std::unique_lock lock(mutex_);
  if (!streaming_) {
    open_.push_back(std::move(page));
    return;
  }
  idle_.wait(lock, [this] { return streamed_.size() < kPagesAhead; });
  streamed_.emplace_back(std::move(page));
  lock.unlock();
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

bool PageSpooler::finish(std::chrono::milliseconds limit) {
  endDocument();
  std::unique_lock lock(mutex_);
  return idle_.wait_for(lock, limit, [this] { return ready_.empty() && streamed_.empty() && !delivering_; });
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

void PageSpooler::work() {
  std::unique_lock lock(mutex_);
  std::optional<StreamedPdf> stream;
  for (;;) {
    // Documents still waiting are delivered before the worker stops.
    wake_.wait(lock, [this] { return stopping_ || !ready_.empty() || !streamed_.empty(); });
    if (!streamed_.empty()) {
      std::optional<PageSnapshot> page = std::move(streamed_.front());
      const Destinations where = where_;
      delivering_ = true;
      lock.unlock();
      bool lost = false;
      if (page) {
        if (!stream) stream.emplace(where.outputFile, where.paper.value_or(localePaper()));
        stream->addPage(*page);
      } else if (stream) {
        QString error;
        lost = !stream->finish(error);
        if (lost) reportLine(error);
        stream.reset();
      }
      lock.lock();
      // Taken off the queue only now, so that finish() waits for the page's painting.
      streamed_.pop_front();
      delivering_ = false;
      if (!page) {
        ++delivered_;
        lost_ += lost ? 1 : 0;
      }
      idle_.notify_all();
      continue;
    }
    if (ready_.empty()) return;
    Document document = std::move(ready_.front());
    ready_.pop_front();
    delivering_ = true;
    lock.unlock();
    const bool lost = deliverDocument(document.pages, document.where).place.isEmpty();
    lock.lock();
    delivering_ = false;
    ++delivered_;
    lost_ += lost ? 1 : 0;
    idle_.notify_all();
  }
}

}  // namespace quill::qt
