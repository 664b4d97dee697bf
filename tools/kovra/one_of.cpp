#include "one_of.hpp"

#include <algorithm>

#include "suggest.hpp"

namespace Kovra::tool {

std::string setOf(std::vector<std::string> const& words) {
  std::string set = "{";
  for (std::string const& word : words) set += (set.size() > 1 ? "," : "") + word;
  return set + '}';
}

CLI::Validator isOneOf(std::vector<std::string> const& words) {
  auto const check = [words](std::string const& given) -> std::string {
    if (std::find(words.begin(), words.end(), given) != words.end()) return {};
    std::string const meant = suggestion(given, words);
    return given + " not in " + setOf(words) + (meant.empty() ? meant : '.' + meant);
  };
  return {check, setOf(words)};
}

}  // namespace Kovra::tool
