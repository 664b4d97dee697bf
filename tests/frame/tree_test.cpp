#include "frame/tree.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace Kovra::frame {

namespace {

using namespace std::string_literals;

// A host may have given an element more attributes than any text is let through with.
TEST(Element, MayHaveMoreAttributesThanSixteenBitsCount) {
  std::string const names = "first\0last"s;
  std::uint32_t const count = 65536 + 3;
  Tree tree(names.c_str(), {});
  TreeBuilder builder(tree);
  tree.reserve(sizeof(Node) + count * sizeof(Attribute));
  std::uint32_t const element = builder.add(NodeKind::element, {5, 0}, 0);
  for (std::uint32_t i = 0; i < count; ++i) {
    tree.add(Attribute{i + 1 < count ? Piece{0, 5} : Piece{6, 4}, {5, 0}}, "");
  }
  EXPECT_STREQ(Element(tree, element).attribute("first"), "");
  EXPECT_STREQ(Element(tree, element).attribute("last"), "");
}

}  // namespace

}  // namespace Kovra::frame
