#include "pipeline.hpp"

#include <memory>
#include <utility>

namespace Kovra::tool {

// What one job does.

void Pipeline::Turn::finish(Finish finish) {
  if (!hasCome_) return pending_.push_back(std::move(finish));
  catchUp();
  finish();
}

/// What is thrown, too, is thrown when its turn has come.
void Pipeline::Turn::run() try { std::exchange(job_, nullptr)(*this); } catch (...) {
  failure_ = std::current_exception();
}

void Pipeline::Turn::catchUp() {
  std::vector<Finish> const finishes = std::exchange(pending_, {});
  for (Finish const& finish : finishes) finish();
  if (failure_ != nullptr) std::rethrow_exception(failure_);
}

// All of them.

Pipeline::Pipeline(unsigned workers, std::function<void()> whenIdle)
    : most_(2 * std::size_t{workers} + 3), whenIdle_(std::move(whenIdle)) {
  threads_.reserve(workers);
  try {
    for (unsigned i = 0; i < workers; ++i) threads_.emplace_back([this] { work(); });
  } catch (...) {
    if (threads_.empty()) throw;  // fewer of them do the same
  }
}

Pipeline::~Pipeline() {
  {
    std::lock_guard const lock(mutex_);
    isEnding_ = true;
    waiting_.clear();
    if (!turns_.empty()) turns_.front()->hasCome_ = false;
  }
  hasJob_.notify_all();
  for (std::thread& thread : threads_) thread.join();
}

void Pipeline::add(Job job) {
  std::unique_lock lock(mutex_);
  hasRoom_.wait(lock, [&] { return turns_.size() < most_ || failure_ != nullptr; });
  rethrow();
  turns_.push_back(std::make_unique<Turn>(std::move(job)));
  waiting_.push_back(turns_.back().get());
  if (!isFinishing_) passTurn();
  hasJob_.notify_one();
}

void Pipeline::finish() {
  std::unique_lock lock(mutex_);
  hasFinished_.wait(lock, [&] { return !isFinishing_ || failure_ != nullptr; });
  rethrow();
}

void Pipeline::rethrow() {
  if (failure_ != nullptr) std::rethrow_exception(failure_);
}

void Pipeline::passTurn() {
  isFinishing_ = !turns_.empty();
  if (isFinishing_) {
    turns_.front()->hasCome_ = true;
  } else {
    hasFinished_.notify_all();
  }
}

void Pipeline::work() {
  std::unique_lock lock(mutex_);
  for (;;) {
    hasJob_.wait(lock, [&] { return isEnding_ || !waiting_.empty(); });
    if (waiting_.empty()) return;
    Turn& turn = *waiting_.front();
    waiting_.pop_front();
    lock.unlock();
    turn.run();
    lock.lock();
    turn.isDone_ = true;
    if (turn.hasCome_) finishDone(lock);
  }
}

/// The first job, and those behind it that wait for nothing else.
void Pipeline::finishDone(std::unique_lock<std::mutex>& lock) try {
  while (!isEnding_ && isNextDone()) {
    Turn& turn = *turns_.front();
    lock.unlock();
    turn.catchUp();
    lock.lock();
    turns_.pop_front();
    // Whoever adds jobs is woken for several of them.
    if (turns_.size() == most_ / 2) hasRoom_.notify_all();
    if (isNextDone()) continue;
    lock.unlock();
    whenIdle_();
    lock.lock();
  }
  if (!isEnding_) passTurn();
} catch (...) {
  if (!lock.owns_lock()) lock.lock();
  failure_ = std::current_exception();
  hasRoom_.notify_all();
  hasFinished_.notify_all();
}

}  // namespace Kovra::tool
