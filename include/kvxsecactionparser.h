/// @file
/// The reader of the secure-action exchange.

#ifndef KVXSECACTIONPARSER_H
#define KVXSECACTIONPARSER_H

#include "kovra_base.h"
#include "kvxhelper.h"
#include "kvxsecrecords.h"

namespace Kovra {

/// Reads the documents of the secure-action exchange into records: nonce, Diffie-Hellman values,
/// action requests and directives, keys and passkeys. It holds no state: any number of threads may
/// read different records at once. The order of the exchange and its cryptography are the host's.
///
/// The entries take a document as wide text: a reference to its first character and its length in
/// characters, which is also the most bytes that its narrow form may have in the process's
/// character set (LC_CTYPE); a longer text is cut, and a cut one is refused. A host whose text is
/// terminated passes `text.size() * MB_CUR_MAX`, and calls setlocale(LC_CTYPE, ""), not LC_ALL,
/// which may make the points in numbers commas. They return false, with the record untouched, for a
/// length below 1, for a text that is not well-formed or that could harm the parser (elements
/// nested deeper than 128, more than 256 attributes on one element), for another root, and for a
/// root without children.
///
/// The element readers take an element of the host's own tree. They visit its children in order,
/// read those that they know, by exact name, and skip the others; a repeated element is read again.
/// Unless an operation says otherwise the result is whether the last known child could be read:
/// false after an empty one, though earlier members were filled, and false when there was none, or
/// for a null element.
///
/// A text is copied as far as its array goes; what lies behind its terminator is left alone.
/// Members that a document does not name keep what the caller put there. The library's own copies
/// of a document's text, and the tree that was made of it, are wiped before they are released.
class KOVRA_EXPORT KVXSecAction {
 public:
  KVXSecAction();
  ~KVXSecAction();

  /// Copies the text of the root "nonce" into @p out, which has room for 32 characters: at most 31
  /// and a terminator. False, with @p out untouched, when there is none or @p out is null.
  bool GetNonceValue(wchar_t const& text, int length, char* out);

  /// Reads the host's values of the root "diffie_hellman"; the printer's is discarded. The result
  /// is that of ParseDHKeys.
  bool ParseHostDHKeyValues(wchar_t const& text, unsigned long length, _tagHostDHKeys& out);

  /// Reads the printer's value of the same root; the host's are discarded, and still count: a
  /// document with nothing but them gives true and leaves @p printerInterimKey as it was.
  bool ParsePrinterDHKeyValues(wchar_t const& text, unsigned long length, long& printerInterimKey);

  /// Looks for the children "action" and "printer" of the root "secure_action_request". Nothing is
  /// read into @p out; the result is that of ParseReqValues. A null @p text gives false.
  bool ParseSecureRequestValues(wchar_t* text, unsigned long length, _tagSecReqXML& out);

  /// Copies the text of the root "action" into `action`, brings it to its keyword by GetActionName,
  /// and reads the children by ParseDirectiveValues, whose result it has. The text is the root's
  /// first child's, whatever that is: a directive that begins with its "printer" element stores
  /// "printer". A directive with text only, without any element, stores its action and gives false.
  bool ParseSecureDirectiveValues(wchar_t const& text, unsigned long length, _tagSecDirecXML& out);

  /// Reads the three working keys, root "keys". The result is that of ParseHostNEncryptKey.
  bool ParseSecurityKeys(wchar_t const& text, unsigned long length, _tagSecKeys& out);

  /// Reads a change of keys and passkey, root "keys". The result is that of ParsePassKey.
  bool ParseSetSecurityKeys(wchar_t const& text, unsigned long length, _tagSecSetKeys& out);

  /// Copies the text of the root "passkey" into `current_passkey`; no other member is touched.
  bool ParseGetSecureActionRequest(wchar_t const& text, unsigned long length, _tagSecSetKeys& out);

  /// Reads "modulus", "base" and "host_interim_key" into @p host and "printer_interim_key" into
  /// @p printerInterimKey: hexadecimal when the text begins with "0x", else decimal, both unsigned.
  /// A text that is no number leaves its value and still counts as read. The result is whether any
  /// of the four had a text; unlike elsewhere, an empty one later on changes nothing.
  bool ParseDHKeys(TiXmlElement* root, _tagHostDHKeys& host, long& printerInterimKey);

  /// Reads "hmac". A "printer" child is not read: its attributes "model", "serial" and "nonce" are
  /// set, in this order, from the record's members, which stay the caller's own.
  bool ParseDirectiveValues(TiXmlElement* action, _tagSecDirecXML& record);

  /// Reads nothing: sets the attribute "name" of an "action" child from the record's `action`, and
  /// those of a "printer" child as ParseDirectiveValues does. True when either is there.
  bool ParseReqValues(TiXmlElement* root, _tagSecReqXML& record);

  /// Reads "data_encryption_key", "host_authentication_key" and "printer_lock_key".
  bool ParseHostNEncryptKey(TiXmlElement* root, _tagSecKeys& out);

  /// Reads every child "set" by ParsePassKey1; later values overwrite earlier ones. The result is
  /// that of the last "set".
  bool ParsePassKey(TiXmlElement* root, _tagSecSetKeys& out);

  /// Reads the eight current and new keys and passkeys, children of "set", each into its member.
  bool ParsePassKey1(TiXmlElement* set, _tagSecSetKeys& out);

  /// Brings a text to the action's keyword in it: the first of these that stands anywhere in the
  /// text overwrites it from its start, with a terminator; what lies behind that is left alone.
  /// "cancel_printer_passkey", "set_single_sided", "set_double_sided", "reset_physical_address",
  /// "reset_oem", "reset_printer_serial_number", "reset_laminator_serial_number",
  /// "clear_error_log", "clear_card_cleaning_log", "clear_service_log", "reset_card_count",
  /// "reset_impression_count", "reset_system_defaults", "reset_cards_laminated", "unlock_printer",
  /// "lock_printer". Case counts. False, with the text as it was, when none does, and for a null
  /// pointer.
  bool GetActionName(char* text);

  /// The same operation on a text that can only be read.
  template <class Text, detail::ReadOnlyWideText<Text> = 0>
  bool ParseSecureRequestValues(Text const& text, unsigned long length, _tagSecReqXML& out) {
    return ParseSecureRequestValues(detail::borrowedWide(text), length, out);
  }
};

}  // namespace Kovra

#endif
