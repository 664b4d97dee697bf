/// @file
/// The tables of the secure-action exchange. Reader and writer share them: the reader's records
/// hold arrays, the writer's the caller's own texts under the same names.

#ifndef KOVRA_SECURITY_SECURITY_TABLES_HPP
#define KOVRA_SECURITY_SECURITY_TABLES_HPP

#include <type_traits>

#include "frame/field.hpp"
#include "frame/wipe.hpp"
#include "kvxsecrecords.h"
#include "security/security_words.hpp"

namespace Kovra::security {

using namespace frame;

// Roots.

inline constexpr char const* nonceRoots[] = {"nonce"};
inline constexpr char const* diffieHellmanRoots[] = {"diffie_hellman"};
inline constexpr char const* requestRoots[] = {"secure_action_request"};
inline constexpr char const* directiveRoots[] = {"action"};
inline constexpr char const* keysRoots[] = {"keys"};
inline constexpr char const* passkeyRoots[] = {"passkey"};

// A change of keys, as the writer gets it.

struct KeyChangeTexts {
  char const* current_passkey;
  char const* current_host_authentication_key;
  char const* new_host_authentication_key;
  char const* current_data_encryption_key;
  char const* new_data_encryption_key;
  char const* current_printer_lock_key;
  char const* new_printer_lock_key;
  char const* new_passkey;
};

/// Which parts of a change are written.
enum KeyChange : Circumstances {
  hostKeys = 1U,
  dataKeys = 2U,
  lockKeys = 4U,
  newPasskey = 8U,
};

// Rows.

/// A text of the caller's, which may be null: then nothing is written.
template <auto M>
struct GivenTextReading : NeverRead, NeverAssigned {
  template <class Record>
  static bool write(Sink& sink, char const* element, Record const& record, Circumstances, bool) {
    if (record.*M == nullptr) return false;
    sink.leaf(element, record.*M);
    return true;
  }
};

/// A secret of either kind of record.
template <auto M>
constexpr auto secret(std::string_view element) {
  using Record = typename frame::Member<M>::Record;
  if constexpr (std::is_array_v<typename frame::Member<M>::Type>) {
    return secretText<M>(element);
  } else {
    return reading<Record, GivenTextReading<M>>(element);
  }
}

/// Sets an attribute to a text of either kind of record; one of the caller's that is null sets
/// nothing. Is it set?
template <std::size_t N>
bool setAttribute(Sink& sink, char const* name, char const (&text)[N]) {
  sink.attribute(name, TerminatedText<N>(text).get());
  return true;
}
inline bool setAttribute(Sink& sink, char const* name, char const* const& text) {
  if (text == nullptr) return false;
  sink.attribute(name, text);
  return true;
}

/// Deliberately not read, though it counts as read: model, serial and nonce of the record stay the
/// host's own. Hosts compare them with what they sent. Texts of the caller's take no values.
template <class Record>
struct PrinterReading : NeverAssigned {
  static bool read(Element, Record&, Watch const&) { return true; }

  /// The attributes say which printer is meant; the result is that of the last one.
  static bool write(Sink& sink, char const* element, Record const& record, Circumstances, bool) {
    sink.open(element);
    setAttribute(sink, "model", record.model);
    setAttribute(sink, "serial", record.serial);
    bool const result = setAttribute(sink, "nonce", record.nonce);
    sink.close(element);
    return result;
  }
};

/// The action of a request, likewise. Written with the printer inside it, read beside it: meant.
template <class Record>
struct RequestedActionReading : NeverAssigned {
  static bool read(Element, Record&, Watch const&) { return true; }

  static bool write(Sink& sink, char const* element, Record const& record,
                    Circumstances circumstances, bool result) {
    sink.open(element);
    setAttribute(sink, "name", record.action);
    bool const printer =
        PrinterReading<Record>::write(sink, "printer", record, circumstances, result);
    sink.close(element);
    return printer;
  }

