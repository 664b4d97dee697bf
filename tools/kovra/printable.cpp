#include "printable.hpp"

#include <algorithm>
#include <cstddef>

namespace Kovra::tool {

namespace {

/// The character that a text begins with. A length of 0: its first byte begins none.
struct Character {
  char32_t code = 0;
  std::size_t length = 0;
};

unsigned char byteAt(std::string_view text, std::size_t index) {
  return static_cast<unsigned char>(text[index]);
}

/// How many bytes a sequence with this first byte has, and the least code that needs so many.
struct Sequence {
  std::size_t length;
  char32_t least;
  unsigned char payload;  // which bits of the first byte belong to the code
};

constexpr Sequence sequenceOf(unsigned char first) {
  if (first < 0x80) return {1, 0, 0x7f};
  if ((first & 0xe0U) == 0xc0) return {2, 0x80, 0x1f};
  if ((first & 0xf0U) == 0xe0) return {3, 0x800, 0x0f};
  if ((first & 0xf8U) == 0xf0) return {4, 0x10000, 0x07};
  return {0, 0, 0};
}

constexpr bool isSurrogate(char32_t code) {
  return code >= 0xd800 && code <= 0xdfff;
}

Character firstCharacter(std::string_view text) {
  Sequence const sequence = sequenceOf(byteAt(text, 0));
  if (sequence.length == 0 || sequence.length > text.size()) return {};
  char32_t code = byteAt(text, 0) & sequence.payload;
  for (std::size_t i = 1; i < sequence.length; ++i) {
    if ((byteAt(text, i) & 0xc0U) != 0x80) return {};
    code = (code << 6U) | (byteAt(text, i) & 0x3fU);
  }
  if (code < sequence.least || code > 0x10ffff || isSurrogate(code)) return {};
  return {code, sequence.length};
}

constexpr bool isHarmless(char32_t code) {
  bool const control = code < 0x20 || (code >= 0x7f && code <= 0x9f);
  bool const separator = code == 0x2028 || code == 0x2029;
  bool const direction = code == 0x061c || code == 0x200e || code == 0x200f ||
                         (code >= 0x202a && code <= 0x202e) || (code >= 0x2066 && code <= 0x2069);
  return !control && !separator && !direction;
}

void appendHex(std::string& out, char32_t code, unsigned digits) {
  for (unsigned shift = 4 * digits; shift > 0;) {
    shift -= 4;
    out += "0123456789abcdef"[(code >> shift) & 0xfU];
  }
}

void appendEscaped(std::string& out, char32_t code) {
  switch (code) {
    case '\n':
      out += "\\n";
      return;
    case '\r':
      out += "\\r";
      return;
    case '\t':
      out += "\\t";
      return;
    default:
      break;
  }
  bool const ascii = code < 0x80;
  out += ascii ? "\\x" : "\\u";
  appendHex(out, code, ascii ? 2 : 4);
}

bool isPlain(char byte) {
  return byte >= 0x20 && byte < 0x7f;
}

}  // namespace

std::string printable(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  while (!text.empty()) {
    auto const special = std::find_if_not(text.begin(), text.end(), isPlain);
    out.append(text.begin(), special);
    text.remove_prefix(static_cast<std::size_t>(special - text.begin()));
    if (text.empty()) break;

    Character const character = firstCharacter(text);
    if (character.length == 0) {
      out += "\\x";
      appendHex(out, byteAt(text, 0), 2);
    } else if (isHarmless(character.code)) {
      out += text.substr(0, character.length);
    } else {
      appendEscaped(out, character.code);
    }
    text.remove_prefix(std::max<std::size_t>(character.length, 1));
  }
  return out;
}

}  // namespace Kovra::tool
