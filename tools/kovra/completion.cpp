#include "completion.hpp"

#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "compose.hpp"
#include "options.hpp"
#include "output.hpp"
#include "verbs.hpp"

namespace Kovra::tool {

namespace {

/// What may stand in one place: words, or files where there are none.
struct Offer {
  Words words;
  bool isFolder = false;
};

struct OptionOffer {
  Words names;  ///< with their dashes
  std::string title;
  bool hasValue = false;
  Offer value;
};

/// A command and what may stand behind it.
struct Command {
  std::string path;  ///< its words, with blanks between them; empty for the tool itself
  Words commands;
  Words titles;  ///< of the commands
  std::vector<OptionOffer> options;
  Offer argument;
  bool hasArgument = false;
};

std::string firstLine(std::string const& text) {
  return text.substr(0, text.find('\n'));
}

/// The words of a set as CLI11 describes it, "{table,json}"; none of anything else.
Words wordsIn(std::string const& description) {
  Words words;
  std::size_t const begin = description.find('{');
  std::size_t const end = description.find('}');
  if (begin == description.npos || end == description.npos) return words;
  std::string word;
  for (char const letter : description.substr(begin + 1, end - begin - 1) + ',') {
    if (letter == ',') words.push_back(std::exchange(word, {}));
    if (letter != ',') word += letter;
  }
  return words;
}

Offer offerOf(CLI::Option const& option) {
  std::string const type = option.get_type_name();
  return {wordsIn(type), type.find("DIR") != type.npos};
}

OptionOffer offeredOption(CLI::Option const& option) {
  OptionOffer offered;
  for (std::string const& name : option.get_snames()) offered.names.push_back('-' + name);
  for (std::string const& name : option.get_lnames()) offered.names.push_back("--" + name);
  offered.title = firstLine(option.get_description());
  offered.hasValue = option.get_items_expected_max() > 0;
  offered.value = offerOf(option);
  return offered;
}

void addOptions(CLI::App const& app, Command& command) {
  for (CLI::Option const* const option : app.get_options()) {
    if (option->nonpositional()) {
      command.options.push_back(offeredOption(*option));
    } else {
      command.hasArgument = true;
      command.argument = offerOf(*option);
    }
  }
}

void collect(CLI::App const& app, std::string const& path, std::vector<Command>& commands) {
  Command command;
  command.path = path;
  addOptions(app, command);
  for (CLI::App const* const inner : app.get_subcommands(nullptr)) {
    command.commands.push_back(inner->get_name());
    command.titles.push_back(firstLine(inner->get_description()));
  }
  commands.push_back(command);
  for (CLI::App const* const inner : app.get_subcommands(nullptr)) {
    collect(*inner, path + (path.empty() ? "" : " ") + inner->get_name(), commands);
  }
}

/// All commands with their options, the tool itself first.
std::vector<Command> allCommands() {
  CLI::App app("", "kovra");
  app.set_version_flag("--version", "", "Print the version and exit");
  ExitStatus status = ExitStatus::good;
  composeInFull();
  for (Verb const& verb : verbs()) {
    verb.describe(*app.add_subcommand(verb.name, verb.title), status);
  }
  std::vector<Command> commands;
  collect(app, "", commands);
  return commands;
}

/// In single quotes, as all three shells take it.
std::string inQuotes(std::string_view text, bool isFish = false) {
  std::string out = "'";
  for (char const letter : text) {
    if (letter == '\'') {
      out += isFish ? "\\'" : "'\\''";
    } else {
      out += letter;
    }
  }
  return out + '\'';
}

std::string joined(Words const& words, char const* between) {
  std::string all;
  for (std::string const& word : words) all += (all.empty() ? "" : between) + word;
  return all;
}

/// What is offered in words, "@files" or "@folders".
std::string listOf(Offer const& offer) {
  return offer.isFolder ? "@folders" : offer.words.empty() ? "@files" : joined(offer.words, " ");
}

// Bash and zsh get tables, from the words of a command to what may follow.

/// A case for each command: what may stand behind it, and behind its options.
std::string casesOf(std::vector<Command> const& commands, bool forOptions) {
  std::string cases;
  for (Command const& command : commands) {
    for (OptionOffer const& option : command.options) {
      if (!forOptions || !option.hasValue) continue;
      for (std::string const& name : option.names) {
        cases += "    " + inQuotes(command.path + ' ' + name) + ") echo " +
                 inQuotes(listOf(option.value)) + ";;\n";
      }
    }
    if (forOptions) continue;
    Words words = command.commands;
    for (OptionOffer const& option : command.options) {
      words.insert(words.end(), option.names.begin(), option.names.end());
    }
    if (command.hasArgument) words.push_back(listOf(command.argument));
    cases += "    " + inQuotes(command.path) + ") echo " + inQuotes(joined(words, " ")) + ";;\n";
  }
  return cases;
}

constexpr char shared[] = R"sh(
# The command that the words before the cursor name, as far as there is one.
_kovra_command() {
  local known='' next word
  for word in "$@"; do
    next="${known:+$known }$word"
    [ -n "$(_kovra_behind "$next")" ] && known=$next
  done
  printf '%s' "$known"
}
)sh";

constexpr char bash[] = R"sh(
_kovra() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]}
  local begin='' path offered
  path=$(_kovra_command "${COMP_WORDS[@]:1:COMP_CWORD-1}")
  # The words of --option=value stand in three places.
  [[ $current == = ]] && current=''
  [[ $previous == = ]] && previous=${COMP_WORDS[COMP_CWORD-2]}
  offered=$(_kovra_value "$path $previous")
  [[ -n $offered ]] || offered=$(_kovra_behind "$path")
  # Lists of words, separated by commas.
  [[ $current == *,* && $offered != *@* ]] && begin=${current%,*},
  COMPREPLY=()
  local word
  for word in $offered; do
    # Options are offered behind a dash, and nothing else is.
    [[ ${current:0:1} == - ]] && [[ $word != -* ]] && continue
    case $word in
      -*) [[ $current == -* && $word == "$current"* ]] && COMPREPLY+=("$word") ;;
      @files) mapfile -t -O ${#COMPREPLY[@]} COMPREPLY < <(compgen -f -- "$current") ;;
      @folders) mapfile -t -O ${#COMPREPLY[@]} COMPREPLY < <(compgen -d -- "$current") ;;
      *) [[ $begin$word == "$current"* ]] && COMPREPLY+=("$begin$word") ;;
    esac
  done
  compopt -o filenames 2>/dev/null
}
complete -F _kovra kovra
)sh";

