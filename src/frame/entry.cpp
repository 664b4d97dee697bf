#include "frame/entry.hpp"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <new>
#include <utility>

#include "frame/bytes.hpp"
#include "frame/nodes.hpp"
#include "frame/pages.hpp"
#include "frame/wipe.hpp"

namespace Kovra::frame {

// Texts.

namespace {

/// Room that a host may claim by a length before anybody has looked how long the text is: memory
/// that is not touched costs nothing.
constexpr std::size_t mostClaimed = std::size_t{64} << 20U;

/// How many bytes a text can become that is not short.
std::size_t roomFor(wchar_t const* text, std::size_t length) {
  if (length <= mostClaimed) return length;
  return std::min(length, ::wcsnlen(text, length) * MB_CUR_MAX);
}

/// Narrows what is the same in every locale, up to the first other character or the end of the
/// text, and tells how many characters those were. Each piece is measured first: one that was just
/// looked at is near.
std::size_t narrowAsciiText(wchar_t const* text, std::size_t length, char* out) {
  constexpr std::size_t piece = 4096;
  std::size_t done = 0;
  while (done < length) {
    std::size_t const wanted = std::min(piece, length - done);
    std::size_t const there = ::wcsnlen(text + done, wanted);
    std::size_t const narrowed = narrowAscii(text + done, there, out + done);
    done += narrowed;
    if (narrowed < wanted) break;
  }
  return done;
}

/// Narrows in the process's locale, and tells how many bytes that made. A character that the locale
/// lacks ends the text; what stands before it stays. The C library is told how long the text is:
/// sanitizers take what it is told for what it reads.
std::size_t narrow(wchar_t const* text, std::size_t length, char* out, std::size_t room) {
  constexpr auto failed = static_cast<std::size_t>(-1);
  std::mbstate_t state{};
  wchar_t const* rest = text;
  std::size_t const bytes = ::wcsnrtombs(out, &rest, ::wcsnlen(text, length), room, &state);
  if (bytes != failed) return bytes;
  auto const before = static_cast<std::size_t>(rest - text);
  rest = text;
  state = {};
  return ::wcsnrtombs(out, &rest, before, room, &state);
}

}  // namespace

PrivateText::PrivateText() {
  data_ = near_.data();
}

PrivateText::PrivateText(std::size_t length) : PrivateText() {
  makeRoom(length);
  endAt(length);
}

PrivateText::PrivateText(char const* text, std::size_t length) : PrivateText(length) {
  if (length != 0) std::memcpy(data_, text, length);  // nothing may be null
}

// A short text of ASCII stays on the stack whatever length the host states: one for the widest
// characters is six times as long.
PrivateText::PrivateText(wchar_t const* text, std::size_t length) : PrivateText() {
  std::size_t const beginning = ::wcsnlen(text, std::min(length, shortText + 1));
  bool const isShort = beginning <= shortText;
  if (isShort) {
    endAt(narrowAscii(text, beginning, data_));
    if (length_ == beginning) return;
  }
  std::size_t const room =
      isShort ? std::min(length, beginning * MB_CUR_MAX) : roomFor(text, length);
  makeRoom(room);
  std::size_t const ascii = narrowAsciiText(text, room, data_);
  bool const ends = ascii == length || ascii == room || text[ascii] == L'\0';
  endAt(ends ? ascii : ascii + narrow(text + ascii, length - ascii, data_ + ascii, room - ascii));
}

void PrivateText::makeRoom(std::size_t room) {
  if (room <= shortText) return;
  block_.reset(new char[room + padding]);
  useLargePages(block_.get(), room);
  wipe(data_, std::exchange(length_, 0));
  data_ = block_.get();
}

void PrivateText::endAt(std::size_t length) {
  length_ = length;
  std::memset(data_ + length, 0, padding);
}

PrivateText::~PrivateText() {
  wipe(data_, length_);
}

// Replies.

namespace {

std::span<std::byte> memoryOf(NearNodes& nodes) {
  return std::as_writable_bytes(std::span(nodes));
}

}  // namespace

Reply::Reply(wchar_t const* text, std::size_t length)
    : text_(text, length),
      tree_(text_.data(), text_.length(), memoryOf(nodes_)),
      scan_(frame::scan(text_.data(), text_.length(), tree_)) {}

Reply::Reply(char const* text, std::size_t length)
    : text_(text, length),
      tree_(text_.data(), text_.length(), memoryOf(nodes_)),
      scan_(frame::scan(text_.data(), text_.length(), tree_)) {}

Reply::Reply(std::string_view text, Encoding encoding, Details* details)
    : text_(text.data(), text.size()),
      tree_(text_.data(), text_.length(), memoryOf(nodes_)),
      scan_(frame::scan(text_.data(), text_.length(), tree_, {}, encoding, details)) {}

Element Reply::root(Roots roots) const {
  if (scan_.fault != Fault::none) return {};
  for (char const* const root : roots) {
    for (Element element = firstElement(tree_); element; element = element.nextSibling()) {
      if (element.name() == root) return element;
    }
  }
  return {};
}

namespace {

void parseAndClear(TiXmlDocument& document, char const* text) {
  document.Parse(text);
  document.Clear();
}

void setError(TiXmlDocument& document, int error) {
  document.ClearError();
  document.SetError(error, nullptr, nullptr, TIXML_ENCODING_UNKNOWN);
}

/// Where memory ends in the middle of an element, TinyXML loses the element. So the document has
/// room for the error's description beforehand: this one is the longest that a likeness has. Also,
/// an attribute is needed only for the one error that cannot be set without a parse, since it has a
/// place: where there is no memory for that attribute, its element is lost.
void showError(TiXmlDocument& document, char const* likeness) {
  setError(document, TiXmlBase::TIXML_ERROR_READING_ELEMENT_VALUE);
  if (std::strcmp(likeness, "<a b=") == 0) {
    parseAndClear(document, "<>");
    setError(document, TiXmlBase::TIXML_ERROR_READING_ATTRIBUTES);
  } else {
    parseAndClear(document, likeness);
  }
}

}  // namespace

void showOutcome(TiXmlDocument& document, Scan const& scan) {
  document.SetTabSize(0);  // since always: rows and columns were never looked for
  // It keeps a byte order mark in mind, for what it writes, also that of a text that was refused.
  if (scan.byteOrderMark) document.Parse("\xEF\xBB\xBF");
  if (scan.fault == Fault::none) {
    parseAndClear(document, "<>");
  } else {
    showError(document, scan.likeness);
  }
}

// Trees of hosts.

/// How much a host's tree holds.
struct HostTree::Size {
  explicit Size(TiXmlElement const* element) {
    if (element == nullptr) return;
    visitNodes(*element, [this](TiXmlNode const& node, std::size_t) {
      ++nodes;
      text += node.ValueStr().size() + 1;
      visitAttributes(node, [this](TiXmlAttribute const& attribute) {
        ++attributes;
        text += std::strlen(attribute.Name()) + attribute.ValueStr().size() + 2;
      });
    });
    if (text > Tree::longestText) throw std::bad_alloc();
  }

