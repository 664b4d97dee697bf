#include "kvxsetsecactions.h"

#include "frame/output.hpp"
#include "frame/wipe.hpp"
#include "security/security_tables.hpp"

namespace Kovra {

namespace {

using namespace security;

/// Every document begins by wiping the one before it.
TiXmlElement* begin(TiXmlDocument& document, char const* root) {
  wipeBelow(document);
  document.Clear();
  return beginDocument(document, root);
}

/// A root with nothing but a text; a null one is none.
TiXmlElement* buildText(TiXmlDocument& document, char const* root, char const* text) {
  TiXmlElement* const element = begin(document, root);
  if (text != nullptr) element->LinkEndChild(new TiXmlText(text));
  return element;
}

/// `parts` are of KeyChange.
TiXmlElement* buildKeyChange(TiXmlDocument& document, KeyChangeTexts const& texts,
                             Circumstances parts) {
  TiXmlElement* const root = begin(document, keysRoots[0]);
  writeBelow(*root, "set", keyChangeTable<KeyChangeTexts>, texts, parts);
  return root;
}

}  // namespace

KVXSetSecActions::KVXSetSecActions() : root_(nullptr) {}
KVXSetSecActions::~KVXSetSecActions() {
  wipeBelow(*this);
}

bool KVXSetSecActions::GetNonceXML(char* nonce, wchar_t* out, int outLen) {
  root_ = buildText(*this, nonceRoots[0], nonce);
  return saveJob(out, outLen);
}

bool KVXSetSecActions::SecureActionRequestXML(_tagSecActionXMLValues& values, wchar_t* out,
                                              int outLen) {
  root_ = begin(*this, requestRoots[0]);
  writeAll(*root_, requestTable<_tagSecActionXMLValues>, values, {}, false);
  return saveJob(out, outLen);
}

bool KVXSetSecActions::SecureActionDirectiveXML(_tagSecActionXMLValues& values, wchar_t* out,
                                                int outLen, int timeout) {
  root_ = begin(*this, requestRoots[0]);
  TreeSink sink(*root_);
  writeDirective(sink, values, timeout);
  return saveJob(out, outLen);
}

bool KVXSetSecActions::GetPasskeyXML(char* currentPasskey, char* newPasskeyText, wchar_t* out,
                                     int outLen) {
  KeyChangeTexts texts{};
  texts.current_passkey = currentPasskey;
  texts.new_passkey = newPasskeyText;
  root_ = buildKeyChange(*this, texts, newPasskey);
  return saveJob(out, outLen);
}

bool KVXSetSecActions::GetSecureActionXML(char* passkey, wchar_t* out, int outLen) {
  root_ = buildText(*this, passkeyRoots[0], passkey);
  return saveJob(out, outLen);
}

bool KVXSetSecActions::SetSecureActionXML(_tagSecKeys& keys, wchar_t* out, int outLen) {
  root_ = begin(*this, keysRoots[0]);
  writeAll(*root_, keysTable, keys, {}, false);
  return saveJob(out, outLen);
}

bool KVXSetSecActions::SetHostAndEncryptXML(wchar_t* out, int outLen, char* currentPasskey,
                                            char* currentHostKey, char* newHostKey,
                                            char* currentDataKey, char* newDataKey,
                                            char* currentLockKey, char* newLockKey,
                                            bool withHostKeys, bool withDataKeys,
                                            bool withLockKeys) {
  KeyChangeTexts const texts{currentPasskey, currentHostKey, newHostKey, currentDataKey,
                             newDataKey,     currentLockKey, newLockKey, nullptr};
  Circumstances const parts = (withHostKeys ? hostKeys : Circumstances{}) |
                              (withDataKeys ? dataKeys : Circumstances{}) |
                              (withLockKeys ? lockKeys : Circumstances{});
  root_ = buildKeyChange(*this, texts, parts);
  return saveJob(out, outLen);
}

bool KVXSetSecActions::saveJob(wchar_t* out, int outLen) {
  return printWide(*this, out, outLen);
}

bool KVXSetSecActions::saveJob(char* path) {
  return saveTo(*this, path);
}

}  // namespace Kovra
