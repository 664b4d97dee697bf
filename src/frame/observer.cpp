#include "frame/observer.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace Kovra::frame {

namespace {

std::string_view textIn(Element element) {
  char const* const text = element.text();
  return text != nullptr ? text : "";
}

}  // namespace

Observer::Observer(Value& record) : record_(&record) {
  record.kind = Value::Kind::record;
}

void Observer::member(std::string_view name, Value value) {
  value.secret = value.secret || secret_;
  Value& target = memberOf(*record_, name, value.kind);
  target = std::move(value);
}

void Observer::list(std::string_view name) {
  listNamed(name);
}

void Observer::clearEntry(std::string_view name, std::size_t index) {
  std::vector<Value>& entries = listNamed(name).items;
  if (index < entries.size()) entries[index] = {};
}

Value& Observer::listNamed(std::string_view name) {
  return memberOf(*record_, name, Value::Kind::list);
}

void Observer::add(Note::Kind kind, Element element, std::string_view found, std::string_view kept,
                   std::vector<std::string> expected) {
  if (remarks_.size() == maxRemarks) {
    ++unlisted_;
    return;
  }
  Note& note = remarks_.emplace_back(Remark{element, {}}).note;
  note.kind = kind;
  note.element = element.name();
  note.expected = std::move(expected);
  if (secret_) return;
  note.found = found;
  note.kept = kept;
}

void Observer::unknownElement(Element element) {
  add(Note::Kind::unknownElement, element);
}

void Observer::unknownWord(Element element, std::string_view text, Vocabulary const& words) {
  std::vector<std::string> expected;
  for (Word const& word : words.words) expected.emplace_back(word.text);
  add(Note::Kind::unknownWord, element, text, {}, std::move(expected));
}

void Observer::notANumber(Element element, std::string_view expected) {
  add(Note::Kind::notANumber, element, textIn(element), {}, {std::string(expected)});
}

void Observer::changedNumber(Element element, std::string_view kept) {
  add(Note::Kind::changedNumber, element, textIn(element), kept);
}

void Observer::cutText(Element element, std::string_view kept) {
  add(Note::Kind::cutText, element, textIn(element), kept);
}

void Observer::emptyElement(Element element) {
  add(Note::Kind::emptyElement, element);
}

/// Of several attributes that an element lacks one note tells.
void Observer::noAttribute(Element element, std::string_view attribute) {
  bool const another = !remarks_.empty() && remarks_.back().element.index() == element.index() &&
                       remarks_.back().note.kind == Note::Kind::noAttribute;
  if (another) {
    remarks_.back().note.expected.emplace_back(attribute);
  } else {
    add(Note::Kind::noAttribute, element, {}, {}, {std::string(attribute)});
  }
}

void Observer::surplusEntry(Element element, std::size_t capacity) {
  add(Note::Kind::surplusEntry, element, {}, std::to_string(capacity));
}

Value& memberOf(Value& record, std::string_view name, Value::Kind kind) {
  auto const found = std::find_if(record.members.begin(), record.members.end(),
                                  [&](Kovra::Member const& member) { return member.name == name; });
  if (found != record.members.end()) return found->value;
  Kovra::Member& added = record.members.emplace_back();
  added.name = name;
  added.value.kind = kind;
  return added.value;
}

void dropIfEmpty(Value& record, std::string_view name) {
  std::erase_if(record.members, [&](Kovra::Member const& member) {
    return member.name == name && member.value.kind == Value::Kind::record &&
           member.value.members.empty();
  });
}

Value shown(bool flag) {
  Value value;
  value.kind = Value::Kind::flag;
  value.flag = flag;
  return value;
}

Value shown(int number) {
  return shown(static_cast<long>(number));
}

Value shown(long number) {
  Value value;
  value.kind = Value::Kind::integer;
  value.integer = number;
  return value;
}

Value shown(unsigned short number) {
  return shown(static_cast<unsigned long>(number));
}
Value shown(unsigned int number) {
  return shown(static_cast<unsigned long>(number));
}

Value shown(unsigned long number) {
  Value value;
  value.kind = Value::Kind::natural;
  value.natural = number;
  return value;
}

Value shown(float number) {
  Value value;
  value.kind = Value::Kind::real;
  value.real = static_cast<double>(number);
  // The shortest decimal that is this float, not the float's expansion: 24.35, not 24.3500003815.
  std::array<char, 32> digits{};
  auto const [end, problem] = std::to_chars(digits.begin(), digits.end(), number);
  if (problem == std::errc{}) std::from_chars(digits.begin(), end, value.real);
  return value;
}

Value shown(std::string_view text) {
  Value value;
  value.kind = Value::Kind::text;
  value.text = text;
  return value;
}

Value shownKeyword(int code, std::string_view text, bool known) {
  Value value;
  value.kind = Value::Kind::keyword;
  value.integer = code;
  value.text = text;
  value.known = known;
  return value;
}

}  // namespace Kovra::frame
