/// @file
/// Rows and columns of a text, for those who want to be told where something stands. They are
/// TinyXML's: hosts and people know them from there.

#ifndef KOVRA_FRAME_PLACES_HPP
#define KOVRA_FRAME_PLACES_HPP

#include <cstddef>
#include <string_view>

#include "frame/scanner.hpp"

namespace Kovra::frame {

/// Lines and columns count from 1; a column is a character.
struct Place {
  int line = 0;
  int column = 0;
};

/// Counts through a text, from place to place. The text has to be the one that was scanned, as it
/// was before: decoding moves what is counted.
class Places {
 public:
  /// A tab goes to the next multiple of `tabSize` columns, which is at least 1. `text` has
  /// `padding` bytes behind it that may be read.
  Places(std::string_view text, Scan const& scan, std::size_t tabSize = 1);

  /// The place `offset` bytes into the text. Offsets may only grow from call to call.
  Place of(std::size_t offset);

 private:
  void advance(std::size_t to, Encoding encoding);
  void step(Encoding encoding);
  char at(std::size_t offset) const { return offset < text_.size() ? text_[offset] : '\0'; }

  std::string_view text_;
  Encoding first_;
  Encoding then_;
  std::size_t settledAt_;
  std::size_t tabSize_;
  std::size_t at_ = 0;
  std::size_t row_ = 0;
  std::size_t column_ = 0;
};

}  // namespace Kovra::frame

#endif
