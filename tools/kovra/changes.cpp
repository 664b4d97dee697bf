#include "changes.hpp"

#include <algorithm>
#include <cmath>
#include <map>

#include "paths.hpp"
#include "printable.hpp"
#include "secret.hpp"
#include "table.hpp"
#include "terminal.hpp"

namespace Kovra::tool {

namespace {

using Kind = Change::Kind;

/// Where a value stands, in both ways of writing it.
struct Where {
  std::string path;
  std::string pointer;

  Where member(std::string_view name) const {
    Where inner = *this;
    if (!path.empty()) inner.path += '.';
    inner.path += name;
    inner.pointer += '/';
    for (char const letter : name) {
      if (letter == '~') {
        inner.pointer += "~0";
      } else if (letter == '/') {
        inner.pointer += "~1";
      } else {
        inner.pointer += letter;
      }
    }
    return inner;
  }
  Where entry(std::size_t index) const {
    std::string const number = std::to_string(index);
    return {path + '[' + number + ']', pointer + '/' + number};
  }
};

/// A number that JSON writes as null.
bool isNull(Value const& value) {
  return value.isNothing() || (value.isReal() && !std::isfinite(value.asReal()));
}

bool isSameType(Value const& a, Value const& b) {
  return a.kind() == b.kind() || (a.isWhole() && b.isWhole());
}

bool isMask(Value const& value) {
  return value.isText() && value.asText() == mask;
}

class Comparison {
 public:
  std::vector<Change> take() { return std::move(changes_); }

  void compare(Value const& before, Value const& after, Where const& where) {
    bool const isSecret = isSecretValue(before) || isSecretValue(after);
    if (isSecret && (isMask(before) || isMask(after))) {
      return add(Kind::masked, where, &before, &after);
    }
    if (!isSameType(before, after)) {
      if (!(isNull(before) && isNull(after))) add(Kind::type, where, &before, &after);
    } else if (before.isRecord() && !(isSetting(before) && isSetting(after))) {
      compareMembers(before, after, where);
    } else if (before.isList()) {
      compareEntries(before, after, where);
    } else if (before != after && !(isNull(before) && isNull(after))) {
      add(Kind::value, where, &before, &after);
    }
  }

 private:
  using Members = std::map<std::string_view, Value const*>;

  static Members membersOf(Value const& record) {
    Members members;
    for (Member const& member : record.members()) members.emplace(member.name(), &member.value());
    return members;
  }

  void compareMembers(Value const& before, Value const& after, Where const& where) {
    Members const then = membersOf(before);
    Members const now = membersOf(after);
    for (Member const& member : before.members()) {
      auto const other = now.find(member.name());
      if (other != now.end()) {
        compare(member.value(), *other->second, where.member(member.name()));
      } else {
        add(Kind::removed, where.member(member.name()), &member.value(), nullptr);
      }
    }
    for (Member const& member : after.members()) {
      if (then.count(member.name()) != 0) continue;
      add(Kind::added, where.member(member.name()), nullptr, &member.value());
    }
  }

  void compareEntries(Value const& before, Value const& after, Where const& where) {
    std::size_t const most = std::max(before.size(), after.size());
    for (std::size_t i = 0; i < most; ++i) {
      Value const* const then = i < before.size() ? &before.items()[i] : nullptr;
      Value const* const now = i < after.size() ? &after.items()[i] : nullptr;
      if (then != nullptr && now != nullptr) {
        compare(*then, *now, where.entry(i));
      } else {
        add(then != nullptr ? Kind::removed : Kind::added, where.entry(i), then, now);
      }
    }
  }

  void add(Kind kind, Where const& where, Value const* before, Value const* after) {
    changes_.push_back({kind, where.path, where.pointer, before, after});
  }

