#include "pseudonyms.hpp"

#include <algorithm>
#include <cstdio>
#include <optional>

#include "command.hpp"
#include "words.hpp"

namespace Kovra::tool {

namespace {

bool isHexadecimal(char letter) {
  char const low = static_cast<char>(letter | 0x20);
  return isDigit(letter) || (low >= 'a' && low <= 'f');
}

unsigned digitOf(char letter) {
  return static_cast<unsigned>(isDigit(letter) ? letter - '0' : (letter | 0x20) - 'a' + 10);
}

std::string cased(std::string text, bool toUpper) {
  for (char& letter : text) {
    if (toUpper ? isLower(letter) : isUpper(letter)) letter = static_cast<char>(letter ^ 0x20);
  }
  return text;
}

bool hasUpper(std::string_view text) {
  return std::any_of(text.begin(), text.end(), isUpper);
}

/// "192.0.2.7", also with zeros in front of a number.
std::optional<std::uint32_t> ipv4Of(std::string_view text) {
  std::uint32_t address = 0;
  for (int part = 0; part < 4; ++part) {
    std::uint32_t number = 0;
    std::size_t digits = 0;
    for (; digits < text.size() && isDigit(text[digits]); ++digits) {
      if (digits == 3) return {};
      number = number * 10 + digitOf(text[digits]);
    }
    bool const isLast = part == 3;
    bool const isEnded = isLast ? digits == text.size() : text.substr(digits, 1) == ".";
    if (digits == 0 || number > 255 || !isEnded) return {};
    address = address << 8U | number;
    text.remove_prefix(isLast ? digits : digits + 1);
  }
  return address;
}

std::string ipv4Text(std::uint32_t address) {
  std::string text;
  for (unsigned shift = 32; shift > 0;) {
    shift -= 8;
    text += std::to_string(address >> shift & 0xFFU);
    if (shift > 0) text += '.';
  }
  return text;
}

/// Six bytes with one and the same mark between them.
std::optional<std::uint64_t> hardwareOf(std::string_view text) {
  constexpr std::size_t length = 17;
  if (text.size() != length || (text[2] != ':' && text[2] != '-')) return {};
  std::uint64_t address = 0;
  for (std::size_t i = 0; i < length; ++i) {
    bool const isMark = i % 3 == 2;
    if (isMark ? text[i] != text[2] : !isHexadecimal(text[i])) return {};
    if (!isMark) address = address << 4U | digitOf(text[i]);
  }
  return address;
}

/// 8-4-4-4-12 digits.
bool isUuid(std::string_view text) {
  constexpr std::size_t length = 36;
  if (text.size() != length) return false;
  for (std::size_t i = 0; i < length; ++i) {
    bool const isMark = i == 8 || i == 13 || i == 18 || i == 23;
    if (isMark ? text[i] != '-' : !isHexadecimal(text[i])) return false;
  }
  return true;
}

bool isIpv6(std::string_view text) {
  bool const hasLetters = std::all_of(
      text.begin(), text.end(), [](char letter) { return isHexadecimal(letter) || letter == ':'; });
  bool const isWhole =
      std::count(text.begin(), text.end(), ':') == 7 || text.find("::") != text.npos;
  return hasLetters && isWhole && text.size() <= 39;
}

std::size_t charactersOf(std::string_view text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
  }));
}

/// Can it stand anywhere in XML as it is?
bool isHarmless(char letter) {
  constexpr std::string_view marks = "<>&\"'";
  return letter >= ' ' && letter < 127 && marks.find(letter) == marks.npos;
}

/// Of a pattern: which letters may stand in place of one.
struct Letters {
  char first;
  unsigned count;
};

Letters lettersFor(std::string_view text, std::size_t at, bool isHex) {
  char const letter = text[at];
  bool const isMark = at == 1 && text[0] == '0' && (letter | 0x20) == 'x';
  if (isMark) return {letter, 1};
  if (isUpper(letter)) return {'A', isHex ? 6U : 26U};
  if (isLower(letter)) return {'a', isHex ? 6U : 26U};
  if (!isDigit(letter)) return {letter, 1};
  // A number keeps its size.
  if (at > 0) return {'0', 10};
  return letter == '0' ? Letters{'0', 1} : Letters{'1', 9};
}

