/// @file
/// Letters and words of names.

#ifndef KOVRA_TOOL_WORDS_HPP
#define KOVRA_TOOL_WORDS_HPP

#include <string>
#include <vector>

namespace Kovra::tool {

// In ASCII, whatever the locale.

constexpr bool isUpper(char letter) {
  return letter >= 'A' && letter <= 'Z';
}
constexpr bool isLower(char letter) {
  return letter >= 'a' && letter <= 'z';
}
constexpr bool isDigit(char letter) {
  return letter >= '0' && letter <= '9';
}

/// "one, two, three"
inline std::string listed(std::vector<std::string> const& words) {
  std::string list;
  for (std::string const& word : words) list += (list.empty() ? "" : ", ") + word;
  return list;
}

}  // namespace Kovra::tool

#endif
