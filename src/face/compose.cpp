#include "face/compose.hpp"

#include <algorithm>
#include <string_view>
#include <vector>

#include "face/catalogue.hpp"
#include "frame/assign.hpp"
#include "frame/sink.hpp"

namespace Kovra {

namespace {

using namespace frame;

bool refuse(Problem& problem, std::string_view path, std::string found, std::string expected) {
  problem.path = path;
  fail(problem, std::move(found), std::move(expected));
  return false;
}

// Choices.

/// A word of the choice as its bits.
bool addWord(ChoiceRow const& choice, Value const& value, long& chosen, Problem& problem) {
  Word const* const word =
      value.kind == Value::Kind::text ? choice.words->find(value.text) : nullptr;
  if (word == nullptr) {
    bool const isText = value.kind == Value::Kind::text;
    return refuse(problem, choice.name, isText ? '"' + value.text + '"' : described(value),
                  "one of: " + listed(*choice.words));
  }
  // Of one word the last counts, of several all.
  chosen = word->code | (choice.form == ChoiceRow::Form::words ? chosen : 0);
  return true;
}

bool addWords(ChoiceRow const& choice, Value const& value, long& chosen, Problem& problem) {
  if (value.kind != Value::Kind::list) {
    return refuse(problem, choice.name, described(value), "a list");
  }
  return std::all_of(value.items.begin(), value.items.end(),
                     [&](Value const& item) { return addWord(choice, item, chosen, problem); });
}

bool choose(ChoiceRow const& choice, Value const& value, long& chosen, Problem& problem) {
  switch (choice.form) {
    case ChoiceRow::Form::word:
      return addWord(choice, value, chosen, problem);
    case ChoiceRow::Form::words:
      return addWords(choice, value, chosen, problem);
    case ChoiceRow::Form::flag:
    case ChoiceRow::Form::number:
      break;
  }
  int number = 0;
  Assigned const result = choice.form == ChoiceRow::Form::flag
                              ? assignFlag(number, value, problem)
                              : assignNumber(number, value, problem);
  chosen = number;
  if (result == Assigned::failed) problem.path = choice.name;
  return result == Assigned::done;
}

/// What of the message's choices is chosen; false for a choice that it does not have, or a value
/// that it does not take.
bool choose(std::span<ChoiceRow const> choices, Value const& value, std::vector<long>& chosen,
            Problem& problem) {
  chosen.assign(choices.size(), 0);
  if (value.kind != Value::Kind::record && value.kind != Value::Kind::nothing) {
    return refuse(problem, "", described(value), "an object with choices");
  }
  for (Kovra::Member const& member : value.members) {
    auto const choice = std::find_if(choices.begin(), choices.end(), [&](ChoiceRow const& known) {
      return known.name == member.name;
    });
    if (choice == choices.end()) {
      return refuse(problem, member.name, "an unknown choice", "one that this document has");
    }
    long& target = chosen[static_cast<std::size_t>(choice - choices.begin())];
    if (!choose(*choice, member.value, target, problem)) return false;
  }
  return true;
}

// Members.

bool isNamed(Value const& value, std::string_view name) {
  return value.find(std::string(name)) != nullptr;
}

/// Is there no member but those that are required?
bool isRequiredOnly(Composing const& composing, Value const& value, Problem& problem) {
  if (!composing.requiredOnly) return true;
  for (Kovra::Member const& member : value.members) {
    auto const& required = composing.required;
    if (std::find(required.begin(), required.end(), member.name) != required.end()) continue;
    return refuse(problem, member.name, "a value", "none: this document has no such element");
  }
  return true;
}

bool hasRequired(Composing const& composing, Value const& value, Problem& problem) {
  for (std::string_view const name : composing.required) {
    if (isNamed(value, name)) continue;
    return refuse(problem, name, "nothing",
                  composing.written != nullptr ? "a value: this command needs it" : "a text");
  }
  return true;
}

/// Takes note of the attributes of a document, of which nothing else is looked at.
class Attributes final : public Sink {
 public:
  void open(char const*) override {}
  void attribute(char const* name, char const*) override { names_.emplace_back(name); }
  void text(char const*) override {}
  void close(char const*) override {}
  void leaf(char const*, char const*) override {}

  bool has(std::string_view name) const {
    return std::find(names_.begin(), names_.end(), name) != names_.end();
  }

