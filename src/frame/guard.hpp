/// @file
/// The guard: judges a reply's text before TinyXML sees it.
///
/// Replies come from the network, and TinyXML is no match for a hostile one: its parser calls
/// itself once per nesting level, so that depth costs stack until the process dies, and it compares
/// each attribute of an element with all before it. The guard walks the text once, in linear time,
/// without recursion and without the heap, and takes every byte for what TinyXML 2.6.2 (with
/// Debian's patches) takes it for, oddities included. So it counts the elements and attributes that
/// TinyXML would build, and it knows where and why TinyXML would give up, better than TinyXML
/// tells.

#ifndef KOVRA_FRAME_GUARD_HPP
#define KOVRA_FRAME_GUARD_HPP

#include <cstddef>
#include <string_view>

namespace Kovra::frame {

/// The deepest nesting of elements that is let through; the root alone is 1 deep.
inline constexpr std::size_t maxDepth = 128;

/// The most attributes on one element that are let through.
inline constexpr std::size_t maxAttributes = 256;

/// How many zero bytes have to stand behind a text. One would end it, but in UTF-8 TinyXML steps
/// from a lead byte over as many bytes as that announces without a look at them. A sequence cut by
/// the end of the text thus carries it past the first zero, at worst (a lead byte of four) onto the
/// fourth, and only what it finds there stops it.
inline constexpr std::size_t padding = 4;

/// Why a text is refused. Apart from the first three, each is a text that TinyXML calls malformed,
/// and there is no other.
enum class Fault {
  none,               ///< TinyXML builds a tree from the text and finds no error
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
  return fault == Fault::tooDeep || fault == Fault::tooManyAttributes;
}

/// What the guard has to say on a text. Born refused.
struct Scan {
  Fault fault = Fault::empty;
  std::size_t offset = 0;          ///< where the fault was noticed: for `endsIn...`, the text's end
  std::string_view found;          ///< what is wrong there, where that is a name or a beginning
  std::string_view openElement;    ///< name of the innermost element open at the fault, or empty
  std::size_t openAt = 0;          ///< where its `<` stands
  std::size_t elements = 0;        ///< how many elements TinyXML would make of the text read
  std::size_t attributes = 0;      ///< how many attributes they would have in all
  std::size_t deepest = 0;         ///< how deep their nesting is; the root alone is 1 deep
  std::size_t mostAttributes = 0;  ///< how many attributes the element that has most has
};

/// Judges the text that ends at the first zero byte which TinyXML comes upon. At least `padding`
/// zero bytes have to stand behind it. Names in the result point into the text. White space and
/// letter case are the process's locale's, as they are TinyXML's.
Scan scan(char const* text) noexcept;

}  // namespace Kovra::frame

#endif
