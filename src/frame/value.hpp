/// @file
/// The inside of values, for those who build them: the observer of a reading, and who reads JSON.

#ifndef KOVRA_FRAME_VALUE_HPP
#define KOVRA_FRAME_VALUE_HPP

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "kovra_value.hpp"

namespace Kovra::detail {

struct ValueAccess {
  // Of a value that is of that kind.

  static std::string& text(Value& value) { return value.content_.text; }
  static std::string const& text(Value const& value) { return value.content_.text; }
  static std::vector<Value>& items(Value& value) { return value.content_.items.all; }
  static std::vector<Value> const& items(Value const& value) { return value.content_.items.all; }
  static std::vector<Member>& members(Value& value) { return value.content_.members.all; }
  static std::vector<Member> const& members(Value const& value) {
    return value.content_.members.all;
  }

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

  /// Marks the value and all that is in it, which is no deeper than JSON may be.
  static void markAll(Value& value, bool isSecret) noexcept;
  /// Gives a member that has no name that of another.
  static void name(Member& member, Member const& other) noexcept;

  /// Throws for what stands too deep to be copied, compared or printed.
  static void checkDepth(std::size_t depth);

  // What values do with all that is in them. Each knows how deep it is, or asks no stack at all.

  /// Fills one that is nothing with a copy of another.
  static void copy(Value& value, Value const& other, std::size_t depth);
  static bool isSame(Value const& a, Value const& b, std::size_t depth);
  /// Gives back what a list or a record holds; it is nothing afterwards.
  static void release(Value& top) noexcept;

 private:
  static Member& added(Value& record);
  static bool haveSameMembers(Value const& a, Value const& b, std::size_t depth);
  static Value* lastIn(Value& value) noexcept;
  static void dropLast(Value& value) noexcept;
  static Value*& above(Value& value) noexcept;
};

}  // namespace Kovra::detail

namespace Kovra::frame {
using Kovra::detail::ValueAccess;
}  // namespace Kovra::frame

#endif
