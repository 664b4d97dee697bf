#include "pipeline.hpp"

#include <memory>
#include <system_error>
#include <utility>

namespace Kovra::tool {

Pipeline::Pipeline(unsigned workers, std::function<void()> whenIdle)
    : most_(2 * std::size_t{workers} + 3), whenIdle_(std::move(whenIdle)) {
  threads_.reserve(std::size_t{workers} + 1);
  threads_.emplace_back([this] { write(); });
  try {
    for (unsigned i = 0; i < workers; ++i) threads_.emplace_back([this] { work(); });
  } catch (std::system_error const&) {
    if (threads_.size() > 1) return;  // fewer of them do the same
    end();
    throw;
  }
}

Pipeline::~Pipeline() {
  end();
}

void Pipeline::end() {
  {
    std::lock_guard const lock(mutex_);
    isEnding_ = true;
    waiting_.clear();
  }
  hasJob_.notify_all();
  hasDone_.notify_all();
  for (std::thread& thread : threads_) thread.join();
}

void Pipeline::add(Job job) {
  std::unique_lock lock(mutex_);
  hasRoom_.wait(lock, [&] { return slots_.size() < most_ || failure_ != nullptr; });
  rethrow();
  slots_.push_back(std::make_unique<Slot>());
  slots_.back()->job = std::move(job);
  waiting_.push_back(slots_.back().get());
  hasJob_.notify_one();
}

void Pipeline::finish() {
  std::unique_lock lock(mutex_);
  hasRoom_.wait(lock, [&] { return (slots_.empty() && !isFinishing_) || failure_ != nullptr; });
  rethrow();
}

void Pipeline::rethrow() {
  if (failure_ != nullptr) std::rethrow_exception(failure_);
}

namespace {

/// What is thrown, too, is thrown when its turn has come.
Pipeline::Finish done(Pipeline::Job const& job) try { return job(); } catch (...) {
  return [failure = std::current_exception()] { std::rethrow_exception(failure); };
}

}  // namespace

void Pipeline::work() {
  std::unique_lock lock(mutex_);
  for (;;) {
    hasJob_.wait(lock, [&] { return isEnding_ || !waiting_.empty(); });
    if (waiting_.empty()) return;
    Slot& slot = *waiting_.front();
    waiting_.pop_front();
    Job const job = std::move(slot.job);
    lock.unlock();
    Finish finish = done(job);
    lock.lock();
    slot.finish = std::move(finish);
    slot.isDone = true;
    hasDone_.notify_one();
  }
}

void Pipeline::write() try {
  std::unique_lock lock(mutex_);
  for (;;) {
    if (!hasNext()) {
      lock.unlock();
      whenIdle_();
      lock.lock();
      hasDone_.wait(lock, [&] { return isEnding_ || hasNext(); });
    }
    if (isEnding_) return;
    std::unique_ptr<Slot> const slot = std::move(slots_.front());
    slots_.pop_front();
    isFinishing_ = true;
    hasRoom_.notify_all();
    lock.unlock();
    slot->finish();
    lock.lock();
    isFinishing_ = false;
    hasRoom_.notify_all();
  }
} catch (...) {
  std::lock_guard const lock(mutex_);
  failure_ = std::current_exception();
  hasRoom_.notify_all();
}

}  // namespace Kovra::tool
