#include "patch.hpp"

#include <nlohmann/json.hpp>
#include <utility>

#include "secret.hpp"

namespace Kovra::tool {

namespace {

using Json = nlohmann::ordered_json;

/// The value with masks in place of secrets; true where there were any.
bool maskSecrets(Value& value) {
  if (isSecretValue(value)) {
    value = mask;
    return true;
  }
  bool hasAny = false;
  for (Member& member : value.members()) hasAny |= maskSecrets(member.value());
  for (Value& item : value.items()) hasAny |= maskSecrets(item);
  return hasAny;
}

/// Puts what is there now; true where a secret was masked.
bool addOperation(Json& operations, Change const& change, Secrets secrets) {
  Json operation = {{"op", change.kind == Change::Kind::added ? "add" : "replace"},
                    {"path", change.pointer}};
  Value value = *change.after;
  bool const isMasked = secrets == Secrets::masked && maskSecrets(value);
  operation["value"] = Json::parse(value.toJson());
  if (isMasked) operation["masked"] = true;
  operations.push_back(std::move(operation));
  return isMasked;
}

}  // namespace

/// What a list loses is its end, so all removals come last, and of those the last one first: no
/// entry that another one names ever moves.
Patch patchOf(std::vector<Change> const& changes, Secrets secrets) {
  Patch patch;
  Json operations = Json::array();
  for (Change const& change : changes) {
    bool const isPut = change.after != nullptr && change.kind != Change::Kind::masked;
    if (isPut) patch.masked += addOperation(operations, change, secrets);
  }
  for (auto change = changes.rbegin(); change != changes.rend(); ++change) {
    if (change->kind != Change::Kind::removed) continue;
    operations.push_back({{"op", "remove"}, {"path", change->pointer}});
  }
  patch.text = operations.dump(2, ' ', true, Json::error_handler_t::replace) + '\n';
  return patch;
}

}  // namespace Kovra::tool
