#include "compose.hpp"

#include <algorithm>
#include <cstddef>
#include <kovra.hpp>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "input.hpp"
#include "max_size.hpp"
#include "output.hpp"
#include "record.hpp"
#include "secret.hpp"

namespace Kovra::tool {

namespace {

// Values from the command line.

Value textValue(std::string text) {
  Value value;
  value.kind = Value::Kind::text;
  value.text = std::move(text);
  return value;
}

Value flagValue(bool flag) {
  Value value;
  value.kind = Value::Kind::flag;
  value.flag = flag;
  return value;
}

Value numberValue(long number) {
  Value value;
  value.kind = Value::Kind::integer;
  value.integer = number;
  return value;
}

Value realValue(double number) {
  Value value;
  value.kind = Value::Kind::real;
  value.real = number;
  return value;
}

Value listValue(std::vector<std::string> const& texts) {
  Value value;
  value.kind = Value::Kind::list;
  for (std::string const& text : texts) value.items.push_back(textValue(text));
  return value;
}

/// An object that options add members to.
class Object {
 public:
  Object() { value_->kind = Value::Kind::record; }

  /// What adds the member `name`.
  auto adder(std::string const& name) const {
    return [value = value_, name](Value member) {
      Member& added = value->members.emplace_back();
      added.name = name;
      added.value = std::move(member);
    };
  }
  Value const& value() const { return *value_; }

