// The face takes any bytes, says what became of them, and never says two things at once.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

#include "kovra.hpp"

namespace {

void require(bool held) {
  if (!held) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  std::unique_ptr<char[]> const exact(new char[size]);
  std::copy_n(data, size, exact.get());
  Kovra::Decoding const decoding = Kovra::decode(exact.get(), size);
  bool const decoded = decoding.status == Kovra::Decoding::Status::decoded;
  require(decoded == !decoding.readings.empty());
  require(decoded == (decoding.found.empty() && decoding.expected.empty()));
  require(decoded || decoding.notes.empty());
  require(!decoding.description().empty());
  for (Kovra::Note const& note : decoding.notes) {
    require(note.place.line >= 1 && !note.element.empty() && !note.description().empty());
  }
  for (Kovra::Reading const& reading : decoding.readings) {
    require(reading.record.kind == Kovra::Value::Kind::record);
    // Asked for by name, a reader says the same.
    Kovra::Decoding const again = Kovra::decode(exact.get(), size, reading.document);
    require(again.readings.size() == 1 && again.readings.front().result == reading.result);
  }
  return 0;
}
