#include "face/compose.hpp"

#include <algorithm>
#include <string_view>
#include <vector>

#include "face/catalogue.hpp"
#include "face/plain_locale.hpp"
#include "face/results.hpp"
#include "frame/assign.hpp"
#include "frame/sink.hpp"
#include "frame/write_watch.hpp"

namespace Kovra {

namespace {

using namespace frame;

// Choices.

bool refuse(Problems& problems, std::string_view path, std::string found, std::string expected) {
  problems.add(std::string(path), std::move(found), std::move(expected));
  return false;
}

/// Languages whose names have no dashes write choices with underscores.
bool isSameChoice(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
    return x == y || (x == '_' && y == '-') || (x == '-' && y == '_');
  });
}

/// What was chosen of a message.
struct Choosing {
  std::vector<long> chosen;  ///< in the order of the message's choices
  long isZeroMissing = 0;
};

/// A word of the choice as its bits.
bool addWord(ChoiceRow const& choice, Value const& value, long& chosen, Problems& problems) {
  std::string const text(value.asText(""));
  Word const* const word = choice.words->find(text);
  if (word == nullptr) {
    return refuse(problems, choice.name, value.isText() ? '"' + text + '"' : described(value),
                  "one of: " + listed(*choice.words));
  }
  // Of one word the last counts, of several all.
  chosen = word->code | (choice.form == ChoiceRow::Form::words ? chosen : 0);
  return true;
}

bool addWords(ChoiceRow const& choice, Value const& value, long& chosen, Problems& problems) {
  if (!value.isList()) return refuse(problems, choice.name, described(value), "a list");
  return std::all_of(value.items().begin(), value.items().end(),
                     [&](Value const& item) { return addWord(choice, item, chosen, problems); });
}

bool choose(ChoiceRow const& choice, Value const& value, long& chosen, Problems& problems) {
  switch (choice.form) {
    case ChoiceRow::Form::word:
      return addWord(choice, value, chosen, problems);
    case ChoiceRow::Form::words:
      return addWords(choice, value, chosen, problems);
    case ChoiceRow::Form::flag:
    case ChoiceRow::Form::number:
      break;
  }
  int number = 0;
  std::size_t const mark = problems.mark();
  Assigned const result = choice.form == ChoiceRow::Form::flag
                              ? assignFlag(number, value, problems)
                              : assignNumber(number, value, problems);
  problems.prefix(mark, choice.name);
  chosen = number;
  return result == Assigned::done;
}

/// The choices of one document, those that were made among them.
class Choices {
 public:
  Choices(std::span<ChoiceRow const> rows, Choosing& choosing, Problems& problems)
      : rows_(rows), choosing_(choosing), problems_(problems), isMade_(rows.size() + 1) {
    choosing.chosen.assign(rows.size(), 0);
  }

  void make(Kovra::Member const& member) {
    if (isSameChoice(zeroMissing.name, member.name())) {
      make(zeroMissing, rows_.size(), member, choosing_.isZeroMissing);
      return;
    }
    auto const row = std::find_if(rows_.begin(), rows_.end(), [&](ChoiceRow const& known) {
      return isSameChoice(known.name, member.name());
    });
    if (row == rows_.end()) {
      refuse(problems_, member.name(), "an unknown choice", "one that this document has");
    } else {
      auto const index = static_cast<std::size_t>(row - rows_.begin());
      make(*row, index, member, choosing_.chosen[index]);
    }
  }

 private:
  /// A choice has two spellings, so that it may be there twice.
  void make(ChoiceRow const& row, std::size_t index, Kovra::Member const& member, long& chosen) {
    if (isMade_[index]) {
      refuse(problems_, member.name(), "a choice for the second time", "each choice once");
    } else {
      choose(row, member.value(), chosen, problems_);
    }
    isMade_[index] = true;
  }

  std::span<ChoiceRow const> rows_;
  Choosing& choosing_;
  Problems& problems_;
  std::vector<bool> isMade_;
};

/// What of the message's choices is chosen. A choice that it does not have is a problem, and so is
/// a value that one does not take.
Choosing choose(std::span<ChoiceRow const> choices, Value const& value, Problems& problems) {
  Choosing choosing;
  Choices all(choices, choosing, problems);
  if (!value.isRecord() && !value.isNothing()) {
    refuse(problems, "", described(value), "an object with choices");
  }
  for (Kovra::Member const& member : value.members()) all.make(member);
  return choosing;
}

