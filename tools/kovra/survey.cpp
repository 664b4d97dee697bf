#include "survey.hpp"

#include <algorithm>
#include <array>
#include <cstring>
#include <set>
#include <utility>

#include "command.hpp"

namespace Kovra::tool {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

unsigned byteAt(std::string_view bytes, std::size_t at) {
  return static_cast<unsigned char>(bytes[at]);
}

void append(std::string& text, std::uint64_t code) {
  auto const put = [&](std::uint64_t byte) {
    text += static_cast<char>(static_cast<unsigned char>(byte));
  };
  if (code < 0x80) {
    put(code);
  } else if (code < 0x800) {
    put(0xC0U | code >> 6U);
    put(0x80U | (code & 0x3FU));
  } else if (code < 0x10000) {
    put(0xE0U | code >> 12U);
    put(0x80U | (code >> 6U & 0x3FU));
    put(0x80U | (code & 0x3FU));
  } else {
    put(0xF0U | (code >> 18U & 7U));
    put(0x80U | (code >> 12U & 0x3FU));
    put(0x80U | (code >> 6U & 0x3FU));
    put(0x80U | (code & 0x3FU));
  }
}

/// Takes a character off the front of a good text.
std::uint32_t take(std::string_view& text) {
  std::uint32_t const first = byteAt(text, 0);
  std::size_t const length = first < 0x80 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
  std::uint32_t code = length == 1 ? first : first & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) code = code << 6U | (byteAt(text, i) & 0x3FU);
  text.remove_prefix(length);
  return code;
}

bool isAscii(std::string_view bytes) {
  return std::none_of(bytes.begin(), bytes.end(),
                      [](char byte) { return static_cast<unsigned char>(byte) >= 0x80; });
}

/// Does a declaration in front of all else say ISO 8859-1?
bool isDeclaredLatin1(std::string_view bytes) {
  std::string declaration(bytes.substr(0, bytes.find('>')).substr(0, 4096));
  for (char& letter : declaration) {
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter | 0x20);
  }
  std::size_t const begin = declaration.find_first_not_of(" \t\r\n");
  if (begin == declaration.npos || declaration.compare(begin, 5, "<?xml") != 0) return false;
  std::size_t const word = declaration.find("encoding");
  std::size_t const quote =
      word == declaration.npos ? word : declaration.find_first_of("\"'", word);
  if (quote == declaration.npos) return false;
  std::size_t const end = declaration.find(declaration[quote], quote + 1);
  std::set<std::string> const names = {"iso-8859-1", "iso8859-1", "iso_8859-1", "latin1",
                                       "latin-1",    "l1",        "iso-ir-100"};
  return names.count(declaration.substr(quote + 1, end - quote - 1)) != 0;
}

}  // namespace

ReplyText::ReplyText(std::string_view bytes) {
  using namespace std::string_view_literals;
  std::string_view const beginning = bytes.substr(0, 2);
  hasMark_ = beginning == "\xFF\xFE" || beginning == "\xFE\xFF";
  if (beginning == "\xFF\xFE" || beginning == "<\0"sv) form_ = Form::utf16Little;
  if (beginning == "\xFE\xFF" || beginning == "\0<"sv) form_ = Form::utf16Big;
  bool const isNarrow = form_ == Form::utf8;
  bool const isMarked = bytes.substr(0, byteOrderMark.size()) == byteOrderMark;
  if (isNarrow && !isMarked && !isAscii(bytes) && isDeclaredLatin1(bytes)) form_ = Form::latin1;
  convert(bytes);
  if (bytesOf(text_) != bytes) {
    throw InputFailure(ExitStatus::refused, "cannot be redacted: broken UTF-16");
  }
}

void ReplyText::convert(std::string_view bytes) {
  if (form_ == Form::utf8) {
    text_ = bytes;
    return;
  }
  if (form_ == Form::latin1) {
    for (char const& byte : bytes) append(text_, byteAt({&byte, 1}, 0));
    return;
  }
  std::size_t const low = form_ == Form::utf16Little ? 0 : 1;
  std::uint32_t lead = 0;
  for (std::size_t at = hasMark_ ? 2 : 0; at + 1 < bytes.size(); at += 2) {
    std::uint32_t const unit = byteAt(bytes, at + low) | byteAt(bytes, at + 1 - low) << 8U;
    bool const isLead = (unit & 0xFC00U) == 0xD800;
    bool const isTrail = (unit & 0xFC00U) == 0xDC00;
    if (isLead) {
      lead = unit;
    } else {
      append(text_, isTrail ? 0x10000 + ((lead & 0x3FFU) << 10U) + (unit & 0x3FFU) : unit);
    }
  }
}

