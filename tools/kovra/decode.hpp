/// @file
/// `kovra decode`: replies in, tables or JSON out.

#ifndef KOVRA_TOOL_DECODE_HPP
#define KOVRA_TOOL_DECODE_HPP

#include <CLI/CLI.hpp>

#include "command.hpp"

namespace Kovra::tool {

/// Adds the subcommand to `app`; when it has run, `status` says how it ended.
void addDecode(CLI::App& app, ExitStatus& status);

}  // namespace Kovra::tool

#endif
