/// @file
/// `kovra decode`: replies in, tables or JSON out.

#ifndef KOVRA_TOOL_DECODE_HPP
#define KOVRA_TOOL_DECODE_HPP

#include "command.hpp"

namespace Kovra::tool {

void addDecode(CLI::App& command, ExitStatus& status);

}  // namespace Kovra::tool

#endif
