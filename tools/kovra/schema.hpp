/// @file
/// `kovra schema`: what a message's record may be, for programs.

#ifndef KOVRA_TOOL_SCHEMA_HPP
#define KOVRA_TOOL_SCHEMA_HPP

#include "command.hpp"

namespace Kovra::tool {

void addSchema(CLI::App& command, ExitStatus& status);

}  // namespace Kovra::tool

#endif
