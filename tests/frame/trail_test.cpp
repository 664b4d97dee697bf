// The paths of what was read, at any size.

#include "frame/trail.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace Kovra::frame {
namespace {

/// Entries with a member each, as readings add them: the list again for each entry.
std::unique_ptr<Trail> trailOfEntries(std::size_t count) {
  auto trail = std::make_unique<Trail>();
  for (std::size_t i = 0; i < count; ++i) {
    std::uint32_t const list = trail->member(Trail::root, "items");
    trail->member(trail->entry(list, i), "depth");
  }
  return trail;
}

std::string pathOf(std::size_t index) {
  return "items[" + std::to_string(index) + "].depth";
}

TEST(Trail, IsEmptyAtFirst) {
  auto const trail = trailOfEntries(0);
  EXPECT_FALSE(trail->has(""));
  EXPECT_FALSE(trail->has("items"));
}

TEST(Trail, HasEachOfManyAndNoOther) {
  constexpr std::size_t count = 1000;
  auto const trail = trailOfEntries(count);
  EXPECT_TRUE(trail->has("items"));
  for (std::size_t i = 0; i < count; ++i) EXPECT_TRUE(trail->has(pathOf(i))) << i;
  for (char const* const path :
       {"", "items[1000]", "items[1000].depth", "items[4294967295]", "items[4294967295].depth",
        "items[-1]", "items[0].dept", "items[0]depth", "items.depth", "depth", "items[01].depth"}) {
    EXPECT_FALSE(trail->has(path)) << path;
  }
}

TEST(Trail, TellsMembersOfOneNameApart) {
  Trail trail;
  std::uint32_t const first = trail.member(Trail::root, "first");
  std::uint32_t const second = trail.member(Trail::root, "second");
  trail.member(first, "inner");
  EXPECT_NE(first, second);
  EXPECT_TRUE(trail.has("first.inner"));
  EXPECT_FALSE(trail.has("second.inner"));
}

TEST(Trail, LacksWhatWasForgottenUntilItComesAgain) {
  auto const trail = trailOfEntries(3);
  EXPECT_FALSE(trail->forget(Trail::root, "other", 1));
  EXPECT_FALSE(trail->forget(Trail::root, "items", 3));
  EXPECT_TRUE(trail->forget(Trail::root, "items", 1));
  EXPECT_FALSE(trail->forget(Trail::root, "items", 1)) << "it is forgotten";
  std::uint32_t const list = trail->member(Trail::root, "items");
  trail->member(trail->entry(list, 1), "tag");
  EXPECT_TRUE(trail->has("items[0].depth"));
  EXPECT_TRUE(trail->has("items[1]"));
  EXPECT_TRUE(trail->has("items[1].tag"));
  EXPECT_FALSE(trail->has("items[1].depth"));
  EXPECT_TRUE(trail->has("items[2].depth"));
  EXPECT_FALSE(trail->has("items[4294967295]")) << "how the forgotten one is marked";
}

TEST(Trail, ForgetsOneEntryManyTimesWithoutALookAtAllOfThem) {
  auto const timeFor = [](int count) {
    std::clock_t const begin = std::clock();
    Trail trail;
    for (int i = 0; i < count; ++i) {
      trail.forget(Trail::root, "items", 0);
      trail.entry(trail.member(Trail::root, "items"), 0);
    }
    EXPECT_TRUE(trail.has("items[0]"));
    return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
  };
  double const few = std::min({timeFor(1000), timeFor(1000), timeFor(1000)});
  EXPECT_LT(timeFor(50000), 500 * few);
}

/// Seconds for as many questions, by a trail that is sorted; the best of some tries.
double timeToAsk(Trail const& trail, std::vector<std::string> const& paths) {
  EXPECT_TRUE(trail.has(paths.front()));
  double best = 1e9;
  for (int i = 0; i < 5; ++i) {
    std::clock_t const begin = std::clock();
    for (std::string const& path : paths) EXPECT_TRUE(trail.has(path));
    best = std::min(best, static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC);
  }
  return best;
}

/// A look at all of them would take a hundred times as long.
TEST(Trail, AnswersAboutAsFastWhateverItsSize) {
  std::vector<std::string> paths;
  for (std::size_t i = 0; i < 1000; ++i) paths.push_back(pathOf(i));
  auto const few = trailOfEntries(1000);
  auto const many = trailOfEntries(100000);
  EXPECT_LT(timeToAsk(*many, paths), 10 * timeToAsk(*few, paths));
}

TEST(ThreadsOnATrail, AllGetTheSameAnswers) {
  auto const trail = trailOfEntries(200);
  std::vector<int> found(4);
  std::vector<std::thread> threads;
  for (int& count : found) {
    threads.emplace_back([&] {
      for (std::size_t i = 0; i < 300; ++i) count += trail->has(pathOf(i)) ? 1 : 0;
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(found, std::vector<int>(4, 200));
}

}  // namespace
}  // namespace Kovra::frame
