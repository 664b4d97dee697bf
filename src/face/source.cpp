#include "face/source.hpp"

#include <algorithm>
#include <cstring>

#include "frame/tree.hpp"
#include "frame/utf8.hpp"
#include "frame/wipe.hpp"

namespace Kovra {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view blanks = " \t\r\n";
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view replacement = "\xEF\xBF\xBD";

/// How far apart places are kept of which it is known where they stand in both texts.
constexpr std::size_t anchorDistance = 4096;

unsigned char byteAt(std::string_view bytes, std::size_t at) {
  return static_cast<unsigned char>(bytes[at]);
}

bool isAscii(std::string_view bytes) {
  constexpr std::size_t block = 64;
  std::size_t at = 0;
  for (; at + block <= bytes.size(); at += block) {
    unsigned char all = 0;
    for (std::size_t i = 0; i < block; ++i) all |= byteAt(bytes, at + i);
    if (all >= 0x80) return false;
  }
  std::uint64_t all = 0;
  for (; at + sizeof all <= bytes.size(); at += sizeof all) {
    std::uint64_t eight = 0;
    std::memcpy(&eight, bytes.data() + at, sizeof eight);
    all |= eight;
  }
  for (; at < bytes.size(); ++at) all |= byteAt(bytes, at);
  return (all & 0x8080808080808080U) == 0;
}

bool isSame(std::string_view a, std::string_view b) {
  auto const lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [&](char x, char y) { return lower(x) == lower(y); });
}

/// The encoding that a declaration at the beginning of the text names, or nothing.
std::string_view declared(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
  if (text.substr(0, 5) != "<?xml") return {};
  text = text.substr(0, text.find('>'));
  std::size_t const word = text.find("encoding");
  if (word == text.npos) return {};
  std::size_t const open = text.find_first_of("\"'", word);
  if (open == text.npos) return {};
  std::size_t const close = text.find(text[open], open + 1);
  return text.substr(open + 1, close == text.npos ? text.npos : close - open - 1);
}

/// Where a declaration would stand: at the beginning, or behind what is skipped.
std::size_t declarationIn(std::string_view text, bool skipsTextBefore) {
  std::size_t const found = skipsTextBefore ? text.find("<?xml") : text.npos;
  return found != text.npos ? found : 0;
}

bool isLatin1(std::string_view name) {
  constexpr std::string_view names[] = {"ISO-8859-1", "ISO8859-1", "ISO_8859-1", "latin1",
                                        "latin-1",    "l1",        "iso-ir-100"};
  return std::any_of(std::begin(names), std::end(names),
                     [&](std::string_view known) { return isSame(name, known); });
}

/// The bytes of ASCII where a text of two bytes each begins; of all else a blank.
std::string asciiOf(std::string_view bytes, std::size_t low) {
  bytes = bytes.substr(0, 512);
  std::string ascii;
  for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
    bool const isPlain = bytes[at + 1 - low] == '\0' && byteAt(bytes, at + low) < 0x80;
    ascii += isPlain ? bytes[at + low] : ' ';
  }
  return ascii;
}

}  // namespace

/// A character, or what stands for one.
struct Source::Character {
  std::size_t length = 1;  ///< in bytes of the host's
  char32_t code = 0;
  bool isGood = true;
};

namespace {

bool isUtf8(std::string_view text) {
  char const* const end = text.data() + text.size();
  for (char const* at = text.data(); at != end;) {
    frame::Utf8Character const character = frame::characterAt(at, end);
    if (character.isBroken) return false;
    at += character.length;
  }
  return true;
}

}  // namespace

Source::Source(std::string_view bytes, bool skipsTextBefore)
    : bytes_(bytes), text_(bytes), whole_(bytes) {
  if (isUnreadable(bytes, skipsTextBefore)) return;
  if (form_ == Form::utf8 && !isAscii(bytes)) readAsUtf8(skipsTextBefore);
  if (std::size_t const nul = text_.find('\0'); nul != text_.npos) {
    refuse(Unreadable::nul, nul);
  } else if (skipsTextBefore) {
    skipTextBefore();
  }
}

Source::Wiped::~Wiped() {
  frame::wipe(text.data(), text.size());
}

Source::~Source() = default;

/// A declaration counts where it is the first thing that is read.
void Source::readAsUtf8(bool skipsTextBefore) {
  std::size_t const begin = declarationIn(bytes_, skipsTextBefore);
  bool const isMarked =
      bytes_.starts_with(byteOrderMark) || bytes_.substr(0, begin).ends_with(byteOrderMark);
  if (!isMarked && isLatin1(declared(bytes_.substr(begin)))) {
    form_ = Form::latin1;
    convert(form_, bytes_);
  } else if (!isUtf8(bytes_)) {
    convert(form_, bytes_);
  }
}

void Source::refuse(Unreadable why, std::size_t at) {
  unreadable_ = why;
  unreadableAt_ = at;
}

