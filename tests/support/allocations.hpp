/// @file
/// A watch over the heap: counts what operator new is asked for, and makes it fail at will. In a
/// program that is built with KOVRA_TESTS_REPLACE_MALLOC also what malloc and its like are asked
/// for, by libraries as well; with KOVRA_TESTS_WRAP_MALLOC, and linked with --wrap for each of
/// them, only by what is linked into the program, since the heap itself is a sanitizer's.

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

/// For how long allocations fail.
enum class Lasting {
  once,
  fromThereOn,
};

/// Watches the calling thread's operator new and delete from its construction to its end. One at a
/// time for each thread.
class Allocations {
 public:
  static constexpr std::size_t never = 0;

  /// The allocation number `failing`, counted from 1, throws std::bad_alloc.
  explicit Allocations(std::size_t failing = never, Lasting lasting = Lasting::once);
  ~Allocations();
  Allocations(Allocations const&) = delete;
  Allocations& operator=(Allocations const&) = delete;

  /// How many allocations were asked for.
  std::size_t made() const;
  /// How many of the blocks still exist.
  std::size_t alive() const;
  /// There is memory again; blocks are counted as before.
  void failNoMore();
  /// Gives back the blocks that still exist, when nobody can do it any more, and counts them.
  std::size_t reclaim();
};

/// What the calling thread does with the heap from its construction to its end is its own affair.
class Unwatched {
 public:
  Unwatched();
  ~Unwatched();
  Unwatched(Unwatched const&) = delete;
  Unwatched& operator=(Unwatched const&) = delete;

 private:
  bool before_;
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
