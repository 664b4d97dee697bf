/// @file
/// Replies one after the other in one input.

#ifndef KOVRA_TOOL_STREAM_HPP
#define KOVRA_TOOL_STREAM_HPP

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "input.hpp"

namespace Kovra::tool {

/// Tells where a reply ends and the next one begins, without judging it. A document ends with the
/// end tag of its root; one that is broken ends where a NUL byte, an XML declaration or the root of
/// another reply shows that the next one has begun.
class Splitter {
 public:
  Splitter();

  /// What is known of a reply from its bytes so far.
  struct Found {
    bool isWhole = false;    ///< else more bytes are needed
    std::size_t length = 0;  ///< of a whole one
  };

  /// Looks at the bytes of a reply: those that it was shown before, and more behind them. None are
  /// to follow where `isAll`; then what is there is whole.
  Found look(std::string_view bytes, bool isAll);

  /// Where the next reply may begin, from `from` on; npos when it is not there yet.
  std::size_t nextBegin(std::string_view bytes, std::size_t from);

  /// Forgets what it was shown.
  void restart();

 private:
  /// The next place of a text that ends something. A search that was in vain is not done again.
  struct Ending {
    std::string_view text;
    std::size_t searched = 0;  ///< it stands nowhere before
  };

  bool step(std::string_view bytes);
  bool prolog(std::string_view bytes);
  bool markup(std::string_view bytes);
  bool startTag(std::string_view bytes);
  bool endTag(std::string_view bytes);
  bool pass(std::string_view bytes, Ending& ending);
  bool endAt(std::size_t length);
  void restartBehind(std::size_t length);
  std::size_t tagEnd(std::string_view bytes, std::size_t from);
  std::uint64_t& lengthsOf(char first);
  bool isRoot(std::string_view name);
  bool isRootThere(std::string_view bytes, std::size_t at);

  std::vector<std::string> roots_;            ///< those that stand in no reply, sorted
  std::array<std::uint64_t, 256> lengths_{};  ///< that they have, by their first letter
  std::size_t at_ = 0;                        ///< everything before was looked at
  bool isInside_ = false;                     ///< behind the root's start tag
  bool hasMarkup_ = false;                    ///< before it: a declaration, a comment
  std::string root_;
  std::size_t open_ = 0;   ///< elements of the root's name that are open
  std::size_t tagAt_ = 0;  ///< how much of the tag at hand was looked at, where it is not all there
  char quote_ = '\0';      ///< that is open in it
  Found found_;
  Ending comment_{"-->"};
  Ending data_{"]]>"};
  Ending instruction_{"?>"};
  Ending declaration_{">"};
};

/// How an input is divided.
enum class Division {
  none,   ///< it is one reply
  reply,  ///< where replies end, or at NUL bytes
  line,   ///< a reply a line, as it is or as a JSON string
};

/// Takes replies out of an input one by one, as soon as they are there. It holds no more than one
/// of them and what came with it.
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
  void skipBlanks();
  bool passOver(Item& item);
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
  std::size_t looked_ = 0;  ///< so many bytes of the rest hold no end
  std::size_t number_ = 0;
  std::string unquoted_;
  bool isBegun_ = false;    ///< are there more than blanks of it?
  bool isPassing_ = false;  ///< the rest of one that is too large
  bool isAtEnd_ = false;
};

}  // namespace Kovra::tool

#endif
