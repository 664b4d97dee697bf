#include "table.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>

#include "printable.hpp"

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
  return value.known ? printable(value.text) + " (" + digits(value.integer) + ')'
                     : quoted(value.text) + " (" + digits(value.integer) + ", unknown)";
}

/// What stands beside the name. Entries of lists and members of records have rows of their own.
std::string cell(Value const& value, Secrets secrets) {
  if (isMasked(value, secrets)) return mask;
  switch (value.kind) {
    case Value::Kind::nothing:
      return "(nothing)";
    case Value::Kind::flag:
      return value.flag ? "yes" : "no";
    case Value::Kind::integer:
      return digits(value.integer);
    case Value::Kind::natural:
      return value.hexadecimal ? "0x" + digits(value.natural, 16) : digits(value.natural);
    case Value::Kind::real:
      return digits(value.real);
    case Value::Kind::text:
      return value.text.empty() ? quoted("") : printable(value.text);
    case Value::Kind::keyword:
      return keyword(value);
    case Value::Kind::list:
      return value.items.empty() ? "(none)" : "";
    case Value::Kind::record:
      return value.members.empty() ? "(empty)" : "";
  }
  return {};
}

void addRow(Rows& rows, std::size_t depth, std::string_view name, Value const& value,
            Secrets secrets) {
  rows.push_back({indented(depth, name), cell(value, secrets)});
  for (std::size_t i = 0; i < value.items.size(); ++i) {
    addRow(rows, depth + 1, std::to_string(i + 1), value.items[i], secrets);
  }
  for (Member const& member : value.members) {
    addRow(rows, depth + 1, member.name, member.value, secrets);
  }
}

std::vector<std::size_t> widthsOf(Rows const& rows) {
  std::vector<std::size_t> widths;
  for (auto const& row : rows) {
    widths.resize(std::max(widths.size(), row.size()));
    for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], row[i].size());
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
      line.append(widths[i] - row[i].size() + 2, ' ');
    }
    line.erase(line.find_last_not_of(' ') + 1);
    out += line + '\n';
  }
  return out;
}

std::string table(Reading const& reading, std::string_view root, Secrets secrets,
                  std::string_view source) {
  std::string out = source.empty() ? "" : printable(source) + ": ";
  out += reading.document + " <" + printable(root) + ">\n";
  Rows rows;
  for (Member const& member : reading.record.members) {
    addRow(rows, 1, member.name, member.value, secrets);
  }
  out += columns(rows);
  if (!reading.result) out += "  (the library reports false for this reply)\n";
  return out;
}

}  // namespace Kovra::tool
