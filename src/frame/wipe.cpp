#include "frame/wipe.hpp"

#include <string>

#include "frame/nodes.hpp"

namespace Kovra::frame {

namespace {

/// TinyXML shows its own strings only for reading. Wiping them is the one reason to write.
std::string& reached(std::string const& text) {
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): what this is for
  return const_cast<std::string&>(text);
}

void overwrite(std::string const& text) noexcept {
  wipe(reached(text).data(), text.size());
}

/// Calls `visit` with every node below `top` and its depth; children of `top` are 0 deep.
template <class Visit>
void visitBelow(TiXmlNode const& top, Visit visit) {
  visitNodes(top, [&](TiXmlNode const& node, std::size_t depth) {
    if (&node != &top) visit(node, depth - 1);
  });
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
