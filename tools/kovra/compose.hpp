/// @file
/// `kovra compose KIND`: a record as JSON in, the document that the printer accepts out. What all
/// kinds share; each has a source file of its own.

#ifndef KOVRA_TOOL_COMPOSE_HPP
#define KOVRA_TOOL_COMPOSE_HPP

#include <CLI/CLI.hpp>
#include <functional>
#include <kovra.hpp>
#include <memory>
#include <string>
#include <string_view>

#include "command.hpp"
#include "input.hpp"
#include "max_size.hpp"

namespace Kovra::tool {

/// Adds `compose` with all its kinds to `app`; when it has run, `status` says how it ended.
void addCompose(CLI::App& app, ExitStatus& status);

/// A record is made into a document, or not.
using Composer = std::function<Composition(Value const& record)>;

/// Where a record comes from, and how large it may be.
struct Input {
  std::string file{standardInput};
  std::size_t maxSize = defaultMaxSize;
};

/// One kind of document as a subcommand of `compose`. It takes the file of the record, which is
/// read from standard input where none is given.
class Composing {
 public:
  /// `document` is the name of the reply whose record is taken.
  Composing(CLI::App& compose, std::string const& name, std::string const& description,
            std::string document);

  /// The subcommand, for options of the kind.
  CLI::App& command() { return *command_; }

  /// What the subcommand does when it is called: reads the record, makes the document and prints
  /// it. Where that fails nothing is printed and one line tells why.
  void run(ExitStatus& status, Composer compose);

 private:
  CLI::App* command_;
  std::string document_;
  std::shared_ptr<Input> input_;
};

/// Refuses masked secrets: `decode` shows ****** in place of a key, and no printer shall get that
/// for one. False, with the problem, when `value`, which stands at `path`, is or holds one.
bool holdsNoMask(Value const& value, std::string const& path, Problem& problem);

/// The names in lines that are not too long for the help.
std::string listed(std::vector<std::string> const& names);

// The kinds.

void addComposeCapabilities(CLI::App& compose, ExitStatus& status);
void addComposeConfiguration(CLI::App& compose, ExitStatus& status);
void addComposeMedia(CLI::App& compose, ExitStatus& status);
void addComposePrinterId(CLI::App& compose, ExitStatus& status);
void addComposeSecure(CLI::App& compose, ExitStatus& status);
void addComposeDeviceControl(CLI::App& compose);

}  // namespace Kovra::tool

#endif