  std::vector<Change> changes_;
};

// For people.

/// What does not fit on a terminal goes on below itself.
std::string fitted(std::string const& line) {
  return wrapped(line, lineWidth(), 4) + '\n';
}

std::string shownText(std::string_view text) {
  return '"' + printable(text) + '"';
}

/// A line for each single value in what was added or removed.
void addLines(std::string& lines, Style style, std::string_view mark, std::string const& path,
              Value const& value, Secrets secrets) {
  bool const isSplit = !value.empty() && !isSetting(value);
  if (!isSplit) {
    std::string line(mark);
    line += printable(path) + ": " + shownValue(value, secrets);
    lines += fitted(styled(style, line));
    return;
  }
  for (Member const& member : value.members()) {
    addLines(lines, style, mark, memberPath(path, member.name()), member.value(), secrets);
  }
  for (std::size_t i = 0; i < value.size() && value.isList(); ++i) {
    addLines(lines, style, mark, entryPath(path, i), value.items()[i], secrets);
  }
}

bool isHidden(Change const& change, Secrets secrets) {
  return secrets == Secrets::masked &&
         (isSecretValue(*change.before) || isSecretValue(*change.after));
}

std::string shownType(Value const& value, Secrets secrets) {
  return std::string(typeOf(value)) + ' ' + shownValue(value, secrets);
}

/// Of what is there before and after.
std::string shownDifference(Change const& change, Secrets secrets) {
  if (change.kind == Kind::masked) {
    return std::string("not compared, masked ") +
           (isMask(*change.before) ? isMask(*change.after) ? "in both" : "in the first"
                                   : "in the second");
  }
  if (isHidden(change, secrets)) return "differ";
  if (change.kind == Kind::type) {
    return shownType(*change.before, secrets) + " -> " + shownType(*change.after, secrets);
  }
  return shownValue(*change.before, secrets) + " -> " + shownValue(*change.after, secrets);
}

std::string markOf(Kind kind) {
  return kind == Kind::type ? "! " : kind == Kind::masked ? "? " : "~ ";
}

}  // namespace

std::vector<Change> changes(Value const& before, Value const& after) {
  Comparison comparison;
  comparison.compare(before, after, {});
  return comparison.take();
}

bool isSecretValue(Value const& value) {
  bool const isSingle = value.isFlag() || value.isWhole() || value.isReal() || value.isText();
  return isSingle && value.isSecret();
}

std::string shownValue(Value const& value, Secrets secrets) {
  if (isSecretValue(value) && secrets == Secrets::masked) return mask;
  if (value.isText()) return shownText(value.asText());
  if (value.empty() || isSetting(value)) return cell(value, secrets);
  std::string inner;
  for (Member const& member : value.members()) {
    inner += (inner.empty() ? "" : ", ") + printable(member.name()) + ": " +
             shownValue(member.value(), secrets);
  }
  for (Value const& item : value.items()) {
    inner += (inner.empty() ? "" : ", ") + shownValue(item, secrets);
  }
  return value.isList() ? '[' + inner + ']' : '{' + inner + '}';
}

std::string_view typeOf(Value const& value) {
  switch (value.kind()) {
    case Value::Kind::nothing:
      return "nothing";
    case Value::Kind::flag:
      return "a flag";
    case Value::Kind::integer:
    case Value::Kind::natural:
      return "a whole number";
    case Value::Kind::real:
      return "a measure";
    case Value::Kind::text:
      return "a text";
    case Value::Kind::keyword:
      return "a keyword";
    case Value::Kind::list:
      return "a list";
    case Value::Kind::record:
      return "a record";
  }
  return {};
}

std::string shownChanges(std::vector<Change> const& changes, Secrets secrets) {
  std::string lines;
  for (Change const& change : changes) {
    if (change.kind == Kind::added) {
      addLines(lines, Style::good, "+ ", change.path, *change.after, secrets);
    } else if (change.kind == Kind::removed) {
      addLines(lines, Style::error, "- ", change.path, *change.before, secrets);
    } else {
      lines += fitted(styled(Style::warning, markOf(change.kind)) + printable(change.path) + ": " +
                      shownDifference(change, secrets));
    }
  }
  return lines;
}

}  // namespace Kovra::tool
