#include "kvxsetsecactions.h"

#include "frame/output.hpp"
#include "frame/wipe.hpp"
#include "security/kvxsetsecactions_documents.hpp"

namespace Kovra {

namespace {

using namespace frame::typed;

/// Every document begins by wiping the one before it.
TiXmlElement* begin(TiXmlDocument& document, char const* root) {
  wipeBelow(document);
  document.Clear();
  return beginDocument(document, root);
}

}  // namespace

TiXmlElement* buildText(TiXmlDocument& document, char const* root, char const* text) {
  TiXmlElement* const element = begin(document, root);
  if (text != nullptr) element->LinkEndChild(new TiXmlText(text));
  return element;
}

TiXmlElement* buildRequest(TiXmlDocument& document, _tagSecActionXMLValues const& values) {
  TiXmlElement* const root = begin(document, *requestRoots);
  writeAll(*root, requestTable<_tagSecActionXMLValues>, values, {}, false);
  return root;
}

TiXmlElement* buildDirective(TiXmlDocument& document, _tagSecActionXMLValues const& values,
                             int timeout) {
  TiXmlElement* const root = begin(document, *requestRoots);
  TiXmlElement* const action = KVXHelper::AddTag(root, *directiveRoots);
  if (action == nullptr) return root;
  writeAll(*action, directiveTable<_tagSecActionXMLValues>, values, {}, false);
  if (timeout != 0) KVXHelper::AddTagNumber(action, "timeout", timeout);
  return root;
}

TiXmlElement* buildKeys(TiXmlDocument& document, _tagSecKeys const& keys) {
  TiXmlElement* const root = begin(document, *keysRoots);
  writeAll(*root, keysTable, keys, {}, false);
  return root;
}

TiXmlElement* buildKeyChange(TiXmlDocument& document, KeyChangeTexts const& texts,
                             Circumstances parts) {
  TiXmlElement* const root = begin(document, *keysRoots);
  writeBelow(*root, "set", keyChangeTable<KeyChangeTexts>, texts, parts);
  return root;
}

KVXSetSecActions::KVXSetSecActions() : root_(nullptr) {}
KVXSetSecActions::~KVXSetSecActions() {
  wipeBelow(*this);
}

bool KVXSetSecActions::GetNonceXML(char* nonce, wchar_t* out, int outLen) {
  root_ = buildText(*this, *nonceRoots, nonce);
  return saveJob(out, outLen);
}

bool KVXSetSecActions::SecureActionRequestXML(_tagSecActionXMLValues& values, wchar_t* out,
                                              int outLen) {
  root_ = buildRequest(*this, values);
  return saveJob(out, outLen);
}

bool KVXSetSecActions::SecureActionDirectiveXML(_tagSecActionXMLValues& values, wchar_t* out,
                                                int outLen, int timeout) {
  root_ = buildDirective(*this, values, timeout);
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
  root_ = buildText(*this, *passkeyRoots, passkey);
  return saveJob(out, outLen);
}

bool KVXSetSecActions::SetSecureActionXML(_tagSecKeys& keys, wchar_t* out, int outLen) {
  root_ = buildKeys(*this, keys);
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
  return printSecretWide(*this, out, outLen);
}

bool KVXSetSecActions::saveJob(char* path) {
  return saveTo(*this, path);
}

}  // namespace Kovra