 private:
  std::vector<std::string_view> names_;  // from the tables
};

/// Is the member one that the command takes?
bool isTaken(Rows rows, Attributes const& written, std::string_view member) {
  return std::any_of(rows.begin(), rows.end(), [&](Row const& row) {
    return row.member == member && (!row.isNeeded || written.has(member));
  });
}

/// Does the document say what the command says, no less and no more? What it does not take is a
/// mistake of whoever wrote it, and so is what was left out.
bool saysTheSame(Rows rows, Attributes const& written, Value const& command, Problem& problem) {
  for (Kovra::Member const& member : command.members) {
    if (isTaken(rows, written, member.name)) continue;
    return refuse(problem, member.name, described(member.value),
                  "none: this command does not take it");
  }
  for (Row const& row : rows) {
    bool const isNeeded = row.isNeeded && !row.member.empty() && written.has(row.member);
    if (!isNeeded || isNamed(command, row.member)) continue;
    return refuse(problem, row.member, "nothing", "a value: this command needs it");
  }
  return true;
}

bool isComplete(Composing const& composing, Value const& value, void const* record,
                Problem& problem) {
  if ((composing.check != nullptr && !composing.check(record, value, problem)) ||
      !hasRequired(composing, value, problem)) {
    return false;
  }
  if (composing.written == nullptr) return true;
  Attributes written;
  composing.write(written, record, {}, 0);
  return saysTheSame(composing.written(record), written, value, problem);
}

Assigned fill(MessageRow const& message, AnyRecord const& record, Value const& value,
              Problem& problem) {
  if (message.composing->assign != nullptr) {
    return message.composing->assign(record.memory(), value, problem);
  }
  return assignRows(message.rows, record.get(), value, problem);
}

bool compose(MessageRow const& message, Value const& value, Value const& choices, std::string& text,
             Problem& problem) {
  Composing const& composing = *message.composing;
  std::vector<long> chosen;
  Circumstances circumstances = 0;
  if (!choose(composing.choices, choices, chosen, problem) ||
      !isRequiredOnly(composing, value, problem) ||
      (composing.sort != nullptr && !composing.sort(value, circumstances, problem))) {
    return false;
  }
  AnyRecord const record(*message.record);
  return fill(message, record, value, problem) != Assigned::failed &&
         isComplete(composing, value, record.get(), problem) &&
         composeRecord(message, record.get(), chosen, circumstances, text, problem);
}

}  // namespace

bool composeRecord(MessageRow const& message, void const* record, Chosen chosen,
                   Circumstances circumstances, std::string& text, Problem& problem) {
  Composing const& composing = *message.composing;
  TextSink sink;
  sink.declare();
  sink.open(composing.root);
  bool const isWritten = composing.write(sink, record, chosen, circumstances);
  sink.close(composing.root);
  if (isWritten) {
    text = sink.printed();
  } else if (composing.explain != nullptr) {
    composing.explain(chosen, problem);
  }
  return isWritten;
}

Composition compose(std::string const& name, Value const& record, Value const& choices) {
  Composition composition;
  MessageRow const* const message = findRequest(name);
  if (message == nullptr) {
    refuse(composition.problem, "", '"' + name + '"', "the name of a document that is composed");
    return composition;
  }
  composition.composed = compose(*message, record, choices, composition.text, composition.problem);
  return composition;
}

// The same of one document each.

namespace {

void add(Value& choices, char const* name, Value value) {
  Kovra::Member& choice = choices.members.emplace_back();
  choice.name = name;
  choice.value = std::move(value);
}

Value noChoices() {
  Value choices;
  choices.kind = Value::Kind::record;
  return choices;
}

Value listOf(std::vector<std::string> const& words) {
  Value list;
  list.kind = Value::Kind::list;
  for (std::string const& word : words) list.items.push_back(shown(std::string_view(word)));
  return list;
}

/// The words of the message's first choice.
std::vector<std::string> wordsOf(std::string_view message) {
  return Choice(&findRequest(message)->composing->choices.front()).words();
}

}  // namespace

Composition composeCapabilities(Value const& record, CapabilitiesChoice const& choice) {
  Value choices = noChoices();
  std::vector<std::string> const parts = wordsOf("capabilities");
  auto const part = static_cast<std::size_t>(choice.part);
  if (part >= 1 && part <= parts.size()) {
    add(choices, "only", shown(std::string_view(parts[part - 1])));
  }
  add(choices, "direct-to-card", shown(choice.directToCard));
  return compose("capabilities", record, choices);
}

Composition composeMedia(Value const& record, MediaChoice const& choice) {
  Value choices = noChoices();
  add(choices, "all-types", shown(choice.allTypes));
  add(choices, "without-transfer", shown(choice.withoutTransfer));
  return compose("media", record, choices);
}

std::vector<std::string> configurationSections() {
  return wordsOf("configuration");
}

Composition composeConfiguration(Value const& record, ConfigurationChoice const& choice) {
  Value choices = noChoices();
  add(choices, "sections", listOf(choice.sections));
  add(choices, "card", shown(choice.card));
  add(choices, "filmless", shown(choice.filmless));
  return compose("configuration", record, choices);
}

std::vector<std::string> printerIdFields() {
  return wordsOf("printer-id");
}

Composition composePrinterId(Value const& record, std::vector<std::string> const& fields) {
  Value choices = noChoices();
  add(choices, "fields", listOf(fields));
  return compose("printer-id", record, choices);
}

Composition composeNonce(Value const& record) {
  return compose("nonce", record);
}

Composition composeSecureRequest(Value const& record) {
  return compose("secure-action-request", record);
}

Composition composeSecureDirective(Value const& record, int timeout) {
  Value choices = noChoices();
  add(choices, "timeout", shown(timeout));
  return compose("secure-action-directive", record, choices);
}

Composition composePasskey(Value const& record) {
  return compose("passkey", record);
}

Composition composePasskeyChange(Value const& record) {
  return compose("passkey-change", record);
}

Composition composeKeys(Value const& record) {
  return compose("security-keys", record);
}

Composition composeKeysChange(Value const& record) {
  return compose("security-key-change", record);
}

namespace {
constexpr std::string_view deviceCommand = "device-control ";
}  // namespace

std::vector<std::string> controlledDevices() {
  std::vector<std::string> devices;
  for (MessageRow const& message : catalogue()) {
    bool const isWritten = message.composing != nullptr;
    std::string_view const command = isWritten ? message.composing->command : std::string_view();
    if (command.substr(0, deviceCommand.size()) != deviceCommand) continue;
    devices.emplace_back(command.substr(deviceCommand.size()));
  }
  return devices;
}

Composition composeDeviceControl(std::string const& device, Value const& command) {
  std::string const name = std::string(deviceCommand) + device;
  if (findRequest(name) != nullptr) return compose(name, command);
  Composition refused;
  refuse(refused.problem, "", "device \"" + device + '"', "a device that takes commands");
  return refused;
}

}  // namespace Kovra
