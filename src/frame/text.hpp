/// @file
/// Copies of texts into the arrays of records.

#ifndef KOVRA_FRAME_TEXT_HPP
#define KOVRA_FRAME_TEXT_HPP

#include <cstddef>
#include <cstring>
#include <string_view>

namespace Kovra::frame {

/// Copies at most `capacity - 1` characters and a terminator; what lies behind it is left alone.
/// False, with nothing stored, when not even the terminator fits.
inline bool copyBounded(char const* text, char* out, int capacity) {
  if (capacity < 1) return false;
  std::size_t const length = ::strnlen(text, static_cast<std::size_t>(capacity) - 1);
  std::memmove(out, text, length);
  out[length] = '\0';
  return true;
}

/// Appends to the text at `out`, which is terminated or fills all of its `capacity`, in the same
/// way: what does not fit before a terminator is cut.
inline bool appendBounded(char const* text, char* out, int capacity) {
  if (capacity < 1) return false;
  auto const room = static_cast<std::size_t>(capacity);
  std::size_t const end = ::strnlen(out, room - 1);
  return copyBounded(text, out + end, static_cast<int>(room - end));
}

/// A text in UTF-8 without what is left of a last character that was cut.
inline std::string_view wholeCharacters(std::string_view text) {
  std::size_t begin = text.size();
  while (begin > 0 && text.size() - begin < 4 &&
         (static_cast<unsigned char>(text[begin - 1]) & 0xC0U) == 0x80) {
    --begin;
  }
  if (begin == 0) return text;
  auto const lead = static_cast<unsigned char>(text[begin - 1]);
  std::size_t const length = lead < 0xC0 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  bool const isCut = lead >= 0xC0 && text.size() - (begin - 1) < length;
  return isCut ? text.substr(0, begin - 1) : text;
}

/// The text in a record's array: up to its terminator, or the whole array when it has none.
template <std::size_t N>
std::string_view textIn(char const (&array)[N]) {
  return {array, ::strnlen(array, N)};
}

}  // namespace Kovra::frame

#endif
