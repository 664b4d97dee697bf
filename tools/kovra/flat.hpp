/// @file
/// Records as lines, for grep and diff.

#ifndef KOVRA_TOOL_FLAT_HPP
#define KOVRA_TOOL_FLAT_HPP

#include <kovra.hpp>
#include <string>
#include <string_view>

namespace Kovra::tool {

/// A line for each single value of a record, each behind `prefix`: `wireless.ssid = "Badge
/// office"`. Paths are those of problems, values are JSON. A keyword is its word; one that is
/// unknown its code, with the word of the reply behind "#".
std::string flat(Value const& record, Secrets secrets, std::string_view prefix = {});

/// Are these lines and no JSON?
bool isFlat(std::string_view text);

/// The way back. Lines that are empty or begin with "#" count for nothing, and neither does what
/// stands behind a value after "#". All values are marked as secrets. Throws a RecordFailure.
Value fromFlat(std::string_view text);

}  // namespace Kovra::tool

#endif
