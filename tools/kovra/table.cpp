#include "table.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <map>

#include "paths.hpp"
#include "printable.hpp"
#include "secret.hpp"
#include "terminal.hpp"

namespace Kovra::tool {

namespace {

template <class Number, class... Form>
std::string digits(Number number, Form... form) {
  std::array<char, 64> text{};
  auto const result = std::to_chars(text.data(), text.data() + text.size(), number, form...);
  return {text.data(), result.ptr};
}

std::string quoted(std::string_view text) {
  return '"' + printable(text) + '"';
}

std::string keyword(Value const& value) {
  return value.isKnown() ? printable(value.word()) + " (" + digits(value.code()) + ')'
                         : quoted(value.word()) + " (" + digits(value.code()) + ", unknown)";
}

std::string natural(Value const& value) {
  std::uint64_t const number = value.asNatural();
  return value.isHexadecimal() ? "0x" + digits(number, 16) : digits(number);
}

std::string text(std::string_view text) {
  return text.empty() ? quoted("") : printable(text);
}

/// Is this a single value to be masked? Lists and records are not: their entries are, each by
/// itself. A keyword is no secret, since its words are public.
bool isMasked(Value const& value, Secrets secrets) {
  bool const isSingle = value.isFlag() || value.isWhole() || value.isReal() || value.isText();
  return secrets == Secrets::masked && value.isSecret() && isSingle;
}

/// "40 [0..63]"; the value alone where nothing tells its bounds.
std::string setting(Value const& value, Secrets secrets) {
  auto const bound = [&](std::string_view name) {
    Value const* const found = value.find(name);
    if (found == nullptr) return std::string("?");
    bool const isShownText = found->isText() && !isMasked(*found, secrets);
    return isShownText ? quoted(found->asText()) : cell(*found, secrets);
  };
  std::string shown = bound("val");
  if (value.size() > 1) shown += " [" + bound("min") + ".." + bound("max") + ']';
  return shown;
}

}  // namespace

bool isSetting(Value const& value) {
  if (!value.isRecord() || value.find("val") == nullptr) return false;
  return std::all_of(value.members().begin(), value.members().end(), [](Member const& member) {
    bool const isPart = member.name() == "val" || member.name() == "min" || member.name() == "max";
    return isPart && member.value().empty();
  });
}

// Entries of lists and members of records have rows of their own.
std::string cell(Value const& value, Secrets secrets) {
  if (isMasked(value, secrets)) return mask;
  switch (value.kind()) {
    case Value::Kind::nothing:
      return "(nothing)";
    case Value::Kind::flag:
      return value.asBool() ? "yes" : "no";
    case Value::Kind::integer:
      return digits(value.asInteger());
    case Value::Kind::natural:
      return natural(value);
    case Value::Kind::real:
      return digits(value.asReal());
    case Value::Kind::text:
      return text(value.asText());
    case Value::Kind::keyword:
      return keyword(value);
    case Value::Kind::list:
      return value.empty() ? "(none)" : "";
    case Value::Kind::record:
      return value.empty() ? "(empty)" : isSetting(value) ? setting(value, secrets) : "";
  }
  return {};
}

namespace {

/// A line of a table of names and values.
struct Row {
  std::string name;  ///< behind its indentation
  std::string value;
  Need need = Need::none;
};

char const* markOf(Need need) {
  switch (need) {
    case Need::now:
      return "! ";
    case Need::soon:
      return "* ";
    case Need::unknown:
      return "? ";
    case Need::none:
      break;
  }
  return "  ";
}

Style styleOf(Need need) {
  if (need == Need::none) return Style::plain;
  return need == Need::now ? Style::error : Style::warning;
}

/// A path without the numbers of entries, which a table shows in its own way.
std::string withoutNumbers(std::string_view path) {
  std::string names;
  bool isNumber = false;
  for (char const letter : path) {
    isNumber = letter == '[' || (isNumber && letter != ']');
    if (!isNumber && letter != ']') names += letter;
  }
  return names;
}

/// Makes the rows of a record.
class Tabulation {
 public:
  Tabulation(Value const& record, Secrets secrets, std::vector<Sign> const& signs)
      : secrets_(secrets) {
    for (Sign const& sign : signs) addSign(record, sign);
    for (Member const& member : record.members()) {
      std::string const path(member.name());
      bool const isFirst = member.value().empty() && needs_.count(path) != 0;
      if (!isFirst) add(0, path, path, member.value());
    }
  }

  std::vector<Row> take() { return std::move(rows_); }

 private:
  /// Of equal ones in a list one row stands for all.
  void addSign(Value const& record, Sign const& sign) {
    for (std::string const& path : sign.paths) needs_.emplace(path, sign.need);
    Value const& value = record.at(sign.paths.front());
    bool const isNumber = value.isWhole() || value.isReal();
    std::string said = isNumber ? printable(sign.said) : cell(value, secrets_);
    if (sign.count > 1) said += ", " + std::to_string(sign.count) + " times";
    rows_.push_back({printable(withoutNumbers(sign.paths.front())), std::move(said), sign.need});
  }

