// Several jobs at a time, finished in their order.

#include "pipeline.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <numeric>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "replies.hpp"
#include "support/folder.hpp"

namespace Kovra::tool {

namespace {

/// Holds threads up until it is opened.
class Gate {
 public:
  void open() {
    std::lock_guard const lock(mutex_);
    isOpen_ = true;
    changed_.notify_all();
  }
  void pass() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [&] { return isOpen_; });
  }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  bool isOpen_ = false;
};

void doNothing() {}
void doNoJob(Pipeline::Turn&) {}

std::vector<int> countedTo(int count) {
  std::vector<int> numbers(static_cast<std::size_t>(count));
  std::iota(numbers.begin(), numbers.end(), 0);
  return numbers;
}

TEST(ThreadsPipeline, FinishesInOrderWhateverTakesLong) {
  constexpr int count = 300;
  for (unsigned const workers : {1U, 2U, 7U}) {
    std::vector<int> finished;
    Pipeline pipeline(workers, doNothing);
    for (int i = 0; i < count; ++i) {
      pipeline.add([&finished, i](Pipeline::Turn& turn) {
        turn.finish([&finished, i] { finished.push_back(2 * i); });
        if (i % 7 == 0) std::this_thread::sleep_for(std::chrono::milliseconds(1));
        turn.finish([&finished, i] { finished.push_back(2 * i + 1); });
      });
    }
    pipeline.finish();
    EXPECT_EQ(finished, countedTo(2 * count)) << workers;
  }
}

TEST(ThreadsPipeline, TakesNoMoreJobsThanKeepItBusy) {
  constexpr unsigned workers = 2;
  constexpr int most = 2 * workers + 3;
  Gate gate;
  std::atomic<int> added = 0;
  std::atomic<int> finished = 0;
  Pipeline pipeline(workers, doNothing);
  std::thread producer([&] {
    for (int i = 0; i < 5 * most; ++i) {
      pipeline.add([&gate, &finished, i](Pipeline::Turn& turn) {
        if (i == 0) gate.pass();
        turn.finish([&finished] { ++finished; });
      });
      ++added;
    }
    pipeline.finish();
  });
  while (added < most) std::this_thread::yield();
  std::this_thread::sleep_for(std::chrono::milliseconds(50));
  EXPECT_EQ(added, most);
  EXPECT_EQ(finished, 0);
  gate.open();
  producer.join();
  EXPECT_EQ(finished, 5 * most);
}

TEST(ThreadsPipeline, FinishesAtOnceWhatHasItsTurn) {
  std::atomic<int> finished = 0;
  Gate second;
  Pipeline pipeline(2, doNothing);
  pipeline.add([&](Pipeline::Turn& turn) {
    for (int i = 1; i < 10; ++i) {
      turn.finish([&] { ++finished; });
      EXPECT_EQ(finished, i);
    }
    second.pass();
    EXPECT_EQ(finished, 9) << "the second one does not wait for its turn";
  });
  pipeline.add([&](Pipeline::Turn& turn) {
    turn.finish([&] { ++finished; });
    second.open();
    while (finished < 10) {
      std::this_thread::yield();
      turn.finish(doNothing);  // its turn comes in its midst
    }
  });
  pipeline.finish();
  EXPECT_EQ(finished, 10);
}

/// What adding jobs and finishing throws, and the numbers of those that were finished.
struct Outcome {
  std::string thrown;
  std::vector<int> finished;
};

Outcome outcomeOf(std::function<Pipeline::Finish(int, Pipeline::Finish const&)> const& work) {
  Outcome outcome;
  try {
    Pipeline pipeline(3, doNothing);
    for (int i = 0; i < 100; ++i) {
      pipeline.add([&outcome, &work, i](Pipeline::Turn& turn) {
        turn.finish(work(i, [&outcome, i] { outcome.finished.push_back(i); }));
      });
    }
    pipeline.finish();
  } catch (std::runtime_error const& error) {
    outcome.thrown = error.what();
  }
  return outcome;
}

TEST(ThreadsPipeline, ThrowsWhatAJobThrowsWhenItsTurnHasCome) {
  Outcome const outcome = outcomeOf([](int i, Pipeline::Finish const& finish) {
    if (i == 40) throw std::runtime_error("job");
    if (i == 39) std::this_thread::sleep_for(std::chrono::milliseconds(20));
    return finish;
  });
  EXPECT_EQ(outcome.thrown, "job");
  EXPECT_EQ(outcome.finished, countedTo(40));
}

TEST(ThreadsPipeline, ThrowsWhatAFinishThrowsAndStops) {
  Outcome const outcome = outcomeOf([](int i, Pipeline::Finish const& finish) -> Pipeline::Finish {
    if (i != 40) return finish;
    return [] { throw std::runtime_error("finish"); };
  });
  EXPECT_EQ(outcome.thrown, "finish");
  EXPECT_EQ(outcome.finished, countedTo(40));
}

