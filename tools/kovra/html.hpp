/// @file
/// Text that no browser takes for markup.

#ifndef KOVRA_TOOL_HTML_HPP
#define KOVRA_TOOL_HTML_HPP

#include <string>
#include <string_view>

namespace Kovra::tool {

/// The text as it may stand in an element or between the double quotes of an attribute: made
/// printable, and with the five characters escaped that mean something there.
std::string escaped(std::string_view text);

/// The same for a text that somebody else wrote, as an element: whatever direction it is written
/// in, what stands beside it stays in place.
std::string isolated(std::string_view text);

}  // namespace Kovra::tool

#endif
