// The documents of the secure-action exchange. Their secrets come from a file or standard input:
// arguments would show in every list of processes.

#include "compose.hpp"

namespace Kovra::tool {

namespace {

/// A kind whose record is all there is to choose.
struct Kind {
  char const* name;
  char const* description;
  char const* document;
  Composition (*compose)(Value const&);
  char const* members;
};

constexpr Kind kinds[] = {
    {"nonce", "A nonce", "nonce", composeNonce, R"({"nonce": "..."})"},
    {"secure-request", "A request for a secure action", "secure-action-request",
     composeSecureRequest, R"({"action": "...", "model": "...", "serial": "...", "nonce": "..."})"},
    {"passkey", "A passkey", "passkey", composePasskey, R"({"current_passkey": "..."})"},
    {"passkey-change", "A change of the passkey", "security-key-change", composePasskeyChange,
     R"({"current_passkey": "...", "new_passkey": "..."})"},
    {"keys", "The three working keys", "security-keys", composeKeys,
     R"({"host_authentication_key": "...", "data_encryption_key": "...",
   "printer_lock_key": "..."})"},
    {"keys-change", "A change of keys", "security-key-change", composeKeysChange,
     R"({"current_passkey": "...", "current_printer_lock_key": "...",
   "new_printer_lock_key": "..."}
  and likewise, or in their place, for data_encryption_key and
  host_authentication_key)"},
};

std::string footer(char const* members) {
  return std::string("The record:\n  ") + members;
}

/// Nothing is composed of a mask.
template <class Compose>
Composition unmasked(Value const& record, Compose compose) {
  Composition refused;
  return holdsNoMask(record, "", refused.problem) ? compose(record) : refused;
}

void addDirective(CLI::App& compose, ExitStatus& status) {
  Composing composing(compose, "secure-directive", "A directive for a secure action",
                      "secure-action-directive");
  auto const timeout = std::make_shared<int>(0);
  composing.command()
      .add_option("--timeout", *timeout, "The action's timeout; 0, the default, is none")
      ->option_text("NUMBER");
  composing.command().footer(
      footer(R"({"model": "...", "serial": "...", "nonce": "...", "hmac": "..."})"));
  composing.run(status, [timeout](Value const& record) {
    return unmasked(record,
                    [&](Value const& value) { return composeSecureDirective(value, *timeout); });
  });
}

}  // namespace

void addComposeSecure(CLI::App& compose, ExitStatus& status) {
  for (Kind const& kind : kinds) {
    Composing composing(compose, kind.name, kind.description, kind.document);
    composing.command().footer(footer(kind.members));
    composing.run(status,
                  [make = kind.compose](Value const& record) { return unmasked(record, make); });
  }
  addDirective(compose, status);
}

}  // namespace Kovra::tool
