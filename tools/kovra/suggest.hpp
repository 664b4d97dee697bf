/// @file
/// What somebody may have meant.

#ifndef KOVRA_TOOL_SUGGEST_HPP
#define KOVRA_TOOL_SUGGEST_HPP

#include <string>
#include <string_view>
#include <vector>

namespace Kovra::tool {

/// The known words that are nearest to `word`, all equally near ones, in their order; none where
/// nothing is so near that it is likely. Letters that are wrong, missing, surplus or swapped count,
/// and so does a word that only goes on.
std::vector<std::string> nearest(std::string_view word, std::vector<std::string> const& known);

/// ` Did you mean "status" or "state"?`, with a blank in front; empty for none.
std::string suggestion(std::string_view word, std::vector<std::string> const& known);

}  // namespace Kovra::tool

#endif
