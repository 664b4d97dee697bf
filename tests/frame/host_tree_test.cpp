// Trees that hosts made, in the form that readings know.

#include <gtest/gtest.h>
#include <tinyxml.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "frame/entry.hpp"
#include "support/allocations.hpp"
#include "support/nasty_texts.hpp"
#include "support/twin_trees.hpp"
#include "support/white_space.hpp"

namespace Kovra::frame {

namespace {

using namespace std::string_literals;

using test::shapeOf;

// Every value ends with a zero byte of its own.
bool areTerminated(Tree const& tree) {
  auto const isTerminated = [&](Piece piece) {
    return tree.terminated(piece)[piece.length] == '\0';
  };
  for (Node const& node : tree.nodes()) {
    if (!isTerminated(node.value)) return false;
  }
  for (std::uint32_t i = 0; i < tree.attributeCount(); ++i) {
    if (!isTerminated(tree.attribute(i).value)) return false;
  }
  return true;
}

// Copies a host's element and compares the copy with it, and the element with what it was.
void expectCopied(TiXmlElement const& element) {
  std::string const before = shapeOf(element);
  HostTree const copy(&element);
  EXPECT_EQ(shapeOf(copy.tree()), before);
  EXPECT_TRUE(areTerminated(copy.tree()));
  EXPECT_EQ(copy.root().name(), element.ValueStr());
  EXPECT_EQ(shapeOf(element), before);
}

// All elements at the top of a document, each by itself.
std::size_t expectCopied(TiXmlDocument const& document) {
  std::size_t elements = 0;
  for (TiXmlElement const* element = document.FirstChildElement(); element != nullptr;
       element = element->NextSiblingElement()) {
    expectCopied(*element);
    ++elements;
  }
  return elements;
}

TEST(HostTree, OfANullElementIsNone) {
  HostTree const none(nullptr);
  EXPECT_FALSE(none.root());
  EXPECT_TRUE(none.tree().nodes().empty());
}

TEST(HostTree, HoldsTheElementAndWhatIsBelowIt) {
  TiXmlDocument document;
  document.Parse(
      "<x/><a b='c&#0;d' e=''>f<!--g--><h><i/>j&#0;k</h><![CDATA[ l ]]><!m><?xml version='1'?></a>"
      "<y/>");
  TiXmlElement const* const a = document.FirstChildElement("a");
  HostTree const copy(a);
  EXPECT_EQ(shapeOf(copy.tree()),
            "element \"a\" \"b\"=\"c\\x00d\" \"e\"=\"\"\n"
            " text \"f\"\n"
            " comment \"g\"\n"
            " element \"h\"\n"
            "  element \"i\"\n"
            "  text \"j\\x00k\"\n"
            " cdata \" l \"\n"
            " unknown \"!m\"\n"
            " declaration \"\"\n");
  EXPECT_FALSE(copy.root().nextSibling()) << "its siblings are not below it";
  EXPECT_STREQ(copy.root().attribute("b"), "c");
  EXPECT_STREQ(copy.root().firstChild().text(), "i");
  expectCopied(*a);
  expectCopied(*a->FirstChildElement("h"));
}

TEST(HostTree, HoldsWhatNoTextCouldMake) {
  TiXmlElement root("");
  root.SetAttribute("a b", "<&>");
  root.SetAttribute("c\0d"s, "e\0f"s);
  root.SetAttribute("", "");  // last, as TinyXML stumbles over it
  root.LinkEndChild(new TiXmlText(""));
  root.LinkEndChild(new TiXmlText("  "));
  root.LinkEndChild(new TiXmlText("g\0h"s));
  root.LinkEndChild(new TiXmlComment());
  root.LinkEndChild(new TiXmlDeclaration("1.0", "x", ""));
  root.LinkEndChild(new TiXmlUnknown());
  auto* const cdata = new TiXmlText("]]>");
  cdata->SetCDATA(true);
  root.LinkEndChild(cdata);
  root.LinkEndChild(new TiXmlElement("i\0j"s));
  expectCopied(root);
}

// TinyXML compares names of attributes, though not those of elements, as far as a zero byte.
TEST(HostTree, FindsAttributesAsTinyXmlDoes) {
  TiXmlElement root("r");
  root.SetAttribute("a\0b"s, "1"s);
  root.SetAttribute("c"s, "2\0d"s);
  HostTree const copy(&root);
  for (char const* const name : {"a", "c", "b", "", "a\0b"}) {
    EXPECT_STREQ(copy.root().attribute(name), root.Attribute(name)) << name;
  }
  EXPECT_STREQ(copy.root().attribute("a"), "1");
}

// TinyXML lets a host put nodes below any node. Readings look at elements' children only.
TEST(HostTree, HoldsWhatStandsBelowATextWithoutReadingIt) {
  TiXmlElement root("a");
  TiXmlNode* const text = root.LinkEndChild(new TiXmlText("b"));
  TiXmlNode* const inner = text->LinkEndChild(new TiXmlElement("c"));
  inner->LinkEndChild(new TiXmlText("d"));
  text->LinkEndChild(new TiXmlComment());
  root.LinkEndChild(new TiXmlElement("e"));
  expectCopied(root);

  HostTree const copy(&root);
  EXPECT_STREQ(copy.root().text(), "b");
  EXPECT_EQ(copy.root().firstChild().name(), "e");
  EXPECT_FALSE(copy.root().firstChild().nextSibling());
}

// A host's nodes may hang below each other as deep as it likes; the tree's own end is recursive, so
// it is taken apart from the bottom.
TEST(HostTree, TakesAHundredThousandLevels) {
  constexpr std::size_t levels = 100000;
  TiXmlElement root("a");
  TiXmlNode* deepest = &root;
  for (std::size_t i = 1; i < levels; ++i) deepest = deepest->LinkEndChild(new TiXmlElement("b"));
  deepest->LinkEndChild(new TiXmlText("c"));
  {
    HostTree const copy(&root);
    EXPECT_EQ(copy.tree().nodes().size(), levels + 1);
    Element element = copy.root();
    std::size_t depth = 1;
    for (; element.firstChild(); element = element.firstChild()) ++depth;
    EXPECT_EQ(depth, levels);
    EXPECT_STREQ(element.text(), "c");
  }
  std::size_t depth = 0;
  for (TiXmlNode* node = &root; node->FirstChild() != nullptr; node = node->FirstChild()) ++depth;
  EXPECT_EQ(depth, levels) << "the host's tree has changed";
  while (deepest != &root) {
    TiXmlNode* const parent = deepest->Parent();
    parent->RemoveChild(deepest);
    deepest = parent;
  }
}

TEST(HostTree, TakesAHundredThousandChildren) {
  constexpr int children = 100000;
  TiXmlElement root("a");
  for (int i = 0; i < children; ++i) {
    auto* const child = new TiXmlElement("b");
    child->SetAttribute("c", i);
    root.LinkEndChild(child);
  }
  expectCopied(root);
  HostTree const copy(&root);
  int read = 0;
  for (Element child = copy.root().firstChild(); child; child = child.nextSibling()) {
    EXPECT_EQ(child.attribute("c"), std::to_string(read));
    ++read;
  }
  EXPECT_EQ(read, children);
}

TEST(HostTree, HoldsWhatTinyXmlMakesOfNastyTexts) {
  constexpr unsigned seed = 20230717;
  SCOPED_TRACE(seed);
  test::NastyTexts texts(seed);
  std::size_t elements = 0;
  for (int i = 0; i < 3000 && !HasFailure(); ++i) {
    std::string const text = texts.next() + std::string(padding, '\0');
    TiXmlDocument document;
    document.Parse(text.c_str());  // also what is left of a malformed one
    elements += expectCopied(document);
  }
  EXPECT_GT(elements, 2000U);
}

TEST(HostTree, HoldsWhatTinyXmlMakesWhereItKeepsWhiteSpace) {
  test::KeptWhiteSpace const kept;
  constexpr unsigned seed = 20230718;
  SCOPED_TRACE(seed);
  test::NastyTexts texts(seed);
  for (int i = 0; i < 1000 && !HasFailure(); ++i) {
    std::string const text = texts.next() + std::string(padding, '\0');
    TiXmlDocument document;
    document.Parse(text.c_str());
    expectCopied(document);
  }
}

// ---- Trees at random, made as a host makes them ------------------------------------------------

class HostMadeTrees {
 public:
  explicit HostMadeTrees(unsigned seed) : random_(seed) {}

