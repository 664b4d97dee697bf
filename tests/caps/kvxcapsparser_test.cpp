#include "kvxcapsparser.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <string>
#include <vector>

#include "caps/capabilities.hpp"
#include "support/locale.hpp"
#include "support/records.hpp"
#include "support/tree.hpp"
#include "support/wide.hpp"
#include "support/words.hpp"

namespace Kovra {
namespace {

using test::Arrays;
using test::element;
using test::ExpectedWords;
using test::expectReading;
using test::expectWords;
using test::filled;
using test::HostCapabilities;
using test::LocaleGuard;
using test::Rule;
using test::same;
using test::setText;
using test::Tree;
using test::unterminated;
using test::untouched;
using test::wide;

auto const nothingChanges = [](_Capabilities&, Arrays&) {};

template <class Change>
void expectParsed(HostCapabilities& host, std::string const& xml, bool result, Change change) {
  Tree tree(xml);
  expectReading(
      host,
      [&](_Capabilities& caps) { return KVXCapsParser().parseCapabilities(tree.root(), caps); },
      result, change);
}

/// The children of a root, on a host with room for three of everything.
template <class Change>
void expectChildren(std::string const& children, bool result, Change change) {
  SCOPED_TRACE(children);
  HostCapabilities host(3);
  expectParsed(host, element("capabilities", children), result, change);
}

// ---- Lists -----------------------------------------------------------------------------------

/// One list: its names, its reader, its count, what its entry number n says and where that goes.
struct ListCase {
  std::string list;
  std::string item;
  bool (KVXCapsParser::*read)(TiXmlElement*, _Capabilities&);
  int _Capabilities::*count;
  void (*detach)(_Capabilities&);
  std::string (*content)(int n);
  void (*store)(Arrays&, int place, int n);

  std::string entry(int n) const { return element(item, content(n)); }
  /// The entries 0 to n - 1.
  std::string entries(int n) const {
    std::string all;
    for (int i = 0; i < n; ++i) all += entry(i);
    return all;
  }
  std::string of(std::string const& content_) const { return element(list, content_); }

