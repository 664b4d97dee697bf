#include "lookup.hpp"

#include <algorithm>
#include <functional>
#include <utility>

#include "strict_xml.hpp"

namespace Kovra::tool {

namespace {

/// Whether two names are the same.
using Same = std::function<bool(std::string_view, std::string_view)>;

char plain(char letter) {
  if (letter == '-') return '_';
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

bool isAlike(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return plain(x) == plain(y); });
}

bool isEqual(std::string_view a, std::string_view b) {
  return a == b;
}

using Parts = std::vector<std::string>;

Parts split(std::string_view text, char separator) {
  Parts parts;
  while (!text.empty()) {
    std::size_t const end = std::min(text.find(separator), text.size());
    if (end > 0) parts.emplace_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return parts;
}

/// The names of a path; which entry of a list is meant does not count.
Parts partsOf(std::string_view path) {
  std::string names;
  bool isNumber = false;
  for (char const letter : path) {
    if (letter == '[') isNumber = true;
    if (!isNumber) names += letter;
    if (letter == ']') isNumber = false;
  }
  return split(names, '.');
}

bool endsWith(Parts const& all, Parts const& wanted, Same const& same) {
  return !wanted.empty() && wanted.size() <= all.size() &&
         std::equal(wanted.rbegin(), wanted.rend(), all.rbegin(), same);
}

bool isAmong(std::vector<std::string> const& names, std::string_view name, Same const& same) {
  return std::any_of(names.begin(), names.end(),
                     [&](std::string const& known) { return same(known, name); });
}

Parts below(std::string const& first, Parts rest) {
  rest.insert(rest.begin(), first);
  return rest;
}

/// A name that is looked for, as a path of members and as one of elements.
struct Asked {
  std::string_view name;
  Parts members;
  Parts elements;
};

/// Of a setting, the value and the bounds have no description of their own.
bool isPartOfSetting(Entry const& entry, Parts const& wanted) {
  bool const isSetting = entry.member.form() == MemberDescription::Form::setting;
  return isSetting && wanted.size() > 1 && isAmong({"val", "min", "max"}, wanted.back(), isEqual);
}

bool isMemberPath(Entry const& entry, Asked const& asked, Same const& same) {
  Parts wanted = asked.members;
  if (isPartOfSetting(entry, wanted)) wanted.pop_back();
  return endsWith(below(entry.message->name(), entry.names), wanted, same);
}

/// A path of elements, from the root on where it begins with a slash.
bool isElementPath(Entry const& entry, Asked const& asked, Same const& same) {
  Parts const& wanted = asked.elements;
  bool const isWhole = asked.name.substr(0, 1) == "/";
  for (std::string const& element : entry.elements) {
    Parts const parts = split(element, '/');
    if (!isWhole && endsWith(parts, wanted, same)) return true;
    for (std::string const& root : entry.message->roots()) {
      if (isWhole && wanted.size() != parts.size() + 1) continue;
      if (endsWith(below(root, parts), wanted, same)) return true;
    }
  }
  return false;
}

/// Is it one of the elements that the member itself has? A list has one around its entries.
bool isOwnElement(Entry const& entry, std::string_view name, Same const& same) {
  for (std::string const& element : entry.member.elements()) {
    if (isAmong(split(element, '/'), name, same)) return true;
  }
  return false;
}

/// A word, or something inside an element that has no members of its own.
bool isWord(Entry const& entry, std::string_view name, Same const& same) {
  std::vector<Keyword> const words = entry.member.words();
  bool const isKeyword = std::any_of(words.begin(), words.end(),
                                     [&](Keyword const& word) { return same(word.word(), name); });
  return isKeyword ||
         (entry.member.members().empty() && isAmong(entry.member.vocabulary(), name, same));
}

bool isMeant(Entry const& entry, Asked const& asked, Same const& same) {
  return isMemberPath(entry, asked, same) || isElementPath(entry, asked, same) ||
         isOwnElement(entry, asked.name, same) || isWord(entry, asked.name, same);
}

bool isMeant(Message const& message, std::string_view name, Same const& same) {
  bool const isRoot = name.substr(0, 1) == "/";
  return same(message.name(), name) || isAmong(message.roots(), name.substr(isRoot ? 1 : 0), same);
}

Matches matches(std::vector<Message> const& messages, std::vector<Entry> const& entries,
                Asked const& asked, Same const& same) {
  Matches found;
  std::string_view const name = asked.name;
  for (FindingKind const& kind : findingKinds()) {
    if (same(kind.id(), name) || same(kind.name(), name)) found.findings.push_back(kind);
  }
  found.isStrictFinding = same(strictId, name) || same(strictKind, name);
  for (Message const& message : messages) {
    if (isMeant(message, name, same)) found.messages.push_back(&message);
  }
  for (Entry const& entry : entries) {
    if (isMeant(entry, asked, same)) found.members.push_back(&entry);
  }
  return found;
}

/// Every element of those around with every one inside.
std::vector<std::string> within(std::vector<std::string> const& outer,
                                std::vector<std::string> const& inner) {
  if (outer.empty()) return inner;
  if (inner.empty()) return outer;
  std::vector<std::string> all;
  for (std::string const& around : outer) {
    std::string const before = around + '/';
    for (std::string const& element : inner) all.push_back(before + element);
  }
  return all;
}

/// A value that composing takes for such a member; where there is no description, a bound.
Value anyValue(MemberDescription const* member) {
  if (member == nullptr) return 0;
  switch (member->kind()) {
    case Value::Kind::flag:
      return false;
    case Value::Kind::real:
      return 0.0;
    case Value::Kind::keyword:
      return member->words().empty() ? Value(0) : Value(member->words().front().code());
    case Value::Kind::list:
      return Value::list();
    case Value::Kind::record:
      return Value::object();
    case Value::Kind::text:
      if (member->form() == MemberDescription::Form::ipv4) return "0.0.0.0";
      if (member->form() == MemberDescription::Form::hardwareAddress) return "00:00:00:00:00:00";
      return "";
    case Value::Kind::nothing:
    case Value::Kind::integer:
    case Value::Kind::natural:
      break;
  }
  return 0;
}

/// The paths that a document with this choice is made of: those that composing misses in a record
/// which has nothing but what it missed before.
class Written {
 public:
  Written(Message const& message, std::vector<Entry> const& entries)
      : message_(message), entries_(entries) {}

  std::set<Parts> paths(Value const& choices);

 private:
  MemberDescription const* memberAt(std::string_view path) const;
  bool fill(Value& record, std::string const& path) const;

  Message const& message_;
  std::vector<Entry> const& entries_;
};

std::set<Parts> Written::paths(Value const& choices) {
  std::set<Parts> all;
  Value record = Value::object();
  for (bool hasMore = true; hasMore;) {
    hasMore = false;
    for (Problem const& problem : compose(message_.name(), record, choices).problems()) {
      Value const* const there = record.findAt(problem.path());
      bool const isMissing = !problem.path().empty() && (there == nullptr || there->isNothing());
      if (!isMissing || !fill(record, problem.path())) continue;
      all.insert(partsOf(problem.path()));
      hasMore = true;
    }
  }
  return all;
}

bool Written::fill(Value& record, std::string const& path) const try {
  bool const isEntry = path.back() == ']';
  record.set(path, isEntry ? Value::object() : anyValue(memberAt(path)));
  return true;
} catch (ValueError const&) {
  return false;
}

MemberDescription const* Written::memberAt(std::string_view path) const {
  Parts const names = partsOf(path);
  auto const entry = std::find_if(entries_.begin(), entries_.end(), [&](Entry const& known) {
    return known.message == &message_ && known.names == names;
  });
  return entry != entries_.end() ? &entry->member : nullptr;
}

}  // namespace

Lookup::Lookup() : messages_(Kovra::messages()) {
  for (Message const& message : messages_) add(message, message.members(), {});
}

void Lookup::add(Message const& message, std::vector<MemberDescription> const& members,
                 Entry const& around) {
  std::string before = around.path;
  if (!before.empty() && around.member.kind() == Value::Kind::list) before += "[]";
  if (!before.empty()) before += '.';
  for (MemberDescription const& member : members) {
    std::vector<std::string> names = around.names;
    names.push_back(member.name());
    Entry const entry{&message, before + member.name(), std::move(names),
                      within(around.elements, member.elements()), member};
    entries_.push_back(entry);
    add(message, member.members(), entry);
  }
}

Matches Lookup::find(std::string_view name) const {
  if (name.empty()) return {};
  Asked const asked{name, partsOf(name), split(name, '/')};
  Matches found = matches(messages_, entries_, asked, isEqual);
  if (found.empty()) found = matches(messages_, entries_, asked, isAlike);
  if (found.empty()) found.isWord = isAmong(vocabulary(), name, isAlike);
  return found;
}

std::vector<std::string> Lookup::names(std::string_view name) const {
  std::set<std::string> all{strictId, strictKind};
  for (FindingKind const& kind : findingKinds()) all.insert({kind.id(), kind.name()});
  for (std::string const& word : vocabulary()) all.insert(word);
  for (Message const& message : messages_) all.insert(message.name());
  bool const isPath = name.find('.') != name.npos;
  for (Entry const& entry : entries_) {
    all.insert(entry.member.name());
    for (Keyword const& word : entry.member.words()) all.insert(word.word());
    if (!isPath) continue;
    all.insert(entry.path);
    all.insert(entry.message->name() + '.' + entry.path);
  }
  return {all.begin(), all.end()};
}

bool hasSections(Message const& message) {
  std::vector<Choice> const choices = message.choices();
  return std::any_of(choices.begin(), choices.end(),
                     [](Choice const& choice) { return choice.form() == Choice::Form::words; });
}

std::vector<Lookup::Section> const& Lookup::sectionsOf(Message const& message) {
  auto const [place, isNew] = sections_.try_emplace(&message);
  if (!isNew) return place->second;
  for (Choice const& choice : message.choices()) {
    if (choice.form() != Choice::Form::words) continue;
    for (std::string const& word : choice.words()) {
      Value const choices = Value::object({{choice.name(), Value::list({word})}});
      place->second.push_back({{choice.name(), word}, Written(message, entries_).paths(choices)});
    }
  }
  return place->second;
}

std::vector<WrittenBy> Lookup::writers(Entry const& entry) {
  std::vector<WrittenBy> found;
  for (Section const& section : sectionsOf(*entry.message)) {
    if (section.paths.contains(entry.names)) found.push_back(section.word);
  }
  return found;
}

bool isKeyword(Keyword const& keyword, std::string_view name) {
  return isAlike(keyword.word(), name);
}

}  // namespace Kovra::tool
