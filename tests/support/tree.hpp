/// @file
/// Small TinyXML trees to read from, and trees as text to compare with.

#ifndef KOVRA_TESTS_SUPPORT_TREE_HPP
#define KOVRA_TESTS_SUPPORT_TREE_HPP

#include <gtest/gtest.h>
#include <tinyxml.h>

#include <string>

#include "support/printed.hpp"

namespace Kovra::test {

/// A parsed document and its root.
class Tree {
 public:
  explicit Tree(std::string const& xml) {
    document_.Parse(xml.c_str());
    EXPECT_FALSE(document_.Error()) << document_.ErrorDesc() << " in " << xml;
  }

  TiXmlElement* root() { return document_.RootElement(); }

 private:
  TiXmlDocument document_;
};

/// An element `e` with one text as it is given: TinyXML's parser would condense its blanks.
class TextElement {
 public:
  explicit TextElement(std::string const& text) {
    element_.LinkEndChild(new TiXmlText(text.c_str()));
  }

  TiXmlElement* get() { return &element_; }

 private:
  TiXmlElement element_{"e"};
};

/// An element `e` with the one attribute `a`.
class AttributeElement {
 public:
  explicit AttributeElement(std::string const& value) { element_.SetAttribute("a", value.c_str()); }

  TiXmlElement* get() { return &element_; }

 private:
  TiXmlElement element_{"e"};
};

/// The node as text without line breaks or indent.
inline std::string printed(TiXmlNode const& node) {
  TiXmlPrinter printer;
  printer.SetStreamPrinting();
  node.Accept(&printer);
  return printer.Str();
}

}  // namespace Kovra::test

#endif
