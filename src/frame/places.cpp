#include "frame/places.hpp"

#include <algorithm>

namespace Kovra::frame {

Places::Places(std::string_view text, Scan const& scan, std::size_t tabSize)
    : text_(text),
      first_(scan.byteOrderMark ? Encoding::utf8 : Encoding::unknown),
      then_(scan.encoding),
      settledAt_(scan.settledAt),
      tabSize_(tabSize) {}

// What stands behind the last place that was looked up in a declaration is counted in the encoding
// that it declares, its own end included.
Place Places::of(std::size_t offset) {
  advance(std::min(offset, settledAt_), first_);
  advance(offset, then_);
  return {static_cast<int>(row_) + 1, static_cast<int>(column_) + 1};
}

void Places::advance(std::size_t to, Encoding encoding) {
  while (at_ < to && at_ < text_.size()) step(encoding);
}

// One column, or one end of a line: both of its bytes, in whichever order. A byte order mark and
// the two characters that are none have no width.
void Places::step(Encoding encoding) {
  char const c = at(at_);
  bool const utf8 = encoding == Encoding::utf8;
  if (c == '\r' || c == '\n') {
    at_ += at(at_ + 1) == (c == '\r' ? '\n' : '\r') ? 2 : 1;
    ++row_;
    column_ = 0;
  } else if (c == '\t') {
    ++at_;
    column_ = (column_ / tabSize_ + 1) * tabSize_;
  } else if (utf8 && c == '\xEF') {
    if (at(at_ + 1) == '\0' || at(at_ + 2) == '\0') {
      ++at_;
      return;
    }
    std::string_view const mark = text_.substr(at_, 3);
    if (mark != "\xEF\xBB\xBF" && mark != "\xEF\xBF\xBE" && mark != "\xEF\xBF\xBF") ++column_;
    at_ += 3;
  } else {
    at_ += utf8 ? utf8Length(c) : 1;
    ++column_;
  }
}

}  // namespace Kovra::frame
