#include "characters.hpp"

#include <algorithm>
#include <iterator>

namespace Kovra::tool {

namespace {

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

struct CodeRange {
  char32_t first;
  char32_t last;
};

/// Marks that stand on the character before them, and characters without a width.
constexpr CodeRange narrow[] = {
    {0x0300, 0x036f}, {0x0483, 0x0489}, {0x0591, 0x05bd}, {0x0610, 0x061a},   {0x064b, 0x065f},
    {0x0e31, 0x0e31}, {0x0e34, 0x0e3a}, {0x0e47, 0x0e4e}, {0x1ab0, 0x1aff},   {0x1dc0, 0x1dff},
    {0x200b, 0x200f}, {0x2060, 0x2064}, {0x20d0, 0x20ff}, {0x302a, 0x302f},   {0x3099, 0x309a},
    {0xfe00, 0xfe0f}, {0xfe20, 0xfe2f}, {0xfeff, 0xfeff}, {0xe0100, 0xe01ef},
};

/// Those that take two columns: scripts of East Asia, their full-width forms, and pictures.
constexpr CodeRange wide[] = {
    {0x1100, 0x115f},   {0x231a, 0x231b},   {0x23e9, 0x23ec},   {0x25fd, 0x25fe},
    {0x2614, 0x2615},   {0x2648, 0x2653},   {0x26aa, 0x26ab},   {0x26bd, 0x26be},
    {0x2705, 0x2705},   {0x270a, 0x270b},   {0x274c, 0x274c},   {0x2753, 0x2755},
    {0x2795, 0x2797},   {0x2b1b, 0x2b1c},   {0x2b50, 0x2b50},   {0x2e80, 0x303e},
    {0x3041, 0x33ff},   {0x3400, 0x4dbf},   {0x4e00, 0x9fff},   {0xa000, 0xa4cf},
    {0xa960, 0xa97f},   {0xac00, 0xd7a3},   {0xf900, 0xfaff},   {0xfe30, 0xfe6f},
    {0xff00, 0xff60},   {0xffe0, 0xffe6},   {0x16fe0, 0x18cff}, {0x1b000, 0x1b2ff},
    {0x1f004, 0x1f004}, {0x1f0cf, 0x1f0cf}, {0x1f18e, 0x1f18e}, {0x1f191, 0x1f19a},
    {0x1f200, 0x1f320}, {0x1f32d, 0x1f64f}, {0x1f680, 0x1f6ff}, {0x1f7e0, 0x1f7eb},
    {0x1f900, 0x1f9ff}, {0x1fa70, 0x1faff}, {0x20000, 0x3fffd},
};

template <std::size_t Size>
bool isIn(CodeRange const (&ranges)[Size], char32_t code) {
  auto const* const range =
      std::find_if(std::begin(ranges), std::end(ranges),
                   [&](CodeRange const& candidate) { return code <= candidate.last; });
  return range != std::end(ranges) && code >= range->first;
}

}  // namespace

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

bool isHarmless(char32_t code) {
  bool const control = code < 0x20 || (code >= 0x7f && code <= 0x9f);
  bool const separator = code == 0x2028 || code == 0x2029;
  bool const direction = code == 0x061c || code == 0x200e || code == 0x200f ||
                         (code >= 0x202a && code <= 0x202e) || (code >= 0x2066 && code <= 0x2069);
  return !control && !separator && !direction;
}

std::size_t columnsOf(char32_t code) {
  if (code < 0x300) return 1;
  if (isIn(narrow, code)) return 0;
  return isIn(wide, code) ? 2 : 1;
}

std::size_t columnsOf(std::string_view text) {
  std::size_t columns = 0;
  while (!text.empty()) {
    Character const character = firstCharacter(text);
    columns += character.length == 0 ? 1 : columnsOf(character.code);
    text.remove_prefix(std::max<std::size_t>(character.length, 1));
  }
  return columns;
}

}  // namespace Kovra::tool
