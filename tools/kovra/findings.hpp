/// @file
/// What was found in replies, for messages.

#ifndef KOVRA_TOOL_FINDINGS_HPP
#define KOVRA_TOOL_FINDINGS_HPP

#include <cstddef>
#include <kovra.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "input.hpp"

namespace Kovra::tool {

/// The name of the finding's kind: "unknown_root". Empty where nothing was found.
std::string kindOf(Finding const& finding);

Place placeOf(Finding const& finding);

/// The kind of the note that stands for others which are not listed.
inline constexpr char unlistedKind[] = "unlisted";

/// What the library or the tool itself found in a reply; the members are those of a Finding.
struct Found {
  std::string id;
  std::string kind;
  Severity severity = Severity::warning;
  Place begin;
  Place end;
  std::size_t offset = 0;
  std::size_t endOffset = 0;
  std::string path;
  std::string element;
  std::string found;
  std::string kept;
  std::vector<std::string> expected;
  std::size_t count = 1;
  std::string message;
};

/// What the library has to say: why the text was refused, or the notes on what was lost or changed.
std::vector<Found> libraryFindings(Decoding const& decoding);

/// All that there is to find in a text, in its order: why it was refused, the notes on what was
/// lost or changed, and what a parser says that takes nothing but XML.
std::vector<Found> findingsOf(Decoding const& decoding, std::string_view text);

/// As messages call it: "error", "warning" or "note".
std::string_view severityWord(Severity severity);

}  // namespace Kovra::tool

#endif
