/// @file
/// What became of a record: its members one by one.

#ifndef KOVRA_TOOL_CHANGES_HPP
#define KOVRA_TOOL_CHANGES_HPP

#include <cstdint>
#include <kovra.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace Kovra::tool {

/// One member, or one entry of a list, that is not what it was.
struct Change {
  enum class Kind : std::uint8_t {
    added,
    removed,
    value,   ///< of the same type
    type,    ///< what it is, and so the value as well
    masked,  ///< a secret that is masked on one side, so that nobody can tell
  };

  Kind kind;
  std::string path;     ///< as Value::at() takes it: "wireless.ssid", "jobs[2].uuid"
  std::string pointer;  ///< the same as a JSON Pointer: "/wireless/ssid", "/jobs/2/uuid"
  Value const* before;  ///< in the record that was compared; null for what was added
  Value const* after;   ///< null for what was removed
};

/// In the order of the record before, with what was added behind the members beside it. Entries of
/// lists are compared by their numbers; so what is removed of a list is its end. A setting is a
/// single value with its bounds. The records have to be there as long as the changes are.
std::vector<Change> changes(Value const& before, Value const& after);

/// A single value that is a secret; the entries of lists and the members of records tell that for
/// themselves.
bool isSecretValue(Value const& value);

/// For people: "idle (2)", "5 [0..9]", `"text"`; of a record or a list the whole of it.
std::string shownValue(Value const& value, Secrets secrets);

/// What it is, for people: "a whole number".
std::string_view typeOf(Value const& value);

/// A line for each change, and for each single value of what was added or removed, with colours
/// where there are any: "~ printer_state: ready (1) -> offline (7)".
std::string shownChanges(std::vector<Change> const& changes, Secrets secrets);

}  // namespace Kovra::tool

#endif
