/// @file
/// Any bytes at all as a sensor reply: no entry of KVXSensorParser reads beyond the text or writes
/// beyond its record, whatever the record held before.

#include <clocale>
#include <cstdint>

#include "kvxsensorparser.h"
#include "support/guarded.hpp"

using namespace Kovra;
using namespace kovra_fuzz;

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  std::setlocale(LC_CTYPE, "");  // so that LC_ALL chooses which characters narrow
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  if (size == 0) return 0;
  auto const narrow = narrowText(data, size);
  drive<_KVPrinterSensorInfo>([&](_KVPrinterSensorInfo& record) {
    KVXSensorParser().ParseSensorStates(narrow.get(), static_cast<int>(size), record);
  });
  drive(&KVXSensorParser::ParseSensorInfo, WideText(data, size));
  return 0;
}
