#include "command_line.hpp"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <utility>

#include "suggest.hpp"
#include "verbs.hpp"

namespace Kovra::tool {

namespace {

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

bool isVerb(std::string_view word) {
  std::vector<Verb> const& all = verbs();
  return std::any_of(all.begin(), all.end(), [&](Verb const& verb) { return verb.name == word; });
}

/// The command that the words name, as far as it was understood.
CLI::App const& innermost(CLI::App const& app) {
  CLI::App const* inner = &app;
  while (!inner->get_subcommands().empty()) inner = inner->get_subcommands().front();
  return *inner;
}

std::vector<std::string> optionsOf(CLI::App const& command) {
  std::vector<std::string> names;
  for (CLI::Option const* const option : command.get_options()) {
    for (std::string const& name : option->get_lnames()) names.push_back("--" + name);
  }
  return names;
}

std::vector<std::string> subcommandsOf(CLI::App const& command) {
  std::vector<std::string> names;
  for (CLI::App const* const inner : command.get_subcommands(nullptr)) {
    names.push_back(inner->get_name());
  }
  return names;
}

/// Of an option in front of any verb: a file alone is decoded, and so its options may be meant.
std::string decodeSuggestion(std::string const& word) {
  std::string const verb = "decode";
  CLI::App app;
  ExitStatus status = ExitStatus::good;
  for (Verb const& known : verbs()) {
    if (known.name == verb) known.describe(app, status);
  }
  std::vector<std::string> const meant = nearest(word, optionsOf(app));
  return meant.empty() ? "" : " Did you mean \"kovra " + verb + ' ' + meant.front() + "\"?";
}

std::string unexpectedOption(CLI::App const& app, std::string const& word) {
  CLI::App const& command = innermost(app);
  std::string meant = suggestion(word, optionsOf(command));
  if (meant.empty() && &command == &app) meant = decodeSuggestion(word);
  return "The following argument was not expected: " + word + (meant.empty() ? meant : '.' + meant);
}

}  // namespace

std::vector<std::string> wordsOf(std::vector<std::string_view> const& arguments) {
  std::vector<std::string> words;
  words.reserve(arguments.size());
  for (std::string_view const given : arguments) words.push_back(argument(given));
  if (words.empty() || words.front().empty()) return words;
  if (words.front() == "help") {
    words.erase(words.begin());
    // Of a verb that is none, there is no help: the parse says what may have been meant.
    if (words.empty() || isVerb(words.front())) words.emplace_back("--help");
  } else if (looksLikeFile(words.front())) {
    words.insert(words.begin(), "decode");
  }
  return words;
}

void addVerbs(CLI::App& app, std::string_view called, ExitStatus& status) {
  for (Verb const& verb : verbs()) {
    CLI::App* const command = app.add_subcommand(verb.name, verb.title);
    if (called == verb.name) verb.describe(*command, status);
  }
}

/// A word that nothing takes comes before whatever is missing without it.
std::string complaintOf(CLI::App const& app, CLI::Error const& error) {
  bool const isSurplus = dynamic_cast<CLI::ExtrasError const*>(&error) != nullptr;
  bool const isMissing = dynamic_cast<CLI::RequiredError const*>(&error) != nullptr;
  std::vector<std::string> const rest = app.remaining(true);
  if (rest.empty() || !(isSurplus || isMissing)) return error.what();
  std::string const& first = rest.front();
  std::string const word = first.substr(0, first.find('='));
  if (word.substr(0, 1) == "-") return unexpectedOption(app, word);
  std::vector<std::string> const subcommands = subcommandsOf(innermost(app));
  if (subcommands.empty()) return error.what();
  return "unknown subcommand \"" + word + "\"." + suggestion(word, subcommands);
}

std::string commandName(CLI::App const& app) {
  std::string name = "kovra";
  for (CLI::App const* inner = &app; !inner->get_subcommands().empty();) {
    inner = inner->get_subcommands().front();
    name += ' ' + inner->get_name();
  }
  return name;
}

}  // namespace Kovra::tool
