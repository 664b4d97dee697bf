/// @file
/// What a host hands to the face: bytes in some encoding, which the library reads as UTF-8.

#ifndef KOVRA_FACE_SOURCE_HPP
#define KOVRA_FACE_SOURCE_HPP

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Kovra {

/// Bytes that were replaced, in the whole text.
struct Replaced {
  std::uint32_t at;
  std::uint32_t end;
};

/// A host's text as UTF-8. Where it is that already nothing is copied.
class Source {
 public:
  /// What is wrong with a text that is not even looked into.
  enum class Unreadable : std::uint8_t { no, empty, gzip, utf16, nul };

  /// `skipsTextBefore`: the document begins with the first markup.
  Source(std::string_view bytes, bool skipsTextBefore);
  ~Source();
  Source(Source const&) = delete;
  Source& operator=(Source const&) = delete;

  Unreadable unreadable() const { return unreadable_; }
  /// Of a text that is unreadable: where that shows in the whole text.
  std::size_t unreadableAt() const { return unreadableAt_; }
  /// UTF-8, without what was skipped.
  std::string_view text() const { return text_; }
  /// The same with what was skipped.
  std::string_view whole() const { return whole_; }
  std::size_t skipped() const { return whole_.size() - text_.size(); }
  /// Characters that the encoding lacks: U+FFFD stands in their place.
  std::vector<Replaced> const& replaced() const { return replaced_; }
  /// Where a byte of the whole stands among the host's.
  std::size_t offsetInBytes(std::size_t offset) const;

 private:
  struct Anchor {
    std::size_t inText;
    std::size_t inBytes;
  };
  enum class Form : std::uint8_t { utf8, latin1, utf16Little, utf16Big };
  struct Character;

  void refuse(Unreadable why, std::size_t at);
  bool isUnreadable(std::string_view bytes, bool skipsTextBefore);
  void readAsUtf8(bool skipsTextBefore);
  void skipTextBefore();
  void convert(Form form, std::string_view bytes);
  Character next(std::string_view bytes, std::size_t at) const;

  Unreadable unreadable_ = Unreadable::no;
  std::size_t unreadableAt_ = 0;
  std::string_view bytes_;
  std::string_view text_;
  std::string_view whole_;
  Form form_ = Form::utf8;
  struct Wiped {
    ~Wiped();
    std::string text;
  };
  Wiped converted_;  ///< also when memory ends while it is made
  std::vector<Anchor> anchors_;
  std::vector<Replaced> replaced_;
};

}  // namespace Kovra

#endif
