/// @file
/// Records as JSON: the way back from what `decode --format json` prints.

#ifndef KOVRA_TOOL_RECORD_HPP
#define KOVRA_TOOL_RECORD_HPP

#include <kovra.hpp>
#include <stdexcept>
#include <string>
#include <string_view>

namespace Kovra::tool {

/// A text that holds no record, why, and where as far as that is known.
class RecordFailure : public std::runtime_error {
 public:
  RecordFailure(Place place, std::string const& why) : std::runtime_error(why), place_(place) {}

  Place place() const { return place_; }

 private:
  Place place_;
};

/// A record, and where in the JSON it stands: "" or "readings[0].record".
struct Record {
  Value value;
  std::string path;
};

/// Takes the record from JSON: the object that `decode` prints, of which the reading of `document`
/// counts, or the record alone. Throws a RecordFailure.
Record recordFrom(std::string_view json, std::string_view document);

}  // namespace Kovra::tool

#endif
