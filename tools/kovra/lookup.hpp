/// @file
/// The catalogue turned round: from a name to the places where it occurs.

#ifndef KOVRA_TOOL_LOOKUP_HPP
#define KOVRA_TOOL_LOOKUP_HPP

#include <kovra.hpp>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace Kovra::tool {

/// A member of a message's record, or of a record in it.
struct Entry {
  Message const* message = nullptr;
  std::string path;                   ///< "wireless.ssid", "jobs[].uuid"
  std::vector<std::string> names;     ///< those of the path: "jobs", "uuid"
  std::vector<std::string> elements;  ///< "wireless/ssid", below the root
  MemberDescription member;
};

/// Names, as somebody may know them.
struct Matches {
  std::vector<FindingKind> findings;
  bool isStrictFinding = false;  ///< is it the tool's own?
  std::vector<Message const*> messages;
  std::vector<Entry const*> members;
  bool isWord = false;  ///< replies hold it, and it is nothing of the above by itself

  bool empty() const {
    return findings.empty() && !isStrictFinding && messages.empty() && members.empty() && !isWord;
  }
};

/// A word of a choice: with it a document is composed that has the member.
struct WrittenBy {
  std::string choice;
  std::string word;
};

/// Everything that has a name.
class Lookup {
 public:
  Lookup();
  Lookup(Lookup const&) = delete;
  Lookup& operator=(Lookup const&) = delete;

  /// The id or the kind of a finding; the name or the root of a message; the name of a member, its
  /// path or the end of one, with or without that of the message in front; an element, its path
  /// within the reply or the end of one; a keyword. Where nothing is spelled so, capitals and
  /// dashes do not matter.
  Matches find(std::string_view name) const;

  /// All that can be found, of paths those that are of the kind of `name`.
  std::vector<std::string> names(std::string_view name) const;

  /// Of a message with a choice of words: those that write the member. They are tried, once for
  /// each message.
  std::vector<WrittenBy> writers(Entry const& entry);

 private:
  using Path = std::vector<std::string>;
  /// A word, and what it writes.
  struct Section {
    WrittenBy word;
    std::set<Path> paths;
  };

  std::vector<Section> const& sectionsOf(Message const& message);
  void add(Message const& message, std::vector<MemberDescription> const& members,
           Entry const& around);

  std::vector<Message> messages_;
  std::vector<Entry> entries_;
  std::map<Message const*, std::vector<Section>> sections_;
};

/// Does the message have choices of words, so that what it writes depends on them?
bool hasSections(Message const& message);

/// Is it this word, or one that is spelled in another way?
bool isKeyword(Keyword const& keyword, std::string_view name);

}  // namespace Kovra::tool

#endif