std::string ReplyText::bytesOf(std::string_view text) const {
  if (form_ == Form::utf8) return std::string(text);
  std::string bytes;
  std::size_t const low = form_ == Form::utf16Little ? 0 : 1;
  auto const putUnit = [&](std::uint32_t unit) {
    std::array<char, 2> pair{};
    pair[low] = static_cast<char>(static_cast<unsigned char>(unit & 0xFFU));
    pair[1 - low] = static_cast<char>(static_cast<unsigned char>(unit >> 8U));
    bytes.append(pair.data(), pair.size());
  };
  if (hasMark_) putUnit(0xFEFF);
  while (!text.empty()) {
    std::uint32_t const code = take(text);
    if (form_ == Form::latin1) {
      bytes += static_cast<char>(static_cast<unsigned char>(code));
    } else if (code < 0x10000) {
      putUnit(code);
    } else {
      putUnit(0xD800U | (code - 0x10000) >> 10U);
      putUnit(0xDC00U | ((code - 0x10000) & 0x3FFU));
    }
  }
  return bytes;
}

// What may become of what.

namespace {

using Node = Identities::Node;
using Coding = Piece::Coding;

class Survey : public TagVisitor {
 public:
  Survey(std::string_view text, Identities const& identities)
      : text_(text), identities_(identities) {}

  std::vector<Piece> take() { return std::move(pieces_); }

  void open(Span name) override {
    std::string_view const called = name.of(text_);
    if (frames_.empty()) root_ = identities_.root(called);
    Node const* const parent = frames_.empty() ? nullptr : frames_.back().node;
    Node const* const node = frames_.empty() ? root_ : inner(parent, called);
    Frame frame;
    frame.node = node;
    frame.holding = holdingOf(node, called);
    if (node == nullptr) {
      pieces_.push_back({name, Coding::raw, true, {}});
      bool const inherits = !frame.holding && !frames_.empty() && !Identities::isTelling(called);
      if (inherits) frame.holding = frames_.back().holding;
    }
    frame.isFixed = node != nullptr && node->isFixed && !frame.holding;
    frames_.push_back(frame);
  }

  void attribute(Span name, Span value, bool isQuoted) override {
    std::string_view const called = name.of(text_);
    Frame const& element = frames_.back();
    Node const* const node = inner(element.node, called);
    if (node == nullptr) pieces_.push_back({name, Coding::raw, true, {}});
    std::optional<Identity> holding = holdingOf(node, called);
    bool const inherits = node == nullptr && !holding && !Identities::isTelling(called);
    if (inherits) holding = element.holding;
    bool const isKnown = node != nullptr ? node->isFixed : element.isFixed;
    pieces_.push_back(
        {value, isQuoted ? Coding::attribute : Coding::raw, isKnown && !holding, holding});
  }

  void close() override { frames_.pop_back(); }

  void text(Span text) override { add(text, Coding::text); }
  void data(Span data) override { add(data, Coding::raw); }
  void other(Span other) override { pieces_.push_back({other, Coding::raw, false, {}}); }

 private:
  struct Frame {
    Node const* node = nullptr;
    std::optional<Identity> holding;
    bool isFixed = false;
  };

  static Node const* inner(Node const* node, std::string_view name) {
    if (node == nullptr) return nullptr;
    auto const found = node->inner.find(name);
    return found == node->inner.end() ? nullptr : &found->second;
  }

  /// The catalogue knows its own elements; of all others the names tell.
  std::optional<Identity> holdingOf(Node const* node, std::string_view name) const {
    if (root_ != nullptr) {
      auto const secret = root_->secrets.find(name);
      if (secret != root_->secrets.end()) return secret->second;
    }
    if (node != nullptr && (node->isMember || node->isContainer || node == root_)) {
      return node->identity;
    }
    return identities_.byName(name);
  }