TEST(ThreadsPipeline, GoesOnThrowingAfterAFailure) {
  Pipeline pipeline(1, doNothing);
  pipeline.add([](Pipeline::Turn&) { throw std::runtime_error("job"); });
  EXPECT_THROW(pipeline.finish(), std::runtime_error);
  EXPECT_THROW(pipeline.finish(), std::runtime_error);
  EXPECT_THROW(pipeline.add(doNoJob), std::runtime_error);
}

TEST(ThreadsPipeline, FinishesNothingOfAJobTwice) {
  std::vector<int> finished;
  Pipeline pipeline(1, doNothing);
  pipeline.add([&](Pipeline::Turn& turn) {
    turn.finish([&] { finished.push_back(0); });
    turn.finish([] { throw std::runtime_error("finish"); });
    turn.finish([&] { finished.push_back(1); });
  });
  EXPECT_THROW(pipeline.finish(), std::runtime_error);
  EXPECT_EQ(finished, countedTo(1));
}

TEST(ThreadsPipeline, ThrowsWhatItsIdleCallThrows) {
  Pipeline pipeline(1, [] { throw std::runtime_error("idle"); });
  auto const addAndFinish = [&] {
    pipeline.add(doNoJob);
    pipeline.finish();
  };
  EXPECT_THROW(addAndFinish(), std::runtime_error);
}

TEST(ThreadsPipeline, ForgetsWhatHasNotBegunWhenItEnds) {
  Gate begun;
  Gate gate;
  std::atomic<int> done = 0;
  std::atomic<int> finished = 0;
  std::thread opener;
  {
    Pipeline pipeline(1, doNothing);
    for (int i = 0; i < 5; ++i) {
      pipeline.add([&](Pipeline::Turn& turn) {
        begun.open();
        gate.pass();
        ++done;
        turn.finish([&] { ++finished; });
      });
    }
    begun.pass();
    opener = std::thread([&] {
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
      gate.open();
    });
  }
  opener.join();
  EXPECT_EQ(done, 1);
  EXPECT_EQ(finished, 0);
}

/// And nobody waits for jobs to be finished who does not wait for that.
TEST(ThreadsPipeline, CallsWhereTheNextJobIsNotDone) {
  std::atomic<int> calls = 0;
  Pipeline pipeline(2, [&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    ++calls;
  });
  for (int i = 1; i < 4; ++i) {
    pipeline.add(doNoJob);
    pipeline.finish();
    EXPECT_EQ(calls, i);
  }
  Gate gate;
  pipeline.add(doNoJob);
  pipeline.add([&](Pipeline::Turn&) { gate.pass(); });
  while (calls < 4) std::this_thread::yield();
  gate.open();
  pipeline.finish();
  EXPECT_EQ(calls, 5);
}

/// What every reply's second half gets to see.
std::vector<std::string> seen(ReplyOptions const& options) {
  std::vector<std::string> all;
  forEachReply(options, [&](ReplyInput const& input) -> Finish {
    std::string line = nameOf(input) + ' ' + std::string(input.text);
    if (input.failure != nullptr) line += input.failure->what();
    return [&all, line] { all.push_back(line); };
  });
  return all;
}

void expectTheSameOfSeveral(ReplyOptions options, std::size_t count) {
  std::vector<std::string> const alone = seen(options);
  EXPECT_EQ(alone.size(), count);
  for (unsigned const jobs : {2U, 5U, 0U}) {
    options.jobs = jobs;
    EXPECT_EQ(seen(options), alone) << jobs;
  }
}

TEST(ThreadsReplies, AreTheSameHoweverManyAreWorkedOnAtOnce) {
  test::TemporaryFolder const folder;
  ReplyOptions options;
  std::string stream;
  for (int i = 0; i < 1300; ++i) {
    std::string const text = "<a>" + std::string(static_cast<std::size_t>(i), 'x') + "</a>";
    stream += text;
    if (i % 10 != 0) continue;
    std::string const path = folder.file(std::to_string(i).c_str());
    if (i != 500) test::writeFile(path, text);
    options.files.push_back(path);
  }
  expectTheSameOfSeveral(options, 130);
  test::writeFile(folder.file("stream"), stream);
  options.files = {folder.file("stream"), folder.file("none"), folder.file("stream")};
  options.division = Division::reply;
  options.maxSize = 1200;
  // Of the first ones that are too large the end is seen. Behind a larger one there is none whose
  // beginning is known.
  expectTheSameOfSeveral(options, 2 * 1260 + 1);
}

}  // namespace

}  // namespace Kovra::tool
