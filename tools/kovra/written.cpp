#include "written.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

#include "keywords.hpp"
#include "paths.hpp"
#include "record.hpp"

namespace Kovra::tool {

namespace {

/// What a document of these choices is, or why there is none.
std::string outcome(Message const& message, Value const& record, Value const& choices) {
  Composition const composition = compose(message.name(), record, choices);
  if (composition) return composition.text();
  std::string problems;
  for (Problem const& problem : composition.problems()) problems += problem.message() + '\n';
  return problems;
}

/// Is it a choice of several that nobody made yet?
bool isOpen(Choice const& choice, Value const& choices) {
  return choice.form() == Choice::Form::words && choices.find(choice.name()) == nullptr;
}

/// These choices with one word of an open one, where nothing that the record lacks is in the way.
Value withWord(Choice const& choice, std::string const& word, Value const& choices) {
  Value one = choices;
  if (one.find("zero_missing") == nullptr) one.add("zero_missing", true);
  one.add(choice.name(), Value::list({word}));
  return one;
}

bool isAmong(std::vector<Problem> const& problems, Problem const& problem) {
  return std::any_of(problems.begin(), problems.end(),
                     [&](Problem const& other) { return other.message() == problem.message(); });
}

std::vector<Problem> problemsOfAll(Message const& message, Choice const& choice,
                                   Value const& record, Value const& choices) {
  std::vector<Problem> common;
  bool isFirst = true;
  for (std::string const& word : choice.words()) {
    std::vector<Problem> const these =
        compose(message.name(), record, withWord(choice, word, choices)).problems();
    if (std::exchange(isFirst, false)) common = these;
    std::erase_if(common, [&](Problem const& problem) { return !isAmong(these, problem); });
    if (common.empty()) break;
  }
  return common;
}

// Changes that no document shows.

Value with(Value record, std::string const& path, Value const& value) {
  record.set(path, value);
  return record;
}

/// Does a document of these choices say whether it is one value or the other?
bool isWritten(Message const& message, Value const& record, Edit const& edit,
               Value const& choices) {
  std::string const now = outcome(message, record, choices);
  return std::any_of(edit.others.begin(), edit.others.end(), [&](Value const& other) {
    return outcome(message, with(record, edit.path, other), choices) != now;
  });
}

/// Of one choice of several the first word whose document has it; empty where none has.
std::string wordWith(Message const& message, Choice const& choice, Value const& record,
                     Edit const& edit, Value const& choices) {
  for (std::string const& word : choice.words()) {
    if (isWritten(message, record, edit, withWord(choice, word, choices))) return word;
  }
  return {};
}

Choice const* choiceOfSeveral(std::vector<Choice> const& choices) {
  auto const choice = std::find_if(choices.begin(), choices.end(), [](Choice const& any) {
    return any.form() == Choice::Form::words;
  });
  return choice != choices.end() ? &*choice : nullptr;
}

/// "--sections wireless" where that writes it beside these choices; empty where no word does.
std::string writerOf(Message const& message, Value const& record, Edit const& edit, Value choices) {
  std::vector<Choice> const all = message.choices();
  Choice const* const choice = choiceOfSeveral(all);
  if (choice == nullptr) return {};
  choices.erase(choice->name());
  std::string const word = wordWith(message, *choice, record, edit, choices);
  return word.empty() ? word : "--" + choice->name() + ' ' + word;
}

[[noreturn]] void refuseUnwritten(Message const& message, Value const& record, Edit const& edit,
                                  Value const& choices) {
  std::vector<Choice> const all = message.choices();
  bool const isOfSections = choiceOfSeveral(all) != nullptr;
  if (isOfSections && writerOf(message, record, edit, Value::object()).empty()) {
    throw RecordFailure({},
                        memberOf(edit) + ": is read from the printer only; no section writes it");
  }
  std::string const writer = writerOf(message, record, edit, choices);
  throw RecordFailure({}, memberOf(edit) +
                              ": not in the document that this record and these choices " + "make" +
                              (writer.empty() ? "" : "; " + writer + " writes it"));
}

/// Does the document have it? Where there is none, for other reasons, nobody can tell.
bool isShown(Message const& message, Value const& record, Edit const& edit, Value const& choices) {
  std::vector<Choice> const all = message.choices();
  auto const open = std::find_if(all.begin(), all.end(),
                                 [&](Choice const& choice) { return isOpen(choice, choices); });
  if (open != all.end()) return !wordWith(message, *open, record, edit, choices).empty();
  return !compose(message.name(), record, choices) || isWritten(message, record, edit, choices);
}

}  // namespace

std::vector<Problem> problemsOfAll(Message const& message, Value const& record,
                                   Value const& choices) {
  for (Choice const& choice : message.choices()) {
    if (isOpen(choice, choices)) return problemsOfAll(message, choice, record, choices);
  }
  return {};
}

void requireWritten(Message const& message, Value const& record, std::vector<Edit> const& edits,
                    Value const& choices) {
  for (std::size_t i = 0; i < edits.size(); ++i) {
    if (isOverwritten(edits, i) || isShown(message, record, edits[i], choices)) continue;
    refuseUnwritten(message, record, edits[i], choices);
  }
}

namespace {

Value changedWords(Message const& message, Choice const& choice, Value const& before,
                   Value const& after, Value const& choices) {
  Value changed = Value::list();
  for (std::string const& word : choice.words()) {
    Value const one = withWord(choice, word, choices);
    if (outcome(message, before, one) != outcome(message, after, one)) changed.append(word);
  }
  return changed;
}

}  // namespace

Value choicesOfChanges(Message const& message, Value const& before, Value const& after,
                       Value const& choices) {
  Value all = choices;
  for (Choice const& choice : message.choices()) {
    if (!isOpen(choice, choices)) continue;
    Value changed = changedWords(message, choice, before, after, choices);
    if (changed.empty()) throw RecordFailure({}, "nothing changes: the document would be the same");
    all.add(choice.name(), std::move(changed));
  }
  return all;
}

// Keywords that stand for others.

namespace {

std::string told(Keyword const& word) {
  return word.word() + " (" + std::to_string(word.code()) + ')';
}

/// Why the value stands for no keyword of these, or not for the one that it names; empty where it
/// does. What is no code is none of this: the library refuses it, or finds it by its word.
std::string faultOf(Value const& value, std::vector<Keyword> const& words) {
  if (value.isKeyword()) {
    if (!value.isKnown()) return "a word that is no keyword";
    return isCode(words, value.code()) ? "" : "a code that no keyword has";
  }
  Value const* const name = value.find("name");
  Value const* const code = value.isRecord() ? value.find("code") : &value;
  if (code == nullptr || !code->isWhole()) return {};
  std::int64_t const number = code->asInteger(-1);
  if (name != nullptr && name->isNothing()) return "a word that is no keyword";
  if (!isCode(words, number)) return "a code that no keyword has";
  bool const isOther = name != nullptr && !isCode(words, number, name->asText(""));
  return isOther ? "the code and the name of different keywords" : "";
}

/// The word of a reply that no keyword is; null where it is none.
std::optional<std::string_view> unknownWordOf(Value const& value) {
  if (value.isKeyword()) return value.isKnown() ? std::nullopt : std::optional(value.word());
  Value const* const raw = value.find("raw");
  return raw != nullptr && raw->isText() ? std::optional(raw->asText()) : std::nullopt;
}

class Search {
 public:
  Search(Message const& message, Value const& record, Value const& choices)
      : message_(message), record_(record), choices_(choices) {}

