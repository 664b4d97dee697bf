/// @file
/// A parsed text: a flat array of nodes over one private copy of the text.
///
/// The tree is TinyXML's, node for node: the same elements, texts, CDATA sections, comments,
/// unknowns and declarations with the same values in the same order. But no node owns anything: its
/// value is a piece of the text, decoded in place, and links are indices. Nodes stand in the order
/// of the document, so the first child of a node, if it has any, is the node behind it.
///
///     <status><alarms n="1">0x0</alarms></status>
///
///     node  kind     value     next  child  attributes
///     0     element  "status"  -     yes
///     1     element  "alarms"  -     yes    n="1"
///     2     text     "0x0"     -     no
///
/// Nodes grow from the beginning of one piece of memory, attributes from its end. The piece that
/// the tree starts with lies on the stack and suffices for most replies. Where it does not, what is
/// left of the text is looked over once, and one block takes all that can come.

#ifndef KOVRA_FRAME_TREE_HPP
#define KOVRA_FRAME_TREE_HPP

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <span>
#include <string_view>
#include <utility>

#include "frame/usage.hpp"

namespace Kovra::frame {

/// A piece of the tree's text. A zero byte stands behind it, unless it belongs to a declaration.
struct Piece {
  std::uint32_t at;
  std::uint32_t length;
};

struct Attribute {
  Piece name;
  Piece value;
};

enum class NodeKind : std::uint8_t { element, text, cdata, comment, unknown, declaration };

struct Node {
  Piece value;              ///< an element's name, and of others what stands in them
  std::uint32_t next;       ///< the next sibling; 0 when there is none
  std::uint32_t offset;     ///< where the node begins in the text, counted in bytes
  std::uint32_t attribute;  ///< the first one; the last stands in front of the next node's first
  NodeKind kind;
  bool hasChild;  ///< the next node is the first child
};
static_assert(sizeof(Node) == 24 && sizeof(Attribute) == 16, "replies are many and memory is dear");

class Tree {
 public:
  /// The longest text whose bytes can be counted.
  static constexpr std::size_t longestText = std::numeric_limits<std::uint32_t>::max() / 2;

  /// How many bytes of nodes and attributes the rest of a text can become, at the most. Each node
  /// but text begins with a `<`, and all but a last one end with a `>`; a text stands behind such a
  /// mark; an attribute has a `=`, apart from one that a cut declaration ends with. That is at most
  /// 24 bytes for each byte of text, and 104 besides; the densest text there is needs 16.
  static std::size_t bound(std::string_view rest);

  /// A tree over the `length` bytes at `text`, which have to outlive it, with `first` as the memory
  /// to begin with.
  Tree(char const* text, std::size_t length, std::span<std::byte> first) noexcept;

  char const* text() const { return text_; }
  std::span<Node const> nodes() const { return {nodes_, nodeCount_}; }
  Node const& node(std::uint32_t index) const { return nodes_[index]; }
  /// Attributes in the order of the text; each element's stand together.
  Attribute const& attribute(std::uint32_t index) const { return end_[-1 - std::int64_t{index}]; }
  std::uint32_t attributeCount() const { return attributeCount_; }
  /// How many of them a node has.
  std::uint32_t attributesOf(std::uint32_t node) const {
    bool const last = node + 1 == nodeCount_;
    return (last ? attributeCount_ : nodes_[node + 1].attribute) - nodes_[node].attribute;
  }
  std::string_view view(Piece piece) const { return {text_ + piece.at, piece.length}; }
  /// The same for those that end at a zero byte.
  char const* terminated(Piece piece) const { return text_ + piece.at; }

  // Watching. What readings use from here on is noted; a tree that nobody watches notes nothing.

  void watch(Usage* usage) { usage_ = usage; }
  void useNode(std::uint32_t index) const {
    if (usage_ != nullptr) [[unlikely]]
      usage_->useNode(index);
  }
  /// The same of a node whose value is read: an element is used by those who know its name.
  void useText(std::uint32_t index) const {
    if (usage_ != nullptr && nodes_[index].kind != NodeKind::element) [[unlikely]]
      usage_->useNode(index);
  }
  void hideNode(std::uint32_t index) const {
    if (usage_ != nullptr) usage_->hideNode(index);
  }
  void tellNode(std::uint32_t index) const {
    if (usage_ != nullptr) usage_->tell(index);
  }
  void useAttribute(std::uint32_t index) const {
    if (usage_ != nullptr) [[unlikely]]
      usage_->useAttribute(index);
  }

  // Building. What is still to be added will be made of the text from `at` on.

  std::uint32_t add(Node const& node, char const* at) {
    reserve(sizeof node, at);
    nodes_[nodeCount_] = node;
    return nodeCount_++;
  }
  void add(Attribute const& attribute, char const* at) {
    reserve(sizeof attribute, at);
    ++attributeCount_;
    end_[-std::int64_t{attributeCount_}] = attribute;
  }
  Node& at(std::uint32_t index) { return nodes_[index]; }
  Attribute& attributeAt(std::uint32_t index) { return end_[-1 - std::int64_t{index}]; }
  /// Makes room for so many nodes and attributes more, where their number is known.
  void reserve(std::size_t bytes) {
    if (free_ < bytes) move(bytes);
  }

