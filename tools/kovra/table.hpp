/// @file
/// Tables for people.

#ifndef KOVRA_TOOL_TABLE_HPP
#define KOVRA_TOOL_TABLE_HPP

#include <kovra.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "report_facts.hpp"

namespace Kovra::tool {

/// What one reader made of a reply: a heading and a row for each member. The heading names the
/// reply's file where `source` does.
std::string table(Reading const& reading, std::string_view root, Secrets secrets,
                  std::string_view source);

/// A row for each member of a record, and for all below it. What the signs tell of comes first; it
/// is marked there, and where it stands among others. On a terminal rows are wrapped.
std::string rows(Value const& record, Secrets secrets, std::vector<Sign> const& signs = {});

/// A single value in a row: a keyword as "idle (2)", a natural as people read it, a setting as
/// "40 [0..63]". Empty for another record, or a list, that holds something.
std::string cell(Value const& value, Secrets secrets);

/// Is it a setting: a record of a value `val` and its bounds `min` and `max`?
bool isSetting(Value const& value);

/// Rows of cells as aligned columns, without a heading.
std::string columns(std::vector<std::vector<std::string>> const& rows);

}  // namespace Kovra::tool

#endif