  std::vector<Misnomer> take() { return std::move(found_); }

  void members(std::vector<MemberDescription> const& members, Value const& record,
               std::string const& path) {
    for (MemberDescription const& member : members) {
      if (Value const* const inner = record.find(member.name())) {
        value(member, *inner, memberPath(path, member.name()));
      }
    }
  }

 private:
  void value(MemberDescription const& member, Value const& value, std::string const& path) {
    if (member.kind() == Value::Kind::keyword) return keyword(member, value, path);
    for (std::size_t i = 0; i < value.items().size(); ++i) {
      members(member.members(), value.items()[i], entryPath(path, i));
    }
    members(member.members(), value, path);
  }

  void keyword(MemberDescription const& member, Value const& value, std::string const& path) {
    std::vector<Keyword> const words = member.words();
    std::string const fault = faultOf(value, words);
    if (fault.empty() || !isInDocument(path, words) || isKept(path, value)) return;
    std::string all;
    for (Keyword const& word : words) {
      all += (all.empty() ? "" : ", ") + told(word);
    }
    found_.push_back({path, fault, "one of: " + all});
  }

  /// Would the document say something else with one of the words?
  bool isInDocument(std::string const& path, std::vector<Keyword> const& words) const {
    std::string const document = outcome(message_, record_, choices_);
    return std::any_of(words.begin(), words.end(), [&](Keyword const& word) {
      return outcome(message_, with(record_, path, word.code()), choices_) != document;
    });
  }

