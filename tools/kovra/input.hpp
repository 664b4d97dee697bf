/// @file
/// What the tool reads: replies, and lists of their files.

#ifndef KOVRA_TOOL_INPUT_HPP
#define KOVRA_TOOL_INPUT_HPP

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "command.hpp"

namespace Kovra::tool {

/// The path that stands for standard input.
inline constexpr std::string_view standardInput = "-";

/// How messages call an input: its path as given, or `<stdin>`.
std::string inputName(std::string_view path);

/// A place in an input. Line 0 means that none is known.
struct Place {
  int line = 0;
  int column = 0;
};

/// How a message on a place in an input begins: `reply.xml:4:5: note: `.
std::string messagePrefix(std::string_view path, Place place, std::string_view severity);

/// A file that is open for reading, or standard input.
class InputFile {
 public:
  /// Throws an InputFailure when it cannot be opened.
  explicit InputFile(std::string const& path);
  ~InputFile();
  InputFile(InputFile const&) = delete;
  InputFile& operator=(InputFile const&) = delete;

  /// Reads at most `length` bytes, fewer where the file has them no sooner; 0 at its end. Throws an
  /// InputFailure when it cannot be read.
  std::size_t read(char* out, std::size_t length);

  /// Would it answer at once?
  bool isReady() const;

 private:
  int descriptor_;
  bool owned_;
};

/// Reads whole inputs, one after the other, into one buffer.
class InputReader {
 public:
  /// An input of more than `limit` bytes is refused: one that never ends shall not eat all memory.
  explicit InputReader(std::size_t limit);

  /// The input's bytes, valid until the next call. Throws an InputFailure.
  std::string_view read(std::string const& path);

  /// Why a larger input than that is refused.
  static InputFailure tooLarge(std::size_t limit);

 private:
  std::size_t limit_;
  std::vector<char> buffer_;
};

/// A file with names of files, taken one by one: a list may be longer than memory, and come from a
/// program that has not found all of them yet.
class NameList {
 public:
  /// Each name ends with `separator`; behind the last one it may be missing. Before it waits for
  /// names that are not there yet it calls `beforeWaiting`. Throws an InputFailure.
  NameList(std::string const& path, char separator, std::function<void()> beforeWaiting);

  /// Puts the next name into `name`, without empty ones; false at the end. Throws an InputFailure.
  bool next(std::string& name);

 private:
  bool piece(std::string& name);
  bool fill();

  InputFile file_;
  char separator_;
  std::function<void()> beforeWaiting_;
  std::vector<char> buffer_;
  std::string_view rest_;
};

}  // namespace Kovra::tool

#endif
