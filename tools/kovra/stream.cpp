#include "stream.hpp"

#include <algorithm>
#include <array>
#include <cstring>
#include <kovra.hpp>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <utility>

namespace Kovra::tool {

namespace {

using namespace std::string_view_literals;

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

bool isAscii(char letter) {
  return static_cast<unsigned char>(letter) < 0x80;
}

constexpr std::array<bool, 256> nameEnders = [] {
  std::array<bool, 256> all{};
  for (char const letter : std::string_view(" \t\r\n/><\"'=")) {
    all[static_cast<unsigned char>(letter)] = true;
  }
  return all;
}();

std::size_t find(std::string_view bytes, char letter, std::size_t from) {
  if (from >= bytes.size()) return npos;
  void const* const found = std::memchr(bytes.data() + from, letter, bytes.size() - from);
  return found == nullptr
             ? npos
             : static_cast<std::size_t>(static_cast<char const*>(found) - bytes.data());
}

/// Does `text` stand at `at`? Later, where that depends on bytes that are not there yet.
Answer stands(std::string_view text, std::string_view bytes, std::size_t at) {
  std::string_view const there = bytes.substr(at, text.size());
  if (there != text.substr(0, there.size())) return Answer::no;
  return there.size() == text.size() ? Answer::yes : Answer::later;
}

constexpr std::string_view littleMark = "\xFF\xFE";
constexpr std::string_view bigMark = "\xFE\xFF";

/// How UTF-16 begins, with a byte order mark or a declaration. Only what declares itself is read.
struct WideBeginning {
  std::string_view bytes;
  Form form;
};
constexpr WideBeginning wideBeginnings[] = {
    {littleMark, Form::little},
    {bigMark, Form::big},
    {"<\0?\0"sv, Form::little},
    {"\0<\0?"sv, Form::big},
};

/// What shows within other text that UTF-16 begins, and where its bracket stands.
struct WideDeclaration {
  std::string_view bytes;
  std::size_t bracket;
};
constexpr WideDeclaration wideDeclarations[] = {
    {"\xFF\xFE<\0?\0x\0m\0l\0"sv, 2},
    {"\xFE\xFF\0<\0?\0x\0m\0l"sv, 3},
};

/// Of a reply that begins with these bytes; nothing, where that depends on more of them.
std::optional<Form> formOf(std::string_view bytes, bool isAll) {
  bool isOpen = false;
  for (auto const& [beginning, form] : wideBeginnings) {
    Answer const answer = stands(beginning, bytes, 0);
    if (answer == Answer::yes) return form;
    isOpen |= answer == Answer::later;
  }
  if (isOpen && !isAll) return {};
  return Form::bytes;
}

/// So many bytes before a NUL byte belong to UTF-16 that begins there: its mark and its bracket.
std::size_t wideBefore(std::string_view bytes, std::size_t zero) {
  for (std::string_view const beginning : {"\xFF\xFE<"sv, bigMark}) {
    if (bytes.substr(0, zero).ends_with(beginning)) return beginning.size();
  }
  return 0;
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

bool endsName(char letter) {
  return nameEnders[static_cast<unsigned char>(letter)];
}

/// Else the name was cut, and may have been another one.
bool endsWhole(char letter) {
  return letter == '>' || letter == '/' || isBlank(letter);
}

}  // namespace

// Roots of replies.

/// The names of all roots. Some are the names of inner elements as well: a root shows that the next
/// reply has begun where the one at hand cannot hold it.
class Roots {
 public:
  /// The roots that a reply may hold.
  using Inner = std::vector<bool>;

  static Roots const& all();

  /// npos for what is none.
  std::size_t find(std::string_view name) const;
  std::size_t longest() const { return longest_; }
  /// A reply of an unknown root may hold what any other does.
  Inner const& inside(std::string_view root) const;
  Inner const& nothing() const { return nothing_; }

 private:
  Roots();
  void addInner(Message const& message);
  std::uint64_t& lengthsOf(char first) { return lengths_[static_cast<unsigned char>(first)]; }

