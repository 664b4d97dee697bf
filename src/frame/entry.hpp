/// @file
/// The parse entry: a reply's text in, its root element out. No reader reads a text by itself.

#ifndef KOVRA_FRAME_ENTRY_HPP
#define KOVRA_FRAME_ENTRY_HPP

#include <tinyxml.h>

#include <array>
#include <cstddef>
#include <cstring>
#include <memory>
#include <span>

#include "frame/scanner.hpp"
#include "frame/tree.hpp"

namespace Kovra::frame {

/// Names of a document's root element, the preferred one first.
using Roots = std::span<char const* const>;

/// The library's own copy of a text: on the stack where it is short, and wiped in the end, since
/// any text may hold a key, and it costs next to nothing beside the reading. Behind it stand the
/// zeros that a scan asks for.
class PrivateText {
 public:
  /// Texts up to this length are kept without the heap.
  static constexpr std::size_t shortText = 8192;

  /// Converts `length` wide characters, or those before a terminator, in the process's locale. As
  /// `length` is also the most bytes that are converted, a text with wider characters is cut; at a
  /// character that the locale lacks the text ends.
  PrivateText(wchar_t const* text, std::size_t length);
  /// Copies `length` bytes without a zero among them.
  PrivateText(char const* text, std::size_t length);
  /// Room for `length` bytes, which are whatever they are.
  explicit PrivateText(std::size_t length);
  ~PrivateText();
  PrivateText(PrivateText const&) = delete;
  PrivateText& operator=(PrivateText const&) = delete;

  char* data() { return data_; }
  std::size_t length() const { return length_; }

 private:
  PrivateText();
  /// Takes a block where so many bytes and the zeros need one; what stood on the stack is wiped.
  void makeRoom(std::size_t room);
  /// Puts the zeros behind the text.
  void endAt(std::size_t length);

  std::unique_ptr<char[]> block_;
  std::array<char, shortText + padding> near_;  // not cleared: only what was put there is read
  char* data_;
  std::size_t length_ = 0;
};

/// Memory for the nodes of an ordinary reply, on the stack.
using NearNodes = std::array<Node, 600>;

/// A reply: its text, narrow, and the tree that it holds.
class Reply {
 public:
  Reply(wchar_t const* text, std::size_t length);
  Reply(char const* text, std::size_t length);
  /// The same in an encoding that counts whatever is declared, with details for those who want
  /// them.
  Reply(std::string_view text, Encoding encoding, Details* details = nullptr);
  Reply(Reply const&) = delete;
  Reply& operator=(Reply const&) = delete;

  Scan const& scan() const { return scan_; }
  /// Of use only where the scan found no fault.
  Tree const& tree() const { return tree_; }
  /// From here on what readings use is noted.
  void watch(Usage& usage) { tree_.watch(&usage); }

  /// The first of `roots` that the reply has among its top-level elements: none when it has none of
  /// them, or was refused.
  Element root(Roots roots) const;

 private:
  PrivateText text_;
  NearNodes nodes_;  // not cleared
  Tree tree_;
  Scan scan_;
};

/// The element and all below it from a host's own tree, in the form that readings know. Nothing of
/// the host's is changed.
class HostTree {
 public:
  /// A null element gives none.
  explicit HostTree(TiXmlElement const* element);
  HostTree(HostTree const&) = delete;
  HostTree& operator=(HostTree const&) = delete;

  Tree const& tree() const { return tree_; }
  Element root() const { return tree_.nodes().empty() ? Element() : Element(tree_, 0); }

 private:
  struct Size;
  HostTree(TiXmlElement const* element, Size const& size);
  void add(TiXmlElement const& element);

  PrivateText text_;
  NearNodes nodes_;  // not cleared
  Tree tree_;
};

/// The wide entry: converts, scans and hands the root to `read`. False, with nothing touched, when
/// the length is below 1 or there is no such root.
template <class Length, class Read>
bool readWide(wchar_t const* text, Length length, Roots roots, Read read) {
  if (text == nullptr || length < 1) return false;
  Reply const reply(text, static_cast<std::size_t>(length));
  Element const root = reply.root(roots);
  return root && read(root);
}

/// The narrow entry: the text is terminated and no length is needed. False, with nothing touched,
/// for a null text or when there is no such root.
template <class Read>
bool readNarrow(char const* text, Roots roots, Read read) {
  if (text == nullptr) return false;
  Reply const reply(text, std::strlen(text));
  Element const root = reply.root(roots);
  return root && read(root);
}

/// Leaves a document without nodes, which is itself the reader, as if it had parsed the reply and
/// been cleared: with the error of a text that was refused, and else without any. A hostile reply
/// shows like a malformed one.
void showOutcome(TiXmlDocument& document, Scan const& scan);

/// The narrow entry of a reader that is itself the document, which has no nodes afterwards.
template <class Read>
bool readAsDocument(TiXmlDocument& document, char const* text, Roots roots, Read read) {
  if (text == nullptr) return false;
  document.Clear();
  Reply const reply(text, std::strlen(text));
  showOutcome(document, reply.scan());
  Element const root = reply.root(roots);
  return root && read(root);
}

}  // namespace Kovra::frame

#endif
