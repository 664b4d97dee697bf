// The command line tool: one file for each group of subcommands, gathered here.

#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdio>
#include <exception>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "command.hpp"
#include "compose.hpp"
#include "decode.hpp"
#include "listing.hpp"
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

/// CLI11 takes "[a,b]" for a list and "++" for the end of a subcommand. Here they can only be names
/// of files, which stay the same files with the current folder in front.
std::string argument(std::string_view given) {
  bool const listLike = given.size() > 1 && given.front() == '[' && given.back() == ']';
  return (listLike || given == "++" ? "./" : "") + std::string(given);
}

/// In the order in which CLI11 wants them: the last one first.
std::vector<std::string> arguments(int argc, char** argv) {
  std::vector<std::string> all;
  for (int i = argc - 1; i > 0; --i) all.push_back(argument(argv[i]));
  return all;
}

/// Calls for help and version end the parse, too; what they ask for is data like any other.
ExitStatus endOfParse(CLI::App const& app, CLI::Error const& error) {
  std::ostringstream text;
  if (app.exit(error, text, text) == 0) {
    print(text.str());
    return ExitStatus::good;
  }
  complain("kovra: error: " + std::string(error.what()));
  std::string command = "kovra";
  for (CLI::App const* inner = &app; !inner->get_subcommands().empty();) {
    inner = inner->get_subcommands().front();
    command += ' ' + inner->get_name();
  }
  complain("Try '" + command + " --help'.");
  return ExitStatus::usage;
}

ExitStatus run(int argc, char** argv) {
  ExitStatus status = ExitStatus::good;
  CLI::App app(description, "kovra");
  app.set_version_flag("--version", "kovra " KOVRA_VERSION, "Print the version and exit");
  app.require_subcommand(1);
  app.footer(footer);
  addDecode(app, status);
  addCompose(app, status);
  addList(app);
  addVocabulary(app);
  try {
    app.parse(arguments(argc, argv));
  } catch (CLI::Error const& error) {
    status = endOfParse(app, error);
  }
  closeOutput();
  return status;
}

}  // namespace

}  // namespace Kovra::tool

int main(int argc, char** argv) try {
  // A reader of standard output that goes away is an error to tell of, not the end on the spot.
  std::signal(SIGPIPE, SIG_IGN);
  return static_cast<int>(Kovra::tool::run(argc, argv));
} catch (std::exception const& failure) {
  std::fprintf(stderr, "kovra: error: %s\n", failure.what());
  return static_cast<int>(Kovra::tool::ExitStatus::failed);
}
