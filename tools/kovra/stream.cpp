#include "stream.hpp"

#include <algorithm>
#include <array>
#include <cstring>
#include <kovra.hpp>
#include <nlohmann/json.hpp>
#include <set>
#include <utility>

namespace Kovra::tool {

namespace {

constexpr std::size_t chunk = 1 << 16;
constexpr std::size_t npos = std::string_view::npos;

/// More than it takes to see that a reply begins: a bracket, and the name of a root or "?xml", and
/// what ends it.
constexpr std::size_t longestBeginning = 64;

bool isBlank(char letter) {
  return letter == ' ' || letter == '\t' || letter == '\r' || letter == '\n';
}

bool beginsName(char letter) {
  auto const byte = static_cast<unsigned char>(letter);
  return (byte | 0x20U) - 'a' < 26U || letter == '_' || letter == ':' || byte >= 0x80;
}

constexpr std::array<bool, 256> nameEnders = [] {
  std::array<bool, 256> all{};
  for (char const letter : std::string_view(" \t\r\n/><\"'=")) {
    all[static_cast<unsigned char>(letter)] = true;
  }
  return all;
}();

std::size_t nameEnd(std::string_view bytes, std::size_t from) {
  while (from < bytes.size() && !nameEnders[static_cast<unsigned char>(bytes[from])]) ++from;
  return from;
}

std::size_t find(std::string_view bytes, char letter, std::size_t from) {
  if (from >= bytes.size()) return npos;
  void const* const found = std::memchr(bytes.data() + from, letter, bytes.size() - from);
  return found == nullptr
             ? npos
             : static_cast<std::size_t>(static_cast<char const*>(found) - bytes.data());
}

enum class Answer { no, yes, later };

/// Does `text` stand at `at`? Later, where that depends on bytes that are not there yet.
Answer stands(std::string_view text, std::string_view bytes, std::size_t at) {
  std::string_view const there = bytes.substr(at, text.size());
  if (there != text.substr(0, there.size())) return Answer::no;
  return there.size() == text.size() ? Answer::yes : Answer::later;
}

/// "<?xml" and the end of the name.
Answer declarationStands(std::string_view bytes, std::size_t at) {
  constexpr std::string_view beginning = "<?xml";
  Answer const answer = stands(beginning, bytes, at);
  if (answer != Answer::yes) return answer;
  std::size_t const behind = at + beginning.size();
  if (behind == bytes.size()) return Answer::later;
  return isBlank(bytes[behind]) || bytes[behind] == '?' ? Answer::yes : Answer::no;
}

/// Of names of equal length, or nearly so.
std::uint64_t lengthBit(std::string_view name) {
  return std::uint64_t{1} << name.size() % 64;
}

void addNames(ElementDescription const& around, std::set<std::string>& names) {
  for (ElementDescription const& element : around.elements()) {
    names.insert(element.name());
    addNames(element, names);
  }
}

/// The roots of replies that are the name of nothing else.
std::vector<std::string> unmistakableRoots() {
  std::set<std::string> inner;
  std::set<std::string> roots;
  for (Message const& message : messages()) {
    addNames(message.root(), inner);
    for (std::string& root : message.roots()) roots.insert(std::move(root));
  }
  std::vector<std::string> unmistakable;
  std::set_difference(roots.begin(), roots.end(), inner.begin(), inner.end(),
                      std::back_inserter(unmistakable));
  return unmistakable;
}

}  // namespace

// Where replies end.

/// Most names differ from all roots in their first letter or their length.
Splitter::Splitter() : roots_(unmistakableRoots()) {
  for (std::string const& root : roots_) lengthsOf(root.front()) |= lengthBit(root);
}

std::uint64_t& Splitter::lengthsOf(char first) {
  return lengths_[static_cast<unsigned char>(first)];
}

bool Splitter::isRoot(std::string_view name) {
  if (name.empty() || (lengthsOf(name.front()) & lengthBit(name)) == 0) return false;
  return std::binary_search(roots_.begin(), roots_.end(), name, std::less<>());
}

Splitter::Found Splitter::look(std::string_view bytes, bool isAll) {
  found_ = {};
  while (!found_.isWhole && step(bytes)) {
  }
  if (found_.isWhole || !isAll) return found_;
  std::size_t const next = nextBegin(bytes, 1);
  endAt(std::min(next, bytes.size()));
  return found_;
}

std::size_t Splitter::nextBegin(std::string_view bytes, std::size_t from) {
  for (std::size_t at = from; (at = find(bytes, '<', at)) != npos; ++at) {
    if (isRootThere(bytes, at) || declarationStands(bytes, at) == Answer::yes) return at;
  }
  return npos;
}

bool Splitter::isRootThere(std::string_view bytes, std::size_t at) {
  std::size_t const end = nameEnd(bytes, at + 1);
  if (end == bytes.size()) return false;
  return isRoot(bytes.substr(at + 1, end - at - 1));
}

/// Goes one piece of markup further; false where more bytes are needed.
bool Splitter::step(std::string_view bytes) {
  if (!isInside_ && !prolog(bytes)) return false;
  if (found_.isWhole) return true;
  std::size_t const next = find(bytes, '<', at_);
  at_ = next == npos ? bytes.size() : next;
  return at_ + 1 < bytes.size() && markup(bytes);
}

/// Before the root there are blanks and markup; anything else is a reply of its own, as far as the
/// next markup.
bool Splitter::prolog(std::string_view bytes) {
  constexpr std::string_view mark = "\xef\xbb\xbf";
  Answer const marked = stands(mark, bytes, at_);
  if (marked == Answer::yes) at_ += mark.size();
  if (marked == Answer::later && at_ < bytes.size()) return false;
  while (at_ < bytes.size() && isBlank(bytes[at_])) ++at_;
  if (at_ == bytes.size()) return false;
  if (bytes[at_] == '<') return true;
  std::size_t const next = find(bytes, '<', at_);
  return next != npos && endAt(next);
}

bool Splitter::markup(std::string_view bytes) {
  char const second = bytes[at_ + 1];
  if (second == '/') return endTag(bytes);
  if (second == '?') {
    Answer const declared = declarationStands(bytes, at_);
    if (declared == Answer::later) return false;
    if (declared == Answer::yes && (isInside_ || hasMarkup_)) return endAt(at_);
    if (!pass(bytes, instruction_)) return false;
    hasMarkup_ |= declared == Answer::yes;
    return true;
  }
  if (second == '!') {
    Answer const isComment = stands("<!--", bytes, at_);
    Answer const isData = stands("<![CDATA[", bytes, at_);
    if (isComment == Answer::later || isData == Answer::later) return false;
    return pass(bytes, isComment == Answer::yes ? comment_
                       : isData == Answer::yes  ? data_
                                                : declaration_);
  }
  if (beginsName(second)) return startTag(bytes);
  hasMarkup_ = true;
  ++at_;
  return true;
}

/// Goes behind what ends the markup at hand.
bool Splitter::pass(std::string_view bytes, Ending& ending) {
  std::size_t const from = std::max(at_ + 2, ending.searched);
  std::size_t const found = bytes.find(ending.text, from);
  if (found == npos) {
    ending.searched = std::max(from, bytes.size() - std::min(bytes.size(), ending.text.size() - 1));
    return false;
  }
  ending.searched = found;
  at_ = found + ending.text.size();
  return true;
}

bool Splitter::startTag(std::string_view bytes) {
  std::size_t const behind = nameEnd(bytes, at_ + 1);
  if (behind == bytes.size()) return false;
  std::string_view const name = bytes.substr(at_ + 1, behind - at_ - 1);
  if (isInside_ && isRoot(name)) return endAt(at_);
  std::size_t const end = tagEnd(bytes, behind);
  if (end == npos) return false;
  bool const isClosed = bytes[end] == '>' && bytes[end - 1] == '/';
  if (!isInside_) root_ = name;
  if (name == root_ && !isClosed) ++open_;
  at_ = bytes[end] == '>' ? end + 1 : end;
  tagAt_ = 0;
  if (!isInside_ && isClosed) return endAt(at_);
  isInside_ = true;
  return true;
}

/// Of the bracket that ends the tag; in a broken one, of that which begins the next. A value that
/// holds one has lost its quote.
std::size_t Splitter::tagEnd(std::string_view bytes, std::size_t from) {
  if (tagAt_ < from) {
    tagAt_ = from;
    quote_ = '\0';
  }
  for (; tagAt_ < bytes.size(); ++tagAt_) {
    char const letter = bytes[tagAt_];
    if (letter == '<' || (letter == '>' && quote_ == '\0')) return tagAt_;
    if (letter != '"' && letter != '\'') continue;
    if (quote_ == '\0') {
      quote_ = letter;
    } else if (quote_ == letter) {
      quote_ = '\0';
    }
  }
  return npos;
}

bool Splitter::endTag(std::string_view bytes) {
  std::size_t const behind = nameEnd(bytes, at_ + 2);
  if (behind == bytes.size()) return false;
  std::string_view const name = bytes.substr(at_ + 2, behind - at_ - 2);
  std::size_t const end = tagEnd(bytes, behind);
  if (end == npos) return false;
  std::size_t const next = bytes[end] == '>' ? end + 1 : end;
  tagAt_ = 0;
  bool const closesRoot = isInside_ && name == root_ && --open_ == 0;
  if (closesRoot || !isInside_) return endAt(next);
  at_ = next;
  return true;
}

void Splitter::restart() {
  restartBehind(npos);
}

/// What was searched in vain stays searched.
void Splitter::restartBehind(std::size_t length) {
  at_ = open_ = tagAt_ = 0;
  isInside_ = hasMarkup_ = false;
  for (Ending* const ending : {&comment_, &data_, &instruction_, &declaration_}) {
    ending->searched -= std::min(ending->searched, length);
  }
}

bool Splitter::endAt(std::size_t length) {
  found_ = {true, length};
  restartBehind(length);
  return true;
}

// Replies of an input.

ReplyStream::ReplyStream(std::string const& path, Division division, std::size_t limit,
                         std::function<void()> beforeWaiting)
    : file_(path),
      division_(division),
      limit_(limit),
      beforeWaiting_(std::move(beforeWaiting)),
      buffer_(chunk) {}

bool ReplyStream::next(Item& item) {
  return division_ == Division::line ? nextLine(item) : nextReply(item);
}

void ReplyStream::fill() {
  if (end_ == buffer_.size() && begin_ > 0) {
    std::memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
    end_ -= begin_;
    begin_ = 0;
  }
  if (end_ == buffer_.size()) buffer_.resize(2 * buffer_.size());
  if (!file_.isReady()) beforeWaiting_();
  std::size_t const got = file_.read(buffer_.data() + end_, buffer_.size() - end_);
  end_ += got;
  isAtEnd_ = got == 0;
}

void ReplyStream::drop(std::size_t length) {
  begin_ += length;
  looked_ -= std::min(looked_, length);
}

namespace {

void dropBlanks(std::string_view& text) {
  while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
}

/// Comments, and blanks: what may stand behind a document.
bool isNothing(std::string_view text) {
  for (dropBlanks(text); text.substr(0, 4) == "<!--"; dropBlanks(text)) {
    std::size_t const end = text.find("-->", 4);
    if (end == npos) return false;
    text.remove_prefix(end + 3);
  }
  return text.empty();
}

}  // namespace

/// Whether a reply is too large does not depend on how much of it is there at once: it is known
/// when more is there than the limit and what it may take to see that the next one has begun.
bool ReplyStream::nextReply(Item& item) {
  for (;;) {
    skipBlanks();
    std::size_t const zero = find(rest(), '\0', looked_);
    std::string_view const bytes = rest().substr(0, zero);
    looked_ = bytes.size();
    bool const isAll = zero != npos || isAtEnd_;
    if (isPassing_) {
      pass(bytes, isAll);
      if (isPassing_) fill();
      continue;
    }
    bool const isLong = bytes.size() > limit_ && bytes.size() - limit_ > longestBeginning;
    Splitter::Found const found = splitter_.look(bytes, isAll && !isLong);
    if (found.isWhole ? found.length > limit_ : isLong) return passOver(item);
    if (!found.isWhole) {
      fill();
      continue;
    }
    bool const isLast = isAll && found.length == bytes.size();
    bool const isReply = !isLast || !isNothing(bytes);
    if (isReply) item = {bytes.substr(0, found.length), ++number_, false};
    drop(found.length + (isLast && zero != npos ? 1 : 0));
    isBegun_ = false;
    if (isReply) return true;
    if (zero == npos) return false;
  }
}

/// Those in front of a reply.
void ReplyStream::skipBlanks() {
  if (isBegun_) return;
  std::string_view text = rest();
  dropBlanks(text);
  drop(rest().size() - text.size());
  isBegun_ = !text.empty();
}

/// Tells of a reply that is too large, of which more is to come.
bool ReplyStream::passOver(Item& item) {
  item = {{}, ++number_, true};
  isPassing_ = true;
  drop(1);
  splitter_.restart();
  return true;
}

/// Drops what belongs to a reply that is passed over.
void ReplyStream::pass(std::string_view bytes, bool isAll) {
  std::size_t const next = splitter_.nextBegin(bytes, 0);
  isPassing_ = next == npos && !isAll;
  if (isPassing_) {
    drop(bytes.size() - std::min(bytes.size(), longestBeginning));
    return;
  }
  drop(next == npos ? std::min(bytes.size() + 1, rest().size()) : next);
  isBegun_ = false;
}

bool ReplyStream::nextLine(Item& item) {
  for (;;) {
    std::size_t const end = find(rest(), '\n', looked_);
    std::string_view line = rest().substr(0, end);
    looked_ = line.size();
    bool const isEnded = end != npos || isAtEnd_;
    if (!isEnded) {
      if (line.size() > limit_) {
        isPassing_ = true;
        drop(line.size());
      }
      fill();
      continue;
    }
    if (end == npos && line.empty() && !isPassing_) return false;
    item = {line, ++number_, isPassing_ || line.size() > limit_};
    isPassing_ = false;
    drop(line.size() + (end == npos ? 0 : 1));
    dropBlanks(line);
    if (item.isTooLarge) {
      item.text = {};
      return true;
    }
    if (line.empty()) continue;
    if (line.front() == '"') item.text = unquoted(line);
    return true;
  }
}

/// The text that a JSON string stands for; what is none stays as it is, and is refused as what it
/// is.
std::string_view ReplyStream::unquoted(std::string_view line) {
  nlohmann::json const text = nlohmann::json::parse(line, nullptr, false);
  if (!text.is_string()) return line;
  unquoted_ = text.get_ref<std::string const&>();
  return unquoted_;
}

}  // namespace Kovra::tool
