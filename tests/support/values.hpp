/// @file
/// Values as a person would write them, for the tests of what is composed of them.

#ifndef KOVRA_TESTS_SUPPORT_VALUES_HPP
#define KOVRA_TESTS_SUPPORT_VALUES_HPP

#include <initializer_list>
#include <string>
#include <utility>

#include "kovra.hpp"

namespace Kovra::test {

inline Value text(std::string const& bytes) {
  Value value;
  value.kind = Value::Kind::text;
  value.text = bytes;
  return value;
}

inline Value number(long whole) {
  Value value;
  value.kind = Value::Kind::integer;
  value.integer = whole;
  return value;
}

inline Value real(double number) {
  Value value;
  value.kind = Value::Kind::real;
  value.real = number;
  return value;
}

inline Value record(std::initializer_list<std::pair<char const*, Value>> members) {
  Value value;
  value.kind = Value::Kind::record;
  for (auto const& [name, member] : members) value.members.push_back({name, member});
  return value;
}

/// The same with texts for all its members.
inline Value texts(std::initializer_list<std::pair<char const*, char const*>> members) {
  Value value = record({});
  for (auto const& [name, member] : members) value.members.push_back({name, text(member)});
  return value;
}

/// How a document of the library begins.
inline constexpr char declaration[] = "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n";

/// The document, or the problem: whichever there is.
inline std::string outcome(Composition const& composition) {
  if (composition.composed) return composition.text;
  return composition.text + composition.problem.description();
}

}  // namespace Kovra::test

#endif