  /// An entry without text or children takes its place and changes nothing there, unless it is a
  /// keyword itself: that is stored as unknown.
  void storeEmpty(Arrays& arrays, int place) const {
    if (item == "graphic_format") arrays.graphicFormats[place] = -1;
  }
  void storeAll(Arrays& arrays, int n) const {
    for (int i = 0; i < n; ++i) store(arrays, i, i);
  }
};

char const* const portWords[] = {"usb_2_0", "serial", "ethernet_10_100", "ethernet_10_100_1G",
                                 "wifi_enet_802_11g"};

std::string portText(int n) {
  return element("port_id", std::to_string(70 + n)) + element("type", portWords[n]);
}

std::string templateText(int n) {
  return element("name", "stored " + std::to_string(n)) +
         element("location", "/flash/" + std::to_string(n));
}

void storeTemplate(_TemplateCaps& place, int n) {
  setText(place.name, "stored " + std::to_string(n));
  setText(place.location, "/flash/" + std::to_string(n));
}

std::vector<ListCase> const lists = {
    {"host_ports", "host_port", &KVXCapsParser::getHostPorts, &_Capabilities::hostPortCount,
     [](_Capabilities& caps) { caps.hostPorts = nullptr; }, portText,
     [](Arrays& to, int i, int n) {
       to.hostPorts[i] = {70 + n, n};
     }},
    {"device_ports", "device_port", &KVXCapsParser::getDevicePorts, &_Capabilities::devicePortCount,
     [](_Capabilities& caps) { caps.devicePorts = nullptr; }, portText,
     [](Arrays& to, int, int n) {
       to.devicePorts[0] = {70 + n, n};
     }},
    {"software_interfaces", "software_interface", &KVXCapsParser::getSwInterfaces,
     &_Capabilities::swInterfaceCount, [](_Capabilities& caps) { caps.swInterfaces = nullptr; },
     [](int n) {
       return element("protocol", "http") + element("transport", "tcp") +
              element("port", std::to_string(8000 + n));
     },
     [](Arrays& to, int i, int n) {
       to.swInterfaces[i] = {2, 1, 8000 + n};
     }},
    {"ocp_languages", "ocp_language", &KVXCapsParser::getOCPLanguages,
     &_Capabilities::ocpLanguageCount, [](_Capabilities& caps) { caps.ocpLanguages = nullptr; },
     [](int n) {
       return element("type", std::to_string(n)) + element("name", "language " + std::to_string(n));
     },
     [](Arrays& to, int i, int n) {
       to.ocpLanguages[i].type = n;
       setText(to.ocpLanguages[i].name, "language " + std::to_string(n));
     }},
    {"graphic_formats", "graphic_format", &KVXCapsParser::getGraphicFormatCaps,
     &_Capabilities::graphicFormatCount, [](_Capabilities& caps) { caps.graphicFormats = nullptr; },
     [](int n) {
       char const* const words[] = {"bmp", "jpeg", "tga", "tiff", "raw"};
       return std::string(words[n]);
     },
     [](Arrays& to, int i, int n) {
       int const codes[] = {1, 2, 8, 9, 10};
       to.graphicFormats[i] = codes[n];
     }},
    {"fonts", "font", &KVXCapsParser::getFontsCaps, &_Capabilities::fontCount,
     [](_Capabilities& caps) { caps.fonts = nullptr; },
     [](int n) {
       return element("name", "font " + std::to_string(n)) +
              element("scalable", n % 2 == 0 ? "yes" : "no") + element("style", "bold");
     },
     [](Arrays& to, int i, int n) {
       setText(to.fonts[i].name, "font " + std::to_string(n));
       to.fonts[i].scalable = n % 2 == 0;
       to.fonts[i].style = 2;
     }},
    {"templates", "template", &KVXCapsParser::getTemplates, &_Capabilities::templateCount,
     [](_Capabilities& caps) { caps.templates = nullptr; }, templateText,
     [](Arrays& to, int i, int n) { storeTemplate(to.templates[i], n); }},
    {"graphics", "graphic", &KVXCapsParser::getGraphics, &_Capabilities::graphicCount,
     [](_Capabilities& caps) { caps.graphics = nullptr; }, templateText,
     [](Arrays& to, int i, int n) { storeTemplate(to.graphics[i], n); }},
    {"barcodes", "barcode", &KVXCapsParser::getBarCodes, &_Capabilities::barcodeCount,
     [](_Capabilities& caps) { caps.barcodes = nullptr; },
     [](int n) { return "code " + std::to_string(n); },
     [](Arrays& to, int i, int n) { setText(to.barcodes[i].name, "code " + std::to_string(n)); }},
};

/// The list by its own reader, and as the one child of a root: both do the same.
template <class Change>
void expectList(ListCase const& one, int capacity, std::string const& content, bool result,
                Change change) {
  std::string const xml = one.of(content);
  SCOPED_TRACE(xml + " with room for " + std::to_string(capacity));
  {
    HostCapabilities host(capacity);
    Tree tree(xml);
    expectReading(
        host, [&](_Capabilities& caps) { return (KVXCapsParser().*one.read)(tree.root(), caps); },
        result, change);
  }
  HostCapabilities host(capacity);
  expectParsed(host, element("capabilities", xml), result, change);
}

TEST(CapabilitiesLists, StoreEntriesThatFitFromTheFirstOnAndLeaveTheCount) {
  for (ListCase const& one : lists) {
    for (int const entries : {1, 2, 3, 5}) {
      for (int const room : {entries, entries + 1, INT_MAX}) {
        expectList(one, room, one.entries(entries), true,
                   [&](_Capabilities&, Arrays& arrays) { one.storeAll(arrays, entries); });
      }
    }
  }
}

TEST(CapabilitiesLists, StoreNothingAndSayWhatTheyNeedWhenTheyDoNotFit) {
  for (ListCase const& one : lists) {
    for (int const room : {INT_MIN, -1, 0, 1, 2}) {
      expectList(one, room, one.entries(3), true,
                 [&](_Capabilities& caps, Arrays&) { caps.*one.count = 3; });
    }
  }
}

TEST(CapabilitiesLists, CountAllChildrenButStoreOnlyTheirOwnWithoutGaps) {
  for (ListCase const& one : lists) {
    std::string const content = one.entry(0) + "<comment>x</comment><!-- x -->" + one.entry(1);
    expectList(one, 2, content, true, [&](_Capabilities& caps, Arrays&) { caps.*one.count = 3; });
    expectList(one, 3, content, true,
               [&](_Capabilities&, Arrays& arrays) { one.storeAll(arrays, 2); });
  }
}

TEST(CapabilitiesLists, TakeANullArrayForOneWithoutRoom) {
  for (ListCase const& one : lists) {
    SCOPED_TRACE(one.list);
    HostCapabilities host(5);
    one.detach(host.record);
    for (int const entries : {2, 5, 1}) {
      Tree tree(one.of(one.entries(entries)));
      expectReading(
          host, [&](_Capabilities& caps) { return (KVXCapsParser().*one.read)(tree.root(), caps); },
          true, [&](_Capabilities& caps, Arrays&) { caps.*one.count = entries; });
      expectParsed(host, element("capabilities", one.of(one.entries(entries))), true,
                   [&](_Capabilities& caps, Arrays&) { caps.*one.count = entries; });
    }
    host.record.*one.count = 5;
    expectParsed(host, element("capabilities", one.of("")), false, nothingChanges);
  }
}

TEST(CapabilitiesLists, AreFalseWhenEmptyOrWithoutAnEntryOfTheirOwn) {
  for (ListCase const& one : lists) {
    for (int const room : {-1, 0, 3}) expectList(one, room, "", false, nothingChanges);
    expectList(one, 3, "text", false, nothingChanges);
    expectList(one, 3, element(test::upper(one.item), one.content(0)) + "<x>1</x>", false,
               nothingChanges);
    HostCapabilities host(3);
    expectReading(
        host, [&](_Capabilities& caps) { return (KVXCapsParser().*one.read)(nullptr, caps); },
        false, nothingChanges);
  }
}

TEST(CapabilitiesLists, HaveTheResultOfTheLastEntryWhichTakesAPlaceAlsoWhenEmpty) {
  for (ListCase const& one : lists) {
    std::string const empty = "<" + one.item + "/>";
    expectList(one, 3, one.entry(0) + empty, false, [&](_Capabilities&, Arrays& arrays) {
      one.store(arrays, 0, 0);
      one.storeEmpty(arrays, 1);
    });
    expectList(one, 3, empty + one.entry(1), true, [&](_Capabilities&, Arrays& arrays) {
      one.storeEmpty(arrays, 0);
      one.store(arrays, 1, 1);
    });
    expectList(one, 3, one.entry(0) + "<other/>", true,
               [&](_Capabilities&, Arrays& arrays) { one.store(arrays, 0, 0); });
  }
}

TEST(CapabilitiesLists, AreReadAgainFromTheFirstEntryWhenRepeated) {
  for (ListCase const& one : lists) {
    HostCapabilities host(3);
    std::string const second = one.of(one.entry(3));
    expectParsed(host, element("capabilities", one.of(one.entries(3)) + second), true,
                 [&](_Capabilities&, Arrays& arrays) {
                   one.storeAll(arrays, 3);
                   one.store(arrays, 0, 3);
                 });
  }
}

TEST(CapabilitiesLists, NeverStoreBeyondTheRoomOnEntryWhenRepeated) {
  struct {
    std::vector<int> sizes;
    int stored;  // of the last list that fits, or 0
    int count;
  } const cases[] = {
      {{3, 3}, 0, 3},    {{3, 2}, 2, 3},    {{2, 3}, 2, 3},       {{5, 4}, 0, 5},    {{4, 5}, 0, 5},
      {{3, 3, 1}, 1, 3}, {{5, 2, 3}, 2, 5}, {{1, 5, 5, 5}, 1, 5}, {{3, 0, 3}, 0, 3},
  };
  for (ListCase const& one : lists) {
    for (auto const& [sizes, stored, count] : cases) {
      std::string content;
      for (int const size : sizes) content += one.of(one.entries(size)) + "<other/>";
      SCOPED_TRACE(content);
      HostCapabilities host(2);
      expectParsed(host, element("capabilities", content), true,
                   [&, stored_ = stored, count_ = count](_Capabilities& caps, Arrays& arrays) {
                     caps.*one.count = count_;
                     one.storeAll(arrays, stored_);
                   });
    }
  }
}

TEST(CapabilitiesLists, AreMeasuredEachByItself) {
  std::string content;
  for (ListCase const& one : lists) content += one.of(one.entries(one.list == "fonts" ? 4 : 2));
  HostCapabilities host(2);
  expectParsed(host, element("capabilities", content + content), true,
               [](_Capabilities& caps, Arrays& arrays) {
                 for (ListCase const& one : lists) {
                   if (one.list != "fonts") one.storeAll(arrays, 2);
                 }
                 caps.fontCount = 4;
               });
}

TEST(CapabilitiesLists, TakeTheCountAtEachCallOfTheirReaderForTheRoom) {
  for (ListCase const& one : lists) {
    SCOPED_TRACE(one.list);
    HostCapabilities host(2);
    Tree tree(one.of(one.entries(3)));
    ASSERT_TRUE((KVXCapsParser().*one.read)(tree.root(), host.record));
    ASSERT_EQ(host.record.*one.count, 3);
    expectReading(
        host, [&](_Capabilities& caps) { return (KVXCapsParser().*one.read)(tree.root(), caps); },
        true, [&](_Capabilities&, Arrays& arrays) { one.storeAll(arrays, 3); });
  }
}

TEST(CapabilitiesDevicePorts, AreAllReadIntoTheFirstEntry) {
  std::string const ports = element("device_port", "<port_id>1</port_id><type>serial</type>") +
                            element("device_port", "<port_id>2</port_id>");
  expectList(lists[1], 2, ports, true, [](_Capabilities&, Arrays& arrays) {
    arrays.devicePorts[0] = {2, 1};  // what the second one lacks stays from the first one
  });
}

// ---- Entries of lists ------------------------------------------------------------------------

/// One child of an item: what it does to a record.
template <class Record>
struct Child {
  std::string xml;
  bool result;
  void (*set)(Record&);
};

template <class Record>
void expectItem(bool (KVXCapsParser::*read)(TiXmlElement*, Record&),
                std::vector<Child<Record>> const& children) {
  auto const check = [&](std::string const& content, bool result, auto set) {
    SCOPED_TRACE(content);
    Tree tree(element("item", content));
    auto record = filled<Record>();
    auto expected = filled<Record>();
    set(expected);
    EXPECT_EQ((KVXCapsParser().*read)(tree.root(), record), result);
    EXPECT_TRUE(same(record, expected));
  };
  auto const nothing = [](Record&) {};
  for (auto const& [xml, result, set] : children) check(xml, result, set);
  check("", false, nothing);
  check("<other>1</other>", false, nothing);
  auto record = filled<Record>();
  EXPECT_FALSE((KVXCapsParser().*read)(nullptr, record));
  EXPECT_TRUE(untouched(record));
}

TEST(CapabilitiesItem, PortIsReadMemberByMember) {
  expectItem<_PortCaps>(
      &KVXCapsParser::getHostPort,
      {{"<port_id>-7</port_id>", true, [](_PortCaps& port) { port.portId = -7; }},
       {"<port_id>x</port_id>", true, [](_PortCaps& port) { port.portId = 0; }},
       {"<port_id/>", false, [](_PortCaps&) {}},
       {"<Port_id>7</Port_id>", false, [](_PortCaps&) {}},
       {"<type>serial</type>", true, [](_PortCaps& port) { port.type = 1; }},
       {"<type>Serial</type>", true, [](_PortCaps& port) { port.type = -1; }},
       {"<type/>", false, [](_PortCaps& port) { port.type = -1; }},
       {"<type>serial</type><port_id/>", false, [](_PortCaps& port) { port.type = 1; }},
       {"<port_id/><type>serial</type>", true, [](_PortCaps& port) { port.type = 1; }}});
}

TEST(CapabilitiesItem, KeywordsAreComparedUpToThe31Characters) {
  std::string const word = "ethernet_10_100_1G";
  expectItem<_PortCaps>(&KVXCapsParser::getHostPort,
                        {{element("type", word + std::string(40, 'x')), true,
                          [](_PortCaps& port) { port.type = -1; }},
                         // A longer word read before must not shine through behind a shorter one.
                         {element("type", "wifi_enet_802_11g") + element("type", "serial"), true,
                          [](_PortCaps& port) { port.type = 1; }}});
}

TEST(CapabilitiesItem, InterfaceIsReadMemberByMember) {
  expectItem<_InterfaceCaps>(
      &KVXCapsParser::getSwInterface,
      {{"<protocol>snmp_trap</protocol>", true, [](_InterfaceCaps& one) { one.protocol = 1; }},
       {"<transport>usb_2_0</transport>", true, [](_InterfaceCaps& one) { one.transport = 3; }},
       {"<port>162</port>", true, [](_InterfaceCaps& one) { one.port = 162; }},
       {"<protocol>ftp</protocol>", true, [](_InterfaceCaps& one) { one.protocol = -1; }},
       {"<transport>sctp</transport>", true, [](_InterfaceCaps& one) { one.transport = -1; }},
       {"<port/>", false, [](_InterfaceCaps&) {}}});
}

TEST(CapabilitiesItem, LanguageIsReadMemberByMember) {
  expectItem<_OCPLanguageCaps>(
      &KVXCapsParser::getOCPLanguage,
      {{"<type>-3</type>", true, [](_OCPLanguageCaps& one) { one.type = -3; }},
       {"<name>Deutsch</name>", true, [](_OCPLanguageCaps& one) { setText(one.name, "Deutsch"); }},
       {"<name/>", false, [](_OCPLanguageCaps&) {}}});
}

TEST(CapabilitiesItem, FontIsReadMemberByMember) {
  expectItem<_FontCaps>(
      &KVXCapsParser::getFontCaps,
      {{"<name>Sans</name>", true, [](_FontCaps& font) { setText(font.name, "Sans"); }},
       {"<scalable>yes</scalable>", true, [](_FontCaps& font) { font.scalable = true; }},
       {"<scalable>enabled</scalable>", true, [](_FontCaps& font) { font.scalable = true; }},
       {"<scalable>Yes</scalable>", true, [](_FontCaps& font) { font.scalable = false; }},
       {"<scalable>no</scalable>", true, [](_FontCaps& font) { font.scalable = false; }},
       {"<scalable/>", false, [](_FontCaps& font) { font.scalable = false; }},
       {"<style>regular</style>", true, [](_FontCaps& font) { font.style = 1; }},
       {"<style>bold</style>", true, [](_FontCaps& font) { font.style = 2; }},
       {"<style>italic</style>", true, [](_FontCaps& font) { font.style = 3; }},
       {"<style>none</style>", true, [](_FontCaps& font) { font.style = 0; }},
       {"<style>Bold</style>", true, [](_FontCaps& font) { font.style = 0; }},
       {"<style/>", false, [](_FontCaps& font) { font.style = 0; }}});
}

TEST(CapabilitiesItem, TemplateIsReadMemberByMember) {
  expectItem<_TemplateCaps>(
      &KVXCapsParser::getTemplate,
      {{"<name>badge</name>", true, [](_TemplateCaps& one) { setText(one.name, "badge"); }},
       {"<location>/flash</location>", true,
        [](_TemplateCaps& one) { setText(one.location, "/flash"); }},
       {"<location/>", false, [](_TemplateCaps&) {}}});
}

TEST(CapabilitiesItem, SecurityIsReadMemberByMember) {
  expectItem<_SecurityCaps>(
      &KVXCapsParser::getSecurityCaps,
      {{"<passkey_protection>yes</passkey_protection>", true,
        [](_SecurityCaps& one) { one.passkeyProtection = true; }},
       {"<passkey_protection>on</passkey_protection>", true,
        [](_SecurityCaps& one) { one.passkeyProtection = false; }},
       {"<passkey_protection/>", false, [](_SecurityCaps& one) { one.passkeyProtection = false; }},
       {"<encryption_algorithm>3des</encryption_algorithm>", true,
        [](_SecurityCaps& one) { one.encryptionAlgorithm = 2; }},
       {"<encryption_algorithm>none</encryption_algorithm>", true,
        [](_SecurityCaps& one) { one.encryptionAlgorithm = -1; }},
       {"<encryption_algorithm/>", false,
        [](_SecurityCaps& one) { one.encryptionAlgorithm = -1; }}});
}

TEST(CapabilitiesItem, InternalEncoderIsReadWithoutItsStationAndSecondEncoder) {
  expectItem<_InternalEncoderInfo>(
      &KVXCapsParser::getInternalEncoderInfo,
      {{"<comms_channel>serial</comms_channel>", true,
        [](_InternalEncoderInfo& one) { one.comms_channel = 1; }},
       {"<comms_channel>usb</comms_channel>", true,
        [](_InternalEncoderInfo& one) { one.comms_channel = 2; }},
       {"<comms_channel>usb_2_0</comms_channel>", true,
        [](_InternalEncoderInfo& one) { one.comms_channel = 0; }},
       {"<contact_encoding>yes</contact_encoding>", true,
        [](_InternalEncoderInfo& one) { one.contact_encoding = true; }},
       {"<contactless_encoder>hf</contactless_encoder>", true,
        [](_InternalEncoderInfo& one) { one.contactless_encoder = 4; }},
       {"<contactless_encoder>lf</contactless_encoder>"
        "<contactless_encoder>uhf</contactless_encoder>",
        true, [](_InternalEncoderInfo& one) { one.contactless_encoder = 3; }},
       {"<contact_station>yes</contact_station>", false, [](_InternalEncoderInfo&) {}}});
}

/// A text of each length around the array's goes into it, cut, and touches nothing behind it.
template <class Record, std::size_t N>
void expectBounded(bool (KVXCapsParser::*read)(TiXmlElement*, Record&), char const* name,
                   char (Record::*member)[N]) {
  for (std::size_t const length : {N - 2, N - 1, N, N + 1, 3 * N}) {
    SCOPED_TRACE(name + std::to_string(length));
    Tree tree(element("item", element(name, std::string(length, 'x'))));
    auto record = filled<Record>();
    auto expected = filled<Record>();
    setText(expected.*member, std::string(std::min(length, N - 1), 'x'));
    EXPECT_TRUE((KVXCapsParser().*read)(tree.root(), record));
    EXPECT_TRUE(same(record, expected));
  }
}

TEST(CapabilitiesItem, TextsAreCutToTheirFields) {
  expectBounded(&KVXCapsParser::getOCPLanguage, "name", &_OCPLanguageCaps::name);
  expectBounded(&KVXCapsParser::getFontCaps, "name", &_FontCaps::name);
  expectBounded(&KVXCapsParser::getTemplate, "name", &_TemplateCaps::name);
  expectBounded(&KVXCapsParser::getTemplate, "location", &_TemplateCaps::location);
  for (std::size_t const length : {62U, 63U, 64U, 200U}) {
    expectChildren(element("barcodes", element("barcode", std::string(length, 'x'))), true,
                   [&](_Capabilities&, Arrays& arrays) {
                     setText(arrays.barcodes[0].name,
                             std::string(std::min<std::size_t>(length, 63), 'x'));
                   });
  }
}

TEST(CapabilitiesItem, GraphicFormatsThatAreUnknownAreStoredAsSuch) {
  expectChildren(
      "<graphic_formats><graphic_format>png</graphic_format>"
      "<graphic_format>BMP</graphic_format></graphic_formats>",
      true, [](_Capabilities&, Arrays& arrays) {
        arrays.graphicFormats[0] = arrays.graphicFormats[1] = -1;
      });
}

TEST(CapabilitiesKeywords, WithoutTextAreStoredAsUnknownAndNotRead) {
  struct {
    char const* list;
    char const* entry;
    char const* name;
    void (*set)(_Capabilities&, Arrays&);
  } const cases[] = {
      {"host_ports", "host_port", "type",
       [](_Capabilities&, Arrays& to) { to.hostPorts[0].type = -1; }},
      {"device_ports", "device_port", "type",
       [](_Capabilities&, Arrays& to) { to.devicePorts[0].type = -1; }},
      {"software_interfaces", "software_interface", "protocol",
       [](_Capabilities&, Arrays& to) { to.swInterfaces[0].protocol = -1; }},
      {"software_interfaces", "software_interface", "transport",
       [](_Capabilities&, Arrays& to) { to.swInterfaces[0].transport = -1; }},
      {"fonts", "font", "style", [](_Capabilities&, Arrays& to) { to.fonts[0].style = 0; }},
      {"", "graphic_formats", "graphic_format",
       [](_Capabilities&, Arrays& to) { to.graphicFormats[0] = -1; }},
      {"", "security", "encryption_algorithm",
       [](_Capabilities& caps, Arrays&) { caps.security.encryptionAlgorithm = -1; }},
      {"", "", "print_system", [](_Capabilities& caps, Arrays&) { caps.printSystem = -1; }},
      {"", "", "print_type", [](_Capabilities& caps, Arrays&) { caps.printType = 0; }},
      {"", "", "laminator", [](_Capabilities& caps, Arrays&) { caps.laminatorPresent = false; }},
      {"", "", "laminator_type",
       [](_Capabilities& caps, Arrays&) { caps.laminatorType = laminatorTypeNone; }},
      {"", "", "mag_encoder", [](_Capabilities& caps, Arrays&) { caps.magEncoderType = -1; }},
      {"", "", "mag_stripe", [](_Capabilities& caps, Arrays&) { caps.magStripeLocation = -1; }},
      {"", "internal_encoder", "comms_channel",
       [](_Capabilities& caps, Arrays&) { caps.internalEncoder.comms_channel = 0; }},
      {"", "internal_encoder", "contactless_encoder",
       [](_Capabilities& caps, Arrays&) { caps.internalEncoder.contactless_encoder = 0; }},
  };
  for (auto const& [list, entry, name, set] : cases) {
    for (std::string xml : {"<" + std::string(name) + "/>", element(name, "")}) {
      if (*entry != '\0') xml = element(entry, xml);
      if (*list != '\0') xml = element(list, xml);
      expectChildren(xml, false, set);
    }
  }
}

/// Of these words only the known ones mean something.
TEST(CapabilitiesSharpening, LevelsWithoutTextAddNothing) {
  for (char const* const level :
       {"<image_sharpening_level/>", "<image_sharpening_level></image_sharpening_level>"}) {
    expectChildren(element("image_sharpening_levels", level), false, nothingChanges);
  }
}

// ---- The record ------------------------------------------------------------------------------

struct RecordCase {
  std::string xml;
  bool result;
  void (*set)(_Capabilities&);
};

RecordCase const members[] = {
    {"<security><passkey_protection>yes</passkey_protection></security>", true,
     [](_Capabilities& caps) { caps.security.passkeyProtection = true; }},
    {"<security><encryption_algorithm>aes</encryption_algorithm></security>", true,
     [](_Capabilities& caps) { caps.security.encryptionAlgorithm = 1; }},
    {"<security/>", false, [](_Capabilities&) {}},
    {"<memory><ram>-2147483648</ram></memory>", true,
     [](_Capabilities& caps) { caps.ramSize = INT_MIN; }},
    {"<memory><ram>4294967297</ram></memory>", true, [](_Capabilities& caps) { caps.ramSize = 1; }},
    {"<memory><flash>8589934592</flash></memory>", true,
     [](_Capabilities& caps) { caps.flashSize = 8589934592; }},
    {"<memory><flash>2147483648</flash></memory>", true,
     [](_Capabilities& caps) { caps.flashSize = 2147483648; }},
    {"<memory><flash>-1</flash></memory>", true, [](_Capabilities& caps) { caps.flashSize = -1; }},
    {"<memory><flash/></memory>", false, [](_Capabilities&) {}},
    {"<print_system>direct</print_system>", true,
     [](_Capabilities& caps) { caps.printSystem = 0; }},
    {"<print_system>retransfer</print_system>", true,
     [](_Capabilities& caps) { caps.printSystem = 1; }},
    {"<print_system>direct_to_card</print_system>", true,
     [](_Capabilities& caps) { caps.printSystem = -1; }},
    {"<print_system/>", false, [](_Capabilities& caps) { caps.printSystem = -1; }},
    {"<print_type>1_side</print_type>", true, [](_Capabilities& caps) { caps.printType = 1; }},
    {"<print_type>2_side</print_type>", true, [](_Capabilities& caps) { caps.printType = 2; }},
    {"<print_type>3_side</print_type>", true, [](_Capabilities& caps) { caps.printType = 0; }},
    {"<print_type/>", false, [](_Capabilities& caps) { caps.printType = 0; }},
    {"<laminator>present</laminator>", true,
     [](_Capabilities& caps) { caps.laminatorPresent = true; }},
    {"<laminator>notpresent</laminator>", true,
     [](_Capabilities& caps) { caps.laminatorPresent = false; }},
    {"<laminator>Present</laminator>", true,
     [](_Capabilities& caps) { caps.laminatorPresent = false; }},
    {"<laminator>yes</laminator>", true,
     [](_Capabilities& caps) { caps.laminatorPresent = false; }},
    {"<laminator/>", false, [](_Capabilities& caps) { caps.laminatorPresent = false; }},
    {"<laminator_type>1_side</laminator_type>", true,
     [](_Capabilities& caps) { caps.laminatorType = laminatorTypeOneSide; }},
    {"<laminator_type>2_side</laminator_type>", true,
     [](_Capabilities& caps) { caps.laminatorType = laminatorTypeTwoSides; }},
    {"<laminator_type>none</laminator_type>", true,
     [](_Capabilities& caps) { caps.laminatorType = laminatorTypeNone; }},
    {"<laminator_type>both</laminator_type>", true,
     [](_Capabilities& caps) { caps.laminatorType = laminatorTypeNone; }},
    {"<laminator_type/>", false,
     [](_Capabilities& caps) { caps.laminatorType = laminatorTypeNone; }},
    {"<media_path><atm>yes</atm></media_path>", true, [](_Capabilities& caps) { caps.atm = true; }},
    {"<media_path><atm/></media_path>", false, [](_Capabilities& caps) { caps.atm = false; }},
    {"<media_path><magazine_capacity>100</magazine_capacity></media_path>", true,
     [](_Capabilities& caps) { caps.magazineCapacity = 100; }},
    {"<image><logical_page><length>1</length></logical_page></image>", true,
     [](_Capabilities& caps) { caps.logicalPageLength = 1; }},
    {"<image><logical_page><width>2</width></logical_page></image>", true,
     [](_Capabilities& caps) { caps.logicalPageWidth = 2; }},
    {"<image><physical_page><length>3</length></physical_page></image>", true,
     [](_Capabilities& caps) { caps.physicalPageLength = 3; }},
    {"<image><physical_page><width>4</width></physical_page></image>", true,
     [](_Capabilities& caps) { caps.physicalPageWidth = 4; }},
    {"<image><print_resolution>300</print_resolution></image>", true,
     [](_Capabilities& caps) { caps.printResolution = 300; }},
    {"<image><print_resolution>600</print_resolution><logical_page/></image>", false,
     [](_Capabilities& caps) { caps.printResolution = 600; }},
    {"<mag_encoder>jis</mag_encoder>", true, [](_Capabilities& caps) { caps.magEncoderType = 5; }},
    {"<mag_encoder>ISO</mag_encoder>", true, [](_Capabilities& caps) { caps.magEncoderType = -1; }},
    {"<mag_encoder/>", false, [](_Capabilities& caps) { caps.magEncoderType = -1; }},
    {"<mag_stripe>front</mag_stripe>", true,
     [](_Capabilities& caps) { caps.magStripeLocation = 1; }},
    {"<mag_stripe>left</mag_stripe>", true,
     [](_Capabilities& caps) { caps.magStripeLocation = -1; }},
    {"<mag_stripe/>", false, [](_Capabilities& caps) { caps.magStripeLocation = -1; }},
    {"<internal_encoder><comms_channel>usb</comms_channel></internal_encoder>", true,
     [](_Capabilities& caps) { caps.internalEncoder.comms_channel = 2; }},
    {"<internal_encoder><contact_encoding>no</contact_encoding></internal_encoder>", true,
     [](_Capabilities& caps) { caps.internalEncoder.contact_encoding = false; }},
    {"<internal_encoder><contactless_encoder>mifare</contactless_encoder></internal_encoder>", true,
     [](_Capabilities& caps) { caps.internalEncoder.contactless_encoder = 1; }},
};

TEST(Capabilities, ElementsFillTheirMembersAndNoOthers) {
  for (auto const& [xml, result, set] : members) {
    expectChildren(xml, result, [&, set_ = set](_Capabilities& caps, Arrays&) { set_(caps); });
  }
}

TEST(Capabilities, OtherNamesAreSkipped) {
  for (RecordCase const& one : members) {
    std::string const name = one.xml.substr(1, one.xml.find_first_of(">/") - 1);
    for (std::string const& other : {test::upper(name), name + "s", name.substr(1), "x:" + name}) {
      expectChildren(element(other, "<ram>1</ram>yes"), false, nothingChanges);
    }
  }
}

TEST(Capabilities, HaveTheResultOfTheLastChildThatIsKnown) {
  auto const systemIsDirect = [](_Capabilities& caps, Arrays&) { caps.printSystem = 0; };
  auto const typeIsUnknownToo = [](_Capabilities& caps, Arrays&) {
    caps.printSystem = caps.printType = 0;
  };
  expectChildren("<print_system>direct</print_system><print_type/>", false, typeIsUnknownToo);
  expectChildren("<print_type/><print_system>direct</print_system>", true, typeIsUnknownToo);
  expectChildren("<print_system>direct</print_system><unknown/>", true, systemIsDirect);
  expectChildren("", false, nothingChanges);
  expectChildren("text", false, nothingChanges);
  HostCapabilities host(3);
  expectReading(
      host, [](_Capabilities& caps) { return KVXCapsParser().parseCapabilities(nullptr, caps); },
      false, nothingChanges);
}

std::string levels(std::vector<std::string> const& words) {
  std::string content;
  for (std::string const& word : words) content += element("image_sharpening_level", word);
  return element("image_sharpening_levels", content);
}

TEST(CapabilitiesSharpening, LevelsAddTheirBits) {
  struct {
    std::vector<std::string> words;
    bool result;
    int bits;
  } const cases[] = {
      {{"off"}, true, 1},
      {{"normal"}, true, 2},
      {{"high"}, true, 4},
      {{"low"}, true, 8},
      {{"off", "low"}, true, 9},
      {{"off", "off"}, true, 1},
      {{"low", "high", "normal", "off"}, true, 15},
      {{"Normal"}, true, 0},
      {{"off", "medium"}, true, 1},
      {{"off", ""}, false, 1},
      {{}, false, 0},
  };
  for (auto const& [words, result, bits] : cases) {
    HostCapabilities host(0);
    host.record.imageSharpeningLevels = 0x100;
    Tree tree(levels(words));
    expectReading(
        host,
        [&](_Capabilities& caps) {
          return KVXCapsParser().getImageSharpeningLevels(tree.root(), caps);
        },
        result,
        [bits_ = bits](_Capabilities& caps, Arrays&) {
          caps.imageSharpeningLevels = 0x100 | bits_;
        });
  }
}

TEST(CapabilitiesSharpening, RepeatedListsKeepAllBits) {
  HostCapabilities host(0);
  host.record.imageSharpeningLevels = 0;
  expectParsed(host,
               element("capabilities", levels({"off"}) + levels({"low"}) +
                                           "<image_sharpening_levels><level>high</level>"
                                           "</image_sharpening_levels>"),
               false, [](_Capabilities& caps, Arrays&) { caps.imageSharpeningLevels = 9; });
}

TEST(CapabilitiesReaders, OfGroupsAndKeywordsReadTheElementItself) {
  struct {
    bool (KVXCapsParser::*read)(TiXmlElement*, _Capabilities&);
    std::string xml;
    void (*set)(_Capabilities&);
    void (*setEmpty)(_Capabilities&) = [](_Capabilities&) {};
  } const cases[] = {
      {&KVXCapsParser::getMemoryCaps, "<any><ram>5</ram><flash>6</flash></any>",
       [](_Capabilities& caps) { caps.ramSize = 5, caps.flashSize = 6; }},
      {&KVXCapsParser::getMediaPath,
       "<any><atm>no</atm><magazine_capacity>7</magazine_capacity></any>",
       [](_Capabilities& caps) { caps.atm = false, caps.magazineCapacity = 7; }},
      {&KVXCapsParser::getImageCaps, "<any><print_resolution>300</print_resolution></any>",
       [](_Capabilities& caps) { caps.printResolution = 300; }},
      {&KVXCapsParser::getLogicalPage, "<any><length>1</length><width>2</width></any>",
       [](_Capabilities& caps) { caps.logicalPageLength = 1, caps.logicalPageWidth = 2; }},
      {&KVXCapsParser::getPhysicalPage, "<any><length>3</length><width>4</width></any>",
       [](_Capabilities& caps) { caps.physicalPageLength = 3, caps.physicalPageWidth = 4; }},
      {&KVXCapsParser::getImageSharpeningLevels,
       "<any><image_sharpening_level>low</image_sharpening_level></any>",
       [](_Capabilities& caps) { caps.imageSharpeningLevels |= 8; }},
      {&KVXCapsParser::getPrintSystem, "<any>retransfer</any>",
       [](_Capabilities& caps) { caps.printSystem = 1; },
       [](_Capabilities& caps) { caps.printSystem = -1; }},
      {&KVXCapsParser::getPrintType, "<any>2_side</any>",
       [](_Capabilities& caps) { caps.printType = 2; },
       [](_Capabilities& caps) { caps.printType = 0; }},
      {&KVXCapsParser::getLaminator, "<any>present</any>",
       [](_Capabilities& caps) { caps.laminatorPresent = true; },
       [](_Capabilities& caps) { caps.laminatorPresent = false; }},
      {&KVXCapsParser::getLaminatorType, "<any>2_side</any>",
       [](_Capabilities& caps) { caps.laminatorType = laminatorTypeTwoSides; },
       [](_Capabilities& caps) { caps.laminatorType = laminatorTypeNone; }},
  };
  for (auto const& [read, xml, set, setEmpty] : cases) {
    SCOPED_TRACE(xml);
    Tree tree(xml);
    TiXmlElement childless("any");
    auto const reading = [&, read_ = read](TiXmlElement* from) {
      return [=](_Capabilities& caps) { return (KVXCapsParser().*read_)(from, caps); };
    };
    HostCapabilities host(3);
    expectReading(host, reading(nullptr), false, nothingChanges);
    expectReading(host, reading(&childless), false,
                  [set_ = setEmpty](_Capabilities& caps, Arrays&) { set_(caps); });
    expectReading(host, reading(tree.root()), true,
                  [set_ = set](_Capabilities& caps, Arrays&) { set_(caps); });
  }
}

// ---- Keywords --------------------------------------------------------------------------------

TEST(CapabilitiesKeywords, HaveTheirCodes) {
  struct {
    int (KVXCapsParser::*convert)(char*);
    ExpectedWords words;
  } const tables[] = {
      {&KVXCapsParser::portTypeToInt,
       {Rule::exact,
        -1,
        {{"usb_2_0", 0},
         {"serial", 1},
         {"ethernet_10_100", 2},
         {"ethernet_10_100_1G", 3},
         {"wifi_enet_802_11g", 4}}}},
      {&KVXCapsParser::protocolToInt,
       {Rule::exact, -1, {{"snmp", 0}, {"snmp_trap", 1}, {"http", 2}, {"kovra", 3}}}},
      {&KVXCapsParser::transportToInt,
       {Rule::exact, -1, {{"udp", 0}, {"tcp", 1}, {"usb", 2}, {"usb_2_0", 3}}}},
      {&KVXCapsParser::encAlgToInt, {Rule::exact, -1, {{"aes", 1}, {"3des", 2}}}},
      {&KVXCapsParser::graphicsFormatToInt,
       {Rule::exact, -1, {{"bmp", 1}, {"jpeg", 2}, {"tga", 8}, {"tiff", 9}, {"raw", 10}}}},
      {&KVXCapsParser::printerTypeToInt, {Rule::exact, -1, {{"direct", 0}, {"retransfer", 1}}}},
      {&KVXCapsParser::magHeadTypeToInt,
       {Rule::exact,
        -1,
        {{"none", 0}, {"iso", 1}, {"aamva", 2}, {"custom", 3}, {"binary", 4}, {"jis", 5}}}},
      {&KVXCapsParser::magStripeLocationToInt, {Rule::exact, -1, {{"back", 0}, {"front", 1}}}},
      {&KVXCapsParser::laminationTypeToInt, {Rule::exact, 0, {{"1_side", 1}, {"2_side", 2}}}},
  };
  for (auto const& table : tables) {
    expectWords(table.words, [&](char* word) { return (KVXCapsParser().*table.convert)(word); });
  }
}

TEST(CapabilitiesKeywords, MayBeLiterals) {
  KVXCapsParser parser;
  EXPECT_EQ(parser.portTypeToInt("serial"), 1);
  EXPECT_EQ(parser.protocolToInt("http"), 2);
  EXPECT_EQ(parser.transportToInt("tcp"), 1);
  EXPECT_EQ(parser.encAlgToInt("3des"), 2);
  EXPECT_EQ(parser.graphicsFormatToInt("raw"), 10);
  EXPECT_EQ(parser.printerTypeToInt("direct"), 0);
  EXPECT_EQ(parser.magHeadTypeToInt("jis"), 5);
  EXPECT_EQ(parser.magStripeLocationToInt("front"), 1);
  EXPECT_EQ(parser.laminationTypeToInt("2_side"), 2);
}

// ---- The entry -------------------------------------------------------------------------------

char const wholeReply[] = R"(<?xml version="1.0" encoding="UTF-8" ?>
<capabilities>
    <host_ports>
        <host_port><port_id>1</port_id><type>usb_2_0</type></host_port>
        <host_port><port_id>2</port_id><type>wifi_enet_802_11g</type></host_port>
    </host_ports>
    <device_ports>
        <device_port><port_id>3</port_id><type>serial</type></device_port>
        <device_port><port_id>4</port_id><type>ethernet_10_100</type></device_port>
    </device_ports>
    <software_interfaces>
        <software_interface><protocol>kovra</protocol><transport>udp</transport>
            <port>5000</port></software_interface>
    </software_interfaces>
    <ocp_languages><ocp_language><type>1</type><name>English</name></ocp_language></ocp_languages>
    <image_sharpening_levels>
        <image_sharpening_level>off</image_sharpening_level>
        <image_sharpening_level>high</image_sharpening_level>
    </image_sharpening_levels>
    <security><passkey_protection>yes</passkey_protection>
        <encryption_algorithm>3des</encryption_algorithm></security>
    <memory><ram>67108864</ram><flash>4294967296</flash></memory>
    <graphic_formats><graphic_format>tga</graphic_format>
        <graphic_format>raw</graphic_format></graphic_formats>
    <fonts><font><name>Sans</name><scalable>yes</scalable><style>italic</style></font></fonts>
    <templates><template><name>badge</name><location>/flash/badge</location></template></templates>
    <graphics><graphic><name>logo</name><location>/flash/logo</location></graphic></graphics>
    <print_system>retransfer</print_system>
    <print_type>2_side</print_type>
    <laminator>present</laminator>
    <laminator_type>1_side</laminator_type>
    <media_path><atm>no</atm><magazine_capacity>100</magazine_capacity></media_path>
    <image>
        <logical_page><length>1036</length><width>664</width></logical_page>
        <physical_page><length>1012</length><width>638</width></physical_page>
        <print_resolution>300</print_resolution>
    </image>
    <mag_encoder>aamva</mag_encoder>
    <mag_stripe>front</mag_stripe>
    <internal_encoder><comms_channel>usb</comms_channel><contact_encoding>yes</contact_encoding>
        <contactless_encoder>felica</contactless_encoder></internal_encoder>
    <barcodes><barcode>code39</barcode><barcode>qr</barcode></barcodes>
</capabilities>
)";

void setWhole(_Capabilities& caps, Arrays& arrays) {
  arrays.hostPorts[0] = {1, 0};
  arrays.hostPorts[1] = {2, 4};
  arrays.devicePorts[0] = {4, 2};
  arrays.swInterfaces[0] = {3, 0, 5000};
  arrays.ocpLanguages[0].type = 1;
  setText(arrays.ocpLanguages[0].name, "English");
  caps.imageSharpeningLevels |= 1 | 4;
  caps.security.passkeyProtection = true;
  caps.security.encryptionAlgorithm = 2;
  caps.ramSize = 67108864;
  caps.flashSize = 4294967296;
  arrays.graphicFormats[0] = 8;
  arrays.graphicFormats[1] = 10;
  setText(arrays.fonts[0].name, "Sans");
  arrays.fonts[0].scalable = true;
  arrays.fonts[0].style = 3;
  setText(arrays.templates[0].name, "badge");
  setText(arrays.templates[0].location, "/flash/badge");
  setText(arrays.graphics[0].name, "logo");
  setText(arrays.graphics[0].location, "/flash/logo");
  caps.printSystem = 1;
  caps.printType = 2;
  caps.atm = false;
  caps.magazineCapacity = 100;
  caps.logicalPageLength = 1036;
  caps.logicalPageWidth = 664;
  caps.physicalPageLength = 1012;
  caps.physicalPageWidth = 638;
  caps.printResolution = 300;
  caps.magEncoderType = 2;
  caps.magStripeLocation = 1;
  caps.internalEncoder.comms_channel = 2;
  caps.internalEncoder.contact_encoding = true;
  caps.internalEncoder.contactless_encoder = 2;
  setText(arrays.barcodes[0].name, "code39");
  setText(arrays.barcodes[1].name, "qr");
  caps.laminatorPresent = true;
  caps.laminatorType = laminatorTypeOneSide;
}

template <class Change>
void expectEntry(std::wstring const& text, int length, Change change) {
  HostCapabilities host(2);
  auto const buffer = unterminated(text);
  expectReading(
      host,
      [&](_Capabilities& caps) {
        return KVXCapsParser().GetCapabilities(*buffer.get(), length, caps);
      },
      false, change);
}

template <class Change>
void expectEntry(std::string const& text, Change change) {
  expectEntry(wide(text), static_cast<int>(text.size()), change);
}

std::string withRoot(std::string const& root) {
  std::string reply = wholeReply;
  reply.replace(reply.find("<capabilities>"), 14, "<" + root + ">");
  reply.replace(reply.find("</capabilities>"), 15, "</" + root + ">");
  return reply;
}

TEST(GetCapabilities, ReadsAWholeReplyAndIsFalseAllTheSame) {
  for (char const* const locale : test::locales) {
    LocaleGuard const guard(locale);
    expectEntry(wholeReply, setWhole);
  }
}

TEST(GetCapabilities, StopsAtATerminatorBeforeTheLength) {
  expectEntry(wide(wholeReply) + L'\0', INT_MAX, setWhole);
}

TEST(GetCapabilities, TakesEitherRootAndPrefersTheFirst) {
  expectEntry(withRoot("get_capabilities"), setWhole);
  std::string const other = "<get_capabilities><print_type>1_side</print_type></get_capabilities>";
  std::string const preferred = "<capabilities><print_type>2_side</print_type></capabilities>";
  auto const twoSided = [](_Capabilities& caps, Arrays&) { caps.printType = 2; };
  expectEntry(other + preferred, twoSided);
  expectEntry(preferred + other, twoSided);
  // One without children is found all the same, and there is nothing to be read in it.
  expectEntry("<capabilities/>" + other, nothingChanges);
}

TEST(GetCapabilities, TouchesNothingForOtherRoots) {
  for (char const* const root : {"Capabilities", "set_capabilities", "capability", "a"}) {
    expectEntry(withRoot(root), nothingChanges);
  }
  expectEntry("<a>" + withRoot("capabilities").substr(40) + "</a>", nothingChanges);
}

TEST(GetCapabilities, TouchesNothingForALengthBelowOne) {
  for (int const length : {0, -1, INT_MIN}) expectEntry(wide(wholeReply), length, nothingChanges);
}

TEST(GetCapabilities, TouchesNothingWhenCutAnywhere) {
  std::string const reply = wholeReply;
  for (std::size_t size = 1; size <= reply.rfind('>'); ++size) {
    SCOPED_TRACE(size);
    expectEntry(reply.substr(0, size), nothingChanges);
    expectEntry(wide(reply), static_cast<int>(size), nothingChanges);
  }
}

TEST(GetCapabilities, TouchesNothingForHostileTexts) {
  std::string deep;
  std::string end;
  std::string crowded = "<a";
  for (int i = 0; i < 128; ++i) deep += "<a>", end += "</a>";
  for (int i = 0; i < 257; ++i) crowded += " a" + std::to_string(i) + "='1'";
  std::string const known = "<print_type>1_side</print_type>";
  expectEntry(element("capabilities", known + deep + end), nothingChanges);
  expectEntry(element("capabilities", known + crowded + "/>"), nothingChanges);
}

/// A reply of that many bytes, blown up by a comment of `filler` in front.
std::wstring padded(std::size_t bytes, std::wstring const& filler, std::size_t fillerBytes) {
  std::wstring const tail = L" --><capabilities><print_type>2_side</print_type></capabilities>";
  std::wstring text = L"<!-- ";
  std::size_t size = text.size() + tail.size();
  for (; size + fillerBytes <= bytes; size += fillerBytes) text += filler;
  for (; size < bytes; ++size) text += L'.';
  return text + tail;
}

TEST(GetCapabilities, ReadsAsMuchAsItsBufferHoldsAndCutsTheRest) {
  auto const twoSided = [](_Capabilities& caps, Arrays&) { caps.printType = 2; };
  struct {
    std::size_t bytes;
    bool whole;
  } const cases[] = {{65530, true}, {65531, true}, {65532, false}, {65533, false}, {200000, false}};
  for (auto const& [bytes, whole] : cases) {
    SCOPED_TRACE(bytes);
    std::wstring const text = padded(bytes, L".", 1);
    ASSERT_EQ(text.size(), bytes);
    int const length = static_cast<int>(bytes);
    whole ? expectEntry(text, length, twoSided) : expectEntry(text, length, nothingChanges);
    // A larger length opens no more of the buffer.
    std::wstring const terminated = text + L'\0';
    whole ? expectEntry(terminated, INT_MAX, twoSided)
          : expectEntry(terminated, INT_MAX, nothingChanges);
  }
}

TEST(GetCapabilities, CountsBytesAndNotCharacters) {
  LocaleGuard const guard("C.UTF-8");
  auto const twoSided = [](_Capabilities& caps, Arrays&) { caps.printType = 2; };
  // Two bytes for each character: the length has to allow for them.
  std::wstring const fits = padded(65531, L"\u00e4", 2) + L'\0';
  EXPECT_LT(fits.size(), 40000U);
  expectEntry(fits, 65531, twoSided);
  expectEntry(fits, 65530, nothingChanges);
  expectEntry(padded(65532, L"\u00e4", 2) + L'\0', INT_MAX, nothingChanges);
}

TEST(GetCapabilities, LeavesEntriesBehindTheLastOneAlone) {
  // A host that cleared its array sees how many entries there were.
  HostCapabilities host(5);
  std::memset(host.arrays.barcodes, 0, sizeof host.arrays.barcodes);
  auto const text = wide("<capabilities><barcodes><barcode>a</barcode></barcodes></capabilities>");
  KVXCapsParser().GetCapabilities(text.front(), static_cast<int>(text.size()), host.record);
  EXPECT_EQ(host.record.barcodeCount, 5);
  EXPECT_STREQ(host.arrays.barcodes[0].name, "a");
  EXPECT_STREQ(host.arrays.barcodes[1].name, "");
}

TEST(GetCapabilities, IsReadInTwoStepsByAHostThatDoesNotKnowTheSizes) {
  auto const text = wide(wholeReply);
  auto const read = [&](_Capabilities& caps) {
    KVXCapsParser().GetCapabilities(text.front(), static_cast<int>(text.size()), caps);
  };
  _Capabilities caps{};
  read(caps);
  EXPECT_EQ(caps.hostPortCount, 2);
  EXPECT_EQ(caps.devicePortCount, 2);
  EXPECT_EQ(caps.swInterfaceCount, 1);
  EXPECT_EQ(caps.ocpLanguageCount, 1);
  EXPECT_EQ(caps.graphicFormatCount, 2);
  EXPECT_EQ(caps.fontCount, 1);
  EXPECT_EQ(caps.templateCount, 1);
  EXPECT_EQ(caps.graphicCount, 1);
  EXPECT_EQ(caps.barcodeCount, 2);
  std::vector<_BarCodeCaps> barcodes(2);
  caps.barcodes = barcodes.data();
  read(caps);
  EXPECT_EQ(caps.barcodeCount, 2);
  EXPECT_STREQ(barcodes[1].name, "qr");
}

}  // namespace
}  // namespace Kovra
