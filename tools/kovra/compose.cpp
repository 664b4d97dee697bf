#include "compose.hpp"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstddef>
#include <kovra.hpp>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "edit.hpp"
#include "findings.hpp"
#include "input.hpp"
#include "max_size.hpp"
#include "options.hpp"
#include "output.hpp"
#include "paths.hpp"
#include "preview.hpp"
#include "record.hpp"
#include "secret.hpp"
#include "terminal.hpp"
#include "written.hpp"

namespace Kovra::tool {

namespace {

// Values from the command line.

Value listOf(std::vector<std::string> const& texts) {
  Value list = Value::list();
  for (std::string const& text : texts) list.append(text);
  return list;
}

/// An object that options add members to.
class Object {
 public:
  /// What adds the member `name`.
  auto adder(std::string const& name) const {
    return [value = value_, name](Value member) { value->add(name, std::move(member)); };
  }
  Value const& value() const { return *value_; }

 private:
  std::shared_ptr<Value> value_ = std::make_shared<Value>(Value::object());
};

/// The names in lines that are not too long for the help.
std::string listed(std::vector<std::string> const& names) {
  constexpr std::size_t width = 56;
  std::string list;
  std::size_t column = 0;
  for (std::string const& name : names) {
    bool const fits = column + name.size() + sizeof ", " <= width;
    if (!list.empty()) list += fits ? ", " : ",\n";
    column = (fits ? column : 0) + name.size() + sizeof ", " - 1;
    list += name;
  }
  return list;
}

// Options.

/// "--zero-missing" of "zero_missing".
std::string optionFor(Choice const& choice) {
  std::string name = choice.name();
  std::replace(name.begin(), name.end(), '_', '-');
  return "--" + name;
}

Option addNumberChoice(CLI::App& app, Choice const& choice, Object const& choices) {
  auto const add = choices.adder(choice.name());
  CLI::Option* const option = app.add_option_function<int>(
      optionFor(choice), [add](int given) { add(given); }, choice.title());
  std::vector<long> allowed;
  for (long number = choice.least(); choice.most() != 0 && number <= choice.most(); ++number) {
    allowed.push_back(number);
  }
  if (!allowed.empty()) option->check(CLI::IsMember(allowed));
  return Option(option);
}

Option addWordChoice(CLI::App& app, Choice const& choice, Object const& choices) {
  auto const add = choices.adder(choice.name());
  return addOption(
             app, optionFor(choice), [add](std::string const& given) { add(given); },
             choice.title())
      .isOneOf(choice.words());
}

Option addWordsChoice(CLI::App& app, Choice const& choice, Object const& choices) {
  auto const add = choices.adder(choice.name());
  auto* const option = app.add_option_function<std::vector<std::string>>(
      optionFor(choice), [add](std::vector<std::string> const& given) { add(listOf(given)); },
      choice.title() + ", separated by commas:\n" + listed(choice.words()));
  // What follows is the record.
  return Option(option).isSplitAt(',').takesOne().isOneOf(choice.words());
}

void addChoice(CLI::App& app, Choice const& choice, Object const& choices) {
  auto const describe = [&](Option option) {
    option.shows(choice.example());
    bool const followsFromChanges = choice.form() == Choice::Form::words;
    if (choice.isRequired() && !followsFromChanges) option.isRequired();
  };
  switch (choice.form()) {
    case Choice::Form::flag:
      addFlag(
          app, optionFor(choice), [add = choices.adder(choice.name())] { add(true); },
          choice.title());
      break;
    case Choice::Form::word:
      return describe(addWordChoice(app, choice, choices));
    case Choice::Form::words:
      return describe(addWordsChoice(app, choice, choices));
    case Choice::Form::number:
      return describe(addNumberChoice(app, choice, choices));
  }
}

/// What changes are made of may be chosen or follow from them; without any it has to be chosen.
void requireWords(Message const& message, Value const& choices) {
  for (Choice const& choice : message.choices()) {
    bool const isMissing = choice.form() == Choice::Form::words && choice.isRequired() &&
                           choices.find(choice.name()) == nullptr;
    if (isMissing) throw CLI::RequiredError(optionFor(choice));
  }
}

/// A command's member as an option of its own.
void addMember(CLI::App& app, MemberDescription const& member, Object const& command) {
  std::string const option = "--" + member.name();
  auto const add = command.adder(member.name());
  switch (member.kind()) {
    case Value::Kind::integer:
      app.add_option_function<long>(
             option, [add](long given) { add(given); }, member.title())
          ->option_text("NUMBER");
      return;
    case Value::Kind::real:
      app.add_option_function<double>(
             option, [add](double given) { add(given); }, member.title())
          ->option_text("NUMBER");
      return;
    default:
      addOption(
          app, option, [add](std::string const& given) { add(given); }, member.title())
          .shows("WORD");
  }
}

// Records.

using Sentences = std::vector<std::string>;

/// Where something stands in the JSON.
std::string pathIn(Record const& record, std::string const& path) {
  return path.empty() ? record.path : memberPath(record.path, path);
}

/// What is wrong with the record itself.
Sentences sentencesOf(std::vector<Problem> const& problems, Record const& record) {
  Sentences wrong;
  for (Problem const& problem : problems) {
    wrong.push_back(sentence(pathIn(record, problem.path()), problem.found(), problem.expected()));
  }
  return wrong;
}

/// What the document would say in other words than the record.
Sentences sentencesOf(std::vector<Misnomer> const& misnomers, Record const& record) {
  Sentences wrong;
  for (Misnomer const& misnomer : misnomers) {
    wrong.push_back(sentence(pathIn(record, misnomer.path), misnomer.found, misnomer.expected));
  }
  return wrong;
}

/// In place of the document.
void printPreview(std::string const& changes) {
  print(changes);
  if (changes.empty()) complain("kovra: nothing would change");
}

ExitStatus refuse(ExitStatus status, std::string const& file, Place place, std::string const& why) {
  complain(messagePrefix(file, place, "error") + why);
  return status;
}

/// Where a record comes from, how large it may be, and what is changed in it.
struct Input {
  std::string file{standardInput};
  std::string reply;  ///< of which the record is taken; empty: the file has the record
  std::size_t maxSize = defaultMaxSize;
  std::vector<std::string> changes;      ///< "path=value"
  std::vector<std::string> fileChanges;  ///< "path=FILE"
  bool isDryRun = false;                 ///< only tells what would change

