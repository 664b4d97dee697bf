#include "tags.hpp"

#include <algorithm>
#include <initializer_list>
#include <vector>

namespace Kovra::tool {

namespace {

constexpr std::size_t npos = std::string_view::npos;

bool isLetter(char byte) {
  auto const value = static_cast<unsigned char>(byte);
  return (value | 0x20U) - 'a' < 26U || byte == '_' || value >= 127;
}

bool isOfName(char byte) {
  return isLetter(byte) || (byte >= '0' && byte <= '9') || byte == '-' || byte == '.' ||
         byte == ':';
}

bool isBlank(char byte) {
  return byte == ' ' || (byte >= '\t' && byte <= '\r');
}

bool beginsInAnyCase(std::string_view text, std::string_view word) {
  if (text.size() < word.size()) return false;
  return std::equal(word.begin(), word.end(), text.begin(), [](char a, char b) {
    return a == b || (b >= 'A' && b <= 'Z' && a == static_cast<char>(b + 32));
  });
}

class TagReader {
 public:
  TagReader(std::string_view text, TagVisitor& visitor) : text_(text), visitor_(visitor) {}

  void all() {
    if (stands("\xEF\xBB\xBF")) at_ += 3;
    while (at_ < text_.size()) {
      content();
      if (at_ < text_.size()) markup();
    }
    if (!open_.empty()) fail();
  }

 private:
  [[noreturn]] void fail() const { throw TagError(at_); }
  bool stands(std::string_view word) const { return text_.substr(at_, word.size()) == word; }
  char byte(std::size_t at) const { return at < text_.size() ? text_[at] : '\0'; }
  char here() const {
    if (at_ >= text_.size()) fail();
    return text_[at_];
  }

  /// The library counts the byte order mark and the two that are no characters among the blanks.
  void skipBlanks() {
    for (;;) {
      if (isBlank(byte(at_))) {
        ++at_;
      } else if (stands("\xEF\xBB\xBF") || stands("\xEF\xBF\xBE") || stands("\xEF\xBF\xBF")) {
        at_ += 3;
      } else {
        return;
      }
    }
  }

  Span name() {
    std::size_t const begin = at_;
    if (!isLetter(here())) fail();
    while (isOfName(byte(at_))) ++at_;
    return {begin, at_};
  }

  /// Up to the next '<'. Within an element a reference by number swallows what stands before its
  /// semicolon.
  void content() {
    std::size_t const begin = at_;
    while (at_ < text_.size() && text_[at_] != '<') {
      bool const swallows = !open_.empty() && stands("&#") && at_ + 2 < text_.size();
      std::size_t const end = swallows ? text_.find(';', at_ + 2) : at_;
      if (end == npos) fail();
      at_ = end + 1;
    }
    if (at_ > begin) visitor_.text({begin, at_});
  }

  void markup() {
    char const second = byte(at_ + 1);
    if (isLetter(second)) return startTag();
    if (second == '/' && !open_.empty()) return endTag();
    if (beginsInAnyCase(text_.substr(at_), "<?xml")) return declaration();
    if (stands("<!--")) return pass("<!--", "-->", false);
    if (stands("<![CDATA[")) return pass("<![CDATA[", "]]>", true);
    pass("<", ">", false);
  }

  /// Outside of all elements the end may be missing.
  void pass(std::string_view beginning, std::string_view ending, bool isData) {
    std::size_t const begin = at_ + beginning.size();
    std::size_t const end = text_.find(ending, begin);
    if (end == npos && !open_.empty()) fail();
    Span const inner{begin, std::min(end, text_.size())};
    if (isData) {
      visitor_.data(inner);
    } else {
      visitor_.other(inner);
    }
    at_ = end == npos ? text_.size() : end + ending.size();
  }

  /// The value of a word that it knows may hide a '>'.
  void declaration() {
    std::size_t const begin = at_ += 5;
    while (at_ < text_.size() && text_[at_] != '>') {
      skipBlanks();
      if (isDeclarationWord()) {
        name();
        skipBlanks();
        if (byte(at_) == '=') value();
      } else {
        while (at_ < text_.size() && text_[at_] != '>' && !isBlank(text_[at_])) ++at_;
      }
    }
    if (at_ >= text_.size() && !open_.empty()) fail();
    visitor_.other({begin, at_});
    if (at_ < text_.size()) ++at_;
  }

  bool isDeclarationWord() const {
    std::initializer_list<std::string_view> const words = {"version", "encoding", "standalone"};
    return std::any_of(words.begin(), words.end(), [&](std::string_view word) {
      return beginsInAnyCase(text_.substr(at_), word);
    });
  }

  void startTag() {
    ++at_;
    skipBlanks();
    Span const opened = name();
    open_.push_back(opened.of(text_));
    visitor_.open(opened);
    for (skipBlanks(); here() != '>' && here() != '/'; skipBlanks()) {
      Span const attribute = name();
      skipBlanks();
      if (here() != '=') fail();
      bool isQuoted = false;
      Span const found = value(&isQuoted);
      visitor_.attribute(attribute, found, isQuoted);
    }
    bool const isEmpty = text_[at_++] == '/';
    if (!isEmpty) return;
    if (here() != '>') fail();
    ++at_;
    close();
  }

  /// From the '=' to behind the value.
  Span value(bool* isQuoted = nullptr) {
    ++at_;
    skipBlanks();
    char const quote = here();
    if (quote != '"' && quote != '\'') return bareValue();
    if (isQuoted != nullptr) *isQuoted = true;
    std::size_t const begin = ++at_;
    while (here() != quote) {
      bool const swallows = stands("&#") && at_ + 2 < text_.size();
      std::size_t const end = swallows ? text_.find(';', at_ + 2) : at_;
      if (end == npos) fail();
      at_ = end + 1;
    }
    return {begin, at_++};
  }

  Span bareValue() {
    std::size_t const begin = at_;
    while (!isBlank(here()) && here() != '/' && here() != '>') {
      if (here() == '"' || here() == '\'') fail();
      ++at_;
    }
    return {begin, at_};
  }

  void endTag() {
    at_ += 2;
    if (!stands(open_.back())) fail();
    at_ += open_.back().size();
    skipBlanks();
    if (here() != '>') fail();
    ++at_;
    close();
  }

  void close() {
    open_.pop_back();
    visitor_.close();
  }

  std::string_view text_;
  TagVisitor& visitor_;
  std::size_t at_ = 0;
  std::vector<std::string_view> open_;
};

}  // namespace

void readTags(std::string_view text, TagVisitor& visitor) {
  TagReader(text, visitor).all();
}

}  // namespace Kovra::tool
