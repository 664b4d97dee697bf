/// @file
/// One text, two trees: what TinyXML builds of it, and what the library's own scanner builds, as
/// dumps that a person can compare. A line is a node: how deep it is, what it is, row and column,
/// its value and its attributes.

#ifndef KOVRA_TESTS_SUPPORT_TWIN_TREES_HPP
#define KOVRA_TESTS_SUPPORT_TWIN_TREES_HPP

#include <tinyxml.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

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
  void node(std::size_t depth, char const* kind, int row, int column, std::string_view value) {
    lines_ << std::string(depth, ' ') << kind << ' ' << row << ':' << column << ' '
           << quoted(value);
  }
  void attribute(std::string_view name, std::string_view value) {
    lines_ << ' ' << quoted(name) << '=' << quoted(value);
  }
  void attribute(std::string_view name, std::string_view value, int row, int column) {
    attribute(name, value);
    lines_ << '@' << row << ':' << column;
  }
  void end() { lines_ << '\n'; }
  std::string text() const { return lines_.str(); }

 private:
  std::ostringstream lines_;
};

// ---- TinyXML's
// -----------------------------------------------------------------------------------

inline void dumpNode(Dump& dump, TiXmlNode const& node, std::size_t depth) {
  auto const line = [&](char const* kind, std::string_view value) {
    dump.node(depth, kind, node.Row(), node.Column(), value);
  };
  if (TiXmlElement const* const element = node.ToElement()) {
    line("element", node.ValueStr());
    for (auto const* a = element->FirstAttribute(); a != nullptr; a = a->Next()) {
      dump.attribute(a->NameTStr(), a->ValueStr(), a->Row(), a->Column());
    }
  } else if (TiXmlDeclaration const* const declaration = node.ToDeclaration()) {
    line("declaration", node.ValueStr());
    dump.attribute("version", declaration->Version());
    dump.attribute("encoding", declaration->Encoding());
    dump.attribute("standalone", declaration->Standalone());
  } else if (TiXmlText const* const text = node.ToText()) {
    line(text->CDATA() ? "cdata" : "text", node.ValueStr());
  } else if (node.ToComment() != nullptr) {
    line("comment", node.ValueStr());
  } else {
    line("unknown", node.ValueStr());
  }
  dump.end();
}

