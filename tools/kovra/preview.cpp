#include "preview.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "changes.hpp"

namespace Kovra::tool {

namespace {

// A record that people wrote says the same as a reading in other words. Of both sides a reading's
// form is compared.

void unmark(Value& value) {
  value.markSecret(false);
  for (Member& member : value.members()) unmark(member.value());
  for (Value& item : value.items()) unmark(item);
}

/// By its code, its word, or the object with both.
bool isMeant(Keyword const& word, Value const& value) {
  if (value.isText()) return value.asText() == word.word();
  Value const* const code = value.isRecord() ? value.find("code") : &value;
  std::int64_t const another = std::int64_t{word.code()} + 1;
  return code != nullptr && code->isWhole() && code->asInteger(another) == word.code();
}

/// What is no known keyword stays what it is.
Value keywordOf(MemberDescription const& member, Value const& value) {
  for (Keyword const& word : member.words()) {
    if (isMeant(word, value)) return Value::keyword(word.code(), word.word());
  }
  return value;
}

void bringIntoForm(std::vector<MemberDescription> const& members, Value& record);

void bringIntoForm(MemberDescription const& member, Value& value) {
  if (value.isList()) {
    for (Value& item : value.items()) bringIntoForm(member, item);
    return;
  }
  bool const isOfWords =
      member.kind() == Value::Kind::keyword || member.kind() == Value::Kind::list;
  if (isOfWords && !value.isKeyword()) value = keywordOf(member, value);
  if (member.isSecret()) value.markSecret();
  bringIntoForm(member.members(), value);
}

void bringIntoForm(std::vector<MemberDescription> const& members, Value& record) {
  for (MemberDescription const& member : members) {
    if (Value* const value = record.find(member.name())) bringIntoForm(member, *value);
  }
}

/// A whole number that stands for a measure is one.
void measureLike(Value const& before, Value& after) {
  if (before.isReal() && after.isWhole()) after = Value(after.asReal());
  for (Member& member : after.members()) {
    Value const* const other = before.find(member.name());
    if (other != nullptr) measureLike(*other, member.value());
  }
  for (std::size_t i = 0; i < std::min(before.items().size(), after.items().size()); ++i) {
    measureLike(before.items()[i], after.items()[i]);
  }
}

}  // namespace

std::string previewOf(Message const& message, Value before, Value after) {
  for (Value* const record : {&before, &after}) {
    unmark(*record);
    bringIntoForm(message.members(), *record);
  }
  measureLike(before, after);
  std::vector<Change> all = changes(before, after);
  std::erase_if(all, [](Change const& change) {
    return change.kind == Change::Kind::masked && *change.before == *change.after;
  });
  return shownChanges(all, Secrets::masked);
}

}  // namespace Kovra::tool
