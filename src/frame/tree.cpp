#include "frame/tree.hpp"

#include <algorithm>
#include <cstring>
#include <utility>

#include "frame/bytes.hpp"
#include "frame/pages.hpp"

namespace Kovra::frame {

std::size_t Tree::bound(std::string_view rest) {
  Marks const marks = countMarks(rest);
  std::size_t const both = std::min(marks.opening, marks.closing + 1) + 1;
  return 2 * both * sizeof(Node) + (marks.equals + 2) * sizeof(Attribute);
}

Tree::Tree(char const* text, std::size_t length, std::span<std::byte> first) noexcept
    : text_(text), length_(length) {
  place(first);
}

// The piece of memory is used in whole attributes from its end, so that these are aligned.
void Tree::place(std::span<std::byte> memory) {
  nodes_ = reinterpret_cast<Node*>(memory.data());
  std::size_t const room = memory.size() & ~(alignof(Attribute) - 1);
  end_ = reinterpret_cast<Attribute*>(memory.data() + room);
  free_ = room - nodeCount_ * sizeof(Node) - attributeCount_ * sizeof(Attribute);
}

void Tree::moveForAllFrom(char const* at) {
  auto const read = std::min(static_cast<std::size_t>(at - text_), length_);
  move(bound({text_ + read, length_ - read}));
}

// Links are indices, so nodes may lie anywhere.
void Tree::move(std::size_t more) {
  std::size_t const nodes = nodeCount_ * sizeof(Node);
  std::size_t const attributes = attributeCount_ * sizeof(Attribute);
  std::size_t const size = nodes + attributes + more;
  std::unique_ptr<std::byte[]> block(new std::byte[size]);
  useLargePages(block.get(), size);
  if (nodes > 0) std::memcpy(block.get(), nodes_, nodes);
  if (attributes > 0) {
    std::memcpy(block.get() + size - attributes, end_ - attributeCount_, attributes);
  }
  place({block.get(), size});
  block_ = std::move(block);
}

char const* Element::attribute(std::string_view name) const {
  if (tree_ == nullptr) return nullptr;
  std::uint32_t const first = node().attribute;
  std::uint32_t const end = first + tree_->attributesOf(index_);
  for (std::uint32_t i = first; i < end; ++i) {
    Attribute const& attribute = tree_->attribute(i);
    if (!sameText(tree_->view(attribute.name), name)) continue;
    tree_->useAttribute(i);
    return tree_->terminated(attribute.value);
  }
  return nullptr;
}

bool Element::holdsText() const {
  if (tree_ == nullptr || !node().hasChild) return false;
  for (std::uint32_t child = index_ + 1; child != 0; child = tree_->node(child).next) {
    NodeKind const kind = tree_->node(child).kind;
    if (kind == NodeKind::text || kind == NodeKind::cdata) return true;
  }
  return false;
}

Element firstElement(Tree const& tree) {
  return tree.nodes().empty() ? Element() : Element(tree, 0).elementFrom(0);
}

}  // namespace Kovra::frame
