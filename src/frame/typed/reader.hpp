/// @file
/// A reply as the library knows it: its name, the roots it may have, and how its record is read.
/// Each family lists its replies beside its entries; the face's catalogue is all of the lists.

#ifndef KOVRA_FRAME_TYPED_READER_HPP
#define KOVRA_FRAME_TYPED_READER_HPP

#include <set>
#include <string>
#include <string_view>

#include "frame/entry.hpp"
#include "frame/observer.hpp"

namespace Kovra::frame {

/// A reply without its record's type, as the catalogue lists it.
struct ReplyReader {
  std::string_view name;   ///< for people and command lines
  std::string_view title;  ///< what it tells, in a few words
  Roots roots;
  /// Reads the root into a record of its own; the result is that of the classic operation.
  bool (*decode)(Element root, Observer& observer);
  void (*outline)(std::set<std::string, std::less<>>&);
};

}  // namespace Kovra::frame

#endif
