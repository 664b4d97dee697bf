/// @file
/// Keywords by their codes and words.

#ifndef KOVRA_TOOL_KEYWORDS_HPP
#define KOVRA_TOOL_KEYWORDS_HPP

#include <algorithm>
#include <cstdint>
#include <kovra.hpp>
#include <string_view>
#include <vector>

namespace Kovra::tool {

/// Has one of them this code? Another number would be written as a word that nobody chose.
inline bool isCode(std::vector<Keyword> const& words, std::int64_t code) {
  return std::any_of(words.begin(), words.end(),
                     [&](Keyword const& word) { return word.code() == code; });
}

/// Is the word with this code called so?
inline bool isCode(std::vector<Keyword> const& words, std::int64_t code, std::string_view name) {
  return std::any_of(words.begin(), words.end(), [&](Keyword const& word) {
    return word.code() == code && word.word() == name;
  });
}

}  // namespace Kovra::tool

#endif
