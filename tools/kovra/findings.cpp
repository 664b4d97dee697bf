#include "findings.hpp"

#include <algorithm>
#include <vector>

namespace Kovra::tool {

std::string kindOf(Finding const& finding) {
  std::vector<FindingKind> const kinds = findingKinds();
  auto const kind = std::find_if(kinds.begin(), kinds.end(), [&](FindingKind const& known) {
    return known.id() == finding.id();
  });
  return kind != kinds.end() ? kind->name() : "";
}

Place placeOf(Finding const& finding) {
  return {finding.line(), finding.column()};
}

}  // namespace Kovra::tool
