/// @file
/// Every kind of refusal and of note: one row each, from which their texts come.

#ifndef KOVRA_FACE_FINDINGS_HPP
#define KOVRA_FACE_FINDINGS_HPP

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "face/growth.hpp"
#include "frame/remarks.hpp"
#include "frame/scanner.hpp"
#include "kovra.hpp"

namespace Kovra::detail {

struct FindingKindData {
  char const* id;  ///< never used again for something else
  Severity severity;
  char const* name;   ///< for programs
  char const* title;  ///< a few words
  char const* explanation;
  std::string (*example)();         ///< a text of which decode() tells it,
  std::string_view exampleAs = {};  ///< asked for as this message,
  bool exampleSkips = false;        ///< and with what stands before the document skipped
};

/// A place in a host's text.
struct Spot {
  int line = 0;
  int column = 0;
  std::size_t offset = 0;
};

struct FindingData : Growth {
  FindingKindData const* kind = nullptr;  ///< null where nothing was found
  Spot begin;
  Spot end;
  std::string path;
  std::string element;
  std::string found;
  std::string kept;
  std::string earlier;  ///< the name of another element, which was overwritten
  std::vector<std::string> expected;
  std::size_t count = 1;

  /// One sentence without the place.
  std::string sentence() const;
};

/// Why a text is refused, apart from what the scanner finds.
enum class Refused : unsigned char {
  empty,
  textBefore,
  gzip,
  utf16,
  nul,
  unknownRoot,
  wrongRoot,
  unknownMessage,
};

std::span<FindingKindData const> allFindingKinds();
FindingKindData const& kindOf(frame::Remarked what);
FindingKindData const& kindOf(frame::Fault fault);
FindingKindData const& kindOf(Refused why);

}  // namespace Kovra::detail

#endif