/// Are all of its letters digits of hexadecimal numbers?
bool hasHexadecimalLetters(std::string_view text) {
  if (text.size() > 1 && text[0] == '0' && (text[1] | 0x20) == 'x') text.remove_prefix(2);
  return std::all_of(text.begin(), text.end(), [](char letter) {
    return isHexadecimal(letter) || (!isUpper(letter) && !isLower(letter));
  });
}

/// The value of that number among all of the pattern; false where there are not so many.
bool fillPattern(std::string& text, bool isHex, std::uint64_t number) {
  for (std::size_t at = text.size(); at-- > 0;) {
    Letters const letters = lettersFor(text, at, isHex);
    text[at] = static_cast<char>(letters.first + static_cast<int>(number % letters.count));
    number /= letters.count;
  }
  return number == 0;
}

/// What all values have in common that stand for one another.
std::string patternOf(std::string_view text, bool isHex) {
  std::string pattern(1, isHex ? 'x' : 'a');
  for (std::size_t at = 0; at < text.size(); ++at) pattern += lettersFor(text, at, isHex).first;
  return pattern;
}

}  // namespace

// Many values in a text.

ValueFinder::ValueFinder() : nodes_(1) {}

std::uint32_t ValueFinder::childOf(std::uint32_t node, char letter) const {
  if (node == 0) return first_[static_cast<unsigned char>(letter)];
  std::uint32_t child = nodes_[node].child;
  while (child != 0 && nodes_[child].letter != letter) child = nodes_[child].sibling;
  return child;
}

void ValueFinder::add(std::string_view value, std::uint32_t number) {
  std::uint32_t node = 0;
  for (char const letter : value) {
    std::uint32_t next = childOf(node, letter);
    if (next == 0) {
      next = static_cast<std::uint32_t>(nodes_.size());
      nodes_.emplace_back().letter = letter;
      nodes_[next].sibling = nodes_[node].child;
      nodes_[node].child = next;
      if (node == 0) first_[static_cast<unsigned char>(letter)] = next;
    }
    node = next;
  }
  if (nodes_[node].value != none) return;
  nodes_[node].value = number;
  nodes_[node].length = static_cast<std::uint32_t>(value.size());
}

/// Where a value goes on otherwise, the longest end of what was read that begins another one. What
/// is nearer to the root is linked first.
void ValueFinder::finish() {
  std::vector<std::uint32_t> row = {0};
  for (std::size_t i = 0; i < row.size(); ++i) {
    std::uint32_t const node = row[i];
    std::uint32_t child = nodes_[node].child;
    for (; child != 0; child = nodes_[child].sibling) {
      Node& linked = nodes_[child];
      linked.fallback = node == 0 ? 0 : step(nodes_[node].fallback, linked.letter);
      Node const& shorter = nodes_[linked.fallback];
      if (linked.value == none) {
        linked.value = shorter.value;
        linked.length = shorter.length;
      }
      row.push_back(child);
    }
  }
}

std::uint32_t ValueFinder::step(std::uint32_t node, char letter) const {
  std::uint32_t next = childOf(node, letter);
  while (next == 0 && node != 0) {
    node = nodes_[node].fallback;
    next = childOf(node, letter);
  }
  return next;
}

/// For each end the longest value counts, and one within another does not. So both ends of what is
/// left go up, and of those that reach into one another it takes as few as cover all.
std::vector<ValueFinder::Found> ValueFinder::in(std::string_view text) const {
  std::vector<Found> found;
  std::uint32_t node = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    node = step(node, text[i]);
    if (nodes_[node].value == none) continue;
    std::size_t const begin = i + 1 - nodes_[node].length;
    while (!found.empty() && found.back().span.begin >= begin) found.pop_back();
    found.push_back({{begin, i + 1}, nodes_[node].value});
  }
  std::size_t kept = 0;
  for (std::size_t i = 0; i < found.size(); ++i) {
    std::size_t const covered = kept == 0 ? 0 : found[kept - 1].span.end;
    while (i + 1 < found.size() && found[i + 1].span.begin <= covered) ++i;
    if (found[i].span.end <= covered) continue;
    found[i].span.begin = std::max(found[i].span.begin, covered);
    found[kept++] = found[i];
  }
  found.resize(kept);
  return found;
}

