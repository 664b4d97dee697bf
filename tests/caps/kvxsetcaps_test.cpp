#include "kvxsetcaps.h"

#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cstring>
#include <string>
#include <type_traits>
#include <vector>

#include "caps/capabilities.hpp"
#include "kvxcapsparser.h"
#include "support/folder.hpp"
#include "support/locale.hpp"
#include "support/records.hpp"
#include "support/room.hpp"
#include "support/tree.hpp"
#include "support/wide.hpp"

namespace Kovra {
namespace {

using test::Arrays;
using test::filled;
using test::printed;
using test::same;
using test::setText;
using test::wide;

/// A printer that can do everything, with two of most things.
struct Everything {
  Arrays arrays{};
  _Capabilities record{};

  Everything() {
    arrays.hostPorts[0] = {1, 0};
    arrays.hostPorts[1] = {2, 3};
    record.hostPorts = arrays.hostPorts;
    record.hostPortCount = 2;
    arrays.devicePorts[0] = {3, 1};
    arrays.devicePorts[1] = {4, 2};
    record.devicePorts = arrays.devicePorts;
    record.devicePortCount = 2;
    arrays.swInterfaces[0] = {3, 0, 5000};
    record.swInterfaces = arrays.swInterfaces;
    record.swInterfaceCount = 1;
    arrays.ocpLanguages[0].type = 1;
    setText(arrays.ocpLanguages[0].name, "English");
    record.ocpLanguages = arrays.ocpLanguages;
    record.ocpLanguageCount = 1;
    record.imageSharpeningLevels = 15;
    record.security = {true, 1};
    record.ramSize = 67108864;
    record.flashSize = 8589934592;
    arrays.graphicFormats[0] = 10;
    arrays.graphicFormats[1] = 1;
    record.graphicFormats = arrays.graphicFormats;
    record.graphicFormatCount = 2;
    setText(arrays.fonts[0].name, "Sans");
    arrays.fonts[0].scalable = true;
    arrays.fonts[0].style = 2;
    record.fonts = arrays.fonts;
    record.fontCount = 1;
    setText(arrays.templates[0].name, "badge");
    setText(arrays.templates[0].location, "/never/written");
    record.templates = arrays.templates;
    record.templateCount = 1;
    setText(arrays.graphics[0].name, "logo <&>");
    setText(arrays.graphics[0].location, "/flash/logo");
    record.graphics = arrays.graphics;
    record.graphicCount = 1;
    record.printSystem = 0;
    record.printType = 2;
    record.atm = true;
    record.magazineCapacity = 100;
    record.logicalPageLength = 1036;
    record.logicalPageWidth = 664;
    record.physicalPageLength = 1012;
    record.physicalPageWidth = 638;
    record.printResolution = 300;
    record.magEncoderType = 1;
    record.magStripeLocation = 0;
    record.internalEncoder.comms_channel = 2;
    record.internalEncoder.contact_encoding = true;
    record.internalEncoder.contactless_encoder = 1;
    setText(arrays.barcodes[0].name, "code39");
    setText(arrays.barcodes[1].name, "qr");
    record.barcodes = arrays.barcodes;
    record.barcodeCount = 2;
    record.laminatorPresent = true;
    record.laminatorType = laminatorTypeOneSide;
  }
};

char const everythingWritten[] = R"(<?xml version="1.0" encoding="UTF-8" ?>
<capabilities>
    <host_ports>
        <host_port>
            <port_id>1</port_id>
            <type>usb_2_0</type>
        </host_port>
        <host_port>
            <port_id>2</port_id>
            <type>ethernet_10_100_1G</type>
        </host_port>
    </host_ports>
    <device_ports>
        <device_port>
            <port_id>3</port_id>
            <type>serial</type>
        </device_port>
        <device_port>
            <port_id>4</port_id>
            <type>ethernet_10_100</type>
        </device_port>
    </device_ports>
    <software_interfaces>
        <software_interface>
            <protocol>kovra</protocol>
            <transport>udp</transport>
            <port>5000</port>
        </software_interface>
    </software_interfaces>
    <ocp_languages>
        <ocp_language>
            <type>1</type>
            <name>English</name>
        </ocp_language>
    </ocp_languages>
    <image_sharpening_levels>
        <image_sharpening_level>off</image_sharpening_level>
        <image_sharpening_level>normal</image_sharpening_level>
        <image_sharpening_level>high</image_sharpening_level>
        <image_sharpening_level>low</image_sharpening_level>
    </image_sharpening_levels>
    <security>
        <passkey_protection>yes</passkey_protection>
        <encryption_algorithm>aes</encryption_algorithm>
    </security>
    <memory>
        <ram>67108864</ram>
        <flash>8589934592</flash>
    </memory>
    <graphic_formats>
        <graphic_format>raw</graphic_format>
        <graphic_format>bmp</graphic_format>
    </graphic_formats>
    <fonts>
        <font>
            <name>Sans</name>
            <name>yes</name>
            <style>bold</style>
        </font>
    </fonts>
    <templates>
        <template>
            <name>badge</name>
        </template>
    </templates>
    <graphics>
        <graphic>
            <name>logo &lt;&amp;&gt;</name>
            <location>/flash/logo</location>
        </graphic>
    </graphics>
    <print_system>retransfer</print_system>
    <print_type>2_side</print_type>
    <laminator>present</laminator>
    <laminator_type>1_side</laminator_type>
    <media_path>
        <atm>yes</atm>
        <magazine_capacity>100</magazine_capacity>
    </media_path>
    <image>
        <logical_page>
            <length>1036</length>
            <width>664</width>
        </logical_page>
        <physical_page>
            <length>1012</length>
            <width>638</width>
        </physical_page>
        <print_resolution>300</print_resolution>
    </image>
    <mag_encoder>iso</mag_encoder>
    <mag_stripe>front</mag_stripe>
    <internal_encoder>
        <comms_channel>serial</comms_channel>
        <contact_encoding>yes</contact_encoding>
        <contactless_encoder>mifare</contactless_encoder>
    </internal_encoder>
    <barcodes>
        <barcode>code39</barcode>
        <barcode>qr</barcode>
    </barcodes>
</capabilities>
)";

/// The narrow form of what a host gets; every call succeeds.
std::string written(KVXSetCaps& writer, _Capabilities const& caps, int mode, bool direct) {
  std::vector<wchar_t> out(100000, L'?');
  EXPECT_TRUE(writer.SetCapabilities(caps, out.data(), static_cast<int>(out.size()), mode, direct));
  std::string narrow;
  for (wchar_t const c : std::wstring(out.data())) narrow += static_cast<char>(c);
  return narrow;
}

std::string written(_Capabilities const& caps, int mode, bool direct = false) {
  KVXSetCaps writer;
  return written(writer, caps, mode, direct);
}

/// What stands below the root of one document, without breaks and blanks.
std::string below(_Capabilities const& caps, int mode, bool direct = false) {
  KVXSetCaps writer;
  written(writer, caps, mode, direct);
  std::string all;
  for (TiXmlNode* child = writer.root->FirstChild(); child; child = child->NextSibling()) {
    all += printed(*child);
  }
  return all;
}

/// The first element of that name below the root, with what is in it; "" when there is none.
std::string part(_Capabilities const& caps, char const* name, bool direct = false) {
  KVXSetCaps writer;
  written(writer, caps, 0, direct);
  TiXmlElement const* const found = writer.root->FirstChildElement(name);
  return found != nullptr ? printed(*found) : "";
}

// ---- Whole documents -------------------------------------------------------------------------

TEST(SetCapabilities, WritesTheWholeDescription) {
  Everything const all;
  Everything const before;
  EXPECT_EQ(written(all.record, 0), everythingWritten);
  EXPECT_TRUE(same(all.arrays, before.arrays)) << "the record is only read";
}

TEST(SetCapabilities, WritesTheSameInEveryLocale) {
  for (char const* const locale : test::locales) {
    test::LocaleGuard const guard(locale);
    EXPECT_EQ(written(Everything().record, 0), everythingWritten);
  }
}

TEST(SetCapabilities, WritesAnEmptyRecordWithItsOwnDefaults) {
  EXPECT_EQ(below(_Capabilities{}, 0),
            "<image_sharpening_levels />"
            "<security><passkey_protection>no</passkey_protection>"
            "<encryption_algorithm>none</encryption_algorithm></security>"
            "<memory><ram>0</ram><flash>0</flash></memory>"
            "<graphic_formats /><fonts /><templates /><graphics />"
            "<print_system>retransfer</print_system><print_type></print_type>"
            "<laminator>notpresent</laminator>"
            "<media_path><atm>no</atm><magazine_capacity>0</magazine_capacity></media_path>"
            "<image><logical_page><length>0</length><width>0</width></logical_page>"
            "<physical_page><length>0</length><width>0</width></physical_page>"
            "<print_resolution>0</print_resolution></image>"
            "<mag_encoder>none</mag_encoder><mag_stripe>back</mag_stripe>"
            "<internal_encoder><comms_channel></comms_channel>"
            "<contact_encoding>no</contact_encoding><contactless_encoder></contactless_encoder>"
            "</internal_encoder><barcodes />");
}

TEST(SetCapabilities, ModeOneWritesTheMagneticEncoderAlone) {
  _Capabilities caps = Everything().record;
  caps.magEncoderType = 2;
  EXPECT_EQ(written(caps, 1),
            "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n<capabilities>\n"
            "    <mag_encoder>aamva</mag_encoder>\n</capabilities>\n");
  caps.magEncoderType = 5;
  EXPECT_EQ(below(caps, 1), "<mag_encoder></mag_encoder>");
}

TEST(SetCapabilities, OtherModesWriteAnEmptyRootAndSucceed) {
  for (int const mode : {7, 3, -1, INT_MIN, INT_MAX}) {
    EXPECT_EQ(written(Everything().record, mode),
              "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n<capabilities />\n");
  }
}

TEST(SetCapabilities, KeepsItsArgumentsAndAppendsAtEveryCall) {
  Everything const all;
  KVXSetCaps writer;
  EXPECT_EQ(writer.root, nullptr);
  std::string const first = written(writer, all.record, 1, true);
  TiXmlElement const* const firstRoot = writer.root;
  EXPECT_TRUE(writer.directToCard);
  std::string const both = written(writer, all.record, 7, false);
  EXPECT_FALSE(writer.directToCard);
  EXPECT_NE(writer.root, firstRoot);
  EXPECT_STREQ(writer.root->Value(), "capabilities");
  EXPECT_EQ(both, first + "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n<capabilities />\n");
}

TEST(SetCapabilities, ConvertsNoMoreThanTheOutputTakes) {
  Everything const all;
  std::wstring const whole = wide(everythingWritten);
  for (std::size_t const length : {std::size_t{1}, std::size_t{7}, whole.size() - 1, whole.size(),
                                   whole.size() + 1, whole.size() + 2}) {
    std::vector<wchar_t> out(whole.size() + 3, L'?');
    KVXSetCaps writer;
    EXPECT_TRUE(writer.SetCapabilities(all.record, out.data(), static_cast<int>(length), 0, false));
    std::wstring expected = whole.substr(0, length);
    if (length > whole.size()) expected += L'\0';
    expected.resize(out.size(), L'?');
    EXPECT_EQ(std::wstring(out.begin(), out.end()), expected) << length;
  }
}

TEST(SetCapabilities, IsFalseForANullOutputAndComposesAllTheSame) {
  KVXSetCaps writer;
  EXPECT_FALSE(writer.SetCapabilities(Everything().record, nullptr, 100, 1, true));
  EXPECT_TRUE(writer.directToCard);
  EXPECT_EQ(printed(*writer.root), "<capabilities><mag_encoder>iso</mag_encoder></capabilities>");
}

TEST(SetCapabilities, SavesToAFileThatTheHostNames) {
  test::TemporaryFolder const folder;
  std::string path = folder.file("capabilities.xml");
  KVXSetCaps writer;
  written(writer, Everything().record, 1, false);
  EXPECT_TRUE(writer.saveJob(path.data()));
  EXPECT_NE(test::contentsOf(path).find("<mag_encoder>iso</mag_encoder>"), std::string::npos);
  EXPECT_FALSE(writer.saveJob(static_cast<char*>(nullptr)));
  EXPECT_FALSE(writer.saveJob("/no/such/folder/capabilities.xml"));
}

TEST(SetCapabilities, LeavesNoFileUnlessTheHostNamesOne) {
  std::string const text = test::uniqueText();
  Everything all;
  setText(all.arrays.barcodes[0].name, text);
  ASSERT_NE(written(all.record, 0).find(text), std::string::npos);
  EXPECT_FALSE(KVXSetCaps().SetCapabilities(all.record, nullptr, 0, 0, false));
  EXPECT_EQ(test::temporaryFilesWith(text), "");
}

// ---- Lists -----------------------------------------------------------------------------------

TEST(SetCapabilitiesLists, OfPortsInterfacesAndLanguagesAreLeftOutWhenTheirCountIsZero) {
  Everything all;
  all.record.hostPortCount = all.record.devicePortCount = 0;
  all.record.swInterfaceCount = all.record.ocpLanguageCount = 0;
  for (char const* const name :
       {"host_ports", "device_ports", "software_interfaces", "ocp_languages"}) {
    EXPECT_EQ(part(all.record, name), "") << name;
  }
}

TEST(SetCapabilitiesLists, AreEmptyWhenTheirCountIsBelowOne) {
  struct {
    char const* name;
    int _Capabilities::*count;
    bool leftOut;
  } const lists[] = {
      {"host_ports", &_Capabilities::hostPortCount, true},
      {"device_ports", &_Capabilities::devicePortCount, true},
      {"software_interfaces", &_Capabilities::swInterfaceCount, true},
      {"ocp_languages", &_Capabilities::ocpLanguageCount, true},
      {"graphic_formats", &_Capabilities::graphicFormatCount, false},
      {"fonts", &_Capabilities::fontCount, false},
      {"templates", &_Capabilities::templateCount, false},
      {"graphics", &_Capabilities::graphicCount, false},
      {"barcodes", &_Capabilities::barcodeCount, false},
  };
  for (auto const& [name, count, leftOut] : lists) {
    std::string const empty = "<" + std::string(name) + " />";
    Everything all;
    for (int const below : {-1, INT_MIN}) {
      all.record.*count = below;
      EXPECT_EQ(part(all.record, name), empty) << below;
    }
    all.record.*count = 0;
    EXPECT_EQ(part(all.record, name), leftOut ? "" : empty);
  }
}

TEST(SetCapabilitiesLists, HaveAsManyEntriesAsTheirCountSays) {
  std::vector<int> const formats(3000, 1);
  TiXmlElement root("capabilities");
  EXPECT_TRUE(KVXSetCaps().addGraphicFormatsCaps(&root, formats.data(), 3000));
  int written = 0;
  TiXmlElement const* entry = root.FirstChildElement()->FirstChildElement();
  for (; entry != nullptr; entry = entry->NextSiblingElement()) ++written;
  EXPECT_EQ(written, 3000);
}

TEST(SetCapabilitiesLists, WithoutAnArrayAreEmpty) {
  _Capabilities caps{};
  caps.hostPortCount = caps.devicePortCount = caps.swInterfaceCount = caps.ocpLanguageCount = 9;
  caps.graphicFormatCount = caps.fontCount = caps.templateCount = caps.graphicCount = 9;
  caps.barcodeCount = 9;
  for (char const* const name :
       {"host_ports", "device_ports", "software_interfaces", "ocp_languages", "graphic_formats",
        "fonts", "templates", "graphics", "barcodes"}) {
    EXPECT_EQ(part(caps, name), "<" + std::string(name) + " />");
  }
}

TEST(SetCapabilitiesLists, AddTheirParentBeforeTheyLookAtTheCount) {
  Everything const all;
  KVXSetCaps writer;
  auto const expect = [&](bool result, char const* xml, auto add) {
    TiXmlElement root("r");
    EXPECT_EQ(add(&root), result) << xml;
    EXPECT_EQ(printed(root), std::string("<r>") + xml + "</r>");
    EXPECT_FALSE(add(nullptr)) << xml;
  };
  for (int const count : {0, -1}) {
    expect(false, "<host_ports />",
           [&](TiXmlElement* to) { return writer.addHostPorts(to, all.arrays.hostPorts, count); });
    expect(false, "<device_ports />", [&](TiXmlElement* to) {
      return writer.addDevicePorts(to, all.arrays.devicePorts, count);
    });
    expect(false, "<software_interfaces />", [&](TiXmlElement* to) {
      return writer.addSWInterfaces(to, all.arrays.swInterfaces, count);
    });
    expect(false, "<ocp_languages />", [&](TiXmlElement* to) {
      return writer.addOcpLanguages(to, all.arrays.ocpLanguages, count);
    });
    expect(false, "<graphic_formats />", [&](TiXmlElement* to) {
      return writer.addGraphicFormatsCaps(to, all.arrays.graphicFormats, count);
    });
    expect(false, "<fonts />",
           [&](TiXmlElement* to) { return writer.addFontsCaps(to, all.arrays.fonts, count); });
    expect(false, "<templates />", [&](TiXmlElement* to) {
      return writer.addTemplateCaps(to, all.arrays.templates, count);
    });
    expect(false, "<graphics />", [&](TiXmlElement* to) {
      return writer.addGraphicsCaps(to, all.arrays.graphics, count);
    });
    expect(false, "<barcodes />",
           [&](TiXmlElement* to) { return writer.addBarCodes(to, all.arrays.barcodes, count); });
  }
  expect(true,
         "<host_ports><host_port><port_id>1</port_id><type>usb_2_0</type></host_port>"
         "</host_ports>",
         [&](TiXmlElement* to) { return writer.addHostPorts(to, all.arrays.hostPorts, 1); });
  expect(true,
         "<device_ports><device_port><port_id>3</port_id><type>serial</type></device_port>"
         "</device_ports>",
         [&](TiXmlElement* to) { return writer.addDevicePorts(to, all.arrays.devicePorts, 1); });
  expect(true, "<templates><template><name>badge</name></template></templates>",
         [&](TiXmlElement* to) { return writer.addTemplateCaps(to, all.arrays.templates, 1); });
  expect(true, "<graphic_formats><graphic_format>raw</graphic_format></graphic_formats>",
         [&](TiXmlElement* to) {
           return writer.addGraphicFormatsCaps(to, all.arrays.graphicFormats, 1);
         });
}

TEST(SetCapabilitiesLists, OfPortsMayHaveAnyItem) {
  Everything const all;
  KVXSetCaps writer;
  TiXmlElement list("l");
  EXPECT_TRUE(writer.addPorts(&list, all.arrays.hostPorts, 1, "spare_port"));
  std::string tag = "other_port";
  EXPECT_TRUE(writer.addPorts(&list, all.arrays.devicePorts, 1, tag.data()));
  EXPECT_EQ(printed(list),
            "<l><spare_port><port_id>1</port_id><type>usb_2_0</type></spare_port>"
            "<other_port><port_id>3</port_id><type>serial</type></other_port></l>");
  TiXmlElement empty("l");
  EXPECT_FALSE(writer.addPorts(&empty, all.arrays.hostPorts, 0, "p"));
  EXPECT_FALSE(writer.addPorts(&empty, all.arrays.hostPorts, -1, "p"));
  EXPECT_FALSE(writer.addPorts(&empty, nullptr, 1, "p"));
  EXPECT_FALSE(writer.addPorts(nullptr, all.arrays.hostPorts, 1, "p"));
  EXPECT_FALSE(writer.addPorts(&empty, all.arrays.hostPorts, 1, static_cast<char*>(nullptr)));
  EXPECT_EQ(printed(empty), "<l />");
}

TEST(SetCapabilitiesLists, WriteCodesWithoutAWordAsEmptyTexts) {
  Everything all;
  all.arrays.hostPorts[0].type = 4;  // the reader knows a word for it
  all.arrays.hostPorts[1].type = -1;
  EXPECT_EQ(part(all.record, "host_ports"),
            "<host_ports><host_port><port_id>1</port_id><type></type></host_port>"
            "<host_port><port_id>2</port_id><type></type></host_port></host_ports>");
  all.arrays.swInterfaces[0] = {4, -1, -5};
  EXPECT_EQ(part(all.record, "software_interfaces"),
            "<software_interfaces><software_interface><protocol></protocol>"
            "<transport></transport><port>-5</port></software_interface></software_interfaces>");
  all.arrays.graphicFormats[0] = 3;
  EXPECT_EQ(part(all.record, "graphic_formats"),
            "<graphic_formats><graphic_format></graphic_format>"
            "<graphic_format>bmp</graphic_format></graphic_formats>");
}

TEST(SetCapabilitiesLists, WriteFontsWithTwoNames) {
  char const* const styles[] = {"none", "regular", "bold", "italic", "none", "none"};
  int const codes[] = {0, 1, 2, 3, 4, -1};
  Everything all;
  for (std::size_t i = 0; i < std::size(codes); ++i) {
    all.arrays.fonts[0].style = codes[i];
    all.arrays.fonts[0].scalable = i % 2 == 0;
    EXPECT_EQ(part(all.record, "fonts"), std::string("<fonts><font><name>Sans</name><name>") +
                                             (i % 2 == 0 ? "yes" : "no") + "</name><style>" +
                                             styles[i] + "</style></font></fonts>");
  }
}

TEST(SetCapabilitiesLists, WriteLocationsOfGraphicsButNotOfTemplates) {
  Everything const all;
  std::string const document = written(all.record, 0);
  EXPECT_EQ(document.find("/never/written"), std::string::npos);
  EXPECT_NE(document.find("<location>/flash/logo</location>"), std::string::npos);
}

TEST(SetCapabilitiesLists, ReadTextsUpToTheEndOfTheirArrays) {
  Everything all;
  std::memset(all.arrays.barcodes[0].name, 'b', sizeof all.arrays.barcodes[0].name);
  std::memset(all.arrays.templates[0].name, 't', sizeof all.arrays.templates[0].name);
  std::memset(all.arrays.graphics[0].location, 'g', sizeof all.arrays.graphics[0].location);
  std::string const document = written(all.record, 0);
  EXPECT_NE(document.find(">" + std::string(64, 'b') + "<"), std::string::npos);
  EXPECT_NE(document.find(">" + std::string(4096, 't') + "<"), std::string::npos);
  EXPECT_NE(document.find(">" + std::string(256, 'g') + "<"), std::string::npos);
}

// ---- Single elements -------------------------------------------------------------------------

TEST(SetCapabilitiesElements, SharpeningLevelsComeInTheOrderOfTheirBits) {
  struct {
    int bits;
    char const* words;
    bool result;
  } const cases[] = {
      {0, "", false},
      {1, "off ", true},
      {2, "normal ", true},
      {4, "high ", true},
      {8, "low ", true},
      {9, "off low ", true},
      {6, "normal high ", true},
      {15, "off normal high low ", true},
      {0x10, "", false},
      {-1, "off normal high low ", true},
  };
  KVXSetCaps writer;
  for (auto const& [bits, words, result] : cases) {
    TiXmlElement root("r");
    EXPECT_EQ(writer.addImageSharpeningLevels(&root, bits), result) << bits;
    TiXmlElement const* const list = root.FirstChildElement("image_sharpening_levels");
    ASSERT_NE(list, nullptr);
    std::string found;
    for (auto* level = list->FirstChildElement(); level; level = level->NextSiblingElement()) {
      EXPECT_STREQ(level->Value(), "image_sharpening_level");
      found += std::string(level->GetText()) + ' ';
    }
    EXPECT_EQ(found, words) << bits;
  }
  EXPECT_FALSE(writer.addImageSharpeningLevels(nullptr, 1));
}

TEST(SetCapabilitiesElements, EncryptionIsNoneWithoutAWord) {
  for (int const code : {0, 3, -1, INT_MAX}) {
    _Capabilities caps{};
    caps.security.encryptionAlgorithm = code;
    EXPECT_EQ(part(caps, "security"),
              "<security><passkey_protection>no</passkey_protection>"
              "<encryption_algorithm>none</encryption_algorithm></security>");
  }
  _Capabilities caps{};
  caps.security = {true, 2};
  EXPECT_EQ(part(caps, "security"),
            "<security><passkey_protection>yes</passkey_protection>"
            "<encryption_algorithm>3des</encryption_algorithm></security>");
}

TEST(SetCapabilitiesElements, PrintSystemIsTheWritersAndNotTheRecords) {
  for (int const system : {-1, 0, 1}) {
    _Capabilities caps{};
    caps.printSystem = system;
    EXPECT_EQ(part(caps, "print_system", false), "<print_system>retransfer</print_system>");
    EXPECT_EQ(part(caps, "print_system", true), "<print_system>direct_to_card</print_system>");
  }
}

TEST(SetCapabilitiesElements, PrintTypeHasAWordForOneAndTwoSides) {
  char const* const words[] = {"", "1_side", "2_side", ""};
  int const codes[] = {0, 1, 2, 3};
  for (std::size_t i = 0; i < std::size(codes); ++i) {
    _Capabilities caps{};
    caps.printType = codes[i];
    EXPECT_EQ(part(caps, "print_type"), std::string("<print_type>") + words[i] + "</print_type>");
  }
}

TEST(SetCapabilitiesElements, LaminatorTypeIsWrittenOnlyWithALaminator) {
  _Capabilities caps{};
  caps.laminatorType = laminatorTypeTwoSides;
  EXPECT_EQ(part(caps, "laminator"), "<laminator>notpresent</laminator>");
  EXPECT_EQ(part(caps, "laminator_type"), "");
  caps.laminatorPresent = true;
  EXPECT_EQ(part(caps, "laminator"), "<laminator>present</laminator>");
  char const* const words[] = {"none", "1_side", "2_side", ""};
  for (int code = 0; code < 4; ++code) {
    caps.laminatorType = static_cast<_laminatorType>(code);
    EXPECT_EQ(part(caps, "laminator_type"),
              std::string("<laminator_type>") + words[code] + "</laminator_type>");
  }
}

TEST(SetCapabilitiesElements, StripeIsMadeOfTheEncodersCode) {
  struct {
    int type;
    char const* head;
    char const* stripe;
  } const cases[] = {{0, "none", "back"}, {1, "iso", "front"}, {2, "aamva", ""}, {3, "custom", ""},
                     {4, "binary", ""},   {5, "", ""},         {-1, "", ""}};
  for (int const location : {0, 1, -1}) {
    for (auto const& [type, head, stripe] : cases) {
      _Capabilities caps{};
      caps.magEncoderType = type;
      caps.magStripeLocation = location;
      EXPECT_EQ(part(caps, "mag_encoder"), std::string("<mag_encoder>") + head + "</mag_encoder>");
      EXPECT_EQ(part(caps, "mag_stripe"), std::string("<mag_stripe>") + stripe + "</mag_stripe>");
    }
  }
}

TEST(SetCapabilitiesElements, ChannelIsMadeOfTheContactlessEncoder) {
  struct {
    int encoder;
    char const* channel;
    char const* kind;
  } const cases[] = {
      {0, "", ""}, {1, "serial", "mifare"}, {2, "usb_2_0", ""}, {3, "", ""}, {-1, "", ""}};
  for (int const channel : {0, 1, 2}) {
    for (auto const& [encoder, word, kind] : cases) {
      _Capabilities caps{};
      caps.internalEncoder.comms_channel = channel;
      caps.internalEncoder.contactless_encoder = encoder;
      caps.internalEncoder.contact_station = true;
      EXPECT_EQ(part(caps, "internal_encoder"),
                std::string("<internal_encoder><comms_channel>") + word +
                    "</comms_channel><contact_encoding>no</contact_encoding>"
                    "<contactless_encoder>" +
                    kind + "</contactless_encoder></internal_encoder>");
    }
  }
}

TEST(SetCapabilitiesElements, FlashIsWrittenWhole) {
  _Capabilities caps{};
  caps.ramSize = INT_MIN;
  for (auto const& [flash, text] :
       {std::pair(LONG_MAX, "9223372036854775807"), std::pair(LONG_MIN, "-9223372036854775808")}) {
    caps.flashSize = flash;
    EXPECT_EQ(part(caps, "memory"),
              std::string("<memory><ram>-2147483648</ram><flash>") + text + "</flash></memory>");
  }
}

TEST(SetCapabilitiesElements, GroupsAddTheirElementBelowTheOneGiven) {
  Everything const all;
  KVXSetCaps writer;
  TiXmlElement root("r");
  EXPECT_TRUE(writer.addSecurityCaps(&root, all.record.security));
  EXPECT_TRUE(writer.addMemoryCaps(&root, all.record));
  EXPECT_TRUE(writer.addMediaPathCaps(&root, all.record));
  EXPECT_TRUE(writer.addImageCaps(&root, all.record));
  EXPECT_TRUE(writer.addInternalEncoder(&root, all.record.internalEncoder));
  std::string names;
  for (auto* child = root.FirstChildElement(); child; child = child->NextSiblingElement()) {
    names += child->ValueStr() + ' ';
  }
  EXPECT_EQ(names, "security memory media_path image internal_encoder ");
  EXPECT_FALSE(writer.addSecurityCaps(nullptr, all.record.security));
  EXPECT_FALSE(writer.addMemoryCaps(nullptr, all.record));
  EXPECT_FALSE(writer.addMediaPathCaps(nullptr, all.record));
  EXPECT_FALSE(writer.addImageCaps(nullptr, all.record));
  EXPECT_FALSE(writer.addInternalEncoder(nullptr, all.record.internalEncoder));
}

TEST(AddCapabilities, HasTheResultOfEachMode) {
  Everything all;
  KVXSetCaps writer;
  auto const add = [&](int mode) {
    TiXmlElement root("r");
    return writer.addCapabilities(&root, all.record, mode);
  };
  EXPECT_TRUE(add(0));
  all.record.barcodeCount = 0;
  EXPECT_FALSE(add(0)) << "that of the barcodes";
  all.record.magEncoderType = 99;
  EXPECT_TRUE(add(1)) << "that of the tag, though it is empty";
  EXPECT_TRUE(add(2));
  all.record.internalEncoder = {};
  EXPECT_FALSE(add(2)) << "nothing was added";
  EXPECT_FALSE(add(3));
  EXPECT_FALSE(add(-1));
  for (int const mode : {0, 1, 2}) {
    EXPECT_FALSE(writer.addCapabilities(nullptr, all.record, mode));
  }
}

// ---- The internal encoder alone --------------------------------------------------------------

TEST(InternalEncoderOnly, WritesWhatIsSet) {
  struct {
    int channel;
    bool contact;
    int contactless;
    bool station;
    bool result;
    char const* xml;
  } const cases[] = {
      {0, false, 0, false, false, ""},
      {0, false, 0, true, true, "<contact_station>yes</contact_station>"},
      {1, false, 0, false, true, "<internal_encoder />"},
      {2, false, 0, true, true, "<contact_station>yes</contact_station><internal_encoder />"},
      {0, true, 0, false, true,
       "<internal_encoder><comms_channel>usb_2_0</comms_channel>"
       "<contact_encoding>yes</contact_encoding></internal_encoder>"},
      {1, true, 0, false, true,
       "<internal_encoder><comms_channel>usb_2_0</comms_channel>"
       "<contact_encoding>yes</contact_encoding></internal_encoder>"},
      {1, false, 1, false, true,
       "<internal_encoder><comms_channel>usb_2_0</comms_channel>"
       "<contactless_encoder>mifare</contactless_encoder></internal_encoder>"},
      {0, false, 2, false, true,
       "<internal_encoder><comms_channel>usb_2_0</comms_channel>"
       "<contactless_encoder></contactless_encoder></internal_encoder>"},
      {0, true, 1, true, true,
       "<contact_station>yes</contact_station>"
       "<internal_encoder><comms_channel>usb_2_0</comms_channel>"
       "<contact_encoding>yes</contact_encoding>"
       "<contactless_encoder>mifare</contactless_encoder></internal_encoder>"},
  };
  for (auto const& one : cases) {
    _Capabilities caps = Everything().record;
    caps.internalEncoder = {};
    caps.internalEncoder.comms_channel = one.channel;
    caps.internalEncoder.contact_encoding = one.contact;
    caps.internalEncoder.contactless_encoder = one.contactless;
    caps.internalEncoder.contact_station = one.station;
    EXPECT_EQ(below(caps, 2), one.xml);
    TiXmlElement root("r");
    EXPECT_EQ(KVXSetCaps().addInternalEncoderOnly(&root, caps.internalEncoder), one.result)
        << one.xml;
    EXPECT_FALSE(KVXSetCaps().addInternalEncoderOnly(nullptr, caps.internalEncoder)) << one.xml;
  }
}

// ---- Codes as keywords -----------------------------------------------------------------------

/// Twice the room that a host has by agreement, to see what stands behind.
using Buffer = std::array<char, 64>;

/// What a writer of keywords gives for a code: the text, and the result.
struct Wording {
  int code;
  char const* text;
  bool result;
};

template <class Write>
void expectWordings(std::vector<Wording> const& wordings, Write write, bool withoutBuffer = false) {
  for (auto const& [code, text, result] : wordings) {
    auto buffer = filled<Buffer>();
    auto expected = filled<Buffer>();
    std::strcpy(expected.data(), text);
    EXPECT_EQ(write(buffer.data(), code), result) << code;
    EXPECT_TRUE(same(buffer, expected)) << code;
    EXPECT_EQ(write(nullptr, code), withoutBuffer) << "no buffer";
  }
}

TEST(CapabilitiesWordings, AreThoseOfTheirTables) {
  KVXSetCaps writer;
  expectWordings({{0, "usb_2_0", true},
                  {1, "serial", true},
                  {2, "ethernet_10_100", true},
                  {3, "ethernet_10_100_1G", true},
                  {4, "", false},
                  {5, "", false},
                  {-1, "", false}},
                 [&](char* buf, int code) { return writer.portTypeToString(buf, code); });
  expectWordings({{0, "snmp", true},
                  {1, "snmp_trap", true},
                  {2, "http", true},
                  {3, "kovra", true},
                  {4, "", false},
                  {-1, "", false}},
                 [&](char* buf, int code) { return writer.protocolToString(buf, code); });
  expectWordings({{0, "udp", true},
                  {1, "tcp", true},
                  {2, "usb", true},
                  {3, "usb_2_0", true},
                  {4, "", false},
                  {-1, "", false}},
                 [&](char* buf, int code) { return writer.transportToString(buf, code); });
  expectWordings({{1, "aes", true},
                  {2, "3des", true},
                  {0, "none", false},
                  {3, "none", false},
                  {-1, "none", false}},
                 [&](char* buf, int code) { return writer.encAlgToString(buf, code); });
  expectWordings({{1, "bmp", true},
                  {2, "jpeg", true},
                  {8, "tga", true},
                  {9, "tiff", true},
                  {10, "raw", true},
                  {0, "", false},
                  {3, "", false},
                  {7, "", false},
                  {11, "", false},
                  {-1, "", false}},
                 [&](char* buf, int code) { return writer.graphicFormatToString(buf, code); });
  expectWordings({{0, "", false}, {1, "1_side", true}, {2, "2_side", false}, {3, "", false}},
                 [&](char* buf, int code) { return writer.printTypeToString(buf, code); });
  expectWordings({{0, "none", true},
                  {1, "iso", true},
                  {2, "aamva", true},
                  {3, "custom", true},
                  {4, "binary", true},
                  {5, "", false},
                  {-1, "", false}},
                 [&](char* buf, int code) { return writer.MagHeadTypeToString(buf, code); });
  expectWordings({{0, "back", true}, {1, "front", true}, {2, "", false}, {-1, "", false}},
                 [&](char* buf, int code) { return writer.magStripeLocationToString(buf, code); });
  expectWordings(
      {{0, "notpresent", true}, {1, "present", true}, {-1, "present", true}},
      [&](char* buf, int code) { return writer.LaminatorToString(buf, static_cast<char>(code)); });
  expectWordings({{0, "none", true}, {1, "1_side", true}, {2, "2_side", true}, {3, "", true}},
                 [&](char* buf, int code) {
                   return writer.LamTypeToString(buf, static_cast<_laminatorType>(code));
                 });
  expectWordings({{0, "dye_sub", true}, {1, "resin", true}, {2, "", false}, {-1, "", false}},
                 [&](char* buf, int code) { return writer.ribbonTypeToString(buf, code); });
  expectWordings({{0, "composite", true}, {1, "pvc", true}, {2, "", false}, {-1, "", false}},
                 [&](char* buf, int code) { return writer.feederTypeToString(buf, code); });
  expectWordings({{0, "contact", true},
                  {1, "iclass", true},
                  {2, "mifare", true},
                  {3, "prox", true},
                  {4, "uhf", true},
                  {5, "legic", true},
                  {6, "", false},
                  {-1, "", false}},
                 [&](char* buf, int code) { return writer.feederSmartToString(buf, code); });
}

TEST(CapabilitiesWordings, OfThePrintSystemAreThoseOfTheWriter) {
  KVXSetCaps writer;
  for (bool const direct : {false, true}) {
    writer.directToCard = direct;
    char const* const word = direct ? "direct_to_card" : "retransfer";
    expectWordings({{0, word, true}, {1, word, true}, {-1, word, true}},
                   [&](char* buf, int code) { return writer.printSystemTypeToString(buf, code); });
  }
}

TEST(CapabilitiesWordings, OfEncodersAlwaysSucceedAndKeepToTheirLength) {
  KVXSetCaps writer;
  auto const channel = [&](int room) {
    return [&writer, room](char* buf, int code) {
      return writer.CommsChannelFromInt(code, buf, room);
    };
  };
  auto const encoder = [&](int room) {
    return [&writer, room](char* buf, int code) {
      return writer.ContactlessEncFromInt(code, buf, room);
    };
  };
  bool const always = true;  // also without a buffer, as those of the configuration writer
  expectWordings(
      {{1, "serial", true}, {2, "usb_2_0", true}, {0, "", true}, {3, "", true}, {-1, "", true}},
      channel(32), always);
  expectWordings({{1, "mifare", true}, {0, "", true}, {2, "", true}, {-1, "", true}}, encoder(32),
                 always);
  expectWordings({{2, "usb", true}, {1, "ser", true}}, channel(4), always);
  expectWordings({{1, "", true}}, encoder(1), always);
  for (int const length : {0, -1, INT_MIN}) {
    auto buffer = filled<Buffer>();
    EXPECT_TRUE(writer.CommsChannelFromInt(1, buffer.data(), length));
    EXPECT_TRUE(writer.ContactlessEncFromInt(1, buffer.data(), length));
    EXPECT_TRUE(test::untouched(buffer));
    EXPECT_TRUE(writer.CommsChannelFromInt(1, nullptr, length));
    EXPECT_TRUE(writer.ContactlessEncFromInt(1, nullptr, length));
  }
}

// ---- There and back --------------------------------------------------------------------------

/// Which members come back from a document, and which do not.
TEST(CapabilitiesRoundTrip, KeepsWhatWriterAndReaderAgreeOn) {
  Everything const all;
  std::wstring const document = wide(written(all.record, 0, true));
  Arrays arrays{};
  _Capabilities caps{};
  caps.hostPorts = arrays.hostPorts;
  caps.devicePorts = arrays.devicePorts;
  caps.swInterfaces = arrays.swInterfaces;
  caps.ocpLanguages = arrays.ocpLanguages;
  caps.graphicFormats = arrays.graphicFormats;
  caps.fonts = arrays.fonts;
  caps.templates = arrays.templates;
  caps.graphics = arrays.graphics;
  caps.barcodes = arrays.barcodes;
  caps.hostPortCount = caps.devicePortCount = caps.graphicFormatCount = caps.barcodeCount = 2;
  caps.swInterfaceCount = caps.ocpLanguageCount = caps.fontCount = 1;
  caps.templateCount = caps.graphicCount = 1;
  KVXCapsParser().GetCapabilities(document.front(), static_cast<int>(document.size()), caps);

  Everything expected;
  expected.arrays.devicePorts[0] = expected.arrays.devicePorts[1];  // the last one stays
  expected.arrays.devicePorts[1] = {};
  std::memset(&expected.arrays.fonts[0], 0, sizeof expected.arrays.fonts[0]);
  setText(expected.arrays.fonts[0].name, "Sans");
  std::memcpy(expected.arrays.fonts[0].name, "yes", 4);  // the second name, over the first one
  expected.arrays.fonts[0].style = 2;
  std::memset(expected.arrays.templates[0].location, 0, 256);
  expected.record.printSystem = -1;       // "direct_to_card" is not a word of the reader
  expected.record.magStripeLocation = 1;  // was written from the encoder
  expected.record.internalEncoder.comms_channel = 1;
  for (auto const& [ours, theirs] :
       {std::pair(&_Capabilities::imageSharpeningLevels, "levels"),
        std::pair(&_Capabilities::ramSize, "ram"), std::pair(&_Capabilities::printSystem, "system"),
        std::pair(&_Capabilities::printType, "type"),
        std::pair(&_Capabilities::magazineCapacity, "magazine"),
        std::pair(&_Capabilities::logicalPageLength, "logical length"),
        std::pair(&_Capabilities::logicalPageWidth, "logical width"),
        std::pair(&_Capabilities::physicalPageLength, "physical length"),
        std::pair(&_Capabilities::physicalPageWidth, "physical width"),
        std::pair(&_Capabilities::printResolution, "resolution"),
        std::pair(&_Capabilities::magEncoderType, "encoder"),
        std::pair(&_Capabilities::magStripeLocation, "stripe")}) {
    EXPECT_EQ(caps.*ours, expected.record.*ours) << theirs;
  }
  EXPECT_EQ(caps.flashSize, expected.record.flashSize);
  EXPECT_EQ(caps.atm, expected.record.atm);
  EXPECT_EQ(caps.laminatorPresent, expected.record.laminatorPresent);
  EXPECT_EQ(caps.laminatorType, expected.record.laminatorType);
  // Member by member: what lies between them is the compiler's.
  EXPECT_EQ(caps.security.passkeyProtection, expected.record.security.passkeyProtection);
  EXPECT_EQ(caps.security.encryptionAlgorithm, expected.record.security.encryptionAlgorithm);
  _InternalEncoderInfo const& encoder = expected.record.internalEncoder;
  EXPECT_EQ(caps.internalEncoder.comms_channel, encoder.comms_channel);
  EXPECT_EQ(caps.internalEncoder.contact_encoding, encoder.contact_encoding);
  EXPECT_EQ(caps.internalEncoder.contactless_encoder, encoder.contactless_encoder);
  EXPECT_EQ(caps.internalEncoder.secondContactlessEncoder, encoder.secondContactlessEncoder);
  EXPECT_EQ(caps.internalEncoder.contact_station, encoder.contact_station);
  EXPECT_TRUE(same(arrays, expected.arrays));
}

TEST(CapabilitiesWriter, NeedsNoMoreThanItsHeaderTells) {
  Arrays arrays;
  test::fillWide(arrays);
  for (_FontCaps& font : arrays.fonts) font.scalable = false;
  _Capabilities caps{};
  test::fillWide(caps);
  caps.atm = caps.laminatorPresent = caps.security.passkeyProtection = true;
  caps.internalEncoder.contact_encoding = caps.internalEncoder.contact_station = true;
  for (std::size_t const count : {std::size_t{0}, std::extent_v<decltype(arrays.fonts)>}) {
    auto const entries = static_cast<int>(count);
    caps.hostPorts = arrays.hostPorts, caps.hostPortCount = entries;
    caps.devicePorts = arrays.devicePorts, caps.devicePortCount = entries;
    caps.swInterfaces = arrays.swInterfaces, caps.swInterfaceCount = entries;
    caps.ocpLanguages = arrays.ocpLanguages, caps.ocpLanguageCount = entries;
    caps.graphicFormats = arrays.graphicFormats, caps.graphicFormatCount = entries;
    caps.fonts = arrays.fonts, caps.fontCount = entries;
    caps.templates = arrays.templates, caps.templateCount = entries;
    caps.graphics = arrays.graphics, caps.graphicCount = entries;
    caps.barcodes = arrays.barcodes, caps.barcodeCount = entries;
    test::expectRoomFor(
        4096 + 7 * 1024 * count + 2 * 28672 * count,
        [&](wchar_t* out, int length) {
          return KVXSetCaps().SetCapabilities(caps, out, length, 0, true);
        },
        2 * (sizeof caps / sizeof(int) + 8 * count));
  }
}

TEST(CapabilitiesWriter, IsADocument) {
  EXPECT_TRUE((std::is_base_of_v<TiXmlDocument, KVXSetCaps>));
  EXPECT_TRUE((std::is_same_v<decltype(KVXSetCaps::root), TiXmlElement*>));
  EXPECT_TRUE((std::is_same_v<decltype(KVXSetCaps::directToCard), bool>));
}

}  // namespace
}  // namespace Kovra
