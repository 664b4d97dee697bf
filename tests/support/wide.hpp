/// @file
/// Wide texts for the entries.

#ifndef KOVRA_TESTS_SUPPORT_WIDE_HPP
#define KOVRA_TESTS_SUPPORT_WIDE_HPP

#include <algorithm>
#include <cstddef>
#include <cwchar>
#include <memory>
#include <string>
#include <string_view>

namespace Kovra::test {

/// One wide character for each byte.
inline std::wstring wide(std::string_view text) {
  std::wstring result;
  for (char const byte : text) result += static_cast<wchar_t>(static_cast<unsigned char>(byte));
  return result;
}

/// The characters alone, in a heap buffer of exactly their size: a sanitizer sees every step
/// beyond.
inline std::unique_ptr<wchar_t[]> unterminated(std::wstring const& text) {
  std::unique_ptr<wchar_t[]> buffer(new wchar_t[text.size()]);
  std::copy(text.begin(), text.end(), buffer.get());
  return buffer;
}

/// The other way round, for entries that take narrow text: at most `length` characters or those
/// before a terminator, one byte for each, and a terminator, in a buffer of exactly their size.
inline std::unique_ptr<char[]> narrowed(wchar_t const& text, int length) {
  std::size_t const size = ::wcsnlen(&text, static_cast<std::size_t>(std::max(length, 0)));
  std::unique_ptr<char[]> buffer(new char[size + 1]);
  std::transform(&text, &text + size, buffer.get(), [](wchar_t c) { return static_cast<char>(c); });
  buffer[size] = '\0';
  return buffer;
}

}  // namespace Kovra::test

#endif
