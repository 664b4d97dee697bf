#include "findings.hpp"

#include <algorithm>

#include "strict_xml.hpp"

namespace Kovra::tool {

namespace {

Found foundOf(Finding const& finding) {
  Found found;
  found.id = finding.id();
  found.kind = kindOf(finding);
  found.severity = finding.severity();
  found.begin = placeOf(finding);
  found.end = {finding.endLine(), finding.endColumn()};
  found.offset = finding.offset();
  found.endOffset = finding.endOffset();
  found.path = finding.path();
  found.element = finding.element();
  found.found = finding.found();
  found.kept = finding.kept();
  found.expected = finding.expected();
  found.count = finding.count();
  found.message = finding.message();
  return found;
}

Found foundOf(StrictFault const& fault) {
  Found found;
  found.id = strictId;
  found.kind = strictKind;
  found.begin = found.end = {fault.line, fault.column};
  found.offset = found.endOffset = fault.offset;
  found.message = "strict XML parsers stop here: " + fault.message;
  return found;
}

/// Where a finding without a place stands: behind all others.
bool standsBefore(Found const& a, Found const& b) {
  if (b.begin.line == 0) return a.begin.line != 0;
  return a.begin.line != 0 && a.offset < b.offset;
}

}  // namespace

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

std::vector<Found> libraryFindings(Decoding const& decoding) {
  std::vector<Found> all;
  if (!decoding) all.push_back(foundOf(decoding.refusal()));
  for (Note const& note : decoding.notes()) all.push_back(foundOf(note));
  return all;
}

std::vector<Found> findingsOf(Decoding const& decoding, std::string_view text) {
  std::vector<Found> all = libraryFindings(decoding);
  if (decoding.root().empty()) return all;  // it was refused for being no XML
  if (auto const fault = strictFault(text)) {
    Found strict = foundOf(*fault);
    auto const place = std::upper_bound(all.begin(), all.end(), strict, standsBefore);
    all.insert(place, std::move(strict));
  }
  return all;
}

std::string_view severityWord(Severity severity) {
  return severity == Severity::information ? "note" : nameOf(severity);
}

}  // namespace Kovra::tool
