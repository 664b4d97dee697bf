/// @file
/// The parse entry: a reply's text in, its root element out. No reader opens TinyXML by itself.

#ifndef KOVRA_FRAME_ENTRY_HPP
#define KOVRA_FRAME_ENTRY_HPP

#include <tinyxml.h>

#include <cstddef>
#include <memory>
#include <span>

namespace Kovra::frame {

/// Names of a document's root element, the preferred one first.
using Roots = std::span<char const* const>;

/// A reply's text as TinyXML takes it: narrow, terminated, and with zero bytes behind it where it
/// may end in a cut UTF-8 sequence, since TinyXML steps over that without looking.
class NarrowText {
 public:
  /// Converts `length` wide characters, or those before a terminator, in the process's locale. As
  /// `length` is also the most bytes that are converted, a text with wider characters is cut; at a
  /// character that the locale lacks the text ends. Null when there is nothing to convert.
  NarrowText(wchar_t const* text, std::size_t length);
  /// Takes a terminated text, which has to outlive this: as it stands where its end is harmless,
  /// and otherwise as a copy.
  explicit NarrowText(char const* text);
  /// Copies `length` bytes.
  NarrowText(char const* text, std::size_t length);
  /// Wipes the copy, if there is one: any reply may hold a key, and it costs next to nothing beside
  /// the parse.
  ~NarrowText();
  NarrowText(NarrowText const&) = delete;
  NarrowText& operator=(NarrowText const&) = delete;

  /// Null when there is no text at all.
  char const* get() const { return view_; }
  /// Bytes without the zeros that are always there; a text that was cut has more of them.
  std::size_t size() const { return size_; }

 private:
  char* allocate(std::size_t length);

  std::unique_ptr<char[]> text_;
  char const* view_ = nullptr;
  std::size_t size_ = 0;
};

/// The first of `roots` that `document` has among its top-level elements, or null.
TiXmlElement* findRoot(TiXmlDocument& document, Roots roots);

/// Parses `text` into `document` and finds the first of `roots`. Null when the text is null,
/// hostile, malformed, or has none of them. TinyXML's tracking of rows and columns is off: it takes
/// a third of the parse, and nobody asks.
TiXmlElement* parseReply(TiXmlDocument& document, NarrowText const& text, Roots roots);

/// The wide entry: converts, parses and hands the root to `read`. False, with nothing touched, when
/// the length is below 1 or there is no such root. `Document` may be one that wipes its tree.
template <class Document = TiXmlDocument, class Length, class Read>
bool readWide(wchar_t const* text, Length length, Roots roots, Read read) {
  if (text == nullptr || length < 1) return false;
  Document document;
  TiXmlElement* const root =
      parseReply(document, NarrowText(text, static_cast<std::size_t>(length)), roots);
  return root != nullptr && read(*root);
}

/// The narrow entry: the text is terminated and no length is needed. False, with nothing touched,
/// for a null text or when there is no such root.
template <class Read>
bool readNarrow(char const* text, Roots roots, Read read) {
  if (text == nullptr) return false;
  TiXmlDocument document;
  TiXmlElement* const root = parseReply(document, NarrowText(text), roots);
  return root != nullptr && read(*root);
}

/// The narrow entry of a reader that is itself the document: it parses into itself and is cleared
/// at the end, also when an exception passes.
template <class Read>
bool readIntoItself(TiXmlDocument& document, char const* text, Roots roots, Read read) {
  if (text == nullptr) return false;
  struct ClearedAtEnd {
    TiXmlDocument& document;
    ~ClearedAtEnd() { document.Clear(); }
  } const cleared{document};
  TiXmlElement* const root = parseReply(document, NarrowText(text), roots);
  return root != nullptr && read(*root);
}

}  // namespace Kovra::frame

#endif
