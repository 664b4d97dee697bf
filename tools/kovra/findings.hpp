/// @file
/// What was found in replies, for messages.

#ifndef KOVRA_TOOL_FINDINGS_HPP
#define KOVRA_TOOL_FINDINGS_HPP

#include <kovra.hpp>
#include <string>

#include "input.hpp"

namespace Kovra::tool {

/// The name of the finding's kind: "unknown_root". Empty where nothing was found.
std::string kindOf(Finding const& finding);

Place placeOf(Finding const& finding);

}  // namespace Kovra::tool

#endif
