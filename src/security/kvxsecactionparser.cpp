#include "kvxsecactionparser.h"

#include "frame/message.hpp"
#include "security/security_tables.hpp"

namespace Kovra {

namespace {

using namespace security;

/// The wide entry of either side; what the other side said is the caller's to drop.
bool readBothSides(wchar_t const& text, unsigned long length, _tagHostDHKeys& host,
                   long& printerInterimKey) {
  return readWide(&text, length, diffieHellmanRoots, [&](Element root) {
    return readDiffieHellman(root, host, printerInterimKey, Watch());
  });
}

// What a reading leaves in a host's own tree.

template <std::size_t N>
void setAttribute(TiXmlElement& element, char const* name, char const (&text)[N]) {
  KVXHelper::AddTagAttrib(&element, name, TerminatedText<N>(text).get());
}

/// Each printer there is the record's.
template <class Record>
void identifyPrinters(TiXmlElement* parent, Record const& record) {
  if (parent == nullptr) return;
  for (TiXmlElement* printer = parent->FirstChildElement("printer"); printer != nullptr;
       printer = printer->NextSiblingElement("printer")) {
    setAttribute(*printer, "model", record.model);
    setAttribute(*printer, "serial", record.serial);
    setAttribute(*printer, "nonce", record.nonce);
  }
}

/// Each action has the record's name.
void nameActions(TiXmlElement* parent, _tagSecReqXML const& record) {
  if (parent == nullptr) return;
  for (TiXmlElement* action = parent->FirstChildElement("action"); action != nullptr;
       action = action->NextSiblingElement("action")) {
    setAttribute(*action, "name", record.action);
  }
}

}  // namespace

KVXSecAction::KVXSecAction() = default;
KVXSecAction::~KVXSecAction() = default;

bool KVXSecAction::GetNonceValue(wchar_t const& text, int length, char* out) {
  return readWide(&text, length, nonceRoots, [&](Element root) {
    return out != nullptr && readText(root, {out, sizeof Nonce::nonce});
  });
}

bool KVXSecAction::ParseHostDHKeyValues(wchar_t const& text, unsigned long length,
                                        _tagHostDHKeys& out) {
  long discarded = 0;
  WipedAtEnd const wiped(discarded);
  return readBothSides(text, length, out, discarded);
}

bool KVXSecAction::ParsePrinterDHKeyValues(wchar_t const& text, unsigned long length,
                                           long& printerInterimKey) {
  _tagHostDHKeys discarded{};
  WipedAtEnd const wiped(discarded);
  return readBothSides(text, length, discarded, printerInterimKey);
}

bool KVXSecAction::ParseSecureRequestValues(wchar_t* text, unsigned long length,
                                            _tagSecReqXML& out) {
  return text != nullptr &&
         readReply(*text, length, requestRoots, requestTable<_tagSecReqXML>, out);
}

bool KVXSecAction::ParseSecureDirectiveValues(wchar_t const& text, unsigned long length,
                                              _tagSecDirecXML& out) {
  return readReplyBy<DirectiveReading>(text, length, directiveRoots, out);
}

bool KVXSecAction::ParseSecurityKeys(wchar_t const& text, unsigned long length, _tagSecKeys& out) {
  return readReply(text, length, keysRoots, keysTable, out);
}

bool KVXSecAction::ParseSetSecurityKeys(wchar_t const& text, unsigned long length,
                                        _tagSecSetKeys& out) {
  return readReply(text, length, keysRoots, keyChanges, out);
}

bool KVXSecAction::ParseGetSecureActionRequest(wchar_t const& text, unsigned long length,
                                               _tagSecSetKeys& out) {
  return readWide(&text, length, passkeyRoots,
                  [&](Element root) { return readText(root, out.current_passkey); });
}

bool KVXSecAction::ParseDHKeys(TiXmlElement* root, _tagHostDHKeys& host, long& printerInterimKey) {
  HostTree const tree(root);
  return security::readDiffieHellman(tree.root(), host, printerInterimKey, Watch());
}

bool KVXSecAction::ParseDirectiveValues(TiXmlElement* action, _tagSecDirecXML& record) {
  identifyPrinters(action, record);
  return walk(action, directiveTable<_tagSecDirecXML>, record);
}

bool KVXSecAction::ParseReqValues(TiXmlElement* root, _tagSecReqXML& record) {
  nameActions(root, record);
  identifyPrinters(root, record);
  return walk(root, requestTable<_tagSecReqXML>, record);
}

bool KVXSecAction::ParseHostNEncryptKey(TiXmlElement* root, _tagSecKeys& out) {
  return walk(root, keysTable, out);
}

bool KVXSecAction::ParsePassKey(TiXmlElement* root, _tagSecSetKeys& out) {
  return walk(root, keyChanges, out);
}

bool KVXSecAction::ParsePassKey1(TiXmlElement* set, _tagSecSetKeys& out) {
  return walk(set, keyChangeTable<_tagSecSetKeys>, out);
}

bool KVXSecAction::GetActionName(char* text) {
  return bringToKeyword(text);
}

}  // namespace Kovra
