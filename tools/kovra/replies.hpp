/// @file
/// The replies that a command line names, and what is done with each of them.

#ifndef KOVRA_TOOL_REPLIES_HPP
#define KOVRA_TOOL_REPLIES_HPP

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "command.hpp"
#include "max_size.hpp"
#include "stream.hpp"

namespace Kovra::tool {

/// Which replies, and how they are taken.
struct ReplyOptions {
  std::vector<std::string> files;
  std::string list;  ///< a file with names of more; empty: none
  bool nullSeparated = false;
  Division division = Division::none;
  std::size_t maxSize = defaultMaxSize;
  unsigned jobs = 1;  ///< 0: one for each core

  /// May there be more than one?
  bool areSeveral() const {
    return files.size() > 1 || !list.empty() || division != Division::none;
  }
};

/// Adds the arguments FILE..., `--files-from`, `--null`, `--max-size`, `--stream`, `--lines` and
/// `--jobs` to a command.
void addReplies(CLI::App& command, ReplyOptions& options);

/// Adds `--as`: every reply is taken for the message of that name. The verb is what is done then.
void addAs(CLI::App& command, std::string& message, std::string const& verb);

/// Says that a terminal is read, where nothing else is: else it would look as if nothing happened.
void tellWaiting(ReplyOptions const& options);

/// A reply, or why there is none.
struct ReplyInput {
  std::string_view source;  ///< its file, as it was given
  std::size_t number = 0;   ///< within that, from 1 on; 0 where the file is one reply
  std::string_view text;
  InputFailure const* failure = nullptr;  ///< then there is no text
};

/// How messages call it: "reply.xml", "<stdin>", "replies.xml#17".
std::string nameOf(ReplyInput const& input);

/// What is to be done when it is a reply's turn.
using Finish = std::function<void()>;

/// Does to every reply what takes time, with several of them at once where the options say so, and
/// gives back what is to be done in the order of the replies. What the first half reads of the
/// input is there for it alone; the second half may print. Where the first half throws an
/// InputFailure, or memory ends, it is called again with that failure and without a text.
using Work = std::function<Finish(ReplyInput const&)>;

/// Goes through all replies. Throws what a Finish throws. False where some could not be read and
/// none was: then there is nothing to be told of any.
bool forEachReply(ReplyOptions const& options, Work const& work);

}  // namespace Kovra::tool

#endif