  std::unique_ptr<TiXmlElement> next() {
    auto root = std::make_unique<TiXmlElement>(text());
    std::vector<TiXmlNode*> nodes{root.get()};
    for (std::size_t left = below(60); left > 0; --left) {
      // Mostly below a late node, so that some trees are deep; below any kind of node.
      std::size_t const at = below(3) == 0 ? below(nodes.size()) : nodes.size() - 1;
      nodes.push_back(nodes[at]->LinkEndChild(node().release()));
    }
    return root;
  }

 private:
  std::unique_ptr<TiXmlNode> node() {
    switch (below(8)) {
      case 0:
        return std::make_unique<TiXmlComment>(text().c_str());
      case 1:
        return std::make_unique<TiXmlUnknown>();
      case 2:
        return std::make_unique<TiXmlDeclaration>("1.0", "", "");
      case 3:
      case 4: {
        auto made = std::make_unique<TiXmlText>(text());
        made->SetCDATA(below(2) == 0);
        return made;
      }
      default: {
        auto made = std::make_unique<TiXmlElement>(text());
        for (std::size_t left = below(4); left > 0; --left) {
          made->SetAttribute("n" + std::to_string(below(4)), text());
        }
        return made;
      }
    }
  }
  std::string text() {
    std::string made;
    for (std::size_t left = below(12); left > 0; --left) made += "ab<&> \n\0\xC3"[below(9)];
    return made;
  }
  std::size_t below(std::size_t end) { return random_() % end; }

