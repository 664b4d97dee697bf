/// @file
/// What the face shows of a reply can be composed again, apart from texts that no document carries:
/// those that a printer's bytes, or the end of a member, cut within a letter.

#ifndef KOVRA_FUZZ_SUPPORT_COMPOSED_HPP
#define KOVRA_FUZZ_SUPPORT_COMPOSED_HPP

#include <iconv.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "guarded.hpp"
#include "kovra.hpp"

namespace kovra_fuzz {

/// Can a document in UTF-8 hold the text? The C library says what is UTF-8.
inline bool isForXml(std::string text) {
  static iconv_t const toCharacters = iconv_open("UCS-4LE", "UTF-8");
  std::vector<std::uint32_t> characters(text.size());
  char* from = text.data();
  char* to = reinterpret_cast<char*>(characters.data());
  std::size_t left = text.size(), room = characters.size() * sizeof characters[0];
  iconv(toCharacters, nullptr, nullptr, nullptr, nullptr);
  if (iconv(toCharacters, &from, &left, &to, &room) != 0) return false;
  characters.resize(characters.size() - room / sizeof characters[0]);
  return std::all_of(characters.begin(), characters.end(), [](std::uint32_t character) {
    bool const control =
        character < 0x20 && character != '\t' && character != '\n' && character != '\r';
    // The C library takes what was UTF-8 before Unicode ended at U+10FFFF.
    return !control && character != 0xFFFE && character != 0xFFFF && character <= 0x10FFFF;
  });
}

/// The same of all texts in a record.
inline bool isForXml(Kovra::Value const& value) {
  if (value.isText()) return isForXml(std::string(value.asText()));
  return std::all_of(value.items().begin(), value.items().end(),
                     [](Kovra::Value const& item) { return isForXml(item); }) &&
         std::all_of(value.members().begin(), value.members().end(),
                     [](Kovra::Member const& member) { return isForXml(member.value()); });
}

/// Composes what the face reads from the input as `name`, and reads that again.
template <class Compose>
void composeAgain(std::uint8_t const* data, std::size_t size, std::string const& name,
                  Compose compose) {
  std::string_view const text(reinterpret_cast<char const*>(data), size);
  for (Kovra::Reading const& reading : Kovra::decode(text, name).readings()) {
    Kovra::Composition const whole = compose(reading.record());
    require(static_cast<bool>(whole) == isForXml(reading.record()));
    require(static_cast<bool>(whole) == whole.problems().empty());
    if (!whole) continue;
    require(static_cast<bool>(Kovra::decode(whole.text(), name)));
  }
}

}  // namespace kovra_fuzz

#endif
