// What is said of all kinds of refusal and of note: the file beside this holds it as people and
// programs get it. Ids are never used again, so a row that goes elsewhere stands out, too.

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "kovra.hpp"
#include "support/golden.hpp"

namespace Kovra {
namespace {

/// As a person can read it; of a long one its length.
std::string shown(std::string const& text) {
  if (text.size() > 1000) return std::to_string(text.size()) + " bytes";
  std::ostringstream out;
  for (char const c : text) {
    bool const isPlain = c >= ' ' && c <= '~';
    if (isPlain) out << c;
    if (!isPlain) out << "\\x" << std::hex << static_cast<int>(static_cast<unsigned char>(c));
  }
  return out.str();
}

std::string printed() {
  std::ostringstream out;
  for (FindingKind const& kind : findingKinds()) {
    out << kind.id() << ' ' << static_cast<int>(kind.severity()) << ' ' << kind.name() << ": "
        << kind.title() << '\n'
        << "  " << kind.explanation() << '\n'
        << "  example " << kind.exampleAs() << ": " << shown(kind.example()) << '\n';
  }
  return out.str();
}

TEST(FindingKinds, AreToldRowByRow) {
  test::expectGolden(printed(), "findings.txt");
}

}  // namespace
}  // namespace Kovra
