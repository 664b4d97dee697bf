/// @file
/// What all subcommands share: how they end, and what stops them.

#ifndef KOVRA_TOOL_COMMAND_HPP
#define KOVRA_TOOL_COMMAND_HPP

#include <algorithm>
#include <stdexcept>
#include <string>
#include <utility>

namespace CLI {
class App;
}

namespace Kovra::tool {

/// The exit status of the tool. Of several, the highest counts.
enum class ExitStatus : int {
  good = 0,
  refused = 1,  ///< some input was refused
  usage = 2,    ///< the command line is wrong
  failed = 3,   ///< something could not be read or written
};

inline ExitStatus worse(ExitStatus a, ExitStatus b) {
  return std::max(a, b);
}

/// An input that cannot be used, and why. The tool goes on with the next one.
class InputFailure : public std::runtime_error {
 public:
  InputFailure(ExitStatus status, std::string const& why, std::string path = {})
      : std::runtime_error(why), status_(status), path_(std::move(path)) {}

  ExitStatus status() const { return status_; }
  /// Which one it is, where that is not the one at hand.
  std::string const& path() const { return path_; }

 private:
  ExitStatus status_;
  std::string path_;
};

/// Standard output cannot be written, and why. There is nothing left to be done.
class OutputFailure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace Kovra::tool

#endif
