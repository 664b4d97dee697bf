/// @file
/// Changes to a record that the command line tells: "wireless.ssid=NewNet".

#ifndef KOVRA_TOOL_EDIT_HPP
#define KOVRA_TOOL_EDIT_HPP

#include <cstddef>
#include <kovra.hpp>
#include <stdexcept>
#include <string>
#include <vector>

namespace Kovra::tool {

/// A change that cannot be meant, and why. No value that may be a secret is repeated.
class EditFailure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// A member, and what it is to be.
struct Edit {
  std::string path;
  Value value;
  /// Others that the member takes, to find out whether a document has it.
  std::vector<Value> others = {};
};

/// The member that is changed, for messages: of a setting's value, the setting.
std::string memberOf(Edit const& edit);

/// From "path=value": a value as people write it, of the kind that the member has. A secret is
/// refused, since every list of processes shows arguments. Throws an EditFailure.
Edit editOf(Message const& message, std::string const& assignment);

/// From "path=FILE": the value is what the file holds, without the end of its last line. Throws an
/// EditFailure, and an InputFailure for a file that cannot be read.
Edit editOfFile(Message const& message, std::string const& assignment);

/// Throws an EditFailure for a path that the record cannot have.
void apply(std::vector<Edit> const& edits, Value& record);

/// Does a later one change the same member?
bool isOverwritten(std::vector<Edit> const& edits, std::size_t index);

/// Throws a RecordFailure where the value of a setting is beyond the bounds that the record gave
/// it, or beyond those that it is to have. Given bounds that admit no two values are none; of
/// others only two zeros are.
void requireWithinBounds(std::vector<Edit> const& edits, Value const& before, Value const& after);

}  // namespace Kovra::tool

#endif
