#include <algorithm>
#include <iterator>

#include "face/catalogue.hpp"
#include "kovra.hpp"

namespace Kovra {

namespace {

using namespace frame;

ChoiceRow const& choiceAt(void const* row) {
  return *static_cast<ChoiceRow const*>(row);
}

MessageRow const& messageAt(void const* row) {
  return *static_cast<MessageRow const*>(row);
}

/// Of a message that is not written there is nothing to tell.
Composing const& composingAt(void const* row) {
  static constexpr Composing none{};
  Composing const* const composing = messageAt(row).composing;
  return composing != nullptr ? *composing : none;
}

template <class Texts>
std::vector<std::string> texts(Texts const& from) {
  return {from.begin(), from.end()};
}

Value::Kind kindOf(Shape shape) {
  switch (shape) {
    case Shape::flag:
      return Value::Kind::flag;
    case Shape::integer:
      return Value::Kind::integer;
    case Shape::natural:
      return Value::Kind::natural;
    case Shape::real:
      return Value::Kind::real;
    case Shape::keyword:
      return Value::Kind::keyword;
    case Shape::text:
    case Shape::secret:
    case Shape::word:
    case Shape::address:
    case Shape::ipv4:
      return Value::Kind::text;
    case Shape::list:
      return Value::Kind::list;
    case Shape::odd:
    case Shape::bits:
    case Shape::setting:
    case Shape::record:
    case Shape::group:
      break;
  }
  return Value::Kind::record;
}

std::string titleOf(std::string_view member, Composing const& composing) {
  for (MemberTitle const& known : composing.commandMembers) {
    if (known.member == member) return std::string(known.title);
  }
  return {};
}

/// Each member once, also where one row reads it and another writes it.
void addMembers(Rows rows, Composing const& composing, std::vector<MemberDescription>& members) {
  for (Row const& row : rows) {
    if (row.kind->shape == Shape::group) {
      addMembers(rowsBelow(row), composing, members);
      continue;
    }
    Keys keys;
    keysOfRow(row, keys);
    if (keys.empty() && !row.member.empty()) keys.push_back(row.member);
    for (std::string_view const key : keys) {
      bool const isThere =
          std::any_of(members.begin(), members.end(),
                      [&](MemberDescription const& member) { return member.name() == key; });
      if (isThere) continue;
      members.emplace_back(std::string(key), kindOf(row.kind->shape), titleOf(key, composing));
    }
  }
}

void addSecrets(Rows rows, std::string const& path, std::vector<std::string>& secrets) {
  for (Row const& row : rows) {
    std::string const inner = row.member.empty() ? path : path + std::string(row.member) + '.';
    std::string const own = path + std::string(row.member);
    bool const isThere = std::find(secrets.begin(), secrets.end(), own) != secrets.end();
    if (row.kind->shape == Shape::secret && !isThere) secrets.push_back(own);
    addSecrets(rowsBelow(row), inner, secrets);
  }
}

}  // namespace

std::string Choice::name() const {
  return std::string(choiceAt(row_).name);
}

Choice::Form Choice::form() const {
  switch (choiceAt(row_).form) {
    case ChoiceRow::Form::flag:
      return Form::flag;
    case ChoiceRow::Form::word:
      return Form::word;
    case ChoiceRow::Form::words:
      return Form::words;
    case ChoiceRow::Form::number:
      return Form::number;
  }
  return Form::flag;
}

std::string Choice::title() const {
  return std::string(choiceAt(row_).title);
}

std::vector<std::string> Choice::words() const {
  std::vector<std::string> words;
  if (Vocabulary const* const known = choiceAt(row_).words) {
    for (Word const& word : known->words) words.emplace_back(word.text);
  }
  return words;
}

bool Choice::isRequired() const {
  return choiceAt(row_).isRequired;
}

std::string Choice::example() const {
  std::string_view const example = choiceAt(row_).example;
  return std::string(example.empty() ? "NUMBER" : example);
}

long Choice::least() const {
  return choiceAt(row_).least;
}

long Choice::most() const {
  return choiceAt(row_).most;
}

std::string Message::name() const {
  return std::string(messageAt(row_).name);
}

std::string Message::title() const {
  return std::string(messageAt(row_).title);
}

std::vector<std::string> Message::roots() const {
  return texts(messageAt(row_).roots);
}

bool Message::isRead() const {
  return messageAt(row_).read != nullptr;
}

bool Message::isWritten() const {
  return messageAt(row_).composing != nullptr;
}

std::vector<MemberDescription> Message::members() const {
  std::vector<MemberDescription> members;
  addMembers(messageAt(row_).rows, composingAt(row_), members);
  return members;
}

std::vector<std::string> Message::required() const {
  return texts(composingAt(row_).required);
}

std::vector<Choice> Message::choices() const {
  std::vector<Choice> choices;
  for (ChoiceRow const& choice : composingAt(row_).choices) choices.emplace_back(&choice);
  return choices;
}

std::string Message::command() const {
  return std::string(composingAt(row_).command);
}

std::string Message::groupPurpose() const {
  CommandGroup const* const group = composingAt(row_).group;
  return group != nullptr ? std::string(group->title) : "";
}

std::string Message::groupHelp() const {
  CommandGroup const* const group = composingAt(row_).group;
  return group != nullptr ? std::string(group->help) : "";
}

std::string Message::purpose() const {
  return std::string(composingAt(row_).title);
}

std::string Message::help() const {
  return std::string(composingAt(row_).help);
}

std::string Message::recordOf() const {
  return std::string(composingAt(row_).recordOf);
}

std::vector<std::string> Message::secrets() const {
  std::vector<std::string> secrets;
  if (!composingAt(row_).isSecret) {
    addSecrets(messageAt(row_).rows, {}, secrets);
  } else {
    for (MemberDescription const& member : members()) secrets.push_back(member.name());
  }
  return secrets;
}

std::vector<Message> messages() {
  std::vector<Message> all;
  for (MessageRow const& row : catalogue()) all.emplace_back(&row);
  return all;
}

}  // namespace Kovra
