/// @file
/// `kovra list` and `kovra vocabulary`: what the tool knows.

#ifndef KOVRA_TOOL_LISTING_HPP
#define KOVRA_TOOL_LISTING_HPP

#include <CLI/CLI.hpp>

namespace Kovra::tool {

void addList(CLI::App& app);
void addVocabulary(CLI::App& app);

}  // namespace Kovra::tool

#endif
