// What a piece of work asks of the heap. The program's own malloc and free stand before those of
// the C library, so that every library's calls are counted, whatever language it is written in.

#ifndef KOVRA_BENCH_HEAP_HPP
#define KOVRA_BENCH_HEAP_HPP

#include <cstddef>
#include <functional>

namespace kovra_bench {

struct HeapUse {
  unsigned long calls;  ///< blocks asked for, moved ones included
  std::size_t peak;     ///< the most bytes held at one time beyond what was held before
};

/// Does the work once and counts.
HeapUse heapUseOf(std::function<void()> const& work);

/// The growth of the resident memory at its peak, in bytes: the work is done once in a child of
/// this process, which starts with all that this process has.
std::size_t residentGrowthOf(std::function<void()> const& work);

}  // namespace kovra_bench

#endif
