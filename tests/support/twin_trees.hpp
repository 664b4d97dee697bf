/// @file
/// One text, two trees: what TinyXML builds of it, and what the library's own scanner builds, as
/// dumps that a person can compare. A line is a node: how deep it is, what it is, row and column,
/// its value and its attributes.

#ifndef KOVRA_TESTS_SUPPORT_TWIN_TREES_HPP
#define KOVRA_TESTS_SUPPORT_TWIN_TREES_HPP

#include <tinyxml.h>

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "frame/nodes.hpp"
#include "frame/places.hpp"
#include "frame/scanner.hpp"
#include "frame/tree.hpp"

namespace Kovra::test {

/// What became of a text: the tree, or else TinyXML's error.
struct Outcome {
  bool accepted = false;
  bool beyondLimits = false;  ///< too much for the recursion of the one: nothing to compare
  std::string text;           ///< the dump, or the error with its place

  bool operator==(Outcome const& other) const {
    return accepted == other.accepted && text == other.text;
  }
};

/// Deeper than any reply, and shallow enough for a parser that calls itself.
inline constexpr frame::Limits lifted = {1500, 2000};

inline std::string quoted(std::string_view value) {
  std::string out = "\"";
  for (char const c : value) {
    auto const byte = static_cast<unsigned char>(c);
    if (byte >= 0x20 && byte < 0x7F && c != '"' && c != '\\') {
      out += c;
    } else {
      char code[8];
      std::snprintf(code, sizeof code, "\\x%02X", byte);
      out += code;
    }
  }
  return out + '"';
}

class Dump {
 public:
  /// Without places, trees from different texts can be compared.
  explicit Dump(bool places) : places_(places) {}

  void node(std::size_t depth, char const* kind, int row, int column, std::string_view value) {
    lines_ << std::string(depth, ' ') << kind << ' ';
    if (places_) lines_ << row << ':' << column << ' ';
    lines_ << quoted(value);
  }
  void attribute(std::string_view name, std::string_view value) {
    lines_ << ' ' << quoted(name) << '=' << quoted(value);
  }
  void attribute(std::string_view name, std::string_view value, int row, int column) {
    attribute(name, value);
    if (places_) lines_ << '@' << row << ':' << column;
  }
  void end() { lines_ << '\n'; }
  std::string text() const { return lines_.str(); }

