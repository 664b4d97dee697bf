// The wide entries of the status replies against a bare TinyXML parse of the same narrow text, and
// the general status against readers by hand, too.

#include <cstring>

#include "kvxstatusparser.h"
#include "readers/sides.hpp"
#include "support/bench_support.hpp"

namespace {

using namespace kovra_bench;

/// An entry of the status parser on a reply. `prepare` makes the record ready before every call.
template <class Record, class Prepare>
void entryAgainstBareParse(benchmark::State& state, std::string const& narrow,
                           bool (Kovra::KVXStatusParser::*entry)(wchar_t const&, int, Record&),
                           Prepare prepare) {
  std::wstring const text = widened(narrow);
  Kovra::KVXStatusParser parser;
  Record record{};
  compare(state,
          [&] {
            prepare(record);
            benchmark::DoNotOptimize(
                (parser.*entry)(text.front(), static_cast<int>(text.size()), record));
          },
          {bareParse(narrow)});
}

/// The same on a sample, with a record that needs no preparing.
template <class Record>
void entryAgainstBareParse(benchmark::State& state, char const* path,
                           bool (Kovra::KVXStatusParser::*entry)(wchar_t const&, int, Record&)) {
  entryAgainstBareParse(state, sample(path), entry, [](Record&) {});
}

int const generalStatus = registered("general_status", [](benchmark::State& state) {
  std::string const narrow = sample("status/printing.xml");
  std::wstring const text = widened(narrow);
  Kovra::KVXStatusParser parser;
  Kovra::KVGeneralStatus ours{};
  Kovra::KVGeneralStatus theirs{};
  auto const readOurs = [&] {
    benchmark::DoNotOptimize(parser.ParseStatus(text.front(), static_cast<int>(text.size()), ours));
  };
  auto const read = [&](Reader const& reader) { return reader.generalStatus(text, theirs); };
  auto const same = [&](Reader const& reader) {
    std::memset(&ours, 0x5A, sizeof ours);
    std::memset(&theirs, 0x5A, sizeof theirs);
    readOurs();
    return read(reader) && std::memcmp(&ours, &theirs, sizeof ours) == 0;
  };
  compare(state, readOurs, againstOtherReaders(narrow, read, same));
});

int const jobStatus = registered("job_status", [](benchmark::State& state) {
  entryAgainstBareParse(state, "status/job_status_full.xml",
                        &Kovra::KVXStatusParser::ParseJobStatus);
});

/// A list of jobs that lie in wait, as a printer sends it.
std::string jobList(int jobs) {
  std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<get_job_list>\n";
  for (int i = 0; i < jobs; ++i) {
    text += "  <job>\n    <action_id>" + std::to_string(4711 + i) +
            "</action_id>\n    <uuid>0f8fad5b-d9cb-469f-a165-70867728950e</uuid>\n"
            "    <print_state>in_progress</print_state>\n  </job>\n";
  }
  return text + "</get_job_list>\n";
}

void readJobList(benchmark::State& state, int jobs) {
  entryAgainstBareParse(state, jobList(jobs), &Kovra::KVXStatusParser::ParseJobList,
                        [](Kovra::KVJobList& list) { list.count = 128; });
}

// The record takes 128 jobs; the longest list shows what those cost that find no room in it.
int const shortJobList =
    registered("job_list_10", [](benchmark::State& state) { readJobList(state, 10); });
int const longJobList =
    registered("job_list_100", [](benchmark::State& state) { readJobList(state, 100); });
int const endlessJobList =
    registered("job_list_10000", [](benchmark::State& state) { readJobList(state, 10000); });

}  // namespace
