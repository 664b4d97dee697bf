/// @file
/// `kovra report`: a fleet's replies in, a page for people out.

#ifndef KOVRA_TOOL_REPORT_HPP
#define KOVRA_TOOL_REPORT_HPP

#include "command.hpp"

namespace Kovra::tool {

void addReport(CLI::App& command, ExitStatus& status);

}  // namespace Kovra::tool

#endif
