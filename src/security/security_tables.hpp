/// @file
/// The tables of the secure-action exchange. Reader and writer share them: the reader's records
/// hold arrays, the writer's the caller's own texts under the same names.

#ifndef KOVRA_SECURITY_SECURITY_TABLES_HPP
#define KOVRA_SECURITY_SECURITY_TABLES_HPP

#include <type_traits>

#include "frame/typed/field.hpp"
#include "frame/typed/secret.hpp"
#include "kvxsecrecords.h"

namespace Kovra {

// Words.

/// Tried in this order wherever they stand in a text, so that "unlock_printer" comes before the
/// "lock_printer" in it. Actions are carried as texts; none has a code.
inline constexpr frame::typed::Word actionWords[] = {
    {"cancel_printer_passkey", 0},
    {"set_single_sided", 0},
    {"set_double_sided", 0},
    {"reset_physical_address", 0},
    {"reset_oem", 0},
    {"reset_printer_serial_number", 0},
    {"reset_laminator_serial_number", 0},
    {"clear_error_log", 0},
    {"clear_card_cleaning_log", 0},
    {"clear_service_log", 0},
    {"reset_card_count", 0},
    {"reset_impression_count", 0},
    {"reset_system_defaults", 0},
    {"reset_cards_laminated", 0},
    {"unlock_printer", 0},
    {"lock_printer", 0},
};
inline constexpr frame::typed::Vocabulary actionNames{actionWords, frame::typed::Match::substring,
                                                      0};
static_assert(frame::typed::everyWordIsReachable(actionNames));

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
enum KeyChange : frame::typed::Circumstances {
  hostKeys = 1U,
  dataKeys = 2U,
  lockKeys = 4U,
  newPasskey = 8U,
};

// Rows.

/// A text of the caller's, which may be null: then nothing is written.
template <auto M>
struct GivenTextReading : frame::typed::NeverAssigned {
  template <class Record>
  static bool write(TiXmlElement& parent, char const* element, Record const& record,
                    frame::typed::Circumstances, bool) {
    return KVXHelper::AddTagString(&parent, element, record.*M);
  }
};

template <auto M>
constexpr auto givenText(std::string_view element) {
  return frame::typed::reading<typename frame::typed::Member<M>::Record, GivenTextReading<M>>(
      element);
}

/// A secret of either kind of record.
template <auto M>
constexpr auto secret(std::string_view element) {
  if constexpr (std::is_array_v<typename frame::typed::Member<M>::Type>) {
    return frame::typed::secretText<M>(element);
  } else {
    return givenText<M>(element);
  }
}

/// A text of the caller's, in the form of those that a record's array holds.
class GivenText {
 public:
  explicit GivenText(char const* text) : text_(text) {}
  char const* get() const { return text_; }

 private:
  char const* text_;
};

template <class Text>
auto terminated(Text const& text) {
  if constexpr (std::is_array_v<Text>) {
    return frame::typed::TerminatedText<std::extent_v<Text>>(text);
  } else {
    return GivenText(text);
  }
}

/// Sets the attributes that say which printer is meant; the result is that of the last one.
template <class Record>
bool identify(TiXmlElement& printer, Record const& record) {
  KVXHelper::AddTagAttrib(&printer, "model", terminated(record.model).get());
  KVXHelper::AddTagAttrib(&printer, "serial", terminated(record.serial).get());
  return KVXHelper::AddTagAttrib(&printer, "nonce", terminated(record.nonce).get());
}

/// Deliberately not read, though it counts as read: model, serial and nonce of the record stay the
/// host's own. Hosts compare them with what they sent.
struct PrinterKind {
  template <class Record>
  static bool read(frame::typed::Element, Record&, frame::typed::Watch const&) {
    return true;
  }
  template <class Record>
  static bool write(TiXmlElement& parent, char const* element, Record const& record,
                    frame::typed::Circumstances, bool) {
    TiXmlElement* const printer = KVXHelper::AddTag(&parent, element);
    return printer != nullptr && identify(*printer, record);
  }
  /// Texts of the caller's take no values.
  template <class Record>
  static frame::typed::Assigned assign(Record&, std::string_view, Value const&, Problem&) {
    return frame::typed::Assigned::notMine;
  }
  template <class Record>
  requires std::is_array_v<decltype(Record::model)>
  static frame::typed::Assigned assign(Record& record, std::string_view member, Value const& value,
                                       Problem& problem) {
    constexpr frame::typed::Table members = {
        frame::typed::text<&Record::model>("model"),
        frame::typed::text<&Record::serial>("serial"),
        frame::typed::text<&Record::nonce>("nonce"),
    };
    return frame::typed::assignMember(members, record, member, value, problem);
  }
};

/// Sets the attribute that names an action.
template <class Record>
void nameAction(TiXmlElement& action, Record const& record) {
  KVXHelper::AddTagAttrib(&action, "name", terminated(record.action).get());
}

/// The action of a request, likewise. Written with the printer inside it, read beside it: meant.
struct RequestedActionKind {
  template <class Record>
  static bool read(frame::typed::Element, Record&, frame::typed::Watch const&) {
    return true;
  }
  template <class Record>
  static bool write(TiXmlElement& parent, char const* element, Record const& record,
                    frame::typed::Circumstances circumstances, bool result) {
    TiXmlElement* const action = KVXHelper::AddTag(&parent, element);
    if (action == nullptr) return false;
    nameAction(*action, record);
    return PrinterKind::write(*action, "printer", record, circumstances, result);
  }
  /// Texts of the caller's take no values.
  template <class Record>
  static frame::typed::Assigned assign(Record&, std::string_view, Value const&, Problem&) {
    return frame::typed::Assigned::notMine;
  }
  /// Whoever writes a request by hand gets to know that no printer knows its action.
  template <class Record>
  requires std::is_array_v<decltype(Record::action)>
  static frame::typed::Assigned assign(Record& record, std::string_view member, Value const& value,
                                       Problem& problem) {
    if (member != "action") return frame::typed::Assigned::notMine;
    frame::typed::Word const* const word = actionNames.find(value.text.c_str());
    if (value.kind != Value::Kind::text || word == nullptr || word->text != value.text) {
      return frame::typed::fail(problem, frame::typed::described(value),
                                "one of: " + frame::typed::listed(actionNames));
    }
    return frame::typed::assignText(record.action, value, problem);
  }
  static void outline(frame::typed::Outline& outline) {
    for (frame::typed::Word const& word : actionNames.words) outline.emplace(word.text);
  }
};

// Tables.

template <class Record>
inline constexpr frame::typed::Table requestTable = {
    frame::typed::reading<Record, RequestedActionKind>("action"),
    frame::typed::readOnly(frame::typed::reading<Record, PrinterKind>("printer")),
};

/// The children of a directive's "action".
template <class Record>
inline constexpr frame::typed::Table directiveTable = {
    frame::typed::reading<Record, PrinterKind>("printer"),
    secret<&Record::hmac>("hmac"),
};

/// In the order of the document, which is not that of the record.
inline constexpr frame::typed::Table keysTable = {
    secret<&_tagSecKeys::host_authentication_key>("host_authentication_key"),
    secret<&_tagSecKeys::data_encryption_key>("data_encryption_key"),
    secret<&_tagSecKeys::printer_lock_key>("printer_lock_key"),
};

/// The children of "set".
template <class Record>
inline constexpr frame::typed::Table keyChangeTable = {
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

}  // namespace Kovra

#endif
