#include "flat.hpp"

#include <algorithm>
#include <cstddef>
#include <string>

#include "paths.hpp"
#include "printable.hpp"
#include "record.hpp"
#include "secret.hpp"

namespace Kovra::tool {

namespace {

constexpr std::string_view equals = " = ";

void addLine(std::string& lines, std::string_view prefix, std::string const& path,
             std::string_view value) {
  lines.append(prefix).append(path).append(equals).append(value) += '\n';
}

std::string single(Value const& value, Secrets secrets) {
  bool const isMasked = secrets == Secrets::masked && value.isSecret();
  if (isMasked && !value.isKeyword() && !value.isNothing()) return Value(mask).toJson();
  if (!value.isKeyword()) return value.toJson();
  if (value.isKnown()) return Value(value.word()).toJson();
  return std::to_string(value.code()) + "  # \"" + printable(value.word()) + '"';
}

void add(std::string& lines, std::string_view prefix, std::string const& path, Value const& value,
         Secrets secrets) {
  bool const isContainer = value.isList() || value.isRecord();
  if (!isContainer) return addLine(lines, prefix, path, single(value, secrets));
  if (value.empty()) return addLine(lines, prefix, path, value.isList() ? "[]" : "{}");
  for (std::size_t i = 0; i < value.items().size(); ++i) {
    add(lines, prefix, entryPath(path, i), value.items()[i], secrets);
  }
  for (Member const& member : value.members()) {
    add(lines, prefix, memberPath(path, member.name()), member.value(), secrets);
  }
}

constexpr bool isBlank(char letter) {
  return letter == ' ' || letter == '\t' || letter == '\r' || letter == '\n';
}

/// Without blanks around it.
std::string_view trimmed(std::string_view text) {
  while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
  return text;
}

/// Without what stands behind "#" outside of a text.
std::string_view withoutComment(std::string_view text) {
  bool isInText = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '"') isInText = !isInText;
    if (isInText && text[i] == '\\') ++i;
    if (!isInText && text[i] == '#') return trimmed(text.substr(0, i));
  }
  return text;
}

/// Of lists and records in one another.
std::size_t levelsOf(std::string_view path) {
  return static_cast<std::size_t>(std::count(path.begin(), path.end(), '.') +
                                  std::count(path.begin(), path.end(), '[')) +
         1;
}

void addFrom(std::string_view line, int number, Value& record) {
  std::size_t const end = line.find(equals);
  if (end == line.npos) {
    throw RecordFailure({number, 1}, "found a line without \" = \"; expected path = value");
  }
  std::string const path(trimmed(line.substr(0, end)));
  if (levelsOf(path) > maxLevels) {
    throw RecordFailure({number, 1},
                        "found a path of more than " + std::to_string(maxLevels) + " levels");
  }
  std::string_view const text = withoutComment(trimmed(line.substr(end + equals.size())));
  int const column = static_cast<int>(text.data() - line.data()) + 1;
  try {
    Value value = Value::fromJson(text);
    value.markSecret();
    record.set(path, std::move(value));
  } catch (JsonError const& error) {
    throw RecordFailure({number, column}, std::string("malformed value: ") + error.what());
  } catch (ValueError const&) {
    throw RecordFailure({number, 1},
                        "found a path that the lines before do not lead to; "
                        "expected members of records, and entries in their order");
  }
}

}  // namespace

std::string flat(Value const& record, Secrets secrets, std::string_view prefix) {
  std::string lines;
  for (Member const& member : record.members()) {
    add(lines, prefix, std::string(member.name()), member.value(), secrets);
  }
  return lines;
}

bool isFlat(std::string_view text) {
  text = trimmed(text);
  char const first = text.empty() ? '{' : text.front();
  bool const isLetter = static_cast<unsigned char>((first | 0x20) - 'a') < 26;
  return first == '#' || (isLetter && text.substr(0, text.find('\n')).find(equals) != text.npos);
}

Value fromFlat(std::string_view text) {
  Value record = Value::object();
  std::size_t values = 0;
  for (int number = 1; !text.empty(); ++number) {
    std::size_t const end = text.find('\n');
    std::string_view const line = trimmed(text.substr(0, end));
    text.remove_prefix(end == text.npos ? text.size() : end + 1);
    if (line.empty() || line.front() == '#') continue;
    if (++values > maxValues) {
      throw RecordFailure({number, 1},
                          "found more than " + std::to_string(maxValues) + " values in all");
    }
    addFrom(line, number, record);
  }
  return record;
}

}  // namespace Kovra::tool
