/// @file
/// Findings by their names: what a test expects of a reading.

#ifndef KOVRA_TESTS_SUPPORT_FINDINGS_HPP
#define KOVRA_TESTS_SUPPORT_FINDINGS_HPP

#include <algorithm>
#include <string>
#include <vector>

#include "kovra.hpp"

namespace Kovra::test {

/// The name of its kind: "unknown_element". Empty for an id that no kind has.
inline std::string kindOf(Finding const& finding) {
  std::vector<FindingKind> const kinds = findingKinds();
  auto const kind = std::find_if(kinds.begin(), kinds.end(), [&](FindingKind const& known) {
    return known.id() == finding.id();
  });
  return kind != kinds.end() ? kind->name() : "";
}

/// All notes, a line each.
inline std::string notesOf(std::vector<Note> const& notes) {
  std::string all;
  for (Note const& note : notes) all += note.message() + '\n';
  return all;
}

}  // namespace Kovra::test

#endif
