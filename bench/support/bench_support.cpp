#include "support/bench_support.hpp"

#include <tinyxml.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <iterator>
#include <string_view>

#include "support/heap.hpp"

namespace kovra_bench {

namespace {

/// What the command line asks for beyond what the benchmark library knows.
struct Request {
  long calls = -1;   ///< so many calls of each side, instead of measuring; negative: measure
  std::string side;  ///< only this side; empty: all
};
Request request;

std::vector<benchmark::internal::Benchmark*>& rows() {
  static std::vector<benchmark::internal::Benchmark*> all;
  return all;
}

/// Processor time of this process.
double now() {
  std::timespec time{};
  ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

double timed(Work const& work, long times) {
  double const start = now();
  for (long i = 0; i < times; ++i) work();
  return now() - start;
}

/// So many calls that a batch takes about a millisecond: long against the clock, short against the
/// scheduler.
long batchOf(Work const& work) {
  work();
  double const one = std::max(timed(work, 3) / 3, 1e-8);
  return std::max(1L, static_cast<long>(1e-3 / one));
}

double median(std::vector<double> values) {
  auto const middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

/// A side with what was measured of it.
struct Measured {
  Side const& side;
  long batch = batchOf(side.work);
  std::vector<double> times{};
  std::vector<double> ratios{};
};

void report(benchmark::State& state, Measured const& measured) {
  auto const set = [&](char const* what, double value) {
    state.counters[measured.side.name + what] = value;
  };
  HeapUse const heap = heapUseOf(measured.side.work);
  set("_us", 1e6 * median(measured.times));
  if (!measured.ratios.empty()) set("_ratio", median(measured.ratios));
  set("_calls", static_cast<double>(heap.calls));
  set("_peak", static_cast<double>(heap.peak));
}

/// A batch of each side; the result is the time of all.
double round(std::vector<Measured>& all) {
  double whole = 0;
  for (Measured& one : all) {
    double const time = timed(one.side.work, one.batch);
    whole += time;
    one.times.push_back(time / static_cast<double>(one.batch));
    if (&one != &all.front()) one.ratios.push_back(all.front().times.back() / one.times.back());
  }
  return whole;
}

/// A median of fewer rounds would say nothing, however long one takes.
constexpr std::size_t fewestRounds = 7;

void measure(benchmark::State& state, Sides const& sides) {
  std::vector<Measured> all;
  for (Side const& side : sides) all.push_back({side});
  for (auto _ : state) state.SetIterationTime(round(all));
  while (all.front().times.size() < fewestRounds) round(all);
  for (Measured const& one : all) report(state, one);
}

void callOnly(benchmark::State& state, Sides const& sides) {
  bool found = false;
  for (auto _ : state) {
    for (Side const& side : sides) {
      if (!request.side.empty() && request.side != side.name) continue;
      found = true;
      for (long i = 0; i < request.calls; ++i) side.work();
    }
    state.SetIterationTime(1);
  }
  require(found, "no side " + request.side);
}

Sides withOurs(Work const& ours, Sides const& others) {
  Sides all{{"kovra", ours}};
  all.insert(all.end(), others.begin(), others.end());
  return all;
}

/// Takes --calls=N and --side=NAME from the arguments.
void takeRequest(int& argc, char** argv) {
  auto const valueOf = [](std::string_view argument, std::string_view name) {
    return argument.substr(0, name.size()) == name ? argument.data() + name.size() : nullptr;
  };
  int kept = 1;
  for (int i = 1; i < argc; ++i) {
    if (char const* const calls = valueOf(argv[i], "--calls=")) {
      request.calls = std::atol(calls);
    } else if (char const* const side = valueOf(argv[i], "--side=")) {
      request.side = side;
    } else {
      argv[kept++] = argv[i];
    }
  }
  argc = kept;
}

}  // namespace

std::string sample(std::string const& path) {
  std::ifstream file(KOVRA_SAMPLES_DIR "/" + path, std::ios::binary);
  require(file.is_open(), "no sample " + path);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::wstring widened(std::string const& narrow) {
  return {narrow.begin(), narrow.end()};
}

void require(bool holds, std::string const& complaint) {
  if (holds) return;
  std::fprintf(stderr, "%s\n", complaint.c_str());
  std::exit(1);
}

void compare(benchmark::State& state, Work const& ours, Sides const& others) {
  Sides const all = withOurs(ours, others);
  if (request.calls >= 0) {
    callOnly(state, all);
  } else {
    measure(state, all);
  }
}

void reportMemory(benchmark::State& state, std::size_t textBytes, Work const& ours,
                  Sides const& others) {
  if (request.calls >= 0) return;
  state.counters["text_bytes"] = static_cast<double>(textBytes);
  for (Side const& side : withOurs(ours, others)) {
    state.counters[side.name + "_resident"] = static_cast<double>(residentGrowthOf(side.work));
  }
}

Side bareParse(std::string const& narrow) {
  return {"bare_parse", [narrow] {
            TiXmlDocument document;
            document.Parse(narrow.c_str());
            benchmark::DoNotOptimize(document.FirstChild());
          }};
}

Side byHand(Work work) {
  return {"by_hand", std::move(work)};
}

int detail::add(benchmark::internal::Benchmark* row) {
  rows().push_back(row->UseManualTime());
  return 0;
}

}  // namespace kovra_bench

int main(int argc, char** argv) {
  using namespace kovra_bench;
  takeRequest(argc, argv);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  for (benchmark::internal::Benchmark* const row : rows()) {
    if (request.calls >= 0) {
      row->Iterations(1);
    } else {
      row->MinTime(1.0);
    }
  }
  bool const found = benchmark::RunSpecifiedBenchmarks() > 0;
  benchmark::Shutdown();
  return found ? 0 : 1;
}