constexpr char zsh[] = R"sh(
_kovra() {
  local path_ offered word current=${words[CURRENT]}
  path_=$(_kovra_command "${(@)words[2,CURRENT-1]}")
  offered=$(_kovra_value "$path_ ${words[CURRENT-1]}")
  [[ -n $offered ]] || offered=$(_kovra_behind "$path_")
  for word in ${=offered}; do
    # Options are offered behind a dash, and nothing else is.
    [[ $word[1] == - && $current[1] != - || $word[1] != - && $current[1] == - ]] && continue
    case $word in
      @files) _files ;;
      @folders) _files -/ ;;
      *) compadd -- "$word" ;;
    esac
  done
}
# Found in $fpath it is called at once; sourced it is made known.
if [[ $funcstack[1] == _kovra ]]; then
  _kovra "$@"
else
  compdef _kovra kovra
fi
)sh";

std::string functionsOf(std::vector<Command> const& commands) {
  return "# What may follow the words of a command.\n_kovra_behind() {\n  case $1 in\n" +
         casesOf(commands, false) + "  esac\n}\n\n" +
         "# What an option takes.\n_kovra_value() {\n  case $1 in\n" + casesOf(commands, true) +
         "  esac\n}\n" + shared;
}

// Fish gets a line for each thing that is offered.

/// The condition under which a line of a command counts.
std::string conditionOf(std::string const& path) {
  return " -n " + inQuotes("test (_kovra_command) = \"" + path + "\"");
}

std::string fishOption(Command const& command, OptionOffer const& option) {
  std::string line = "complete -c kovra" + conditionOf(command.path);
  for (std::string const& name : option.names) {
    bool const isLong = name[1] == '-';
    line += (isLong ? " -l " : " -s ") + name.substr(isLong ? 2 : 1);
  }
  if (option.hasValue && option.value.isFolder) line += " -x -a '(__fish_complete_directories)'";
  if (option.hasValue && option.value.words.empty() && !option.value.isFolder) line += " -r -F";
  if (!option.value.words.empty()) {
    line += " -x -a " + inQuotes(joined(option.value.words, " "), true);
  }
  return line + " -d " + inQuotes(option.title, true) + '\n';
}

std::string fishCommand(Command const& command) {
  std::string lines;
  for (OptionOffer const& option : command.options) lines += fishOption(command, option);
  for (std::size_t i = 0; i < command.commands.size(); ++i) {
    lines += "complete -c kovra" + conditionOf(command.path) + " -f -a " +
             inQuotes(command.commands[i]) + " -d " + inQuotes(command.titles[i], true) + '\n';
  }
  if (!command.hasArgument) return lines;
  Words const& words = command.argument.words;
  std::string const offered =
      words.empty() ? " -F" : " -f -a " + inQuotes(joined(words, " "), true);
  return lines + "complete -c kovra" + conditionOf(command.path) + offered + '\n';
}

std::string fishOf(std::vector<Command> const& commands) {
  std::string text =
      "# The command that the words before the cursor name.\n"
      "function _kovra_command\n  set -l path\n"
      "  for word in (commandline -opc)[2..-1]\n"
      "    set -l next (string join -- ' ' $path $word)\n"
      "    contains -- $next";
  for (Command const& command : commands) {
    if (!command.path.empty()) text += " \\\n      " + inQuotes(command.path);
  }
  text += "\n    and set path $next\n  end\n  echo \"$path\"\nend\n\ncomplete -c kovra -f\n";
  for (Command const& command : commands) text += fishCommand(command);
  return text;
}

std::string completionFor(std::string const& shell) {
  std::vector<Command> const commands = allCommands();
  if (shell == "fish") return fishOf(commands);
  return (shell == "zsh" ? "#compdef kovra\n\n" : "") + functionsOf(commands) +
         (shell == "zsh" ? zsh : bash);
}

}  // namespace

void addCompletion(CLI::App& command, ExitStatus&) {
  auto const shell = std::make_shared<std::string>();
  addOption(command, "SHELL", *shell, "bash, zsh or fish")
      .shows(" ")
      .isRequired()
      .isOneOf({"bash", "zsh", "fish"});
  addOutput(command);
  addFooter(command,
            R"(Prints what a shell has to know to complete the words of a command line: verbs,
options, the words that they take, names of messages, and files.

Examples:
  source <(kovra completion bash)
  kovra completion zsh -o ~/.zfunc/_kovra
  kovra completion fish -o ~/.config/fish/completions/kovra.fish

Exit status:
  0  the completions were printed
  2  the command line is wrong
  3  the output could not be written)");
  addWork(command, [shell] { print(completionFor(*shell)); });
}

}  // namespace Kovra::tool
