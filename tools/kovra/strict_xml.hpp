/// @file
/// A second opinion: what a parser says that takes nothing but XML.

#ifndef KOVRA_TOOL_STRICT_XML_HPP
#define KOVRA_TOOL_STRICT_XML_HPP

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace Kovra::tool {

// Kovra reads what printers send, which now and then is no XML. What it takes and others refuse is
// a finding of the tool's own, beside those of the library.
inline constexpr char strictId[] = "XML";
inline constexpr char strictKind[] = "no_strict_xml";
inline constexpr char strictTitle[] = "no XML by the letter";
inline constexpr char strictExplanation[] =
    "Kovra read the text, but it is no well-formed XML 1.0, or declares entities: a parser that "
    "takes XML by the letter stops at this place. Other programs may refuse the reply.";
inline constexpr char strictExample[] =
    "<get_wireless_status><ssid>Tom & Jerry</ssid></get_wireless_status>";

/// Where such a parser stops, and why.
struct StrictFault {
  int line = 0;
  int column = 0;
  std::size_t offset = 0;
  std::string message;
};

/// The first fault of a text, if there is one. Nothing but the text is read, whatever it refers to,
/// and it ends at the first entity that it declares: none is ever expanded. The message repeats
/// nothing of the text.
std::optional<StrictFault> strictFault(std::string_view text);

}  // namespace Kovra::tool

#endif
