/// @file
/// A watch over the heap: counts what operator new is asked for, and makes it fail at will.

#ifndef KOVRA_TESTS_SUPPORT_ALLOCATIONS_HPP
#define KOVRA_TESTS_SUPPORT_ALLOCATIONS_HPP

#include <cstddef>

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

}  // namespace Kovra::test

#endif
