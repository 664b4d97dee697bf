/// @file
/// Names of messages on the command line, and of what is told of them.

#ifndef KOVRA_TOOL_MESSAGES_HPP
#define KOVRA_TOOL_MESSAGES_HPP

#include <kovra.hpp>
#include <string>
#include <vector>

#include "options.hpp"

namespace Kovra::tool {

bool anyMessage(Message const& message);
bool isReadMessage(Message const& message);

/// The names of the messages for which `isMeant` holds, in the order of the catalogue.
std::vector<std::string> messageNames(bool (*isMeant)(Message const&));

/// Checks that an argument is one of those names, and says what may have been meant where it is
/// not. The names are what completions offer for it.
Check isMessage(bool (*isMeant)(Message const&));

}  // namespace Kovra::tool

#endif
