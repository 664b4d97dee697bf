#include "frame/scanner.hpp"

#include <tinyxml.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstring>
#include <utility>

namespace Kovra::frame {

namespace {

// ---- Bytes -----------------------------------------------------------------------------------

using Kinds = unsigned char;

constexpr Kinds blank = 1 << 0;        // white space, as far as ASCII goes
constexpr Kinds nameStart = 1 << 1;    // what a name may begin with
constexpr Kinds bareEnd = 1 << 2;      // what ends a value without quotes, besides white space
constexpr Kinds wordEnd = 1 << 3;      // what ends a word in a declaration, besides white space
constexpr Kinds beyondAscii = 1 << 4;  // what the locale may count among white space

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
  mark("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_", nameStart);
  markAll(127, 255, nameStart);
  mark("/>'\"\0"sv, bareEnd);
  mark(">\0"sv, wordEnd);
  markAll(0x80, 0xFF, beyondAscii);
  return kinds;
}();

unsigned char byteAt(char const* p) {
  return static_cast<unsigned char>(*p);
}

bool is(char const* p, unsigned kinds) {
  return (kindsOfBytes[byteAt(p)] & kinds) != 0;
}

// Stops at the end of the text by itself, as long as there is no zero byte in the word.
bool startsWith(char const* p, std::string_view word) {
  for (char const letter : word) {
    if (*p++ != letter) return false;
  }
  return true;
}

// ---- Pieces ----------------------------------------------------------------------------------

// The letter case of TinyXML: the locale's, where a Turkish one knows no `I` for an `i`. Like
// TinyXML's, callers widen a `char` as it is, with its sign if it has one.
int lowered(int letter, Encoding encoding) {
  return encoding == Encoding::utf8 && letter >= 128 ? letter : std::tolower(letter);
}

// ASCII that differs in more than its case is different in every locale.
bool sameInAnyCase(char a, char b, Encoding encoding) {
  if (a == b) return true;
  bool const perhaps = static_cast<signed char>(a) < 0 || (a ^ b) == 0x20;
  return perhaps && lowered(a, encoding) == lowered(b, encoding);
}

bool startsWithAnyCase(char const* p, std::string_view word, Encoding encoding) {
  for (char const letter : word) {
    if (*p == '\0' || !sameInAnyCase(*p++, letter, encoding)) return false;
  }
  return true;
}

struct Reference {
  char const* end = nullptr;  // behind its semicolon; null when it is none
  unsigned long code = 0;     // the character's number
};

// A character reference as TinyXML reads it: from "&#" to the next ';', whatever stands between.
// Digits are taken from the right, up to the last `x` (hexadecimal) or `#`: all before that is
// swallowed unseen, tags and quotes included. What each digit is worth wraps around.
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
    unsigned const added =
        worth * static_cast<unsigned>(letter ? (*digit | 0x20) - 'a' + 10 : *digit - '0');
    reference.code += added;
    worth *= hexadecimal ? 16 : 10;
  }
  return reference;
}

// Does the reference stand for one character of XML, and for all that is written there?
bool isPlain(char const* text, Reference const& reference, Encoding encoding) {
  constexpr std::ptrdiff_t most = 8;  // no code has more digits
  char const* digit = text + (text[2] == 'x' ? 3 : 2);
  char const* const end = reference.end - 1;
  if (digit == end || end - digit > most) return false;
  for (; digit != end; ++digit) {
    if (std::isxdigit(byteAt(digit)) == 0) return false;
  }
  unsigned long const code = reference.code;
  bool const isControl = code < ' ' && code != '\t' && code != '\n' && code != '\r';
  bool const isSurrogate = code >= 0xD800 && code < 0xE000;
  bool const fits = encoding == Encoding::utf8 ? code <= 0x10FFFF : code < 0x100;
  return fits && !isControl && !isSurrogate && code != 0xFFFE && code != 0xFFFF;
}

// Whether a reference by number stands here. In front of the end of the text, TinyXML does not take
// "&#" for one.
bool startsReference(char const* p) {
  return p[0] == '&' && p[1] == '#' && p[2] != '\0';
}

