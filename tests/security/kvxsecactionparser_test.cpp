#include "kvxsecactionparser.h"

#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cstring>
#include <string>
#include <type_traits>

#include "support/locale.hpp"
#include "support/records.hpp"
#include "support/status_reply.hpp"
#include "support/tree.hpp"
#include "support/wide.hpp"

namespace Kovra {
namespace {

using test::element;
using test::expectNeedsChildren;
using test::filled;
using test::MemberCase;
using test::Outcome;
using test::printed;
using test::same;
using test::sentinel;
using test::StatusReply;
using test::Tree;
using test::unterminated;
using test::untouched;
using test::wide;

static_assert(std::is_same_v<decltype(&KVXSecAction::GetNonceValue),
                             bool (KVXSecAction::*)(wchar_t const&, int, char*)>);
static_assert(std::is_same_v<decltype(&KVXSecAction::ParsePrinterDHKeyValues),
                             bool (KVXSecAction::*)(wchar_t const&, unsigned long, long&)>);
static_assert(std::is_same_v<decltype(&KVXSecAction::ParseDHKeys),
                             bool (KVXSecAction::*)(TiXmlElement*, _tagHostDHKeys&, long&)>);

/// Stores a text with its terminator and leaves what lies behind, as the library does.
template <std::size_t N>
void put(char (&array)[N], std::string const& text) {
  ASSERT_LT(text.size(), N);
  std::memcpy(array, text.c_str(), text.size() + 1);
}

/// The entries of the secure actions in the form of the others; a length below 0 is none.
template <class Record, auto Entry, auto Reader>
struct Adapted {
  bool entry(wchar_t const& text, int length, Record& record) {
    return (KVXSecAction().*Entry)(text, length > 0 ? static_cast<unsigned long>(length) : 0UL,
                                   record);
  }
  bool reader(TiXmlElement* root, Record& record) { return (KVXSecAction().*Reader)(root, record); }
};

template <class Record, auto Entry, auto Reader>
StatusReply<Record, Adapted<Record, Entry, Reader>> reply(char const* root) {
  using Parser = Adapted<Record, Entry, Reader>;
  return {root, &Parser::entry, &Parser::reader};
}

/// An attribute that is missing fails the comparison, not the program.
std::string attributeOf(TiXmlElement const* element, char const* name) {
  char const* const value = element != nullptr ? element->Attribute(name) : nullptr;
  return value != nullptr ? value : "(none)";
}

// ---- Nonce -----------------------------------------------------------------------------------

using NonceText = std::array<char, 64>;

Outcome<NonceText> nonceOf(std::string const& xml, int length) {
  Outcome<NonceText> outcome{false, filled<NonceText>()};
  auto const text = unterminated(wide(xml));
  outcome.result = KVXSecAction().GetNonceValue(*text.get(), length, outcome.record.data());
  return outcome;
}
Outcome<NonceText> nonceOf(std::string const& xml) {
  return nonceOf(xml, static_cast<int>(xml.size()));
}

void expectNonce(std::string const& xml, std::string const& nonce) {
  auto expected = filled<NonceText>();
  std::memcpy(expected.data(), nonce.c_str(), nonce.size() + 1);
  Outcome<NonceText> const outcome = nonceOf(xml);
  EXPECT_TRUE(outcome.result) << xml;
  EXPECT_TRUE(same(outcome.record, expected)) << xml;
}

TEST(SecureNonce, IsTheTextOfTheRoot) {
  expectNonce("<?xml version=\"1.0\"?>\n<nonce>8F31C07A55D2</nonce>\n", "8F31C07A55D2");
  expectNonce("<nonce><![CDATA[a&b]]></nonce>", "a&b");
  expectNonce("<nonce><inner>not this</inner></nonce>", "inner");
  expectNonce("<nonce>1<inner/>2</nonce>", "1");
}

TEST(SecureNonce, HasAtMost31Characters) {
  std::string const longest(31, 'n');
  expectNonce(element("nonce", longest), longest);
  expectNonce(element("nonce", longest + "x"), longest);
  expectNonce(element("nonce", std::string(5000, 'n')), longest);
}

TEST(SecureNonce, IsNotReadFromAnythingElse) {
  for (char const* const xml : {"<nonce/>", "<nonce></nonce>", "<Nonce>1</Nonce>", "<a>1</a>", "",
                                "<a><nonce>1</nonce></a>", "<nonce>1", "<nonce>1</nonce><a"}) {
    Outcome<NonceText> const outcome = nonceOf(xml);
    EXPECT_FALSE(outcome.result) << xml;
    EXPECT_TRUE(untouched(outcome.record)) << xml;
  }
  for (int const length : {0, -1, INT_MIN}) {
    Outcome<NonceText> const outcome = nonceOf("<nonce>1</nonce>", length);
    EXPECT_FALSE(outcome.result) << length;
    EXPECT_TRUE(untouched(outcome.record)) << length;
  }
  EXPECT_FALSE(KVXSecAction().GetNonceValue(*L"<nonce>1</nonce>", 16, nullptr));
}

// ---- Diffie-Hellman values -------------------------------------------------------------------

/// What both entries fill, side by side.
struct BothSides {
  _tagHostDHKeys host;
  long printer;
};

struct DiffieHellman {
  bool entry(wchar_t const& text, int length, BothSides& record) {
    unsigned long const characters = length > 0 ? static_cast<unsigned long>(length) : 0UL;
    bool const host = KVXSecAction().ParseHostDHKeyValues(text, characters, record.host);
    bool const printer = KVXSecAction().ParsePrinterDHKeyValues(text, characters, record.printer);
    EXPECT_EQ(host, printer) << "both take the same document";
    return host;
  }
  bool reader(TiXmlElement* root, BothSides& record) {
    return KVXSecAction().ParseDHKeys(root, record.host, record.printer);
  }
};

StatusReply<BothSides, DiffieHellman> const exchange{"diffie_hellman", &DiffieHellman::entry,
                                                     &DiffieHellman::reader};

constexpr MemberCase<BothSides> exchangeMembers[] = {
    {"", "modulus", "2147483647", [](auto& record) { record.host.modulus = 2147483647; }},
    {"", "base", "5", [](auto& record) { record.host.base = 5; }},
    {"", "host_interim_key", "0x1F2E3D4C",
     [](auto& record) { record.host.host_interim_key = 0x1F2E3D4C; }},
    {"", "printer_interim_key", "305419896", [](auto& record) { record.printer = 305419896; }},
};

TEST(DiffieHellmanValues, AreReadEachIntoItsMember) {
  exchange.expectMembers(exchangeMembers);
}

TEST(DiffieHellmanValues, AreReadFromAWholeDocument) {
  exchange.expectWideEntry(
      "<?xml version='1.0'?><diffie_hellman><modulus>2147483647</modulus><base>5</base>"
      "<host_interim_key>0x1F2E3D4C</host_interim_key>"
      "<printer_interim_key>305419896</printer_interim_key></diffie_hellman>",
      [](auto& record) {
        for (auto const& member : exchangeMembers) member.set(record);
      });
}

TEST(DiffieHellmanValues, AreHexadecimalBehind0xAndElseDecimal) {
  struct {
    char const* text;
    unsigned long value;
  } const cases[] = {
      {"0x1F", 31},
      {"31", 31},
      {"0xff", 255},
      {"0xFFFFFFFFFFFFFFFF", ULONG_MAX},
      {"18446744073709551615", ULONG_MAX},
      {"9223372036854775808", 1UL << 63U},
      {"0X1F", 0},
      {"010", 10},
      {"31xyz", 31},
      {"0x1Fxyz", 31},
      {"1F", 1},
      {"-1", ULONG_MAX},
      {"00000000000000000000000000000000000000000000000000000000000007", 7},
  };
  for (auto const& [text, value] : cases) {
    exchange.expectRead(element("modulus", text),
                        [v = value](auto& record) { record.host.modulus = static_cast<long>(v); });
    exchange.expectRead(element("printer_interim_key", text),
                        [v = value](auto& record) { record.printer = static_cast<long>(v); });
  }
}

TEST(DiffieHellmanValues, CountAsReadWhenTheyAreNoNumbers) {
  for (char const* const text : {"abc", "x1F", "-", "<inner/>"}) {
    exchange.expectRead(element("modulus", text), [](auto&) {});
    exchange.expectRead(element("printer_interim_key", text), [](auto&) {});
  }
}

TEST(DiffieHellmanValues, BehindBlanksAreDecimal) {
  TiXmlElement root("any");
  TiXmlElement modulus("modulus");
  modulus.LinkEndChild(new TiXmlText(" 0x1F"));
  root.InsertEndChild(modulus);
  auto record = filled<BothSides>();
  EXPECT_TRUE(KVXSecAction().ParseDHKeys(&root, record.host, record.printer));
  EXPECT_EQ(record.host.modulus, 0);
}

TEST(DiffieHellmanValues, AreTakenFromTheFirst63Characters) {
  std::string const digits = std::string(62, '0') + "123";
  exchange.expectRead(element("base", digits), [](auto& record) { record.host.base = 1; });
  exchange.expectRead(element("base", std::string(5000, '0')),
                      [](auto& record) { record.host.base = 0; });
}

TEST(DiffieHellmanValues, AreNotTakenBackByAnEmptyOne) {
  exchange.expectRead("<modulus>7</modulus><base/>", [](auto& record) { record.host.modulus = 7; });
  exchange.expectRead("<base/><modulus>7</modulus><host_interim_key/><printer_interim_key/><a/>",
                      [](auto& record) { record.host.modulus = 7; });
  exchange.expectRead("<modulus>abc</modulus><base/>", [](auto&) {});
  exchange.expectRead("<base>1</base><base>2</base><base/>",
                      [](auto& record) { record.host.base = 2; });
  exchange.expectSkipped("<modulus/><base/><host_interim_key/><printer_interim_key/>");
  exchange.expectSkipped("<unknown>7</unknown>");
  exchange.expectSkipped("<set><modulus>7</modulus></set>");
}

TEST(DiffieHellmanValues, OfTheOtherSideAreDiscardedAndCount) {
  std::string const xml = element("diffie_hellman", "<modulus>7</modulus><base>5</base>");
  long printer = 4711;
  EXPECT_TRUE(KVXSecAction().ParsePrinterDHKeyValues(*wide(xml).data(), xml.size(), printer));
  EXPECT_EQ(printer, 4711);

  std::string const other =
      element("diffie_hellman", "<printer_interim_key>7</printer_interim_key>");
  auto host = filled<_tagHostDHKeys>();
  EXPECT_TRUE(KVXSecAction().ParseHostDHKeyValues(*wide(other).data(), other.size(), host));
  EXPECT_TRUE(untouched(host));
}

TEST(DiffieHellmanValues, NeedChildren) {
  expectNeedsChildren(filled<BothSides>(), [](TiXmlElement* root, BothSides& record) {
    return KVXSecAction().ParseDHKeys(root, record.host, record.printer);
  });
  exchange.expectSkipped("12");
}

// ---- Request ---------------------------------------------------------------------------------

struct Request {
  bool entry(wchar_t const& text, int length, _tagSecReqXML& record) {
    return KVXSecAction().ParseSecureRequestValues(
        const_cast<wchar_t*>(&text), length > 0 ? static_cast<unsigned long>(length) : 0UL, record);
  }
  bool reader(TiXmlElement* root, _tagSecReqXML& record) {
    return KVXSecAction().ParseReqValues(root, record);
  }
};

StatusReply<_tagSecReqXML, Request> const request{"secure_action_request", &Request::entry,
                                                  &Request::reader};

TEST(SecureActionRequest, IsRecognisedAndNotRead) {
  request.expectWideEntry(
      "<secure_action_request><action name='reset_oem'>"
      "<printer model='X' serial='Y' nonce='Z'/></action></secure_action_request>",
      [](auto&) {});
  for (char const* const children :
       {"<action name='reset_oem'/>", "<printer model='X' serial='Y' nonce='Z'/>", "<action/>",
        "<printer/>", "<printer/><a/>", "<action>reset_oem</action>", "<a/><action/><printer/>"}) {
    request.expectRead(children, [](auto&) {});
  }
}

TEST(SecureActionRequest, NeedsAnActionOrAPrinter) {
  for (char const* const children : {"", "text", "<Action/>", "<PRINTER/>", "<a><action/></a>",
                                     "<actions/><printers/>", "<hmac>1</hmac>"}) {
    request.expectSkipped(children);
  }
  expectNeedsChildren(filled<_tagSecReqXML>(), [](TiXmlElement* root, _tagSecReqXML& record) {
    return KVXSecAction().ParseReqValues(root, record);
  });
}

TEST(SecureActionRequest, KeepsTheCallersValues) {
  _tagSecReqXML record{};
  put(record.model, "KX-200");
  _tagSecReqXML const before = record;
  std::wstring text = L"<secure_action_request><printer model=\"X\"/></secure_action_request>";
  EXPECT_TRUE(KVXSecAction().ParseSecureRequestValues(text.data(), text.size(), record));
  EXPECT_TRUE(same(record, before));
}

TEST(SecureActionRequest, SetsTheCallersValuesOnTheHostsTree) {
  _tagSecReqXML record{};
  put(record.model, "KX-200");
  put(record.serial, "K2001234");
  put(record.action, "reset_oem");
  put(record.nonce, "8F31");
  Tree tree(
      "<r><action name='other' more='1'/><printer serial='old' nonce='old'/><other name='1'/></r>");
  EXPECT_TRUE(KVXSecAction().ParseReqValues(tree.root(), record));
  EXPECT_EQ(printed(*tree.root()),
            "<r><action name=\"reset_oem\" more=\"1\" />"
            "<printer serial=\"K2001234\" nonce=\"8F31\" model=\"KX-200\" /><other name=\"1\" />"
            "</r>");
}

TEST(SecureActionRequest, SetsTheAttributesInTheirOrder) {
  _tagSecReqXML record{};
  Tree tree("<r><printer/><action/></r>");
  EXPECT_TRUE(KVXSecAction().ParseReqValues(tree.root(), record));
  EXPECT_EQ(printed(*tree.root()),
            "<r><printer model=\"\" serial=\"\" nonce=\"\" /><action name=\"\" /></r>");
}

TEST(SecureActionRequest, ReadsTheRecordsTextsNoFurtherThanTheirArrays) {
  _tagSecReqXML record;
  std::memset(&record, 'm', sizeof record);
  Tree tree("<r><printer/><action/></r>");
  EXPECT_TRUE(KVXSecAction().ParseReqValues(tree.root(), record));
  TiXmlElement const* const printer = tree.root()->FirstChildElement("printer");
  TiXmlElement const* const action = tree.root()->FirstChildElement("action");
  std::string const whole(260, 'm');
  EXPECT_EQ(attributeOf(printer, "model"), whole);
  EXPECT_EQ(attributeOf(printer, "serial"), whole);
  EXPECT_EQ(attributeOf(printer, "nonce"), whole);
  EXPECT_EQ(attributeOf(action, "name"), whole);
}

TEST(SecureActionRequest, TakesATextThatCanOnlyBeRead) {
  auto record = filled<_tagSecReqXML>();
  wchar_t const* const text = L"<secure_action_request><action/></secure_action_request>";
  EXPECT_TRUE(KVXSecAction().ParseSecureRequestValues(text, 56, record));
  EXPECT_TRUE(KVXSecAction().ParseSecureRequestValues(
      L"<secure_action_request><action/></secure_action_request>", 56, record));
  EXPECT_TRUE(untouched(record));
}

TEST(SecureActionRequest, IsNotReadFromNoText) {
  auto record = filled<_tagSecReqXML>();
  wchar_t* const none = nullptr;
  EXPECT_FALSE(KVXSecAction().ParseSecureRequestValues(none, 10, record));
  EXPECT_FALSE(KVXSecAction().ParseSecureRequestValues(nullptr, 10, record));
  EXPECT_TRUE(untouched(record));
}

// ---- Directive -------------------------------------------------------------------------------

Outcome<_tagSecDirecXML> directiveOf(std::string const& xml) {
  Outcome<_tagSecDirecXML> outcome{false, filled<_tagSecDirecXML>()};
  auto const text = unterminated(wide(xml));
  outcome.result =
      KVXSecAction().ParseSecureDirectiveValues(*text.get(), xml.size(), outcome.record);
  return outcome;
}

template <class Change>
void expectDirective(bool result, std::string const& xml, Change change) {
  auto expected = filled<_tagSecDirecXML>();
  change(expected);
  Outcome<_tagSecDirecXML> const outcome = directiveOf(xml);
  EXPECT_EQ(outcome.result, result) << xml;
  EXPECT_TRUE(same(outcome.record, expected)) << xml;
}

constexpr char directive[] =
    "<?xml version='1.0'?>\n<action>reset_oem<printer model='X' serial='Y' nonce='Z'/>"
    "<hmac>5e8dd316</hmac></action>\n";

TEST(SecureActionDirective, GivesActionAndHmacAlone) {
  for (char const* const locale : test::locales) {
    test::LocaleGuard const guard(locale);
    expectDirective(true, directive, [](auto& record) {
      put(record.action, "reset_oem");
      put(record.hmac, "5e8dd316");
    });
  }
}

TEST(SecureActionDirective, IsRefusedWhole) {
  std::string const whole = directive;
  for (std::size_t size = 0; size <= whole.rfind('>'); ++size) {
    expectDirective(false, whole.substr(0, size), [](auto&) {});
  }
  for (std::string const& xml :
       {element("Action", "reset_oem<hmac>1</hmac>"), element("a", element("action", "reset_oem")),
        element("secure_action_request", element("action", "reset_oem<hmac>1</hmac>")),
        whole + "<open>", std::string("<action/>"), std::string("<action></action>")}) {
    expectDirective(false, xml, [](auto&) {});
  }
  auto record = filled<_tagSecDirecXML>();
  EXPECT_FALSE(
      KVXSecAction().ParseSecureDirectiveValues(*L"<action>reset_oem</action>", 0, record));
  EXPECT_TRUE(untouched(record));
}

TEST(SecureActionDirective, WithTextAloneStoresItsActionAndAnswersFalse) {
  expectDirective(false, element("action", " lock_printer "),
                  [](auto& record) { std::strcpy(record.action, "lock_printer"); });
}

TEST(SecureActionDirective, BringsItsActionToTheKeyword) {
  struct {
    char const* text;
    char const* action;
    char const* behind;  // what the longer text leaves behind the keyword's terminator
  } const cases[] = {
      {"please reset_oem now", "reset_oem", "et_oem now"},
      {"unlock_printer", "unlock_printer", ""},
      {"lock_printer", "lock_printer", ""},
      {"RESET_OEM", "RESET_OEM", ""},
      {"open_the_lid", "open_the_lid", ""},
      {"<![CDATA[  reset_oem  ]]>", "reset_oem", "m  "},
  };
  for (auto const& [text, action, behind] : cases) {
    std::string const xml = element("action", std::string(text) + "<hmac>1</hmac>");
    Outcome<_tagSecDirecXML> const outcome = directiveOf(xml);
    EXPECT_TRUE(outcome.result) << text;
    EXPECT_STREQ(outcome.record.action, action) << text;
    std::size_t const end = std::strlen(action) + 1;
    if (*behind != '\0') {
      EXPECT_STREQ(outcome.record.action + end, behind) << text;
    }
  }
}

TEST(SecureActionDirective, LosesTheBlanksAroundItsAction) {
  expectDirective(true, "<action>  reset_oem  <hmac>1</hmac></action>", [](auto& record) {
    put(record.action, "reset_oem");
    put(record.hmac, "1");
  });
}

TEST(SecureActionDirective, TakesTheNameOfTheChildThatStandsFirst) {
  expectDirective(true, "<action><printer model='X'/><hmac>1</hmac></action>", [](auto& record) {
    put(record.action, "printer");
    put(record.hmac, "1");
  });
  expectDirective(true, "<action><lock_printer/><hmac>1</hmac></action>", [](auto& record) {
    put(record.action, "lock_printer");
    put(record.hmac, "1");
  });
  expectDirective(true, "<action><!--reset_oem--><printer/></action>",
                  [](auto& record) { put(record.action, "reset_oem"); });
}

TEST(SecureActionDirective, HasTheResultOfItsLastKnownChild) {
  auto const both = [](auto& record) {
    put(record.action, "reset_oem");
    put(record.hmac, "1");
  };
  expectDirective(true, "<action>reset_oem<hmac>1</hmac><a/></action>", both);
  expectDirective(false, "<action>reset_oem<hmac>1</hmac><hmac/></action>", both);
  expectDirective(true, "<action>reset_oem<hmac>1</hmac><hmac/><printer/></action>", both);
  expectDirective(false, "<action>reset_oem<printer/><hmac/></action>",
                  [](auto& record) { put(record.action, "reset_oem"); });
  for (char const* const xml : {"<action>reset_oem</action>", "<action>reset_oem<a/></action>",
                                "<action>reset_oem<HMAC>1</HMAC></action>"}) {
    expectDirective(false, xml, [](auto& record) { put(record.action, "reset_oem"); });
  }
}

TEST(SecureActionDirective, CutsTextsAtTheEndOfTheirArrays) {
  std::string const fits(259, 'f');
  for (std::string const surplus : {"", "x", "xyz"}) {
    std::string const text = fits + surplus;
    expectDirective(true, element("action", text + element("hmac", text)), [&](auto& record) {
      put(record.action, fits);
      put(record.hmac, fits);
    });
  }
  // A keyword beyond the array is not seen.
  expectDirective(true, element("action", fits + "reset_oem<hmac>1</hmac>"), [&](auto& record) {
    put(record.action, fits);
    put(record.hmac, "1");
  });
}

TEST(SecureActionDirective, SetsTheCallersValuesOnTheHostsTree) {
  _tagSecDirecXML record{};
  put(record.model, "KX-200");
  put(record.serial, "K2001234");
  put(record.nonce, "8F31");
  Tree tree("<action><printer model='X' other='O'/><hmac>1</hmac></action>");
  EXPECT_TRUE(KVXSecAction().ParseDirectiveValues(tree.root(), record));
  EXPECT_EQ(printed(*tree.root()),
            "<action><printer model=\"KX-200\" other=\"O\" serial=\"K2001234\" nonce=\"8F31\" />"
            "<hmac>1</hmac></action>");
  EXPECT_STREQ(record.model, "KX-200");
  EXPECT_STREQ(record.serial, "K2001234");
  EXPECT_STREQ(record.nonce, "8F31");
  EXPECT_STREQ(record.hmac, "1");
  EXPECT_STREQ(record.action, "") << "the action is the entry's to read";
}

TEST(SecureActionDirective, ReadsTheRecordsTextsNoFurtherThanTheirArrays) {
  _tagSecDirecXML record;
  std::memset(&record, 'm', sizeof record);
  Tree tree("<action><printer/></action>");
  EXPECT_TRUE(KVXSecAction().ParseDirectiveValues(tree.root(), record));
  TiXmlElement const* const printer = tree.root()->FirstChildElement();
  for (char const* const attribute : {"model", "serial", "nonce"}) {
    EXPECT_EQ(attributeOf(printer, attribute), std::string(260, 'm')) << attribute;
  }
}

TEST(SecureActionDirective, NeedsChildren) {
  expectNeedsChildren(filled<_tagSecDirecXML>(), [](TiXmlElement* root, _tagSecDirecXML& record) {
    return KVXSecAction().ParseDirectiveValues(root, record);
  });
}

// ---- Action names ----------------------------------------------------------------------------

constexpr char const* actionNames[] = {
    "cancel_printer_passkey",
    "set_single_sided",
    "set_double_sided",
    "reset_physical_address",
    "reset_oem",
    "reset_printer_serial_number",
    "reset_laminator_serial_number",
    "clear_error_log",
    "clear_card_cleaning_log",
    "clear_service_log",
    "reset_card_count",
    "reset_impression_count",
    "reset_system_defaults",
    "reset_cards_laminated",
    "unlock_printer",
    "lock_printer",
};

/// Runs GetActionName on the text alone, in a heap buffer of exactly its size and its terminator,
/// and gives back the whole buffer.
std::string named(std::string const& text, bool found) {
  std::unique_ptr<char[]> const buffer(new char[text.size() + 1]);
  std::memcpy(buffer.get(), text.c_str(), text.size() + 1);
  EXPECT_EQ(KVXSecAction().GetActionName(buffer.get()), found) << text;
  return {buffer.get(), text.size() + 1};
}

TEST(SecureActionName, IsFoundAnywhereInTheText) {
  for (std::string const name : actionNames) {
    EXPECT_EQ(named(name, true), name + '\0');
    EXPECT_EQ(named("  " + name, true), name + '\0' + name.substr(name.size() - 1) + '\0');
    std::string const behind = name + " and more";
    EXPECT_EQ(named(behind, true), name + '\0' + "and more" + '\0');
    std::string const around = "do_" + name + "!";
    std::string expected = around + '\0';
    expected.replace(0, name.size() + 1, name + '\0');
    EXPECT_EQ(named(around, true), expected) << "what lies behind the terminator stays";
  }
}

TEST(SecureActionName, IsTheFirstOfTheOrderNotOfTheText) {
  for (std::size_t first = 0; first < std::size(actionNames); ++first) {
    for (std::size_t second = first + 1; second < std::size(actionNames); ++second) {
      std::string const later = actionNames[second];
      std::string const text = later + "," + actionNames[first];
      EXPECT_STREQ(named(text, true).c_str(), actionNames[first]) << text;
    }
  }
  EXPECT_STREQ(named("unlock_printer", true).c_str(), "unlock_printer");
  EXPECT_STREQ(named("lock_printer,unlock_printer", true).c_str(), "unlock_printer");
}

TEST(SecureActionName, LeavesOtherTexts) {
  for (std::string const name : actionNames) {
    for (std::string const& other : {test::upper(name), "_" + name.substr(0, name.size() - 1),
                                     name.substr(1) == "nlock_printer" ? "x" : name.substr(1)}) {
      EXPECT_EQ(named(other, false), other + '\0');
    }
  }
  for (std::string const& other : {std::string(), std::string("x"), std::string(1000, 'r')}) {
    EXPECT_EQ(named(other, false), other + '\0');
  }
  EXPECT_FALSE(KVXSecAction().GetActionName(nullptr));
}

// ---- Working keys ----------------------------------------------------------------------------

auto const keys =
    reply<_tagSecKeys, &KVXSecAction::ParseSecurityKeys, &KVXSecAction::ParseHostNEncryptKey>(
        "keys");

constexpr MemberCase<_tagSecKeys> keyMembers[] = {
    {"", "data_encryption_key", "0123456789abcdef",
     [](auto& record) { put(record.data_encryption_key, "0123456789abcdef"); }},
    {"", "host_authentication_key", "fedcba9876543210",
     [](auto& record) { put(record.host_authentication_key, "fedcba9876543210"); }},
    {"", "printer_lock_key", "00ff00ff00ff00ff",
     [](auto& record) { put(record.printer_lock_key, "00ff00ff00ff00ff"); }},
};

TEST(SecurityKeys, AreReadEachIntoItsMember) {
  keys.expectMembers(keyMembers);
}

TEST(SecurityKeys, AreReadFromAWholeDocument) {
  keys.expectWideEntry(
      "<?xml version='1.0'?>\n<keys><host_authentication_key>fedcba9876543210"
      "</host_authentication_key><data_encryption_key>0123456789abcdef</data_encryption_key>"
      "<printer_lock_key>00ff00ff00ff00ff</printer_lock_key></keys>\n",
      [](auto& record) {
        for (auto const& member : keyMembers) member.set(record);
      });
}

TEST(SecurityKeys, HaveTheResultOfTheLast) {
  auto const one = [](auto& record) { put(record.printer_lock_key, "1"); };
  keys.expect(false, "<printer_lock_key>1</printer_lock_key><data_encryption_key/><a/>", one);
  keys.expect(true, "<data_encryption_key/><printer_lock_key>1</printer_lock_key><a/>", one);
  keys.expect(true, "<printer_lock_key>0</printer_lock_key><printer_lock_key>1</printer_lock_key>",
              one);
  keys.expectSkipped("<set><printer_lock_key>1</printer_lock_key></set>");
  keys.expectSkipped("1");
  keys.expectSkipped("");
  expectNeedsChildren(keys.start, [](TiXmlElement* root, _tagSecKeys& record) {
    return KVXSecAction().ParseHostNEncryptKey(root, record);
  });
}

TEST(SecurityKeys, AreCutAtTheEndOfTheirArrays) {
  std::string const fits(259, 'k');
  for (std::string const surplus : {"", "x", "xyz"}) {
    keys.expectRead(element("data_encryption_key", fits + surplus),
                    [&](auto& record) { put(record.data_encryption_key, fits); });
    keys.expectRead(element("printer_lock_key", fits + surplus),
                    [&](auto& record) { put(record.printer_lock_key, fits); });
  }
}

// ---- Change of keys --------------------------------------------------------------------------

auto const change =
    reply<_tagSecSetKeys, &KVXSecAction::ParseSetSecurityKeys, &KVXSecAction::ParsePassKey>("keys");

constexpr MemberCase<_tagSecSetKeys> changeMembers[] = {
    {"set", "current_data_encryption_key", "c-data",
     [](auto& record) { put(record.current_data_encryption_key, "c-data"); }},
    {"set", "new_data_encryption_key", "n-data",
     [](auto& record) { put(record.new_data_encryption_key, "n-data"); }},
    {"set", "current_host_authentication_key", "c-host",
     [](auto& record) { put(record.current_host_authentication_key, "c-host"); }},
    {"set", "new_host_authentication_key", "n-host",
     [](auto& record) { put(record.new_host_authentication_key, "n-host"); }},
    {"set", "current_printer_lock_key", "c-lock",
     [](auto& record) { put(record.current_printer_lock_key, "c-lock"); }},
    {"set", "new_printer_lock_key", "n-lock",
     [](auto& record) { put(record.new_printer_lock_key, "n-lock"); }},
    {"set", "current_passkey", "c-pass",
     [](auto& record) { put(record.current_passkey, "c-pass"); }},
    {"set", "new_passkey", "n-pass", [](auto& record) { put(record.new_passkey, "n-pass"); }},
};

TEST(SecurityKeyChange, IsReadEachIntoItsMember) {
  change.expectMembers(changeMembers);
}

TEST(SecurityKeyChange, IsReadFromAWholeDocument) {
  std::string set;
  for (auto const& member : changeMembers) set += element(member.name, member.text);
  change.expectWideEntry(element("keys", element("set", set)), [](auto& record) {
    for (auto const& member : changeMembers) member.set(record);
  });
}

TEST(SecurityKeyChange, IsReadFromEverySetAndTheLaterOnesWin) {
  change.expectRead(
      "<set><new_passkey>1</new_passkey><current_passkey>2</current_passkey></set><a/>"
      "<set><new_passkey>3</new_passkey></set>",
      [](auto& record) {
        put(record.new_passkey, "3");
        put(record.current_passkey, "2");
      });
}

TEST(SecurityKeyChange, HasTheResultOfTheLastSet) {
  auto const one = [](auto& record) { put(record.new_passkey, "1"); };
  std::string const good = "<set><new_passkey>1</new_passkey></set>";
  change.expect(true, "<set/>" + good + "<a/>", one);
  change.expect(false, good + "<set/>", one);
  change.expect(false, good + "<set><a/></set>", one);
  change.expect(false, good + "<set><new_passkey/></set>", one);
  change.expect(false, "<set><new_passkey>1</new_passkey><current_passkey/></set>", one);
  change.expectSkipped("<new_passkey>1</new_passkey>");
  change.expectSkipped("<Set><new_passkey>1</new_passkey></Set>");
  change.expectSkipped("<set><set><new_passkey>1</new_passkey></set></set>");
  change.expectSkipped("<set>1</set>");
}

TEST(SecurityKeyChange, IsCutAtTheEndOfItsArrays) {
  std::string const fits(63, 'k');
  for (std::string const& surplus : {std::string(), std::string("x"), std::string(1000, 'y')}) {
    change.expectRead(element("set", element("current_data_encryption_key", fits + surplus)),
                      [&](auto& record) { put(record.current_data_encryption_key, fits); });
    change.expectRead(element("set", element("new_passkey", fits + surplus)),
                      [&](auto& record) { put(record.new_passkey, fits); });
  }
}

TEST(SecurityKeyChange, IsReadFromOneSetOfTheHostsTree) {
  auto record = filled<_tagSecSetKeys>();
  auto expected = record;
  put(expected.current_passkey, "1");
  EXPECT_TRUE(KVXSecAction().ParsePassKey1(
      Tree("<any><current_passkey>1</current_passkey></any>").root(), record));
  EXPECT_TRUE(same(record, expected));
  expectNeedsChildren(filled<_tagSecSetKeys>(), [](TiXmlElement* root, _tagSecSetKeys& keysOut) {
    return KVXSecAction().ParsePassKey1(root, keysOut);
  });
  expectNeedsChildren(filled<_tagSecSetKeys>(), [](TiXmlElement* root, _tagSecSetKeys& keysOut) {
    return KVXSecAction().ParsePassKey(root, keysOut);
  });
}

// ---- Passkey ---------------------------------------------------------------------------------

template <class Change>
void expectPasskey(bool result, std::string const& xml, Change set) {
  auto expected = filled<_tagSecSetKeys>();
  set(expected);
  auto record = filled<_tagSecSetKeys>();
  auto const text = unterminated(wide(xml));
  EXPECT_EQ(KVXSecAction().ParseGetSecureActionRequest(*text.get(), xml.size(), record), result)
      << xml;
  EXPECT_TRUE(same(record, expected)) << xml;
}

TEST(Passkey, IsTheTextOfTheRoot) {
  expectPasskey(true, "<?xml version='1.0'?><passkey>open sesame</passkey>",
                [](auto& record) { put(record.current_passkey, "open sesame"); });
  expectPasskey(true, "<passkey><set/></passkey>",
                [](auto& record) { put(record.current_passkey, "set"); });
}

TEST(Passkey, HasAtMost63Characters) {
  std::string const fits(63, 'p');
  for (std::string const surplus : {"", "x", "xyz"}) {
    expectPasskey(true, element("passkey", fits + surplus),
                  [&](auto& record) { put(record.current_passkey, fits); });
  }
}

TEST(Passkey, IsNotReadFromAnythingElse) {
  for (char const* const xml : {"<passkey/>", "<passkey></passkey>", "<Passkey>1</Passkey>", "",
                                "<keys>1</keys>", "<a><passkey>1</passkey></a>", "<passkey>1"}) {
    expectPasskey(false, xml, [](auto&) {});
  }
  auto record = filled<_tagSecSetKeys>();
  EXPECT_FALSE(KVXSecAction().ParseGetSecureActionRequest(*L"<passkey>1</passkey>", 0, record));
  EXPECT_TRUE(untouched(record));
}

// ---- Lengths ---------------------------------------------------------------------------------

/// Expects that an entry reads the reply to its terminator, however much more it is told to read.
template <class Record, class Read>
void expectAnyLengthBeyond(std::string const& xml, Read read) {
  std::wstring text = wide(xml);
  for (unsigned long const length : {text.size() + 1, INT_MAX + 1UL, UINT_MAX + 0UL, ULONG_MAX}) {
    auto record = filled<Record>();
    EXPECT_TRUE(read(text.data(), length, record)) << xml << length;
  }
}

TEST(SecureActionEntries, TakeALengthBeyondTheTerminator) {
  KVXSecAction parser;
  std::string const values = "<diffie_hellman><base>1</base></diffie_hellman>";
  expectAnyLengthBeyond<_tagHostDHKeys>(values, [&](wchar_t* text, auto length, auto& record) {
    return parser.ParseHostDHKeyValues(*text, length, record);
  });
  expectAnyLengthBeyond<long>(values, [&](wchar_t* text, auto length, long& key) {
    return parser.ParsePrinterDHKeyValues(*text, length, key);
  });
  expectAnyLengthBeyond<_tagSecReqXML>("<secure_action_request><action/></secure_action_request>",
                                       [&](wchar_t* text, auto length, auto& record) {
                                         record = {};
                                         return parser.ParseSecureRequestValues(text, length,
                                                                                record);
                                       });
  expectAnyLengthBeyond<_tagSecDirecXML>(
      "<action>reset_oem<hmac>1</hmac></action>", [&](wchar_t* text, auto length, auto& record) {
        return parser.ParseSecureDirectiveValues(*text, length, record);
      });
  expectAnyLengthBeyond<_tagSecKeys>("<keys><printer_lock_key>1</printer_lock_key></keys>",
                                     [&](wchar_t* text, auto length, auto& record) {
                                       return parser.ParseSecurityKeys(*text, length, record);
                                     });
  expectAnyLengthBeyond<_tagSecSetKeys>("<keys><set><new_passkey>1</new_passkey></set></keys>",
                                        [&](wchar_t* text, auto length, auto& record) {
                                          return parser.ParseSetSecurityKeys(*text, length, record);
                                        });
  expectAnyLengthBeyond<_tagSecSetKeys>(
      "<passkey>1</passkey>", [&](wchar_t* text, auto length, auto& record) {
        return parser.ParseGetSecureActionRequest(*text, length, record);
      });
}

}  // namespace
}  // namespace Kovra
