#include "edit.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

#include "input.hpp"
#include "keywords.hpp"
#include "record.hpp"
#include "suggest.hpp"
#include "table.hpp"
#include "words.hpp"

namespace Kovra::tool {

namespace {

/// More than any member holds.
constexpr std::size_t longestValue = 1 << 16;

/// What stands behind a setting in the path of its value.
constexpr std::string_view valuePart = ".val";

/// What a path leads to.
struct Target {
  Value::Kind kind = Value::Kind::nothing;
  bool isSecret = false;
  std::string path;                ///< of the value itself: a setting's is its `val`
  std::vector<std::string> parts;  ///< what a record has, or a keyword may be
  std::vector<Keyword> words;      ///< of a keyword, and of a text that may be one
  MemberDescription::Form form = MemberDescription::Form::plain;
};

std::string within(std::string_view outer, std::string_view inner) {
  return std::string(outer) + (outer.empty() ? "" : ".") + std::string(inner);
}

/// "[2]" of "cards[2].type", and of whatever was meant to be that; "[0]" where no number is told.
std::string entryIn(std::string_view path) {
  std::size_t const bracket = path.find('[');
  path.remove_prefix(std::min(bracket, path.size() - 1) + 1);
  auto const end = std::find_if_not(path.begin(), path.end(), isDigit);
  std::string const number(path.begin(), bracket == path.npos ? path.begin() : end);
  return '[' + (number.empty() ? "0" : number) + ']';
}

/// Every path that somebody may have meant; of lists with this entry.
void addPaths(std::vector<MemberDescription> const& members, std::string const& outer,
              std::string const& entry, std::vector<std::string>& paths) {
  for (MemberDescription const& member : members) {
    std::string const path = within(outer, member.name());
    bool const isList = member.kind() == Value::Kind::list;
    paths.push_back(path);
    addPaths(member.members(), path + (isList ? entry : ""), entry, paths);
  }
}

[[noreturn]] void unknown(Message const& message, std::string const& path) {
  std::vector<std::string> paths;
  if (!path.empty()) addPaths(message.members(), {}, entryIn(path), paths);
  throw EditFailure("unknown member \"" + path + "\"." + suggestion(path, paths));
}

/// One name of a path, and which entry of it.
struct Step {
  std::string name;
  bool isEntry = false;
};

/// Takes the first step off a path: "cards[0]" of "cards[0].type". None where it is no step.
std::optional<Step> takeStep(std::string_view& path) {
  std::size_t const point = std::min(path.find('.'), path.size());
  std::string_view const step = path.substr(0, point);
  path.remove_prefix(std::min(point + 1, path.size()));
  std::size_t const bracket = step.find('[');
  if (bracket == step.npos) return Step{std::string(step), false};
  std::string_view const number = step.substr(bracket + 1);
  bool const isNumber = number.size() > 1 && number.back() == ']' &&
                        std::all_of(number.begin(), number.end() - 1, isDigit);
  if (!isNumber) return std::nullopt;
  return Step{std::string(step.substr(0, bracket)), true};
}

std::optional<Target> partOf(MemberDescription const& member, std::string_view rest) {
  constexpr std::string_view bounds[] = {"val", "min", "max"};
  if (member.form() == MemberDescription::Form::setting) {
    bool const isPart = std::find(std::begin(bounds), std::end(bounds), rest) != std::end(bounds);
    if (isPart) return Target{Value::Kind::real, false, {}, {}, {}, {}};
  }
  for (Keyword const& word : member.words()) {
    bool const isFlag = member.kind() == Value::Kind::record && word.word() == rest;
    if (isFlag) return Target{Value::Kind::flag, false, {}, {}, {}, {}};
  }
  return std::nullopt;
}

/// The words by which other members say the same element: a text that is one of them is more than
/// any other text.
std::vector<Keyword> wordsBeside(MemberDescription const& member,
                                 std::vector<MemberDescription> const& members) {
  for (MemberDescription const& other : members) {
    bool const isSame = other.name() != member.name() && other.elements() == member.elements();
    if (isSame && other.kind() == Value::Kind::keyword) return other.words();
  }
  return {};
}

Target targetOf(MemberDescription const& member, std::vector<MemberDescription> const& members,
                std::string const& path, bool isEntry) {
  Target target{member.kind(), member.isSecret(), path, {}, {}, member.form()};
  if (member.form() == MemberDescription::Form::setting) {
    target.kind = Value::Kind::real;
    target.path += valuePart;
  }
  if (isEntry) target.kind = Value::Kind::record;
  target.words = member.kind() == Value::Kind::text ? wordsBeside(member, members) : member.words();
  for (Keyword const& word : target.words) target.parts.push_back(word.word());
  for (MemberDescription const& part : member.members()) target.parts.push_back(part.name());
  return target;
}

/// The member that a step leads to; an entry is one of a list, and only there anything is below it.
std::optional<MemberDescription> memberAt(std::vector<MemberDescription> const& members,
                                          Step const& step, bool isLast) {
  auto const member =
      std::find_if(members.begin(), members.end(),
                   [&](MemberDescription const& known) { return known.name() == step.name; });
  if (member == members.end()) return std::nullopt;
  bool const isList = member->kind() == Value::Kind::list;
  bool const fits = isList ? step.isEntry || isLast : !step.isEntry;
  return fits ? std::optional(*member) : std::nullopt;
}

Target find(Message const& message, std::string const& path) {
  std::vector<MemberDescription> members = message.members();
  std::string_view rest = path;
  while (!rest.empty()) {
    bool const endsInPoint = rest.back() == '.';
    std::optional<Step> const step = takeStep(rest);
    bool const isLast = rest.empty() && !endsInPoint;
    auto const member = step ? memberAt(members, *step, isLast) : std::nullopt;
    if (!member) break;
    if (isLast) return targetOf(*member, members, path, step->isEntry);
    if (std::optional<Target> part = partOf(*member, rest)) {
      part->path = path;
      return *part;
    }
    members = member->members();
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
  auto const number = numberIn<std::int64_t>(text);
  if (number && isCode(target.words, *number)) return *number;
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

/// Values of which not all are the same in a document that has the member.
std::vector<Value> othersFor(Target const& target) {
  using Form = MemberDescription::Form;
  if (target.kind == Value::Kind::flag) return {false, true};
  if (target.form == Form::ipv4) return {"192.0.2.1", "192.0.2.2"};
  if (target.form == Form::hardwareAddress) return {"02:00:5e:00:53:01", "02:00:5e:00:53:02"};
  bool const isText = target.kind == Value::Kind::text;
  std::vector<Value> others;
  if (isText) others = {"1", "2"};
  for (Keyword const& word : target.words) {
    others.push_back(isText ? Value(word.word()) : Value(word.code()));
  }
  return others.empty() ? std::vector<Value>{1, 2} : others;
}

Edit editFor(Target const& target, std::string_view text) {
  return {target.path, valueFrom(target, text), othersFor(target)};
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
  return editFor(target, text);
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
  Edit edit = editFor(target, text);
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

bool isValueOfSetting(std::string_view path) {
  return path.size() > valuePart.size() && path.substr(path.size() - valuePart.size()) == valuePart;
}

/// A bound of a setting; without one, or with one that is no number, there is none.
double boundOf(Value const& setting, std::string_view name) {
  constexpr double none = std::numeric_limits<double>::quiet_NaN();
  Value const* const bound = setting.find(name);
  return bound != nullptr ? bound->asReal(none) : none;
}

struct Bounds {
  double least;
  double most;
};

/// Those of a setting; none where they are no numbers.
std::optional<Bounds> boundsOf(Value const& setting) {
  Bounds const bounds{boundOf(setting, "min"), boundOf(setting, "max")};
  if (!std::isfinite(bounds.least) || !std::isfinite(bounds.most)) return {};
  return bounds;
}

void requireWithin(std::string const& member, Value const& number, Bounds const& bounds,
                   std::string_view whose) {
  double const value = number.asReal(bounds.least);
  if (value >= bounds.least && value <= bounds.most) return;
  auto const shown = [](Value const& one) { return cell(one, Secrets::shown); };
  std::string expected =
      "a number from " + shown(bounds.least) + " to " + shown(bounds.most) + ", the bounds that ";
  throw RecordFailure({}, sentence(member, shown(number), expected.append(whose)));
}

/// Bounds of the printer that admit nothing are none.
void requireWithinGiven(std::string const& member, Value const& number, Value const& setting) {
  std::optional<Bounds> const given = boundsOf(setting);
  if (given && given->least < given->most)
    requireWithin(member, number, *given, "the printer gave");
}

/// Of those that somebody asks for, only two zeros say that there are none.
void requireWithinChanged(std::string const& member, Value const& setting) {
  std::optional<Bounds> const changed = boundsOf(setting);
  Value const* const number = setting.find("val");
  bool const areNone = !changed || (changed->least == 0 && changed->most == 0);
  if (number != nullptr && !areNone) requireWithin(member, *number, *changed, "it is to have");
}

/// The setting that a bound belongs to; empty for another member.
std::string settingOfBound(std::string_view path) {
  for (std::string_view const bound : {".min", ".max"}) {
    if (path.ends_with(bound)) return std::string(path.substr(0, path.size() - bound.size()));
  }
  return {};
}

}  // namespace

std::string memberOf(Edit const& edit) {
  std::size_t const end = edit.path.size() - valuePart.size();
  return isValueOfSetting(edit.path) ? edit.path.substr(0, end) : edit.path;
}

bool isOverwritten(std::vector<Edit> const& edits, std::size_t index) {
  return std::any_of(edits.begin() + static_cast<std::ptrdiff_t>(index) + 1, edits.end(),
                     [&](Edit const& later) { return later.path == edits[index].path; });
}

void requireWithinBounds(std::vector<Edit> const& edits, Value const& before, Value const& after) {
  for (std::size_t i = 0; i < edits.size(); ++i) {
    if (isOverwritten(edits, i)) continue;
    std::string const member = memberOf(edits[i]);
    Value const* const given = isValueOfSetting(edits[i].path) ? before.findAt(member) : nullptr;
    if (given != nullptr) requireWithinGiven(member, edits[i].value, *given);
    std::string const setting = settingOfBound(edits[i].path);
    Value const* const changed = setting.empty() ? nullptr : after.findAt(setting);
    if (changed != nullptr) requireWithinChanged(setting, *changed);
  }
}

}  // namespace Kovra::tool
