#include "printable.hpp"

#include <algorithm>
#include <cstddef>

#include "characters.hpp"

namespace Kovra::tool {

namespace {

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
      appendHex(out, static_cast<unsigned char>(text.front()), 2);
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
