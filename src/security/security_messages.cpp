#include "security/security_messages.hpp"

#include <string>

#include "security/security_tables.hpp"

/// Hosts know the values of both sides by those of the host, which stand first.
template <>
inline constexpr std::string_view Kovra::detail::recordName<Kovra::security::DiffieHellman> =
    Kovra::detail::recordName<Kovra::_tagHostDHKeys>;
static_assert(offsetof(Kovra::security::DiffieHellman, host) == 0);

namespace Kovra {

namespace {

using namespace security;

// Records, as they are shown and composed.

constexpr Table diffieHellman = {
    membersOf<&DiffieHellman::host, hostValues>(),
    readOnly(number<&DiffieHellman::printer_interim_key>("printer_interim_key")),
};

constexpr Table request = {
    members<_tagSecReqXML, requestTable<_tagSecReqXML>>(),
    readOnly(
        neverRead(frame::detail::memberRow<&_tagSecReqXML::action>({}, actionKind, &actionNames))),
    members<_tagSecReqXML, printerMembers<_tagSecReqXML>>(),
};

/// A reading shows the action, and a directive does not carry it.
constexpr Table directive = {
    members<_tagSecDirecXML, directiveTable<_tagSecDirecXML>>(),
    readOnly(
        frame::detail::memberRow<&_tagSecDirecXML::action>({}, directedActionKind, &actionNames)),
    members<_tagSecDirecXML, printerMembers<_tagSecDirecXML>>(),
};

// Documents. Every member that one holds has to be there: no printer shall get an empty key for one
// that was forgotten.

template <auto M>
bool writeText(Sink& sink, void const* record, Chosen, Circumstances) {
  using Record = typename frame::Member<M>::Record;
  auto const& text = static_cast<Record const*>(record)->*M;
  sink.text(TerminatedText<sizeof text>(text).get());
  return true;
}

template <auto const& Table>
bool writeRowsOf(Sink& sink, void const* record, Chosen, Circumstances circumstances) {
  return writeRows(sink, Table, record, circumstances, false);
}

bool writeChosenDirective(Sink& sink, void const* record, Chosen chosen, Circumstances) {
  writeDirective(sink, *static_cast<_tagSecDirecXML const*>(record), static_cast<int>(chosen[0]));
  return true;
}

bool writePasskeyChange(Sink& sink, void const* record, Chosen, Circumstances) {
  return writeRows(sink, keyChanges, record, newPasskey, false);
}

/// A kind of key, its part of the document, and its members.
struct KeyPair {
  KeyChange part;
  std::string_view current;
  std::string_view next;
};
constexpr KeyPair keyPairs[] = {
    {hostKeys, "current_host_authentication_key", "new_host_authentication_key"},
    {dataKeys, "current_data_encryption_key", "new_data_encryption_key"},
    {lockKeys, "current_printer_lock_key", "new_printer_lock_key"},
};

bool isNamed(Value const& record, std::string_view name) {
  return record.find(name) != nullptr;
}

bool refuse(Problems& problems, std::string_view path, char const* found, char const* expected) {
  problems.add(std::string(path), found, expected);
  return false;
}

/// The parts that the record names; false when one is there by half, or none at all.
bool sortKeys(Value const& record, Circumstances& parts, Problems& problems) {
  if (!record.isRecord()) return true;
  for (KeyPair const& pair : keyPairs) {
    bool const current = isNamed(record, pair.current);
    bool const next = isNamed(record, pair.next);
    if (!current && !next) continue;
    if (!current || !next) {
      return refuse(problems, current ? pair.next : pair.current, "nothing", "a text");
    }
    parts |= pair.part;
  }
  if (isNamed(record, "new_passkey")) {
    return refuse(problems, "new_passkey", "a value", "none: the passkey has a change of its own");
  }
  return parts != 0 || refuse(problems, "", "no key", "a current and a new one");
}

constexpr std::string_view nonceNeeds[] = {"nonce"};
constexpr Composing nonceComposing = {
    .command = "nonce",
    .title = "A nonce",
    .help = R"(The record:
  {"nonce": "..."})",
    .root = nonceRoots[0],
    .recordOf = "nonce",
    .required = nonceNeeds,
    .isSecret = true,
    .write = writeText<&Nonce::nonce>,
};

constexpr std::string_view requestNeeds[] = {"action", "model", "serial", "nonce"};
constexpr Composing requestComposing = {
    .command = "secure-request",
    .title = "A request for a secure action",
    .help = R"(The record:
  {"action": "...", "model": "...", "serial": "...", "nonce": "..."})",
    .root = requestRoots[0],
    .recordOf = "secure-action-request",
    .required = requestNeeds,
    .isSecret = true,
    .write = writeRowsOf<requestTable<_tagSecReqXML>>,
};

