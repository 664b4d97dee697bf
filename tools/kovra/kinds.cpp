#include "kinds.hpp"

#include <utility>

#include "findings.hpp"
#include "strict_xml.hpp"

namespace Kovra::tool {

namespace {

/// What is said of the example is looked up by trying it.
KindText withMessage(KindText text, ReadOptions const& options) {
  Decoding const decoding = decode(text.example, text.exampleAs, options);
  for (Found const& found : findingsOf(decoding, text.example)) {
    if (found.id == text.id) text.message = found.message;
  }
  return text;
}

}  // namespace

KindText textOf(FindingKind const& kind) {
  return withMessage({kind.id(), kind.name(), kind.severity(), kind.title(), kind.explanation(),
                      kind.example(), kind.exampleAs(), ""},
                     kind.exampleOptions());
}

KindText strictText() {
  return withMessage({strictId, strictKind, Severity::warning, strictTitle, strictExplanation,
                      strictExample, "", ""},
                     {});
}

std::vector<KindText> allKinds() {
  std::vector<KindText> all;
  for (FindingKind const& kind : findingKinds()) all.push_back(textOf(kind));
  all.push_back(strictText());
  return all;
}

nlohmann::ordered_json jsonOf(KindText const& text) {
  nlohmann::ordered_json json = {{"id", text.id},
                                 {"kind", text.kind},
                                 {"severity", nameOf(text.severity)},
                                 {"title", text.title},
                                 {"explanation", text.explanation},
                                 {"example", text.example}};
  if (!text.exampleAs.empty()) json["as"] = text.exampleAs;
  json["message"] = text.message;
  return json;
}

}  // namespace Kovra::tool
