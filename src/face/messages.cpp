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

Value::Kind valueKindOf(Shape shape) {
  switch (shape) {
    case Shape::flag:
      return Value::Kind::flag;
    case Shape::integer:
      return Value::Kind::integer;
    case Shape::natural:
    case Shape::hexadecimal:
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

MemberDescription::Form formOf(Shape shape) {
  using Form = MemberDescription::Form;
  if (shape == Shape::setting) return Form::setting;
  if (shape == Shape::address) return Form::hardwareAddress;
  if (shape == Shape::hexadecimal) return Form::hexadecimal;
  return shape == Shape::ipv4 ? Form::ipv4 : Form::plain;
}

/// The words of a keyword, of a flag, of bits, or of a list's codes.
std::span<Word const> wordsOf(Row const& row) {
  if (row.kind->words != nullptr) return row.kind->words(row).words;
  Entries const* const entries = entriesIn(row);
  if (entries == nullptr) return wordsIn(row);
  return entries->codes != nullptr ? entries->codes->read->words : std::span<Word const>();
}

std::string titleOf(std::string_view member, Composing const& composing) {
  for (MemberTitle const& known : composing.commandMembers) {
    if (known.member == member) return std::string(known.title);
  }
  return {};
}

/// The names of elements in one another, without empty ones.
std::string within(std::string_view outer, std::string_view inner) {
  return std::string(outer) + (outer.empty() || inner.empty() ? "" : "/") + std::string(inner);
}

std::string elementOf(Row const& row) {
  Entries const* const entries = entriesIn(row);
  return within(row.element, entries != nullptr ? entries->item : "");
}

void addOnce(std::vector<std::string>& names, std::string name) {
  bool const isThere = std::find(names.begin(), names.end(), name) != names.end();
  if (!name.empty() && !isThere) names.push_back(std::move(name));
}

/// The members of a record, each once, also where one row reads it and another writes it.
class MemberList {
 public:
  explicit MemberList(Composing const& composing) : composing_(composing) {}

  void add(Rows rows, std::string const& around);
  std::vector<MemberData> take() { return std::move(members_); }

 private:
  void addRow(Row const& row, std::string_view name, std::string const& around);
  MemberData& member(std::string_view name, Row const& row);

  Composing const& composing_;
  std::vector<MemberData> members_;
};

/// An odd row's own rows say more than the names of the members that it takes.
void MemberList::add(Rows rows, std::string const& around) {
  for (Row const& row : rows) {
    if (row.kind->shape == Shape::group || row.kind->shape == Shape::odd) {
      add(rowsBelow(row), within(around, row.element));
    }
    if (row.kind->shape == Shape::group) continue;
    Keys keys;
    keysOfRow(row, keys);
    if (keys.empty() && !row.member.empty()) keys.push_back(row.member);
    for (std::string_view const key : keys) addRow(row, key, around);
  }
}

void MemberList::addRow(Row const& row, std::string_view name, std::string const& around) {
  MemberData& found = member(name, row);
  addOnce(found.elements, within(around, elementOf(row)));
  found.rows.push_back(&row);
}

MemberData& MemberList::member(std::string_view name, Row const& row) {
  auto const known = std::find_if(members_.begin(), members_.end(),
                                  [&](MemberData const& member) { return member.name == name; });
  if (known != members_.end()) return *known;
  MemberData& added = members_.emplace_back(Kovra::detail::memberOf(row));
  added.name = name;
  added.elements.clear();
  added.rows.clear();
  added.title = titleOf(name, composing_);
  added.isSecret |= composing_.isSecret;
  return added;
}

std::vector<MemberDescription> described(Rows rows, Composing const& composing) {
  MemberList list(composing);
  list.add(rows, "");
  auto const members = std::make_shared<std::vector<MemberData>>(list.take());
  return FaceAccess::each<MemberDescription>(Shared<std::vector<MemberData>>(members), *members);
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

MemberData Kovra::detail::memberOf(Row const& row) {
  MemberData member;
  member.name = row.member;
  member.kind = valueKindOf(row.kind->shape);
  member.isSecret = row.kind->shape == Shape::secret;
  addOnce(member.elements, elementOf(row));
  member.rows.push_back(&row);
  return member;
}

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

bool MemberDescription::isSecret() const {
  return data_ != nullptr && data_->isSecret;
}

std::vector<std::string> MemberDescription::elements() const {
  return data_ != nullptr ? data_->elements : std::vector<std::string>();
}

std::vector<Keyword> MemberDescription::words() const {
  std::vector<Keyword> words;
  if (data_ == nullptr) return words;
  for (Row const* const row : data_->rows) {
    for (Word const& word : wordsOf(*row)) {
      bool const isThere = std::any_of(words.begin(), words.end(), [&](Keyword const& other) {
        return other.word() == word.text;
      });
      if (!isThere) words.push_back(FaceAccess::make<Keyword>(&word));
    }
  }
  return words;
}

std::vector<std::string> MemberDescription::vocabulary() const {
  Outline names;
  if (data_ == nullptr) return {};
  // Beside a row that reads an element, one without any only says what the member is made of.
  auto const isNamed = [](Row const* row) { return !row->element.empty(); };
  bool const hasElement = std::any_of(data_->rows.begin(), data_->rows.end(), isNamed);
  for (Row const* const row : data_->rows) {
    if (isNamed(row) || !hasElement) outlineOfRow(*row, names);
  }
  return {names.begin(), names.end()};
}

std::vector<MemberDescription> MemberDescription::members() const {
  if (data_ == nullptr) return {};
  return described(rowsInside(*data_->rows.front()), Composing());
}

MemberDescription::Form MemberDescription::form() const {
  return data_ != nullptr ? formOf(data_->rows.front()->kind->shape) : Form::plain;
}

std::size_t MemberDescription::mostBytes() const {
  if (data_ == nullptr || data_->kind != Value::Kind::text || form() != Form::plain) return 0;
  return data_->rows.front()->size - 1;
}

int Keyword::code() const {
  return data_->code;
}

std::string Keyword::word() const {
  return std::string(data_->text);
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

bool Message::hasResult() const {
  return isRead() && data_->hasResult;
}

std::vector<MemberDescription> Message::members() const {
  return described(data_->rows, composingOf(*data_));
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
