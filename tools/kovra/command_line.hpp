/// @file
/// The words of the command line, and what is told of those that nobody understands.

#ifndef KOVRA_TOOL_COMMAND_LINE_HPP
#define KOVRA_TOOL_COMMAND_LINE_HPP

#include <string>
#include <string_view>
#include <vector>

#include "command.hpp"

namespace CLI {
class Error;
}

namespace Kovra::tool {

/// The words that the arguments mean, without the name of the tool: a file alone is decoded, and
/// help on a verb is what the verb says itself.
std::vector<std::string> wordsOf(std::vector<std::string_view> const& arguments);

/// Adds all verbs, and to the one that is called its options; making those of all takes longer than
/// most calls.
void addVerbs(CLI::App& app, std::string_view called, ExitStatus& status);

/// What is wrong with a command line, and what may have been meant.
std::string complaintOf(CLI::App const& app, CLI::Error const& error);

/// The command as far as it was understood: "kovra compose fan".
std::string commandName(CLI::App const& app);

}  // namespace Kovra::tool

#endif
