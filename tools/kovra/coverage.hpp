/// @file
/// `kovra coverage`: what Kovra does not know of many replies, summed up.

#ifndef KOVRA_TOOL_COVERAGE_HPP
#define KOVRA_TOOL_COVERAGE_HPP

#include "command.hpp"

namespace Kovra::tool {

void addCoverage(CLI::App& command, ExitStatus& status);

}  // namespace Kovra::tool

#endif