  std::vector<std::string> names_;            ///< sorted
  std::array<std::uint64_t, 256> lengths_{};  ///< that they have, by their first letter
  std::size_t longest_ = 0;
  std::vector<Inner> inside_;  ///< replies of each root
  Inner anywhere_;
  Inner nothing_;
};

Roots const& Roots::all() {
  static Roots const only;
  return only;
}

/// Most names differ from all roots in their first letter or their length.
Roots::Roots() {
  std::set<std::string> names;
  for (Message const& message : messages()) {
    for (std::string& root : message.roots()) names.insert(std::move(root));
  }
  names_.assign(names.begin(), names.end());
  for (std::string const& name : names_) {
    lengthsOf(name.front()) |= lengthBit(name);
    longest_ = std::max(longest_, name.size());
  }
  anywhere_ = nothing_ = Inner(names_.size());
  inside_.assign(names_.size(), nothing_);
  for (Message const& message : messages()) addInner(message);
}

void Roots::addInner(Message const& message) {
  std::set<std::string> inner;
  addNames(message.root(), inner);
  for (std::string const& name : inner) {
    std::size_t const index = find(name);
    if (index == npos) continue;
    anywhere_[index] = true;
    for (std::string const& root : message.roots()) inside_[find(root)][index] = true;
  }
}

std::size_t Roots::find(std::string_view name) const {
  if (name.empty()) return npos;
  if ((lengths_[static_cast<unsigned char>(name.front())] & lengthBit(name)) == 0) return npos;
  auto const place = std::lower_bound(names_.begin(), names_.end(), name);
  if (place == names_.end() || *place != name) return npos;
  return static_cast<std::size_t>(place - names_.begin());
}

Roots::Inner const& Roots::inside(std::string_view root) const {
  std::size_t const index = find(root);
  return index == npos ? anywhere_ : inside_[index];
}

// Where replies end.

Splitter::Splitter() : roots_(Roots::all()) {
  restartBehind(0);
}

Splitter::Found Splitter::look(std::string_view bytes, bool isAll) {
  found_ = {};
  isAll_ = isAll;
  while (!found_.isWhole && step(bytes)) {
  }
  if (!found_.isWhole && isAll) endAt(std::min(nextBegin(bytes, certain()), bytes.size()));
  return found_;
}

std::size_t Splitter::nextBegin(std::string_view bytes, std::size_t from) const {
  for (std::size_t at = from; (at = find(bytes, '<', at)) != npos; ++at) {
    if (begins(bytes, at) == Answer::yes) return at;
    for (auto const& [text, bracket] : wideDeclarations) {
      if (at >= from + bracket && stands(text, bytes, at - bracket) == Answer::yes) {
        return at - bracket;
      }
    }
  }
  return npos;
}

/// Is this a root that the reply at hand cannot hold?
bool Splitter::isNext(std::string_view name) const {
  std::size_t const index = roots_.find(name);
  return index != npos && !(*inner_)[index];
}

/// Does another reply begin at the bracket at `at`?
Answer Splitter::begins(std::string_view bytes, std::size_t at) const {
  Answer const declared = declarationStands(bytes, at);
  if (declared != Answer::no) return declared;
  std::string_view const name = bytes.substr(at + 1, roots_.longest() + 1);
  auto const* const end = std::find_if(name.begin(), name.end(), endsName);
  if (end == name.end()) return name.size() > roots_.longest() ? Answer::no : Answer::later;
  bool const isNextOne = endsWhole(*end) && isNext({name.begin(), end});
  return isNextOne ? Answer::yes : Answer::no;
}

/// Goes one piece of markup further; false where more bytes are needed.
bool Splitter::step(std::string_view bytes) {
  if (isInSubset_) return subset(bytes);
  if (!isInside_ && !prolog(bytes)) return false;
  if (found_.isWhole) return true;
  std::size_t const next = find(bytes, '<', at_);
  at_ = next == npos ? bytes.size() : next;
  return at_ + 1 < bytes.size() && markup(bytes);
}

/// Before the root there are blanks, byte order marks and markup; anything else is a reply of its
/// own.
bool Splitter::prolog(std::string_view bytes) {
  constexpr std::string_view mark = "\xef\xbb\xbf";
  for (;; at_ += mark.size()) {
    while (at_ < bytes.size() && isBlank(bytes[at_])) ++at_;
    if (at_ == bytes.size()) return false;
    Answer const marked = stands(mark, bytes, at_);
    if (marked == Answer::later) return false;
    if (marked == Answer::no) break;
  }
  return bytes[at_] == '<' || junk(bytes, at_);
}

/// As far as the next markup.
bool Splitter::junk(std::string_view bytes, std::size_t from) {
  bracket_ = std::min(find(bytes, '<', std::max(from, bracket_)), bytes.size());
  return bracket_ < bytes.size() && endBefore(bytes, bracket_);
}

bool Splitter::markup(std::string_view bytes) {
  char const second = bytes[at_ + 1];
  if (second == '/') return endTag(bytes);
  if (second == '?') return instruction(bytes);
  if (second == '!') return declaration(bytes);
  if (beginsName(second)) return startTag(bytes);
  return isInside_ ? goOn(at_ + 1) : junk(bytes, at_ + 1);
}

bool Splitter::instruction(std::string_view bytes) {
  Answer const declared = declarationStands(bytes, at_);
  if (declared == Answer::later) return false;
  if (declared == Answer::yes && (isInside_ || isInSubset_ || isDeclared_)) return endAt(at_);
  if (!findNameEnd(bytes, at_ + 2)) return false;
  if (bytes[nameEnd_] == '<') return cutAt(bytes, nameEnd_);
  if (!pass(bytes, declared == Answer::yes ? xmlDeclaration_ : instruction_)) return false;
  isDeclared_ |= declared == Answer::yes && !found_.isWhole;
  return true;
}

bool Splitter::declaration(std::string_view bytes) {
  Answer const isComment = stands(comment_.opening, bytes, at_);
  Answer const isData = stands(data_.opening, bytes, at_);
  if (isComment == Answer::later || isData == Answer::later) return false;
  if (isComment == Answer::yes) return pass(bytes, comment_);
  if (isData == Answer::yes) return pass(bytes, data_);
  return ownDeclaration(bytes);
}

/// One that is neither comment nor data. In front of its root a reply may have one with literals,
/// and with a subset of others in brackets.
bool Splitter::ownDeclaration(std::string_view bytes) {
  for (tagEnd_ = std::max(tagEnd_, at_ + 2); tagEnd_ < bytes.size(); ++tagEnd_) {
    char const letter = bytes[tagEnd_];
    if (letter == '<') {
      Answer const isCut = quote_ == '\0' ? Answer::yes : begins(bytes, tagEnd_);
      if (isCut == Answer::later) return false;
      if (isCut == Answer::yes) return cutAt(bytes, tagEnd_);
    } else if (quote_ != '\0') {
      if (letter == quote_) quote_ = '\0';
    } else if (letter == '>') {
      return goOn(tagEnd_ + 1);
    } else if (!isInside_ && (letter == '"' || letter == '\'')) {
      quote_ = letter;
    } else if (!isInside_ && !isInSubset_ && letter == '[' && tagEnd_ > at_ + 2) {
      isInSubset_ = true;
      return goOn(tagEnd_ + 1);
    }
  }
  return false;
}

/// To its next declaration, or behind it. An element within shows that it was cut.
bool Splitter::subset(std::string_view bytes) {
  at_ = std::min(bytes.find_first_of("<]", at_), bytes.size());
  if (at_ + 1 >= bytes.size()) return false;
  char const second = bytes[at_ + 1];
  if (bytes[at_] == '<') {
    if (second == '!' || second == '?') return markup(bytes);
    bool const isElement = second == '/' || (beginsName(second) && isAscii(second));
    return isElement ? endBefore(bytes, at_) : goOn(at_ + 1);
  }
  tagEnd_ = std::max(tagEnd_, at_ + 1);
  while (tagEnd_ < bytes.size() && isBlank(bytes[tagEnd_])) ++tagEnd_;
  if (tagEnd_ == bytes.size()) return false;
  isInSubset_ = bytes[tagEnd_] != '>';
  return goOn(isInSubset_ ? at_ + 1 : tagEnd_ + 1);
}

/// Goes behind the construct at hand, or where it was cut.
bool Splitter::pass(std::string_view bytes, Construct& construct) {
  std::string_view const ending = construct.ending;
  std::size_t const from = std::max(at_ + 2, construct.searched);
  std::size_t const found = bytes.find(ending, from);
  bool const isEnded = found != npos;
  construct.searched =
      isEnded ? found : std::max(from, bytes.size() - std::min(bytes.size(), ending.size() - 1));
  // Of an ending that is there the last byte is left out: as much is looked at before it comes.
  std::size_t const cut =
      cutOf(bytes.substr(0, isEnded ? found + ending.size() - 1 : npos), construct);
  if (cut != npos) return cutAt(bytes, cut);
  return isEnded && goOn(found + ending.size());
}

/// Where a construct with all these bytes was cut; npos where nothing shows that it was.
std::size_t Splitter::cutOf(std::string_view bytes, Construct const& construct) {
  for (bracket_ = std::max(bracket_, at_ + 1);; ++bracket_) {
    bracket_ = std::min(find(bytes, '<', bracket_), bytes.size());
    if (quoted_ != npos && bracket_ - quoted_ > longestQuotation) return quoted_;
    if (bracket_ == bytes.size()) return npos;
    if (!construct.isQuoting) return bracket_;
    Answer const begun = quoted_ == npos ? begins(bytes, bracket_) : Answer::no;
    if (begun == Answer::yes) quoted_ = bracket_;
    Answer const opens = quoted_ == npos ? Answer::no : stands(construct.opening, bytes, bracket_);
    if (opens == Answer::yes) return quoted_;
    if (begun == Answer::later || opens == Answer::later) return npos;
  }
}

bool Splitter::startTag(std::string_view bytes) {
  if (!findNameEnd(bytes, at_ + 1)) return false;
  std::string_view const name = bytes.substr(at_ + 1, nameEnd_ - at_ - 1);
  if (isInside_ && endsWhole(bytes[nameEnd_]) && isNext(name)) return endAt(at_);
  if (!findTagEnd(bytes)) return false;
  bool const isWhole = bytes[tagEnd_] == '>';
  bool const isClosed = isWhole && bytes[tagEnd_ - 1] == '/';
  std::size_t const behind = tagEnd_ + (isWhole ? 1 : 0);
  if (!isInside_) {
    root_ = name;
    // What was cut within its root's tag holds nothing. A bracket in a value cuts none.
    bool const isCut = !isWhole && quote_ == '\0';
    inner_ = isCut ? &roots_.nothing() : &roots_.inside(name);
    if (isClosed) return endAt(behind);
  }
  if (name == root_ && !isClosed) ++open_;
  isInside_ = true;
  return goOn(behind);
}

bool Splitter::endTag(std::string_view bytes) {
  if (!findNameEnd(bytes, at_ + 2) || !findTagEnd(bytes)) return false;
  std::string_view const name = bytes.substr(at_ + 2, nameEnd_ - at_ - 2);
  std::size_t const behind = tagEnd_ + (bytes[tagEnd_] == '>' ? 1 : 0);
  if (!isInside_ && bytes[tagEnd_] == '<') return endBefore(bytes, behind);
  bool const closesRoot = isInside_ && name == root_ && --open_ == 0;
  return closesRoot || !isInside_ ? endAt(behind) : goOn(behind);
}

/// Of the name that begins at `from`; false where it is not there yet.
bool Splitter::findNameEnd(std::string_view bytes, std::size_t from) {
  std::size_t end = std::max(nameEnd_, from);
  while (end < bytes.size() && !endsName(bytes[end])) ++end;
  nameEnd_ = end;
  return end < bytes.size();
}

/// The bracket that ends the tag; in a broken one, that which begins the next. A value that holds
/// one has lost its quote.
bool Splitter::findTagEnd(std::string_view bytes) {
  for (tagEnd_ = std::max(tagEnd_, nameEnd_); tagEnd_ < bytes.size(); ++tagEnd_) {
    char const letter = bytes[tagEnd_];
    if (letter == '<' || (letter == '>' && quote_ == '\0')) return true;
    if (letter != '"' && letter != '\'') continue;
    if (quote_ == '\0') {
      quote_ = letter;
    } else if (quote_ == letter) {
      quote_ = '\0';
    }
  }
  return false;
}

/// Behind the markup at hand. Always true.
bool Splitter::goOn(std::size_t at) {
  at_ = at;
  nameEnd_ = tagEnd_ = bracket_ = 0;
  quoted_ = npos;
  quote_ = '\0';
  return true;
}

/// What was cut before its root is a reply of its own.
bool Splitter::cutAt(std::string_view bytes, std::size_t at) {
  return isInside_ ? goOn(at) : endBefore(bytes, at);
}

/// Behind a mark it may be the bracket of UTF-16, which a NUL byte shows.
bool Splitter::endBefore(std::string_view bytes, std::size_t bracket) {
  bool const isLast = bracket + 1 == bytes.size() && !isAll_;
  if (isLast && bytes.substr(0, bracket).ends_with(littleMark)) return false;
  endAt(bracket);
  found_.isCut = true;
  return true;
}

bool Splitter::endAt(std::size_t length) {
  found_ = {true, length, false};
  restartBehind(length);
  return true;
}

/// What was searched in vain stays searched.
void Splitter::restartBehind(std::size_t length) {
  goOn(0);
  open_ = 0;
  isInside_ = isInSubset_ = isDeclared_ = false;
  inner_ = &roots_.nothing();
  for (Construct* const construct : {&comment_, &data_, &instruction_, &xmlDeclaration_}) {
    construct->searched -= std::min(construct->searched, length);
  }
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
  endLooked_ -= std::min(endLooked_, length);
  beginLooked_ -= std::min(beginLooked_, length);
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
/// when more is there than the limit and what it may take to see that the next one has begun, and
/// no more than that is looked at.
bool ReplyStream::nextReply(Item& item) {
  for (;;) {
    if (!beginReply()) {
      fill();
      continue;
    }
    std::size_t const stop = findStop();
    std::string_view const bytes = rest().substr(0, stop);
    bool const isAll = stop != npos || isAtEnd_;
    if (isPassing_) {
      pass(bytes, isAll);
      if (isPassing_) fill();
      continue;
    }
    if (stop == 0) {
      drop(1);  // a NUL byte between replies
      endReply();
      continue;
    }
    // What ends UTF-16 is known some bytes later, too.
    std::size_t const margin = isWide() && !isAll ? 2 * longestBeginning : longestBeginning;
    bool const isLong = bytes.size() > limit_ && bytes.size() - limit_ > margin;
    Splitter::Found const found = look(bytes, isAll, isLong);
    if (!found.isWhole) {
      if (isLong) return passOver(item, certainOf(bytes));
      fill();
      continue;
    }
    bool const isLast = isAll && found.length == bytes.size();
    bool const isTooLarge = found.length > limit_;
    bool const isReply = isTooLarge || !isLast || !isNothing(seen(bytes));
    if (isReply) item = {bytes.substr(0, isTooLarge ? 0 : found.length), ++number_, isTooLarge};
    drop(found.length);
    endReply();
    if (isReply) return true;
    if (stop == npos) return false;
  }
}

/// Passes over the blanks in front of a reply, and sees in which form it is; false where more bytes
/// are needed for that.
bool ReplyStream::beginReply() {
  if (form_) return true;
  std::string_view text = rest();
  dropBlanks(text);
  std::size_t const blanks = rest().size() - text.size();
  drop(blanks);
  splitter_.restartBehind(blanks);
  form_ = formOf(text, isAtEnd_);
  if (!form_) return false;
  if (isWide() != wasWide_) splitter_.restartBehind(npos);
  wasWide_ = isWide();
  return true;
}

/// Behind a reply.
void ReplyStream::endReply() {
  form_.reset();
  narrowed_.clear();
}

/// Where a reply ends whatever it holds; npos, where nothing shows that. Bytes end at a NUL byte,
/// or where UTF-16 begins; UTF-16 ends where bytes or a mark begin a reply.
std::size_t ReplyStream::findStop() {
  std::string_view const bytes = rest();
  if (isWide()) {
    std::size_t const own = isPassing_ ? 0 : 1;
    std::size_t const from = std::max(beginLooked_, longestBeginning + own) - longestBeginning;
    std::size_t const next = unread_.nextBegin(bytes, from);
    beginLooked_ = std::min(next, bytes.size());
    return next;
  }
  std::size_t const zero = find(bytes, '\0', endLooked_);
  endLooked_ = std::min(zero, bytes.size());
  return zero == npos ? npos : zero - wideBefore(bytes, zero);
}

/// So many bytes of a reply are looked at.
std::size_t ReplyStream::shown() const {
  std::size_t const surplus = longestBeginning + 1;
  return std::min(limit_, npos - surplus) + surplus;
}

/// UTF-16 is shown to the splitter bit by bit, so that a short reply costs no more than it has.
/// What it saw of the next one, before that was known, is taken back.
Splitter::Found ReplyStream::look(std::string_view bytes, bool isAll, bool isLong) {
  std::string_view const view = bytes.substr(0, shown());
  if (!isWide()) return splitter_.look(view, isAll && !isLong);
  if (narrowed_.size() > view.size() / 2) {
    narrowed_.clear();
    splitter_.restartBehind(npos);
  }
  Splitter::Found found;
  for (bool isShown = false; !found.isWhole && !isShown;) {
    std::size_t const units = std::max<std::size_t>(1024, 2 * narrowed_.size());
    isShown = units >= view.size() / 2;
    narrow(view.substr(0, 2 * units), narrowed_);
    found = splitter_.look(narrowed_, false);
  }
  if (!found.isWhole && isAll && !isLong) {
    std::size_t const length = splitter_.look(narrowed_, true).length;
    // What was cut may have lost the half of a unit.
    return {true, length == narrowed_.size() ? bytes.size() : 2 * length, false};
  }
  if (!found.isWhole) return found;
  found.length *= 2;
  // The bracket that cuts it may be that of bytes, and the half of a unit.
  if (found.isCut && !isAll && bytes.size() - found.length < longestBeginning) return {};
  found.length = beforeMark(bytes, found.length);
  return found;
}

/// How much of what was looked at belongs to a reply whatever follows. Of UTF-16 that is no more
/// than bytes and marks that begin the next one would have shown.
std::size_t ReplyStream::certainOf(std::string_view bytes) const {
  if (!isWide()) return std::min(splitter_.certain(), shown());
  return beforeMark(bytes, std::min(2 * splitter_.certain(), shown() - longestBeginning));
}

/// So many bytes, in whole units, and without a mark at their end: that belongs to the next reply.
std::size_t ReplyStream::beforeMark(std::string_view bytes, std::size_t length) const {
  if (!isWide()) return length;
  std::size_t const whole = length / 2 * 2;
  std::string_view const mark = form_ == Form::little ? littleMark : bigMark;
  bool const isMarked = whole > mark.size() && bytes.substr(0, whole).ends_with(mark);
  return whole - (isMarked ? mark.size() : 0);
}

/// Adds what `narrowed` lacks of UTF-16: a byte for each unit, which is its letter in ASCII, a
/// blank for a mark, and else one that names may have.
void ReplyStream::narrow(std::string_view bytes, std::string& narrowed) const {
  std::size_t const low = form_ == Form::little ? 0 : 1;
  for (std::size_t at = 2 * narrowed.size(); at + 1 < bytes.size(); at += 2) {
    auto const lower = static_cast<unsigned char>(bytes[at + low]);
    auto const upper = static_cast<unsigned char>(bytes[at + 1 - low]);
    unsigned const code = lower | unsigned{upper} << 8U;
    bool const isLetter = code != 0 && code < 0x80;
    narrowed += isLetter ? static_cast<char>(code) : code == 0xFEFF ? ' ' : '\x80';
  }
}

/// What the splitter has seen of a reply.
std::string_view ReplyStream::seen(std::string_view bytes) const {
  return isWide() ? std::string_view(narrowed_) : bytes;
}

/// Tells of a reply that is too large, of which more is to come behind `length` bytes.
bool ReplyStream::passOver(Item& item, std::size_t length) {
  item = {{}, ++number_, true};
  isPassing_ = true;
  drop(length);
  return true;
}

/// Drops what belongs to a reply that is passed over.
void ReplyStream::pass(std::string_view bytes, bool isAll) {
  std::string narrowed;
  if (isWide()) narrow(bytes, narrowed);
  std::size_t const found = splitter_.nextBegin(isWide() ? narrowed : bytes, 0);
  isPassing_ = found == npos && !isAll;
  if (isPassing_) {
    std::size_t const kept = std::min(bytes.size(), longestBeginning * unit());
    drop(beforeMark(bytes, bytes.size() - kept));
    return;
  }
  drop(found == npos ? bytes.size() : found * unit());
  splitter_.restartBehind(npos);
  endReply();
}

bool ReplyStream::nextLine(Item& item) {
  for (;;) {
    std::size_t const end = find(rest(), '\n', endLooked_);
    std::string_view line = rest().substr(0, end);
    endLooked_ = line.size();
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
