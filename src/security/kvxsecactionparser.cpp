#include "kvxsecactionparser.h"

#include <array>
#include <cstdlib>
#include <cstring>

#include "security/security_replies.hpp"
#include "security/security_tables.hpp"

namespace Kovra {

namespace {

using namespace frame::typed;

// Roots whose own text is the message.

/// The root is read as a row reads its element.
template <auto const& Row>
struct RowReading {
  template <class Record>
  static bool read(Element root, Record& record, Watch const& watch) {
    return Row.read(root, record, watch);
  }
  static void outline(Outline& outline) { outline.emplace(Row.element()); }
};

struct Nonce {
  char nonce[32];
};
constexpr auto nonceRow = text<&Nonce::nonce>("nonce");
using NonceReading = RowReading<nonceRow>;

constexpr auto passkeyRow = secretText<&_tagSecSetKeys::current_passkey>("passkey");
using PasskeyReading = RowReading<passkeyRow>;

// Diffie-Hellman values.

/// Where a value of the exchange goes, and whether the document had a text for it.
struct Exchanged {
  long* target;
  bool read;
};

/// Unsigned, hexadecimal behind "0x" and else decimal. A text that is no number counts as read and
/// stores nothing; hosts rely on it.
struct ExchangedKind : NeverWritten, NeverAssigned {
  static bool read(Element element, Exchanged& out) {
    std::array<char, 64> digits{};
    WipedAtEnd const wiped(digits);
    if (!convertText(element.text(), digits.data(), static_cast<int>(digits.size()))) {
      return false;
    }
    scan(digits.data(), *out.target);
    out.read = true;
    return true;
  }

  static void report(Observer& observer, std::string_view name, Element element, Exchanged const&) {
    char const* const text = element.text();
    long value = 0;
    bool const scanned = scan(text, value);
    if (scanned) observer.member(name, shown(value));
    if (!isWhole(text)) {
      observer.notANumber(element, "a whole number, decimal or with 0x before it");
    } else if (value < 0) {  // the record's members are signed
      observer.changedNumber(element, std::to_string(value));
    }
  }

 private:
  static bool isHexadecimal(char const* text) { return std::strncmp(text, "0x", 2) == 0; }

  // Not by sscanf(), which leaves a copy of the digits on the stack.
  static bool scan(char const* text, long& out) {
    char* end = nullptr;
    unsigned long const value = std::strtoul(text, &end, isHexadecimal(text) ? 16 : 10);
    if (end == text) return false;
    out = static_cast<long>(value);
    return true;
  }

