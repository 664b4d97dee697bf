#include "messages.hpp"

#include <algorithm>

#include "suggest.hpp"

namespace Kovra::tool {

bool anyMessage(Message const&) {
  return true;
}

bool isReadMessage(Message const& message) {
  return message.isRead();
}

std::vector<std::string> messageNames(bool (*isMeant)(Message const&)) {
  std::vector<std::string> names;
  for (Message const& message : messages()) {
    if (isMeant(message)) names.push_back(message.name());
  }
  return names;
}

Check isMessage(bool (*isMeant)(Message const&)) {
  std::vector<std::string> const names = messageNames(isMeant);
  auto const check = [names](std::string const& name) -> std::string {
    if (std::find(names.begin(), names.end(), name) != names.end()) return {};
    std::string const meant = suggestion(name, names);
    return "unknown message \"" + name + "\"" +
           (meant.empty() ? "; 'kovra list' names those that are read" : '.' + meant);
  };
  return {check, names};
}

}  // namespace Kovra::tool
