/// @file
/// A reply's bytes, sorted by what may become of them.

#ifndef KOVRA_TOOL_SURVEY_HPP
#define KOVRA_TOOL_SURVEY_HPP

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "identity.hpp"
#include "pseudonyms.hpp"
#include "tags.hpp"

namespace Kovra::tool {

/// The bytes of a reply as UTF-8, and the way back.
class ReplyText {
 public:
  /// Throws an InputFailure for a text that would not come back as it was.
  explicit ReplyText(std::string_view bytes);

  std::string const& text() const { return text_; }
  /// The same text, or another one, in the bytes of the reply's encoding.
  std::string bytesOf(std::string_view text) const;

 private:
  enum class Form : std::uint8_t { utf8, latin1, utf16Little, utf16Big };

  void convert(std::string_view bytes);

  Form form_ = Form::utf8;
  bool hasMark_ = false;
  std::string text_;
};

/// A part of a text that may be changed, or that has to stay.
struct Piece {
  enum class Coding : std::uint8_t {
    raw,        ///< references mean nothing
    attribute,  ///< references are characters
    text,       ///< and several blanks are one
  };

  Span span;
  Coding coding = Coding::raw;
  /// A number, a word or a name, which means what it says.
  bool isFixed = false;
  /// Where all of it is one value that is to be replaced.
  std::optional<Identity> identity;
};

/// Throws a TagError.
std::vector<Piece> piecesOf(std::string_view text, Identities const& identities);

/// Adds the values of the pieces that are to be replaced.
void collect(std::string_view text, std::vector<Piece> const& pieces, Pseudonyms& pseudonyms);

/// A copy of a text without what was to be replaced.
struct Redacted {
  std::string text;
  std::size_t replaced = 0;
  /// Where a value stands that had to stay, and its pseudonym.
  struct Left {
    std::size_t offset;
    std::string pseudonym;
  };
  std::vector<Left> left;
};

Redacted redacted(std::string_view text, std::vector<Piece> const& pieces,
                  Pseudonyms const& pseudonyms);

}  // namespace Kovra::tool

#endif