  void add(std::size_t depth, std::string_view name, std::string const& path, Value const& value) {
    auto const need = needs_.find(path);
    rows_.push_back({std::string(2 * depth, ' ') + printable(name), cell(value, secrets_),
                     need != needs_.end() ? need->second : Need::none});
    if (isSetting(value)) return;
    for (std::size_t i = 0; i < value.items().size(); ++i) {
      add(depth + 1, std::to_string(i + 1), entryPath(path, i), value.items()[i]);
    }
    for (Member const& member : value.members()) {
      std::string const inner(member.name());
      add(depth + 1, inner, memberPath(path, inner), member.value());
    }
  }

  Secrets secrets_;
  std::map<std::string, Need, std::less<>> needs_;  ///< by the paths of what says it
  std::vector<Row> rows_;
};

constexpr std::size_t markWidth = 2;
constexpr std::size_t gap = 2;

std::size_t firstWordOf(Row const& row) {
  return shownColumns(row.value.substr(0, row.value.find(' ')));
}

/// How many blanks stand between a name and its value: so many that values stand below each other,
/// fewer where the value's first word fits only so; none where the value needs a line of its own.
std::size_t gapOf(Row const& row, std::size_t nameWidth, std::size_t lineWidth) {
  std::size_t const used = shownColumns(row.name);
  std::size_t const aligned = std::max(nameWidth, used) - used + gap;
  if (lineWidth == 0) return aligned;
  auto const fits = [&](std::size_t blanks) {
    return markWidth + used + blanks + firstWordOf(row) <= lineWidth;
  };
  return fits(aligned) ? aligned : fits(gap) ? gap : 0;
}

/// The row with its value in a column of its own, wrapped within that; below the name where lines
/// are too narrow for both.
std::string lineOf(Row const& row, std::size_t nameWidth, std::size_t lineWidth) {
  std::string const name = styled(styleOf(row.need), markOf(row.need)) + row.name;
  if (row.value.empty()) return name + '\n';
  std::string const value = styled(styleOf(row.need), row.value);
  if (std::size_t const blanks = gapOf(row, nameWidth, lineWidth)) {
    std::string const line = name + std::string(blanks, ' ') + value;
    return wrapped(line, lineWidth, markWidth + nameWidth + gap) + '\n';
  }
  std::size_t const room = lineWidth - std::min(lineWidth, firstWordOf(row));
  std::size_t const below = markWidth + row.name.find_first_not_of(' ') + gap;
  std::size_t const indent = std::min(below, room);
  return name + '\n' + wrapped(std::string(indent, ' ') + value, lineWidth, indent) + '\n';
}

using Rows = std::vector<std::vector<std::string>>;

std::vector<std::size_t> widthsOf(Rows const& rows) {
  std::vector<std::size_t> widths;
  for (auto const& row : rows) {
    widths.resize(std::max(widths.size(), row.size()));
    for (std::size_t i = 0; i < row.size(); ++i)
      widths[i] = std::max(widths[i], shownColumns(row[i]));
  }
  return widths;
}

}  // namespace

std::string columns(Rows const& rows) {
  std::vector<std::size_t> const widths = widthsOf(rows);
  std::string out;
  for (auto const& row : rows) {
    std::string line;
    for (std::size_t i = 0; i < row.size(); ++i) {
      line += row[i];
      line.append(widths[i] - shownColumns(row[i]) + 2, ' ');
    }
    line.erase(line.find_last_not_of(' ') + 1);
    out += line + '\n';
  }
  return out;
}

std::string rows(Value const& record, Secrets secrets, std::vector<Sign> const& signs) {
  std::vector<Row> const all = Tabulation(record, secrets, signs).take();
  std::size_t const width = lineWidth();
  std::size_t nameWidth = 0;
  for (Row const& row : all) nameWidth = std::max(nameWidth, shownColumns(row.name));
  if (width != 0) nameWidth = std::min(nameWidth, std::max<std::size_t>(width * 2 / 3, 4) - 4);
  std::string lines;
  for (Row const& row : all) lines += lineOf(row, nameWidth, width);
  return lines;
}

namespace {

/// Can the result be false for a host that would have taken the reply, and true for another reply?
bool isResultTold(Reading const& reading) {
  if (reading.record().empty()) return false;
  std::vector<Message> const all = messages();
  return std::any_of(all.begin(), all.end(), [&](Message const& message) {
    return message.name() == reading.message() && message.hasResult();
  });
}

}  // namespace

std::string table(Reading const& reading, std::string_view root, Secrets secrets,
                  std::string_view source) {
  Value const& record = reading.record();
  auto const line = [](std::string const& text) {
    return wrapped(text, lineWidth(), markWidth) + '\n';
  };
  auto const remark = [&](char const* text) { return line("  " + styled(Style::faint, text)); };
  std::string const from = source.empty() ? "" : printable(source) + ": ";
  std::string out =
      line(from + styled(Style::heading, reading.message()) + " <" + printable(root) + '>');
  out += rows(record, secrets, signsOf(factsOf(reading.message(), record)));
  if (record.empty()) out += remark("(nothing that Kovra knows)");
  if (!reading.result() && isResultTold(reading)) {
    out += remark("(the library reports false for this reply)");
  }
  return out;
}

}  // namespace Kovra::tool
