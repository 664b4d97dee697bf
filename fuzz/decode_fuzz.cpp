// The face takes any bytes, says what became of them, and never says two things at once.

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "kovra.hpp"
#include "support/guarded.hpp"
#include "support/whole_reply.hpp"

namespace {

using kovra_fuzz::require;

/// Where a line and column of a text in ASCII stand.
std::size_t offsetOf(std::string_view text, Kovra::test::Spot spot) {
  std::size_t at = 0;
  for (int line = 1; line < spot.first && at < text.size(); ++at) {
    bool const isEnd = text[at] == '\n' || (text[at] == '\r' && text.substr(at, 2) != "\r\n");
    if (isEnd) ++line;
  }
  return at + static_cast<std::size_t>(spot.second - 1);
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

/// The second opinion knows UTF-8 alone, and ends at a zero byte.
bool isForSecondOpinion(std::string_view text) {
  constexpr std::size_t longest = std::size_t{1} << 16U;  // it takes its time
  return text.size() <= longest && std::all_of(text.begin(), text.end(), [](char c) {
           return static_cast<signed char>(c) > 0;
         });
}

/// Another letter or digit at a place of the input's choosing, where a text or a value begins.
std::string changed(std::string text) {
  Kovra::test::SecondOpinion const opinion(text);
  if (opinion.said().empty()) return text;
  std::size_t const chosen = std::hash<std::string>()(text) % opinion.said().size();
  Kovra::test::Said const& said = opinion.said()[chosen];
  std::size_t at = offsetOf(text, said.spot);
  if (said.isAttribute) at = text.find(said.text, text.find('=', at));
  if (at >= text.size() || std::isalnum(static_cast<unsigned char>(text[at])) == 0) return text;
  text[at] = text[at] == '7' ? '3' : '7';
  return text;
}

/// Nothing is lost without a word, also of a text that is another one in one letter.
void requireWholeReply(std::string const& text, Kovra::Decoding const& decoding) {
  require(Kovra::test::lostOf(text, decoding).empty());
  std::string const other = changed(text);
  require(other == text || Kovra::test::showsChange(decoding, text, other));
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
  if (decoded && isForSecondOpinion(text)) requireWholeReply(std::string(text), decoding);
  return 0;
}