  std::string const& name() const { return reply.empty() ? file : reply; }
  bool changesAnything() const { return !changes.empty() || !fileChanges.empty(); }
};

/// The record of a reply as the printer sent it.
Record readReply(std::string_view text, std::string const& name) {
  Decoding const decoding = decode(text, name);
  if (decoding) return {decoding.readings().front().record(), ""};
  Refusal const refusal = decoding.refusal();
  throw RecordFailure(placeOf(refusal), refusal.message());
}

/// The text itself is given back at once.
Record read(Input const& input, std::string const& name) {
  InputReader reader(input.maxSize);
  std::string_view const text = reader.read(input.name());
  return input.reply.empty() ? recordFrom(text, name) : readReply(text, name);
}

/// It ends with the first that reads it.
void requireOneStandardInput(Input const& input) {
  auto const isIt = [](std::string const& change) {
    return change.substr(std::min(change.find('='), change.size())) == "=-";
  };
  auto const uses = std::count_if(input.fileChanges.begin(), input.fileChanges.end(), isIt) +
                    (input.name() == standardInput);
  if (uses > 1) throw EditFailure("only one of the files can be standard input");
}

std::vector<Edit> editsOf(Input const& input, Message const& message) {
  requireOneStandardInput(input);
  std::vector<Edit> edits;
  for (std::string const& change : input.changes) edits.push_back(editOf(message, change));
  for (std::string const& change : input.fileChanges) edits.push_back(editOfFile(message, change));
  return edits;
}

/// What there is to choose where changes are made, or what is wrong with them.
struct Changed {
  Value choices;
  std::vector<Problem> problems = {};
};

Changed change(Message const& message, Value const& before, Record const& record,
               std::vector<Edit> const& edits, Value const& choices) {
  if (edits.empty()) return {choices};
  requireWithinBounds(edits, before, record.value);
  std::vector<Problem> problems = problemsOfAll(message, record.value, choices);
  if (!problems.empty()) return {choices, std::move(problems)};
  requireWritten(message, record.value, edits, choices);
  return {choicesOfChanges(message, before, record.value, choices)};
}

/// What changes would lose: a member may follow from others when the document is written. Of
/// members that nobody changed there is a warning.
Sentences lost(Input const& input, Message const& message, Record const& record,
               std::vector<Edit> const& edits, std::string const& document) {
  Sentences wrong;
  Sentences others;
  for (Misnomer const& other : contradictions(message, record.value, document)) {
    bool const isEdited = std::any_of(edits.begin(), edits.end(),
                                      [&](Edit const& edit) { return edit.path == other.path; });
    (isEdited ? wrong : others)
        .push_back(pathIn(record, other.path) + ": the document says " + other.found + ", not " +
                   other.expected);
  }
  if (!wrong.empty()) return wrong;
  for (std::string const& said : others) {
    complain(messagePrefix(input.name(), {}, "warning") + said);
  }
  return {};
}

/// Prints the document, or what would change; or says why there is none.
Sentences composeChanged(Input const& input, Message const& message, Value const& choices) {
  std::vector<Edit> const edits = editsOf(input, message);
  Record record = read(input, message.recordOf());
  Value const before = record.value;
  apply(edits, record.value);
  Changed const changed = change(message, before, record, edits, choices);
  if (!changed.problems.empty()) return sentencesOf(changed.problems, record);
  Composition const composition = compose(message.name(), record.value, changed.choices);
  if (!composition) return sentencesOf(composition.problems(), record);
  Sentences wrong = sentencesOf(misnomers(message, record.value, changed.choices), record);
  if (wrong.empty() && !edits.empty()) {
    wrong = lost(input, message, record, edits, composition.text());
  }
  if (!wrong.empty()) return wrong;
  if (input.isDryRun) {
    printPreview(previewOf(message, before, record.value));
  } else {
    print(composition.text());
  }
  return {};
}

/// Whatever fails here is told with the name of the file: it is the one that somebody has to mend.
/// Then there is no document, and one that is there already stays.
ExitStatus composeFrom(Input const& input, Message const& message, Value const& choices) try {
  auto status = ExitStatus::good;
  for (std::string const& wrong : composeChanged(input, message, choices)) {
    status = refuse(ExitStatus::refused, input.name(), {}, wrong);
  }
  if (status != ExitStatus::good) dropOutput();
  return status;
} catch (RecordFailure const& failure) {
  dropOutput();
  return refuse(ExitStatus::refused, input.name(), failure.place(), failure.why());
} catch (InputFailure const& failure) {
  dropOutput();
  std::string const& file = failure.path().empty() ? input.name() : failure.path();
  return refuse(failure.status(), file, {}, failure.what());
} catch (EditFailure const& failure) {
  refuseCommandLine(failure.what());
} catch (std::bad_alloc const&) {
  dropOutput();
  return refuse(ExitStatus::refused, input.name(), {}, "not enough memory");
}

void addChanges(CLI::App& app, Input& input) {
  addOption(app, "--from", input.reply,
            "Take the record from this reply of the printer; '-':\n"
            "standard input")
      .shows("REPLY");
  addOption(app, "--set", input.changes,
            "Change a member: wireless.ssid=NewNet; may be given\n"
            "again. What is not chosen otherwise is made of the\n"
            "sections that change")
      .shows("PATH=VALUE")
      .takesOne();
  addOption(app, "--set-file", input.fileChanges,
            "The same with what a file holds ('-': standard input),\n"
            "for secrets, which every list of processes would show")
      .shows("PATH=FILE")
      .takesOne();
  addFlag(app, "--dry-run", input.isDryRun,
          "Print what would change, a line for each member, as\n"
          "'kovra diff' does, and no document");
}

/// The record as a file, and the choices as options.
void addRecord(CLI::App& app, Message const& message, ExitStatus& status) {
  auto const input = std::make_shared<Input>();
  Option const record = addOption(app, "RECORD", input->file,
                                  "The record as JSON: what 'kovra decode --format json'\n"
                                  "prints, or its \"record\" alone (default: '-', standard\n"
                                  "input)")
                            .shows(" ");
  addChanges(app, *input);
  record.excludes(optionOf(app, "--from"));
  addMaxSize(app, input->maxSize, "Refuse a larger record");
  Object const choices;
  for (Choice const& choice : message.choices()) addChoice(app, choice, choices);
  addOutput(app);
  addColor(app);
  optionOf(app, "--dry-run").excludes(optionOf(app, "--output"));
  addWork(app, [&status, input, message, choices] {
    if (!input->changesAnything()) requireWords(message, choices.value());
    status = composeFrom(*input, message, choices.value());
  });
}

/// The last problem ends the command line like any other mistake in it.
[[noreturn]] void refuseCommand(std::vector<Problem> const& problems) {
  for (std::size_t i = 0; i + 1 < problems.size(); ++i) {
    complain("kovra: error: --" + problems[i].message());
  }
  refuseCommandLine("--" + problems.back().message());
}

/// The members as options: what does not fit is a mistake on the command line.
void addCommand(CLI::App& app, Message const& message) {
  Object const command;
  for (MemberDescription const& member : message.members()) addMember(app, member, command);
  addOutput(app);
  addWork(app, [message, command] {
    Composition const composition = compose(message.name(), command.value());
    if (!composition) refuseCommand(composition.problems());
    print(composition.text());
  });
}

/// The command whose words are those before the last one of `words`; it is made where there is
/// none.
CLI::App& commandAround(CLI::App& compose, std::string const& words, Message const& message) {
  std::size_t const blank = words.rfind(' ');
  if (blank == words.npos) return compose;
  std::string const group = words.substr(0, blank);
  auto const isIt = [&](CLI::App* app) { return app->get_name() == group; };
  std::vector<CLI::App*> const known = compose.get_subcommands(isIt);
  if (!known.empty()) return *known.front();
  CLI::App* const app = compose.add_subcommand(group, message.groupPurpose());
  app->require_subcommand(1);
  app->footer(message.groupHelp());
  return *app;
}

bool isInFull = false;

/// Its options are made when it is called.
void addMessage(CLI::App& compose, Message const& message, ExitStatus& status) {
  std::string const words = message.command();
  CLI::App* const app = commandAround(compose, words, message)
                            .add_subcommand(words.substr(words.rfind(' ') + 1), message.purpose());
  auto const describe = [app, message, &status](std::size_t) {
    app->footer(message.help());
    if (message.recordOf().empty()) {
      addCommand(*app, message);
    } else {
      addRecord(*app, message, status);
    }
  };
  if (isInFull) return describe(0);
  app->preparse_callback(describe);
}

}  // namespace

void composeInFull() {
  isInFull = true;
}

void addCompose(CLI::App& compose, ExitStatus& status) {
  compose.require_subcommand(1);
  compose.footer(
      R"(A keyword is its code, its word, or the object that 'kovra decode' shows. A
member that a chosen section is made of has to be in the record, unless
--zero-missing is given; then, and in all other documents, it is zero. Where the
record does not fit nothing is written; a line for each mistake says what was
found where, and what would be right, and repeats no value, which might be a
secret.

A record may hold lists and objects of at most 256 entries, in one another at
most 32 levels deep, names of at most 256 bytes, and at most 16384 values in
all.

A change is refused where the document does not have the member, and where the
value of a setting is beyond the bounds that the record gives it.

With --dry-run there is no document, but a line for each member that would
change: "~ wireless.channel: 6 -> 11". Whatever would be refused is refused.

Examples:
  kovra compose configuration --from configuration.xml \
      --set wireless.ssid=NewNet
  kovra compose configuration record.json --sections ethernet,wireless
  kovra compose device-control fan --state on

Exit status:
  0  the document, or what would change, was written to standard output
  1  the record was refused
  2  the command line is wrong
  3  the file could not be read, or standard output not be written)");
  for (Message const& message : messages()) {
    if (message.isWritten()) addMessage(compose, message, status);
  }
}

}  // namespace Kovra::tool
