// By hand over tinyxml2 with its defaults. It copies the text into a buffer of its own.

#include <tinyxml2.h>

#include "readers/tree.hpp"

namespace kovra_bench {

namespace {

class Element {
 public:
  explicit Element(tinyxml2::XMLElement const* element) : element_(element) {}
  explicit operator bool() const { return element_ != nullptr; }
  std::string_view name() const { return element_->Name(); }
  char const* text() const { return orEmpty(element_->GetText()); }
  char const* attribute(char const* name) const { return orEmpty(element_->Attribute(name)); }
  Element first() const { return Element(element_->FirstChildElement()); }
  Element next() const { return Element(element_->NextSiblingElement()); }

 private:
  static char const* orEmpty(char const* text) { return text != nullptr ? text : ""; }

  tinyxml2::XMLElement const* element_;
};

class Document {
 public:
  Document(char const* text, std::size_t length) { document_.Parse(text, length); }
  Element root() const { return Element(document_.Error() ? nullptr : document_.RootElement()); }

 private:
  tinyxml2::XMLDocument document_;
};

}  // namespace

Reader const readerOverTinyxml2 = tree::readerOver<Document>("tinyxml2");

}  // namespace kovra_bench
