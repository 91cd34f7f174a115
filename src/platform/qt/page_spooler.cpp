// The spooler's queue and its worker.
#include "platform/qt/page_spooler.h"

namespace quill::qt {

PageSpooler::PageSpooler(Destinations where) : where_(std::move(where)), worker_([this] { work(); }) {}

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
  const std::lock_guard lock(mutex_);
  open_.push_back(std::move(page));
}

void PageSpooler::endDocument() {
  {
    const std::lock_guard lock(mutex_);
    if (open_.empty()) return;
    ready_.push_back(std::move(open_));
    open_.clear();
  }
  wake_.notify_all();
}

bool PageSpooler::finish(std::chrono::milliseconds limit) {
  endDocument();
  std::unique_lock lock(mutex_);
  return idle_.wait_for(lock, limit, [this] { return ready_.empty() && !delivering_; });
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
  for (;;) {
    // Documents still waiting are delivered before the worker stops.
    wake_.wait(lock, [this] { return stopping_ || !ready_.empty(); });
    if (ready_.empty()) return;
    std::vector<PageSnapshot> document = std::move(ready_.front());
    ready_.pop_front();
    delivering_ = true;
    lock.unlock();
    const bool lost = deliverDocument(document, where_).place.isEmpty();
    lock.lock();
    delivering_ = false;
    ++delivered_;
    lost_ += lost ? 1 : 0;
    idle_.notify_all();
  }
}

}  // namespace quill::qt