// Made-up values.

void Pseudonyms::add(std::string_view original, Identity identity) {
  auto const at = index_.lower_bound(original);
  if (at != index_.end() && at->first == original) {
    // Only a pattern fits where a number is expected.
    Identity& known = all_[at->second].identity;
    if (identity.row->hasPattern && !known.row->hasPattern) known.row = identity.row;
    if (isSecret(identity.group)) known.group = identity.group;
    return;
  }
  index_.emplace_hint(at, original, all_.size());
  all_.push_back({std::string(original), "", identity});
  if (auto const address = ipv4Of(original)) originalSubnets_.insert(*address >> 8U);
  if (auto const address = hardwareOf(original)) originalHardware_.insert(*address);
}

void Pseudonyms::makeUp() {
  for (Pseudonym& pseudonym : all_) pseudonym.madeUp = textFor(pseudonym);
  search();
}

/// Hexadecimal digits are looked for in either case.
void Pseudonyms::search() {
  constexpr std::size_t shortest = 4;
  auto const add = [&](std::string const& value, std::string text) {
    finder_.add(value, static_cast<std::uint32_t>(texts_.size()));
    texts_.push_back(std::move(text));
  };
  for (Pseudonym const& pseudonym : all_) {
    if (charactersOf(pseudonym.original) >= shortest) add(pseudonym.original, pseudonym.madeUp);
  }
  for (Pseudonym const& pseudonym : all_) {
    if (!hardwareOf(pseudonym.original) && !isUuid(pseudonym.original)) continue;
    for (bool const toUpper : {false, true}) {
      add(cased(pseudonym.original, toUpper), cased(pseudonym.madeUp, toUpper));
    }
  }
  finder_.finish();
}

std::string Pseudonyms::textFor(Pseudonym const& pseudonym) {
  std::string const& original = pseudonym.original;
  bool const isKey = isSecret(pseudonym.identity.group) && !pseudonym.identity.row->hasPattern;
  if (isKey) return counted(pseudonym.identity.row->stem);
  if (auto const address = ipv4Of(original)) return ipv4For(*address);
  if (hardwareOf(original)) return hardwareFor(original);
  if (isUuid(original)) return uuidFor(original);
  if (isIpv6(original)) return ipv6();
  return pseudonym.identity.row->hasPattern ? patternFor(pseudonym)
                                            : counted(pseudonym.identity.row->stem);
}

/// "key-1"; the next number that was in no reply.
std::string Pseudonyms::counted(std::string_view stem) {
  std::uint64_t& counter = counters_[std::string(stem)];
  std::string text;
  do {
    text = std::string(stem) + '-' + std::to_string(++counter);
  } while (isOriginal(text));
  return text;
}

/// The next value with the letters, digits and marks where the original has them. In a pattern that
/// has not enough of them it is a text.
std::string Pseudonyms::patternFor(Pseudonym const& pseudonym) {
  std::string const& original = pseudonym.original;
  char const* const stem = pseudonym.identity.row->stem;
  if (!std::all_of(original.begin(), original.end(), isHarmless)) return counted(stem);
  bool const isHex = hasHexadecimalLetters(original);
  std::uint64_t& counter = counters_[' ' + patternOf(original, isHex)];
  std::string text = original;
  do {
    if (!fillPattern(text, isHex, counter + 1)) return counted(stem);
    ++counter;
  } while (isOriginal(text));
  return text;
}

