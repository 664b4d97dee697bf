/// @file
/// Secrets in memory: what held a key or a passkey is wiped before it is given back. Out of reach
/// stays what TinyXML copies and gives back by itself while it parses and prints.

#ifndef KOVRA_FRAME_WIPE_HPP
#define KOVRA_FRAME_WIPE_HPP

#include <tinyxml.h>

#include <cstddef>
#include <cstring>
#include <type_traits>

#include "frame/text.hpp"

namespace Kovra::frame {

/// Overwrites memory, also where the compiler knows that nobody reads it again.
inline void wipe(void* memory, std::size_t length) noexcept {
  ::explicit_bzero(memory, length);
}

/// Overwrites the texts and the values of attributes of all nodes below `node`, which keeps its
/// shape. Each is then as long as before and all NUL.
void wipeBelow(TiXmlNode& node) noexcept;

/// What documents are indented with when they are printed, once for each level.
inline constexpr char printIndent[] = "    ";

/// At least as many bytes as `document` has when it is printed.
std::size_t printedBound(TiXmlDocument const& document);

/// A printer whose text never moves while it grows, since room for all of `document` is made first,
/// and is wiped in the end.
class SecretPrinter : public TiXmlPrinter {
 public:
  explicit SecretPrinter(TiXmlDocument const& document);
  ~SecretPrinter() override;
  SecretPrinter(SecretPrinter const&) = delete;
  SecretPrinter& operator=(SecretPrinter const&) = delete;
};

/// Wipes a plain record or buffer at the end of its scope.
template <class Record>
class WipedAtEnd {
  static_assert(std::is_trivially_copyable_v<Record>);

 public:
  explicit WipedAtEnd(Record& record) : record_(&record) {}
  ~WipedAtEnd() { wipe(record_, sizeof *record_); }
  WipedAtEnd(WipedAtEnd const&) = delete;
  WipedAtEnd& operator=(WipedAtEnd const&) = delete;

 private:
  Record* record_;
};

/// The text of a record's array as one that is terminated for certain. An array without a
/// terminator is copied, and the copy wiped in the end.
template <std::size_t N>
class TerminatedText {
 public:
  explicit TerminatedText(char const (&array)[N]) : text_(array) {
    if (textIn(array).size() < N) return;
    std::memcpy(copy_, array, N);
    copy_[N] = '\0';
    text_ = copy_;
  }
  ~TerminatedText() {
    if (text_ == copy_) wipe(copy_, sizeof copy_);
  }
  TerminatedText(TerminatedText const&) = delete;
  TerminatedText& operator=(TerminatedText const&) = delete;

  char const* get() const { return text_; }

 private:
  char const* text_;
  char copy_[N + 1];
};

}  // namespace Kovra::frame

#endif