 private:
  std::shared_ptr<Value> value_ = std::make_shared<Value>();
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

CLI::Option* addNumberChoice(CLI::App& app, Choice const& choice, Object const& choices) {
  auto const add = choices.adder(choice.name());
  CLI::Option* const option = app.add_option_function<int>(
      "--" + choice.name(), [add](int given) { add(numberValue(given)); }, choice.title());
  std::vector<long> allowed;
  for (long number = choice.least(); choice.most() != 0 && number <= choice.most(); ++number) {
    allowed.push_back(number);
  }
  if (!allowed.empty()) option->check(CLI::IsMember(allowed));
  return option;
}

CLI::Option* addWordChoice(CLI::App& app, Choice const& choice, Object const& choices) {
  auto const add = choices.adder(choice.name());
  return app
      .add_option_function<std::string>(
          "--" + choice.name(), [add](std::string const& given) { add(textValue(given)); },
          choice.title())
      ->check(CLI::IsMember(choice.words()));
}

CLI::Option* addWordsChoice(CLI::App& app, Choice const& choice, Object const& choices) {
  auto const add = choices.adder(choice.name());
  return app
      .add_option_function<std::vector<std::string>>(
          "--" + choice.name(),
          [add](std::vector<std::string> const& given) { add(listValue(given)); },
          choice.title() + ", separated by commas:\n" + listed(choice.words()))
      ->delimiter(',')
      ->allow_extra_args(false)  // what follows is the record
      ->check(CLI::IsMember(choice.words()));
}

void addChoice(CLI::App& app, Choice const& choice, Object const& choices) {
  CLI::Option* option = nullptr;
  switch (choice.form()) {
    case Choice::Form::flag: {
      auto const add = choices.adder(choice.name());
      app.add_flag_callback(
          "--" + choice.name(), [add] { add(flagValue(true)); }, choice.title());
      return;
    }
    case Choice::Form::word:
      option = addWordChoice(app, choice, choices);
      break;
    case Choice::Form::words:
      option = addWordsChoice(app, choice, choices);
      break;
    case Choice::Form::number:
      option = addNumberChoice(app, choice, choices);
      break;
  }
  option->option_text(choice.example())->required(choice.isRequired());
}

/// A command's member as an option of its own.
void addMember(CLI::App& app, MemberDescription const& member, Object const& command) {
  std::string const option = "--" + member.name();
  auto const add = command.adder(member.name());
  switch (member.kind()) {
    case Value::Kind::integer:
      app.add_option_function<long>(
             option, [add](long given) { add(numberValue(given)); }, member.title())
          ->option_text("NUMBER");
      return;
    case Value::Kind::real:
      app.add_option_function<double>(
             option, [add](double given) { add(realValue(given)); }, member.title())
          ->option_text("NUMBER");
      return;
    default:
      app.add_option_function<std::string>(
             option, [add](std::string const& given) { add(textValue(given)); }, member.title())
          ->option_text("WORD");
  }
}

// Records.

/// "readings[0].record.wireless.channel: found a text of 3 bytes; expected ..."
std::string sentence(Problem problem, std::string const& where) {
  if (!where.empty()) problem.path = where + (problem.path.empty() ? "" : ".") + problem.path;
  return problem.description();
}

/// The value at a path of names with points between them, or null.
Value const* valueAt(Value const& record, std::string_view path) {
  std::size_t const point = path.find('.');
  Value const* const member = record.find(std::string(path.substr(0, point)));
  if (member == nullptr || point == path.npos) return member;
  return valueAt(*member, path.substr(point + 1));
}

/// Is the member in a section of the document that was not chosen?
bool isLeftOut(Message const& message, std::string_view path, Value const& choices) {
  std::string const section(path.substr(0, path.find('.')));
  for (Choice const& choice : message.choices()) {
    std::vector<std::string> const words = choice.words();
    if (std::find(words.begin(), words.end(), section) == words.end()) continue;
    Value const* const chosen = choices.find(choice.name());
    return chosen == nullptr ||
           std::none_of(chosen->items.begin(), chosen->items.end(),
                        [&](Value const& item) { return item.text == section; });
  }
  return false;
}

/// `decode` shows ****** in place of a key, and no printer shall get that for one.
bool holdsNoMask(Message const& message, Value const& record, Value const& choices,
                 Problem& problem) {
  for (std::string const& path : message.secrets()) {
    Value const* const secret = valueAt(record, path);
    bool const isMask =
        secret != nullptr && secret->kind == Value::Kind::text && secret->text == mask;
    if (!isMask || isLeftOut(message, path, choices)) continue;
    problem.path = path;
    problem.found = "a masked secret";
    problem.expected = "the secret itself, as 'kovra decode --show-secrets' shows it";
    return false;
  }
  return true;
}

/// The document, or a RecordFailure.
std::string document(Message const& message, Record const& record, Value const& choices) {
  Composition composition;
  if (holdsNoMask(message, record.value, choices, composition.problem)) {
    composition = compose(message.name(), record.value, choices);
  }
  if (!composition.composed) {
    throw RecordFailure({}, sentence(std::move(composition.problem), record.path));
  }
  return std::move(composition.text);
}

ExitStatus refuse(ExitStatus status, std::string const& file, Place place, std::string const& why) {
  complain(messagePrefix(file, place, "error") + why);
  return status;
}

/// Where a record comes from, and how large it may be.
struct Input {
  std::string file{standardInput};
  std::size_t maxSize = defaultMaxSize;
};

/// The text itself is given back at once.
Record read(Input const& input, std::string const& name) {
  InputReader reader(input.maxSize);
  return recordFrom(reader.read(input.file), name);
}

/// Whatever fails here is told with the name of the file: it is the one that somebody has to mend.
ExitStatus composeFrom(Input const& input, Message const& message, Value const& choices) try {
  print(document(message, read(input, message.recordOf()), choices));
  return ExitStatus::good;
} catch (RecordFailure const& failure) {
  return refuse(ExitStatus::refused, input.file, failure.place(), failure.why());
} catch (InputFailure const& failure) {
  return refuse(failure.status(), input.file, {}, failure.what());
} catch (std::bad_alloc const&) {
  return refuse(ExitStatus::refused, input.file, {}, "not enough memory");
}

/// The record as a file, and the choices as options.
void addRecord(CLI::App& app, Message const& message, ExitStatus& status) {
  auto const input = std::make_shared<Input>();
  app.add_option("RECORD", input->file,
                 "The record as JSON: what 'kovra decode --format json'\n"
                 "prints, or its \"record\" alone (default: '-', standard\n"
                 "input)")
      ->option_text(" ");
  addMaxSize(app, input->maxSize, "Refuse a larger record");
  Object const choices;
  for (Choice const& choice : message.choices()) addChoice(app, choice, choices);
  app.callback([&status, input, message, choices] {
    status = composeFrom(*input, message, choices.value());
  });
}

/// The members as options: what does not fit is a mistake on the command line.
void addCommand(CLI::App& app, Message const& message) {
  Object const command;
  for (MemberDescription const& member : message.members()) addMember(app, member, command);
  app.callback([message, command] {
    Composition const composition = compose(message.name(), command.value());
    if (!composition.composed) {
      throw CLI::ValidationError("--" + composition.problem.description());
    }
    print(composition.text);
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

void addMessage(CLI::App& compose, Message const& message, ExitStatus& status) {
  std::string const words = message.command();
  CLI::App* const app = commandAround(compose, words, message)
                            .add_subcommand(words.substr(words.rfind(' ') + 1), message.purpose());
  app->footer(message.help());
  if (message.recordOf().empty()) {
    addCommand(*app, message);
  } else {
    addRecord(*app, message, status);
  }
}

}  // namespace

void addCompose(CLI::App& app, ExitStatus& status) {
  CLI::App* const compose =
      app.add_subcommand("compose", "Make documents that the printer accepts from records");
  compose->require_subcommand(1);
  compose->footer(
      R"(A member that the record leaves out is zero. A keyword is its code, its word, or
the object that 'kovra decode' shows. Where the record does not fit nothing is
written; one line says what was found where, and what would be right, and repeats
no value, which might be a secret.

A record may hold lists and objects of at most 256 entries, in one another at
most 32 levels deep, names of at most 256 bytes, and at most 16384 values in all.

Exit status:
  0  the document was written to standard output
  1  the record was refused
  2  the command line is wrong
  3  the file could not be read, or standard output not be written)");
  for (Message const& message : messages()) {
    if (message.isWritten()) addMessage(*compose, message, status);
  }
}

}  // namespace Kovra::tool