 private:
  bool places_;
  std::ostringstream lines_;
};

// ---- TinyXML's ---------------------------------------------------------------------------------

/// `words`: with what a declaration declares, of which no reading wants to know.
inline void dumpNode(Dump& dump, TiXmlNode const& node, std::size_t depth, bool words) {
  auto const line = [&](char const* kind, std::string_view value) {
    dump.node(depth, kind, node.Row(), node.Column(), value);
  };
  if (TiXmlElement const* const element = node.ToElement()) {
    line("element", node.ValueStr());
    for (auto const* a = element->FirstAttribute(); a != nullptr; a = a->Next()) {
      dump.attribute(a->Name(), a->ValueStr(), a->Row(), a->Column());
    }
  } else if (TiXmlDeclaration const* const declaration = node.ToDeclaration()) {
    line("declaration", node.ValueStr());
    if (words) {
      dump.attribute("version", declaration->Version());
      dump.attribute("encoding", declaration->Encoding());
      dump.attribute("standalone", declaration->Standalone());
    }
  } else if (TiXmlText const* const text = node.ToText()) {
    line(text->CDATA() ? "cdata" : "text", node.ValueStr());
  } else if (node.ToComment() != nullptr) {
    line("comment", node.ValueStr());
  } else {
    line("unknown", node.ValueStr());
  }
  dump.end();
}

/// Everything below a document.
inline std::string dumpOf(TiXmlDocument const& document) {
  Dump dump(true);
  frame::visitNodes(document, [&](TiXmlNode const& node, std::size_t depth) {
    if (&node != &document) dumpNode(dump, node, depth - 1, true);
  });
  return dump.text();
}

/// A host's node and everything below it.
inline std::string shapeOf(TiXmlNode const& top) {
  Dump dump(false);
  frame::visitNodes(
      top, [&](TiXmlNode const& node, std::size_t depth) { dumpNode(dump, node, depth, false); });
  return dump.text();
}

/// What a host can see of a document's error.
inline std::string errorOf(TiXmlDocument const& document) {
  std::ostringstream out;
  out << document.ErrorId() << ' ' << document.ErrorDesc() << ' ' << document.ErrorRow() << ':'
      << document.ErrorCol();
  return out.str();
}

/// The error that TinyXML finds in a text when it does not look for rows and columns.
inline std::string errorIn(char const* text) {
  TiXmlDocument document;
  document.SetTabSize(0);
  document.Parse(text);
  return errorOf(document);
}

/// `text` ends with a zero byte and has more behind it.
inline Outcome byTinyXml(char const* text, int tabSize = 4) {
  TiXmlDocument document;
  document.SetTabSize(tabSize);
  document.Parse(text);
  if (document.Error()) return {false, false, errorIn(text)};
  return {true, false, dumpOf(document)};
}

// ---- The scanner's -----------------------------------------------------------------------------

/// What stands at `offset` of a text, if anything does.
inline frame::NodeKind kindAt(std::string_view text, std::size_t offset) {
  std::string_view const rest = text.substr(offset);
  if (rest.substr(0, 1) != "<") return frame::NodeKind::text;
  std::string lower(rest.substr(0, 5));
  std::transform(lower.begin(), lower.end(), lower.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  if (lower == "<?xml") return frame::NodeKind::declaration;
  if (rest.substr(0, 4) == "<!--") return frame::NodeKind::comment;
  if (rest.substr(0, 9) == "<![CDATA[") return frame::NodeKind::cdata;
  auto const next = static_cast<unsigned char>(rest.size() > 1 ? rest[1] : '\0');
  bool const letter = next >= 127 || std::isalpha(next) != 0 || next == '_';
  return letter ? frame::NodeKind::element : frame::NodeKind::unknown;
}

/// Whether the value of a node that begins at `offset` may begin at `at`.
inline bool beginsAt(std::string_view text, frame::NodeKind kind, std::size_t offset,
                     std::size_t at) {
  switch (kind) {
    case frame::NodeKind::text:
      return at == offset;
    case frame::NodeKind::cdata:
      return at == offset + std::strlen("<![CDATA[");
    case frame::NodeKind::comment:
      return at == offset + std::strlen("<!--");
    case frame::NodeKind::unknown:
      return at == offset + std::strlen("<");
    case frame::NodeKind::declaration:
      return at == text.size() || (at > offset && at < text.size() && text[at] == '>');
    case frame::NodeKind::element:
      break;
  }
  // White space may stand in front of a name, if it begins beyond ASCII.
  return at == offset + 1 ||
         (at > offset + 1 && static_cast<unsigned char>(text[offset + 1]) >= 0x80);
}

/// What is wrong with the attributes of a tree's element.
class AttributeCheck {
 public:
  AttributeCheck(frame::Tree const& tree, std::string_view text) : tree_(tree), text_(text) {}

  /// Of attributes that stand between two places of the text, one behind the other.
  std::string flaw(std::uint32_t node, std::size_t begin, std::size_t end) const {
    for (std::uint32_t a = 0; a < tree_.attributesOf(node); ++a) {
      frame::Attribute const& attribute = tree_.attribute(tree_.node(node).attribute + a);
      frame::Piece const name = attribute.name;
      frame::Piece const value = attribute.value;
      if (name.at <= begin || std::size_t{name.at} + name.length >= value.at ||
          std::size_t{value.at} + value.length >= end) {
        return "has an attribute that stands elsewhere";
      }
      if (!isName(name)) return "has an attribute whose name is none";
      if (tree_.text()[value.at + value.length] != '\0') return "has an attribute without an end";
      begin = value.at + value.length;
    }
    return "";
  }

  /// Of a declaration's words: their lengths are those of the words that are known, and a later
  /// one may have taken the place of an earlier.
  std::string flawOfWords(std::uint32_t node) const {
    for (std::uint32_t a = 0; a < tree_.attributesOf(node); ++a) {
      frame::Attribute const& word = tree_.attribute(tree_.node(node).attribute + a);
      std::size_t const length = word.name.length;
      if (length != std::strlen("version") && length != std::strlen("encoding") &&
          length != std::strlen("standalone")) {
        return "has a word that is none";
      }
      if (std::size_t{word.value.at} + word.value.length > text_.size() + frame::padding) {
        return "has a word that stands elsewhere";
      }
    }
    return "";
  }

 private:
  static bool isNamePart(char c) {
    auto const byte = static_cast<unsigned char>(c);
    return byte >= 127 || std::isalnum(byte) != 0 ||
           std::string_view("_-.:").find(c) != std::string_view::npos;
  }
  bool isName(frame::Piece name) const {
    std::string_view const word = text_.substr(name.at, name.length);
    return !word.empty() && std::all_of(word.begin(), word.end(), isNamePart) &&
           !isNamePart(text_[name.at + name.length]);
  }

  frame::Tree const& tree_;
  std::string_view text_;
};

/// Why a tree is none, or none of this text, as it was before the scan; else empty. Links that lead
/// astray, nodes that are not where they are said to be, values without an end.
inline std::string flawOf(frame::Tree const& tree, std::string_view text) {
  std::vector<std::uint32_t> ends{static_cast<std::uint32_t>(tree.nodes().size())};
  std::uint32_t attributes = 0;
  for (std::uint32_t i = 0; i < tree.nodes().size(); ++i) {
    frame::Node const& node = tree.node(i);
    auto const flaw = [&](std::string const& what) {
      return "node " + std::to_string(i) + ": " + what;
    };
    while (ends.back() == i) ends.pop_back();
    if (ends.empty()) return flaw("stands outside of all others");
    std::uint32_t const end = node.next != 0 ? node.next : ends.back();
    if (end <= i || (node.next != 0 && end >= ends.back())) return flaw("has a sibling elsewhere");
    if (node.hasChild && node.kind != frame::NodeKind::element) return flaw("is no element");
    if (node.hasChild != (end > i + 1)) return flaw("has children or has none");
    if (node.hasChild) ends.push_back(end);

    bool const last = i + 1 == tree.nodes().size();
    std::size_t const limit = last ? text.size() + frame::padding : tree.node(i + 1).offset + 1;
    bool const isDeclaration = node.kind == frame::NodeKind::declaration;
    std::size_t const valueAt = node.value.at;
    if (node.offset >= text.size() || node.offset + 1 >= limit) return flaw("begins elsewhere");
    if (node.kind != kindAt(text, node.offset)) return flaw("is of another kind");
    if (!beginsAt(text, node.kind, node.offset, valueAt) || valueAt + node.value.length >= limit) {
      return flaw("has a value elsewhere");
    }
    if (isDeclaration && node.value.length > 0) return flaw("has a value");
    if (tree.text()[valueAt + node.value.length] != '\0') return flaw("has a value without an end");

    if (node.attribute != attributes) return flaw("has the attributes of another");
    if (tree.attributesOf(i) > tree.attributeCount() - attributes) {
      return flaw("has attributes that are none");
    }
    attributes += tree.attributesOf(i);
    AttributeCheck const check(tree, text);
    std::string const wrong = isDeclaration ? check.flawOfWords(i) : check.flaw(i, valueAt, limit);
    if (!wrong.empty()) return flaw(wrong);
  }
  return "";
}

inline char const* nameOf(frame::NodeKind kind) {
  switch (kind) {
    case frame::NodeKind::element:
      return "element";
    case frame::NodeKind::text:
      return "text";
    case frame::NodeKind::cdata:
      return "cdata";
    case frame::NodeKind::comment:
      return "comment";
    case frame::NodeKind::unknown:
      return "unknown";
    case frame::NodeKind::declaration:
      return "declaration";
  }
  return "";
}

/// The value of a declaration's word, up to a zero byte; empty without one.
inline std::string_view declared(frame::Tree const& tree, std::uint32_t node, std::size_t length) {
  for (std::uint32_t a = 0; a < tree.attributesOf(node); ++a) {
    frame::Attribute const& attribute = tree.attribute(tree.node(node).attribute + a);
    if (attribute.name.length != length) continue;
    std::string_view const value = tree.view(attribute.value);
    return value.substr(0, value.find('\0'));
  }
  return "";
}

/// Dumps a tree; `placeOf` tells the place of an offset.
template <class PlaceOf>
void dumpTree(Dump& dump, frame::Tree const& tree, bool words, PlaceOf placeOf) {
  std::vector<std::uint32_t> ends;
  for (std::uint32_t i = 0; i < tree.nodes().size(); ++i) {
    frame::Node const& node = tree.node(i);
    while (!ends.empty() && ends.back() == i) ends.pop_back();
    frame::Place const place = placeOf(node.offset);
    dump.node(ends.size(), nameOf(node.kind), place.line, place.column, tree.view(node.value));
    if (node.kind == frame::NodeKind::declaration && words) {
      dump.attribute("version", declared(tree, i, std::strlen("version")));
      dump.attribute("encoding", declared(tree, i, std::strlen("encoding")));
      dump.attribute("standalone", declared(tree, i, std::strlen("standalone")));
    } else if (node.kind != frame::NodeKind::declaration) {
      for (std::uint32_t a = 0; a < tree.attributesOf(i); ++a) {
        frame::Attribute const& attribute = tree.attribute(node.attribute + a);
        frame::Place const own = placeOf(attribute.name.at);
        dump.attribute(tree.view(attribute.name), tree.view(attribute.value), own.line, own.column);
      }
    }
    dump.end();
    if (node.hasChild) {
      std::uint32_t const end = !ends.empty() ? ends.back() : 0;
      ends.push_back(node.next != 0 ? node.next : end);
    }
  }
}

inline std::string dumpOf(frame::Tree const& tree, frame::Places places) {
  Dump dump(true);
  dumpTree(dump, tree, true, [&](std::size_t offset) { return places.of(offset); });
  return dump.text();
}

inline std::string shapeOf(frame::Tree const& tree, bool words = false) {
  Dump dump(false);
  dumpTree(dump, tree, words, [](std::size_t) { return frame::Place{}; });
  return dump.text();
}

/// A text as a scan wants it, in a block of exactly its size and the padding, so that a sanitizer
/// sees one byte more; and what the scanner makes of it with `memory` bytes for nodes to begin
/// with.
class Scanned {
 public:
  explicit Scanned(std::string_view text, std::size_t memory = 0, frame::Limits limits = {})
      : bytes_(std::make_unique<char[]>(text.size() + frame::padding)),
        room_(std::make_unique<std::byte[]>(memory)),
        tree_((std::copy(text.begin(), text.end(), bytes_.get()), bytes_.get()), text.size(),
              {room_.get(), memory}),
        scan_(frame::scan(bytes_.get(), text.size(), tree_, limits)) {}

  frame::Scan const* operator->() const { return &scan_; }
  frame::Scan const& scan() const { return scan_; }
  frame::Tree& tree() { return tree_; }
  frame::Tree const& tree() const { return tree_; }
  /// Was more memory needed than there was?
  bool moved() const { return static_cast<void const*>(tree_.nodes().data()) != room_.get(); }

 private:
  std::unique_ptr<char[]> bytes_;
  std::unique_ptr<std::byte[]> room_;
  frame::Tree tree_;
  frame::Scan scan_;
};

/// What the scanner makes of a text with `memory` bytes for nodes to begin with. Where these are
/// the bound, no more may be asked for, also on the way to a refusal.
inline Outcome byScanner(std::string_view text, std::size_t memory, std::size_t tabSize = 4,
                         frame::Limits limits = lifted) {
  Scanned const scanned(text, memory, limits);
  if (scanned.moved() && memory >= frame::Tree::bound(text)) {
    return {true, false, "needs more memory than its bound"};
  }
  if (frame::isHostile(scanned->fault)) return {false, true, ""};
  if (scanned->fault != frame::Fault::none) {
    std::string const where = scanned->offset <= text.size() ? "" : "beyond the text: ";
    return {false, false, where + errorIn(scanned->likeness)};
  }
  std::string const flaw = flawOf(scanned.tree(), text);
  if (!flaw.empty()) return {true, false, flaw};
  return {true, false, dumpOf(scanned.tree(), frame::Places(text, scanned.scan(), tabSize))};
}

/// Empty where both make the same of `text`, in its whole bound of memory and in none; else both
/// dumps, for a person to compare. A text ends with its first zero byte.
inline std::string difference(std::string_view bytes) {
  std::string text(bytes.substr(0, bytes.find('\0')));
  Outcome const ours = byScanner(text, frame::Tree::bound(text));
  if (ours.beyondLimits) return "";
  text.append(frame::padding, '\0');
  Outcome const theirs = byTinyXml(text.c_str());
  text.resize(text.size() - frame::padding);
  if (!(ours == theirs)) {
    return "text: " + test::quoted(text) + "\n-- TinyXML\n" + theirs.text + "-- scanner\n" +
           ours.text;
  }
  if (!(byScanner(text, 0) == ours))
    return "text: " + test::quoted(text) + "\ndepends on its memory";
  return "";
}

}  // namespace Kovra::test

#endif
