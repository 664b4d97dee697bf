/// @file
/// The tags of a reply as places in its bytes, for whoever changes some bytes and no others.

#ifndef KOVRA_TOOL_TAGS_HPP
#define KOVRA_TOOL_TAGS_HPP

#include <cstddef>
#include <stdexcept>
#include <string_view>

namespace Kovra::tool {

/// Bytes of a text.
struct Span {
  std::size_t begin = 0;
  std::size_t end = 0;

  std::string_view of(std::string_view text) const { return text.substr(begin, end - begin); }
};

/// What stands where, in the order of the text.
class TagVisitor {
 public:
  virtual ~TagVisitor() = default;
  /// Its attributes follow.
  virtual void open(Span name) = 0;
  /// References mean something in a value with quotes only.
  virtual void attribute(Span name, Span value, bool isQuoted) = 0;
  virtual void close() = 0;
  /// Between tags, or outside of all of them.
  virtual void text(Span text) = 0;
  virtual void data(Span data) = 0;    ///< within a CDATA section
  virtual void other(Span other) = 0;  ///< a comment, a declaration, or what is nothing of all that
};

/// The tags cannot be told from the text around them.
class TagError : public std::runtime_error {
 public:
  explicit TagError(std::size_t offset) : std::runtime_error("broken tag"), offset_(offset) {}

  std::size_t offset() const { return offset_; }

 private:
  std::size_t offset_;
};

/// Goes through a text of UTF-8 that the library takes, and through what stands behind the
/// document, in linear time. It takes the bytes for what the library takes them for, oddities
/// included: a reference by number reaches to the next semicolon, and an end tag only has to begin
/// like its start tag. Throws a TagError.
void readTags(std::string_view text, TagVisitor& visitor);

}  // namespace Kovra::tool

#endif
