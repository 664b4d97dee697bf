#include "secret.hpp"

#include <algorithm>
#include <kovra.hpp>
#include <set>
#include <utility>

namespace Kovra::tool {

namespace {

using Names = std::set<std::string, std::less<>>;

bool isNameByte(char byte) {
  auto const code = static_cast<unsigned char>(byte);
  bool const isLetter = (code | 0x20U) >= 'a' && (code | 0x20U) <= 'z';
  return isLetter || (code >= '0' && code <= '9') || code >= 0x80 || byte == '_' || byte == '-' ||
         byte == '.' || byte == ':';
}

/// As names are compared here: in small letters and without a prefix.
std::string plainName(std::string_view name) {
  std::size_t const colon = name.rfind(':');
  if (colon != name.npos) name.remove_prefix(colon + 1);
  std::string plain(name);
  for (char& letter : plain) {
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
  }
  return plain;
}

/// What the catalogue says of names.
struct Known {
  Names secrets;  ///< of elements and attributes that carry secrets
  Names roots;    ///< of replies that are about nothing else
  Names all;
};

void addSecrets(std::vector<MemberDescription> const& members, Names& secrets) {
  for (MemberDescription const& member : members) {
    if (member.isSecret()) {
      for (std::string const& element : member.elements()) {
        secrets.insert(plainName(std::string_view(element).substr(element.rfind('/') + 1)));
      }
    }
    addSecrets(member.members(), secrets);
  }
}

Known knownNames() {
  Known known;
  for (Message const& message : messages()) {
    std::vector<MemberDescription> const members = message.members();
    addSecrets(members, known.secrets);
    bool const isAllSecret =
        !members.empty() && std::all_of(members.begin(), members.end(),
                                        [](auto const& member) { return member.isSecret(); });
    for (std::string const& root : message.roots()) {
      if (isAllSecret) known.roots.insert(plainName(root));
    }
  }
  for (std::string const& word : vocabulary()) known.all.insert(plainName(word));
  return known;
}

Known const& known() {
  static Known const names = knownNames();
  return names;
}

bool soundsSecret(std::string const& name) {
  constexpr std::string_view parts[] = {"key", "passw", "passp", "passc", "secret", "token", "psk"};
  return std::any_of(std::begin(parts), std::end(parts),
                     [&](std::string_view part) { return name.find(part) != name.npos; });
}

/// A name that the catalogue knows is what the catalogue says.
bool isSecret(std::string_view given) {
  std::string const name = plainName(given);
  return known().secrets.contains(name) || (!known().all.contains(name) && soundsSecret(name));
}

/// Goes over a text that may be no XML at all, and rather takes too much for a secret than too
/// little: what is not closed goes on to the end.
class Search {
 public:
  explicit Search(std::string_view text) : text_(text) {}

  std::vector<Stretch> all();

 private:
  bool startsAt(std::size_t at, std::string_view what) const {
    return text_.compare(at, what.size(), what) == 0;
  }
  std::size_t behind(std::string_view what, std::size_t from) const;
  std::string_view nameAt(std::size_t at) const;
  std::size_t tagEnd(std::size_t at) const;
  std::size_t closeOf(std::string_view name, std::size_t at) const;
  std::size_t startTag(std::size_t at);
  std::size_t attributes(std::size_t at);
  std::size_t valueEnd(std::size_t at) const;
  void add(std::size_t begin, std::size_t end);