/// The three networks for documentation, then those for benchmarks, then what nobody has.
std::uint32_t Pseudonyms::subnetFor(std::uint32_t original) {
  constexpr std::array<std::uint32_t, 3> documentation = {0xC00002, 0xC63364, 0xCB0071};
  constexpr std::uint32_t benchmarks = 0xC61200;
  constexpr std::uint32_t benchmarkCount = 512;
  constexpr std::uint32_t reserved = 0xF00000;
  constexpr std::uint32_t last = 0xFFFFFE;
  auto const [known, isNew] = subnets_.try_emplace(original);
  if (!isNew) return known->second.madeUp;
  std::uint32_t subnet = 0;
  do {
    std::uint32_t const next = nextSubnet_++;
    if (next < documentation.size()) {
      subnet = documentation[next];
    } else if (next < documentation.size() + benchmarkCount) {
      subnet = benchmarks + next - static_cast<std::uint32_t>(documentation.size());
    } else {
      subnet = reserved + next - static_cast<std::uint32_t>(documentation.size()) - benchmarkCount;
    }
    if (subnet >= last) throw InputFailure(ExitStatus::refused, "too many networks");
  } while (originalSubnets_.count(subnet) != 0);
  return known->second.madeUp = subnet;
}

/// A subnet stays one, with its own address and the one for all at its ends.
std::string Pseudonyms::ipv4For(std::uint32_t address) {
  auto const [known, isNew] = ipv4_.try_emplace(address);
  if (!isNew) return known->second;
  std::uint32_t const subnet = subnetFor(address >> 8U);
  std::uint32_t const host = address & 0xFFU;
  bool const isEnd = host == 0 || host == 255;
  std::uint32_t const madeUp = isEnd ? host : ++subnets_[address >> 8U].hosts;
  return known->second = ipv4Text(subnet << 8U | madeUp);
}

std::string Pseudonyms::hardwareFor(std::string_view original) {
  constexpr std::uint64_t locallyAdministered = std::uint64_t{2} << 40U;
  auto const [known, isNew] = hardware_.try_emplace(*hardwareOf(original));
  while (known->second == 0 || (isNew && originalHardware_.count(known->second) != 0)) {
    known->second = locallyAdministered | ++nextHardware_;
  }
  char text[18];
  std::uint64_t const address = known->second;
  auto const byte = [&](unsigned shift) { return static_cast<unsigned>(address >> shift & 0xFFU); };
  std::snprintf(text, sizeof text, "%02x:%02x:%02x:%02x:%02x:%02x", byte(40), byte(32), byte(24),
                byte(16), byte(8), byte(0));
  std::string result = cased(text, hasUpper(original));
  std::replace(result.begin(), result.end(), ':', original[2]);
  return result;
}

std::string Pseudonyms::uuidFor(std::string_view original) {
  std::string const low = cased(std::string(original), false);
  std::uint64_t& number = counters_["uuid " + low];
  std::uint64_t& counter = counters_["uuid"];
  char text[37];
  do {
    if (number == 0) number = ++counter;
    std::snprintf(text, sizeof text, "00000000-0000-4000-8000-%012llx",
                  static_cast<unsigned long long>(number));
    bool const isFree = !isOriginal(text) && !isOriginal(cased(text, true));
    if (isFree) return cased(text, hasUpper(original));
    number = 0;
  } while (true);
}

std::string Pseudonyms::ipv6() {
  std::string text;
  do {
    char digits[17];
    std::snprintf(digits, sizeof digits, "%llx",
                  static_cast<unsigned long long>(++counters_["ipv6"]));
    std::string_view last = digits;
    text = "2001:db8::";
    if (last.size() > 4) {  // a group has four digits
      text += last.substr(0, last.size() - 4);
      text += ':';
      last.remove_prefix(last.size() - 4);
    }
    text += last;
  } while (isOriginal(text));
  return text;
}

Pseudonym const* Pseudonyms::find(std::string_view original) const {
  auto const found = index_.find(original);
  return found == index_.end() ? nullptr : &all_[found->second];
}

std::string Pseudonyms::hidden(std::string_view text) const {
  std::string result;
  std::size_t at = 0;
  for (ValueFinder::Found const& found : in(text)) {
    result += text.substr(at, found.span.begin - at);
    result += madeUp(found.number);
    at = found.span.end;
  }
  result += text.substr(at);
  return result;
}

}  // namespace Kovra::tool
