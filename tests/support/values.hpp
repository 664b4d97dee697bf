/// @file
/// What became of records that are composed, for the tests of it.

#ifndef KOVRA_TESTS_SUPPORT_VALUES_HPP
#define KOVRA_TESTS_SUPPORT_VALUES_HPP

#include <string>
#include <vector>

#include "kovra.hpp"

namespace Kovra::test {

/// How a document of the library begins.
inline constexpr char declaration[] = "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n";

/// The document, or the first problem: whichever there is.
inline std::string outcome(Composition const& composition) {
  if (composition) return composition.text();
  std::vector<Problem> const problems = composition.problems();
  return composition.text() + (problems.empty() ? "no problem" : problems.front().message());
}

/// All problems, a line each.
inline std::string problemsOf(Composition const& composition) {
  std::string all;
  for (Problem const& problem : composition.problems()) all += problem.message() + '\n';
  return all;
}

/// Where the problems are, in their order.
inline std::string pathsOf(Composition const& composition) {
  std::string all;
  for (Problem const& problem : composition.problems()) all += problem.path() + ' ';
  return all;
}

/// The first problem; one of nothing where there is none.
inline Problem firstProblem(Composition const& composition) {
  std::vector<Problem> const problems = composition.problems();
  return problems.empty() ? Problem() : problems.front();
}

/// The choices, and that members which a record leaves out are zero.
inline Value withZeros(Value choices = Value::object()) {
  choices.add("zero_missing", true);
  return choices;
}

}  // namespace Kovra::test

#endif
