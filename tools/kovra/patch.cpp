#include "patch.hpp"

#include <algorithm>
#include <cstddef>
#include <nlohmann/json.hpp>

#include "paths.hpp"
#include "record.hpp"

namespace Kovra::tool {

namespace {

using Json = nlohmann::ordered_json;

/// A secret, or a list of them: without one of them the others would not be where they belong.
bool isWhollySecret(Value const& value) {
  return isSecretValue(value) || std::any_of(value.items().begin(), value.items().end(),
                                             [](Value const& item) { return isSecretValue(item); });
}

/// Takes the secrets out of a value that is none itself.
void takeSecrets(Value& value, std::string const& path, std::vector<std::string>& taken) {
  std::vector<std::string> secret;
  for (Member& member : value.members()) {
    std::string const inner = memberPath(path, member.name());
    if (isWhollySecret(member.value())) {
      secret.emplace_back(member.name());
      taken.push_back(inner);
    } else {
      takeSecrets(member.value(), inner, taken);
    }
  }
  for (std::string const& name : secret) value.erase(name);
  for (std::size_t i = 0; i < value.items().size(); ++i) {
    takeSecrets(value.items()[i], entryPath(path, i), taken);
  }
}

/// Puts what is there now.
void addOperation(Json& operations, Change const& change, Value const& value) {
  operations.push_back({{"op", change.kind == Change::Kind::added ? "add" : "replace"},
                        {"path", change.pointer},
                        {"value", Json::parse(value.toJson())}});
}

void put(Json& operations, Change const& change, Secrets secrets,
         std::vector<std::string>& leftOut) {
  if (secrets == Secrets::shown) return addOperation(operations, change, *change.after);
  if (isWhollySecret(*change.after)) return leftOut.push_back(change.path);
  Value value = *change.after;
  takeSecrets(value, change.path, leftOut);
  addOperation(operations, change, value);
}

}  // namespace

/// What a list loses is its end, so all removals come last, and of those the last one first: no
/// entry that another one names ever moves.
Patch patchOf(std::vector<Change> const& changes, Secrets secrets) {
  Patch patch;
  Json operations = Json::array();
  for (Change const& change : changes) {
    bool const isPut = change.after != nullptr && change.kind != Change::Kind::masked;
    if (isPut) put(operations, change, secrets, patch.leftOut);
  }
  for (auto change = changes.rbegin(); change != changes.rend(); ++change) {
    if (change->kind != Change::Kind::removed) continue;
    operations.push_back({{"op", "remove"}, {"path", change->pointer}});
  }
  patch.text = operations.dump(2, ' ', true, Json::error_handler_t::replace) + '\n';
  return patch;
}

}  // namespace Kovra::tool
