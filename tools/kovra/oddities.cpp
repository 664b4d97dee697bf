#include "oddities.hpp"

#include <cstddef>
#include <string_view>
#include <vector>

namespace Kovra::tool {

namespace {

/// A node, and the nodes among which it stands; the root stands among none.
struct Spot {
  Node* node = nullptr;
  Node* around = nullptr;
};

void collect(Node& node, Node* around, std::vector<Spot>& spots) {
  if (!node.isElement()) return;
  spots.push_back({&node, around});
  for (Node& inner : node.nodes) collect(inner, &node, spots);
}

std::size_t indexOf(Spot const& spot) {
  return static_cast<std::size_t>(spot.node - spot.around->nodes.data());
}

void insert(Node& around, std::size_t index, Node node) {
  around.nodes.insert(around.nodes.begin() + static_cast<std::ptrdiff_t>(index), std::move(node));
}

Node raw(std::string const& text) {
  Node node;
  node.text = text;
  return node;
}

// What may become of an element. Those with what somebody asks for get something beside it.

void addUnknown(Spot const& spot, Random& random) {
  Node unknown{"odd_" + std::to_string(random.below(1000))};
  if (random.once(2)) unknown.nodes.push_back(piece("odd"));
  std::size_t const end = spot.node->nodes.size();  // in front of a text it would take its place
  insert(*spot.node, spot.node->isFixed ? end : random.below(end + 1), unknown);
}

/// The text of an element that holds nothing else; null for others, and for one with markup.
std::string const* textIn(Spot const& spot) {
  if (!spot.node->isLeaf()) return nullptr;
  std::string const& text = spot.node->nodes.front().text;
  return text.find('<') == text.npos ? &text : nullptr;
}

/// As deep as a reader bears, with room for the elements around it.
void addDeep(Spot const& spot, Random& random) {
  std::string text;
  std::size_t const depth = 2 + random.below(90);
  for (std::size_t i = 0; i < depth; ++i) text += "<deep>";
  for (std::size_t i = 0; i < depth; ++i) text += "</deep>";
  insert(*spot.node, spot.node->nodes.size(), raw(text));
}

void addComment(Spot const& spot, Random& random) {
  constexpr char const* comments[] = {"<!-- odd -->", "<!---->", "<!-- <a> & ]]> -->",
                                      "<!-- two\nlines -->"};
  insert(*spot.node, random.below(spot.node->nodes.size() + 1), raw(random.oneOf(comments)));
}

void addAttribute(Spot const& spot, Random& random) {
  constexpr char const* values[] = {"", "odd", "a & b < c", "it's \"odd\"", "0"};
  spot.node->attributes.push_back(
      {"odd_" + std::to_string(spot.node->attributes.size()), random.oneOf(values)});
}

void respellAttributes(Spot const& spot, Random& random) {
  constexpr char const* blanks[] = {" ", "  ", "\t", "\n"};
  constexpr char const* equals[] = {"=", " =", "= ", " = "};
  for (Attribute& attribute : spot.node->attributes) {
    attribute.before = random.oneOf(blanks);
    attribute.equals = random.oneOf(equals);
    attribute.quote = random.once(2) ? '\'' : '"';
  }
}

void dropAttribute(Spot const& spot, Random& random) {
  std::vector<Attribute>& attributes = spot.node->attributes;
  if (attributes.empty()) return;
  auto const which = static_cast<std::ptrdiff_t>(random.below(attributes.size()));
  attributes.erase(attributes.begin() + which);
}

/// With another value, so that it shows which of the two counts.
void repeat(Spot const& spot, Random& random) {
  bool const movesOthers = spot.around == nullptr || spot.around->isFixed;
  if (movesOthers) return;
  Node again = *spot.node;
  if (again.isLeaf() && random.once(2)) again.nodes = {piece("7")};
  insert(*spot.around, indexOf(spot) + 1, again);
}

void empty(Spot const& spot, Random&) {
  spot.node->nodes.clear();
}

void say(Spot const& spot, std::string const& text) {
  spot.node->nodes = {raw(text)};
}

void sayUnknownWord(Spot const& spot, Random& random) {
  constexpr char const* words[] = {"odd", "YES", "unknown", "none of  them", "0x", "-", "ENABLED"};
  say(spot, random.oneOf(words));
}

/// The bounds of what members hold, and what lies beyond them.
void sayBound(Spot const& spot, Random& random) {
  constexpr char const* numbers[] = {"0",
                                     "-1",
                                     "127",
                                     "-128",
                                     "255",
                                     "256",
                                     "32767",
                                     "-32768",
                                     "65535",
                                     "65536",
                                     "2147483647",
                                     "-2147483648",
                                     "2147483648",
                                     "4294967295",
                                     "4294967296",
                                     "9223372036854775807",
                                     "-9223372036854775808",
                                     "18446744073709551616",
                                     "0xFFFFFFFF",
                                     "1e308",
                                     "-0.0",
                                     "007"};
  char const* const number = random.oneOf(numbers);
  if (spot.node->attributes.empty()) return say(spot, number);
  spot.node->attributes[random.below(spot.node->attributes.size())].value = number;
}

void sayLong(Spot const& spot, Random& random) {
  constexpr char const* pieces[] = {"x", "long ", "\xc3\xa4", "&amp;"};
  std::string text;
  std::string const one = random.oneOf(pieces);
  std::size_t const count = 30 + random.below(3000);
  for (std::size_t i = 0; i < count; ++i) text += one;
  say(spot, text);
}

void wrapInData(Spot const& spot, Random&) {
  std::string const* const text = textIn(spot);
  if (text != nullptr) say(spot, "<![CDATA[" + *text + "]]>");
}

/// As references to its characters.
void wrapInReferences(Spot const& spot, Random& random) {
  std::string const* const text = textIn(spot);
  bool const hasReferences = text == nullptr || text->find('&') != text->npos;
  if (hasReferences) return;
  std::string referring;
  for (char const letter : *text) {
    bool const isAscii = static_cast<signed char>(letter) > ' ';
    referring += isAscii && random.once(2)
                     ? "&#" + std::to_string(static_cast<unsigned>(letter)) + ';'
                     : std::string(1, letter);
  }
  say(spot, referring);
}

void addBlanks(Spot const& spot, Random& random) {
  constexpr char const* blanks[] = {"\n", "\t", " ", "\r\n  "};
  std::string const* const text = textIn(spot);
  std::string const blank = random.oneOf(blanks);
  if (text != nullptr) say(spot, blank + *text + blank);
}

using Oddity = void (*)(Spot const& spot, Random& random);

/// They leave what the element says.
constexpr Oddity besides[] = {addUnknown, addDeep, addAttribute, respellAttributes};
/// They change it, or how it is said.
constexpr Oddity changes[] = {addUnknown,        addDeep,       addComment, addAttribute,
                              respellAttributes, dropAttribute, repeat,     empty,
                              sayUnknownWord,    sayBound,      sayLong,    wrapInData,
                              wrapInReferences,  addBlanks};

void change(Spot const& spot, Random& random) {
  (spot.node->isFixed ? random.oneOf(besides) : random.oneOf(changes))(spot, random);
}

}  // namespace

/// Nodes move with each change, so they are collected anew.
void makeOdd(Node& root, Random& random) {
  std::vector<Spot> spots;
  collect(root, nullptr, spots);
  std::size_t const count = 1 + random.below(3 + spots.size() / 4);
  for (std::size_t i = 0; i < count; ++i) {
    spots.clear();
    collect(root, nullptr, spots);
    change(random.oneOf(spots), random);
  }
}

std::string oddProlog(Random& random) {
  constexpr char const* prologs[] = {
      "",
      "<?xml version=\"1.0\"?>\n",
      "<?xml version='1.0' encoding='UTF-8' standalone='yes'?>\n",
      "<!-- odd -->\n",
      "<!DOCTYPE odd>\n",
      "\n  \n",
  };
  return random.oneOf(prologs);
}

}  // namespace Kovra::tool