  std::size_t nodes = 0;
  std::size_t attributes = 0;
  std::size_t text = 0;
};

HostTree::HostTree(TiXmlElement const* element) : HostTree(element, Size(element)) {}

HostTree::HostTree(TiXmlElement const* element, Size const& size)
    : text_(size.text), tree_(text_.data(), text_.length(), memoryOf(nodes_)) {
  tree_.reserve(size.nodes * sizeof(Node) + size.attributes * sizeof(Attribute));
  if (element != nullptr) add(*element);
}

namespace {

NodeKind kindOf(TiXmlNode const& node) {
  switch (node.Type()) {
    case TiXmlNode::TINYXML_ELEMENT:
      return NodeKind::element;
    case TiXmlNode::TINYXML_COMMENT:
      return NodeKind::comment;
    case TiXmlNode::TINYXML_DECLARATION:
      return NodeKind::declaration;
    case TiXmlNode::TINYXML_TEXT:
      return static_cast<TiXmlText const&>(node).CDATA() ? NodeKind::cdata : NodeKind::text;
    default:
      return NodeKind::unknown;
  }
}

/// Puts texts one behind the other, each with a zero byte.
class TextWriter {
 public:
  explicit TextWriter(char* begin) : begin_(begin), next_(begin) {}

  Piece put(std::string_view text) {
    Piece const piece{static_cast<std::uint32_t>(next_ - begin_),
                      static_cast<std::uint32_t>(text.size())};
    next_ = std::copy(text.begin(), text.end(), next_);
    *next_++ = '\0';
    return piece;
  }

 private:
  char* begin_;
  char* next_;
};

}  // namespace

void HostTree::add(TiXmlElement const& element) {
  TextWriter texts(text_.data());
  TreeBuilder builder(tree_);
  visitNodes(element, [&, this](TiXmlNode const& node, std::size_t depth) {
    while (builder.depth() > depth) builder.close();
    std::uint32_t const copy =
        builder.add(kindOf(node), texts.put(node.ValueStr()), 0, text_.data());
    visitAttributes(node, [&, this](TiXmlAttribute const& attribute) {
      // TinyXML finds it by what stands before a zero byte.
      tree_.add(Attribute{texts.put(attribute.Name()), texts.put(attribute.ValueStr())},
                text_.data());
    });
    if (node.FirstChild() != nullptr) builder.open(copy);
  });
  while (builder.depth() > 0) builder.close();
}

}  // namespace Kovra::frame
