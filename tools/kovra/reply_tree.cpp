#include "reply_tree.hpp"

namespace Kovra::tool {

namespace {

char const* entityOf(char letter) {
  switch (letter) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    case '\'':
      return "&apos;";
    default:
      return nullptr;
  }
}

std::string startTag(Node const& element) {
  std::string tag = '<' + element.name;
  for (Attribute const& attribute : element.attributes) {
    tag += attribute.before + attribute.name + attribute.equals + attribute.quote;
    tag += asXml(attribute.value) + attribute.quote;
  }
  return tag + (element.nodes.empty() ? "/>" : ">");
}

void print(Node const& node, std::size_t indent, std::string& out) {
  std::string const blanks(indent, ' ');
  if (!node.isElement()) {
    out += blanks + node.text + '\n';
    return;
  }
  out += blanks + startTag(node);
  if (node.isLeaf()) {
    out += node.nodes.front().text;
  } else if (!node.nodes.empty()) {
    out += '\n';
    for (Node const& inner : node.nodes) print(inner, indent + 2, out);
    out += blanks;
  }
  out += node.nodes.empty() ? "\n" : "</" + node.name + ">\n";
}

}  // namespace

Node piece(std::string_view text) {
  Node node;
  node.text = asXml(text);
  return node;
}

std::string asXml(std::string_view text) {
  std::string out;
  for (char const letter : text) {
    char const* const entity = entityOf(letter);
    out += entity != nullptr ? entity : std::string(1, letter);
  }
  return out;
}

std::string printed(Node const& root) {
  std::string out;
  print(root, 0, out);
  return out;
}

}  // namespace Kovra::tool