inline std::string dumpOf(TiXmlDocument const& document) {
  Dump dump;
  std::size_t depth = 0;
  for (TiXmlNode const* node = document.FirstChild(); node != nullptr;) {
    dumpNode(dump, *node, depth);
    if (node->FirstChild() != nullptr) {
      ++depth;
      node = node->FirstChild();
      continue;
    }
    while (node != nullptr && node->NextSibling() == nullptr) {
      node = node->Parent() != &document ? node->Parent() : nullptr;
      --depth;
    }
    if (node != nullptr) node = node->NextSibling();
  }
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

// ---- The scanner's
// -------------------------------------------------------------------------------

/// Why a tree is none, or an empty text: nodes that lead astray, values that do not end.
inline std::string flawOf(frame::Tree const& tree, std::size_t length) {
  std::vector<std::uint32_t> ends{static_cast<std::uint32_t>(tree.nodes().size())};
  std::uint32_t attributes = 0;
  for (std::uint32_t i = 0; i < tree.nodes().size(); ++i) {
    frame::Node const& node = tree.node(i);
    auto const flaw = [&](char const* what) { return "node " + std::to_string(i) + ": " + what; };
    while (ends.back() == i) ends.pop_back();
    if (ends.empty()) return flaw("stands outside of all others");
    std::uint32_t const end = node.next != 0 ? node.next : ends.back();
    if (end <= i || end > ends.back()) return flaw("has a sibling elsewhere");
    if (node.hasChild && node.kind != frame::NodeKind::element) return flaw("is no element");
    if (node.hasChild != (end > i + 1)) return flaw("has children or has none");
    if (node.hasChild) ends.push_back(end);

    auto const isWithin = [&](frame::Piece piece) {
      return std::size_t{piece.at} + piece.length <= length + frame::padding;
    };
    auto const isTerminated = [&](frame::Piece piece) {
      return tree.text()[piece.at + piece.length] == '\0';
    };
    if (!isWithin(node.value)) return flaw("has a value outside of the text");
    if (!isTerminated(node.value)) return flaw("has a value without an end");
    if (node.offset > length) return flaw("begins outside of the text");
    if (node.attribute != attributes) return flaw("has the attributes of another");
    if (tree.attributesOf(i) > tree.attributeCount() - attributes) {
      return flaw("has attributes that are none");
    }
    attributes += tree.attributesOf(i);
    for (std::uint32_t a = 0; a < tree.attributesOf(i); ++a) {
      frame::Attribute const& attribute = tree.attribute(node.attribute + a);
      if (!isWithin(attribute.name) || !isWithin(attribute.value)) {
        return flaw("has an attribute outside of the text");
      }
      bool const isPlain = node.kind != frame::NodeKind::declaration;
      if (isPlain && !isTerminated(attribute.value)) {
        return flaw("has an attribute without an end");
      }
    }
  }
  return attributes == tree.attributeCount() ? "" : "attributes of nobody";
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

inline std::string dumpOf(frame::Tree const& tree, frame::Places places) {
  Dump dump;
  std::vector<std::uint32_t> ends;
  for (std::uint32_t i = 0; i < tree.nodes().size(); ++i) {
    frame::Node const& node = tree.node(i);
    while (!ends.empty() && ends.back() == i) ends.pop_back();
    Place const place = places.of(node.offset);
    dump.node(ends.size(), nameOf(node.kind), place.line, place.column, tree.view(node.value));
    if (node.kind == frame::NodeKind::declaration) {
      dump.attribute("version", declared(tree, i, std::strlen("version")));
      dump.attribute("encoding", declared(tree, i, std::strlen("encoding")));
      dump.attribute("standalone", declared(tree, i, std::strlen("standalone")));
    } else {
      for (std::uint32_t a = 0; a < tree.attributesOf(i); ++a) {
        frame::Attribute const& attribute = tree.attribute(node.attribute + a);
        Place const own = places.of(attribute.name.at);
        dump.attribute(tree.view(attribute.name), tree.view(attribute.value), own.line, own.column);
      }
    }
    dump.end();
    if (node.hasChild) {
      std::uint32_t const end = !ends.empty() ? ends.back() : 0;
      ends.push_back(node.next != 0 ? node.next : end);
    }
  }
  return dump.text();
}

/// Scans a copy of `text` in a block of exactly its size and the padding, with `memory` bytes for
/// nodes to begin with, so that a sanitizer sees one byte more.
inline Outcome byScanner(std::string_view text, std::size_t memory, std::size_t tabSize = 4,
                         frame::Limits limits = lifted) {
  auto const block = std::make_unique<char[]>(text.size() + frame::padding);
  std::copy(text.begin(), text.end(), block.get());
  auto const room = std::make_unique<std::byte[]>(memory);
  frame::Tree tree(block.get(), text.size(), {room.get(), memory});
  frame::Scan const scanned = frame::scan(block.get(), text.size(), tree, limits);
  if (frame::isHostile(scanned.fault)) return {false, true, ""};
  if (scanned.fault != frame::Fault::none) {
    std::string const where = scanned.offset <= text.size() ? "" : "beyond the text: ";
    return {false, false, where + errorIn(scanned.likeness)};
  }
  std::string const flaw = flawOf(tree, text.size());
  if (!flaw.empty()) return {true, false, flaw};
  if (memory == frame::Tree::bound(text) && !tree.nodes().empty() &&
      static_cast<void const*>(tree.nodes().data()) != room.get()) {
    return {true, false, "needs more memory than its bound"};
  }
  return {true, false, dumpOf(tree, frame::Places(text, scanned, tabSize))};
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