// Writes a character at `to`, and tells where it ends. UTF-8 has surrogates like any other; what is
// beyond four bytes is nothing. Elsewhere a character is the low byte of its number.
char* putCharacter(unsigned long code, Encoding encoding, char* to) {
  auto const put = [&to](unsigned long byte) { *to++ = static_cast<char>(byte); };
  auto const putRest = [&](unsigned shift) { put(0x80U | (code >> shift & 0x3FU)); };
  if (encoding != Encoding::utf8 || code < 0x80) {
    put(code);
  } else if (code < 0x800) {
    put(0xC0U | code >> 6U);
    putRest(0);
  } else if (code < 0x10000) {
    put(0xE0U | code >> 12U);
    putRest(6);
    putRest(0);
  } else if (code < 0x200000) {
    put(0xF0U | code >> 18U);
    putRest(12);
    putRest(6);
    putRest(0);
  }
  return to;
}

struct NamedReference {
  std::string_view text;
  char character;
};

constexpr NamedReference namedReferences[] = {
    {"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''}};

// The encoding of a declared name. TinyXML compares beginnings only and takes an empty name for
// UTF-8; a name ends at a zero byte, which a reference may have made.
Encoding encodingNamed(std::string_view name) {
  char begin[sizeof "UTF-8"] = {};
  name.copy(begin, sizeof begin - 1);
  bool const utf8 = *begin == '\0' || startsWithAnyCase(begin, "UTF-8", Encoding::unknown) ||
                    startsWithAnyCase(begin, "UTF8", Encoding::unknown);
  return utf8 ? Encoding::utf8 : Encoding::legacy;
}

// The words that mean something in a declaration. Their lengths tell them apart.
constexpr std::string_view encodingWord = "encoding";
constexpr std::string_view declarationWords[] = {"version", encodingWord, "standalone"};

// Text goes on without a closer look from here on: below is white space, and what may be the end.
constexpr signed char leastInText = ' ' + 1;

// Why something cannot be read, and a text at which TinyXML stops with the same error.
struct Mistake {
  Fault fault = Fault::none;
  char const* likeness = "";

  explicit operator bool() const { return fault != Fault::none; }
};

// Texts at which TinyXML stops like at others. It tells an error and, for most, a place.
namespace likeness {
constexpr char nothing[] = "";
constexpr char noMarkup[] = " ";
constexpr char elementName[] = "<a";
constexpr char attribute[] = "<a ";
constexpr char attributeValue[] = "<a b=";
constexpr char element[] = "<a b=c";
constexpr char emptyTag[] = "<a/";
constexpr char content[] = "<a>";
constexpr char blankContent[] = "<a> ";
constexpr char endTag[] = "<a></b>";
constexpr char cutEndTag[] = "<a></a";
}  // namespace likeness

// ---- Grammar ---------------------------------------------------------------------------------

// The walk over a text, in the order of TinyXML's grammar. Where TinyXML calls itself for a child,
// the walk goes on with the child as the open element.
//
// TinyXML hands a pointer from construct to construct, which becomes null where reading is over. An
// operation below that returns false stands for that. At the end of the text it may return true:
// whoever goes on finds the final zero, where TinyXML finds a null pointer or that zero.
//
// Values are decoded where they stand, which never makes them longer, and end with a zero byte. It
// may take the place of the mark behind the value, so no mark is looked at twice.
class Scanner {
 public:
  Scanner(char* text, std::size_t length, Tree& tree, Limits limits, Encoding encoding,
          Details* details)
      : text_(text),
        end_(text + length),
        at_(text),
        tree_(tree),
        limits_(limits),
        encoding_(encoding),
        details_(details) {}

  Scan document();

 private:
  bool content();
  bool markup();
  bool element();
  bool attributes();
  bool addAttribute();
  bool emptyTag();
  bool endStartTag();
  void closeTag();
  struct Leaf;
  void leaves();
  bool startTagOfLeaf(char* p, Leaf& leaf) const;
  bool restOfLeaf(Leaf& leaf) const;
  static char* endOfPlainName(char* p);
  bool endTag();
  bool refuseEndTag(char* read);
  bool text(char* before);
  bool comment();
  bool cdata();
  bool declaration();
  std::size_t lengthOfDeclarationWord() const;
  void declare(std::uint32_t node, Attribute const& read);
  bool abandonDeclaration();
  bool unknown();
  bool readPast(char const* end, std::string_view beginning, char* value, NodeKind kind);

  Mistake attribute(Attribute& read);
  Mistake quotedValue(Piece& value);
  Mistake bareValue(Piece& value);
  bool decode(char stop, bool condense, char*& to);
  char* decodeReference(char* from, char*& to);
  char* copyCharacter(char* from, char*& to) const;
  Piece name();
  void skipWhiteSpace();
  [[gnu::noinline]] void skipRareWhiteSpace();
  static bool isBlank(char const* p) { return is(p, blank) || isRareBlank(p); }
  static bool isRareBlank(char const* p) {
    return is(p, beyondAscii) && std::isspace(byteAt(p)) != 0;
  }
  static bool isAllBlank(char const* from, char const* to);
  bool atByteOrderMark() const;
  void skipWord(Kinds ends);

  std::uint32_t offset(char const* p) const { return static_cast<std::uint32_t>(p - text_); }
  Piece piece(char const* from, char const* to) const {
    return {offset(from), static_cast<std::uint32_t>(to - from)};
  }
  std::uint32_t add(NodeKind kind, char const* at, Piece value);
  void alter(char const* from, char const* end, bool isBlank = false);
  void endNode(std::uint32_t node);
  void endAttribute();
  void terminate(Piece piece) { text_[piece.at + piece.length] = '\0'; }

  bool fail(Mistake mistake, std::string_view found = {});
  bool fail(Fault fault, char const* likeness, std::string_view found = {}) {
    return fail(Mistake{fault, likeness}, found);
  }

  char* const text_;
  char* const end_;
  char* at_;
  Tree& tree_;
  TreeBuilder builder_{tree_};
  Limits const limits_;
  Encoding encoding_;
  Details* const details_;
  bool const condensed_ = TiXmlBase::IsWhiteSpaceCondensed();
  std::uint32_t tag_ = TreeBuilder::none;  // the element whose start tag is being read
  bool bare_ = false;                      // has that tag a value without quotes?
  Scan scan_;
};

// An element without others in it, as far as it was read.
struct Scanner::Leaf {
  static constexpr std::size_t mostAttributes = 4;

  // False where there are too many, or where the name was there before.
  bool add(Attribute const& attribute, char const* bytes) {
    if (attributeCount == mostAttributes) return false;
    for (std::size_t i = 0; i < attributeCount; ++i) {
      Piece const earlier = attributes[i].name;
      if (earlier.length == attribute.name.length &&
          sameBytes(bytes + earlier.at, bytes + attribute.name.at, earlier.length)) {
        return false;
      }
    }
    attributes[attributeCount++] = attribute;
    return true;
  }

  Piece name;
  Piece text{};
  bool hasText;
  std::array<Attribute, mostAttributes> attributes;
  std::size_t attributeCount = 0;
  char* end;  // what comes behind it
};

// Text at the top level ends the document without an error, unless it stands first.
Scan Scanner::document() {
  scan_.fault = Fault::none;
  scan_.byteOrderMark = startsWith(at_, "\xEF\xBB\xBF");
  if (scan_.byteOrderMark) encoding_ = Encoding::utf8;
  skipWhiteSpace();
  if (*at_ != '<') fail(Fault::empty, *text_ == '\0' ? likeness::nothing : likeness::noMarkup);
  while (*at_ == '<' && markup() && content()) skipWhiteSpace();
  scan_.end = static_cast<std::size_t>(std::min(at_, end_) - text_);
  scan_.encoding = encoding_;
  return scan_;
}

// What stands below an element at the top level, up to its end.
bool Scanner::content() {
  while (builder_.depth() > 0) {
    if (details_ == nullptr) leaves();
    char* const before = at_;
    skipWhiteSpace();
    if (*at_ == '\0') {
      return fail(Fault::endsInElement, at_ != before ? likeness::blankContent : likeness::content);
    }
    if (*at_ != '<' && !text(before)) return false;
    if (!markup()) return false;
  }
  return true;
}

// What looks like an end tag at the top level is unknown to TinyXML.
bool Scanner::markup() {
  char const* const behind = at_ + 1;
  if (is(behind, nameStart)) return element();
  if (*behind == '/' && builder_.depth() > 0) return endTag();
  if (startsWithAnyCase(behind, "?xml", encoding_)) return declaration();
  if (startsWith(behind, "!--")) return comment();
  if (startsWith(behind, "![CDATA[")) return cdata();
  return unknown();
}

// TinyXML skips white space in front of the name although a "letter" stands there: a byte order
// mark begins with one, and so does white space beyond ASCII.
bool Scanner::element() {
  if (builder_.depth() == limits_.depth) return fail(Fault::tooDeep, likeness::element);
  std::uint32_t const element = add(NodeKind::element, at_, piece(end_, end_));
  ++at_;
  if (is(at_, beyondAscii)) skipWhiteSpace();
  Piece const read = name();
  if (*at_ == '\0') return fail(Fault::endsInTag, likeness::elementName, tree_.view(read));
  if (read.length == 0) return fail(Fault::noElementName, likeness::elementName);
  tree_.at(element).value = read;
  tag_ = element;
  return *at_ == '>' ? endStartTag() : attributes();
}

bool Scanner::attributes() {
  for (;;) {
    skipWhiteSpace();
    if (*at_ == '>') return endStartTag();
    if (*at_ == '/') return emptyTag();
    if (*at_ == '\0') return fail(Fault::endsInTag, likeness::attribute);
    if (!addAttribute()) return false;
  }
}

bool Scanner::emptyTag() {
  ++at_;
  if (*at_ != '>') {
    return fail(*at_ == '\0' ? Fault::endsInTag : Fault::brokenEmptyTag, likeness::emptyTag);
  }
  ++at_;
  endNode(tag_);
  closeTag();
  return true;
}

bool Scanner::endStartTag() {
  ++at_;
  std::uint32_t const element = tag_;
  closeTag();
  builder_.open(element);
  return true;
}

// What stands behind the name and behind values without quotes is not needed any more.
void Scanner::closeTag() {
  Node const& node = tree_.node(tag_);
  terminate(node.value);
  tag_ = TreeBuilder::none;
  if (!std::exchange(bare_, false)) return;
  for (std::uint32_t i = node.attribute; i < tree_.attributeCount(); ++i) {
    terminate(tree_.attribute(i).value);
  }
}

// What printers make of a value is a tag with a few attributes, and either no end tag or one behind
// a text in ASCII that stays as it is. A row of those is read in one go. Stops in front of anything
// that needs a closer look; nothing of that is changed.
void Scanner::leaves() {
  if (builder_.depth() == limits_.depth || limits_.attributes < Leaf::mostAttributes) return;
  for (;;) {
    char* const tag = endOfBlanks(at_);
    Leaf leaf;
    if (*tag != '<' || !startTagOfLeaf(tag + 1, leaf)) return;
    if (leaf.hasText && !restOfLeaf(leaf)) return;
    std::uint32_t const element = add(NodeKind::element, tag, leaf.name);
    for (std::size_t i = 0; i < leaf.attributeCount; ++i) tree_.add(leaf.attributes[i], tag);
    if (leaf.hasText) {
      builder_.addOnlyChild(element, NodeKind::text, leaf.text, leaf.text.at, tag);
      terminate(leaf.text);
    }
    at_ = leaf.end;
    terminate(leaf.name);
    for (std::size_t i = 0; i < leaf.attributeCount; ++i) terminate(leaf.attributes[i].value);
  }
}

bool Scanner::startTagOfLeaf(char* p, Leaf& leaf) const {
  char* end = endOfPlainName(p);
  if (end == nullptr) return false;
  leaf.name = piece(p, end);
  while (*end == ' ') {
    char* const name = end + 1;
    char* const equals = endOfPlainName(name);
    if (equals == nullptr || equals[0] != '=' || equals[1] != '"') return false;
    char* const value = equals + 2;
    end = findStop(value, '"', 1);
    if (*end != '"' || !leaf.add({piece(name, equals), piece(value, end)}, text_)) return false;
    ++end;
  }
  leaf.hasText = *end != '/';
  if (!leaf.hasText) ++end;
  leaf.end = end + 1;
  return *end == '>';
}

bool Scanner::restOfLeaf(Leaf& leaf) const {
  char* const text = leaf.end;
  char* end = findStop(text, '<', leastInText);
  if (end == text) return false;
  // Single blanks between words stay, too.
  while (*end == ' ' && end[1] >= leastInText && end[1] != '<') {
    end = findStop(end + 1, '<', leastInText);
  }
  if (end[0] != '<' || end[1] != '/') return false;
  char* const name = end + 2;
  char* const behind = name + leaf.name.length;
  if (behind >= end_ || *behind != '>') return false;
  leaf.text = piece(text, end);
  leaf.end = behind + 1;
  return sameBytes(name, text_ + leaf.name.at, leaf.name.length);
}

// Null where a closer look is needed: a letter beyond ASCII may be white space.
char* Scanner::endOfPlainName(char* p) {
  return (kindsOfBytes[byteAt(p)] & (nameStart | beyondAscii)) == nameStart ? endOfName(p + 1)
                                                                            : nullptr;
}

// TinyXML compares with all earlier names, too; here their number is bounded.
bool Scanner::addAttribute() {
  std::uint32_t const element = tag_;
  char* const start = at_;
  Attribute read{};
  Mistake mistake = attribute(read);
  if (mistake) return fail(mistake, tree_.view(read.name));

  if (tree_.attributeCount() - tree_.node(element).attribute == limits_.attributes) {
    mistake.fault = Fault::tooManyAttributes;
  } else if (Element(tree_, element).attribute(tree_.view(read.name)) != nullptr) {
    mistake.fault = Fault::repeatedAttribute;
  }
  if (mistake) {
    at_ = start;
    mistake.likeness = likeness::element;
    return fail(mistake, tree_.view(read.name));
  }
  tree_.add(read, at_);
  endAttribute();
  return true;
}

// Compares beginnings, as TinyXML does: what stands behind the open name has to be white space, and
// in UTF-8 a byte order mark is that, although it would be part of a name.
bool Scanner::endTag() {
  char* const read = at_ += 2;
  std::string_view const open = tree_.view(tree_.node(builder_.innermost()).value);
  bool const fits = read < end_ && open.size() <= static_cast<std::size_t>(end_ - read);
  if (!fits || !sameBytes(read, open.data(), open.size())) return refuseEndTag(read);
  at_ = read + open.size();
  skipWhiteSpace();
  if (*at_ != '>') return refuseEndTag(read);
  ++at_;
  endNode(builder_.innermost());
  builder_.close();
  return true;
}

bool Scanner::refuseEndTag(char* read) {
  char* const stop = at_;
  std::string_view const open = tree_.view(tree_.node(builder_.innermost()).value);
  char const* const alike =
      stop == read + open.size() && *stop == '\0' ? likeness::cutEndTag : likeness::endTag;
  at_ = read;
  std::string_view const found = tree_.view(name());
  if (*stop == '\0') at_ = stop;
  if (*at_ == '\0') return fail(Fault::endsInTag, alike, found);
  bool const wrong = found != open;
  at_ = wrong ? read - 2 : stop;
  return fail(wrong ? Fault::wrongEndTag : Fault::brokenEndTag, alike, found);
}

// Where TinyXML keeps white space, a text begins with that in front of it. A blank text is none,
// also where references made the blanks.
bool Scanner::text(char* before) {
  char* const start = condensed_ ? at_ : before;
  at_ = start;
  char* to = nullptr;
  if (!decode('<', condensed_, to)) return fail(Fault::badReference, likeness::content);
  if (*at_ == '\0') return fail(Fault::endsInElement, likeness::content);
  *to = '\0';
  if (!isAllBlank(start, to)) endNode(add(NodeKind::text, start, piece(start, to)));
  return true;
}

// "<!-->" is the beginning of a comment.
bool Scanner::comment() {
  return readPast("-->", "<!--", at_ + std::strlen("<!--"), NodeKind::comment);
}

// References and sequences of UTF-8 mean nothing in here.
bool Scanner::cdata() {
  return readPast("]]>", "<![CDATA[", at_ + std::strlen("<![CDATA["), NodeKind::cdata);
}

// TinyXML reads a declaration wherever it stands and whatever follows the letters "xml". Words that
// it does not know it skips, but the value of one that begins like a known one may hide a '>'. The
// first declaration at the top level settles the encoding of what follows. The value of the node is
// empty; its words are kept like attributes.
bool Scanner::declaration() {
  bool const settles = builder_.depth() == 0 && encoding_ == Encoding::unknown;
  std::uint32_t const node = add(NodeKind::declaration, at_, piece(end_, end_));
  Encoding declared = Encoding::utf8;
  std::uint32_t last = offset(at_);
  at_ += std::strlen("<?xml");
  while (*at_ != '\0' && *at_ != '>') {
    skipWhiteSpace();
    std::size_t const known = lengthOfDeclarationWord();
    if (known == 0) {
      skipWord(wordEnd);
      continue;
    }
    last = offset(at_);
    Attribute read{};
    Mistake const mistake = attribute(read);
    read.name.length = static_cast<std::uint32_t>(known);
    declare(node, read);
    if (mistake) return abandonDeclaration();
    if (known == encodingWord.size()) declared = encodingNamed(tree_.view(read.value));
  }
  if (*at_ == '\0') return abandonDeclaration();
  tree_.at(node).value = piece(at_, at_);
  *at_++ = '\0';
  if (settles) {
    encoding_ = declared;
    scan_.settledAt = last;
  }
  return true;
}

std::size_t Scanner::lengthOfDeclarationWord() const {
  for (std::string_view const word : declarationWords) {
    if (startsWithAnyCase(at_, word, encoding_)) return word.size();
  }
  return 0;
}

// Of a word that stands there twice the later value counts, also where that could not be read.
void Scanner::declare(std::uint32_t node, Attribute const& read) {
  for (std::uint32_t i = tree_.node(node).attribute; i < tree_.attributeCount(); ++i) {
    Attribute& earlier = tree_.attributeAt(i);
    if (earlier.name.length == read.name.length) {
      earlier = read;
      return;
    }
  }
  tree_.add(read, at_);
}

// TinyXML reads a declaration's attributes without a document to tell of an error. So at the top
// level the whole document ends here, without one; an element notices that its end is missing.
bool Scanner::abandonDeclaration() {
  if (builder_.depth() == 0) return false;
  return *at_ == '\0' ? fail(Fault::endsInMarkup, likeness::content, "<?xml")
                      : fail(Fault::brokenDeclaration, likeness::content, "<?xml");
}

// Ends with the first '>': of a document type with declarations of its own, TinyXML takes the rest
// for text. Its value begins behind the '<'.
bool Scanner::unknown() {
  std::string_view const beginning = at_[1] == '!' ? "<!" : at_[1] == '?' ? "<?" : "<";
  return readPast(">", beginning, at_ + 1, NodeKind::unknown);
}

// TinyXML tells nobody that a comment or the like has no end. Inside an element that shows, since
// the element has none either.
bool Scanner::readPast(char const* end, std::string_view beginning, char* value, NodeKind kind) {
  char* p = value;
  // Not by strstr(): sanitizers have one that measures the whole rest of the text at each call.
  while (*p != '\0' && !startsWith(p, end)) ++p;
  std::uint32_t const node = add(kind, at_, piece(value, p));
  at_ = p;
  if (*p == '\0') {
    endNode(node);
    return builder_.depth() == 0 || fail(Fault::endsInMarkup, likeness::content, beginning);
  }
  at_ += std::strlen(end);
  endNode(node);
  *p = '\0';
  return true;
}

// ---- Parts of nodes --------------------------------------------------------------------------

// TinyXML demands that the text goes on behind an attribute.
Mistake Scanner::attribute(Attribute& read) {
  read.name = name();
  if (read.name.length == 0) return {Fault::noAttributeName, likeness::attribute};
  skipWhiteSpace();
  if (*at_ == '\0') return {Fault::endsInTag, likeness::attribute};
  if (*at_ != '=') return {Fault::noEqualsSign, likeness::attribute};
  ++at_;
  if (*at_ == '\0') return {Fault::endsInTag, likeness::attributeValue};
  skipWhiteSpace();
  if (*at_ == '\0') return {Fault::endsInTag, likeness::attribute};
  Mistake const mistake =
      *at_ == '"' || *at_ == '\'' ? quotedValue(read.value) : bareValue(read.value);
  return !mistake && *at_ == '\0' ? Mistake{Fault::endsInTag, likeness::element} : mistake;
}

Mistake Scanner::quotedValue(Piece& value) {
  char const quote = *at_++;
  char* const start = at_;
  char* to = findStop(start, quote, 1);
  if (*to == quote) {  // nothing in it needs a closer look
    value = piece(start, to);
    *to = '\0';
    at_ = to + 1;
    return {};
  }
  bool const good = decode(quote, false, to);
  value = piece(start, to);
  if (!good) return {Fault::badReference, likeness::element};
  if (*at_ == '\0') return {Fault::endsInQuotes, likeness::element};
  *to = '\0';
  ++at_;
  return {};
}

// A value without quotes may be empty; '<' and '&' are nothing special in it.
Mistake Scanner::bareValue(Piece& value) {
  char const* const start = at_;
  skipWord(bareEnd);
  value = piece(start, at_);
  bare_ = true;
  if (*at_ == '"' || *at_ == '\'') return {Fault::strayQuote, likeness::attribute};
  return {};
}

// Goes to the next `stop` that TinyXML would see, or to the end of the text, and decodes on the
// way: `to` is the end of what was made. In UTF-8 a lead byte swallows what follows, be it a '<', a
// quote or the end of the text. White space is condensed to single blanks, with none at the end.
// False: stopped at a reference that TinyXML gives up on.
bool Scanner::decode(char stop, bool condense, char*& to) {
  signed char const least = condense ? leastInText : 1;
  char* from = at_;
  char* written = at_;
  for (;;) {
    char* const run = from;
    from = findStop(from, stop, least);
    auto const length = static_cast<std::size_t>(from - run);
    if (written != run) std::memmove(written, run, length);
    written += length;
    if (*from == stop || *from == '\0') break;
    if (condense && isBlank(from)) {
      char* const blanks = from;
      do ++from;
      while (isBlank(from));
      if (*from == stop || *from == '\0') break;
      if (from - blanks != 1 || *blanks != ' ') alter(blanks, from, true);
      *written++ = ' ';
    } else if (*from == '&') {
      char* const behind = decodeReference(from, written);
      if (behind == nullptr) break;
      from = behind;
    } else {
      from = copyCharacter(from, written);
    }
  }
  to = written;
  at_ = from;
  return *from != '&';
}

// An ampersand that begins no reference is dropped. Null where TinyXML gives up.
char* Scanner::decodeReference(char* from, char*& to) {
  if (startsReference(from)) {
    Reference const reference = characterReference(from);
    if (reference.end == nullptr) return nullptr;
    if (!isPlain(from, reference, encoding_)) alter(from, reference.end);
    to = putCharacter(reference.code, encoding_, to);
    return from + (reference.end - from);
  }
  for (NamedReference const& known : namedReferences) {
    if (startsWith(from, known.text)) {
      *to++ = known.character;
      return from + known.text.size();
    }
  }
  alter(from, from + 1);
  return from + 1;
}

// In UTF-8 as many bytes as the first one announces, also of the zeros behind the text.
char* Scanner::copyCharacter(char* from, char*& to) const {
  std::size_t const length = encoding_ == Encoding::utf8 ? utf8Length(*from) : 1;
  for (char const* const end = from + length; from != end; ++from) *to++ = *from;
  return from;
}

bool Scanner::isAllBlank(char const* from, char const* to) {
  while (from != to && isBlank(from)) ++from;
  return from == to;
}

Piece Scanner::name() {
  char const* const start = at_;
  if (is(at_, nameStart)) at_ = endOfName(at_ + 1);
  return piece(start, at_);
}

void Scanner::skipWhiteSpace() {
  if (static_cast<signed char>(*at_) > ' ') return;
  if (is(at_, blank)) at_ = endOfBlanks(at_ + 1);
  if (is(at_, beyondAscii)) skipRareWhiteSpace();
}

// Kept apart so that the common case is short enough to be inlined.
void Scanner::skipRareWhiteSpace() {
  for (;;) {
    if (atByteOrderMark()) {
      at_ += 3;
    } else if (isBlank(at_)) {
      ++at_;
    } else {
      return;
    }
  }
}

// In UTF-8, TinyXML counts among white space the byte order mark and the two characters that are
// none, U+FFFE and U+FFFF.
bool Scanner::atByteOrderMark() const {
  return encoding_ == Encoding::utf8 &&
         (startsWith(at_, "\xEF\xBB\xBF") || startsWith(at_, "\xEF\xBF\xBE") ||
          startsWith(at_, "\xEF\xBF\xBF"));
}

// Goes to the next white space or one of `ends`. Byte order marks are nothing special here.
void Scanner::skipWord(Kinds ends) {
  while (!is(at_, ends | blank) && !isRareBlank(at_)) ++at_;
}

// ---- Nodes -------------------------------------------------------------------------------------

std::uint32_t Scanner::add(NodeKind kind, char const* at, Piece value) {
  return builder_.add(kind, value, offset(at), at_);
}

// Values stand for what they were made of, so where one ends is known only here.
void Scanner::alter(char const* from, char const* end, bool isBlank) {
  scan_.isAltered = true;
  if (details_ != nullptr) details_->alterations.push_back({offset(from), offset(end), isBlank});
}

void Scanner::endNode(std::uint32_t node) {
  if (details_ == nullptr) return;
  details_->nodeEnds.resize(tree_.nodes().size());
  details_->nodeEnds[node] = offset(at_);
}

void Scanner::endAttribute() {
  if (details_ == nullptr) return;
  details_->attributeEnds.resize(tree_.attributeCount());
  details_->attributeEnds.back() = offset(at_);
}

bool Scanner::fail(Mistake mistake, std::string_view found) {
  scan_.fault = mistake.fault;
  // Cut sequences of UTF-8 may have carried the walk past the end of the text.
  scan_.offset = static_cast<std::size_t>(std::min(at_, end_) - text_);
  scan_.found = found;
  scan_.likeness = mistake.likeness;
  std::uint32_t const open = tag_ != TreeBuilder::none ? tag_ : builder_.innermost();
  if (open != TreeBuilder::none) {
    scan_.openElement = tree_.view(tree_.node(open).value);
    scan_.openAt = tree_.node(open).offset;
  }
  return false;
}

}  // namespace

Scan scan(char* text, std::size_t length, Tree& tree, Limits limits, Encoding encoding,
          Details* details) {
  if (length > Tree::longestText) {
    Scan refused;
    refused.fault = Fault::tooLong;
    refused.likeness = likeness::element;
    return refused;
  }
  return Scanner(text, length, tree, limits, encoding, details).document();
}

}  // namespace Kovra::frame
