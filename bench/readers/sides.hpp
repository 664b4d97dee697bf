// The readers by hand as sides of a row.

#ifndef KOVRA_BENCH_SIDES_HPP
#define KOVRA_BENCH_SIDES_HPP

#include "readers/readers.hpp"
#include "support/bench_support.hpp"

namespace kovra_bench {

/// A bare parse, and each reader called by `read(reader)`, for which `same(reader)` has to say that
/// it leaves the record that the library leaves.
template <class Read, class Same>
Sides againstOtherReaders(std::string const& narrow, Read const& read, Same const& same) {
  Sides sides{bareParse(narrow)};
  for (Reader const* const reader : readersByHand) {
    require(same(*reader), std::string("another record: ") + reader->library);
    sides.push_back({reader->library, [read, reader] { benchmark::DoNotOptimize(read(*reader)); }});
  }
  return sides;
}

}  // namespace kovra_bench

#endif