  std::mt19937 random_;
};

TEST(HostTree, HoldsWhateverAHostMakes) {
  constexpr unsigned seed = 20230719;
  SCOPED_TRACE(seed);
  HostMadeTrees trees(seed);
  for (int i = 0; i < 2000 && !HasFailure(); ++i) expectCopied(*trees.next());
}

// ---- Memory ------------------------------------------------------------------------------------

using HostTreeHeap = test::HeapTest;

std::size_t allocationsFor(TiXmlElement const& element) {
  test::Allocations const allocations;
  HostTree const copy(&element);
  return allocations.made();
}

TEST_F(HostTreeHeap, IsAskedForTextsLongerThanTheStack) {
  for (std::size_t const more : {0U, 1U, 2U}) {
    TiXmlElement root("a");  // two bytes, as each text has its zero byte
    root.LinkEndChild(new TiXmlText(std::string(PrivateText::shortText - 4 + more, 'x')));
    EXPECT_EQ(allocationsFor(root), more < 2 ? 0U : 1U);
    expectCopied(root);
  }
}

TEST_F(HostTreeHeap, IsAskedForMoreNodesThanTheStackHolds) {
  constexpr std::size_t most = std::tuple_size_v<NearNodes>;
  for (std::size_t const nodes : {most - 1, most, most + 1}) {
    TiXmlElement root("a");
    for (std::size_t i = 1; i < nodes; ++i) root.LinkEndChild(new TiXmlElement("b"));
    EXPECT_EQ(allocationsFor(root), nodes <= most ? 0U : 1U);
    expectCopied(root);
  }
}

TEST_F(HostTreeHeap, IsAskedTwiceAtTheMost) {
  TiXmlElement root("a");
  for (int i = 0; i < 20000; ++i) {
    auto* const child = new TiXmlElement("b");
    child->SetAttribute("c", "d");
    child->LinkEndChild(new TiXmlText("e"));
    root.LinkEndChild(child);
  }
  EXPECT_EQ(allocationsFor(root), 2U);
}

}  // namespace

}  // namespace Kovra::frame
