#include "frame/entry.hpp"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <string_view>

#include "frame/guard.hpp"
#include "frame/wipe.hpp"

namespace Kovra::frame {

namespace {

/// Narrows the characters that are the same in every locale, up to the first other, and tells how
/// many those were. Blocks keep the test for that first one out of the inner loop.
std::size_t narrowAscii(wchar_t const* text, std::size_t length, char* out) {
  constexpr std::size_t block = 16;
  std::size_t done = 0;
  while (done + block <= length) {
    wchar_t seen = 0;
    for (std::size_t i = 0; i < block; ++i) seen |= text[done + i];
    if (seen < 0 || seen > 0x7F) break;
    for (std::size_t i = 0; i < block; ++i) out[done + i] = static_cast<char>(text[done + i]);
    done += block;
  }
  return done;
}

/// A text whose last tag is closed, with nothing but ASCII near its end, is read to its terminator
/// and no further.
bool endsHarmlessly(std::string_view text) {
  std::size_t const last = text.find_last_not_of(" \t\r\n");
  if (last == text.npos || text[last] != '>' || text.size() < padding) return false;
  std::string_view const tail = text.substr(text.size() - padding);
  return std::none_of(tail.begin(), tail.end(),
                      [](char c) { return (static_cast<unsigned char>(c) & 0x80U) != 0; });
}

}  // namespace

NarrowText::NarrowText(wchar_t const* text, std::size_t length) {
  std::size_t const characters = ::wcsnlen(text, length);
  std::size_t const room = std::min(length, characters * MB_CUR_MAX);
  char* const narrow = allocate(room);
  std::size_t const ascii = narrowAscii(text, characters, narrow);
  std::memset(narrow + ascii, 0, room - ascii);
  if (ascii == characters) return;
  std::mbstate_t state{};
  wchar_t const* rest = text + ascii;
  // A character that the locale lacks stops the conversion; what stands before it stays, and the
  // zeros behind it end the text.
  static_cast<void>(::wcsnrtombs(narrow + ascii, &rest, characters - ascii, room - ascii, &state));
}

NarrowText::NarrowText(char const* text) {
  std::size_t const length = std::strlen(text);
  if (endsHarmlessly({text, length})) {
    view_ = text;
    size_ = length;
  } else {
    std::memcpy(allocate(length), text, length);
  }
}

NarrowText::NarrowText(char const* text, std::size_t length) {
  std::memcpy(allocate(length), text, length);
}

NarrowText::~NarrowText() {
  if (text_ != nullptr) wipe(text_.get(), size_);
}

char* NarrowText::allocate(std::size_t length) {
  text_.reset(new char[length + padding]);
  std::memset(text_.get() + length, 0, padding);
  view_ = text_.get();
  size_ = length;
  return text_.get();
}

TiXmlElement* findRoot(TiXmlDocument& document, Roots roots) {
  for (char const* const root : roots) {
    if (TiXmlElement* const element = document.FirstChildElement(root)) return element;
  }
  return nullptr;
}

namespace {

bool hasMoreThan(std::size_t limit, char wanted, std::string_view text) {
  for (std::size_t found = 0; found <= limit; ++found) {
    std::size_t const next = text.find(wanted);
    if (next == text.npos) return false;
    text.remove_prefix(next + 1);
  }
  return true;
}

/// Every element needs a '<' of its own and every attribute a '=', so a short reply is known to be
/// harmless without much ado; only longer ones are looked at closely.
bool isHostile(NarrowText const& text) {
  std::string_view const bytes(text.get(), text.size());
  if (!hasMoreThan(maxDepth, '<', bytes) && !hasMoreThan(maxAttributes, '=', bytes)) return false;
  return isHostile(scan(text.get()).fault);
}

}  // namespace

namespace {

/// In ASCII without numbered references every encoding reads alike, and TinyXML reads single bytes
/// faster than UTF-8. Any other text tells its encoding itself.
TiXmlEncoding encodingOf(NarrowText const& text) {
  unsigned char seen = 0;
  for (char const c : std::string_view(text.get(), text.size())) {
    seen = static_cast<unsigned char>(seen | static_cast<unsigned char>(c));
  }
  bool const hasReference = std::memchr(text.get(), '&', text.size()) != nullptr &&
                            std::strstr(text.get(), "&#") != nullptr;
  bool const isPlain = seen < 0x80 && !hasReference;
  return isPlain ? TIXML_ENCODING_LEGACY : TIXML_ENCODING_UNKNOWN;
}

}  // namespace

TiXmlElement* parseReply(TiXmlDocument& document, NarrowText const& text, Roots roots) {
  if (isHostile(text)) return nullptr;
  document.SetTabSize(0);
  document.Parse(text.get(), nullptr, encodingOf(text));
  return document.Error() ? nullptr : findRoot(document, roots);
}

}  // namespace Kovra::frame
