/// @file
/// The inside of values, for those who build them: the observer of a reading, and who reads JSON.

#ifndef KOVRA_FRAME_VALUE_HPP
#define KOVRA_FRAME_VALUE_HPP

#include <string>
#include <string_view>
#include <vector>

#include "kovra_value.hpp"

namespace Kovra::detail {

struct ValueAccess {
  // Of a value that is of that kind.

  static std::string& text(Value& value) { return value.content_.text; }
  static std::string const& text(Value const& value) { return value.content_.text; }
  static std::vector<Value>& items(Value& value) { return value.content_.items; }
  static std::vector<Value> const& items(Value const& value) { return value.content_.items; }
  static std::vector<Member>& members(Value& value) { return value.content_.members; }
  static std::vector<Member> const& members(Value const& value) { return value.content_.members; }

  /// The value becomes an empty one of the kind; it is as secret as it was.
  static void become(Value& value, Value::Kind kind);
  /// A keyword, whether its word is known or not.
  static Value keyword(int code, std::string_view word, bool isKnown);
  static Value natural(std::uint64_t number, bool isHexadecimal);

  /// The member of a record whose name stands in a table for ever; it is added where there is none.
  static Value& ofTable(Value& record, std::string_view name);
  /// The value becomes a flag or a whole number.
  static void setSingle(Value& value, Value::Kind kind, std::uint64_t bits);
  static void setText(Value& value, std::string_view text);
  /// Adds a member to a record that has none of that name.
  static Value& add(Value& record, std::string_view name);

  /// Fills a value of another's kind, which holds nothing yet, with what the other holds.
  template <class Other>
  static void fill(Value& value, Other&& other);

 private:
  static Member& added(Value& record);
};

}  // namespace Kovra::detail

namespace Kovra::frame {
using Kovra::detail::ValueAccess;
}  // namespace Kovra::frame

#endif
