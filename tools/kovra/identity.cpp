#include "identity.hpp"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <utility>

#include "paths.hpp"
#include "secret.hpp"
#include "words.hpp"

namespace Kovra::tool {

namespace {

using Kind = Value::Kind;

std::string lowered(std::string_view text) {
  std::string low(text);
  for (char& letter : low) letter = isUpper(letter) ? static_cast<char>(letter + 32) : letter;
  return low;
}

/// The words of a name in lower case: "ip", "address" of "IPAddress" and "ip_address". Numbers
/// behind a word are none of it.
std::vector<std::string> wordsOf(std::string_view name) {
  std::vector<std::string> words;
  bool isInside = false;
  for (std::size_t i = 0; i < name.size(); ++i) {
    char const letter = name[i];
    if (!isUpper(letter) && !isLower(letter)) {
      isInside = isInside && isDigit(letter);
      continue;
    }
    bool const endsRun = i + 1 < name.size() && isLower(name[i + 1]);
    bool const isNext = isUpper(letter) && i > 0 && (isLower(name[i - 1]) || endsRun);
    if (!isInside || isNext || isDigit(name[i - 1])) words.emplace_back();
    words.back() += isUpper(letter) ? static_cast<char>(letter + 32) : letter;
    isInside = true;
  }
  return words;
}

std::vector<std::string_view> split(std::string_view text, char mark) {
  std::vector<std::string_view> parts;
  for (std::size_t end = text.find(mark); end != text.npos; end = text.find(mark)) {
    parts.push_back(text.substr(0, end));
    text.remove_prefix(end + 1);
  }
  parts.push_back(text);
  return parts;
}

/// Is it one of the words that stand with blanks between them?
bool isAmong(std::string_view list, std::string_view word) {
  for (std::size_t at = 0; (at = list.find(word, at)) != list.npos; ++at) {
    bool const begins = at == 0 || list[at - 1] == ' ';
    bool const ends = at + word.size() == list.size() || list[at + word.size()] == ' ';
    if (begins && ends) return !word.empty();
  }
  return false;
}

bool hasOneOf(std::string_view list, std::string_view name) {
  std::vector<std::string> const words = wordsOf(name);
  return std::any_of(words.begin(), words.end(),
                     [&](std::string const& word) { return isAmong(list, word); });
}

/// Names with such a word tell how many or how, not who: "job_count", "ip_mode".
constexpr std::string_view tellingWords =
    "count counter num total state status type mode version size length timeout port ports speed "
    "signal strength channel enabled supported present available protection ready";

/// What stands where nothing is set.
constexpr std::string_view placeholders =
    "none dhcp auto any unknown n/a null static default disabled enabled yes no true false on off";

/// Every group has one.
IdentityRow const& rowFor(Group group) {
  return *std::find_if(identityRows().begin(), identityRows().end(),
                       [&](IdentityRow const& row) { return row.group == group; });
}

/// The first row, in the order of the table, that has a word of the name.
IdentityRow const* rowOf(std::string_view name) {
  for (IdentityRow const& row : identityRows()) {
    if (hasOneOf(row.words, name)) return &row;
  }
  return nullptr;
}

std::string_view lastOf(std::string_view path) {
  return path.substr(path.rfind('/') + 1);  // npos + 1 is 0
}

/// What the names of a member tell: its own, or else those of its elements.
IdentityRow const* rowOf(MemberDescription const& member) {
  if (Identities::isTelling(member.name())) return nullptr;
  if (IdentityRow const* const row = rowOf(member.name())) return row;
  for (std::string const& element : member.elements()) {
    if (IdentityRow const* const row = rowOf(lastOf(element))) return row;
  }
  return nullptr;
}

bool isContainer(MemberDescription const& member) {
  return member.kind() == Kind::record || member.kind() == Kind::list;
}

}  // namespace

/// Where words of several rows stand in a name, the first row counts. So the secrets come first:
/// a "host_key" is a key.
std::vector<IdentityRow> const& identityRows() {
  static std::vector<IdentityRow> const rows = {
      {Group::key, "key", false,
       "key keys passkey passkeys psk secret secrets hmac nonce token credential credentials"},
      {Group::key, "phrase", false,
       "passphrase passphrases phrase password passwords passwd pass pin"},
      {Group::track, "track", false, "track tracks"},
      {Group::serial, "serial", true, "serial serials serialno serialnumber sn"},
      {Group::address, "host", false, "host hosts hostname fqdn domain dns"},
      {Group::address, "address", true,
       "ip ipaddress address addresses addr mac macaddress bssid gateway router subnet netmask"},
      {Group::network, "network", false, "ssid essid network networks"},
      {Group::job, "uuid", true, "uuid guid"},
      {Group::job, "job", false, "job jobname jobid document"},
      {Group::job, "user", false, "user username userid owner operator login author account"},
  };
  return rows;
}

std::string_view nameOf(Group group) {
  constexpr std::array<std::string_view, 6> names = {"key",     "track",   "serial",
                                                     "address", "network", "job"};
  return names[static_cast<std::size_t>(group)];
}

bool isSecret(Group group) {
  return group == Group::key || group == Group::track;
}

std::vector<std::string> groupNames() {
  std::vector<std::string> names;
  for (Group const group :
       {Group::key, Group::track, Group::serial, Group::address, Group::network, Group::job}) {
    names.emplace_back(nameOf(group));
  }
  return names;
}

std::vector<std::string> keptNames() {
  std::vector<std::string> names = groupNames();
  names.erase(names.begin(), names.begin() + 2);  // the secrets
  return names;
}

Identities::Identities(std::set<Group> kept) : kept_(std::move(kept)) {
  for (Message const& message : messages()) {
    if (!message.isRead()) continue;
    std::vector<Node*> roots;
    for (std::string const& root : message.roots()) roots.push_back(&roots_[root]);
    for (MemberDescription const& member : message.members())
      add(message, member, "", roots, roots);
  }
}

/// Enters a member, which its elements carry below each of the places, and those below it. Of two
/// messages with one root, the one counts that has more to hide.
void Identities::add(Message const& message, MemberDescription const& member,
                     std::string const& path, std::vector<Node*> const& places,
                     std::vector<Node*> const& roots) {
  std::string const own = memberPath(path, member.name());
  std::optional<Identity> const identity = identityOf(member);
  std::vector<Node*> below;
  for (Node* const place : places) {
    for (std::string const& element : member.elements()) {
      Node* node = place;
      std::vector<std::string_view> const steps = split(element, '/');
      for (std::size_t i = 0; i < steps.size(); ++i) {
        node = &node->inner[std::string(steps[i])];
        node->isContainer |= i + 1 < steps.size();
      }
      below.push_back(node);
      if (isContainer(member)) {
        node->isContainer = true;
        continue;
      }
      node->isMember = true;
      node->isFixed |= !identity && member.kind() != Kind::text;
      bool const isStronger = identity && (!node->identity || isSecret(identity->group));
      if (isStronger) node->identity = identity;
    }
  }
  if (identity && !isContainer(member)) {
    listed_.push_back({identity->group, message.name(), own});
    replaced_[message.name()].insert(own);
  }
  if (identity && isSecret(identity->group)) {
    for (Node* const root : roots) {
      root->secrets.emplace(member.name(), *identity);
      for (std::string const& element : member.elements()) {
        root->secrets.emplace(lastOf(element), *identity);
      }
    }
  }
  if (below.empty()) below = places;
  for (MemberDescription const& inner : member.members()) add(message, inner, own, below, roots);
}

/// Records and lists are told member by member. Numbers and words mean something, but for serial
/// numbers.
std::optional<Identity> Identities::identityOf(MemberDescription const& member) const {
  if (isContainer(member)) return {};
  IdentityRow const* const row = rowOf(member);
  if (member.isSecret()) {
    IdentityRow const& known = row != nullptr ? *row : rowFor(Group::key);
    return Identity{isSecret(known.group) ? known.group : Group::key, &known};
  }
  bool const isNumber = member.kind() == Kind::integer || member.kind() == Kind::natural;
  if (isNumber && row != nullptr && row->group == Group::serial) {
    return unlessKept(Identity{row->group, row});
  }
  if (member.kind() != Kind::text) return {};
  using Form = MemberDescription::Form;
  if (member.form() == Form::ipv4 || member.form() == Form::hardwareAddress) {
    for (IdentityRow const& known : identityRows()) {
      if (known.group == Group::address && known.hasPattern) {
        return unlessKept(Identity{known.group, &known});
      }
    }
  }
  return row != nullptr ? unlessKept(Identity{row->group, row}) : std::nullopt;
}

std::optional<Identity> Identities::unlessKept(std::optional<Identity> identity) const {
  return identity && kept_.count(identity->group) != 0 ? std::nullopt : identity;
}

Identities::Node const* Identities::root(std::string_view name) const {
  auto const found = roots_.find(name);
  return found == roots_.end() ? nullptr : &found->second;
}

std::optional<Identity> Identities::byName(std::string_view name) const {
  constexpr std::size_t longest = 256;  // of a name that anybody meant
  if (name.size() > longest || isTelling(name)) return {};
  IdentityRow const* const row = rowOf(name);
  return row != nullptr ? unlessKept(Identity{row->group, row}) : std::nullopt;
}

bool Identities::isTelling(std::string_view name) {
  return hasOneOf(tellingWords, name);
}

bool Identities::isReplaced(std::string_view message, std::string_view path) const {
  auto const found = replaced_.find(message);
  return found != replaced_.end() && found->second.find(path) != found->second.end();
}

namespace {

/// "255.255.254.0", "0.0.0.0": ones, and then zeros.
bool isNetmask(std::string_view value) {
  constexpr std::string_view octets = "255 254 252 248 240 224 192 128 0";
  std::vector<std::string_view> const parts = split(value, '.');
  if (parts.size() != 4 || (parts[0] != "255" && parts[0] != "0")) return false;
  bool isOver = false;
  return std::all_of(parts.begin(), parts.end(), [&](std::string_view part) {
    bool const isGood = isAmong(octets, part) && (!isOver || part == "0");
    isOver |= part != "255";
    return isGood;
  });
}

bool isSame(std::string_view value, std::string_view letters) {
  return !value.empty() && value.find_first_not_of(letters) == value.npos;
}

}  // namespace

bool saysNothing(std::string_view value) {
  if (value.empty() || value == mask || isNetmask(value)) return true;
  bool const isEmptyAddress =
      value.size() == 17 && (isSame(value, "0:") || isSame(value, "0-") || isSame(value, "fF:-"));
  return isEmptyAddress || isSame(value, "-") || isAmong(placeholders, lowered(value));
}

}  // namespace Kovra::tool
