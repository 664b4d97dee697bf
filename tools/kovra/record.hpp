/// @file
/// Records as JSON: the way back from what `decode --format json` prints.

#ifndef KOVRA_TOOL_RECORD_HPP
#define KOVRA_TOOL_RECORD_HPP

#include <cstddef>
#include <exception>
#include <kovra.hpp>
#include <string>
#include <string_view>
#include <utility>

#include "input.hpp"

namespace Kovra::tool {

// What a text may hold at most. No record that a printer has comes near, and what is beyond is
// refused before it takes memory: an empty entry of two bytes becomes a value of a hundred, and a
// document of thousands.

/// Lists and objects in one another.
inline constexpr std::size_t maxLevels = 32;
/// Entries of one list, or keys of one object.
inline constexpr std::size_t maxEntries = 256;
/// Bytes of a key.
inline constexpr std::size_t maxName = 256;
/// Values in all, lists and objects among them.
inline constexpr std::size_t maxValues = 16384;

/// A text that holds no record, why, and where as far as that is known.
class RecordFailure : public std::exception {
 public:
  RecordFailure(Place place, std::string why) : place_(place), why_(std::move(why)) {}

  Place place() const { return place_; }
  /// Names in it may hold any character, NUL among them, where what() would end.
  std::string const& why() const { return why_; }
  char const* what() const noexcept override { return why_.c_str(); }

 private:
  Place place_;
  std::string why_;
};

/// What is wrong at a path of the JSON: "wireless.channel: found a text of 3 bytes; expected ..."
std::string sentence(std::string const& path, std::string const& found,
                     std::string const& expected);

/// A record, and where in the JSON it stands: "" or "readings[0].record".
struct Record {
  Value value;
  std::string path;
};

/// Takes the record from JSON: the object that `decode` prints, of which the reading of `message`
/// counts, or the record alone. Throws a RecordFailure for a text that is no JSON, that goes beyond
/// the bounds above, that names a key twice, or that lacks the reading. No failure repeats anything
/// of the text but names of keys, and all values are marked as secrets, so that no problem with one
/// shows it: which of them are keys is known only when it is too late.
Record recordFrom(std::string_view json, std::string_view message);

}  // namespace Kovra::tool

#endif