  /// Does the document say the reply's own word?
  bool isKept(std::string const& path, Value const& value) const {
    auto const word = unknownWordOf(value);
    Decoding const decoding = decode(outcome(message_, record_, choices_), message_.recordOf());
    if (!word || !decoding) return false;
    std::vector<Reading> const readings = decoding.readings();
    Value const* const written = readings.front().record().findAt(path);
    return written != nullptr && written->isKeyword() && unknownWordOf(*written) == word;
  }

  Message const& message_;
  Value const& record_;
  Value const& choices_;
  std::vector<Misnomer> found_;
};

/// The code that a record means; none where it names no keyword.
std::optional<std::int64_t> codeOf(Value const& value, std::vector<Keyword> const& words) {
  if (value.isKeyword()) return value.isKnown() ? std::optional(value.code()) : std::nullopt;
  Value const* const name = value.isRecord() ? value.find("name") : &value;
  if (name != nullptr && name->isNothing()) return {};
  if (name != nullptr && name->isText()) {
    for (Keyword const& word : words) {
      if (word.word() == name->asText()) return word.code();
    }
    return {};
  }
  Value const* const code = value.isRecord() ? value.find("code") : &value;
  bool const isNumber = code != nullptr && code->isWhole();
  return isNumber ? std::optional(code->asInteger(-1)) : std::nullopt;
}

std::string wordOf(std::vector<Keyword> const& words, std::int64_t code) {
  for (Keyword const& word : words) {
    if (word.code() == code) return told(word);
  }
  return std::to_string(code);
}

/// What a document says, beside what was meant.
void compare(std::vector<MemberDescription> const& members, Value const& written,
             Value const& record, std::string const& around, std::vector<Misnomer>& found) {
  for (MemberDescription const& member : members) {
    Value const* const said = written.find(member.name());
    if (said == nullptr) continue;
    std::string const path = memberPath(around, member.name());
    for (std::size_t i = 0; i < said->items().size(); ++i) {
      compare(member.members(), said->items()[i], record, entryPath(path, i), found);
    }
    compare(member.members(), *said, record, path, found);
    Value const* const meant = record.findAt(path);
    if (!said->isKeyword() || meant == nullptr) continue;
    std::vector<Keyword> const words = member.words();
    auto const code = codeOf(*meant, words);
    // Some words are written in a way of their own, which is not read again.
    bool const isOfItsOwn = !said->isKnown() && unknownWordOf(*said) != "";
    if (!code || isOfItsOwn || (said->isKnown() && said->code() == *code)) continue;
    found.push_back(
        {path, said->isKnown() ? wordOf(words, said->code()) : "nothing", wordOf(words, *code)});
  }
}

}  // namespace

std::vector<Misnomer> contradictions(Message const& message, Value const& record,
                                     std::string const& document) {
  std::vector<Misnomer> found;
  Decoding const decoding = decode(document, message.recordOf());
  if (!decoding || decoding.readings().empty()) return found;
  compare(message.members(), decoding.readings().front().record(), record, {}, found);
  return found;
}

std::vector<Misnomer> misnomers(Message const& message, Value const& record, Value const& choices) {
  Search search(message, record, choices);
  search.members(message.members(), record, {});
  return search.take();
}

}  // namespace Kovra::tool
