/// @file
/// `kovra explain`: what a name means, be it of a finding or of what printers say.

#ifndef KOVRA_TOOL_EXPLAIN_HPP
#define KOVRA_TOOL_EXPLAIN_HPP

#include "command.hpp"

namespace Kovra::tool {

void addExplain(CLI::App& command, ExitStatus& status);

}  // namespace Kovra::tool

#endif
