/// @file
/// The option that keeps one input from eating all memory.

#ifndef KOVRA_TOOL_MAX_SIZE_HPP
#define KOVRA_TOOL_MAX_SIZE_HPP

#include <cstddef>
#include <string>

#include "command.hpp"

namespace Kovra::tool {

/// What an input may have unless the command line says another number of bytes.
inline constexpr std::size_t defaultMaxSize = std::size_t{8} << 20U;

/// Adds `--max-size` to `command`; `description` says what is refused.
void addMaxSize(CLI::App& command, std::size_t& size, std::string const& description);

}  // namespace Kovra::tool

#endif
