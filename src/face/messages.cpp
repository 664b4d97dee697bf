#include <algorithm>
#include <iterator>

#include "face/catalogue.hpp"
#include "face/compose.hpp"
#include "face/results.hpp"
#include "kovra.hpp"

namespace Kovra {

namespace {

using namespace frame;

using Kovra::detail::FaceAccess;
using Kovra::detail::MemberData;
using Kovra::detail::Shared;

/// Of a message that is not written there is nothing to tell.
Composing const& composingOf(MessageRow const& message) {
  static constexpr Composing none{};
  return message.composing != nullptr ? *message.composing : none;
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
void addMembers(Rows rows, Composing const& composing, std::vector<MemberData>& members) {
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
                      [&](MemberData const& member) { return member.name == key; });
      if (isThere) continue;
      MemberData& member = members.emplace_back();
      member.name = key;
      member.kind = kindOf(row.kind->shape);
      member.title = titleOf(key, composing);
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
  return std::string(data_->name);
}

Choice::Form Choice::form() const {
  switch (data_->form) {
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
  return std::string(data_->title);
}

std::vector<std::string> Choice::words() const {
  std::vector<std::string> words;
  if (Vocabulary const* const known = data_->words) {
    for (Word const& word : known->words) words.emplace_back(word.text);
  }
  return words;
}

bool Choice::isRequired() const {
  return data_->isRequired;
}

std::string Choice::example() const {
  std::string_view const example = data_->example;
  return std::string(!example.empty() ? example : form() == Form::flag ? "" : "NUMBER");
}

long Choice::least() const {
  return data_->least;
}

long Choice::most() const {
  return data_->most;
}

std::string MemberDescription::name() const {
  return data_ != nullptr ? data_->name : "";
}

Value::Kind MemberDescription::kind() const {
  return data_ != nullptr ? data_->kind : Value::Kind::nothing;
}

std::string MemberDescription::title() const {
  return data_ != nullptr ? data_->title : "";
}

std::string Message::name() const {
  return std::string(data_->name);
}

std::string Message::title() const {
  return std::string(data_->title);
}

std::vector<std::string> Message::roots() const {
  return texts(data_->roots);
}

bool Message::isRead() const {
  return data_->read != nullptr;
}

bool Message::isWritten() const {
  return data_->composing != nullptr;
}

std::vector<MemberDescription> Message::members() const {
  auto const members = std::make_shared<std::vector<MemberData>>();
  addMembers(data_->rows, composingOf(*data_), *members);
  return FaceAccess::each<MemberDescription>(Shared<std::vector<MemberData>>(members), *members);
}

std::vector<std::string> Message::required() const {
  return texts(composingOf(*data_).required);
}

std::vector<Choice> Message::choices() const {
  std::vector<Choice> choices;
  for (ChoiceRow const& choice : composingOf(*data_).choices) {
    choices.push_back(FaceAccess::make<Choice>(&choice));
  }
  bool const isOfSections = composingOf(*data_).isOfSections;
  if (isOfSections) choices.push_back(FaceAccess::make<Choice>(&zeroMissing));
  return choices;
}

std::string Message::command() const {
  return std::string(composingOf(*data_).command);
}

std::string Message::groupPurpose() const {
  CommandGroup const* const group = composingOf(*data_).group;
  return group != nullptr ? std::string(group->title) : "";
}

std::string Message::groupHelp() const {
  CommandGroup const* const group = composingOf(*data_).group;
  return group != nullptr ? std::string(group->help) : "";
}

std::string Message::purpose() const {
  return std::string(composingOf(*data_).title);
}

std::string Message::help() const {
  return std::string(composingOf(*data_).help);
}

std::string Message::recordOf() const {
  return std::string(composingOf(*data_).recordOf);
}

std::vector<std::string> Message::secrets() const {
  std::vector<std::string> secrets;
  if (!composingOf(*data_).isSecret) {
    addSecrets(data_->rows, {}, secrets);
  } else {
    for (MemberDescription const& member : members()) secrets.push_back(member.name());
  }
  return secrets;
}

std::vector<Message> messages() {
  std::vector<Message> all;
  for (MessageRow const& row : catalogue()) all.push_back(FaceAccess::make<Message>(&row));
  return all;
}

}  // namespace Kovra