constexpr std::string_view directiveNeeds[] = {"model", "serial", "nonce", "hmac"};
constexpr ChoiceRow directiveChoices[] = {
    {"timeout", ChoiceRow::Form::number, "The action's timeout; 0, the default, is none", nullptr},
};
constexpr Composing directiveComposing = {
    .command = "secure-directive",
    .title = "A directive for a secure action",
    .help = R"(The record:
  {"model": "...", "serial": "...", "nonce": "...", "hmac": "..."})",
    .root = requestRoots[0],
    .recordOf = "secure-action-directive",
    .choices = directiveChoices,
    .required = directiveNeeds,
    .isSecret = true,
    .write = writeChosenDirective,
};

constexpr std::string_view passkeyNeeds[] = {"current_passkey"};
constexpr Composing passkeyComposing = {
    .command = "passkey",
    .title = "A passkey",
    .help = R"(The record:
  {"current_passkey": "..."})",
    .root = passkeyRoots[0],
    .recordOf = "passkey",
    .required = passkeyNeeds,
    .requiredOnly = true,
    .isSecret = true,
    .write = writeText<&_tagSecSetKeys::current_passkey>,
};

constexpr std::string_view passkeyChangeNeeds[] = {"current_passkey", "new_passkey"};
constexpr Composing passkeyChangeComposing = {
    .command = "passkey-change",
    .title = "A change of the passkey",
    .help = R"(The record:
  {"current_passkey": "...", "new_passkey": "..."})",
    .root = keysRoots[0],
    .recordOf = "security-key-change",
    .required = passkeyChangeNeeds,
    .requiredOnly = true,
    .isSecret = true,
    .write = writePasskeyChange,
};

constexpr std::string_view keysNeeds[] = {"host_authentication_key", "data_encryption_key",
                                          "printer_lock_key"};
constexpr Composing keysComposing = {
    .command = "keys",
    .title = "The three working keys",
    .help = R"(The record:
  {"host_authentication_key": "...", "data_encryption_key": "...",
   "printer_lock_key": "..."})",
    .root = keysRoots[0],
    .recordOf = "security-keys",
    .required = keysNeeds,
    .isSecret = true,
    .write = writeRowsOf<keysTable>,
};

constexpr Composing keysChangeComposing = {
    .command = "keys-change",
    .title = "A change of keys",
    .help = R"(The record:
  {"current_passkey": "...", "current_printer_lock_key": "...",
   "new_printer_lock_key": "..."}
  and likewise, or in their place, for data_encryption_key and
  host_authentication_key)",
    .root = keysRoots[0],
    .recordOf = "security-key-change",
    .required = passkeyNeeds,
    .isSecret = true,
    .sort = sortKeys,
    .write = writeRowsOf<keyChanges>,
};

constexpr MessageRow lines[] = {
    alsoWritten(reply("nonce", "the printer's nonce", nonceRoots, nonceTable, &readAsText),
                nonceComposing),
    reply("diffie-hellman", "public values of host and printer", diffieHellmanRoots, diffieHellman,
          &readBy<DiffieHellmanReading, DiffieHellman>),
    alsoWritten(
        reply("secure-action-request", "a request for an action; its values stay the host's own",
              requestRoots, request, &readWith<requestTable<_tagSecReqXML>>),
        requestComposing),
    alsoWritten(
        withWords(reply("secure-action-directive", "an action and the HMAC that permits it",
                        directiveRoots, directive, &readBy<DirectiveReading, _tagSecDirecXML>),
                  actionNames),
        directiveComposing),
    alsoWritten(reply("security-keys", "the three working keys", keysRoots, keysTable),
                keysComposing),
    alsoWritten(
        reply("security-key-change", "current and new keys and passkeys", keysRoots, keyChanges),
        keysChangeComposing),
    alsoWritten(reply("passkey", "the current passkey", passkeyRoots, passkeyTable, &readAsText),
                passkeyComposing),
    {.name = "passkey-change",
     .title = "a change of the passkey",
     .roots = {},
     .record = &recordType<_tagSecSetKeys>,
     .rows = keyChanges,
     .read = nullptr,
     .composing = &passkeyChangeComposing},
};

}  // namespace

std::span<frame::MessageRow const> securityMessages() {
  return lines;
}

}  // namespace Kovra
