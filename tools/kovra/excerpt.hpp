/// @file
/// The line of a reply that a finding is about, for people.

#ifndef KOVRA_TOOL_EXCERPT_HPP
#define KOVRA_TOOL_EXCERPT_HPP

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "secret.hpp"
#include "terminal.hpp"

namespace Kovra::tool {

/// Can its lines be shown? Not those of UTF-16.
bool hasLines(std::string_view text);

/// The line of the text in which the piece begins, and below it a line with a caret under where it
/// begins and tildes as far as it goes. Tabs are blanks, what drives a terminal is escaped, secrets
/// are masked, and a line that is wider than `width` columns is cut around the place. `number` is
/// that of the line; the caret has the style. Nothing for an empty line.
std::string excerpt(std::string_view text, Stretch piece, std::vector<Stretch> const& secrets,
                    int number, std::size_t width, Style style);

}  // namespace Kovra::tool

#endif
