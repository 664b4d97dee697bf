#include "support/bench_support.hpp"

#include <tinyxml.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <new>
#include <vector>

namespace {

thread_local unsigned long allocated = 0;

}  // namespace

void* operator new(std::size_t size) {
  ++allocated;
  if (void* const memory = std::malloc(size > 0 ? size : 1)) return memory;
  throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}

namespace kovra_bench {

namespace {

using Clock = std::chrono::steady_clock;

double seconds(Clock::duration time) {
  return std::chrono::duration<double>(time).count();
}

double timed(Work const& work, int times) {
  Clock::time_point const start = Clock::now();
  for (int i = 0; i < times; ++i) work();
  return seconds(Clock::now() - start);
}

/// So many calls that a batch takes about a millisecond: long against the clock, short against the
/// scheduler.
int batchOf(Work const& work) {
  work();
  double const one = std::max(timed(work, 3) / 3, 1e-8);
  return std::max(1, static_cast<int>(1e-3 / one));
}

unsigned long allocationsOf(Work const& work) {
  unsigned long const before = allocations();
  work();
  return allocations() - before;
}

double median(std::vector<double> values) {
  auto const middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

}  // namespace

std::string sample(std::string const& path) {
  std::ifstream file(KOVRA_SAMPLES_DIR "/" + path, std::ios::binary);
  if (!file) {
    std::fprintf(stderr, "no sample %s\n", path.c_str());
    std::exit(1);
  }
  return {std::istreambuf_iterator<char>(file), {}};
}

std::wstring widened(std::string const& narrow) {
  return {narrow.begin(), narrow.end()};
}

unsigned long allocations() {
  return allocated;
}

void compare(benchmark::State& state, Work const& ours, Work const& theirs) {
  int const batch = batchOf(theirs);
  std::vector<double> ratios;
  std::vector<double> ourTimes;
  std::vector<double> theirTimes;
  for (auto _ : state) {
    double const theirTime = timed(theirs, batch);
    double const ourTime = timed(ours, batch);
    ratios.push_back(ourTime / theirTime);
    ourTimes.push_back(ourTime / batch);
    theirTimes.push_back(theirTime / batch);
    state.SetIterationTime(ourTime + theirTime);
  }
  state.counters["ratio"] = median(ratios);
  state.counters["ours_us"] = 1e6 * median(ourTimes);
  state.counters["theirs_us"] = 1e6 * median(theirTimes);
  state.counters["ours_allocs"] = static_cast<double>(allocationsOf(ours));
  state.counters["theirs_allocs"] = static_cast<double>(allocationsOf(theirs));
}

Work bareParse(std::string const& narrow) {
  return [narrow] {
    TiXmlDocument document;
    document.Parse(narrow.c_str());
    benchmark::DoNotOptimize(document.FirstChild());
  };
}

}  // namespace kovra_bench
