/// @file
/// Paths of members within a record: "wireless.ssid", "cards[0].type".

#ifndef KOVRA_TOOL_PATHS_HPP
#define KOVRA_TOOL_PATHS_HPP

#include <cstddef>
#include <string>
#include <string_view>

namespace Kovra::tool {

/// A member of what is at `around`; empty: of the record itself.
inline std::string memberPath(std::string_view around, std::string_view member) {
  return std::string(around).append(around.empty() ? "" : ".").append(member);
}

/// An entry of the list at `list`.
inline std::string entryPath(std::string_view list, std::size_t index) {
  return std::string(list).append("[").append(std::to_string(index)).append("]");
}

}  // namespace Kovra::tool

#endif
