/// @file
/// Which values of a reply tell who somebody is, or let somebody in.

#ifndef KOVRA_TOOL_IDENTITY_HPP
#define KOVRA_TOOL_IDENTITY_HPP

#include <cstdint>
#include <functional>
#include <kovra.hpp>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace Kovra::tool {

/// What a value tells of.
enum class Group : std::uint8_t { key, track, serial, address, network, job };

std::string_view nameOf(Group group);
/// Of all groups, in their order.
std::vector<std::string> groupNames();
/// Of those that may be kept: no secrets.
std::vector<std::string> keptNames();
/// Keys, pass phrases and tracks.
bool isSecret(Group group);

/// A kind of values of one group, and the words in the names of what carries them.
struct IdentityRow {
  Group group;
  /// Of a made-up text: "key" of "key-1".
  char const* stem;
  /// Does a made-up one keep length, letters and digits of the original?
  bool hasPattern;
  /// With a blank behind each.
  char const* words;
};

std::vector<IdentityRow> const& identityRows();

/// What a value is. The group may be another than the row's: a serial number can be a secret.
struct Identity {
  Group group;
  IdentityRow const* row;
};

/// Which elements and attributes carry such values: those of the catalogue, by what it says of
/// their members, and all others by their names.
class Identities {
 public:
  /// Those of the groups in `kept` are none.
  explicit Identities(std::set<Group> kept);

  /// What is known of an element: where it is, and what it holds.
  struct Node {
    std::map<std::string, Node, std::less<>> inner;
    std::optional<Identity> identity;
    bool isMember = false;  ///< of a record: it holds a value
    bool isFixed = false;   ///< a number or a word, which means what it says
    bool isContainer = false;
    /// Of a root: names that carry secrets, wherever they stand.
    std::map<std::string, Identity, std::less<>> secrets;
  };

  /// Null for a root that no reply has.
  Node const* root(std::string_view name) const;
  /// What an element or attribute holds that the catalogue does not know.
  std::optional<Identity> byName(std::string_view name) const;
  /// Does the name tell of a number or a state, and so nothing of who somebody is?
  static bool isTelling(std::string_view name);

  /// Is the member of a message's record replaced? A path has no numbers: "jobs.uuid".
  bool isReplaced(std::string_view message, std::string_view path) const;

  /// A member that is replaced.
  struct Listed {
    Group group;
    std::string message;
    std::string path;
  };
  std::vector<Listed> const& listed() const { return listed_; }

 private:
  void add(Message const& message, MemberDescription const& member, std::string const& path,
           std::vector<Node*> const& places, std::vector<Node*> const& roots);
  std::optional<Identity> identityOf(MemberDescription const& member) const;
  std::optional<Identity> unlessKept(std::optional<Identity> identity) const;

  std::set<Group> kept_;
  std::map<std::string, Node, std::less<>> roots_;
  std::map<std::string, std::set<std::string, std::less<>>, std::less<>> replaced_;
  std::vector<Listed> listed_;
};

/// A value that stands in place of one, and says nothing: "none", "dhcp", "0.0.0.0", a netmask.
bool saysNothing(std::string_view value);

}  // namespace Kovra::tool

#endif
