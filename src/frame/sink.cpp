#include "frame/sink.hpp"

#include <algorithm>
#include <cstring>
#include <string>

#include "frame/wipe.hpp"
#include "kvxhelper.h"

namespace Kovra::frame {

// The tree.

void TreeSink::open(char const* element) {
  open_ = KVXHelper::AddTag(open_, element);
}

void TreeSink::attribute(char const* name, char const* value) {
  KVXHelper::AddTagAttrib(open_, name, value);
}

void TreeSink::text(char const* text) {
  open_->LinkEndChild(new TiXmlText(text));
}

void TreeSink::close(char const*) {
  open_ = open_->Parent()->ToElement();
}

void TreeSink::leaf(char const* element, char const* text) {
  KVXHelper::AddTagString(open_, element, text);
}

// Characters.

WipedCharacters::~WipedCharacters() {
  wipe(begin_, view().size());
}

void WipedCharacters::makeRoom(std::size_t more) {
  std::size_t const length = view().size();
  std::size_t const room = 4 * length + more;
  std::unique_ptr<char[]> block(new char[room]);
  std::memcpy(block.get(), begin_, length);
  wipe(begin_, length);
  block_ = std::move(block);
  begin_ = block_.get();
  end_ = begin_ + length;
  limit_ = begin_ + room;
}

void WipedCharacters::append(std::string_view text) {
  if (static_cast<std::size_t>(limit_ - end_) < text.size()) makeRoom(text.size());
  std::memcpy(end_, text.data(), text.size());
  end_ += text.size();
}

void WipedCharacters::append(char c) {
  if (end_ == limit_) makeRoom(1);
  *end_++ = c;
}

void WipedCharacters::append(std::size_t count, char c) {
  if (static_cast<std::size_t>(limit_ - end_) < count) makeRoom(count);
  std::memset(end_, c, count);
  end_ += count;
}

void WipedCharacters::terminate() {
  if (end_ == limit_) makeRoom(1);
  *end_ = '\0';
}

// The text.

namespace {

/// How TinyXML writes a character; empty for one that stays as it is.
constexpr std::string_view escapeOf(char c) {
  switch (c) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    case '\'':
      return "&apos;";
    default:
      return {};
  }
}

constexpr bool isControl(char c) {
  return static_cast<unsigned char>(c) < 0x20;
}

constexpr auto plainCharacters = [] {
  std::array<bool, 256> plain{};
  for (std::size_t code = 0; code < plain.size(); ++code) {
    char const c = static_cast<char>(code);
    plain[code] = !isControl(c) && escapeOf(c).empty();
  }
  return plain;
}();

bool isPlain(char c) {
  return plainCharacters[static_cast<unsigned char>(c)];
}

}  // namespace

void TextSink::declare() {
  out_.append("<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n");
}

void TextSink::escapedByTinyxml(char const* text) {
  std::string escaped;
  TiXmlBase::EncodeString(text, &escaped);
  out_.append(std::string_view(escaped));
  wipe(escaped.data(), escaped.size());
}

void TextSink::escaped(char const* begin) {
  std::string_view text = begin;
  for (;;) {
    auto const stop = std::find_if_not(text.begin(), text.end(), isPlain);
    auto const plain = static_cast<std::size_t>(stop - text.begin());
    out_.append(text.substr(0, plain));
    text.remove_prefix(plain);
    if (text.empty()) return;
    // Some builds of TinyXML take this for a reference and pass on what follows.
    if (text.substr(0, 3) == "&#x") return escapedByTinyxml(text.data());
    if (isControl(text.front())) {
      constexpr char digits[] = "0123456789ABCDEF";
      auto const code = static_cast<unsigned char>(text.front());
      out_.append({"&#x"});
      out_.append(digits[code >> 4U]);
      out_.append(digits[code & 0xFU]);
      out_.append(';');
    } else {
      out_.append(escapeOf(text.front()));
    }
    text.remove_prefix(1);
  }
}

void TextSink::indent() {
  out_.append((sizeof printIndent - 1) * depth_, ' ');
}

void TextSink::open(char const* element) {
  if (inTag_) out_.append(">\n");
  indent();
  out_.append('<');
  out_.append(std::string_view(element));
  ++depth_;
  inTag_ = true;
  behindText_ = false;
}

/// The quotes are TinyXML's, too: it looks for one in the value before that is escaped.
void TextSink::attribute(char const* name, char const* value) {
  if (watch() != nullptr) watch()->text(value);
  char const quote = std::strchr(value, '"') == nullptr ? '"' : '\'';
  out_.append(' ');
  escaped(name);
  out_.append('=');
  out_.append(quote);
  escaped(value);
  out_.append(quote);
}

void TextSink::text(char const* text) {
  if (watch() != nullptr) watch()->text(text);
  out_.append('>');
  escaped(text);
  inTag_ = false;
  behindText_ = true;
}

void TextSink::endTag(char const* element) {
  out_.append("</");
  out_.append(std::string_view(element));
  out_.append(">\n");
}

void TextSink::close(char const* element) {
  --depth_;
  if (inTag_) {
    out_.append(" />\n");
  } else {
    if (!behindText_) indent();
    endTag(element);
  }
  inTag_ = false;
  behindText_ = false;
}

void TextSink::leaf(char const* element, char const* text) {
  open(element);
  this->text(text);
  close(element);
}

}  // namespace Kovra::frame
