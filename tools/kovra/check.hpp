/// @file
/// `kovra check`: what is wrong with replies, as compilers tell it.

#ifndef KOVRA_TOOL_CHECK_HPP
#define KOVRA_TOOL_CHECK_HPP

#include "command.hpp"

namespace Kovra::tool {

void addCheck(CLI::App& command, ExitStatus& status);

}  // namespace Kovra::tool

#endif
