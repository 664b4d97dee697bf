/// @file
/// `kovra compose MESSAGE`: a record as JSON in, the document that the printer accepts out.

#ifndef KOVRA_TOOL_COMPOSE_HPP
#define KOVRA_TOOL_COMPOSE_HPP

#include "command.hpp"

namespace Kovra::tool {

/// With a subcommand for each message that is written.
void addCompose(CLI::App& compose, ExitStatus& status);

/// From now on every subcommand has its options at once, not only when it is called: for those who
/// list them.
void composeInFull();

}  // namespace Kovra::tool

#endif
