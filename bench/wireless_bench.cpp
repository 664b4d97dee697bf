// Lists of access points against a bare TinyXML parse of the same narrow text, and how their time
// grows: `entry_us`, the time for one access point, stays the same from list to list.

#include <vector>

#include "kvxstatusparser.h"
#include "support/bench_support.hpp"

namespace {

using namespace kovra_bench;

/// What a printer hears in a building full of access points.
std::string accessPoints(int count) {
  std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<AccessPoints>\n";
  for (int i = 0; i < count; ++i) {
    text += "  <AccessPoint>\n    <SSID>floor-" + std::to_string(i % 40) +
            "</SSID>\n    <BSSID>00:1a:2b:3c:4d:5e</BSSID>\n    <Selected>false</Selected>\n"
            "    <Channel>" +
            std::to_string(1 + i % 13) +
            "</Channel>\n    <Privacy>1</Privacy>\n    <SignalStrength>-61</SignalStrength>\n"
            "    <Infrastructure>true</Infrastructure>\n    <Security>wpa2</Security>\n"
            "    <Encryption>ccmp</Encryption>\n    <MaxDataRate>54</MaxDataRate>\n"
            "  </AccessPoint>\n";
  }
  return text + "</AccessPoints>\n";
}

void readAccessPoints(benchmark::State& state, int count) {
  std::string const narrow = accessPoints(count);
  std::wstring const text = widened(narrow);
  Kovra::KVXStatusParser parser;
  std::vector<Kovra::_tagAccessPoint> room(static_cast<std::size_t>(count));
  Kovra::_tagAccessPoints record{room.data(), 0};
  compare(state,
          [&] {
            benchmark::DoNotOptimize(
                parser.ParseAccessPoints(text.front(), static_cast<int>(text.size()), record));
          },
          {bareParse(narrow)});
  state.counters["entry_us"] = state.counters["kovra_us"] / count;
}

int registeredList(int count) {
  return registered("access_points_" + std::to_string(count),
                    [count](benchmark::State& state) { readAccessPoints(state, count); });
}

int const lists[] = {registeredList(10), registeredList(100), registeredList(200),
                     registeredList(1000), registeredList(10000)};

}  // namespace
