#include <initializer_list>
#include <string>
#include <string_view>

#include "face/compose_choice.hpp"
#include "frame/assign.hpp"
#include "frame/output.hpp"
#include "frame/wipe.hpp"
#include "kovra.hpp"
#include "security/kvxsetsecactions_documents.hpp"
#include "security/security_tables.hpp"

namespace Kovra {

namespace {

using namespace frame::typed;

using Names = std::initializer_list<std::string_view>;

bool isNamed(Value const& record, std::string_view name) {
  return record.find(std::string(name)) != nullptr;
}

/// Is every one of the members there? What is forgotten would be written as an empty text.
bool areNamed(Value const& record, Names names, Problem& problem) {
  for (std::string_view const name : names) {
    if (!isNamed(record, name)) return refuse(problem, name, "nothing", "a text");
  }
  return true;
}

/// Is there no member but these?
bool areAllNamed(Value const& record, Names names, Problem& problem) {
  for (Kovra::Member const& member : record.members) {
    bool known = false;
    for (std::string_view const name : names) known = known || name == member.name;
    if (!known)
      return refuse(problem, member.name, "a value", "none: this document has no such element");
  }
  return true;
}

/// Fills a record by its table, has a document made of it, and wipes both.
template <class Record, std::size_t N, class Build>
Composition compose(Value const& value, Table<Record, N> const& table, Names needed, Build build) {
  Composition composition;
  Record record{};
  WipedAtEnd const wiped(record);
  if (assignAll(table, record, value, composition.problem) == Assigned::failed ||
      !areNamed(value, needed, composition.problem)) {
    return composition;
  }
  SecretDocument document;
  build(document, record);
  composition.text = printNarrow(document);
  composition.composed = !composition.text.empty();
  return composition;
}

struct Nonce {
  char nonce[32];
};
constexpr Table nonceTable = {text<&Nonce::nonce>("nonce")};

/// A reading shows the action, and a directive does not carry it.
constexpr Table directiveMembers = {
    neverRead(text<&_tagSecDirecXML::action>("action")),
    group<_tagSecDirecXML, directiveTable<_tagSecDirecXML>>("action"),
};

KeyChangeTexts textsOf(_tagSecSetKeys const& keys) {
  return {keys.current_passkey,
          keys.current_host_authentication_key,
          keys.new_host_authentication_key,
          keys.current_data_encryption_key,
          keys.new_data_encryption_key,
          keys.current_printer_lock_key,
          keys.new_printer_lock_key,
          keys.new_passkey};
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

/// The parts that the record names; false when one is there by half, or none at all.
bool partsOf(Value const& record, Circumstances& parts, Problem& problem) {
  for (KeyPair const& pair : keyPairs) {
    if (!isNamed(record, pair.current) && !isNamed(record, pair.next)) continue;
    if (!areNamed(record, {pair.current, pair.next}, problem)) return false;
    parts |= pair.part;
  }
  if (isNamed(record, "new_passkey")) {
    return refuse(problem, "new_passkey", "a value", "none: the passkey has a change of its own");
  }
  return parts != 0 || refuse(problem, "", "no key", "a current and a new one");
}

Composition failed(Problem problem) {
  Composition composition;
  composition.problem = std::move(problem);
  return composition;
}

}  // namespace

Composition composeNonce(Value const& value) {
  return compose(value, nonceTable, {"nonce"}, [](TiXmlDocument& document, Nonce const& record) {
    buildText(document, *nonceRoots, record.nonce);
  });
}

Composition composeSecureRequest(Value const& value) {
  return compose(
      value, requestTable<_tagSecReqXML>, {"action", "model", "serial", "nonce"},
      [](TiXmlDocument& document, _tagSecReqXML const& record) {
        buildRequest(document, {record.action, record.model, record.serial, record.nonce, nullptr});
      });
}

Composition composeSecureDirective(Value const& value, int timeout) {
  return compose(value, directiveMembers, {"model", "serial", "nonce", "hmac"},
                 [timeout](TiXmlDocument& document, _tagSecDirecXML const& record) {
                   buildDirective(document,
                                  {nullptr, record.model, record.serial, record.nonce, record.hmac},
                                  timeout);
                 });
}

Composition composePasskey(Value const& value) {
  Problem problem;
  if (!areAllNamed(value, {"current_passkey"}, problem)) return failed(problem);
  return compose(value, keyChangeTable<_tagSecSetKeys>, {"current_passkey"},
                 [](TiXmlDocument& document, _tagSecSetKeys const& record) {
                   buildText(document, *passkeyRoots, record.current_passkey);
                 });
}

Composition composePasskeyChange(Value const& value) {
  Problem problem;
  if (!areAllNamed(value, {"current_passkey", "new_passkey"}, problem)) return failed(problem);
  return compose(value, keyChangeTable<_tagSecSetKeys>, {"current_passkey", "new_passkey"},
                 [](TiXmlDocument& document, _tagSecSetKeys const& record) {
                   buildKeyChange(document, textsOf(record), newPasskey);
                 });
}

Composition composeKeys(Value const& value) {
  return compose(
      value, keysTable, {"host_authentication_key", "data_encryption_key", "printer_lock_key"},
      [](TiXmlDocument& document, _tagSecKeys const& record) { buildKeys(document, record); });
}

Composition composeKeysChange(Value const& value) {
  Problem problem;
  Circumstances parts = 0;
  if (value.kind == Value::Kind::record && !partsOf(value, parts, problem)) return failed(problem);
  return compose(value, keyChangeTable<_tagSecSetKeys>, {"current_passkey"},
                 [parts](TiXmlDocument& document, _tagSecSetKeys const& record) {
                   buildKeyChange(document, textsOf(record), parts);
                 });
}

}  // namespace Kovra
