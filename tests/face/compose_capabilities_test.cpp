// Capabilities through the face: decoded with lists of any size, and composed from values.

#include <gtest/gtest.h>

#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "caps/capabilities.hpp"
#include "kovra.hpp"
#include "support/findings.hpp"
#include "support/values.hpp"

namespace Kovra {
namespace {

using test::element;
using test::withZeros;

/// The record and the notes of a reply that has only one reading.
struct Decoded {
  Value record;
  std::string notes;
};

Decoded decoded(std::string const& children) {
  Decoding const decoding = decode(element("capabilities", children));
  EXPECT_TRUE(static_cast<bool>(decoding)) << decoding.refusal().message();
  std::vector<Reading> const readings = decoding.readings();
  if (readings.size() != 1) {
    ADD_FAILURE() << readings.size() << " readings";
    return {};
  }
  EXPECT_EQ(readings[0].message(), "capabilities");
  EXPECT_FALSE(readings[0].result()) << "that of the entry";
  return {readings[0].record(), test::notesOf(decoding.notes())};
}

std::string namesIn(Value const& value) {
  std::string names;
  for (Member const& member : value.members()) names += std::string(member.name()) + ' ';
  return names;
}

TEST(DecodeCapabilities, ShowsAllEntriesOfLists) {
  std::string fonts;
  for (int i = 0; i < 100; ++i) fonts += element("font", element("name", std::to_string(i)));
  Value const found = decoded(element("fonts", fonts) + "<barcodes/>").record;
  EXPECT_EQ(namesIn(found), "fonts barcodes ") << "no counts";
  Value const& all = found.at("fonts");
  ASSERT_EQ(all.size(), 100U);
  for (std::size_t i = 0; i < 100; ++i) {
    EXPECT_EQ(all.items()[i], Value::object({{"name", std::to_string(i)}}))
        << "and only what was said";
  }
  EXPECT_EQ(found.at("barcodes"), Value::list());
}

TEST(DecodeCapabilities, ShowsOnlyWhatWasStored) {
  Decoded const found = decoded(
      "<device_ports><device_port><port_id>1</port_id></device_port>"
      "<device_port><port_id>2</port_id></device_port></device_ports>");
  EXPECT_EQ(found.record.at("devicePorts"), Value::list({Value::object({{"portId", 2}})}))
      << "members have the record's names";
  EXPECT_EQ(found.notes, "<device_port>: for the second time\n");
}

TEST(DecodeCapabilities, MeasuresRepeatedListsTogether) {
  std::string const two = element("barcodes", "<barcode>a</barcode><barcode>b</barcode>");
  std::string const three = element("barcodes", "<barcode>c</barcode><other/><barcode>d</barcode>");
  for (std::string const& children : {two + three, two + three + two + three}) {
    Decoded const found = decoded(children);
    EXPECT_EQ(found.record.at("barcodes"),
              Value::list({Value::object({{"name", "c"}}), Value::object({{"name", "d"}})}));
    EXPECT_NE(found.notes.find("<other>: unknown element, skipped\n"), std::string::npos);
  }
}

TEST(DecodeCapabilities, ShowsFormatsAsKeywordsAndEmptyOnesAsNothing) {
  Decoded const found = decoded(element("graphic_formats",
                                        "<graphic_format>tga</graphic_format><graphic_format/>"
                                        "<graphic_format>png</graphic_format>"));
  EXPECT_EQ(found.record.at("graphicFormats"),
            Value::list({Value::keyword(8, "tga"), {}, Value::unknownKeyword(-1, "png")}));
  EXPECT_EQ(found.notes,
            "<graphic_format>: empty, not read\n"
            "<graphic_format>: unknown word \"png\"; one of: bmp, jpeg, tga, tiff, raw\n");
}

TEST(DecodeCapabilities, ShowsWhatKeywordsWithoutTextStored) {
  Decoded const found = decoded(
      "<print_system>direct</print_system><print_system/>"
      "<laminator>present</laminator><laminator></laminator>");
  EXPECT_EQ(found.record.at("printSystem"), Value::unknownKeyword(-1, ""));
  EXPECT_EQ(found.record.at("laminatorPresent"), Value(false));
  EXPECT_EQ(found.notes,
            "<print_system>: empty, not read\n"
            "<print_system>: for the second time, overwrites \"direct\"\n"
            "<laminator>: empty, not read\n"
            "<laminator>: for the second time, overwrites \"present\"\n");
}

TEST(DecodeCapabilities, ShowsSharpeningLevelsByTheirWords) {
  std::string const levels =
      "<image_sharpening_level>low</image_sharpening_level>"
      "<image_sharpening_level>Off</image_sharpening_level>"
      "<image_sharpening_level/>";
  Decoded const found = decoded(element("image_sharpening_levels", levels));
  EXPECT_EQ(found.record.at("imageSharpeningLevels"), Value::object({{"low", true}}));
  EXPECT_EQ(found.notes,
            "<image_sharpening_level>: unknown word \"Off\"; one of: off, normal, high, low\n"
            "<image_sharpening_level>: empty, not read\n");
}

TEST(DecodeCapabilities, ShowsTheLaminatorAsAFlagAndTellsOfOtherWords) {
  Decoded const present = decoded("<laminator>present</laminator>");
  EXPECT_TRUE(present.record.at("laminatorPresent").asBool());
  EXPECT_EQ(present.notes, "");
  Decoded const other = decoded("<laminator>yes</laminator>");
  EXPECT_FALSE(other.record.at("laminatorPresent").asBool());
  EXPECT_EQ(other.notes, "<laminator>: unknown word \"yes\"; one of: present, notpresent\n");
}

TEST(DecodeCapabilities, RefusesToMakeRoomForMoreThanAnyPrinterHas) {
  std::string const templates = element("templates", [] {
    std::string many;
    for (int i = 0; i < 70000; ++i) many += "<t/>";
    return many;
  }());
  std::string const xml = element("capabilities", templates);
  EXPECT_THROW(static_cast<void>(decode(xml)), std::bad_alloc);
}

// ---- Composing -------------------------------------------------------------------------------

std::string composed(Value const& value, Value const& choices = withZeros()) {
  Composition const composition = compose("capabilities", value, choices);
  EXPECT_TRUE(static_cast<bool>(composition)) << test::problemsOf(composition);
  return composition.text();
}

TEST(ComposeCapabilities, WritesListsOfAnySize) {
  Value const ports = Value::list({Value::object({{"portId", 1}, {"type", "serial"}}),
                                   Value::object({{"portId", 2}, {"type", 0}})});
  std::string const document = composed(Value::object({
      {"hostPorts", ports},
      {"devicePorts", ports},
      {"graphicFormats", Value::list({"raw", 1, {}})},
      {"barcodes", Value::list({Value::object({{"name", "qr"}})})},
      {"imageSharpeningLevels", Value::object({{"low", true}, {"off", true}})},
  }));
  for (char const* const piece :
       {"    <host_ports>\n        <host_port>\n            <port_id>1</port_id>\n"
        "            <type>serial</type>\n        </host_port>\n        <host_port>\n"
        "            <port_id>2</port_id>\n            <type>usb_2_0</type>\n",
        "    <device_ports>\n        <device_port>\n            <port_id>1</port_id>\n",
        "        <graphic_format>raw</graphic_format>\n"
        "        <graphic_format>bmp</graphic_format>\n"
        "        <graphic_format></graphic_format>\n",
        "        <barcode>qr</barcode>\n",
        "        <image_sharpening_level>off</image_sharpening_level>\n"
        "        <image_sharpening_level>low</image_sharpening_level>\n"}) {
    EXPECT_NE(document.find(piece), std::string::npos) << piece << "is not in\n" << document;
  }
  EXPECT_EQ(document.find("software_interfaces"), std::string::npos);
}

TEST(ComposeCapabilities, WritesOnePartAlone) {
  char const head[] = "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n<capabilities>\n";
  Value const value =
      Value::object({{"magEncoderType", "aamva"},
                     {"internalEncoder", Value::object({{"comms_channel", "usb"},
                                                        {"contact_encoding", true},
                                                        {"contact_station", true}})}});
  EXPECT_EQ(composed(value, Value::object({{"only", "mag-encoder"}})),
            std::string(head) + "    <mag_encoder>aamva</mag_encoder>\n</capabilities>\n")
      << "and needs nothing else";
  EXPECT_EQ(composed(value, withZeros(Value::object({{"only", "internal-encoder"}}))),
            std::string(head) +
                "    <contact_station>yes</contact_station>\n"
                "    <internal_encoder>\n"
                "        <comms_channel>usb_2_0</comms_channel>\n"
                "        <contact_encoding>yes</contact_encoding>\n"
                "    </internal_encoder>\n</capabilities>\n");
}

TEST(ComposeCapabilities, RefusesAPartThatIsNone) {
  for (Value const& part : {Value("encoder"), Value(""), Value(1)}) {
    Composition const composition =
        compose("capabilities", Value::object(), withZeros(Value::object({{"only", part}})));
    EXPECT_FALSE(composition);
    EXPECT_EQ(composition.text(), "");
    ASSERT_EQ(composition.problems().size(), 1U);
    EXPECT_EQ(composition.problems()[0].path(), "only");
    EXPECT_EQ(composition.problems()[0].expected(), "one of: mag-encoder, internal-encoder");
  }
}

TEST(ComposeCapabilities, TakesThePrintSystemFromTheChoice) {
  Value const value = Value::object({{"printSystem", "direct"}});
  EXPECT_NE(composed(value).find(">retransfer<"), std::string::npos);
  EXPECT_NE(composed(value, withZeros(Value::object({{"direct-to-card", true}})))
                .find(">direct_to_card<"),
            std::string::npos);
}

TEST(ComposeCapabilities, TakesWhatDecodeShows) {
  std::string const children =
      "<host_ports><host_port><port_id>1</port_id><type>wifi_enet_802_11g</type></host_port>"
      "</host_ports>"
      "<image_sharpening_levels><image_sharpening_level>off</image_sharpening_level>"
      "</image_sharpening_levels>"
      "<security><encryption_algorithm>rot13</encryption_algorithm></security>"
      "<graphic_formats><graphic_format/></graphic_formats>"
      "<mag_stripe>front</mag_stripe><laminator>present</laminator>"
      "<internal_encoder><contactless_encoder>felica</contactless_encoder></internal_encoder>";
  std::string const document = composed(decoded(children).record);
  EXPECT_NE(document.find("<port_id>1</port_id>"), std::string::npos);
  EXPECT_NE(document.find("<laminator>present</laminator>"), std::string::npos);
}

struct Misfit {
  Value value;
  char const* path;
  char const* found;
};

TEST(ComposeCapabilities, TellsWhatDoesNotFit) {
  auto const with = [](std::string_view name, Value const& value) {
    return Value::object({{name, value}});
  };
  Misfit const cases[] = {
      {1, "", "1"},
      {with("fontz", 1), "fontz", "an unknown key"},
      {with("hostPortCount", 1), "hostPortCount", "an unknown key"},
      {with("ramSize", "big"), "ramSize", "\"big\""},
      {with("flashSize", true), "flashSize", "true"},
      {with("printType", "3_side"), "printType", "\"3_side\""},
      {with("security", with("passkeyProtection", 1)), "security.passkeyProtection", "1"},
      {with("internalEncoder", 1), "internalEncoder", "1"},
      {with("imageSharpeningLevels", with("medium", true)), "imageSharpeningLevels.medium",
       "an unknown key"},
      {with("fonts", Value::object()), "fonts", "an object"},
      {with("fonts", Value::list({Value::object(), with("style", 1L << 40)})), "fonts[1].style",
       "1099511627776"},
      {with("fonts", Value::list({with("name", std::string(64, 'x'))})), "fonts[0].name",
       "a text of 64 bytes"},
      {with("graphicFormats", Value::list({1, "png"})), "graphicFormats[1]", "\"png\""},
      {with("barcodes", Value::list({"qr"})), "barcodes[0]", "\"qr\""},
  };
  for (auto const& [value, path, found] : cases) {
    Composition const composition = compose("capabilities", value, withZeros());
    EXPECT_FALSE(composition) << path;
    EXPECT_EQ(composition.text(), "") << path;
    ASSERT_EQ(composition.problems().size(), 1U) << path << test::problemsOf(composition);
    EXPECT_EQ(composition.problems()[0].path(), path);
    EXPECT_EQ(composition.problems()[0].found(), found);
    EXPECT_NE(composition.problems()[0].expected(), "") << path;
  }
}

TEST(ComposeCapabilities, TellsAllThatDoesNotFitInTheOrderOfTheRecord) {
  Value const record =
      Value::object({{"printType", "3_side"},
                     {"fonts", Value::list({Value::object({{"style", "x"}, {"name", 1}}), 7})},
                     {"flashSize", true}});
  EXPECT_EQ(test::pathsOf(compose("capabilities", record, withZeros())),
            "printType fonts[0].style fonts[0].name fonts[1] flashSize ");
}

}  // namespace
}  // namespace Kovra
