// Rows: several ways to do the same work, measured side by side in one run.

#ifndef KOVRA_BENCH_SUPPORT_HPP
#define KOVRA_BENCH_SUPPORT_HPP

#include <benchmark/benchmark.h>

#include <functional>
#include <string>
#include <vector>

namespace kovra_bench {

/// A file of the samples folder, whole; ends the program when it cannot be read.
std::string sample(std::string const& path);

/// ASCII text as wide characters.
std::wstring widened(std::string const& narrow);

/// Ends the program with the complaint unless `holds`: what is compared has to do the same work.
void require(bool holds, std::string const& complaint);

using Work = std::function<void()>;

/// A way to do a row's work, other than the library's.
struct Side {
  std::string name;
  Work work;
};
using Sides = std::vector<Side>;

/// Alternates batches of `ours` and of all `others`, so that noise of the machine meets them alike.
/// Reports for each side, the library's under the name `kovra`:
///   <side>_us      processor time of one call, the median of all batches
///   <side>_ratio   ours / this side, the median over all batches; not for `kovra`
///   <side>_calls   heap blocks that one call asks for
///   <side>_peak    heap bytes that it holds at its peak beyond those before it
/// With --calls it measures nothing and only makes the calls.
void compare(benchmark::State& state, Work const& ours, Sides const& others);

/// What a host without Kovra would begin with: parse the narrow text with TinyXML's defaults, and
/// read nothing from the tree.
Side bareParse(std::string const& narrow);

/// A tree, built and printed by hand with TinyXML.
Side byHand(Work work);

/// Reports `text_bytes` and, for each side, <side>_resident: the growth of resident memory at its
/// peak, in bytes, when the call is the only one that its process makes.
void reportMemory(benchmark::State& state, std::size_t textBytes, Work const& ours,
                  Sides const& others);

namespace detail {
int add(benchmark::internal::Benchmark* row);
}

/// Registers a row by its name.
template <class Run>
int registered(std::string const& name, Run run) {
  return detail::add(benchmark::RegisterBenchmark(name.c_str(), run));
}

}  // namespace kovra_bench

#endif
