/// @file
/// The characters of a text in UTF-8, and how much room they take.

#ifndef KOVRA_TOOL_CHARACTERS_HPP
#define KOVRA_TOOL_CHARACTERS_HPP

#include <cstddef>
#include <string_view>

namespace Kovra::tool {

/// The character that a text begins with. A length of 0: its first byte begins none.
struct Character {
  char32_t code = 0;
  std::size_t length = 0;
};

/// Of a text that is not empty.
Character firstCharacter(std::string_view text);

/// Can it stand in a line as it is? Not what drives a terminal, breaks a line or rearranges it.
bool isHarmless(char32_t code);

/// How many columns of a terminal it takes: 2 for those of East Asia and for pictures, 0 for marks
/// that join the character before them.
std::size_t columnsOf(char32_t code);

/// That of a printable text.
std::size_t columnsOf(std::string_view text);

}  // namespace Kovra::tool

#endif
