// The face takes any bytes, says what became of them, and never says two things at once.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include "kovra.hpp"

namespace {

void require(bool held) {
  if (!held) std::abort();
}

/// A place is known, and lies in the text, of everything but of notes that are not listed.
void requirePlace(Kovra::Finding const& finding, std::size_t size) {
  require(!finding.id().empty() && !finding.message().empty());
  if (finding.line() == 0) return require(finding.offset() == 0 && finding.element().empty());
  require(finding.column() >= 1 && finding.offset() <= finding.endOffset());
  require(finding.endOffset() <= size);
  require(finding.endLine() > finding.line() ||
          (finding.endLine() == finding.line() && finding.endColumn() >= finding.column()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  std::unique_ptr<char[]> const exact(new char[size]);
  std::copy_n(data, size, exact.get());
  std::string_view const text(exact.get(), size);
  Kovra::Decoding const decoding = Kovra::decode(text);
  bool const decoded = static_cast<bool>(decoding);
  require(decoded == !decoding.readings().empty());
  require(decoded == !decoding.refusal());
  require(decoded == decoding.refusal().message().empty());
  require(decoded || decoding.notes().empty());
  if (!decoded) requirePlace(decoding.refusal(), size);
  for (Kovra::Note const& note : decoding.notes()) requirePlace(note, size);
  for (Kovra::Reading const& reading : decoding.readings()) {
    require(reading.record().isRecord());
    std::string const shown = reading.record().toJson();
    // More values than JSON may hold take more bytes.
    if (shown.size() < 16384) require(Kovra::Value::fromJson(shown).toJson() == shown);
    // Asked for by name, a reader says the same.
    Kovra::Decoding const again = Kovra::decode(text, reading.message());
    require(again.readings().size() == 1);
    require(again.readings().front().result() == reading.result());
    require(again.readings().front().record().toJson() == shown);
  }
  require(decoding.toJson().find('\n') == std::string::npos);
  return 0;
}
