// By hand over the tree of libxml2: quiet, without blank texts, with short texts inside their
// nodes.

#include <libxml/parser.h>
#include <libxml/tree.h>

#include "readers/tree.hpp"

namespace kovra_bench {

namespace {

char const* chars(xmlChar const* text) {
  return reinterpret_cast<char const*>(text);
}

/// The text of an element or of an attribute.
char const* textBelow(xmlNode const* child) {
  bool const isText =
      child != nullptr && (child->type == XML_TEXT_NODE || child->type == XML_CDATA_SECTION_NODE);
  return isText ? chars(child->content) : "";
}

class Element {
 public:
  explicit Element(xmlNode const* node) : node_(node) {
    while (node_ != nullptr && node_->type != XML_ELEMENT_NODE) node_ = node_->next;
  }
  explicit operator bool() const { return node_ != nullptr; }
  std::string_view name() const { return chars(node_->name); }
  char const* text() const { return textBelow(node_->children); }
  char const* attribute(std::string_view name) const {
    for (xmlAttr const* a = node_->properties; a != nullptr; a = a->next) {
      if (chars(a->name) == name) return textBelow(a->children);
    }
    return "";
  }
  Element first() const { return Element(node_->children); }
  Element next() const { return Element(node_->next); }

 private:
  xmlNode const* node_;
};

class Document {
 public:
  Document(char const* text, std::size_t length)
      : document_(xmlReadMemory(text, static_cast<int>(length), nullptr, "UTF-8",
                                XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING |
                                    XML_PARSE_NOBLANKS | XML_PARSE_COMPACT)) {}
  ~Document() { xmlFreeDoc(document_); }
  Document(Document const&) = delete;
  Document& operator=(Document const&) = delete;

  Element root() const {
    return Element(document_ != nullptr ? xmlDocGetRootElement(document_) : nullptr);
  }

 private:
  xmlDoc* document_;
};

}  // namespace

Reader const readerOverLibxml2 = tree::readerOver<Document>("libxml2");

}  // namespace kovra_bench