  static bool isWhole(char const* text) {
    bool const hexadecimal = isHexadecimal(text);
    char const* const digits = hexadecimal ? text + 2 : text;
    std::size_t const length =
        std::strspn(digits, hexadecimal ? "0123456789abcdefABCDEF" : "0123456789");
    return length > 0 && digits[length] == '\0';
  }
};

struct DiffieHellman {
  Exchanged modulus;
  Exchanged base;
  Exchanged host_interim_key;
  Exchanged printer_interim_key;
};

constexpr Table diffieHellman = {
    row<&DiffieHellman::modulus, ExchangedKind>("modulus"),
    row<&DiffieHellman::base, ExchangedKind>("base"),
    row<&DiffieHellman::host_interim_key, ExchangedKind>("host_interim_key"),
    row<&DiffieHellman::printer_interim_key, ExchangedKind>("printer_interim_key"),
};

/// Unlike elsewhere one value is enough, and an element without text takes nothing back.
bool readDiffieHellman(Element root, _tagHostDHKeys& host, long& printerInterimKey,
                       Watch const& watch) {
  DiffieHellman values{{&host.modulus, false},
                       {&host.base, false},
                       {&host.host_interim_key, false},
                       {&printerInterimKey, false}};
  walk(root, diffieHellman, values, watch);
  return values.modulus.read || values.base.read || values.host_interim_key.read ||
         values.printer_interim_key.read;
}

/// The wide entry of either side; what the other side said is the caller's to drop.
bool readDiffieHellman(wchar_t const& text, unsigned long length, _tagHostDHKeys& host,
                       long& printerInterimKey) {
  return readWide(&text, length, diffieHellmanRoots, [&](Element root) {
    Watch const nobody;
    return readDiffieHellman(root, host, printerInterimKey, nobody);
  });
}

/// The values of both sides, for the catalogue.
struct BothSides {
  _tagHostDHKeys host;
  long printerInterimKey;
};

struct BothSidesReading {
  static bool read(Element root, BothSides& record, Watch const& watch) {
    return readDiffieHellman(root, record.host, record.printerInterimKey, watch);
  }
  static void outline(Outline& outline) { outlineOf(diffieHellman, outline); }
};

// Directive.

/// Brings a text to the keyword in it. A keyword that stands in the text is no longer than the
/// text.
bool bringToKeyword(char* text) {
  Word const* const word = text != nullptr ? actionNames.find(text) : nullptr;
  if (word == nullptr) return false;
  std::memcpy(text, word->text.data(), word->text.size() + 1);
  return true;
}

/// The text of the root, which is its first child's, whatever that is.
struct DirectedActionKind : NeverWritten, NeverAssigned {
  template <std::size_t N>
  static bool read(Element root, char (&out)[N]) {
    if (!TextKind::read(root, out)) return false;
    bringToKeyword(out);
    return true;
  }
  template <std::size_t N>
  static void report(Observer& observer, std::string_view name, Element root,
                     char const (&value)[N]) {
    observer.member(name, shown(textIn(value)));
    if (actionNames.find(value) == nullptr) observer.unknownWord(root, root.text(), actionNames);
  }
};

constexpr auto directedAction = row<&_tagSecDirecXML::action, DirectedActionKind>("action");

struct DirectiveReading {
  static bool read(Element root, _tagSecDirecXML& record, Watch const& watch) {
    return RowReading<directedAction>::read(root, record, watch) &&
           walk(root, directiveTable<_tagSecDirecXML>, record, watch);
  }
  static void outline(Outline& outline) {
    for (Word const& word : actionWords) outline.emplace(word.text);
    outlineOf(directiveTable<_tagSecDirecXML>, outline);
  }
};

// Requests and keys.

using RequestReading = TableReading<requestTable<_tagSecReqXML>>;
using KeysReading = TableReading<keysTable>;

/// A reply may have several sets; the later ones overwrite.
constexpr Table keyChanges = {
    group<_tagSecSetKeys, keyChangeTable<_tagSecSetKeys>>("set"),
};
using KeyChangesReading = TableReading<keyChanges>;

/// What a reading leaves in a host's own tree: each printer there is the record's.
template <class Record>
void identifyPrinters(TiXmlElement* parent, Record const& record) {
  if (parent == nullptr) return;
  for (TiXmlElement* printer = parent->FirstChildElement("printer"); printer != nullptr;
       printer = printer->NextSiblingElement("printer")) {
    identify(*printer, record);
  }
}

/// Likewise, each action has the record's name.
void nameActions(TiXmlElement* parent, _tagSecReqXML const& record) {
  if (parent == nullptr) return;
  for (TiXmlElement* action = parent->FirstChildElement("action"); action != nullptr;
       action = action->NextSiblingElement("action")) {
    nameAction(*action, record);
  }
}

/// The wide entry of all but the Diffie-Hellman values.
template <class Reading, class Record>
bool readSecret(wchar_t const& text, unsigned long length, Roots roots, Record& out) {
  return readReply<Reading>(text, length, roots, out);
}

// All replies of this class, for the catalogue.

constexpr ReplyReader replies[] = {
    secretReader<Nonce, NonceReading>("nonce", "the printer's nonce", nonceRoots),
    secretReader<BothSides, BothSidesReading>("diffie-hellman", "public values of host and printer",
                                              diffieHellmanRoots),
    secretReader<_tagSecReqXML, RequestReading>(
        "secure-action-request", "a request for an action; its values stay the host's own",
        requestRoots),
    secretReader<_tagSecDirecXML, DirectiveReading>(
        "secure-action-directive", "an action and the HMAC that permits it", directiveRoots),
    secretReader<_tagSecKeys, KeysReading>("security-keys", "the three working keys", keysRoots),
    secretReader<_tagSecSetKeys, KeyChangesReading>("security-key-change",
                                                    "current and new keys and passkeys", keysRoots),
    secretReader<_tagSecSetKeys, PasskeyReading>("passkey", "the current passkey", passkeyRoots),
};

}  // namespace

std::span<frame::ReplyReader const> securityReplies() {
  return replies;
}

KVXSecAction::KVXSecAction() = default;
KVXSecAction::~KVXSecAction() = default;

bool KVXSecAction::GetNonceValue(wchar_t const& text, int length, char* out) {
  return readWide(&text, length, nonceRoots, [&](Element root) {
    return out != nullptr && convertText(root.text(), out, sizeof Nonce::nonce);
  });
}

bool KVXSecAction::ParseHostDHKeyValues(wchar_t const& text, unsigned long length,
                                        _tagHostDHKeys& out) {
  long discarded = 0;
  WipedAtEnd const wiped(discarded);
  return readDiffieHellman(text, length, out, discarded);
}

bool KVXSecAction::ParsePrinterDHKeyValues(wchar_t const& text, unsigned long length,
                                           long& printerInterimKey) {
  _tagHostDHKeys discarded{};
  WipedAtEnd const wiped(discarded);
  return readDiffieHellman(text, length, discarded, printerInterimKey);
}

bool KVXSecAction::ParseSecureRequestValues(wchar_t* text, unsigned long length,
                                            _tagSecReqXML& out) {
  return text != nullptr && readSecret<RequestReading>(*text, length, requestRoots, out);
}

bool KVXSecAction::ParseSecureDirectiveValues(wchar_t const& text, unsigned long length,
                                              _tagSecDirecXML& out) {
  return readSecret<DirectiveReading>(text, length, directiveRoots, out);
}

bool KVXSecAction::ParseSecurityKeys(wchar_t const& text, unsigned long length, _tagSecKeys& out) {
  return readSecret<KeysReading>(text, length, keysRoots, out);
}

bool KVXSecAction::ParseSetSecurityKeys(wchar_t const& text, unsigned long length,
                                        _tagSecSetKeys& out) {
  return readSecret<KeyChangesReading>(text, length, keysRoots, out);
}

bool KVXSecAction::ParseGetSecureActionRequest(wchar_t const& text, unsigned long length,
                                               _tagSecSetKeys& out) {
  return readSecret<PasskeyReading>(text, length, passkeyRoots, out);
}

bool KVXSecAction::ParseDHKeys(TiXmlElement* root, _tagHostDHKeys& host, long& printerInterimKey) {
  Watch const nobody;
  HostTree const tree(root);
  return readDiffieHellman(tree.root(), host, printerInterimKey, nobody);
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
