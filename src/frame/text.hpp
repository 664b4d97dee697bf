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

/// The text in a record's array: up to its terminator, or the whole array when it has none.
template <std::size_t N>
std::string_view textIn(char const (&array)[N]) {
  return {array, ::strnlen(array, N)};
}

}  // namespace Kovra::frame

#endif
