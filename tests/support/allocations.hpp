/// @file
/// A watch over the heap: counts what operator new is asked for, and makes it fail at will.

#ifndef KOVRA_TESTS_SUPPORT_ALLOCATIONS_HPP
#define KOVRA_TESTS_SUPPORT_ALLOCATIONS_HPP

#include <gtest/gtest.h>

#include <cstddef>
#include <string_view>

// The thread sanitizer brings a heap of its own, which cannot be replaced.
#if defined(__SANITIZE_THREAD__)
#define KOVRA_TESTS_WATCH_HEAP 0
#elif defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define KOVRA_TESTS_WATCH_HEAP 0
#endif
#endif
#ifndef KOVRA_TESTS_WATCH_HEAP
#define KOVRA_TESTS_WATCH_HEAP 1
#endif

namespace Kovra::test {

/// Watches the calling thread's operator new and delete from its construction to its end. One at a
/// time for each thread.
class Allocations {
 public:
  static constexpr std::size_t never = 0;

  /// The allocation number `failing`, counted from 1, throws std::bad_alloc.
  explicit Allocations(std::size_t failing = never);
  ~Allocations();
  Allocations(Allocations const&) = delete;
  Allocations& operator=(Allocations const&) = delete;

  /// How many allocations were asked for.
  std::size_t made() const;
  /// How many of the blocks still exist.
  std::size_t alive() const;
  /// Gives back the blocks that still exist, when nobody can do it any more, and counts them.
  std::size_t reclaim();
};

/// A test that needs the watch.
class HeapTest : public testing::Test {
 protected:
  void SetUp() override {
    if (!KOVRA_TESTS_WATCH_HEAP) GTEST_SKIP() << "this build has a heap that cannot be watched";
  }
};

/// Looks for a text in every block that the calling thread gives back to operator delete, from its
/// construction to its end. One at a time for each thread.
class Released {
 public:
  explicit Released(std::string_view searched);
  ~Released();
  Released(Released const&) = delete;
  Released& operator=(Released const&) = delete;

  /// How many of the blocks held it.
  std::size_t found() const;
};

}  // namespace Kovra::test

#endif
