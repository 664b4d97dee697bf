// The command line tool: one file for each group of subcommands, gathered here.

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <exception>
#include <memory>
#include <new>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "command_line.hpp"
#include "help.hpp"
#include "output.hpp"

namespace Kovra::tool {

namespace {

constexpr char description[] = "Shows what the replies of an ID-card printer say";

constexpr char footer[] = R"('kovra SUBCOMMAND --help' tells more.

Examples:
  kovra decode reply.xml                      a table for people
  kovra decode --format json reply.xml        JSON for programs
  printer-query status | kovra decode         from standard input

Data goes to standard output, messages to standard error.

Exit status:
  0  all went well
  1  some input was refused
  2  the command line is wrong
  3  some file could not be read, or standard output not be written)";

/// Calls for help and version end the parse, too; what they ask for is data like any other.
ExitStatus endOfParse(CLI::App const& app, CLI::Error const& error) {
  std::ostringstream text;
  if (app.exit(error, text, text) == 0) {
    print(text.str());
    return ExitStatus::good;
  }
  dropOutput();
  complain("kovra: error: " + complaintOf(app, error));
  complain("Try '" + commandName(app) + " --help'.");
  return ExitStatus::usage;
}

ExitStatus run(std::vector<std::string_view> const& arguments) {
  ExitStatus status = ExitStatus::good;
  std::vector<std::string> words = wordsOf(arguments);
  CLI::App app(description, "kovra");
  app.formatter(std::make_shared<HelpFormatter>());
  app.set_version_flag("--version", "kovra " KOVRA_VERSION, "Print the version and exit");
  app.require_subcommand(1);
  app.footer(footer);
  addVerbs(app, words.empty() ? "" : words.front(), status);
  std::reverse(words.begin(), words.end());  // CLI11 wants the last one first
  try {
    app.parse(std::move(words));
  } catch (CLI::Error const& error) {
    status = endOfParse(app, error);
  }
  closeOutput();
  return status;
}

}  // namespace

}  // namespace Kovra::tool

int main(int argc, char** argv) try {
  Kovra::tool::expectBrokenPipes();
  return static_cast<int>(Kovra::tool::run({argv + std::min(argc, 1), argv + argc}));
} catch (std::exception const& failure) {
  Kovra::tool::dropOutput();
  bool const isMemory = dynamic_cast<std::bad_alloc const*>(&failure) != nullptr;
  std::fprintf(stderr, "kovra: error: %s\n", isMemory ? "not enough memory" : failure.what());
  return static_cast<int>(Kovra::tool::ExitStatus::failed);
}
