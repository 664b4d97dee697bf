// The face against the classic entries of the same replies, and its JSON against a JSON library's.

#include <nlohmann/json.hpp>

#include "kovra.hpp"
#include "kvxstatusparser.h"
#include "support/bench_support.hpp"

namespace {

using namespace kovra_bench;

/// A reply of many access points.
std::string accessPoints(int count) {
  std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<AccessPoints>\n";
  for (int i = 0; i < count; ++i) {
    text += "  <AccessPoint>\n    <SSID>Office " + std::to_string(i) +
            "</SSID>\n    <BSSID>02:00:5e:aa:0b:0c</BSSID>\n    <Selected>false</Selected>\n"
            "    <Channel>11</Channel>\n    <Privacy>1</Privacy>\n"
            "    <SignalStrength>-60</SignalStrength>\n    <Infrastructure>true</Infrastructure>\n"
            "    <Security>WPA2</Security>\n    <Encryption>CCMP</Encryption>\n"
            "    <MaxDataRate>54</MaxDataRate>\n  </AccessPoint>\n";
  }
  return text + "</AccessPoints>\n";
}

int const reading = registered("face_read", [](benchmark::State& state) {
  std::string const narrow = sample("status/printing.xml");
  std::wstring const wide = widened(narrow);
  Kovra::KVXStatusParser parser;
  Kovra::KVGeneralStatus record{};
  require(Kovra::read<Kovra::KVGeneralStatus>(narrow).notes().empty(), "a note arises");
  compare(state, [&] { benchmark::DoNotOptimize(Kovra::read<Kovra::KVGeneralStatus>(narrow)); },
          {{"classic_entry", [&] {
              record = {};
              benchmark::DoNotOptimize(
                  parser.ParseStatus(wide.front(), static_cast<int>(wide.size()), record));
            }}});
});

int const decoding = registered("face_decode", [](benchmark::State& state) {
  std::string const narrow = sample("status/printing.xml");
  require(Kovra::decode(narrow).notes().empty(), "a note arises");
  compare(state, [&] { benchmark::DoNotOptimize(Kovra::decode(narrow)); }, {bareParse(narrow)});
});

int const decodingMany = registered("face_decode_access_points", [](benchmark::State& state) {
  std::string const narrow = accessPoints(200);
  require(Kovra::decode(narrow).notes().empty(), "a note arises");
  compare(state, [&] { benchmark::DoNotOptimize(Kovra::decode(narrow)); }, {bareParse(narrow)});
});

int const printing = registered("face_json", [](benchmark::State& state) {
  Kovra::Value const value = Kovra::decode(accessPoints(200)).readings().front().record();
  std::string const text = value.toJson(2);
  auto const object = nlohmann::ordered_json::parse(text);
  require(object.dump(2, ' ', true) == text, "the JSON is another one");
  compare(state, [&] { benchmark::DoNotOptimize(value.toJson(2)); },
          {{"nlohmann_dump", [&] { benchmark::DoNotOptimize(object.dump(2, ' ', true)); }}});
});

}  // namespace
