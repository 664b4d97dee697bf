#include "security/security_tables.hpp"

#include <array>
#include <cstdlib>
#include <cstring>

namespace Kovra::security {

// Diffie-Hellman values.

namespace {

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
    if (scanned) observer.member(name, value);
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

struct Exchange {
  Exchanged modulus;
  Exchanged base;
  Exchanged host_interim_key;
  Exchanged printer_interim_key;
};

constexpr Table exchange = {
    row<&Exchange::modulus, ExchangedKind>("modulus"),
    row<&Exchange::base, ExchangedKind>("base"),
    row<&Exchange::host_interim_key, ExchangedKind>("host_interim_key"),
    row<&Exchange::printer_interim_key, ExchangedKind>("printer_interim_key"),
};

}  // namespace

bool readDiffieHellman(Element root, _tagHostDHKeys& host, long& printerInterimKey,
                       Watch const& watch) {
  Exchange values{{&host.modulus, false},
                  {&host.base, false},
                  {&host.host_interim_key, false},
                  {&printerInterimKey, false}};
  walk(root, exchange, values, watch);
  return values.modulus.read || values.base.read || values.host_interim_key.read ||
         values.printer_interim_key.read;
}

// Actions.

namespace {

Assigned assignAction(Row const& row, void* place, std::string_view member, Value const& value,
                      Problems& problems) {
  if (member != row.member) return Assigned::notMine;
  Word const* const word = actionNames.find(value.asText(""));
  if (word == nullptr || word->text != value.asText("")) {
    return fail(problems, described(value), "one of: " + listed(actionNames));
  }
  return assignText({static_cast<char*>(place), row.size}, value, problems);
}

}  // namespace

constinit Kind const actionKind = {
    .shape = Shape::word, .assign = assignAction, .words = [](Row const&) -> Vocabulary const& {
      return actionNames;
    }};

constinit Kind const directedActionKind = {
    .shape = Shape::word,
    .assign =
        [](Row const& row, void* place, std::string_view member, Value const& value,
           Problems& problems) { return textKind.assign(row, place, member, value, problems); },
    .words = [](Row const&) -> Vocabulary const& { return actionNames; }};

// Directive.

bool bringToKeyword(char* text) {
  Word const* const word = text != nullptr ? actionNames.find(text) : nullptr;
  if (word == nullptr) return false;
  std::memcpy(text, word->text.data(), word->text.size() + 1);
  return true;
}

namespace {

/// The text of the root, which is its first child's, whatever that is.
struct DirectedActionKind : NeverWritten, NeverAssigned {
  template <std::size_t N>
  static bool read(Element root, char (&out)[N]) {
    if (!readText(root, out)) return false;
    bringToKeyword(out);
    return true;
  }
  template <std::size_t N>
  static void report(Observer& observer, std::string_view name, Element root,
                     char const (&value)[N]) {
    observer.member(name, textIn(value));
    if (actionNames.find(value) == nullptr) {
      observer.unknownWord(root, root.text(), actionNames);
    } else if (root.text() != textIn(value)) {
      observer.otherSpelling(root, textIn(value));
    }
  }
};

constexpr auto directedAction = row<&_tagSecDirecXML::action, DirectedActionKind>("action");

}  // namespace

bool DirectiveReading::read(Element root, _tagSecDirecXML& record, Watch const& watch) {
  return directedAction.read(root, record, watch) &&
         walk(root, directiveTable<_tagSecDirecXML>, record, watch);
}

}  // namespace Kovra::security
