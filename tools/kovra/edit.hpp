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
};

/// From "path=value": a value as people write it, of the kind that the member has. A secret is
/// refused, since every list of processes shows arguments. Throws an EditFailure.
Edit editOf(Message const& message, std::string const& assignment);

/// From "path=FILE": the value is what the file holds, without the end of its last line. Throws an
/// EditFailure, and an InputFailure for a file that cannot be read.
Edit editOfFile(Message const& message, std::string const& assignment);

/// Throws an EditFailure for a path that the record cannot have.
void apply(std::vector<Edit> const& edits, Value& record);

/// The choices that make a document of what differs between two records, and of nothing else: to
/// those that were made already it adds the words of every choice of several, such as sections,
/// whose documents differ. Throws a RecordFailure where none of them do.
Value choicesOfChanges(Message const& message, Value const& before, Value const& after,
                       Value const& choices);

}  // namespace Kovra::tool

#endif
