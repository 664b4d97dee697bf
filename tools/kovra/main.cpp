// The command line tool: one file for each group of subcommands, gathered here.

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <exception>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "command.hpp"
#include "help.hpp"
#include "output.hpp"
#include "suggest.hpp"
#include "verbs.hpp"

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

/// Is it the name of a file? Verbs have neither a slash nor a point, so that more can be added.
bool looksLikeFile(std::string_view word) {
  return word.front() != '-' && word.find_first_of("/.") != word.npos;
}

/// The words of the command line: a file alone is decoded, and help on a verb is what the verb says
/// itself.
std::vector<std::string> wordsOf(int argc, char** argv) {
  std::vector<std::string> words;
  for (int i = 1; i < argc; ++i) words.push_back(argument(argv[i]));
  if (words.empty() || words.front().empty()) return words;
  if (words.front() == "help") {
    words.erase(words.begin());
    words.emplace_back("--help");
  } else if (looksLikeFile(words.front())) {
    words.insert(words.begin(), "decode");
  }
  return words;
}

/// Only the verb that is called gets its options; making those of all takes longer than most calls.
void addVerbs(CLI::App& app, std::string_view called, ExitStatus& status) {
  for (Verb const& verb : verbs()) {
    CLI::App* const command = app.add_subcommand(verb.name, verb.title);
    if (called == verb.name) verb.describe(*command, status);
  }
}

/// The command that the words name, as far as it was understood.
CLI::App const& innermost(CLI::App const& app) {
  CLI::App const* inner = &app;
  while (!inner->get_subcommands().empty()) inner = inner->get_subcommands().front();
  return *inner;
}

std::string nameOf(CLI::App const& app) {
  std::string name = "kovra";
  for (CLI::App const* inner = &app; !inner->get_subcommands().empty();) {
    inner = inner->get_subcommands().front();
    name += ' ' + inner->get_name();
  }
  return name;
}

/// What may stand where somebody mistyped.
std::vector<std::string> possible(CLI::App const& command, bool isOption) {
  std::vector<std::string> names;
  if (isOption) {
    for (CLI::Option const* const option : command.get_options()) {
      for (std::string const& name : option->get_lnames()) names.push_back("--" + name);
    }
  } else {
    for (CLI::App const* const inner : command.get_subcommands(nullptr)) {
      names.push_back(inner->get_name());
    }
  }
  return names;
}

/// A word that nothing takes comes before whatever is missing without it.
std::string complaintOf(CLI::App const& app, CLI::Error const& error) {
  bool const isSurplus = dynamic_cast<CLI::ExtrasError const*>(&error) != nullptr;
  bool const isMissing = dynamic_cast<CLI::RequiredError const*>(&error) != nullptr;
  std::vector<std::string> const rest = app.remaining(true);
  if (rest.empty() || !(isSurplus || isMissing)) return error.what();
  CLI::App const& command = innermost(app);
  std::string const word = rest.front().substr(0, rest.front().find('='));
  bool const isOption = word.front() == '-';
  std::string const meant = suggestion(word, possible(command, isOption));
  bool const isVerb = !isOption && !command.get_subcommands(nullptr).empty();
  if (isVerb) return "unknown subcommand \"" + word + "\"." + meant;
  return error.what() + (meant.empty() ? meant : '.' + meant);
}

/// Calls for help and version end the parse, too; what they ask for is data like any other.
ExitStatus endOfParse(CLI::App const& app, CLI::Error const& error) {
  std::ostringstream text;
  if (app.exit(error, text, text) == 0) {
    print(text.str());
    return ExitStatus::good;
  }
  dropOutput();
  complain("kovra: error: " + complaintOf(app, error));
  complain("Try '" + nameOf(app) + " --help'.");
  return ExitStatus::usage;
}

ExitStatus run(int argc, char** argv) {
  ExitStatus status = ExitStatus::good;
  std::vector<std::string> words = wordsOf(argc, argv);
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
  return static_cast<int>(Kovra::tool::run(argc, argv));
} catch (std::exception const& failure) {
  Kovra::tool::dropOutput();
  std::fprintf(stderr, "kovra: error: %s\n", failure.what());
  return static_cast<int>(Kovra::tool::ExitStatus::failed);
}
