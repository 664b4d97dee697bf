/// @file
/// `kovra compose MESSAGE`: a record as JSON in, the document that the printer accepts out.

#ifndef KOVRA_TOOL_COMPOSE_HPP
#define KOVRA_TOOL_COMPOSE_HPP

#include <CLI/CLI.hpp>

#include "command.hpp"

namespace Kovra::tool {

/// Adds `compose` with a subcommand for each message that is written to `app`; when it has run,
/// `status` says how it ended.
void addCompose(CLI::App& app, ExitStatus& status);

}  // namespace Kovra::tool

#endif
