/// @file
/// What there is to say of the kinds of findings, the tool's own among them.

#ifndef KOVRA_TOOL_KINDS_HPP
#define KOVRA_TOOL_KINDS_HPP

#include <kovra.hpp>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace Kovra::tool {

struct KindText {
  std::string id;
  std::string kind;
  Severity severity = Severity::warning;
  std::string title;
  std::string explanation;
  std::string example;
  std::string exampleAs;
  std::string message;  ///< what is said of the example
};

/// Of a kind that the library has.
KindText textOf(FindingKind const& kind);

/// Of the tool's own: text that is no XML by the letter.
KindText strictText();

/// Of every kind, in the order of their ids; the tool's own comes last.
std::vector<KindText> allKinds();

nlohmann::ordered_json jsonOf(KindText const& text);

}  // namespace Kovra::tool

#endif