// Members.

bool isNamed(Value const& value, std::string_view name) {
  return value.find(name) != nullptr;
}

/// Is there no member but those that are required?
void lookForOthers(Composing const& composing, Value const& value, Problems& problems) {
  if (!composing.requiredOnly) return;
  for (Kovra::Member const& member : value.members()) {
    auto const& required = composing.required;
    if (std::find(required.begin(), required.end(), member.name()) != required.end()) continue;
    refuse(problems, member.name(), "a value", "none: this document has no such element");
  }
}

/// Is each member there that is required?
void lookForRequired(Composing const& composing, Value const& value, Problems& problems) {
  for (std::string_view const name : composing.required) {
    if (isNamed(value, name)) continue;
    refuse(problems, name, "nothing",
           composing.written != nullptr ? "a value: this command needs it" : "a text");
  }
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
void compareWithSaid(Rows rows, Attributes const& written, Value const& command,
                     Problems& problems) {
  for (Kovra::Member const& member : command.members()) {
    if (isTaken(rows, written, member.name())) continue;
    refuse(problems, member.name(), described(member.value()),
           "none: this command does not take it");
  }
  for (Row const& row : rows) {
    bool const isNeeded = row.isNeeded && !row.member.empty() && written.has(row.member);
    if (!isNeeded || isNamed(command, row.member)) continue;
    refuse(problems, row.member, "nothing", "a value: this command needs it");
  }
}

/// A mask is no secret, and no printer shall get one for a key. Of other messages rows know which
/// members are secrets.
void lookForMasks(Composing const& composing, Value const& value, Problems& problems) {
  if (!composing.isSecret) return;
  for (Kovra::Member const& member : value.members()) {
    if (member.value().asText("") != secretMask) continue;
    refuse(problems, member.name(), "a masked secret", "the secret itself");
  }
}

/// What is wrong with members that are right by themselves.
void lookAtTheWhole(Composing const& composing, Value const& value, void const* record,
                    Problems& problems) {
  if (composing.check != nullptr && !composing.check(record, value, problems)) return;
  if (composing.written == nullptr) return;
  Attributes written;
  composing.write(written, record, {}, 0);
  compareWithSaid(composing.written(record), written, value, problems);
}

Assigned fill(MessageRow const& message, AnyRecord const& record, Value const& value,
              Problems& problems) {
  if (message.composing->assign != nullptr) {
    return message.composing->assign(record.memory(), value, problems);
  }
  return assignRows(message.rows, record.get(), value, problems);
}

/// What is wrong is found before anything is written; what is missing is found while writing, be
/// it in vain.
void compose(MessageRow const& message, Value const& value, Value const& choices, std::string& text,
             Problems& problems) {
  Composing const& composing = *message.composing;
  Circumstances circumstances = 0;
  Choosing const choosing = choose(composing.choices, choices, problems);
  lookForOthers(composing, value, problems);
  lookForMasks(composing, value, problems);
  if (composing.sort != nullptr) composing.sort(value, circumstances, problems);
  AnyRecord const record(*message.record);
  fill(message, record, value, problems);
  if (value.isRecord()) lookForRequired(composing, value, problems);
  if (problems.empty()) lookAtTheWhole(composing, value, record.get(), problems);
  bool const demandsAll = composing.isOfSections && choosing.isZeroMissing == 0;
  if (!problems.empty() && !(demandsAll && value.isRecord())) return;
  WriteWatch watch(value, demandsAll, problems);
  composeRecord(message, record.get(), choosing.chosen, circumstances, &watch, text, problems);
}

/// What is wrong with one member may be noticed twice.
bool isTold(std::vector<Kovra::detail::ProblemData> const& told, Trouble const& trouble) {
  return !trouble.path.empty() && std::any_of(told.begin(), told.end(), [&](Trouble const& other) {
    return other.path == trouble.path;
  });
}

/// The document, or the problems.
template <class Compose>
Composition composition(Compose compose) {
  PlainLocale const plain;
  auto const data = std::make_shared<Kovra::detail::CompositionData>();
  Problems problems;
  compose(data->text, problems);
  data->isComposed = problems.empty();
  if (!data->isComposed) {
    wipe(data->text.data(), data->text.size());
    data->text.clear();
  }
  for (Trouble& trouble : problems.all()) {
    if (!isTold(data->problems, trouble)) {
      static_cast<Trouble&>(data->problems.emplace_back()) = std::move(trouble);
    }
  }
  return Kovra::detail::FaceAccess::make<Composition>(
      Kovra::detail::Shared<Kovra::detail::CompositionData>(data));
}

}  // namespace

