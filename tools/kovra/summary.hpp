/// @file
/// How much was done, for people who wait.

#ifndef KOVRA_TOOL_SUMMARY_HPP
#define KOVRA_TOOL_SUMMARY_HPP

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>

#include "replies.hpp"

namespace Kovra::tool {

/// Counts replies. While that takes long, people at a terminal see how far it is; in the end there
/// is a line on standard error.
class Summary {
 public:
  Summary();

  /// Is there to be a line in the end?
  void show(bool on) { isShown_ = on; }
  void count(bool isDecoded, std::size_t notes);
  /// Before a line on standard error.
  void makeRoom();
  void end();

 private:
  std::string line() const;
  void showProgress();

  using Clock = std::chrono::steady_clock;

  bool isShown_ = false;
  bool hasProgress_ = false;  ///< may there be any?
  bool isProgressThere_ = false;
  Clock::time_point begin_ = Clock::now();
  Clock::time_point shown_ = begin_;
  std::size_t read_ = 0;
  std::size_t decoded_ = 0;
  std::size_t notes_ = 0;
};

/// Keeps a text that was refused in the folder, named after its file and its number there; one that
/// is there already stays.
void keepFailure(std::string const& folder, ReplyInput const& input, std::string_view text);

}  // namespace Kovra::tool

#endif