  static void outline(Outline& outline) { outlineWords(actionNames, outline); }
};

/// The action of a request for whoever composes it, who gets to know that no printer knows another.
/// The row has the words.
extern Kind const actionKind;
/// The action of a directive for those who show or assign a record: a text like any other, which
/// is the root's own.
extern Kind const directedActionKind;

// Tables.

template <class Record>
inline constexpr Table requestTable = {
    reading<Record, RequestedActionReading<Record>>("action"),
    readOnly(reading<Record, PrinterReading<Record>>("printer")),
};

/// The children of a directive's "action".
template <class Record>
inline constexpr Table directiveTable = {
    reading<Record, PrinterReading<Record>>("printer"),
    secret<&Record::hmac>("hmac"),
};

/// What tells which printer is meant: for those who show or compose a record, since attributes are
/// only written, by the rows above.
template <class Record>
inline constexpr Table printerMembers = {
    neverRead(text<&Record::model>("")),
    neverRead(text<&Record::serial>("")),
    neverRead(text<&Record::nonce>("")),
};

/// In the order of the document, which is not that of the record.
inline constexpr Table keysTable = {
    secret<&_tagSecKeys::host_authentication_key>("host_authentication_key"),
    secret<&_tagSecKeys::data_encryption_key>("data_encryption_key"),
    secret<&_tagSecKeys::printer_lock_key>("printer_lock_key"),
};

/// The children of "set".
template <class Record>
inline constexpr Table keyChangeTable = {
    secret<&Record::current_passkey>("current_passkey"),
    when(hostKeys,
         secret<&Record::current_host_authentication_key>("current_host_authentication_key")),
    when(hostKeys, secret<&Record::new_host_authentication_key>("new_host_authentication_key")),
    when(dataKeys, secret<&Record::current_data_encryption_key>("current_data_encryption_key")),
    when(dataKeys, secret<&Record::new_data_encryption_key>("new_data_encryption_key")),
    when(lockKeys, secret<&Record::current_printer_lock_key>("current_printer_lock_key")),
    when(lockKeys, secret<&Record::new_printer_lock_key>("new_printer_lock_key")),
    when(newPasskey, secret<&Record::new_passkey>("new_passkey")),
};

/// A reply may have several sets; the later ones overwrite.
inline constexpr Table keyChanges = {
    group<_tagSecSetKeys, keyChangeTable<_tagSecSetKeys>>("set"),
};

// Roots whose own text is the message.

struct Nonce {
  char nonce[32];
};
inline constexpr Table nonceTable = {text<&Nonce::nonce>("nonce")};
inline constexpr Table passkeyTable = {secretText<&_tagSecSetKeys::current_passkey>("passkey")};

// Diffie-Hellman values.

/// The values of both sides.
struct DiffieHellman {
  _tagHostDHKeys host;
  long printer_interim_key;
};

inline constexpr Table hostValues = {
    number<&_tagHostDHKeys::modulus>("modulus"),
    number<&_tagHostDHKeys::base>("base"),
    number<&_tagHostDHKeys::host_interim_key>("host_interim_key"),
};

/// Unlike elsewhere one value is enough, and an element without text takes nothing back.
bool readDiffieHellman(Element root, _tagHostDHKeys& host, long& printerInterimKey,
                       Watch const& watch);

struct DiffieHellmanReading {
  static bool read(Element root, DiffieHellman& record, Watch const& watch) {
    return readDiffieHellman(root, record.host, record.printer_interim_key, watch);
  }
};

// Directive.

/// Brings a text to the keyword in it. A keyword that stands in the text is no longer than the
/// text.
bool bringToKeyword(char* text);

struct DirectiveReading {
  static bool read(Element root, _tagSecDirecXML& record, Watch const& watch);
};

// Writing: what is below the root.

/// Adds what a directive's root holds. Texts may be null where the writer's may.
template <class Record>
void writeDirective(Sink& sink, Record const& record, int timeout) {
  sink.open(directiveRoots[0]);
  writeAll(sink, directiveTable<Record>, record, {}, false);
  if (timeout != 0) NumberKind::write(sink, "timeout", timeout);
  sink.close(directiveRoots[0]);
}

}  // namespace Kovra::security

#endif
