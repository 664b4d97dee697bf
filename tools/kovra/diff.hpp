/// @file
/// `kovra diff`: what two replies say differently.

#ifndef KOVRA_TOOL_DIFF_HPP
#define KOVRA_TOOL_DIFF_HPP

#include "command.hpp"

namespace Kovra::tool {

void addDiff(CLI::App& command, ExitStatus& status);

}  // namespace Kovra::tool

#endif
