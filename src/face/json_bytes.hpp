/// @file
/// What reader and writer of JSON know of the bytes of a text: which may stand in quotes as they
/// are, found eight at a time.

#ifndef KOVRA_FACE_JSON_BYTES_HPP
#define KOVRA_FACE_JSON_BYTES_HPP

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace Kovra {

inline constexpr std::uint64_t eachByte = 0x0101010101010101;
inline constexpr std::uint64_t highBits = 0x80 * eachByte;

/// Marks zero bytes with their highest bits. What stands above the lowest mark may be wrong.
constexpr std::uint64_t markZeros(std::uint64_t bytes) {
  return (bytes - eachByte) & ~bytes & highBits;
}

/// Marks, in the same way, bytes that no text in quotes holds as they are: control characters,
/// quotes, backslashes, and all beyond '~'.
constexpr std::uint64_t markSpecials(std::uint64_t bytes) {
  return ((bytes - 0x20 * eachByte) & ~bytes & highBits) | markZeros(bytes ^ '"' * eachByte) |
         markZeros(bytes ^ '\\' * eachByte) | (((bytes + eachByte) | bytes) & highBits);
}

inline constexpr auto isSpecial = [] {
  std::array<bool, 256> special{};
  for (std::size_t byte = 0; byte < special.size(); ++byte) {
    special[byte] = byte < 0x20 || byte == '"' || byte == '\\' || byte >= 0x7f;
  }
  return special;
}();

inline std::uint8_t byteAt(char const* at) {
  return static_cast<std::uint8_t>(*at);
}

/// How many of eight bytes stand before the first special one.
inline std::size_t plainBytes(char const* at) {
  std::uint64_t bytes;
  std::memcpy(&bytes, at, sizeof bytes);
  return static_cast<std::size_t>(std::countr_zero(markSpecials(bytes))) / 8;
}

/// The lowest byte of a word is the first one in memory.
inline constexpr bool takesWords = std::endian::native == std::endian::little;

/// The first special byte, or the end.
inline char const* endOfPlain(char const* at, char const* end) {
  if constexpr (takesWords) {
    while (end - at >= 8) {
      std::size_t const plain = plainBytes(at);
      at += plain;
      if (plain < 8) return at;
    }
  }
  while (at != end && !isSpecial[byteAt(at)]) ++at;
  return at;
}

}  // namespace Kovra

#endif
