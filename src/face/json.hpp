/// @file
/// JSON in ASCII: a writer for values and for what the library prints around them.

#ifndef KOVRA_FACE_JSON_HPP
#define KOVRA_FACE_JSON_HPP

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "frame/write_watch.hpp"
#include "kovra_value.hpp"

namespace Kovra {

using frame::secretMask;

// What a text that is read may hold at most. What is beyond is refused before it takes memory.

/// Lists and objects in one another.
inline constexpr std::size_t maxJsonLevels = 32;
/// Values in all, lists and objects among them.
inline constexpr std::size_t maxJsonValues = 1'000'000;

/// Is this a single value to be masked? Lists and records are not: their entries are, each by
/// itself. A keyword is no secret, since its words are public.
bool isMasked(Value const& value) noexcept;

/// Writes JSON piece by piece: one value, be it a single one or a list or an object with all that
/// is in it. The caller ends what he begins, and puts a key before each value of an object. Nothing
/// beyond ASCII is written as it is, so that neither a locale can garble the text nor a control
/// character in it reach a terminal; bytes that are no UTF-8 become U+FFFD. What was written is
/// wiped wherever it is not taken, since there may be secrets in it.
class JsonWriter {
 public:
  /// So many blanks for each level, or everything on one line without any for a negative one.
  explicit JsonWriter(int indentation);
  ~JsonWriter();
  JsonWriter(JsonWriter const&) = delete;
  JsonWriter& operator=(JsonWriter const&) = delete;

  void beginObject() { begin('{'); }
  void endObject() { end('}'); }
  void beginArray() { begin('['); }
  void endArray() { end(']'); }
  void key(std::string_view name);

  void text(std::string_view text);
  void flag(bool flag);
  void integer(std::int64_t number);
  void natural(std::uint64_t number);
  /// The shortest decimal that gives the number back; null for one without a value.
  void real(double number);
  void null();
  /// As Value::toJson() prints it, with each secret masked or as it is.
  void value(Value const& value, bool masked);

  /// What was written, without a line feed behind it. The writer is as new afterwards.
  std::string take();

 private:
  void begin(char bracket);
  void end(char bracket);
  void separate();
  void breakLine();
  void quote(std::string_view text);
  void word(std::string_view word);
  void keyword(Value const& value);
  template <class Number>
  void whole(Number number);

  std::size_t used() const;
  void makeRoom(std::size_t bytes);
  void grow(std::size_t bytes);

  std::string buffer_;   // empty, or as large as it can be without another allocation
  char* at_ = nullptr;   // where the next byte goes
  char* end_ = nullptr;  // of the buffer
  std::size_t indentation_;
  std::size_t depth_ = 0;
  bool isPretty_;
  bool isFirst_ = true;       // of its list or object, or of all
  bool isBehindKey_ = false;  // stands the next value behind its key?
};

}  // namespace Kovra

#endif
