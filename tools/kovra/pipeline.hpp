/// @file
/// Several at a time, and in order all the same.

#ifndef KOVRA_TOOL_PIPELINE_HPP
#define KOVRA_TOOL_PIPELINE_HPP

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace Kovra::tool {

/// Jobs are done by several workers, and finished one after the other in the order in which they
/// came. Not more of them wait than the workers need to be busy, however slow one of them is.
///
/// A job whose turn has come is finished by its own worker, piece by piece: what it made is still
/// at hand there, and need not be kept.
class Pipeline {
 public:
  /// What is to be done in order.
  using Finish = std::function<void()>;

  class Turn;
  /// What may be done at once with others. What it throws is thrown when its turn has come.
  using Job = std::function<void(Turn&)>;

  /// A job's place in the order.
  class Turn {
   public:
    explicit Turn(Job job) : job_(std::move(job)) {}

    /// Does it now where all jobs before are finished, else when they are.
    void finish(Finish finish);

   private:
    friend class Pipeline;

    void run();
    void catchUp();

    Job job_;
    std::vector<Finish> pending_;
    std::exception_ptr failure_;
    std::atomic<bool> hasCome_ = false;
    bool isDone_ = false;
  };

  /// `whenIdle` is called in order, too, where the next job is not done yet. Where the system has
  /// no threads for so many workers there are fewer; throws a std::system_error where it has none.
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
  void work();
  void finishDone(std::unique_lock<std::mutex>& lock);
  void passTurn();
  bool isNextDone() const { return !turns_.empty() && turns_.front()->isDone_; }
  void rethrow();

  std::size_t most_;
  std::function<void()> whenIdle_;
  std::mutex mutex_;
  std::condition_variable hasJob_;
  std::condition_variable hasRoom_;
  std::condition_variable hasFinished_;
  std::deque<std::unique_ptr<Turn>> turns_;  ///< in order, finished ones gone
  std::deque<Turn*> waiting_;                ///< for a worker
  bool isFinishing_ = false;                 ///< has the turn of one of them come?
  bool isEnding_ = false;
  std::exception_ptr failure_;
  std::vector<std::thread> threads_;
};

}  // namespace Kovra::tool

#endif
