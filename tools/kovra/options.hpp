/// @file
/// What verbs say of their options and arguments. The parser of command lines behind it is one
/// large header, which costs every source that calls it more than all the rest of it.

#ifndef KOVRA_TOOL_OPTIONS_HPP
#define KOVRA_TOOL_OPTIONS_HPP

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "command.hpp"

namespace CLI {
class Option;
}

namespace Kovra::tool {

using Words = std::vector<std::string>;

/// What an option may be.
struct Check {
  /// Why a value is none; empty for one that is.
  std::function<std::string(std::string const&)> complaint;
  Words values;  ///< that completions offer; none where there are too many
};

/// An option or argument that was added, of which more can be said.
class Option {
 public:
  explicit Option(CLI::Option* option) : option_(option) {}

  /// What help shows behind its name; " ": nothing.
  Option const& shows(std::string const& value) const;
  Option const& isRequired() const;
  /// One of these words.
  Option const& isOneOf(Words const& words) const;
  Option const& isWithin(std::uint64_t least, std::uint64_t most) const;
  Option const& isFolder() const;
  Option const& passes(Check const& check) const;
  /// One value each time that it is given; otherwise all words that follow are its values.
  Option const& takesOne() const;
  Option const& takesJust(int number) const;
  /// Several values are one word, with this between them.
  Option const& isSplitAt(char separator) const;
  Option const& excludes(Option other) const;
  Option const& needs(Option other) const;

 private:
  CLI::Option* option_;
};

// Options begin with dashes, and arguments do not. Each fills its value when the command line has
// it.

Option addOption(CLI::App& command, std::string const& names, std::string& value,
                 std::string const& help);
Option addOption(CLI::App& command, std::string const& names, Words& values,
                 std::string const& help);
Option addOption(CLI::App& command, std::string const& names, unsigned& value,
                 std::string const& help);
Option addOption(CLI::App& command, std::string const& names, std::uint64_t& value,
                 std::string const& help);
/// One whose value is taken by a function.
Option addOption(CLI::App& command, std::string const& names,
                 std::function<void(std::string const&)> const& take, std::string const& help);

Option addFlag(CLI::App& command, std::string const& names, bool& isSet, std::string const& help);
Option addFlag(CLI::App& command, std::string const& names, std::function<void()> const& act,
               std::string const& help);

/// One that was added before.
Option optionOf(CLI::App& command, std::string const& name);

/// What help says below the options.
void addFooter(CLI::App& command, std::string const& text);

/// What the command does once its command line has been read.
void addWork(CLI::App& command, std::function<void()> const& work);

/// Ends a work whose options do not go together, as the parser ends a command line.
[[noreturn]] void refuseCommandLine(std::string const& why);

}  // namespace Kovra::tool

#endif
