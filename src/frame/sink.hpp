/// @file
/// Where a document goes, event by event. Whoever writes does not ask in which of the two forms:
/// into TinyXML's tree, which hosts go on using, or into a text.

#ifndef KOVRA_FRAME_SINK_HPP
#define KOVRA_FRAME_SINK_HPP

#include <tinyxml.h>

#include <array>
#include <cstddef>
#include <memory>
#include <string_view>

#include "frame/write_watch.hpp"

namespace Kovra::frame {

/// Takes elements in the order of the document. An element has attributes first, and then either
/// one text or other elements. All texts are terminated.
class Sink {
 public:
  virtual void open(char const* element) = 0;
  /// Of the element that was opened last, before anything is in it.
  virtual void attribute(char const* name, char const* value) = 0;
  /// The text of the open element. An empty one is a text, too: `<a></a>`, not `<a />`.
  virtual void text(char const* text) = 0;
  virtual void close(char const* element) = 0;
  /// An element with nothing but a text.
  virtual void leaf(char const* element, char const* text) = 0;

  /// Null when nobody watches.
  WriteWatch* watch() const { return watch_; }
  void watch(WriteWatch& watch) { watch_ = &watch; }

 protected:
  ~Sink() = default;

 private:
  WriteWatch* watch_ = nullptr;
};

/// Adds to a tree, below an element of it.
class TreeSink final : public Sink {
 public:
  explicit TreeSink(TiXmlElement& parent) : open_(&parent) {}

  void open(char const* element) override;
  void attribute(char const* name, char const* value) override;
  void text(char const* text) override;
  void close(char const* element) override;
  void leaf(char const* element, char const* text) override;

 private:
  TiXmlElement* open_;
};

/// Characters one after the other: on the stack as long as they are few, and wiped in the end and
/// wherever they moved from, since any document may hold a key.
class WipedCharacters {
 public:
  WipedCharacters() {
    begin_ = end_ = near_.data();
    limit_ = begin_ + near_.size();
  }
  ~WipedCharacters();
  WipedCharacters(WipedCharacters const&) = delete;
  WipedCharacters& operator=(WipedCharacters const&) = delete;

  void append(std::string_view text);
  void append(char c);
  void append(std::size_t count, char c);

  std::string_view view() const { return {begin_, static_cast<std::size_t>(end_ - begin_)}; }
  /// Puts a zero byte behind them, which is none of them.
  void terminate();

 private:
  void makeRoom(std::size_t more);

  std::array<char, 16384> near_;  // not cleared
  std::unique_ptr<char[]> block_;
  char* begin_;
  char* end_;
  char* limit_;
};

/// Prints a document as TinyXML prints its tree with an indent of four blanks, byte for byte.
class TextSink final : public Sink {
 public:
  /// Adds the declaration (version 1.0, encoding UTF-8) of what follows.
  void declare();
  void open(char const* element) override;
  void attribute(char const* name, char const* value) override;
  void text(char const* text) override;
  void close(char const* element) override;
  void leaf(char const* element, char const* text) override;

  /// All that was printed, with a zero byte behind it; good until the next event.
  std::string_view printed() {
    out_.terminate();
    return out_.view();
  }

 private:
  void indent();
  void endTag(char const* element);
  void escaped(char const* text);
  void escapedByTinyxml(char const* text);

  WipedCharacters out_;
  std::size_t depth_ = 0;
  bool inTag_ = false;  ///< is the tag of the element that was opened last still open?
  bool behindText_ = false;
};

}  // namespace Kovra::frame

#endif