 private:
  void reserve(std::size_t bytes, char const* at) {
    if (free_ < bytes) [[unlikely]]
      moveForAllFrom(at);
    free_ -= bytes;
  }
  void moveForAllFrom(char const* at);
  void move(std::size_t more);
  void place(std::span<std::byte> memory);

  char const* text_;
  std::size_t length_;
  Node* nodes_ = nullptr;
  Attribute* end_ = nullptr;  ///< behind the first attribute: they are stored backwards
  std::size_t free_ = 0;
  std::uint32_t nodeCount_ = 0;
  std::uint32_t attributeCount_ = 0;
  std::unique_ptr<std::byte[]> block_;
  Usage* usage_ = nullptr;
};

/// Builds a tree: takes nodes as they come in the order of the document, and links them. While an
/// element is open, its link to the next sibling, of no use yet, leads to the element around it.
class TreeBuilder {
 public:
  static constexpr std::uint32_t none = std::numeric_limits<std::uint32_t>::max();

  explicit TreeBuilder(Tree& tree) : tree_(tree) {}

  /// Adds a node to the open element. What comes behind it will be made of the text from `at` on.
  std::uint32_t add(NodeKind kind, Piece value, std::uint32_t offset, char const* at) {
    std::uint32_t const node =
        tree_.add({value, 0, offset, tree_.attributeCount(), kind, false}, at);
    if (previous_ != none) {
      tree_.at(previous_).next = node;
    } else if (open_ != none) {
      tree_.at(open_).hasChild = true;
    }
    previous_ = node;
    return node;
  }

  /// Adds the only child of the element that was added last, which is not opened.
  void addOnlyChild(std::uint32_t element, NodeKind kind, Piece value, std::uint32_t offset,
                    char const* at) {
    tree_.add({value, 0, offset, tree_.attributeCount(), kind, false}, at);
    tree_.at(element).hasChild = true;
  }

  /// Opens the element that was added last.
  void open(std::uint32_t element) {
    tree_.at(element).next = open_;
    open_ = element;
    previous_ = none;
    ++depth_;
  }

  void close() {
    previous_ = open_;
    open_ = std::exchange(tree_.at(open_).next, 0);
    --depth_;
  }

  /// The innermost open element, or `none`.
  std::uint32_t innermost() const { return open_; }
  std::size_t depth() const { return depth_; }

 private:
  Tree& tree_;
  std::uint32_t open_ = none;
  std::uint32_t previous_ = none;  ///< the last child of the open element so far
  std::size_t depth_ = 0;
};

/// An element of a tree, or none: all that readings know of a document.
class Element {
 public:
  Element() = default;
  Element(Tree const& tree, std::uint32_t index) : tree_(&tree), index_(index) {}

  explicit operator bool() const { return tree_ != nullptr; }

  std::string_view name() const { return tree_->view(node().value); }

  /// The value of the first child node, whatever that is: of an element that stands first the name,
  /// of a comment its text. Null when there is no child, or no element.
  char const* text() const {
    if (tree_ == nullptr || !node().hasChild) return nullptr;
    tree_->useText(index_ + 1);
    return tree_->terminated(tree_->node(index_ + 1).value);
  }
  /// The same for those who only tell of it, and do not use it.
  char const* peek() const {
    if (tree_ == nullptr || !node().hasChild) return nullptr;
    return tree_->terminated(tree_->node(index_ + 1).value);
  }

  /// Is there a text among its children? If nobody reads it, that is told by itself.
  bool holdsText() const;

  /// The value of an attribute; null when the element lacks it, or when there is no element.
  char const* attribute(std::string_view name) const;

  /// The first child element, or none.
  Element firstChild() const {
    return tree_ != nullptr && node().hasChild ? elementFrom(index_ + 1) : Element();
  }
  /// The next element with the same parent, or none.
  Element nextSibling() const { return node().next != 0 ? elementFrom(node().next) : Element(); }

  /// Where the element stands in the text, in bytes.
  std::uint32_t offset() const { return node().offset; }
  /// Tells elements of one tree apart.
  std::uint32_t index() const { return index_; }
  /// Another element of the tree, by what tells it apart.
  Element at(std::uint32_t index) const { return {*tree_, index}; }
  /// For those who watch: a reading knows it.
  void use() const { tree_->useNode(index_); }
  /// It holds a secret, of which nothing is told.
  void hide() const { tree_->hideNode(index_); }
  /// Something else tells of it and of all below it.
  void tell() const { tree_->tellNode(index_); }

 private:
  Node const& node() const { return tree_->node(index_); }
  /// The element at `index`, or the first of its later siblings that is one.
  Element elementFrom(std::uint32_t index) const {
    while (tree_->node(index).kind != NodeKind::element) {
      index = tree_->node(index).next;
      if (index == 0) return {};
    }
    return {*tree_, index};
  }

  friend Element firstElement(Tree const& tree);

  Tree const* tree_ = nullptr;
  std::uint32_t index_ = 0;
};

/// The first element that stands in no other, or none.
Element firstElement(Tree const& tree);

}  // namespace Kovra::frame

#endif
