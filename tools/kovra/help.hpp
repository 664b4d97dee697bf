/// @file
/// How the help of commands looks.

#ifndef KOVRA_TOOL_HELP_HPP
#define KOVRA_TOOL_HELP_HPP

#include <CLI/CLI.hpp>
#include <string>

namespace Kovra::tool {

/// Wraps what options and subcommands do, so that lines fit on a terminal, and into 80 columns
/// elsewhere. Line breaks in the descriptions count as blanks.
class HelpFormatter : public CLI::Formatter {
 public:
  HelpFormatter();

  std::string make_option(CLI::Option const* option, bool isPositional) const override;
  std::string make_subcommand(CLI::App const* command) const override;

 private:
  std::string line(std::string const& name, std::string const& description) const;
};

}  // namespace Kovra::tool

#endif
