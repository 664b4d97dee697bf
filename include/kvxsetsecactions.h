/// @file
/// The writer of the secure-action exchange.

#ifndef KVXSETSECACTIONS_H
#define KVXSETSECACTIONS_H

#include "kovra_base.h"
#include "kvxhelper.h"
#include "kvxsecrecords.h"

namespace Kovra {

/// Composes the documents of the secure-action exchange that KVXSecAction reads. The writer is
/// itself the document: every composing operation begins with an empty one, so that one writer can
/// compose any number in turn. The last document stays in it until the next one, or its end, and is
/// wiped then. Different writers may be used in several threads at once.
///
/// Every composing operation hands its document to saveJob(wchar_t*, int) and has that one's
/// result. Texts are copied whole, as they stand. A null text leaves out what it would fill: an
/// attribute, an element with a text, the text of a root. Unlike other writers this one never
/// leaves a copy of its documents in a file, and the library's own buffers that held the printed
/// text are wiped.
///
/// 1024 wide characters and six for each character of the texts hold any document; convention 8 of
/// kvxhelper.h says how one that was cut is seen.
///
/// Wherever an operation takes a `char*` a string literal, a `char const*`, NULL or nullptr may be
/// passed as well, in any mix.
class KOVRA_EXPORT KVXSetSecActions : public TiXmlDocument {
 public:
  KVXSetSecActions();
  ~KVXSetSecActions() override;
  KVXSetSecActions(KVXSetSecActions const&) = delete;
  KVXSetSecActions& operator=(KVXSetSecActions const&) = delete;

  /// A root "nonce" with the text @p nonce.
  bool GetNonceXML(char* nonce, wchar_t* out, int outLen);

  /// A root "secure_action_request" with an "action", whose attribute "name" is the action's
  /// keyword; in it a "printer" with the attributes "model", "serial" and "nonce".
  bool SecureActionRequestXML(_tagSecActionXMLValues& values, wchar_t* out, int outLen);

  /// A root "secure_action_request" with an "action" that holds a "printer" as above, an "hmac",
  /// and, when @p timeout is not 0, a "timeout". The action's keyword is deliberately not part of
  /// it.
  bool SecureActionDirectiveXML(_tagSecActionXMLValues& values, wchar_t* out, int outLen,
                                int timeout);

  /// A change of the passkey: a root "keys" with a "set" that holds "current_passkey" and
  /// "new_passkey".
  bool GetPasskeyXML(char* currentPasskey, char* newPasskey, wchar_t* out, int outLen);

  /// A root "passkey" with the text @p passkey.
  bool GetSecureActionXML(char* passkey, wchar_t* out, int outLen);

  /// The three working keys: a root "keys" with "host_authentication_key", "data_encryption_key"
  /// and "printer_lock_key", deliberately in another order than the record's.
  bool SetSecureActionXML(_tagSecKeys& keys, wchar_t* out, int outLen);

  /// A change of keys: a root "keys" with a "set" that holds "current_passkey" and, as the flags
  /// say, the current and the new host authentication key, data encryption key and printer lock
  /// key. A new passkey goes through GetPasskeyXML.
  bool SetHostAndEncryptXML(wchar_t* out, int outLen, char* currentPasskey, char* currentHostKey,
                            char* newHostKey, char* currentDataKey, char* newDataKey,
                            char* currentLockKey, char* newLockKey, bool withHostKeys,
                            bool withDataKeys, bool withLockKeys);

  /// Prints the document as wide text in the process's locale, at most @p outLen characters; a
  /// terminator is written only where there is room for it. False when @p out is null.
  bool saveJob(wchar_t* out, int outLen);

  /// Saves the document, keys and all, to a file that the host names; false for a null path or when
  /// saving fails. The only way in which this writer touches a file.
  bool saveJob(char* path);

  /// @name The same operations on texts that can only be read
  /// @{
  template <class Text, detail::ReadOnlyText<Text> = 0>
  bool GetNonceXML(Text const& nonce, wchar_t* out, int outLen) {
    return GetNonceXML(detail::borrowed(nonce), out, outLen);
  }
  template <class Current, class New, detail::SomeReadOnlyText<Current, New> = 0>
  bool GetPasskeyXML(Current&& currentPasskey, New&& newPasskey, wchar_t* out, int outLen) {
    return GetPasskeyXML(detail::borrowed(currentPasskey), detail::borrowed(newPasskey), out,
                         outLen);
  }
  template <class Text, detail::ReadOnlyText<Text> = 0>
  bool GetSecureActionXML(Text const& passkey, wchar_t* out, int outLen) {
    return GetSecureActionXML(detail::borrowed(passkey), out, outLen);
  }
  template <class A, class B, class C, class D, class E, class F, class G,
            detail::SomeReadOnlyText<A, B, C, D, E, F, G> = 0>
  bool SetHostAndEncryptXML(wchar_t* out, int outLen, A&& currentPasskey, B&& currentHostKey,
                            C&& newHostKey, D&& currentDataKey, E&& newDataKey, F&& currentLockKey,
                            G&& newLockKey, bool withHostKeys, bool withDataKeys,
                            bool withLockKeys) {
    return SetHostAndEncryptXML(out, outLen, detail::borrowed(currentPasskey),
                                detail::borrowed(currentHostKey), detail::borrowed(newHostKey),
                                detail::borrowed(currentDataKey), detail::borrowed(newDataKey),
                                detail::borrowed(currentLockKey), detail::borrowed(newLockKey),
                                withHostKeys, withDataKeys, withLockKeys);
  }
  template <class Text, detail::ReadOnlyText<Text> = 0>
  bool saveJob(Text const& path) {
    return saveJob(detail::borrowed(path));
  }
  /// @}

 private:
  TiXmlElement* root_;  ///< of the last document; null before the first
};

}  // namespace Kovra

#endif
