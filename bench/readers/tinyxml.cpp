// By hand over TinyXML with its defaults: what a host without Kovra has at hand.

#include <tinyxml.h>

#include "readers/tree.hpp"

namespace kovra_bench {

namespace {

class Element {
 public:
  explicit Element(TiXmlElement const* element) : element_(element) {}
  explicit operator bool() const { return element_ != nullptr; }
  std::string_view name() const { return element_->ValueStr(); }
  char const* text() const { return orEmpty(element_->GetText()); }
  char const* attribute(char const* name) const { return orEmpty(element_->Attribute(name)); }
  Element first() const { return Element(element_->FirstChildElement()); }
  Element next() const { return Element(element_->NextSiblingElement()); }

 private:
  static char const* orEmpty(char const* text) { return text != nullptr ? text : ""; }

  TiXmlElement const* element_;
};

class Document {
 public:
  Document(char* text, std::size_t length) {
    text[length] = '\0';
    document_.Parse(text);
  }
  Element root() const { return Element(document_.Error() ? nullptr : document_.RootElement()); }

 private:
  TiXmlDocument document_;
};

}  // namespace

Reader const readerOverTinyxml = tree::readerOver<Document>("tinyxml_by_hand");

}  // namespace kovra_bench
