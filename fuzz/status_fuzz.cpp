/// @file
/// Any bytes at all as a status reply: no entry of KVXStatusParser reads beyond the text or writes
/// beyond its record, whatever the record held before.

#include <clocale>
#include <cstdint>

#include "kvxstatusparser.h"
#include "support/guarded.hpp"

using namespace Kovra;
using namespace kovra_fuzz;

namespace {

// What a host does: it asks for the count, makes room for just as many, and reads again.
void driveAccessPoints(WideText const& text) {
  KVXStatusParser parser;
  _tagAccessPoints record{nullptr, 0};
  if (!parser.ParseAccessPoints(*text.characters.get(), text.length, record)) return;
  unsigned int const count = record.count;
  for (unsigned char const pattern : patterns) {
    Guarded<_tagAccessPoint> room(count, pattern);
    record.accessPoints = room.entries();
    parser.ParseAccessPoints(*text.characters.get(), text.length, record);
    require(room.isIntact() && record.count == count && record.accessPoints == room.entries());
  }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  std::setlocale(LC_CTYPE, "");  // so that LC_ALL chooses which characters narrow
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  if (size == 0) return 0;
  WideText const text(data, size);
  drive(&KVXStatusParser::ParseStatus, text);
  drive(&KVXStatusParser::ParseJobList, text);
  drive(&KVXStatusParser::ParseJobStatus, text);
  drive(&KVXStatusParser::ParseMediaStatus, text);
  drive(&KVXStatusParser::ParseSensorStatus, text);
  drive(&KVXStatusParser::ParseCardCount, text);
  drive(&KVXStatusParser::ParseCleanLogCount, text);
  drive(&KVXStatusParser::ParseUpTime, text);
  drive(&KVXStatusParser::ParseCleaningStatus, text);
  drive(&KVXStatusParser::GetPrinterFreeSpace, text);
  drive(&KVXStatusParser::GetFlashFreeSpace, text);
  drive(&KVXStatusParser::ParseWirelessStatusXML, text);
  drive(&KVXStatusParser::ParseWirlessRadioXML, text);
  driveAccessPoints(text);
  return 0;
}
