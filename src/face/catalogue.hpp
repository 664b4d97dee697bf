/// @file
/// The catalogue of all messages. Whatever is done with every message walks over it.

#ifndef KOVRA_FACE_CATALOGUE_HPP
#define KOVRA_FACE_CATALOGUE_HPP

#include <functional>
#include <string_view>
#include <vector>

#include "frame/message.hpp"

namespace Kovra {

using Messages = std::vector<std::reference_wrapper<frame::MessageRow const>>;

/// Every message of the families that have them, in the order of the families' lists.
Messages const& catalogue();

/// A reply of any family, as decoding sees it: also of one that has no messages yet.
struct ReplyLine {
  std::string_view name;
  std::string_view title;
  frame::Roots roots;
  /// Reads the root into a record of its own; the result is that of the classic operation.
  std::function<bool(frame::Element root, frame::Observer& observer)> decode;
  std::function<void(frame::Outline&)> outline;
};

/// Every reply of every family.
std::vector<ReplyLine> const& replies();

/// The reply of that name, or null. Several replies may share a root.
ReplyLine const* findReply(std::string_view name);

/// The message that is composed under that name, its own or that of a command line, or null.
frame::MessageRow const* findRequest(std::string_view name);

}  // namespace Kovra

#endif