  std::string_view text_;
  bool hasRoot_ = false;
  bool isWhole_ = false;  ///< is all of the reply about secrets?
  std::vector<Stretch> found_;
};

std::vector<Stretch> Search::all() {
  for (std::size_t at = 0; at < text_.size();) {
    std::size_t const tag = std::min(text_.find('<', at), text_.size());
    if (isWhole_) add(at, tag);
    if (tag == text_.size()) break;
    bool const isEndTag = startsAt(tag, "</");
    at = tag + (isEndTag ? 2 : 1);
    std::string_view const name = nameAt(at);
    if (isEndTag) {
      at += name.size();
      if (startsAt(at, ">")) ++at;
    } else if (!name.empty()) {
      at = startTag(at);
    }
  }
  return std::move(found_);
}

std::size_t Search::behind(std::string_view what, std::size_t from) const {
  std::size_t const at = text_.find(what, from);
  return at == text_.npos ? text_.size() : at + what.size();
}

std::string_view Search::nameAt(std::size_t at) const {
  std::string_view const rest = text_.substr(at);
  auto const end = std::find_if_not(rest.begin(), rest.end(), isNameByte);
  return rest.substr(0, static_cast<std::size_t>(end - rest.begin()));
}

/// The bracket that closes the tag at hand, brackets in quotes apart.
std::size_t Search::tagEnd(std::size_t at) const {
  char quote = '\0';
  for (; at < text_.size(); ++at) {
    char const byte = text_[at];
    if (quote != '\0') {
      if (byte == quote) quote = '\0';
    } else if (byte == '"' || byte == '\'') {
      quote = byte;
    } else if (byte == '>') {
      break;
    }
  }
  return at;
}

/// Where the element of that name ends whose start tag goes on here.
std::size_t Search::closeOf(std::string_view name, std::size_t at) const {
  at = tagEnd(at);
  if (at == text_.size()) return at;
  if (text_[at - 1] == '/') return at - 1;
  for (std::size_t open = 1; (at = text_.find('<', at)) < text_.size();) {
    if (startsAt(at, "<![CDATA[")) {
      at = behind("]]>", at);
    } else if (startsAt(at, "<!--")) {
      at = behind("-->", at);
    } else {
      bool const isEndTag = startsAt(at, "</");
      if (nameAt(at + (isEndTag ? 2 : 1)) == name) open = isEndTag ? open - 1 : open + 1;
      if (open == 0) return at;
      ++at;
    }
  }
  return text_.size();
}

/// Where the search goes on.
std::size_t Search::startTag(std::size_t at) {
  std::string_view const name = nameAt(at);
  at += name.size();
  if (!std::exchange(hasRoot_, true)) isWhole_ = known().roots.contains(plainName(name));
  if (isSecret(name)) {
    std::size_t const begin = at + (startsAt(at, ">") ? 1 : 0);
    at = closeOf(name, at);
    add(begin, at);
    return at;
  }
  if (!isWhole_) return attributes(at);
  return at + (startsAt(at, ">") ? 1 : 0);
}

/// Looks at what has a name in front of an equals sign, as far as the tag goes.
std::size_t Search::attributes(std::size_t at) {
  while (at < text_.size() && text_[at] != '>' && text_[at] != '<') {
    std::string_view const name = nameAt(at);
    at += std::max<std::size_t>(name.size(), 1);
    if (name.empty()) continue;
    std::size_t const sign = text_.find_first_not_of(" \t\r\n", at);
    if (sign == text_.npos || text_[sign] != '=') continue;
    std::size_t const begin = std::min(text_.find_first_not_of(" \t\r\n", sign + 1), text_.size());
    at = valueEnd(begin);
    if (isSecret(name)) add(begin, at);
  }
  return at;
}

std::size_t Search::valueEnd(std::size_t at) const {
  if (at == text_.size()) return at;
  char const quote = text_[at];
  if (quote == '"' || quote == '\'') return behind(std::string_view(&quote, 1), at + 1);
  return std::min(text_.find_first_of(" \t\r\n/><", at), text_.size());
}

/// Blanks around it are no secret, and keep lines apart.
void Search::add(std::size_t begin, std::size_t end) {
  constexpr std::string_view blanks = " \t\r\n";
  while (begin < end && blanks.find(text_[begin]) != blanks.npos) ++begin;
  while (begin < end && blanks.find(text_[end - 1]) != blanks.npos) --end;
  if (begin < end) found_.push_back({begin, end});
}

}  // namespace

std::vector<Stretch> secretsIn(std::string_view text) {
  return Search(text).all();
}

std::string maskedPiece(std::string_view text, Stretch piece, std::vector<Stretch> const& secrets) {
  std::string out;
  std::size_t at = piece.begin;
  for (Stretch const& secret : secrets) {
    if (secret.end <= at || secret.begin >= piece.end) continue;
    if (secret.begin > at) out += text.substr(at, secret.begin - at);
    out += mask;
    at = secret.end;
  }
  if (at < piece.end) out += text.substr(at, piece.end - at);
  return out;
}

}  // namespace Kovra::tool
