#include "frame/guard.hpp"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstring>

namespace Kovra::frame {

namespace {

// ---- Bytes -----------------------------------------------------------------------------------

using Kinds = unsigned char;

constexpr Kinds blank = 1 << 0;        // white space, as far as ASCII goes
constexpr Kinds nameStart = 1 << 1;    // what a name may begin with
constexpr Kinds namePart = 1 << 2;     // what it may go on with
constexpr Kinds textEnd = 1 << 3;      // what text or a quoted value may end with, and '&'
constexpr Kinds bareEnd = 1 << 4;      // what ends a value without quotes, besides white space
constexpr Kinds wordEnd = 1 << 5;      // what ends a word in a declaration, besides white space
constexpr Kinds utf8Lead = 1 << 6;     // what begins a sequence of several bytes in UTF-8
constexpr Kinds beyondAscii = 1 << 7;  // what the locale may count among white space

constexpr auto kindsOfBytes = [] {
  std::array<Kinds, 256> kinds{};
  auto const mark = [&kinds](std::string_view bytes, unsigned kind) {
    for (char const byte : bytes)
      kinds[static_cast<unsigned char>(byte)] |= static_cast<Kinds>(kind);
  };
  auto const markAll = [&kinds](std::size_t first, std::size_t last, unsigned kind) {
    for (; first <= last; ++first) kinds[first] |= static_cast<Kinds>(kind);
  };
  using namespace std::string_view_literals;
  mark(" \t\n\v\f\r", blank);
  mark("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_", nameStart | namePart);
  mark("0123456789-.:", namePart);
  // TinyXML asks the locale for letters only below 127, where all locales agree; from DEL on,
  // every byte is a letter to it.
  markAll(127, 255, nameStart | namePart);
  mark("<&'\"\0"sv, textEnd);
  mark("/>'\"\0"sv, bareEnd);
  mark(">\0"sv, wordEnd);
  markAll(0xC2, 0xF4, utf8Lead);
  markAll(0x80, 0xFF, beyondAscii);
  return kinds;
}();

unsigned char byteAt(char const* p) {
  return static_cast<unsigned char>(*p);
}

bool is(char const* p, unsigned kinds) {
  return (kindsOfBytes[byteAt(p)] & kinds) != 0;
}

char const* skip(char const* p, unsigned kinds) {
  while (is(p, kinds)) ++p;
  return p;
}

char const* find(char const* p, unsigned kinds) {
  while (!is(p, kinds)) ++p;
  return p;
}

std::size_t utf8Length(unsigned char lead) {
  return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

// Stops at the end of the text by itself, as long as there is no zero byte in the word.
bool startsWith(char const* p, std::string_view word) {
  for (char const letter : word) {
    if (*p++ != letter) return false;
  }
  return true;
}

// ---- Pieces ----------------------------------------------------------------------------------

// As in TinyXML, unknown reads like legacy: byte by byte.
enum class Encoding { unknown, utf8, legacy };

// The letter case of TinyXML: the locale's, where a Turkish one knows no `I` for an `i`. Like
// TinyXML's, callers widen a `char` as it is, with its sign if it has one.
int lowered(int letter, Encoding encoding) {
  return encoding == Encoding::utf8 && letter >= 128 ? letter : std::tolower(letter);
}

bool startsWithAnyCase(char const* p, std::string_view word, Encoding encoding) {
  for (char const letter : word) {
    if (*p == '\0' || lowered(*p++, encoding) != lowered(letter, encoding)) return false;
  }
  return true;
}

// A string_view without a constructor: arrays of it cost nothing until they are used.
struct Name {
  char const* first;
  std::size_t size;

  std::string_view view() const { return {first, size}; }
};

Name nameOf(std::string_view read) {
  return {read.data(), read.size()};
}

struct OpenElement {
  char const* at;
  Name name;
};

struct Attribute {
  std::string_view name;
  std::string_view value;  // as it stands in the text, references unresolved
  bool quoted = false;
};

struct Reference {
  char const* end = nullptr;  // behind its semicolon; null when it is none
  unsigned code = 0;          // low bits of the character's number
};

// A character reference as TinyXML reads it: from "&#" to the next ';', whatever stands between.
// Digits are taken from the right, up to the last `x` (hexadecimal) or `#`: all before that is
// swallowed unseen, tags and quotes included.
Reference characterReference(char const* p) {
  bool const hexadecimal = p[2] == 'x';
  char const mark = hexadecimal ? 'x' : '#';
  char const* const semicolon = std::strchr(p + 2, ';');
  if (semicolon == nullptr) return {};

  Reference reference{semicolon + 1};
  unsigned worth = 1;
  for (char const* digit = semicolon - 1; *digit != mark; --digit) {
    bool const letter =
        hexadecimal && ((*digit >= 'a' && *digit <= 'f') || (*digit >= 'A' && *digit <= 'F'));
    if (!letter && (*digit < '0' || *digit > '9')) return {};
    reference.code +=
        worth * static_cast<unsigned>(letter ? (*digit | 0x20) - 'a' + 10 : *digit - '0');
    worth *= hexadecimal ? 16 : 10;
  }
  return reference;
}

// Whether a reference by number stands here. In front of the end of the text, TinyXML does not take
// "&#" for one.
bool startsReference(char const* p) {
  return p[0] == '&' && p[1] == '#' && p[2] != '\0';
}

// The encoding that a declaration's attribute names; it was read byte by byte, so that each "&#" in
// its quotes begins a good reference. TinyXML compares beginnings only and takes an empty name for
// UTF-8. It resolves references first, and drops an ampersand that begins none. A reference by name
// ("&amp;") needs no care: neither what it stands for nor its letters are found in "UTF-8".
Encoding encodingNamedBy(Attribute const& attribute) {
  std::array<char, 6> name{};
  std::size_t length = 0;
  char const* p = attribute.value.data();
  char const* const end = p + attribute.value.size();
  while (p < end && length + 1 < name.size()) {
    if (!attribute.quoted || *p != '&') {
      name[length++] = *p++;
    } else if (startsReference(p)) {
      Reference const reference = characterReference(p);
      name[length++] = static_cast<char>(reference.code);
      p = reference.end;
    } else {
      ++p;
    }
  }
  bool const utf8 = name[0] == '\0' || startsWithAnyCase(name.data(), "UTF-8", Encoding::unknown) ||
                    startsWithAnyCase(name.data(), "UTF8", Encoding::unknown);
  return utf8 ? Encoding::utf8 : Encoding::legacy;
}

// ---- Grammar ---------------------------------------------------------------------------------

// The walk over a text, in the order of TinyXML's grammar. Where TinyXML calls itself for a child,
// the walk keeps the open elements on a stack of its own.
//
// TinyXML hands a pointer from construct to construct, which becomes null where reading is over. An
// operation below that returns false stands for that. At the end of the text it may return true:
// whoever goes on finds the final zero, where TinyXML finds a null pointer or that zero.
class Walk {
 public:
  explicit Walk(char const* text) : text_(text), at_(text) { scan_.fault = Fault::none; }

  Scan document();

 private:
  bool node();
  bool element();
  bool attributes();
  bool addAttribute(std::size_t count);
  bool emptyTag();
  bool endTag();
  bool refuseEndTag(char const* name);
  bool text();
  bool comment();
  bool cdata();
  bool declaration();
  bool abandonDeclaration();
  bool unknown();

  Fault attribute(Attribute& read);
  Fault quotedValue(Attribute& read);
  Fault bareValue(Attribute& read);
  bool readTo(char end);
  std::string_view name();
  void skipWhiteSpace();
  [[gnu::noinline]] void skipRareWhiteSpace();
  bool atByteOrderMark() const;
  void skipWord(Kinds ends);
  bool skipPast(char const* end, std::string_view beginning);

  bool fail(Fault fault, std::string_view found = {});

  char const* const text_;
  char const* at_;
  Encoding encoding_ = Encoding::unknown;
  std::size_t depth_ = 0;
  Scan scan_;
  std::array<OpenElement, maxDepth> open_;
  std::array<Name, maxAttributes> names_;  // of the attributes of the tag being read
};

// Text at the top level ends the document without an error, unless it stands first.
Scan Walk::document() {
  if (startsWith(at_, "\xEF\xBB\xBF")) encoding_ = Encoding::utf8;
  skipWhiteSpace();
  if (*at_ != '<') fail(Fault::empty);
  while (*at_ == '<' || (depth_ > 0 && *at_ != '\0')) {
    if (!(*at_ == '<' ? node() : text())) return scan_;
    skipWhiteSpace();
  }
  if (depth_ > 0) fail(Fault::endsInElement);
  return scan_;
}

// What looks like an end tag at the top level is unknown to TinyXML.
bool Walk::node() {
  if (is(at_ + 1, nameStart)) return element();
  if (at_[1] == '/' && depth_ > 0) return endTag();
  if (startsWithAnyCase(at_, "<?xml", encoding_)) return declaration();
  if (startsWith(at_, "<!--")) return comment();
  if (startsWith(at_, "<![CDATA[")) return cdata();
  return unknown();
}

// TinyXML skips white space in front of the name although a "letter" stands there: a byte order
// mark begins with one, and so does white space beyond ASCII.
bool Walk::element() {
  if (depth_ == maxDepth) return fail(Fault::tooDeep);
  ++scan_.elements;
  scan_.deepest = std::max(scan_.deepest, depth_ + 1);

  char const* const start = at_++;
  skipWhiteSpace();
  std::string_view const read = name();
  if (*at_ == '\0') return fail(Fault::endsInTag, read);
  if (read.empty()) return fail(Fault::noElementName);
  open_[depth_++] = {start, nameOf(read)};
  return attributes();
}

bool Walk::attributes() {
  for (std::size_t count = 0;; ++count) {
    skipWhiteSpace();
    if (*at_ == '>') {
      ++at_;
      return true;
    }
    if (*at_ == '/') return emptyTag();
    if (*at_ == '\0') return fail(Fault::endsInTag);
    if (!addAttribute(count)) return false;
  }
}

// TinyXML compares with all earlier names, too; here their number is bounded.
bool Walk::addAttribute(std::size_t count) {
  char const* const start = at_;
  Attribute read;
  Fault fault = attribute(read);
  if (fault != Fault::none) return fail(fault, read.name);

  auto const earlier = names_.begin() + static_cast<std::ptrdiff_t>(count);
  if (count == maxAttributes) {
    fault = Fault::tooManyAttributes;
  } else if (std::any_of(names_.begin(), earlier, [&](Name n) { return n.view() == read.name; })) {
    fault = Fault::repeatedAttribute;
  }
  if (fault != Fault::none) {
    at_ = start;
    return fail(fault, read.name);
  }
  *earlier = nameOf(read.name);
  ++scan_.attributes;
  scan_.mostAttributes = std::max(scan_.mostAttributes, count + 1);
  return true;
}

bool Walk::emptyTag() {
  ++at_;
  if (*at_ != '>') return fail(*at_ == '\0' ? Fault::endsInTag : Fault::brokenEmptyTag);
  ++at_;
  --depth_;
  return true;
}

// Compares beginnings, as TinyXML does: what stands behind the open name has to be white space, and
// in UTF-8 a byte order mark is that, although it would be part of a name.
bool Walk::endTag() {
  char const* const read = at_ + 2;
  std::string_view const open = open_[depth_ - 1].name.view();
  if (!startsWith(read, open)) return refuseEndTag(read);
  at_ = read + open.size();
  skipWhiteSpace();
  if (*at_ != '>') return refuseEndTag(read);
  ++at_;
  --depth_;
  return true;
}

bool Walk::refuseEndTag(char const* read) {
  char const* const stop = at_;
  at_ = read;
  std::string_view const found = name();
  if (*stop == '\0') at_ = stop;
  if (*at_ == '\0') return fail(Fault::endsInTag, found);
  bool const wrong = found != open_[depth_ - 1].name.view();
  at_ = wrong ? read - 2 : stop;
  return fail(wrong ? Fault::wrongEndTag : Fault::brokenEndTag, found);
}

bool Walk::text() {
  return readTo('<') || fail(Fault::badReference);
}

// "<!-->" is the beginning of a comment.
bool Walk::comment() {
  return skipPast("-->", "<!--");
}

// References and sequences of UTF-8 mean nothing in here.
bool Walk::cdata() {
  return skipPast("]]>", "<![CDATA[");
}

// TinyXML reads a declaration wherever it stands and whatever follows the letters "xml". Words that
// it does not know it skips, but the value of one that begins like a known one may hide a '>'. The
// first declaration at the top level settles the encoding of what follows.
bool Walk::declaration() {
  bool const settles = depth_ == 0 && encoding_ == Encoding::unknown;
  Encoding declared = Encoding::utf8;
  at_ += std::strlen("<?xml");
  while (*at_ != '\0' && *at_ != '>') {
    skipWhiteSpace();
    bool const encoding = startsWithAnyCase(at_, "encoding", encoding_);
    if (encoding || startsWithAnyCase(at_, "version", encoding_) ||
        startsWithAnyCase(at_, "standalone", encoding_)) {
      Attribute read;
      if (attribute(read) != Fault::none) return abandonDeclaration();
      if (encoding && settles) declared = encodingNamedBy(read);
    } else {
      skipWord(wordEnd);
    }
  }
  if (*at_ == '\0') return abandonDeclaration();
  ++at_;
  if (settles) encoding_ = declared;
  return true;
}

// TinyXML reads a declaration's attributes without a document to tell of an error. So at the top
// level the whole document ends here, without one; an element notices that its end is missing.
bool Walk::abandonDeclaration() {
  if (depth_ == 0) return false;
  return *at_ == '\0' ? fail(Fault::endsInMarkup, "<?xml")
                      : fail(Fault::brokenDeclaration, "<?xml");
}

// Ends with the first '>': of a document type with declarations of its own, TinyXML takes the rest
// for text.
bool Walk::unknown() {
  return skipPast(">", {at_, at_[1] == '!' || at_[1] == '?' ? 2U : 1U});
}

// ---- Parts of nodes --------------------------------------------------------------------------

// TinyXML demands that the text goes on behind an attribute.
Fault Walk::attribute(Attribute& read) {
  read.name = name();
  if (read.name.empty()) return Fault::noAttributeName;
  skipWhiteSpace();
  if (*at_ == '\0') return Fault::endsInTag;
  if (*at_ != '=') return Fault::noEqualsSign;
  ++at_;
  skipWhiteSpace();
  read.quoted = *at_ == '"' || *at_ == '\'';
  Fault const fault = read.quoted ? quotedValue(read) : bareValue(read);
  return fault == Fault::none && *at_ == '\0' ? Fault::endsInTag : fault;
}

Fault Walk::quotedValue(Attribute& read) {
  char const quote = *at_++;
  char const* const start = at_;
  if (!readTo(quote)) return Fault::badReference;
  if (*at_ == '\0') return Fault::endsInQuotes;
  read.value = {start, static_cast<std::size_t>(at_ - start)};
  ++at_;
  return Fault::none;
}

// A value without quotes may be empty; '<' and '&' are nothing special in it.
Fault Walk::bareValue(Attribute& read) {
  char const* const start = at_;
  skipWord(bareEnd);
  read.value = {start, static_cast<std::size_t>(at_ - start)};
  return *at_ == '"' || *at_ == '\'' ? Fault::strayQuote : Fault::none;
}

// Goes to the next `end` that TinyXML would see, or to the end of the text. In UTF-8 a lead byte
// swallows what follows, be it a '<', a quote or the end of the text. False: stopped at a reference
// that TinyXML gives up on. White space needs no care: whether or not TinyXML condenses it, no
// locale has any among lead bytes.
bool Walk::readTo(char end) {
  Kinds const stops = encoding_ == Encoding::utf8 ? textEnd | utf8Lead : textEnd;
  for (;;) {
    at_ = find(at_, stops);
    if (*at_ == end || *at_ == '\0') return true;
    if (startsReference(at_)) {
      char const* const behind = characterReference(at_).end;
      if (behind == nullptr) return false;
      at_ = behind;
    } else {
      at_ += is(at_, stops & utf8Lead) ? utf8Length(byteAt(at_)) : 1;
    }
  }
}

std::string_view Walk::name() {
  char const* const start = at_;
  if (is(at_, nameStart)) at_ = skip(at_, namePart);
  return {start, static_cast<std::size_t>(at_ - start)};
}

void Walk::skipWhiteSpace() {
  at_ = skip(at_, blank);
  if (is(at_, beyondAscii)) skipRareWhiteSpace();
}

// Kept apart so that the common case is short enough to be inlined.
void Walk::skipRareWhiteSpace() {
  for (;;) {
    if (atByteOrderMark()) {
      at_ += 3;
    } else if (is(at_, blank) || (is(at_, beyondAscii) && std::isspace(byteAt(at_)) != 0)) {
      ++at_;
    } else {
      return;
    }
  }
}

// In UTF-8, TinyXML counts among white space the byte order mark and the two characters that are
// none, U+FFFE and U+FFFF.
bool Walk::atByteOrderMark() const {
  return encoding_ == Encoding::utf8 &&
         (startsWith(at_, "\xEF\xBB\xBF") || startsWith(at_, "\xEF\xBF\xBE") ||
          startsWith(at_, "\xEF\xBF\xBF"));
}

// Goes to the next white space or one of `ends`. Byte order marks are nothing special here.
void Walk::skipWord(Kinds ends) {
  at_ = find(at_, ends | blank | beyondAscii);
  while (is(at_, beyondAscii) && std::isspace(byteAt(at_)) == 0) {
    at_ = find(at_ + 1, ends | blank | beyondAscii);
  }
}

// TinyXML tells nobody that a comment or the like has no end. Inside an element that shows, since
// the element has none either.
bool Walk::skipPast(char const* end, std::string_view beginning) {
  at_ += beginning.size();
  // Not by strstr(): sanitizers have one that measures the whole rest of the text at each call.
  while (*at_ != '\0' && !startsWith(at_, end)) ++at_;
  if (*at_ == '\0') return depth_ == 0 || fail(Fault::endsInMarkup, beginning);
  at_ += std::strlen(end);
  return true;
}

// Cut sequences of UTF-8 may have carried the walk past the end of the text.
bool Walk::fail(Fault fault, std::string_view found) {
  scan_.fault = fault;
  scan_.offset = *at_ == '\0' ? std::strlen(text_) : static_cast<std::size_t>(at_ - text_);
  scan_.found = found;
  if (depth_ > 0) {
    OpenElement const& open = open_[depth_ - 1];
    scan_.openElement = open.name.view();
    scan_.openAt = static_cast<std::size_t>(open.at - text_);
  }
  return false;
}

}  // namespace

Scan scan(char const* text) noexcept {
  return Walk(text).document();
}

}  // namespace Kovra::frame
