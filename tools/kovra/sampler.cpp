#include "sampler.hpp"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <utility>

#include "paths.hpp"

namespace Kovra::tool {

namespace {

using Words = std::vector<std::string>;
using Form = MemberDescription::Form;

constexpr std::size_t mostEntries = 3;

bool isList(ElementDescription const& element) {
  std::vector<MemberDescription> const members = element.members();
  return !members.empty() && members.front().kind() == Value::Kind::list;
}

/// Is the member a record of flags, of which the element is one or names some?
bool isFlags(MemberDescription const& member, ElementDescription const& element) {
  return member.kind() == Value::Kind::record && member.form() != Form::setting &&
         element.elements().empty();
}

/// Of words with one code the first, which is the one that a record shows.
Words wordsOf(ElementDescription const& element, bool withZero) {
  Words words;
  std::set<int> codes;
  for (Keyword const& word : element.words()) {
    bool const isFirst = codes.insert(word.code()).second;
    if (isFirst && (withZero || word.code() != 0)) words.push_back(word.word());
  }
  return words;
}

std::string within(std::string const& around, std::string const& name) {
  return around.empty() || name.empty() ? around + name : around + '/' + name;
}

void collect(ElementDescription const& element, std::string const& around, LikelyTexts& likely) {
  std::string const path = within(around, element.name());
  LikelyText& text = likely[path];
  for (Keyword const& word : element.words()) text.words.push_back(word.word());
  for (MemberDescription const& member : element.members()) {
    bool const isBounded = member.mostBytes() != 0;
    if (isBounded) text.mostBytes = std::min(text.mostBytes, member.mostBytes());
  }
  for (ElementDescription const& inner : element.elements()) collect(inner, path, likely);
}

std::string twoDigits(std::size_t number) {
  constexpr char digits[] = "0123456789abcdef";
  return {digits[number / 16 % 16], digits[number % 16]};
}

/// From the ranges that are there for documentation.
std::string ipv4(Random& random) {
  constexpr char const* networks[] = {"192.0.2.", "198.51.100.", "203.0.113."};
  std::string const network = random.oneOf(networks);
  return network + std::to_string(1 + random.below(254));
}

std::string hardwareAddress(Random& random) {
  return "00:00:5e:00:53:" + twoDigits(random.below(256));
}

}  // namespace

LikelyTexts likelyTexts(Message const& message) {
  LikelyTexts likely;
  for (Message const& other : messages()) {
    if (other.isRead() && other.roots() == message.roots()) collect(other.root(), "", likely);
  }
  return likely;
}

Node Sampler::reply(ElementDescription const& root) {
  Node node{root.name()};
  Place const place{"", root.name()};
  if (root.elements().empty() && !root.members().empty()) {
    MemberDescription const member = root.members().front();
    fillLeaf(node, root, member, member.name(), place);
  } else {
    fill(node, root, place);
  }
  return node;
}

/// Does the element know the words that somebody asks for there?
bool Sampler::suits(ElementDescription const& element, std::string const& record) {
  Words const words = wordsOf(element, true);
  for (MemberDescription const& member : element.members()) {
    std::string const* const wished = wish(record + member.name());
    bool const isUnknown = wished != nullptr && !words.empty() &&
                           std::find(words.begin(), words.end(), *wished) == words.end();
    if (isUnknown) return false;
  }
  std::vector<ElementDescription> const inner = element.elements();
  bool const isOfRecord = element.members().empty();
  return !isOfRecord || std::all_of(inner.begin(), inner.end(),
                                    [&](auto const& other) { return suits(other, record); });
}

/// Puts what stands in an element into its node. Of elements that tell the same member one is
/// there, whichever chance brings first of those that suit; all stand in the order of the
/// description. False when nothing was left to tell.
bool Sampler::fill(Node& node, ElementDescription const& element, Place const& within) {
  std::vector<ElementDescription> const inner = element.elements();
  std::vector<std::size_t> order(inner.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  random_.shuffle(order);
  std::stable_partition(order.begin(), order.end(),
                        [&](std::size_t i) { return suits(inner[i], within.record); });
  std::vector<std::vector<Node>> made(inner.size());
  for (std::size_t const i : order) made[i] = nodesOf(inner[i], within);
  for (std::vector<Node>& some : made) {
    for (Node& one : some) {
      node.isFixed |= one.isFixed;
      node.nodes.push_back(std::move(one));
    }
  }
  return !node.nodes.empty();
}

std::vector<Node> Sampler::nodesOf(ElementDescription const& element, Place const& place) {
  Members const members = element.members();
  if (isList(element)) return entriesOf(element, place);
  if (!element.elements().empty()) return branchOf(element, place);
  if (members.empty()) return {Node{element.name()}};
  if (isFlags(members.front(), element) && element.mostTimes() > 1) return flagsOf(element, place);
  return leafOf(element, place);
}

/// Entries go on where those of another element for the same list ended.
std::vector<Node> Sampler::entriesOf(ElementDescription const& element, Place const& place) {
  std::string const list = place.record + element.members().front().name();
  std::vector<Node> entries;
  std::size_t& next = entries_[list];
  std::size_t const count = entriesIn(list, element.mostTimes());
  for (std::size_t i = 0; i < count; ++i) {
    entries.push_back(entryOf(element, place, entryPath(list, next++)));
  }
  return entries;
}

Node Sampler::entryOf(ElementDescription const& element, Place const& place,
                      std::string const& path) {
  Node entry{element.name()};
  Place const inner{path + '.', within(place.elements, element.name())};
  if (element.elements().empty()) {
    fillLeaf(entry, element, element.members().front(), path, inner);
  } else {
    fill(entry, element, inner);
  }
  return entry;
}

/// As many as somebody asks for, and a few.
std::size_t Sampler::entriesIn(std::string const& list, std::size_t most) {
  std::size_t const bound = most == 0 ? mostEntries : std::min(most, mostEntries);
  std::size_t count = 1 + random_.below(bound);
  std::string const begin = list + '[';
  for (auto const& [path, value] : wishes_) {
    if (path.compare(0, begin.size(), begin) != 0) continue;
    std::size_t index = 0;
    for (std::size_t at = begin.size(); at < path.size() && path[at] >= '0' && path[at] <= '9';
         ++at)
      index = std::min<std::size_t>(index * 10 + static_cast<std::size_t>(path[at] - '0'), 1000);
    bool const isPossible = most == 0 ? index < 1000 : index < most;
    if (isPossible) count = std::max(count, index + 1);
  }
  return count;
}

/// Elements of one name, each of which sets one flag. One at least is set.
std::vector<Node> Sampler::flagsOf(ElementDescription const& element, Place const& place) {
  std::string const path = place.record + element.members().front().name();
  std::vector<Node> nodes;
  Words words = wordsOf(element, true);
  random_.shuffle(words);
  for (std::string const& word : words) {
    std::string const* const wished = wish(memberPath(path, word));
    bool const isSet = wished != nullptr ? *wished == "yes" : nodes.empty() || random_.once(2);
    tell(memberPath(path, word));
    if (!isSet) continue;
    Node& node = nodes.emplace_back(Node{element.name()});
    node.nodes.push_back(piece(word));
    node.isFixed = wished != nullptr;
  }
  return nodes;
}

std::vector<Node> Sampler::branchOf(ElementDescription const& element, Place const& place) {
  Members const members = element.members();
  Place inner{place.record, within(place.elements, element.name())};
  if (!members.empty()) inner.record += members.front().name() + '.';
  std::vector<Node> nodes;
  inner.hasTurns = element.mostTimes() > 1;
  for (; inner.turn < element.mostTimes(); ++inner.turn) {
    Node node{element.name()};
    if (fill(node, element, inner)) nodes.push_back(std::move(node));
  }
  return nodes;
}

/// An element that tells members itself, or the text of the one around it.
std::vector<Node> Sampler::leafOf(ElementDescription const& element, Place const& place) {
  Members members = element.members();
  if (place.hasTurns) members = {members[place.turn]};
  bool const isFlag = isFlags(members.front(), element);
  std::string const flag = isFlag ? '.' + element.name() : "";
  std::string const path = place.record + members.front().name() + flag;
  std::string asked = path;
  for (MemberDescription const& member : members) {
    std::string const other = place.record + member.name() + flag;
    if (!tell(other)) return {};
    if (wishes_.find(other) != wishes_.end()) asked = other;
  }
  Place inner = place;
  inner.elements = within(place.elements, element.name());
  Node node{element.name()};
  fillLeaf(node, element, members.front(), asked, inner);
  if (node.isElement()) return {node};
  node.nodes.front().isFixed = node.isFixed;
  return {node.nodes.front()};
}

void Sampler::fillLeaf(Node& node, ElementDescription const& element,
                       MemberDescription const& member, std::string const& path,
                       Place const& place) {
  tell(path);
  if (member.form() == Form::setting) return fillSetting(node, element, path);
  std::string const* const wished = wish(path);
  std::string const value = wished != nullptr ? *wished : valueOf(element, member, place);
  node.isFixed = wished != nullptr;
  Words const attributes = element.attributes();
  if (attributes.empty()) {
    node.nodes.push_back(piece(value));
  } else {
    node.attributes.push_back({attributes.front(), value});
  }
}

/// A value, and its bounds where the element has them. Where somebody asks for one of them, the
/// others are the same unless they are asked for, too.
void Sampler::fillSetting(Node& node, ElementDescription const& element, std::string const& path) {
  Words const attributes = element.attributes();
  std::string const least = std::to_string(random_.below(33));
  std::string const value = std::to_string(std::stoul(least) + random_.below(33));
  std::string const most = std::to_string(std::stoul(value) + random_.below(33));
  Words parts = {"val"};
  parts.insert(parts.end(), attributes.begin(), attributes.end());
  std::string const* all = wish(path);
  for (std::string const& part : parts) {
    tell(memberPath(path, part));
    if (all == nullptr) all = wish(memberPath(path, part));
  }
  node.isFixed = all != nullptr;
  auto const valueOf = [&](std::string const& part, std::string const& likely) {
    std::string const* const one = wish(memberPath(path, part));
    return one != nullptr ? *one : all != nullptr ? *all : likely;
  };
  for (std::string const& name : attributes) {
    node.attributes.push_back({name, valueOf(name, name == "min" ? least : most)});
  }
  node.nodes.push_back(piece(valueOf("val", value)));
}

std::string Sampler::valueOf(ElementDescription const& element, MemberDescription const& member,
                             Place const& place) {
  Words const words = wordsOf(element, !place.hasTurns);
  if (!words.empty()) return random_.oneOf(words);
  switch (member.form()) {
    case Form::ipv4:
      return ipv4(random_);
    case Form::hardwareAddress:
      return hardwareAddress(random_);
    case Form::hexadecimal:
      return "0x" + twoDigits(random_.below(256)) + twoDigits(random_.below(256));
    case Form::setting:
    case Form::plain:
      break;
  }
  bool const isText = member.kind() == Value::Kind::text || member.kind() == Value::Kind::list;
  return isText ? textOf(place.elements) : numberOf(member);
}

/// One of the likely words that fit, or a name with a number.
std::string Sampler::textOf(std::string const& elements) {
  auto const known = likely_.find(elements);
  LikelyText const likely = known != likely_.end() ? known->second : LikelyText();
  Words words = likely.words;
  auto const isTooLong = [&](std::string const& word) { return word.size() > likely.mostBytes; };
  words.erase(std::remove_if(words.begin(), words.end(), isTooLong), words.end());
  if (!words.empty()) return random_.oneOf(words);
  std::string const number = std::to_string(1 + random_.below(99));
  for (std::string const& text : {"Sample " + number, "S" + number}) {
    if (!isTooLong(text)) return text;
  }
  return "S";
}

std::string Sampler::numberOf(MemberDescription const& member) {
  std::string const whole = std::to_string(random_.below(100));
  constexpr char const* fractions[] = {".0", ".25", ".5", ".75"};
  return member.kind() == Value::Kind::real ? whole + random_.oneOf(fractions) : whole;
}

std::string const* Sampler::wish(std::string const& path) {
  auto const found = wishes_.find(path);
  return found != wishes_.end() ? &found->second : nullptr;
}

}  // namespace Kovra::tool
