// The wide entry of the sensor information against a bare TinyXML parse of the same narrow text.

#include "kvxsensorparser.h"
#include "support/bench_support.hpp"

namespace {

using namespace kovra_bench;

int const sensorInformation = registered("sensor_information", [](benchmark::State& state) {
  std::string const narrow = sample("status/sensor_info.xml");
  std::wstring const text = widened(narrow);
  Kovra::KVXSensorParser parser;
  Kovra::KVSensorInfo record{};
  compare(state,
          [&] {
            benchmark::DoNotOptimize(
                parser.ParseSensorInfo(text.front(), static_cast<int>(text.size()), record));
          },
          {bareParse(narrow)});
});

}  // namespace
