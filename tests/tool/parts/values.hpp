/// @file
/// Values as the face makes them, for the tests of what is printed of them.

#ifndef KOVRA_TESTS_TOOL_VALUES_HPP
#define KOVRA_TESTS_TOOL_VALUES_HPP

#include <kovra.hpp>
#include <string>
#include <utility>
#include <vector>

namespace Kovra::tool {

inline Value flag(bool set) {
  Value value;
  value.kind = Value::Kind::flag;
  value.flag = set;
  return value;
}

inline Value integer(long number) {
  Value value;
  value.kind = Value::Kind::integer;
  value.integer = number;
  return value;
}

inline Value natural(unsigned long number) {
  Value value;
  value.kind = Value::Kind::natural;
  value.natural = number;
  return value;
}

inline Value bits(unsigned long number) {
  Value value = natural(number);
  value.hexadecimal = true;
  return value;
}

inline Value real(double number) {
  Value value;
  value.kind = Value::Kind::real;
  value.real = number;
  return value;
}

inline Value text(std::string const& bytes) {
  Value value;
  value.kind = Value::Kind::text;
  value.text = bytes;
  return value;
}

inline Value keyword(long code, std::string const& word, bool known) {
  Value value;
  value.kind = Value::Kind::keyword;
  value.integer = code;
  value.text = word;
  value.known = known;
  return value;
}

inline Value list(std::vector<Value> items) {
  Value value;
  value.kind = Value::Kind::list;
  value.items = std::move(items);
  return value;
}

inline Value record(std::vector<Member> members) {
  Value value;
  value.kind = Value::Kind::record;
  value.members = std::move(members);
  return value;
}

inline Value secret(Value value) {
  value.secret = true;
  return value;
}

/// A reading of one document "probe" that took the reply.
inline Reading readingOf(std::vector<Member> members) {
  Reading reading;
  reading.document = "probe";
  reading.result = true;
  reading.record = record(std::move(members));
  return reading;
}

}  // namespace Kovra::tool

#endif
