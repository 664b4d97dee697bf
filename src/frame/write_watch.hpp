/// @file
/// Who watches the writing of a document: nobody (the classic writers), or the face, which wants to
/// know whether the host said all that the document is made of, and whether a document can hold it.

#ifndef KOVRA_FRAME_WRITE_WATCH_HPP
#define KOVRA_FRAME_WRITE_WATCH_HPP

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "frame/problems.hpp"
#include "kovra_value.hpp"

namespace Kovra::frame {

struct Row;

/// What those who show secrets unasked show in place of one.
inline constexpr std::string_view secretMask = "******";

/// Follows the rows that are written, member by member.
class WriteWatch {
 public:
  /// A record made of `value`: no mask of a secret is written, and where `demandsAll` says so each
  /// member that is written has to be in it.
  WriteWatch(Value const& value, bool demandsAll, Problems& problems)
      : problems_(problems), demandsAll_(demandsAll) {
    steps_.push_back({&value, 0});
  }
  /// A host's own record: its texts have to be some that a document can hold.
  explicit WriteWatch(Problems& problems) : problems_(problems), isRecord_(true) {
    steps_.push_back({nullptr, 0});
  }

  /// What is written until leave() is the row's.
  void enter(Row const& row);
  /// What is written until leave() is an entry of the list that was entered last.
  void enterEntry(std::size_t index);
  void leave();
  /// A text is written.
  void text(std::string_view text);

 private:
  struct Step {
    Value const* value;  ///< null where it is not looked at
    std::size_t path;    ///< length of the path so far
  };

  void enterMember(std::string_view name, Value const* member);
  void lookAtParts(Row const& row, Value const& member);
  void miss(std::string_view part);

  Problems& problems_;
  bool demandsAll_ = false;
  bool isRecord_ = false;
  std::string path_;
  std::vector<Step> steps_;
};

}  // namespace Kovra::frame

#endif
