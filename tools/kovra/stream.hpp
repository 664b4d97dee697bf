/// @file
/// Replies one after the other in one input.

#ifndef KOVRA_TOOL_STREAM_HPP
#define KOVRA_TOOL_STREAM_HPP

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "input.hpp"

namespace Kovra::tool {

class Roots;

/// Later: it depends on bytes that are not there yet.
enum class Answer { no, yes, later };

/// Tells where a reply ends and the next one begins, without judging it. A document ends with the
/// end tag of its root; one that is broken ends where a NUL byte, an XML declaration or the root of
/// another reply shows that the next one has begun.
///
/// A comment, a CDATA section and an instruction may quote all that, so what such a construct holds
/// shows nothing before it ends. One that was cut never does, and would hide all replies to come.
/// It ends where it seems to quote a reply when
/// - it opens once more behind that: a text with such a construct cannot be quoted in one, but for
///   CDATA sections in another, which are less likely than one that was cut;
/// - it goes on for longestQuotation bytes behind that;
/// - there is nothing more of it: a NUL byte, the end of the input, or more than a reply may have.
/// None of these depends on how the bytes arrive, and each keeps the next reply waiting for a
/// bounded number of them.
class Splitter {
 public:
  Splitter();

  /// So much may follow, within a comment or its like, on what begins a reply.
  static constexpr std::size_t longestQuotation = 1 << 16;

  /// What is known of a reply from its bytes so far.
  struct Found {
    bool isWhole = false;    ///< else more bytes are needed
    std::size_t length = 0;  ///< of a whole one
    bool isCut = false;      ///< of which only a bracket shows that it ends
  };

  /// Looks at the bytes of a reply: those that it was shown before, and more behind them. None are
  /// to follow where `isAll`; then what is there is whole.
  Found look(std::string_view bytes, bool isAll);

  /// So many of the bytes that it looked at belong to this reply, whatever follows.
  std::size_t certain() const { return isInside_ ? at_ : at_ + 1; }

  /// Where the next reply may begin, from `from` on; npos when it is not there yet.
  std::size_t nextBegin(std::string_view bytes, std::size_t from) const;

  /// Forgets what it was shown, but for what follows on so many bytes of it: that is shown again.
  void restartBehind(std::size_t length);

 private:
  /// What goes on until a text that ends it.
  struct Construct {
    std::string_view opening;
    std::string_view ending;
    bool isQuoting;            ///< else a bracket in it shows that it was cut
    std::size_t searched = 0;  ///< the ending stands nowhere before; this is not searched again
  };

  bool step(std::string_view bytes);
  bool prolog(std::string_view bytes);
  bool junk(std::string_view bytes, std::size_t from);
  bool markup(std::string_view bytes);
  bool instruction(std::string_view bytes);
  bool declaration(std::string_view bytes);
  bool ownDeclaration(std::string_view bytes);
  bool subset(std::string_view bytes);
  bool startTag(std::string_view bytes);
  bool endTag(std::string_view bytes);
  bool pass(std::string_view bytes, Construct& construct);
  std::size_t cutOf(std::string_view bytes, Construct const& construct);
  bool goOn(std::size_t at);
  bool cutAt(std::string_view bytes, std::size_t at);
  bool endBefore(std::string_view bytes, std::size_t bracket);
  bool endAt(std::size_t length);
  bool findNameEnd(std::string_view bytes, std::size_t from);
  bool findTagEnd(std::string_view bytes);
  bool isNext(std::string_view name) const;
  Answer begins(std::string_view bytes, std::size_t at) const;

  Roots const& roots_;
  std::vector<bool> const* inner_;  ///< roots that the reply at hand may hold as well
  std::size_t at_ = 0;              ///< everything before was looked at
  bool isInside_ = false;           ///< behind the root's start tag
  bool isInSubset_ = false;         ///< of declarations, in front of the root
  bool isDeclared_ = false;
  std::string root_;
  std::size_t open_ = 0;  ///< elements of the root's name that are open
  // Of the markup at hand, where it is not all there: how much of it was looked at for what it is
  // about, so that it is not looked at again.
  std::size_t nameEnd_ = 0;
  std::size_t tagEnd_ = 0;
  std::size_t bracket_ = 0;  ///< or of junk
  std::size_t quoted_;       ///< what begins a reply in it; npos: nothing
  char quote_ = '\0';        ///< that is open in a tag
  Found found_;
  bool isAll_ = false;  ///< nothing follows on what is looked at
  Construct comment_{"<!--", "-->", true};
  Construct data_{"<![CDATA[", "]]>", true};
  Construct instruction_{"<?", "?>", true};
  Construct xmlDeclaration_{"<?xml", "?>", false};
};

/// How the text of a reply is written.
enum class Form {
  bytes,   ///< one or more for a character
  little,  ///< UTF-16, the lower byte first
  big,     ///< UTF-16, the upper byte first
};

/// How an input is divided.
enum class Division {
  none,   ///< it is one reply
  reply,  ///< where replies end, or at NUL bytes
  line,   ///< a reply a line, as it is or as a JSON string
};

/// Takes replies out of an input one by one, as soon as they are there. It holds no more than one
/// of them and what came with it. UTF-16 is shown to the splitter with a byte for each unit.
class ReplyStream {
 public:
  /// A reply of more than `limit` bytes is passed over. Before it waits for bytes that are not
  /// there yet it calls `beforeWaiting`.
  ReplyStream(std::string const& path, Division division, std::size_t limit,
              std::function<void()> beforeWaiting);

  struct Item {
    std::string_view text;   ///< until the next call
    std::size_t number = 0;  ///< that of the reply, or of the line, from 1 on
    bool isTooLarge = false;
  };

  /// The next one; false at the end. Throws an InputFailure.
  bool next(Item& item);

 private:
  bool nextReply(Item& item);
  bool nextLine(Item& item);
  bool beginReply();
  void endReply();
  std::size_t findStop();
  std::size_t shown() const;
  Splitter::Found look(std::string_view bytes, bool isAll, bool isLong);
  void narrow(std::string_view bytes, std::string& narrowed) const;
  std::string_view seen(std::string_view bytes) const;
  std::size_t certainOf(std::string_view bytes) const;
  std::size_t beforeMark(std::string_view bytes, std::size_t length) const;
  bool isWide() const { return form_ && form_ != Form::bytes; }
  std::size_t unit() const { return isWide() ? 2 : 1; }
  bool passOver(Item& item, std::size_t length);
  void pass(std::string_view bytes, bool isAll);
  std::string_view unquoted(std::string_view line);
  void fill();
  void drop(std::size_t length);
  std::string_view rest() const { return {buffer_.data() + begin_, end_ - begin_}; }

  InputFile file_;
  Division division_;
  std::size_t limit_;
  std::function<void()> beforeWaiting_;
  Splitter splitter_;
  std::vector<char> buffer_;
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
  std::size_t endLooked_ = 0;    ///< so many bytes of the rest hold no NUL byte, or end of a line
  std::size_t beginLooked_ = 0;  ///< in so many of them no other reply begins
  std::size_t number_ = 0;
  std::string unquoted_;
  std::optional<Form> form_;  ///< of the reply at hand, as soon as it is known
  bool wasWide_ = false;      ///< the one before
  std::string narrowed_;      ///< UTF-16 as the splitter sees it
  Splitter const unread_;     ///< knows beginnings of any reply
  bool isPassing_ = false;    ///< the rest of one that is too large
  bool isAtEnd_ = false;
};

}  // namespace Kovra::tool

#endif
