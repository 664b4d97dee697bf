/// @file
/// Keys, pass phrases and track data are not shown unasked.

#ifndef KOVRA_TOOL_SECRET_HPP
#define KOVRA_TOOL_SECRET_HPP

namespace Kovra::tool {

/// What stands in place of a secret, whatever its length.
inline constexpr char mask[] = "******";

}  // namespace Kovra::tool

#endif