  void add(Span span, Coding coding) {
    if (frames_.empty()) {
      pieces_.push_back({span, coding, false, {}});
    } else {
      pieces_.push_back({span, coding, frames_.back().isFixed, frames_.back().holding});
    }
  }

  std::string_view text_;
  Identities const& identities_;
  Node const* root_ = nullptr;
  std::vector<Frame> frames_;
  std::vector<Piece> pieces_;
};

// What a piece says.

bool isBlank(char byte) {
  return byte == ' ' || (byte >= '\t' && byte <= '\r');
}

/// The characters that a piece stands for, and where in the text each of their bytes comes from.
struct Decoded {
  std::string value;
  std::size_t begin = 0;
  std::vector<Span> places;  ///< empty where the value is what stands there

  void put(std::string_view bytes, Span place) {
    value += bytes;
    places.insert(places.end(), bytes.size(), place);
  }
  Span placeOf(Span inValue) const {
    if (places.empty()) return {begin + inValue.begin, begin + inValue.end};
    return {places[inValue.begin].begin, places[inValue.end - 1].end};
  }
};

/// A reference by number, as the library takes it: up to the next semicolon, with digits from the
/// right. Its length, 0 for none.
std::size_t readNumber(std::string_view text, std::uint64_t& code) {
  std::size_t const semicolon = text.find(';', 2);
  if (semicolon == text.npos) return 0;
  bool const isHex = text.size() > 2 && text[2] == 'x';
  std::size_t const mark = text.rfind(isHex ? 'x' : '#', semicolon);
  for (std::size_t i = mark + 1; i < semicolon; ++i) {
    char const digit = text[i];
    char const low = static_cast<char>(digit | 0x20);
    bool const isLetter = low >= 'a' && low <= 'f';
    auto const value = static_cast<unsigned>(isLetter ? low - 'a' + 10 : digit - '0');
    code = code * (isHex ? 16 : 10) + value;
  }
  code &= 0xFFFFFFFF;
  return semicolon + 1;
}

constexpr std::array<std::pair<std::string_view, char>, 5> entities = {
    {{"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''}}};

/// A reference at the beginning of the text; an ampersand that begins none stands for nothing.
std::size_t readReference(std::string_view text, std::string& character) {
  std::uint64_t code = 0;
  if (text.substr(0, 2) == "&#") {
    std::size_t const length = readNumber(text, code);
    if (length > 0 && code < 0x200000) append(character, code);
    return std::max<std::size_t>(length, 1);
  }
  for (auto const& [reference, letter] : entities) {
    if (text.substr(0, reference.size()) == reference) {
      character += letter;
      return reference.size();
    }
  }
  return 1;
}

/// Does the text stand for itself?
bool isPlain(std::string_view text, Coding coding) {
  if (coding == Coding::raw) return true;
  if (text.find('&') != text.npos) return false;
  if (coding == Coding::attribute) return true;
  bool wasBlank = true;
  for (char const byte : text) {
    bool const isNow = isBlank(byte);
    if (isNow && (wasBlank || byte != ' ')) return false;
    wasBlank = isNow;
  }
  return !wasBlank;
}

Decoded decodedOf(std::string_view whole, Piece const& piece) {
  Decoded decoded;
  decoded.begin = piece.span.begin;
  std::string_view const text = whole.substr(0, piece.span.end);
  if (isPlain(piece.span.of(whole), piece.coding)) {
    decoded.value = piece.span.of(whole);
    return decoded;
  }
  bool const condenses = piece.coding == Coding::text;
  std::size_t const lastSemicolon = piece.span.of(whole).rfind(';');
  std::size_t const lastReference =
      lastSemicolon == text.npos ? 0 : piece.span.begin + lastSemicolon;
  for (std::size_t at = piece.span.begin; at < text.size();) {
    std::size_t const begin = at;
    if (piece.coding != Coding::raw && text[at] == '&') {
      std::string character;
      at += at < lastReference ? readReference(text.substr(at), character) : 1;
      decoded.put(character, {begin, at});
    } else if (condenses && isBlank(text[at])) {
      while (at < text.size() && isBlank(text[at])) ++at;
      bool const isInside = !decoded.value.empty() && at < text.size();
      if (isInside) decoded.put(" ", {begin, at});
    } else {
      ++at;
      decoded.put(text.substr(begin, 1), {begin, at});
    }
  }
  return decoded;
}

/// The part of a value that is one, without blanks around it.
Span coreOf(std::string_view value) {
  std::size_t begin = 0;
  std::size_t end = value.size();
  while (begin < end && isBlank(value[begin])) ++begin;
  while (end > begin && isBlank(value[end - 1])) --end;
  return {begin, end};
}

/// Is there anything to be replaced?
bool isReplaced(std::string_view value, Identity const& identity) {
  if (isSecret(identity.group)) return !value.empty() && value != "******";
  return !saysNothing(value);
}

class Redaction {
 public:
  Redaction(std::string_view text, Pseudonyms const& pseudonyms)
      : text_(text), pseudonyms_(pseudonyms) {}

  Redacted all(std::vector<Piece> const& pieces) {
    for (Piece const& piece : pieces) {
      Decoded const decoded = decodedOf(text_, piece);
      copyTo(piece.span.begin);
      std::size_t const begin = result_.text.size();
      if (piece.isFixed) {
        leave(decoded);
      } else if (!piece.identity || !replaceWhole(decoded, *piece.identity)) {
        replaceParts(decoded);
        copyTo(piece.span.end);
        if (piece.coding != Coding::raw) writeAnewIfHolding(begin, decoded.value);
      }
    }
    copyTo(text_.size());
    return std::move(result_);
  }

 private:
  bool replaceWhole(Decoded const& decoded, Identity const& identity) {
    Span const core = coreOf(decoded.value);
    if (!isReplaced(core.of(decoded.value), identity)) return false;
    Pseudonym const* const pseudonym = pseudonyms_.find(core.of(decoded.value));
    if (pseudonym == nullptr) return false;
    replace(decoded.placeOf(core), pseudonym->madeUp);
    return true;
  }

  void replaceParts(Decoded const& decoded) {
    for (ValueFinder::Found const& found : pseudonyms_.in(decoded.value)) {
      replace(decoded.placeOf(found.span), pseudonyms_.madeUp(found.number));
    }
  }

  void leave(Decoded const& decoded) {
    for (ValueFinder::Found const& found : pseudonyms_.in(decoded.value)) {
      result_.left.push_back(
          {decoded.placeOf(found.span).begin, std::string(pseudonyms_.madeUp(found.number))});
    }
  }

  /// The bytes of a reference may hold a value that the character it stands for does not.
  void writeAnewIfHolding(std::size_t begin, std::string_view value) {
    if (pseudonyms_.in(std::string_view(result_.text).substr(begin)).empty()) return;
    result_.text.resize(begin);
    for (char const letter : pseudonyms_.hidden(value)) {
      auto const entity = std::find_if(entities.begin(), entities.end(),
                                       [&](auto const& known) { return known.second == letter; });
      result_.text += entity != entities.end() ? entity->first : std::string_view(&letter, 1);
    }
  }

  void copyTo(std::size_t end) {
    if (end > at_) result_.text += text_.substr(at_, end - at_);
    at_ = std::max(at_, end);
  }

  /// Two that share a reference's bytes stand one behind the other.
  void replace(Span place, std::string_view madeUp) {
    copyTo(place.begin);
    result_.text += madeUp;
    at_ = std::max(at_, place.end);
    ++result_.replaced;
  }

  std::string_view text_;
  Pseudonyms const& pseudonyms_;
  std::size_t at_ = 0;
  Redacted result_;
};

}  // namespace

std::vector<Piece> piecesOf(std::string_view text, Identities const& identities) {
  Survey survey(text, identities);
  readTags(text, survey);
  return survey.take();
}

void collect(std::string_view text, std::vector<Piece> const& pieces, Pseudonyms& pseudonyms) {
  for (Piece const& piece : pieces) {
    if (!piece.identity) continue;
    Decoded const decoded = decodedOf(text, piece);
    std::string_view const value = coreOf(decoded.value).of(decoded.value);
    if (isReplaced(value, *piece.identity)) pseudonyms.add(value, *piece.identity);
  }
}

Redacted redacted(std::string_view text, std::vector<Piece> const& pieces,
                  Pseudonyms const& pseudonyms) {
  return Redaction(text, pseudonyms).all(pieces);
}

}  // namespace Kovra::tool
