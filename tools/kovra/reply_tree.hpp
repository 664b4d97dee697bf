/// @file
/// A reply that is being made: its elements, and their text.

#ifndef KOVRA_TOOL_REPLY_TREE_HPP
#define KOVRA_TOOL_REPLY_TREE_HPP

#include <string>
#include <string_view>
#include <vector>

namespace Kovra::tool {

struct Attribute {
  std::string name;
  std::string value;
  std::string before = " ";  ///< blanks in front of the name
  std::string equals = "=";  ///< with blanks around it
  char quote = '"';
};

/// An element, or a piece of its text.
struct Node {
  std::string name;  ///< empty for a piece of text
  std::vector<Attribute> attributes = {};
  std::vector<Node> nodes = {};
  std::string text = {};  ///< of a piece, as XML: see asXml()
  bool isFixed = false;   ///< somebody asked for what it says, or for what an element in it says

  bool isElement() const { return !name.empty(); }
  /// Does it hold one piece of text and nothing else?
  bool isLeaf() const { return nodes.size() == 1 && !nodes.front().isElement(); }
};

/// A piece of text.
Node piece(std::string_view text);

/// With the characters replaced that mean something else in XML.
std::string asXml(std::string_view text);

/// With a line for each element, indented.
std::string printed(Node const& root);

}  // namespace Kovra::tool

#endif
