#include "frame/wipe.hpp"

#include <string>

namespace Kovra::frame {

namespace {

/// TinyXML shows its own strings only for reading. Wiping them is the one reason to write.
std::string& reached(std::string const& text) {
  return const_cast<std::string&>(text);
}

void overwrite(std::string const& text) noexcept {
  wipe(reached(text).data(), text.size());
}

/// The node behind `node` in the document's order and how deep it is, without recursion.
struct Step {
  TiXmlNode const* node;
  std::size_t depth;

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

/// Calls `visit` with every node below `top` and its depth; children of `top` are 0 deep.
template <class Visit>
void visitBelow(TiXmlNode const& top, Visit visit) {
  if (top.FirstChild() == nullptr) return;
  for (Step step{top.FirstChild(), 0}; step.node != nullptr; step.next(top)) {
    visit(*step.node, step.depth);
  }
}

template <class Visit>
void visitAttributes(TiXmlNode const& node, Visit visit) {
  if (node.Type() != TiXmlNode::TINYXML_ELEMENT) return;
  for (TiXmlAttribute const* attribute = static_cast<TiXmlElement const&>(node).FirstAttribute();
       attribute != nullptr; attribute = attribute->Next()) {
    visit(*attribute);
  }
}

/// The longest that TinyXML makes of one byte: "&quot;" or "&#x1F;".
constexpr std::size_t longestEscape = 6;

}  // namespace

void wipeBelow(TiXmlNode& node) noexcept {
  visitBelow(node, [](TiXmlNode const& inner, std::size_t) {
    if (inner.Type() != TiXmlNode::TINYXML_ELEMENT) overwrite(inner.ValueStr());
    visitAttributes(inner,
                    [](TiXmlAttribute const& attribute) { overwrite(attribute.ValueStr()); });
  });
}

std::size_t printedBound(TiXmlDocument const& document) {
  constexpr std::size_t indent = sizeof printIndent - 1;
  constexpr std::size_t markup = 64;  // brackets, quotes, line breaks; a declaration's attributes
  std::size_t bound = 0;
  visitBelow(document, [&](TiXmlNode const& node, std::size_t depth) {
    // An element's name and indent stand there twice.
    bound += 2 * (longestEscape * node.ValueStr().size() + indent * depth) + markup;
    visitAttributes(node, [&](TiXmlAttribute const& attribute) {
      bound += longestEscape * (attribute.NameTStr().size() + attribute.ValueStr().size()) + markup;
    });
  });
  return bound;
}

SecretPrinter::SecretPrinter(TiXmlDocument const& document) {
  reached(Str()).reserve(printedBound(document));
}

SecretPrinter::~SecretPrinter() {
  overwrite(Str());
}

}  // namespace Kovra::frame
