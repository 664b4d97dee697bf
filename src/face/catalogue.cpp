#include "face/catalogue.hpp"

#include <algorithm>

#include "caps/caps_replies.hpp"
#include "config/config_documents.hpp"
#include "identity/identity_documents.hpp"
#include "logs/logs_replies.hpp"
#include "media/media_replies.hpp"
#include "security/security_replies.hpp"
#include "status/status_replies.hpp"

namespace Kovra {

namespace {

/// A family's list of replies; adding a family is adding its line.
constexpr std::span<frame::ReplyReader const> (*families[])() = {
    statusReplies,        jobReplies,          mediaStatusReplies, sensorStatusReplies,
    counterReplies,       wirelessReplies,     sensorReplies,      logReplies,
    magneticTrackReplies, laminatorReplies,    securityReplies,    configurationReplies,
    identityReplies,      capabilitiesReplies, mediaReplies,
};

}  // namespace

std::vector<std::reference_wrapper<frame::ReplyReader const>> const& catalogue() {
  static auto const all = [] {
    std::vector<std::reference_wrapper<frame::ReplyReader const>> replies;
    for (auto const family : families) {
      std::span<frame::ReplyReader const> const list = family();
      replies.insert(replies.end(), list.begin(), list.end());
    }
    return replies;
  }();
  return all;
}

frame::ReplyReader const* findReply(std::string_view name) {
  auto const& all = catalogue();
  auto const found = std::find_if(
      all.begin(), all.end(), [&](frame::ReplyReader const& reply) { return reply.name == name; });
  return found != all.end() ? &found->get() : nullptr;
}

}  // namespace Kovra
