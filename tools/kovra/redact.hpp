/// @file
/// `kovra redact`: copies of replies that may be sent on.

#ifndef KOVRA_TOOL_REDACT_HPP
#define KOVRA_TOOL_REDACT_HPP

#include "command.hpp"

namespace Kovra::tool {

void addRedact(CLI::App& command, ExitStatus& status);

}  // namespace Kovra::tool

#endif
