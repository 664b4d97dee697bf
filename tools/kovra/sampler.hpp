/// @file
/// Replies that a printer might send, made from what the library says of messages.

#ifndef KOVRA_TOOL_SAMPLER_HPP
#define KOVRA_TOOL_SAMPLER_HPP

#include <cstddef>
#include <kovra.hpp>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "random.hpp"
#include "reply_tree.hpp"

namespace Kovra::tool {

/// Values that somebody asks for, by the paths of members: "wireless.ssid", "jobs[0].uuid".
using Wishes = std::map<std::string, std::string, std::less<>>;

/// What messages with the same root say in the same element: a text is likely one of their words,
/// and fits all of them.
struct LikelyText {
  std::vector<std::string> words;
  std::size_t mostBytes = std::string::npos;
};
/// By the path of the element.
using LikelyTexts = std::map<std::string, LikelyText, std::less<>>;
LikelyTexts likelyTexts(Message const& message);

/// Makes one reply, with every member that a reply can tell.
class Sampler {
 public:
  Sampler(Wishes const& wishes, LikelyTexts const& likely, Random& random)
      : wishes_(wishes), likely_(likely), random_(random) {}

  Node reply(ElementDescription const& root);
  /// The paths of what the reply tells. Wishes for others were in vain.
  std::set<std::string, std::less<>> const& told() const { return told_; }

 private:
  /// Where an element stands.
  struct Place {
    std::string record;     ///< path of the record around it, with a point behind it unless empty
    std::string elements;   ///< names of those around it
    std::size_t turn = 0;   ///< how often it stood there already
    bool hasTurns = false;  ///< each time it tells another of its members
  };
  using Members = std::vector<MemberDescription>;

  bool suits(ElementDescription const& element, std::string const& record);
  std::vector<Node> nodesOf(ElementDescription const& element, Place const& place);
  std::vector<Node> entriesOf(ElementDescription const& element, Place const& place);
  std::vector<Node> flagsOf(ElementDescription const& element, Place const& place);
  std::vector<Node> branchOf(ElementDescription const& element, Place const& place);
  std::vector<Node> leafOf(ElementDescription const& element, Place const& place);
  Node entryOf(ElementDescription const& element, Place const& place, std::string const& path);
  bool fill(Node& node, ElementDescription const& element, Place const& within);
  void fillLeaf(Node& node, ElementDescription const& element, MemberDescription const& member,
                std::string const& path, Place const& place);
  void fillSetting(Node& node, ElementDescription const& element, std::string const& path);
  std::string valueOf(ElementDescription const& element, MemberDescription const& member,
                      Place const& place);
  std::string textOf(std::string const& elements);
  std::string numberOf(MemberDescription const& member);
  std::size_t entriesIn(std::string const& list, std::size_t most);
  /// The value that somebody asks for; null where nobody does.
  std::string const* wish(std::string const& path);
  bool tell(std::string const& path) { return told_.insert(path).second; }

  Wishes const& wishes_;
  LikelyTexts const& likely_;
  Random& random_;
  std::set<std::string, std::less<>> told_;
  std::map<std::string, std::size_t, std::less<>> entries_;  ///< of each list so far
};

}  // namespace Kovra::tool

#endif
