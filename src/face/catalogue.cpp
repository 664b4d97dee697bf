#include "face/catalogue.hpp"

#include <algorithm>
#include <iterator>
#include <unordered_map>

#include "caps/caps_messages.hpp"
#include "config/config_messages.hpp"
#include "control/control_messages.hpp"
#include "frame/lists.hpp"
#include "identity/identity_messages.hpp"
#include "logs/logs_messages.hpp"
#include "media/media_messages.hpp"
#include "security/security_messages.hpp"
#include "status/status_messages.hpp"

namespace Kovra {

namespace {

/// A family's list of messages; adding a family is adding its line.
constexpr std::span<frame::MessageRow const> (*families[])() = {
    statusMessages,   logsMessages, securityMessages, configMessages,
    identityMessages, capsMessages, mediaMessages,    controlMessages,
};

template <class Is>
Messages messagesThat(Is is) {
  Messages found;
  for (auto const family : families) {
    std::span<frame::MessageRow const> const list = family();
    std::copy_if(list.begin(), list.end(), std::back_inserter(found), is);
  }
  return found;
}

template <class Is>
frame::MessageRow const* firstThat(Is is) {
  auto const found = std::find_if(catalogue().begin(), catalogue().end(), is);
  return found != catalogue().end() ? &found->get() : nullptr;
}

}  // namespace

Messages const& catalogue() {
  static auto const all = messagesThat([](frame::MessageRow const&) { return true; });
  return all;
}

Messages const& replies() {
  static auto const all =
      messagesThat([](frame::MessageRow const& message) { return message.read != nullptr; });
  return all;
}

namespace {

using ByRoot = std::unordered_map<std::string_view, Messages>;

ByRoot repliesByRoot() {
  ByRoot all;
  for (frame::MessageRow const& reply : replies()) {
    for (char const* const root : reply.roots) all[root].emplace_back(reply);
  }
  return all;
}

}  // namespace

Messages const& repliesOf(std::string_view root) {
  static ByRoot const all = repliesByRoot();
  static Messages const none;
  auto const found = all.find(root);
  return found != all.end() ? found->second : none;
}

namespace {

void addSecrets(frame::Rows rows, std::set<std::string_view>& elements) {
  for (frame::Row const& row : rows) {
    if (row.kind->shape == frame::Shape::secret) elements.insert(row.element);
    addSecrets(frame::rowsInside(row), elements);
  }
}

std::set<std::string_view> secretsOf(Messages const& messages) {
  std::set<std::string_view> elements;
  for (frame::MessageRow const& message : messages) addSecrets(message.rows, elements);
  elements.erase("");
  return elements;
}

bool holdElement(frame::Rows rows, std::string_view name) {
  return std::any_of(rows.begin(), rows.end(), [&](frame::Row const& row) {
    frame::Entries const* const entries = frame::entriesIn(row);
    return row.element == name || (entries != nullptr && entries->item == name) ||
           holdElement(frame::rowsInside(row), name);
  });
}

}  // namespace

std::set<std::string_view> const& secretElements() {
  static std::set<std::string_view> const all = secretsOf(catalogue());
  return all;
}

bool isElement(std::string_view name) {
  auto const holds = [&](frame::MessageRow const& message) {
    return std::find(message.roots.begin(), message.roots.end(), name) != message.roots.end() ||
           holdElement(message.rows, name);
  };
  return !name.empty() && std::any_of(catalogue().begin(), catalogue().end(), holds);
}

frame::MessageRow const* findReply(std::string_view name) {
  return firstThat([&](frame::MessageRow const& message) {
    return message.read != nullptr && message.name == name;
  });
}

frame::MessageRow const* findRequest(std::string_view name) {
  return firstThat([&](frame::MessageRow const& message) {
    return message.composing != nullptr &&
           (message.name == name || message.composing->command == name);
  });
}

}  // namespace Kovra
