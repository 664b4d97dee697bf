/// @file
/// `kovra completion`: what shells offer behind the tool's name.

#ifndef KOVRA_TOOL_COMPLETION_HPP
#define KOVRA_TOOL_COMPLETION_HPP

#include "command.hpp"

namespace Kovra::tool {

void addCompletion(CLI::App& command, ExitStatus& status);

}  // namespace Kovra::tool

#endif