ChoiceRow const zeroMissing = {
    .name = "zero_missing",
    .form = ChoiceRow::Form::flag,
    .title = "A member that the record lacks is zero, and no mistake",
};

bool composeRecord(MessageRow const& message, void const* record, Chosen chosen,
                   Circumstances circumstances, WriteWatch* watch, std::string& text,
                   Problems& problems) {
  Composing const& composing = *message.composing;
  TextSink sink;
  if (watch != nullptr) sink.watch(*watch);
  sink.declare();
  sink.open(composing.root);
  bool const isWritten = composing.write(sink, record, chosen, circumstances);
  sink.close(composing.root);
  if (isWritten) {
    text = sink.printed();
  } else if (composing.explain != nullptr && problems.empty()) {
    composing.explain(chosen, problems);
  }
  return isWritten;
}

Composition compose(std::string_view name, Value const& record, Value const& choices) {
  return composition([&](std::string& text, Problems& problems) {
    MessageRow const* const message = findRequest(name);
    if (message == nullptr) {
      refuse(problems, "", '"' + std::string(name) + '"',
             "the name of a document that is composed");
    } else {
      compose(*message, record, choices, text, problems);
    }
  });
}

// Records of the classic writers.

namespace {

MessageRow const* requestWith(std::string_view type) {
  for (MessageRow const& message : catalogue()) {
    if (message.composing != nullptr && message.record->name == type) return &message;
  }
  return nullptr;
}

void composeOwn(MessageRow const& message, void const* record, Value const& choices,
                std::string& text, Problems& problems) {
  Choosing const choosing = choose(message.composing->choices, choices, problems);
  if (!problems.empty()) return;
  WriteWatch watch(problems);
  composeRecord(message, record, choosing.chosen, 0, &watch, text, problems);
}

/// A null text is left out of the document, and so it is of the record.
Value valueOf(_tagSecActionXMLValues const& values) {
  Value record = Value::object();
  auto const add = [&](std::string_view name, char const* text) {
    if (text == nullptr) return;
    record.add(name, text).markSecret();
  };
  add("action", values.action);
  add("model", values.model);
  add("serial", values.serial);
  add("nonce", values.nonce);
  add("hmac", values.hmac);
  return record;
}

/// Two documents are made of one type of record, each of a part of it.
void composeAction(_tagSecActionXMLValues const& values, Value const& choices, std::string& text,
                   Problems& problems) {
  constexpr std::string_view choice = "message";
  constexpr std::string_view names[] = {"secure-action-request", "secure-action-directive"};
  Value const* const chosen = choices.find(choice);
  std::string_view const name = chosen != nullptr ? chosen->asText("") : "";
  if (std::find(std::begin(names), std::end(names), name) == std::end(names)) {
    refuse(problems, choice, chosen != nullptr ? described(*chosen) : "nothing",
           "one of: " + std::string(names[0]) + ", " + std::string(names[1]));
    return;
  }
  Value record = valueOf(values);
  record.erase(name == names[0] ? "hmac" : "action");
  Value others = choices;
  others.erase(choice);
  compose(*findRequest(name), record, others, text, problems);
}

}  // namespace

Composition Kovra::detail::composeRecord(std::string_view type, void const* record,
                                         Value const& choices) {
  return composition([&](std::string& text, Problems& problems) {
    if (type == Kovra::detail::recordName<_tagSecActionXMLValues>) {
      composeAction(*static_cast<_tagSecActionXMLValues const*>(record), choices, text, problems);
    } else {
      composeOwn(*requestWith(type), record, choices, text, problems);
    }
  });
}

}  // namespace Kovra
