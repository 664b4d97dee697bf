// By hand over pugixml: parsed in place, with the flags that decode references and line ends, which
// the texts of printers may hold. Its parser drops blank texts by itself.

#include <pugixml.hpp>

#include "readers/tree.hpp"

namespace kovra_bench {

namespace {

class Element {
 public:
  explicit Element(pugi::xml_node node) : node_(node) {
    while (node_ && node_.type() != pugi::node_element) node_ = node_.next_sibling();
  }
  explicit operator bool() const { return static_cast<bool>(node_); }
  std::string_view name() const { return node_.name(); }
  char const* text() const { return node_.child_value(); }
  char const* attribute(char const* name) const { return node_.attribute(name).value(); }
  Element first() const { return Element(node_.first_child()); }
  Element next() const { return Element(node_.next_sibling()); }

 private:
  pugi::xml_node node_;
};

class Document {
 public:
  Document(char* text, std::size_t length) {
    isWhole_ = static_cast<bool>(
        document_.load_buffer_inplace(text, length, pugi::parse_default, pugi::encoding_utf8));
  }
  Element root() const { return Element(isWhole_ ? document_.first_child() : pugi::xml_node()); }

 private:
  pugi::xml_document document_;
  bool isWhole_ = false;
};

}  // namespace

Reader const readerOverPugixml = tree::readerOver<Document>("pugixml");

}  // namespace kovra_bench
