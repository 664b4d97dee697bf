/// @file
/// Several at a time, and in order all the same.

#ifndef KOVRA_TOOL_PIPELINE_HPP
#define KOVRA_TOOL_PIPELINE_HPP

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace Kovra::tool {

/// Jobs are done by several workers, and finished by one thread in the order in which they came.
/// Not more of them wait than the workers need to be busy, however slow one of them is.
class Pipeline {
 public:
  /// What is to be done in order.
  using Finish = std::function<void()>;
  /// What may be done at once with others. What it throws is thrown when its turn has come.
  using Job = std::function<Finish()>;

  /// `whenIdle` is called by the finishing thread before it waits. Where the system has no threads
  /// for so many workers there are fewer; throws a std::system_error where it has none for one.
  Pipeline(unsigned workers, std::function<void()> whenIdle);
  /// Waits for the jobs at hand; what has not begun is forgotten.
  ~Pipeline();
  Pipeline(Pipeline const&) = delete;
  Pipeline& operator=(Pipeline const&) = delete;

  /// Waits while there are enough of them. Throws what a Finish threw.
  void add(Job job);
  /// Waits until all are finished. Throws what a Finish threw.
  void finish();

 private:
  struct Slot {
    Job job;
    Finish finish;
    bool isDone = false;
  };

  void work();
  void write();
  void end();
  bool hasNext() const { return !slots_.empty() && slots_.front()->isDone; }
  void rethrow();

  std::size_t most_;
  std::function<void()> whenIdle_;
  std::mutex mutex_;
  std::condition_variable hasJob_;
  std::condition_variable hasDone_;
  std::condition_variable hasRoom_;
  std::deque<std::unique_ptr<Slot>> slots_;  ///< in order, finished ones gone
  std::deque<Slot*> waiting_;                ///< for a worker
  bool isFinishing_ = false;
  bool isEnding_ = false;
  std::exception_ptr failure_;
  std::vector<std::thread> threads_;
};

}  // namespace Kovra::tool

#endif