/// Text of two bytes a character is read where it says so itself.
bool Source::isUnreadable(std::string_view bytes, bool skipsTextBefore) {
  if (bytes.substr(0, 2) == "\x1F\x8B") {
    refuse(Unreadable::gzip, 0);
    return true;
  }
  bool const isLittle = bytes.substr(0, 2) == "\xFF\xFE" || bytes.substr(0, 2) == "<\0"sv;
  bool const isBig = bytes.substr(0, 2) == "\xFE\xFF" || bytes.substr(0, 2) == "\0<"sv;
  if (isLittle || isBig) {
    std::string const ascii = asciiOf(bytes, isLittle ? 0 : 1);
    std::string_view const beginning = ascii;
    std::size_t const begin = declarationIn(beginning, skipsTextBefore);
    if (!isSame(declared(beginning.substr(begin)).substr(0, 6), "UTF-16")) {
      refuse(Unreadable::utf16, 0);
      return true;
    }
    form_ = isLittle ? Form::utf16Little : Form::utf16Big;
    convert(form_, bytes);
    bytes = text_;
  }
  std::string_view rest = bytes;
  if (rest.starts_with(byteOrderMark)) rest.remove_prefix(byteOrderMark.size());
  if (rest.find_first_not_of(blanks) == rest.npos) refuse(Unreadable::empty, 0);
  return unreadable_ != Unreadable::no;
}

/// A document begins with a tag, a declaration or a comment.
void Source::skipTextBefore() {
  std::size_t begin = text_.find('<');
  while (begin != text_.npos) {
    char const behind = begin + 1 < text_.size() ? text_[begin + 1] : ' ';
    bool const isLetter = (behind >= 'a' && behind <= 'z') || (behind >= 'A' && behind <= 'Z') ||
                          behind == '_' || static_cast<unsigned char>(behind) >= 0x80;
    if (isLetter || behind == '?' || behind == '!') break;
    begin = text_.find('<', begin + 1);
  }
  std::size_t const mark = text_.starts_with(byteOrderMark) ? byteOrderMark.size() : 0;
  if (begin == text_.npos || text_.find_first_not_of(blanks, mark) == begin) return;
  text_.remove_prefix(begin);
}

Source::Character Source::next(std::string_view bytes, std::size_t at) const {
  switch (form_) {
    case Form::latin1:
      return {1, byteAt(bytes, at), true};
    case Form::utf8: {
      auto const [code, length, isBroken] =
          frame::characterAt(bytes.data() + at, bytes.data() + bytes.size());
      // Each byte that is no character is replaced by itself.
      if (isBroken) return {1, 0, false};
      return {length, code, true};
    }
    case Form::utf16Little:
    case Form::utf16Big:
      break;
  }
  std::size_t const low = form_ == Form::utf16Little ? 0 : 1;
  auto const unit = [&](std::size_t where) -> char32_t {
    if (where + 1 >= bytes.size()) return 0xDC00;  // as bad as the half of a pair
    return byteAt(bytes, where + low) | char32_t{byteAt(bytes, where + 1 - low)} << 8U;
  };
  std::size_t const rest = std::min<std::size_t>(2, bytes.size() - at);
  char32_t const first = unit(at);
  if (first < 0xD800 || first >= 0xE000) return {rest, first, true};
  char32_t const second = unit(at + 2);
  bool const isPair =
      first < 0xDC00 && second >= 0xDC00 && second < 0xE000 && at + 4 <= bytes.size();
  if (!isPair) return {rest, 0, false};
  return {4, 0x10000 + ((first - 0xD800) << 10U) + (second - 0xDC00), true};
}

void Source::convert(Form form, std::string_view bytes) {
  std::string& converted = converted_.text;
  // As much as it can become: what grows leaves pieces of it behind.
  std::size_t const most = form == Form::utf8 ? 3 : 2;
  converted.reserve(most * bytes.size() + replacement.size());
  bool const hasMark = form == Form::utf16Little || form == Form::utf16Big;
  std::size_t at = hasMark && byteAt(bytes, 0) >= 0xFE ? 2 : 0;
  anchors_.push_back({0, at});
  while (at < bytes.size()) {
    if (converted.size() - anchors_.back().inText >= anchorDistance) {
      anchors_.push_back({converted.size(), at});
    }
    Character const character = next(bytes, at);
    if (!character.isGood) {
      auto const begin = static_cast<std::uint32_t>(converted.size());
      converted += replacement;
      replaced_.push_back({begin, begin + static_cast<std::uint32_t>(replacement.size())});
    } else if (form == Form::utf8) {
      converted += bytes.substr(at, character.length);
    } else {
      frame::appendUtf8(character.code, converted);
    }
    at += character.length;
  }
  text_ = whole_ = converted;
}

std::size_t Source::offsetInBytes(std::size_t offset) const {
  if (anchors_.empty()) return offset;
  auto const behind = std::upper_bound(
      anchors_.begin(), anchors_.end(), offset,
      [](std::size_t wanted, Anchor const& anchor) { return wanted < anchor.inText; });
  Anchor anchor = *(behind - 1);
  std::string scratch;
  while (anchor.inText < offset && anchor.inBytes < bytes_.size()) {
    Character const character = next(bytes_, anchor.inBytes);
    scratch.clear();
    if (!character.isGood) {
      scratch = replacement;
    } else if (form_ == Form::utf8) {
      scratch = bytes_.substr(anchor.inBytes, character.length);
    } else {
      frame::appendUtf8(character.code, scratch);
    }
    anchor.inText += scratch.size();
    anchor.inBytes += character.length;
  }
  return anchor.inBytes;
}

}  // namespace Kovra
