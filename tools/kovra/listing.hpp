/// @file
/// `kovra list` and `kovra vocabulary`: what the tool knows.

#ifndef KOVRA_TOOL_LISTING_HPP
#define KOVRA_TOOL_LISTING_HPP

#include "command.hpp"

namespace Kovra::tool {

void addList(CLI::App& command, ExitStatus& status);
void addVocabulary(CLI::App& command, ExitStatus& status);

}  // namespace Kovra::tool

#endif
