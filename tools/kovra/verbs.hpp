/// @file
/// What the tool can do: one verb a file, and all of them in one list.

#ifndef KOVRA_TOOL_VERBS_HPP
#define KOVRA_TOOL_VERBS_HPP

#include <vector>

#include "command.hpp"

namespace Kovra::tool {

/// A verb of the command line. Its options are made only when it is called.
struct Verb {
  char const* name;
  char const* title;
  /// Adds the options and what the verb does; when it has run, the status says how it ended.
  void (*describe)(CLI::App& command, ExitStatus& status);
};

/// In the order of the help.
std::vector<Verb> const& verbs();

}  // namespace Kovra::tool

#endif
