// Comparisons of two ways to do the same work, measured side by side in one run.

#ifndef KOVRA_BENCH_SUPPORT_HPP
#define KOVRA_BENCH_SUPPORT_HPP

#include <benchmark/benchmark.h>

#include <functional>
#include <string>

namespace kovra_bench {

/// A file of the samples folder, whole; ends the program when it cannot be read.
std::string sample(std::string const& path);

/// ASCII text as wide characters.
std::wstring widened(std::string const& narrow);

/// Heap allocations of this thread so far.
unsigned long allocations();

using Work = std::function<void()>;

/// Alternates batches of `ours` and `theirs`, so that noise of the machine meets both alike, and
/// reports `ratio` (the median of ours/theirs over all batches), both times for one call, and the
/// heap allocations of one call of each.
void compare(benchmark::State& state, Work const& ours, Work const& theirs);

/// What a host without Kovra would write: parse the narrow text with TinyXML's defaults.
Work bareParse(std::string const& narrow);

/// Registers a benchmark by its name.
template <class Run>
int registered(char const* name, Run run) {
  benchmark::RegisterBenchmark(name, run)->UseManualTime()->MinTime(1.0);
  return 0;
}

}  // namespace kovra_bench

#endif
