/// @file
/// Arguments that are one of a few words.

#ifndef KOVRA_TOOL_ONE_OF_HPP
#define KOVRA_TOOL_ONE_OF_HPP

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace Kovra::tool {

/// The words as CLI11 describes a set, which completions offer: "{table,json}".
std::string setOf(std::vector<std::string> const& words);

/// Checks that an argument is one of the words, and says what may have been meant where it is not.
CLI::Validator isOneOf(std::vector<std::string> const& words);

}  // namespace Kovra::tool

#endif
