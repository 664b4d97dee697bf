/// @file
/// The scanner: reads a reply's text, judges it and builds its tree, in one pass.
///
/// Replies come from the network, and TinyXML is no match for a hostile one: its parser calls
/// itself once per nesting level, compares each attribute of an element with all before it, and
/// leaves what it copied in freed memory. But hosts rely on what TinyXML makes of a text, oddities
/// included. So the scanner takes every byte for what TinyXML 2.6.2 (with Debian's patches) takes
/// it for and builds the same tree, in linear time and without recursion. It also knows where and
/// why TinyXML would give up, better than TinyXML tells.

#ifndef KOVRA_FRAME_SCANNER_HPP
#define KOVRA_FRAME_SCANNER_HPP

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "frame/bytes.hpp"
#include "frame/tree.hpp"

namespace Kovra::frame {

/// The deepest nesting of elements that is let through; the root alone is 1 deep.
inline constexpr std::size_t maxDepth = 128;

/// The most attributes on one element that are let through.
inline constexpr std::size_t maxAttributes = 256;

struct Limits {
  std::size_t depth = maxDepth;
  std::size_t attributes = maxAttributes;
};

/// How many zero bytes have to stand behind a text. One would end it, but in UTF-8 TinyXML steps
/// from a lead byte over as many bytes as that announces without a look at them. A sequence cut by
/// the end of the text thus carries it past the first zero, at worst (a lead byte of four) onto the
/// fourth, and only what it finds there stops it. From there on whole blocks are read.
inline constexpr std::size_t padding = 4 + blockSize;

/// Why a text is refused. Apart from the first four, each is a text that TinyXML calls malformed,
/// and there is no other.
enum class Fault {
  none,               ///< TinyXML builds a tree from the text and finds no error
  tooLong,            ///< hostile: the text is longer than a tree can hold
  tooDeep,            ///< hostile: an element would be more than `maxDepth` deep
  tooManyAttributes,  ///< hostile: more than `maxAttributes` on one element
  empty,              ///< something else than markup, or nothing, where the first `<` should be
  noElementName,      ///< a tag opens with a byte order mark and has no name behind it
  noAttributeName,    ///< no attribute, `/` or `>` in a tag, but something else
  noEqualsSign,       ///< an attribute's name without `=` behind it
  strayQuote,         ///< a quote inside a value that has none in front
  repeatedAttribute,  ///< two attributes of one name on one element
  badReference,       ///< `&#` with no `;` anywhere behind it, or with no number in front of that
  brokenEmptyTag,     ///< no `>` behind the `/` of a tag
  wrongEndTag,        ///< an end tag of another name than the open element's
  brokenEndTag,       ///< an end tag of the right name, but no `>` behind that
  brokenDeclaration,  ///< `<?xml` inside an element, with an attribute that cannot be read
  endsInTag,          ///< the text ends inside a start or end tag
  endsInQuotes,       ///< the text ends inside an attribute's quoted value
  endsInMarkup,       ///< the text ends inside a comment, CDATA or the like inside an element
  endsInElement,      ///< the text ends between the tags of an element
};

/// Is this the fault of a text that would harm the parser, well-formed or not?
constexpr bool isHostile(Fault fault) {
  return fault == Fault::tooLong || fault == Fault::tooDeep || fault == Fault::tooManyAttributes;
}

/// As in TinyXML, unknown reads like legacy: byte by byte.
enum class Encoding : std::uint8_t { unknown, utf8, legacy };

/// How many bytes TinyXML takes for a character that begins so. What cannot begin one counts as
/// one.
constexpr std::size_t utf8Length(char lead) {
  auto const byte = static_cast<unsigned char>(lead);
  if (byte < 0xC2 || byte > 0xF4) return 1;
  return byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
}

/// What the scanner has to say on a text. Born refused.
struct Scan {
  Fault fault = Fault::empty;
  std::size_t offset = 0;        ///< where the fault was noticed: for `endsIn...`, the text's end
  std::string_view found;        ///< what is wrong there, where that is a name or a beginning
  std::string_view openElement;  ///< name of the innermost element open at the fault, or empty
  std::size_t openAt = 0;        ///< where its `<` stands
  /// A short text at which TinyXML stops with the same error, for hosts that ask a document.
  char const* likeness = "";
  std::size_t end = 0;         ///< where the document ends: what stands behind it is not looked at
  bool isAltered = false;      ///< did decoding drop or change a part of some value?
  bool byteOrderMark = false;  ///< does the text begin with that of UTF-8?
  Encoding encoding = Encoding::unknown;  ///< of what stands behind `settledAt`
  std::size_t settledAt = 0;              ///< where a declaration settled the encoding
};

/// A piece of the text that decoding did not keep as it stands.
struct Alteration {
  std::uint32_t begin;
  std::uint32_t end;
  bool isBlank;  ///< blanks that became a single one
};

/// What a scan can tell besides, for those who want to tell of places: taken down by a second scan,
/// since few texts are worth it.
struct Details {
  std::vector<std::uint32_t> nodeEnds;       ///< behind the last byte of each node
  std::vector<std::uint32_t> attributeEnds;  ///< and of each attribute
  std::vector<Alteration> alterations;       ///< in the order of the text
};

/// Builds `tree` from the `length` bytes at `text`, which hold no zero byte; at least `padding`
/// zero bytes have to stand behind them. The text is changed: values are decoded where they stand.
/// Of a text that is refused the tree is good for nothing. Names in the result point into the text.
/// White space and letter case are the process's locale's, as they are TinyXML's, and white space
/// is condensed where TinyXML's is. An encoding that is given counts, whatever is declared.
Scan scan(char* text, std::size_t length, Tree& tree, Limits limits = {},
          Encoding encoding = Encoding::unknown, Details* details = nullptr);

}  // namespace Kovra::frame

#endif
