/// @file
/// Any bytes at all as a log, as magnetic tracks, as a laminator's response: no entry reads beyond
/// the text or writes beyond its record, whatever the record held before.

#include <algorithm>
#include <clocale>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "kvxgetein.h"
#include "kvxlogparser.h"
#include "kvxndc.h"
#include "support/guarded.hpp"

using namespace Kovra;
using namespace kovra_fuzz;

namespace {

// The service history into an array with room for `count` events.
void fillServiceHistory(WideText const& text, int count, unsigned char pattern) {
  Guarded<_tagLogServiceValues> room(static_cast<std::size_t>(std::max(count, 0)), pattern);
  _tagLogServiceXML record{count, room.entries()};
  KVXLogParser().ParseLogServiceXML(*text.characters.get(), static_cast<unsigned long>(text.length),
                                    record);
  require(room.isIntact() && record.count == count && record.entries == room.entries());
}

// What a host does: it asks for the count, makes room for just as many, and reads again. Then what
// a host does that has less room.
void driveServiceHistory(WideText const& text) {
  _tagLogServiceXML record{0, nullptr};
  if (!KVXLogParser().ParseLogServiceXML(*text.characters.get(),
                                         static_cast<unsigned long>(text.length), record)) {
    return;
  }
  for (unsigned char const pattern : patterns) fillServiceHistory(text, record.count, pattern);
  for (int const count : {-1, 0, 2}) fillServiceHistory(text, count, patterns[0]);
}

using LaminatorResponse = char[512];

// What was copied is a text that ends within the buffer.
void driveLaminatorResponse(WideText const& text) {
  drive<LaminatorResponse>([&](LaminatorResponse& buffer) {
    bool const read = KVXNDC().GetLaminatorResponse(*text.characters.get(), text.length, buffer);
    require(!read || std::memchr(buffer, '\0', sizeof buffer) != nullptr);
  });
}

void driveMagneticTracks(char const& text) {
  drive<__GETTRACK>([&](__GETTRACK& record) { KVXGetEIN().GetMagneticTracks(text, 0, record); });
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  std::setlocale(LC_CTYPE, "");  // so that LC_ALL chooses which characters narrow
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  if (size == 0) return 0;
  WideText const text(data, size);
  driveServiceHistory(text);
  drive(&KVXLogParser::ParseCleaningLog, text);
  driveLaminatorResponse(text);
  driveMagneticTracks(*narrowText(data, size).get());
  return 0;
}
