#include "edit.hpp"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

#include "input.hpp"
#include "record.hpp"
#include "suggest.hpp"
#include "words.hpp"

namespace Kovra::tool {

namespace {

/// More than any member holds.
constexpr std::size_t longestValue = 1 << 16;

/// What a path leads to.
struct Target {
  Value::Kind kind = Value::Kind::nothing;
  bool isSecret = false;
  std::string path;                ///< of the value itself: a setting's is its `val`
  std::vector<std::string> parts;  ///< what a record has, or a keyword may be
  std::vector<int> codes;          ///< of a keyword
};

std::string within(std::string_view outer, std::string_view inner) {
  return std::string(outer) + (outer.empty() ? "" : ".") + std::string(inner);
}

void addPaths(std::vector<MemberDescription> const& members, std::string const& outer,
              std::vector<std::string>& paths) {
  for (MemberDescription const& member : members) {
    std::string const path = within(outer, member.name());
    paths.push_back(path);
    if (member.kind() == Value::Kind::record) addPaths(member.members(), path, paths);
  }
}

[[noreturn]] void unknown(Message const& message, std::string const& path) {
  std::vector<std::string> paths;
  addPaths(message.members(), {}, paths);
  throw EditFailure("unknown member \"" + path + "\"." + suggestion(path, paths));
}

/// Takes the first name off a path: "cards" of "cards[0].type", with "[0]" gone.
std::string takeName(std::string_view& path) {
  std::size_t const point = std::min(path.find('.'), path.size());
  std::string_view const step = path.substr(0, point);
  path.remove_prefix(std::min(point + 1, path.size()));
  return std::string(step.substr(0, step.find('[')));
}

std::optional<Target> partOf(MemberDescription const& member, std::string_view rest) {
  constexpr std::string_view bounds[] = {"val", "min", "max"};
  if (member.form() == MemberDescription::Form::setting) {
    bool const isPart = std::find(std::begin(bounds), std::end(bounds), rest) != std::end(bounds);
    if (isPart) return Target{Value::Kind::real, false, {}, {}, {}};
  }
  for (Keyword const& word : member.words()) {
    bool const isFlag = member.kind() == Value::Kind::record && word.word() == rest;
    if (isFlag) return Target{Value::Kind::flag, false, {}, {}, {}};
  }
  return std::nullopt;
}

Target targetOf(MemberDescription const& member, std::string const& path) {
  Target target{member.kind(), member.isSecret(), path, {}, {}};
  if (member.form() == MemberDescription::Form::setting) {
    target.kind = Value::Kind::real;
    target.path += ".val";
  }
  for (Keyword const& word : member.words()) {
    target.parts.push_back(word.word());
    target.codes.push_back(word.code());
  }
  for (MemberDescription const& part : member.members()) target.parts.push_back(part.name());
  return target;
}

Target find(Message const& message, std::string const& path) {
  std::vector<MemberDescription> members = message.members();
  std::string_view rest = path;
  while (!rest.empty()) {
    std::string const name = takeName(rest);
    auto const member =
        std::find_if(members.begin(), members.end(),
                     [&](MemberDescription const& known) { return known.name() == name; });
    if (member == members.end()) break;
    if (rest.empty()) return targetOf(*member, path);
    if (std::optional<Target> part = partOf(*member, rest)) {
      part->path = path;
      return *part;
    }
    members = std::vector<MemberDescription>(member->members());
  }
  unknown(message, path);
}

[[noreturn]] void refuse(std::string const& path, std::string const& expected) {
  throw EditFailure(path + ": expected " + expected);
}

template <class Number>
std::optional<Number> numberIn(std::string_view text) {
  Number number{};
  auto const result = std::from_chars(text.data(), text.data() + text.size(), number);
  bool const isAll = result.ec == std::errc() && result.ptr == text.data() + text.size();
  return isAll ? std::optional<Number>(number) : std::nullopt;
}

Value flagFrom(std::string const& path, std::string_view text) {
  for (std::string_view const yes : {"yes", "true", "on"}) {
    if (text == yes) return true;
  }
  for (std::string_view const no : {"no", "false", "off"}) {
    if (text == no) return false;
  }
  refuse(path, "yes or no");
}

Value wholeFrom(std::string const& path, std::string_view text) {
  if (auto const number = numberIn<std::int64_t>(text)) return *number;
  if (auto const number = numberIn<std::uint64_t>(text)) return *number;
  refuse(path, "a whole number");
}

Value realFrom(std::string const& path, std::string_view text) {
  if (auto const number = numberIn<std::int64_t>(text)) return *number;
  if (auto const number = numberIn<double>(text)) return *number;
  refuse(path, "a number");
}

Value keywordFrom(Target const& target, std::string_view text) {
  // Another number would be written as a word that nobody chose.
  auto const number = numberIn<std::int64_t>(text);
  bool const isCode =
      number && std::find(target.codes.begin(), target.codes.end(), *number) != target.codes.end();
  if (isCode) return *number;
  bool const isWord =
      std::find(target.parts.begin(), target.parts.end(), text) != target.parts.end();
  if (isWord) return text;
  throw EditFailure(target.path + ": expected one of: " + listed(target.parts) + '.' +
                    suggestion(text, target.parts));
}

Value valueFrom(Target const& target, std::string_view text) {
  switch (target.kind) {
    case Value::Kind::flag:
      return flagFrom(target.path, text);
    case Value::Kind::integer:
    case Value::Kind::natural:
      return wholeFrom(target.path, text);
    case Value::Kind::real:
      return realFrom(target.path, text);
    case Value::Kind::keyword:
      return keywordFrom(target, text);
    case Value::Kind::record:
      refuse(target.path, "one of its members: " + listed(target.parts));
    case Value::Kind::list:
      refuse(target.path, "one of its entries: " + target.path + "[0]");
    case Value::Kind::text:
    case Value::Kind::nothing:
      break;
  }
  return text;
}

/// The two halves of "path=value".
std::pair<std::string, std::string> halves(std::string const& assignment) {
  std::size_t const equals = assignment.find('=');
  if (equals == assignment.npos || equals == 0) {
    throw EditFailure("expected a member, '=' and its value");
  }
  return {assignment.substr(0, equals), assignment.substr(equals + 1)};
}

}  // namespace

Edit editOf(Message const& message, std::string const& assignment) {
  auto const [path, text] = halves(assignment);
  Target const target = find(message, path);
  if (target.isSecret) {
    throw EditFailure(path + " is a secret, and every list of processes shows arguments; put it " +
                      "into a file: --set-file " + path + "=FILE ('-': standard input)");
  }
  return {target.path, valueFrom(target, text)};
}

namespace {

std::string_view read(InputReader& reader, std::string const& file) try {
  return reader.read(file);
} catch (InputFailure const& failure) {
  throw InputFailure(failure.status(), failure.what(), file);
}

}  // namespace

Edit editOfFile(Message const& message, std::string const& assignment) {
  auto const [path, file] = halves(assignment);
  Target const target = find(message, path);
  InputReader reader(longestValue);
  std::string_view text = read(reader, file);
  if (!text.empty() && text.back() == '\n') text.remove_suffix(1);
  if (!text.empty() && text.back() == '\r') text.remove_suffix(1);
  Edit edit{target.path, valueFrom(target, text)};
  if (target.isSecret) edit.value.markSecret();
  return edit;
}

void apply(std::vector<Edit> const& edits, Value& record) {
  for (Edit const& edit : edits) {
    try {
      record.set(edit.path, edit.value);
    } catch (ValueError const&) {
      throw EditFailure(edit.path + ": the record has no such place");
    }
  }
}

namespace {

/// What a document of these choices is, or why there is none.
std::string outcome(Message const& message, Value const& record, Value const& choices) {
  Composition const composition = compose(message.name(), record, choices);
  if (composition) return composition.text();
  std::string problems;
  for (Problem const& problem : composition.problems()) problems += problem.message() + '\n';
  return problems;
}

Value changedWords(Message const& message, Choice const& choice, Value const& before,
                   Value const& after, Value const& choices) {
  Value changed = Value::list();
  for (std::string const& word : choice.words()) {
    Value one = choices;
    if (one.find("zero_missing") == nullptr) one.add("zero_missing", true);
    one.add(choice.name(), Value::list({word}));
    if (outcome(message, before, one) != outcome(message, after, one)) changed.append(word);
  }
  return changed;
}

}  // namespace

Value choicesOfChanges(Message const& message, Value const& before, Value const& after,
                       Value const& choices) {
  Value all = choices;
  for (Choice const& choice : message.choices()) {
    bool const isOpen =
        choice.form() == Choice::Form::words && choices.find(choice.name()) == nullptr;
    if (!isOpen) continue;
    Value changed = changedWords(message, choice, before, after, choices);
    if (changed.empty()) throw RecordFailure({}, "nothing changes: the record says so already");
    all.add(choice.name(), std::move(changed));
  }
  return all;
}

}  // namespace Kovra::tool
