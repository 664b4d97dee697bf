/// @file
/// The way through a TinyXML tree in the document's order, without recursion: a host's own tree may
/// be deeper than any stack.

#ifndef KOVRA_FRAME_NODES_HPP
#define KOVRA_FRAME_NODES_HPP

#include <tinyxml.h>

#include <cstddef>

namespace Kovra::frame {

/// Where the way through a tree stands: a node and how deep it is below the top, which is 0 deep.
struct Step {
  TiXmlNode const* node;
  std::size_t depth = 0;

  /// Goes to the next node; to null behind the last one below `top`.
  void next(TiXmlNode const& top) {
    if (node->FirstChild() != nullptr) {
      node = node->FirstChild();
      ++depth;
      return;
    }
    while (node != &top && node->NextSibling() == nullptr) {
      node = node->Parent();
      --depth;
    }
    node = node != &top ? node->NextSibling() : nullptr;
  }
};

/// Calls `visit` with `top` and every node below it, and how deep each is.
template <class Visit>
void visitNodes(TiXmlNode const& top, Visit visit) {
  for (Step step{&top}; step.node != nullptr; step.next(top)) visit(*step.node, step.depth);
}

/// Calls `visit` with the attributes of a node, if it is an element.
template <class Visit>
void visitAttributes(TiXmlNode const& node, Visit visit) {
  if (node.Type() != TiXmlNode::TINYXML_ELEMENT) return;
  for (TiXmlAttribute const* attribute = static_cast<TiXmlElement const&>(node).FirstAttribute();
       attribute != nullptr; attribute = attribute->Next()) {
    visit(*attribute);
  }
}

}  // namespace Kovra::frame

#endif
