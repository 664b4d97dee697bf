#include "face/catalogue.hpp"

#include <algorithm>

#include "caps/caps_messages.hpp"
#include "config/config_messages.hpp"
#include "control/control_messages.hpp"
#include "identity/identity_messages.hpp"
#include "logs/logs_messages.hpp"
#include "media/media_messages.hpp"
#include "security/security_messages.hpp"
#include "status/status_replies.hpp"

namespace Kovra {

namespace {

/// A family's list of messages; adding a family is adding its line.
constexpr std::span<frame::MessageRow const> (*families[])() = {
    logsMessages, securityMessages, configMessages,  identityMessages,
    capsMessages, mediaMessages,    controlMessages,
};

/// The lists of the families that only have replies.
constexpr std::span<frame::ReplyReader const> (*readers[])() = {
    statusReplies,  jobReplies,      mediaStatusReplies, sensorStatusReplies,
    counterReplies, wirelessReplies, sensorReplies,
};

ReplyLine lineOf(frame::ReplyReader const& reply) {
  return {reply.name, reply.title, reply.roots, reply.decode, reply.outline};
}

ReplyLine lineOf(frame::MessageRow const& message) {
  return {message.name, message.title, message.roots,
          [&message](frame::Element root, frame::Observer& observer) {
            frame::AnyRecord const record(*message.record);
            return message.read(message, root, record.memory(), observer);
          },
          [&message](frame::Outline& outline) { frame::outlineOf(message, outline); }};
}

}  // namespace

Messages const& catalogue() {
  static auto const all = [] {
    Messages messages;
    for (auto const family : families) {
      std::span<frame::MessageRow const> const list = family();
      messages.insert(messages.end(), list.begin(), list.end());
    }
    return messages;
  }();
  return all;
}

std::vector<ReplyLine> const& replies() {
  static auto const all = [] {
    std::vector<ReplyLine> lines;
    for (auto const list : readers) {
      for (frame::ReplyReader const& reply : list()) lines.push_back(lineOf(reply));
    }
    for (frame::MessageRow const& message : catalogue()) {
      if (message.read != nullptr) lines.push_back(lineOf(message));
    }
    return lines;
  }();
  return all;
}

ReplyLine const* findReply(std::string_view name) {
  auto const found = std::find_if(replies().begin(), replies().end(),
                                  [&](ReplyLine const& reply) { return reply.name == name; });
  return found != replies().end() ? &*found : nullptr;
}

frame::MessageRow const* findRequest(std::string_view name) {
  auto const found =
      std::find_if(catalogue().begin(), catalogue().end(), [&](frame::MessageRow const& message) {
        return message.composing != nullptr &&
               (message.name == name || message.composing->command == name);
      });
  return found != catalogue().end() ? &found->get() : nullptr;
}

}  // namespace Kovra
