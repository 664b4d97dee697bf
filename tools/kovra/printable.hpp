/// @file
/// Text that no terminal takes for a command.

#ifndef KOVRA_TOOL_PRINTABLE_HPP
#define KOVRA_TOOL_PRINTABLE_HPP

#include <string>
#include <string_view>

namespace Kovra::tool {

/// The text with everything escaped that could drive a terminal or break a line: control characters
/// (`\n`, `\x1b`, `\u009b`), the separators and direction marks of Unicode that rearrange a line
/// (`\u202e`), and bytes that are no UTF-8 (`\xff`). Replies, and names of files, are not trusted.
std::string printable(std::string_view text);

}  // namespace Kovra::tool

#endif
