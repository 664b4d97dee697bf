/// @file
/// Characters of UTF-8: the only place that knows how they are made.

#ifndef KOVRA_FRAME_UTF8_HPP
#define KOVRA_FRAME_UTF8_HPP

#include <cstddef>
#include <cstdint>
#include <string>

namespace Kovra::frame {

/// What stands at a place of a text: a character, or the longest piece that cannot belong to one.
struct Utf8Character {
  char32_t code;
  std::size_t length;
  bool isBroken;
};

namespace detail {
constexpr std::size_t lengthBehind(std::uint8_t lead) {
  if (lead < 0x80) return 1;
  if (lead < 0xc2 || lead > 0xf4) return 0;
  return lead < 0xe0 ? 2 : lead < 0xf0 ? 3 : 4;
}
}  // namespace detail

/// Of a text that has not ended.
inline Utf8Character characterAt(char const* at, char const* end) {
  auto const byteAt = [](char const* place) { return static_cast<std::uint8_t>(*place); };
  std::uint8_t const lead = byteAt(at);
  std::size_t const length = detail::lengthBehind(lead);
  if (length < 2) return {lead, 1, length == 0};
  // The second byte tells what is longer than it need be, a surrogate, or beyond Unicode.
  std::uint8_t least = lead == 0xe0 ? 0xa0 : lead == 0xf0 ? 0x90 : 0x80;
  std::uint8_t most = lead == 0xed ? 0x9f : lead == 0xf4 ? 0x8f : 0xbf;
  char32_t code = lead & (0x7fU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    if (at + i == end || byteAt(at + i) < least || byteAt(at + i) > most) return {0, i, true};
    code = code << 6 | (byteAt(at + i) & 0x3fU);
    least = 0x80;
    most = 0xbf;
  }
  return {code, length, false};
}

inline void appendUtf8(char32_t code, std::string& out) {
  auto const tail = [&](int shift) { out += static_cast<char>(0x80U | ((code >> shift) & 0x3fU)); };
  if (code < 0x80) {
    out += static_cast<char>(code);
  } else if (code < 0x800) {
    out += static_cast<char>(0xc0U | code >> 6);
    tail(0);
  } else if (code < 0x10000) {
    out += static_cast<char>(0xe0U | code >> 12);
    tail(6);
    tail(0);
  } else {
    out += static_cast<char>(0xf0U | code >> 18);
    tail(12);
    tail(6);
    tail(0);
  }
}

}  // namespace Kovra::frame

#endif
