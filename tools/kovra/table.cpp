#include "table.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>

#include "characters.hpp"
#include "printable.hpp"
#include "secret.hpp"

namespace Kovra::tool {

namespace {

using Rows = std::vector<std::vector<std::string>>;

std::string indented(std::size_t depth, std::string_view name) {
  return std::string(2 * depth, ' ').append(name);
}

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

}  // namespace

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
      return value.empty() ? "(empty)" : "";
  }
  return {};
}

namespace {

void addRow(Rows& rows, std::size_t depth, std::string_view name, Value const& value,
            Secrets secrets) {
  rows.push_back({indented(depth, name), cell(value, secrets)});
  for (std::size_t i = 0; i < value.items().size(); ++i) {
    addRow(rows, depth + 1, std::to_string(i + 1), value.items()[i], secrets);
  }
  for (Member const& member : value.members()) {
    addRow(rows, depth + 1, member.name(), member.value(), secrets);
  }
}

std::vector<std::size_t> widthsOf(Rows const& rows) {
  std::vector<std::size_t> widths;
  for (auto const& row : rows) {
    widths.resize(std::max(widths.size(), row.size()));
    for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], columnsOf(row[i]));
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
      line.append(widths[i] - columnsOf(row[i]) + 2, ' ');
    }
    line.erase(line.find_last_not_of(' ') + 1);
    out += line + '\n';
  }
  return out;
}

std::string rows(Value const& record, Secrets secrets) {
  Rows all;
  for (Member const& member : record.members()) {
    addRow(all, 1, member.name(), member.value(), secrets);
  }
  return columns(all);
}

std::string table(Reading const& reading, std::string_view root, Secrets secrets,
                  std::string_view source) {
  std::string out = source.empty() ? "" : printable(source) + ": ";
  out += reading.message() + " <" + printable(root) + ">\n" + rows(reading.record(), secrets);
  if (!reading.result()) out += "  (the library reports false for this reply)\n";
  return out;
}

}  // namespace Kovra::tool
